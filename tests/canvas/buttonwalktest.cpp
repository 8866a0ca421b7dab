#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "modules/supermodule.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/fixturetest.h"

#include <QGraphicsProxyWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <QVBoxLayout>

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
class ButtonWalkTest : public FixtureTest<Desk>
{
    Q_OBJECT

private slots:
    void tabWalksTheButtonsAndLeavesBehindTheLast()
    {
        m_bench->drop(111, {700, 400});
        m_bench->dropBehind(m_bench->dropBehind(m_bench->main(), 113), 101);
        m_bench->before.setFocus();
        const QStringList way{QStringLiteral("before"), QStringLiteral("113 0"),
                              QStringLiteral("113 1"),  QStringLiteral("101 0"),
                              QStringLiteral("111 0"),  QStringLiteral("after")};
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 5), way.mid(1));
        QCOMPARE(m_bench->widgets(), 0);
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 6), way);
        QCOMPARE(m_bench->walk(Qt::Key_Backtab, 5), turned(way).mid(1));
        QCOMPARE(m_bench->widgets(), 0);
        m_bench->after.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 5, Qt::ShiftModifier), turned(way).mid(1));
    }

    void onlyTheButtonWithTheFocusHasAWidget()
    {
        m_bench->dropBehind(m_bench->dropBehind(m_bench->main(), 113), 101);
        m_bench->before.setFocus();
        for (int i = 0; i < 3; ++i) {
            m_bench->tap(Qt::Key_Tab);
            QCOMPARE(m_bench->widgets(), 1);
        }
    }

    void aBodyComesBeforeWhatFollowsTheLoop()
    {
        supermodule* loop = m_bench->dropBehind(m_bench->main(), 301);
        m_bench->dropBehind(m_bench->main()->lastOf(), 101);
        supermodule* inner = m_bench->drop(111, {500, 500});
        loop->insert(LeftLink, inner);
        m_bench->before.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 4),
                 (QStringList{QStringLiteral("301 0"), QStringLiteral("111 0"),
                              QStringLiteral("101 0"), QStringLiteral("after")}));
    }

    void theFieldThatTabReachesTakesTheKeys()
    {
        supermodule* block = m_bench->dropBehind(m_bench->main(), 101);
        m_bench->before.setFocus();
        m_bench->tap(Qt::Key_Tab);
        QTest::keyClick(m_bench->window.windowHandle(), Qt::Key_Backspace);
        QTest::keyClick(m_bench->window.windowHandle(), Qt::Key_7);
        QVERIFY2(block->cCode().contains(QStringLiteral("wait(7)")), qPrintable(block->cCode()));
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 1), QStringList{QStringLiteral("after")});
        QVERIFY(block->cCode().contains(QStringLiteral("wait(7)")));
    }

    void thePopUpsButtonsFollowTheirBlocks()
    {
        supermodule* first = m_bench->dropBehind(m_bench->main(), 111);
        m_bench->dropBehind(first, 101);
        m_bench->before.setFocus();
        m_bench->tap(Qt::Key_Tab);
        m_bench->tap(Qt::Key_Space);
        QVERIFY(graphicsItem_Param::existing()->isVisible());
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 5),
                 (QStringList{QStringLiteral("pop-up 0"), QStringLiteral("pop-up 1"),
                              QStringLiteral("pop-up 2"), QStringLiteral("pop-up 3"),
                              QStringLiteral("101 0")}));
        m_bench->tap(Qt::Key_Backtab);
        m_bench->tap(Qt::Key_Space);
        QVERIFY(!graphicsItem_Param::existing()->isVisible());
        QCOMPARE(first->button(0)->text(), QStringLiteral("D"));
        // A closed pop-up is no stop.
        m_bench->before.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 3),
                 (QStringList{QStringLiteral("111 0"), QStringLiteral("101 0"),
                              QStringLiteral("after")}));
    }

    void whatIsOutOfSightOrHiddenIsPassedOver()
    {
        m_bench->drop(111, {500, 330});
        supermodule* hidden = m_bench->drop(101, {700, 330});
        supermodule* far = m_bench->drop(104, {900, 330});
        hidden->setVisibleTree(false);
        far->setPos(5000, 5000);
        m_bench->before.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("111 0"), QStringLiteral("after")}));
        m_bench->view.centerOn(far);
        m_bench->before.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("104 0"), QStringLiteral("after")}));
    }

    void aButtonThatWasScrolledAwayLetsTheFocusGoOn()
    {
        m_bench->drop(111, {500, 330});
        supermodule* far = m_bench->drop(104, {900, 330});
        far->setPos(5000, 5000);
        m_bench->before.setFocus();
        m_bench->tap(Qt::Key_Tab);
        QCOMPARE(m_bench->focus(), QStringLiteral("111 0"));
        m_bench->view.centerOn(far);
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("104 0"), QStringLiteral("after")}));
    }

    void tabFromOutsideBeginsAnewWhereverTheFocusWas()
    {
        supermodule* last = m_bench->dropBehind(m_bench->dropBehind(m_bench->main(), 113), 101);
        m_bench->click(last->mapToScene(last->buttonRect(0).center()));
        QCOMPARE(m_bench->focus(), QStringLiteral("101 0"));
        m_bench->before.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("113 0"), QStringLiteral("113 1")}));
        m_bench->after.setFocus();
        QCOMPARE(m_bench->walk(Qt::Key_Backtab, 2),
                 (QStringList{QStringLiteral("101 0"), QStringLiteral("113 1")}));
    }

    void aCanvasWithoutButtonsIsLeftAtOnce()
    {
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 2),
                 (QStringList{QStringLiteral("canvas"), QStringLiteral("after")}));
        QCOMPARE(m_bench->walk(Qt::Key_Backtab, 2),
                 (QStringList{QStringLiteral("canvas"), QStringLiteral("before")}));
    }

    void tabWithControlOrAltWalksNowhere()
    {
        m_bench->dropBehind(m_bench->main(), 101);
        m_bench->click({900, 550});
        for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier}) {
            QCOMPARE(m_bench->walk(Qt::Key_Tab, 2, modifier),
                     (QStringList{QStringLiteral("canvas"), QStringLiteral("canvas")}));
        }
    }

    void fromTheGroundTabGoesToTheFirstButton()
    {
        m_bench->dropBehind(m_bench->main(), 101);
        m_bench->click({900, 550});
        QCOMPARE(m_bench->focus(), QStringLiteral("canvas"));
        QCOMPARE(m_bench->walk(Qt::Key_Tab, 1), QStringList{QStringLiteral("101 0")});
    }
};

QTEST_MAIN(ButtonWalkTest)
#include "buttonwalktest.moc"
