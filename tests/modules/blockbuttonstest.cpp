#include "modules/catalogue/modulefactory.h"
#include "modules/catalogue/parametermodule.h"
#include "modules/documentstate.h"
#include "parameterbench.h"
#include "proj/controls/selectablebutton.h"
#include "support/canvas/blockdata.h"
#include "support/system/datatable.h"

#include <QFile>
#include <QGraphicsScene>
#include <QPainter>
#include <QPushButton>
#include <QtTest>

namespace
{
/** Remembers the choices of the pop-up. */
class recordingBlock : public parameterModule
{
public:
    recordingBlock() : parameterModule(1000, QString(), QString(), QString()) {}
    QString cCode() const override { return QString(); }
    supermodule* clone() const override { return new recordingBlock; }
    void setParamIndex(int p_index) override { chosen.append(p_index); }

    QList<int> chosen;
};

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

/** The buttons on blocks, and the pop-up that some of them open. */
class BlockButtonsTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void aBlockHasTheButtonsOfItsType_data()
    {
        // A mask of 0: no number field. What is pressed raises a signal of the view, or the pop-up.
        columns<int, int, QRect, int, bool, QString, QString, QString>(
            "id", "index", "geometry", "mask", "arrow", "press", "shows", "style");
        for (const BlockData& data : blockData()) {
            int index = 0;
            for (const BlockData::Button& button : data.buttons()) {
                // The keys of the keyboard are those that the field takes.
                const bool number = button.opens.startsWith(QLatin1String("number"));
                QTest::newRow(qPrintable(data.value("class") + ' ' + QString::number(index)))
                    << data.id() << index << button.place
                    << (number ? button.opens.section(QLatin1Char(' '), 1).toInt() : 0)
                    << button.arrow << button.opens << button.shows << button.style;
                ++index;
            }
        }
    }

