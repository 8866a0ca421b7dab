#include "generator/codegenerator.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "support/canvas/canvasfixture.h"
#include "text/bracestoindent.h"
#include "text/variables.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
/** A block with texts of its own that names variables when it is asked for its C text. */
class writingBlock : public supermodule
{
public:
    explicit writingBlock(const QString& p_c, const QString& p_python = QString())
        : supermodule(1000, QString(), QString(), QString()), m_c(p_c), m_python(p_python)
    {
    }
    QString cCode() const override
    {
        for (const auto& each : names) {
            variableName(each.first, each.second);
        }
        return m_c;
    }
    QString pythonCode() const override { return m_python; }
    supermodule* clone() const override { return new writingBlock(m_c, m_python); }

    QVector<QPair<uint32_t, int>> names;

private:
    QString m_c;
    QString m_python;
};

/** A document put together by hand, with a main block of its own; all is put back at the end. */
class HandMade
{
public:
    HandMade()
    {
        root = createModuleFromId(0);
        rootModules = {root};
        taskModules = {root};
    }
    ~HandMade()
    {
        for (supermodule* each : qAsConst(m_owned)) {
            supermodule::deleteTree(each);
        }
        supermodule::deleteTree(root);
        rootModules = m_roots;
        taskModules = m_tasks;
    }

    /** A new chain of its own, such as that of a task or a sub-program, by its root. */
    supermodule* chain(supermodule* p_root = new writingBlock(QStringLiteral("root;\n")))
    {
        m_owned.append(p_root);
        return p_root;
    }
    static supermodule* add(supermodule* p_root, int p_id)
    {
        return add(p_root, createModuleFromId(p_id));
    }
    static supermodule* add(supermodule* p_root, supermodule* p_module)
    {
        p_root->appendModule(p_module);
        return p_module;
    }

    supermodule* root;

private:
    const QList<supermodule*> m_roots = rootModules;
    const QList<supermodule*> m_tasks = taskModules;
    QList<supermodule*> m_owned;
};

/** Lines with the number of blanks before them, as they are laid down. */
struct Line {
    int blanks;
    const char* text;
};

QString joined(std::initializer_list<Line> p_lines)
{
    QString text;
    for (const Line& line : p_lines) {
        text += QString(line.blanks, QLatin1Char(' ')) + QString::fromUtf8(line.text) +
                QLatin1Char('\n');
    }
    return text;
}

const Line s_include = {0, "#include \"vantrel.h\""};
const Line s_main = {0, "void user_main()"};
const Line s_open = {0, "{"};
const Line s_speeds = {6, "int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;"};
const Line s_close = {0, "}"};
} // namespace

