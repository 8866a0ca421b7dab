#include "document/modifycommand.h"
#include "document/movecommand.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "support/canvas/canvastest.h"
#include "support/system/paintwatch.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTest>

using namespace moduleUndoCommand;

namespace
{
/** Copies a new block, takes the source away for good, and pastes the copy loose. */
supermodule* pasteBlock(CanvasFixture& p_canvas, int p_id)
{
    supermodule* source = p_canvas.drop(p_id, QPointF(700, 450));
    p_canvas.click(source->scenePos() + QPointF(30, 30));
    const QString text = Document::clipboardText(source);
    p_canvas.view.removeModule(source);
    p_canvas.document.paste(text, 500, 420);
    return moduleMap.last();
}
} // namespace

class UndoTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void aDeletedBlockComesBackWithAllThatHungUnderIt()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* loop = m_canvas->dropBehind(first, 301);
        supermodule* inner = m_canvas->drop(101, loop->scenePos() + QPointF(160, 20));
        QCOMPARE(loop->left(), inner);
        const QString text = m_canvas->view.generateVisibleCode(1);
        m_canvas->view.deleteModule(first);
        QCOMPARE(m_canvas->blocks().size(), 1);
        QVERIFY(documentModified);
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 301}));
        QCOMPARE(m_canvas->view.generateVisibleCode(1), text);
    }

    void deleteUndoRedoUndoEndsWhereItBegan()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* second = m_canvas->dropBehind(first, 102);
        m_canvas->view.deleteModule(second);
        m_canvas->view.deleteModule(first);
        for (int round = 0; round < 3; ++round) {
            m_canvas->view.undoStack().undo();
            m_canvas->view.undoStack().undo();
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
            m_canvas->view.undoStack().redo();
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
            m_canvas->view.undoStack().redo();
            QCOMPARE(m_canvas->blocks().size(), 1);
        }
    }

    void aBlockDeletedByTheKeyComesBackWhereItStood()
    {
        supermodule* loose = m_canvas->drop(101, QPointF(700, 300));
        m_canvas->drag(loose, QPoint(-50, 40));
        const QPointF stood = loose->scenePos();
        m_canvas->key(Qt::Key_Delete);
        QCOMPARE(m_canvas->blocks().size(), 1);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_canvas->blocks().size(), 2);
        QVERIFY(moduleMap.size() >= 2);
        supermodule* back = moduleMap.last();
        QCOMPARE(back->scenePos(), stood);
        QCOMPARE(back->opacity(), 0.5);
        m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(m_canvas->blocks().size(), 1);
    }

    void aDeletionDoneAgainComesBackToTheLatestPlace()
    {
        supermodule* loose = m_canvas->drop(101, QPointF(700, 300));
        const QPointF stood = loose->scenePos();
        // Out over the lower edge: it comes back where the drag began.
        m_canvas->drag(loose, QPoint(0, 400));
        QCOMPARE(m_canvas->blocks().size(), 1);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        loose = moduleMap.last();
        QCOMPARE(loose->scenePos(), stood);
        m_canvas->drag(loose, QPoint(-50, 40));
        m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(m_canvas->blocks().size(), 1);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(moduleMap.last()->scenePos(), stood + QPointF(-50, 40));
    }

    void aBlockBehindALoopComesBackThereAndNotInTheLoop()
    {
        // The end of the last block in the body reaches out of the loop, so that both are touched.
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        supermodule* behind = m_canvas->dropBehind(loop, 102);
        m_canvas->drop(103, loop->scenePos() + QPointF(160, 20));
        QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
        for (int round = 0; round < 2; ++round) {
            m_canvas->click(behind->scenePos() + QPointF(30, 30));
            m_canvas->key(Qt::Key_Delete);
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301}));
            m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 102}));
            QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            behind = loop->next();
        }
    }

    void aBlockThrownAwayComesBackBehindTheLoop()
    {
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        supermodule* behind = m_canvas->dropBehind(loop, 102);
        m_canvas->drop(103, loop->scenePos() + QPointF(160, 20));
        const QString text = m_canvas->view.generateVisibleCode(1);
        // Out over the lower edge, where it is deleted.
        m_canvas->drag(behind, QPoint(0, 500));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301}));
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 102}));
        QCOMPARE(m_canvas->view.generateVisibleCode(1), text);
    }

    void aLooseBlockOnAConnectorComesBackLoose()
    {
        supermodule* loose = m_canvas->drop(101, QPointF(700, 300));
        loose->setPos(m_canvas->main()->scenePos() + QPointF(150, 10));
        m_canvas->view.deleteModule(loose);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_canvas->blocks().size(), 2);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), QList<int>{0});
    }

    void aBlockOnALinkWithoutConnectorComesBackOnIt()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* branch = m_canvas->drop(101, QPointF(700, 300));
        first->setRightModule(branch);
        m_canvas->main()->updateTreeAndOpacity();
        m_canvas->view.deleteModule(branch);
        QVERIFY(!first->right());
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(first->right());
        QCOMPARE(first->right()->id, 101);
    }

    void aBlockWhosePlaceIsTakenComesBackToWhatItTouches()
    {
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        supermodule* behind = m_canvas->dropBehind(loop, 102);
        m_canvas->drop(103, loop->scenePos() + QPointF(160, 20));
        m_canvas->view.deleteModule(behind);
        m_canvas->dropBehind(loop, 105);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 105}));
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 105}));
        QCOMPARE(CanvasFixture::ids(loop->left()), (QList<int>{103, 102}));
    }

    void aBlockDeletedBehindALoopComesBackBehindItAndNotInIt()
    {
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        m_canvas->drop(104, loop->scenePos() + QPointF(160, 20));
        supermodule* inner = m_canvas->drop(301, loop->left()->scenePos() + QPointF(180, 20));
        m_canvas->drop(103, inner->scenePos() + QPointF(160, 20));
        supermodule* last = m_canvas->dropBehind(loop, 102);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 102}));
        const QString text = m_canvas->view.generateVisibleCode(1);
        const QPointF stood = last->scenePos();
        m_canvas->view.deleteModule(last);
        m_canvas->view.deleteModule(loop->left());
        for (int round = 0; round < 2; ++round) {
            m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
            m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(m_canvas->view.generateVisibleCode(1), text);
            QCOMPARE(m_canvas->main()->lastOf()->scenePos(), stood);
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
            m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301}));
            QVERIFY(!loop->left());
        }
    }

    void aBlockWhoseOldPlaceIsTakenComesBackElsewhere()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        const QPointF stood = first->scenePos();
        m_canvas->view.deleteModule(first);
        // Its place is taken.
        m_canvas->dropBehind(m_canvas->main(), 102);
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()).mid(0, 2), (QList<int>{0, 102}));
        QCOMPARE(m_canvas->blocks().size(), 3);
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        m_canvas->view.undoStack().redo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 102}));
        // What it hung on stands elsewhere: it comes back there.
        m_canvas->view.deleteModule(m_canvas->main()->next());
        m_canvas->drag(m_canvas->main(), QPoint(0, 200));
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 102}));
        QCOMPARE(m_canvas->main()->next()->scenePos(), stood + QPointF(0, 200));
    }

    void aRebuiltBlockIsNeverLinkedToTheHiddenPreview()
    {
        supermodule* last = m_canvas->dropBehind(m_canvas->main(), 102);
        // The preview is left where the new block lands, in front of the last one.
        m_canvas->drop(103, last->scenePos() + QPointF(70, 5));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
        m_canvas->click(last->scenePos() + QPointF(30, 30));
        m_canvas->key(Qt::Key_Delete);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
    }

    void redoOfADeleteKeepsWhatCameBehindTheBlockSince()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->view.deleteModule(first);
        m_canvas->view.undoStack().undo();
        m_canvas->dropBehind(m_canvas->main()->next(), 101);
        m_canvas->main()->next()->next()->setNumberKey(Qt::Key_5);
        const QString text = m_canvas->view.generateVisibleCode(1);
        m_canvas->view.undoStack().redo();
        QCOMPARE(m_canvas->blocks().size(), 1);
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 101}));
        QCOMPARE(m_canvas->view.generateVisibleCode(1), text);
    }

    void undoOfAPasteKeepsWhatWasLinkedBehindItSince()
    {
        supermodule* source = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->rightClick(source->scenePos() + QPointF(30, 30));
        m_canvas->view.OnCopyAndPaste();
        supermodule* pasted = moduleMap.last();
        supermodule* own = m_canvas->dropBehind(pasted, 101);
        QCOMPARE(CanvasFixture::ids(pasted), (QList<int>{103, 101}));
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 3);
        QVERIFY(!own->parentModule());
    }

    void anUndoneAndRedonePasteKeepsValuePlaceAndLink()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->dropBehind(first, 102);
        supermodule* pasted = pasteBlock(*m_canvas, 101);
        const int key = pasted->registryKey();
        // Linked into the middle, and given a value.
        m_canvas->drag(pasted,
                       (first->scenePos() + QPointF(130, 10) - pasted->scenePos()).toPoint());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 101, 102}));
        pasted->setNumberKey(Qt::Key_7);
        const QString text = m_canvas->view.generateVisibleCode(1);
        for (int round = 0; round < 2; ++round) {
            m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 101, 102}));
            QCOMPARE(m_canvas->view.generateVisibleCode(1), text);
            QVERIFY(moduleMap.contains(key));
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        }
        // With the place taken it comes back loose, and what took it stays.
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        m_canvas->drop(105, first->scenePos() + QPointF(190, 5));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 105, 102}));
        m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 105, 102}));
        QVERIFY(!moduleMap.value(key)->parentModule());
    }

    void whatWasLinkedIntoAPastedLoopIsInItAgainAfterTheRedo()
    {
        supermodule* loop = pasteBlock(*m_canvas, 301);
        const int key = loop->registryKey();
        supermodule* inner = m_canvas->drop(103, loop->scenePos() + QPointF(160, 20));
        supermodule* behind = m_canvas->dropBehind(loop, 102);
        QCOMPARE(loop->left(), inner);
        const QPointF innerStood = inner->pos();
        const QPointF behindStood = behind->pos();
        for (int round = 0; round < 2; ++round) {
            m_canvas->view.undoStack().undo();
            QVERIFY(!inner->parentModule() && !behind->parentModule());
            QCOMPARE(inner->pos(), innerStood);
            QCOMPARE(behind->pos(), behindStood);
            QCOMPARE(inner->opacity(), 0.5);
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            m_canvas->view.undoStack().redo();
            QCOMPARE(moduleMap.value(key)->left(), inner);
            QCOMPARE(moduleMap.value(key)->next(), behind);
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        }
        // Moved since, it stays where it was put.
        m_canvas->view.undoStack().undo();
        m_canvas->drag(inner, QPoint(0, 30));
        m_canvas->view.undoStack().redo();
        QVERIFY(!inner->parentModule() && !behind->parentModule());
        QVERIFY(!moduleMap.value(key)->left());
    }

    void whatHasAnotherParentSinceStaysThere()
    {
        supermodule* loop = pasteBlock(*m_canvas, 301);
        const int key = loop->registryKey();
        supermodule* inner = m_canvas->drop(103, loop->scenePos() + QPointF(160, 20));
        QCOMPARE(loop->left(), inner);
        const QPointF stood = inner->pos();
        m_canvas->view.undoStack().undo();
        QVERIFY(!inner->parentModule());
        // It hangs on another block now, and stands where it stood.
        supermodule* other = m_canvas->drop(104, QPointF(800, 60));
        other->setPos(stood - QPointF(120, 0));
        other->insert(NextLink, inner);
        QCOMPARE(inner->pos(), stood);
        m_canvas->view.undoStack().redo();
        QCOMPARE(inner->parentModule(), other);
        QVERIFY(!moduleMap.value(key)->left());
    }

    void noUndoNestsLoopsDeeperThanAFileHolds()
    {
        supermodule* outermost = m_canvas->dropBehind(m_canvas->main(), 301);
        const auto hangIn = [this](supermodule* p_loop) {
            supermodule* inner = createModuleFromId(301);
            inner->enterScene(m_canvas->view.scene());
            ModuleRegistry::add(inner);
            p_loop->hangModule(LeftLink, inner);
            return inner;
        };
        supermodule* innermost = outermost;
        for (int depth = 1; depth <= MaximalNesting; ++depth) {
            innermost = hangIn(innermost);
        }
        m_canvas->main()->updateTreeAndOpacity();
        const int key = innermost->registryKey();
        supermodule* parent = innermost->parentModule();
        m_canvas->view.deleteModule(innermost);
        m_canvas->view.undoStack().undo();
        QCOMPARE(moduleMap.value(key)->parentModule(), parent);
        m_canvas->view.undoStack().redo();
        // The program is one loop deeper now.
        supermodule* around = m_canvas->drop(301, QPointF(700, 420));
        outermost->detachFromParent();
        around->insert(LeftLink, outermost);
        around->updateTreeAndOpacity();
        m_canvas->view.undoStack().undo();
        QVERIFY(!moduleMap.value(key)->parentModule());
        QVERIFY(!parent->left());
    }

    void anAddedBlockIsTakenOutAloneAndPutBack()
    {
        m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->view.addModule(500, 210, 301);
        supermodule* loop = m_canvas->main()->next()->next();
        QVERIFY(loop);
        QCOMPARE(loop->id, 301);
        supermodule* inner = m_canvas->drop(104, loop->scenePos() + QPointF(160, 20));
        supermodule* behind = m_canvas->dropBehind(loop, 102);
        loop->setNumberKey(Qt::Key_5);
        const QString text = m_canvas->view.generateVisibleCode(1);
        for (int round = 0; round < 2; ++round) {
            m_canvas->view.undoStack().undo();
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
            QVERIFY(!inner->parentModule());
            QCOMPARE(behind->parentModule(), m_canvas->main()->next());
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            m_canvas->view.undoStack().redo();
            QCOMPARE(m_canvas->view.generateVisibleCode(1), text);
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        }
    }

    void aPasteOfNothingKeepsWhatCanBeRedone()
    {
        supermodule* loose = m_canvas->drop(101, QPointF(700, 300));
        m_canvas->view.deleteModule(loose);
        m_canvas->view.undoStack().undo();
        for (const char* text : {"", "no <xml", "<v><basenode/></v>",
                                 "<v><basenode><module id=\"77\"/></basenode></v>"}) {
            auto* data = new QMimeData;
            data->setData(QStringLiteral("korvane/tiler/modules"), text);
            QGuiApplication::clipboard()->setMimeData(data);
            m_canvas->view.OnPaste();
            QCOMPARE(m_canvas->view.undoStack().count(), 1);
            QVERIFY(m_canvas->view.undoStack().canRedo());
        }
        m_canvas->view.undoStack().redo();
        QCOMPARE(m_canvas->blocks().size(), 1);
    }

    void aDeletedBlockComesBackToItsParentWhereverThatStandsNow()
    {
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        m_canvas->drop(103, loop->scenePos() + QPointF(160, 20));
        supermodule* behind = m_canvas->dropBehind(loop, 102);
        m_canvas->view.deleteModule(behind);
        // The program moves under the old place: into the loop's body, and away from all.
        for (const QPoint& way : {QPoint(100, 0), QPoint(-60, 150), QPoint(30, -90)}) {
            m_canvas->drag(m_canvas->main(), way);
            m_canvas->view.undoStack().undo();
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 102}));
            QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            m_canvas->view.undoStack().redo();
            QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301}));
        }
        // A block in front of the loop shifts that by its width.
        m_canvas->drop(104, m_canvas->main()->scenePos() + QPointF(210, 5));
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 104, 301, 102}));
        QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
    }

    void aKeyInMidDragOverAGapUndoesWhatWasBefore()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* gone = m_canvas->dropBehind(first, 102);
        m_canvas->view.deleteModule(gone);
        supermodule* loose = m_canvas->drop(101, QPointF(700, 420));
        m_canvas->press(loose->scenePos() + QPointF(30, 30));
        m_canvas->move(first->scenePos() + QPointF(30, 35));
        QVERIFY(m_canvas->view.preview()->isVisible());
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101, 103, 102}));
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        m_canvas->release(first->scenePos() + QPointF(30, 35));
        m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101, 103}));
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101, 103, 102}));
    }

    void aDeletedAndUndeletedBlockCountsAsAChange()
    {
        supermodule* block = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->view.deleteModule(block);
        documentModified = false;
        m_canvas->view.undoStack().undo();
        QVERIFY(documentModified);
        documentModified = false;
        m_canvas->view.undoStack().redo();
        QVERIFY(documentModified);
    }

    void undoAndRedoPaintTheKnobThatStandsOutOfTheBlock()
    {
        supermodule* last = m_canvas->drop(103, QPointF(700, 300));
        const QRectF frame = last->sceneBoundingRect();
        const QRect knob(m_canvas->at(frame.topRight() + QPointF(1, 0)),
                         m_canvas->at(frame.bottomRight() + QPointF(15, 0)));
        QVERIFY(m_canvas->view.viewport()->rect().contains(knob));
        m_canvas->view.deleteModule(last);
        QApplication::processEvents();
        for (int round = 0; round < 2; ++round) {
            const PaintWatch watch(*m_canvas->view.viewport());
            m_canvas->key(round == 0 ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
            QVERIFY(watch.saw(knob));
        }
    }

    void aCommandWhoseBlockIsGoneDoesNothing()
    {
        const int nobody = 4711;
        QDomDocument document;
        QDomElement element = document.createElement(QStringLiteral("a"));
        element.appendChild(document.createElement(QStringLiteral("module")));
        modifyCommand modify(nobody, element, element);
        modify.redo();
        modify.undo();
        moveCommand move(QPointF(1, 1), QPointF(2, 2), nobody);
        move.redo();
        move.undo();

        supermodule* loose = m_canvas->drop(101, QPointF(700, 300));
        m_canvas->view.deleteModule(loose);
        m_canvas->view.undoStack().undo();
        m_canvas->view.removeModule(moduleMap.last());
        // A deletion that found nothing brings nothing back.
        m_canvas->view.undoStack().redo();
        QCOMPARE(m_canvas->blocks().size(), 1);
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 1);
    }

    void aParameterChangedBackAndForth()
    {
        supermodule* speed = m_canvas->dropBehind(m_canvas->main(), 100);
        const auto wrapped = [speed](QDomDocument& p_document, const QString& p_n) {
            QDomElement outer = p_document.createElement(QStringLiteral("node"));
            QDomElement inner = p_document.createElement(QStringLiteral("module"));
            inner.setAttribute(QStringLiteral("x"), static_cast<int>(speed->x()));
            inner.setAttribute(QStringLiteral("y"), static_cast<int>(speed->y()));
            inner.setAttribute(QStringLiteral("n"), p_n);
            outer.appendChild(inner);
            return outer;
        };
        QDomDocument document;
        modifyCommand command(speed->registryKey(), wrapped(document, QStringLiteral("1")),
                              wrapped(document, QStringLiteral("2")));
        command.redo();
        QVERIFY(speed->cCode().startsWith(QStringLiteral("speed1 = 80;")));
        command.undo();
        QVERIFY(speed->cCode().startsWith(QStringLiteral("speed1 = 50;")));
    }

    void aMoveCommandLinksAndComesBack()
    {
        supermodule* loose = m_canvas->drop(101, QPointF(700, 300));
        const QPointF from = loose->scenePos();
        moveCommand command(from, QPointF(245, 205), loose->registryKey());
        command.redo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101}));
        QCOMPARE(loose->scenePos(), QPointF(240, 200));
        command.undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), QList<int>{0});
        QCOMPARE(loose->scenePos(), from);
    }

    void twoPastesGiveTwoChainsAtTheirPlaces()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->dropBehind(first, 102);
        m_canvas->rightClick(first->scenePos() + QPointF(30, 30));
        m_canvas->view.OnCopyAndPaste();
        m_canvas->view.OnPaste();
        QList<supermodule*> heads;
        for (supermodule* block : m_canvas->blocks()) {
            if (!block->parentModule() && block != m_canvas->main()) {
                heads.append(block);
            }
        }
        QCOMPARE(heads.size(), 2);
        for (const supermodule* head : heads) {
            QCOMPARE(CanvasFixture::ids(head), (QList<int>{103, 102}));
            QCOMPARE(head->opacity(), 0.5);
        }
        const QPointF beside = first->scenePos() + QPointF(160, 160);
        QVERIFY(heads.at(0)->scenePos() == beside || heads.at(1)->scenePos() == beside);
        QVERIFY(heads.at(0)->scenePos() != heads.at(1)->scenePos());
        QVERIFY(documentModified);
    }

    void aPasteIsUndoneAndRedone()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->rightClick(first->scenePos() + QPointF(30, 30));
        m_canvas->view.OnCopyAndPaste();
        QCOMPARE(m_canvas->blocks().size(), 3);
        const int key = moduleMap.lastKey();
        m_canvas->view.deleteModule(moduleMap.last());
        m_canvas->view.undoStack().undo();
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 2);
        m_canvas->view.undoStack().redo();
        QCOMPARE(m_canvas->blocks().size(), 3);
        QVERIFY(moduleMap.contains(key));
        m_canvas->view.undoStack().redo();
        QCOMPARE(m_canvas->blocks().size(), 2);
    }

    void aBlockMovedOutOfAPasteThatIsRedoneCanStillBeDeleted()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->dropBehind(first, 102);
        m_canvas->rightClick(first->scenePos() + QPointF(30, 30));
        m_canvas->view.OnCopyAndPaste();
        supermodule* moved = moduleMap.last();
        QCOMPARE(moved->id, 102);
        m_canvas->drag(moved, QPoint(150, 60));
        QVERIFY(!moved->parentModule());
        const QPointF stood = moved->pos();
        const int key = moved->registryKey();
        // The undo takes both out, wherever they are; the redo puts each where it was.
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 3);
        m_canvas->view.undoStack().redo();
        QCOMPARE(m_canvas->blocks().size(), 5);
        moved = moduleMap.value(key);
        QVERIFY(!moved->parentModule());
        QCOMPARE(moved->pos(), stood);
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        m_canvas->view.deleteModule(moved);
        QCOMPARE(m_canvas->blocks().size(), 4);
        m_canvas->view.undoStack().undo();
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 3);
    }

    void pasteIsOfferedOnlyForBlocks()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("text"));
        m_canvas->press(QPointF(700, 550), Qt::RightButton);
        const QList<QAction*> actions = m_canvas->view.contextMenu().actions();
        QVERIFY(!actions.at(1)->isEnabled());
        QVERIFY(!actions.at(3)->isEnabled());
        m_canvas->view.contextMenu().close();
        m_canvas->view.OnCopy();
        m_canvas->press(QPointF(700, 550), Qt::RightButton);
        QVERIFY(actions.at(1)->isEnabled());
        QVERIFY(actions.at(3)->isEnabled());
        m_canvas->view.contextMenu().close();
    }
};

QTEST_MAIN(UndoTest)
#include "undotest.moc"
