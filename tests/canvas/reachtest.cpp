#include "modules/mainmodule.h"
#include "support/canvas/canvasfixture.h"

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
class ReachTest : public QObject
{
    Q_OBJECT

private slots:
    void aProgramDraggedOutOverTheUpperEdgeComesBack()
    {
        CanvasFixture canvas;
        const supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.drag(canvas.main(), QPoint(0, -700));
        QCOMPARE(canvas.main()->scenePos(), QPointF(100, -500));
        QVERIFY(!isInSight(canvas.view, first));
        // The scene keeps its rectangle, and nothing has jumped.
        QCOMPARE(canvas.view.scene()->sceneRect(), QRectF(0, 0, 10000, 10000));
        QCOMPARE(corner(canvas.view), QPointF(0, 0));
        // By hand, on the empty canvas.
        for (int i = 0; i < 2; ++i) {
            canvas.press(corner(canvas.view) + QPointF(800, 100));
            const QPoint to = canvas.at(corner(canvas.view) + QPointF(800, 400));
            QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(canvas.view.viewport(), &move);
            QTest::mouseRelease(canvas.view.viewport(), Qt::LeftButton, Qt::NoModifier, to);
        }
        QVERIFY(isInSight(canvas.view, canvas.main()));
        QVERIFY(isInSight(canvas.view, first));
    }

    void aResetOfTheZoomBringsTheMainBlockIntoSight()
    {
        for (const QPoint& way : {QPoint(0, -700), QPoint(-900, 0), QPoint(30000, 20000)}) {
            CanvasFixture canvas;
            canvas.drag(canvas.main(), way);
            QVERIFY(!isInSight(canvas.view, canvas.main()));
            canvas.view.zoomView(0);
            QVERIFY(isInSight(canvas.view, canvas.main()));
        }
    }

    void aProjectStoredOutOfReachOpensInSight()
    {
        CanvasFixture canvas;
        canvas.drag(canvas.main(), QPoint(-900, -700));
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(canvas.document.save(path));
        canvas.document.startAnew();
        QCOMPARE(canvas.document.open(path), 0);
        QCOMPARE(canvas.main()->scenePos(), QPointF(-800, -500));
        QVERIFY(isInSight(canvas.view, canvas.main()));
    }

    void aNewProgramHasTheMainBlockInItsFirstPlace()
    {
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
        CanvasFixture canvas;
        supermodule* last = canvas.main();
        for (int i = 0; i < 100; ++i) {
            last = canvas.dropBehind(last, 103);
        }
        QCOMPARE(CanvasFixture::ids(canvas.main()).size(), 101);
        QVERIFY(last->x() > 10000);
        QScrollBar* bar = canvas.view.horizontalScrollBar();
        bar->setValue(bar->maximum());
        QVERIFY(isInSight(canvas.view, last));
        // The whole next block is in sight where it is dropped.
        const supermodule* next = canvas.dropBehind(last, 102);
        QCOMPARE(last->next(), next);
        QVERIFY(isInSight(canvas.view, next));
    }

    void aPasteWithoutPlaceCanBeReached()
    {
        CanvasFixture canvas;
        const supermodule* source = canvas.drop(103, QPointF(600, 300));
        const QList<supermodule*> before = canvas.blocks();
        canvas.document.paste(Document::clipboardText(source), -99999, -99999);
        const supermodule* pasted = nullptr;
        for (const supermodule* block : canvas.blocks()) {
            pasted = before.contains(const_cast<supermodule*>(block)) ? pasted : block;
        }
        QVERIFY(pasted);
        QCOMPARE(corner(canvas.view), QPointF(0, 0));
        canvas.view.horizontalScrollBar()->setValue(canvas.view.horizontalScrollBar()->minimum());
        canvas.view.verticalScrollBar()->setValue(canvas.view.verticalScrollBar()->minimum());
        QVERIFY(isInSight(canvas.view, pasted));
        // It goes, and what is in sight stays.
        const QPointF seen = corner(canvas.view);
        canvas.view.undoStack().undo();
        QCOMPARE(corner(canvas.view), seen);
    }

    void whatIsHiddenIsOutOfReach()
    {
        CanvasFixture canvas;
        supermodule* block = canvas.drop(103, QPointF(600, 300));
        canvas.drag(block, QPoint(30000, 0));
        QVERIFY(canvas.view.sceneRect().right() > 30000);
        canvas.view.OnSwitchProgram(404);
        QCOMPARE(canvas.view.sceneRect().right(), canvas.view.scene()->sceneRect().right());
        canvas.view.OnSwitchProgram(0);
        QVERIFY(canvas.view.sceneRect().right() > 30000);
    }

    void theViewStaysWhereItIsInADragOutAndBack()
    {
        CanvasFixture canvas;
        supermodule* block = canvas.drop(103, QPointF(600, 300));
        const QPointF seen = corner(canvas.view);
        const QRectF reach = canvas.view.sceneRect();
        const QPointF grip = block->scenePos() + QPointF(30, 30);
        canvas.press(grip);
        for (int y = 300; y > -600; y -= 100) {
            canvas.move(QPointF(600, y));
            QCOMPARE(corner(canvas.view), seen);
            QCOMPARE(canvas.view.sceneRect(), reach);
        }
        canvas.release(QPointF(600, -600));
        QCOMPARE(corner(canvas.view), seen);
        // Seen from up there it is dragged back.
        canvas.view.verticalScrollBar()->setValue(canvas.view.verticalScrollBar()->minimum());
        QVERIFY(isInSight(canvas.view, block));
        const QPointF above = corner(canvas.view);
        QVERIFY(above.y() < -400);
        canvas.drag(block, QPoint(0, 350));
        QCOMPARE(corner(canvas.view), above);
        // What nothing stands in any longer and nobody sees is out of reach again.
        canvas.view.deleteModule(block);
        QCOMPARE(corner(canvas.view), above);
        canvas.view.centerOn(500, 300);
        canvas.drop(103, QPointF(600, 300));
        QCOMPARE(canvas.view.sceneRect(), reach);
    }
};

QTEST_MAIN(ReachTest)
#include "reachtest.moc"
