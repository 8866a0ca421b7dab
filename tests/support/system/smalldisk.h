#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <sys/mount.h>

/** A disk of a few hundred kilobytes, in memory, that goes when this object does. */
class SmallDisk
{
public:
    /** p_options as of tmpfs, such as "size=256k". Only the administrator can do that. */
    explicit SmallDisk(const char* p_options)
    {
        m_mounted = mount("tiler-test", folder().constData(), "tmpfs", MS_NOSUID, p_options) == 0;
    }
    ~SmallDisk()
    {
        if (m_mounted) {
            umount2(folder().constData(), MNT_DETACH);
        }
    }
    Q_DISABLE_COPY(SmallDisk)

    bool isMounted() const { return m_mounted; }
    QString path() const { return m_dir.path(); }
    QString path(const char* p_name) const { return m_dir.filePath(QLatin1String(p_name)); }

    /** Fills the disk to its last byte, or but for a few. */
    void fill(int p_free = 0)
    {
        QFile filler(path("filler"));
        if (filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            const QByteArray block(s_block, 'f');
            while (filler.write(block) == block.size()) {
            }
            filler.resize(filler.size() - p_free);
        }
    }
    void empty() { QFile::remove(path("filler")); }
    /** From now on nothing on it can be changed, by nobody. */
    bool closeToChanges()
    {
        return mount(nullptr, folder().constData(), nullptr, MS_REMOUNT | MS_RDONLY | MS_NOSUID,
                     nullptr) == 0;
    }

private:
    QByteArray folder() const { return QFile::encodeName(m_dir.path()); }

    static constexpr int s_block = 4096;
    QTemporaryDir m_dir;
    bool m_mounted = false;
};
