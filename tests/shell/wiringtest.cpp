#include "actions/editactionwindow.h"
#include "base/recentfiles.h"
#include "build/builddialog.h"
#include "build/usermainfile.h"
#include "proj/binoverlay.h"
#include "proj/blockpanel.h"
#include "proj/tzlabel.h"
#include "project/projectfile.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"
#include "support/system/menuhand.h"
#include "support/system/paintwatch.h"
#include "update/upgradedialog.h"
#include "windowbench.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>

#include <algorithm>

namespace
{
// Where the buttons stand on a block, in its own units.
const QPointF s_oneButton(60, 120);
const QPointF s_rightButton(90, 120);
const QPointF s_leftButton(30, 120);

const QByteArray s_project("<!DOCTYPE vantrel>\n<vantrel><basenode><module id=\"0\"/>"
                           "<module id=\"103\"/></basenode></vantrel>\n");

enum Sender : int { Bar, Palette, Canvas };

/** A signal, what raises it, and a look at what follows. */
struct Wire {
    Sender sender;
    const char* signal;
    const char* raisedBy;
    void (*raiseAndLook)(WindowBench&);
};

QStringList picture(WindowBench& p_bench)
{
    return documentPicture(p_bench.canvas())
           << p_bench.window.windowTitle() << QString::number(p_bench.window.isVisible())
           << QString::number(QApplication::topLevelWidgets().size());
}

/** Raises a signal that leads to a slot without effect. */
template <typename Sender, typename Signal, typename Receiver, typename Slot>
void hasNoEffect(WindowBench& p_bench, Sender& p_sender, Signal p_signal, Receiver& p_receiver,
                 Slot p_slot)
{
    const QStringList before = picture(p_bench);
    emit(p_sender.*p_signal)();
    QCOMPARE(picture(p_bench), before);
    // The connection to a slot that does nothing yet shows in nothing else than its removal.
    QVERIFY(QObject::disconnect(&p_sender, p_signal, &p_receiver, p_slot));
}

BinOverlay& bin(WindowBench& p_bench) { return *p_bench.palette().findChild<BinOverlay*>(); }

/** Presses on a block and moves it a way in scene units. */
void pressAndMove(WindowBench& p_bench, const supermodule* p_block, const QPointF& p_way)
{
    const QPointF from = p_block->scenePos() + QPointF(30, 30);
    p_bench.hands.press(from);
    p_bench.hands.move(from + p_way / 2);
    p_bench.hands.move(from + p_way);
}

QString codeText(WindowBench& p_bench) { return p_bench.window.codeBrowser()->toPlainText(); }

/** Starts a download by the button and closes the dialog that comes up for it. */
bool runDownload(WindowBench& p_bench)
{
    QFile::remove(userMainPath());
    QDir().mkpath(QFileInfo(userMainPath()).path());
    bool shown = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&shown] {
        if (auto* dialog = qobject_cast<buildDialog*>(QApplication::activeModalWidget())) {
            shown = true;
            dialog->close();
        }
    });
    timer.start(10);
    p_bench.click(p_bench.tool(QStringLiteral("下载")));
    return shown;
}

