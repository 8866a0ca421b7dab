#include "base/config.h"
#include "proj/tzlabel.h"
#include "support/system/answers.h"
#include "support/system/menuhand.h"
#include "windowbench.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include <functional>

namespace
{
const QPointF s_oneButton(60, 120);

/** Something that a hand does, after which the canvas still has the keys. */
struct Deed {
    const char* name;
    std::function<void(WindowBench&)> act;
};

void clickTool(WindowBench& p_bench, const char* p_toolTip)
{
    p_bench.click(p_bench.tool(QString::fromUtf8(p_toolTip)));
}

/** Closes every dialog that comes up while it lives. */
class Closer
{
public:
    Closer()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                ++seen;
                dialog->close();
            }
        });
        m_timer.start(10);
    }
    int seen = 0;

private:
    QTimer m_timer;
};

void choose(WindowBench& p_bench, const char* p_button, const char* p_entry)
{
    Closer closer;
    QVERIFY(chooseFromMenu(p_bench.tool(QString::fromUtf8(p_button)), QString::fromUtf8(p_entry)));
    QCOMPARE(closer.seen, 1);
}

QLineEdit& nameField(WindowBench& p_bench) { return *p_bench.bar().findChild<QLineEdit*>(); }

/** A key for whoever has the keys. */
void key(int p_key, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier)
{
    QVERIFY(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(p_key), p_modifiers);
}

const Deed s_deeds[] = {
    {"a drop", [](WindowBench& b) { b.add(103); }},
    {"a drop while a name is typed",
     [](WindowBench& b) {
         b.click(nameField(b));
         QVERIFY(nameField(b).hasFocus());
         b.add(103);
     }},
    {"a tab of the palette",
     [](WindowBench& b) {
         const auto tabs = b.window.findChildren<tzlabel*>();
         QVERIFY(tabs.size() > 1);
         for (tzlabel* tab : tabs) {
             b.click(*tab);
         }
     }},
    {"a digit of the strip",
     [](WindowBench& b) {
         const supermodule* wait = b.add(101);
         b.clickAt(wait, s_oneButton);
         b.click(*b.chooser().at(4));
         QVERIFY(wait->cCode().contains(QStringLiteral("wait(4)")));
     }},
    {"the zoom-in button", [](WindowBench& b) { clickTool(b, "放大"); }},
    {"the zoom-out button", [](WindowBench& b) { clickTool(b, "缩小"); }},
    {"the reset-zoom button", [](WindowBench& b) { clickTool(b, "重置缩放"); }},
    {"the button of the C text, twice",
     [](WindowBench& b) {
         clickTool(b, "C 语言程序");
         clickTool(b, "C 语言程序");
     }},
    {"the download button",
     [](WindowBench& b) {
         Closer closer;
         clickTool(b, "下载");
         QCOMPARE(closer.seen, 1);
     }},
    {"a menu that nothing is chosen from",
     [](WindowBench& b) {
         for (const char* name : {"文件", ""}) {
             QPushButton& button = b.tool(QString::fromUtf8(name));
             QTimer::singleShot(0, button.menu(), [&button] {
                 QVERIFY(button.menu()->isVisible());
                 QTest::keyClick(button.menu(), Qt::Key_Escape);
             });
             b.click(button);
             QVERIFY(!button.menu()->isVisible());
         }
     }},
    {"a file dialog", [](WindowBench& b) { choose(b, "文件", "打开"); }},
    {"the about box", [](WindowBench& b) { choose(b, "", "关于"); }},
    {"the question about changes",
     [](WindowBench& b) {
         b.add(103);
         Answers hands({Cancel});
         QVERIFY(chooseFromMenu(b.tool(QStringLiteral("文件")), QStringLiteral("新建")));
         QVERIFY(hands.allUsed());
     }},
    {"the button of a notice",
     [](WindowBench& b) {
         b.bar().showFirmwareNotice();
         QCoreApplication::processEvents();
         Closer closer;
         b.click(*b.bar().findChild<QPushButton*>(QStringLiteral("info_button")));
         QCOMPARE(closer.seen, 1);
     }},
    {"Return in the name field",
     [](WindowBench& b) {
         b.click(nameField(b));
         QVERIFY(nameField(b).hasFocus());
         nameField(b).selectAll();
         QTest::keyClicks(&nameField(b), QStringLiteral("Go"));
         key(Qt::Key_Return);
         QCOMPARE(b.bar().programName(), QStringLiteral("Go"));
     }},
    {"Enter in the name field",
     [](WindowBench& b) {
         b.click(nameField(b));
         key(Qt::Key_Enter);
     }},
    {"Escape in the name field",
     [](WindowBench& b) {
         b.click(nameField(b));
         QVERIFY(nameField(b).hasFocus());
         key(Qt::Key_Escape);
     }},
    {"Return behind a name that no one could type",
     [](WindowBench& b) {
         b.bar().setProgramName(QStringLiteral("a name of a project"));
         b.click(nameField(b));
         key(Qt::Key_Return);
     }},
};
} // namespace

/** Who has the keys, and that what a hand does elsewhere doesn't take them from the canvas. */
class KeysTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { setString(QStringLiteral("fw.update_time"), QString()); }

    void theCanvasHasTheKeysAfter_data()
    {
        QTest::addColumn<int>("deed");
        for (int i = 0; i < int(std::size(s_deeds)); ++i) {
            QTest::newRow(s_deeds[i].name) << i;
        }
    }

    void theCanvasHasTheKeysAfter()
    {
        QFETCH(int, deed);
        WindowBench bench;
        supermodule* first = bench.add(104);
        bench.clickAt(first, QPointF(30, 30));
        QVERIFY(bench.canvas().hasFocus());
        s_deeds[deed].act(bench);
        if (QTest::currentTestFailed()) {
            return;
        }
        // As the window system does when a dialog or a menu has gone.
        bench.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.window));
        QTRY_COMPARE(QApplication::focusWidget(), &bench.canvas());
    }

    void nothingOfTheBarButTheNameFieldTakesTheKeys()
    {
        WindowBench bench;
        bench.bar().showFirmwareNotice();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QList<QWidget*> all = bench.bar().findChildren<QWidget*>();
        for (const QWidget* widget : all) {
            if (widget != &nameField(bench)) {
                QVERIFY2(widget->focusPolicy() == Qt::NoFocus,
                         qPrintable(widget->metaObject()->className() + widget->toolTip()));
            }
        }
        QVERIFY(all.contains(bench.bar().findChild<QPushButton*>(QStringLiteral("info_button"))));
    }

    void undoWorksBehindAZoom()
    {
        WindowBench bench;
        bench.clickAt(bench.add(103), QPointF(30, 30));
        key(Qt::Key_Delete);
        QCOMPARE(bench.program(), QList<int>{0});
        clickTool(bench, "放大");
        key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(bench.program(), (QList<int>{0, 103}));
    }

    void aPasteWorksBehindAZoom()
    {
        WindowBench bench;
        bench.clickAt(bench.add(103), QPointF(30, 30));
        key(Qt::Key_C, Qt::ControlModifier);
        clickTool(bench, "缩小");
        const int before = liveModules.size();
        key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(liveModules.size(), before + 1);
    }
};

QTEST_MAIN(KeysTest)
#include "keystest.moc"
