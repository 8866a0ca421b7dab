#include "probedprogram.h"

#include <QRegularExpression>
#include <QTest>

/** The command line of the real program: what it answers, what it refuses and what it opens. */
class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void aQuestionOrAMistakeEndsTheProgram_data();
    void aQuestionOrAMistakeEndsTheProgram();
    void withoutADisplayTheProgramSaysSo();
    void theWindowOpens_data();
    void theWindowOpens();
    void aMissingProjectIsAskedAboutAndTheProgramGoesOn();

private:
    /** The environment with or without a display. */
    QProcessEnvironment environment(bool p_display) const;

    /** For the user alone, as the graphics library wants it, or it complains. */
    QTemporaryDir m_runtime;
};

namespace
{
const char* const s_untitled = "Tiler v1.1.2 2020-12-17:  untitled[*]";

/** With the ends of lines that Windows writes made alike. */
QString textOf(const QByteArray& p_output)
{
    return QString::fromUtf8(p_output).remove(QLatin1Char('\r'));
}
} // namespace

QProcessEnvironment CommandLineTest::environment(bool p_display) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name :
         {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XDG_SESSION_TYPE", "QT_QPA_PLATFORM"}) {
        environment.remove(QLatin1String(name));
    }
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
    if (p_display) {
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    }
    return environment;
}

void CommandLineTest::aQuestionOrAMistakeEndsTheProgram_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("error");
    const QString usage = QStringLiteral("^Usage: \\S*vantrel(\\.exe)? \\[options\\]\\n(.*\\n)*"
                                         "  (-\\?, )?-h, --help +\\S.*\\n(.*\\n)*"
                                         "  -v, --version +\\S.*\\n(.*\\n)*"
                                         "  --loglevel <loglevel> +log level "
                                         "\\[trace,debug,info,warning,error,fatal\\]\\n$");
    const QString version = QStringLiteral("^Tiler 1\\.1\\.2\\n$");
    const QString nothing = QStringLiteral("^$");
    const auto row = [](const QString& p_arguments, int p_exitCode, const QString& p_output,
                        const QString& p_error) {
        QTest::newRow(qPrintable(p_arguments))
            << p_arguments.split(QLatin1Char(' ')) << p_exitCode << p_output << p_error;
    };
    row(QStringLiteral("--help"), 0, usage, nothing);
    row(QStringLiteral("-h"), 0, usage, nothing);
    row(QStringLiteral("--loglevel=debug --help"), 0, usage, nothing);
    row(QStringLiteral("--version"), 0, version, nothing);
    row(QStringLiteral("-v"), 0, version, nothing);
    row(QStringLiteral("a.tlrx -v"), 0, version, nothing);
    row(QStringLiteral("--nonsense"), 1, nothing,
        QStringLiteral("^vantrel: Unknown option 'nonsense'\\.\\n$"));
    row(QStringLiteral("--help --nonsense"), 1, nothing,
        QStringLiteral("^vantrel: Unknown option 'nonsense'\\.\\n$"));
    row(QStringLiteral("-x"), 1, nothing, QStringLiteral("^vantrel: Unknown option 'x'\\.\\n$"));
    row(QStringLiteral("--loglevel"), 1, nothing,
        QStringLiteral("^vantrel: Missing value after '--loglevel'\\.\\n$"));
    row(QStringLiteral("--version=2"), 1, nothing,
        QStringLiteral("^vantrel: Unexpected value after '--version'\\.\\n$"));
}

void CommandLineTest::aQuestionOrAMistakeEndsTheProgram()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, output);
    QFETCH(QString, error);
    for (const bool display : {true, false}) {
        QProcess process;
        process.setProcessEnvironment(environment(display));
        process.start(qEnvironmentVariable("TILER_PROGRAM"), arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), exitCode);
        const QString told = textOf(process.readAllStandardOutput());
        const QString complaint = textOf(process.readAllStandardError());
        QVERIFY2(QRegularExpression(output).match(told).hasMatch(), qPrintable(told));
        QVERIFY2(QRegularExpression(error).match(complaint).hasMatch(), qPrintable(complaint));
    }
}

void CommandLineTest::withoutADisplayTheProgramSaysSo()
{
#ifdef Q_OS_WIN
    QSKIP("Windows always has a display");
#endif
    QProcess process;
    process.setProcessEnvironment(environment(false));
    process.start(qEnvironmentVariable("TILER_PROGRAM"), QStringList());
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QCOMPARE(process.readAllStandardError(),
             QByteArray("vantrel: There is no display to open the window on.\n"));
}

void CommandLineTest::theWindowOpens_data()
{
    QTest::addColumn<bool>("display");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("title");
    const QString untitled = QString::fromUtf8(s_untitled);
    const QString project = qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx");
    const QString titled = QStringLiteral("Tiler v1.1.2 2020-12-17:  %1[*]").arg(project);
    QTest::newRow("no argument") << true << QStringList() << untitled;
    QTest::newRow("a project") << true << QStringList{project} << titled;
    QTest::newRow("a project and a level")
        << true << QStringList{project, QStringLiteral("--loglevel=debug")} << titled;
    // The first argument is always taken for a path, and one of no known kind is not opened.
    QTest::newRow("a level first")
        << true << QStringList{QStringLiteral("--loglevel=debug")} << untitled;
    QTest::newRow("a level first, then a project")
        << true << QStringList{QStringLiteral("--loglevel=debug"), project} << untitled;
    QTest::newRow("a level in two arguments")
        << true << QStringList{QStringLiteral("--loglevel"), QStringLiteral("--help")} << untitled;
    QTest::newRow("a name behind the options")
        << true << QStringList{QStringLiteral("--"), QStringLiteral("--help")} << untitled;
    QTest::newRow("a platform of its own choice")
        << false << QStringList{QStringLiteral("-platform"), QStringLiteral("offscreen")}
        << untitled;
    QTest::newRow("an option of the graphics library")
        << true << QStringList{QStringLiteral("-stylesheet"), QStringLiteral("none.qss")}
        << untitled;
}

void CommandLineTest::theWindowOpens()
{
    QFETCH(bool, display);
    QFETCH(QStringList, arguments);
    QFETCH(QString, title);
    ProbedProgram program(environment(display));
    QVERIFY2(program.run(arguments), qPrintable(program.story()));
    const QList<QJsonObject> windows = program.visibleWindows();
    QCOMPARE(windows.size(), 1);
    QCOMPARE(windows.first()[QStringLiteral("windowTitle")].toString(), title);
}

void CommandLineTest::aMissingProjectIsAskedAboutAndTheProgramGoesOn()
{
    // Only the end of an argument tells a project.
    ProbedProgram program(environment(true));
    QVERIFY2(program.run({QStringLiteral("--loglevel=debug.tlrx")}), qPrintable(program.story()));
    QStringList titles;
    for (const QJsonObject& window : program.visibleWindows()) {
        titles << window[QStringLiteral("windowTitle")].toString();
    }
    titles.sort();
    QCOMPARE(titles, (QStringList{QStringLiteral("Info"), QString::fromUtf8(s_untitled)}));
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "commandlinetest.moc"
