#include "base/config.h"
#include "build/builddialog.h"
#include "dialoghands.h"
#include "proj/binoverlay.h"
#include "shell/windowbench.h"
#include "support/system/answers.h"
#include "support/system/menuhand.h"
#include "update/updatefiles.h"
#include "update/updateserver.h"
#include "updateservice.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace
{
const char s_program[] = "program.json";
const char s_firmware[] = "firmware.json";
const QString s_installer = QStringLiteral("installer");
const QString s_file = QStringLiteral("UPDATE.bin");
const QString s_large = QStringLiteral("large");
const QString s_deletedKey = QStringLiteral("app_upgrade.installer_deleted");
const QString s_updates = QStringLiteral("检测软件更新");
} // namespace

/** The real window with a real service on this machine. */
class UpdateWindowTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<UpdateService> m_service;
    QTemporaryDir m_folder;
    std::unique_ptr<WindowBench> m_bench;

    QString trace() const { return m_folder.filePath(QStringLiteral("trace")); }
    MainWindow& window() { return m_bench->window; }
    /** The window's dialog; null until the first check. */
    UpgradeDialog* dialog() { return window().findChild<UpgradeDialog*>(); }
    QNetworkReply* reply() { return window().findChild<QNetworkReply*>(); }
    BinOverlay& bin() { return *m_bench->palette().findChild<BinOverlay*>(); }
    int notices()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_bench->bar().findChildren<QWidget*>(QStringLiteral("infoBg")).size();
    }
    /** Lets the first check run to its end. */
    void awaitFirstCheck()
    {
        QTRY_VERIFY(dialog());
        QTRY_VERIFY(!reply());
    }
    /** A second check, which brings newer firmware; the first one has had no answer. */
    void offerFirmware()
    {
        m_service->setAnswer(s_firmware, offer("1.2.3", m_service->url(s_file)));
        dialog()->startCheck();
    }
    /** One that brings an installer, and the dialog with it. */
    void offerInstaller(const QString& p_url, const char* p_update = "\"0\"")
    {
        awaitFirstCheck();
        m_service->setAnswer(s_program, offer("9.0", p_url, p_update));
        dialog()->startCheck();
        QTRY_VERIFY(dialog() && dialog()->isVisible());
    }
    void pressOk() { DialogHands::press(DialogHands(*dialog()).ok); }
    /** A block is being dragged on the canvas, the button still down. */
    supermodule* dragABlock()
    {
        supermodule* block = m_bench->add(103);
        const QPointF at = block->scenePos() + QPointF(30, 30);
        m_bench->hands.press(at);
        m_bench->hands.move(at + QPointF(40, 60));
        m_bench->hands.move(at + QPointF(80, 120));
        return block;
    }

