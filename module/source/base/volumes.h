#pragma once

#include <QString>
#include <QtGlobal>

#include <memory>
#include <optional>
#include <vector>

/** A mounted volume. */
struct Volume {
    /** The drive letter on Windows, such as "E"; the mount point elsewhere. Never empty. */
    QString root;
    /** Whether the system holds the medium for removable. */
    bool removable = false;
};

/** The volumes of a computer. Asked from a worker thread, and may block on a slow drive. */
class VolumeList
{
public:
    VolumeList() = default;
    virtual ~VolumeList();

    /** The mounted volumes, in the system's own order. Empty when there are none. */
    virtual std::vector<Volume> mounted() = 0;

    /** The free bytes of a volume of mounted(), or nothing when it doesn't answer. */
    virtual std::optional<quint64> freeBytes(const Volume& p_volume) = 0;

private:
    Q_DISABLE_COPY(VolumeList)
};

/**
 * The root of the volume that counts as the controller: the first removable one with less than
 * 5 MiB free. Empty when none does. Only removable volumes are asked for their free bytes; one
 * that doesn't answer does not qualify.
 */
QString findControllerVolume(VolumeList& p_volumes);

/** The path of a file on a volume of this system; with an empty name that of the root folder. */
QString pathOnVolume(const QString& p_root, const QString& p_name);

/** The volumes of the system that the program runs on. Never null. */
std::shared_ptr<VolumeList> systemVolumes();
