#include "dialogbench.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

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
        for (const char* tool : {"make", "sh", "mkdir", "rm", "mv", "sleep"}) {
            QFile::link(QStandardPaths::findExecutable(tool), m_tools.filePath(tool));
        }
        if (!p_script.isEmpty()) {
            const QString compiler = m_tools.filePath("arm-none-eabi-gcc");
            DialogBench::write(compiler, "#!/bin/sh\n" + p_script);
            QFile::setPermissions(compiler, QFile::ReadOwner | QFile::ExeOwner);
        }
        qputenv("PATH", QFile::encodeName(m_tools.path()));
    }
    ~OtherCompiler() { qputenv("PATH", m_before); }

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

    void compileFails(const QString& p_source)
    {
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        DialogBench::build(
            *dialog, "car1", 0,
            [&] {
                QVERIFY(DialogBench::runUntil([&] { return shown.statusText() == compileFailed; }));
            },
            p_source);
    }

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
        QCOMPARE(QProcess::execute("cp", {"-r", qEnvironmentVariable("TILER_KIT"), kit}), 0);
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
        compileFails(broken);
        verifyOnlyTheOlderOneIsThere(older);
    }

    void aCompilerThatIsNotInstalledNeverSendsTheOlderOne()
    {
        m_bench->buildToTheEnd("car1", program("older"));
        const QByteArray older = onController();
        {
            const OtherCompiler none{QByteArray()};
            compileFails(program("newer"));
        }
        verifyOnlyTheOlderOneIsThere(older);

        m_bench->buildToTheEnd("car1", program("newer"));
        QVERIFY(onController().contains("newer"));
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
