#include "generator/codegenerator.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/datatable.h"
#include "support/system/fixturetest.h"
#include "text/bracestoindent.h"
#include "text/variables.h"

#include <QtTest>

namespace
{
/** A block with texts of its own that names variables when it is asked for its C text. */
class writingBlock : public supermodule
{
public:
    explicit writingBlock(const QString& p_c, const QString& p_python = QString(),
                          const QVector<QPair<uint32_t, int>>& p_names = {})
        : supermodule(1000, QString(), QString(), QString()),
          names(p_names),
          m_c(p_c),
          m_python(p_python)
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

const QString s_head = QStringLiteral("#include \"vantrel.h\"\n");

/** A C text with what stands before the main program, in it behind its speeds, and behind it. */
QString program(const char* p_before, const char* p_main, const char* p_behind = "")
{
    return s_head + p_before + "void user_main()\n{\n" +
           "      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;\n" + p_main + "}\n" +
           p_behind;
}
} // namespace

class GeneratorTest : public FixtureTest<HandMade>
{
    Q_OBJECT

private slots:
    void anEmptyProjectIsJustItsFrame()
    {
        const QString expected = program("", "");
        QCOMPARE(generateProjectCode(CCode), expected);
        QCOMPARE(generateVisibleCode(CCode), expected);
    }

    void theWorkedExampleComesOutLineByLine()
    {
        m_bench->add(m_bench->root, 100)->setParamIndex(0);
        supermodule* endless = m_bench->add(m_bench->root, 303);
        endless->setLeftModule(createModuleFromId(103));
        // It uses the variable and says nothing.
        auto* user = new writingBlock(QString(), QString(), {{0x1, 0}});
        endless->left()->appendModule(user);
        supermodule* task = m_bench->chain();
        m_bench->add(task, 101);
        taskModules.insert(1, task);
        const QString expected =
            program("int gi_1 = 0;\n",
                    "      speed1 = 30;\n      speed2 = 30;\n      speed3 = 30;\n"
                    "      speed4 = 30;\n      while(1)\n      {\n"
                    "      set_motor(1, speed1);set_motor(2, -speed2);}\n",
                    "void user_task1()\n{\n      wait(1);\n}\n");
        QCOMPARE(generateProjectCode(CCode), expected);
        QCOMPARE(generateVisibleCode(CCode), expected);
    }

    void everyFragmentFollowsTheOneBeforeWithoutASeparator()
    {
        m_bench->add(m_bench->root, new writingBlock(QStringLiteral("a;")));
        m_bench->add(m_bench->root, new writingBlock(QStringLiteral("b;\n")));
        m_bench->add(m_bench->root, new writingBlock(QStringLiteral("\nc;")));
        m_bench->add(m_bench->root, new writingBlock(QStringLiteral("d;")));
        QCOMPARE(generateProjectCode(CCode), program("", "      a;b;\n      c;d;\n"));
    }

    void looseChainsAreNotInTheText()
    {
        supermodule* loose = m_bench->chain(createModuleFromId(103));
        m_bench->add(loose, 105);
        QCOMPARE(generateProjectCode(CCode), program("", ""));
    }

    void withNoVariableThereIsNoDeclaration()
    {
        m_bench->add(m_bench->root, 103);
        QVERIFY(generateProjectCode(CCode).startsWith(
            QStringLiteral("#include \"vantrel.h\"\nvoid user_main()\n")));
    }

    void aVariableCountedTwiceIsDeclaredOnce()
    {
        auto* user = new writingBlock(QStringLiteral("a;\n"), QString(), {{0x1, 2}, {0x1, 2}});
        m_bench->add(m_bench->root, user);
        QCOMPARE(generateProjectCode(CCode), program("int gi_3 = 0;\n", "      a;\n"));
    }

    void aVariableOfATaskAloneIsDeclared()
    {
        supermodule* task = m_bench->chain();
        auto* user = new writingBlock(QStringLiteral("t;\n"), QString(), {{0x2, 9}});
        m_bench->add(task, user);
        taskModules.append(task);
        const QString expected =
            program("float gf_10 = 0;\n", "", "void user_task1()\n{\n      t;\n}\n");
        QCOMPARE(generateProjectCode(CCode), expected);
        QCOMPARE(generateVisibleCode(CCode), expected);
    }

