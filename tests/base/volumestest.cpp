#include "base/volumes.h"

#include <QStringList>
#include <QtTest>

#include <limits>
#include <map>

namespace
{

constexpr quint64 fiveMebibytes = 5242880;

class FakeVolumes : public VolumeList
{
public:
    void add(const QString& p_root, bool p_removable, std::optional<quint64> p_freeBytes)
    {
        m_volumes.push_back({p_root, p_removable});
        m_freeBytes[p_root] = p_freeBytes;
    }

    std::vector<Volume> mounted() override { return m_volumes; }

    std::optional<quint64> freeBytes(const Volume& p_volume) override
    {
        m_asked.append(p_volume.root);
        return m_freeBytes[p_volume.root];
    }

    QStringList asked() const { return m_asked; }

private:
    std::vector<Volume> m_volumes;
    std::map<QString, std::optional<quint64>> m_freeBytes;
    QStringList m_asked;
};

} // namespace

class VolumesTest : public QObject
{
    Q_OBJECT

private slots:
    void noVolumesAtAllGiveNoController()
    {
        FakeVolumes volumes;
        QVERIFY(findControllerVolume(volumes).isEmpty());
    }

    void theFreeSpaceDecides_data()
    {
        QTest::addColumn<quint64>("freeBytes");
        QTest::addColumn<bool>("qualifies");
        QTest::newRow("full") << quint64(0) << true;
        QTest::newRow("one byte free") << quint64(1) << true;
        QTest::newRow("a controller's few MiB") << quint64(4194304) << true;
        QTest::newRow("one byte under 5 MiB") << fiveMebibytes - 1 << true;
        QTest::newRow("exactly 5 MiB") << fiveMebibytes << false;
        QTest::newRow("one byte over 5 MiB") << fiveMebibytes + 1 << false;
        QTest::newRow("4 GiB, where 32 bits would be 0") << (quint64(1) << 32) << false;
        QTest::newRow("behind the signed range") << (quint64(1) << 63) << false;
        QTest::newRow("the largest number") << std::numeric_limits<quint64>::max() << false;
    }

    void theFreeSpaceDecides()
    {
        QFETCH(quint64, freeBytes);
        QFETCH(bool, qualifies);
        FakeVolumes volumes;
        volumes.add("E", true, freeBytes);
        QCOMPARE(findControllerVolume(volumes), qualifies ? QString("E") : QString());
    }

    void aDriveThatIsNotRemovableNeverQualifiesHoweverFull()
    {
        FakeVolumes volumes;
        volumes.add("C", false, 0);
        volumes.add("D", false, 1);
        QVERIFY(findControllerVolume(volumes).isEmpty());
        // A network drive that hangs must not be asked at all.
        QVERIFY(volumes.asked().isEmpty());
    }

    void ofTwoQualifyingDrivesTheFirstIsUsedEveryTime()
    {
        FakeVolumes volumes;
        volumes.add("C", false, 1000);
        volumes.add("E", true, 3000000);
        volumes.add("F", true, 0);
        for (int i = 0; i < 20; ++i) {
            QCOMPARE(findControllerVolume(volumes), QString("E"));
        }
        QVERIFY(!volumes.asked().contains("F"));
    }

    void aRemovableDriveWithRoomIsPassedOver()
    {
        FakeVolumes volumes;
        volumes.add("E", true, quint64(16) << 30);
        volumes.add("F", true, 100);
        QCOMPARE(findControllerVolume(volumes), QString("F"));
    }

    void aDriveThatDoesNotAnswerDoesNotQualify()
    {
        FakeVolumes volumes;
        volumes.add("E", true, std::nullopt);
        QVERIFY(findControllerVolume(volumes).isEmpty());
        volumes.add("F", true, 100);
        QCOMPARE(findControllerVolume(volumes), QString("F"));
    }

    void aFileStandsInTheRootOfItsVolume()
    {
#ifdef Q_OS_WIN
        QCOMPARE(pathOnVolume("E", "car.bin"), QString("E:\\car.bin"));
        QCOMPARE(pathOnVolume("E", QString()), QString("E:\\"));
#else
        QCOMPARE(pathOnVolume("/media/car", "car.bin"), QString("/media/car/car.bin"));
        QCOMPARE(pathOnVolume("/media/car", QString()), QString("/media/car/"));
#endif
    }

    void theSystemHasAListOfVolumes()
    {
        const std::shared_ptr<VolumeList> volumes = systemVolumes();
        QVERIFY(volumes);
        for (const Volume& volume : volumes->mounted()) {
            QVERIFY(!volume.root.isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(VolumesTest)
#include "volumestest.moc"
