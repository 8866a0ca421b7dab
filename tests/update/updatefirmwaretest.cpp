#include "base/config.h"
#include "build/builddialog.h"
#include "build/fakevolumes.h"
#include "dialoghands.h"
#include "shell/tztoolbar.h"
#include "support/system/answers.h"
#include "update/updatefiles.h"
#include "update/updateserver.h"
#include "updateservice.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>

namespace
{
const char s_firmware[] = "firmware.json";
const QString s_file = QStringLiteral("UPDATE.bin");
const QString s_question = QStringLiteral("提示|控制器固件有更新,请更新至新的版本");
// The buttons of the question, by their place.
const int s_yes = 0;
const int s_no = 1;

/** A firmware file of a version, given by its three numbers. */
QByteArray firmware(char p_major, char p_middle, char p_minor)
{
    QByteArray content(100000, 'f');
    content[512] = p_minor;
    content[513] = p_middle;
    content[514] = p_major;
    return content;
}

bool write(const QString& p_path, const QByteArray& p_content)
{
    QDir().mkpath(QFileInfo(p_path).path());
    QFile file(p_path);
    return file.open(QIODevice::WriteOnly) && file.write(p_content) == p_content.size();
}
} // namespace

/** The road of newer firmware from a real service onto a folder in the controller's place. */
class UpdateFirmwareTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<UpdateService> m_service;
    std::unique_ptr<TzToolBar> m_bar;
    std::unique_ptr<UpgradeDialog> m_dialog;

    int notices() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_bar->findChildren<QWidget*>(QStringLiteral("infoBg")).size();
    }
    int replies() const { return m_dialog->findChildren<QNetworkReply*>().size(); }
    /** Checks against an answer about the firmware, and waits until all is over. */
    void check(const QByteArray& p_answer)
    {
        const QString query = QStringLiteral("appid=qz417");
        m_service->setAnswer(s_firmware, p_answer);
        const int before = m_service->requests().filter(query).size();
        m_dialog->startCheck();
        QTRY_VERIFY(m_service->requests().filter(query).size() > before);
        QTRY_COMPARE(replies(), 0);
    }

