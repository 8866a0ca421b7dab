#include "canvasfixture.h"
#include "documentstate.h"
#include "dropping.h"
#include "graphicsitem_param.h"
#include "mainmodule.h"
#include "modulefactory.h"
#include "selectablebutton.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QHelpEvent>
#include <QLoggingCategory>
#include <QPainter>
#include <QPushButton>
#include <QtTest>

namespace
{
/** Remembers the choices of the pop-up. */
class recordingBlock : public supermodule
{
public:
    recordingBlock() : supermodule(1000, QString(), QString(), QString()) {}
    QString cCode() const override { return QString(); }
    supermodule* clone() const override { return new recordingBlock; }
    void setParamIndex(int p_index) override { chosen.append(p_index); }

    QList<int> chosen;
};

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

/** A canvas, what its blocks ask the palette for, and hands for buttons. */
class Bench : public CanvasFixture
{
public:
    Bench()
    {
        QObject::connect(
            &view, &TzProgramView::showNumKeyboardSignal, &view,
            [this](uint32_t p_option) { raised << QStringLiteral("number %1").arg(p_option); });
        QObject::connect(&view, &TzProgramView::showVoiceSignal, &view,
                         [this](int p_map) { raised << QStringLiteral("voice %1").arg(p_map); });
        QObject::connect(&view, &TzProgramView::showExpressionSignal, &view, [this](int p_map) {
            raised << QStringLiteral("expression %1").arg(p_map);
        });
        QObject::connect(&view, &TzProgramView::showPanelSignal, &view,
                         [this](int p_type, int p_id) {
                             raised << QStringLiteral("panel %1 %2").arg(p_type).arg(p_id);
                         });
        view.setWindowTitle(QStringLiteral("canvas[*]"));
        view.activateWindow();
        if (!QTest::qWaitForWindowActive(&view)) {
            qFatal("the window doesn't become active");
        }
        // A pop-up of an earlier canvas went with its scene.
        Q_ASSERT(!graphicsItem_Param::existing());
    }

    /** A loose block in the middle of the canvas that has been painted and so has its buttons. */
    supermodule* seen(int p_id, const QPointF& p_at = QPointF(500, 330))
    {
        supermodule* module = drop(p_id, p_at);
        if (!QTest::qWaitFor([module] { return module->hasButtons(); }, 2000)) {
            qWarning("a block that is seen has no buttons");
        }
        return module;
    }

    static QList<QGraphicsProxyWidget*> proxies(const QGraphicsItem* p_item)
    {
        QList<QGraphicsProxyWidget*> list;
        const QList<QGraphicsItem*> children = p_item->childItems();
        for (QGraphicsItem* child : children) {
            if (child->type() == QGraphicsProxyWidget::Type) {
                list.append(static_cast<QGraphicsProxyWidget*>(child));
            }
        }
        return list;
    }

    void clickProxy(const QGraphicsProxyWidget* p_proxy)
    {
        click(p_proxy->sceneBoundingRect().center());
    }
    void clickButton(const supermodule* p_module, int p_index)
    {
        clickProxy(proxies(p_module).at(p_index));
    }
    /** Chooses an entry of the pop-up by the mouse. */
    void choose(int p_index) { clickProxy(proxies(popUp()).at(p_index)); }
    static graphicsItem_Param* popUp() { return graphicsItem_Param::existing(); }
    static bool popUpIsOpen() { return popUp() && popUp()->isVisible(); }

    /** Types on the computer's keyboard; '<' stands for Backspace. */
    void type(const QString& p_keys)
    {
        for (const QChar ch : p_keys) {
            if (ch == QLatin1Char('<')) {
                QTest::keyClick(view.viewport(), Qt::Key_Backspace);
            } else {
                QTest::keyClick(view.viewport(), ch.toLatin1());
            }
        }
    }
    /** The same on the number keyboard of the palette. */
    void tap(const QString& p_keys)
    {
        for (const QChar ch : p_keys) {
            view.OnSelectNumberSignal(ch == QLatin1Char('<') ? int(Qt::Key_Backspace)
                                                             : int(ch.unicode()));
        }
    }

