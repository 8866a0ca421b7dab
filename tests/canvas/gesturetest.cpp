#include "document/programslots.h"
#include "document/tzprogramscene.h"
#include "modules/catalogue/mousestate.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "modules/modulehost.h"
#include "proj/controls/selectablebutton.h"
#include "support/canvas/canvasfixture.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace
{
const int s_forward = 103;
const int s_backward = 102;
const int s_wait = 101;
const int s_speed = 100;
const int s_hello = 303;

QList<int> values(const QSignalSpy& p_spy)
{
    QList<int> list;
    for (const QList<QVariant>& call : p_spy) {
        list.append(call.first().toInt());
    }
    return list;
}

/** Begins a drag and opens the gap behind the main block. */
void pressAndDragToTheGap(CanvasFixture& p_canvas, const supermodule* p_block)
{
    p_canvas.press(p_block->scenePos() + QPointF(30, 30));
    p_canvas.move(QPointF(270, 230));
    QVERIFY(p_canvas.view.preview()->isVisible());
}

void moveWithoutButton(CanvasFixture& p_canvas, const QPointF& p_scenePos)
{
    QMouseEvent event(QEvent::MouseMove, p_canvas.at(p_scenePos), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(p_canvas.view.viewport(), &event);
}
} // namespace

class GestureTest : public QObject
{
    Q_OBJECT

private slots:
    void anUndoInMidDragEndsTheDragFirst()
    {
        CanvasFixture canvas;
        supermodule* gone = canvas.drop(104, QPointF(700, 450));
        const int key = gone->registryKey();
        canvas.view.deleteModule(gone);
        supermodule* held = canvas.drop(103, QPointF(600, 80));
        canvas.press(held->scenePos() + QPointF(30, 30));
        canvas.move(QPointF(250, 210) + QPointF(30, 30));
        QVERIFY(canvas.view.preview()->isVisible());
        canvas.view.undoStack().undo();
        QVERIFY(!canvas.view.preview()->isVisible());
        QCOMPARE(canvas.main()->next(), held);
        QVERIFY(moduleMap.contains(key));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        canvas.release(QPointF(280, 240));
        QCOMPARE(canvas.main()->next(), held);
    }

    void aDocumentGoesOnWithoutItsView()
    {
        Document document;
        // Parts of blocks come and stay as they are needed.
        const auto items = [&document] {
            const QList<QGraphicsItem*> all = document.scene().items();
            return std::count_if(all.begin(), all.end(),
                                 [](const QGraphicsItem* p_item) { return !p_item->parentItem(); });
        };
        const auto before = items();
        {
            TzProgramView view(document);
            CanvasHands hands(view);
            document.addModule(700, 400, 103);
            // A drag from the palette is under way, and the gap is open.
            hands.dragOver(102, hands.main()->scenePos() + QPointF(160, 10));
            QVERIFY(view.preview()->isVisible());
            QCOMPARE(hands.main()->next(), view.preview());
        }
        QVERIFY(!programView);
        QVERIFY(!moduleHost());
        QVERIFY(!document.mainBlock()->next());
        const QList<supermodule*> roots = rootBlocks(document.scene());
        QCOMPARE(roots.size(), 2);
        // A block asks nobody for a chooser.
        roots.first()->OnSetVoice(1);
        QCOMPARE(focusModule, roots.first());
        document.undoStack().undo();
        QCOMPARE(rootBlocks(document.scene()), QList<supermodule*>{document.mainBlock()});
        // Nothing of the view is left in the scene.
        QCOMPARE(items(), before);
        document.undoStack().redo();
        QCOMPARE(rootBlocks(document.scene()).size(), 2);
    }

    void aPressMeansTheBlockThatIsSeenThere()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 306);
        supermodule* body = canvas.drop(103, loop->scenePos() + QPointF(100, 20));
        QCOMPARE(loop->left(), body);
        supermodule* last = canvas.dropBehind(loop, 105);
        const auto pressed = [&canvas](const QPointF& p_scenePos) {
            canvas.click(p_scenePos);
            return canvas.view.currentModule();
        };
        QCOMPARE(pressed(body->scenePos() + QPointF(60, 60)), body);
        QCOMPARE(pressed(last->scenePos() + QPointF(60, 60)), last);
        // The loop's legs and its upper edge; a block's connector reaches into the right leg.
        QCOMPARE(pressed(loop->scenePos() + QPointF(20, 60)), loop);
        QCOMPARE(pressed(body->scenePos() + QPointF(140, 60)), loop);
        QCOMPARE(pressed(body->scenePos() + QPointF(60, -10)), loop);
        // Behind a chain's end there is a connector, which is no block.
        QCOMPARE(pressed(last->scenePos() + QPointF(150, 60)), nullptr);
        canvas.press(last->scenePos() + QPointF(150, 60));
        canvas.move(last->scenePos() + QPointF(250, 200));
        canvas.release(last->scenePos() + QPointF(250, 200));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 306, 105}));
    }

    void aDraggedBlockLeavesItsChainAndTakesWhatFollows()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        supermodule* second = canvas.dropBehind(first, s_wait);
        canvas.dropBehind(second, s_backward);
        canvas.drag(second, QPoint(0, 250));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_forward}));
        QCOMPARE(CanvasFixture::ids(second), (QList<int>{s_wait, s_backward}));
        QVERIFY(!second->parentModule());
        QCOMPARE(second->opacity(), 0.5);
        QVERIFY(documentModified);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockDraggedToTheEndOfAnotherChainIsLinkedThere()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        QVERIFY(!loose->parentModule());
        const QPointF target(240, 200);
        canvas.drag(loose, (target - loose->scenePos()).toPoint());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_wait}));
        QCOMPARE(loose->scenePos(), target);
        QCOMPARE(loose->opacity(), 1.0);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockDraggedAwayAndBackToThePixelIsLinkedAgain()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        canvas.dropBehind(first, s_wait);
        const QPointF grip = first->scenePos() + QPointF(30, 30);
        canvas.press(grip);
        canvas.move(grip + QPointF(0, 200));
        QCOMPARE(CanvasFixture::ids(canvas.main()), QList<int>{0});
        canvas.move(grip);
        canvas.release(grip);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_forward, s_wait}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aClickChangesNoLinkAndDoesNotModifyTheDocument()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        documentModified = false;
        canvas.click(first->scenePos() + QPointF(30, 30));
        QCOMPARE(first->parentModule(), static_cast<supermodule*>(canvas.main()));
        QVERIFY(!documentModified);
    }

    void theMainBlockCanBeDraggedButNotDeletedByTheLowerEdge()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        canvas.drag(canvas.main(), QPoint(40, 500));
        QCOMPARE(canvas.main()->scenePos(), QPointF(140, 700));
        QCOMPARE(first->scenePos(), QPointF(280, 700));
        QVERIFY(!values(states).contains(MouseDragsOut));
        QCOMPARE(canvas.blocks().size(), 2);
    }

    void theMainBlockCanNotBeDeletedByMenuOrKey()
    {
        CanvasFixture canvas;
        canvas.click(canvas.main()->scenePos() + QPointF(30, 30));
        QCOMPARE(canvas.view.currentModule(), static_cast<supermodule*>(canvas.main()));
        canvas.key(Qt::Key_Delete);
        QCOMPARE(canvas.blocks().size(), 1);
        QVERIFY(!canvas.view.undoStack().canUndo());

        canvas.press(canvas.main()->scenePos() + QPointF(30, 30), Qt::RightButton);
        const QList<QAction*> actions = canvas.view.contextMenu().actions();
        QCOMPARE(actions.size(), 5);
        QVERIFY(!actions.at(0)->isEnabled());
        QVERIFY(!actions.at(2)->isEnabled());
        QVERIFY(!actions.at(4)->isEnabled());
        canvas.view.contextMenu().close();
    }

    void theMenuOffersABlocksEntriesOnABlockAlone()
    {
        CanvasFixture canvas;
        const supermodule* block = canvas.drop(s_wait, QPointF(600, 300));
        const QList<QAction*> actions = canvas.view.contextMenu().actions();
        for (const bool onBlock : {true, false, true}) {
            canvas.press(onBlock ? block->scenePos() + QPointF(30, 30) : QPointF(900, 550),
                         Qt::RightButton);
            for (const int entry : {0, 2, 4}) {
                QCOMPARE(actions.at(entry)->isEnabled(), onBlock);
            }
            canvas.view.contextMenu().close();
        }
    }

    void aBlockDraggedBelowTheCanvasIsDeletedAndTellsThePalette()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        canvas.dropBehind(first, s_wait);
        const QPointF home = first->scenePos();
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        canvas.drag(first, QPoint(0, 360));
        QVERIFY(values(states).contains(MouseDragsOut));
        QCOMPARE(values(states).last(), static_cast<int>(MouseDone));
        QCOMPARE(canvas.blocks().size(), 1);
        QVERIFY(!canvas.main()->next());

        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_forward, s_wait}));
        QCOMPARE(canvas.main()->next()->scenePos(), home);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockMovedButInsideTellsThePaletteSo()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 300));
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        canvas.drag(loose, QPoint(20, 20));
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedItem));
        QVERIFY(values(states).contains(MouseDragsInside));
        QVERIFY(!values(states).contains(MouseDragsOut));
        QCOMPARE(values(states).last(), static_cast<int>(MouseDone));
    }

    void aPressOnEmptyCanvasDragsItAndClearsTheFocusBlock()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 300));
        focusModule = loose;
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        const int before = canvas.view.horizontalScrollBar()->value();
        const QPoint from(300, 500);
        QTest::mousePress(canvas.view.viewport(), Qt::LeftButton, Qt::NoModifier, from);
        QVERIFY(!focusModule);
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedEmpty));
        QMouseEvent move(QEvent::MouseMove, from - QPoint(80, 0), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(canvas.view.viewport(), &move);
        QTest::mouseRelease(canvas.view.viewport(), Qt::LeftButton, Qt::NoModifier,
                            from - QPoint(80, 0));
        QCOMPARE(canvas.view.horizontalScrollBar()->value(), before + 80);
        QCOMPARE(loose->scenePos().y(), 300.0);
    }

    void aPressWhereABlockCouldBeLinkedIsNoneOnEmptyCanvas()
    {
        CanvasFixture canvas;
        supermodule* block = canvas.drop(103, QPointF(600, 350));
        focusModule = block;
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        canvas.click(block->scenePos() + QPointF(170, 60));
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedItem));
        QCOMPARE(focusModule.data(), block);
        block->hide();
        states.clear();
        canvas.click(block->scenePos() + QPointF(170, 60));
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedEmpty));
    }

    void aPressOnTheLogoCountsAsEmptyCanvas()
    {
        CanvasFixture canvas;
        auto* scene = static_cast<tzprogramscene*>(canvas.view.scene());
        QVERIFY(!scene->logo().pixmap().isNull());
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        canvas.click(scene->logo().sceneBoundingRect().center());
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedEmpty));
    }

    void aPressFarRightOfABlocksLeftEdgeDoesNotTakeIt()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.drop(303, QPointF(260, 380));
        supermodule* last = nullptr;
        for (int i = 0; i < 4; ++i) {
            supermodule* block = canvas.drop(s_wait, QPointF(700, 100));
            last ? last->insertModule(block) : loop->setLeftModule(block);
            last = block;
        }
        loop->updateTreeAndOpacity();
        QVERIFY(loop->boundingRect().right() > 420);
        // On the upper rim of the bracket, where no block of the body lies.
        canvas.click(loop->scenePos() + QPointF(399, -10));
        QCOMPARE(canvas.view.currentModule(), loop);
        canvas.click(loop->scenePos() + QPointF(400, -10));
        QVERIFY(!canvas.view.currentModule());
        // Of nested blocks the innermost is taken.
        canvas.click(last->scenePos() + QPointF(20, 30));
        QCOMPARE(canvas.view.currentModule(), last);
    }

    void aRightPressNeverStartsADrag()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        const QPointF home = first->scenePos();
        canvas.press(home + QPointF(30, 30), Qt::RightButton);
        QVERIFY(canvas.view.contextMenu().isVisible());
        canvas.view.contextMenu().close();
        QMouseEvent move(QEvent::MouseMove, canvas.at(home + QPointF(60, 200)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(canvas.view.viewport(), &move);
        QCOMPARE(first->scenePos(), home);
        QCOMPARE(first->parentModule(), static_cast<supermodule*>(canvas.main()));
        // Nor with a button that is still held.
        canvas.press(home + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.move(home + QPointF(60, 200));
        QCOMPARE(first->scenePos(), home);
    }

    void aReleaseElsewhereSettlesWhatWasPressed_data()
    {
        QTest::addColumn<QPoint>("way");
        QTest::addColumn<int>("updates");
        QTest::newRow("in place") << QPoint(0, 0) << 0;
        QTest::newRow("sideways") << QPoint(1, 0) << 1;
        QTest::newRow("downwards") << QPoint(0, 1) << 1;
    }

    void aReleaseElsewhereSettlesWhatWasPressed()
    {
        QFETCH(QPoint, way);
        QFETCH(int, updates);
        CanvasFixture canvas;
        const supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        const QPointF grip = first->scenePos() + QPointF(30, 30);
        const QSignalSpy told(&canvas.view, &TzProgramView::moduleUpdateSignal);
        // No move in between: the events of a busy window are joined.
        canvas.press(grip);
        canvas.release(grip + way);
        QCOMPARE(told.size(), updates);
        QCOMPARE(first->parentModule(), static_cast<supermodule*>(canvas.main()));
    }

    void thePreviewClosesWhenTheBlockMovesAway()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        const QPointF grip = loose->scenePos() + QPointF(30, 30);
        canvas.press(grip);
        canvas.move(QPointF(240, 200) + QPointF(30, 30));
        QVERIFY(canvas.view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 0, s_forward}));
        QCOMPARE(first->scenePos(), QPointF(360, 200));
        canvas.move(grip);
        QVERIFY(!canvas.view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_forward}));
        QCOMPARE(first->scenePos(), QPointF(240, 200));
        canvas.release(grip);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDraggedChainIsOnTopUntilItIsReleased()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        supermodule* second = canvas.dropBehind(first, s_wait);
        const QPointF grip = first->scenePos() + QPointF(30, 30);
        canvas.press(grip);
        canvas.move(grip + QPointF(10, 100));
        QCOMPARE(first->zValue(), 10.0);
        QCOMPARE(second->zValue(), 10.0);
        QVERIFY(first->m_moved);
        canvas.release(grip + QPointF(10, 100));
        QCOMPARE(first->zValue(), 0.0);
        QCOMPARE(second->zValue(), 0.0);
        QVERIFY(!first->m_moved);
    }

    void aSecondButtonInMidDragEndsIt()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        const QPointF grip = loose->scenePos() + QPointF(30, 30);
        canvas.press(grip);
        canvas.move(QPointF(240, 200) + QPointF(30, 30));
        canvas.press(QPointF(900, 560), Qt::RightButton);
        canvas.view.contextMenu().close();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_wait, s_forward}));
        QCOMPARE(loose->zValue(), 0.0);
        QCOMPARE(first->scenePos(), QPointF(360, 200));
        canvas.release(QPointF(900, 560));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDragEndedByASecondButtonIsTold()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 450));
        canvas.press(loose->scenePos() + QPointF(30, 30));
        canvas.move(first->scenePos() + QPointF(120 + 40, 40));
        const QSignalSpy told(&canvas.view, &TzProgramView::moduleUpdateSignal);
        canvas.press(QPointF(900, 60), Qt::RightButton);
        canvas.view.contextMenu().close();
        QCOMPARE(loose->parentModule(), first);
        QCOMPARE(told.count(), 1);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDragCutOffByANewDocumentLeavesNothingBehind()
    {
        CanvasFixture canvas;
        const QPointF grip(30, 30);
        canvas.press(canvas.main()->scenePos() + grip);
        canvas.move(canvas.main()->scenePos() + grip + QPointF(20, 10));
        QVERIFY(canvas.main()->m_moved);
        canvas.view.newProgram();
        canvas.view.resetDocument();
        canvas.release(canvas.main()->scenePos() + grip);
        const supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        canvas.press(canvas.main()->scenePos() + grip);
        canvas.move(canvas.main()->scenePos() + grip + QPointF(20, 10));
        QCOMPARE(first->zValue(), 10.0);
        canvas.release(canvas.main()->scenePos() + grip);
        QCOMPARE(first->zValue(), 0.0);
    }

    void aDropFromThePaletteEndsADragWithoutRelease()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 450));
        canvas.press(loose->scenePos() + QPointF(30, 30));
        canvas.move(loose->scenePos() + QPointF(50, 50));
        QVERIFY(loose->m_moved);
        // A window of another program takes the release; then a block comes in.
        supermodule* dropped = canvas.drop(s_speed, QPointF(300, 450));
        QVERIFY(!loose->m_moved);
        QCOMPARE(loose->zValue(), 0.0);
        const QPointF place = dropped->scenePos();
        canvas.move(QPointF(700, 100));
        QCOMPARE(dropped->scenePos(), place);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aSaveOrACopyInMidDragFindsTheBlockLinked()
    {
        for (const bool copies : {false, true}) {
            CanvasFixture canvas;
            supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
            canvas.press(loose->scenePos() + QPointF(30, 30));
            canvas.move(QPointF(240, 200) + QPointF(30, 30));
            QVERIFY(canvas.view.preview()->isVisible());
            if (copies) {
                canvas.view.OnCopy();
            } else {
                QTemporaryDir folder;
                QVERIFY(canvas.view.saveFile(folder.filePath(QStringLiteral("a.tlrx"))));
            }
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_wait}));
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            canvas.release(QPointF(300, 300));
            QCOMPARE(canvas.brokenInvariants(), QStringList());
        }
    }

    void aMoveWithoutAButtonEndsTheDragAndTellsThePalette_data()
    {
        QTest::addColumn<int>("id");
        QTest::newRow("a block with a field") << s_wait;
        // The scene asks for such moves only where something listens to the mouse above it.
        QTest::newRow("a block with nothing on it") << s_hello;
    }

    void aMoveWithoutAButtonEndsTheDragAndTellsThePalette()
    {
        QFETCH(int, id);
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(id, QPointF(600, 420));
        pressAndDragToTheGap(canvas, loose);
        const QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        moveWithoutButton(canvas, QPointF(700, 100));
        QCOMPARE(values(states), QList<int>{MouseDone});
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, id}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        // Nothing sticks to the mouse.
        canvas.move(QPointF(800, 500));
        moveWithoutButton(canvas, QPointF(400, 500));
        QCOMPARE(loose->scenePos(), QPointF(240, 200));
        QCOMPARE(values(states).size(), 1);
    }

    void aMoveWithoutAButtonDeletesNothing()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        canvas.press(loose->scenePos() + QPointF(30, 30));
        canvas.move(QPointF(600, 590));
        moveWithoutButton(canvas, QPointF(600, 595));
        QCOMPARE(canvas.blocks().size(), 2);
        QVERIFY(!loose->m_moved);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aWindowThatLosesTheActivationEndsTheDrag()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        pressAndDragToTheGap(canvas, loose);
        const QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        QEvent event(QEvent::WindowDeactivate);
        QApplication::sendEvent(&canvas.view, &event);
        QCOMPARE(values(states), QList<int>{MouseDone});
        QVERIFY(!loose->m_moved);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_wait}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void everyEndOfADragTellsThePalette_data()
    {
        QTest::addColumn<int>("end");
        QTest::newRow("a save") << 0;
        QTest::newRow("another document") << 1;
        QTest::newRow("the Delete key") << 2;
        QTest::newRow("an undo") << 3;
    }

    void everyEndOfADragTellsThePalette()
    {
        QFETCH(int, end);
        CanvasFixture canvas;
        canvas.view.deleteModule(canvas.drop(s_speed, QPointF(700, 100)));
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        pressAndDragToTheGap(canvas, loose);
        const QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        if (end == 0) {
            const QTemporaryDir folder;
            QVERIFY(canvas.document.save(folder.filePath(QStringLiteral("a.tlrx"))));
        } else if (end == 1) {
            canvas.document.startAnew();
        } else {
            canvas.key(end == 2 ? Qt::Key_Delete : Qt::Key_Z,
                       end == 2 ? Qt::NoModifier : Qt::ControlModifier);
        }
        QCOMPARE(values(states), QList<int>{MouseDone});
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void theControlKeyAloneEndsNoDrag()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        canvas.press(loose->scenePos() + QPointF(30, 30));
        canvas.move(loose->scenePos() + QPointF(50, 50));
        canvas.key(Qt::Key_Control, Qt::ControlModifier);
        canvas.key(Qt::Key_B, Qt::ControlModifier);
        QVERIFY(loose->m_moved);
        canvas.move(QPointF(270, 230));
        canvas.release(QPointF(270, 230));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_wait}));
    }

    void aPressOnThePopUpLeavesTheBlockBeneathAlone()
    {
        CanvasFixture canvas;
        supermodule* speed = canvas.drop(s_speed, QPointF(500, 100));
        supermodule* beneath = canvas.drop(s_wait, QPointF(500, 300));
        speed->OnSetParam(1);
        graphicsItem_Param* popUp = graphicsItem_Param::existing();
        QVERIFY(popUp && popUp->isVisible());
        // Beside the buttons, within the bubble.
        popUp->setPos(beneath->scenePos() - QPointF(2, 2));
        const QPointF grip = popUp->scenePos() + QPointF(4, 4);
        QVERIFY(beneath->sceneBoundingRect().contains(grip));
        const QPointF home = beneath->scenePos();
        const QPointF seen = canvas.view.mapToScene(QPoint(0, 0));
        canvas.press(grip);
        canvas.move(grip + QPointF(40, 40));
        canvas.release(grip + QPointF(40, 40));
        QCOMPARE(beneath->scenePos(), home);
        QCOMPARE(canvas.view.mapToScene(QPoint(0, 0)), seen);
        QVERIFY(!beneath->isSelected());
        QVERIFY(!canvas.view.currentModule());
        QVERIFY(popUp->isVisible());
        canvas.key(Qt::Key_Delete);
        QCOMPARE(canvas.blocks().size(), 3);
    }

    void anotherProgramTakesThePopUpAway_data()
    {
        QTest::addColumn<bool>("opens");
        QTest::newRow("a new one") << false;
        QTest::newRow("one from a file") << true;
    }

    void anotherProgramTakesThePopUpAway()
    {
        QFETCH(bool, opens);
        CanvasFixture canvas;
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(canvas.document.save(path));
        canvas.drop(s_speed, QPointF(500, 100))->OnSetParam(0);
        QVERIFY(graphicsItem_Param::existing()->isVisible());
        if (opens) {
            QCOMPARE(canvas.document.open(path), 0);
        } else {
            canvas.document.startAnew();
        }
        QVERIFY(!graphicsItem_Param::existing()->isVisible());
    }

    void aDragIsAChangeAndItsEndShowsInTheText()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), s_forward);
        supermodule* loose = canvas.drop(s_wait, QPointF(600, 420));
        QString told;
        connect(&canvas.view, &TzProgramView::moduleUpdateSignal, this,
                [&] { told = canvas.view.generateVisibleCode(1); });
        documentModified = false;
        canvas.drag(loose, (QPointF(365, 205) - loose->scenePos()).toPoint());
        QVERIFY(documentModified);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, s_forward, s_wait}));
        QVERIFY(!told.isEmpty());
        QCOMPARE(told, canvas.view.generateVisibleCode(1));
        documentModified = false;
        canvas.drag(loose, QPoint(100, 150));
        QVERIFY(documentModified);
        QCOMPARE(told, canvas.view.generateVisibleCode(1));
    }

    void theEldestBlockIsOnTopInTheInnerOfTwoLoops()
    {
        CanvasFixture canvas;
        supermodule* eldest = canvas.drop(s_forward, QPointF(800, 420));
        supermodule* outer = canvas.dropBehind(canvas.main(), 303);
        supermodule* inner = canvas.drop(303, outer->scenePos() + QPointF(250, 20));
        QCOMPARE(outer->left(), inner);
        canvas.drag(eldest, (inner->scenePos() + QPointF(110, 10) - eldest->scenePos()).toPoint());
        QCOMPARE(inner->left(), eldest);
        const QPointF grip = eldest->scenePos() + QPointF(60, 60);
        const QList<QGraphicsItem*> items = canvas.view.scene()->items(grip);
        QList<supermodule*> seen;
        for (QGraphicsItem* item : items) {
            if (supermodule* block = supermodule::fromItem(item)) {
                seen.append(block);
            }
        }
        QCOMPARE(seen, (QList<supermodule*>{eldest, inner, outer}));
        canvas.click(grip);
        QCOMPARE(canvas.view.currentModule(), eldest);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDeletedBlockTakesTheFocusBlockAway()
    {
        CanvasFixture canvas;
        supermodule* focused = canvas.drop(s_wait, QPointF(600, 420));
        supermodule* other = canvas.drop(s_speed, QPointF(600, 100));
        focused->OnSetNumber(0);
        QCOMPARE(focusModule, focused);
        // The main block and none are not deleted.
        canvas.view.deleteModule(canvas.main());
        canvas.view.deleteModule(nullptr);
        QCOMPARE(focusModule, focused);
        canvas.view.deleteModule(other);
        QVERIFY(!focusModule);
        // A value that comes now goes nowhere.
        const QString text = focused->cCode();
        canvas.view.OnSelectNumberSignal(Qt::Key_9);
        QCOMPARE(focused->cCode(), text);
    }

    void aBlockHasItsFlagsHoweverItCame()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 303);
        canvas.drop(s_forward, loop->scenePos() + QPointF(160, 20));
        canvas.drop(s_wait, QPointF(700, 450));
        const auto odd = [&canvas] {
            int count = 0;
            for (const supermodule* block : canvas.blocks()) {
                const bool right = block->flags() ==
                                   (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
                const bool linked = block->hasConnector(NextLink) || block->hasConnector(LeftLink);
                count += right && linked && block->isEnabled() ? 0 : 1;
            }
            return count;
        };
        QCOMPARE(odd(), 0);
        canvas.document.paste(Document::clipboardText(loop), 400, 420);
        QCOMPARE(canvas.blocks().size(), 6);
        QCOMPARE(odd(), 0);
        canvas.view.undoStack().undo();
        canvas.view.undoStack().redo();
        canvas.view.deleteModule(loop);
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 6);
        QCOMPARE(odd(), 0);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(canvas.document.save(path));
        QCOMPARE(canvas.document.open(path), 0);
        QCOMPARE(canvas.blocks().size(), 6);
        QCOMPARE(odd(), 0);
    }

    void nothingIsLinkedToWhatIsHidden()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        canvas.view.OnSwitchProgram(404);
        QVERIFY(!loop->isVisible());
        canvas.view.centerOn(500, 300);
        const QPointF end = loop->scenePos() + QPointF(340, 10);
        const supermodule* dropped = canvas.drop(s_wait, end);
        QVERIFY(!dropped->parentModule());
        canvas.drop(s_wait, loop->scenePos() + QPointF(160, 20));
        canvas.document.addModule(static_cast<int>(end.x()), static_cast<int>(end.y()), s_forward);
        QVERIFY(!loop->next() && !loop->left());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301}));
    }

    void aDoubleClickAndDragMovesNoBlockOutOfItsChain()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), s_forward);
        const QPointF home = first->scenePos();
        const QPointF grip = home + QPointF(30, 30);
        canvas.click(grip);
        QTest::mouseDClick(canvas.view.viewport(), Qt::LeftButton, Qt::NoModifier, canvas.at(grip));
        QMouseEvent again(QEvent::MouseButtonDblClick, canvas.at(grip), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(canvas.view.viewport(), &again);
        canvas.move(grip + QPointF(50, 150));
        QCOMPARE(first->scenePos(), home);
        canvas.release(grip + QPointF(50, 150));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aLooseBlockRestsOnWholeUnits()
    {
        CanvasFixture canvas;
        canvas.view.resetMatrix();
        canvas.view.scale(0.7, 0.7);
        supermodule* loose = canvas.drop(s_wait, QPointF(601, 301));
        canvas.drag(loose, QPoint(13, 7));
        QCOMPARE(loose->scenePos(), QPointF(loose->scenePos().toPoint()));
    }

    void aDraggedChainStandsOnWholeUnitsToTheLastBit()
    {
        // Points compare equal within some bits, but a file holds them all.
        const auto isWhole = [](const QPointF& p_at) {
            return p_at.x() - std::floor(p_at.x()) <= 0 && p_at.y() - std::floor(p_at.y()) <= 0;
        };
        // At these scales some pixels make all but whole units.
        for (const double scale : {0.6, 0.7, 0.9, 1.1, 1.2}) {
            CanvasFixture canvas;
            canvas.view.resetMatrix();
            canvas.view.scale(scale, scale);
            canvas.view.centerOn(500, 300);
            // Out of reach: the chain stays loose.
            canvas.main()->setPos(5000, 5000);
            supermodule* head = canvas.drop(s_wait, QPointF(401, 301));
            supermodule* behind = canvas.dropBehind(head, s_speed);
            QVERIFY(isWhole(head->pos()));
            QCOMPARE(head->next(), behind);
            for (int step = 0; step < 40; ++step) {
                const QPointF before = head->scenePos();
                const QPoint way = QPoint(20 + 5 * step, 10 + step) * (step % 2 == 0 ? 1 : -1);
                canvas.drag(head, way);
                QVERIFY(isWhole(head->pos()));
                QVERIFY(isWhole(behind->pos()));
                // Rounding doesn't add up on the way: each drag has four steps.
                const QPointF off = head->scenePos() - before - QPointF(way);
                QVERIFY2(off.manhattanLength() < 4,
                         qPrintable(QString::number(off.manhattanLength())));
            }
        }
    }

    void theDeleteKeyDeletesWhateverTheModifiers()
    {
        for (const Qt::KeyboardModifier modifier :
             {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
            CanvasFixture canvas;
            supermodule* loose = canvas.drop(s_speed, QPointF(600, 300));
            canvas.click(loose->scenePos() + QPointF(30, 30));
            canvas.key(Qt::Key_Delete, modifier);
            QCOMPARE(canvas.blocks().size(), 1);
        }
    }

    void aPressTakesTheMarkFromANumberField()
    {
        CanvasFixture canvas;
        supermodule* wait = canvas.dropBehind(canvas.main(), s_wait);
        canvas.click(wait->scenePos() + QPointF(60, 120));
        QVERIFY(SelectableButton::current());
        canvas.click(QPointF(700, 550));
        QVERIFY(!SelectableButton::current());
    }

    void twoBlocksOfTypeNoughtAreToldApartByIdentity()
    {
        CanvasFixture canvas;
        QCOMPARE(canvas.view.preview()->id, canvas.view.mainBlock()->id);
        // The preview stands in no program, can't be hit, and isn't what a reset keeps as the root.
        canvas.dragOver(s_wait, QPointF(310, 210));
        QVERIFY(canvas.view.preview()->parentModule());
        canvas.leave();
        canvas.view.resetDocument();
        QCOMPARE(rootModules, QList<supermodule*>{canvas.main()});
        canvas.view.newProgram();
        QCOMPARE(canvas.blocks(), QList<supermodule*>{canvas.main()});
        QVERIFY(canvas.view.preview()->scene());
    }
};

QTEST_MAIN(GestureTest)
#include "gesturetest.moc"
