#include "support/system/files.h"
#include "support/system/smalldisk.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <unistd.h>

#include <cstdio>

namespace
{
const QString s_linked = QStringLiteral("supermodule::appendModule");
// What the project's file gives to tell that it has been opened: the last block that is linked.
constexpr int s_links = 4;
} // namespace

/** The log of the program itself, in an installation of its own. */
class LogProgramTest : public QObject
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
        m_dir = std::make_unique<QTemporaryDir>();
        m_folder = m_dir->filePath(QString::fromUtf8("安装 目录"));
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_PROGRAM"), installed("vantrel")));
        // Its path is one in every code page, wherever the examples lie.
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx"),
                            project()));
    }

    void theLogBeginsWithTheBanner()
    {
        QProcess process;
        start(process);
        QVERIFY(stop(process));
        const QStringList forms{
            "Starting Tiler version 1\\.1\\.2",
            "Windows version \\d+",
            QStringLiteral("number of logical cores = %1").arg(QThread::idealThreadCount()),
            "locale = QLocale\\(.+\\)",
            QStringLiteral("install dir = ") + QRegularExpression::escape(m_folder),
            "device pixel ratio = 1"};
        const QStringList lines = log();
        QVERIFY2(lines.size() >= forms.size(), qPrintable(lines.join(QLatin1Char('\n'))));
        for (int i = 0; i < forms.size(); ++i) {
            const QRegularExpression form(QRegularExpression::anchoredPattern(
                QStringLiteral("\\[Info   \\] <[^ ]*writeBanner> ") + forms.at(i)));
            QVERIFY2(form.match(lines.at(i)).hasMatch(), qPrintable(lines.at(i)));
        }
    }

    void theBannerTellsTheFolderInAnotherCodePage()
    {
        // "安装" in GB 18030, which is no name in UTF-8; the test itself gets there by a link.
        const QByteArray folder = QFile::encodeName(m_dir->path()) + "/\xb0\xb2\xd7\xb0";
        const QString link = m_dir->filePath(QStringLiteral("link"));
        QVERIFY(std::rename(QFile::encodeName(m_folder), folder) == 0);
        const auto back = qScopeGuard(
            [folder, name = m_folder] { std::rename(folder, QFile::encodeName(name)); });
        QVERIFY(symlink(folder, QFile::encodeName(link)) == 0);
        m_folder = link;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // By its name: the loader takes a blank in a path for the end of it.
        const QFileInfo codePage(qEnvironmentVariable("TILER_CHINESE_CODE_PAGE"));
        environment.insert(QStringLiteral("LD_PRELOAD"), codePage.fileName());
        environment.insert(QStringLiteral("LD_LIBRARY_PATH"),
                           codePage.path() + QLatin1Char(':') +
                               environment.value(QStringLiteral("LD_LIBRARY_PATH")));
        // The address sanitizer wants to be the first library, but can do with less.
        environment.insert(QStringLiteral("ASAN_OPTIONS"),
                           qEnvironmentVariable("ASAN_OPTIONS") +
                               QStringLiteral(":verify_asan_link_order=0"));
        QProcess process;
        process.setProcessEnvironment(environment);
        start(process);
        QVERIFY(stop(process));
        const QStringList told = log().filter(QStringLiteral("> install dir = "));
        QCOMPARE(told.size(), 1);
        QVERIFY2(
            told.first().endsWith(QLatin1Char(' ') + m_dir->path() + QString::fromUtf8("/安装")),
            qPrintable(told.first()));
    }

    void theLevelDecidesWhatIsKept_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("debug");
        QTest::addColumn<bool>("info");
        const auto option = [](const char* p_level) {
            return QStringList(QStringLiteral("--loglevel=") + QLatin1String(p_level));
        };
        QTest::newRow("none") << QStringList() << false << true;
        QTest::newRow("empty") << option("") << false << true;
        QTest::newRow("debug") << option("debug") << true << true;
        QTest::newRow("DEBUG") << option("DEBUG") << true << true;
        QTest::newRow("in two words") << QStringList{"--loglevel", "Trace"} << true << true;
        QTest::newRow("warning") << option("warning") << false << false;
        QTest::newRow("nonsense") << option("nonsense") << true << true;
    }

    void theLevelDecidesWhatIsKept()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, debug);
        QFETCH(bool, info);
        QProcess process;
        start(process, arguments);
        QVERIFY(stop(process));
        const QStringList debugLines = log().filter(QStringLiteral("[Debug  ] <supermodule::"));
        QCOMPARE(debugLines.filter(s_linked).size() >= s_links, debug);
        QCOMPARE(debugLines.isEmpty(), !debug);
        QCOMPARE(log().filter(QStringLiteral("[Info   ] ")).size() >= 6, info);
        QCOMPARE(log().filter(QStringLiteral("Starting Tiler version")).size(), info ? 1 : 0);
    }

    void aSecondStartBeginsANewLog()
    {
        QProcess first;
        start(first, {QStringLiteral("--loglevel=debug")});
        QVERIFY(stop(first));
        QVERIFY(!log().filter(s_linked).isEmpty());
        QProcess second;
        start(second);
        QVERIFY(stop(second));
        QVERIFY(log().filter(s_linked).isEmpty());
        QCOMPARE(log().filter(QStringLiteral("Starting Tiler version")).size(), 1);
        QCOMPARE(QDir(installed("log")).entryList(QDir::Files), QStringList("app-log.txt"));
    }

    void twoAtOnceGetOn()
    {
        QProcess first;
        start(first, {QStringLiteral("--loglevel=debug")});
        QProcess second;
        start(second);
        QVERIFY(stop(first));
        QVERIFY(stop(second));
        // The log is that of the later one.
        QCOMPARE(log().filter(QStringLiteral("Starting Tiler version")).size(), 1);
        QVERIFY(log().filter(s_linked).isEmpty());
    }

    void anInstallationThatCantBeWrittenToDoesNoHarm()
    {
        // Nothing is closed to an administrator; a file in the folder's place is, to everyone.
        putFile(installed("log"), QByteArray());
        QProcess process;
        start(process);
        QVERIFY(stop(process));
        const QByteArray output = process.property("output").toByteArray();
        QCOMPARE(output.count("<FileAppender::append> Cannot open the log file " +
                              QFile::encodeName(installed("log/app-log.txt"))),
                 1);
    }

    void aFullDiskDoesNoHarm()
    {
        SmallDisk disk("size=64m");
        if (!disk.isMounted()) {
            QSKIP("only an administrator can mount a disk");
        }
        m_folder = disk.path();
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_PROGRAM"), installed("vantrel")));
        disk.fill();
        QProcess process;
        start(process, {QStringLiteral("--loglevel=debug")});
        QVERIFY(stop(process));
        QVERIFY(log().isEmpty());
    }

