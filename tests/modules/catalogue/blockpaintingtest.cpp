#include "modules/catalogue/modulefactory.h"
#include "modules/supermodule.h"
#include "support/canvas/blockdata.h"
#include "support/system/datatable.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QtTest>

namespace
{
/** A block that was loaded from attributes like "port=4 bInfread=1". */
std::unique_ptr<supermodule> loaded(int p_id, const QString& p_attributes)
{
    std::unique_ptr<supermodule> block(createModuleFromId(p_id));
    loadBlock(block.get(), p_attributes);
    return block;
}

/**
 * Draws a picture named "path x y"; without a place centred in 120 by 140, ten units higher. Or
 * writes "text x y pixels weight words", in the font as it is for 0 pixels.
 */
void drawNamed(QPainter& p_painter, const QString& p_picture)
{
    const QStringList words = p_picture.split(QLatin1Char(' '));
    if (words.first() == QLatin1String("text")) {
        QFont font;
        if (words.at(3).toInt() > 0) {
            font.setPixelSize(words.at(3).toInt());
            font.setWeight(words.at(4).toInt());
        }
        p_painter.setFont(font);
        p_painter.setPen(Qt::white);
        p_painter.drawText(words.at(1).toInt(), words.at(2).toInt(), words.at(5));
        return;
    }
    const QPixmap pixmap(words.first());
    QVERIFY2(!pixmap.isNull(), qPrintable(p_picture));
    const int centredX = 60 - pixmap.width() / 2;
    const int centredY = 70 - pixmap.height() / 2 - 10;
    const bool placed = words.size() > 1;
    const int x = placed ? words.at(1).toInt() : centredX;
    const int y = placed ? words.at(2).toInt() : centredY;
    p_painter.drawPixmap(x, y, pixmap);
}

/** A row for each set of attributes by which a loop, or another block, has its pictures. */
void paintedBlocks(bool p_loops)
{
    columns<int, QString, QStringList>("id", "attributes", "pictures");
    for (const BlockData& data : blockData()) {
        const QMap<QString, QStringList> paints = data.paints();
        if (data.isLoop() != p_loops) {
            continue;
        }
        QVERIFY2(!paints.isEmpty(), qPrintable(data.value("class")));
        for (auto it = paints.begin(); it != paints.end(); ++it) {
            QTest::newRow(qPrintable(data.value("class") + ' ' + it.key()))
                << data.id() << it.key() << it.value();
        }
    }
}

/** A loop as the canvas shows it, without its body and buttons, its origin at (0, 60). */
QImage loopImage(supermodule* p_loop, int p_width)
{
    QGraphicsScene scene;
    scene.addItem(p_loop);
    for (QGraphicsItem* part : p_loop->childItems()) {
        if (part->type() == ButtonItemType) {
            part->hide();
        }
    }
    QImage image(p_width, 220, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        scene.render(&painter, image.rect(), QRectF(0, -60, p_width, image.height()));
    }
    scene.removeItem(p_loop);
    return image;
}
} // namespace

/** What blocks look like: which pictures they are drawn from, and where. */
class BlockPaintingTest : public QObject
{
    Q_OBJECT

private slots:
    void everyBlockIsPaintedFromItsPictures_data() { paintedBlocks(false); }
    void everyBlockIsPaintedFromItsPictures()
    {
        QFETCH(int, id);
        QFETCH(QString, attributes);
        QFETCH(QStringList, pictures);
        const std::unique_ptr<supermodule> block = loaded(id, attributes);
        const QImage image = paintedBlock(block.get());
        QImage expected = emptyGround();
        {
            QPainter painter(&expected);
            for (const QString& each : qAsConst(pictures)) {
                drawNamed(painter, each);
            }
        }
        QCOMPARE(image, expected);
        QVERIFY(image != emptyGround());
    }

