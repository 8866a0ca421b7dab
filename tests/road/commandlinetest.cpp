#include "support/probe/probedprogram.h"

#include <QDir>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

namespace
{
const char* const s_untitled = "Tiler v1.1.2 2020-12-17:  untitled[*]";
const QString s_offscreen = QStringLiteral("QT_QPA_PLATFORM=offscreen");
const QString s_none;
const QString s_dead = QStringLiteral("DISPLAY=:4321");
const QString s_named = QStringLiteral("QT_QPA_PLATFORM=xcb");

QStringList words(const char* p_text) { return QString(p_text).split(QLatin1Char(' ')); }

/** With the ends of lines that Windows writes made alike. */
QString textOf(const QByteArray& p_output)
{
    return QString::fromUtf8(p_output).remove(QLatin1Char('\r'));
}
} // namespace

/** The command line of the real program: what it answers, what it refuses and what it opens. */
class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void aQuestionOrAMistakeEndsTheProgram_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("error");
        const QString usage = QStringLiteral("^Usage: .*vantrel(\\.exe)? \\[options\\]\\n(.*\\n)*"
                                             "  (-\\?, )?-h, --help +\\S.*\\n(.*\\n)*"
                                             "  -v, --version +\\S.*\\n(.*\\n)*"
                                             "  --loglevel <loglevel> +log level "
                                             "\\[trace,debug,info,warning,error,fatal\\]\\n$");
        const QString version = QStringLiteral("^Tiler 1\\.1\\.2\\n$");
        const auto answered = [](const QByteArray& p_arguments, const QString& p_output) {
            QTest::newRow(p_arguments)
                << words(p_arguments) << 0 << p_output << QStringLiteral("^$");
        };
        const auto refused = [](const QByteArray& p_arguments, const QString& p_complaint) {
            QTest::newRow(p_arguments) << words(p_arguments) << 1 << QStringLiteral("^$")
                                       << QStringLiteral("^vantrel: %1\\.\\n$").arg(p_complaint);
        };
        const QString nonsense = QStringLiteral("Unknown option 'nonsense'");
        answered("--help", usage);
        answered("-h", usage);
        answered("--loglevel=debug --help", usage);
        answered(
            "--help-all",
            QStringLiteral("^Usage: .*\\n(.*\\n)*  --help-all +\\S.*\\n(.*\\n)*"
                           "  --loglevel <loglevel> +log level(.*\\n)*  --platform <(.*\\n)*"));
        answered("--version", version);
        answered("-v", version);
        answered("a.tlrx -v", version);
        refused("--nonsense", nonsense);
        refused("--help --nonsense", nonsense);
        refused("-x", "Unknown option 'x'");
        refused("--loglevel", "Missing value after '--loglevel'");
        refused("--version=2", "Unexpected value after '--version'");
        // Next to options of the graphics library, and in the place of their values.
        answered("-platform offscreen --version", version);
        answered("--style=fusion --version", version);
        refused("--style fusion --nonsense -reverse", nonsense);
        refused("-reverse --nonsense", nonsense);
        refused("-platform=x", "Unknown options: p, l, a, t, f, o, r, m, =, x");
        refused("reverse --nonsense", nonsense);
        refused("xtitle --nonsense", nonsense);
        // Values that look like options.
        for (const char* option :
             {"--loglevel -x", "--loglevel --help", "--loglevel=-x", "--loglevel=--help",
              "--style -x", "-style=--nonsense", "-stylesheet --help", "--stylesheet=-h",
              "-platform --nonsense", "-plugin -x", "-qmljsdebugger --nonsense",
              "-qmljsdebugger=-x", "-qwindowgeometry -100-100", "-qwindowtitle -v",
              "--session --help"}) {
            answered(QByteArray(option) + " --version", version);
            refused(QByteArray(option) + " --nonsense", nonsense);
        }
    }

    void aQuestionOrAMistakeEndsTheProgram()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, output);
        QFETCH(QString, error);
        for (const QString& display : {s_offscreen, s_none, s_dead, s_named}) {
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

    void withoutADisplayTheProgramSaysSo_data()
    {
        QTest::addColumn<QString>("display");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << s_none << QStringList();
        QTest::newRow("nobody answers") << s_dead << QStringList();
        QTest::newRow("a platform, but no display") << s_named << QStringList();
        QTest::newRow("no such platform") << s_offscreen << QStringList{"-platform", "none"};
    }

    void withoutADisplayTheProgramSaysSo()
    {
#ifdef Q_OS_WIN
        QSKIP("Windows always has a display");
#endif
        QFETCH(QString, display);
        QFETCH(QStringList, arguments);
        QProcess process;
        process.setProcessEnvironment(environment(display));
        process.start(qEnvironmentVariable("TILER_PROGRAM"), arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
        // In front of that stands what the graphics library tells of the cause, and no more.
        QByteArrayList lines = process.readAllStandardError().split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        QCOMPARE(lines.takeLast(),
                 QByteArray("vantrel: No window can be opened. Is there a display?"));
        QVERIFY(!lines.isEmpty());
        for (const QByteArray& line : lines) {
            QVERIFY2(line.startsWith("qt.qpa."), line);
        }
    }

    void theWindowOpens_data()
    {
        QTest::addColumn<QString>("display");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("title");
        const QString untitled = QString::fromUtf8(s_untitled);
        const QString project =
            qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx");
        const QString titled = QStringLiteral("Tiler v1.1.2 2020-12-17:  %1[*]").arg(project);
        const QString plugins = QLibraryInfo::location(QLibraryInfo::PluginsPath);
        const auto row = [](const char* p_name, const QString& p_display,
                            const QStringList& p_arguments, const QString& p_title) {
            QTest::newRow(p_name) << p_display << p_arguments << p_title;
        };
        row("no argument", s_offscreen, {}, untitled);
        row("a project", s_offscreen, {project}, titled);
        row("a project and a level", s_offscreen, {project, "--loglevel=debug"}, titled);
        // The first argument is always taken for a path, and one of no known kind is not opened.
        row("a level first", s_offscreen, {"--loglevel=debug"}, untitled);
        row("a level first, then a project", s_offscreen, {"--loglevel=debug", project}, untitled);
        row("a level in two arguments", s_offscreen, {"--loglevel", "--help"}, untitled);
        row("a level that asks for the version", s_offscreen, {"--loglevel", "-v"}, untitled);
        row("a level of hyphens", s_offscreen, {"--loglevel", "--"}, untitled);
        row("a title that asks for the version", s_offscreen, {"-qwindowtitle", "-v"}, untitled);
        row("a name behind the options", s_offscreen, {"--", "--help"}, untitled);
        row("a platform where there is no display", s_none, {"-platform", "offscreen"}, untitled);
        row("a platform where the display is dead", s_dead,
            {project, "--platform", "offscreen", "--loglevel=debug"}, titled);
        row("a style", s_offscreen, {"-style", "fusion"}, untitled);
        // The folder for plugins must hold them, or the window doesn't open.
        row("all options of the graphics library", s_dead,
            words("-platform offscreen --style=fusion -stylesheet=none.qss --stylesheet none.qss") +
                QStringList{"-platformpluginpath", plugins + "/platforms"} +
                words("-platformtheme none -plugin none -qmljsdebugger=port:1"
                      " -qmljsdebugger port:1 -qwindowgeometry 800x600 -qwindowicon none.png"
                      " -qwindowtitle --nonsense -reverse -session --help -testability"
                      " --widgetcount"),
            untitled);
    }

    void theWindowOpens()
    {
        QFETCH(QString, display);
        QFETCH(QStringList, arguments);
        QFETCH(QString, title);
        ProbedProgram program(environment(display));
        QVERIFY2(program.run(arguments), qPrintable(program.story()));
        const QList<QJsonObject> windows = program.visibleWindows();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows.first()[QStringLiteral("windowTitle")].toString(), title);
        QVERIFY(windows.first()[QStringLiteral("maximized")].toBool());
    }

    void aRelativePathIsMadeAbsolute()
    {
        const QString before = QDir::currentPath();
        const QString folder = qEnvironmentVariable("TILER_EXAMPLES");
        QVERIFY(QDir::setCurrent(folder));
        const QString inside = QStringLiteral("../%1/./square.tlrx").arg(QDir(folder).dirName());
        for (const QString& path : {QStringLiteral("square.tlrx"), inside}) {
            ProbedProgram program(environment(s_offscreen));
            QVERIFY2(program.run({path}), qPrintable(program.story()));
            QCOMPARE(program.visibleWindows().size(), 1);
            QCOMPARE(program.visibleWindows().first()[QStringLiteral("windowTitle")].toString(),
                     QStringLiteral("Tiler v1.1.2 2020-12-17:  %1/square.tlrx[*]").arg(folder));
        }
        QVERIFY(QDir::setCurrent(before));
    }

    void theWindowOpensOnADisplayThatAnOptionNames()
    {
        QProcess server;
        const QString screen = startScreen(server);
        if (screen.isEmpty()) {
            QSKIP("no virtual display is installed");
        }
        ProbedProgram program(environment(s_dead));
        const bool ran = program.run(
            QStringList{"-display", screen} +
            words("-geometry 800x600 -name --nonsense -title --nonsense -icon none.png -nograb"
                  " -dograb"));
        server.kill();
        server.waitForFinished();
        QVERIFY2(ran, qPrintable(program.story()));
        QCOMPARE(program.visibleWindows().size(), 1);
    }

    void openGlIsLoadedForThoseAloneWhoAskForIt()
    {
        QProcess server;
        const QString screen = startScreen(server);
        if (screen.isEmpty()) {
            QSKIP("no virtual display is installed");
        }
        // Asked for is one that there isn't: what a real one leaves behind in memory is no leak of
        // ours.
        const QString own = QStringLiteral("own");
        QProcessEnvironment surroundings = environment(QStringLiteral("DISPLAY=") + screen);
        surroundings.remove(QStringLiteral("QT_XCB_GL_INTEGRATION"));
        ProbedProgram usual(surroundings);
        surroundings.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), own);
        ProbedProgram asked(surroundings);
        const bool usualRan = usual.run({});
        const bool askedRan = asked.run({});
        server.kill();
        server.waitForFinished();
        QVERIFY2(usualRan, qPrintable(usual.story()));
        QVERIFY2(askedRan, qPrintable(asked.story()));
        QCOMPARE(usual.glIntegration(), QStringLiteral("none"));
        QCOMPARE(asked.glIntegration(), own);
        const QStringList libraries = usual.libraries();
        QVERIFY(!libraries.filter(QStringLiteral("libqxcb.so")).isEmpty());
        for (const char* name : {"libqxcb-glx-integration", "libqxcb-egl-integration", "libGLX_",
                                 "libEGL_", "libgallium", "swrast_dri", "libLLVM"}) {
            QVERIFY2(libraries.filter(QLatin1String(name)).isEmpty(), name);
        }
    }

    void aMissingProjectIsAskedAboutAndTheProgramGoesOn()
    {
        // Only the end of an argument tells a project.
        ProbedProgram program(environment(s_offscreen));
        QVERIFY2(program.run({QStringLiteral("--loglevel=debug.tlrx")}),
                 qPrintable(program.story()));
        QStringList titles;
        for (const QJsonObject& window : program.visibleWindows()) {
            titles << window[QStringLiteral("windowTitle")].toString();
        }
        titles.sort();
        QCOMPARE(titles, (QStringList{"Info", QString::fromUtf8(s_untitled)}));
    }

private:
    /** Starts a virtual display and returns its name; empty where there is none to start. */
    static QString startScreen(QProcess& p_server)
    {
        const QString server = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
        if (server.isEmpty()) {
            return QString();
        }
        p_server.start(server, {QStringLiteral("-displayfd"), QStringLiteral("1")});
        return p_server.waitForReadyRead(30000)
                   ? QLatin1Char(':') + QString::fromLatin1(p_server.readLine()).trimmed()
                   : QString();
    }

    /** The environment with a display or none, by "NAME=value". */
    QProcessEnvironment environment(const QString& p_display) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XDG_SESSION_TYPE",
                                 "QT_QPA_PLATFORM"}) {
            environment.remove(QLatin1String(name));
        }
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
        if (!p_display.isEmpty()) {
            environment.insert(p_display.section(QLatin1Char('='), 0, 0),
                               p_display.section(QLatin1Char('='), 1));
        }
        return environment;
    }

    /** For the user alone, as the graphics library wants it, or it complains. */
    QTemporaryDir m_runtime;
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "commandlinetest.moc"
