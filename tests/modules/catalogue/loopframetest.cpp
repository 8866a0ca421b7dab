#include "document/tzprogramscene.h"
#include "modules/mainmodule.h"
#include "modules/supermodule.h"
#include "project/projectfile.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentpicture.h"
#include "support/system/datatable.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace
{
const int s_deepest = 6;
/** How high a bracket's head is, and down to where its legs go, in a loop's coordinates. */
const int s_headHeight = 20;
const int s_legBottom = 120;

/** A project with loops of a type in one another, blocks before each, the innermost empty. */
QByteArray tower(int p_id)
{
    const QByteArray block = "<module id=\"103\"/>";
    const QByteArray loop = "<module id=\"" + QByteArray::number(p_id) + "\">";
    return "<!DOCTYPE vantrel>\n<vantrel><basenode><module id=\"0\"/>" +
           (loop + "<left>" + block).repeated(s_deepest) + block.repeated(4) + loop + "</module>" +
           QByteArray("</left></module>").repeated(s_deepest) + "</basenode></vantrel>";
}

/** What the view shows, once on each of two grounds: where they differ, the ground is seen. */
class TwoGrounds
{
public:
    explicit TwoGrounds(TzProgramView& p_view) : m_toPixels(p_view.viewportTransform())
    {
        m_first = painted(p_view, Qt::magenta);
        m_second = painted(p_view, Qt::green);
    }

    QRgb colour(const QPoint& p_pixel) const { return m_first.pixel(p_pixel); }
    bool groundIsSeen(const QPoint& p_pixel) const
    {
        return m_first.pixel(p_pixel) != m_second.pixel(p_pixel);
    }
    /** The pixels that lie whole in a rectangle of the scene; none if it isn't all in the view. */
    QRect pixelsIn(const QRectF& p_rect) const
    {
        const QRectF exact = m_toPixels.mapRect(p_rect);
        const QPoint first(static_cast<int>(std::ceil(exact.left())),
                           static_cast<int>(std::ceil(exact.top())));
        const QPoint last(static_cast<int>(std::floor(exact.right())) - 1,
                          static_cast<int>(std::floor(exact.bottom())) - 1);
        const QRect pixels(first, last);
        return m_first.rect().contains(pixels) ? pixels : QRect();
    }

private:
    static QImage painted(TzProgramView& p_view, Qt::GlobalColor p_ground)
    {
        p_view.setBackgroundBrush(p_ground);
        return p_view.viewport()->grab().toImage();
    }

    QTransform m_toPixels;
    QImage m_first;
    QImage m_second;
};

bool alike(QRgb p_one, QRgb p_other)
{
    // What smooth scaling rounds.
    const int most = 2;
    return qAbs(qRed(p_one) - qRed(p_other)) <= most &&
           qAbs(qGreen(p_one) - qGreen(p_other)) <= most &&
           qAbs(qBlue(p_one) - qBlue(p_other)) <= most;
}
} // namespace

