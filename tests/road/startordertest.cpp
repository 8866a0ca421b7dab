#include "support/probe/probedprogram.h"
#include "support/system/files.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/inotify.h>
#include <unistd.h>

namespace
{
/** What happens to files in some folders, in the order in which it happened. */
class FolderWatch
{
public:
    FolderWatch() : m_queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}
    ~FolderWatch() { close(m_queue); }
    Q_DISABLE_COPY(FolderWatch)

    bool watch(const QString& p_folder, uint32_t p_events)
    {
        return inotify_add_watch(m_queue, QFile::encodeName(p_folder).constData(), p_events) >= 0;
    }
    /** The first of each kind, such as "made app-log.txt". */
    QStringList happened()
    {
        QStringList all;
        alignas(inotify_event) char buffer[64 * 1024];
        ssize_t size = 0;
        while ((size = read(m_queue, buffer, sizeof(buffer))) > 0) {
            ssize_t at = 0;
            while (at < size) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
                if (event->len > 0) {
                    all << kindOf(event->mask) + QLatin1Char(' ') + QFile::decodeName(event->name);
                }
            }
        }
        all.removeDuplicates();
        return all;
    }

private:
    static QString kindOf(uint32_t p_mask)
    {
        if ((p_mask & IN_CREATE) != 0) {
            return QStringLiteral("made");
        }
        if ((p_mask & IN_DELETE) != 0) {
            return QStringLiteral("deleted");
        }
        return (p_mask & IN_MODIFY) != 0 ? QStringLiteral("written") : QStringLiteral("read");
    }

    int m_queue;
};
} // namespace

/** The order of the steps in which the real program starts, as its files and events tell it. */
class StartOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void logThenSettingsThenTranslationThenWindowThenProject()
    {
        const QTemporaryDir computer;
        const QDir root(computer.path());
        for (const char* folder : {"tiler/log", "config", "work"}) {
            QVERIFY(root.mkpath(QLatin1String(folder)));
        }
        const QString program = root.filePath(QStringLiteral("tiler/vantrel"));
        const QString project = root.filePath(QStringLiteral("work/car.tlrx"));
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_PROGRAM"), program));
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx"),
                            project));
        putFile(root.filePath(QStringLiteral("tiler/log/app-log.txt")), QByteArray());

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                           root.filePath(QStringLiteral("config")));
        ProbedProgram probed(environment, program);
        FolderWatch watch;
        QVERIFY(watch.watch(root.filePath(QStringLiteral("tiler/log")),
                            IN_CREATE | IN_DELETE | IN_MODIFY));
        QVERIFY(watch.watch(root.filePath(QStringLiteral("config")), IN_CREATE));
        QVERIFY(watch.watch(root.filePath(QStringLiteral("work")), IN_OPEN));
        QVERIFY(watch.watch(probed.stepsFolder(), IN_CREATE));
        QVERIFY2(probed.run({project}), qPrintable(probed.story()));

        const QStringList steps{"deleted app-log.txt",
                                "made app-log.txt",
                                "written app-log.txt",
                                "made vantrel",
                                "made widgets.json.translation",
                                "made widgets.json.window",
                                "made widgets.json.shown",
                                "read car.tlrx",
                                "made widgets.json"};
        QCOMPARE(watch.happened(), steps);
        QCOMPARE(probed.fontBeforeTranslation(), probed.font());
        QCOMPARE(probed.font()[QStringLiteral("family")].toString(), QStringLiteral("微软雅黑"));
    }
};

QTEST_GUILESS_MAIN(StartOrderTest)
#include "startordertest.moc"
