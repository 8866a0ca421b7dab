#include "base/config.h"
#include "dialoghands.h"
#include "update/updatefiles.h"
#include "update/updateserver.h"
#include "updateservice.h"

#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace
{
const char s_program[] = "program.json";
const QString s_checking = QStringLiteral("正在检测新版本...");
const QString s_failed = QStringLiteral("下载安装包失败");
const QString s_newest = QStringLiteral("已经是最新版本，不需要更新");
const QString s_broken = QStringLiteral("版本号检测错误");
const QString s_ignoredKey = QStringLiteral("app_upgrade.ignore_version");
const QString s_deletedKey = QStringLiteral("app_upgrade.installer_deleted");
const QString s_large = QStringLiteral("large");
const QString s_installer = QStringLiteral("installer");

bool write(const QString& p_path, const QByteArray& p_content)
{
    QDir().mkpath(QFileInfo(p_path).path());
    QFile file(p_path);
    return file.open(QIODevice::WriteOnly) && file.write(p_content) == p_content.size();
}

QList<QTimer*> timersOf(const UpgradeDialog& p_dialog)
{
    return p_dialog.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
}
} // namespace

/** The dialog and a real service on this machine. */
class UpgradeDialogTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<UpdateService> m_service;
    QTemporaryDir m_folder;
    std::unique_ptr<UpgradeDialog> m_dialog;
    std::unique_ptr<DialogHands> m_hands;

    /** What a started installer leaves. */
    QString trace() const { return m_folder.filePath(QStringLiteral("trace")); }
    int asked(const char* p_id) const
    {
        return m_service->requests().filter(QStringLiteral("appid=") + QLatin1String(p_id)).size();
    }
    /** Checks against an answer, and waits until the dialog has said its word. */
    void check(const QByteArray& p_answer)
    {
        m_service->setAnswer(s_program, p_answer);
        const int before = asked("net.korvane.tiler");
        m_dialog->startCheck();
        QTRY_VERIFY(asked("net.korvane.tiler") > before);
        // The answer is on its way yet when nginx has written its log.
        QTRY_COMPARE(queries(), 0);
    }
    /** The queries under way. */
    int queries() const
    {
        int count = 0;
        for (const QNetworkAccessManager* manager : m_dialog->findChildren<QNetworkAccessManager*>(
                 QString(), Qt::FindDirectChildrenOnly)) {
            count += manager->findChildren<QNetworkReply*>().size();
        }
        return count;
    }
    /** The same with the downloads. */
    int replies() const { return m_dialog->findChildren<QNetworkReply*>().size(); }
    /** The dialog offers version 9.0 from an address. */
    void find(const QString& p_url, const char* p_update = "\"0\"")
    {
        check(offer("9.0", p_url, p_update));
        QVERIFY(m_dialog->isVisible());
    }
    void startSlowDownload()
    {
        find(m_service->slowUrl(s_large));
        DialogHands::press(m_hands->ok);
        QTRY_VERIFY(m_hands->progress->isVisible());
        QTRY_VERIFY(QFileInfo(installerFile()).size() > 0);
    }

