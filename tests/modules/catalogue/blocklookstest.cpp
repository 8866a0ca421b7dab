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
        const QRectF body(100, 200, 138, 120);
        const QImage alone = m_bench->shown(body);
        m_bench->main()->appendModule(m_bench->put(103, {}));
        m_bench->main()->updateTreeAndOpacity();
        QVERIFY(!alone.isNull());
        QCOMPARE(m_bench->shown(body), alone);
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
        for (const int id : {301, 303, 306, 307}) {
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
            // From bar to body and from leg to leg; below, two blocks' round corners meet.
            for (const QRectF& place : {QRectF(body + QPointF(-12, -14), QSizeF(264, 80)),
                                        QRectF(body + QPointF(-12, 60), QSizeF(118, 36))}) {
                const int ground = m_bench->groundIn(place);
                QVERIFY2(ground == 0, qPrintable(QStringLiteral("shift %1, at %2: %3 pixels")
                                                     .arg(shift)
                                                     .arg(place.x() - body.x())
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
            const int mouth = id > 303 ? 40 : 120;
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
