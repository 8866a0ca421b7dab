#include "dialogbench.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

#include <sys/resource.h>

using namespace dialogtext;

namespace
{

// Programs whose images can be told apart by what they print.
QString program(const QString& p_text)
{
    return "#include \"vantrel.h\"\n"
           "void user_main()\n{\nPrintf(\"" +
           p_text + "\");\n}\n";
}

/** Replaces the compiler for its lifetime. The other tools that the kit calls stay. */
class OtherCompiler
{
public:
    /** By a script, or by nothing at all if that is empty. */
    explicit OtherCompiler(const QByteArray& p_script)
    {
        for (const char* tool : {"make", "sh", "mkdir", "rm", "mv", "cp", "sleep"}) {
            link(tool);
        }
        if (!p_script.isEmpty()) {
            const QString compiler = m_tools.filePath("arm-none-eabi-gcc");
            DialogBench::write(compiler, "#!/bin/sh\n" + p_script);
            QFile::setPermissions(compiler, QFile::ReadOwner | QFile::ExeOwner);
        }
        qputenv("PATH", QFile::encodeName(m_tools.path()));
    }
    ~OtherCompiler() { qputenv("PATH", m_before); }

    void link(const QString& p_tool) const
    {
        QFile::link(QStandardPaths::findExecutable(
                        p_tool, QFile::decodeName(m_before).split(QLatin1Char(':'))),
                    m_tools.filePath(p_tool));
    }
    void remove(const QString& p_tool) const { QFile::remove(m_tools.filePath(p_tool)); }

private:
    Q_DISABLE_COPY(OtherCompiler)

    QTemporaryDir m_tools;
    QByteArray m_before = qgetenv("PATH");
};

const QString broken = "void user_main()\n{\nno such thing;\n}\n";

} // namespace

/** What the real kit leaves behind, and what of it reaches the controller. */
class BuildDialogKitTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

    QByteArray onController() const { return DialogBench::read(m_bench->onController("car1.bin")); }

    void verifyOnlyTheOlderOneIsThere(const QByteArray& p_older)
    {
        QVERIFY(!QFile::exists(m_bench->compiledFile("car1")));
        QCOMPARE(onController(), p_older);
    }

