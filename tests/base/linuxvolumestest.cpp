#include "base/linuxvolumes.h"
#include "support/system/files.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/statvfs.h>

#include <map>

namespace
{

class CountedVolumes : public LinuxVolumes
{
public:
    CountedVolumes(const QString& p_mountTable, const QString& p_sysfs,
                   const std::map<QString, quint64>& p_freeBytes)
        : LinuxVolumes(p_mountTable, p_sysfs), m_freeBytes(p_freeBytes)
    {
    }

    std::optional<quint64> freeBytes(const Volume& p_volume) override
    {
        const auto found = m_freeBytes.find(p_volume.root);
        return found == m_freeBytes.end() ? std::nullopt : std::make_optional(found->second);
    }

private:
    std::map<QString, quint64> m_freeBytes;
};

} // namespace

class LinuxVolumesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    QString path(const QString& p_name) const { return m_dir->filePath(p_name); }
    QString sysfs() const { return path("sys"); }
    QString table() const { return path("mounts"); }

    void write(const QString& p_name, const QByteArray& p_content)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path(p_name)).path()));
        putFile(path(p_name), p_content);
    }

    void addDisk(const QString& p_name, bool p_removable, const QStringList& p_partitions = {})
    {
        const QString device = "sys/devices/bus/host/block/" + p_name;
        write(device + "/removable", p_removable ? "1\n" : "0\n");
        addLink(p_name, "../../devices/bus/host/block/" + p_name);
        for (const QString& partition : p_partitions) {
            write(device + '/' + partition + "/partition", "1\n");
            addLink(partition, "../../devices/bus/host/block/" + p_name + '/' + partition);
        }
    }

    void addLink(const QString& p_name, const QString& p_target)
    {
        QVERIFY(QDir().mkpath(path("sys/class/block")));
        QVERIFY(QFile::link(p_target, path("sys/class/block/" + p_name)));
    }

    QStringList roots(VolumeList& p_volumes, bool p_removable) const
    {
        QStringList result;
        for (const Volume& volume : p_volumes.mounted()) {
            if (volume.removable == p_removable) {
                result.append(volume.root);
            }
        }
        return result;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void aMissingMountTableGivesNoVolumes()
    {
        LinuxVolumes volumes(table(), sysfs());
        QVERIFY(volumes.mounted().empty());
        QVERIFY(findControllerVolume(volumes).isEmpty());
    }

    void aPartitionIsAsRemovableAsItsDisk()
    {
        addDisk("sda", false, {"sda1"});
        addDisk("sdb", true, {"sdb1", "sdb2"});
        write("mounts", "/dev/sda1 / ext4 rw 0 0\n"
                        "/dev/sdb1 /media/a vfat rw 0 0\n"
                        "/dev/sdb2 /media/b vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QCOMPARE(roots(volumes, false), QStringList{"/"});
        QCOMPARE(roots(volumes, true), QStringList({"/media/a", "/media/b"}));
    }

    void aDiskWithoutPartitionsIsAskedItself()
    {
        addDisk("sdb", true);
        write("mounts", "/dev/sdb /media/controller vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QCOMPARE(roots(volumes, true), QStringList{"/media/controller"});
    }

    void theOrderIsThatOfTheMounts()
    {
        addDisk("sdb", true, {"sdb1"});
        addDisk("sdc", true, {"sdc1"});
        addDisk("sdd", true, {"sdd1"});
        write("mounts", "/dev/sdd1 /media/z vfat rw 0 0\n"
                        "/dev/sdb1 /media/m vfat rw 0 0\n"
                        "/dev/sdc1 /media/a vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QCOMPARE(roots(volumes, true), QStringList({"/media/z", "/media/m", "/media/a"}));

        CountedVolumes counted(table(), sysfs(),
                               {{"/media/z", 5242880}, {"/media/m", 100}, {"/media/a", 0}});
        QCOMPARE(findControllerVolume(counted), QString("/media/m"));
    }

    void whatIsNoBlockDeviceIsSkipped()
    {
        addDisk("sdb", true, {"sdb1"});
        write("mounts", "proc /proc proc rw 0 0\n"
                        "tmpfs /run tmpfs rw 0 0\n"
                        "server:/share /net nfs rw 0 0\n"
                        "/dev/ /odd none rw 0 0\n"
                        "/dev/fuse /run/user/doc fuse rw 0 0\n"
                        "/dev/sdz1 /media/unknown vfat rw 0 0\n"
                        "/dev/sdb1\n"
                        "\n"
                        "/dev/sdb1 /media/a vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QCOMPARE(int(volumes.mounted().size()), 1);
        QCOMPARE(roots(volumes, true), QStringList{"/media/a"});
    }

    void aDiskWithoutTheAttributeIsSkipped()
    {
        QVERIFY(QDir().mkpath(path("sys/devices/virtual/block/odd0")));
        addLink("odd0", "../../devices/virtual/block/odd0");
        write("mounts", "/dev/odd0 /media/odd vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QVERIFY(volumes.mounted().empty());
    }

    void escapesInTheMountTableAreDecoded()
    {
        addDisk("sdb", true, {"sdb1"});
        addDisk("cciss!c0d0", false);
        write("mounts", "/dev/sdb1 /media/my\\040stick\\011a\\134b\\04 vfat rw 0 0\n"
                        "/dev/sdb1 /media/\xE5\xB0\x8F\xE8\xBD\xA6\\040 vfat rw 0 0\n"
                        "/dev/cciss/c0d0 /data ext4 rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QCOMPARE(roots(volumes, true), QStringList({"/media/my stick\ta\\b\\04", "/media/小车 "}));
        QCOMPARE(roots(volumes, false), QStringList{"/data"});
    }

    void anOpticalDriveNeverQualifiesThoughItsMediumIsRemovableAndFull()
    {
        addDisk("sr0", true);
        addDisk("sdb", true, {"sdb1"});
        write("sys/devices/bus/host/block/sdb/device/type", "5\n");
        write("mounts", "/dev/sr0 /media/cdrom iso9660 ro 0 0\n"
                        "/dev/sdb1 /media/dvd udf ro 0 0\n");
        CountedVolumes volumes(table(), sysfs(), {{"/media/cdrom", 0}, {"/media/dvd", 0}});
        QCOMPARE(roots(volumes, false), QStringList({"/media/cdrom", "/media/dvd"}));
        QVERIFY(findControllerVolume(volumes).isEmpty());
    }

    void aDeviceNamedByALinkIsFollowed()
    {
        // Below /dev/fd the system names each open file by a link.
        QFile device("/dev/null");
        QVERIFY(device.open(QIODevice::ReadOnly));
        const QByteArray link = "/dev/fd/" + QByteArray::number(device.handle());
        addDisk("null", true);
        write("mounts", link + " /media/a vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QCOMPARE(roots(volumes, true), QStringList{"/media/a"});
    }

    void freeBytesAreThoseOfTheWholeFileSystem()
    {
        LinuxVolumes volumes(table(), sysfs());
        struct statvfs status = {};
        QCOMPARE(statvfs(QFile::encodeName(m_dir->path()).constData(), &status), 0);
        const std::optional<quint64> freeBytes = volumes.freeBytes({m_dir->path(), true});
        QVERIFY(freeBytes);
        // Others may be writing to the same disk, so the two can't be quite the same.
        const double expected = double(status.f_bfree) * double(status.f_frsize);
        const double slack = 256.0 * 1024 * 1024;
        QVERIFY2(qAbs(double(*freeBytes) - expected) < slack,
                 qPrintable(QString::number(*freeBytes)));
    }

    void aMountPointThatIsGoneHasNoFreeBytes()
    {
        addDisk("sdb", true, {"sdb1"});
        write("mounts", "/dev/sdb1 " + path("gone").toLocal8Bit() + " vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        QVERIFY(!volumes.freeBytes({path("gone"), true}));
        QVERIFY(findControllerVolume(volumes).isEmpty());
    }

    void aSmallMountedDiskIsTheController_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<bool>("qualifies");
        QTest::newRow("4 MiB") << "4m" << true;
        QTest::newRow("exactly 5 MiB") << "5m" << false;
        QTest::newRow("8 MiB") << "8m" << false;
    }

    void aSmallMountedDiskIsTheController()
    {
        QFETCH(QString, size);
        QFETCH(bool, qualifies);
        const QString mountPoint = path("small disk");
        QVERIFY(QDir().mkpath(mountPoint));
        if (QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=" + size, "none", mountPoint}) !=
            0) {
            QSKIP("no right to mount");
        }
        addDisk("sdb", true, {"sdb1"});
        write("mounts", "/dev/sdb1 " + QByteArray(mountPoint.toLocal8Bit()).replace(" ", "\\040") +
                            " vfat rw 0 0\n");
        LinuxVolumes volumes(table(), sysfs());
        const QString found = findControllerVolume(volumes);
        QCOMPARE(QProcess::execute("umount", {mountPoint}), 0);
        QCOMPARE(found, qualifies ? mountPoint : QString());
    }

    void theRealMountTableCanBeRead()
    {
        QFile real("/proc/self/mounts");
        if (!real.open(QIODevice::ReadOnly)) {
            QSKIP("no mount table");
        }
        const QByteArray content = real.readAll();
        LinuxVolumes volumes;
        for (const Volume& volume : volumes.mounted()) {
            QVERIFY2(QFileInfo::exists(volume.root), qPrintable(volume.root));
        }
        if (content.contains("\n/dev/sd") || content.contains("\n/dev/vd")) {
            QVERIFY(!volumes.mounted().empty());
        }
    }
};

QTEST_GUILESS_MAIN(LinuxVolumesTest)
#include "linuxvolumestest.moc"
