#include "modules/mainmodule.h"
#include "support/canvas/canvastest.h"

#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

namespace
{
bool isInSight(const TzProgramView& p_view, const supermodule* p_block)
{
    return p_view.viewport()->rect().contains(
        p_view.mapFromScene(p_block->sceneBoundingRect()).boundingRect());
}

QPointF corner(const TzProgramView& p_view) { return p_view.mapToScene(QPoint(0, 0)); }
} // namespace

/** Whatever stands anywhere can be brought into sight. */
class ReachTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void aProgramDraggedOutOverTheUpperEdgeComesBack()
    {
        const supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->drag(m_canvas->main(), QPoint(0, -700));
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(100, -500));
        QVERIFY(!isInSight(m_canvas->view, first));
        // The scene keeps its rectangle, and nothing has jumped.
        QCOMPARE(m_canvas->view.scene()->sceneRect(), QRectF(0, 0, 10000, 10000));
        QCOMPARE(corner(m_canvas->view), QPointF(0, 0));
        // By hand, on the empty canvas.
        for (int i = 0; i < 2; ++i) {
            m_canvas->press(corner(m_canvas->view) + QPointF(800, 100));
            const QPoint to = m_canvas->at(corner(m_canvas->view) + QPointF(800, 400));
            QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(m_canvas->view.viewport(), &move);
            QTest::mouseRelease(m_canvas->view.viewport(), Qt::LeftButton, Qt::NoModifier, to);
        }
        QVERIFY(isInSight(m_canvas->view, m_canvas->main()));
        QVERIFY(isInSight(m_canvas->view, first));
    }

    void aResetOfTheZoomBringsTheMainBlockIntoSight()
    {
        for (const QPoint& way : {QPoint(0, -700), QPoint(-900, 0), QPoint(30000, 20000)}) {
            m_canvas.emplace();
            m_canvas->drag(m_canvas->main(), way);
            QVERIFY(!isInSight(m_canvas->view, m_canvas->main()));
            m_canvas->view.zoomView(0);
            QVERIFY(isInSight(m_canvas->view, m_canvas->main()));
        }
    }

    void aProjectStoredOutOfReachOpensInSight()
    {
        m_canvas->drag(m_canvas->main(), QPoint(-900, -700));
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(m_canvas->document.save(path));
        m_canvas->document.startAnew();
        QCOMPARE(m_canvas->document.open(path), 0);
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(-800, -500));
        QVERIFY(isInSight(m_canvas->view, m_canvas->main()));
    }

    void aNewProgramHasTheMainBlockInItsFirstPlace()
    {
        m_canvas.reset();
        Document document;
        TzProgramView view(document);
        view.resize(1000, 600);
        view.show();
        CanvasHands hands(view);
        const QPointF first = hands.main()->scenePos();
        hands.drag(hands.main(), QPoint(0, -2000));
        QVERIFY(hands.main()->scenePos() != first);
        document.startAnew();
        QCOMPARE(hands.main()->scenePos(), first);
        QVERIFY(isInSight(view, hands.main()));
        QVERIFY(!document.isModified());
    }

    void theEndOfALongChainIsSeenAndExtended()
    {
        supermodule* last = m_canvas->main();
        for (int i = 0; i < 100; ++i) {
            last = m_canvas->dropBehind(last, 103);
        }
        QCOMPARE(CanvasFixture::ids(m_canvas->main()).size(), 101);
        QVERIFY(last->x() > 10000);
        QScrollBar* bar = m_canvas->view.horizontalScrollBar();
        bar->setValue(bar->maximum());
        QVERIFY(isInSight(m_canvas->view, last));
        // The whole next block is in sight where it is dropped.
        const supermodule* next = m_canvas->dropBehind(last, 102);
        QCOMPARE(last->next(), next);
        QVERIFY(isInSight(m_canvas->view, next));
    }

    void aPasteWithoutPlaceCanBeReached()
    {
        const supermodule* source = m_canvas->drop(103, QPointF(600, 300));
        const QList<supermodule*> before = m_canvas->blocks();
        m_canvas->document.paste(Document::clipboardText(source), -99999, -99999);
        const supermodule* pasted = nullptr;
        for (const supermodule* block : m_canvas->blocks()) {
            pasted = before.contains(const_cast<supermodule*>(block)) ? pasted : block;
        }
        QVERIFY(pasted);
        QCOMPARE(corner(m_canvas->view), QPointF(0, 0));
        m_canvas->view.horizontalScrollBar()->setValue(
            m_canvas->view.horizontalScrollBar()->minimum());
        m_canvas->view.verticalScrollBar()->setValue(m_canvas->view.verticalScrollBar()->minimum());
        QVERIFY(isInSight(m_canvas->view, pasted));
        // It goes, and what is in sight stays.
        const QPointF seen = corner(m_canvas->view);
        m_canvas->view.undoStack().undo();
        QCOMPARE(corner(m_canvas->view), seen);
    }

    void whatIsHiddenIsOutOfReach()
    {
        supermodule* block = m_canvas->drop(103, QPointF(600, 300));
        m_canvas->drag(block, QPoint(30000, 0));
        QVERIFY(m_canvas->view.sceneRect().right() > 30000);
        m_canvas->view.OnSwitchProgram(404);
        QCOMPARE(m_canvas->view.sceneRect().right(), m_canvas->view.scene()->sceneRect().right());
        m_canvas->view.OnSwitchProgram(0);
        QVERIFY(m_canvas->view.sceneRect().right() > 30000);
    }

    void theViewStaysWhereItIsInADragOutAndBack()
    {
        supermodule* block = m_canvas->drop(103, QPointF(600, 300));
        const QPointF seen = corner(m_canvas->view);
        const QRectF reach = m_canvas->view.sceneRect();
        const QPointF grip = block->scenePos() + QPointF(30, 30);
        m_canvas->press(grip);
        for (int y = 300; y > -600; y -= 100) {
            m_canvas->move(QPointF(600, y));
            QCOMPARE(corner(m_canvas->view), seen);
            QCOMPARE(m_canvas->view.sceneRect(), reach);
        }
        m_canvas->release(QPointF(600, -600));
        QCOMPARE(corner(m_canvas->view), seen);
        // Seen from up there it is dragged back.
        m_canvas->view.verticalScrollBar()->setValue(m_canvas->view.verticalScrollBar()->minimum());
        QVERIFY(isInSight(m_canvas->view, block));
        const QPointF above = corner(m_canvas->view);
        QVERIFY(above.y() < -400);
        m_canvas->drag(block, QPoint(0, 350));
        QCOMPARE(corner(m_canvas->view), above);
        // What nothing stands in any longer and nobody sees is out of reach again.
        m_canvas->view.deleteModule(block);
        QCOMPARE(corner(m_canvas->view), above);
        m_canvas->view.centerOn(500, 300);
        m_canvas->drop(103, QPointF(600, 300));
        QCOMPARE(m_canvas->view.sceneRect(), reach);
    }
};

QTEST_MAIN(ReachTest)
#include "reachtest.moc"
