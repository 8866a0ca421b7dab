#include "modules/documentstate.h"
#include "parameterbench.h"
#include "proj/controls/selectablebutton.h"
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
class BlockParametersTest : public QObject
{
    Q_OBJECT

private slots:
    void theNextKeyReplacesTheMarkedNumber()
    {
        Bench bench;
        supermodule* block = bench.seen(101);
        auto* field = qobject_cast<SelectableButton*>(block->button(0));
        bench.clickButton(block, 0);
        QVERIFY(field->isSelected());
        documentModified = false;
        bench.type("0.5");
        QVERIFY(!field->isSelected());
        QCOMPARE(field->text(), QStringLiteral("0.5"));
        QCOMPARE(block->cCode(), QStringLiteral("wait(0.5);\n"));
        QVERIFY(documentModified);
        // A second press marks it again, a third takes the mark away.
        bench.clickButton(block, 0);
        QVERIFY(field->isSelected());
        bench.type("2");
        QCOMPARE(block->cCode(), QStringLiteral("wait(2);\n"));
    }

    void aPressOnTheCanvasUnmarksTheField()
    {
        Bench bench;
        supermodule* block = bench.seen(101);
        auto* field = qobject_cast<SelectableButton*>(block->button(0));
        bench.clickButton(block, 0);
        QVERIFY(field->isSelected());
        bench.click({900, 550});
        QVERIFY(!field->isSelected());
        QCOMPARE(SelectableButton::current(), nullptr);
        // One field marks, the other loses its mark.
        supermodule* other = bench.seen(101, {800, 330});
        bench.clickButton(block, 0);
        bench.clickButton(other, 0);
        QVERIFY(!field->isSelected());
        QCOMPARE(SelectableButton::current(), other->button(0));
    }

    void aKeyOfEitherKeyboardIsAChange_data()
    {
        QTest::addColumn<int>("id");
        for (const int id : {101, 104, 107, 113, 301}) {
            QTest::newRow(qPrintable(QString::number(id))) << id;
        }
    }

    void aKeyOfEitherKeyboardIsAChange()
    {
        QFETCH(int, id);
        Bench bench;
        supermodule* block = bench.seen(id);
        bench.clickButton(block, 0);
        documentModified = false;
        bench.tap("3");
        QVERIFY(documentModified);
        documentModified = false;
        bench.type("4");
        QVERIFY(documentModified);
    }

    void aChoiceIsPainted_data()
    {
        QTest::addColumn<int>("id");
        for (const int id : {100, 111, 113, 107, 308, 900, 901, 801}) {
            QTest::newRow(qPrintable(QString::number(id))) << id;
        }
    }

    void aChoiceIsPainted()
    {
        QFETCH(int, id);
        Bench bench;
        supermodule* block = bench.seen(id);
        const PaintWatch watch(*bench.view.viewport());
        block->setParamIndex(1);
        block->setNumberKey(2);
        const QRectF place = block->sceneBoundingRect();
        QVERIFY(watch.saw(QRect(bench.at(place.topLeft()), place.size().toSize())));
    }

    void theKeyboardOfThePaletteEditsTheBlockThatAskedForIt()
    {
        Bench bench;
        supermodule* first = bench.seen(101, {300, 330});
        supermodule* second = bench.seen(101, {700, 330});
        bench.clickButton(first, 0);
        bench.tap("12.25");
        bench.clickButton(second, 0);
        bench.tap("3");
        QCOMPARE(first->cCode(), QStringLiteral("wait(12.25);\n"));
        QCOMPARE(second->cCode(), QStringLiteral("wait(3);\n"));
        QCOMPARE(first->button(0)->text(), QStringLiteral("12.25"));
    }

