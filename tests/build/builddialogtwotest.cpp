#include "build/usermainfile.h"
#include "dialogbench.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace dialogtext;

namespace
{

// Links what stands in the source, once it may.
const QByteArray waitingToLink = "touch started\n"
                                 "while ! [ -e go ]; do sleep 0.02; done\n"
                                 "cat ../../user_main.c > objects/car1.bin\n";

/** Another window's process that has the kit, until it is killed. */
class KilledOwner
{
public:
    KilledOwner()
    {
        m_process = fork();
        if (m_process == 0) {
            QLockFile lock(kitLockPath());
            lock.lock();
            for (;;) {
                pause();
            }
        }
    }
    ~KilledOwner() { kill(); }

    void kill()
    {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
            m_process = 0;
        }
    }

private:
    Q_DISABLE_COPY(KilledOwner)

    pid_t m_process;
};

} // namespace

/** Two windows of one installation. */
class BuildDialogTwoTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

private slots:
    void init() { m_bench = std::make_unique<DialogBench>(); }
    void cleanup() { m_bench.reset(); }

    void eachDeliversItsOwnProgram()
    {
        m_bench->setCompiler(waitingToLink);
        // The first one's controller shows up when the second one has downloaded.
        const QString second = m_bench->secondController() + "/car1.bin";
        const auto dialog = m_bench->makeDialog();
        const auto volumes =
            std::make_shared<FakeVolumes>(std::vector<QString>{m_bench->controller()});
        volumes->hold();
        dialog->setVolumes(volumes);
        const Shown shown(*dialog);
        const auto other = m_bench->makeDialog();
        other->setVolumes(
            std::make_shared<FakeVolumes>(std::vector<QString>{m_bench->secondController()}));
        const Shown otherShown(*other);
        DialogBench::build(
            *dialog, "car1", 0,
            [&] {
                QTRY_VERIFY(QFile::exists(m_bench->inMakeFolder("started")));
                DialogBench::build(
                    *other, "car1", 0,
                    [&] {
                        QCOMPARE(otherShown.statusText(), waiting);
                        QCOMPARE(otherShown.buttonText(), cancel);
                        QVERIFY(otherShown.progress->isVisible());
                        QCOMPARE(DialogBench::read(userMainPath()), QByteArray("the first"));
                        QVERIFY(DialogBench::write(m_bench->inMakeFolder("go"), ""));
                        QTRY_COMPARE(otherShown.buttonText(), ok);
                        QCOMPARE(otherShown.statusText(), downloaded);
                        volumes->release();
                    },
                    "the second");
                QTRY_COMPARE(shown.buttonText(), ok);
                QCOMPARE(shown.statusText(), downloaded);
            },
            "the first");
        const QByteArray first = DialogBench::read(m_bench->onController("car1.bin"));
        QCOMPARE(first.size(), 9 + DialogBench::appendedSize);
        QVERIFY(first.startsWith("the first"));
        QVERIFY(DialogBench::read(second).startsWith("the second"));
        QCOMPARE(DialogBench::read(second).size(), 10 + DialogBench::appendedSize);
    }

    void oneThatWaitsIsAliveAndCanBeCancelled()
    {
        QLockFile lock(kitLockPath());
        QVERIFY(lock.lock());
        m_bench->setCompiler("touch started\n");
        m_bench->build("the second", [&] {
            int timeouts = 0;
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&] { ++timeouts; });
            timer.start(10);
            QTRY_VERIFY(timeouts >= 30);
            QCOMPARE(m_bench->shown().statusText(), waiting);
            m_bench->shown().verifyButtonCloses();
        });
        QVERIFY(lock.isLocked());
        // Nor does it begin when it could.
        lock.unlock();
        int looks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++looks; });
        timer.start(10);
        QTRY_VERIFY(looks >= 30);
        QVERIFY(!QFile::exists(userMainPath()));
        QVERIFY(!QFile::exists(m_bench->inMakeFolder("started")));
        QVERIFY(m_bench->finishedFiles().isEmpty());
    }

    void aWindowThatWasKilledStopsNobody()
    {
        KilledOwner owner;
        m_bench->setCompiler(DialogBench::linking());
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        QTRY_VERIFY(QFile::exists(kitLockPath()));
        DialogBench::build(*dialog, "car1", 0, [&] {
            QCOMPARE(shown.statusText(), waiting);
            owner.kill();
            QVERIFY(QFile::exists(kitLockPath()));
            QTRY_COMPARE(shown.buttonText(), ok);
            QCOMPARE(shown.statusText(), downloaded);
        });
    }

    void aFolderOfObjectsThatWasDeletedKeepsTheOtherAwayToo()
    {
        QVERIFY(QDir(m_bench->inMakeFolder("objects")).removeRecursively());
        m_bench->setCompiler(waitingToLink);
        m_bench->build([&] {
            QTRY_VERIFY(QFile::exists(m_bench->inMakeFolder("started")));
            QVERIFY(!QLockFile(kitLockPath()).tryLock());
            QVERIFY(DialogBench::write(m_bench->inMakeFolder("go"), ""));
            m_bench->shown().verifyEnd(downloaded, "done");
        });
    }

    void theKitIsFreeAgainWhenABuildEnds_data()
    {
        QTest::addColumn<QByteArray>("compiler");
        QTest::addColumn<QString>("endsWith");
        QTest::newRow("well") << DialogBench::linking() << downloaded;
        QTest::newRow("badly") << QByteArray("exit 1\n") << compileFailed;
        QTest::newRow("by a cancel") << QByteArray("exec sleep 600\n") << building;
        QTest::newRow("without a compiler") << QByteArray() << compileFailed;
        QTest::newRow("without a source") << QByteArray("exit 0\n") << compileFailed;
    }

    void theKitIsFreeAgainWhenABuildEnds()
    {
        QFETCH(QByteArray, compiler);
        QFETCH(QString, endsWith);
        if (!compiler.isEmpty()) {
            m_bench->setCompiler(compiler);
        }
        if (QTest::currentDataTag() == QByteArray("without a source")) {
            QVERIFY(QDir().mkpath(userMainPath()));
        }
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), endsWith);
            if (endsWith != building) {
                QVERIFY(QLockFile(kitLockPath()).tryLock());
            }
        });
        QVERIFY(QLockFile(kitLockPath()).tryLock());
    }
};

QTEST_MAIN(BuildDialogTwoTest)
#include "builddialogtwotest.moc"
