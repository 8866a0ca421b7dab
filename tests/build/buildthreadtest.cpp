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

QStringList textsOf(const QSignalSpy& p_spy)
{
    QStringList texts;
    for (const QList<QVariant>& arguments : p_spy) {
        texts.append(arguments.first().toString());
    }
    return texts;
}

} // namespace

class BuildThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void aControllerThatIsThereIsFoundWithoutASleepAndConfirmed()
    {
        const auto volumes = std::make_shared<FakeVolumes>(std::vector<QString>{"E"});
        buildThread thread;
        thread.setVolumes(volumes);
        thread.setPause(never);
        QSignalSpy spy(&thread, &buildThread::stateChanged);
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QCOMPARE(volumes->scans(), 2);
        QVERIFY(thread.connected());
        QCOMPARE(thread.drive(), QString("E"));
        QCOMPARE(textsOf(spy), QStringList{connecting});
    }

    void anUnpluggedControllerIsLookedFor62Times()
    {
        const auto volumes = std::make_shared<FakeVolumes>(std::vector<QString>{});
        buildThread thread;
        thread.setVolumes(volumes);
        thread.setPause(5);
        QSignalSpy spy(&thread, &buildThread::stateChanged);
        QElapsedTimer timer;
        timer.start();
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QVERIFY2(timer.elapsed() >= 60 * 5, "there are 60 pauses");
        QCOMPARE(volumes->scans(), 62);
        QVERIFY(!thread.connected());
        QVERIFY(thread.drive().isEmpty());
        QCOMPARE(textsOf(spy), QStringList({connecting, failed}));
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
        const auto volumes = std::make_shared<FakeVolumes>([firstScan](int p_scan) {
            return p_scan < firstScan ? std::vector<QString>{} : std::vector<QString>{"F"};
        });
        buildThread thread;
        thread.setVolumes(volumes);
        thread.setPause(0);
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QVERIFY(thread.connected());
        QCOMPARE(thread.drive(), QString("F"));
        QCOMPARE(volumes->scans(), qMin(firstScan + 1, 62));
    }

    void aControllerThatIsGoneAtTheConfirmationIsNotConnected()
    {
        const auto volumes = std::make_shared<FakeVolumes>([](int p_scan) {
            return p_scan == 1 ? std::vector<QString>{"E"} : std::vector<QString>{};
        });
        buildThread thread;
        thread.setVolumes(volumes);
        QSignalSpy spy(&thread, &buildThread::stateChanged);
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QVERIFY(!thread.connected());
        QVERIFY(thread.drive().isEmpty());
        QCOMPARE(textsOf(spy), QStringList({connecting, failed}));
    }

    void thePauseIsASecondUnlessToldOtherwise()
    {
        const auto volumes = std::make_shared<FakeVolumes>([](int p_scan) {
            return p_scan == 1 ? std::vector<QString>{} : std::vector<QString>{"E"};
        });
        buildThread thread;
        thread.setVolumes(volumes);
        QElapsedTimer timer;
        timer.start();
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QVERIFY(thread.connected());
        QVERIFY(timer.elapsed() >= 1000);
    }

    void ofTwoQualifyingDrivesTheFirstIsUsed()
    {
        buildThread thread;
        thread.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{"E", "F"}));
        QVERIFY(thread.findController());
        QCOMPARE(thread.drive(), QString("E"));
    }

    void aScanThatFindsNothingForgetsTheDrive()
    {
        buildThread thread;
        thread.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{"E"}));
        QVERIFY(thread.findController());
        thread.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{}));
        QVERIFY(!thread.findController());
        QVERIFY(thread.drive().isEmpty());
    }

    void aThreadThatFindsNothingTheSecondTimeIsNotConnected()
    {
        buildThread thread;
        thread.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{"E"}));
        thread.setPause(0);
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QVERIFY(thread.connected());
        thread.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{}));
        thread.start();
        QVERIFY(thread.wait(hangGuard));
        QVERIFY(!thread.connected());
    }

    void endingTheWaitDuringAPauseIsImmediateAndSilent()
    {
        const auto volumes = std::make_shared<FakeVolumes>(std::vector<QString>{});
        buildThread thread;
        thread.setVolumes(volumes);
        thread.setPause(never);
        QSignalSpy spy(&thread, &buildThread::stateChanged);
        thread.start();
        QTRY_COMPARE(volumes->scans(), 1);
        QTest::qSleep(50);
        thread.endWait();
        QVERIFY(thread.isFinished());
        QVERIFY(!thread.connected());
        QCOMPARE(volumes->scans(), 1);
        QCOMPARE(textsOf(spy), QStringList{connecting});
    }

    void endingTheWaitLeavesAHangingScanBehind()
    {
        const auto volumes = std::make_shared<FakeVolumes>(std::vector<QString>{"E"});
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
        const auto volumes = std::make_shared<FakeVolumes>([&](int p_scan) {
            if (p_scan == 2) {
                reached.release();
                gate.acquire();
            }
            return std::vector<QString>{"E"};
        });
        buildThread thread;
        thread.setVolumes(volumes);
        QSignalSpy spy(&thread, &buildThread::stateChanged);
        thread.start();
        QVERIFY(reached.tryAcquire(1, int(hangGuard)));
        thread.endWait();
        QVERIFY(!thread.connected());
        QVERIFY(thread.drive().isEmpty());
        QCOMPARE(textsOf(spy), QStringList{connecting});
        gate.release();
        QTRY_COMPARE(volumes.use_count(), 2L);
    }

    void endingAWaitThatNeverStartedOrIsOverDoesNothing()
    {
        buildThread unused;
        unused.endWait();
        unused.endWait();

        buildThread over;
        over.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{"E"}));
        over.start();
        QVERIFY(over.wait(hangGuard));
        over.endWait();
        QVERIFY(over.connected());
        QCOMPARE(over.drive(), QString("E"));
    }

    void aThreadThatIsDestroyedEndsItsWait()
    {
        const auto volumes = std::make_shared<FakeVolumes>(std::vector<QString>{});
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