    QStringList raised;
};

const QString s_degree = QString(QChar(0xb0));

struct ModeRow {
    int mode;
    const char* background;
    QStringList entries;
    int iconSide; /**< 0: the entries are texts */
    const char* normal;
    const char* pressed;
    bool white;
    QVector<QPoint> places;
    QList<int> results;
};

const QVector<ModeRow>& modeRows()
{
    static const QVector<ModeRow> s_rows{
        {0,
         ":/param_item_bg_220x92.png",
         {":/speed_slow.png", ":/speed_mid.png", ":/speed_fast.png"},
         40,
         ":/select_speed_nol_60x60.png",
         ":/select_speed_pre_60x60.png",
         false,
         {{5, 20}, {80, 20}, {155, 20}},
         {0, 1, 2}},
        {1,
         ":/param_item_bg_290x92.png",
         {"A", "B", "C", "D"},
         0,
         ":/motor_port_nol.png",
         ":/motor_port_pre.png",
         true,
         {{5, 20}, {75, 20}, {145, 20}, {215, 20}},
         {0, 1, 2, 3}},
        {2,
         ":/bg_150x92.png",
         {":/infread_body.png", ":/infread_nobody.png"},
         32,
         ":/port_nol_60x60.png",
         ":/port_nol_60x60.png",
         true,
         {{5, 20}, {75, 20}},
         {5, 6}},
        {3,
         ":/bg_220x162.png",
         {"1", "2", "3", "4", "5"},
         0,
         ":/touch_port_nol.png",
         ":/touch_port_pre.png",
         true,
         {{5, 20}, {75, 20}, {145, 20}, {5, 90}, {75, 90}},
         {0, 1, 2, 3, 4}},
        {4,
         ":/bg_150x92.png",
         {":/until_touch_down_icon.png", ":/until_touch_up_icon.png"},
         32,
         ":/port_nol_60x60.png",
         ":/port_nol_60x60.png",
         true,
         {{5, 20}, {75, 20}},
         {5, 6}},
        {5,
         ":/voice/voice_bg_290x22.png",
         {"1", "2", "3", "4", "5", "6", "7"},
         0,
         ":/voice/select_voice_nol_60x60.png",
         ":/voice/select_voice_pre_60x60.png",
         true,
         {{5, 20}, {75, 20}, {145, 20}, {215, 20}, {5, 90}, {75, 90}, {145, 90}},
         {0, 1, 2, 3, 4, 5, 6}},
        {6,
         ":/expression/expression_bg_140x80.png",
         {"2", "3"},
         0,
         ":/fuhao_port_nol.png",
         ":/fuhao_port_pre.png",
         true,
         {{5, 15}, {75, 16}},
         {0, 1}},
    };
    return s_rows;
}

/** A style sheet of two rules, some blanks apart. */
QString styleSheet(const QString& p_normal, const QString& p_pressed, int p_blanks, bool p_white,
                   const QString& p_property = QStringLiteral("border-image"))
{
    const QString end = p_white ? QStringLiteral("color:white;}") : QStringLiteral("}");
    return "QPushButton{" + p_property + ":url(" + p_normal + ");background-color:transparent;" +
           end + QString(p_blanks, QLatin1Char(' ')) + "QPushButton:pressed{" + p_property +
           ":url(" + p_pressed + ");background-color:transparent;" + end;
}
} // namespace

class BlockParametersTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    // The parameter area.
    void aBlockHasTheButtonsOfItsType_data();
    void aBlockHasTheButtonsOfItsType();
    void everyOtherBlockHasNoButtons_data();
    void everyOtherBlockHasNoButtons();
    void theButtonsOfAConditionalLoopHangUnderItsLegs();
    void everyButtonOfALoopAndItsBodyCanBePressed_data();
    void everyButtonOfALoopAndItsBodyCanBePressed();
    void aBodyLiesAboveAllItsLoopsHoweverOldTheyAre();
    void anEmptyConditionalLoopIsPaintedAndHeldDownToItsFeet();

    // The pop-up.
    void aModeOfThePopUpShowsItsEntries_data();
    void aModeOfThePopUpShowsItsEntries();
    void aChosenEntryComesToTheBlockAndClosesThePopUp_data();
    void aChosenEntryComesToTheBlockAndClosesThePopUp();
    void anUnknownModeShowsTheOldBackgroundWithoutEntries();
    void thePopUpStandsUnderTheMiddleOfTheBlock();
    void pressOnALoopsLeftButtonPlacesThePopUpUnderThatButton_data();
    void pressOnALoopsLeftButtonPlacesThePopUpUnderThatButton();
    void thereIsOnePopUpInTheScene();
    void aPressOutsideDismissesThePopUpAndOneInsideKeepsIt();
    void openingForASecondBlockRetargetsThePopUp();
    void aChoiceForADeletedBlockDoesNothing();

    // Number fields on the canvas.
    void theNextKeyReplacesTheMarkedNumber();
    void aPressOnTheCanvasUnmarksTheField();
    void theKeyboardOfThePaletteEditsTheBlockThatAskedForIt();
    void aPressOnTheEmptyCanvasEndsThePalettesInput();
    void anEmptiedTimeWaitsForNothing();
    void aTimeOfSixDigitsStaysExact();
    void aCountTakesDigitsAndDeleteAlone();
    void anEmptiedCountIsZero();
    void everyTimedBlockTakesItsTimeFromItsField_data();
    void everyTimedBlockTakesItsTimeFromItsField();

    // The servo.
    void anAngleIsTyped_data();
    void anAngleIsTyped();
    void aRefusedAngleIsExplained_data();
    void aRefusedAngleIsExplained();
    void anAngleTakesNoPoint();
    void aServoChosenInThePanelStandsInTheText();
    void aPanelValueOfAnotherParameterDoesNothing();

    // Choices on the canvas.
    void aChosenSpeedIsInTheTextAndInACopy();
    void aChosenMotorPortIsOnTheButtonAndInTheText();
    void conditionAndPortOfASensorAreChosenApart();
    void aCopiedWaitBlockHasTheFirstConditionAgain();
    void aDisplayPortIsChosen();
    void aValueForNoBlockIsIgnored();
};

