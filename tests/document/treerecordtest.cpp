#include "document/treerecord.h"
#include "document/document.h"
#include "document/programslots.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "project/projectdocument.h"
#include "project/projectfile.h"

#include <QDir>
#include <QTest>

#include <memory>

namespace
{
supermodule* put(Document& p_document, int p_id)
{
    supermodule* module = createModuleFromId(p_id);
    module->enterScene(&p_document.scene());
    module->moduleKey = ModuleRegistry::add(module);
    return module;
}

QByteArray textOf(Document& p_document)
{
    return projectText(rootBlocks(p_document.scene()), nullptr);
}

/** A block of a type that the catalogue can't build. */
class OddModule : public supermodule
{
public:
    OddModule() : supermodule(9999, QString(), QString(), QString()) {}
    QString cCode() const override { return QString(); }
    supermodule* clone() const override { return nullptr; }
};

/** Writes a block down, deletes it, and builds it again where it hung. */
supermodule* rebuilt(Document& p_document, supermodule* p_module)
{
    supermodule* parent = p_module->parentModule();
    const LinkType link = parent ? parent->linkOf(p_module) : NoLink;
    const QPointF place = p_module->pos();
    const TreeRecord record(p_module);
    p_document.removeModule(p_module);
    supermodule* again = record.rebuild(&p_document.scene());
    again->setPos(place);
    if (parent) {
        parent->hangModule(link, again);
    }
    again->updateTreeAndOpacity();
    return again;
}
} // namespace

class TreeRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void everyExampleComesBackAsItWas_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(qEnvironmentVariable("TILER_EXAMPLES"));
        const QStringList names = folder.entryList({QStringLiteral("*.tlrx")});
        QVERIFY(names.size() >= 8);
        for (const QString& name : names) {
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
        }
    }
    void everyExampleComesBackAsItWas()
    {
        QFETCH(QString, path);
        Document document;
        QCOMPARE(document.open(path), int(ProjectOpened));
        const QByteArray before = textOf(document);
        const QMap<int, supermodule*> keysBefore = moduleMap;
        rebuilt(document, document.mainBlock()->next());
        QCOMPARE(textOf(document), before);
        QCOMPARE(moduleMap.keys(), keysBefore.keys());
    }

    void everyTypeKeepsItsValues_data()
    {
        QTest::addColumn<int>("id");
        for (const BlockRecord& record : blockRecords()) {
            QTest::newRow(qPrintable(QString::number(record.id))) << record.id;
        }
    }
    void everyTypeKeepsItsValues()
    {
        QFETCH(int, id);
        Document document;
        supermodule* block = put(document, id);
        // Values that no type begins with.
        QDomDocument xml;
        QDomElement element = xml.createElement(QStringLiteral("module"));
        const auto set = [&element](const char* p_name, int p_value) {
            element.setAttribute(QLatin1String(p_name), p_value);
        };
        for (const char* name : {"n", "port", "time", "servoId", "angle", "ownid", "moduleKey"}) {
            set(name, 3);
        }
        set("bInfread", 0);
        set("x", 640);
        set("y", -320);
        block->loadXml(element);
        const QByteArray before = textOf(document);
        rebuilt(document, block);
        QCOMPARE(textOf(document), before);
    }

    void blocksKeepTheirKeysUnlessOthersHaveThem()
    {
        Document document;
        supermodule* first = put(document, 104);
        supermodule* second = put(document, 105);
        first->insert(NextLink, second);
        const int firstKey = first->registryKey();
        const int secondKey = second->registryKey();
        const TreeRecord record(first);
        document.removeModule(first);
        supermodule* other = put(document, 103);
        ModuleRegistry::addAs(secondKey, other);
        supermodule* again = record.rebuild(&document.scene());
        QCOMPARE(again->registryKey(), firstKey);
        QVERIFY(again->next()->registryKey() != secondKey);
        QCOMPARE(moduleMap.value(secondKey), other);
    }

    void theDeepestNestingComesBack()
    {
        Document document;
        supermodule* outer = put(document, 303);
        supermodule* inner = outer;
        for (int i = 1; i < MaximalNesting; ++i) {
            supermodule* next = put(document, 303);
            inner->hangModule(LeftLink, next);
            inner = next;
        }
        QCOMPARE(nestingDepth(rebuilt(document, outer)), MaximalNesting - 1);
    }

    void aTypeThatCannotBeBuiltIsLeftOutWithAllUnderIt()
    {
        Document document;
        supermodule* loop = put(document, 303);
        supermodule* odd = new OddModule;
        odd->enterScene(&document.scene());
        loop->hangModule(LeftLink, odd);
        odd->hangModule(NextLink, put(document, 105));
        loop->hangModule(NextLink, put(document, 104));
        supermodule* again = rebuilt(document, loop);
        QVERIFY(!again->left());
        QVERIFY(again->next());
        QCOMPARE(again->next()->id, 104);
        QCOMPARE(liveModules.size(), 3);
        QVERIFY(!TreeRecord(std::make_unique<OddModule>().get()).rebuild(&document.scene()));
    }

    void anEmptyRecordBuildsNothing()
    {
        Document document;
        QVERIFY(!TreeRecord().rebuild(&document.scene()));
    }
};

QTEST_MAIN(TreeRecordTest)
#include "treerecordtest.moc"
