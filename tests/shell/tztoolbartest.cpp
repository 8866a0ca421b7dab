#include "shell/tztoolbar.h"
#include "base/config.h"
#include "base/recentfiles.h"
#include "build/builddialog.h"
#include "shell/aboutdialog.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

namespace
{
/** The tool bar's English, as far as it decides how much room is needed. */
class English : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* p_context, const char* p_source, const char*, int) const override
    {
        if (qstrcmp(p_context, "TzToolBar") != 0) {
            return QString();
        }
        const QString source = QString::fromUtf8(p_source);
        if (source == QStringLiteral("程序名:")) {
            return QStringLiteral("Program name:");
        }
        if (source == QStringLiteral("更新")) {
            return QStringLiteral("Update");
        }
        if (source.startsWith(QStringLiteral("控制器固件"))) {
            return QStringLiteral("Controller firmware has a new version, please update");
        }
        return QString();
    }
};

/** A tool bar as the window has it. */
/** The size of letters that the program has in a language, for as long as it lives. */
class FontOfTheProgram
{
public:
    explicit FontOfTheProgram(int p_points)
    {
        QFont font = m_before;
        font.setPointSize(p_points);
        QApplication::setFont(font);
    }
    ~FontOfTheProgram() { QApplication::setFont(m_before); }
    Q_DISABLE_COPY(FontOfTheProgram)

private:
    QFont m_before = QApplication::font();
};

struct Bench {
    QWidget window;
    TzToolBar* bar = new TzToolBar(&window);

    explicit Bench(int p_width = 1280)
    {
        window.resize(p_width, 200);
        bar->setGeometry(0, 0, p_width, 34);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    QPushButton& button(const QString& p_toolTip) const
    {
        for (QPushButton* button : bar->findChildren<QPushButton*>()) {
            if (button->toolTip() == p_toolTip && button->maximumWidth() == 68) {
                return *button;
            }
        }
        qFatal("no button of this tool tip");
    }
    QPushButton& fileButton() const { return button(QStringLiteral("文件")); }
    QPushButton& moreButton() const { return button(QString()); }
    QLineEdit& name() const { return *bar->findChild<QLineEdit*>(); }
};

/** Opens a button's menu and clicks an entry. */
void choose(QPushButton& p_button, const QString& p_text)
{
    QMenu* menu = p_button.menu();
    for (QAction* action : menu->actions()) {
        if (action->text() == p_text) {
            menu->popup(QPoint(0, 0));
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                              menu->actionGeometry(action).center());
            menu->hide();
            return;
        }
    }
    QFAIL("no such entry");
}

QStringList entriesOf(const QMenu& p_menu)
{
    QStringList entries;
    for (const QAction* action : p_menu.actions()) {
        entries.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    return entries;
}
} // namespace