void BlockParametersTest::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void BlockParametersTest::aBlockHasTheButtonsOfItsType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<int>("mask"); // 0: no number field
    QTest::addColumn<bool>("arrow");
    QTest::addColumn<QString>("press"); // a signal of the view, or the pop-up's mode
    QTest::addColumn<QString>("shows");
    QTest::addColumn<QString>("style");

    const QRect wide(20, 100, 80, 40);
    const QRect wider(20, 100, 83, 40);
    const QRect left(0, 100, 60, 40);
    const QRect right(60, 100, 60, 40);
    const auto row = [](const char* p_name, int p_id, int p_index, const QRect& p_geometry,
                        int p_mask, bool p_arrow, const char* p_press, const QString& p_shows,
                        const QString& p_style) {
        QTest::newRow(p_name) << p_id << p_index << p_geometry << p_mask << p_arrow
                              << QString::fromLatin1(p_press) << p_shows << p_style;
    };
    const QString time =
        styleSheet(":/select_time__nol_40x80.png", ":/select_time__pre_40x80.png", 29, false);
    row("speed", 100, 0, wide, 0, true, "mode 0", "",
        styleSheet(":/item_pulldown_nol_40x80.png", ":/item_pulldown__pre_40x80.png", 29, false));
    row("wait", 101, 0, wider, 11, false, "number 11", "1", time);
    row("forward time", 104, 0, wide, 11, false, "number 11", "1", time);
    row("backward time", 118, 0, wide, 11, false, "number 11", "1", time);
    row("left time", 119, 0, wide, 11, false, "number 11", "1", time);
    row("right time", 120, 0, wide, 11, false, "number 11", "1", time);
    const QString port = styleSheet(":/item_pulldown_nol_40x80.png",
                                    ":/item_pulldown__pre_40x80.png", 29, true, "background-image");
    row("motor clockwise", 111, 0, wider, 0, false, "mode 1", "C", port);
    row("motor anti-clockwise", 110, 0, wider, 0, false, "mode 1", "C", port);
    row("motor stop", 117, 0, wider, 0, false, "mode 1", "C", port);
    const QString motorTime =
        styleSheet(":/single_time_nol_60x40.png", ":/single_time_pre_60x40.png", 29, false);
    const QString motorPort =
        styleSheet(":/single_motor_nol_60x40.png", ":/single_motor_pre_60x40.png", 29, true);
    row("motor clockwise time, left", 113, 0, left, 11, false, "number 11", "1", motorTime);
    row("motor clockwise time, right", 113, 1, right, 0, false, "mode 1", "C", motorPort);
    row("motor anti-clockwise time, left", 112, 0, left, 11, false, "number 11", "1", motorTime);
    row("motor anti-clockwise time, right", 112, 1, right, 0, false, "mode 1", "C", motorPort);
    row("servo, left", 107, 0, left, 13, false, "number 13", "0" + s_degree,
        styleSheet(":/single_time_nol_60x40.png", ":/single_time_pre_60x40.png", 0, false));
    row("servo, right", 107, 1, right, 0, true, "panel 2 1", "",
        styleSheet(":/single_motor_nol_60x40.png", ":/single_motor_pre_60x40.png", 0, false));
    row("counted loop", 301, 0, wide, 9, false, "number 9", "10", time);
    const QString condition =
        styleSheet(":/control_left_nol_60x40.png", ":/control_left_pre_60x40.png", 29, false);
    const QString sensorPort =
        styleSheet(":/control_right_nol_60x40.png", ":/control_right_pre_60x40.png", 29, true);
    row("loop until infrared, left", 306, 0, {140, 100, 60, 40}, 0, true, "mode 2", "", condition);
    row("loop until infrared, right", 306, 1, {200, 100, 60, 40}, 0, false, "mode 3", "4",
        sensorPort);
    row("loop until touch, left", 307, 0, {140, 100, 60, 40}, 0, true, "mode 4", "", condition);
    row("loop until touch, right", 307, 1, {200, 100, 60, 40}, 0, false, "mode 3", "5", sensorPort);
    row("wait for infrared, left", 308, 0, left, 0, true, "mode 2", "", condition);
    row("wait for infrared, right", 308, 1, right, 0, false, "mode 3", "4", sensorPort);
    row("wait for touch, left", 309, 0, left, 0, true, "mode 4", "", condition);
    row("wait for touch, right", 309, 1, right, 0, false, "mode 3", "5", sensorPort);
    const QString voice = styleSheet(":/voice/voice_down_nol_40x80.png",
                                     ":/voice/voice_down_pre_40x80.png", 29, false);
    row("piano", 800, 0, wide, 0, true, "panel 1 0", "", voice);
    row("hello", 803, 0, wide, 0, true, "voice 1", "", voice);
    row("animal", 801, 0, wide, 0, true, "voice 2", "", voice);
    row("traffic", 804, 0, wide, 0, true, "voice 3", "", voice);
    row("mood", 802, 0, wide, 0, true, "voice 4", "", voice);
    const QString symbol = styleSheet(":/expression/expression_down_nol_60x40.png",
                                      ":/expression/expression_down_pre_60x40.png", 29, false);
    const QString display = styleSheet(":/expression/expression_down_r_nol_60x40.png",
                                       ":/expression/expression_down_r_pre_60x40.png", 29, true);
    const struct {
        int id;
        const char* name;
        const char* press;
    } symbols[] = {{900, "sign", "expression 1"},
                   {905, "arithmetic", "expression 2"},
                   {902, "digit", "expression 3"},
                   {906, "letter", "expression 4"}};
    for (const auto& each : symbols) {
        row(qPrintable(QStringLiteral("%1, left").arg(each.name)), each.id, 0, left, 0, true,
            each.press, "", symbol);
        row(qPrintable(QStringLiteral("%1, right").arg(each.name)), each.id, 1, right, 0, false,
            "mode 6", "2", display);
    }
    row("face", 903, 0, wide, 0, true, "expression 5", "",
        styleSheet(":/expression/expression_down_nol_80x40.png",
                   ":/expression/expression_down_pre_80x40.png", 29, false));
    // Of the colour of this button's port number nothing is laid down: it is tested with the rest
    // of its sheet, as white.
    row("close one", 901, 0, wide, 0, false, "mode 6", "2",
        styleSheet(":/expression/expression_down_nol_80x40.png",
                   ":/expression/expression_down_pre_80x40.png", 29, true));
}