private slots:
    void initTestCase()
    {
        m_bench = std::make_unique<DialogBench>();
        const QString kit = QCoreApplication::applicationDirPath() + "/gcc";
        QVERIFY(QDir(kit).removeRecursively());
        QCOMPARE(QProcess::execute("cp", {"-rp", qEnvironmentVariable("TILER_KIT"), kit}), 0);
        m_bench->buildToTheEnd("car1", program("the older one"));
        QVERIFY(onController().contains("the older one"));
    }

    void cleanupTestCase() { m_bench.reset(); }

    void aSecondBuildOfTheSameNameIsAllNew()
    {
        const int size = onController().size();
        QCOMPARE(DialogBench::read(m_bench->compiledFile("car1")), onController());
        m_bench->buildToTheEnd("car1", program("the newer one"));
        QVERIFY(onController().contains("the newer one"));
        QVERIFY(!onController().contains("the older one"));
        QCOMPARE(onController().size(), size);
    }

    void aProgramThatDoesNotCompileNeverGoesOutAsTheOlderOne()
    {
        m_bench->buildToTheEnd("car1", program("older"));
        const QByteArray older = onController();
        m_bench->buildUntil(compileFailed, broken);
        verifyOnlyTheOlderOneIsThere(older);
    }

    void anUnchangedProgramGoesOutAgainWithTheActionsOfNow()
    {
        m_bench->buildToTheEnd("car1", program("the same"));
        const QByteArray first = onController();
        const OtherCompiler none{QByteArray()};
        const auto dialog = m_bench->makeDialog();
        dialog->setFinishProgramFile([](const QString& p_path) {
            QFile file(p_path);
            QVERIFY(file.open(QIODevice::Append));
            file.write("other actions");
        });
        const Shown shown(*dialog);
        DialogBench::build(
            *dialog, "car2", 0, [&] { QTRY_COMPARE(shown.statusText(), downloaded); },
            program("the same"));
        QCOMPARE(DialogBench::read(m_bench->onController("car2.bin")),
                 first.chopped(DialogBench::appendedSize) + "other actions");
    }

    void whateverAProgramIsMadeFromCompilesItAgain_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("tasks");
        QTest::addColumn<QString>("touched");
        const QString same = program("the same");
        QTest::newRow("its text") << program("another") << 0 << QString();
        QTest::newRow("its last line") << same + "\nint one_more;\n" << 0 << QString();
        QTest::newRow("its number of tasks") << same << 1 << QString();
        QTest::newRow("the runtime") << same << 0 << "runtime/calls.c";
        QTest::newRow("the layout of the memory") << same << 0 << "runtime/controller.ld";
        QTest::newRow("the calls") << same << 0 << "example/vantrel.h";
        QTest::newRow("the rules") << same << 0 << "example/build/gcc/makefile";
    }

    void whateverAProgramIsMadeFromCompilesItAgain()
    {
        QFETCH(QString, source);
        QFETCH(int, tasks);
        QFETCH(QString, touched);
        m_bench->buildToTheEnd("car1", program("the same"));
        if (!touched.isEmpty()) {
            QFile file(QCoreApplication::applicationDirPath() + "/gcc/" + touched);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(
                file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime));
        }
        const OtherCompiler none{QByteArray()};
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        DialogBench::build(
            *dialog, "car1", tasks, [&] { QTRY_COMPARE(shown.statusText(), compileFailed); },
            source);
    }

    void aCompileGrowsNoFasterThanItsProgram()
    {
        // Processor time, so that it hardly matters what else runs: a real growth is that of the
        // square at least.
        const auto compileTime = [this](int p_lines) {
            QString lines;
            for (int i = 0; i < p_lines; ++i) {
                lines += QStringLiteral(
                             "for(int i = 0;i < 3; ++i)\n{\nset_motor(1, speed1);wait(%1);}\n")
                             .arg(i % 90);
            }
            const QString text = "#include \"vantrel.h\"\nvoid user_main()\n{\nint speed1 = 50;\n";
            rusage before{};
            getrusage(RUSAGE_CHILDREN, &before);
            m_bench->buildToTheEnd("car1", text + lines + "}\n");
            rusage after{};
            getrusage(RUSAGE_CHILDREN, &after);
            const auto seconds = [](const timeval& p_time) {
                return static_cast<double>(p_time.tv_sec) +
                       static_cast<double>(p_time.tv_usec) / 1e6;
            };
            return seconds(after.ru_utime) - seconds(before.ru_utime);
        };
        const double small = compileTime(300);
        const double large = compileTime(2400);
        QVERIFY2(large < 14 * small,
                 qPrintable(QStringLiteral("%1 s and %2 s").arg(small).arg(large)));
    }

    void aCompilerThatIsNotInstalledNeverSendsTheOlderOne()
    {
        m_bench->buildToTheEnd("car1", program("older"));
        const QByteArray older = onController();
        {
            const OtherCompiler none{QByteArray()};
            m_bench->buildUntil(compileFailed, program("newer"));
        }
        verifyOnlyTheOlderOneIsThere(older);

        m_bench->buildToTheEnd("car1", program("newer"));
        QVERIFY(onController().contains("newer"));
    }

    void whatTheSystemLacksIsTold_data()
    {
        QTest::addColumn<QStringList>("lacks");
        QTest::addColumn<QString>("packages");
        QTest::newRow("make") << QStringList{"make"} << "make";
        QTest::newRow("the compiler")
            << QStringList{"arm-none-eabi-gcc"} << "gcc-arm-none-eabi libnewlib-arm-none-eabi";
        QTest::newRow("the C library") << QStringList{"nano.specs"} << "libnewlib-arm-none-eabi";
        // The compiler's own message comes up again once the programs are there.
        QTest::newRow("a program besides the C library")
            << QStringList{"arm-none-eabi-objcopy"} << "binutils-arm-none-eabi";
        QTest::newRow("make and the compiler") << QStringList{"make", "arm-none-eabi-gcc"}
                                               << "make gcc-arm-none-eabi libnewlib-arm-none-eabi";
    }

    void whatTheSystemLacksIsTold()
    {
        QFETCH(QStringList, lacks);
        QFETCH(QString, packages);
        const OtherCompiler other("echo \"arm-none-eabi-gcc: fatal error: cannot read spec file "
                                  "'nano.specs'\" >&2\nexit 1\n");
        other.link("arm-none-eabi-objcopy");
        for (const QString& tool : lacks) {
            other.remove(tool);
        }
        m_bench->build(program("another one for each: " + lacks.join(' ')), [&] {
            QTRY_COMPARE(m_bench->shown().statusText(), compileFailed);
            for (const QString& tool : lacks) {
                QVERIFY2(m_bench->shown().reasonText().contains(tool),
                         qPrintable(m_bench->shown().reasonText()));
            }
            QVERIFY2(m_bench->shown().reasonText().endsWith("\nsudo apt install " + packages),
                     qPrintable(m_bench->shown().reasonText()));
        });
    }

    void aMistakeOfTheProgramIsNotLaidOnTheSystem()
    {
        m_bench->build(broken, [&] {
            QTRY_COMPARE(m_bench->shown().statusText(), compileFailed);
            QCOMPARE(m_bench->shown().reasonText(), QString());
        });
    }

    void aBuildThatWasCancelledLeavesNothingForTheNext()
    {
        m_bench->buildToTheEnd("car1", program("older"));
        const QByteArray older = onController();
        {
            const OtherCompiler hanging("sleep 600\n");
            const auto dialog = m_bench->makeDialog();
            DialogBench::build(
                *dialog, "car1", 0,
                [&] {
                    // The older one goes first of all.
                    QTRY_VERIFY(!QFile::exists(m_bench->compiledFile("car1")));
                    QTest::keyClick(dialog.get(), Qt::Key_Escape);
                },
                program("newer"));
        }
        QCOMPARE(onController(), older);
        m_bench->buildToTheEnd("car1", program("newer"));
        QVERIFY(onController().contains("newer"));
        QCOMPARE(onController(), DialogBench::read(m_bench->compiledFile("car1")));
    }
};

QTEST_MAIN(BuildDialogKitTest)
#include "builddialogkittest.moc"