    void declarationsOfAllKindsStandBetweenHeadAndProgram()
    {
        auto* user =
            new writingBlock(QStringLiteral("a;\n"), QString(),
                             {{0x20000, 0}, {0x20, 1}, {0x2000000, 0}, {0x2000, 0}, {0x20, 0}});
        m_bench->add(m_bench->root, user);
        QCOMPARE(
            generateProjectCode(CCode),
            program("int button_1 = 0;\nint button_2 = 0;\nfloat time_1 = 0;\nint image_1 = 0;\n",
                    "      a;\n"));
    }

    void eachTextCountsItsVariablesAnew()
    {
        auto* user = new writingBlock(QStringLiteral("a;\n"), QString(), {{0x1, 0}});
        m_bench->add(m_bench->root, user);
        variableName(0x4, 5);
        QVERIFY(generateProjectCode(CCode).contains(QStringLiteral("int gi_1 = 0;")));
        QCOMPARE(variableUse.value(0x4).at(5), 0);
        m_bench->root->removeChild(user);
        QVERIFY(!generateProjectCode(CCode).contains(QStringLiteral("gi_1")));
        QVERIFY(variableUse.value(0x1).at(0) == 0);
        delete user;
    }

    void tasksAreNumberedByTheirPlaceInTheList()
    {
        supermodule* older = m_bench->chain();
        m_bench->add(older, new writingBlock(QStringLiteral("older;\n")));
        taskModules.insert(1, older);
        QVERIFY(generateProjectCode(CCode).contains(
            QStringLiteral("void user_task1()\n{\n      older;\n}\n")));
        // A new task comes in front of the older ones, which then have other numbers.
        supermodule* newer = m_bench->chain();
        m_bench->add(newer, new writingBlock(QStringLiteral("newer;\n")));
        taskModules.insert(1, newer);
        QCOMPARE(
            generateProjectCode(CCode),
            program(
                "", "",
                "void user_task1()\n{\n      newer;\n}\nvoid user_task2()\n{\n      older;\n}\n"));
    }

    void aTaskWithoutBlocksIsAnEmptyFrame()
    {
        taskModules.append(m_bench->chain());
        QCOMPARE(generateProjectCode(CCode), program("", "", "void user_task1()\n{\n}\n"));
    }

    void theTextOfATasksRootIsNotUsed()
    {
        auto* root = new writingBlock(QStringLiteral("never;\n"), QString(), {{0x1, 0}});
        taskModules.append(m_bench->chain(root));
        const QString text = generateProjectCode(CCode);
        QVERIFY(!text.contains(QStringLiteral("never")));
        QVERIFY(!text.contains(QStringLiteral("gi_1")));
    }

    void aBraceInAStringChangesTheDepthOfAllLinesAfterIt()
    {
        m_bench->add(m_bench->root, new writingBlock(QStringLiteral("Printf(\"{\");\na;\n")));
        supermodule* task = m_bench->chain();
        m_bench->add(task, new writingBlock(QStringLiteral("t;\n")));
        taskModules.append(task);
        QCOMPARE(generateProjectCode(CCode),
                 s_head + "void user_main()\n{\n"
                          "      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;\n"
                          "      Printf(\"{\");\n            a;\n      }\n"
                          "      void user_task1()\n      {\n            t;\n      }\n");
    }

    void subProgramsStandBeforeTheMainProgramWithTheirBrace()
    {
        supermodule* first = m_bench->chain(new writingBlock(QStringLiteral("void first()\n{\n")));
        m_bench->add(first, 101);
        supermodule* second =
            m_bench->chain(new writingBlock(QStringLiteral("void second()\n{\n")));
        rootModules = {m_bench->root, first, second};
        m_bench->add(m_bench->root, 117);
        QCOMPARE(generateProjectCode(CCode),
                 program("void first()\n{\n      wait(1);\n}\nvoid second()\n{\n}\n",
                         "      set_motor(3, 0);\n"));
    }

