#include "modules/catalogue/blocktables.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "proj/controls/selectablebutton.h"
#include "support/canvas/canvastest.h"
#include "support/system/datatable.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace
{
const int s_forward = 103;
const int s_forwardTime = 104;
const int s_speed = 100;
const int s_servo = 107;
const int s_piano = 800;
const int s_animal = 801;
const int s_symbol = 900;
const int s_forever = 303;
const int s_for = 301;
const int s_untilTouch = 307;

/** The middle of a button that is alone on its block, and of the left one of two. */
const QPointF s_drawer(50, 120);
const QPointF s_body(30, 30);

Qt::CursorShape shape(const CanvasFixture& p_canvas)
{
    return p_canvas.view.viewport()->cursor().shape();
}

void hover(CanvasFixture& p_canvas, const QPointF& p_scenePos)
{
    QMouseEvent event(QEvent::MouseMove, p_canvas.at(p_scenePos),
                      p_canvas.view.viewport()->mapToGlobal(p_canvas.at(p_scenePos)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(p_canvas.view.viewport(), &event);
    QCoreApplication::processEvents();
}

/** In steps, as a hand does it. */
void drag(CanvasFixture& p_canvas, const QPointF& p_from, const QPointF& p_way)
{
    p_canvas.press(p_from);
    for (int step = 1; step <= 4; ++step) {
        p_canvas.move(p_from + p_way * step / 4.0);
    }
    p_canvas.release(p_from + p_way);
}

/** What asks for a panel or is a pop-up. */
struct Openings {
    explicit Openings(TzProgramView& p_view)
        : keyboard(&p_view, &TzProgramView::showNumKeyboardSignal),
          voice(&p_view, &TzProgramView::showVoiceSignal),
          expression(&p_view, &TzProgramView::showExpressionSignal),
          panel(&p_view, &TzProgramView::showPanelSignal)
    {
    }

    int count() const
    {
        const graphicsItem_Param* popUp = graphicsItem_Param::existing();
        return keyboard.count() + voice.count() + expression.count() + panel.count() +
               (popUp && popUp->isVisible() ? 1 : 0);
    }

    QSignalSpy keyboard;
    QSignalSpy voice;
    QSignalSpy expression;
    QSignalSpy panel;
};

/** What ends a drag; the first without the canvas. */
const struct {
    const char* name;
    void (*act)(CanvasFixture&);
} s_dragEnds[] = {
    {"released elsewhere", [](CanvasFixture&) {}},
    {"another window",
     [](CanvasFixture& p_canvas) {
         QEvent away(QEvent::WindowDeactivate);
         QApplication::sendEvent(&p_canvas.view, &away);
     }},
    {"deleted", [](CanvasFixture& p_canvas) { p_canvas.key(Qt::Key_Delete); }},
    {"undone", [](CanvasFixture& p_canvas) { p_canvas.key(Qt::Key_Z, Qt::ControlModifier); }},
    {"a new program", [](CanvasFixture& p_canvas) { p_canvas.document.startAnew(); }},
    {"dragged into the bin",
     [](CanvasFixture& p_canvas) {
         p_canvas.move({470, 800});
         p_canvas.release({470, 800});
     }},
    {"a second button",
     [](CanvasFixture& p_canvas) {
         QTest::mouseClick(p_canvas.view.viewport(), Qt::MiddleButton, Qt::NoModifier,
                           p_canvas.at(QPointF(900, 100)));
     }},
    {"copied", [](CanvasFixture& p_canvas) { p_canvas.key(Qt::Key_C, Qt::ControlModifier); }},
};

QRect seenOf(const CanvasFixture& p_canvas, const supermodule* p_block)
{
    return p_canvas.view.mapFromScene(p_block->sceneBoundingRect()).boundingRect();
}
} // namespace

/** How the canvas answers the mouse: cursors, clicks and drags of drawers, zoom, where gaps are. */
class FeelTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void init()
    {
        graphicsItem_Param::dismiss();
        m_canvas.emplace();
    }

    void theHandIsOpenOverWhatCanBeDragged()
    {
        const supermodule* block = m_canvas->drop(s_forwardTime, QPointF(500, 300));
        hover(*m_canvas, QPointF(800, 100));
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
        hover(*m_canvas, block->scenePos() + s_body);
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
        hover(*m_canvas, block->scenePos() + s_drawer);
        QCOMPARE(shape(*m_canvas), Qt::ArrowCursor);
        hover(*m_canvas, block->scenePos() + s_drawer + QPointF(2, 1));
        QCOMPARE(shape(*m_canvas), Qt::ArrowCursor);
        hover(*m_canvas, m_canvas->main()->scenePos() + s_body);
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
    }

    void thePopUpHasAnArrowAndLightButtons()
    {
        const supermodule* block = m_canvas->drop(s_speed, QPointF(500, 200));
        m_canvas->click(block->scenePos() + s_drawer);
        const graphicsItem_Param* popUp = graphicsItem_Param::existing();
        QVERIFY(popUp && popUp->isVisible());
        QPushButton& button = *popUp->buttons().at(1);
        const QRectF place = button.graphicsProxyWidget()->sceneBoundingRect();
        hover(*m_canvas, popUp->sceneBoundingRect().topLeft() + QPointF(5, 88));
        QCOMPARE(shape(*m_canvas), Qt::ArrowCursor);
        const auto seen = [&] {
            const QRect rect(m_canvas->at(place.topLeft()), m_canvas->at(place.bottomRight()));
            return m_canvas->view.viewport()->grab(rect).toImage();
        };
        const QImage before = seen();
        hover(*m_canvas, place.center());
        QCOMPARE(shape(*m_canvas), Qt::ArrowCursor);
        const QImage lit = seen();
        int lighter = 0;
        for (int y = 0; y < lit.height(); ++y) {
            for (int x = 0; x < lit.width(); ++x) {
                const int was = qGreen(before.pixel(x, y));
                const int is = qGreen(lit.pixel(x, y));
                lighter += is != was && qAbs(is - was - (255 - was) * 0.08) <= 3;
            }
        }
        QVERIFY2(2 * lighter > lit.width() * lit.height(), qPrintable(QString::number(lighter)));
        hover(*m_canvas, QPointF(800, 100));
        QCOMPARE(seen(), before);
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
    }

    void theHandIsClosedInADrag()
    {
        const supermodule* block = m_canvas->drop(s_forwardTime, QPointF(500, 300));
        const QPointF from = block->scenePos() + s_body;
        hover(*m_canvas, from);
        m_canvas->press(from);
        QCOMPARE(shape(*m_canvas), Qt::ClosedHandCursor);
        m_canvas->move(from + QPointF(40, 30));
        QCOMPARE(shape(*m_canvas), Qt::ClosedHandCursor);
        m_canvas->release(from + QPointF(40, 30));
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
        m_canvas->click(block->scenePos() + s_body);
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
    }

    void aDrawerHasAnArrowUntilItIsDragged()
    {
        const supermodule* block = m_canvas->drop(s_forwardTime, QPointF(500, 300));
        const QPointF from = block->scenePos() + s_drawer;
        hover(*m_canvas, from);
        m_canvas->press(from);
        QCOMPARE(shape(*m_canvas), Qt::ArrowCursor);
        m_canvas->move(from + QPointF(40, 30));
        QCOMPARE(shape(*m_canvas), Qt::ClosedHandCursor);
        m_canvas->release(from + QPointF(40, 30));
        // The mouse is still over the drawer.
        QCOMPARE(shape(*m_canvas), Qt::ArrowCursor);
        hover(*m_canvas, QPointF(800, 100));
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
    }

    void theHandOpensHoweverADragEnds_data()
    {
        QTest::addColumn<int>("end");
        for (int end = 0; end < int(std::size(s_dragEnds)); ++end) {
            QTest::newRow(s_dragEnds[end].name) << end;
        }
    }

    void theHandOpensHoweverADragEnds()
    {
        QFETCH(int, end);
        for (const QPointF& grip : {s_body, s_drawer}) {
            m_canvas.emplace();
            const supermodule* block = m_canvas->drop(s_forwardTime, QPointF(500, 300));
            const QPointF from = block->scenePos() + grip;
            hover(*m_canvas, from);
            m_canvas->press(from);
            m_canvas->move(from + QPointF(40, 30));
            m_canvas->move(from + QPointF(60, 40));
            QCOMPARE(shape(*m_canvas), Qt::ClosedHandCursor);
            s_dragEnds[end].act(*m_canvas);
            if (end != 0) {
                QVERIFY(shape(*m_canvas) != Qt::ClosedHandCursor);
            }
            hover(*m_canvas, QPointF(900, 100));
            QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        }
    }

    void aPanEndsWithItsButton()
    {
        const QScrollBar& bar = *m_canvas->view.horizontalScrollBar();
        const QPointF from(800, 400);
        const QPoint at = m_canvas->at(from);
        m_canvas->press(from);
        QCOMPARE(shape(*m_canvas), Qt::ClosedHandCursor);
        const auto moveTo = [&](const QPoint& p_at, Qt::MouseButtons p_buttons) {
            QMouseEvent event(QEvent::MouseMove, p_at, m_canvas->view.viewport()->mapToGlobal(p_at),
                              Qt::NoButton, p_buttons, Qt::NoModifier);
            QApplication::sendEvent(m_canvas->view.viewport(), &event);
        };
        const int before = bar.value();
        moveTo(at - QPoint(50, 0), Qt::LeftButton);
        QCOMPARE(bar.value(), before + 50);
        // The release went elsewhere.
        moveTo(at - QPoint(90, 0), Qt::NoButton);
        moveTo(at - QPoint(130, 0), Qt::NoButton);
        QCOMPARE(shape(*m_canvas), Qt::OpenHandCursor);
        QCOMPARE(bar.value(), before + 50);
    }

    void aDragByADrawerOpensNothing_data()
    {
        QTest::addColumn<int>("id");
        QTest::newRow("number keyboard") << s_forwardTime;
        QTest::newRow("pop-up") << s_speed;
        QTest::newRow("notes") << s_piano;
        QTest::newRow("sounds") << s_animal;
        QTest::newRow("symbols") << s_symbol;
        QTest::newRow("servo angle") << s_servo;
    }

    void aDragByADrawerOpensNothing()
    {
        QFETCH(int, id);
        const supermodule* block = m_canvas->drop(id, QPointF(500, 250));
        const Openings opened(m_canvas->view);
        const QPointF place = block->scenePos();
        drag(*m_canvas, place + s_drawer, QPointF(60, 45));
        QCOMPARE(block->scenePos(), place + QPointF(60, 45));
        QCOMPARE(opened.count(), 0);
        QVERIFY(!SelectableButton::current());
        // There and back is a drag, too.
        m_canvas->press(block->scenePos() + s_drawer);
        m_canvas->move(block->scenePos() + s_drawer + QPointF(40, 0));
        const QPointF back = block->scenePos() + s_drawer - QPointF(40, 0);
        m_canvas->move(back);
        m_canvas->release(back);
        QCOMPARE(opened.count(), 0);
        m_canvas->click(block->scenePos() + s_drawer);
        QCOMPARE(opened.count(), 1);
    }

    void aHandThatTremblesStillClicks()
    {
        const supermodule* block = m_canvas->drop(s_forwardTime, QPointF(500, 250));
        const Openings opened(m_canvas->view);
        drag(*m_canvas, block->scenePos() + s_drawer, QPointF(4, 0));
        QCOMPARE(opened.count(), 1);
        QVERIFY(SelectableButton::current());
    }

    void aZoomKeepsTheStartBlockInSight()
    {
        pressedModule.clear();
        m_canvas->main()->setPos(5000, 5000);
        m_canvas->view.centerOn(5400, 5200);
        QVERIFY(m_canvas->view.viewport()->rect().contains(seenOf(*m_canvas, m_canvas->main())));
        for (const int way : {1, 1, 1, 1, 1, 1, 1, 1, 1, -1, -1, -1, -1, -1, -1, -1}) {
            m_canvas->view.zoomView(way);
            QVERIFY(
                m_canvas->view.viewport()->rect().contains(seenOf(*m_canvas, m_canvas->main())));
        }
    }

    void aZoomKeepsTheBlockLastPressedWhereItIs()
    {
        m_canvas->main()->setPos(5000, 5000);
        m_canvas->view.centerOn(5450, 5250);
        const supermodule* block = m_canvas->drop(s_forward, QPointF(5850, 5400));
        m_canvas->click(block->scenePos() + s_body);
        const QPoint before = seenOf(*m_canvas, block).center();
        for (const int way : {-1, -1, -1, 1, 1, 1, 1, 1}) {
            m_canvas->view.zoomView(way);
            QVERIFY((seenOf(*m_canvas, block).center() - before).manhattanLength() < 20);
        }
        for (const int way : {1, 1, 1, 1}) {
            m_canvas->view.zoomView(way);
            QVERIFY(m_canvas->view.viewport()->rect().contains(seenOf(*m_canvas, block)));
        }
        // A press on the ground doesn't forget it.
        m_canvas->view.zoomView(0);
        m_canvas->view.centerOn(5450, 5250);
        m_canvas->click(QPointF(5500, 5050));
        for (int i = 0; i < 9; ++i) {
            m_canvas->view.zoomView(1);
        }
        QVERIFY(m_canvas->view.viewport()->rect().contains(seenOf(*m_canvas, block)));
        // The start block takes its place once it has gone.
        m_canvas->click(block->scenePos() + s_body);
        m_canvas->key(Qt::Key_Delete);
        QVERIFY(!m_canvas->blocks().contains(const_cast<supermodule*>(block)));
        m_canvas->view.zoomView(-1);
        QVERIFY(m_canvas->view.viewport()->rect().contains(seenOf(*m_canvas, m_canvas->main())));
    }

    void theGapIsWhereTheDraggedPictureBegins_data()
    {
        columns<int, double>("id", "scale");
        // As on screens of 1280 and 1920 pixels.
        for (const double scale : {0.5, 1.0}) {
            for (const BlockRecord& record : blockRecords()) {
                if (record.category != HiddenCategory) {
                    QTest::newRow(qPrintable(QStringLiteral("%1 at %2").arg(record.id).arg(scale)))
                        << record.id << scale;
                }
            }
        }
    }

    void theGapIsWhereTheDraggedPictureBegins()
    {
        QFETCH(int, id);
        QFETCH(double, scale);
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        supermodule* second = m_canvas->dropBehind(first, s_forward);
        supermodule* third = m_canvas->dropBehind(second, s_forward);
        m_canvas->view.resetMatrix();
        m_canvas->view.scale(scale, scale);
        const int middle = QPixmap(findBlockRecord(id)->pressedImage).width() / 2;
        for (const supermodule* place : {second, third}) {
            // The cursor holds the picture by the middle of its upper edge.
            const QPoint left = m_canvas->view.mapFromScene(place->scenePos());
            m_canvas->dragOver(id, m_canvas->view.mapToScene(left + QPoint(middle, 5)));
            const FeedbackModule* gap = m_canvas->view.preview();
            QVERIFY(gap->isVisible());
            const int away = m_canvas->view.mapFromScene(gap->scenePos()).x() - left.x();
            QVERIFY2(qAbs(away) <= 10, qPrintable(QString::number(away)));
            m_canvas->leave();
        }
    }

    void aLoopHeldInAMouthLandsInIt_data()
    {
        columns<int, int, double>("inner", "outer", "scale");
        for (const double scale : {0.5, 1.0}) {
            for (const int inner : {s_for, s_untilTouch, s_forever}) {
                for (const int outer : {s_for, s_untilTouch, s_forever}) {
                    QTest::newRow(qPrintable(
                        QStringLiteral("%1 into %2 at %3").arg(inner).arg(outer).arg(scale)))
                        << inner << outer << scale;
                }
            }
        }
    }

    void aLoopHeldInAMouthLandsInIt()
    {
        QFETCH(int, inner);
        QFETCH(int, outer);
        QFETCH(double, scale);
        supermodule* before = m_canvas->dropBehind(m_canvas->main(), s_forward);
        supermodule* loop = m_canvas->dropBehind(before, outer);
        m_canvas->view.resetMatrix();
        m_canvas->view.scale(scale, scale);
        // Where the body begins, as a block in it shows.
        supermodule* body = m_canvas->drop(
            s_forward, loop->scenePos() + QPointF(outer == s_untilTouch ? 60 : 120, 0) +
                           QPointF(60 / scale, 10));
        QCOMPARE(loop->left(), body);
        const QPoint mouth = m_canvas->view.mapFromScene(body->scenePos());
        m_canvas->view.deleteModule(body);
        QVERIFY(!loop->left());
        const int middle = QPixmap(findBlockRecord(inner)->pressedImage).width() / 2;
        for (const int off : {0, 10, -10}) {
            m_canvas->dragOver(inner, m_canvas->view.mapToScene(mouth + QPoint(middle + off, 5)));
            const FeedbackModule* gap = m_canvas->view.preview();
            QVERIFY(gap->isVisible());
            QCOMPARE(gap->parentModule(), loop);
            QCOMPARE(loop->left(), gap);
            m_canvas->leave();
        }
    }
};

QTEST_MAIN(FeelTest)
#include "feeltest.moc"
