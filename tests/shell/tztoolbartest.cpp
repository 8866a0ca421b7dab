#include "shell/tztoolbar.h"
#include "base/config.h"
#include "base/recentfiles.h"
#include "build/builddialog.h"
#include "shell/aboutdialog.h"
#include "support/system/datatable.h"
#include "support/system/fixturetest.h"
#include "support/system/menuhand.h"

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

/** A tool bar as the window has it. */
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
    p_button.menu()->popup(QPoint(0, 0));
    QVERIFY(clickEntry(*p_button.menu(), p_text));
    p_button.menu()->hide();
}

/** Whether a dialog of a class, without a parent, comes up for an entry; it is closed again. */
template <typename Dialog> bool opensDialog(QPushButton& p_button, const QString& p_text)
{
    bool shown = false;
    QTimer::singleShot(100, &p_button, [&shown] {
        QWidget* dialog = QApplication::activeModalWidget();
        shown = qobject_cast<Dialog*>(dialog) != nullptr && !dialog->parentWidget();
        if (dialog) {
            dialog->close();
        }
    });
    choose(p_button, p_text);
    return shown;
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
class TzToolBarTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<modulesId>("modulesId"); }

    void init()
    {
        // No notice of an earlier test comes back.
        setString(QStringLiteral("fw.update_time"), QString());
        m_bench.emplace();
    }

    void theProcessKnowsTheOneToolBar()
    {
        m_bench.reset();
        QVERIFY(!toolBarInstance);
        {
            const TzToolBar toolBar;
            QCOMPARE(toolBarInstance, &toolBar);
        }
        QVERIFY(!toolBarInstance);
    }

    void aNameTakesSixLettersOrDigitsAndNothingElse()
    {
        QCOMPARE(m_bench->bar->programName(), QStringLiteral("RunA"));
        m_bench->name().selectAll();
        QTest::keyClicks(&m_bench->name(), QStringLiteral("a_B -9.z?12345"));
        QCOMPARE(m_bench->bar->programName(), QStringLiteral("aB9z12"));
        m_bench->name().clear();
        m_bench->name().insert(QStringLiteral("程序"));
        QCOMPARE(m_bench->bar->programName(), QString());
    }

    void anEmptyNameIsSentAsItStands()
    {
        QSignalSpy sent(m_bench->bar, &TzToolBar::downloadSignal);
        QTest::mouseClick(&m_bench->button(QStringLiteral("下载")), Qt::LeftButton);
        m_bench->name().selectAll();
        QTest::keyClick(&m_bench->name(), Qt::Key_Backspace);
        QTest::mouseClick(&m_bench->button(QStringLiteral("下载")), Qt::LeftButton);
        QCOMPARE(sent.count(), 2);
        QCOMPARE(sent.at(0).first().toString(), QStringLiteral("RunA"));
        QCOMPARE(sent.at(1).first().toString(), QString());
    }

    void aNameFromAProjectIsTakenAsItIs()
    {
        ProgramNameHolder& holder = *m_bench->bar;
        holder.setProgramName(QStringLiteral("a name no one could type"));
        QCOMPARE(holder.programName(), QStringLiteral("a name no one could type"));
        QSignalSpy sent(m_bench->bar, &TzToolBar::downloadSignal);
        QTest::mouseClick(&m_bench->button(QStringLiteral("下载")), Qt::LeftButton);
        QCOMPARE(sent.at(0).first().toString(), QStringLiteral("a name no one could type"));
    }

    void theFileMenusEntriesReachTheWindow()
    {
        QCOMPARE(entriesOf(*m_bench->fileButton().menu()).join(QLatin1Char(' ')),
                 QStringLiteral("新建 打开 保存 另存为 - 关闭"));
        const QSignalSpy news(m_bench->bar, &TzToolBar::newFileSignal);
        const QSignalSpy opens(m_bench->bar, &TzToolBar::openFileSignal);
        const QSignalSpy saves(m_bench->bar, &TzToolBar::saveSignal);
        const QSignalSpy savesAs(m_bench->bar, &TzToolBar::saveAsSignal);
        choose(m_bench->fileButton(), QStringLiteral("新建"));
        QCOMPARE(news.count(), 1);
        choose(m_bench->fileButton(), QStringLiteral("打开"));
        QCOMPARE(opens.count(), 1);
        choose(m_bench->fileButton(), QStringLiteral("保存"));
        QCOMPARE(saves.count(), 1);
        choose(m_bench->fileButton(), QStringLiteral("另存为"));
        QCOMPARE(savesAs.count(), 1);
        QCOMPARE(news.count() + opens.count() + saves.count(), 3);
    }

    void shortcutsReachTheWindow()
    {
        QVERIFY(QTest::qWaitForWindowActive(&m_bench->window));
        const QSignalSpy news(m_bench->bar, &TzToolBar::newFileSignal);
        const QSignalSpy opens(m_bench->bar, &TzToolBar::openFileSignal);
        const QSignalSpy saves(m_bench->bar, &TzToolBar::saveSignal);
        const QSignalSpy savesAs(m_bench->bar, &TzToolBar::saveAsSignal);
        m_bench->window.setFocus();
        QTest::keyClick(&m_bench->window, Qt::Key_N, Qt::ControlModifier);
        QTest::keyClick(&m_bench->window, Qt::Key_O, Qt::ControlModifier);
        QTest::keyClick(&m_bench->window, Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(&m_bench->window, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(news.count(), 1);
        QCOMPARE(opens.count(), 1);
        QCOMPARE(saves.count(), 1);
        QCOMPARE(savesAs.count(), 1);
        QSignalSpy zooms(m_bench->bar, &TzToolBar::zoomSceneSignal);
        QTest::keyClick(&m_bench->window, Qt::Key_Plus, Qt::ControlModifier);
        QTRY_COMPARE(zooms.count(), 1);
        QCOMPARE(zooms.at(0).first().toInt(), 1);
        QTest::keyClick(&m_bench->window, Qt::Key_Minus, Qt::ControlModifier);
        QTRY_COMPARE(zooms.count(), 2);
        QCOMPARE(zooms.at(1).first().toInt(), -1);
    }

    void closeEndsTheProgramWithoutAQuestion()
    {
        bool modal = false;
        QTimer::singleShot(0, m_bench->bar,
                           [this] { choose(m_bench->fileButton(), QStringLiteral("关闭")); });
        QTimer::singleShot(5000, m_bench->bar, [&modal] {
            modal = QApplication::activeModalWidget() != nullptr;
            QCoreApplication::exit(7);
        });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!modal);
    }

    void zoomButtonsAskForTheirChange()
    {
        QSignalSpy zooms(m_bench->bar, &TzToolBar::zoomSceneSignal);
        QTest::mouseClick(&m_bench->button(QStringLiteral("放大")), Qt::LeftButton);
        QTest::mouseClick(&m_bench->button(QStringLiteral("重置缩放")), Qt::LeftButton);
        QTest::mouseClick(&m_bench->button(QStringLiteral("缩小")), Qt::LeftButton);
        QCOMPARE(zooms.count(), 3);
        QCOMPARE(zooms.at(0).first().toInt(), 1);
        QCOMPARE(zooms.at(1).first().toInt(), 0);
        QCOMPARE(zooms.at(2).first().toInt(), -1);
        // The slots themselves bear the other's name.
        m_bench->bar->OnZoomIn();
        QCOMPARE(zooms.at(3).first().toInt(), -1);
        m_bench->bar->OnZoomOut();
        QCOMPARE(zooms.at(4).first().toInt(), 1);
    }

    void theMoreMenuHasItsEntries()
    {
        const QMenu& menu = *m_bench->moreButton().menu();
        QCOMPARE(entriesOf(menu).join(QLatin1Char(' ')),
                 QStringLiteral("选择控制器 - 固件升级 检测软件更新 - 关于"));
        QVERIFY(!menu.actions().first()->isEnabled());
        QVERIFY(menu.actions().last()->isEnabled());
    }

    void softwareUpdateIsPassedOn()
    {
        const QSignalSpy asked(m_bench->bar, &TzToolBar::appUpgradeSignal);
        choose(m_bench->moreButton(), QStringLiteral("检测软件更新"));
        QCOMPARE(asked.count(), 1);
    }

    void firmwareUpdateRunsTheBuildDialog()
    {
        QVERIFY(opensDialog<buildDialog>(m_bench->moreButton(), QStringLiteral("固件升级")));
    }

    void aboutShowsTheAboutBox()
    {
        QVERIFY(opensDialog<aboutDialog>(m_bench->moreButton(), QStringLiteral("关于")));
    }

    void aButtonIsNotPressedWhileADialogFromItsMenuStands()
    {
        for (QPushButton* button : {&m_bench->fileButton(), &m_bench->moreButton()}) {
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
        recentFiles = QStringList{QStringLiteral("/home/a/one.tlrx")};
        m_bench->bar->OnUpdateRecentMenuSignal();
        QCOMPARE(entriesOf(m_bench->bar->recentMenu()), QStringList{QStringLiteral("one.tlrx")});
        recentFiles.clear();
        m_bench->bar->OnUpdateRecentMenuSignal();
        QVERIFY(m_bench->bar->recentMenu().isEmpty());
    }

    void ofTwentyRecentProjectsElevenShow()
    {
        recentFiles.clear();
        for (int i = 1; i <= 20; ++i) {
            recentFiles.append(QStringLiteral("/home/a/project%1.tlrx").arg(i));
        }
        m_bench->bar->OnUpdateRecentMenuSignal();
        m_bench->bar->OnUpdateRecentMenuSignal();
        const QStringList entries = entriesOf(m_bench->bar->recentMenu());
        QCOMPARE(entries.size(), 11);
        QCOMPARE(entries.first(), QStringLiteral("project1.tlrx"));
        QCOMPARE(entries.last(), QStringLiteral("project11.tlrx"));
        recentFiles.clear();
    }

    void aRecentEntryGivesItsFullPathAndMayRebuildTheMenu()
    {
        recentFiles =
            QStringList{QStringLiteral("/home/a/one.tlrx"), QStringLiteral("/b/two.tlrx")};
        m_bench->bar->OnUpdateRecentMenuSignal();
        QSignalSpy opened(m_bench->bar, &TzToolBar::openRecentFileSignal);
        connect(m_bench->bar, &TzToolBar::openRecentFileSignal, m_bench->bar,
                &TzToolBar::OnUpdateRecentMenuSignal);
        m_bench->bar->recentMenu().actions().at(1)->trigger();
        QCOMPARE(opened.count(), 1);
        QCOMPARE(opened.at(0).first().toString(), QStringLiteral("/b/two.tlrx"));
        QCOMPARE(m_bench->bar->recentMenu().actions().size(), 2);
        // Called by nobody's action, it does nothing.
        m_bench->bar->OnRecentFile();
        QCOMPARE(opened.count(), 1);
        recentFiles.clear();
    }

    void slotsWithoutAControlKeepTheirEffects()
    {
        QSignalSpy switches(m_bench->bar, &TzToolBar::switchSubProgram);
        QSignalSpy codes(m_bench->bar, &TzToolBar::showCodeSignal);
        const QSignalSpy news(m_bench->bar, &TzToolBar::newSubSignal);
        const QSignalSpy deletes(m_bench->bar, &TzToolBar::delSubSignal);
        const QSignalSpy toCode(m_bench->bar, &TzToolBar::chgToCodeSignal);
        const QSignalSpy toPython(m_bench->bar, &TzToolBar::chgToPyhtonSignal);
        m_bench->bar->OnMain();
        QCOMPARE(switches.at(0).first().toInt(), 0);
        m_bench->bar->OnShowCode();
        m_bench->bar->OnShowPythonCode();
        QCOMPARE(codes.at(0).first().toInt(), 1);
        QCOMPARE(codes.at(1).first().toInt(), 2);
        m_bench->bar->OnNewSub();
        QCOMPARE(news.count(), 1);
        m_bench->bar->OnDeleteSub();
        QCOMPARE(deletes.count(), 1);
        m_bench->bar->OnEditCode();
        QCOMPARE(toCode.count(), 1);
        m_bench->bar->OnEditPython();
        QCOMPARE(toPython.count(), 1);
        QCOMPARE(switches.count(), 1);
    }

    void aSlotIsSwitchedByTheActionThatCarriesIt()
    {
        QSignalSpy switches(m_bench->bar, &TzToolBar::switchSubProgram);
        QAction action;
        connect(&action, &QAction::triggered, m_bench->bar, &TzToolBar::OnSwitchSubProgram);
        action.setData(410);
        action.trigger();
        action.setData(QStringLiteral("no number"));
        action.trigger();
        QCOMPARE(switches.count(), 2);
        QCOMPARE(switches.at(0).first().toInt(), 410);
        QCOMPARE(switches.at(1).first().toInt(), 0);
        m_bench->bar->OnSwitchSubProgram();
        QCOMPARE(switches.count(), 2);
    }

    void everyTextHasItsRoom_data()
    {
        columns<int, bool>("width", "english");
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
        m_bench.emplace(width);
        m_bench->bar->showFirmwareNotice();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        const QList<QLabel*> labels = m_bench->bar->findChildren<QLabel*>();
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
        const QWidget* notice = m_bench->bar->findChild<QWidget*>(QStringLiteral("infoBg"));
        QVERIFY(notice->isVisible());
        const auto* update = notice->findChild<QPushButton*>(QStringLiteral("info_button"));
        QVERIFY(labels.last()->geometry().right() < update->x());
        QVERIFY(notice->rect().contains(update->geometry()));
        const int noticeRight = notice->mapTo(m_bench->bar, QPoint(notice->width(), 0)).x();
        // The two buttons left of the last one.
        QVERIFY(noticeRight <= m_bench->moreButton().x() - 2 * 68);
        const int noticeLeft = notice->mapTo(m_bench->bar, QPoint(0, 0)).x();
        QVERIFY(noticeLeft >= m_bench->name().geometry().right());
        QCOMPARE(m_bench->name().size(), QSize(140, 24));
    }

    void theMoreButtonKeepsItsPlace()
    {
        QCOMPARE(m_bench->moreButton().pos(), QPoint(1280 - 78, 0));
        m_bench->bar->addInfo(QStringLiteral("a notice"));
        QCoreApplication::processEvents();
        QCOMPARE(m_bench->moreButton().pos(), QPoint(1280 - 78, 0));
        m_bench->bar->resize(1000, 34);
        QCoreApplication::processEvents();
        QCOMPARE(m_bench->moreButton().pos(), QPoint(1000 - 78, 0));
    }

    void buttonsAreAsHighAsTheBar()
    {
        int buttons = 0;
        for (const QPushButton* button : m_bench->bar->findChildren<QPushButton*>()) {
            QCOMPARE(button->size(), QSize(68, 34));
            ++buttons;
        }
        QCOMPARE(buttons, 8);
    }

    void theGroundIsTheFramesColour()
    {
        QCOMPARE(m_bench->bar->grab().toImage().pixelColor(700, 17), QColor(0, 175, 204));
    }
};

QTEST_MAIN(TzToolBarTest)
#include "tztoolbartest.moc"