void BlockParametersTest::aBlockHasTheButtonsOfItsType()
{
    QFETCH(int, id);
    QFETCH(int, index);
    QFETCH(QRect, geometry);
    QFETCH(int, mask);
    QFETCH(bool, arrow);
    QFETCH(QString, press);
    QFETCH(QString, shows);
    QFETCH(QString, style);
    Bench bench;
    supermodule* block = bench.seen(id);
    QVERIFY2(block->hasButtons(), "a block that is seen has no buttons");

    const bool two = geometry.width() == 60;
    const QList<QGraphicsProxyWidget*> proxies = Bench::proxies(block);
    QCOMPARE(proxies.size(), two ? 2 : 1);
    QGraphicsProxyWidget* proxy = proxies.at(index);
    QCOMPARE(proxy->geometry(), QRectF(geometry));
    auto* button = qobject_cast<QPushButton*>(proxy->widget());
    QVERIFY(button);
    QCOMPARE(button, block->button(index));
    QCOMPARE(button->text(), shows);
    QCOMPARE(button->styleSheet(), style);
    QCOMPARE(button->icon().isNull(), !arrow);
    if (arrow) {
        QCOMPARE(button->iconSize(), QSize(18, 14));
        QCOMPARE(button->icon().pixmap(18, 14).toImage(),
                 QPixmap(QStringLiteral(":/btn_downarrow_18x14.png")).toImage());
    }
    auto* field = qobject_cast<SelectableButton*>(button);
    QCOMPARE(field != nullptr, mask != 0);
    if (field) {
        QCOMPARE(field->acceptsKey(Qt::Key_5), (mask & 1) != 0);
        QCOMPARE(field->acceptsKey(Qt::Key_Period), (mask & 2) != 0);
        QCOMPARE(field->acceptsKey(Qt::Key_Minus), (mask & 4) != 0);
        QCOMPARE(field->acceptsKey(Qt::Key_Backspace), (mask & 8) != 0);
    }

    bench.raised.clear();
    focusModule.clear();
    bench.clickButton(block, index);
    if (!press.startsWith(QLatin1String("mode"))) {
        QCOMPARE(bench.raised, QStringList{press});
        QCOMPARE(focusModule.data(), block);
        QVERIFY(!Bench::popUpIsOpen());
        return;
    }
    QCOMPARE(bench.raised, QStringList());
    QVERIFY(Bench::popUpIsOpen());
    QCOMPARE(Bench::popUp()->module(), block);
    const ModeRow& mode = modeRows().at(press.mid(5).toInt());
    QCOMPARE(Bench::popUp()->buttons().size(), mode.entries.size());
    QCOMPARE(Bench::popUp()->boundingRect().size(),
             QSizeF(QPixmap(QString::fromLatin1(mode.background)).size()));
    QCOMPARE(Bench::popUp()->buttons().first()->styleSheet(),
             styleSheet(mode.normal, mode.pressed, 32, mode.white));
    // Where the mode is for a block as such, its middle counts, else the button's.
    const bool byBlock = mode.mode == 0 || mode.mode == 1;
    const qreal centre = byBlock ? block->x() + 60 : proxy->sceneBoundingRect().center().x();
    QCOMPARE(Bench::popUp()->pos(),
             QPointF(centre - 0.5 * Bench::popUp()->boundingRect().width(), block->y() + 150));
}

void BlockParametersTest::everyOtherBlockHasNoButtons_data()
{
    QTest::addColumn<int>("id");
    for (const int id : {102, 103, 105, 106, 109, 303, 904}) {
        QTest::newRow(qPrintable(QString::number(id))) << id;
    }
}

void BlockParametersTest::everyOtherBlockHasNoButtons()
{
    QFETCH(int, id);
    Bench bench;
    supermodule* block = bench.seen(id);
    QVERIFY(block->hasButtons());
    QCOMPARE(Bench::proxies(block).size(), 0);
    QCOMPARE(block->button(0), nullptr);
}

