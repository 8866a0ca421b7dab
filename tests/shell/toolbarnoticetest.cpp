#include "builddialog.h"
#include "config.h"
#include "tztoolbar.h"

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace
{
const QString s_key = QStringLiteral("fw.update_time");

QString textDate(int p_daysFromToday)
{
    return QDateTime::currentDateTime().addDays(p_daysFromToday).toString(Qt::TextDate);
}

/** The notices that a tool bar shows, once those that are on their way out are gone. */
QList<QWidget*> noticesOf(const TzToolBar& p_toolBar)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return p_toolBar.findChildren<QWidget*>(QStringLiteral("infoBg"));
}

int noticesAtStart(const QString& p_time)
{
    setString(s_key, p_time);
    const TzToolBar toolBar;
    return noticesOf(toolBar).size();
}
} // namespace

/** The tool bar's notice about newer firmware. */
class ToolBarNoticeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void withoutAFindingThereIsNoNoticeAtStart();
    void aFindingOfYesterdayGivesNoNoticeAtStart();
    void aFindingOfTomorrowGivesNoNoticeAtStart();
    void aFindingOfTodayBringsTheNoticeBackAtStart();
    void aTimeThatIsNoDateBringsTheNoticeBack();
    void theNoticeStandsAfterARestartOnTheSameDay();
    void twoFindingsLeaveOneNotice();
    void removingTakesAllNoticesAway();
    void theNoticeTellsWhatToDo();
    void theUpdateButtonStartsTheUpdateAndLeavesTheNotice();
    void aFindingDuringTheUpdateIsHarmless();
};

void ToolBarNoticeTest::initTestCase() { configSetUp(); }

void ToolBarNoticeTest::withoutAFindingThereIsNoNoticeAtStart()
{
    QCOMPARE(noticesAtStart(QString()), 0);
}

void ToolBarNoticeTest::aFindingOfYesterdayGivesNoNoticeAtStart()
{
    QCOMPARE(noticesAtStart(textDate(-1)), 0);
}

void ToolBarNoticeTest::aFindingOfTomorrowGivesNoNoticeAtStart()
{
    QCOMPARE(noticesAtStart(textDate(1)), 0);
}

void ToolBarNoticeTest::aFindingOfTodayBringsTheNoticeBackAtStart()
{
    QCOMPARE(noticesAtStart(textDate(0)), 1);
}

void ToolBarNoticeTest::aTimeThatIsNoDateBringsTheNoticeBack()
{
    QCOMPARE(noticesAtStart(QStringLiteral("not a date")), 1);
}

void ToolBarNoticeTest::theNoticeStandsAfterARestartOnTheSameDay()
{
    setString(s_key, QString());
    save();
    {
        TzToolBar toolBar;
        toolBar.showFirmwareNotice();
        QCOMPARE(noticesOf(toolBar).size(), 1);
    }
    // What was written to memory alone is gone with the next reading of the file.
    setString(s_key, QString());
    configSetUp();
    const TzToolBar toolBar;
    QCOMPARE(noticesOf(toolBar).size(), 1);
    const QDateTime stored = QDateTime::fromString(getString(s_key), Qt::TextDate);
    QVERIFY(qAbs(stored.secsTo(QDateTime::currentDateTime())) < 60);
}

void ToolBarNoticeTest::twoFindingsLeaveOneNotice()
{
    setString(s_key, QString());
    TzToolBar toolBar;
    toolBar.showFirmwareNotice();
    toolBar.showFirmwareNotice();
    QCOMPARE(noticesOf(toolBar).size(), 1);
}

void ToolBarNoticeTest::removingTakesAllNoticesAway()
{
    setString(s_key, QString());
    TzToolBar toolBar;
    toolBar.addInfo(QStringLiteral("one"));
    toolBar.addInfo(QStringLiteral("two"));
    QCOMPARE(noticesOf(toolBar).size(), 2);
    toolBar.removeInfo();
    QCOMPARE(noticesOf(toolBar).size(), 0);
}

void ToolBarNoticeTest::theNoticeTellsWhatToDo()
{
    setString(s_key, QString());
    TzToolBar toolBar;
    toolBar.showFirmwareNotice();
    const QWidget* notice = noticesOf(toolBar).first();
    QCOMPARE(notice->findChild<QLabel*>()->text(), QStringLiteral("控制器固件有新的版本，请更新"));
    QCOMPARE(notice->findChild<QPushButton*>(QStringLiteral("info_button"))->text(),
             QStringLiteral(" 更新 "));
}

void ToolBarNoticeTest::theUpdateButtonStartsTheUpdateAndLeavesTheNotice()
{
    setString(s_key, QString());
    TzToolBar toolBar;
    toolBar.resize(1280, 34);
    toolBar.showFirmwareNotice();
    toolBar.show();
    bool updateShown = false;
    QTimer::singleShot(0, &toolBar, [&updateShown] {
        auto* dialog = qobject_cast<buildDialog*>(QApplication::activeModalWidget());
        updateShown = dialog != nullptr;
        if (dialog) {
            dialog->close();
        }
    });
    QTest::mouseClick(noticesOf(toolBar).first()->findChild<QPushButton*>(), Qt::LeftButton);
    QVERIFY(updateShown);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(noticesOf(toolBar).size(), 1);
}

void ToolBarNoticeTest::aFindingDuringTheUpdateIsHarmless()
{
    setString(s_key, QString());
    TzToolBar toolBar;
    toolBar.resize(1280, 34);
    toolBar.showFirmwareNotice();
    toolBar.show();
    const QPointer<QPushButton> pressed = noticesOf(toolBar).first()->findChild<QPushButton*>();
    bool goneDuringTheUpdate = false;
    QTimer::singleShot(0, &toolBar, [&toolBar] { toolBar.showFirmwareNotice(); });
    // Ends the update once the button is gone, or after a long while.
    QTimer watcher;
    int rounds = 0;
    connect(&watcher, &QTimer::timeout, &toolBar, [&] {
        goneDuringTheUpdate = pressed.isNull();
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog && (goneDuringTheUpdate || ++rounds > 500)) {
            dialog->close();
        }
    });
    watcher.start(10);
    QTest::mouseClick(pressed, Qt::LeftButton);
    QVERIFY(goneDuringTheUpdate);
    QCOMPARE(noticesOf(toolBar).size(), 1);
}

QTEST_MAIN(ToolBarNoticeTest)
#include "toolbarnoticetest.moc"