    void aBlockHasTheButtonsOfItsType()
    {
        QFETCH(int, id);
        QFETCH(int, index);
        QFETCH(QRect, geometry);
        QFETCH(int, mask);
        QFETCH(bool, arrow);
        QFETCH(QString, press);
        QFETCH(QString, shows);
        QFETCH(QString, style);
        supermodule* block = m_bench->seen(id);
        const bool two = geometry.width() == 60;
        QCOMPARE(block->buttonCount(), two ? 2 : 1);
        QCOMPARE(block->buttonRect(index), QRectF(geometry));
        auto* button = qobject_cast<QPushButton*>(block->button(index));
        QVERIFY(button);
        const QList<QGraphicsProxyWidget*> proxies = Bench::proxies(block);
        QCOMPARE(proxies.size(), 1);
        const QGraphicsProxyWidget* proxy = proxies.first();
        QCOMPARE(proxy->widget(), button);
        QCOMPARE(proxy->geometry(), QRectF(geometry));
        QCOMPARE(button->text(), shows);
        QCOMPARE(button->styleSheet(), style);
        QCOMPARE(button->font().pixelSize(), 20);
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

        m_bench->raised.clear();
        focusModule.clear();
        m_bench->clickButton(block, index);
        if (!press.startsWith(QLatin1String("mode"))) {
            QCOMPARE(m_bench->raised, QStringList{press});
            QCOMPARE(focusModule.data(), block);
            QVERIFY(!Bench::popUpIsOpen());
            return;
        }
        QCOMPARE(m_bench->raised, QStringList());
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

    void aValueOfAFileShowsOnTheButtonsWhicheverCameFirst_data()
    {
        QTest::addColumn<int>("id");
        for (const BlockData& data : blockData()) {
            if (!data.buttons().isEmpty()) {
                QTest::newRow(qPrintable(data.value("class"))) << data.id();
            }
        }
    }

    void aValueOfAFileShowsOnTheButtonsWhicheverCameFirst()
    {
        QFETCH(int, id);
        const QString values =
            QStringLiteral("n=2 port=3 time=12.25 angle=-45 servoId=7 bInfread=0");
        supermodule* early = m_bench->seen(id);
        QVERIFY(early->buttonCount() > 0);
        loadBlock(early, values);
        supermodule* late = createModuleFromId(id);
        loadBlock(late, values);
        late->enterScene(m_bench->view.scene());
        for (int i = 0; i < late->buttonCount(); ++i) {
            QCOMPARE(early->button(i)->text(), late->button(i)->text());
        }
    }

    void everyOtherBlockHasNoButtons_data()
    {
        QTest::addColumn<int>("id");
        for (const BlockData& data : blockData()) {
            // The start isn't dropped as the others are.
            if (data.buttons().isEmpty() && data.category() >= 0) {
                QTest::newRow(qPrintable(data.value("class"))) << data.id();
            }
        }
    }

    void everyOtherBlockHasNoButtons()
    {
        QFETCH(int, id);
        supermodule* block = m_bench->seen(id);
        QCOMPARE(block->buttonCount(), 0);
        QCOMPARE(Bench::proxies(block).size(), 0);
        QCOMPARE(block->button(0), nullptr);
    }

    void aModeOfThePopUpShowsItsEntries_data()
    {
        QTest::addColumn<int>("mode");
        for (const ModeRow& row : modeRows()) {
            QTest::newRow(qPrintable(QString::number(row.mode))) << row.mode;
        }
    }

    void aModeOfThePopUpShowsItsEntries()
    {
        QFETCH(int, mode);
        const ModeRow& row = modeRows().at(mode);
        QGraphicsScene scene;
        auto* popUp = new graphicsItem_Param(&scene, nullptr);
        recordingBlock block;
        popUp->setModule(&block);
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
                QCOMPARE(button->font().pixelSize(), 24);
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

    void aChosenEntryComesToTheBlockAndClosesThePopUp_data()
    {
        columns<int, int, int>("mode", "entry", "result");
        for (const ModeRow& row : modeRows()) {
            for (int i = 0; i < row.results.size(); ++i) {
                QTest::newRow(qPrintable(QStringLiteral("mode %1 entry %2").arg(row.mode).arg(i)))
                    << row.mode << i << row.results.at(i);
            }
        }
    }

    void aChosenEntryComesToTheBlockAndClosesThePopUp()
    {
        QFETCH(int, mode);
        QFETCH(int, entry);
        QFETCH(int, result);
        auto* block = new recordingBlock;
        m_bench->view.scene()->addItem(block);
        block->setPos(500, 200);
        block->OnSetParam(mode);
        QVERIFY(Bench::popUpIsOpen());
        m_bench->choose(entry);
        QCOMPARE(block->chosen, QList<int>{result});
        QVERIFY(!Bench::popUpIsOpen());
        supermodule::deleteTree(block);
    }

    void everyEntryOfAPopUpIsAChoiceOfItsBlock()
    {
        for (const BlockData& data : blockData()) {
            QSet<QString> offered;
            for (const BlockData::Button& button : data.buttons()) {
                if (button.opens.startsWith(QLatin1String("mode"))) {
                    for (const int result : modeRows().at(button.opens.mid(5).toInt()).results) {
                        offered.insert(QStringLiteral("param %1").arg(result));
                    }
                }
            }
            QSet<QString> chosen;
            for (const BlockData::Choice& choice : data.choices()) {
                const QStringList given = choice.give.filter(QStringLiteral("param"));
                chosen += QSet<QString>(given.begin(), given.end());
            }
            QVERIFY2(offered.isEmpty() || offered == chosen, qPrintable(data.value("class")));
        }
    }

    void anUnknownModeShowsTheOldBackgroundWithoutEntries()
    {
        QGraphicsScene scene;
        auto* popUp = new graphicsItem_Param(&scene, nullptr);
        recordingBlock block;
        popUp->setModule(&block);
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

    void thePopUpStandsUnderTheMiddleOfTheBlock()
    {
        auto* block = new recordingBlock;
        m_bench->view.scene()->addItem(block);
        block->setPos(321, 123);
        block->OnSetParam(1);
        const qreal width = QPixmap(QStringLiteral(":/param_item_bg_290x92.png")).width();
        QCOMPARE(Bench::popUp()->pos(), QPointF(321 + 60 - width / 2, 123 + 140 + 10));
        block->OnSetParamByPos(6, 400);
        const qreal narrow =
            QPixmap(QStringLiteral(":/expression/expression_bg_140x80.png")).width();
        QCOMPARE(Bench::popUp()->pos(), QPointF(400 - narrow / 2, 123 + 150));
        supermodule::deleteTree(block);
    }

    void thereIsOnePopUpInTheScene()
    {
        supermodule* first = m_bench->seen(100, {200, 330});
        supermodule* second = m_bench->seen(111, {600, 330});
        QVERIFY(!graphicsItem_Param::existing());
        m_bench->clickButton(first, 0);
        const graphicsItem_Param* popUp = Bench::popUp();
        QCOMPARE(popUp->scene(), m_bench->view.scene());
        m_bench->clickButton(second, 0);
        QCOMPARE(Bench::popUp(), popUp);
        int count = 0;
        const QList<QGraphicsItem*> items = m_bench->view.scene()->items();
        for (const QGraphicsItem* item : items) {
            count += item->type() == graphicsItem_Param::Type ? 1 : 0;
        }
        QCOMPARE(count, 1);
    }

    void aPressOutsideDismissesThePopUpAndOneInsideKeepsIt()
    {
        supermodule* block = m_bench->seen(100, {500, 200});
        m_bench->clickButton(block, 0);
        QVERIFY(Bench::popUpIsOpen());
        // Between its upper edge and its entries.
        m_bench->click(Bench::popUp()->pos() + QPointF(40, 8));
        QVERIFY(Bench::popUpIsOpen());
        m_bench->click(block->scenePos() + QPointF(30, 30));
        QVERIFY(!Bench::popUpIsOpen());
        m_bench->clickButton(block, 0);
        QVERIFY(Bench::popUpIsOpen());
        m_bench->click({900, 550});
        QVERIFY(!Bench::popUpIsOpen());
    }

    void openingForASecondBlockRetargetsThePopUp()
    {
        supermodule* first = m_bench->seen(100, {200, 250});
        supermodule* second = m_bench->seen(100, {600, 250});
        m_bench->clickButton(first, 0);
        QCOMPARE(Bench::popUp()->module(), first);
        m_bench->clickButton(second, 0);
        QVERIFY(Bench::popUpIsOpen());
        QCOMPARE(Bench::popUp()->module(), second);
        m_bench->choose(2);
        QVERIFY(first->cCode().startsWith(QLatin1String("speed1 = 50;")));
        QVERIFY(second->cCode().startsWith(QLatin1String("speed1 = 80;")));
    }

    void aChoiceForADeletedBlockDoesNothing()
    {
        supermodule* block = m_bench->seen(100, {500, 200});
        m_bench->clickButton(block, 0);
        m_bench->view.deleteModule(block);
        QVERIFY(Bench::popUpIsOpen());
        m_bench->choose(0);
        m_bench->click({900, 550});
        QVERIFY(!Bench::popUpIsOpen());
        QCOMPARE(m_bench->brokenInvariants(), QStringList());
    }
};

QTEST_MAIN(BlockButtonsTest)
#include "blockbuttonstest.moc"