void BlockParametersTest::theButtonsOfAConditionalLoopHangUnderItsLegs()
{
    Bench bench;
    supermodule* loop = bench.seen(306, {300, 300});
    const QList<QGraphicsProxyWidget*> proxies = Bench::proxies(loop);
    supermodule* first = dropOn(bench, loop, LeftLink, 103);
    dropOn(bench, first, NextLink, 105);
    QCOMPARE(loop->boundingRect().width(), 320.0);
    // One under each leg, where the drawers of the body's blocks leave them free.
    QCOMPARE(proxies.at(0)->pos(), QPointF(0, 100));
    QCOMPARE(proxies.at(1)->pos(), QPointF(260, 100));
    bench.click(first->scenePos() + QPointF(30, 30));
    bench.key(Qt::Key_Delete);
    QVERIFY(!loop->left());
    QCOMPARE(proxies.at(0)->pos(), QPointF(140, 100));
    QCOMPARE(proxies.at(1)->pos(), QPointF(200, 100));
}

void BlockParametersTest::everyButtonOfALoopAndItsBodyCanBePressed_data()
{
    QTest::addColumn<int>("loop");
    QTest::addColumn<int>("inside");
    for (int loop : {301, 303, 306, 307}) {
        // One drawer, two drawers, and a loop.
        for (int inside : {104, 107, 306}) {
            QTest::addRow("%d around %d", loop, inside) << loop << inside;
        }
    }
}

void BlockParametersTest::everyButtonOfALoopAndItsBodyCanBePressed()
{
    QFETCH(int, loop);
    QFETCH(int, inside);
    for (bool bodyFirst : {false, true}) {
        Bench bench;
        supermodule* body = bodyFirst ? bench.seen(inside, {300, 500}) : nullptr;
        supermodule* outer = bench.seen(loop, {300, 300});
        if (bodyFirst) {
            const QPointF place = outer->scenePos() + QPointF(loop > 303 ? 60 : 140, 10);
            bench.drag(body, bench.at(place) - bench.at(body->scenePos()));
        } else {
            body = dropOn(bench, outer, LeftLink, inside);
            QVERIFY(QTest::qWaitFor([body] { return body->hasButtons(); }, 2000));
        }
        QCOMPARE(outer->left(), body);
        for (supermodule* block : {outer, body}) {
            for (QGraphicsProxyWidget* proxy : Bench::proxies(block)) {
                auto* pressed = static_cast<QAbstractButton*>(proxy->widget());
                const QSignalSpy presses(pressed, &QAbstractButton::clicked);
                bench.clickProxy(proxy);
                QCOMPARE(presses.count(), 1);
            }
        }
    }
}

void BlockParametersTest::aBodyLiesAboveAllItsLoopsHoweverOldTheyAre()
{
    Bench bench;
    supermodule* chain = bench.seen(104, {300, 500});
    supermodule* behind = bench.dropBehind(chain, 107);
    supermodule* inner = bench.seen(306, {300, 400});
    supermodule* outer = bench.seen(301, {300, 200});
    const auto dragInto = [&](supermodule* p_module, supermodule* p_loop, int p_offset) {
        bench.drag(p_module, bench.at(p_loop->scenePos() + QPointF(p_offset, 10)) -
                                 bench.at(p_module->scenePos()));
        QCOMPARE(p_loop->left(), p_module);
    };
    const auto place = [&](supermodule* p_module) {
        return bench.view.scene()
            ->items(bench.view.sceneRect(), Qt::IntersectsItemShape, Qt::AscendingOrder)
            .indexOf(p_module);
    };
    dragInto(chain, inner, 60);
    dragInto(inner, outer, 140);
    QVERIFY(place(outer) < place(inner));
    QVERIFY(place(inner) < place(chain));
    QVERIFY(place(inner) < place(behind));
    // The tip that Qt shows is that of what lies on top.
    const auto* top = bench.view.itemAt(bench.at(behind->scenePos() + QPointF(60, 40)));
    QCOMPARE(top->toolTip(), behind->toolTip());
}