    void theVisibleTextHoldsTheShownSlotAndAllTasks()
    {
        supermodule* sub = m_bench->chain(new writingBlock(QStringLiteral("void sub()\n{\n")));
        m_bench->add(sub, 101);
        rootModules = {m_bench->root, sub};
        supermodule* task = m_bench->chain();
        taskModules.append(task);
        m_bench->root->setVisible(false);
        QCOMPARE(generateVisibleCode(CCode),
                 s_head + "void sub()\n{\n      wait(1);\n}\nvoid user_task1()\n{\n}\n");
        // The first visible one counts.
        m_bench->root->setVisible(true);
        QVERIFY(!generateVisibleCode(CCode).contains(QStringLiteral("void sub()")));
        QVERIFY(generateVisibleCode(CCode).contains(QStringLiteral("void user_main()")));
    }

    void theVisibleTextWithoutAVisibleRootIsHeadBraceAndTasks()
    {
        m_bench->root->setVisible(false);
        QCOMPARE(generateVisibleCode(CCode), s_head + "}\n");
        supermodule* task = m_bench->chain();
        auto* user = new writingBlock(QStringLiteral("t;\n"), QString(), {{0x1, 0}});
        m_bench->add(task, user);
        taskModules.append(task);
        // The lone brace takes the depth below zero, so that the task isn't indented.
        QCOMPARE(generateVisibleCode(CCode),
                 s_head + "int gi_1 = 0;\n}\nvoid user_task1()\n{\nt;\n}\n");
    }

    void closingBracesShareTheirLinesAsTheBlocksLeaveThem()
    {
        supermodule* counted = m_bench->add(m_bench->root, 301);
        counted->setLeftModule(createModuleFromId(109));
        m_bench->add(m_bench->root, 106);
        supermodule* until = m_bench->add(m_bench->root, 307);
        until->setLeftModule(createModuleFromId(109));
        m_bench->add(m_bench->root, 106);
        QCOMPARE(
            generateProjectCode(CCode),
            program("", "      for(int i = 0;i < 10; ++i)\n      {\n"
                        "      set_motor(1, speed1);set_motor(2, speed2);}"
                        "set_motor(1, -speed1);set_motor(2, -speed2);while(switch_state(5) == 0)\n"
                        "      {\n            set_motor(1, speed1);set_motor(2, speed2);\n      }\n"
                        "      set_motor(1, -speed1);set_motor(2, -speed2);\n"));
    }

    void aTextDeclaresNothingThatOnlyTheTextBeforeItNamed()
    {
        auto* user = new writingBlock(QStringLiteral("c;"), QString(), {{0x1, 0}});
        m_bench->add(m_bench->root, user);
        QVERIFY(generateVisibleCode(CCode).contains("int gi_1 = 0;"));
        user->names.clear();
        QVERIFY(!generateVisibleCode(CCode).contains("gi_1"));
        variableName(0x1, 0);
        QVERIFY(!generateProjectCode(CCode).contains("gi_1"));
    }

    void anotherLanguageGivesAnEmptyText_data() { numberRows("language", {-1, 0, 3, 100}); }

    void anotherLanguageGivesAnEmptyText()
    {
        QFETCH(int, language);
        m_bench->add(m_bench->root, 103);
        QCOMPARE(generateProjectCode(language), QString());
        QCOMPARE(generateVisibleCode(language), QString());
    }

    void pythonOfAnyProjectIsItsHead()
    {
        QCOMPARE(generateProjectCode(PythonCode), QStringLiteral("import Vantrel\n"));
        for (const int id : {100, 104, 107, 301, 307, 309, 800, 900}) {
            m_bench->add(m_bench->root, id);
        }
        m_bench->add(m_bench->root, 303)->setLeftModule(createModuleFromId(103));
        QCOMPARE(generateProjectCode(PythonCode), QStringLiteral("import Vantrel\n"));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\n"));
    }

