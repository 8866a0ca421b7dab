#include "base/volumes.h"

// The drive calls that ask for SetThreadErrorMode.
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif
#include <windows.h>

#include <algorithm>

namespace
{

// Keeps the system from asking for a medium when a card reader stands empty.
class QuietErrors
{
public:
    QuietErrors() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_before); }
    ~QuietErrors() { SetThreadErrorMode(m_before, nullptr); }

private:
    Q_DISABLE_COPY(QuietErrors)

    DWORD m_before = 0;
};

int driveCount()
{
    int count = 0;
    for (DWORD drives = GetLogicalDrives(); drives != 0; drives &= drives - 1) {
        ++count;
    }
    return count;
}

/** The logical drives, in ascending order of their letters, which are the roots. */
class WindowsVolumes : public VolumeList
{
public:
    std::vector<Volume> mounted() override
    {
        // "X:\" and its terminator, for each drive.
        constexpr std::size_t step = 4;
        std::vector<Volume> volumes;
        const int count = driveCount();
        const DWORD needed = GetLogicalDriveStringsW(0, nullptr);
        std::vector<wchar_t> roots(needed + std::size_t{1}, L'\0');
        const DWORD length = GetLogicalDriveStringsW(needed, roots.data());
        // A drive may come or go between the calls.
        const std::size_t listed = std::min<std::size_t>(length, needed) / step;
        for (std::size_t i = 0; i < listed && i < static_cast<std::size_t>(count); ++i) {
            const wchar_t* root = roots.data() + i * step;
            volumes.push_back({QString(QChar(static_cast<ushort>(root[0]))),
                               GetDriveTypeW(root) == DRIVE_REMOVABLE});
        }
        return volumes;
    }

    std::optional<quint64> freeBytes(const Volume& p_volume) override
    {
        const QuietErrors quiet;
        const QString root = pathOnVolume(p_volume.root, QString());
        ULARGE_INTEGER totalFree = {};
        if (!GetDiskFreeSpaceExW(reinterpret_cast<const wchar_t*>(root.utf16()), nullptr, nullptr,
                                 &totalFree)) {
            return std::nullopt;
        }
        return totalFree.QuadPart;
    }
};

} // namespace

QString pathOnVolume(const QString& p_root, const QString& p_name)
{
    return p_root + QStringLiteral(":\\") + p_name;
}

std::shared_ptr<VolumeList> systemVolumes() { return std::make_shared<WindowsVolumes>(); }