void BlockParametersTest::anEmptyConditionalLoopIsPaintedAndHeldDownToItsFeet()
{
    Bench bench;
    supermodule* loop = bench.seen(306, {300, 300});
    // Painted piece by piece it looks as painted at once.
    const QRect area(loop->scenePos().toPoint() + QPoint(0, -20), QSize(280, 162));
    const auto painted = [&](const QRect& p_piece) {
        QImage image(area.size(), QImage::Format_ARGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        bench.view.scene()->render(&painter, p_piece.translated(-area.topLeft()), p_piece);
        painter.end();
        return image.copy(p_piece.translated(-area.topLeft()));
    };
    const QImage whole = painted(area);
    const QRect feet(area.left(), area.top() + 106, area.width(), 14);
    QCOMPARE(painted(feet), whole.copy(feet.translated(-area.topLeft())));
    QVERIFY(whole.pixelColor(20, 130) != QColor(Qt::white));
    // A hand that takes it by a foot takes it.
    const QPointF before = loop->scenePos();
    const QPointF foot = before + QPointF(20, 110);
    bench.press(foot);
    bench.move(foot + QPointF(30, 20));
    bench.move(foot + QPointF(60, 40));
    bench.release(foot + QPointF(60, 40));
    QCOMPARE(loop->scenePos(), before + QPointF(60, 40));
    // With a body there is nothing of it behind its end.
    dropOn(bench, loop, LeftLink, 103);
    bench.click(loop->scenePos() + QPointF(240, 110));
    QVERIFY(focusModule.isNull());
}

void BlockParametersTest::aModeOfThePopUpShowsItsEntries_data()
{
    QTest::addColumn<int>("mode");
    for (const ModeRow& row : modeRows()) {
        QTest::newRow(qPrintable(QString::number(row.mode))) << row.mode;
    }
}

void BlockParametersTest::aModeOfThePopUpShowsItsEntries()
{
    QFETCH(int, mode);
    const ModeRow& row = modeRows().at(mode);
    QGraphicsScene scene;
    auto* popUp = new graphicsItem_Param(&scene, nullptr);
    popUp->setVisible(false);
    popUp->setMode(mode);
    QVERIFY(popUp->isVisible());
    QCOMPARE(popUp->scene(), &scene);
    QCOMPARE(popUp->zValue(), 10.0);
    const QPixmap background(QString::fromLatin1(row.background));
    QVERIFY(!background.isNull());
    QCOMPARE(popUp->boundingRect(), QRectF(QPointF(0, 0), background.size()));
    QImage image(background.size(), QImage::Format_ARGB32_Premultiplied);
    QImage expected = image;
    image.fill(Qt::black);
    expected.fill(Qt::black);
    {
        QPainter painter(&image);
        popUp->paint(&painter, nullptr, nullptr);
        QPainter(&expected).drawPixmap(0, 0, background);
    }
    QCOMPARE(image, expected);

    QCOMPARE(popUp->buttons().size(), row.entries.size());
    for (int i = 0; i < row.entries.size(); ++i) {
        const QPushButton* button = popUp->buttons().at(i);
        const QGraphicsProxyWidget* proxy = button->graphicsProxyWidget();
        QVERIFY(proxy);
        QCOMPARE(proxy->parentItem(), static_cast<QGraphicsItem*>(popUp));
        QCOMPARE(proxy->geometry(), QRectF(row.places.at(i), QSizeF(60, 60)));
        QCOMPARE(button->styleSheet(), styleSheet(row.normal, row.pressed, 32, row.white));
        if (row.iconSide == 0) {
            QCOMPARE(button->text(), row.entries.at(i));
            QVERIFY(button->icon().isNull());
        } else {
            QCOMPARE(button->text(), QString());
            QCOMPARE(button->iconSize(), QSize(row.iconSide, row.iconSide));
            const QPixmap picture(row.entries.at(i));
            QVERIFY(!picture.isNull());
            QCOMPARE(button->icon().pixmap(picture.size()).toImage(), picture.toImage());
        }
        QVERIFY(QFile::exists(QString::fromLatin1(row.normal)));
        QVERIFY(QFile::exists(QString::fromLatin1(row.pressed)));
    }
    // Each opening builds it anew.
    popUp->setMode(mode == 0 ? 1 : 0);
    popUp->setMode(mode);
    QCOMPARE(popUp->childItems().size(), row.entries.size());
}

void BlockParametersTest::aChosenEntryComesToTheBlockAndClosesThePopUp_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("result");
    for (const ModeRow& row : modeRows()) {
        for (int i = 0; i < row.results.size(); ++i) {
            QTest::newRow(qPrintable(QStringLiteral("mode %1 entry %2").arg(row.mode).arg(i)))
                << row.mode << i << row.results.at(i);
        }
    }
}

void BlockParametersTest::aChosenEntryComesToTheBlockAndClosesThePopUp()
{
    QFETCH(int, mode);
    QFETCH(int, entry);
    QFETCH(int, result);
    Bench bench;
    auto* block = new recordingBlock;
    bench.view.scene()->addItem(block);
    block->setPos(500, 200);
    block->OnSetParam(mode);
    QVERIFY(Bench::popUpIsOpen());
    bench.choose(entry);
    QCOMPARE(block->chosen, QList<int>{result});
    QVERIFY(!Bench::popUpIsOpen());
    supermodule::deleteTree(block);
}

void BlockParametersTest::anUnknownModeShowsTheOldBackgroundWithoutEntries()
{
    QGraphicsScene scene;
    auto* popUp = new graphicsItem_Param(&scene, nullptr);
    popUp->setMode(1);
    const QRectF rect = popUp->boundingRect();
    QVERIFY(!rect.isEmpty());
    for (const int mode : {7, -1, 100}) {
        popUp->setVisible(false);
        popUp->setMode(mode);
        QVERIFY(popUp->isVisible());
        QCOMPARE(popUp->boundingRect(), rect);
        QCOMPARE(popUp->buttons().size(), 0);
        QCOMPARE(popUp->childItems().size(), 0);
    }
}

