#include "modules/documentstate.h"
#include "parameterbench.h"
#include "proj/controls/selectablebutton.h"
#include "support/system/datatable.h"
#include "support/system/paintwatch.h"

#include <QHelpEvent>
#include <QtTest>

namespace
{
/** Remembers the tool tips that are asked for. */
class ToolTipWatch : public QObject
{
public:
    QList<QPoint> asked;

protected:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::ToolTip) {
            asked.append(static_cast<QHelpEvent*>(p_event)->pos());
        }
        return false;
    }
};
} // namespace

/** The values of blocks, as their fields and choosers on the canvas give them. */
class BlockParametersTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void theNextKeyReplacesTheMarkedNumber()
    {
        supermodule* block = m_bench->seen(101);
        auto* field = qobject_cast<SelectableButton*>(block->button(0));
        m_bench->clickButton(block, 0);
        QVERIFY(field->isSelected());
        documentModified = false;
        m_bench->type("0.5");
        QVERIFY(!field->isSelected());
        QCOMPARE(field->text(), QStringLiteral("0.5"));
        QCOMPARE(block->cCode(), QStringLiteral("wait(0.5);\n"));
        QVERIFY(documentModified);
        // A second press marks it again, a third takes the mark away.
        m_bench->clickButton(block, 0);
        QVERIFY(field->isSelected());
        m_bench->type("2");
        QCOMPARE(block->cCode(), QStringLiteral("wait(2);\n"));
    }

    void aPressOnTheCanvasUnmarksTheField()
    {
        supermodule* block = m_bench->seen(101);
        auto* field = qobject_cast<SelectableButton*>(block->button(0));
        m_bench->clickButton(block, 0);
        QVERIFY(field->isSelected());
        m_bench->click({900, 550});
        QVERIFY(!field->isSelected());
        QCOMPARE(SelectableButton::current(), nullptr);
        // One field marks, the other loses its mark.
        supermodule* other = m_bench->seen(101, {800, 330});
        m_bench->clickButton(block, 0);
        m_bench->clickButton(other, 0);
        QVERIFY(!field->isSelected());
        QCOMPARE(SelectableButton::current(), other->button(0));
    }

    void aKeyOfEitherKeyboardIsAChange_data() { numberRows("id", {101, 104, 107, 113, 301}); }

    void aKeyOfEitherKeyboardIsAChange()
    {
        QFETCH(int, id);
        supermodule* block = m_bench->seen(id);
        m_bench->clickButton(block, 0);
        documentModified = false;
        m_bench->tap("3");
        QVERIFY(documentModified);
        documentModified = false;
        m_bench->type("4");
        QVERIFY(documentModified);
    }

    void aChoiceIsPainted_data() { numberRows("id", {100, 111, 113, 107, 308, 900, 901, 801}); }

    void aChoiceIsPainted()
    {
        QFETCH(int, id);
        supermodule* block = m_bench->seen(id);
        const PaintWatch watch(*m_bench->view.viewport());
        block->setParamIndex(1);
        block->setNumberKey(2);
        const QRectF place = block->sceneBoundingRect();
        QVERIFY(watch.saw(QRect(m_bench->at(place.topLeft()), place.size().toSize())));
    }

    void theKeyboardOfThePaletteEditsTheBlockThatAskedForIt()
    {
        supermodule* first = m_bench->seen(101, {300, 330});
        supermodule* second = m_bench->seen(101, {700, 330});
        m_bench->clickButton(first, 0);
        m_bench->tap("12.25");
        m_bench->clickButton(second, 0);
        m_bench->tap("3");
        QCOMPARE(first->cCode(), QStringLiteral("wait(12.25);\n"));
        QCOMPARE(second->cCode(), QStringLiteral("wait(3);\n"));
        QCOMPARE(first->button(0)->text(), QStringLiteral("12.25"));
    }

    void aPressOnTheEmptyCanvasEndsThePalettesInput()
    {
        supermodule* block = m_bench->seen(101);
        m_bench->clickButton(block, 0);
        QCOMPARE(focusModule.data(), block);
        m_bench->click({900, 550});
        QVERIFY(!focusModule);
        m_bench->tap("7");
        QCOMPARE(block->cCode(), QStringLiteral("wait(1);\n"));
    }

    void everyTimedBlockTakesItsTimeFromItsField_data()
    {
        numberRows("id", {101, 104, 118, 119, 120, 112, 113});
    }

    void everyTimedBlockTakesItsTimeFromItsField()
    {
        QFETCH(int, id);
        supermodule* block = m_bench->seen(id);
        QVERIFY(block->cCode().contains(QStringLiteral("wait(1);")));
        m_bench->clickButton(block, 0);
        m_bench->type("0.75");
        QVERIFY2(block->cCode().contains(QStringLiteral("wait(0.75);")),
                 qPrintable(block->cCode()));
        m_bench->clickButton(block, 0);
        m_bench->tap("2.5");
        QVERIFY2(block->cCode().contains(QStringLiteral("wait(2.5);")), qPrintable(block->cCode()));
    }

    void whatIsTypedStandsInTheFieldAndInTheText_data()
    {
        columns<int, QString, QString, QString>("id", "keys", "shown", "code");
        row("an emptied time waits for nothing", 101, "<", "", "wait(0);\n");
        row("a time of six digits stays exact", 101, "123457", "123457", "wait(123457);\n");
        row("a time takes no seventh digit", 101, "1234578", "123457", "wait(123457);\n");
        row("an emptied count is zero", 301, "<", "", "for(int i = 0;i < 0; ++i)\n{\n}");
        const auto angle = [](const char* p_name, const QString& p_keys, const QString& p_shown,
                              int p_angle) {
            // The angle's position is 512 less 2.96 counts a degree, cut toward zero.
            row(p_name, 107, p_keys, p_shown,
                QStringLiteral("servo_ctrl(1, 716, %1, 0);\n").arg(p_angle * -888 / 300 + 512));
        };
        angle("15", "15", "15" + s_degree, 15);
        angle("15, minus", "15-", "-15" + s_degree, -15);
        angle("15, minus, minus", "15--", "15" + s_degree, 15);
        angle("-15, 0", "-150", "-150" + s_degree, -150);
        angle("150", "150", "150" + s_degree, 150);
        angle("15, delete", "15<", "1" + s_degree, 1);
        angle("15, delete, delete", "15<<", "", 0);
        angle("deleted and typed anew", "15<<7", "7" + s_degree, 7);
        angle("minus alone", "-", "-" + s_degree, 0);
        angle("0 then 5", "05", "0" + s_degree, 0);
        angle("an angle takes no point", "1.2", "12" + s_degree, 12);
        angle("an angle takes no point behind it", "1.2.", "12" + s_degree, 12);
    }

    void whatIsTypedStandsInTheFieldAndInTheText()
    {
        QFETCH(int, id);
        QFETCH(QString, keys);
        QFETCH(QString, shown);
        QFETCH(QString, code);
        supermodule* typed = m_bench->seen(id, {300, 330});
        m_bench->clickButton(typed, 0);
        m_bench->type(keys);
        QCOMPARE(typed->button(0)->text(), shown);
        QCOMPARE(typed->cCode(), code);
        supermodule* tapped = m_bench->seen(id, {700, 330});
        m_bench->clickButton(tapped, 0);
        m_bench->tap(keys);
        QCOMPARE(tapped->button(0)->text(), shown);
        QCOMPARE(tapped->cCode(), code);
    }

    void aCountTakesDigitsAndDeleteAlone()
    {
        supermodule* block = m_bench->seen(301);
        m_bench->clickButton(block, 0);
        QCOMPARE(m_bench->raised, QStringList{"number 9"});
        m_bench->type("4.-2");
        QCOMPARE(block->button(0)->text(), QStringLiteral("42"));
        QCOMPARE(block->cCode(), QStringLiteral("for(int i = 0;i < 42; ++i)\n{\n}"));
        m_bench->type("<");
        QCOMPARE(block->cCode(), QStringLiteral("for(int i = 0;i < 4; ++i)\n{\n}"));
    }

    void aRefusedAngleIsExplained_data()
    {
        columns<QString, QString, QString>("keys", "refused", "text");
        row("15, key 1: 151", "15", "1", "15");
        row("-15, key 1: -151", "-15", "1", "-15");
        row("99, key 9: 999", "99", "9", "99");
        row("150, key 0: 1500", "150", "0", "150");
    }

    void aRefusedAngleIsExplained()
    {
        QFETCH(QString, keys);
        QFETCH(QString, refused);
        QFETCH(QString, text);
        supermodule* block = m_bench->seen(107);
        ToolTipWatch watch;
        block->button(0)->installEventFilter(&watch);
        QCOMPARE(block->button(0)->toolTip(), QStringLiteral("-150 ~ 150"));
        m_bench->clickButton(block, 0);
        documentModified = false;
        m_bench->type(keys);
        QCoreApplication::processEvents();
        QCOMPARE(watch.asked.size(), 0);
        QVERIFY(documentModified);
        documentModified = false;
        m_bench->type(refused);
        QVERIFY(!documentModified);
        QCoreApplication::processEvents();
        QCOMPARE(watch.asked, QList<QPoint>{QPoint(60, -10)});
        QCOMPARE(block->button(0)->text(), text + s_degree);
        QCOMPARE(
            block->cCode(),
            QStringLiteral("servo_ctrl(1, 716, %1, 0);\n").arg(text.toInt() * -888 / 300 + 512));
        // The next key goes on from there.
        m_bench->type("<");
        QCOMPARE(block->button(0)->text(), text.left(text.size() - 1) + s_degree);
    }

    void aServoChosenInThePanelStandsInTheText()
    {
        supermodule* block = m_bench->seen(107);
        m_bench->clickButton(block, 1);
        QCOMPARE(m_bench->raised, QStringList{"panel 2 1"});
        m_bench->view.onEditParamSignal(1, 17);
        QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(18, 716, 512, 0);\n"));
    }

    void aPanelValueOfAnotherParameterDoesNothing()
    {
        supermodule* block = m_bench->seen(107);
        m_bench->clickButton(block, 1);
        m_bench->view.onEditParamSignal(0, 17);
        m_bench->view.onEditParamSignal(2, 17);
        QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(1, 716, 512, 0);\n"));
    }

    void aChosenSpeedIsInTheTextAndInACopy()
    {
        supermodule* block = m_bench->seen(100, {500, 200});
        documentModified = false;
        m_bench->clickButton(block, 0);
        m_bench->choose(2);
        const QString fast =
            QStringLiteral("speed1 = 80;\nspeed2 = 80;\nspeed3 = 80;\nspeed4 = 80;\n");
        QCOMPARE(block->cCode(), fast);
        QVERIFY(documentModified);
        QCOMPARE(m_bench->view.undoStack().count(), 0);
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->cCode(), fast);
    }

    void aChosenMotorPortIsOnTheButtonAndInTheText()
    {
        for (const int id : {111, 113}) {
            const int button = id == 113 ? 1 : 0;
            supermodule* block = m_bench->seen(id, {500, 200});
            QCOMPARE(block->button(button)->text(), QStringLiteral("C"));
            for (int port = 0; port < 4; ++port) {
                m_bench->clickButton(block, button);
                m_bench->choose(port);
                QCOMPARE(block->button(button)->text(), QString(QChar('A' + port)));
                QVERIFY(block->cCode().startsWith(
                    QStringLiteral("speed%1 = -abs(speed%1);").arg(port + 1)));
            }
            m_bench->view.deleteModule(block);
        }
    }

    void conditionAndPortOfASensorAreChosenApart()
    {
        supermodule* block = m_bench->seen(309, {500, 200});
        m_bench->clickButton(block, 1);
        m_bench->choose(2);
        QCOMPARE(block->button(1)->text(), QStringLiteral("3"));
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(3) == 0)\n{\nwait(0.1);\n}\n"));
        m_bench->clickButton(block, 0);
        m_bench->choose(1);
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(3) != 0)\n{\nwait(0.1);\n}\n"));
        QCOMPARE(block->button(1)->text(), QStringLiteral("3"));
        m_bench->clickButton(block, 0);
        m_bench->choose(0);
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(3) == 0)\n{\nwait(0.1);\n}\n"));
        m_bench->clickButton(block, 1);
        m_bench->choose(4);
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(5) == 0)\n{\nwait(0.1);\n}\n"));
    }

    void aCopiedWaitBlockHasTheFirstConditionAgain()
    {
        supermodule* block = m_bench->seen(308, {500, 200});
        m_bench->clickButton(block, 1);
        m_bench->choose(0);
        m_bench->clickButton(block, 0);
        m_bench->choose(1);
        QCOMPARE(block->cCode(), QStringLiteral("while(TZ_AI(1) < 500)\n{\nwait(0.1);\n}\n"));
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->cCode(), QStringLiteral("while(TZ_AI(1) > 500)\n{\nwait(0.1);\n}\n"));
    }

    void aDisplayPortIsChosen()
    {
        supermodule* block = m_bench->seen(900, {500, 200});
        QCOMPARE(block->cCode(), QStringLiteral("disp_symble(2, 45);"));
        m_bench->clickButton(block, 1);
        m_bench->choose(1);
        QCOMPARE(block->button(1)->text(), QStringLiteral("3"));
        QCOMPARE(block->cCode(), QStringLiteral("disp_symble(3, 45);"));
        m_bench->clickButton(block, 0);
        m_bench->view.OnSelectNumberSignal(7);
        QCOMPARE(block->cCode(), QStringLiteral("disp_symble(3, 47);"));
    }

    void aValueForNoBlockIsIgnored()
    {
        supermodule* block = m_bench->seen(103);
        focusModule.clear();
        documentModified = false;
        m_bench->view.OnSelectNumberSignal(5);
        m_bench->view.onEditParamSignal(1, 5);
        // Nor does a block without use for it mind.
        focusModule = block;
        m_bench->view.OnSelectNumberSignal(5);
        m_bench->view.onEditParamSignal(1, 5);
        QVERIFY(!documentModified);
        QCOMPARE(block->cCode(), QStringLiteral("set_motor(1, speed1);set_motor(2, -speed2);"));
    }
};

QTEST_MAIN(BlockParametersTest)
#include "blockparameterstest.moc"