    void aPressOnTheEmptyCanvasEndsThePalettesInput()
    {
        Bench bench;
        supermodule* block = bench.seen(101);
        bench.clickButton(block, 0);
        QCOMPARE(focusModule.data(), block);
        bench.click({900, 550});
        QVERIFY(!focusModule);
        bench.tap("7");
        QCOMPARE(block->cCode(), QStringLiteral("wait(1);\n"));
    }

    void anEmptiedTimeWaitsForNothing()
    {
        Bench bench;
        supermodule* block = bench.seen(101);
        bench.clickButton(block, 0);
        bench.type("<");
        QCOMPARE(block->button(0)->text(), QString());
        QCOMPARE(block->cCode(), QStringLiteral("wait(0);\n"));
    }

    void aTimeOfSixDigitsStaysExact()
    {
        Bench bench;
        supermodule* block = bench.seen(101);
        bench.clickButton(block, 0);
        bench.type("123457");
        QCOMPARE(block->cCode(), QStringLiteral("wait(123457);\n"));
        bench.type("8");
        QCOMPARE(block->cCode(), QStringLiteral("wait(123457);\n"));
    }

    void aCountTakesDigitsAndDeleteAlone()
    {
        Bench bench;
        supermodule* block = bench.seen(301);
        bench.clickButton(block, 0);
        QCOMPARE(bench.raised, QStringList{"number 9"});
        bench.type("4.-2");
        QCOMPARE(block->button(0)->text(), QStringLiteral("42"));
        QCOMPARE(block->cCode(), QStringLiteral("for(int i = 0;i < 42; ++i)\n{\n}"));
        bench.type("<");
        QCOMPARE(block->cCode(), QStringLiteral("for(int i = 0;i < 4; ++i)\n{\n}"));
    }

    void anEmptiedCountIsZero()
    {
        Bench bench;
        supermodule* block = bench.seen(301);
        bench.clickButton(block, 0);
        bench.tap("<");
        QCOMPARE(block->button(0)->text(), QString());
        QCOMPARE(block->cCode(), QStringLiteral("for(int i = 0;i < 0; ++i)\n{\n}"));
    }

    void everyTimedBlockTakesItsTimeFromItsField_data()
    {
        QTest::addColumn<int>("id");
        for (const int id : {101, 104, 118, 119, 120, 112, 113}) {
            QTest::newRow(qPrintable(QString::number(id))) << id;
        }
    }

    void everyTimedBlockTakesItsTimeFromItsField()
    {
        QFETCH(int, id);
        Bench bench;
        supermodule* block = bench.seen(id);
        QVERIFY(block->cCode().contains(QStringLiteral("wait(1);")));
        bench.clickButton(block, 0);
        bench.type("0.75");
        QVERIFY2(block->cCode().contains(QStringLiteral("wait(0.75);")),
                 qPrintable(block->cCode()));
        bench.clickButton(block, 0);
        bench.tap("2.5");
        QVERIFY2(block->cCode().contains(QStringLiteral("wait(2.5);")), qPrintable(block->cCode()));
    }