private slots:
    void initTestCase()
    {
        configSetUp();
        m_service = std::make_unique<UpdateService>();
        QVERIFY(m_service->start());
        setUpdateServer(m_service->base());
        m_service->addFile(s_file, firmware(1, 2, 3));
        m_service->addFile(QStringLiteral("empty"), QByteArray());
    }

    void init()
    {
        setString(QStringLiteral("fw.update_time"), QString());
        const QString folder = QFileInfo(installedFirmwareFile()).path();
        // A test that failed may have left a file in its place.
        QFile::remove(folder);
        QDir(folder).removeRecursively();
        m_bar = std::make_unique<TzToolBar>();
        m_dialog = std::make_unique<UpgradeDialog>();
        connect(m_dialog.get(), &UpgradeDialog::firmwareArrivedSignal, m_bar.get(),
                &TzToolBar::showFirmwareNotice);
    }

    void cleanup()
    {
        m_dialog.reset();
        m_bar.reset();
    }

    void newerFirmwareComesAllTheWayOntoTheController()
    {
        QVERIFY(write(installedFirmwareFile(), firmware(1, 2, 2)));
        const QTemporaryDir drive;
        QVERIFY(write(drive.filePath(s_file), "older"));
        connect(m_dialog.get(), &UpgradeDialog::updateFirmwareSignal, this, [&drive] {
            buildDialog build;
            build.setVolumes(std::make_shared<FakeVolumes>(std::vector<QString>{drive.path()}));
            QTimer closer;
            connect(&closer, &QTimer::timeout, &build, [&build] {
                if (build.findChild<QLabel*>(QStringLiteral("status"))->text() ==
                    QStringLiteral("下载成功！")) {
                    build.close();
                }
            });
            closer.start(10);
            build.startFirmwareUpdate();
        });
        const QDateTime before = QDateTime::currentDateTime();
        const Answers answers({s_yes});
        check(offer("1.2.3", m_service->redirectedUrl(s_file)));
        QTRY_VERIFY(contentOf(drive.filePath(s_file)) == firmware(1, 2, 3));
        QCOMPARE(Answers::said(), QStringList{s_question});
        QVERIFY(contentOf(installedFirmwareFile()) == firmware(1, 2, 3));
        QCOMPARE(notices(), 1);
        configSetUp();
        const QDateTime found =
            QDateTime::fromString(getString(QStringLiteral("fw.update_time")), Qt::TextDate);
        QVERIFY(qAbs(before.secsTo(found)) < 60);
    }

    void noInTheQuestionLeavesTheNotice()
    {
        const QSignalSpy wanted(m_dialog.get(), &UpgradeDialog::updateFirmwareSignal);
        const Answers answers({s_no});
        check(offer("1.2.3", m_service->url(s_file)));
        QTRY_VERIFY(answers.allUsed());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(wanted.count(), 0);
        QCOMPARE(notices(), 1);
        QVERIFY(contentOf(installedFirmwareFile()) == firmware(1, 2, 3));
    }

    void theQuestionOffersYesFirst()
    {
        QString shown;
        QTimer watcher;
        connect(&watcher, &QTimer::timeout, this, [&shown] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                const bool both = box->standardButtons() == (QMessageBox::Yes | QMessageBox::No);
                shown = both && box->defaultButton() == box->button(QMessageBox::Yes)
                            ? QStringLiteral("as told")
                            : QStringLiteral("otherwise");
                box->button(QMessageBox::No)->click();
            }
        });
        watcher.start(10);
        check(offer("1.2.3", m_service->url(s_file)));
        QTRY_COMPARE(shown, QStringLiteral("as told"));
    }

    void onlyNewerFirmwareIsFetched_data()
    {
        QTest::addColumn<QByteArray>("present");
        QTest::addColumn<QString>("offered");
        QTest::addColumn<bool>("fetched");
        const QByteArray none;
        QTest::newRow("none there: 0.0.0, 0.0.1 is newer") << none << "0.0.1" << true;
        QTest::newRow("none there, 0.0.0 isn't newer") << none << "0.0.0" << false;
        QTest::newRow("the same") << firmware(1, 2, 3) << "1.2.3" << false;
        QTest::newRow("an older one") << firmware(1, 2, 3) << "1.2.2" << false;
        QTest::newRow("a newer one") << firmware(1, 2, 3) << "1.2.4" << true;
        QTest::newRow("signed numbers") << firmware(1, 2, '\xff') << "1.2.0" << true;
        QTest::newRow("a file too short: 0.0.0") << QByteArray("short") << "0.0.0" << false;
        QTest::newRow("cut within its version: 0.2.3")
            << firmware(1, 2, 3).left(514) << "0.2.3" << false;
    }

    void onlyNewerFirmwareIsFetched()
    {
        QFETCH(QByteArray, present);
        QFETCH(QString, offered);
        QFETCH(bool, fetched);
        if (!present.isEmpty()) {
            QVERIFY(write(installedFirmwareFile(), present));
        }
        const QSignalSpy arrived(m_dialog.get(), &UpgradeDialog::firmwareArrivedSignal);
        const Answers answers({s_no});
        check(offer(offered.toLatin1().constData(), m_service->url(s_file)));
        if (fetched) {
            QTRY_VERIFY(answers.allUsed());
            QTRY_VERIFY(!QApplication::activeModalWidget());
        }
        QCOMPARE(arrived.count(), fetched ? 1 : 0);
        QVERIFY(contentOf(installedFirmwareFile()) == (fetched ? firmware(1, 2, 3) : present));
        // The program's own dialog is not for firmware.
        QVERIFY(!m_dialog->isVisible());
    }

    void firmwareThatDoesNotArriveIsPassedOverInSilence_data()
    {
        QTest::addColumn<QByteArray>("answer");
        const auto offered = [](const QString& p_url) { return offer("9.0", p_url); };
        QTest::newRow("no JSON") << QByteArray("<html>");
        QTest::newRow("no state") << QByteArray("{}");
        QTest::newRow("another state") << QByteArray("{\"state\":3,\"appversion\":\"9.0\"}");
        QTest::newRow("404") << offered(m_service->missingUrl());
        QTest::newRow("500") << offered(m_service->brokenUrl());
        QTest::newRow("nobody there") << offered(UpdateService::closedBase() + "/UPDATE.bin");
        QTest::newRow("a stranger's certificate")
            << offered(m_service->strangersBase() + "/files/UPDATE.bin");
        QTest::newRow("not encrypted") << offered(m_service->url(s_file).replace("https", "http"));
        QTest::newRow("an empty file") << offered(m_service->url(QStringLiteral("empty")));
        QTest::newRow("no address") << offered(QString());
    }

    void firmwareThatDoesNotArriveIsPassedOverInSilence()
    {
        QFETCH(QByteArray, answer);
        const QByteArray old = firmware(1, 0, 0);
        QVERIFY(write(installedFirmwareFile(), old));
        // A question that comes all the same doesn't stand for ever.
        const Answers answers({s_no});
        check(answer);
        QCOMPARE(notices(), 0);
        QVERIFY(Answers::said().isEmpty());
        QVERIFY(contentOf(installedFirmwareFile()) == old);
        for (const QTimer* timer :
             m_dialog->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
            // The one of the program, whose answer is missing.
            QVERIFY(timer->isActive());
        }
    }

    void aFirmwareQueryThatFailsIsNotTriedAgain()
    {
        m_service->setAnswer("program.json", offer("1.1.2", QString()));
        m_service->removeAnswer(s_firmware);
        m_dialog->startCheck();
        QTRY_COMPARE(replies(), 0);
        const QTimer* retry =
            m_dialog->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly).first();
        QVERIFY(!retry->isActive());
        QCOMPARE(notices(), 0);
        m_service->removeAnswer("program.json");
    }

    void firmwareThatCannotBePutBesideTheProgramIsToldAllTheSame()
    {
        const QString folder = QFileInfo(installedFirmwareFile()).path();
        // A file where the folder should be.
        QVERIFY(write(folder, "in the way"));
        const Answers answers({s_no});
        check(offer("1.2.3", m_service->url(s_file)));
        QTRY_VERIFY(answers.allUsed());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(notices(), 1);
        QVERIFY(QFile::remove(folder));
    }

    void aSecondAnswerDuringTheQuestionAsksNoSecondOne()
    {
        QTimer watcher;
        int boxes = 0;
        int rounds = 0;
        const QWidget* first = nullptr;
        bool checkedAgain = false;
        const QSignalSpy arrived(m_dialog.get(), &UpgradeDialog::firmwareArrivedSignal);
        connect(&watcher, &QTimer::timeout, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) {
                return;
            }
            if (box != first) {
                first = box;
                ++boxes;
            }
            if (!checkedAgain) {
                checkedAgain = true;
                QFile::remove(installedFirmwareFile());
                m_dialog->startCheck();
            } else if (arrived.count() == 2 || ++rounds > 500) {
                box->button(QMessageBox::No)->click();
            }
        });
        watcher.start(10);
        check(offer("1.2.3", m_service->url(s_file)));
        QTRY_COMPARE(arrived.count(), 2);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(boxes, 1);
        QCOMPARE(notices(), 1);
    }

    void theDialogMayGoInTheDownloadOfFirmware()
    {
        m_service->setAnswer(s_firmware, offer("1.2.3", m_service->slowUrl(s_file)));
        QVERIFY(!QFile::exists(downloadedFirmwareFile()) ||
                QFile::remove(downloadedFirmwareFile()));
        m_dialog->startCheck();
        QTRY_VERIFY(QFileInfo(downloadedFirmwareFile()).size() > 0);
        m_dialog.reset();
        QTRY_VERIFY(m_service->requests().last().contains(QLatin1String("/slow/")));
        QCOMPARE(notices(), 0);
        QVERIFY(!QFile::exists(installedFirmwareFile()));
    }
};

QTEST_MAIN(UpdateFirmwareTest)
#include "updatefirmwaretest.moc"