const Wire s_wires[] = {
    {Bar, "newFileSignal()", "File, New",
     [](WindowBench& b) {
         b.add(103);
         Answers hands({No});
         QVERIFY(chooseFromMenu(b.tool(QStringLiteral("文件")), QStringLiteral("新建")));
         QVERIFY(hands.allUsed());
         QCOMPARE(b.program(), QList<int>{0});
     }},
    {Bar, "newFileSignal()", "Ctrl+N",
     [](WindowBench& b) {
         b.add(103);
         Answers hands({No});
         QTest::keyClick(&b.window, Qt::Key_N, Qt::ControlModifier);
         QTRY_COMPARE(b.program(), QList<int>{0});
     }},
    {Bar, "openFileSignal()", "File, Open",
     [](WindowBench& b) {
         QVERIFY(writeWhole(b.path(), s_project));
         Answers hands({b.path()});
         QVERIFY(chooseFromMenu(b.tool(QStringLiteral("文件")), QStringLiteral("打开")));
         QCOMPARE(Answers::said(), QStringList{QStringLiteral("打开文件")});
         QCOMPARE(b.program(), (QList<int>{0, 103}));
     }},
    {Bar, "openFileSignal()", "Ctrl+O",
     [](WindowBench& b) {
         QVERIFY(writeWhole(b.path(), s_project));
         Answers hands({b.path()});
         QTest::keyClick(&b.window, Qt::Key_O, Qt::ControlModifier);
         QTRY_COMPARE(b.program(), (QList<int>{0, 103}));
     }},
    {Bar, "saveSignal()", "File, Save",
     [](WindowBench& b) {
         b.add(103);
         Answers hands({b.path()});
         QVERIFY(chooseFromMenu(b.tool(QStringLiteral("文件")), QStringLiteral("保存")));
         QCOMPARE(Answers::said(), QStringList{QStringLiteral("保存文件")});
         QVERIFY(readWhole(b.path()).contains("103"));
     }},
    {Bar, "saveSignal()", "Ctrl+S",
     [](WindowBench& b) {
         b.add(103);
         Answers hands({b.path()});
         QTest::keyClick(&b.window, Qt::Key_S, Qt::ControlModifier);
         QTRY_VERIFY(QFileInfo::exists(b.path()));
     }},
    {Bar, "saveAsSignal()", "File, Save as",
     [](WindowBench& b) {
         b.add(103);
         Answers hands({b.path()});
         QVERIFY(chooseFromMenu(b.tool(QStringLiteral("文件")), QStringLiteral("另存为")));
         QCOMPARE(Answers::said(), QStringList{QStringLiteral("Save File")});
         QVERIFY(readWhole(b.path()).contains("103"));
     }},
    {Bar, "saveAsSignal()", "Ctrl+A",
     [](WindowBench& b) {
         Answers hands({b.path()});
         QTest::keyClick(&b.window, Qt::Key_A, Qt::ControlModifier);
         QTRY_VERIFY(QFileInfo::exists(b.path()));
         QCOMPARE(Answers::said(), QStringList{QStringLiteral("Save File")});
     }},
    {Bar, "zoomSceneSignal(int)", "the zoom buttons",
     [](WindowBench& b) {
         b.click(b.tool(QStringLiteral("放大")));
         QCOMPARE(b.canvas().zoomFactor(), 1.1);
         b.click(b.tool(QStringLiteral("缩小")));
         b.click(b.tool(QStringLiteral("缩小")));
         QCOMPARE(b.canvas().zoomFactor(), 0.9);
         b.click(b.tool(QStringLiteral("重置缩放")));
         QCOMPARE(b.canvas().zoomFactor(), 1.0);
     }},
    {Bar, "zoomSceneSignal(int)", "the keys for zoom",
     [](WindowBench& b) {
         QTest::keyClick(&b.window, Qt::Key_Plus, Qt::ControlModifier);
         QTRY_COMPARE(b.canvas().zoomFactor(), 1.1);
         QTest::keyClick(&b.window, Qt::Key_Minus, Qt::ControlModifier);
         QTRY_COMPARE(b.canvas().zoomFactor(), 1.0);
     }},
    {Bar, "newSubSignal()", "nothing, to a slot without effect",
     [](WindowBench& b) {
         hasNoEffect(b, b.bar(), &TzToolBar::newSubSignal, b.canvas(), &TzProgramView::OnNewSub);
     }},
    {Bar, "delSubSignal()", "nothing",
     [](WindowBench& b) {
         Answers hands({0});
         emit b.bar().delSubSignal();
         QCOMPARE(Answers::said(), QStringList{QStringLiteral("提示|主程序不能删除")});
     }},
    {Bar, "switchSubProgram(modulesId)", "nothing",
     [](WindowBench& b) {
         emit b.bar().switchSubProgram(404);
         QVERIFY(!b.hands.main()->isVisible());
         emit b.bar().switchSubProgram(0);
         QVERIFY(b.hands.main()->isVisible());
     }},
    {Bar, "downloadSignal(QString)", "the download button",
     [](WindowBench& b) {
         b.add(101);
         QVERIFY(runDownload(b));
         QVERIFY(readWhole(userMainPath()).contains("wait(1);"));
     }},
    {Bar, "showCodeSignal(int)", "the button of the C text, which stays down meanwhile",
     [](WindowBench& b) {
         const QWidget& pane = *b.window.codeBrowser();
         QPushButton& button = b.tool(QStringLiteral("C 语言程序"));
         QVERIFY(!button.isChecked());
         b.click(button);
         QVERIFY(pane.isVisible());
         QVERIFY(button.isChecked());
         QVERIFY(codeText(b).startsWith(
             QStringLiteral("#include \"vantrel.h\"\nvoid user_main()\n{\n")));
         b.click(button);
         QVERIFY(!pane.isVisible());
         QVERIFY(!button.isChecked());
         b.click(button);
         QVERIFY(pane.isVisible());
         emit b.bar().showCodeSignal(2);
         QVERIFY(pane.isVisible());
         QVERIFY(!button.isChecked());
         QCOMPARE(codeText(b), QStringLiteral("import Vantrel\n"));
         emit b.bar().showCodeSignal(2);
         QVERIFY(!pane.isVisible());
     }},
    {Bar, "chgToCodeSignal()", "nothing, to a slot without effect",
     [](WindowBench& b) {
         hasNoEffect(b, b.bar(), &TzToolBar::chgToCodeSignal, b.window, &MainWindow::OnEditCode);
     }},
    {Bar, "chgToPyhtonSignal()", "nothing, to a slot without effect",
     [](WindowBench& b) {
         hasNoEffect(b, b.bar(), &TzToolBar::chgToPyhtonSignal, b.window,
                     &MainWindow::OnEditPython);
     }},
    {Bar, "chgToEditActionsSignal()", "nothing",
     [](WindowBench& b) {
         emit b.bar().chgToEditActionsSignal();
         QVERIFY(!b.window.isVisible());
         const QWidgetList windows = QApplication::topLevelWidgets();
         const auto editor = std::find_if(windows.cbegin(), windows.cend(), [](QWidget* p_each) {
             return qobject_cast<editActionWindow*>(p_each);
         });
         QVERIFY(editor != windows.cend() && (*editor)->isVisible() && (*editor)->isMaximized());
     }},
    {Bar, "appUpgradeSignal()", "More, Software Update",
     [](WindowBench& b) {
         QTRY_VERIFY(b.window.findChild<UpgradeDialog*>());
         QVERIFY(!b.window.findChild<UpgradeDialog*>()->isVisible());
         QVERIFY(chooseFromMenu(b.tool(QString()), QStringLiteral("检测软件更新")));
         QVERIFY(b.window.findChild<UpgradeDialog*>()->isVisible());
     }},
    {Bar, "nameDoneSignal()", "Return in the name field",
     [](WindowBench& b) {
         auto* field = b.bar().findChild<QLineEdit*>();
         field->setFocus();
         QVERIFY(!b.canvas().hasFocus());
         QTest::keyClick(field, Qt::Key_Return);
         QVERIFY(b.canvas().hasFocus());
     }},
    {Bar, "openRecentFileSignal(QString)", "an entry of the recent menu",
     [](WindowBench& b) {
         QVERIFY(writeWhole(b.path(), s_project));
         QPushButton& button = b.tool(QStringLiteral("最近文档"));
         QVERIFY(!button.isEnabled());
         recentFiles = QStringList{QStringLiteral("/gone.tlrx"), b.path()};
         b.bar().OnUpdateRecentMenuSignal();
         QVERIFY(button.isEnabled());
         QVERIFY(chooseFromMenu(button, QStringLiteral("a.tlrx")));
         QCOMPARE(b.program(), (QList<int>{0, 103}));
         QCOMPARE(b.window.fileName(), b.path());
     }},

    {Palette, "NewProgramSignal()", "nothing, to a slot without effect",
     [](WindowBench& b) {
         hasNoEffect(b, b.palette(), &TzBlockWidget::NewProgramSignal, b.canvas(),
                     &TzProgramView::OnNewSub);
     }},
    {Palette, "NewTaskSignal()", "nothing, to a slot without effect",
     [](WindowBench& b) {
         hasNoEffect(b, b.palette(), &TzBlockWidget::NewTaskSignal, b.canvas(),
                     &TzProgramView::OnNewTask);
     }},
    {Palette, "SelectNumberSignal(int)", "a key of the number keyboard",
     [](WindowBench& b) {
         const supermodule* wait = b.add(101);
         b.clickAt(wait, s_oneButton);
         QCOMPARE(b.chooser().size(), 12);
         b.click(*b.chooser().at(5));
         QCOMPARE(wait->cCode(), QStringLiteral("wait(5);\n"));
     }},
    {Palette, "SelectNumberSignal(int)", "a voice",
     [](WindowBench& b) {
         const supermodule* animal = b.add(801);
         b.clickAt(animal, s_oneButton);
         QCOMPARE(b.chooser().size(), 6);
         b.click(*b.chooser().at(2));
         QCOMPARE(animal->cCode(), QStringLiteral("PlaySpeech(8);\n"));
     }},
    {Palette, "SelectNumberSignal(int)", "a symbol",
     [](WindowBench& b) {
         const supermodule* arithmetic = b.add(905);
         b.clickAt(arithmetic, s_leftButton);
         QCOMPARE(b.chooser().size(), 5);
         b.click(*b.chooser().at(2));
         QCOMPARE(arithmetic->cCode(), QStringLiteral("disp_symble(2, 7);"));
     }},
    {Palette, "SelectNumberSignal(int)", "a note",
     [](WindowBench& b) {
         const supermodule* piano = b.add(800);
         const QString before = piano->cCode();
         b.clickAt(piano, s_oneButton);
         QCOMPARE(b.chooser().size(), 7);
         b.click(*b.chooser().at(6));
         QVERIFY(piano->cCode() != before);
     }},
    {Palette, "editParamSignal(int,int)", "a servo's number",
     [](WindowBench& b) {
         const supermodule* servo = b.add(107);
         b.clickAt(servo, s_rightButton);
         QCOMPARE(b.chooser().size(), 18);
         b.click(*b.chooser().at(4));
         QCOMPARE(servo->cCode(), QStringLiteral("servo_ctrl(5, 716, 512, 0);\n"));
     }},
    {Palette, "updateViewSignal()", "a tab",
     [](WindowBench& b) {
         const PaintWatch painted(*b.canvas().viewport());
         b.click(*b.palette().folders().at(2));
         QVERIFY(painted.sawAll());
     }},
    {Palette, "updateViewSignal()", "a choice",
     [](WindowBench& b) {
         b.clickAt(b.add(801), s_oneButton);
         // No block is asked to paint itself by a choice that comes to none.
         focusModule.clear();
         const PaintWatch painted(*b.canvas().viewport());
         b.click(*b.chooser().first());
         QVERIFY(painted.sawAll());
     }},
    {Palette, "updateViewSignal()", "the end of a drag from the strip",
     [](WindowBench& b) {
         QWidget* label = b.palette().findChild<BlockPanel*>()->labels().first();
         const PaintWatch painted(*b.canvas().viewport());
         b.click(*label);
         QVERIFY(painted.sawAll());
     }},

    {Canvas, "mouseSignal(int)", "a drag within the canvas and its end",
     [](WindowBench& b) {
         const supermodule* block = b.add(103);
         QVERIFY(!bin(b).isVisible());
         pressAndMove(b, block, QPointF(200, 0));
         QVERIFY(bin(b).isVisible());
         QCOMPARE(bin(b).imagePath(), QStringLiteral(":/close.png"));
         b.hands.release(block->scenePos() + QPointF(30, 30));
         QVERIFY(!bin(b).isVisible());
     }},
    {Canvas, "mouseSignal(int)", "a drag below the canvas",
     [](WindowBench& b) {
         const supermodule* block = b.add(103);
         pressAndMove(b, block, QPointF(0, 900));
         QCOMPARE(bin(b).imagePath(), QStringLiteral(":/open.png"));
         b.hands.release(block->scenePos() + QPointF(30, 30));
         QVERIFY(!bin(b).isVisible());
         QCOMPARE(b.program(), QList<int>{0});
     }},
    {Canvas, "mouseSignal(int)", "a drop and the next press",
     [](WindowBench& b) {
         const supermodule* block = b.add(103);
         QCOMPARE(b.palette().dragIntoBin(), 1);
         b.hands.press(block->scenePos() + QPointF(30, 30));
         QCOMPARE(b.palette().dragIntoBin(), 0);
         b.hands.release(block->scenePos() + QPointF(30, 30));
     }},
    {Canvas, "mouseSignal(int)", "a press on the ground",
     [](WindowBench& b) {
         b.clickAt(b.add(101), s_oneButton);
         QVERIFY(b.palette().isChoosing());
         // The panel that was there goes with the next turn of the event loop.
         QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
         QVERIFY(!b.palette().findChild<BlockPanel*>());
         b.clickGround();
         QVERIFY(!b.palette().isChoosing());
         QVERIFY(b.palette().findChild<BlockPanel*>());
         QVERIFY(!focusModule);
     }},
    {Canvas, "moduleUpdateSignal()", "a drop, a move and a deletion",
     [](WindowBench& b) {
         emit b.bar().showCodeSignal(1);
         QVERIFY(!codeText(b).contains(QStringLiteral("wait(1);")));
         supermodule* wait = b.add(101);
         QVERIFY(codeText(b).contains(QStringLiteral("wait(1);")));
         b.hands.drag(wait, QPoint(100, 250));
         QVERIFY(!codeText(b).contains(QStringLiteral("wait(1);")));
         wait = b.add(101);
         QVERIFY(codeText(b).contains(QStringLiteral("wait(1);")));
         // The text must not lie: what is typed into a block stands there at once.
         b.clickAt(wait, QPointF(60, 120));
         b.hands.key(Qt::Key_7);
         QVERIFY(codeText(b).contains(QStringLiteral("wait(7);")));
         b.clickAt(wait, QPointF(30, 30));
         b.hands.key(Qt::Key_Delete);
         QVERIFY(!codeText(b).contains(QStringLiteral("wait(7);")));
     }},
    {Canvas, "updateRecentMenuSignal()", "a save and an opening",
     [](WindowBench& b) {
         QVERIFY(b.bar().recentMenu().isEmpty());
         Answers hands({b.path("b.tlrx")});
         QTest::keyClick(&b.window, Qt::Key_S, Qt::ControlModifier);
         QTRY_COMPARE(b.bar().recentMenu().actions().size(), 1);
         QCOMPARE(b.bar().recentMenu().actions().first()->text(), QStringLiteral("b.tlrx"));
         QVERIFY(writeWhole(b.path(), s_project));
         b.window.openPath(b.path());
         QCOMPARE(b.bar().recentMenu().actions().size(), 2);
         QCOMPARE(b.bar().recentMenu().actions().first()->text(), QStringLiteral("a.tlrx"));
     }},
    {Canvas, "showNumKeyboardSignal(uint32_t)", "the fields of times and angles",
     [](WindowBench& b) {
         b.clickAt(b.add(101), s_oneButton);
         QCOMPARE(b.chooserTexts(), QStringLiteral("0 1 2 3 4 5 6 7 8 9 . "));
         b.clickAt(b.add(107), s_leftButton);
         QCOMPARE(b.chooserTexts(), QStringLiteral("0 1 2 3 4 5 6 7 8 9 - "));
     }},
    {Canvas, "showVoiceSignal(int)", "the button of a voice block",
     [](WindowBench& b) {
         b.clickAt(b.add(804), s_oneButton);
         QCOMPARE(b.chooser().size(), 2);
     }},
    {Canvas, "showExpressionSignal(int)", "the button of a face",
     [](WindowBench& b) {
         b.clickAt(b.add(903), s_oneButton);
         QCOMPARE(b.chooser().size(), 12);
     }},
    {Canvas, "showPanelSignal(int,int)", "the buttons of notes and servos",
     [](WindowBench& b) {
         b.clickAt(b.add(800), s_oneButton);
         QVERIFY(b.chooserTexts().startsWith(QStringLiteral("do (1) re (2)")));
         b.clickAt(b.add(107), s_rightButton);
         QVERIFY(b.chooserTexts().startsWith(QStringLiteral("ID-01 ID-02")));
     }},
    {Canvas, "openPathSignal(QString)", "a project that is dropped on the canvas",
     [](WindowBench& b) {
         QVERIFY(writeWhole(b.path(), s_project));
         QMimeData data;
         data.setUrls({QUrl::fromLocalFile(b.path())});
         const QPoint at(200, 200);
         QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
         QApplication::sendEvent(b.canvas().viewport(), &enter);
         QVERIFY(enter.isAccepted());
         QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
         QApplication::sendEvent(b.canvas().viewport(), &drop);
         QCOMPARE(b.program(), (QList<int>{0, 103}));
         QCOMPARE(b.window.fileName(), b.path());
     }},
};

