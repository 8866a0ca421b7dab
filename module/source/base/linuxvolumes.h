#pragma once

#include "base/volumes.h"

#include <QString>

/**
 * The volumes of a Linux system, in mount order, with the mount point as root.
 *
 * Only block devices below /dev that sysfs knows are listed. Removable is what sysfs says of the
 * whole disk; an optical drive never is. Free bytes are the total number of free bytes.
 */
class LinuxVolumes : public VolumeList
{
public:
    /** The mount table's path and the folder where sysfs is mounted. */
    explicit LinuxVolumes(const QString& p_mountTable = QStringLiteral("/proc/self/mounts"),
                          const QString& p_sysfs = QStringLiteral("/sys"));

    std::vector<Volume> mounted() override;
    std::optional<quint64> freeBytes(const Volume& p_volume) override;

private:
    std::optional<bool> removable(const QString& p_device) const;

    QString m_mountTable;
    QString m_sysfs;
};
