#include "modules/catalogue/blockcatalogue.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/drivemodules.h"
#include "modules/catalogue/expressionmodules.h"
#include "modules/catalogue/loopmodules.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/catalogue/motormodules.h"
#include "modules/catalogue/sensormodule.h"
#include "modules/catalogue/speedmodule.h"
#include "modules/catalogue/steeringenginemodule.h"
#include "modules/catalogue/timemodules.h"
#include "modules/catalogue/voicemodules.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/singleblock.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QGraphicsPixmapItem>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

namespace
{
/** Attributes as "name=value", blanks between them. */
using Attributes = QString;

enum Shape { Plain, CountedLoop, ConditionalLoop, EndlessLoop };

template <class Block> bool isA(const supermodule* p_module)
{
    return dynamic_cast<const Block*>(p_module) != nullptr;
}

/** A block type as the tables lay it down, apart from its texts. */
struct Expected {
    int category;
    int id;
    const char* caption; /**< in English */
    const char* picture;
    bool (*isClass)(const supermodule*);
    Shape shape;
    Attributes fresh;   /**< of a new block */
    Attributes changed; /**< others, to be stored and loaded */
    Attributes copied;  /**< of a copy of the changed one */
    const char* params; /**< names of what paramsElement() holds */
};

const QVector<Expected>& table()
{
    static const QVector<Expected> s_rows{
        {-1, 0, "main", ":/move/moveForward_time.png", isA<mainModule>, Plain, "", "", "", ""},
        {0, 104, "Forward time", ":/move/moveForward_time.png", isA<moveForwardTimeModule>, Plain,
         "n=1", "n=2.5", "n=2.5", "n"},
        {0, 118, "Backward time", ":/move/backford_time.png", isA<moveBackwardTimeModule>, Plain,
         "n=1", "n=0.25", "n=0.25", "n"},
        {0, 119, "Left turn time", ":/move/turnleft_time.png", isA<turnLeftTimeModule>, Plain,
         "n=1", "n=0.5", "n=0.5", "n"},
        {0, 120, "Right turn time", ":/move/turnright_time.png", isA<turnRightTimeModule>, Plain,
         "n=1", "n=12", "n=12", "n"},
        {0, 100, "Speed", ":/move/move_speed.png", isA<speedmodule>, Plain, "n=1", "n=2", "n=2",
         "n"},
        {0, 103, "Forward", ":/move/moveForward.png", isA<forwardModule>, Plain, "", "", "", ""},
        {0, 102, "Backward", ":/move/moveBackword.png", isA<backforwardModule>, Plain, "", "", "",
         ""},
        {0, 106, "Left turn", ":/move/turn_left.png", isA<turnleftModule>, Plain, "", "", "", ""},
        {0, 109, "Right turn", ":/move/turn_right.png", isA<turnrightModule>, Plain, "", "", "",
         ""},
        {0, 101, "wait", ":/move/move_wait.png", isA<moveWaitModule>, Plain, "n=1", "n=0.125",
         "n=0.125", "n"},
        {0, 105, "Stop", ":/move/stopMoving.png", isA<stopMovingModule>, Plain, "", "", "", ""},
        {0, 111, "Single motor clockwise", ":/move/single_motor_clockwise.png",
         isA<motorClockwiseModule>, Plain, "n=2", "n=0", "n=0", "n"},
        {0, 113, "Single motor clockwise time", ":/move/single_motor_clockwise_time.png",
         isA<motorClockwiseTimeModule>, Plain, "n=2 time=1", "n=3 time=0.75", "n=3 time=0.75",
         "n time"},
        {0, 110, "Single motor counter clockwise", ":/move/single_motor_anti_clockwise.png",
         isA<motorAntiClockwiseModule>, Plain, "n=2", "n=1", "n=1", "n"},
        {0, 112, "Single motor counter clockwise time",
         ":/move/single_motor_anti_clockwise_time.png", isA<motorAntiClockwiseTimeModule>, Plain,
         "n=2 time=1", "n=0 time=3.5", "n=0 time=3.5", "n time"},
        // A copy of a stop stands on port "C" again, and its parameters are nothing to modify.
        {0, 117, "Single motor stop", ":/move/single_motor_stop.png", isA<singleMotorStop>, Plain,
         "n=2", "n=3", "n=2", ""},
        {0, 107, "Servo angle", ":/move/serve.png", isA<steeringenginemodule>, Plain,
         "servoId=1 angle=0", "servoId=18 angle=-45", "servoId=18 angle=-45", "servoId angle"},
        {7, 800, "Piano", ":/voice/piano.png", isA<pianoModule>, Plain, "n=1", "n=7", "n=7", "n"},
        {7, 801, "Animal", ":/voice/animal.png", isA<animalModule>, Plain, "n=1", "n=6", "n=6",
         "n"},
        {7, 802, "Mood", ":/voice/xinqing.png", isA<biaoqingModule>, Plain, "n=1", "n=4", "n=4",
         "n"},
        {7, 803, "Say hello", ":/voice/hello.png", isA<helloModule>, Plain, "n=1", "n=5", "n=5",
         "n"},
        {7, 804, "Traffic", ":/voice/traffic.png", isA<trafficModule>, Plain, "n=1", "n=2", "n=2",
         "n"},
        // Copies of these forget what they show.
        {8, 903, "Expression", ":/expression/expression_two.png", isA<expressionTwoModule>, Plain,
         "n=1", "n=12", "n=1", "n"},
        {8, 904, "Close two expressions", ":/expression/expression_two_close.png",
         isA<closeAllModule>, Plain, "", "", "", ""},
        {8, 902, "Number", ":/expression/expression_shuzi.png", isA<shuziModule>, Plain,
         "port=2 n=0", "port=3 n=9", "port=3 n=0", "port"},
        {8, 906, "Letter", ":/expression/expression_zimu.png", isA<zimuModule>, Plain, "port=2 n=0",
         "port=3 n=25", "port=3 n=0", "port"},
        {8, 905, "Arithmetic", ":/expression/expression_yunsuan.png", isA<yunsuanModule>, Plain,
         "port=2 n=0", "port=3 n=4", "port=3 n=0", "port"},
        {8, 900, "Symbol", ":/expression/expression_fuhao.png", isA<fuhaoModule>, Plain,
         "port=2 n=0", "port=3 n=12", "port=3 n=0", "port"},
        {8, 901, "Close an expression", ":/expression/expression_one_close.png",
         isA<closeOneModule>, Plain, "port=2", "port=3", "port=3", "port"},
        {2, 303, "Infinite loop", ":/condition/foreveModule.png", isA<foreverModule>, EndlessLoop,
         "", "", "", ""},
        {2, 301, "Multiple loop", ":/condition/forModule.png", isA<forModule>, CountedLoop, "n=10",
         "n=3", "n=3", "n"},
        // Copies of these have the first condition.
        {2, 306, "Cycle until infrared detection", ":/condition/loopuntiinfrared.png",
         isA<loopuntiinfraredModule>, ConditionalLoop, "port=4 bInfread=1", "port=1 bInfread=0",
         "port=1 bInfread=1", "port"},
        {2, 307, "Cyclic Touch Detection", ":/condition/loopuntiltouch.png",
         isA<loopuntiTouchModule>, ConditionalLoop, "port=5 bInfread=1", "port=2 bInfread=0",
         "port=2 bInfread=1", "port"},
        {2, 308, "Waiting for IR", ":/condition/waituntiinfrared.png", isA<waituntiinfraredModule>,
         Plain, "port=4 bInfread=1", "port=3 bInfread=0", "port=3 bInfread=1", "port"},
        {2, 309, "Wait for touch", ":/condition/waituntiltouch.png", isA<waituntiTouchModule>,
         Plain, "port=5 bInfread=1", "port=4 bInfread=0", "port=4 bInfread=1", "port"},
    };
    return s_rows;
}

const Expected* expectedOf(int p_id)
{
    for (const Expected& row : table()) {
        if (row.id == p_id) {
            return &row;
        }
    }
    return nullptr;
}

/** The picture around a type's block when it is copied; empty for none. */
QString copyFrameOf(int p_id)
{
    if (100 <= p_id && p_id <= 117) {
        return QStringLiteral(":/select1.png");
    }
    return 300 <= p_id && p_id <= 303 ? QStringLiteral(":/select4.png") : QString();
}

std::unique_ptr<supermodule> newBlock(int p_id)
{
    return std::unique_ptr<supermodule>(createModuleFromId(p_id));
}

/**
 * Gives a block values as the choosers do: "param 2" from the pop-up, "number 3" from an icon or
 * text panel, "panel 1 17" from one with a parameter, "keys 0.5" from the number keyboard, '<'
 * standing for Backspace.
 */
void giveValue(supermodule* p_module, const QString& p_value)
{
    const QStringList words = p_value.split(QLatin1Char(' '));
    if (words.first() == QLatin1String("param")) {
        p_module->setParamIndex(words.at(1).toInt());
    } else if (words.first() == QLatin1String("number")) {
        p_module->setNumberKey(words.at(1).toInt());
    } else if (words.first() == QLatin1String("panel")) {
        p_module->setPanelValue(words.at(1).toInt(), words.at(2).toInt());
    } else if (words.first() == QLatin1String("keys")) {
        for (const QChar ch : words.at(1)) {
            p_module->setNumberKey(ch == QLatin1Char('<') ? int(Qt::Key_Backspace)
                                                          : int(ch.unicode()));
        }
    } else {
        qFatal("no such value: %s", qPrintable(p_value));
    }
}

/** The texts of the four blocks that set the wheels for a time. */
QString timedDrive(const char* p_first, const char* p_second, const QString& p_time)
{
    return QStringLiteral("set_motor(1, ") + p_first + ");\nset_motor(2, " + p_second +
           ");\nwait(" + p_time + ");\nset_motor(1, 0);\nset_motor(2, 0);\n";
}
} // namespace

class CatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        QVERIFY(m_english.load(QStringLiteral(":/vantrel_en.qm")));
        // The tables are built at their first use, with the translator in force then.
        QVERIFY(QCoreApplication::installTranslator(&m_english));
    }

    void theRecordsAreThoseOfTheTableInItsOrder()
    {
        QStringList ids;
        for (const BlockRecord& record : blockRecords()) {
            ids << QString::number(record.id);
        }
        QStringList expected;
        for (const Expected& row : table()) {
            expected << QString::number(row.id);
        }
        QCOMPARE(ids.join(QLatin1Char(' ')), expected.join(QLatin1Char(' ')));
    }

    void everyCaptionIsChineseInTheSource()
    {
        const QMap<int, QString> captions{
            {0, "main"},
            {104, "前进时间"},
            {118, "后退时间"},
            {119, "左转时间"},
            {120, "右转时间"},
            {100, "速度"},
            {103, "前进"},
            {102, "后退"},
            {106, "左转"},
            {109, "右转"},
            {101, "等待"},
            {105, "停止"},
            {111, "单电机顺时针"},
            {113, "单电机顺时针时间"},
            {110, "单电机逆时针"},
            {112, "单电机逆时针时间"},
            {117, "单电机停止"},
            {107, "舵机角度"},
            {800, "钢琴"},
            {801, "动物"},
            {802, "心情"},
            {803, "打招呼"},
            {804, "交通"},
            {903, "表情"},
            {904, "关闭两个表情"},
            {902, "数字"},
            {906, "字母"},
            {905, "运算"},
            {900, "符号"},
            {901, "关闭一个表情"},
            {303, "无限循环"},
            {301, "多次循环"},
            {306, "循环直到红外检测"},
            {307, "循环触碰检测"},
            {308, "等待红外"},
            {309, "等待触碰"},
        };
        QStringList wrong;
        for (const CatalogueRow* row = catalogueBegin(); row != catalogueEnd(); ++row) {
            if (captions.value(row->id) != QString::fromUtf8(row->caption)) {
                wrong << QString::number(row->id);
            }
        }
        QCOMPARE(wrong.join(QLatin1Char(' ')), QString());
        QCOMPARE(int(catalogueEnd() - catalogueBegin()), captions.size());
    }

    void everyBlock_data()
    {
        QTest::addColumn<int>("id");
        for (const BlockRecord& record : blockRecords()) {
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(record.id).arg(record.caption)))
                << record.id;
        }
    }

    void everyBlockHasItsRecordWithPictureAndEnglishCaption_data() { everyBlock_data(); }

    void everyBlockHasItsRecordWithPictureAndEnglishCaption()
    {
        QFETCH(int, id);
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        const BlockRecord* record = findBlockRecord(id);
        QVERIFY(record);
        QCOMPARE(record->category, expected->category);
        QCOMPARE(record->image, QString::fromLatin1(expected->picture));
        QCOMPARE(record->pressedImage, record->image);
        QCOMPARE(record->caption, QString::fromLatin1(expected->caption));
        QVERIFY(record->draggable);
        QVERIFY2(!QPixmap(record->image).isNull(), qPrintable(record->image));
    }

    void everyBlockIsBuiltByTheFactoryWithItsConnectors_data() { everyBlock_data(); }

    void everyBlockIsBuiltByTheFactoryWithItsConnectors()
    {
        QFETCH(int, id);
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        const std::unique_ptr<supermodule> block = newBlock(id);
        QVERIFY(block);
        QVERIFY(expected->isClass(block.get()));
        QCOMPARE(block->id, id);
        QCOMPARE(block->text(), QString::fromLatin1(expected->caption));
        QCOMPARE(block->toolTip(), QString::fromLatin1(expected->caption));
        QCOMPARE(block->imagePath(), QString::fromLatin1(expected->picture));
        QCOMPARE(block->pressedPath(), QString::fromLatin1(expected->picture));

        const bool loop = expected->shape != Plain;
        const collisionItem* next = block->connector(NextLink);
        const collisionItem* left = block->connector(LeftLink);
        QVERIFY(!block->connector(RightLink));
        QCOMPARE(next == nullptr, expected->shape == EndlessLoop);
        QCOMPARE(left != nullptr, loop);
        if (next) {
            QCOMPARE(next->kind(), 0);
            QCOMPARE(next->linkName(), QStringLiteral("Next"));
            QCOMPARE(next->pos(), loop      ? QPointF(280, 30)
                                  : id == 0 ? QPointF(140, 20)
                                            : QPointF(120, 30));
            QVERIFY(!next->isActive());
        }
        if (left) {
            QCOMPARE(left->kind(), 4);
            QCOMPARE(left->linkName(), QStringLiteral("Left"));
            QCOMPARE(left->pos(), QPointF(expected->shape == ConditionalLoop ? 40 : 100, 30));
        }
        QCOMPARE(block->boundingRect(), loop      ? QRectF(0, -20, 280, 140)
                                        : id == 0 ? QRectF(0, 0, 140, 120)
                                                  : QRectF(0, 0, 120, 140));
    }

    void everyBlockHasItsCopyFrameAndGivesItToCopies_data() { everyBlock_data(); }

    void everyBlockHasItsCopyFrameAndGivesItToCopies()
    {
        QFETCH(int, id);
        const QString path = copyFrameOf(id);
        QVERIFY(path.isEmpty() || !QPixmap(path).isNull());
        const QImage expected = QPixmap(path).toImage();
        const std::unique_ptr<supermodule> block = newBlock(id);
        QCOMPARE(selectFrame(block.get())->pixmap().toImage(), expected);
        QVERIFY(!selectFrame(block.get())->isVisible());
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(!copy, id == 0);
        if (copy) {
            QCOMPARE(selectFrame(copy.get())->pixmap().toImage(), expected);
        }
        const std::unique_ptr<supermodule> bare(createModule(id, QString(), QString(), QString()));
        QCOMPARE(selectFrame(bare.get())->pixmap().toImage(), expected);
    }

    void everyBlockStoresAndLoadsItsAttributes_data() { everyBlock_data(); }

    void everyBlockStoresAndLoadsItsAttributes()
    {
        QFETCH(int, id);
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        const std::unique_ptr<supermodule> block = newBlock(id);
        QCOMPARE(ownAttributes(block.get()), parsedAttributes(expected->fresh));
        loadBlock(block.get(), expected->changed);
        QCOMPARE(ownAttributes(block.get()), parsedAttributes(expected->changed));
        // The same with the buttons made, which show some of the values.
        const std::unique_ptr<supermodule> seen = newBlock(id);
        seen->ensureButtons();
        loadBlock(seen.get(), expected->changed);
        QCOMPARE(ownAttributes(seen.get()), parsedAttributes(expected->changed));
        QCOMPARE(seen->cCode(), block->cCode());

        block->setPos(12, -34);
        block->ownid = 404;
        block->moduleKey = 77;
        QDomDocument document;
        const QDomElement element = storedBlock(block.get(), document);
        QCOMPARE(element.tagName(), QStringLiteral("module"));
        QCOMPARE(element.attribute(QStringLiteral("x")), QStringLiteral("12"));
        QCOMPARE(element.attribute(QStringLiteral("y")), QStringLiteral("-34"));
        QCOMPARE(element.attribute(QStringLiteral("id")), QString::number(id));
        QCOMPARE(element.attribute(QStringLiteral("ownid")), QStringLiteral("404"));
        QCOMPARE(element.attribute(QStringLiteral("moduleKey")), QStringLiteral("77"));
        QCOMPARE(element.attributes().size(), 5 + parsedAttributes(expected->changed).size());
        const std::unique_ptr<supermodule> loaded = newBlock(id);
        loaded->loadXml(element);
        QCOMPARE(loaded->pos(), QPointF(12, -34));
        QCOMPARE(loaded->ownid, 404);
        QCOMPARE(loaded->moduleKey, 77);
        QCOMPARE(ownAttributes(loaded.get()), parsedAttributes(expected->changed));
    }

    void everyBlockIsCopiedWithWhatItsCopyKeeps_data() { everyBlock_data(); }

    void everyBlockIsCopiedWithWhatItsCopyKeeps()
    {
        QFETCH(int, id);
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        const std::unique_ptr<supermodule> block = newBlock(id);
        loadBlock(block.get(), expected->changed);
        const std::unique_ptr<supermodule> copy(block->clone());
        if (id == 0) {
            QVERIFY(!copy);
            return;
        }
        QVERIFY(copy);
        QVERIFY(expected->isClass(copy.get()));
        QCOMPARE(ownAttributes(copy.get()), parsedAttributes(expected->copied));
        // The source keeps what it has.
        QCOMPARE(ownAttributes(block.get()), parsedAttributes(expected->changed));
    }

    void everyBlockIsPastedWithWhatItsCopyKeeps_data() { everyBlock_data(); }

    void everyBlockIsPastedWithWhatItsCopyKeeps()
    {
        QFETCH(int, id);
        if (id == 0) {
            return;
        }
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        CanvasFixture canvas;
        supermodule* block = canvas.drop(id, QPointF(500, 350));
        loadBlock(block, expected->changed);
        block->setPos(400, 350);
        const QList<supermodule*> before = canvas.blocks();
        canvas.press(block->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().close();
        canvas.view.OnCopyAndPaste();
        for (const supermodule* pasted : canvas.blocks()) {
            if (!before.contains(const_cast<supermodule*>(pasted))) {
                QVERIFY(expected->isClass(pasted));
                QCOMPARE(ownAttributes(pasted), parsedAttributes(expected->copied));
                QCOMPARE(pasted->scenePos(), QPointF(560, 510));
            }
        }
        QCOMPARE(canvas.blocks().size(), before.size() + 1);
        QCOMPARE(ownAttributes(block), parsedAttributes(expected->changed));
    }

    void copyAndPasteOfAWaitForTheOtherConditionGivesTheFirstCondition()
    {
        CanvasFixture canvas;
        supermodule* wait = canvas.dropBehind(canvas.main(), 309);
        wait->setParamIndex(6);
        wait->setParamIndex(2);
        QCOMPARE(wait->cCode(), QStringLiteral("while(switch_state(3) != 0)\n{\nwait(0.1);\n}\n"));
        canvas.click(wait->scenePos() + QPointF(30, 30));
        canvas.key(Qt::Key_C, Qt::ControlModifier);
        canvas.key(Qt::Key_V, Qt::ControlModifier);
        QStringList texts;
        for (const supermodule* block : canvas.blocks()) {
            if (block->id == 309 && block != wait) {
                texts << block->cCode();
            }
        }
        QCOMPARE(texts, QStringList{"while(switch_state(3) == 0)\n{\nwait(0.1);\n}\n"});
    }

    void everyBlockSaysWhichParametersAreToBeModified_data() { everyBlock_data(); }

    void everyBlockSaysWhichParametersAreToBeModified()
    {
        QFETCH(int, id);
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        const std::unique_ptr<supermodule> block = newBlock(id);
        loadBlock(block.get(), expected->changed);
        const QDomElement params = block->paramsElement();
        const QString names = QString::fromLatin1(expected->params);
        if (names.isEmpty()) {
            QVERIFY(params.isNull());
            return;
        }
        QMap<QString, QString> values;
        for (const QString& name : names.split(QLatin1Char(' '))) {
            values.insert(name, parsedAttributes(expected->changed).value(name));
        }
        QCOMPARE(allAttributes(params), values);
    }

    void everyBlockDropsLinksSavesAndOpens_data() { everyBlock_data(); }

    void everyBlockDropsLinksSavesAndOpens()
    {
        QFETCH(int, id);
        if (id == 0) {
            // There is one main block, which no tab of the palette offers.
            QCOMPARE(findBlockRecord(id)->category, -1);
            return;
        }
        const Expected* expected = expectedOf(id);
        QVERIFY(expected);
        CanvasFixture canvas;
        const int width = expected->shape == Plain ? 120 : 280;
        supermodule* block = canvas.drop(id, QPointF(100 + 140 + 4 + width / 2, 190));
        QCOMPARE(canvas.main()->next(), block);
        QCOMPARE(block->pos(), QPointF(240, 200));
        QCOMPARE(block->opacity(), 1.0);
        QVERIFY(documentModified);
        QCOMPARE(block->flags() & (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable),
                 QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
        loadBlock(block, expected->changed);
        block->ownid = 0;
        const QString text = block->cCode();
        const QString code = canvas.view.generateProjectCode(1);

        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("one.tlrx"));
        QVERIFY(canvas.view.saveFile(path));
        canvas.view.newProgram();
        QVERIFY(!canvas.main()->next());
        QCOMPARE(canvas.view.openFile(path), int(ProjectOpened));
        supermodule* opened = canvas.main()->next();
        QVERIFY(opened);
        QVERIFY(expected->isClass(opened));
        QCOMPARE(opened->pos(), QPointF(240, 200));
        QCOMPARE(ownAttributes(opened), parsedAttributes(expected->changed));
        QCOMPARE(opened->cCode(), text);
        QCOMPARE(canvas.view.generateProjectCode(1), code);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void noBlockHasPythonText_data() { everyBlock_data(); }

    void noBlockHasPythonText()
    {
        QFETCH(int, id);
        QCOMPARE(newBlock(id)->pythonCode(), QString());
    }

    void everyParameterGivesItsText_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QString>("text");
        // All that have no parameter.
        QSet<int> ids{0, 102, 103, 105, 106, 109, 303, 904};
        const auto row = [&ids](int p_id, const QStringList& p_values, const QString& p_attributes,
                                const QString& p_text) {
            ids.insert(p_id);
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(p_id).arg(p_attributes)))
                << p_id << p_values << p_attributes << p_text;
        };

        // Speeds.
        const char* const speeds[] = {"30", "50", "80"};
        for (int i = 0; i < 3; ++i) {
            const QString speed = QString::fromLatin1(speeds[i]);
            row(100, {QStringLiteral("param %1").arg(i)}, QStringLiteral("n=%1").arg(i),
                "speed1 = " + speed + ";\nspeed2 = " + speed + ";\nspeed3 = " + speed +
                    ";\nspeed4 = " + speed + ";\n");
        }

        // Times, as they are typed and as they stand in the text.
        const struct {
            const char* keys;
            const char* value;
        } times[] = {{"<0.5", "0.5"}, {"<2", "2"}, {"<12.25", "12.25"}, {"<999999", "999999"},
                     {"0", "10"},     {"<", "0"},  {".75", "1.75"}};
        for (const auto& time : times) {
            const QStringList keys{QStringLiteral("keys ") + time.keys};
            const QString value = QString::fromLatin1(time.value);
            const QString n = "n=" + value;
            row(101, keys, n, "wait(" + value + ");\n");
            row(104, keys, n, timedDrive("speed1", "-speed2", value));
            row(118, keys, n, timedDrive("-speed1", "speed2", value));
            row(119, keys, n, timedDrive("-speed1", "-speed2", value));
            row(120, keys, n, timedDrive("speed1", "speed2", value));
        }

        // Motor ports "A" to "D".
        for (int i = 0; i < 4; ++i) {
            const QString choice = QStringLiteral("param %1").arg(i);
            const QString n = QStringLiteral("n=%1").arg(i);
            const QString port = QString::number(i + 1);
            const QString speed = "speed" + port;
            const QString clockwise = speed + " = -abs(" + speed + ");";
            const QString antiClockwise = speed + " = abs(" + speed + ");";
            const QString set = "set_motor(" + port + ", " + speed + ");";
            const QString timedEnd = "\nwait(2.5);\nset_motor(" + port + ", 0);\n";
            row(111, {choice}, n, clockwise + set);
            row(110, {choice}, n, antiClockwise + set);
            row(113, {choice, "keys <2.5"}, n + " time=2.5", clockwise + "\n" + set + timedEnd);
            row(112, {choice, "keys <2.5"}, n + " time=2.5", antiClockwise + "\n" + set + timedEnd);
            row(117, {choice}, n, "set_motor(" + port + ", 0);\n");
        }

        // Servos, and angles with 888 counts across 300 degrees around 512.
        for (int servo = 1; servo <= 18; ++servo) {
            row(107, {QStringLiteral("panel 1 %1").arg(servo - 1)},
                QStringLiteral("servoId=%1 angle=0").arg(servo),
                QStringLiteral("servo_ctrl(%1, 716, 512, 0);\n").arg(servo));
        }
        // Set directly, the number is the servo's own.
        row(107, {"param 5"}, "servoId=5 angle=0", "servo_ctrl(5, 716, 512, 0);\n");
        // Another parameter than the servo isn't the panel's.
        row(107, {"panel 1 4", "panel 0 7", "panel 2 7"}, "servoId=5 angle=0",
            "servo_ctrl(5, 716, 512, 0);\n");
        const struct {
            const char* keys;
            int angle;
            int position;
        } angles[] = {{"<150", 150, 68},    {"<150-", -150, 956}, {"<100", 100, 216},
                      {"<100-", -100, 808}, {"<45", 45, 379},     {"<45-", -45, 645},
                      {"<1", 1, 510},       {"<1-", -1, 514},     {"<90", 90, 246},
                      {"<90-", -90, 778},   {"<7", 7, 492},       {"<7-", -7, 532}};
        for (const auto& angle : angles) {
            row(107, {QStringLiteral("keys ") + angle.keys},
                QStringLiteral("servoId=1 angle=%1").arg(angle.angle),
                QStringLiteral("servo_ctrl(1, 716, %1, 0);\n").arg(angle.position));
        }

        // Sounds by the place in their panels.
        const struct {
            int id;
            QVector<int> sounds;
            const char* end;
        } voices[] = {{800, {25, 24, 23, 22, 21, 20, 19}, "\n"},
                      {801, {6, 7, 8, 9, 10, 11}, "\n"},
                      {802, {14, 17, 16, 15}, ""},
                      {803, {4, 1, 2, 3, 5}, ""},
                      {804, {12, 13}, "\n"}};
        for (const auto& voice : voices) {
            for (int i = 0; i < voice.sounds.size(); ++i) {
                row(voice.id, {QStringLiteral("number %1").arg(i)},
                    QStringLiteral("n=%1").arg(i + 1),
                    QStringLiteral("PlaySpeech(%1);").arg(voice.sounds.at(i)) + voice.end);
            }
        }

        // Symbols by the place in their panels, on both displays.
        const struct {
            int id;
            QVector<int> symbols;
            const char* comma;
        } symbols[] = {{900, {45, 1, 2, 3, 4, 0, 46, 47, 48, 49, 50, 51, 52}, ", "},
                       {905, {5, 6, 7, 8, 4}, ", "},
                       {902, {9, 10, 11, 12, 13, 14, 15, 16, 17, 18}, ","},
                       {906,
                        {19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31,
                         32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44},
                        ", "}};
        for (const auto& each : symbols) {
            for (int port = 2; port <= 3; ++port) {
                for (int i = 0; i < each.symbols.size(); ++i) {
                    row(each.id,
                        {QStringLiteral("number %1").arg(i),
                         QStringLiteral("param %1").arg(port - 2)},
                        QStringLiteral("port=%1 n=%2").arg(port).arg(i),
                        QStringLiteral("disp_symble(%1").arg(port) + each.comma +
                            QString::number(each.symbols.at(i)) + ");");
                }
            }
        }
        // A panel that doesn't know which of its buttons was pressed says -1.
        row(900, {"number -1"}, "port=2 n=-1", "disp_symble(2, 0);");
        row(905, {"number -1"}, "port=2 n=-1", "disp_symble(2, 0);");
        row(903, {"number -1"}, "n=0", "disp_emoji(2,3,0);");
        for (int i = 0; i < 12; ++i) {
            row(903, {QStringLiteral("number %1").arg(i)}, QStringLiteral("n=%1").arg(i + 1),
                QStringLiteral("disp_emoji(2,3,%1);").arg(i + 1));
        }
        row(901, {"param 0"}, "port=2",
            "disp_custom(2,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});");
        row(901, {"param 1"}, "port=3",
            "disp_custom(3,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});");

        // Counts, as they are typed.
        row(301, {"keys <<1"}, "n=1", "for(int i = 0;i < 1; ++i)\n{\n}");
        row(301, {"keys <<25"}, "n=25", "for(int i = 0;i < 25; ++i)\n{\n}");
        row(301, {"keys <<"}, "n=0", "for(int i = 0;i < 0; ++i)\n{\n}");
        row(301, {"keys <<999999"}, "n=999999", "for(int i = 0;i < 999999; ++i)\n{\n}");
        row(301, {"keys 0"}, "n=100", "for(int i = 0;i < 100; ++i)\n{\n}");

        // Sensors: five ports, and 5 and 6 for the two conditions.
        for (int port = 1; port <= 5; ++port) {
            for (const bool first : {true, false}) {
                const QStringList values{QStringLiteral("param %1").arg(port - 1),
                                         first ? "param 5" : "param 6"};
                const QString attributes =
                    QStringLiteral("port=%1 bInfread=%2").arg(port).arg(first ? 1 : 0);
                const QString infrared = QStringLiteral("while(TZ_AI(%1) ").arg(port) +
                                         (first ? ">" : "<") + " 500)\n{\n";
                const QString touch = QStringLiteral("while(switch_state(%1) ").arg(port) +
                                      (first ? "==" : "!=") + " 0)\n{\n";
                row(306, values, attributes, infrared + "\n}\n");
                row(307, values, attributes, touch + "\n}\n");
                row(308, values, attributes, infrared + "wait(0.1);\n}\n");
                row(309, values, attributes, touch + "wait(0.1);\n}\n");
            }
        }
        QCOMPARE(blocksBeside(ids).join(QLatin1Char('\n')), QString());
    }

    void everyParameterGivesItsText()
    {
        QFETCH(int, id);
        QFETCH(QStringList, values);
        QFETCH(QString, attributes);
        QFETCH(QString, text);
        const std::unique_ptr<supermodule> chosen = newBlock(id);
        documentModified = false;
        for (const QString& value : qAsConst(values)) {
            giveValue(chosen.get(), value);
        }
        QCOMPARE(chosen->cCode(), text);
        QCOMPARE(ownAttributes(chosen.get()), parsedAttributes(attributes));
        QVERIFY(documentModified);
        const std::unique_ptr<supermodule> loaded = newBlock(id);
        loadBlock(loaded.get(), attributes);
        QCOMPARE(loaded->cCode(), text);
        // Choosing again gives the same, also over what was loaded from a file.
        if (!values.first().startsWith(QLatin1String("keys"))) {
            for (const QString& value : qAsConst(values)) {
                if (!value.startsWith(QLatin1String("keys"))) {
                    giveValue(loaded.get(), value);
                }
            }
            QCOMPARE(loaded->cCode(), text);
        }
    }

    void aValueOutsideTheTablesGivesItsText_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QString>("text");
        const auto row = [](int p_id, const QString& p_attributes, const QString& p_text) {
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(p_id).arg(p_attributes)))
                << p_id << p_attributes << p_text;
        };
        const QString still =
            QStringLiteral("speed1 = 0;\nspeed2 = 0;\nspeed3 = 0;\nspeed4 = 0;\n");
        const QString slow =
            QStringLiteral("speed1 = 30;\nspeed2 = 30;\nspeed3 = 30;\nspeed4 = 30;\n");
        row(100, "n=3", still);
        row(100, "n=-1", still);
        row(100, "n=x", slow);
        row(100, "", slow);
        row(101, "", "wait(0);\n");
        row(101, "n=x", "wait(0);\n");
        row(101, "n=1234567", "wait(1.23457e+06);\n");
        row(104, "", timedDrive("speed1", "-speed2", "0"));
        row(117, "n=4", "set_motor(5, 0);\n");
        row(111, "", "speed1 = -abs(speed1);set_motor(1, speed1);");
        row(111, "n=2147483647",
            "speed2147483648 = -abs(speed2147483648);set_motor(2147483648, "
            "speed2147483648);");
        row(107, "", "servo_ctrl(0, 716, 512, 0);\n");
        row(107, "servoId=3 angle=300", "servo_ctrl(3, 716, -376, 0);\n");
        row(800, "n=0", "PlaySpeech(26);\n");
        row(801, "n=0", "PlaySpeech(5);\n");
        row(802, "n=5", "PlaySpeech(5);");
        row(802, "n=0", "PlaySpeech(0);");
        row(803, "n=6", "PlaySpeech(6);");
        row(803, "n=-1", "PlaySpeech(-1);");
        row(804, "n=3", "PlaySpeech(3);\n");
        row(900, "port=2 n=13", "disp_symble(2, 0);");
        row(900, "port=2 n=-1", "disp_symble(2, 0);");
        row(905, "port=2 n=5", "disp_symble(2, 0);");
        row(905, "port=2 n=-1", "disp_symble(2, 0);");
        row(902, "port=7 n=10", "disp_symble(7,19);");
        row(906, "port=2 n=-1", "disp_symble(2, 18);");
        row(903, "", "disp_emoji(2,3,0);");
        row(901, "port=9", "disp_custom(9,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});");
        row(301, "", "for(int i = 0;i < 0; ++i)\n{\n}");
        row(301, "n=-5", "for(int i = 0;i < -5; ++i)\n{\n}");
        row(306, "", "while(TZ_AI(0) < 500)\n{\n\n}\n");
        row(307, "port=9 bInfread=2", "while(switch_state(9) != 0)\n{\n\n}\n");
        row(308, "port=-1 bInfread=1", "while(TZ_AI(-1) > 500)\n{\nwait(0.1);\n}\n");
        row(309, "port=6 bInfread=true", "while(switch_state(6) != 0)\n{\nwait(0.1);\n}\n");
    }

    void aValueOutsideTheTablesGivesItsText()
    {
        QFETCH(int, id);
        QFETCH(QString, attributes);
        QFETCH(QString, text);
        const std::unique_ptr<supermodule> block = newBlock(id);
        block->ensureButtons();
        loadBlock(block.get(), attributes);
        QCOMPARE(block->cCode(), text);
        // To paint it does no harm.
        paintedBlock(block.get());
    }

    void aNewBlockGivesItsText_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("text");
        QSet<int> ids;
        const auto row = [&ids](int p_id, const QString& p_text) {
            ids.insert(p_id);
            QTest::newRow(qPrintable(QString::number(p_id))) << p_id << p_text;
        };
        row(0, "void user_main()\n{\nint speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;\n");
        row(104, timedDrive("speed1", "-speed2", "1"));
        row(118, timedDrive("-speed1", "speed2", "1"));
        row(119, timedDrive("-speed1", "-speed2", "1"));
        row(120, timedDrive("speed1", "speed2", "1"));
        row(100, "speed1 = 50;\nspeed2 = 50;\nspeed3 = 50;\nspeed4 = 50;\n");
        row(103, "set_motor(1, speed1);set_motor(2, -speed2);");
        row(102, "\nset_motor(1, -speed1);\nset_motor(2, speed2);");
        row(106, "set_motor(1, -speed1);set_motor(2, -speed2);");
        row(109, "set_motor(1, speed1);set_motor(2, speed2);");
        row(101, "wait(1);\n");
        row(105, "set_motor(1,0);set_motor(2,0);set_motor(3,0);set_motor(4,0);");
        row(111, "speed3 = -abs(speed3);set_motor(3, speed3);");
        row(113, "speed3 = -abs(speed3);\nset_motor(3, speed3);\nwait(1);\nset_motor(3, 0);\n");
        row(110, "speed3 = abs(speed3);set_motor(3, speed3);");
        row(112, "speed3 = abs(speed3);\nset_motor(3, speed3);\nwait(1);\nset_motor(3, 0);\n");
        row(117, "set_motor(3, 0);\n");
        row(107, "servo_ctrl(1, 716, 512, 0);\n");
        row(800, "PlaySpeech(25);\n");
        row(801, "PlaySpeech(6);\n");
        row(802, "PlaySpeech(14);");
        row(803, "PlaySpeech(4);");
        row(804, "PlaySpeech(12);\n");
        row(903, "disp_emoji(2,3,1);");
        row(904, "disp_custom(2,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});            "
                 "disp_custom(3,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});");
        row(902, "disp_symble(2,9);");
        row(906, "disp_symble(2, 19);");
        row(905, "disp_symble(2, 5);");
        row(900, "disp_symble(2, 45);");
        row(901, "disp_custom(2,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});");
        row(303, "while(1)\n{\n}");
        row(301, "for(int i = 0;i < 10; ++i)\n{\n}");
        row(306, "while(TZ_AI(4) > 500)\n{\n\n}\n");
        row(307, "while(switch_state(5) == 0)\n{\n\n}\n");
        row(308, "while(TZ_AI(4) > 500)\n{\nwait(0.1);\n}\n");
        row(309, "while(switch_state(5) == 0)\n{\nwait(0.1);\n}\n");
        QCOMPARE(blocksBeside(ids).join(QLatin1Char('\n')), QString());
    }

    void aNewBlockGivesItsText()
    {
        QFETCH(int, id);
        QFETCH(QString, text);
        const std::unique_ptr<supermodule> block = newBlock(id);
        QCOMPARE(block->cCode(), text);
        block->ensureButtons();
        QCOMPARE(block->cCode(), text);
    }

    void twoStatementsOnALineAndNoLineFeedInTheTextOfForward()
    {
        const QString text = newBlock(103)->cCode();
        QCOMPARE(text.count(QLatin1Char(';')), 2);
        QCOMPARE(text.count(QLatin1Char('\n')), 0);
    }

    void onlyBackwardBeginsWithALineFeed()
    {
        for (const int id : {100, 101, 102, 103, 104, 105, 106, 109, 118, 119, 120}) {
            QCOMPARE(newBlock(id)->cCode().startsWith(QLatin1Char('\n')), id == 102);
        }
    }

    void turnsKeepTheWheelsSignsEqualAndDrivesOpposite_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<bool>("equal");
        QTest::newRow("forward") << 103 << false;
        QTest::newRow("backward") << 102 << false;
        QTest::newRow("left") << 106 << true;
        QTest::newRow("right") << 109 << true;
        QTest::newRow("forward time") << 104 << false;
        QTest::newRow("backward time") << 118 << false;
        QTest::newRow("left time") << 119 << true;
        QTest::newRow("right time") << 120 << true;
    }

    void turnsKeepTheWheelsSignsEqualAndDrivesOpposite()
    {
        QFETCH(int, id);
        QFETCH(bool, equal);
        const QString text = newBlock(id)->cCode();
        const bool firstBack = text.contains(QStringLiteral("set_motor(1, -speed1);"));
        const bool secondBack = text.contains(QStringLiteral("set_motor(2, -speed2);"));
        QVERIFY(firstBack || text.contains(QStringLiteral("set_motor(1, speed1);")));
        QVERIFY(secondBack || text.contains(QStringLiteral("set_motor(2, speed2);")));
        QCOMPARE(firstBack == secondBack, equal);
    }

    void anEmptyEndlessLoopGivesBothBraces()
    {
        QCOMPARE(newBlock(303)->cCode(), QStringLiteral("while(1)\n{\n}"));
    }

    void twoBlocksInALoopUntilTouchStandOnOneLine()
    {
        supermodule* loop = createModuleFromId(307);
        supermodule* body = createModuleFromId(103);
        body->insertModule(createModuleFromId(103));
        loop->setLeftModule(body);
        QCOMPARE(loop->cCode(), QStringLiteral("while(switch_state(5) == 0)\n{\n"
                                               "set_motor(1, speed1);set_motor(2, -speed2);"
                                               "set_motor(1, speed1);set_motor(2, -speed2);\n}\n"));
        supermodule::deleteTree(loop);
    }

    void bodiesOfLoopsAreInTheirTexts_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("text");
        // The body: a turn, and a counted loop with a wait in it, and a backward behind that.
        const QString body = QStringLiteral("set_motor(1, speed1);set_motor(2, speed2);"
                                            "for(int i = 0;i < 10; ++i)\n{\nwait(1);\n}"
                                            "\nset_motor(1, -speed1);\nset_motor(2, speed2);");
        QTest::newRow("counted") << 301 << "for(int i = 0;i < 10; ++i)\n{\n" + body + "}";
        QTest::newRow("endless") << 303 << "while(1)\n{\n" + body + "}";
        QTest::newRow("until infrared") << 306 << "while(TZ_AI(4) > 500)\n{\n" + body + "\n}\n";
        QTest::newRow("until touch") << 307 << "while(switch_state(5) == 0)\n{\n" + body + "\n}\n";
    }

    void bodiesOfLoopsAreInTheirTexts()
    {
        QFETCH(int, id);
        QFETCH(QString, text);
        supermodule* loop = createModuleFromId(id);
        supermodule* body = createModuleFromId(109);
        supermodule* inner = createModuleFromId(301);
        inner->setLeftModule(createModuleFromId(101));
        body->appendModule(inner);
        body->appendModule(createModuleFromId(102));
        loop->setLeftModule(body);
        // What follows the loop is not its own.
        if (loop->hasNextConnector()) {
            loop->insertModule(createModuleFromId(105));
        }
        QCOMPARE(loop->cCode(), text);
        // A copy of the loop alone has no body.
        const std::unique_ptr<supermodule> copy(loop->clone());
        QVERIFY(!copy->left() && !copy->next());
        supermodule::deleteTree(loop);
    }

    void aPlaceWithAFractionReadsAsZero()
    {
        const std::unique_ptr<supermodule> block = newBlock(103);
        block->setPos(10.5, 20);
        QDomDocument document;
        const QDomElement element = storedBlock(block.get(), document);
        QCOMPARE(element.attribute(QStringLiteral("x")), QStringLiteral("10.5"));
        const std::unique_ptr<supermodule> loaded = newBlock(103);
        loaded->setPos(1, 1);
        loaded->loadXml(element);
        QCOMPARE(loaded->pos(), QPointF(0, 20));
        loaded->setPos(30, 40.25);
        QDomDocument second;
        const QDomElement other = storedBlock(loaded.get(), second);
        block->loadXml(other);
        QCOMPARE(block->pos(), QPointF(30, 0));
    }

    void theTextOfATimeFieldIsTheAttributeAsItStands()
    {
        for (const int id : {101, 104}) {
            for (const bool buttonsFirst : {true, false}) {
                const std::unique_ptr<supermodule> block = newBlock(id);
                if (buttonsFirst) {
                    block->ensureButtons();
                }
                loadBlock(block.get(), QStringLiteral("n=01.500"));
                QCOMPARE(block->button(0)->text(), QStringLiteral("01.500"));
                QVERIFY(block->cCode().contains(QStringLiteral("wait(1.5);")));
                const std::unique_ptr<supermodule> copy(block->clone());
                QCOMPARE(copy->button(0)->text(), QStringLiteral("1.5"));
            }
        }
    }

    void aPortFromAFileIsTakenAsItStands()
    {
        for (const int id : {306, 307, 308, 309}) {
            const std::unique_ptr<supermodule> block = newBlock(id);
            block->ensureButtons();
            loadBlock(block.get(), QStringLiteral("port=99 bInfread=1"));
            QCOMPARE(block->button(1)->text(), QStringLiteral("99"));
            QCOMPARE(ownAttributes(block.get()).value(QStringLiteral("port")),
                     QStringLiteral("99"));
        }
    }

    void closingBothDisplaysGivesBothCallsOnOneLine()
    {
        const QString text = newBlock(904)->cCode();
        QCOMPARE(text.count(QStringLiteral("disp_custom(")), 2);
        QVERIFY(!text.contains(QLatin1Char('\n')));
    }

    void aCopyOfASpeedKeepsTheChangedSpeed()
    {
        const std::unique_ptr<supermodule> block = newBlock(100);
        block->setParamIndex(0);
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->cCode(),
                 QStringLiteral("speed1 = 30;\nspeed2 = 30;\nspeed3 = 30;\nspeed4 = 30;\n"));
    }

    void aCopiedStopStandsOnPortCAgain()
    {
        const std::unique_ptr<supermodule> block = newBlock(117);
        block->setParamIndex(0);
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->button(0)->text(), QStringLiteral("C"));
        QCOMPARE(copy->cCode(), QStringLiteral("set_motor(3, 0);\n"));
    }

    void aNewMotorTurnsClockwiseOnPortC()
    {
        QCOMPARE(newBlock(111)->cCode(),
                 QStringLiteral("speed3 = -abs(speed3);set_motor(3, speed3);"));
    }

    void servo18AtAngle0()
    {
        const std::unique_ptr<supermodule> block = newBlock(107);
        block->setPanelValue(1, 17);
        QCOMPARE(block->cCode(), QStringLiteral("servo_ctrl(18, 716, 512, 0);\n"));
    }

    void theFifthPictureOfHelloIsSound5AndTheFirstSound4()
    {
        const std::unique_ptr<supermodule> block = newBlock(803);
        block->setNumberKey(4);
        QCOMPARE(block->cCode(), QStringLiteral("PlaySpeech(5);"));
        block->setNumberKey(0);
        QCOMPARE(block->cCode(), QStringLiteral("PlaySpeech(4);"));
    }

    void doOnThePianoIsSound25()
    {
        const std::unique_ptr<supermodule> block = newBlock(800);
        block->setNumberKey(6);
        QCOMPARE(block->cCode(), QStringLiteral("PlaySpeech(19);\n"));
        block->setNumberKey(0);
        QCOMPARE(block->cCode(), QStringLiteral("PlaySpeech(25);\n"));
        // The piano alone takes the pop-up's index, too.
        block->setParamIndex(2);
        QCOMPARE(block->cCode(), QStringLiteral("PlaySpeech(23);\n"));
    }

    void aNewSoundBlockPlaysTheFirstOfItsPanel()
    {
        for (const int id : {800, 801, 802, 803, 804}) {
            const std::unique_ptr<supermodule> block = newBlock(id);
            const QString fresh = block->cCode();
            block->setNumberKey(1);
            QVERIFY(block->cCode() != fresh);
            block->setNumberKey(0);
            QCOMPARE(block->cCode(), fresh);
        }
    }

    void newSymbolsAreTheFirstOfTheirPanels()
    {
        QCOMPARE(newBlock(900)->cCode(), QStringLiteral("disp_symble(2, 45);"));
        QCOMPARE(newBlock(902)->cCode(), QStringLiteral("disp_symble(2,9);"));
        QCOMPARE(newBlock(906)->cCode(), QStringLiteral("disp_symble(2, 19);"));
    }

private:
    QTranslator m_english;
};

QTEST_MAIN(CatalogueTest)
#include "cataloguetest.moc"