    void pythonOfTheVisibleProgramAndOfTheProjectIsTheSame()
    {
        supermodule* sub = m_bench->chain(createModuleFromId(104));
        rootModules = {m_bench->root, sub};
        m_bench->add(m_bench->root, 103);
        m_bench->root->setVisible(false);
        QCOMPARE(generateVisibleCode(PythonCode), generateProjectCode(PythonCode));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\n"));
    }

    void pythonOfAFragmentIsLaidOutWithoutBraces()
    {
        m_bench->add(m_bench->root,
                     new writingBlock(QString(), QStringLiteral("while x:\n{\nrun()\n}\n")));
        m_bench->add(m_bench->root, new writingBlock(QString(), QStringLiteral("stop()\n")));
        const QString expected = QStringLiteral("import Vantrel\nwhile x:\n      run()\nstop()\n");
        QCOMPARE(generateProjectCode(PythonCode), expected);
        QCOMPARE(generateVisibleCode(PythonCode), expected);
    }

    void pythonLeavesOutTasksAndDeclarations()
    {
        auto* user = new writingBlock(QStringLiteral("c;"), QStringLiteral("p()\n"), {{0x1, 0}});
        m_bench->add(m_bench->root, user);
        supermodule* task = m_bench->chain();
        m_bench->add(task, new writingBlock(QStringLiteral("t;"), QStringLiteral("t()\n")));
        taskModules.append(task);
        variableName(0x1, 3);
        QCOMPARE(generateProjectCode(PythonCode), QStringLiteral("import Vantrel\np()\n"));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\np()\n"));
        QCOMPARE(variableUse.value(0x1), QVector<int>(10, 0));
    }

    void pythonPutsSubProgramsBeforeTheMainProgram()
    {
        supermodule* sub =
            m_bench->chain(new writingBlock(QString(), QStringLiteral("def s():\n{\n")));
        m_bench->add(sub, new writingBlock(QString(), QStringLiteral("a()\n}\n")));
        rootModules = {m_bench->root, sub};
        m_bench->add(m_bench->root, new writingBlock(QString(), QStringLiteral("s()\n")));
        QCOMPARE(generateProjectCode(PythonCode),
                 QStringLiteral("import Vantrel\ndef s():\n      a()\ns()\n"));
        QCOMPARE(generateVisibleCode(PythonCode), QStringLiteral("import Vantrel\ns()\n"));
        m_bench->root->setVisible(false);
        QCOMPARE(generateVisibleCode(PythonCode),
                 QStringLiteral("import Vantrel\ndef s():\n      a()\n"));
    }

    void pythonDropsLinesThatAreLeftBlank()
    {
        // A brace inside a line splits it, and what is left behind the inner one is blank.
        m_bench->add(m_bench->root,
                     new writingBlock(QString(), QStringLiteral("if a:\n{\nif b:\n{\nc()\n}   \n}\n"
                                                                "x{y\n")));
        QCOMPARE(generateProjectCode(PythonCode),
                 QStringLiteral("import Vantrel\nif a:\n      if b:\n            c()\nx\ny\n"));
    }

    void theCanvasGivesTheTextOfItsProgram()
    {
        m_bench.reset();
        CanvasFixture canvas;
        supermodule* forward = canvas.dropBehind(canvas.main(), 103);
        canvas.dropBehind(forward, 101);
        canvas.drop(105, {700, 450});
        const QString expected =
            program("", "      set_motor(1, speed1);set_motor(2, -speed2);wait(1);\n");
        QCOMPARE(canvas.view.generateVisibleCode(1), expected);
        QCOMPARE(canvas.view.generateProjectCode(1), expected);
        QCOMPARE(canvas.view.generateVisibleCode(2), QStringLiteral("import Vantrel\n"));
        QCOMPARE(canvas.view.generateProjectCode(3), QString());
    }

    void aDownloadRunsTheBuildOfTheProjectInC()
    {
        m_bench.reset();
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
        const QString expected = program("", "      set_motor(3, 0);\n");
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
