#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "modules/supermodule.h"
#include "support/canvas/canvasfixture.h"

#include <QGraphicsProxyWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest>
#include <QVBoxLayout>
#include <QWindow>

namespace
{
/** A canvas between two other widgets of a window, and the keyboard. */
class Desk : public CanvasFixture
{
public:
    Desk()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&before);
        layout->addWidget(&view);
        layout->addWidget(&after);
        window.resize(1000, 700);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("the window doesn't become active");
        }
        view.centerOn(500, 300);
        before.setFocus();
    }
    ~Desk()
    {
        for (QWidget* widget : {static_cast<QWidget*>(&view), static_cast<QWidget*>(&before),
                                static_cast<QWidget*>(&after)}) {
            widget->setParent(nullptr);
        }
    }

    /** Presses a key as the window system does. */
    void tap(Qt::Key p_key, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.windowHandle(), p_key, p_modifiers);
        // Widgets that nobody holds any longer go in the event loop.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    /** Where the focus is. */
    QString focus() const
    {
        if (before.hasFocus()) {
            return QStringLiteral("before");
        }
        if (after.hasFocus()) {
            return QStringLiteral("after");
        }
        const graphicsItem_Param* popUp = graphicsItem_Param::existing();
        for (int i = 0; popUp && i < popUp->buttons().size(); ++i) {
            if (popUp->buttons().at(i)->graphicsProxyWidget()->hasFocus()) {
                return QStringLiteral("pop-up %1").arg(i);
            }
        }
        const QList<supermodule*> all = blocks();
        for (supermodule* block : all) {
            for (int i = 0; i < block->buttonCount(); ++i) {
                const QPushButton* button = block->liveButton(i);
                if (button && button->graphicsProxyWidget()->hasFocus()) {
                    return QStringLiteral("%1 %2").arg(block->id).arg(i);
                }
            }
        }
        return view.hasFocus() ? QStringLiteral("canvas") : QString();
    }
    /** Where the focus comes by a key pressed again and again. */
    QStringList walk(Qt::Key p_key, int p_times, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier)
    {
        QStringList places;
        for (int i = 0; i < p_times; ++i) {
            tap(p_key, p_modifiers);
            places.append(focus());
        }
        return places;
    }
    /** How many buttons have widgets now. */
    int widgets() const
    {
        int count = 0;
        const QList<supermodule*> all = blocks();
        for (supermodule* block : all) {
            for (int i = 0; i < block->buttonCount(); ++i) {
                count += block->liveButton(i) ? 1 : 0;
            }
        }
        return count;
    }

    QLineEdit before;
    QLineEdit after;
    QWidget window;
};

QStringList turned(QStringList p_list)
{
    std::reverse(p_list.begin(), p_list.end());
    return p_list;
}
} // namespace

