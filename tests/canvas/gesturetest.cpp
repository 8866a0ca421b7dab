#include "document/programslots.h"
#include "document/tzprogramscene.h"
#include "modules/catalogue/mousestate.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "modules/modulehost.h"
#include "proj/controls/selectablebutton.h"
#include "support/canvas/canvastest.h"
#include "support/system/datatable.h"

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

class GestureTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void anUndoInMidDragEndsTheDragFirst()
    {
        supermodule* gone = m_canvas->drop(104, QPointF(700, 450));
        const int key = gone->registryKey();
        m_canvas->view.deleteModule(gone);
        supermodule* held = m_canvas->drop(103, QPointF(600, 80));
        m_canvas->press(held->scenePos() + QPointF(30, 30));
        m_canvas->move(QPointF(250, 210) + QPointF(30, 30));
        QVERIFY(m_canvas->view.preview()->isVisible());
        m_canvas->view.undoStack().undo();
        QVERIFY(!m_canvas->view.preview()->isVisible());
        QCOMPARE(m_canvas->main()->next(), held);
        QVERIFY(moduleMap.contains(key));
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        m_canvas->release(QPointF(280, 240));
        QCOMPARE(m_canvas->main()->next(), held);
    }

    void aDocumentGoesOnWithoutItsView()
    {
        m_canvas.reset();
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
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 306);
        supermodule* body = m_canvas->drop(103, loop->scenePos() + QPointF(100, 20));
        QCOMPARE(loop->left(), body);
        supermodule* last = m_canvas->dropBehind(loop, 105);
        const auto pressed = [this](const QPointF& p_scenePos) {
            m_canvas->click(p_scenePos);
            return m_canvas->view.currentModule();
        };
        QCOMPARE(pressed(body->scenePos() + QPointF(60, 60)), body);
        QCOMPARE(pressed(last->scenePos() + QPointF(60, 60)), last);
        // The loop's legs and its upper edge; a block's connector reaches into the right leg.
        QCOMPARE(pressed(loop->scenePos() + QPointF(20, 60)), loop);
        QCOMPARE(pressed(body->scenePos() + QPointF(140, 60)), loop);
        QCOMPARE(pressed(body->scenePos() + QPointF(60, -10)), loop);
        // Behind a chain's end there is a connector, which is no block.
        QCOMPARE(pressed(last->scenePos() + QPointF(150, 60)), nullptr);
        m_canvas->press(last->scenePos() + QPointF(150, 60));
        m_canvas->move(last->scenePos() + QPointF(250, 200));
        m_canvas->release(last->scenePos() + QPointF(250, 200));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 306, 105}));
    }

    void aDraggedBlockLeavesItsChainAndTakesWhatFollows()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        supermodule* second = m_canvas->dropBehind(first, s_wait);
        const supermodule* third = m_canvas->dropBehind(second, s_backward);
        m_canvas->drag(second, QPoint(0, 250));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_forward}));
        QCOMPARE(CanvasFixture::ids(second), (QList<int>{s_wait, s_backward}));
        QVERIFY(!second->parentModule());
        QCOMPARE(second->pos(), QPointF(360, 450));
        QCOMPARE(third->pos(), QPointF(480, 450));
        QCOMPARE(second->opacity(), 0.5);
        QCOMPARE(third->opacity(), 0.5);
        QVERIFY(documentModified);
    }

    void aBlockDraggedToTheEndOfAnotherChainIsLinkedThere()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        QVERIFY(!loose->parentModule());
        const QPointF target(240, 200);
        m_canvas->drag(loose, (target - loose->scenePos()).toPoint());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_wait}));
        QCOMPARE(loose->scenePos(), target);
        QCOMPARE(loose->opacity(), 1.0);
    }

    void aBlockDraggedAwayAndBackToThePixelIsLinkedAgain()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        m_canvas->dropBehind(first, s_wait);
        const QPointF grip = first->scenePos() + QPointF(30, 30);
        m_canvas->press(grip);
        m_canvas->move(grip + QPointF(0, 200));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), QList<int>{0});
        m_canvas->move(grip);
        m_canvas->release(grip);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_forward, s_wait}));
    }

    void aClickChangesNoLinkAndDoesNotModifyTheDocument()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        documentModified = false;
        m_canvas->click(first->scenePos() + QPointF(30, 30));
        QCOMPARE(first->parentModule(), static_cast<supermodule*>(m_canvas->main()));
        QVERIFY(!documentModified);
    }

    void theMainBlockCanBeDraggedButNotDeletedByTheLowerEdge()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        m_canvas->drag(m_canvas->main(), QPoint(40, 500));
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(140, 700));
        QCOMPARE(first->scenePos(), QPointF(280, 700));
        QVERIFY(!values(states).contains(MouseDragsOut));
        QCOMPARE(m_canvas->blocks().size(), 2);
    }

    void theMainBlockCanNotBeDeletedByMenuOrKey()
    {
        m_canvas->click(m_canvas->main()->scenePos() + QPointF(30, 30));
        QCOMPARE(m_canvas->view.currentModule(), static_cast<supermodule*>(m_canvas->main()));
        m_canvas->key(Qt::Key_Delete);
        QCOMPARE(m_canvas->blocks().size(), 1);
        QVERIFY(!m_canvas->view.undoStack().canUndo());

        m_canvas->press(m_canvas->main()->scenePos() + QPointF(30, 30), Qt::RightButton);
        const QList<QAction*> actions = m_canvas->view.contextMenu().actions();
        QCOMPARE(actions.size(), 5);
        QVERIFY(!actions.at(0)->isEnabled());
        QVERIFY(!actions.at(2)->isEnabled());
        QVERIFY(!actions.at(4)->isEnabled());
        m_canvas->view.contextMenu().close();
    }

    void theMenuOffersABlocksEntriesOnABlockAlone()
    {
        const supermodule* block = m_canvas->drop(s_wait, QPointF(600, 300));
        const QList<QAction*> actions = m_canvas->view.contextMenu().actions();
        for (const bool onBlock : {true, false, true}) {
            m_canvas->press(onBlock ? block->scenePos() + QPointF(30, 30) : QPointF(900, 550),
                            Qt::RightButton);
            for (const int entry : {0, 2, 4}) {
                QCOMPARE(actions.at(entry)->isEnabled(), onBlock);
            }
            m_canvas->view.contextMenu().close();
        }
    }

    void aBlockDraggedBelowTheCanvasIsDeletedAndTellsThePalette()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        m_canvas->dropBehind(first, s_wait);
        const QPointF home = first->scenePos();
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        m_canvas->drag(first, QPoint(0, 360));
        QVERIFY(values(states).contains(MouseDragsOut));
        QCOMPARE(values(states).last(), static_cast<int>(MouseDone));
        QCOMPARE(m_canvas->blocks().size(), 1);
        QVERIFY(!m_canvas->main()->next());

        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_forward, s_wait}));
        QCOMPARE(m_canvas->main()->next()->scenePos(), home);
    }

    void aBlockMovedButInsideTellsThePaletteSo()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 300));
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        m_canvas->drag(loose, QPoint(20, 20));
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedItem));
        QVERIFY(values(states).contains(MouseDragsInside));
        QVERIFY(!values(states).contains(MouseDragsOut));
        QCOMPARE(values(states).last(), static_cast<int>(MouseDone));
    }

    void aPressOnEmptyCanvasDragsItAndClearsTheFocusBlock()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 300));
        focusModule = loose;
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        const int before = m_canvas->view.horizontalScrollBar()->value();
        const QPoint from(300, 500);
        QTest::mousePress(m_canvas->view.viewport(), Qt::LeftButton, Qt::NoModifier, from);
        QVERIFY(!focusModule);
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedEmpty));
        QMouseEvent move(QEvent::MouseMove, from - QPoint(80, 0), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &move);
        QTest::mouseRelease(m_canvas->view.viewport(), Qt::LeftButton, Qt::NoModifier,
                            from - QPoint(80, 0));
        QCOMPARE(m_canvas->view.horizontalScrollBar()->value(), before + 80);
        QCOMPARE(loose->scenePos().y(), 300.0);
    }

    void aPressWhereABlockCouldBeLinkedIsNoneOnEmptyCanvas()
    {
        supermodule* block = m_canvas->drop(103, QPointF(600, 350));
        focusModule = block;
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        m_canvas->click(block->scenePos() + QPointF(170, 60));
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedItem));
        QCOMPARE(focusModule.data(), block);
        block->hide();
        states.clear();
        m_canvas->click(block->scenePos() + QPointF(170, 60));
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedEmpty));
        block->show();
    }

    void aPressOnTheLogoCountsAsEmptyCanvas()
    {
        auto* scene = static_cast<tzprogramscene*>(m_canvas->view.scene());
        QVERIFY(!scene->logo().pixmap().isNull());
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        m_canvas->click(scene->logo().sceneBoundingRect().center());
        QCOMPARE(values(states).first(), static_cast<int>(MousePressedEmpty));
    }

    void aPressFarRightOfABlocksLeftEdgeDoesNotTakeIt()
    {
        supermodule* loop = m_canvas->drop(303, QPointF(260, 380));
        supermodule* last = nullptr;
        for (int i = 0; i < 4; ++i) {
            supermodule* block = m_canvas->drop(s_wait, QPointF(700, 100));
            last ? last->insertModule(block) : loop->setLeftModule(block);
            last = block;
        }
        loop->updateTreeAndOpacity();
        QVERIFY(loop->boundingRect().right() > 420);
        // On the upper rim of the bracket, where no block of the body lies.
        m_canvas->click(loop->scenePos() + QPointF(399, -10));
        QCOMPARE(m_canvas->view.currentModule(), loop);
        m_canvas->click(loop->scenePos() + QPointF(400, -10));
        QVERIFY(!m_canvas->view.currentModule());
        // Of nested blocks the innermost is taken.
        m_canvas->click(last->scenePos() + QPointF(20, 30));
        QCOMPARE(m_canvas->view.currentModule(), last);
    }

    void aRightPressNeverStartsADrag()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        const QPointF home = first->scenePos();
        m_canvas->press(home + QPointF(30, 30), Qt::RightButton);
        QVERIFY(m_canvas->view.contextMenu().isVisible());
        m_canvas->view.contextMenu().close();
        moveWithoutButton(*m_canvas, home + QPointF(60, 200));
        QCOMPARE(first->scenePos(), home);
        QCOMPARE(first->parentModule(), static_cast<supermodule*>(m_canvas->main()));
        // Nor with a button that is still held.
        m_canvas->rightClick(home + QPointF(30, 30));
        m_canvas->move(home + QPointF(60, 200));
        QCOMPARE(first->scenePos(), home);
    }

    void aReleaseElsewhereSettlesWhatWasPressed_data()
    {
        columns<QPoint, int>("way", "updates");
        QTest::newRow("in place") << QPoint(0, 0) << 0;
        QTest::newRow("sideways") << QPoint(1, 0) << 1;
        QTest::newRow("downwards") << QPoint(0, 1) << 1;
    }

    void aReleaseElsewhereSettlesWhatWasPressed()
    {
        QFETCH(QPoint, way);
        QFETCH(int, updates);
        const supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        const QPointF grip = first->scenePos() + QPointF(30, 30);
        const QSignalSpy told(&m_canvas->view, &TzProgramView::moduleUpdateSignal);
        // No move in between: the events of a busy window are joined.
        m_canvas->press(grip);
        m_canvas->release(grip + way);
        QCOMPARE(told.size(), updates);
        QCOMPARE(first->parentModule(), static_cast<supermodule*>(m_canvas->main()));
    }

    void thePreviewClosesWhenTheBlockMovesAway()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        const QPointF grip = loose->scenePos() + QPointF(30, 30);
        m_canvas->press(grip);
        m_canvas->move(QPointF(240, 200) + QPointF(30, 30));
        QVERIFY(m_canvas->view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 0, s_forward}));
        QCOMPARE(first->scenePos(), QPointF(360, 200));
        m_canvas->move(grip);
        QVERIFY(!m_canvas->view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_forward}));
        QCOMPARE(first->scenePos(), QPointF(240, 200));
        m_canvas->release(grip);
    }

    void aSecondButtonInMidDragEndsItAndThatIsTold()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        const QPointF grip = loose->scenePos() + QPointF(30, 30);
        m_canvas->press(grip);
        m_canvas->move(QPointF(240, 200) + QPointF(30, 30));
        const QSignalSpy told(&m_canvas->view, &TzProgramView::moduleUpdateSignal);
        m_canvas->rightClick(QPointF(900, 560));
        QCOMPARE(told.count(), 1);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_wait, s_forward}));
        QCOMPARE(loose->zValue(), 0.0);
        QCOMPARE(first->scenePos(), QPointF(360, 200));
        m_canvas->release(QPointF(900, 560));
    }

    void aDragCutOffByANewDocumentLeavesNothingBehind()
    {
        const QPointF grip(30, 30);
        m_canvas->press(m_canvas->main()->scenePos() + grip);
        m_canvas->move(m_canvas->main()->scenePos() + grip + QPointF(20, 10));
        QVERIFY(m_canvas->main()->m_moved);
        m_canvas->view.newProgram();
        m_canvas->view.resetDocument();
        m_canvas->release(m_canvas->main()->scenePos() + grip);
        const supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        m_canvas->press(m_canvas->main()->scenePos() + grip);
        m_canvas->move(m_canvas->main()->scenePos() + grip + QPointF(20, 10));
        QCOMPARE(first->zValue(), 10.0);
        m_canvas->release(m_canvas->main()->scenePos() + grip);
        QCOMPARE(first->zValue(), 0.0);
    }

    void aDropFromThePaletteEndsADragWithoutRelease()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 450));
        m_canvas->press(loose->scenePos() + QPointF(30, 30));
        m_canvas->move(loose->scenePos() + QPointF(50, 50));
        QVERIFY(loose->m_moved);
        // A window of another program takes the release; then a block comes in.
        supermodule* dropped = m_canvas->drop(s_speed, QPointF(300, 450));
        QVERIFY(!loose->m_moved);
        QCOMPARE(loose->zValue(), 0.0);
        const QPointF place = dropped->scenePos();
        m_canvas->move(QPointF(700, 100));
        QCOMPARE(dropped->scenePos(), place);
    }

    void aSaveOrACopyInMidDragFindsTheBlockLinked()
    {
        for (const bool copies : {false, true}) {
            m_canvas.emplace();
            supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
            m_canvas->press(loose->scenePos() + QPointF(30, 30));
            m_canvas->move(QPointF(240, 200) + QPointF(30, 30));
            QVERIFY(m_canvas->view.preview()->isVisible());
            if (copies) {
                m_canvas->view.OnCopy();
            } else {
                QTemporaryDir folder;
                QVERIFY(m_canvas->view.saveFile(folder.filePath(QStringLiteral("a.tlrx"))));
            }
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_wait}));
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            m_canvas->release(QPointF(300, 300));
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
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
        supermodule* loose = m_canvas->drop(id, QPointF(600, 420));
        pressAndDragToTheGap(*m_canvas, loose);
        const QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        moveWithoutButton(*m_canvas, QPointF(700, 100));
        QCOMPARE(values(states), QList<int>{MouseDone});
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, id}));
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        // Nothing sticks to the mouse.
        m_canvas->move(QPointF(800, 500));
        moveWithoutButton(*m_canvas, QPointF(400, 500));
        QCOMPARE(loose->scenePos(), QPointF(240, 200));
        QCOMPARE(values(states).size(), 1);
    }

    void aMoveWithoutAButtonDeletesNothing()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        m_canvas->press(loose->scenePos() + QPointF(30, 30));
        m_canvas->move(QPointF(600, 590));
        moveWithoutButton(*m_canvas, QPointF(600, 595));
        QCOMPARE(m_canvas->blocks().size(), 2);
        QVERIFY(!loose->m_moved);
    }

    void aWindowThatLosesTheActivationEndsTheDrag()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        pressAndDragToTheGap(*m_canvas, loose);
        const QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        QEvent event(QEvent::WindowDeactivate);
        QApplication::sendEvent(&m_canvas->view, &event);
        QCOMPARE(values(states), QList<int>{MouseDone});
        QVERIFY(!loose->m_moved);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_wait}));
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
        m_canvas->view.deleteModule(m_canvas->drop(s_speed, QPointF(700, 100)));
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        pressAndDragToTheGap(*m_canvas, loose);
        const QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        if (end == 0) {
            const QTemporaryDir folder;
            QVERIFY(m_canvas->document.save(folder.filePath(QStringLiteral("a.tlrx"))));
        } else if (end == 1) {
            m_canvas->document.startAnew();
        } else {
            m_canvas->key(end == 2 ? Qt::Key_Delete : Qt::Key_Z,
                          end == 2 ? Qt::NoModifier : Qt::ControlModifier);
        }
        QCOMPARE(values(states), QList<int>{MouseDone});
    }

    void theControlKeyAloneEndsNoDrag()
    {
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        m_canvas->press(loose->scenePos() + QPointF(30, 30));
        m_canvas->move(loose->scenePos() + QPointF(50, 50));
        m_canvas->key(Qt::Key_Control, Qt::ControlModifier);
        m_canvas->key(Qt::Key_B, Qt::ControlModifier);
        QVERIFY(loose->m_moved);
        m_canvas->move(QPointF(270, 230));
        m_canvas->release(QPointF(270, 230));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_wait}));
    }

    void aPressOnThePopUpLeavesTheBlockBeneathAlone()
    {
        supermodule* speed = m_canvas->drop(s_speed, QPointF(500, 100));
        supermodule* beneath = m_canvas->drop(s_wait, QPointF(500, 300));
        speed->OnSetParam(1);
        graphicsItem_Param* popUp = graphicsItem_Param::existing();
        QVERIFY(popUp && popUp->isVisible());
        // Beside the buttons, within the bubble.
        popUp->setPos(beneath->scenePos() - QPointF(2, 2));
        const QPointF grip = popUp->scenePos() + QPointF(4, 4);
        QVERIFY(beneath->sceneBoundingRect().contains(grip));
        const QPointF home = beneath->scenePos();
        const QPointF seen = m_canvas->view.mapToScene(QPoint(0, 0));
        m_canvas->press(grip);
        m_canvas->move(grip + QPointF(40, 40));
        m_canvas->release(grip + QPointF(40, 40));
        QCOMPARE(beneath->scenePos(), home);
        QCOMPARE(m_canvas->view.mapToScene(QPoint(0, 0)), seen);
        QVERIFY(!beneath->isSelected());
        QVERIFY(!m_canvas->view.currentModule());
        QVERIFY(popUp->isVisible());
        m_canvas->key(Qt::Key_Delete);
        QCOMPARE(m_canvas->blocks().size(), 3);
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
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(m_canvas->document.save(path));
        m_canvas->drop(s_speed, QPointF(500, 100))->OnSetParam(0);
        QVERIFY(graphicsItem_Param::existing()->isVisible());
        if (opens) {
            QCOMPARE(m_canvas->document.open(path), 0);
        } else {
            m_canvas->document.startAnew();
        }
        QVERIFY(!graphicsItem_Param::existing()->isVisible());
    }

    void aDragIsAChangeAndItsEndShowsInTheText()
    {
        m_canvas->dropBehind(m_canvas->main(), s_forward);
        supermodule* loose = m_canvas->drop(s_wait, QPointF(600, 420));
        QString told;
        connect(&m_canvas->view, &TzProgramView::moduleUpdateSignal, this,
                [&] { told = m_canvas->view.generateVisibleCode(1); });
        documentModified = false;
        m_canvas->drag(loose, (QPointF(365, 205) - loose->scenePos()).toPoint());
        QVERIFY(documentModified);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, s_forward, s_wait}));
        QVERIFY(!told.isEmpty());
        QCOMPARE(told, m_canvas->view.generateVisibleCode(1));
        documentModified = false;
        m_canvas->drag(loose, QPoint(100, 150));
        QVERIFY(documentModified);
        QCOMPARE(told, m_canvas->view.generateVisibleCode(1));
    }

    void theEldestBlockIsOnTopInTheInnerOfTwoLoops()
    {
        supermodule* eldest = m_canvas->drop(s_forward, QPointF(800, 420));
        supermodule* outer = m_canvas->dropBehind(m_canvas->main(), 303);
        supermodule* inner = m_canvas->drop(303, outer->scenePos() + QPointF(250, 20));
        QCOMPARE(outer->left(), inner);
        m_canvas->drag(eldest,
                       (inner->scenePos() + QPointF(110, 10) - eldest->scenePos()).toPoint());
        QCOMPARE(inner->left(), eldest);
        const QPointF grip = eldest->scenePos() + QPointF(60, 60);
        const QList<QGraphicsItem*> items = m_canvas->view.scene()->items(grip);
        QList<supermodule*> seen;
        for (QGraphicsItem* item : items) {
            if (supermodule* block = supermodule::fromItem(item)) {
                seen.append(block);
            }
        }
        QCOMPARE(seen, (QList<supermodule*>{eldest, inner, outer}));
        m_canvas->click(grip);
        QCOMPARE(m_canvas->view.currentModule(), eldest);
    }

    void aDeletedBlockTakesTheFocusBlockAway()
    {
        supermodule* focused = m_canvas->drop(s_wait, QPointF(600, 420));
        supermodule* other = m_canvas->drop(s_speed, QPointF(600, 100));
        focused->OnSetNumber(0);
        QCOMPARE(focusModule, focused);
        // The main block and none are not deleted.
        m_canvas->view.deleteModule(m_canvas->main());
        m_canvas->view.deleteModule(nullptr);
        QCOMPARE(focusModule, focused);
        m_canvas->view.deleteModule(other);
        QVERIFY(!focusModule);
        // A value that comes now goes nowhere.
        const QString text = focused->cCode();
        m_canvas->view.OnSelectNumberSignal(Qt::Key_9);
        QCOMPARE(focused->cCode(), text);
    }

    void aBlockHasItsFlagsHoweverItCame()
    {
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 303);
        m_canvas->drop(s_forward, loop->scenePos() + QPointF(160, 20));
        m_canvas->drop(s_wait, QPointF(700, 450));
        const auto odd = [this] {
            int count = 0;
            for (const supermodule* block : m_canvas->blocks()) {
                const bool right = block->flags() ==
                                   (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
                const bool linked = block->hasConnector(NextLink) || block->hasConnector(LeftLink);
                count += right && linked && block->isEnabled() ? 0 : 1;
            }
            return count;
        };
        QCOMPARE(odd(), 0);
        m_canvas->document.paste(Document::clipboardText(loop), 400, 420);
        QCOMPARE(m_canvas->blocks().size(), 6);
        QCOMPARE(odd(), 0);
        m_canvas->view.undoStack().undo();
        m_canvas->view.undoStack().redo();
        m_canvas->view.deleteModule(loop);
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 6);
        QCOMPARE(odd(), 0);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(m_canvas->document.save(path));
        QCOMPARE(m_canvas->document.open(path), 0);
        QCOMPARE(m_canvas->blocks().size(), 6);
        QCOMPARE(odd(), 0);
    }

    void nothingIsLinkedToWhatIsHidden()
    {
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        m_canvas->view.OnSwitchProgram(404);
        QVERIFY(!loop->isVisible());
        m_canvas->view.centerOn(500, 300);
        const QPointF end = loop->scenePos() + QPointF(340, 10);
        const supermodule* dropped = m_canvas->drop(s_wait, end);
        QVERIFY(!dropped->parentModule());
        m_canvas->drop(s_wait, loop->scenePos() + QPointF(160, 20));
        m_canvas->document.addModule(static_cast<int>(end.x()), static_cast<int>(end.y()),
                                     s_forward);
        QVERIFY(!loop->next() && !loop->left());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301}));
    }

    void aDoubleClickAndDragMovesNoBlockOutOfItsChain()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), s_forward);
        const QPointF home = first->scenePos();
        const QPointF grip = home + QPointF(30, 30);
        m_canvas->click(grip);
        QTest::mouseDClick(m_canvas->view.viewport(), Qt::LeftButton, Qt::NoModifier,
                           m_canvas->at(grip));
        QMouseEvent again(QEvent::MouseButtonDblClick, m_canvas->at(grip), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &again);
        m_canvas->move(grip + QPointF(50, 150));
        QCOMPARE(first->scenePos(), home);
        m_canvas->release(grip + QPointF(50, 150));
    }

    void aLooseBlockRestsOnWholeUnits()
    {
        m_canvas->view.resetMatrix();
        m_canvas->view.scale(0.7, 0.7);
        supermodule* loose = m_canvas->drop(s_wait, QPointF(601, 301));
        m_canvas->drag(loose, QPoint(13, 7));
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
            m_canvas.emplace();
            m_canvas->view.resetMatrix();
            m_canvas->view.scale(scale, scale);
            m_canvas->view.centerOn(500, 300);
            // Out of reach: the chain stays loose.
            m_canvas->main()->setPos(5000, 5000);
            supermodule* head = m_canvas->drop(s_wait, QPointF(401, 301));
            supermodule* behind = m_canvas->dropBehind(head, s_speed);
            QVERIFY(isWhole(head->pos()));
            QCOMPARE(head->next(), behind);
            for (int step = 0; step < 40; ++step) {
                const QPointF before = head->scenePos();
                const QPoint way = QPoint(20 + 5 * step, 10 + step) * (step % 2 == 0 ? 1 : -1);
                m_canvas->drag(head, way);
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
            m_canvas.emplace();
            supermodule* loose = m_canvas->drop(s_speed, QPointF(600, 300));
            m_canvas->click(loose->scenePos() + QPointF(30, 30));
            m_canvas->key(Qt::Key_Delete, modifier);
            QCOMPARE(m_canvas->blocks().size(), 1);
        }
    }

    void aPressTakesTheMarkFromANumberField()
    {
        supermodule* wait = m_canvas->dropBehind(m_canvas->main(), s_wait);
        m_canvas->click(wait->scenePos() + QPointF(60, 120));
        QVERIFY(SelectableButton::current());
        m_canvas->click(QPointF(700, 550));
        QVERIFY(!SelectableButton::current());
    }

    void twoBlocksOfTypeNoughtAreToldApartByIdentity()
    {
        QCOMPARE(m_canvas->view.preview()->id, m_canvas->view.mainBlock()->id);
        // The preview stands in no program, can't be hit, and isn't what a reset keeps as the root.
        m_canvas->dragOver(s_wait, QPointF(310, 210));
        QVERIFY(m_canvas->view.preview()->parentModule());
        m_canvas->leave();
        m_canvas->view.resetDocument();
        QCOMPARE(rootModules, QList<supermodule*>{m_canvas->main()});
        m_canvas->view.newProgram();
        QCOMPARE(m_canvas->blocks(), QList<supermodule*>{m_canvas->main()});
        QVERIFY(m_canvas->view.preview()->scene());
    }
};

QTEST_MAIN(GestureTest)
#include "gesturetest.moc"