class GeneratorTest : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyProjectIsJustItsFrame()
    {
        const HandMade document;
        const QString expected = joined({s_include, s_main, s_open, s_speeds, s_close});
        QCOMPARE(generateProjectCode(CCode), expected);
        QCOMPARE(generateVisibleCode(CCode), expected);
    }

    void theWorkedExampleComesOutLineByLine()
    {
        HandMade document;
        HandMade::add(document.root, 100)->setParamIndex(0);
        supermodule* endless = HandMade::add(document.root, 303);
        endless->setLeftModule(createModuleFromId(103));
        // It uses the variable and says nothing.
        auto* user = new writingBlock(QString());
        user->names = {{0x1, 0}};
        endless->left()->appendModule(user);
        supermodule* task = document.chain();
        HandMade::add(task, 101);
        taskModules.insert(1, task);
        const QString expected = joined({s_include,
                                         {0, "int gi_1 = 0;"},
                                         s_main,
                                         s_open,
                                         s_speeds,
                                         {6, "speed1 = 30;"},
                                         {6, "speed2 = 30;"},
                                         {6, "speed3 = 30;"},
                                         {6, "speed4 = 30;"},
                                         {6, "while(1)"},
                                         {6, "{"},
                                         {6, "set_motor(1, speed1);set_motor(2, -speed2);}"},
                                         s_close,
                                         {0, "void user_task1()"},
                                         {0, "{"},
                                         {6, "wait(1);"},
                                         {0, "}"}});
        QCOMPARE(generateProjectCode(CCode), expected);
        QCOMPARE(generateVisibleCode(CCode), expected);
    }

    void everyFragmentFollowsTheOneBeforeWithoutASeparator()
    {
        HandMade document;
        HandMade::add(document.root, new writingBlock(QStringLiteral("a;")));
        HandMade::add(document.root, new writingBlock(QStringLiteral("b;\n")));
        HandMade::add(document.root, new writingBlock(QStringLiteral("\nc;")));
        HandMade::add(document.root, new writingBlock(QStringLiteral("d;")));
        QCOMPARE(generateProjectCode(CCode),
                 joined({s_include, s_main, s_open, s_speeds, {6, "a;b;"}, {6, "c;d;"}, s_close}));
    }

    void looseChainsAreNotInTheText()
    {
        HandMade document;
        supermodule* loose = document.chain(createModuleFromId(103));
        HandMade::add(loose, 105);
        QCOMPARE(generateProjectCode(CCode),
                 joined({s_include, s_main, s_open, s_speeds, s_close}));
    }

    void withNoVariableThereIsNoDeclaration()
    {
        HandMade document;
        HandMade::add(document.root, 103);
        QVERIFY(generateProjectCode(CCode).startsWith(
            QStringLiteral("#include \"vantrel.h\"\nvoid user_main()\n")));
    }

    void aVariableCountedTwiceIsDeclaredOnce()
    {
        HandMade document;
        auto* user = new writingBlock(QStringLiteral("a;\n"));
        user->names = {{0x1, 2}, {0x1, 2}};
        HandMade::add(document.root, user);
        QCOMPARE(
            generateProjectCode(CCode),
            joined(
                {s_include, {0, "int gi_3 = 0;"}, s_main, s_open, s_speeds, {6, "a;"}, s_close}));
    }

    void aVariableOfATaskAloneIsDeclared()
    {
        HandMade document;
        supermodule* task = document.chain();
        auto* user = new writingBlock(QStringLiteral("t;\n"));
        user->names = {{0x2, 9}};
        HandMade::add(task, user);
        taskModules.append(task);
        const QString expected = joined({s_include,
                                         {0, "float gf_10 = 0;"},
                                         s_main,
                                         s_open,
                                         s_speeds,
                                         s_close,
                                         {0, "void user_task1()"},
                                         {0, "{"},
                                         {6, "t;"},
                                         {0, "}"}});
        QCOMPARE(generateProjectCode(CCode), expected);
        QCOMPARE(generateVisibleCode(CCode), expected);
    }

    void declarationsOfAllKindsStandBetweenHeadAndProgram()
    {
        HandMade document;
        auto* user = new writingBlock(QStringLiteral("a;\n"));
        user->names = {{0x20000, 0}, {0x20, 1}, {0x2000000, 0}, {0x2000, 0}, {0x20, 0}};
        HandMade::add(document.root, user);
        QCOMPARE(generateProjectCode(CCode), joined({s_include,
                                                     {0, "int button_1 = 0;"},
                                                     {0, "int button_2 = 0;"},
                                                     {0, "float time_1 = 0;"},
                                                     {0, "int image_1 = 0;"},
                                                     s_main,
                                                     s_open,
                                                     s_speeds,
                                                     {6, "a;"},
                                                     s_close}));
    }

    void eachTextCountsItsVariablesAnew()
    {
        HandMade document;
        auto* user = new writingBlock(QStringLiteral("a;\n"));
        user->names = {{0x1, 0}};
        HandMade::add(document.root, user);
        variableName(0x4, 5);
        QVERIFY(generateProjectCode(CCode).contains(QStringLiteral("int gi_1 = 0;")));
        QCOMPARE(variableUse.value(0x4).at(5), 0);
        document.root->removeChild(user);
        QVERIFY(!generateProjectCode(CCode).contains(QStringLiteral("gi_1")));
        QVERIFY(variableUse.value(0x1).at(0) == 0);
        delete user;
    }

    void tasksAreNumberedByTheirPlaceInTheList()
    {
        HandMade document;
        supermodule* older = document.chain();
        HandMade::add(older, new writingBlock(QStringLiteral("older;\n")));
        taskModules.insert(1, older);
        QVERIFY(generateProjectCode(CCode).contains(
            QStringLiteral("void user_task1()\n{\n      older;\n}\n")));
        // A new task comes in front of the older ones, which then have other numbers.
        supermodule* newer = document.chain();
        HandMade::add(newer, new writingBlock(QStringLiteral("newer;\n")));
        taskModules.insert(1, newer);
        QCOMPARE(generateProjectCode(CCode), joined({s_include,
                                                     s_main,
                                                     s_open,
                                                     s_speeds,
                                                     s_close,
                                                     {0, "void user_task1()"},
                                                     {0, "{"},
                                                     {6, "newer;"},
                                                     {0, "}"},
                                                     {0, "void user_task2()"},
                                                     {0, "{"},
                                                     {6, "older;"},
                                                     {0, "}"}}));
    }

    void aTaskWithoutBlocksIsAnEmptyFrame()
    {
        HandMade document;
        taskModules.append(document.chain());
        QCOMPARE(generateProjectCode(CCode), joined({s_include,
                                                     s_main,
                                                     s_open,
                                                     s_speeds,
                                                     s_close,
                                                     {0, "void user_task1()"},
                                                     {0, "{"},
                                                     {0, "}"}}));
    }

    void theTextOfATasksRootIsNotUsed()
    {
        HandMade document;
        auto* root = new writingBlock(QStringLiteral("never;\n"));
        root->names = {{0x1, 0}};
        taskModules.append(document.chain(root));
        const QString text = generateProjectCode(CCode);
        QVERIFY(!text.contains(QStringLiteral("never")));
        QVERIFY(!text.contains(QStringLiteral("gi_1")));
    }

    void aBraceInAStringChangesTheDepthOfAllLinesAfterIt()
    {
        HandMade document;
        HandMade::add(document.root, new writingBlock(QStringLiteral("Printf(\"{\");\na;\n")));
        supermodule* task = document.chain();
        HandMade::add(task, new writingBlock(QStringLiteral("t;\n")));
        taskModules.append(task);
        QCOMPARE(generateProjectCode(CCode), joined({s_include,
                                                     s_main,
                                                     s_open,
                                                     s_speeds,
                                                     {6, "Printf(\"{\");"},
                                                     {12, "a;"},
                                                     {6, "}"},
                                                     {6, "void user_task1()"},
                                                     {6, "{"},
                                                     {12, "t;"},
                                                     {6, "}"}}));
    }

    void subProgramsStandBeforeTheMainProgramWithTheirBrace()
    {
        HandMade document;
        supermodule* first = document.chain(new writingBlock(QStringLiteral("void first()\n{\n")));
        HandMade::add(first, 101);
        supermodule* second =
            document.chain(new writingBlock(QStringLiteral("void second()\n{\n")));
        rootModules = {document.root, first, second};
        HandMade::add(document.root, 117);
        QCOMPARE(generateProjectCode(CCode), joined({s_include,
                                                     {0, "void first()"},
                                                     {0, "{"},
                                                     {6, "wait(1);"},
                                                     {0, "}"},
                                                     {0, "void second()"},
                                                     {0, "{"},
                                                     {0, "}"},
                                                     s_main,
                                                     s_open,
                                                     s_speeds,
                                                     {6, "set_motor(3, 0);"},
                                                     s_close}));
    }

    void theVisibleTextHoldsTheShownSlotAndAllTasks()
    {
        HandMade document;
        supermodule* sub = document.chain(new writingBlock(QStringLiteral("void sub()\n{\n")));
        HandMade::add(sub, 101);
        rootModules = {document.root, sub};
        supermodule* task = document.chain();
        taskModules.append(task);
        document.root->setVisible(false);
        QCOMPARE(generateVisibleCode(CCode), joined({s_include,
                                                     {0, "void sub()"},
                                                     {0, "{"},
                                                     {6, "wait(1);"},
                                                     {0, "}"},
                                                     {0, "void user_task1()"},
                                                     {0, "{"},
                                                     {0, "}"}}));
        // The first visible one counts.
        document.root->setVisible(true);
        QVERIFY(!generateVisibleCode(CCode).contains(QStringLiteral("void sub()")));
        QVERIFY(generateVisibleCode(CCode).contains(QStringLiteral("void user_main()")));
    }

    void theVisibleTextWithoutAVisibleRootIsHeadBraceAndTasks()
    {
        HandMade document;
        document.root->setVisible(false);
        QCOMPARE(generateVisibleCode(CCode), joined({s_include, {0, "}"}}));
        supermodule* task = document.chain();
        auto* user = new writingBlock(QStringLiteral("t;\n"));
        user->names = {{0x1, 0}};
        HandMade::add(task, user);
        taskModules.append(task);
        // The lone brace takes the depth below zero, so that the task isn't indented.
        QCOMPARE(generateVisibleCode(CCode), joined({s_include,
                                                     {0, "int gi_1 = 0;"},
                                                     {0, "}"},
                                                     {0, "void user_task1()"},
                                                     {0, "{"},
                                                     {0, "t;"},
                                                     {0, "}"}}));
    }

    void closingBracesShareTheirLinesAsTheBlocksLeaveThem()
    {
        HandMade document;
        supermodule* counted = HandMade::add(document.root, 301);
        counted->setLeftModule(createModuleFromId(109));
        HandMade::add(document.root, 106);
        supermodule* until = HandMade::add(document.root, 307);
        until->setLeftModule(createModuleFromId(109));
        HandMade::add(document.root, 106);
        QCOMPARE(generateProjectCode(CCode),
                 joined({s_include,
                         s_main,
                         s_open,
                         s_speeds,
                         {6, "for(int i = 0;i < 10; ++i)"},
                         {6, "{"},
                         {6, "set_motor(1, speed1);set_motor(2, speed2);}"
                             "set_motor(1, -speed1);set_motor(2, -speed2);"
                             "while(switch_state(5) == 0)"},
                         {6, "{"},
                         {12, "set_motor(1, speed1);set_motor(2, speed2);"},
                         {6, "}"},
                         {6, "set_motor(1, -speed1);set_motor(2, -speed2);"},
                         s_close}));
    }

    void aTextDeclaresNothingThatOnlyTheTextBeforeItNamed()
    {
        HandMade document;
        auto* user = new writingBlock(QStringLiteral("c;"), QString());
        user->names = {{0x1, 0}};
        HandMade::add(document.root, user);
        QVERIFY(generateVisibleCode(CCode).contains("int gi_1 = 0;"));
        user->names.clear();
        QVERIFY(!generateVisibleCode(CCode).contains("gi_1"));
        variableName(0x1, 0);
        QVERIFY(!generateProjectCode(CCode).contains("gi_1"));
    }

    void anotherLanguageGivesAnEmptyText_data()
    {
        QTest::addColumn<int>("language");
        for (const int language : {-1, 0, 3, 100}) {
            QTest::newRow(qPrintable(QString::number(language))) << language;
        }
    }

    void anotherLanguageGivesAnEmptyText()
    {
        QFETCH(int, language);
        HandMade document;
        HandMade::add(document.root, 103);
        QCOMPARE(generateProjectCode(language), QString());
        QCOMPARE(generateVisibleCode(language), QString());
    }

    void pythonOfAnyProjectIsItsHead()
    {
        HandMade document;
        QCOMPARE(generateProjectCode(PythonCode), QStringLiteral("import Vantrel\n"));
        for (const int id : {100, 104, 107, 301, 307, 309, 800, 900}) {
            HandMade::add(document.root, id);
        }
        HandMade::add(document.root, 303)->setLeftModule(createModuleFromId(103));
        QCOMPARE(generateProjectCode(PythonCode), QStringLiteral("import Vantrel\n"));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\n"));
    }

    void pythonOfTheVisibleProgramAndOfTheProjectIsTheSame()
    {
        HandMade document;
        supermodule* sub = document.chain(createModuleFromId(104));
        rootModules = {document.root, sub};
        HandMade::add(document.root, 103);
        document.root->setVisible(false);
        QCOMPARE(generateVisibleCode(PythonCode), generateProjectCode(PythonCode));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\n"));
    }

    void pythonOfAFragmentIsLaidOutWithoutBraces()
    {
        HandMade document;
        HandMade::add(document.root,
                      new writingBlock(QString(), QStringLiteral("while x:\n{\nrun()\n}\n")));
        HandMade::add(document.root, new writingBlock(QString(), QStringLiteral("stop()\n")));
        const QString expected = QStringLiteral("import Vantrel\nwhile x:\n      run()\nstop()\n");
        QCOMPARE(generateProjectCode(PythonCode), expected);
        QCOMPARE(generateVisibleCode(PythonCode), expected);
    }

    void pythonLeavesOutTasksAndDeclarations()
    {
        HandMade document;
        auto* user = new writingBlock(QStringLiteral("c;"), QStringLiteral("p()\n"));
        user->names = {{0x1, 0}};
        HandMade::add(document.root, user);
        supermodule* task = document.chain();
        HandMade::add(task, new writingBlock(QStringLiteral("t;"), QStringLiteral("t()\n")));
        taskModules.append(task);
        variableName(0x1, 3);
        QCOMPARE(generateProjectCode(PythonCode), QStringLiteral("import Vantrel\np()\n"));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\np()\n"));
        QCOMPARE(variableUse.value(0x1), QVector<int>(10, 0));
    }

    void pythonPutsSubProgramsBeforeTheMainProgram()
    {
        HandMade document;
        supermodule* sub =
            document.chain(new writingBlock(QString(), QStringLiteral("def s():\n{\n")));
        HandMade::add(sub, new writingBlock(QString(), QStringLiteral("a()\n}\n")));
        rootModules = {document.root, sub};
        HandMade::add(document.root, new writingBlock(QString(), QStringLiteral("s()\n")));
        QCOMPARE(generateProjectCode(PythonCode),
                 QStringLiteral("import Vantrel\ndef s():\n      a()\ns()\n"));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\ns()\n"));
        document.root->setVisible(false);
        QCOMPARE(generateVisibleCode(PythonCode),
                 QStringLiteral("import Vantrel\ndef s():\n      a()\n"));
    }

    void pythonDropsLinesThatAreLeftBlank()
    {
        HandMade document;
        // A brace inside a line splits it, and what is left behind the inner one is blank.
        HandMade::add(
            document.root,
            new writingBlock(QString(), QStringLiteral("if a:\n{\nif b:\n{\nc()\n}   \n}\n"
                                                       "x{y\n")));
        QCOMPARE(generateProjectCode(PythonCode),
                 QStringLiteral("import Vantrel\nif a:\n      if b:\n            c()\nx\ny\n"));
    }

    void theCanvasGivesTheTextOfItsProgram()
    {
        CanvasFixture canvas;
        supermodule* forward = canvas.dropBehind(canvas.main(), 103);
        canvas.dropBehind(forward, 101);
        canvas.drop(105, {700, 450});
        const QString expected = joined({s_include,
                                         s_main,
                                         s_open,
                                         s_speeds,
                                         {6, "set_motor(1, speed1);set_motor(2, -speed2);wait(1);"},
                                         s_close});
        QCOMPARE(canvas.view.generateVisibleCode(1), expected);
        QCOMPARE(canvas.view.generateProjectCode(1), expected);
        QCOMPARE(canvas.view.generateVisibleCode(2), QStringLiteral("import Vantrel\n"));
        QCOMPARE(canvas.view.generateProjectCode(3), QString());
    }

    void aDownloadRunsTheBuildOfTheProjectInC()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 117);
        QStringList runs;
        QString source;
        canvas.view.setBuildRunner(
            [&](const QString& p_name, int p_tasks, const QString& p_source) {
                source = p_source;
                runs << QStringLiteral("%1 %2").arg(p_name).arg(p_tasks);
            });
        canvas.view.OnDownload(QStringLiteral("car"));
        const QString expected =
            joined({s_include, s_main, s_open, s_speeds, {6, "set_motor(3, 0);"}, s_close});
        QCOMPARE(runs, QStringList{"car 0"});
        QCOMPARE(source, expected);
        // Each task is counted, the main program not.
        writingBlock task{QString()};
        taskModules.append(&task);
        canvas.view.OnDownload(QStringLiteral("car2"));
        taskModules.removeOne(&task);
        QCOMPARE(runs.last(), QStringLiteral("car2 1"));
        QVERIFY(source.contains("void user_task1()"));
    }
};

QTEST_MAIN(GeneratorTest)
#include "generatortest.moc"