/** Tab and Backtab on the canvas: from button to button, and out at either end. */
class ButtonWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void tabWalksTheButtonsAndLeavesBehindTheLast()
    {
        Desk desk;
        desk.drop(111, {700, 400});
        desk.dropBehind(desk.dropBehind(desk.main(), 113), 101);
        desk.before.setFocus();
        const QStringList way{QStringLiteral("before"), QStringLiteral("113 0"),
                              QStringLiteral("113 1"),  QStringLiteral("101 0"),
                              QStringLiteral("111 0"),  QStringLiteral("after")};
        QCOMPARE(desk.walk(Qt::Key_Tab, 5), way.mid(1));
        QCOMPARE(desk.widgets(), 0);
        QCOMPARE(desk.walk(Qt::Key_Tab, 6), way);
        QCOMPARE(desk.walk(Qt::Key_Backtab, 5), turned(way).mid(1));
        QCOMPARE(desk.widgets(), 0);
        desk.after.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Tab, 5, Qt::ShiftModifier), turned(way).mid(1));
    }

    void onlyTheButtonWithTheFocusHasAWidget()
    {
        Desk desk;
        desk.dropBehind(desk.dropBehind(desk.main(), 113), 101);
        desk.before.setFocus();
        for (int i = 0; i < 3; ++i) {
            desk.tap(Qt::Key_Tab);
            QCOMPARE(desk.widgets(), 1);
        }
    }

    void aBodyComesBeforeWhatFollowsTheLoop()
    {
        Desk desk;
        supermodule* loop = desk.dropBehind(desk.main(), 301);
        desk.dropBehind(desk.main()->lastOf(), 101);
        supermodule* inner = desk.drop(111, {500, 500});
        loop->insert(LeftLink, inner);
        desk.before.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Tab, 4),
                 (QStringList{QStringLiteral("301 0"), QStringLiteral("111 0"),
                              QStringLiteral("101 0"), QStringLiteral("after")}));
    }

    void theFieldThatTabReachesTakesTheKeys()
    {
        Desk desk;
        supermodule* block = desk.dropBehind(desk.main(), 101);
        desk.before.setFocus();
        desk.tap(Qt::Key_Tab);
        QTest::keyClick(desk.window.windowHandle(), Qt::Key_Backspace);
        QTest::keyClick(desk.window.windowHandle(), Qt::Key_7);
        QVERIFY2(block->cCode().contains(QStringLiteral("wait(7)")), qPrintable(block->cCode()));
        QCOMPARE(desk.walk(Qt::Key_Tab, 1), QStringList{QStringLiteral("after")});
        QVERIFY(block->cCode().contains(QStringLiteral("wait(7)")));
    }

    void thePopUpsButtonsFollowTheirBlocks()
    {
        Desk desk;
        supermodule* first = desk.dropBehind(desk.main(), 111);
        desk.dropBehind(first, 101);
        desk.before.setFocus();
        desk.tap(Qt::Key_Tab);
        desk.tap(Qt::Key_Space);
        QVERIFY(graphicsItem_Param::existing()->isVisible());
        QCOMPARE(desk.walk(Qt::Key_Tab, 5),
                 (QStringList{QStringLiteral("pop-up 0"), QStringLiteral("pop-up 1"),
                              QStringLiteral("pop-up 2"), QStringLiteral("pop-up 3"),
                              QStringLiteral("101 0")}));
        desk.tap(Qt::Key_Backtab);
        desk.tap(Qt::Key_Space);
        QVERIFY(!graphicsItem_Param::existing()->isVisible());
        QCOMPARE(first->button(0)->text(), QStringLiteral("D"));
        // A closed pop-up is no stop.
        desk.before.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Tab, 3),
                 (QStringList{QStringLiteral("111 0"), QStringLiteral("101 0"),
                              QStringLiteral("after")}));
    }

    void whatIsOutOfSightOrHiddenIsPassedOver()
    {
        Desk desk;
        desk.drop(111, {500, 330});
        supermodule* hidden = desk.drop(101, {700, 330});
        supermodule* far = desk.drop(104, {900, 330});
        hidden->setVisibleTree(false);
        far->setPos(5000, 5000);
        desk.before.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("111 0"), QStringLiteral("after")}));
        desk.view.centerOn(far);
        desk.before.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("104 0"), QStringLiteral("after")}));
    }

    void aButtonThatWasScrolledAwayLetsTheFocusGoOn()
    {
        Desk desk;
        desk.drop(111, {500, 330});
        supermodule* far = desk.drop(104, {900, 330});
        far->setPos(5000, 5000);
        desk.before.setFocus();
        desk.tap(Qt::Key_Tab);
        QCOMPARE(desk.focus(), QStringLiteral("111 0"));
        desk.view.centerOn(far);
        QCOMPARE(desk.walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("104 0"), QStringLiteral("after")}));
    }

    void tabFromOutsideBeginsAnewWhereverTheFocusWas()
    {
        Desk desk;
        supermodule* last = desk.dropBehind(desk.dropBehind(desk.main(), 113), 101);
        desk.click(last->mapToScene(last->buttonRect(0).center()));
        QCOMPARE(desk.focus(), QStringLiteral("101 0"));
        desk.before.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("113 0"), QStringLiteral("113 1")}));
        desk.after.setFocus();
        QCOMPARE(desk.walk(Qt::Key_Backtab, 2),
                 (QStringList{QStringLiteral("101 0"), QStringLiteral("113 1")}));
    }

    void aCanvasWithoutButtonsIsLeftAtOnce()
    {
        Desk desk;
        QCOMPARE(desk.walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("canvas"), QStringLiteral("after")}));
        QCOMPARE(desk.walk(Qt::Key_Backtab, 2),
                 (QStringList{QStringLiteral("canvas"), QStringLiteral("before")}));
    }

    void tabWithControlOrAltWalksNowhere()
    {
        Desk desk;
        desk.dropBehind(desk.main(), 101);
        desk.click({900, 550});
        for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier}) {
            QCOMPARE(desk.walk(Qt::Key_Tab, 2, modifier),
                     (QStringList{QStringLiteral("canvas"), QStringLiteral("canvas")}));
        }
    }

    void fromTheGroundTabGoesToTheFirstButton()
    {
        Desk desk;
        desk.dropBehind(desk.main(), 101);
        desk.click({900, 550});
        QCOMPARE(desk.focus(), QStringLiteral("canvas"));
        QCOMPARE(desk.walk(Qt::Key_Tab, 1), QStringList{QStringLiteral("101 0")});
    }
};

QTEST_MAIN(ButtonWalkTest)
#include "buttonwalktest.moc"
