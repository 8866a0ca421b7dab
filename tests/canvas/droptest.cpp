#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/catalogue/mousestate.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "support/canvas/canvasfixture.h"

#include <QDropEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class DropTest : public QObject
{
    Q_OBJECT

private slots:
    void aDragOpensAGapAndMovingAwayClosesIt()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.dropBehind(first, 102);
        const QList<int> before = CanvasFixture::ids(canvas.main());
        const QPointF place = first->scenePos();

        canvas.dragOver(101, place + QPointF(70, 5));
        QVERIFY(canvas.view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 0, 103, 102}));
        QCOMPARE(canvas.view.preview()->scenePos(), place);
        QCOMPARE(first->scenePos(), place + QPointF(120, 0));

        canvas.dragOverOn(QPointF(700, 500));
        QVERIFY(!canvas.view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(canvas.main()), before);
        QCOMPARE(first->scenePos(), place);

        canvas.dragOverOn(place + QPointF(70, 5));
        QVERIFY(canvas.view.preview()->isVisible());
        canvas.leave();
        QCOMPARE(CanvasFixture::ids(canvas.main()), before);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDropLinksTheBlockWhereTheGapWas()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* between = canvas.drop(101, first->scenePos() + QPointF(70, 5));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101, 103}));
        QCOMPARE(between->scenePos(), QPointF(240, 200));
        QCOMPARE(first->scenePos(), QPointF(360, 200));
        QVERIFY(between->isVisible());
        QVERIFY(!canvas.view.preview()->isVisible());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDropOnEmptyCanvasLeavesAFadedBlock()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(104, QPointF(700, 400));
        QVERIFY(loose->isVisible());
        QVERIFY(!loose->parentModule());
        QCOMPARE(loose->opacity(), 0.5);
        QCOMPARE(loose->scenePos(), QPointF(640, 400));
        QVERIFY(!canvas.view.generateVisibleCode(1).contains(QStringLiteral("wait")));
    }

    void leavingDeletesTheHiddenBlockAndReenteringTakesTheNextKey()
    {
        CanvasFixture canvas;
        const int key = nextModuleKey;
        canvas.dragOver(104, QPointF(700, 400));
        QPointer<supermodule> hidden = canvas.view.currentModule();
        QVERIFY(hidden && !hidden->isVisible());
        QCOMPARE(moduleMap.value(key), hidden.data());
        canvas.leave();
        QVERIFY(!hidden);
        QVERIFY(!moduleMap.contains(key));
        canvas.dragOver(104, QPointF(700, 400));
        QCOMPARE(moduleMap.value(key + 1), canvas.view.currentModule());
        QCOMPARE(canvas.blocks().size(), 2);
    }

    void theCursorHoldsTheMiddleOfTheTopEdge()
    {
        CanvasFixture canvas;
        canvas.dragOver(303, QPointF(700, 400));
        // A loop is 280 wide before its first layout.
        QCOMPARE(canvas.view.currentModule()->scenePos(), QPointF(560, 400));
    }

    void aDropIsNotUndoable()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 103);
        QVERIFY(!canvas.view.undoStack().canUndo());
    }

    void noDropNestsLoopsDeeperThanAFileHolds()
    {
        CanvasFixture canvas;
        supermodule* outermost = canvas.dropBehind(canvas.main(), 301);
        QVERIFY(outermost->parentModule());
        supermodule* innermost = outermost;
        for (int depth = 1; depth <= MaximalNesting; ++depth) {
            supermodule* loop = createModuleFromId(301);
            canvas.view.scene()->addItem(loop);
            ModuleRegistry::add(loop);
            innermost->hangModule(LeftLink, loop);
            innermost = loop;
        }
        // The innermost loop is brought into sight.
        canvas.main()->setPos(300 - 120.0 * MaximalNesting - 140, 200);
        canvas.main()->updateTreeAndOpacity();
        QCOMPARE(innermost->scenePos(), QPointF(300, 200));
        QCOMPARE(innermost->depth(), MaximalNesting);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("deep.tlrx"));
        QVERIFY(canvas.view.saveFile(path));
        const QPointF body = innermost->scenePos() + QPointF(120 + 60, 10);
        supermodule* refused = canvas.drop(103, body);
        QVERIFY(!refused->parentModule());
        QVERIFY(!innermost->left());
        QVERIFY(canvas.view.saveFile(path));
        // Behind it and around it there is room.
        const QPointF behind = innermost->scenePos() + QPointF(260 + 60, 10);
        supermodule* taken = canvas.drop(103, behind);
        QCOMPARE(taken->parentModule(), innermost);
        QVERIFY(canvas.view.saveFile(path));
        QCOMPARE(canvas.view.openFile(path), 0);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aDropModifiesDocumentAndWindow()
    {
        CanvasFixture canvas;
        canvas.view.setWindowTitle(QStringLiteral("a[*]"));
        QSignalSpy updates(&canvas.view, &TzProgramView::moduleUpdateSignal);
        QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        canvas.dropBehind(canvas.main(), 103);
        QVERIFY(documentModified);
        QVERIFY(canvas.view.isWindowModified());
        QCOMPARE(updates.size(), 1);
        QCOMPARE(states.last().first().toInt(), static_cast<int>(MouseDropped));
    }

    void aDroppedProjectFileAsksToBeOpened()
    {
        const QString path = QStringLiteral("/tmp/小 车/a b.tlrx");
        QCOMPARE(pathsAskedFor({QUrl::fromLocalFile(path)}), QStringList{path});
    }

    void aDroppedTextFileDoesNothing()
    {
        QCOMPARE(pathsAskedFor({QUrl::fromLocalFile(QStringLiteral("/tmp/a.txt"))}), QStringList());
    }

    void theFirstOtherFileEndsTheList()
    {
        QCOMPARE(pathsAskedFor({QUrl::fromLocalFile(QStringLiteral("/tmp/a.tlrx")),
                                QUrl::fromLocalFile(QStringLiteral("/tmp/b.TLRX")),
                                QUrl::fromLocalFile(QStringLiteral("/tmp/c.tlrx"))}),
                 QStringList{QStringLiteral("/tmp/a.tlrx")});
    }

    void aFileOverTheCanvasLeavesNoBlockAtHand()
    {
        CanvasFixture canvas;
        const supermodule* first = canvas.dropBehind(canvas.main(), 103);
        canvas.click(first->scenePos() + QPointF(30, 30));
        QCOMPARE(canvas.view.currentModule(), first);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.tlrx"))});
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(canvas.view.viewport(), &enter);
        QDragLeaveEvent leave;
        QApplication::sendEvent(canvas.view.viewport(), &leave);
        QVERIFY(!canvas.view.currentModule());
    }

    void aPayloadCutShortIsNoBlock()
    {
        QMimeData data;
        data.setData(QLatin1String(blockMimeType()), QByteArray(7, '\0'));
        int id = 0;
        QVERIFY(!readBlockDrag(&data, id));
        CanvasFixture canvas;
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(canvas.view.viewport(), &enter);
        QDropEvent drop(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(canvas.view.viewport(), &drop);
        QCOMPARE(canvas.blocks().size(), 1);
    }

    void theSceneItselfAddsABlockByTheUndoStack()
    {
        CanvasFixture canvas;
        const std::unique_ptr<QMimeData> data(blockDrag(103));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(data.get());
        drop.setScenePos(QPointF(310, 205));
        const int key = nextModuleKey;
        const QSignalSpy states(&canvas.view, &TzProgramView::mouseSignal);
        QApplication::sendEvent(canvas.view.scene(), &drop);
        QCOMPARE(states.size(), 1);
        QCOMPARE(states.first().first().toInt(), static_cast<int>(MouseDropped));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103}));
        QCOMPARE(canvas.main()->next()->moduleKey, key);
        QCOMPARE(nextModuleKey, key + 1);
        canvas.view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), QList<int>{0});
        QCOMPARE(canvas.blocks().size(), 1);
        canvas.view.undoStack().redo();
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103}));
        QCOMPARE(moduleMap.value(key), canvas.main()->next());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aLooseLoopFromTheSceneIsLaidOut()
    {
        CanvasFixture canvas;
        canvas.view.addModule(700, 400, 301);
        QCOMPARE(canvas.blocks().size(), 2);
        // As wide as one that was dropped on the view, or opened.
        QCOMPARE(moduleMap.last()->boundingRect().width(), 260.0);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void theSceneAddsNoTask()
    {
        CanvasFixture canvas;
        const std::unique_ptr<QMimeData> data(blockDrag(TaskRootId));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(data.get());
        drop.setScenePos(QPointF(310, 205));
        QApplication::sendEvent(canvas.view.scene(), &drop);
        QCOMPARE(canvas.blocks().size(), 1);
        QVERIFY(!canvas.view.undoStack().canUndo());
    }

    void theSceneRefusesWhatIsNoBlock()
    {
        CanvasFixture canvas;
        QMimeData data;
        data.setText(QStringLiteral("text"));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(&data);
        drop.setAccepted(true);
        QApplication::sendEvent(canvas.view.scene(), &drop);
        QVERIFY(!drop.isAccepted());
        QCOMPARE(canvas.blocks().size(), 1);
    }

private:
    static QStringList pathsAskedFor(const QList<QUrl>& p_urls);
};

QStringList DropTest::pathsAskedFor(const QList<QUrl>& p_urls)
{
    CanvasFixture canvas;
    QSignalSpy asked(&canvas.view, &TzProgramView::openPathSignal);
    QMimeData data;
    data.setUrls(p_urls);
    QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.view.viewport(), &enter);
    QDragMoveEvent move(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.view.viewport(), &move);
    if (!enter.isAccepted() || !move.isAccepted()) {
        return {QStringLiteral("refused")};
    }
    QDropEvent drop(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.view.viewport(), &drop);
    QStringList paths;
    for (const QList<QVariant>& call : asked) {
        paths.append(call.first().toString());
    }
    if (canvas.blocks().size() != 1 || documentModified) {
        paths.append(QStringLiteral("the document has changed"));
    }
    return paths;
}

QTEST_MAIN(DropTest)
#include "droptest.moc"
