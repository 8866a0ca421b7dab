#include "dialogbench.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace dialogtext;

namespace
{

// Lets files grow to so many bytes only, as a full disk would, for its lifetime.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t p_bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {p_bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    Q_DISABLE_COPY(FileSizeLimit)

    rlimit m_before = {};
};

} // namespace

class BuildDialogDownloadTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

private slots:
    void init() { m_bench = std::make_unique<DialogBench>(); }
    void cleanup() { m_bench.reset(); }

    void whileItWaitsForTheControllerItSaysSo()
    {
        m_bench->setCompiler(DialogBench::linking());
        m_bench->setVolumes(std::vector<QString>{});
        m_bench->setPause(600000);
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), connecting);
            QCOMPARE(m_bench->shown().iconName(), QString("compiling"));
            QCOMPARE(m_bench->shown().buttonText(), cancel);
            QVERIFY(!m_bench->shown().progress->isVisible());
        });
    }

    void withoutAControllerTheIconTellsAndTheStatusStaysAtConnecting()
    {
        m_bench->setCompiler(DialogBench::linking());
        m_bench->setVolumes(std::vector<QString>{});
        m_bench->build([&] { m_bench->shown().verifyEnd(connecting, "failed"); });
        QCOMPARE(m_bench->volumes().scans(), 62);
    }

    void ofTwoControllersTheFirstGetsTheFile()
    {
        m_bench->setCompiler(DialogBench::linking());
        m_bench->setVolumes(
            std::vector<QString>{m_bench->controller(), m_bench->secondController()});
        m_bench->buildToTheEnd("car1");
        QVERIFY(QFile::exists(m_bench->onController("car1.bin")));
        QVERIFY(QDir(m_bench->secondController()).isEmpty());
    }

    void aFileOfTheSameNameIsReplacedAndOthersStay()
    {
        m_bench->setCompiler(DialogBench::linking());
        QVERIFY(DialogBench::write(m_bench->onController("car1.bin"), QByteArray(200000, 'o')));
        QVERIFY(DialogBench::write(m_bench->onController("car2.bin"), "other"));
        QVERIFY(DialogBench::write(m_bench->onController("UPDATE.bin"), "firmware"));
        m_bench->buildToTheEnd("car1");
        QCOMPARE(DialogBench::read(m_bench->onController("car1.bin")),
                 DialogBench::read(m_bench->compiledFile("car1")));
        QCOMPARE(DialogBench::read(m_bench->onController("car2.bin")), QByteArray("other"));
        QCOMPARE(DialogBench::read(m_bench->onController("UPDATE.bin")), QByteArray("firmware"));
        QCOMPARE(QDir(m_bench->controller()).entryList(QDir::Files).size(), 3);
    }

    void aDriveThatVanishesBeforeTheCopyIsAFailedDownload()
    {
        m_bench->setCompiler(DialogBench::linking());
        m_bench->setVolumes(std::vector<QString>{m_bench->onController("gone")});
        m_bench->build([&] { m_bench->shown().verifyEnd(downloadFailed, "compiling"); });
        QVERIFY(QDir(m_bench->controller()).isEmpty());
    }

    void aTargetThatCannotBeRemovedIsAFailedDownload()
    {
        m_bench->setCompiler(DialogBench::linking());
        QVERIFY(QDir().mkpath(m_bench->onController("car1.bin/inside")));
        m_bench->build([&] { m_bench->shown().verifyEnd(downloadFailed, "compiling"); });
    }

    void aFullControllerIsAFailedDownload()
    {
        // A firmware file, since that isn't written before it is copied.
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), QByteArray(100000, 'f')));
        m_bench->updateFirmware([&] {
            const FileSizeLimit full(30000);
            QTRY_COMPARE(m_bench->shown().buttonText(), ok);
            QCOMPARE(m_bench->shown().statusText(), downloadFailed);
        });
        QVERIFY(!QFile::exists(m_bench->onController("UPDATE.bin")));
    }

    void firmwareIsCopiedWithoutACompile()
    {
        m_bench->setCompiler("touch was-called\n");
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), QByteArray(1000, 'f')));
        QVERIFY(DialogBench::write(m_bench->onController("UPDATE.bin"), "an older one"));
        m_bench->setVolumes([this](int p_scan) {
            return p_scan < 30 ? std::vector<QString>{}
                               : std::vector<QString>{m_bench->controller()};
        });
        m_bench->updateFirmware([&] {
            QVERIFY(!m_bench->shown().progress->isVisible());
            m_bench->shown().verifyEnd(downloaded, "done");
        });
        QCOMPARE(DialogBench::read(m_bench->onController("UPDATE.bin")), QByteArray(1000, 'f'));
        QVERIFY(!QFile::exists(m_bench->inMakeFolder("was-called")));
        QVERIFY(m_bench->finishedFiles().isEmpty());
        QCOMPARE(m_bench->volumes().scans(), 31);
    }

    void firmwareStartsWithAnEmptyStatus()
    {
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), "f"));
        m_bench->volumes().hold();
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        shown.status->setText("before");
        DialogBench::updateFirmware(*dialog, [&] {
            QVERIFY(shown.statusText() != "before");
            QTRY_COMPARE(shown.statusText(), connecting);
            QCOMPARE(shown.buttonText(), cancel);
            QVERIFY(shown.iconName().isEmpty());
            m_bench->volumes().release();
        });
    }

    void firmwareWithoutAControllerEndsAsAProgramDoes()
    {
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), "f"));
        m_bench->setVolumes(std::vector<QString>{});
        m_bench->updateFirmware([&] { m_bench->shown().verifyEnd(connecting, "failed"); });
        QCOMPARE(m_bench->volumes().scans(), 62);
    }

    void ofTwoControllersTheFirstGetsTheFirmware()
    {
        QVERIFY(DialogBench::write(m_bench->firmwareFile(), "f"));
        m_bench->setVolumes(
            std::vector<QString>{m_bench->controller(), m_bench->secondController()});
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        DialogBench::updateFirmware(*dialog, [&] { QTRY_COMPARE(shown.buttonText(), ok); });
        QCOMPARE(DialogBench::read(m_bench->onController("UPDATE.bin")), QByteArray("f"));
        QVERIFY(QDir(m_bench->secondController()).isEmpty());
    }

    void theFirmwaresFieldsAreLogged_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("projectId");
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("result");
        const QByteArray whole = QByteArray(512, 'x') + QByteArray("\5\4\3\2", 4) + "korv-9tail";
        const auto row = [](const char* p_name, const QByteArray& p_file, const char* p_projectId,
                            const char* p_version, const QString& p_result) {
            QTest::newRow(p_name) << p_file << p_projectId << p_version << p_result;
        };
        row("whole", whole, "korv-9", "3.4.5", downloaded);
        row("518 bytes", whole.left(518), "ko", "3.4.5", downloaded);
        row("514 bytes", whole.left(514), "", "0.4.5", downloaded);
        row("100 bytes", whole.left(100), "", "0.0.0", downloaded);
        row("no file", QByteArray(), "", "", downloadFailed);
    }

    void theFirmwaresFieldsAreLogged()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, projectId);
        QFETCH(QString, version);
        QFETCH(QString, result);
        if (!file.isNull()) {
            QVERIFY(DialogBench::write(m_bench->firmwareFile(), file));
        }
        const LogKeeper log;
        m_bench->updateFirmware([&] {
            QTRY_COMPARE(m_bench->shown().buttonText(), ok);
            QCOMPARE(m_bench->shown().statusText(), result);
        });
        const int first = log.messages().indexOf("firmware update");
        QVERIFY(first >= 0);
        QCOMPARE(log.messages().mid(first, 4),
                 QStringList({"firmware update", "    projectId: " + projectId,
                              "    version: " + version, "    file: " + m_bench->firmwareFile()}));
    }

    void theFieldsOfAnOrdinaryProgramAreLoggedToo()
    {
        m_bench->setCompiler(DialogBench::linking());
        const LogKeeper log;
        m_bench->buildToTheEnd("car1");
        QVERIFY(log.messages().contains("firmware update"));
        QVERIFY(log.messages().contains("    file: " + m_bench->compiledFile("car1")));
    }
};

QTEST_MAIN(BuildDialogDownloadTest)
#include "builddialogdownloadtest.moc"