    void anAngleIsTyped_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("angle");
        QTest::newRow("15") << "15"
                            << "15" + s_degree << 15;
        QTest::newRow("15, minus") << "15-"
                                   << "-15" + s_degree << -15;
        QTest::newRow("15, minus, minus") << "15--"
                                          << "15" + s_degree << 15;
        QTest::newRow("-15, 0") << "-150"
                                << "-150" + s_degree << -150;
        QTest::newRow("150") << "150"
                             << "150" + s_degree << 150;
        QTest::newRow("15, delete") << "15<"
                                    << "1" + s_degree << 1;
        QTest::newRow("15, delete, delete") << "15<<"
                                            << "" << 0;
        QTest::newRow("deleted and typed anew") << "15<<7"
                                                << "7" + s_degree << 7;
        QTest::newRow("minus alone") << "-"
                                     << "-" + s_degree << 0;
        QTest::newRow("0 then 5") << "05"
                                  << "0" + s_degree << 0;
    }

    void anAngleIsTyped()
    {
        QFETCH(QString, keys);
        QFETCH(QString, text);
        QFETCH(int, angle);
        Bench bench;
        // The angle's position is 512 less 2.96 counts a degree, cut toward zero.
        const int position = angle * -888 / 300 + 512;
        const QString code = QStringLiteral("servo_ctrl(1, 716, %1, 0);\n").arg(position);
        supermodule* typed = bench.seen(107, {300, 330});
        bench.clickButton(typed, 0);
        bench.type(keys);
        QCOMPARE(typed->button(0)->text(), text);
        QCOMPARE(typed->cCode(), code);
        supermodule* tapped = bench.seen(107, {700, 330});
        bench.clickButton(tapped, 0);
        bench.tap(keys);
        QCOMPARE(tapped->button(0)->text(), text);
        QCOMPARE(tapped->cCode(), code);
    }

    void aRefusedAngleIsExplained_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("refused");
        QTest::addColumn<QString>("text");
        QTest::newRow("15, key 1: 151") << "15"
                                        << "1"
                                        << "15";
        QTest::newRow("-15, key 1: -151") << "-15"
                                          << "1"
                                          << "-15";
        QTest::newRow("99, key 9: 999") << "99"
                                        << "9"
                                        << "99";
        QTest::newRow("150, key 0: 1500") << "150"
                                          << "0"
                                          << "150";
    }

    void aRefusedAngleIsExplained()
    {
        QFETCH(QString, keys);
        QFETCH(QString, refused);
        QFETCH(QString, text);
        Bench bench;
        supermodule* block = bench.seen(107);
        ToolTipWatch watch;
        block->button(0)->installEventFilter(&watch);
        QCOMPARE(block->button(0)->toolTip(), QStringLiteral("-150 ~ 150"));
        bench.clickButton(block, 0);
        documentModified = false;
        bench.type(keys);
        QCoreApplication::processEvents();
        QCOMPARE(watch.asked.size(), 0);
        QVERIFY(documentModified);
        documentModified = false;
        bench.type(refused);
        QVERIFY(!documentModified);
        QCoreApplication::processEvents();
        QCOMPARE(watch.asked, QList<QPoint>{QPoint(60, -10)});
        QCOMPARE(block->button(0)->text(), text + s_degree);
        QCOMPARE(
            block->cCode(),
            QStringLiteral("servo_ctrl(1, 716, %1, 0);\n").arg(text.toInt() * -888 / 300 + 512));
        // The next key goes on from there.
        bench.type("<");
        QCOMPARE(block->button(0)->text(), text.left(text.size() - 1) + s_degree);
    }

    void anAngleTakesNoPoint()
    {
        Bench bench;
        supermodule* block = bench.seen(107);
        bench.clickButton(block, 0);
        bench.type("1.2");
        QCOMPARE(block->button(0)->text(), "12" + s_degree);
        bench.tap(".");
        QCOMPARE(block->button(0)->text(), "12" + s_degree);
    }

    void aServoChosenInThePanelStandsInTheText()
    {
        Bench bench;
        supermodule* block = bench.seen(107);
        bench.clickButton(block, 1);
        QCOMPARE(bench.raised, QStringList{"panel 2 1"});
        bench.view.onEditParamSignal(1, 17);
        QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(18, 716, 512, 0);\n"));
    }

    void aPanelValueOfAnotherParameterDoesNothing()
    {
        Bench bench;
        supermodule* block = bench.seen(107);
        bench.clickButton(block, 1);
        bench.view.onEditParamSignal(0, 17);
        bench.view.onEditParamSignal(2, 17);
        QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(1, 716, 512, 0);\n"));
    }

    void aChosenSpeedIsInTheTextAndInACopy()
    {
        Bench bench;
        supermodule* block = bench.seen(100, {500, 200});
        documentModified = false;
        bench.clickButton(block, 0);
        bench.choose(2);
        const QString fast =
            QStringLiteral("speed1 = 80;\nspeed2 = 80;\nspeed3 = 80;\nspeed4 = 80;\n");
        QCOMPARE(block->cCode(), fast);
        QVERIFY(documentModified);
        QCOMPARE(bench.view.undoStack().count(), 0);
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->cCode(), fast);
    }

    void aChosenMotorPortIsOnTheButtonAndInTheText()
    {
        Bench bench;
        for (const int id : {111, 113}) {
            const int button = id == 113 ? 1 : 0;
            supermodule* block = bench.seen(id, {500, 200});
            QCOMPARE(block->button(button)->text(), QStringLiteral("C"));
            for (int port = 0; port < 4; ++port) {
                bench.clickButton(block, button);
                bench.choose(port);
                QCOMPARE(block->button(button)->text(), QString(QChar('A' + port)));
                QVERIFY(block->cCode().startsWith(
                    QStringLiteral("speed%1 = -abs(speed%1);").arg(port + 1)));
            }
            bench.view.deleteModule(block);
        }
    }

    void conditionAndPortOfASensorAreChosenApart()
    {
        Bench bench;
        supermodule* block = bench.seen(309, {500, 200});
        bench.clickButton(block, 1);
        bench.choose(2);
        QCOMPARE(block->button(1)->text(), QStringLiteral("3"));
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(3) == 0)\n{\nwait(0.1);\n}\n"));
        bench.clickButton(block, 0);
        bench.choose(1);
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(3) != 0)\n{\nwait(0.1);\n}\n"));
        QCOMPARE(block->button(1)->text(), QStringLiteral("3"));
        bench.clickButton(block, 0);
        bench.choose(0);
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(3) == 0)\n{\nwait(0.1);\n}\n"));
        bench.clickButton(block, 1);
        bench.choose(4);
        QCOMPARE(block->cCode(), QStringLiteral("while(switch_state(5) == 0)\n{\nwait(0.1);\n}\n"));
    }

    void aCopiedWaitBlockHasTheFirstConditionAgain()
    {
        Bench bench;
        supermodule* block = bench.seen(308, {500, 200});
        bench.clickButton(block, 1);
        bench.choose(0);
        bench.clickButton(block, 0);
        bench.choose(1);
        QCOMPARE(block->cCode(), QStringLiteral("while(TZ_AI(1) < 500)\n{\nwait(0.1);\n}\n"));
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->cCode(), QStringLiteral("while(TZ_AI(1) > 500)\n{\nwait(0.1);\n}\n"));
    }

    void aDisplayPortIsChosen()
    {
        Bench bench;
        supermodule* block = bench.seen(900, {500, 200});
        QCOMPARE(block->cCode(), QStringLiteral("disp_symble(2, 45);"));
        bench.clickButton(block, 1);
        bench.choose(1);
        QCOMPARE(block->button(1)->text(), QStringLiteral("3"));
        QCOMPARE(block->cCode(), QStringLiteral("disp_symble(3, 45);"));
        bench.clickButton(block, 0);
        bench.view.OnSelectNumberSignal(7);
        QCOMPARE(block->cCode(), QStringLiteral("disp_symble(3, 47);"));
    }

    void aValueForNoBlockIsIgnored()
    {
        Bench bench;
        supermodule* block = bench.seen(103);
        focusModule.clear();
        documentModified = false;
        bench.view.OnSelectNumberSignal(5);
        bench.view.onEditParamSignal(1, 5);
        // Nor does a block without use for it mind.
        focusModule = block;
        bench.view.OnSelectNumberSignal(5);
        bench.view.onEditParamSignal(1, 5);
        QVERIFY(!documentModified);
        QCOMPARE(block->cCode(), QStringLiteral("set_motor(1, speed1);set_motor(2, -speed2);"));
    }
};

QTEST_MAIN(BlockParametersTest)
#include "blockparameterstest.moc"
