#include "base/config.h"
#include "build/builddialog.h"
#include "shell/tztoolbar.h"
#include "support/system/datatable.h"

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <cstdio>
#include <cstring>

namespace
{
const QString s_key = QStringLiteral("fw.update_time");
const char s_printMonths[] = "--print-months-with-a-notice";

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

/** The months in which a finding, long ago, brings a notice at a start today. */
QByteArray monthsWithANotice()
{
    QByteArray months;
    for (int month = 1; month <= 12; ++month) {
        const QDateTime time(QDate(2020, month, 17), QTime(9, 8, 7));
        if (noticesAtStart(time.toString(Qt::TextDate)) > 0) {
            months += QByteArray::number(month) + ' ';
        }
    }
    return months.trimmed();
}
} // namespace

/** The tool bar's notice about newer firmware. */
class ToolBarNoticeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { configSetUp(); }

    void init() { setString(s_key, QString()); }

    void withoutAFindingThereIsNoNoticeAtStart() { QCOMPARE(noticesAtStart(QString()), 0); }

    void aFindingOfYesterdayGivesNoNoticeAtStart() { QCOMPARE(noticesAtStart(textDate(-1)), 0); }

    void aFindingOfTomorrowGivesNoNoticeAtStart() { QCOMPARE(noticesAtStart(textDate(1)), 0); }

    void aFindingOfTodayBringsTheNoticeBackAtStart() { QCOMPARE(noticesAtStart(textDate(0)), 1); }

    void aTimeThatIsNoDateBringsTheNoticeBack()
    {
        QCOMPARE(noticesAtStart(QStringLiteral("not a date")), 1);
    }

    void anOldFindingIsKnownAsOldInTheLanguageOfTheSystem_data()
    {
        columns<QString, QByteArray>("locale", "months");
        const QByteArray none;
        QTest::newRow("Chinese, China") << "zh_CN" << none;
        QTest::newRow("Chinese, Taiwan") << "zh_TW" << none;
        QTest::newRow("Chinese, Hong Kong") << "zh_HK" << none;
        QTest::newRow("Chinese, Singapore") << "zh_SG" << none;
        QTest::newRow("Chinese, Macau") << "zh_MO" << none;
        QTest::newRow("English") << "en_US" << none;
        QTest::newRow("Japanese") << "ja_JP" << none;
        QTest::newRow("Spanish") << "es_ES" << none;
        // Qt doesn't read back the names of months that it writes with a full stop, and what is no
        // date counts as today: here the notice stays until the next finding.
        QTest::newRow("German") << "de_DE" << QByteArray("1 2 4 8 9 10 11 12");
    }

    // The system's locale is settled when a program starts, so another one has to.
    void anOldFindingIsKnownAsOldInTheLanguageOfTheSystem()
    {
#ifdef Q_OS_WIN
        QSKIP("the locale of a program can't be told from outside");
#endif
        QFETCH(QString, locale);
        QFETCH(QByteArray, months);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("LANGUAGE"));
        environment.insert(QStringLiteral("LC_ALL"), locale + QStringLiteral(".UTF-8"));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {QLatin1String(s_printMonths)});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(program.readAllStandardOutput().trimmed(), months);
    }

    void aFindingIsKeptAsTheSystemWritesDates()
    {
        TzToolBar toolBar;
        const QDateTime before = QDateTime::currentDateTime();
        toolBar.showFirmwareNotice();
        const QDateTime after = QDateTime::currentDateTime();
        const QString stored = getString(s_key);
        // The text has no parts of a second.
        bool isMoment = false;
        for (QDateTime time = before; time <= after.addSecs(1) && !isMoment;
             time = time.addSecs(1)) {
            isMoment = stored == time.toString(Qt::TextDate);
        }
        QVERIFY2(isMoment, qPrintable(stored));
    }

    void theNoticeStandsAfterARestartOnTheSameDay()
    {
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

    void twoFindingsLeaveOneNotice()
    {
        TzToolBar toolBar;
        toolBar.showFirmwareNotice();
        toolBar.showFirmwareNotice();
        QCOMPARE(noticesOf(toolBar).size(), 1);
    }

    void removingTakesAllNoticesAway()
    {
        TzToolBar toolBar;
        toolBar.addInfo(QStringLiteral("one"));
        toolBar.addInfo(QStringLiteral("two"));
        QCOMPARE(noticesOf(toolBar).size(), 2);
        toolBar.removeInfo();
        QCOMPARE(noticesOf(toolBar).size(), 0);
    }

    void theNoticeTellsWhatToDo()
    {
        TzToolBar toolBar;
        toolBar.showFirmwareNotice();
        const QWidget* notice = noticesOf(toolBar).first();
        QCOMPARE(notice->findChild<QLabel*>()->text(),
                 QStringLiteral("控制器固件有新的版本，请更新"));
        QCOMPARE(notice->findChild<QPushButton*>(QStringLiteral("info_button"))->text(),
                 QStringLiteral(" 更新 "));
    }

    void theUpdateButtonStartsTheUpdateAndLeavesTheNotice()
    {
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

    void aFindingDuringTheUpdateIsHarmless()
    {
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
};

int main(int p_argc, char** p_argv)
{
    const QApplication application(p_argc, p_argv);
    if (p_argc == 2 && std::strcmp(p_argv[1], s_printMonths) == 0) {
        std::puts(monthsWithANotice().constData());
        return 0;
    }
    ToolBarNoticeTest test;
    return QTest::qExec(&test, p_argc, p_argv);
}

#include "toolbarnoticetest.moc"
