#include "logging/logsetup.h"
#include "logging/consoleappender.h"
#include "logging/fileappender.h"
#include "loghelpers.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

namespace
{
constexpr const char* s_level = "--level=";
constexpr const char* s_fatal = "--fatal";
constexpr const char* s_ends = "--ends";

// Speaks after everything is taken down, and before anything is set up if it is told to. Then the
// data that Qt's messages need is older than the talker, and outlives it; else it is gone first.
class Talker
{
public:
    Talker()
    {
        if (std::getenv("TALK_EARLY")) {
            qWarning("early");
        }
    }
    ~Talker()
    {
        if (std::getenv("TALK_LATE")) {
            qWarning("late");
            Logger::globalInstance().write(LogLevel::Error, LogPlace(),
                                           QString::fromUtf8("last 再见"));
        }
    }
    Q_DISABLE_COPY(Talker)
};
const Talker s_talker;

void sayAllLevels()
{
    Logger::globalInstance().write(LogLevel::Trace, LOG_HERE, QStringLiteral("trace line"));
    qDebug("debug line");
    qInfo("info line");
    qWarning("warning line");
    qCritical("error line");
}
} // namespace

/** The set-up of the log, as whole processes show it. */
class LogSetUpTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Not what whoever runs the tests has in mind about messages.
        qunsetenv("QT_LOGGING_RULES");
    }

    void init()
    {
        QDir(folder()).removeRecursively();
        QFile::remove(folder());
    }

    void theLevelDecidesWhatTheFileGets_data()
    {
        QTest::addColumn<QByteArray>("option");
        QTest::addColumn<int>("dropped");
        const auto row = [](const char* p_option, int p_dropped) {
            QTest::newRow(p_option) << QByteArray(p_option) << p_dropped;
        };
        row("trace", 0);
        row("debug", 1);
        row("info", 2);
        row("warning", 3);
        row("error", 4);
        row("fatal", 5);
        row("", 2);
        row(" DEBUG\t", 1);
        row(" Warning ", 3);
        row("nonsense", 1);
        row(" ", 1);
    }

    void theLevelDecidesWhatTheFileGets()
    {
        QFETCH(QByteArray, option);
        QFETCH(int, dropped);
        const QByteArray said = run(s_level + option);
        QByteArrayList expected{"[Trace  ] <{anonymous}::sayAllLevels> trace line\n",
                                "[Debug  ] <{anonymous}::sayAllLevels> debug line\n",
                                "[Info   ] <{anonymous}::sayAllLevels> info line\n",
                                "[Warning] <{anonymous}::sayAllLevels> warning line\n",
                                "[Error  ] <{anonymous}::sayAllLevels> error line\n"};
#ifdef __clang__
        for (QByteArray& line : expected) {
            line.replace("{anonymous}", "(anonymous namespace)");
        }
#endif
        // The console has a level of its own.
        QCOMPARE(said, expected.mid(1).join());
        if (dropped < expected.size()) {
            QCOMPARE(contentOf(file()), expected.mid(dropped).join());
        } else {
            QVERIFY(!QFile::exists(file()));
        }
    }

    void eachLineHasItsLevelFunctionAndText()
    {
        setUpLog(QStringLiteral("trace"));
        Logger::globalInstance().write(LogLevel::Error, {nullptr, 0, "void Tree<int>::grow(int)"},
                                       QString::fromUtf8("错误"));
        Logger::globalInstance().removeAppenders();
        QCOMPARE(contentOf(file()), QByteArray("[Error  ] <Tree::grow> 错误\n"));
    }

    void aSecondStartRemovesTheFirstLog()
    {
        run("--level=trace");
        QVERIFY(contentOf(file()).contains("trace line"));
        QFile other(folder() + QStringLiteral("/other.txt"));
        QVERIFY(other.open(QIODevice::WriteOnly));
        run("--level=error");
        QVERIFY(contentOf(file()).endsWith("error line\n"));
        QCOMPARE(contentOf(file()).count('\n'), 1);
        // A run that logs nothing leaves no old log either.
        run("--level=fatal");
        QVERIFY(!QFile::exists(file()));
        QVERIFY(other.exists());
    }

    void whatStandsInTheWayDoesNoHarm_data()
    {
        QTest::addColumn<bool>("isFolder");
        QTest::newRow("a folder in place of the file") << true;
        QTest::newRow("a file in place of the folder") << false;
    }

    void whatStandsInTheWayDoesNoHarm()
    {
        QFETCH(bool, isFolder);
        if (isFolder) {
            QVERIFY(QDir().mkpath(file()));
        } else {
            putFile(folder(), QByteArray());
        }
        const QByteArray said = run("--level=debug");
        QCOMPARE(
            said.count("<FileAppender::append> Cannot open the log file " + file().toLocal8Bit()),
            1);
        QVERIFY2(said.endsWith("error line\n"), said);
        QVERIFY(isFolder ? QFileInfo(file()).isDir() : contentOf(folder()).isEmpty());
    }

    void aFatalMessageIsWrittenAndEndsTheProgram_data()
    {
        QTest::addColumn<QString>("level");
        QTest::newRow("info") << QString();
        QTest::newRow("fatal") << QStringLiteral("fatal");
    }

    void aFatalMessageIsWrittenAndEndsTheProgram()
    {
        QFETCH(QString, level);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {QLatin1String(s_fatal), level});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(contentOf(file()), QByteArray("[Fatal  ] <main> 再见\n"));
        QVERIFY(process.readAllStandardError().contains("[Fatal  ] <main> 再见\n"));
    }

    void debugMessagesComeWhereTheSystemTurnsThemOff()
    {
        const QTemporaryDir system;
        QVERIFY(QDir(system.path()).mkpath(QStringLiteral("QtProject")));
        putFile(system.filePath(QStringLiteral("QtProject/qtlogging.ini")),
                "[Rules]\n*.debug=false\n");
        run("--level=debug", {{QStringLiteral("XDG_CONFIG_HOME"), system.path()}});
        QVERIFY(contentOf(file()).contains("debug line"));
    }

    void theEnvironmentHasTheLastWord()
    {
        const QByteArray said =
            run("--level=trace",
                {{QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.debug=false")}});
        QVERIFY(contentOf(file()).contains("info line"));
        QVERIFY(!contentOf(file()).contains("debug line"));
        QVERIFY(!said.contains("debug line"));
    }

    void earlyAndLateMessagesAreSafe_data()
    {
        QTest::addColumn<bool>("early");
        QTest::newRow("early and late") << true;
        QTest::newRow("late alone") << false;
    }

    void earlyAndLateMessagesAreSafe()
    {
        QFETCH(bool, early);
        QHash<QString, QString> environment{
            {QStringLiteral("TALK_LATE"), QStringLiteral("1")},
            {QStringLiteral("QT_MESSAGE_PATTERN"), QString()},
            // Memory that has been given back is overwritten, so that nobody gets away with using
            // it.
            {QStringLiteral("MALLOC_PERTURB_"), QStringLiteral("165")},
            {QStringLiteral("ASAN_OPTIONS"),
             qEnvironmentVariable("ASAN_OPTIONS") + QStringLiteral(":max_free_fill_size=65536")}};
        if (early) {
            environment.insert(QStringLiteral("TALK_EARLY"), QStringLiteral("1"));
        }
        const QByteArray said = run(s_ends, environment);
        const QByteArray log = contentOf(file());
        QCOMPARE(log, QByteArray("[Info   ] <main> at the end of main\n"
                                 "[Warning] <Ending::~Ending> in a destructor\n"));
        // What comes before and after that is left to the error stream, in Qt's own form.
        QCOMPARE(said, (early ? QByteArray("early\n") : QByteArray()) + log + "late\nlast 再见\n");
    }

    void aLostErrorStreamDoesNoHarm()
    {
        QProcess process;
        process.start(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"),
             QStringLiteral("{ sleep 0.2; \"$0\" --level=trace 2>&1; echo $? >&2; } | true"),
             QCoreApplication::applicationFilePath()});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.readAllStandardError(), QByteArray("0\n"));
        QVERIFY(contentOf(file()).endsWith("error line\n"));
    }

private:
    static QString folder()
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/log");
    }
    static QString file() { return folder() + QStringLiteral("/app-log.txt"); }
    /** Runs in a process of its own; what that said on its error stream. */
    static QByteArray run(const char* p_argument,
                          const QHash<QString, QString>& p_environment = {});
};

QByteArray LogSetUpTest::run(const char* p_argument, const QHash<QString, QString>& p_environment)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto each = p_environment.begin(); each != p_environment.end(); ++each) {
        environment.insert(each.key(), each.value());
    }
    process.setProcessEnvironment(environment);
    runAgain(process, p_argument);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return "the program failed";
    }
    return process.readAllStandardError();
}

/** Speaks when the application object is gone. */
struct Ending {
    Ending() = default;
    ~Ending() { qWarning("in a destructor"); }
    Q_DISABLE_COPY(Ending)
};

int main(int argc, char** argv)
{
    const QString mode = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    if (mode == QLatin1String(s_ends)) {
        const Ending ending;
        QCoreApplication application(argc, argv);
        setUpLog(QStringLiteral("trace"));
        qInfo("at the end of main");
        return 0;
    }
    QCoreApplication application(argc, argv);
    if (mode.startsWith(QLatin1String(s_level))) {
        setUpLog(mode.mid(static_cast<int>(qstrlen(s_level))));
        sayAllLevels();
        return 0;
    }
    if (mode == QLatin1String(s_fatal)) {
        setUpLog(QCoreApplication::arguments().value(2));
        qFatal("再见");
    }
    LogSetUpTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "logsetuptest.moc"
