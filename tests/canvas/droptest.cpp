#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/catalogue/mousestate.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "support/canvas/canvastest.h"

#include <QDropEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class DropTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void aDragOpensAGapAndMovingAwayClosesIt()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->dropBehind(first, 102);
        const QList<int> before = CanvasFixture::ids(m_canvas->main());
        const QPointF place = first->scenePos();

        m_canvas->dragOver(101, place + QPointF(70, 5));
        QVERIFY(m_canvas->view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 0, 103, 102}));
        QCOMPARE(m_canvas->view.preview()->scenePos(), place);
        QCOMPARE(first->scenePos(), place + QPointF(120, 0));

        m_canvas->dragOverOn(QPointF(700, 500));
        QVERIFY(!m_canvas->view.preview()->isVisible());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), before);
        QCOMPARE(first->scenePos(), place);

        m_canvas->dragOverOn(place + QPointF(70, 5));
        QVERIFY(m_canvas->view.preview()->isVisible());
        m_canvas->leave();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), before);
    }

    void aDropLinksTheBlockWhereTheGapWas()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* between = m_canvas->drop(101, first->scenePos() + QPointF(70, 5));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101, 103}));
        QCOMPARE(between->scenePos(), QPointF(240, 200));
        QCOMPARE(first->scenePos(), QPointF(360, 200));
        QVERIFY(between->isVisible());
        QVERIFY(!m_canvas->view.preview()->isVisible());
    }

    void aDropOnEmptyCanvasLeavesAFadedBlock()
    {
        supermodule* loose = m_canvas->drop(104, QPointF(700, 400));
        QVERIFY(loose->isVisible());
        QVERIFY(!loose->parentModule());
        QCOMPARE(loose->opacity(), 0.5);
        QCOMPARE(loose->scenePos(), QPointF(640, 400));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), QList<int>{0});
        QVERIFY(!m_canvas->view.generateVisibleCode(1).contains(QStringLiteral("wait")));
        QVERIFY(!m_canvas->view.generateProjectCode(1).contains(QStringLiteral("wait")));
    }

    void leavingDeletesTheHiddenBlockAndReenteringTakesTheNextKey()
    {
        const int key = nextModuleKey;
        m_canvas->dragOver(104, QPointF(700, 400));
        QPointer<supermodule> hidden = m_canvas->view.currentModule();
        QVERIFY(hidden && !hidden->isVisible());
        QCOMPARE(moduleMap.value(key), hidden.data());
        m_canvas->leave();
        QVERIFY(!hidden);
        QVERIFY(!moduleMap.contains(key));
        m_canvas->dragOver(104, QPointF(700, 400));
        QCOMPARE(moduleMap.value(key + 1), m_canvas->view.currentModule());
        QCOMPARE(m_canvas->blocks().size(), 2);
    }

    void theCursorHoldsTheMiddleOfTheTopEdge()
    {
        m_canvas->dragOver(303, QPointF(700, 400));
        // A loop is 280 wide before its first layout.
        QCOMPARE(m_canvas->view.currentModule()->scenePos(), QPointF(560, 400));
    }

    void aDropIsNotUndoable()
    {
        m_canvas->dropBehind(m_canvas->main(), 103);
        QVERIFY(!m_canvas->view.undoStack().canUndo());
    }

    void noDropNestsLoopsDeeperThanAFileHolds()
    {
        supermodule* outermost = m_canvas->dropBehind(m_canvas->main(), 301);
        QVERIFY(outermost->parentModule());
        supermodule* innermost = outermost;
        for (int depth = 1; depth <= MaximalNesting; ++depth) {
            supermodule* loop = createModuleFromId(301);
            m_canvas->view.scene()->addItem(loop);
            ModuleRegistry::add(loop);
            innermost->hangModule(LeftLink, loop);
            innermost = loop;
        }
        // The innermost loop is brought into sight.
        m_canvas->main()->setPos(300 - 120.0 * MaximalNesting - 140, 200);
        m_canvas->main()->updateTreeAndOpacity();
        QCOMPARE(innermost->scenePos(), QPointF(300, 200));
        QCOMPARE(innermost->depth(), MaximalNesting);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("deep.tlrx"));
        QVERIFY(m_canvas->view.saveFile(path));
        const QPointF body = innermost->scenePos() + QPointF(120 + 60, 10);
        supermodule* refused = m_canvas->drop(103, body);
        QVERIFY(!refused->parentModule());
        QVERIFY(!innermost->left());
        QVERIFY(m_canvas->view.saveFile(path));
        // Behind it and around it there is room.
        const QPointF behind = innermost->scenePos() + QPointF(260 + 60, 10);
        supermodule* taken = m_canvas->drop(103, behind);
        QCOMPARE(taken->parentModule(), innermost);
        QVERIFY(m_canvas->view.saveFile(path));
        QCOMPARE(m_canvas->view.openFile(path), 0);
    }

    void aDropModifiesDocumentAndWindow()
    {
        m_canvas->view.setWindowTitle(QStringLiteral("a[*]"));
        QSignalSpy updates(&m_canvas->view, &TzProgramView::moduleUpdateSignal);
        QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        m_canvas->dropBehind(m_canvas->main(), 103);
        QVERIFY(documentModified);
        QVERIFY(m_canvas->view.isWindowModified());
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
        const supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->click(first->scenePos() + QPointF(30, 30));
        QCOMPARE(m_canvas->view.currentModule(), first);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.tlrx"))});
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &enter);
        QDragLeaveEvent leave;
        QApplication::sendEvent(m_canvas->view.viewport(), &leave);
        QVERIFY(!m_canvas->view.currentModule());
    }

    void aPayloadCutShortIsNoBlock()
    {
        QMimeData data;
        data.setData(QLatin1String(blockMimeType()), QByteArray(7, '\0'));
        int id = 0;
        QVERIFY(!readBlockDrag(&data, id));
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &enter);
        QDropEvent drop(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &drop);
        QCOMPARE(m_canvas->blocks().size(), 1);
    }

    void theSceneItselfAddsABlockByTheUndoStack()
    {
        const std::unique_ptr<QMimeData> data(blockDrag(103));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(data.get());
        drop.setScenePos(QPointF(310, 205));
        const int key = nextModuleKey;
        const QSignalSpy states(&m_canvas->view, &TzProgramView::mouseSignal);
        QApplication::sendEvent(m_canvas->view.scene(), &drop);
        QCOMPARE(states.size(), 1);
        QCOMPARE(states.first().first().toInt(), static_cast<int>(MouseDropped));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
        QCOMPARE(m_canvas->main()->next()->moduleKey, key);
        QCOMPARE(nextModuleKey, key + 1);
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), QList<int>{0});
        QCOMPARE(m_canvas->blocks().size(), 1);
        m_canvas->view.undoStack().redo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
        QCOMPARE(moduleMap.value(key), m_canvas->main()->next());
    }

    void aLooseLoopFromTheSceneIsLaidOut()
    {
        m_canvas->view.addModule(700, 400, 301);
        QCOMPARE(m_canvas->blocks().size(), 2);
        // As wide as one that was dropped on the view, or opened.
        QCOMPARE(moduleMap.last()->boundingRect().width(), 260.0);
    }

    void theSceneAddsNoTask()
    {
        const std::unique_ptr<QMimeData> data(blockDrag(TaskRootId));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(data.get());
        drop.setScenePos(QPointF(310, 205));
        QApplication::sendEvent(m_canvas->view.scene(), &drop);
        QCOMPARE(m_canvas->blocks().size(), 1);
        QVERIFY(!m_canvas->view.undoStack().canUndo());
    }

    void theSceneRefusesWhatIsNoBlock()
    {
        QMimeData data;
        data.setText(QStringLiteral("text"));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(&data);
        drop.setAccepted(true);
        QApplication::sendEvent(m_canvas->view.scene(), &drop);
        QVERIFY(!drop.isAccepted());
        QCOMPARE(m_canvas->blocks().size(), 1);
    }

private:
    QStringList pathsAskedFor(const QList<QUrl>& p_urls)
    {
        QSignalSpy asked(&m_canvas->view, &TzProgramView::openPathSignal);
        QMimeData data;
        data.setUrls(p_urls);
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &enter);
        QDragMoveEvent move(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton,
                            Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &move);
        if (!enter.isAccepted() || !move.isAccepted()) {
            return {QStringLiteral("refused")};
        }
        QDropEvent drop(QPoint(500, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_canvas->view.viewport(), &drop);
        QStringList paths;
        for (const QList<QVariant>& call : asked) {
            paths.append(call.first().toString());
        }
        if (m_canvas->blocks().size() != 1 || documentModified) {
            paths.append(QStringLiteral("the document has changed"));
        }
        return paths;
    }
};

QTEST_MAIN(DropTest)
#include "droptest.moc"
