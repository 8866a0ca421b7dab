#include "modules/catalogue/blocktables.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvastest.h"
#include "support/system/datatable.h"
#include "support/system/kitcopy.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

namespace
{
const int s_projects = 12;

QString golden(const QString& p_name) { return QDir(QStringLiteral(GOLDEN_DIR)).filePath(p_name); }

QString textOf(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                          : QStringLiteral("can't be read: ") + p_path;
}
} // namespace

class GoldenTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(m_kit.isValid(), "TILER_KIT doesn't name the folder of a kit"); }

    void theSetHoldsEveryBlockOfTheCatalogue()
    {
        QSet<int> ids;
        const QStringList files =
            QDir(QStringLiteral(GOLDEN_DIR)).entryList({QStringLiteral("*.tlrx")}, QDir::Files);
        QCOMPARE(files.size(), s_projects);
        for (const QString& file : files) {
            QDomDocument document;
            QVERIFY2(document.setContent(textOf(golden(file))), qPrintable(file));
            const QDomNodeList modules = document.elementsByTagName(QStringLiteral("module"));
            for (int i = 0; i < modules.size(); ++i) {
                ids.insert(modules.at(i).toElement().attribute(QStringLiteral("id")).toInt());
            }
        }
        for (const BlockRecord& record : blockRecords()) {
            QVERIFY2(ids.contains(record.id),
                     qPrintable(QStringLiteral("in no project of tests/golden: %1 %2")
                                    .arg(QString::number(record.id), record.caption)));
        }
    }

    void aProjectGivesItsText_data() { projects(); }

    void aProjectGivesItsText()
    {
        QFETCH(QString, name);
        QCOMPARE(m_canvas->view.openFile(golden(name + ".tlrx")), int(ProjectOpened));
        const QString expected = textOf(golden(name + ".c"));
        QCOMPARE(m_canvas->view.generateProjectCode(1), expected);
        QCOMPARE(m_canvas->view.generateVisibleCode(1), expected);
        QCOMPARE(m_canvas->view.generateProjectCode(2), QStringLiteral("import Vantrel\n"));
    }

    void aSavedProjectGivesTheSameTextAgain_data() { projects(); }

    void aSavedProjectGivesTheSameTextAgain()
    {
        QFETCH(QString, name);
        QCOMPARE(m_canvas->view.openFile(golden(name + ".tlrx")), int(ProjectOpened));
        const int blocks = m_canvas->blocks().size();
        const QString path = m_kit.filePath(name + ".tlrx");
        QVERIFY(m_canvas->view.saveFile(path));
        m_canvas->view.newProgram();
        m_canvas->view.resetDocument();
        QCOMPARE(m_canvas->blocks().size(), 1);
        // This time with a check tag.
        QVERIFY(textOf(path).contains(QStringLiteral("<tagCheck value=")));
        QCOMPARE(m_canvas->view.openFile(path), int(ProjectOpened));
        QCOMPARE(m_canvas->view.generateProjectCode(1), textOf(golden(name + ".c")));
        QCOMPARE(m_canvas->blocks().size(), blocks);
    }

    void blocksOfNoKnownTypeAreLeftOutAndLooseChainsStayLoose()
    {
        QCOMPARE(m_canvas->view.openFile(golden(QStringLiteral("loose.tlrx"))), int(ProjectOpened));
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101, 106, 105}));
        QList<supermodule*> roots;
        for (supermodule* block : m_canvas->blocks()) {
            if (!block->parentModule()) {
                roots.append(block);
            }
        }
        roots.removeOne(m_canvas->main());
        QCOMPARE(roots.size(), 1);
        QCOMPARE(CanvasFixture::ids(roots.first()), (QList<int>{103, 303}));
        QCOMPARE(roots.first()->pos(), QPointF(300, 450));
        QCOMPARE(roots.first()->next()->left()->opacity(), 0.5);
        const supermodule* turn = m_canvas->main()->next()->next();
        QVERIFY(turn->right());
        QCOMPARE(turn->right()->id, 102);
    }

    void theTextCompilesWithoutAWord_data() { projects(); }

    void theTextCompilesWithoutAWord()
    {
        QFETCH(QString, name);
        QCOMPARE(m_canvas->view.openFile(golden(name + ".tlrx")), int(ProjectOpened));
        const ProcessResult result = m_kit.compile(name, m_canvas->view.generateProjectCode(1));
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        QVERIFY(QFileInfo(m_kit.binary(name)).size() > 0);
    }

    void theProgramRunsOnTheController_data()
    {
        columns<QString, QStringList>("name", "sensors");
        row("drive", "drive", QStringList());
        row("motors", "motors", QStringList());
        row("counted", "counted", QStringList());
        row("sensors", "sensors",
            QStringList{"touch:5=1@0.25", "analogue:4=300@0.45", "touch:2=1@0", "touch:2=0@0.9"});
    }

    void theProgramRunsOnTheController()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, sensors);
        QCOMPARE(m_canvas->view.openFile(golden(name + ".tlrx")), int(ProjectOpened));
        const ProcessResult compiled = m_kit.compile(name, m_canvas->view.generateProjectCode(1));
        QCOMPARE(compiled.exitCode, 0);
        QStringList options;
        for (const QString& sensor : qAsConst(sensors)) {
            options << QStringLiteral("--sensor") << sensor;
        }
        const ProcessResult result = m_kit.run(name, options);
        QCOMPARE(result.errors, QString());
        QString trace = result.output;
        // The times aside.
        trace.remove(QRegularExpression(QStringLiteral("^\\[ *[0-9]+\\.[0-9]{3}\\] "),
                                        QRegularExpression::MultilineOption));
        QCOMPARE(trace.split(QLatin1Char('\n')),
                 textOf(golden(name + ".trace")).split(QLatin1Char('\n')));
        QCOMPARE(result.exitCode, 0);
    }

private:
    void projects()
    {
        QTest::addColumn<QString>("name");
        const QStringList files =
            QDir(QStringLiteral(GOLDEN_DIR)).entryList({QStringLiteral("*.tlrx")}, QDir::Files);
        for (const QString& file : files) {
            const QString name = QFileInfo(file).completeBaseName();
            QTest::newRow(qPrintable(name)) << name;
        }
        if (files.size() != s_projects) {
            QTest::newRow("a project is missing") << QString();
        }
    }

    KitCopy m_kit;
};

QTEST_MAIN(GoldenTest)
#include "goldentest.moc"
