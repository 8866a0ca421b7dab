#include "support/probe/probedprogram.h"
#include "support/system/files.h"
#include "support/system/smalldisk.h"
#include "support/system/unprivileged.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <memory>

namespace
{
const QString s_cantOpen = QStringLiteral("Cannot open the log file ");
} // namespace

/**
 * The real program where it can't keep what it wants to keep: it starts, opens a project and ends
 * in order.
 */
class ClosedFoldersTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_installation = m_dir->filePath(QStringLiteral("tiler"));
        m_settings = m_dir->filePath(QStringLiteral("settings"));
        m_said.clear();
        m_labels.clear();
        QVERIFY(QDir().mkpath(m_installation) && QDir().mkpath(m_settings));
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_PROGRAM"), installed("vantrel")));
    }

    void cleanup()
    {
        if (!m_disk && !m_place.isEmpty()) {
            Unprivileged::openToChanges(m_place);
        }
        m_disk.reset();
        m_place.clear();
    }

    void aFileInPlaceOfTheSettingsFolder()
    {
        putFile(setting("vantrel"), "mine");
        useProgram();
        QVERIFY2(m_said.contains(QStringLiteral("Starting Tiler version")), qPrintable(m_said));
        QCOMPARE(contentOf(setting("vantrel")), QByteArray("mine"));
    }

    void aFileInPlaceOfTheFileWithAllSettings()
    {
        m_settings = m_dir->filePath(QStringLiteral("no-folder"));
        putFile(m_settings, "mine");
        useProgram();
        QCOMPARE(contentOf(m_settings), QByteArray("mine"));
    }

    void aSettingsFolderThatCantBeMade()
    {
        m_settings = makePlace();
        if (!closePlace()) {
            QSKIP("an administrator who can't mount a disk");
        }
        useProgram();
        QCOMPARE(QDir(m_settings).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
                 QStringList());
    }

    void settingsThatCantBeChangedAreReadAllTheSame()
    {
        m_settings = makePlace();
        QVERIFY(QDir().mkpath(setting("vantrel/configs")));
        const QByteArray settings = "{\"fw.update_time\":\"" +
                                    QDateTime::currentDateTime().toString(Qt::TextDate).toUtf8() +
                                    "\"}";
        putFile(setting("vantrel/configs/config.json"), settings);
        if (!closePlace()) {
            QSKIP("an administrator who can't mount a disk");
        }
        useProgram();
        const bool noticed =
            std::any_of(m_labels.begin(), m_labels.end(), [](const QJsonObject& p_label) {
                return p_label[QStringLiteral("text")].toString() ==
                       QStringLiteral("Controller firmware has a new version, please update");
            });
        QVERIFY(noticed);
        QCOMPARE(contentOf(setting("vantrel/configs/config.json")), settings);
    }

    void aFileInPlaceOfTheLogFolder()
    {
        putFile(installed("log"), "mine");
        useProgram();
        QCOMPARE(m_said.count(s_cantOpen + installed("log/app-log.txt")), 1);
        QVERIFY2(m_said.contains(QStringLiteral("Starting Tiler version")), qPrintable(m_said));
        QCOMPARE(contentOf(installed("log")), QByteArray("mine"));
    }

    void aLogFolderThatCantBeMade()
    {
        m_installation = makePlace();
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_PROGRAM"), installed("vantrel")));
        if (!closePlace()) {
            QSKIP("an administrator who can't mount a disk");
        }
        useProgram();
        QCOMPARE(m_said.count(s_cantOpen + installed("log/app-log.txt")), 1);
        QCOMPARE(QDir(m_installation).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
                 QStringList("vantrel"));
    }

private:
    QString installed(const char* p_name) const
    {
        return m_installation + QLatin1Char('/') + QLatin1String(p_name);
    }
    QString setting(const char* p_name) const
    {
        return m_settings + QLatin1Char('/') + QLatin1String(p_name);
    }
    /** Makes an empty place that can be closed to changes, also to an administrator. */
    QString makePlace()
    {
        m_disk = std::make_unique<SmallDisk>("size=256m");
        if (m_disk->isMounted()) {
            m_place = m_disk->path();
        } else {
            m_disk.reset();
            m_place = m_dir->filePath(QStringLiteral("place"));
            QDir().mkpath(m_place);
        }
        return m_place;
    }

    /** Closes the last of them. */
    bool closePlace()
    {
        const bool closed =
            m_disk ? m_disk->closeToChanges() : Unprivileged::closeToChanges(m_place);
        QFile file(m_place + QStringLiteral("/trial"));
        return closed && !file.open(QIODevice::WriteOnly);
    }

    /** Starts the program with a project and sees that it works. */
    void useProgram()
    {
        const QString project =
            qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_settings);
        ProbedProgram program(environment, installed("vantrel"));
        // That means an ordinary end with the code 0, too.
        QVERIFY2(program.run({project}), qPrintable(program.story()));
        m_said = program.story();
        QStringList titles;
        for (const QJsonObject& window : program.visibleWindows()) {
            titles << window[QStringLiteral("windowTitle")].toString();
        }
        // No box stands in the way.
        QCOMPARE(titles,
                 QStringList(QStringLiteral("Tiler v1.1.2 2020-12-17:  %1[*]").arg(project)));
        m_labels = program.widgets(QStringLiteral("QLabel"));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<SmallDisk> m_disk;
    QString m_place;
    QString m_installation;
    QString m_settings;
    QString m_said;
    QList<QJsonObject> m_labels;
};

QTEST_GUILESS_MAIN(ClosedFoldersTest)
#include "closedfolderstest.moc"
