#include "modules/catalogue/modulefactory.h"
#include "modules/supermodule.h"
#include "support/canvas/singleblock.h"

#include <QGraphicsScene>
#include <QLoggingCategory>
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

/** Draws a picture named "path x y"; without a place centred in 120 by 140, ten units higher. */
void drawNamed(QPainter& p_painter, const QString& p_picture)
{
    const QStringList words = p_picture.split(QLatin1Char(' '));
    const QPixmap pixmap(words.first());
    QVERIFY2(!pixmap.isNull(), qPrintable(p_picture));
    const int centredX = 60 - pixmap.width() / 2;
    const int centredY = 70 - pixmap.height() / 2 - 10;
    const bool placed = words.size() > 1;
    const int x = placed ? words.at(1).toInt() : centredX;
    const int y = placed ? words.at(2).toInt() : centredY;
    p_painter.drawPixmap(x, y, pixmap);
}

/** A loop as the canvas shows it, without its body and buttons, its origin at (0, 60). */
QImage loopImage(supermodule* p_loop, int p_width)
{
    QGraphicsScene scene;
    scene.addItem(p_loop);
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
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); }

    void everyBlockIsPaintedFromItsPictures_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QStringList>("pictures"); // "path x y"; without a place: centred
        // These have tests of their own.
        QSet<int> ids{107, 301, 303, 306, 307, 800};
        const auto row = [&ids](int p_id, const QString& p_attributes,
                                const QStringList& p_pictures) {
            ids.insert(p_id);
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(p_id).arg(p_attributes)))
                << p_id << p_attributes << p_pictures;
        };
        const QString move = QStringLiteral(":/move_icon_160x120.png 0 0");
        const QString clock = QStringLiteral(":/time_icon_24x24.png 78 56");
        row(0, "", {":/main.png 0 0"});
        row(100, "n=0", {move, ":/speed_slow.png"});
        row(100, "n=1", {move, ":/speed_mid.png"});
        row(100, "n=2", {move, ":/speed_fast.png"});
        row(100, "n=3", {move});
        row(101, "n=1", {move, ":/move_wait.png 0 0"});
        row(102, "", {move, ":/move_backforward.png 0 0"});
        row(103, "", {move, ":/move_forward_icon.png 0 0"});
        row(105, "", {move, ":/stop_moving_icon.png 0 0"});
        row(106, "", {move, ":/turn_left_icon.png 0 0"});
        row(109, "", {move, ":/turn_right_icon.png 0 0"});
        row(104, "n=1", {move, ":/move_forward_icon.png 0 0", clock});
        row(118, "n=1", {move, ":/move_backforward.png 0 0", clock});
        row(119, "n=1", {move, ":/turn_left_icon.png 0 0", clock});
        row(120, "n=1", {move, ":/turn_right_icon.png 0 0", clock});
        row(111, "n=2", {move, ":/single_motor_clockwise_icon.png 0 0"});
        row(110, "n=2", {move, ":/single_motor_anti_clockwise_icon.png 0 0"});
        row(113, "n=2", {move, ":/single_motor_clockwise_icon.png 0 0", clock});
        row(112, "n=2", {move, ":/single_motor_anti_clockwise_icon.png 0 0", clock});
        row(117, "n=2", {move, ":/single_motor_stop_icon.png 0 0"});
        const QString control = QStringLiteral(":/control_icon_nol_140x120.png 0 0");
        row(308, "port=4 bInfread=1",
            {control, ":/waituntilinfread_icon.png 0 0", ":/infread_body.png 86 10"});
        row(308, "port=4 bInfread=0",
            {control, ":/waituntilinfread_icon.png 0 0", ":/infread_nobody.png 86 10"});
        row(309, "port=5 bInfread=1",
            {control, ":/wait_until_touch_icon.png 0 0", ":/until_touch_down_icon.png 86 10"});
        row(309, "port=5 bInfread=0",
            {control, ":/wait_until_touch_icon.png 0 0", ":/until_touch_up_icon.png 86 10"});
        const QString voice = QStringLiteral(":/voice/voiceModule_bg_nol.png 0 0");
        const QString play = QStringLiteral(":/voice/play_icon_28x26.png 80 10");
        row(801, "n=6", {voice, ":/voice/2/6.png", play});
        row(802, "n=4", {voice, ":/voice/4/4.png", play});
        row(803, "n=5", {voice, ":/voice/1/5.png", play});
        row(804, "n=2", {voice, ":/voice/3/2.png", play});
        row(804, "n=3", {voice, play});
        const QString expression =
            QStringLiteral(":/expression/expression_icon_nol_140x120.png 0 0");
        row(900, "port=2 n=12", {expression, ":/expression/1/12.png"});
        row(905, "port=2 n=4", {expression, ":/expression/2/4.png"});
        row(902, "port=2 n=9", {expression, ":/expression/3/9.png"});
        row(906, "port=2 n=25", {expression, ":/expression/4/25.png"});
        row(903, "n=12", {expression, ":/expression/5/11.png"});
        row(901, "port=2", {expression, ":/expression/close_one_icon.png 0 0"});
        row(904, "", {expression, ":/expression/close_icon.png 0 0"});
        QCOMPARE(blocksBeside(ids).join(QLatin1Char('\n')), QString());
    }

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

    void theServoShowsItsNumber_data()
    {
        QTest::addColumn<int>("servo");
        QTest::addColumn<QString>("text");
        QTest::newRow("1") << 1 << "ID-01";
        QTest::newRow("9") << 9 << "ID-09";
        QTest::newRow("18") << 18 << "ID-18";
        QTest::newRow("none") << 0 << "ID-00";
        QTest::newRow("too many") << 123 << "ID-123";
    }

    void theServoShowsItsNumber()
    {
        QFETCH(int, servo);
        QFETCH(QString, text);
        const auto block = loaded(107, QStringLiteral("servoId=%1 angle=0").arg(servo));
        const QImage image = paintedBlock(block.get());
        QImage expected = emptyGround();
        {
            QPainter painter(&expected);
            drawNamed(painter, ":/move_icon_160x120.png 0 0");
            drawNamed(painter, ":/serve_icon.png 0 0");
            QFont font;
            font.setPixelSize(14);
            font.setWeight(75);
            painter.setFont(font);
            painter.setPen(Qt::white);
            painter.drawText(70, 20, text);
        }
        QCOMPARE(image, expected);
    }

    void thePianoShowsItsNote()
    {
        for (int note = 1; note <= 7; ++note) {
            const auto block = loaded(800, QStringLiteral("n=%1").arg(note));
            const QImage image = paintedBlock(block.get());
            QImage expected = emptyGround();
            {
                QPainter painter(&expected);
                drawNamed(painter, ":/voice/voiceModule_bg_nol.png 0 0");
                drawNamed(painter, ":/voice/piano_icon.png 0 0");
                painter.setPen(Qt::white);
                painter.drawText(86, 28, QString::number(note));
            }
            QCOMPARE(image, expected);
        }
    }

    void aLoopShowsItsSignOnItsFrame_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QString>("frame");
        QTest::addColumn<QStringList>("pictures"); // "path x y" for a loop that is 260 wide
        QTest::addColumn<bool>("atTheEnd");        // they stand 120 left of the loop's end
        QTest::newRow("counted") << 301 << "n=2"
                                 << ":/formodule.png" << QStringList{":/repeat_icon.png 0 0"}
                                 << false;
        QTest::newRow("endless") << 303 << ""
                                 << ":/forevermodule.png" << QStringList{":/repeat_icon.png 0 0"}
                                 << false;
        QTest::newRow("until infrared, body")
            << 306 << "port=4 bInfread=1"
            << ":/loopuntil.png"
            << QStringList{":/loopuntilinfread_icon.png 140 0", ":/infread_body.png 226 10"}
            << true;
        QTest::newRow("until infrared, no body")
            << 306 << "port=4 bInfread=0"
            << ":/loopuntil.png"
            << QStringList{":/loopuntilinfread_icon.png 140 0", ":/infread_nobody.png 226 10"}
            << true;
        QTest::newRow("until touch, down") << 307 << "port=5 bInfread=1"
                                           << ":/loopuntil.png"
                                           << QStringList{":/loop_until_touch_icon.png 140 0",
                                                          ":/until_touch_down_icon.png 226 10"}
                                           << true;
        QTest::newRow("until touch, up")
            << 307 << "port=5 bInfread=0"
            << ":/loopuntil.png"
            << QStringList{":/loop_until_touch_icon.png 140 0", ":/until_touch_up_icon.png 226 10"}
            << true;
    }

    void aLoopShowsItsSignOnItsFrame()
    {
        QFETCH(int, id);
        QFETCH(QString, attributes);
        QFETCH(QString, frame);
        QFETCH(QStringList, pictures);
        QFETCH(bool, atTheEnd);
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
                const QPixmap whole(frame);
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
            QCOMPARE(loopImage(loop, right + 40), expected);
            supermodule::deleteTree(loop);
        }
    }

    void aLoopsFrameGoesAroundItsBody()
    {
        const struct {
            int id;
            const char* frame;
        } loops[] = {{301, ":/formodule.png"},
                     {303, ":/forevermodule.png"},
                     {306, ":/loopuntil.png"},
                     {307, ":/loopuntil.png"}};
        for (const auto& each : loops) {
            supermodule* loop = createModuleFromId(each.id);
            supermodule* inner = createModuleFromId(301);
            loop->setLeftModule(inner);
            inner->setLeftModule(createModuleFromId(103));
            inner->insertModule(createModuleFromId(105));
            loop->updateTree();
            const int top = static_cast<int>(loop->boundingRect().top());
            const int right = static_cast<int>(loop->boundingRect().right());
            QCOMPARE(top, -40);
            const QImage image = loopImage(loop, right + 40);
            const QImage frame = QPixmap(QString::fromLatin1(each.frame))
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
