#include "document/document.h"
#include "base/recentfiles.h"
#include "document/moduleplace.h"
#include "document/programslots.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "project/programnameholder.h"
#include "project/projectfile.h"

#include <QTemporaryDir>
#include <QTest>

namespace
{
class Name : public ProgramNameHolder
{
public:
    QString programName() const override { return m_name; }
    void setProgramName(const QString& p_name) override { m_name = p_name; }

private:
    QString m_name = QStringLiteral("RunA");
};

/** The kinds of the notices that a document gives, in order. */
class Notices
{
public:
    explicit Notices(Document& p_document)
    {
        QObject::connect(&p_document, &Document::changed, &m_context,
                         [this](const DocumentChange& p_change) { kinds.append(p_change.kind); });
    }
    QVector<DocumentChange::Kind> take()
    {
        QVector<DocumentChange::Kind> taken;
        taken.swap(kinds);
        return taken;
    }
    QVector<DocumentChange::Kind> kinds;

private:
    QObject m_context;
};
using Kinds = QVector<DocumentChange::Kind>;

supermodule* put(Document& p_document, int p_id, const QPointF& p_at)
{
    supermodule* module = createModuleFromId(p_id);
    module->enterScene(&p_document.scene());
    ModuleRegistry::add(module);
    module->setPos(p_at);
    return module;
}

QList<int> ids(const supermodule* p_first)
{
    QList<int> list;
    for (const supermodule* module = p_first; module; module = module->next()) {
        list.append(module->id);
    }
    return list;
}
} // namespace

