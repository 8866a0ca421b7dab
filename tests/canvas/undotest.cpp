#include "document/modifycommand.h"
#include "document/movecommand.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "support/canvas/canvasfixture.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPaintEvent>
#include <QRegion>
#include <QTest>

using namespace moduleUndoCommand;

namespace
{
/** What of a widget is painted. */
class PaintedRegion : public QObject
{
public:
    explicit PaintedRegion(QWidget* p_widget) { p_widget->installEventFilter(this); }

    QRegion region;

    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent*>(p_event)->region();
        }
        return false;
    }
};

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

class UndoTest : public QObject
{
    Q_OBJECT

private slots:
    void aDeletedBlockComesBackWithAllThatHungUnderIt()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* loop = canvas.dropBehind(first, 301);
        supermodule* inner = canvas.drop(101, loop->scenePos() + QPointF(160, 20));
        QCOMPARE(loop->left(), inner);
        const QString text = canvas.view.generateVisibleCode(1);
        canvas.view.deleteModule(first);
        QCOMPARE(canvas.blocks().size(), 1);
        QVERIFY(documentModified);
        canvas.view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 301}));
        QCOMPARE(canvas.view.generateVisibleCode(1), text);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void deleteUndoRedoUndoEndsWhereItBegan()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* second = canvas.dropBehind(first, 102);
        canvas.view.deleteModule(second);
        canvas.view.deleteModule(first);
        for (int round = 0; round < 3; ++round) {
            canvas.view.undoStack().undo();
            canvas.view.undoStack().undo();
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
            canvas.view.undoStack().redo();
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103}));
            canvas.view.undoStack().redo();
            QCOMPARE(canvas.blocks().size(), 1);
        }
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockDeletedByTheKeyComesBackWhereItStood()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(101, QPointF(700, 300));
        canvas.drag(loose, QPoint(-50, 40));
        const QPointF stood = loose->scenePos();
        canvas.key(Qt::Key_Delete);
        QCOMPARE(canvas.blocks().size(), 1);
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(canvas.blocks().size(), 2);
        QVERIFY(moduleMap.size() >= 2);
        supermodule* back = moduleMap.last();
        QCOMPARE(back->scenePos(), stood);
        QCOMPARE(back->opacity(), 0.5);
        canvas.key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(canvas.blocks().size(), 1);
    }

    void aDeletionDoneAgainComesBackToTheLatestPlace()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(101, QPointF(700, 300));
        const QPointF stood = loose->scenePos();
        // Out over the lower edge: it comes back where the drag began.
        canvas.drag(loose, QPoint(0, 400));
        QCOMPARE(canvas.blocks().size(), 1);
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        loose = moduleMap.last();
        QCOMPARE(loose->scenePos(), stood);
        canvas.drag(loose, QPoint(-50, 40));
        canvas.key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(canvas.blocks().size(), 1);
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(moduleMap.last()->scenePos(), stood + QPointF(-50, 40));
    }

    void aBlockBehindALoopComesBackThereAndNotInTheLoop()
    {
        // The end of the last block in the body reaches out of the loop, so that both are touched.
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        supermodule* behind = canvas.dropBehind(loop, 102);
        canvas.drop(103, loop->scenePos() + QPointF(160, 20));
        QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
        for (int round = 0; round < 2; ++round) {
            canvas.click(behind->scenePos() + QPointF(30, 30));
            canvas.key(Qt::Key_Delete);
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301}));
            canvas.key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301, 102}));
            QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            behind = loop->next();
        }
    }

    void aBlockThrownAwayComesBackBehindTheLoop()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        supermodule* behind = canvas.dropBehind(loop, 102);
        canvas.drop(103, loop->scenePos() + QPointF(160, 20));
        const QString text = canvas.view.generateVisibleCode(1);
        // Out over the lower edge, where it is deleted.
        canvas.drag(behind, QPoint(0, 500));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301}));
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301, 102}));
        QCOMPARE(canvas.view.generateVisibleCode(1), text);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aLooseBlockOnAConnectorComesBackLoose()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(101, QPointF(700, 300));
        loose->setPos(canvas.main()->scenePos() + QPointF(150, 10));
        canvas.view.deleteModule(loose);
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(canvas.blocks().size(), 2);
        QCOMPARE(CanvasFixture::ids(canvas.main()), QList<int>{0});
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockOnALinkWithoutConnectorComesBackOnIt()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* branch = canvas.drop(101, QPointF(700, 300));
        first->setRightModule(branch);
        canvas.main()->updateTreeAndOpacity();
        canvas.view.deleteModule(branch);
        QVERIFY(!first->right());
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(first->right());
        QCOMPARE(first->right()->id, 101);
    }

    void aBlockWhosePlaceIsTakenComesBackToWhatItTouches()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        supermodule* behind = canvas.dropBehind(loop, 102);
        canvas.drop(103, loop->scenePos() + QPointF(160, 20));
        canvas.view.deleteModule(behind);
        canvas.dropBehind(loop, 105);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301, 105}));
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301, 105}));
        QCOMPARE(CanvasFixture::ids(loop->left()), (QList<int>{103, 102}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockDeletedBehindALoopComesBackBehindItAndNotInIt()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        canvas.drop(104, loop->scenePos() + QPointF(160, 20));
        supermodule* inner = canvas.drop(301, loop->left()->scenePos() + QPointF(180, 20));
        canvas.drop(103, inner->scenePos() + QPointF(160, 20));
        supermodule* last = canvas.dropBehind(loop, 102);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301, 102}));
        const QString text = canvas.view.generateVisibleCode(1);
        const QPointF stood = last->scenePos();
        canvas.view.deleteModule(last);
        canvas.view.deleteModule(loop->left());
        for (int round = 0; round < 2; ++round) {
            canvas.key(Qt::Key_Z, Qt::ControlModifier);
            canvas.key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(canvas.view.generateVisibleCode(1), text);
            QCOMPARE(canvas.main()->lastOf()->scenePos(), stood);
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            canvas.key(Qt::Key_Y, Qt::ControlModifier);
            canvas.key(Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301}));
            QVERIFY(!loop->left());
        }
    }

    void aBlockWhoseOldPlaceIsTakenComesBackElsewhere()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        const QPointF stood = first->scenePos();
        canvas.view.deleteModule(first);
        // Its place is taken.
        canvas.dropBehind(canvas.main(), 102);
        canvas.view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()).mid(0, 2), (QList<int>{0, 102}));
        QCOMPARE(canvas.blocks().size(), 3);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        canvas.view.undoStack().redo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 102}));
        // What it hung on stands elsewhere: it comes back there.
        canvas.view.deleteModule(canvas.main()->next());
        canvas.drag(canvas.main(), QPoint(0, 200));
        canvas.view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 102}));
        QCOMPARE(canvas.main()->next()->scenePos(), stood + QPointF(0, 200));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aRebuiltBlockIsNeverLinkedToTheHiddenPreview()
    {
        CanvasFixture canvas;
        supermodule* last = canvas.dropBehind(canvas.main(), 102);
        // The preview is left where the new block lands, in front of the last one.
        canvas.drop(103, last->scenePos() + QPointF(70, 5));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
        canvas.click(last->scenePos() + QPointF(30, 30));
        canvas.key(Qt::Key_Delete);
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void redoOfADeleteKeepsWhatCameBehindTheBlockSince()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.view.deleteModule(first);
        canvas.view.undoStack().undo();
        canvas.dropBehind(canvas.main()->next(), 101);
        canvas.main()->next()->next()->setNumberKey(Qt::Key_5);
        const QString text = canvas.view.generateVisibleCode(1);
        canvas.view.undoStack().redo();
        QCOMPARE(canvas.blocks().size(), 1);
        canvas.view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 101}));
        QCOMPARE(canvas.view.generateVisibleCode(1), text);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void undoOfAPasteKeepsWhatWasLinkedBehindItSince()
    {
        CanvasFixture canvas;
        supermodule* source = canvas.dropBehind(canvas.main(), 103);
        canvas.press(source->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.view.OnCopyAndPaste();
        supermodule* pasted = moduleMap.last();
        supermodule* own = canvas.dropBehind(pasted, 101);
        QCOMPARE(CanvasFixture::ids(pasted), (QList<int>{103, 101}));
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 3);
        QVERIFY(!own->parentModule());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void anUndoneAndRedonePasteKeepsValuePlaceAndLink()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.dropBehind(first, 102);
        supermodule* pasted = pasteBlock(canvas, 101);
        const int key = pasted->registryKey();
        // Linked into the middle, and given a value.
        canvas.drag(pasted, (first->scenePos() + QPointF(130, 10) - pasted->scenePos()).toPoint());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 101, 102}));
        pasted->setNumberKey(Qt::Key_7);
        const QString text = canvas.view.generateVisibleCode(1);
        for (int round = 0; round < 2; ++round) {
            canvas.key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            canvas.key(Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 101, 102}));
            QCOMPARE(canvas.view.generateVisibleCode(1), text);
            QVERIFY(moduleMap.contains(key));
            QCOMPARE(canvas.brokenInvariants(), QStringList());
        }
        // With the place taken it comes back loose, and what took it stays.
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        canvas.drop(105, first->scenePos() + QPointF(190, 5));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 105, 102}));
        canvas.key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 105, 102}));
        QVERIFY(!moduleMap.value(key)->parentModule());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void whatWasLinkedIntoAPastedLoopIsInItAgainAfterTheRedo()
    {
        CanvasFixture canvas;
        supermodule* loop = pasteBlock(canvas, 301);
        const int key = loop->registryKey();
        supermodule* inner = canvas.drop(103, loop->scenePos() + QPointF(160, 20));
        supermodule* behind = canvas.dropBehind(loop, 102);
        QCOMPARE(loop->left(), inner);
        const QPointF innerStood = inner->pos();
        const QPointF behindStood = behind->pos();
        for (int round = 0; round < 2; ++round) {
            canvas.view.undoStack().undo();
            QVERIFY(!inner->parentModule() && !behind->parentModule());
            QCOMPARE(inner->pos(), innerStood);
            QCOMPARE(behind->pos(), behindStood);
            QCOMPARE(inner->opacity(), 0.5);
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            canvas.view.undoStack().redo();
            QCOMPARE(moduleMap.value(key)->left(), inner);
            QCOMPARE(moduleMap.value(key)->next(), behind);
            QCOMPARE(canvas.brokenInvariants(), QStringList());
        }
        // Moved since, it stays where it was put.
        canvas.view.undoStack().undo();
        canvas.drag(inner, QPoint(0, 30));
        canvas.view.undoStack().redo();
        QVERIFY(!inner->parentModule() && !behind->parentModule());
        QVERIFY(!moduleMap.value(key)->left());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void whatHasAnotherParentSinceStaysThere()
    {
        CanvasFixture canvas;
        supermodule* loop = pasteBlock(canvas, 301);
        const int key = loop->registryKey();
        supermodule* inner = canvas.drop(103, loop->scenePos() + QPointF(160, 20));
        QCOMPARE(loop->left(), inner);
        const QPointF stood = inner->pos();
        canvas.view.undoStack().undo();
        QVERIFY(!inner->parentModule());
        // It hangs on another block now, and stands where it stood.
        supermodule* other = canvas.drop(104, QPointF(800, 60));
        other->setPos(stood - QPointF(120, 0));
        other->insert(NextLink, inner);
        QCOMPARE(inner->pos(), stood);
        canvas.view.undoStack().redo();
        QCOMPARE(inner->parentModule(), other);
        QVERIFY(!moduleMap.value(key)->left());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void noUndoNestsLoopsDeeperThanAFileHolds()
    {
        CanvasFixture canvas;
        supermodule* outermost = canvas.dropBehind(canvas.main(), 301);
        const auto hangIn = [&canvas](supermodule* p_loop) {
            supermodule* inner = createModuleFromId(301);
            inner->enterScene(canvas.view.scene());
            ModuleRegistry::add(inner);
            p_loop->hangModule(LeftLink, inner);
            return inner;
        };
        supermodule* innermost = outermost;
        for (int depth = 1; depth <= MaximalNesting; ++depth) {
            innermost = hangIn(innermost);
        }
        canvas.main()->updateTreeAndOpacity();
        const int key = innermost->registryKey();
        supermodule* parent = innermost->parentModule();
        canvas.view.deleteModule(innermost);
        canvas.view.undoStack().undo();
        QCOMPARE(moduleMap.value(key)->parentModule(), parent);
        canvas.view.undoStack().redo();
        // The program is one loop deeper now.
        supermodule* around = canvas.drop(301, QPointF(700, 420));
        outermost->detachFromParent();
        around->insert(LeftLink, outermost);
        around->updateTreeAndOpacity();
        canvas.view.undoStack().undo();
        QVERIFY(!moduleMap.value(key)->parentModule());
        QVERIFY(!parent->left());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void anAddedBlockIsTakenOutAloneAndPutBack()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 103);
        canvas.view.addModule(500, 210, 301);
        supermodule* loop = canvas.main()->next()->next();
        QVERIFY(loop);
        QCOMPARE(loop->id, 301);
        supermodule* inner = canvas.drop(104, loop->scenePos() + QPointF(160, 20));
        supermodule* behind = canvas.dropBehind(loop, 102);
        loop->setNumberKey(Qt::Key_5);
        const QString text = canvas.view.generateVisibleCode(1);
        for (int round = 0; round < 2; ++round) {
            canvas.view.undoStack().undo();
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
            QVERIFY(!inner->parentModule());
            QCOMPARE(behind->parentModule(), canvas.main()->next());
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            canvas.view.undoStack().redo();
            QCOMPARE(canvas.view.generateVisibleCode(1), text);
            QCOMPARE(canvas.brokenInvariants(), QStringList());
        }
    }

    void aPasteOfNothingKeepsWhatCanBeRedone()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(101, QPointF(700, 300));
        canvas.view.deleteModule(loose);
        canvas.view.undoStack().undo();
        for (const char* text : {"", "no <xml", "<v><basenode/></v>",
                                 "<v><basenode><module id=\"77\"/></basenode></v>"}) {
            auto* data = new QMimeData;
            data->setData(QStringLiteral("korvane/tiler/modules"), text);
            QGuiApplication::clipboard()->setMimeData(data);
            canvas.view.OnPaste();
            QCOMPARE(canvas.view.undoStack().count(), 1);
            QVERIFY(canvas.view.undoStack().canRedo());
        }
        canvas.view.undoStack().redo();
        QCOMPARE(canvas.blocks().size(), 1);
    }

    void aDeletedBlockComesBackToItsParentWhereverThatStandsNow()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        canvas.drop(103, loop->scenePos() + QPointF(160, 20));
        supermodule* behind = canvas.dropBehind(loop, 102);
        canvas.view.deleteModule(behind);
        // The program moves under the old place: into the loop's body, and away from all.
        for (const QPoint& way : {QPoint(100, 0), QPoint(-60, 150), QPoint(30, -90)}) {
            canvas.drag(canvas.main(), way);
            canvas.view.undoStack().undo();
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301, 102}));
            QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
            QCOMPARE(canvas.brokenInvariants(), QStringList());
            canvas.view.undoStack().redo();
            QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 301}));
        }
        // A block in front of the loop shifts that by its width.
        canvas.drop(104, canvas.main()->scenePos() + QPointF(210, 5));
        canvas.view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 104, 301, 102}));
        QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{103});
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aKeyInMidDragOverAGapUndoesWhatWasBefore()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* gone = canvas.dropBehind(first, 102);
        canvas.view.deleteModule(gone);
        supermodule* loose = canvas.drop(101, QPointF(700, 420));
        canvas.press(loose->scenePos() + QPointF(30, 30));
        canvas.move(first->scenePos() + QPointF(30, 35));
        QVERIFY(canvas.view.preview()->isVisible());
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101, 103, 102}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        canvas.release(first->scenePos() + QPointF(30, 35));
        canvas.key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101, 103}));
        canvas.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101, 103, 102}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDeletedAndUndeletedBlockCountsAsAChange()
    {
        CanvasFixture canvas;
        supermodule* block = canvas.dropBehind(canvas.main(), 103);
        canvas.view.deleteModule(block);
        documentModified = false;
        canvas.view.undoStack().undo();
        QVERIFY(documentModified);
        documentModified = false;
        canvas.view.undoStack().redo();
        QVERIFY(documentModified);
    }

    void undoAndRedoPaintTheKnobThatStandsOutOfTheBlock()
    {
        CanvasFixture canvas;
        supermodule* last = canvas.drop(103, QPointF(700, 300));
        const QRectF frame = last->sceneBoundingRect();
        const QRect knob(canvas.at(frame.topRight() + QPointF(1, 0)),
                         canvas.at(frame.bottomRight() + QPointF(15, 0)));
        QVERIFY(canvas.view.viewport()->rect().contains(knob));
        canvas.view.deleteModule(last);
        QApplication::processEvents();
        for (int round = 0; round < 2; ++round) {
            PaintedRegion painted(canvas.view.viewport());
            canvas.key(round == 0 ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
            QTRY_VERIFY(!painted.region.isEmpty());
            QApplication::processEvents();
            QVERIFY(QRegion(knob).subtracted(painted.region).isEmpty());
        }
    }

    void aCommandWhoseBlockIsGoneDoesNothing()
    {
        CanvasFixture canvas;
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

        supermodule* loose = canvas.drop(101, QPointF(700, 300));
        canvas.view.deleteModule(loose);
        canvas.view.undoStack().undo();
        canvas.view.removeModule(moduleMap.last());
        // A deletion that found nothing brings nothing back.
        canvas.view.undoStack().redo();
        QCOMPARE(canvas.blocks().size(), 1);
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 1);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aParameterChangedBackAndForth()
    {
        CanvasFixture canvas;
        supermodule* speed = canvas.dropBehind(canvas.main(), 100);
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
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(101, QPointF(700, 300));
        const QPointF from = loose->scenePos();
        moveCommand command(from, QPointF(245, 205), loose->registryKey());
        command.redo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101}));
        QCOMPARE(loose->scenePos(), QPointF(240, 200));
        command.undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), QList<int>{0});
        QCOMPARE(loose->scenePos(), from);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void twoPastesGiveTwoChainsAtTheirPlaces()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.dropBehind(first, 102);
        canvas.press(first->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.view.OnCopyAndPaste();
        canvas.view.OnPaste();
        QList<supermodule*> heads;
        for (supermodule* block : canvas.blocks()) {
            if (!block->parentModule() && block != canvas.main()) {
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
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aPasteIsUndoneAndRedone()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.press(first->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.view.OnCopyAndPaste();
        QCOMPARE(canvas.blocks().size(), 3);
        const int key = moduleMap.lastKey();
        canvas.view.deleteModule(moduleMap.last());
        canvas.view.undoStack().undo();
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 2);
        canvas.view.undoStack().redo();
        QCOMPARE(canvas.blocks().size(), 3);
        QVERIFY(moduleMap.contains(key));
        canvas.view.undoStack().redo();
        QCOMPARE(canvas.blocks().size(), 2);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockMovedOutOfAPasteThatIsRedoneCanStillBeDeleted()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.dropBehind(first, 102);
        canvas.press(first->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.view.OnCopyAndPaste();
        supermodule* moved = moduleMap.last();
        QCOMPARE(moved->id, 102);
        canvas.drag(moved, QPoint(150, 60));
        QVERIFY(!moved->parentModule());
        const QPointF stood = moved->pos();
        const int key = moved->registryKey();
        // The undo takes both out, wherever they are; the redo puts each where it was.
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 3);
        canvas.view.undoStack().redo();
        QCOMPARE(canvas.blocks().size(), 5);
        moved = moduleMap.value(key);
        QVERIFY(!moved->parentModule());
        QCOMPARE(moved->pos(), stood);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        canvas.view.deleteModule(moved);
        QCOMPARE(canvas.blocks().size(), 4);
        canvas.view.undoStack().undo();
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 3);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void copyOnEmptyCanvasPastesNothing()
    {
        CanvasFixture canvas;
        canvas.click(QPointF(700, 550));
        canvas.key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(
            QStringLiteral("korvane/tiler/modules")));
        canvas.view.OnPaste();
        QCOMPARE(canvas.blocks().size(), 1);
    }

    void aClipboardTextThatIsNoXmlPastesNothing()
    {
        CanvasFixture canvas;
        for (const QByteArray& text :
             {QByteArray(), QByteArray("no <xml"), QByteArray("<a/>"),
              QByteArray("<v><basenode><module id=\"77\"/></basenode></v>")}) {
            auto* data = new QMimeData;
            data->setData(QStringLiteral("korvane/tiler/modules"), text);
            QGuiApplication::clipboard()->setMimeData(data);
            canvas.view.OnPaste();
            QCOMPARE(canvas.blocks().size(), 1);
            canvas.view.undoStack().undo();
            canvas.view.undoStack().redo();
            QCOMPARE(canvas.blocks().size(), 1);
        }
    }

    void copyingTextElsewhereHidesTheSelectionFrames()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.press(first->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.view.OnCopy();
        const auto frameShows = [first] {
            for (const QGraphicsItem* child : first->childItems()) {
                const auto* frame = qgraphicsitem_cast<const QGraphicsPixmapItem*>(child);
                if (frame && frame->isVisible()) {
                    return true;
                }
            }
            return false;
        };
        QVERIFY(frameShows());
        QCoreApplication::processEvents();
        QVERIFY(frameShows());
        QGuiApplication::clipboard()->setText(QStringLiteral("another program's"));
        QCoreApplication::processEvents();
        QVERIFY(!frameShows());
    }

    void theMainBlockIsNotCopied()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 103);
        canvas.click(canvas.main()->scenePos() + QPointF(30, 30));
        canvas.key(Qt::Key_C, Qt::ControlModifier);
        canvas.view.OnPaste();
        QCOMPARE(canvas.blocks().size(), 2);
    }

    void pasteIsOfferedOnlyForBlocks()
    {
        CanvasFixture canvas;
        QGuiApplication::clipboard()->setText(QStringLiteral("text"));
        canvas.press(QPointF(700, 550), Qt::RightButton);
        const QList<QAction*> actions = canvas.view.contextMenu().actions();
        QVERIFY(!actions.at(1)->isEnabled());
        QVERIFY(!actions.at(3)->isEnabled());
        canvas.view.contextMenu().close();
        canvas.view.OnCopy();
        canvas.press(QPointF(700, 550), Qt::RightButton);
        QVERIFY(actions.at(1)->isEnabled());
        QVERIFY(actions.at(3)->isEnabled());
        canvas.view.contextMenu().close();
    }
};

QTEST_MAIN(UndoTest)
#include "undotest.moc"
