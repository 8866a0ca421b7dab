#include "dialogbench.h"
#include "smalldrive.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace dialogtext;

namespace
{

bool canMount = false;

constexpr int roomy = 4 * 1024 * 1024;
constexpr int page = 4096;

/** A drive that answers, but takes its time each time it is asked. */
class SlowVolumes : public FakeVolumes
{
public:
    using FakeVolumes::FakeVolumes;

    std::optional<quint64> freeBytes(const Volume& p_volume) override
    {
        QThread::msleep(300);
        return FakeVolumes::freeBytes(p_volume);
    }
};

} // namespace

/** Downloads onto real drives, good and bad ones. */
class BuildDialogDriveTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

    void downloadFails()
    {
        m_bench->build([&] {
            m_bench->shown().verifyEnd(downloadFailed, "compiling");
            m_bench->shown().verifyButtonCloses();
        });
        // What was compiled is still there, for a second attempt.
        QCOMPARE(QFileInfo(m_bench->compiledFile("car1")).size(), 7 + DialogBench::appendedSize);
    }

    // A copy goes by way of a temporary file, on the drive or elsewhere.
    QStringList temporaryFiles() const
    {
        return QDir(m_temporary->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_temporary;

public:
    static void initMain() { canMount = SmallDrive::prepare(); }

private slots:
    void initTestCase()
    {
        if (!canMount) {
            QSKIP("no right to mount");
        }
    }

    void init()
    {
        m_temporary = std::make_unique<QTemporaryDir>();
        m_bench = std::make_unique<DialogBench>();
        m_bench->setCompiler(DialogBench::linking());
        qputenv("TMPDIR", QFile::encodeName(m_temporary->path()));
    }

    void cleanup()
    {
        qunsetenv("TMPDIR");
        m_bench.reset();
        QCOMPARE(temporaryFiles(), QStringList());
    }

    void aDriveWithoutRoomForTheFileIsAFailedDownload_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("fails");
        // The file takes 15 pages, of which the last holds some 200 bytes.
        QTest::newRow("no room at all") << page << true;
        QTest::newRow("room for half of it") << 8 * page << true;
        QTest::newRow("no room for the last 200 bytes") << 14 * page << true;
        QTest::newRow("just enough") << 15 * page << false;
    }

    void aDriveWithoutRoomForTheFileIsAFailedDownload()
    {
        QFETCH(int, size);
        QFETCH(bool, fails);
        SmallDrive drive(size + page);
        QVERIFY(drive.isMounted());
        QVERIFY(DialogBench::write(drive.file("car2.bin"), "another program"));
        m_bench->setVolumes(std::vector<QString>{drive.root()});
        if (!fails) {
            m_bench->buildToTheEnd("car1");
            QCOMPARE(DialogBench::read(drive.file("car1.bin")),
                     DialogBench::read(m_bench->compiledFile("car1")));
            return;
        }
        downloadFails();
        // No half of a program, which a controller might run.
        QCOMPARE(QDir(drive.root()).entryList(QDir::Files | QDir::Hidden), QStringList{"car2.bin"});
        QCOMPARE(DialogBench::read(drive.file("car2.bin")), QByteArray("another program"));
    }

    void anOlderFileGivesItsRoomToTheNewOne()
    {
        SmallDrive drive(16 * page);
        QVERIFY(drive.isMounted());
        QVERIFY(DialogBench::write(drive.file("car1.bin"), QByteArray(15 * page, 'o')));
        m_bench->setVolumes(std::vector<QString>{drive.root()});
        m_bench->buildToTheEnd("car1");
        QCOMPARE(DialogBench::read(drive.file("car1.bin")),
                 DialogBench::read(m_bench->compiledFile("car1")));
    }

    void aWriteProtectedDriveIsAFailedDownloadAndKeepsWhatItHolds_data()
    {
        QTest::addColumn<QString>("held");
        QTest::newRow("another file") << "car2.bin";
        QTest::newRow("a file of that name") << "car1.bin";
    }

    void aWriteProtectedDriveIsAFailedDownloadAndKeepsWhatItHolds()
    {
        QFETCH(QString, held);
        SmallDrive drive(roomy);
        QVERIFY(drive.isMounted());
        QVERIFY(DialogBench::write(drive.file(held), "old"));
        QVERIFY(drive.protect());
        m_bench->setVolumes(std::vector<QString>{drive.root()});
        downloadFails();
        QCOMPARE(QDir(drive.root()).entryList(QDir::Files | QDir::Hidden), QStringList{held});
        QCOMPARE(DialogBench::read(drive.file(held)), QByteArray("old"));
    }

    void afterAFailedDownloadTheSecondDriveIsNotTried()
    {
        SmallDrive first(roomy);
        SmallDrive second(roomy);
        QVERIFY(first.isMounted() && second.isMounted());
        QVERIFY(first.protect());
        m_bench->setVolumes(std::vector<QString>{first.root(), second.root()});
        downloadFails();
        QVERIFY(QDir(second.root()).isEmpty());
    }

    void aDrivePulledOutBetweenTheLastLookAndTheCopyIsAFailedDownload()
    {
        SmallDrive drive(roomy);
        QVERIFY(drive.isMounted());
        m_bench->setVolumes([&drive](int p_scan) {
            if (p_scan == 2) {
                drive.pullOut();
            }
            return std::vector<QString>{drive.root()};
        });
        downloadFails();
        QVERIFY(!QFile::exists(drive.root()));
        QCOMPARE(m_bench->volumes().scans(), 2);
    }

    void aDriveWithBlanksAndChineseCharactersInItsNameGetsTheFile()
    {
        SmallDrive drive(roomy, QStringLiteral("我的 控制器 1"));
        QVERIFY(drive.isMounted());
        m_bench->setVolumes(std::vector<QString>{drive.root()});
        m_bench->buildToTheEnd("car1");
        QCOMPARE(DialogBench::read(drive.file("car1.bin")).size(), 7 + DialogBench::appendedSize);
        QCOMPARE(DialogBench::read(drive.file("car1.bin")),
                 DialogBench::read(m_bench->compiledFile("car1")));
    }

    void whileADriveAnswersSlowlyTheWindowIsAlive()
    {
        SmallDrive drive(roomy);
        QVERIFY(drive.isMounted());
        const auto slow = std::make_shared<SlowVolumes>(std::vector<QString>{drive.root()});
        const auto dialog = m_bench->makeDialog();
        dialog->setVolumes(slow);
        const Shown shown(*dialog);
        int answersBefore = 0;
        DialogBench::build(*dialog, "car1", 0, [&] {
            QTRY_COMPARE(slow->scans(), 1);
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&] { ++answersBefore; });
            timer.start(10);
            QTRY_COMPARE(shown.buttonText(), ok);
            QCOMPARE(shown.statusText(), downloaded);
        });
        // Two answers of 300 milliseconds each came meanwhile.
        QVERIFY2(answersBefore >= 10, qPrintable(QString::number(answersBefore)));
        QVERIFY(QFile::exists(drive.file("car1.bin")));
    }

    void aSlowDriveIsLeftBehindByCancel()
    {
        SmallDrive drive(roomy);
        QVERIFY(drive.isMounted());
        const auto slow = std::make_shared<SlowVolumes>(std::vector<QString>{drive.root()});
        {
            const auto dialog = m_bench->makeDialog();
            dialog->setVolumes(slow);
            DialogBench::build(*dialog, "car1", 0, [&] {
                QTRY_COMPARE(slow->scans(), 1);
                QTest::mouseClick(Shown(*dialog).button, Qt::LeftButton);
                QVERIFY(!dialog->isVisible());
            });
        }
        // The scan comes to its end on its own.
        QTRY_COMPARE(slow.use_count(), 1L);
        QVERIFY(QDir(drive.root()).isEmpty());
    }
};

QTEST_MAIN(BuildDialogDriveTest)
#include "builddialogdrivetest.moc"