private slots:
    void initTestCase()
    {
        configSetUp();
        m_service = std::make_unique<UpdateService>();
        QVERIFY(m_service->start());
        m_service->addFile(s_installer, installerTelling(trace()));
        m_service->addFile(s_file, QByteArray(100000, 'f'));
        m_service->addFile(s_large, QByteArray(400000, 'x'));
    }

    void init()
    {
        setUpdateServer(m_service->base());
        setString(s_deletedKey, QString());
        setString(QStringLiteral("fw.update_time"), QString());
        m_service->removeAnswer(s_program);
        m_service->removeAnswer(s_firmware);
        QFile::remove(trace());
        QFile::remove(downloadedFirmwareFile());
        QDir(QFileInfo(installedFirmwareFile()).path()).removeRecursively();
        m_bench = std::make_unique<WindowBench>();
    }

    void cleanup() { m_bench.reset(); }

    void theDialogComesAfterTheWindowAndWithItTheFirstCheck()
    {
        const MainWindow fresh;
        QVERIFY(!fresh.findChild<UpgradeDialog*>());
        QVERIFY(!fresh.findChild<QNetworkAccessManager*>());
        QTRY_VERIFY(fresh.findChild<UpgradeDialog*>());
        QTRY_VERIFY(m_service->requests().contains(QStringLiteral("GET /app/version?appid=qz417")));
    }

    void beforeTheDialogIsThereTheMenuEntryDoesNothing()
    {
        MainWindow fresh;
        fresh.onAppUpgrade();
        QVERIFY(!fresh.findChild<UpgradeDialog*>());
    }

    void withoutANetworkNothingIsShown()
    {
        setUpdateServer(UpdateService::closedBase());
        m_bench = std::make_unique<WindowBench>();
        awaitFirstCheck();
        QVERIFY(!dialog()->isVisible());
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(notices(), 0);
        QVERIFY(window().isActiveWindow());
        const QTimer* retry =
            dialog()->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly).first();
        QVERIFY(retry->isActive());
        QCOMPARE(retry->interval(), 300000);
    }

    void theFirstStartAfterAnUpdateDeletesTheInstaller()
    {
        setString(s_deletedKey, QStringLiteral("0"));
        QVERIFY(prepareUpdateFolder());
        QFile used(installerFile());
        QVERIFY(used.open(QIODevice::WriteOnly));
        used.close();
        m_bench = std::make_unique<WindowBench>();
        QTRY_COMPARE(getString(s_deletedKey), QStringLiteral("1"));
        QVERIFY(!QFile::exists(installerFile()));
    }

    void theMenuEntryShowsTheDialogAndChecksAgain()
    {
        awaitFirstCheck();
        QVERIFY(!dialog()->isVisible());
        m_service->setAnswer(s_program, offer("1.1.2", QString()));
        QVERIFY(chooseFromMenu(m_bench->tool(QString()), s_updates));
        QVERIFY(dialog()->isVisible());
        QVERIFY(dialog()->isWindow());
        const DialogHands hands(*dialog());
        QTRY_COMPARE(hands.text->text(), QStringLiteral("已经是最新版本，不需要更新"));
        QCOMPARE(dialog()->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly).size(), 2);
        // While it shows, the entry has no effect.
        window().onAppUpgrade();
        QCOMPARE(dialog()->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly).size(), 2);
        DialogHands::press(hands.close);
        QVERIFY(!dialog()->isVisible());
        QVERIFY(window().isVisible());
    }

    void theProgramIsLeftForTheInstaller()
    {
        offerInstaller(m_service->url(s_installer));
        pressOk();
        QCOMPARE(runUntilLeft(), 0);
        QVERIFY(!window().isVisible());
        QTRY_COMPARE(contentOf(trace()).count('\n'), 1);
    }

    void unsavedWorkIsAskedForAndNoLosesIt()
    {
        m_bench->add(103);
        offerInstaller(m_service->url(s_installer));
        const Answers answers({No});
        pressOk();
        QCOMPARE(runUntilLeft(), 0);
        QCOMPARE(Answers::said(), QStringList{QStringLiteral("保存|文件已修改，是否保存")});
        QVERIFY(!window().isVisible());
        QTRY_COMPARE(contentOf(trace()).count('\n'), 1);
    }

    void yesToTheQuestionSavesBeforeTheProgramIsLeft()
    {
        QVERIFY(m_bench->canvas().saveFile(m_bench->path()));
        window().openPath(m_bench->path());
        m_bench->add(103);
        const QByteArray before = contentOf(m_bench->path());
        offerInstaller(m_service->url(s_installer));
        const Answers answers({Yes});
        pressOk();
        QCOMPARE(runUntilLeft(), 0);
        QVERIFY(answers.allUsed());
        QVERIFY(contentOf(m_bench->path()) != before);
        QVERIFY(!window().isVisible());
    }

    void cancelInTheQuestionKeepsTheProgram()
    {
        m_bench->add(103);
        offerInstaller(m_service->url(s_installer));
        const Answers answers({Cancel});
        QTimer::singleShot(0, &window(), [this] { pressOk(); });
        // Ends the loop from outside once the question has been answered.
        QTimer ender;
        int rounds = 0;
        connect(&ender, &QTimer::timeout, this, [&] {
            if (answers.allUsed() && !QApplication::activeModalWidget() && ++rounds > 5) {
                QCoreApplication::exit(7);
            }
        });
        ender.start(10);
        QCOMPARE(runUntilLeft(), 7);
        QVERIFY(window().isVisible());
        QVERIFY(documentModified);
        QCOMPARE(m_bench->program(), (QList<int>{0, 103}));
        QTRY_COMPARE(contentOf(trace()).count('\n'), 1);
    }

    void theWindowMayCloseInADownload()
    {
        offerInstaller(m_service->slowUrl(s_large));
        pressOk();
        QTRY_VERIFY(QFileInfo(installerFile()).size() > 0);
        QTimer::singleShot(0, &window(), [this] { window().close(); });
        // The dialog alone doesn't keep the program.
        QCOMPARE(runUntilLeft(), 0);
        m_bench.reset();
        QTRY_VERIFY(m_service->requests().last().contains(QLatin1String("/slow/")));
    }

    void theWindowMayCloseInADownloadThatMustBe()
    {
        offerInstaller(m_service->slowUrl(s_large), "\"1\"");
        QTRY_VERIFY(QFileInfo(installerFile()).size() > 0);
        QTimer::singleShot(0, &window(), [this] { window().close(); });
        QCOMPARE(runUntilLeft(), 0);
        m_bench.reset();
        QTRY_VERIFY(m_service->requests().last().contains(QLatin1String("/slow/")));
    }

    void theWindowMayGoInAQuery()
    {
        QTRY_VERIFY(dialog());
        dialog()->startCheck();
        QVERIFY(reply());
        m_bench.reset();
        QCoreApplication::processEvents();
    }

    void theWindowMayGoBeforeTheFirstCheck()
    {
        auto fresh = std::make_unique<MainWindow>();
        fresh.reset();
        QTRY_VERIFY(dialog());
    }

    void newerFirmwareShowsTheNoticeAndYesOpensItsUpdate()
    {
        awaitFirstCheck();
        bool updating = false;
        bool ofTheWindow = false;
        QTimer watcher;
        connect(&watcher, &QTimer::timeout, this, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (auto* box = qobject_cast<QMessageBox*>(modal)) {
                ofTheWindow = box->parentWidget() == &window();
                box->button(QMessageBox::Yes)->click();
            } else if (auto* build = qobject_cast<buildDialog*>(modal)) {
                updating = true;
                build->close();
            }
        });
        watcher.start(10);
        offerFirmware();
        QTRY_VERIFY(updating);
        QVERIFY(ofTheWindow);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(notices(), 1);
    }

    void theQuestionInADragEndsItAndLeavesThePaletteAlive()
    {
        awaitFirstCheck();
        const supermodule* block = dragABlock();
        QVERIFY(bin().isVisible());
        const QPointF dragged = block->scenePos();
        const Answers answers({1});
        offerFirmware();
        QTRY_VERIFY(answers.allUsed());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QVERIFY(!bin().isVisible());
        // The mouse goes on without it.
        m_bench->hands.move(dragged + QPointF(300, 200));
        QCOMPARE(block->scenePos(), dragged);
        m_bench->hands.release(dragged + QPointF(300, 200));
        QCOMPARE(block->scenePos(), dragged);
        QCOMPARE(rootModules.first()->lastOf(), m_bench->add(101));
        QCOMPARE(m_bench->program(), (QList<int>{0, 101}));
    }

    void theDialogInADragEndsItAndLeavesThePaletteAlive()
    {
        awaitFirstCheck();
        const supermodule* block = dragABlock();
        QVERIFY(bin().isVisible());
        const QPointF dragged = block->scenePos();
        offerInstaller(m_service->url(s_installer));
        QTRY_VERIFY(!bin().isVisible());
        m_bench->hands.move(dragged + QPointF(300, 200));
        QCOMPARE(block->scenePos(), dragged);
        m_bench->hands.release(dragged + QPointF(300, 200));
        DialogHands::press(DialogHands(*dialog()).cancel);
        m_bench->add(101);
        QCOMPARE(m_bench->program(), (QList<int>{0, 101}));
    }

    void theQuestionInADragFromThePaletteLeavesThePaletteAlive()
    {
        awaitFirstCheck();
        m_bench->hands.dragOver(103, QPointF(4400, 4400));
        const Answers answers({1});
        offerFirmware();
        QTRY_VERIFY(answers.allUsed());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        m_bench->hands.leave();
        QVERIFY(!bin().isVisible());
        m_bench->add(101);
        QCOMPARE(m_bench->program(), (QList<int>{0, 101}));
    }
};

QTEST_MAIN(UpdateWindowTest)
#include "updatewindowtest.moc"