/** A loop's bracket is drawn in parts, of which nothing may be seen, however large it is drawn. */
class LoopFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void aFrameHasNoSeamsAtAnySizeAndDepth_data()
    {
        columns<int, int>("id", "legWidth");
        for (const int id : loopTypes()) {
            const BlockData& data = *blockDataOf(id);
            QTest::newRow(qPrintable(data.value("class"))) << id << data.bodyOffset();
        }
    }

    void aFrameHasNoSeamsAtAnySizeAndDepth()
    {
        QFETCH(int, id);
        QFETCH(int, legWidth);
        CanvasFixture canvas;
        TzProgramView& view = canvas.view;
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("loops.tlrx"));
        QVERIFY(writeWhole(path, tower(id)));
        QCOMPARE(view.openFile(path), int(ProjectOpened));
        // It is part of the ground, but doesn't change with it.
        static_cast<tzprogramscene*>(view.scene())->logo().hide();
        QVector<const supermodule*> loops; // from the inside out
        for (const supermodule* block = canvas.main()->next(); block;) {
            if (block->id == id) {
                loops.prepend(block);
                block = block->left();
            } else {
                block = block->next();
            }
        }
        QCOMPARE(loops.size(), s_deepest + 1);
        const supermodule* outermost = loops.last();

        QStringList wrong;
        for (const double zoom : {0.3, 0.5, 0.57, 0.6, 0.75, 0.9, 1.0, 1.1, 1.3, 1.5, 1.8, 2.0}) {
            // Of places beside each other the edges fall on other parts of a pixel.
            for (const int shift : {0, 1}) {
                canvas.main()->setPos(100 + shift, 400 + 3 * shift);
                canvas.main()->updateTree();
                const QRectF all = outermost->boundingRect()
                                       .translated(outermost->scenePos())
                                       .adjusted(-10, -10, 30, 30);
                view.resetMatrix();
                view.scale(zoom, zoom);
                view.resize((all.size() * zoom).toSize() + QSize(20, 20));
                view.centerOn(all.center());
                // Painted once: the blocks that came into view have their buttons then.
                QApplication::processEvents();
                const TwoGrounds shown(view);
                for (int depth = 0; depth < loops.size(); ++depth) {
                    const QString text = wrongWith(shown, *loops.at(depth), legWidth);
                    if (!text.isEmpty()) {
                        wrong << QStringLiteral("zoom %1, shift %2, depth %3: %4")
                                     .arg(zoom)
                                     .arg(shift)
                                     .arg(depth)
                                     .arg(text);
                    }
                }
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
    }

private:
    /** What is wrong with a loop's frame in a picture; empty if nothing. */
    static QString wrongWith(const TwoGrounds& p_shown, const supermodule& p_loop, int p_legWidth)
    {
        const QPointF at = p_loop.scenePos();
        const qreal top = p_loop.boundingRect().top();
        const qreal right = p_loop.boundingRect().right();
        const auto pixelsIn = [&](qreal p_left, qreal p_top, qreal p_right, qreal p_bottom) {
            return p_shown.pixelsIn(
                QRectF(QPointF(p_left, p_top), QPointF(p_right, p_bottom)).translated(at));
        };
        // Along the middle of the head and of the legs. A tab of the body reaches the middle of the
        // right one, so that there it is the half behind that.
        const qreal margin = 8;
        const struct {
            const char* name;
            QRect pixels;
        } lines[] = {
            {"head", pixelsIn(margin, top + 6, right - margin, top + 14)},
            {"left leg", pixelsIn(p_legWidth / 2.0 - 5, top + margin, p_legWidth / 2.0 + 5,
                                  s_legBottom - margin)},
            {"right leg", pixelsIn(right - 18, top + margin, right - 6, s_legBottom - margin)},
        };
        for (const auto& line : lines) {
            if (line.pixels.isEmpty()) {
                return QString::fromLatin1(line.name) + QStringLiteral(" has no pixels");
            }
            for (int y = line.pixels.top(); y <= line.pixels.bottom(); ++y) {
                for (int x = line.pixels.left(); x <= line.pixels.right(); ++x) {
                    if (p_shown.groundIsSeen(QPoint(x, y))) {
                        return QStringLiteral(
                                   "ground in the %1, %2 rows from its top, %3 from its left")
                            .arg(QString::fromLatin1(line.name))
                            .arg(y - line.pixels.top())
                            .arg(x - line.pixels.left());
                    }
                }
            }
        }
        // The hole: above the first block of a body that has a loop in it, or where there is no
        // body.
        const qreal bodyX = p_loop.left() ? p_loop.left()->scenePos().x() - at.x() : 0;
        const QRect hole = p_loop.left()
                               ? pixelsIn(bodyX + 10, top + s_headHeight + 4, bodyX + 110, -4)
                               : pixelsIn(p_legWidth + 8, top + s_headHeight + 8, right - 48, 40);
        if (hole.isEmpty()) {
            return QStringLiteral("the hole has no pixels");
        }
        for (int y = hole.top(); y <= hole.bottom(); ++y) {
            for (int x = hole.left(); x <= hole.right(); ++x) {
                if (!p_shown.groundIsSeen(QPoint(x, y))) {
                    return QStringLiteral(
                               "the hole is closed, %1 rows from its top, %2 from its left")
                        .arg(y - hole.top())
                        .arg(x - hole.left());
                }
            }
        }
        // The same shade all along the head, and down the legs as far as there is no picture on
        // them.
        const QRect head = pixelsIn(16, top, right - 16, top + s_headHeight - 3);
        for (int y = head.top(); y <= head.bottom(); ++y) {
            for (int x = head.left(); x <= head.right(); ++x) {
                if (!alike(p_shown.colour({x, y}), p_shown.colour({head.left(), y}))) {
                    return QStringLiteral(
                               "a seam in the head, %1 rows from its top, %2 from its left")
                        .arg(y - head.top())
                        .arg(x - head.left());
                }
            }
        }
        for (const QRect& leg : {pixelsIn(0, top + 15, p_legWidth - 6, -1),
                                 pixelsIn(right - 35, top + 15, right, -1)}) {
            for (int y = leg.top(); y <= leg.bottom(); ++y) {
                for (int x = leg.left(); x <= leg.right(); ++x) {
                    if (!alike(p_shown.colour({x, y}), p_shown.colour({x, leg.top()}))) {
                        return QStringLiteral(
                                   "a seam in a leg, %1 rows from its top, %2 from its left")
                            .arg(y - leg.top())
                            .arg(x - leg.left());
                    }
                }
            }
        }
        return QString();
    }
};

QTEST_MAIN(LoopFrameTest)
#include "loopframetest.moc"