void BlockParametersTest::thePopUpStandsUnderTheMiddleOfTheBlock()
{
    Bench bench;
    auto* block = new recordingBlock;
    bench.view.scene()->addItem(block);
    block->setPos(321, 123);
    block->OnSetParam(1);
    const qreal width = QPixmap(QStringLiteral(":/param_item_bg_290x92.png")).width();
    QCOMPARE(Bench::popUp()->pos(), QPointF(321 + 60 - width / 2, 123 + 140 + 10));
    block->OnSetParamByPos(6, 400);
    const qreal narrow = QPixmap(QStringLiteral(":/expression/expression_bg_140x80.png")).width();
    QCOMPARE(Bench::popUp()->pos(), QPointF(400 - narrow / 2, 123 + 150));
    supermodule::deleteTree(block);
}

void BlockParametersTest::pressOnALoopsLeftButtonPlacesThePopUpUnderThatButton_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("blocks");
    QTest::addColumn<bool>("nested");
    for (const int id : {306, 307}) {
        const QByteArray name = QByteArray::number(id);
        QTest::newRow(name + " empty") << id << 0 << false;
        QTest::newRow(name + " with two blocks") << id << 2 << false;
        QTest::newRow(name + " with a loop") << id << 0 << true;
    }
}

void BlockParametersTest::pressOnALoopsLeftButtonPlacesThePopUpUnderThatButton()
{
    QFETCH(int, id);
    QFETCH(int, blocks);
    QFETCH(bool, nested);
    Bench bench;
    supermodule* loop = bench.seen(id, {300, 300});
    for (int i = 0; i < blocks; ++i) {
        dropOn(bench, loop, LeftLink, 103);
    }
    if (nested) {
        dropOn(bench, loop, LeftLink, 303);
    }
    if (loop->left()) {
        // The last block of a body lies over a part of the button.
        loop->button(0)->click();
    } else {
        bench.clickButton(loop, 0);
    }
    QVERIFY(Bench::popUpIsOpen());
    const QRectF button = Bench::proxies(loop).at(0)->sceneBoundingRect();
    const QRectF popUp = Bench::popUp()->sceneBoundingRect();
    QCOMPARE(popUp.center().x(), button.center().x());
    QCOMPARE(popUp.top(), loop->y() + 150);
}

void BlockParametersTest::thereIsOnePopUpInTheScene()
{
    Bench bench;
    supermodule* first = bench.seen(100, {200, 330});
    supermodule* second = bench.seen(111, {600, 330});
    QVERIFY(!graphicsItem_Param::existing());
    bench.clickButton(first, 0);
    const graphicsItem_Param* popUp = Bench::popUp();
    QCOMPARE(popUp->scene(), bench.view.scene());
    bench.clickButton(second, 0);
    QCOMPARE(Bench::popUp(), popUp);
    int count = 0;
    const QList<QGraphicsItem*> items = bench.view.scene()->items();
    for (const QGraphicsItem* item : items) {
        count += item->type() == graphicsItem_Param::Type ? 1 : 0;
    }
    QCOMPARE(count, 1);
}

void BlockParametersTest::aPressOutsideDismissesThePopUpAndOneInsideKeepsIt()
{
    Bench bench;
    supermodule* block = bench.seen(100, {500, 200});
    bench.clickButton(block, 0);
    QVERIFY(Bench::popUpIsOpen());
    // Between its upper edge and its entries.
    bench.click(Bench::popUp()->pos() + QPointF(40, 8));
    QVERIFY(Bench::popUpIsOpen());
    bench.click(block->scenePos() + QPointF(30, 30));
    QVERIFY(!Bench::popUpIsOpen());
    bench.clickButton(block, 0);
    QVERIFY(Bench::popUpIsOpen());
    bench.click({900, 550});
    QVERIFY(!Bench::popUpIsOpen());
}

void BlockParametersTest::openingForASecondBlockRetargetsThePopUp()
{
    Bench bench;
    supermodule* first = bench.seen(100, {200, 250});
    supermodule* second = bench.seen(100, {600, 250});
    bench.clickButton(first, 0);
    QCOMPARE(Bench::popUp()->module(), first);
    bench.clickButton(second, 0);
    QVERIFY(Bench::popUpIsOpen());
    QCOMPARE(Bench::popUp()->module(), second);
    bench.choose(2);
    QVERIFY(first->cCode().startsWith(QLatin1String("speed1 = 50;")));
    QVERIFY(second->cCode().startsWith(QLatin1String("speed1 = 80;")));
}

void BlockParametersTest::aChoiceForADeletedBlockDoesNothing()
{
    Bench bench;
    supermodule* block = bench.seen(100, {500, 200});
    bench.clickButton(block, 0);
    bench.view.deleteModule(block);
    QVERIFY(Bench::popUpIsOpen());
    bench.choose(0);
    bench.click({900, 550});
    QVERIFY(!Bench::popUpIsOpen());
    QCOMPARE(bench.brokenInvariants(), QStringList());
}

void BlockParametersTest::theNextKeyReplacesTheMarkedNumber()
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

void BlockParametersTest::aPressOnTheCanvasUnmarksTheField()
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

void BlockParametersTest::theKeyboardOfThePaletteEditsTheBlockThatAskedForIt()
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

void BlockParametersTest::aPressOnTheEmptyCanvasEndsThePalettesInput()
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

