#include "actions/model/actionimage.h"
#include "base/recentfiles.h"
#include "shell/mainwindow.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/inotify.h>
#include <unistd.h>

namespace
{
/** Counts how often a file is opened. */
class OpeningCount
{
public:
    explicit OpeningCount(const QString& p_file) : m_queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        // Equal events in a row come as one: what happens between two openings keeps them apart.
        m_watches = inotify_add_watch(m_queue, QFile::encodeName(p_file).constData(),
                                      IN_OPEN | IN_ACCESS | IN_MODIFY | IN_CLOSE) >= 0;
    }
    ~OpeningCount() { close(m_queue); }
    Q_DISABLE_COPY(OpeningCount)

    bool watches() const { return m_watches; }
    /** The openings since the last call. */
    int take()
    {
        int count = 0;
        alignas(inotify_event) char buffer[16 * 1024];
        ssize_t size = 0;
        while ((size = read(m_queue, buffer, sizeof(buffer))) > 0) {
            for (ssize_t at = 0; at < size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
                count += (event->mask & IN_OPEN) != 0 ? 1 : 0;
            }
        }
        return count;
    }

private:
    int m_queue;
    bool m_watches = false;
};
} // namespace

class FileOpeningsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        recentFiles.clear();
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        QVERIFY(m_window.view()->saveFile(path(), ActionImage().bytes()));
    }

    void theCountSeesEveryOpening()
    {
        OpeningCount count(path());
        QVERIFY(count.watches());
        QCOMPARE(count.take(), 0);
        for (int i = 0; i < 2; ++i) {
            QFile file(path());
            QVERIFY(file.open(QIODevice::ReadOnly));
            file.readAll();
        }
        QCOMPARE(count.take(), 2);
    }

    void aProjectIsOpenedOnce()
    {
        OpeningCount count(path());
        m_window.openPath(path());
        QCOMPARE(m_window.fileName(), path());
        QCOMPARE(count.take(), 1);
    }

    void imageAndTrailerGoBehindACompiledProgramInOneOpening()
    {
        OpeningCount count(path());
        const qint64 before = QFileInfo(path()).size();
        m_window.appendCompiledData(path());
        QCOMPARE(count.take(), 1);
        QCOMPARE(QFileInfo(path()).size(), before + 57472 + 64);
    }

private:
    QString path() const { return m_dir->filePath(QStringLiteral("a.tlrx")); }

    std::unique_ptr<QTemporaryDir> m_dir;
    MainWindow m_window;
};

QTEST_MAIN(FileOpeningsTest)
#include "fileopeningstest.moc"
