#include "document/tzprogramscene.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/supermodule.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/datatable.h"
#include "support/system/fixturetest.h"

#include <QApplication>
#include <QtTest>

#include <cmath>

namespace
{
const QColor s_frameColour(0, 175, 204);
/** Stands for a type: a loop as high as two. */
const int s_tower = -1;

/** A canvas without a logo, on which blocks stand where they are put. */
class Canvas : public CanvasFixture
{
public:
    Canvas() { static_cast<tzprogramscene*>(view.scene())->logo().hide(); }

    supermodule* put(int p_id, const QPointF& p_at)
    {
        supermodule* block = createModuleFromId(p_id);
        block->enterScene(view.scene());
        block->setPos(p_at);
        return block;
    }

    /** A block, or for s_tower a loop that holds a filled one behind a block. */
    supermodule* putTower(int p_id)
    {
        supermodule* block = put(p_id == s_tower ? 301 : p_id, {1000, 700});
        if (p_id == s_tower) {
            block->hangModule(LeftLink, put(103, {}));
            block->left()->appendModule(put(306, {}));
            block->left()->next()->hangModule(LeftLink, put(105, {}));
        }
        return block;
    }
    /** The lower right corner of a block's body, where a round one shows the ground. */
    static QRectF endOf(const supermodule& p_block)
    {
        return QRectF(p_block.x() + p_block.boundingRect().right() - 6, p_block.y() + 112, 8, 8);
    }

    void zoom(double p_factor, const QPointF& p_centre)
    {
        view.resetMatrix();
        view.scale(p_factor, p_factor);
        view.centerOn(p_centre);
        QApplication::processEvents();
    }

    /** What the view shows of a place in the scene, on a ground. */
    QImage shown(const QRectF& p_place, const QColor& p_ground = Qt::green)
    {
        view.setBackgroundBrush(p_ground);
        const QImage all = view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRectF exact = view.viewportTransform().mapRect(p_place);
        const QRect pixels(QPoint(qCeil(exact.left()), qCeil(exact.top())),
                           QPoint(qFloor(exact.right()) - 1, qFloor(exact.bottom()) - 1));
        return all.rect().contains(pixels) ? all.copy(pixels) : QImage();
    }

    /** How many pixels of a place let a quarter of the ground or more through. */
    int groundIn(const QRectF& p_place)
    {
        const QImage one = shown(p_place, Qt::magenta);
        const QImage other = shown(p_place, Qt::green);
        int count = one.isNull() ? -1 : 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                count += qRed(one.pixel(x, y)) - qRed(other.pixel(x, y)) > 64 ? 1 : 0;
            }
        }
        return count;
    }
};

/** The hue out of three that a colour is nearest to, for each pixel. */
QVector<int> nearestHues(const QImage& p_image, const QVector<int>& p_hues)
{
    QVector<int> result;
    for (int y = 0; y < p_image.height(); ++y) {
        for (int x = 0; x < p_image.width(); ++x) {
            const int hue = p_image.pixelColor(x, y).hslHue();
            int best = 0;
            int least = 361;
            for (int i = 0; i < p_hues.size(); ++i) {
                const int apart = qAbs(hue - p_hues.at(i));
                if (qMin(apart, 360 - apart) < least) {
                    least = qMin(apart, 360 - apart);
                    best = i;
                }
            }
            result.append(best);
        }
    }
    return result;
}

int differences(const QVector<int>& p_a, const QVector<int>& p_b)
{
    int count = p_a.size() == p_b.size() ? 0 : 100000;
    for (int i = 0; i < p_a.size() && count < 100000; ++i) {
        count += p_a.at(i) != p_b.at(i) ? 1 : 0;
    }
    return count;
}