/** The tool bar's buttons, menus and name field. */
class TzToolBarTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<modulesId>("modulesId"); }

    // No notice of an earlier test comes back.
    void init() { setString(QStringLiteral("fw.update_time"), QString()); }

    void theProcessKnowsTheOneToolBar()
    {
        QVERIFY(!toolBarInstance);
        {
            const TzToolBar toolBar;
            QCOMPARE(toolBarInstance, &toolBar);
        }
        QVERIFY(!toolBarInstance);
    }

    void aNameTakesSixLettersOrDigitsAndNothingElse()
    {
        const Bench bench;
        QCOMPARE(bench.bar->programName(), QStringLiteral("RunA"));
        bench.name().selectAll();
        QTest::keyClicks(&bench.name(), QStringLiteral("a_B -9.z?12345"));
        QCOMPARE(bench.bar->programName(), QStringLiteral("aB9z12"));
        bench.name().clear();
        bench.name().insert(QStringLiteral("程序"));
        QCOMPARE(bench.bar->programName(), QString());
    }

    void anEmptyNameIsSentAsItStands()
    {
        const Bench bench;
        QSignalSpy sent(bench.bar, &TzToolBar::downloadSignal);
        QTest::mouseClick(&bench.button(QStringLiteral("下载")), Qt::LeftButton);
        bench.name().selectAll();
        QTest::keyClick(&bench.name(), Qt::Key_Backspace);
        QTest::mouseClick(&bench.button(QStringLiteral("下载")), Qt::LeftButton);
        QCOMPARE(sent.count(), 2);
        QCOMPARE(sent.at(0).first().toString(), QStringLiteral("RunA"));
        QCOMPARE(sent.at(1).first().toString(), QString());
    }

    void aNameFromAProjectIsTakenAsItIs()
    {
        const Bench bench;
        ProgramNameHolder& holder = *bench.bar;
        holder.setProgramName(QStringLiteral("a name no one could type"));
        QCOMPARE(holder.programName(), QStringLiteral("a name no one could type"));
        QSignalSpy sent(bench.bar, &TzToolBar::downloadSignal);
        QTest::mouseClick(&bench.button(QStringLiteral("下载")), Qt::LeftButton);
        QCOMPARE(sent.at(0).first().toString(), QStringLiteral("a name no one could type"));
    }

    void theFileMenusEntriesReachTheWindow()
    {
        const Bench bench;
        QCOMPARE(entriesOf(*bench.fileButton().menu()).join(QLatin1Char(' ')),
                 QStringLiteral("新建 打开 保存 另存为 - 关闭"));
        const QSignalSpy news(bench.bar, &TzToolBar::newFileSignal);
        const QSignalSpy opens(bench.bar, &TzToolBar::openFileSignal);
        const QSignalSpy saves(bench.bar, &TzToolBar::saveSignal);
        const QSignalSpy savesAs(bench.bar, &TzToolBar::saveAsSignal);
        choose(bench.fileButton(), QStringLiteral("新建"));
        QCOMPARE(news.count(), 1);
        choose(bench.fileButton(), QStringLiteral("打开"));
        QCOMPARE(opens.count(), 1);
        choose(bench.fileButton(), QStringLiteral("保存"));
        QCOMPARE(saves.count(), 1);
        choose(bench.fileButton(), QStringLiteral("另存为"));
        QCOMPARE(savesAs.count(), 1);
        QCOMPARE(news.count() + opens.count() + saves.count(), 3);
    }

    void shortcutsReachTheWindow()
    {
        Bench bench;
        QVERIFY(QTest::qWaitForWindowActive(&bench.window));
        const QSignalSpy news(bench.bar, &TzToolBar::newFileSignal);
        const QSignalSpy opens(bench.bar, &TzToolBar::openFileSignal);
        const QSignalSpy saves(bench.bar, &TzToolBar::saveSignal);
        const QSignalSpy savesAs(bench.bar, &TzToolBar::saveAsSignal);
        bench.window.setFocus();
        QTest::keyClick(&bench.window, Qt::Key_N, Qt::ControlModifier);
        QTest::keyClick(&bench.window, Qt::Key_O, Qt::ControlModifier);
        QTest::keyClick(&bench.window, Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(&bench.window, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(news.count(), 1);
        QCOMPARE(opens.count(), 1);
        QCOMPARE(saves.count(), 1);
        QCOMPARE(savesAs.count(), 1);
        QSignalSpy zooms(bench.bar, &TzToolBar::zoomSceneSignal);
        QTest::keyClick(&bench.window, Qt::Key_Plus, Qt::ControlModifier);
        QTRY_COMPARE(zooms.count(), 1);
        QCOMPARE(zooms.at(0).first().toInt(), 1);
        QTest::keyClick(&bench.window, Qt::Key_Minus, Qt::ControlModifier);
        QTRY_COMPARE(zooms.count(), 2);
        QCOMPARE(zooms.at(1).first().toInt(), -1);
    }

    void closeEndsTheProgramWithoutAQuestion()
    {
        const Bench bench;
        bool modal = false;
        QTimer::singleShot(0, bench.bar,
                           [&bench] { choose(bench.fileButton(), QStringLiteral("关闭")); });
        QTimer::singleShot(5000, bench.bar, [&modal] {
            modal = QApplication::activeModalWidget() != nullptr;
            QCoreApplication::exit(7);
        });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!modal);
    }

    void zoomButtonsAskForTheirChange()
    {
        const Bench bench;
        QSignalSpy zooms(bench.bar, &TzToolBar::zoomSceneSignal);
        QTest::mouseClick(&bench.button(QStringLiteral("放大")), Qt::LeftButton);
        QTest::mouseClick(&bench.button(QStringLiteral("重置缩放")), Qt::LeftButton);
        QTest::mouseClick(&bench.button(QStringLiteral("缩小")), Qt::LeftButton);
        QCOMPARE(zooms.count(), 3);
        QCOMPARE(zooms.at(0).first().toInt(), 1);
        QCOMPARE(zooms.at(1).first().toInt(), 0);
        QCOMPARE(zooms.at(2).first().toInt(), -1);
        // The slots themselves bear the other's name.
        bench.bar->OnZoomIn();
        QCOMPARE(zooms.at(3).first().toInt(), -1);
        bench.bar->OnZoomOut();
        QCOMPARE(zooms.at(4).first().toInt(), 1);
    }

    void theMoreMenuHasItsEntries()
    {
        const Bench bench;
        const QMenu& menu = *bench.moreButton().menu();
        QCOMPARE(entriesOf(menu).join(QLatin1Char(' ')),
                 QStringLiteral("选择控制器 - 固件升级 检测软件更新 - 关于"));
        QVERIFY(!menu.actions().first()->isEnabled());
        QVERIFY(menu.actions().last()->isEnabled());
    }

    void softwareUpdateIsPassedOn()
    {
        const Bench bench;
        const QSignalSpy asked(bench.bar, &TzToolBar::appUpgradeSignal);
        choose(bench.moreButton(), QStringLiteral("检测软件更新"));
        QCOMPARE(asked.count(), 1);
    }

    void firmwareUpdateRunsTheBuildDialog()
    {
        const Bench bench;
        bool shown = false;
        QTimer::singleShot(100, bench.bar, [&shown] {
            QWidget* dialog = QApplication::activeModalWidget();
            shown = qobject_cast<buildDialog*>(dialog) != nullptr && !dialog->parentWidget();
            if (dialog) {
                dialog->close();
            }
        });
        choose(bench.moreButton(), QStringLiteral("固件升级"));
        QVERIFY(shown);
    }

    void aboutShowsTheAboutBox()
    {
        const Bench bench;
        bool shown = false;
        QTimer::singleShot(100, bench.bar, [&shown] {
            QWidget* dialog = QApplication::activeModalWidget();
            shown = qobject_cast<aboutDialog*>(dialog) != nullptr && !dialog->parentWidget();
            if (dialog) {
                dialog->close();
            }
        });
        choose(bench.moreButton(), QStringLiteral("关于"));
        QVERIFY(shown);
    }

    void aButtonIsNotPressedWhileADialogFromItsMenuStands()
    {
        const Bench bench;
        for (QPushButton* button : {&bench.fileButton(), &bench.moreButton()}) {
            QAction* last = button->menu()->actions().last();
            QAction asks(QStringLiteral("asks"), button->menu());
            button->menu()->insertAction(last, &asks);
            bool downInMenu = false;
            bool downInDialog = true;
            QDialog dialog;
            connect(&asks, &QAction::triggered, &dialog, [&] {
                QTimer::singleShot(0, &dialog, [&] {
                    downInDialog = button->isDown();
                    dialog.reject();
                });
                dialog.exec();
            });
            QTimer::singleShot(0, button->menu(), [&] {
                downInMenu = button->isDown();
                QTest::mouseClick(button->menu(), Qt::LeftButton, Qt::NoModifier,
                                  button->menu()->actionGeometry(&asks).center());
            });
            QTest::mouseClick(button, Qt::LeftButton);
            QVERIFY(downInMenu);
            QVERIFY(!downInDialog);
            QVERIFY(!button->isDown());
        }
    }

    void anEmptyRecentListEmptiesTheMenu()
    {
        const Bench bench;
        recentFiles = QStringList{QStringLiteral("/home/a/one.tlrx")};
        bench.bar->OnUpdateRecentMenuSignal();
        QCOMPARE(entriesOf(bench.bar->recentMenu()), QStringList{QStringLiteral("one.tlrx")});
        recentFiles.clear();
        bench.bar->OnUpdateRecentMenuSignal();
        QVERIFY(bench.bar->recentMenu().isEmpty());
    }

    void ofTwentyRecentProjectsElevenShow()
    {
        const Bench bench;
        recentFiles.clear();
        for (int i = 1; i <= 20; ++i) {
            recentFiles.append(QStringLiteral("/home/a/project%1.tlrx").arg(i));
        }
        bench.bar->OnUpdateRecentMenuSignal();
        bench.bar->OnUpdateRecentMenuSignal();
        const QStringList entries = entriesOf(bench.bar->recentMenu());
        QCOMPARE(entries.size(), 11);
        QCOMPARE(entries.first(), QStringLiteral("project1.tlrx"));
        QCOMPARE(entries.last(), QStringLiteral("project11.tlrx"));
        recentFiles.clear();
    }

    void aRecentEntryGivesItsFullPathAndMayRebuildTheMenu()
    {
        const Bench bench;
        recentFiles =
            QStringList{QStringLiteral("/home/a/one.tlrx"), QStringLiteral("/b/two.tlrx")};
        bench.bar->OnUpdateRecentMenuSignal();
        QSignalSpy opened(bench.bar, &TzToolBar::openRecentFileSignal);
        connect(bench.bar, &TzToolBar::openRecentFileSignal, bench.bar,
                &TzToolBar::OnUpdateRecentMenuSignal);
        bench.bar->recentMenu().actions().at(1)->trigger();
        QCOMPARE(opened.count(), 1);
        QCOMPARE(opened.at(0).first().toString(), QStringLiteral("/b/two.tlrx"));
        QCOMPARE(bench.bar->recentMenu().actions().size(), 2);
        // Called by nobody's action, it does nothing.
        bench.bar->OnRecentFile();
        QCOMPARE(opened.count(), 1);
        recentFiles.clear();
    }

    void slotsWithoutAControlKeepTheirEffects()
    {
        const Bench bench;
        QSignalSpy switches(bench.bar, &TzToolBar::switchSubProgram);
        QSignalSpy codes(bench.bar, &TzToolBar::showCodeSignal);
        const QSignalSpy news(bench.bar, &TzToolBar::newSubSignal);
        const QSignalSpy deletes(bench.bar, &TzToolBar::delSubSignal);
        const QSignalSpy toCode(bench.bar, &TzToolBar::chgToCodeSignal);
        const QSignalSpy toPython(bench.bar, &TzToolBar::chgToPyhtonSignal);
        bench.bar->OnMain();
        QCOMPARE(switches.at(0).first().toInt(), 0);
        bench.bar->OnShowCode();
        bench.bar->OnShowPythonCode();
        QCOMPARE(codes.at(0).first().toInt(), 1);
        QCOMPARE(codes.at(1).first().toInt(), 2);
        bench.bar->OnNewSub();
        QCOMPARE(news.count(), 1);
        bench.bar->OnDeleteSub();
        QCOMPARE(deletes.count(), 1);
        bench.bar->OnEditCode();
        QCOMPARE(toCode.count(), 1);
        bench.bar->OnEditPython();
        QCOMPARE(toPython.count(), 1);
        QCOMPARE(switches.count(), 1);
    }

    void aSlotIsSwitchedByTheActionThatCarriesIt()
    {
        const Bench bench;
        QSignalSpy switches(bench.bar, &TzToolBar::switchSubProgram);
        QAction action;
        connect(&action, &QAction::triggered, bench.bar, &TzToolBar::OnSwitchSubProgram);
        action.setData(410);
        action.trigger();
        action.setData(QStringLiteral("no number"));
        action.trigger();
        QCOMPARE(switches.count(), 2);
        QCOMPARE(switches.at(0).first().toInt(), 410);
        QCOMPARE(switches.at(1).first().toInt(), 0);
        bench.bar->OnSwitchSubProgram();
        QCOMPARE(switches.count(), 2);
    }

    void everyTextHasItsRoom_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("english");
        QTest::newRow("1024, Chinese") << 1024 << false;
        QTest::newRow("1024, English") << 1024 << true;
        QTest::newRow("1280, Chinese") << 1280 << false;
        QTest::newRow("1280, English") << 1280 << true;
        QTest::newRow("1920, Chinese") << 1920 << false;
        QTest::newRow("1920, English") << 1920 << true;
    }

    void everyTextHasItsRoom()
    {
        QFETCH(int, width);
        QFETCH(bool, english);
        English translator;
        if (english) {
            QCoreApplication::installTranslator(&translator);
        }
        const FontOfTheProgram font(english ? 8 : 10);
        const Bench bench(width);
        bench.bar->showFirmwareNotice();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        const QList<QLabel*> labels = bench.bar->findChildren<QLabel*>();
        QCOMPARE(labels.size(), 2);
        for (const QLabel* label : labels) {
            const QSize needed = label->wordWrap()
                                     ? label->fontMetrics()
                                           .boundingRect(QRect(0, 0, label->width(), 0),
                                                         Qt::TextWordWrap, label->text())
                                           .size()
                                     : label->sizeHint();
            QVERIFY2(label->width() >= needed.width(), qPrintable(label->text()));
            const int lines = label->wordWrap() ? needed.height() : label->fontMetrics().height();
            QVERIFY2(label->height() >= lines, qPrintable(label->text()));
        }
        QCOMPARE(labels.first()->text(),
                 english ? QStringLiteral(" Program name: ") : QStringLiteral(" 程序名: "));
        const QWidget* notice = bench.bar->findChild<QWidget*>(QStringLiteral("infoBg"));
        QVERIFY(notice->isVisible());
        const auto* update = notice->findChild<QPushButton*>(QStringLiteral("info_button"));
        QVERIFY(labels.last()->geometry().right() < update->x());
        QVERIFY(notice->rect().contains(update->geometry()));
        const int noticeRight = notice->mapTo(bench.bar, QPoint(notice->width(), 0)).x();
        // The two buttons left of the last one.
        QVERIFY(noticeRight <= bench.moreButton().x() - 2 * 68);
        const int noticeLeft = notice->mapTo(bench.bar, QPoint(0, 0)).x();
        QVERIFY(noticeLeft >= bench.name().geometry().right());
        QCOMPARE(bench.name().size(), QSize(140, 24));
    }

    void theMoreButtonKeepsItsPlace()
    {
        const Bench bench(1280);
        QCOMPARE(bench.moreButton().pos(), QPoint(1280 - 78, 0));
        bench.bar->addInfo(QStringLiteral("a notice"));
        QCoreApplication::processEvents();
        QCOMPARE(bench.moreButton().pos(), QPoint(1280 - 78, 0));
        bench.bar->resize(1000, 34);
        QCoreApplication::processEvents();
        QCOMPARE(bench.moreButton().pos(), QPoint(1000 - 78, 0));
    }

    void buttonsAreAsHighAsTheBar()
    {
        const Bench bench;
        int buttons = 0;
        for (const QPushButton* button : bench.bar->findChildren<QPushButton*>()) {
            QCOMPARE(button->size(), QSize(68, 34));
            ++buttons;
        }
        QCOMPARE(buttons, 8);
    }

    void theGroundIsTheFramesColour()
    {
        const Bench bench;
        QCOMPARE(bench.bar->grab().toImage().pixelColor(700, 17), QColor(0, 175, 204));
    }
};

QTEST_MAIN(TzToolBarTest)
#include "tztoolbartest.moc"
