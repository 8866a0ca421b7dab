#pragma once

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <sched.h>
#include <sys/mount.h>

/**
 * A real drive of so many bytes that the test computer's memory holds, mounted for its lifetime.
 *
 * Mounts are seen by this process and its children alone, and end with them.
 */
class SmallDrive
{
public:
    /** To be called once, before other threads begin. False if there is no right to mount. */
    static bool prepare()
    {
        return unshare(CLONE_NEWNS) == 0 &&
               mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }

    explicit SmallDrive(int p_bytes, const QString& p_name = QStringLiteral("drive"))
        : m_root(m_folder.filePath(p_name))
    {
        QDir().mkpath(m_root);
        const QByteArray options = "size=" + QByteArray::number(p_bytes);
        m_mounted = mount("none", path(), "tmpfs", 0, options.constData()) == 0;
    }

    ~SmallDrive() { pullOut(); }

    bool isMounted() const { return m_mounted; }
    QString root() const { return m_root; }
    QString file(const QString& p_name) const { return m_root + QLatin1Char('/') + p_name; }

    bool protect() const
    {
        return mount("none", path(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

    /** Takes the drive away with its mount point, as a desktop does. */
    void pullOut()
    {
        if (m_mounted) {
            umount2(path(), MNT_DETACH);
            QDir().rmdir(m_root);
            m_mounted = false;
        }
    }

private:
    Q_DISABLE_COPY(SmallDrive)

    const char* path() const { return m_encoded.constData(); }

    QTemporaryDir m_folder;
    QString m_root;
    QByteArray m_encoded = QFile::encodeName(m_root);
    bool m_mounted = false;
};