/** The document by itself: no view, no window. */
class DocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void aNewOneHoldsItsMainBlockAloneAndIsTheOneRoot()
    {
        const Document document;
        QCOMPARE(rootModules, QList<supermodule*>{document.mainBlock()});
        QCOMPARE(taskModules, QList<supermodule*>{document.mainBlock()});
        QCOMPARE(document.mainBlock()->moduleKey, 1);
        QCOMPARE(moduleMap.value(1), static_cast<supermodule*>(document.mainBlock()));
        QVERIFY(document.mainBlock()->flags() & QGraphicsItem::ItemIsMovable);
    }

    void itLeavesNothingProcessWideBehind()
    {
        {
            Document document;
            put(document, 104, QPointF(700, 300));
        }
        QVERIFY(rootModules.isEmpty());
        QVERIFY(taskModules.isEmpty());
        QVERIFY(moduleMap.isEmpty());
        QVERIFY(liveModules.isEmpty());
        QCOMPARE(nextModuleKey, 1);
    }

    void whatIsSavedOpensAgain()
    {
        Name name;
        Document document;
        document.setProgramNameHolder(&name);
        document.mainBlock()->insert(NextLink, put(document, 103, QPointF()));
        put(document, 801, QPointF(700, 400));
        document.actions().page(3)->nextPage = 7;
        document.actions().setModified(true);
        document.setModified(true);
        Notices notices(document);
        QVERIFY(document.save(path()));
        QVERIFY(!document.isModified());
        QVERIFY(!document.actions().isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::RecentFiles}));

        document.startAnew();
        name.setProgramName(QStringLiteral("other"));
        QVERIFY(!document.mainBlock()->next());
        QCOMPARE(rootBlocks(document.scene()).size(), 1);
        QCOMPARE(int(document.actions().page(3)->nextPage), 0);
        document.setModified(true);
        notices.take();
        QCOMPARE(document.open(path()), int(ProjectOpened));
        QVERIFY(!document.isModified());
        QCOMPARE(ids(document.mainBlock()), (QList<int>{0, 103}));
        QCOMPARE(rootBlocks(document.scene()).size(), 2);
        QCOMPARE(rootBlocks(document.scene()).first()->pos(), QPointF(700, 400));
        QCOMPARE(rootBlocks(document.scene()).first()->opacity(), 0.5);
        QCOMPARE(int(document.actions().page(3)->nextPage), 7);
        QCOMPARE(name.programName(), QStringLiteral("RunA"));
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Removing, DocumentChange::SlotShown,
                                        DocumentChange::RecentFiles}));
    }

    void aFileThatCannotBeOpenedLeavesItAsItIs()
    {
        Document document;
        document.mainBlock()->insert(NextLink, put(document, 103, QPointF()));
        document.setModified(true);
        Notices notices(document);
        QCOMPARE(document.open(path("none.tlrx")), int(ProjectMissing));
        QFile broken(path("broken.tlrx"));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("<vantrel>") > 0);
        broken.close();
        QCOMPARE(document.open(broken.fileName()), int(ProjectUnreadable));
        QCOMPARE(ids(document.mainBlock()), (QList<int>{0, 103}));
        QVERIFY(document.isModified());
        QVERIFY(notices.take().isEmpty());
    }

    void aSaveThatFailsLeavesItModified()
    {
        Document document;
        document.setModified(true);
        document.actions().setModified(true);
        QVERIFY(!document.save(path("no/such/folder/a.tlrx")));
        QVERIFY(document.isModified());
        QVERIFY(document.actions().isModified());
    }

    void aSaveWithAnotherTailLeavesItModified()
    {
        Document document;
        document.setModified(true);
        QVERIFY(document.save(path(), "tail"));
        QVERIFY(document.isModified());
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().endsWith("</vantrel>\ntail"));
    }

    void theTemporarySaveHoldsBlocksWithoutParentAlone()
    {
        Document document;
        document.mainBlock()->insert(NextLink, put(document, 103, QPointF()));
        Notices notices(document);
        QVERIFY(document.saveTemporary(path(), QByteArray()));
        QCOMPARE(notices.take(), Kinds{DocumentChange::Preparing});
        QCOMPARE(document.open(path()), int(ProjectOpened));
        QVERIFY(!document.mainBlock()->next());
    }

    void aNewProjectClearsActionsThatWereNeeded()
    {
        Document untouched;
        untouched.startAnew();
        QCOMPARE(int(untouched.actions().step(0, 0)->runTime), 50);
        untouched.startAnew();
        QCOMPARE(int(untouched.actions().step(0, 0)->runTime), 100);
    }

    void aDeletionAndItsUndoSayWhatTheyDo()
    {
        Document document;
        supermodule* first = put(document, 104, QPointF());
        document.mainBlock()->insert(NextLink, first);
        first->insert(NextLink, put(document, 105, QPointF()));
        Notices notices(document);
        document.setModified(false);
        document.deleteModule(first, ModulePlace::of(first));
        QCOMPARE(ids(document.mainBlock()), QList<int>{0});
        QVERIFY(document.isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
        document.setModified(false);
        document.undoStack().undo();
        QCOMPARE(ids(document.mainBlock()), (QList<int>{0, 104, 105}));
        QVERIFY(document.isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
        document.undoStack().redo();
        QCOMPARE(ids(document.mainBlock()), QList<int>{0});
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
    }

    void aNewProjectHasNothingToUndoAndNothingModified()
    {
        Document document;
        document.setFirstPlace(QPointF(30, 40));
        document.addModule(700, 500, 103);
        document.mainBlock()->setPos(500, 600);
        document.actions().setModified(true);
        document.setModified(true);
        document.startAnew();
        QVERIFY(!document.undoStack().canUndo());
        QVERIFY(!document.isModified());
        QVERIFY(!document.actions().isModified());
        QCOMPARE(document.mainBlock()->pos(), QPointF(30, 40));
        QCOMPARE(rootBlocks(document.scene()).size(), 1);
    }

    void theMainBlockIsNotDeleted()
    {
        Document document;
        document.deleteModule(document.mainBlock(), ModulePlace::of(document.mainBlock()));
        document.deleteModule(nullptr, ModulePlace());
        QCOMPARE(document.undoStack().count(), 0);
        QCOMPARE(rootBlocks(document.scene()).size(), 1);
    }

    void whatIsCopiedIsPastedAndTakenOutAgain()
    {
        Document document;
        supermodule* first = put(document, 301, QPointF(700, 400));
        first->insert(LeftLink, put(document, 104, QPointF()));
        first->insert(NextLink, put(document, 105, QPointF()));
        const QString text = Document::clipboardText(first);
        document.paste(text, 900, 100);
        QCOMPARE(rootBlocks(document.scene()).size(), 3);
        supermodule* pasted = rootBlocks(document.scene()).first();
        QCOMPARE(pasted->pos(), QPointF(900, 100));
        QCOMPARE(ids(pasted), (QList<int>{301, 105}));
        QCOMPARE(ids(pasted->left()), QList<int>{104});
        QVERIFY(document.isModified());
        document.setModified(false);
        Notices notices(document);
        document.undoStack().undo();
        QCOMPARE(rootBlocks(document.scene()).size(), 2);
        QVERIFY(document.isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
        document.setModified(false);
        document.undoStack().redo();
        QCOMPARE(rootBlocks(document.scene()).size(), 3);
        QVERIFY(document.isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
        // Whatever comes of it.
        document.setModified(false);
        document.paste(Document::clipboardText(nullptr), 0, 0);
        QCOMPARE(rootBlocks(document.scene()).size(), 3);
        QVERIFY(document.isModified());
    }

    void anAddedBlockIsLinkedWhereItLiesAndUndone()
    {
        Document document;
        document.mainBlock()->setPos(100, 200);
        Notices notices(document);
        document.addModule(310, 210, 103);
        QCOMPARE(ids(document.mainBlock()), (QList<int>{0, 103}));
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
        document.undoStack().undo();
        QVERIFY(!document.mainBlock()->next());
        QCOMPARE(rootBlocks(document.scene()).size(), 1);
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
        document.undoStack().redo();
        QCOMPARE(ids(document.mainBlock()), (QList<int>{0, 103}));
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
    }

    void anAddedBlockBelongsToTheSlotThatIsShown()
    {
        Document document;
        // A slot has the type of its root.
        rootModules.append(put(document, 103, QPointF(100, 3000)));
        for (const int slot : {103, 0}) {
            document.showSlot(slot);
            document.addModule(700, 500, 104);
            QCOMPARE(moduleMap.last()->ownid, slot);
            QVERIFY(moduleMap.last()->isVisible());
        }
    }

    void aSlotShowsItsOwnBlocksAlone()
    {
        Document document;
        supermodule* other = put(document, 103, QPointF(700, 400));
        other->ownid = 405;
        Notices notices(document);
        document.showSlot(405);
        QVERIFY(other->isVisible());
        QVERIFY(!document.mainBlock()->isVisible());
        document.showSlot(0);
        QVERIFY(!other->isVisible());
        QVERIFY(document.mainBlock()->isVisible());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::SlotShown, DocumentChange::SlotShown}));
    }

    void whatIsSavedOrOpenedComesFirstInTheRecentList()
    {
        recentFiles.clear();
        Document document;
        const QString first = path("first.tlrx");
        const QString second = path("second.tlrx");
        QVERIFY(document.save(first));
        QVERIFY(document.save(second));
        QCOMPARE(recentFiles, (QStringList{second, first}));
        QCOMPARE(document.open(first), int(ProjectOpened));
        QCOMPARE(recentFiles, (QStringList{first, second}));
        QVERIFY(document.save(second));
        QCOMPARE(recentFiles, (QStringList{second, first}));
        // The temporary one, and what fails, is none to come back to.
        QVERIFY(document.saveTemporary(path("temp.tlrx"), QByteArray()));
        QVERIFY(!document.save(path("no/such/folder/a.tlrx")));
        QCOMPARE(recentFiles, (QStringList{second, first}));
    }

    void aPathLeavesTheRecentListWithANotice()
    {
        Document document;
        QVERIFY(document.save(path()));
        Notices notices(document);
        document.forgetRecentFile(path());
        QCOMPARE(notices.take(), Kinds{DocumentChange::RecentFiles});
    }

    void cleanup() { setDocumentModified(false); }

private:
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_folder.filePath(QLatin1String(p_name));
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(DocumentTest)
#include "documenttest.moc"
