#include "dialogbench.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

using namespace dialogtext;

namespace
{

// Far more than closing takes, far less than any of the waits that it cuts short.
constexpr int hangGuard = 5000;

// A compiler that has started another, and neither can be asked to stop.
const QByteArray stubborn = "trap '' HUP INT TERM\n"
                            "sh -c \"trap '' HUP INT TERM; echo \\$\\$ > child; sleep 600; :\" &\n"
                            "echo $$ > parent\n"
                            "wait\n"
                            "touch came-through\n";

/** How often a widget is painted. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& p_widget) { p_widget.installEventFilter(this); }

    int count() const { return m_count; }

    bool eventFilter(QObject*, QEvent* p_event) override
    {
        m_count += p_event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    Q_DISABLE_COPY(PaintCounter)

    int m_count = 0;
};

bool isRunning(const QByteArray& p_processId)
{
    // The state stands behind the name in brackets; a process that nobody has waited for is Z.
    const QByteArray stat = DialogBench::read("/proc/" + p_processId + "/stat");
    const QByteArray state = stat.mid(stat.lastIndexOf(')') + 2, 1);
    return !state.isEmpty() && state != "Z" && state != "X";
}

using Way = std::function<void(buildDialog&)>;

const Way byTheButton = [](buildDialog& p_dialog) {
    QTest::mouseClick(Shown(p_dialog).button, Qt::LeftButton);
};
const Way byClosing = [](buildDialog& p_dialog) { p_dialog.close(); };
const QVector<QPair<QString, Way>> ways = {
    {"the button", byTheButton},
    {"the Escape key", [](buildDialog& p_dialog) { QTest::keyClick(&p_dialog, Qt::Key_Escape); }},
    {"the window's close", byClosing},
};

} // namespace

Q_DECLARE_METATYPE(Way)

class BuildDialogCloseTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

    QByteArray processId(const QString& p_file) const
    {
        return DialogBench::read(m_bench->inMakeFolder(p_file)).trimmed();
    }

    bool hasBothProcesses() const
    {
        return !processId("parent").isEmpty() && !processId("child").isEmpty();
    }

    // Ends a dialog some way, and sees that this took no time.
    static void endAtOnce(buildDialog& p_dialog, const Way& p_way)
    {
        QElapsedTimer timer;
        timer.start();
        p_way(p_dialog);
        QVERIFY(!p_dialog.isVisible());
        QVERIFY2(timer.elapsed() < hangGuard, qPrintable(QString::number(timer.elapsed())));
    }

    void endAtOnce(const Way& p_way) const { endAtOnce(m_bench->dialog(), p_way); }

    void verifyNothingWasWritten() const
    {
        QTest::qWait(50);
        QVERIFY(QDir(m_bench->controller()).isEmpty());
    }

    static void addWays()
    {
        QTest::addColumn<Way>("way");
        for (const auto& [name, way] : ways) {
            QTest::newRow(qPrintable(name)) << way;
        }
    }

private slots:
    void init() { m_bench = std::make_unique<DialogBench>(); }

    void cleanup()
    {
        m_bench->volumes().release();
        m_bench.reset();
    }

    void cancelWhileCompilingKillsTheCompilerAndItsChildren_data() { addWays(); }

    void cancelWhileCompilingKillsTheCompilerAndItsChildren()
    {
        QFETCH(Way, way);
        m_bench->setCompiler(stubborn);
        m_bench->build([&] {
            QTRY_VERIFY(hasBothProcesses());
            QVERIFY(isRunning(processId("parent")));
            QVERIFY(isRunning(processId("child")));
            endAtOnce(way);
        });
        QVERIFY(!isRunning(processId("parent")));
        QTRY_VERIFY(!isRunning(processId("child")));
        QVERIFY(m_bench->finishedFiles().isEmpty());
        QVERIFY(!QFile::exists(m_bench->compiledFile("car1")));
        QCOMPARE(m_bench->volumes().scans(), 0);
        verifyNothingWasWritten();
        QVERIFY(!QFile::exists(m_bench->inMakeFolder("came-through")));
    }

    void duringAFloodOfMessagesTheWindowIsAliveAndCancelIsImmediate()
    {
        m_bench->setCompiler("echo $$ > parent\nsh -c 'echo $$ > child; exec yes >&2' &\n"
                             "exec yes >&2\n");
        const auto dialog = m_bench->makeDialog();
        PaintCounter paints(*dialog);
        DialogBench::build(*dialog, "car1", 0, [&] {
            QTRY_VERIFY(hasBothProcesses());
            int timeouts = 0;
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&] {
                ++timeouts;
                dialog->update();
            });
            timer.start(10);
            const int paintsBefore = paints.count();
            QVERIFY(DialogBench::runUntil(
                [&] { return timeouts >= 20 && paints.count() >= paintsBefore + 10; }));
            endAtOnce(*dialog, byTheButton);
        });
        QVERIFY(!isRunning(processId("parent")));
        QTRY_VERIFY(!isRunning(processId("child")));
    }

    void cancelRightAfterTheStartLeavesNothingRunning()
    {
        m_bench->setCompiler("echo $$ > parent\nsleep 600\n");
        for (int i = 0; i < 20; ++i) {
            QFile::remove(m_bench->inMakeFolder("parent"));
            m_bench->build([&] { endAtOnce(byClosing); });
            const QByteArray id = processId("parent");
            QVERIFY(id.isEmpty() || !isRunning(id));
        }
        QVERIFY(m_bench->finishedFiles().isEmpty());
    }

    void cancelWithoutACompilerIsImmediate_data() { addWays(); }

    void cancelWithoutACompilerIsImmediate()
    {
        QFETCH(Way, way);
        m_bench->build([&] { endAtOnce(way); });
    }

    void closingAfterAFailedCompileIsImmediate_data() { addWays(); }

    void closingAfterAFailedCompileIsImmediate()
    {
        QFETCH(Way, way);
        m_bench->setCompiler("exit 1\n");
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), compileFailed);
            endAtOnce(way);
        });
    }

    void cancelWhileWaitingForTheControllerIsImmediate_data() { addWays(); }

    void cancelWhileWaitingForTheControllerIsImmediate()
    {
        QFETCH(Way, way);
        m_bench->setCompiler("exit 0\n");
        m_bench->setVolumes(std::vector<QString>{});
        m_bench->setPause(600000);
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), connecting);
            QTRY_COMPARE(m_bench->volumes().scans(), 1);
            endAtOnce(way);
        });
        QCOMPARE(m_bench->volumes().scans(), 1);
        verifyNothingWasWritten();
    }

    void cancelWhileADeadDriveHoldsUpTheScanIsImmediate_data() { addWays(); }

    void cancelWhileADeadDriveHoldsUpTheScanIsImmediate()
    {
        QFETCH(Way, way);
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), "firmware"));
        m_bench->volumes().hold();
        {
            const auto dialog = m_bench->makeDialog();
            DialogBench::updateFirmware(*dialog, [&] {
                QTRY_COMPARE(m_bench->volumes().scans(), 1);
                endAtOnce(*dialog, way);
            });
        }
        m_bench->volumes().release();
        verifyNothingWasWritten();
    }

    void closingAFinishedDialogIsImmediate_data()
    {
        QTest::addColumn<Way>("way");
        QTest::addColumn<int>("end");
        const QStringList ends{"downloaded", "download failed", "no controller"};
        for (int end = 0; end < ends.size(); ++end) {
            for (const auto& [name, way] : ways) {
                QTest::newRow(qPrintable(ends[end] + ", " + name)) << way << end;
            }
        }
    }

    void closingAFinishedDialogIsImmediate()
    {
        QFETCH(int, end);
        QFETCH(Way, way);
        m_bench->setCompiler("exit 0\n");
        if (end == 1) {
            m_bench->setVolumes(std::vector<QString>{m_bench->onController("gone")});
        } else if (end == 2) {
            m_bench->setVolumes(std::vector<QString>{});
        }
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().buttonText(), ok);
            QCOMPARE(m_bench->shown().statusText(), end == 0   ? downloaded
                                                    : end == 1 ? downloadFailed
                                                               : connecting);
            endAtOnce(way);
        });
        QCOMPARE(QFile::exists(m_bench->onController("car1.bin")), end == 0);
    }

    void cancelJustAfterTheControllerWasFoundCopiesNothing()
    {
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), "firmware"));
        m_bench->volumes().hold();
        m_bench->updateFirmware([&] {
            QTRY_COMPARE(m_bench->volumes().scans(), 1);
            m_bench->volumes().release();
            // The thread's word that it has finished is on its way, but no event is handled here.
            for (int i = 0; i < 100 && m_bench->volumes().scans() < 2; ++i) {
                QTest::qSleep(10);
            }
            QCOMPARE(m_bench->volumes().scans(), 2);
            QTest::qSleep(200);
            endAtOnce(byClosing);
        });
        verifyNothingWasWritten();
    }

    void cancelJustAfterTheCompilerHasEndedAppendsNothing()
    {
        m_bench->setCompiler("touch came-through\nexit 0\n");
        m_bench->build([&] {
            for (int i = 0; i < 300; ++i) {
                if (QFile::exists(m_bench->inMakeFolder("came-through"))) {
                    break;
                }
                QTest::qSleep(10);
            }
            QVERIFY(QFile::exists(m_bench->inMakeFolder("came-through")));
            QTest::qSleep(200);
            endAtOnce(byClosing);
        });
        QVERIFY(m_bench->finishedFiles().isEmpty());
        QCOMPARE(m_bench->volumes().scans(), 0);
        verifyNothingWasWritten();
    }

    void theProgramsEndDuringACompileKillsTheCompiler()
    {
        m_bench->setCompiler(stubborn);
        {
            const auto dialog = m_bench->makeDialog();
            QTimer::singleShot(0, dialog.get(), [&] {
                QTRY_VERIFY(hasBothProcesses());
                QCoreApplication::quit();
            });
            dialog->startBuild("car1", 0, QString());
        }
        QVERIFY(!isRunning(processId("parent")));
        QTRY_VERIFY(!isRunning(processId("child")));
        QVERIFY(m_bench->finishedFiles().isEmpty());
    }

    void theProgramsEndWhileWaitingEndsTheWait()
    {
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), "firmware"));
        m_bench->setVolumes(std::vector<QString>{});
        QElapsedTimer timer;
        {
            const auto dialog = m_bench->makeDialog();
            dialog->setPause(600000);
            QTimer::singleShot(0, dialog.get(), [&] {
                QTRY_COMPARE(m_bench->volumes().scans(), 1);
                timer.start();
                QCoreApplication::quit();
            });
            dialog->startFirmwareUpdate();
        }
        QVERIFY2(timer.elapsed() < hangGuard, qPrintable(QString::number(timer.elapsed())));
    }

    void aDialogThatNeverStartedAnythingCanBeClosed()
    {
        const auto dialog = m_bench->makeDialog();
        dialog->show();
        endAtOnce(*dialog, byClosing);
        endAtOnce(*dialog, byClosing);
    }
};

QTEST_MAIN(BuildDialogCloseTest)
#include "builddialogclosetest.moc"
