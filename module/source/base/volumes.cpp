#include "base/volumes.h"

namespace
{

bool hasControllerSpace(quint64 p_freeBytes)
{
    float mebibytes = static_cast<float>(p_freeBytes);
    mebibytes *= 0.0009765625F;
    mebibytes *= 0.0009765625F;
    return 5.0F > mebibytes;
}

} // namespace

VolumeList::~VolumeList() = default;

QString findControllerVolume(VolumeList& p_volumes)
{
    for (const Volume& volume : p_volumes.mounted()) {
        if (!volume.removable) {
            continue;
        }
        const std::optional<quint64> freeBytes = p_volumes.freeBytes(volume);
        if (freeBytes && hasControllerSpace(*freeBytes)) {
            return volume.root;
        }
    }
    return QString();
}