private slots:
    void initTestCase()
    {
        configSetUp();
        // A run that was killed may have left anything.
        QFile::remove(updateFolder());
        QDir(updateFolder()).removeRecursively();
        m_service = std::make_unique<UpdateService>();
        QVERIFY(m_service->start());
        m_service->addFile(s_large, QByteArray(400000, 'x'));
        m_service->addFile(s_installer, installerTelling(trace()));
        m_service->addFile(QStringLiteral("empty"), QByteArray());
        m_service->addFile(QStringLiteral("noprogram"), QByteArray("\1\2\3 no program"));
    }

    void init()
    {
        setUpdateServer(m_service->base());
        setStringList(s_ignoredKey, {});
        setString(s_deletedKey, QString());
        QFile::remove(trace());
        m_dialog = std::make_unique<UpgradeDialog>();
        m_hands = std::make_unique<DialogHands>(*m_dialog);
    }

    void cleanup()
    {
        m_hands.reset();
        m_dialog.reset();
        m_service->removeAnswer(s_program);
    }

    void theFilesOfAnUpdateLieInTheTemporaryLocation()
    {
        const QString folder =
            QStandardPaths::writableLocation(QStandardPaths::TempLocation) + "/tiler";
        QCOMPARE(updateFolder(), folder);
        QCOMPARE(storedVersionFile(), folder + "/upgrade_config.json");
        QCOMPARE(installerFile(), folder + "/app_installer.exe");
        QCOMPARE(downloadedFirmwareFile(), folder + "/UPDATE.bin");
        QCOMPARE(installedFirmwareFile(),
                 QCoreApplication::applicationDirPath() + "/firmwares/UPDATE.bin");
    }

    void theFormIsLaidOutAsTold()
    {
        QCOMPARE(int(m_dialog->windowFlags() & ~Qt::Window & ~Qt::Dialog),
                 int((Qt::FramelessWindowHint | Qt::Tool) & ~Qt::Window & ~Qt::Dialog));
        QVERIFY(m_dialog->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(m_dialog->layout()->contentsMargins(), QMargins());
        const auto* ground = m_dialog->findChild<QLabel*>(QStringLiteral("UpgradeDialog_bg"));
        QCOMPARE(ground->layout()->contentsMargins(), QMargins(60, 40, 60, 60));
        m_dialog->show();
        QCOMPARE(m_hands->title->height(), 30);
        QCOMPARE(m_hands->title->font().pixelSize(), 24);
        QCOMPARE(m_hands->version->parentWidget()->height(), 30);
        QCOMPARE(m_hands->version->font().pixelSize(), 20);
        QVERIFY(m_hands->text->height() >= 180);
        QCOMPARE(m_hands->text->font().pixelSize(), 16);
        QCOMPARE(int(m_hands->text->alignment()), int(Qt::AlignLeft | Qt::AlignTop));
        QCOMPARE(m_hands->progress->minimum(), 0);
        QCOMPARE(m_hands->progress->maximum(), 100);
        QCOMPARE(m_hands->progress->maximumHeight(), 20);
        for (const QPushButton* button : {m_hands->cancel, m_hands->ok, m_hands->close}) {
            QCOMPARE(button->minimumHeight(), 40);
            QCOMPARE(button->font().pixelSize(), 18);
        }
    }

    void beforeTheFirstCheckTheButtonToCloseIsHidden()
    {
        m_dialog->show();
        QCOMPARE(m_hands->title->text(), QStringLiteral("发现新版本"));
        QVERIFY(!m_hands->close->isVisible());
        QVERIFY(!m_hands->progress->isVisible());
        for (const QWidget* widget : std::initializer_list<QWidget*>{
                 m_hands->version, m_hands->ignore, m_hands->cancel, m_hands->ok}) {
            QVERIFY(widget->isVisible());
        }
        // Nothing is on offer yet that could be ignored.
        m_hands->ignore->setChecked(true);
        DialogHands::press(m_hands->cancel);
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(getStringList(s_ignoredKey).isEmpty());
    }

    void nothingOfTheNetworkIsMadeBeforeTheCheck()
    {
        QVERIFY(m_dialog->findChildren<QNetworkAccessManager*>().isEmpty());
        m_dialog->startCheck();
        QCOMPARE(m_dialog->findChildren<QNetworkAccessManager*>().size(), 2);
    }

    void aCheckAsksOnceForTheProgramAndOnceForTheFirmware()
    {
        const int programs = asked("net.korvane.tiler");
        const int firmwares = asked("qz417");
        m_dialog->startCheck();
        QTRY_COMPARE(asked("net.korvane.tiler"), programs + 1);
        QTRY_COMPARE(asked("qz417"), firmwares + 1);
        QVERIFY(m_service->requests().last().startsWith(QLatin1String("GET /app/version?appid=")));
    }

    void aCheckBeginsInTheModeOfChecking()
    {
        m_dialog->startCheck();
        m_dialog->show();
        QCOMPARE(m_hands->title->text(), QStringLiteral("新版本检测"));
        QCOMPARE(m_hands->text->text(), s_checking);
        QVERIFY(m_hands->close->isVisible());
        for (const QWidget* widget :
             std::initializer_list<QWidget*>{m_hands->version, m_hands->ignore, m_hands->cancel,
                                             m_hands->ok, m_hands->progress}) {
            QVERIFY(!widget->isVisible());
        }
        DialogHands::press(m_hands->close);
        QVERIFY(!m_dialog->isVisible());
    }

    void aNewerVersionIsShownWithItsNotes()
    {
        find(m_service->url(s_installer));
        QCOMPARE(m_hands->title->text(), QStringLiteral("发现新版本"));
        QCOMPARE(m_hands->version->text(), QStringLiteral("version:9.0"));
        QCOMPARE(m_hands->text->text(), QStringLiteral("What is new"));
        for (const QWidget* widget : std::initializer_list<QWidget*>{
                 m_hands->version, m_hands->ignore, m_hands->cancel, m_hands->ok}) {
            QVERIFY(widget->isVisible() && widget->isEnabled());
        }
        QVERIFY(!m_hands->close->isVisible());
        QVERIFY(!m_hands->progress->isVisible());
        QVERIFY(!QFile::exists(installerFile()));
    }

    void notesAreNoMarkupAndMayBeLong()
    {
        const QByteArray notes = QByteArray("<img src='/etc/passwd'>\\n").repeated(200);
        check("{\"state\":1,\"appversion\":\"9.0\",\"en_content\":\"" + notes + "\"}");
        QVERIFY(m_dialog->isVisible());
        QVERIFY(m_hands->text->text().startsWith(QLatin1String("<img")));
        QCOMPARE(m_hands->text->textFormat(), Qt::PlainText);
        // The window stays as it is, and its buttons in it.
        QCOMPARE(m_dialog->size(), QPixmap(QStringLiteral(":/upgrade_bg_blue.png")).size());
        const QRect ok(m_hands->ok->mapTo(m_dialog.get(), QPoint(0, 0)), m_hands->ok->size());
        QVERIFY(m_dialog->rect().contains(ok));
        QCOMPARE(ok.height(), 40);
    }

    void theOwnVersionGivesAMessageAndNoDialog()
    {
        check(offer("1.1.2", m_service->url(s_installer)));
        QTRY_COMPARE(m_hands->text->text(), s_newest);
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(!timersOf(*m_dialog).first()->isActive());
    }

    void anAnswerThatIsNoJsonSaysSo_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a web page") << QByteArray("<html>");
        QTest::newRow("cut off") << QByteArray("{\"state\":1,\"appver");
    }

    void anAnswerThatIsNoJsonSaysSo()
    {
        QFETCH(QByteArray, answer);
        check(answer);
        QTRY_COMPARE(m_hands->text->text(), s_broken);
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(!timersOf(*m_dialog).first()->isActive());
    }

    void anAnswerOfAnotherStateChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("no state") << QByteArray("{\"appversion\":\"9.0\"}");
        QTest::newRow("state 0") << QByteArray("{\"state\":0,\"appversion\":\"9.0\"}");
        QTest::newRow("state 2") << QByteArray("{\"state\":2,\"appversion\":\"9.0\"}");
        QTest::newRow("an array") << QByteArray("[1]");
    }

    void anAnswerOfAnotherStateChangesNothing()
    {
        QFETCH(QByteArray, answer);
        check(answer);
        QCOMPARE(m_hands->text->text(), s_checking);
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(!timersOf(*m_dialog).first()->isActive());
    }

    void aQueryFollowsARedirectToAnotherHost()
    {
        setUpdateServer(m_service->redirectingBase());
        m_service->setAnswer(s_program, offer("9.0", m_service->url(s_installer)));
        m_dialog->startCheck();
        QTRY_VERIFY(m_dialog->isVisible());
    }

    void aNetworkErrorIsSilentAndTriedAgainAfterFiveMinutes_data()
    {
        QTest::addColumn<QString>("base");
        QTest::newRow("nobody there") << UpdateService::closedBase();
        QTest::newRow("500") << m_service->brokenBase();
        QTest::newRow("404") << m_service->base();
        QTest::newRow("a stranger's certificate") << m_service->strangersBase();
        QTest::newRow("a certificate for another name") << m_service->misnamedBase();
    }

    void aNetworkErrorIsSilentAndTriedAgainAfterFiveMinutes()
    {
        QFETCH(QString, base);
        // It offers something only to who passes over a certificate that is none.
        if (base != m_service->base()) {
            m_service->setAnswer(s_program, offer("9.0", m_service->url(s_installer)));
        }
        setUpdateServer(base);
        m_dialog->startCheck();
        QTimer* retry = timersOf(*m_dialog).first();
        QCOMPARE(retry->interval(), 300000);
        QVERIFY(!retry->isActive());
        QTRY_VERIFY(retry->isActive());
        QTRY_COMPARE(queries(), 0);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_hands->text->text(), s_checking);

        // The five minutes are over; the network isn't back yet.
        const int before = asked("net.korvane.tiler");
        const int firmwares = asked("qz417");
        QMetaObject::invokeMethod(retry, "timeout");
        QTRY_COMPARE(replies(), 0);
        QVERIFY(retry->isActive());
        QVERIFY(!m_dialog->isVisible());

        // And again, when it is.
        setUpdateServer(m_service->base());
        m_service->setAnswer(s_program, offer("9.0", m_service->url(s_installer)));
        QMetaObject::invokeMethod(retry, "timeout");
        QTRY_VERIFY(m_dialog->isVisible());
        QVERIFY(!retry->isActive());
        QVERIFY(asked("net.korvane.tiler") > before);
        QCOMPARE(asked("qz417"), firmwares);
    }

    void eachCheckMakesATimerAndTheEarlierOnesStay()
    {
        setUpdateServer(UpdateService::closedBase());
        m_dialog->startCheck();
        QTRY_VERIFY(timersOf(*m_dialog).first()->isActive());
        m_dialog->startCheck();
        QCOMPARE(timersOf(*m_dialog).size(), 2);
        QTRY_VERIFY(timersOf(*m_dialog).last()->isActive());
        QVERIFY(timersOf(*m_dialog).first()->isActive());
    }

    void twoChecksAtOnceAreHarmless()
    {
        m_service->setAnswer(s_program, offer("9.0", m_service->url(s_installer)));
        m_dialog->startCheck();
        m_dialog->startCheck();
        QTRY_VERIFY(m_dialog->isVisible());
        QTRY_COMPARE(replies(), 0);
        QCOMPARE(m_hands->version->text(), QStringLiteral("version:9.0"));
    }

    void anIgnoredVersionDoesNotOpenTheDialog()
    {
        setStringList(s_ignoredKey, {QStringLiteral("8.0"), QStringLiteral("9.0")});
        check(offer("9.0", m_service->url(s_installer)));
        QTRY_COMPARE(m_hands->version->text(), QStringLiteral("version:9.0"));
        QVERIFY(!m_dialog->isVisible());
        check(offer("9.1", m_service->url(s_installer)));
        QTRY_VERIFY(m_dialog->isVisible());
    }

    void aForcedUpdateThatIsIgnoredDoesNotStart()
    {
        setStringList(s_ignoredKey, {QStringLiteral("9.0")});
        check(offer("9.0", m_service->slowUrl(s_large), "\"1\""));
        QTRY_COMPARE(m_hands->version->text(), QStringLiteral("version:9.0"));
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(!QFile::exists(installerFile()));
        QVERIFY(m_hands->ok->isEnabled());
    }

    void aForcedUpdateStartsAtOnceAndLetsNobodyOut()
    {
        find(m_service->slowUrl(s_large), "\"1\"");
        QVERIFY(!m_hands->ok->isEnabled());
        QVERIFY(!m_hands->cancel->isEnabled());
        QTRY_VERIFY(m_hands->progress->isVisible());
        QTRY_VERIFY(QFileInfo(installerFile()).size() > 0);
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QVERIFY(m_dialog->isVisible());
        // Closed by the window system it goes on all the same.
        m_dialog->close();
        QVERIFY(!m_dialog->isVisible());
        const qint64 there = QFileInfo(installerFile()).size();
        QTRY_VERIFY(QFileInfo(installerFile()).size() > there);
    }

    void aForcedUpdateThatFailsLeavesTheButtonsDisabled()
    {
        find(m_service->missingUrl(), "\"1\"");
        QTRY_COMPARE(m_hands->text->text(), s_failed);
        QTRY_COMPARE(replies(), 0);
        QVERIFY(!m_hands->progress->isVisible());
        QVERIFY(!m_hands->ok->isEnabled());
        QVERIFY(!m_hands->cancel->isEnabled());
        QVERIFY(m_dialog->isVisible());
        // There is nothing left to wait for.
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
    }

    void aNumberForcesNothing()
    {
        find(m_service->slowUrl(s_large), "1");
        QVERIFY(m_hands->ok->isEnabled());
        QVERIFY(!QFile::exists(installerFile()));
    }

    void cancelWithTheBoxTickedStoresTheVersionOnce()
    {
        for (int i = 0; i < 2; ++i) {
            m_dialog->show();
            check(offer("9.0", m_service->url(s_installer)));
            QTRY_VERIFY(m_hands->cancel->isVisible());
            m_hands->ignore->setChecked(true);
            DialogHands::press(m_hands->cancel);
            QVERIFY(!m_dialog->isVisible());
        }
        configSetUp();
        QCOMPARE(getStringList(s_ignoredKey), QStringList{QStringLiteral("9.0")});
    }

    void cancelWithoutTheTickStoresNothing()
    {
        find(m_service->url(s_installer));
        DialogHands::press(m_hands->cancel);
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(getStringList(s_ignoredKey).isEmpty());
    }

    void theTickAndThenOkStoreNothing()
    {
        find(m_service->slowUrl(s_large));
        m_hands->ignore->setChecked(true);
        DialogHands::press(m_hands->ok);
        QTRY_VERIFY(m_hands->progress->isVisible());
        QVERIFY(getStringList(s_ignoredKey).isEmpty());
    }

    void aDownloadShowsItsProgressAndKeepsOkEnabled()
    {
        startSlowDownload();
        QTRY_VERIFY(m_hands->progress->value() > 0);
        QVERIFY(m_hands->progress->value() < 100);
        QVERIFY(m_hands->ok->isEnabled());
        QVERIFY(m_hands->cancel->isEnabled());
    }

    void aLengthThatNobodyKnowsLeavesTheBarAsItIs_data()
    {
        QTest::addColumn<qlonglong>("received");
        QTest::addColumn<qlonglong>("total");
        QTest::addColumn<int>("value");
        QTest::newRow("-1") << 500LL << -1LL << 40;
        QTest::newRow("0") << 500LL << 0LL << 40;
        QTest::newRow("0 of 0") << 0LL << 0LL << 40;
        QTest::newRow("cut, not rounded") << 999LL << 1000LL << 99;
        QTest::newRow("more than there is") << 3000LL << 1000LL << 40;
        QTest::newRow("4 TB") << 3000000000000LL << 4000000000000LL << 75;
    }

    void aLengthThatNobodyKnowsLeavesTheBarAsItIs()
    {
        QFETCH(qlonglong, received);
        QFETCH(qlonglong, total);
        QFETCH(int, value);
        m_dialog->show();
        m_hands->progress->setValue(40);
        m_dialog->onDownloadProgress(received, total);
        QVERIFY(m_hands->progress->isVisible());
        QCOMPARE(m_hands->progress->value(), value);
    }

    void aDownloadIsToldInTheLog()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
        const QByteArray file = "p_localFileName: " + installerFile().toUtf8();
        QTest::ignoreMessage(QtDebugMsg, "p_rometoUrl: nowhere");
        QTest::ignoreMessage(QtDebugMsg, file.constData());
        m_dialog->download(QStringLiteral("nowhere"), installerFile());
        QTest::ignoreMessage(QtDebugMsg, "bytesReceived: 3000000000000");
        QTest::ignoreMessage(QtDebugMsg, "bytesTotal: -1");
        m_dialog->onDownloadProgress(3000000000000LL, -1);
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void aDownloadWithoutALengthRunsWithABarAtZero()
    {
        find(m_service->slowChunkedUrl(s_large));
        DialogHands::press(m_hands->ok);
        QTRY_VERIFY(m_hands->progress->isVisible());
        QTRY_VERIFY(QFileInfo(installerFile()).size() > 0);
        QCOMPARE(m_hands->progress->value(), 0);
    }

    void cancelInADownloadBreaksItOffAndTheNextCheckDeletesThePart()
    {
        startSlowDownload();
        DialogHands::press(m_hands->cancel);
        QVERIFY(!m_dialog->isVisible());
        const qint64 part = QFileInfo(installerFile()).size();
        QVERIFY(part > 0 && part < 400000);
        QTRY_VERIFY(m_service->requests().last().contains(QLatin1String("/slow/")));
        QCOMPARE(QFileInfo(installerFile()).size(), part);
        m_dialog->startCheck();
        QVERIFY(!QFile::exists(installerFile()));
    }

    void escapeInADownloadBreaksItOffToo()
    {
        startSlowDownload();
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QTRY_VERIFY(m_service->requests().last().contains(QLatin1String("/slow/")));
        QVERIFY(!QFile::exists(trace()));
    }

    void okInADownloadStartsOver()
    {
        startSlowDownload();
        const int before = m_service->requests().size();
        DialogHands::press(m_hands->ok);
        // The first one ends, cut off.
        QTRY_VERIFY(m_service->requests().size() > before);
        QTRY_VERIFY(QFileInfo(installerFile()).size() > 0);
        QCOMPARE(m_hands->text->text(), QStringLiteral("What is new"));
        DialogHands::press(m_hands->cancel);
        QVERIFY(!m_dialog->isVisible());
    }

    void theDialogMayGoInADownload()
    {
        startSlowDownload();
        m_dialog.reset();
        QTRY_VERIFY(m_service->requests().last().contains(QLatin1String("/slow/")));
        QVERIFY(!QFile::exists(trace()));
    }

    void theDialogMayGoInAQuery()
    {
        m_dialog->startCheck();
        m_dialog.reset();
        QCoreApplication::processEvents();
    }

    void aDownloadThatFailsSaysSoAndOkStartsOver_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("404") << m_service->missingUrl();
        QTest::newRow("500") << m_service->brokenUrl();
        QTest::newRow("nobody there") << UpdateService::closedBase() + "/i";
        QTest::newRow("a stranger's certificate")
            << m_service->strangersBase() + "/files/installer";
        QTest::newRow("out of encryption") << m_service->insecurelyRedirectedUrl(s_installer);
        QTest::newRow("not encrypted") << m_service->url(s_installer).replace("https", "http");
        QTest::newRow("a file of this machine") << QStringLiteral("file:///bin/true");
        QTest::newRow("no address") << QString();
        QTest::newRow("an empty file") << m_service->url(QStringLiteral("empty"));
        QTest::newRow("no program") << m_service->url(QStringLiteral("noprogram"));
    }

    void aDownloadThatFailsSaysSoAndOkStartsOver()
    {
        QFETCH(QString, url);
        find(url);
        for (int i = 0; i < 2; ++i) {
            m_hands->text->setText(QString());
            DialogHands::press(m_hands->ok);
            QTRY_COMPARE(m_hands->text->text(), s_failed);
            QTRY_COMPARE(replies(), 0);
            QVERIFY(!m_hands->progress->isVisible());
            QVERIFY(m_dialog->isVisible());
            QVERIFY(m_hands->ok->isEnabled());
        }
        QVERIFY(!QFile::exists(trace()));
    }

    void aTargetThatCannotBeWrittenIsAFailedDownload()
    {
        find(m_service->url(s_installer));
        QVERIFY(QDir().mkpath(installerFile() + QStringLiteral("/inside")));
        DialogHands::press(m_hands->ok);
        QTRY_COMPARE(m_hands->text->text(), s_failed);
        QVERIFY(QDir(installerFile()).removeRecursively());
        QVERIFY(!QFile::exists(trace()));
    }

    void whatIsNotTheWholeDownloadIsNotStarted()
    {
        startSlowDownload();
        // A program of another length stands there when the download is over.
        QVERIFY(QFile::remove(installerFile()));
        QVERIFY(write(installerFile(), installerTelling(trace())));
        QTRY_COMPARE_WITH_TIMEOUT(m_hands->text->text(), s_failed, 30000);
        QVERIFY(m_dialog->isVisible());
        QVERIFY(!QFile::exists(trace()));
        QVERIFY(getString(s_deletedKey).isEmpty());
    }

    void aCutConnectionStartsNoInstaller()
    {
        startSlowDownload();
        m_service->cut();
        QTRY_COMPARE(m_hands->text->text(), s_failed);
        QTRY_COMPARE(replies(), 0);
        QVERIFY(m_service->start());
        QVERIFY(!QFile::exists(trace()));
        QVERIFY(!QFile::exists(storedVersionFile()));
        QVERIFY(getString(s_deletedKey).isEmpty());
    }

    void theInstallerIsStartedAndTheProgramLeft_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("directly") << m_service->url(s_installer);
        QTest::newRow("redirected to another host") << m_service->redirectedUrl(s_installer);
        QTest::newRow("without a length") << m_service->chunkedUrl(s_installer);
    }

    void theInstallerIsStartedAndTheProgramLeft()
    {
        QFETCH(QString, url);
        find(url);
        DialogHands::press(m_hands->ok);
        QCOMPARE(runUntilLeft(), 0);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_hands->progress->value(), 100);
        QTRY_COMPARE(contentOf(trace()),
                     "0 " + QFile::encodeName(QCoreApplication::applicationDirPath()) + "\n");
        QCOMPARE(contentOf(storedVersionFile()).simplified(),
                 QByteArray("{ \"version\": \"9.0\" }"));
        QCOMPARE(storedUpdateVersion(), QStringLiteral("9.0"));
        configSetUp();
        QCOMPARE(getString(s_deletedKey), QStringLiteral("0"));

        // Whatever comes twice: one installer.
        m_dialog->onDownloadFinished();
        m_dialog->onCancelButtonReleased();
        QTest::qWait(50);
        QCOMPARE(contentOf(trace()).count('\n'), 1);
    }

    void theFirstStartAfterAnUpdateDeletesTheInstaller_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("never set") << QString() << true;
        QTest::newRow("0") << QStringLiteral("0") << true;
        QTest::newRow("no number") << QStringLiteral("x") << true;
        QTest::newRow("1") << QStringLiteral("1") << false;
    }

    void theFirstStartAfterAnUpdateDeletesTheInstaller()
    {
        QFETCH(QString, stored);
        QFETCH(bool, deletes);
        setString(s_deletedKey, stored);
        save();
        QVERIFY(write(installerFile(), "used"));
        m_dialog->removeUsedInstaller();
        QCOMPARE(QFile::exists(installerFile()), !deletes);
        configSetUp();
        QCOMPARE(getString(s_deletedKey), QStringLiteral("1"));
    }

    void theFolderIsMadeAndIsItsOwnersAlone()
    {
        QVERIFY(QDir(updateFolder()).removeRecursively());
        m_dialog->startCheck();
        QVERIFY(QDir(updateFolder()).exists());
        QVERIFY(!(QFile::permissions(updateFolder()) &
                  (QFile::WriteGroup | QFile::WriteOther | QFile::ReadGroup | QFile::ReadOther)));
    }

    void aFolderOfSomebodyElseIsNotUsed()
    {
        QVERIFY(QDir(updateFolder()).removeRecursively());
        const QString elsewhere = m_folder.filePath(QStringLiteral("elsewhere"));
        QVERIFY(QDir().mkpath(elsewhere));
        QVERIFY(QFile::link(elsewhere, updateFolder()));
        QVERIFY(!prepareUpdateFolder());
        find(m_service->url(s_installer));
        DialogHands::press(m_hands->ok);
        QTRY_COMPARE(m_hands->text->text(), s_failed);
        QVERIFY(QFile::remove(updateFolder()));
        QVERIFY(prepareUpdateFolder());
        QVERIFY(!QFile::exists(trace()));
    }

    void theDialogIsDraggedByItsBody()
    {
        find(m_service->url(s_installer));
        const QPoint before = m_dialog->pos();
        QTest::mousePress(m_hands->title, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
        const QPoint local(45, 25);
        QMouseEvent move(QEvent::MouseMove, local, m_hands->title->mapToGlobal(local), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_hands->title, &move);
        QCOMPARE(m_dialog->pos(), before + QPoint(40, 20));
    }
};

QTEST_MAIN(UpgradeDialogTest)
#include "upgradedialogtest.moc"