/** The rectangle around the pixels that fulfil a condition. */
template <class Condition> QRect around(const QImage& p_image, Condition p_condition)
{
    QRect rect;
    for (int y = 0; y < p_image.height(); ++y) {
        for (int x = 0; x < p_image.width(); ++x) {
            if (p_condition(p_image.pixelColor(x, y), QPoint(x, y))) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    return rect;
}
} // namespace

/** What is seen of blocks on the canvas: joints, drawers, fields, mouths and frames. */
class BlockLooksTest : public FixtureTest<Canvas>
{
    Q_OBJECT

private slots:
    void theJointIsTheSameEverywhere_data()
    {
        QTest::addColumn<double>("zoom");
        QTest::newRow("half") << 0.5;
        QTest::newRow("whole") << 1.0;
        QTest::newRow("twice") << 2.0;
    }

    void theJointIsTheSameEverywhere()
    {
        QFETCH(double, zoom);
        m_bench->main()->setPos(100, 200);
        m_bench->main()->appendModule(m_bench->put(103, {}));
        m_bench->main()->updateTreeAndOpacity();
        // A joint of two other blocks, whichever of them is painted first, at the same x.
        supermodule* firstBelow = m_bench->put(800, {120, 400});
        firstBelow->appendModule(m_bench->put(103, {}));
        supermodule* behind = m_bench->put(103, {});
        supermodule* firstAbove = m_bench->put(800, {120, 600});
        firstAbove->appendModule(behind);
        for (supermodule* each : {firstBelow, firstAbove}) {
            each->updateTreeAndOpacity();
            each->setOpacityTree(false);
        }
        m_bench->view.resize(1400, 1200);
        m_bench->zoom(zoom, {300, 420});
        const auto joint = [&](int p_y) { return QRectF(236, p_y, 26, 96); };
        const int red = 0;
        const int ground = QColor(Qt::green).hslHue();
        const QVector<int> start = nearestHues(m_bench->shown(joint(200)), {red, 189, ground});
        QVERIFY(!start.isEmpty());
        // Smoothed edges mix what they lie between; and where the block before is painted last, the
        // line between the two, of 2 by some 140, is its own.
        const QVector<int> above = nearestHues(m_bench->shown(joint(400)), {red, 252, ground});
        QVERIFY(differences(start, above) <= start.size() / 50);
        const QVector<int> below = nearestHues(m_bench->shown(joint(600)), {red, 252, ground});
        QVERIFY(differences(start, below) <= qRound(2.2 * 140 * zoom * zoom));
        // The tab fills the notch.
        for (const int y : {200, 400, 600}) {
            QCOMPARE(m_bench->groundIn(QRectF(230, y + 20, 40, 76)), 0);
        }
    }

    void nothingCoversTheStartBlock()
    {
        m_bench->main()->setPos(100, 200);
        // Its face, and all that is left of the joint but for the corners, which that fills.
        const QRectF face(100, 200, 128, 120);
        const QRectF side(100, 214, 138, 92);
        const QImage faceAlone = m_bench->shown(face);
        const QImage sideAlone = m_bench->shown(side);
        m_bench->main()->appendModule(m_bench->put(103, {}));
        m_bench->main()->updateTreeAndOpacity();
        QVERIFY(!faceAlone.isNull() && !sideAlone.isNull());
        QCOMPARE(m_bench->shown(face), faceAlone);
        QCOMPARE(m_bench->shown(side), sideAlone);
    }

    void aJointIsFilledAtBothEnds_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("behind");
        QTest::addColumn<double>("zoom");
        const QVector<int> one{104};
        const QVector<int> each{0, 104, 801, 900, 301, 306, s_tower};
        const QVector<QPair<double, QVector<int>>> zooms{{0.5, one},  {0.57, each}, {0.6, one},
                                                         {1.0, each}, {1.3, one},   {1.8, one}};
        for (const auto& [zoom, blocks] : zooms) {
            for (const int before : blocks) {
                for (const int behind : {103, 800, 902, 301, 307, s_tower}) {
                    QTest::addRow("%d and %d at %g", before, behind, zoom)
                        << before << behind << zoom;
                }
            }
        }
    }

    void aJointIsFilledAtBothEnds()
    {
        QFETCH(int, before);
        QFETCH(int, behind);
        QFETCH(double, zoom);
        supermodule* first = before == 0 ? m_bench->main() : m_bench->putTower(before);
        supermodule* second = m_bench->putTower(behind);
        // Whichever of the two is painted last.
        for (const int above : {0, 1}) {
            first->setZValue(1 - above);
            second->setZValue(above);
            first->appendModule(second);
            for (const int shift : {0, 1, 2}) {
                first->setPos(300 + shift, 300 + 3 * shift);
                first->updateTreeAndOpacity();
                first->setOpacityTree(false);
                m_bench->zoom(zoom, second->pos());
                const qreal top = qMax(first->boundingRect().top(), second->boundingRect().top());
                // But for the edge, which smooth scaling mixes with the ground.
                const qreal edge = qMax(1.0, 1 / zoom);
                const QRectF joint(second->pos() + QPointF(-14, top + edge),
                                   second->pos() + QPointF(16, 120 - edge));
                const int ground = m_bench->groundIn(joint);
                QVERIFY2(ground == 0,
                         qPrintable(QStringLiteral("shift %1: %2 pixels").arg(shift).arg(ground)));
            }
            // Its end is as round as that of a block alone, and again where the joint was.
            const auto isRound = [&](const QRectF& p_corner) {
                m_bench->zoom(zoom, p_corner.center());
                return m_bench->groundIn(p_corner) > 0;
            };
            QVERIFY(isRound(m_bench->endOf(*second)));
            first->removeChild(second);
            QVERIFY(isRound(m_bench->endOf(*first)));
            second->setPos(1500, 700);
            second->updateTree();
            QVERIFY(isRound(QRectF(second->pos() + QPointF(0, 112), QSizeF(8, 8))));
        }
    }

    void eachHalfOfAJointHasItsBlocksColour()
    {
        supermodule* first = m_bench->put(104, {300, 300});
        supermodule* second = m_bench->put(801, {});
        supermodule* third = m_bench->put(301, {});
        first->appendModule(second);
        first->appendModule(third);
        first->updateTreeAndOpacity();
        first->setOpacityTree(false);
        const auto colour = [&](const supermodule* p_block, qreal p_x, qreal p_y) {
            return m_bench->shown(QRectF(p_block->pos() + QPointF(p_x, p_y), QSizeF(1, 1)))
                .pixelColor(0, 0);
        };
        for (const supermodule* each : {first, second}) {
            const qreal joint = 120;
            const QColor body = colour(each, 60, 6);
            const QColor next = colour(each->next(), 60, each == first ? 6 : -14);
            const QColor rim = colour(each, 60, 1);
            QVERIFY(body != next && body != rim);
            for (const qreal y : {4.0, 115.0}) {
                QCOMPARE(colour(each, joint - 4, y), body);
                QCOMPARE(colour(each, joint + 4, y), next);
            }
            // The rims go on to the joint and along it.
            QCOMPARE(colour(each, joint - 4, 1), rim);
            QCOMPARE(colour(each, joint - 4, 118), rim);
            QVERIFY(colour(each, joint, 6) != body && colour(each, joint, 6) != next);
        }
        QCOMPARE(colour(second, 124, 118), colour(third, 60, -19));
    }

    void aJointBesideAPreviewIsRound()
    {
        supermodule* first = m_bench->put(104, {300, 300});
        supermodule* second = m_bench->put(800, {});
        first->appendModule(second);
        first->updateTreeAndOpacity();
        m_bench->dragOver(103, first->pos() + QPointF(180, 10));
        QVERIFY(first->next()->isPreview());
        QCOMPARE(first->next()->next(), second);
        first->setOpacityTree(false);
        first->next()->hide();
        QVERIFY(m_bench->groundIn(m_bench->endOf(*first)) > 0);
        QVERIFY(m_bench->groundIn(QRectF(second->pos() + QPointF(0, 112), QSizeF(8, 8))) > 0);
        m_bench->leave();
    }

    void theDrawersOfSpeedMotorAndStopAreOne()
    {
        const auto drawer = [&](int p_id, int p_x) {
            supermodule* block = m_bench->put(p_id, QPointF(p_x, 200));
            block->setOpacity(1);
            QImage image = m_bench->shown(QRectF(p_x - 4, 196, 128, 150)).copy(20, 100, 92, 50);
            // But for what is written on them.
            for (int y = 8; y < 40; ++y) {
                for (int x = 30; x < 62; ++x) {
                    image.setPixel(x, y, 0);
                }
            }
            return image;
        };
        const QImage speed = drawer(100, 400);
        const QImage motor = drawer(111, 600);
        QVERIFY(!speed.isNull());
        QCOMPARE(motor, speed);
        QCOMPARE(drawer(110, 100), speed);
        QCOMPARE(drawer(117, 800), speed);
    }

    void numbersAreBlackOnWhiteUntilTheyAreMarked_data()
    {
        QTest::addColumn<int>("id");
        QTest::newRow("drive") << 104;
        QTest::newRow("wait") << 101;
        QTest::newRow("count") << 301;
        QTest::newRow("motor") << 113;
        QTest::newRow("servo") << 107;
    }

    void numbersAreBlackOnWhiteUntilTheyAreMarked()
    {
        QFETCH(int, id);
        // Whatever the colours of other texts are.
        const QPalette before = QApplication::palette();
        QPalette colours = before;
        colours.setColor(QPalette::ButtonText, Qt::gray);
        QApplication::setPalette(colours);
        const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
        m_bench.emplace();
        supermodule* block = m_bench->put(id, {400, 200});
        block->setOpacity(1);
        const QRectF inside = block->mapRectToScene(block->buttonRect(0)).adjusted(8, 6, -8, -8);
        const QColor blue(0, 120, 215);
        const auto has = [&](const QColor& p_colour) {
            return !around(m_bench->shown(inside), [&](const QColor& p_each, const QPoint&) {
                        return p_each == p_colour;
                    }).isNull();
        };
        QVERIFY(has(Qt::white));
        QVERIFY(has(Qt::black));
        QVERIFY(!has(blue));
        m_bench->press(inside.center());
        m_bench->release(inside.center());
        QTRY_VERIFY(has(blue));
    }

    void aLoopsMouthIsClosedAroundItsBody_data()
    {
        columns<int, double>("id", "zoom");
        for (const int id : loopTypes()) {
            for (const double zoom : {0.5, 0.57, 0.6, 1.0, 1.3, 1.8}) {
                QTest::addRow("%d at %g", id, zoom) << id << zoom;
            }
        }
    }

    void aLoopsMouthIsClosedAroundItsBody()
    {
        QFETCH(int, id);
        QFETCH(double, zoom);
        supermodule* loop = m_bench->put(id, {300, 300});
        loop->setLeftModule(m_bench->put(103, {}));
        loop->left()->insertModule(m_bench->put(105, {}));
        m_bench->main()->hide();
        for (const int shift : {0, 1, 2}) {
            loop->setPos(300 + shift, 300 + 3 * shift);
            loop->updateTreeAndOpacity();
            loop->setOpacityTree(false);
            m_bench->zoom(zoom, loop->pos() + QPointF(200, 40));
            const QPointF body = loop->left()->scenePos();
            // From bar to body and from leg to leg, but for the lower edge.
            const qreal edge = qMax(1.0, 1 / zoom);
            for (const QRectF& place : {QRectF(body + QPointF(-12, -14), QSizeF(264, 80)),
                                        QRectF(body + QPointF(-12, 60), QSizeF(264, 60 - edge))}) {
                const int ground = m_bench->groundIn(place);
                QVERIFY2(ground == 0, qPrintable(QStringLiteral("shift %1, at %2: %3 pixels")
                                                     .arg(shift)
                                                     .arg(place.x() - body.x())
                                                     .arg(ground)));
            }
        }
    }

    void aHighMouthIsClosedBesideTheEndsOfItsBody_data()
    {
        aLoopsMouthIsClosedAroundItsBody_data();
    }
    void aHighMouthIsClosedBesideTheEndsOfItsBody()
    {
        QFETCH(int, id);
        QFETCH(double, zoom);
        m_bench->main()->hide();
        supermodule* loop = m_bench->put(id, {300, 300});
        loop->hangModule(LeftLink, m_bench->put(103, {}));
        // It raises the mouth above both.
        supermodule* inner = m_bench->putTower(301);
        inner->hangModule(LeftLink, m_bench->put(104, {}));
        supermodule* last = m_bench->put(801, {});
        loop->left()->appendModule(inner);
        loop->left()->appendModule(last);
        for (const int shift : {0, 1, 2}) {
            loop->setPos(300 + shift, 300 + 3 * shift);
            loop->updateTreeAndOpacity();
            loop->setOpacityTree(false);
            const qreal edge = qMax(1.0, 1 / zoom);
            for (const QPointF& end :
                 {loop->left()->scenePos(), last->scenePos() + QPointF(120, 0)}) {
                m_bench->zoom(zoom, end);
                const int ground = m_bench->groundIn(
                    QRectF(end + QPointF(-14, edge), end + QPointF(16, 120 - edge)));
                QVERIFY2(ground == 0, qPrintable(QStringLiteral("shift %1, at %2: %3 pixels")
                                                     .arg(shift)
                                                     .arg(end.x() - loop->x())
                                                     .arg(ground)));
            }
        }
    }

    void theUpperEdgeOfAMouthIsEven_data() { aLoopsMouthIsClosedAroundItsBody_data(); }
    void theUpperEdgeOfAMouthIsEven()
    {
        QFETCH(int, id);
        QFETCH(double, zoom);
        m_bench->main()->hide();
        supermodule* loop = m_bench->put(id, {300, 300});
        loop->updateTreeAndOpacity();
        loop->setOpacityTree(false);
        for (const int shift : {0, 1, 2}) {
            loop->setPos(300 + shift, 300 + shift);
            m_bench->zoom(zoom, loop->pos() + QPointF(130, 40));
            const int mouth = blockDataOf(id)->bodyOffset();
            const QImage edge = m_bench->shown(
                QRectF(loop->pos() + QPointF(mouth + 18, -8), QSizeF(186 - mouth, 16)));
            QVERIFY(edge.width() > 20);
            for (int y = 0; y < edge.height(); ++y) {
                for (int x = 0; x < edge.width(); ++x) {
                    const QColor here = edge.pixelColor(x, y);
                    const QColor first = edge.pixelColor(0, y);
                    QVERIFY2(
                        qAbs(here.red() - first.red()) <= 3 &&
                            qAbs(here.green() - first.green()) <= 3,
                        qPrintable(QStringLiteral("shift %1, %2 %3").arg(shift).arg(x).arg(y)));
                }
            }
        }
    }

    void aMouthsEdgeIsStraight()
    {
        for (const char* name : {":/formodule.png", ":/forevermodule.png", ":/loopuntil.png"}) {
            const QImage frame(QString::fromLatin1(name));
            const auto edge = [&](int p_y, int p_from) {
                int x = p_from;
                while (x > 0 && qAlpha(frame.pixel(x, p_y)) < 128) {
                    --x;
                }
                return x;
            };
            for (int y = 31; y < 60; ++y) {
                QVERIFY2(edge(y, 160) == edge(60, 160), name);
                QVERIFY2(edge(y, 160) < 120, name);
            }
        }
    }

    void theSignOfALoopsLegStandsInItsMiddle_data()
    {
        QTest::addColumn<bool>("full");
        QTest::newRow("empty") << false;
        QTest::newRow("with a body") << true;
    }

    void theSignOfALoopsLegStandsInItsMiddle()
    {
        QFETCH(bool, full);
        supermodule* loop = m_bench->put(306, {300, 300});
        if (full) {
            loop->setLeftModule(m_bench->put(103, {}));
        }
        loop->updateTreeAndOpacity();
        loop->setOpacityTree(false);
        const qreal right = loop->boundingRect().right();
        const auto middleOf = [&](const QRectF& p_place, bool p_light) {
            const QRect found =
                around(m_bench->shown(p_place.translated(loop->scenePos())),
                       [&](const QColor& p_each, const QPoint&) {
                           return p_light ? p_each.lightness() > 200 : p_each.lightness() < 70;
                       });
            return found.isNull() ? -1000.0 : p_place.left() + found.left() + found.width() / 2.0;
        };
        const qreal leg = right - 19;
        QVERIFY(qAbs(middleOf(QRectF(right - 36, 8, 34, 34), false) - leg) <= 1.5);
        if (full) {
            // Chevron and port hang in the middle of a leg each.
            QVERIFY(qAbs(middleOf(QRectF(0, 110, 36, 22), true) - 21) <= 1.5);
            QVERIFY(qAbs(middleOf(QRectF(right - 32, 108, 28, 24), true) - leg) <= 1.5);
        }
    }

    void aCopyFrameGoesAroundBodyAndDrawers_data()
    {
        columns<int, bool>("id", "full");
        for (const BlockData& data : blockData()) {
            if (data.id() != 0) {
                QTest::newRow(qPrintable(data.value("class"))) << data.id() << false;
                if (data.isLoop()) {
                    QTest::newRow(qPrintable(data.value("class") + " full")) << data.id() << true;
                }
            }
        }
    }

    void aCopyFrameGoesAroundBodyAndDrawers()
    {
        QFETCH(int, id);
        QFETCH(bool, full);
        m_bench->main()->hide();
        supermodule* block = m_bench->put(id, {300, 300});
        if (full) {
            block->setLeftModule(m_bench->put(103, {}));
            block->left()->insertModule(m_bench->put(301, {}));
        }
        block->updateTreeAndOpacity();
        block->setOpacityTree(false);
        const QRectF place(250, 220, 700, 260);
        const QColor ground(Qt::green);
        const QImage before = m_bench->shown(place);
        block->setSelectTree(true);
        const QImage framed = m_bench->shown(place);
        QVERIFY(!framed.isNull());
        const QRect whole =
            around(before, [&](const QColor& p_each, const QPoint&) { return p_each != ground; });
        const QRect frame = around(
            framed, [&](const QColor& p_each, const QPoint&) { return p_each == s_frameColour; });
        // On all sides along the edge, below around the drawers.
        for (const int apart : {frame.left() - whole.left(), frame.top() - whole.top(),
                                frame.right() - whole.right(), frame.bottom() - whole.bottom()}) {
            QVERIFY2(qAbs(apart) <= 4, qPrintable(QString::number(apart)));
        }
        // White under it, and seen in grey.
        int white = 0;
        int grey = 0;
        for (int y = 0; y < framed.height(); ++y) {
            for (int x = 0; x < framed.width(); ++x) {
                white +=
                    framed.pixelColor(x, y) == Qt::white && before.pixelColor(x, y) != Qt::white
                        ? 1
                        : 0;
                grey += qAbs(qGray(framed.pixel(x, y)) - qGray(before.pixel(x, y))) > 40 ? 1 : 0;
            }
        }
        QVERIFY2(white > 200, qPrintable(QString::number(white)));
        QVERIFY2(grey > 400, qPrintable(QString::number(grey)));
        // However far the block reaches: a loop may be a million pixels wide.
        QCOMPARE(block->selectItem().pixmap().size(),
                 QPixmap(blockDataOf(id)->value("copyFrame")).size());
        if (block->left() && full) {
            // It follows the body.
            block->removeChild(block->left());
            QCOMPARE(block->selectItem().sceneBoundingRect().left(), 284.0);
            QVERIFY(qAbs(block->selectItem().sceneBoundingRect().right() - 580) <= 2);
        }
    }

    void aCopyFrameIsStraightAtAJointAndRoundAtAnEnd()
    {
        m_bench->main()->hide();
        supermodule* first = m_bench->put(103, {300, 300});
        supermodule* second = m_bench->put(105, {});
        first->appendModule(second);
        first->updateTreeAndOpacity();
        first->setOpacityTree(false);
        first->setSelectTree(true);
        m_bench->zoom(1, second->pos());
        const auto rim = [&](const supermodule* p_block, qreal p_x, qreal p_y) {
            return m_bench->shown(QRectF(p_block->pos() + QPointF(p_x, p_y), QSizeF(1, 14)));
        };
        for (const qreal y : {-2.0, 108.0}) {
            QVERIFY(!rim(first, 60, y).isNull());
            QCOMPARE(rim(first, 112, y), rim(first, 60, y));
            QCOMPARE(rim(second, 8, y), rim(second, 60, y));
            QVERIFY(rim(first, 8, y) != rim(first, 60, y));
            QVERIFY(rim(second, 112, y) != rim(second, 60, y));
        }
    }

    void aDragTestsWhereItsPictureIs_data()
    {
        columns<int, double>("width", "scale");
        QTest::newRow("1280") << 1280 << 0.6;
        QTest::newRow("1920") << 1920 << 1.0;
    }

    void aDragTestsWhereItsPictureIs()
    {
        QFETCH(int, width);
        QFETCH(double, scale);
        m_bench->view.resize(width, 700);
        m_bench->zoom(scale, {600, 300});
        for (const BlockRecord& record : blockRecords()) {
            if (record.category == HiddenCategory) {
                continue;
            }
            const QPointF at(620, 150);
            m_bench->dragOver(record.id, at);
            const supermodule* dragged = liveModules.last();
            QCOMPARE(dragged->id, record.id);
            const int edge = m_bench->at(at).x() - QImage(record.image).width() / 2;
            const int tested = m_bench->view.mapFromScene(dragged->scenePos()).x();
            QVERIFY2(qAbs(edge - tested) <= 10, qPrintable(record.caption));
            m_bench->leave();
        }
        // A loop that is held into another one's mouth opens the gap there.
        supermodule* outer = m_bench->put(301, {600, 300});
        outer->updateTreeAndOpacity();
        for (const int id : {301, 306}) {
            const int half = QImage(findBlockRecord(id)->image).width() / 2;
            for (const int beside : {-10, 0, 10}) {
                const QPoint mouth =
                    m_bench->view.mapFromScene(outer->scenePos() + QPointF(120, 10));
                m_bench->dragOver(id, m_bench->view.mapToScene(mouth + QPoint(half + beside, 0)));
                QVERIFY(outer->left());
                QVERIFY(outer->left()->isPreview());
                m_bench->leave();
            }
        }
    }
};

QTEST_MAIN(BlockLooksTest)
#include "blocklookstest.moc"
