#include "base/linuxvolumes.h"

#include <QFile>
#include <QFileInfo>

#include <sys/statvfs.h>

#include <cerrno>

namespace
{

bool isOctalDigit(char p_char) { return p_char >= '0' && p_char <= '7'; }

// The kernel writes blanks, tabs, line feeds and backslashes of a field as three octal digits.
QString unescaped(const QByteArray& p_field)
{
    QByteArray bytes;
    for (int i = 0; i < p_field.size(); ++i) {
        if (p_field[i] == '\\' && i + 3 < p_field.size() && isOctalDigit(p_field[i + 1]) &&
            isOctalDigit(p_field[i + 2]) && isOctalDigit(p_field[i + 3])) {
            bytes.append(static_cast<char>(p_field.mid(i + 1, 3).toInt(nullptr, 8)));
            i += 3;
        } else {
            bytes.append(p_field[i]);
        }
    }
    return QFile::decodeName(bytes);
}

// A sysfs attribute without its line feed; a null array when it can't be read.
QByteArray attribute(const QString& p_path)
{
    QFile file(p_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QByteArray();
    }
    return file.read(64).trimmed();
}

bool isOptical(const QString& p_disk)
{
    const QByteArray scsiType = attribute(p_disk + QStringLiteral("/device/type"));
    return scsiType == "4" || scsiType == "5" ||
           QFileInfo(p_disk).fileName().startsWith(QLatin1String("sr"));
}

} // namespace

LinuxVolumes::LinuxVolumes(const QString& p_mountTable, const QString& p_sysfs)
    : m_mountTable(p_mountTable), m_sysfs(p_sysfs)
{
}

std::vector<Volume> LinuxVolumes::mounted()
{
    std::vector<Volume> volumes;
    QFile table(m_mountTable);
    if (!table.open(QIODevice::ReadOnly)) {
        return volumes;
    }
    // Read to the end rather than to the size: a table of the kernel's has the size 0.
    const QList<QByteArray> lines = table.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() < 2 || !fields[0].startsWith("/dev/") || fields[1].isEmpty()) {
            continue;
        }
        if (const std::optional<bool> isRemovable = removable(unescaped(fields[0]))) {
            volumes.push_back({unescaped(fields[1]), *isRemovable});
        }
    }
    return volumes;
}

std::optional<quint64> LinuxVolumes::freeBytes(const Volume& p_volume)
{
    struct statvfs status = {};
    const QByteArray path = QFile::encodeName(p_volume.root);
    int result = 0;
    do {
        result = statvfs(path.constData(), &status);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        return std::nullopt;
    }
    return static_cast<quint64>(status.f_bfree) * static_cast<quint64>(status.f_frsize);
}

std::optional<bool> LinuxVolumes::removable(const QString& p_device) const
{
    // A name such as /dev/disk/by-label/X is a link to the node that sysfs knows.
    const QString target = QFileInfo(p_device).canonicalFilePath();
    QString name = (target.isEmpty() ? p_device : target).mid(5);
    name.replace(QLatin1Char('/'), QLatin1Char('!'));
    if (name.isEmpty()) {
        return std::nullopt;
    }
    const QString device =
        QFileInfo(m_sysfs + QStringLiteral("/class/block/") + name).canonicalFilePath();
    if (device.isEmpty()) {
        return std::nullopt;
    }
    // Only a whole disk has the attribute; a partition lies in its disk's folder.
    for (const QString& disk : {device, QFileInfo(device).path()}) {
        const QByteArray value = attribute(disk + QStringLiteral("/removable"));
        if (!value.isEmpty()) {
            return value == "1" && !isOptical(disk);
        }
    }
    return std::nullopt;
}

QString pathOnVolume(const QString& p_root, const QString& p_name)
{
    return p_root + QLatin1Char('/') + p_name;
}

std::shared_ptr<VolumeList> systemVolumes() { return std::make_shared<LinuxVolumes>(); }