private:
    QString installed(const char* p_name) const
    {
        return m_folder + QLatin1Char('/') + QLatin1String(p_name);
    }
    QStringList log() const
    {
        QStringList lines =
            QString::fromUtf8(contentOf(installed("log/app-log.txt"))).split(QLatin1Char('\n'));
        lines.removeLast();
        return lines;
    }

    /** Starts it with a project and waits until the project is open. */
    void start(QProcess& p_process, const QStringList& p_arguments = {}) const
    {
        p_process.setProcessChannelMode(QProcess::MergedChannels);
        p_process.start(installed("vantrel"), QStringList(project()) + p_arguments);
        // The error stream has the debug lines at every level.
        QByteArray output;
        while (output.count(s_linked.toLatin1() + '>') < s_links &&
               p_process.waitForReadyRead(30000)) {
            output += p_process.readAll();
        }
        QVERIFY2(output.count(s_linked.toLatin1() + '>') >= s_links, output);
        p_process.setProperty("output", output);
    }

    /** Ends it, having seen that it still runs. */
    static bool stop(QProcess& p_process)
    {
        const bool running = p_process.state() == QProcess::Running;
        p_process.kill();
        return p_process.waitForFinished(30000) && running;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString project() const { return m_dir->filePath(QStringLiteral("square.tlrx")); }
    QString m_folder;
};

QTEST_GUILESS_MAIN(LogProgramTest)
#include "logprogramtest.moc"