void BlockParametersTest::anEmptiedTimeWaitsForNothing()
{
    Bench bench;
    supermodule* block = bench.seen(101);
    bench.clickButton(block, 0);
    bench.type("<");
    QCOMPARE(block->button(0)->text(), QString());
    QCOMPARE(block->cCode(), QStringLiteral("wait(0);\n"));
}

void BlockParametersTest::aTimeOfSixDigitsStaysExact()
{
    Bench bench;
    supermodule* block = bench.seen(101);
    bench.clickButton(block, 0);
    bench.type("123457");
    QCOMPARE(block->cCode(), QStringLiteral("wait(123457);\n"));
    bench.type("8");
    QCOMPARE(block->cCode(), QStringLiteral("wait(123457);\n"));
}

void BlockParametersTest::aCountTakesDigitsAndDeleteAlone()
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

void BlockParametersTest::anEmptiedCountIsZero()
{
    Bench bench;
    supermodule* block = bench.seen(301);
    bench.clickButton(block, 0);
    bench.tap("<");
    QCOMPARE(block->button(0)->text(), QString());
    QCOMPARE(block->cCode(), QStringLiteral("for(int i = 0;i < 0; ++i)\n{\n}"));
}

void BlockParametersTest::everyTimedBlockTakesItsTimeFromItsField_data()
{
    QTest::addColumn<int>("id");
    for (const int id : {101, 104, 118, 119, 120, 112, 113}) {
        QTest::newRow(qPrintable(QString::number(id))) << id;
    }
}

void BlockParametersTest::everyTimedBlockTakesItsTimeFromItsField()
{
    QFETCH(int, id);
    Bench bench;
    supermodule* block = bench.seen(id);
    QVERIFY(block->cCode().contains(QStringLiteral("wait(1);")));
    bench.clickButton(block, 0);
    bench.type("0.75");
    QVERIFY2(block->cCode().contains(QStringLiteral("wait(0.75);")), qPrintable(block->cCode()));
    bench.clickButton(block, 0);
    bench.tap("2.5");
    QVERIFY2(block->cCode().contains(QStringLiteral("wait(2.5);")), qPrintable(block->cCode()));
}

void BlockParametersTest::anAngleIsTyped_data()
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

void BlockParametersTest::anAngleIsTyped()
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

void BlockParametersTest::aRefusedAngleIsExplained_data()
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

void BlockParametersTest::aRefusedAngleIsExplained()
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
    bench.type(keys);
    QCoreApplication::processEvents();
    QCOMPARE(watch.asked.size(), 0);
    bench.type(refused);
    QCoreApplication::processEvents();
    QCOMPARE(watch.asked, QList<QPoint>{QPoint(60, -10)});
    QCOMPARE(block->button(0)->text(), text + s_degree);
    QCOMPARE(block->cCode(),
             QStringLiteral("servo_ctrl(1, 716, %1, 0);\n").arg(text.toInt() * -888 / 300 + 512));
    // The next key goes on from there.
    bench.type("<");
    QCOMPARE(block->button(0)->text(), text.left(text.size() - 1) + s_degree);
}

void BlockParametersTest::anAngleTakesNoPoint()
{
    Bench bench;
    supermodule* block = bench.seen(107);
    bench.clickButton(block, 0);
    bench.type("1.2");
    QCOMPARE(block->button(0)->text(), "12" + s_degree);
    bench.tap(".");
    QCOMPARE(block->button(0)->text(), "12" + s_degree);
}

void BlockParametersTest::aServoChosenInThePanelStandsInTheText()
{
    Bench bench;
    supermodule* block = bench.seen(107);
    bench.clickButton(block, 1);
    QCOMPARE(bench.raised, QStringList{"panel 2 1"});
    bench.view.onEditParamSignal(1, 17);
    QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(18, 716, 512, 0);\n"));
}

void BlockParametersTest::aPanelValueOfAnotherParameterDoesNothing()
{
    Bench bench;
    supermodule* block = bench.seen(107);
    bench.clickButton(block, 1);
    bench.view.onEditParamSignal(0, 17);
    bench.view.onEditParamSignal(2, 17);
    QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(1, 716, 512, 0);\n"));
}

void BlockParametersTest::aChosenSpeedIsInTheTextAndInACopy()
{
    Bench bench;
    supermodule* block = bench.seen(100, {500, 200});
    documentModified = false;
    bench.clickButton(block, 0);
    bench.choose(2);
    const QString fast = QStringLiteral("speed1 = 80;\nspeed2 = 80;\nspeed3 = 80;\nspeed4 = 80;\n");
    QCOMPARE(block->cCode(), fast);
    QVERIFY(documentModified);
    QCOMPARE(bench.view.undoStack().count(), 0);
    const std::unique_ptr<supermodule> copy(block->clone());
    QCOMPARE(copy->cCode(), fast);
}

void BlockParametersTest::aChosenMotorPortIsOnTheButtonAndInTheText()
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

void BlockParametersTest::conditionAndPortOfASensorAreChosenApart()
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

void BlockParametersTest::aCopiedWaitBlockHasTheFirstConditionAgain()
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

void BlockParametersTest::aDisplayPortIsChosen()
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

void BlockParametersTest::aValueForNoBlockIsIgnored()
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

QTEST_MAIN(BlockParametersTest)
#include "blockparameterstest.moc"
