#include "build/buildthread.h"
#include "fakevolumes.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

namespace
{

constexpr int never = 600000;
constexpr unsigned long hangGuard = 20000;

const QString connecting = QStringLiteral("连接控制器....");
const QString failed = QStringLiteral("控制器连接失败！");

using Roots = std::vector<QString>;

/** A thread that looks for a controller among volumes, and what it says. */
class WatchedThread : public buildThread
{
public:
    template <class Found>
    explicit WatchedThread(const Found& p_found) : volumes(std::make_shared<FakeVolumes>(p_found))
    {
        setVolumes(volumes);
    }

    /** Runs to its end; false if that takes too long. */
    bool ends()
    {
        start();
        return wait(hangGuard);
    }

    QStringList texts() const
    {
        QStringList texts;
        for (const QList<QVariant>& arguments : m_spy) {
            texts.append(arguments.first().toString());
        }
        return texts;
    }

    const std::shared_ptr<FakeVolumes> volumes;

private:
    QSignalSpy m_spy{this, &buildThread::stateChanged};
};

} // namespace

class BuildThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void aControllerThatIsThereIsFoundWithoutASleepAndConfirmed()
    {
        WatchedThread thread(Roots{"E"});
        thread.setPause(never);
        QVERIFY(thread.ends());
        QCOMPARE(thread.volumes->scans(), 2);
        QVERIFY(thread.connected());
        QCOMPARE(thread.drive(), QString("E"));
        QCOMPARE(thread.texts(), QStringList{connecting});
    }

    void anUnpluggedControllerIsLookedFor62Times()
    {
        WatchedThread thread(Roots{});
        thread.setPause(5);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(thread.ends());
        QVERIFY2(timer.elapsed() >= 60 * 5, "there are 60 pauses");
        QCOMPARE(thread.volumes->scans(), 62);
        QVERIFY(!thread.connected());
        QVERIFY(thread.drive().isEmpty());
        QCOMPARE(thread.texts(), QStringList({connecting, failed}));
    }

    void aControllerPluggedInLaterIsFound_data()
    {
        QTest::addColumn<int>("firstScan");
        QTest::newRow("after one pause") << 2;
        QTest::newRow("after 30 pauses") << 31;
        QTest::newRow("after all pauses") << 61;
        QTest::newRow("at the very last look") << 62;
    }

    void aControllerPluggedInLaterIsFound()
    {
        QFETCH(int, firstScan);
        WatchedThread thread(
            [firstScan](int p_scan) { return p_scan < firstScan ? Roots{} : Roots{"F"}; });
        thread.setPause(0);
        QVERIFY(thread.ends());
        QVERIFY(thread.connected());
        QCOMPARE(thread.drive(), QString("F"));
        QCOMPARE(thread.volumes->scans(), qMin(firstScan + 1, 62));
    }

    void aControllerThatIsGoneAtTheConfirmationIsNotConnected()
    {
        WatchedThread thread([](int p_scan) { return p_scan == 1 ? Roots{"E"} : Roots{}; });
        QVERIFY(thread.ends());
        QVERIFY(!thread.connected());
        QVERIFY(thread.drive().isEmpty());
        QCOMPARE(thread.texts(), QStringList({connecting, failed}));
    }

    void thePauseIsASecondUnlessToldOtherwise()
    {
        WatchedThread thread([](int p_scan) { return p_scan == 1 ? Roots{} : Roots{"E"}; });
        QElapsedTimer timer;
        timer.start();
        QVERIFY(thread.ends());
        QVERIFY(thread.connected());
        QVERIFY(timer.elapsed() >= 1000);
    }

    void ofTwoQualifyingDrivesTheFirstIsUsed()
    {
        WatchedThread thread(Roots{"E", "F"});
        QVERIFY(thread.findController());
        QCOMPARE(thread.drive(), QString("E"));
    }

    void aScanThatFindsNothingForgetsTheDrive()
    {
        WatchedThread thread(Roots{"E"});
        QVERIFY(thread.findController());
        thread.setVolumes(std::make_shared<FakeVolumes>(Roots{}));
        QVERIFY(!thread.findController());
        QVERIFY(thread.drive().isEmpty());
    }

    void aThreadThatFindsNothingTheSecondTimeIsNotConnected()
    {
        WatchedThread thread(Roots{"E"});
        thread.setPause(0);
        QVERIFY(thread.ends());
        QVERIFY(thread.connected());
        thread.setVolumes(std::make_shared<FakeVolumes>(Roots{}));
        QVERIFY(thread.ends());
        QVERIFY(!thread.connected());
    }

    void endingTheWaitDuringAPauseIsImmediateAndSilent()
    {
        WatchedThread thread(Roots{});
        thread.setPause(never);
        thread.start();
        QTRY_COMPARE(thread.volumes->scans(), 1);
        QTest::qSleep(50);
        thread.endWait();
        QVERIFY(thread.isFinished());
        QVERIFY(!thread.connected());
        QCOMPARE(thread.volumes->scans(), 1);
        QCOMPARE(thread.texts(), QStringList{connecting});
    }

    void endingTheWaitLeavesAHangingScanBehind()
    {
        const auto volumes = std::make_shared<FakeVolumes>(Roots{"E"});
        volumes->hold();
        {
            buildThread thread;
            thread.setVolumes(volumes);
            thread.start();
            QTRY_COMPARE(volumes->scans(), 1);
            thread.endWait();
            QVERIFY(thread.isFinished());
            QVERIFY(!thread.connected());
            QVERIFY(thread.drive().isEmpty());
        }
        // The scan comes to its end after the thread is gone.
        volumes->release();
        QTRY_COMPARE(volumes.use_count(), 1L);
        QCOMPARE(volumes->scans(), 1);
    }

    void endingTheWaitDuringTheConfirmationIsSilent()
    {
        QSemaphore reached;
        QSemaphore gate;
        WatchedThread thread([&](int p_scan) {
            if (p_scan == 2) {
                reached.release();
                gate.acquire();
            }
            return Roots{"E"};
        });
        thread.start();
        QVERIFY(reached.tryAcquire(1, int(hangGuard)));
        thread.endWait();
        QVERIFY(!thread.connected());
        QVERIFY(thread.drive().isEmpty());
        QCOMPARE(thread.texts(), QStringList{connecting});
        gate.release();
        QTRY_COMPARE(thread.volumes.use_count(), 2L);
    }

    void endingAWaitThatNeverStartedOrIsOverDoesNothing()
    {
        buildThread unused;
        unused.endWait();
        unused.endWait();

        WatchedThread over(Roots{"E"});
        QVERIFY(over.ends());
        over.endWait();
        QVERIFY(over.connected());
        QCOMPARE(over.drive(), QString("E"));
    }

    void aThreadThatIsDestroyedEndsItsWait()
    {
        const auto volumes = std::make_shared<FakeVolumes>(Roots{});
        {
            buildThread thread;
            thread.setVolumes(volumes);
            thread.setPause(never);
            thread.start();
            QTRY_COMPARE(volumes->scans(), 1);
        }
        QTRY_COMPARE(volumes.use_count(), 1L);
    }
};

QTEST_GUILESS_MAIN(BuildThreadTest)
#include "buildthreadtest.moc"
