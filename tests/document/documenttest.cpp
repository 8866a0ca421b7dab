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

#include <optional>

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
        QCOMPARE(rootModules, QList<supermodule*>{m_document->mainBlock()});
        QCOMPARE(taskModules, QList<supermodule*>{m_document->mainBlock()});
        QCOMPARE(m_document->mainBlock()->moduleKey, 1);
        QCOMPARE(moduleMap.value(1), static_cast<supermodule*>(m_document->mainBlock()));
        QVERIFY(m_document->mainBlock()->flags() & QGraphicsItem::ItemIsMovable);
    }

    void itLeavesNothingProcessWideBehind()
    {
        put(*m_document, 104, QPointF(700, 300));
        m_document.reset();
        QVERIFY(rootModules.isEmpty());
        QVERIFY(taskModules.isEmpty());
        QVERIFY(moduleMap.isEmpty());
        QVERIFY(liveModules.isEmpty());
        QCOMPARE(nextModuleKey, 1);
    }

    void whatIsSavedOpensAgain()
    {
        Name name;
        m_document->setProgramNameHolder(&name);
        m_document->mainBlock()->insert(NextLink, put(*m_document, 103, QPointF()));
        put(*m_document, 801, QPointF(700, 400));
        m_document->actions().page(3)->nextPage = 7;
        m_document->actions().setModified(true);
        m_document->setModified(true);
        Notices notices(*m_document);
        QVERIFY(m_document->save(path()));
        QVERIFY(!m_document->isModified());
        QVERIFY(!m_document->actions().isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::RecentFiles}));

        m_document->startAnew();
        name.setProgramName(QStringLiteral("other"));
        QVERIFY(!m_document->mainBlock()->next());
        QCOMPARE(rootBlocks(m_document->scene()).size(), 1);
        QCOMPARE(int(m_document->actions().page(3)->nextPage), 0);
        m_document->setModified(true);
        notices.take();
        QCOMPARE(m_document->open(path()), int(ProjectOpened));
        QVERIFY(!m_document->isModified());
        QCOMPARE(ids(m_document->mainBlock()), (QList<int>{0, 103}));
        QCOMPARE(rootBlocks(m_document->scene()).size(), 2);
        QCOMPARE(rootBlocks(m_document->scene()).first()->pos(), QPointF(700, 400));
        QCOMPARE(rootBlocks(m_document->scene()).first()->opacity(), 0.5);
        QCOMPARE(int(m_document->actions().page(3)->nextPage), 7);
        QCOMPARE(name.programName(), QStringLiteral("RunA"));
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Removing, DocumentChange::SlotShown,
                                        DocumentChange::RecentFiles}));
    }

    void aFileThatCannotBeOpenedLeavesItAsItIs()
    {
        m_document->mainBlock()->insert(NextLink, put(*m_document, 103, QPointF()));
        m_document->setModified(true);
        Notices notices(*m_document);
        QCOMPARE(m_document->open(path("none.tlrx")), int(ProjectMissing));
        QFile broken(path("broken.tlrx"));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("<vantrel>") > 0);
        broken.close();
        QCOMPARE(m_document->open(broken.fileName()), int(ProjectUnreadable));
        QCOMPARE(ids(m_document->mainBlock()), (QList<int>{0, 103}));
        QVERIFY(m_document->isModified());
        QVERIFY(notices.take().isEmpty());
    }

    void aSaveThatFailsLeavesItModified()
    {
        m_document->setModified(true);
        m_document->actions().setModified(true);
        QVERIFY(!m_document->save(path("no/such/folder/a.tlrx")));
        QVERIFY(m_document->isModified());
        QVERIFY(m_document->actions().isModified());
    }

    void aSaveWithAnotherTailLeavesItModified()
    {
        m_document->setModified(true);
        QVERIFY(m_document->save(path(), "tail"));
        QVERIFY(m_document->isModified());
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().endsWith("</vantrel>\ntail"));
    }

    void theTemporarySaveHoldsBlocksWithoutParentAlone()
    {
        m_document->mainBlock()->insert(NextLink, put(*m_document, 103, QPointF()));
        Notices notices(*m_document);
        QVERIFY(m_document->saveTemporary(path(), QByteArray()));
        QCOMPARE(notices.take(), Kinds{DocumentChange::Preparing});
        QCOMPARE(m_document->open(path()), int(ProjectOpened));
        QVERIFY(!m_document->mainBlock()->next());
    }

    void aNewProjectClearsActionsThatWereNeeded()
    {
        m_document->startAnew();
        QCOMPARE(int(m_document->actions().step(0, 0)->runTime), 50);
        m_document->startAnew();
        QCOMPARE(int(m_document->actions().step(0, 0)->runTime), 100);
    }

    void aDeletionAndItsUndoSayWhatTheyDo()
    {
        supermodule* first = put(*m_document, 104, QPointF());
        m_document->mainBlock()->insert(NextLink, first);
        first->insert(NextLink, put(*m_document, 105, QPointF()));
        Notices notices(*m_document);
        m_document->setModified(false);
        m_document->deleteModule(first, ModulePlace::of(first));
        QCOMPARE(ids(m_document->mainBlock()), QList<int>{0});
        QVERIFY(m_document->isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
        m_document->setModified(false);
        m_document->undoStack().undo();
        QCOMPARE(ids(m_document->mainBlock()), (QList<int>{0, 104, 105}));
        QVERIFY(m_document->isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
        m_document->undoStack().redo();
        QCOMPARE(ids(m_document->mainBlock()), QList<int>{0});
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
    }

    void aNewProjectHasNothingToUndoAndNothingModified()
    {
        m_document->setFirstPlace(QPointF(30, 40));
        m_document->addModule(700, 500, 103);
        m_document->mainBlock()->setPos(500, 600);
        m_document->actions().setModified(true);
        m_document->setModified(true);
        m_document->startAnew();
        QVERIFY(!m_document->undoStack().canUndo());
        QVERIFY(!m_document->isModified());
        QVERIFY(!m_document->actions().isModified());
        QCOMPARE(m_document->mainBlock()->pos(), QPointF(30, 40));
        QCOMPARE(rootBlocks(m_document->scene()).size(), 1);
    }

    void theMainBlockIsNotDeleted()
    {
        m_document->deleteModule(m_document->mainBlock(), ModulePlace::of(m_document->mainBlock()));
        m_document->deleteModule(nullptr, ModulePlace());
        QCOMPARE(m_document->undoStack().count(), 0);
        QCOMPARE(rootBlocks(m_document->scene()).size(), 1);
    }

    void whatIsCopiedIsPastedAndTakenOutAgain()
    {
        supermodule* first = put(*m_document, 301, QPointF(700, 400));
        first->insert(LeftLink, put(*m_document, 104, QPointF()));
        first->insert(NextLink, put(*m_document, 105, QPointF()));
        const QString text = Document::clipboardText(first);
        m_document->paste(text, 900, 100);
        QCOMPARE(rootBlocks(m_document->scene()).size(), 3);
        supermodule* pasted = rootBlocks(m_document->scene()).first();
        QCOMPARE(pasted->pos(), QPointF(900, 100));
        QCOMPARE(ids(pasted), (QList<int>{301, 105}));
        QCOMPARE(ids(pasted->left()), QList<int>{104});
        QVERIFY(m_document->isModified());
        m_document->setModified(false);
        Notices notices(*m_document);
        m_document->undoStack().undo();
        QCOMPARE(rootBlocks(m_document->scene()).size(), 2);
        QVERIFY(m_document->isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
        m_document->setModified(false);
        m_document->undoStack().redo();
        QCOMPARE(rootBlocks(m_document->scene()).size(), 3);
        QVERIFY(m_document->isModified());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
        // Whatever comes of it.
        m_document->setModified(false);
        m_document->paste(Document::clipboardText(nullptr), 0, 0);
        QCOMPARE(rootBlocks(m_document->scene()).size(), 3);
        QVERIFY(m_document->isModified());
    }

    void anAddedBlockIsLinkedWhereItLiesAndUndone()
    {
        m_document->mainBlock()->setPos(100, 200);
        Notices notices(*m_document);
        m_document->addModule(310, 210, 103);
        QCOMPARE(ids(m_document->mainBlock()), (QList<int>{0, 103}));
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
        m_document->undoStack().undo();
        QVERIFY(!m_document->mainBlock()->next());
        QCOMPARE(rootBlocks(m_document->scene()).size(), 1);
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Removing,
                                        DocumentChange::Content}));
        m_document->undoStack().redo();
        QCOMPARE(ids(m_document->mainBlock()), (QList<int>{0, 103}));
        QCOMPARE(notices.take(), (Kinds{DocumentChange::Preparing, DocumentChange::Content}));
    }

    void anAddedBlockBelongsToTheSlotThatIsShown()
    {
        // A slot has the type of its root.
        rootModules.append(put(*m_document, 103, QPointF(100, 3000)));
        for (const int slot : {103, 0}) {
            m_document->showSlot(slot);
            m_document->addModule(700, 500, 104);
            QCOMPARE(moduleMap.last()->ownid, slot);
            QVERIFY(moduleMap.last()->isVisible());
        }
    }

    void aSlotShowsItsOwnBlocksAlone()
    {
        supermodule* other = put(*m_document, 103, QPointF(700, 400));
        other->ownid = 405;
        Notices notices(*m_document);
        m_document->showSlot(405);
        QVERIFY(other->isVisible());
        QVERIFY(!m_document->mainBlock()->isVisible());
        m_document->showSlot(0);
        QVERIFY(!other->isVisible());
        QVERIFY(m_document->mainBlock()->isVisible());
        QCOMPARE(notices.take(), (Kinds{DocumentChange::SlotShown, DocumentChange::SlotShown}));
    }

    void whatIsSavedOrOpenedComesFirstInTheRecentList()
    {
        recentFiles.clear();
        const QString first = path("first.tlrx");
        const QString second = path("second.tlrx");
        QVERIFY(m_document->save(first));
        QVERIFY(m_document->save(second));
        QCOMPARE(recentFiles, (QStringList{second, first}));
        QCOMPARE(m_document->open(first), int(ProjectOpened));
        QCOMPARE(recentFiles, (QStringList{first, second}));
        QVERIFY(m_document->save(second));
        QCOMPARE(recentFiles, (QStringList{second, first}));
        // The temporary one, and what fails, is none to come back to.
        QVERIFY(m_document->saveTemporary(path("temp.tlrx"), QByteArray()));
        QVERIFY(!m_document->save(path("no/such/folder/a.tlrx")));
        QCOMPARE(recentFiles, (QStringList{second, first}));
    }

    void aPathLeavesTheRecentListWithANotice()
    {
        QVERIFY(m_document->save(path()));
        Notices notices(*m_document);
        m_document->forgetRecentFile(path());
        QCOMPARE(notices.take(), Kinds{DocumentChange::RecentFiles});
    }

    void init() { m_document.emplace(); }
    void cleanup()
    {
        m_document.reset();
        setDocumentModified(false);
    }

private:
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_folder.filePath(QLatin1String(p_name));
    }

    QTemporaryDir m_folder;
    std::optional<Document> m_document;
};

QTEST_MAIN(DocumentTest)
#include "documenttest.moc"
