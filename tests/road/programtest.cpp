#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/**
 * The program as a process of its own: what it opens, and from where. Its log and its command line
 * have tests of their own.
 */
class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void aProjectNamedOnTheCommandLineIsOpened()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QString::fromUtf8("小 车.tlrx"));
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx"),
                            path));
        QVERIFY(outputOf({path, QStringLiteral("--loglevel=debug")})
                    .contains(QStringLiteral("supermodule::appendModule")));
        QVERIFY(!outputOf(
                     {folder.filePath(QStringLiteral("a.txt")), QStringLiteral("--loglevel=debug")})
                     .contains(QStringLiteral("supermodule::appendModule")));
    }

    void itRunsFromFoldersWithBlanksAndChineseCharacters()
    {
        QTemporaryDir computer;
        const QDir root(computer.path());
        const QString installation = root.filePath(QStringLiteral("安装 目录"));
        const QString home = root.filePath(QStringLiteral("小明 的家"));
        QVERIFY(root.mkpath(installation) && root.mkpath(home));
        const QString copied = installation + QStringLiteral("/vantrel");
        QVERIFY(QFile::copy(program(), copied));
        const QString project = home + QStringLiteral("/我的 车.tlrx");
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx"),
                            project));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home);
        environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
        QProcess process;
        process.setProcessEnvironment(environment);
        const QString output =
            outputOf(process, copied, {project, QStringLiteral("--loglevel=debug")});
        QVERIFY2(
            output.contains(QStringLiteral("install dir = ") + installation + QLatin1Char('\n')),
            qPrintable(output));
        QVERIFY(output.contains(QStringLiteral("supermodule::appendModule")));
        QVERIFY(QFileInfo(home + QStringLiteral("/.config/vantrel/configs")).isDir());
    }

private:
    static QString program() { return qEnvironmentVariable("TILER_PROGRAM"); }
    /** Runs for a moment, ends the program and returns what it wrote. */
    static QString outputOf(const QStringList& p_arguments)
    {
        QProcess process;
        return outputOf(process, program(), p_arguments);
    }

    static QString outputOf(QProcess& p_process, const QString& p_program,
                            const QStringList& p_arguments)
    {
        p_process.setProcessChannelMode(QProcess::MergedChannels);
        p_process.start(p_program, p_arguments);
        QByteArray output;
        while (!output.contains("device pixel ratio") && p_process.waitForReadyRead(20000)) {
            output += p_process.readAll();
        }
        p_process.waitForFinished(1500);
        p_process.kill();
        p_process.waitForFinished();
        return QString::fromUtf8(output + p_process.readAll());
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "programtest.moc"