    void aLoopShowsItsSignOnItsFrame_data() { paintedBlocks(true); }
    void aLoopShowsItsSignOnItsFrame()
    {
        QFETCH(int, id);
        QFETCH(QString, attributes);
        QFETCH(QStringList, pictures);
        const BlockData& data = *blockDataOf(id);
        // The pictures of a loop until something stand 120 left of its end, so told for one that
        // is 260 wide.
        const bool atTheEnd = data.value("shape") == QLatin1String("conditional");
        // Empty, and with a body of two blocks, which is 60 or 140 wider.
        for (const bool full : {false, true}) {
            supermodule* loop = loaded(id, attributes).release();
            if (full) {
                loop->setLeftModule(createModuleFromId(103));
                loop->left()->insertModule(createModuleFromId(105));
            }
            loop->updateTree();
            const int right = static_cast<int>(loop->boundingRect().right());
            const int top = static_cast<int>(loop->boundingRect().top());
            QCOMPARE(right, full ? (atTheEnd ? 320 : 400) : 260);
            QCOMPARE(top, -20);
            QImage expected(right + 40, 220, QImage::Format_ARGB32_Premultiplied);
            expected.fill(Qt::transparent);
            {
                QPainter painter(&expected);
                painter.translate(0, 60);
                // The frame's seven parts; the middle ones as wide and high as is left.
                const QPixmap whole(data.value("frame"));
                if (full) {
                    // Behind the upper corners of the body's blocks.
                    const int from = atTheEnd ? 40 : 120;
                    painter.drawPixmap(QRect(from - 2, -2, 244, 15), whole, QRect(132, 6, 1, 1));
                    painter.drawPixmap(QRect(from - 2, 0, 4, 119), whole, QRect(132, 6, 1, 1));
                }
                const int width = whole.width();
                const int height = whole.height();
                const QPixmap topEdge = whole.copy(130, 0, width - 200, 20);
                const int inner = right - 130 - 70 + 20;
                painter.drawPixmap(0, -20, whole.copy(0, 0, 130, 30));
                painter.drawPixmap(QRect(0, 10, 120, 10), whole.copy(0, 30, 120, 10));
                painter.drawPixmap(0, 20, whole.copy(0, 40, 140, height - 40));
                painter.drawPixmap(QRect(130, -20, inner, 20), topEdge);
                painter.drawPixmap(130 + inner, -20, whole.copy(width - 70, 0, 70, 30));
                painter.drawPixmap(QRect(130 + inner, 10, 70, 10),
                                   whole.copy(width - 70, 30, 70, 10));
                painter.drawPixmap(130 + inner, 20, whole.copy(width - 70, 40, 70, height - 40));
                for (const QString& each : qAsConst(pictures)) {
                    const QStringList words = each.split(QLatin1Char(' '));
                    const QPixmap pixmap(words.first());
                    QVERIFY2(!pixmap.isNull(), qPrintable(each));
                    painter.drawPixmap(words.at(1).toInt() + (atTheEnd ? right - 260 : 0),
                                       words.at(2).toInt(), pixmap);
                }
            }
            QImage shown = loopImage(loop, right + 40);
            if (full) {
                // Filled towards the body, other than in the picture: blocklookstest looks at them.
                for (QImage* image : {&shown, &expected}) {
                    QPainter painter(image);
                    painter.setCompositionMode(QPainter::CompositionMode_Clear);
                    const int firstLeg = atTheEnd ? 42 : 120;
                    painter.fillRect(QRect(firstLeg - 13, 60 + 107, 13, 13), Qt::black);
                    painter.fillRect(QRect(right - 40, 60 + 107, 13, 13), Qt::black);
                }
            }
            QCOMPARE(shown, expected);
            supermodule::deleteTree(loop);
        }
    }

    void aLoopsFrameGoesAroundItsBody()
    {
        for (const BlockData& each : blockData()) {
            if (!each.isLoop()) {
                continue;
            }
            supermodule* loop = createModuleFromId(each.id());
            supermodule* inner = createModuleFromId(301);
            loop->setLeftModule(inner);
            inner->setLeftModule(createModuleFromId(103));
            inner->insertModule(createModuleFromId(105));
            loop->updateTree();
            const int top = static_cast<int>(loop->boundingRect().top());
            const int right = static_cast<int>(loop->boundingRect().right());
            QCOMPARE(top, -40);
            const QImage image = loopImage(loop, right + 40);
            const QImage frame = QPixmap(each.value("frame"))
                                     .toImage()
                                     .convertToFormat(QImage::Format_ARGB32_Premultiplied);
            QVERIFY(!frame.isNull());
            // The corners stand as they are: 20 of their rows above the pictograms, which begin at
            // 0.
            QCOMPARE(image.copy(0, 60 + top, 130, 30), frame.copy(0, 0, 130, 30));
            const int endX = 130 + right - 130 - 70 + 20;
            QCOMPARE(image.copy(endX, 60 + top, 70, 30), frame.copy(frame.width() - 70, 0, 70, 30));
            // Between them the upper edge, all along.
            const QImage edge = frame.copy(130, 0, frame.width() - 200, 20);
            for (int x = 130; x < endX; ++x) {
                QCOMPARE(image.pixel(x, 60 + top + 10), edge.pixel(edge.width() / 2, 10));
            }
            // Nothing above the frame.
            QImage none(image.width(), 60 + top, image.format());
            none.fill(Qt::transparent);
            QCOMPARE(image.copy(none.rect()), none);
            supermodule::deleteTree(loop);
        }
    }
};

QTEST_MAIN(BlockPaintingTest)
#include "blockpaintingtest.moc"