QObject* senderOf(WindowBench& p_bench, Sender p_sender)
{
    switch (p_sender) {
    case Bar:
        return &p_bench.bar();
    case Palette:
        return &p_bench.palette();
    default:
        return &p_bench.canvas();
    }
}

/** The signals that a class declares itself. */
QSet<QByteArray> declaredSignals(const QMetaObject& p_class)
{
    QSet<QByteArray> list;
    for (int i = p_class.methodOffset(); i < p_class.methodCount(); ++i) {
        if (p_class.method(i).methodType() == QMetaMethod::Signal) {
            list.insert(p_class.method(i).methodSignature());
        }
    }
    return list;
}
} // namespace

/**
 * The window's parts and what connects them: each signal of each part, raised by its control where
 * it has one, and what follows elsewhere in the window.
 */
class WiringTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<modulesId>("modulesId");
        qRegisterMetaType<uint32_t>("uint32_t");
    }

    void init()
    {
        recentFiles.clear();
        QFile::remove(recentFilesPath());
    }

    void everySignalOfThePartsIsTold_data()
    {
        QTest::addColumn<int>("sender");
        QTest::newRow("tool bar") << int(Bar);
        QTest::newRow("palette") << int(Palette);
        QTest::newRow("canvas") << int(Canvas);
    }

    void everySignalOfThePartsIsTold()
    {
        QFETCH(int, sender);
        const QMetaObject* parts[] = {&TzToolBar::staticMetaObject,
                                      &TzBlockWidget::staticMetaObject,
                                      &TzProgramView::staticMetaObject};
        QSet<QByteArray> told;
        for (const Wire& wire : s_wires) {
            if (wire.sender == sender) {
                told.insert(wire.signal);
            }
        }
        const QSet<QByteArray> declared = declaredSignals(*parts[sender]);
        QCOMPARE((declared - told).values(), QList<QByteArray>());
        QCOMPARE((told - declared).values(), QList<QByteArray>());
        QVERIFY(declaredSignals(MainWindow::staticMetaObject).isEmpty());
    }

    void aSignalHasItsEffect_data()
    {
        QTest::addColumn<int>("wire");
        int number = 0;
        for (const Wire& wire : s_wires) {
            QTest::addRow("%s by %s", wire.signal, wire.raisedBy) << number++;
        }
    }

    void aSignalHasItsEffect()
    {
        QFETCH(int, wire);
        const Wire& told = s_wires[wire];
        WindowBench bench;
        const QSignalSpy raised(senderOf(bench, told.sender), QByteArray("2") + told.signal);
        QVERIFY(raised.isValid());
        told.raiseAndLook(bench);
        QVERIFY(raised.count() > 0);
    }

    // The one sender in the window that is no widget. Nothing starts it: no period is defined.
    void theTimerForTheTemporaryFileSavesItAndNeverRuns()
    {
        WindowBench bench;
        const QList<QTimer*> timers =
            bench.window.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(timers.size(), 1);
        QVERIFY(!timers.first()->isActive());
        const QString temporary =
            QCoreApplication::applicationDirPath() + QStringLiteral("/temp.tlrx");
        QFile::remove(temporary);
        timers.first()->start(0);
        QTRY_VERIFY(QFileInfo::exists(temporary));
        timers.first()->stop();
        QVERIFY(QFileInfo(temporary).size() > ProjectTailSize);
        QVERIFY(QFile::remove(temporary));
    }

    void aProjectBringsAndTakesTheNameInTheBar()
    {
        WindowBench bench;
        bench.bar().setProgramName(QStringLiteral("Car1"));
        QVERIFY(bench.canvas().saveFile(bench.path()));
        bench.bar().setProgramName(QStringLiteral("other"));
        bench.window.openPath(bench.path());
        QCOMPARE(bench.bar().programName(), QStringLiteral("Car1"));
    }
};

QTEST_MAIN(WiringTest)
#include "wiringtest.moc"
