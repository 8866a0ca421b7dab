#include "modules/catalogue/blockcatalogue.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/singleblock.h"
#include "support/system/datatable.h"

#include <QAbstractButton>
#include <QGraphicsPixmapItem>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

#include <typeinfo>

namespace
{
/** The name of a block's own class. */
QString className(const supermodule* p_module)
{
    // Mangled, it stands behind its length.
    QString name = QString::fromLatin1(typeid(*p_module).name());
    return name.remove(QRegularExpression(QStringLiteral("^\\d+")));
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
} // namespace

Q_DECLARE_METATYPE(const BlockData*)

class CatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_english.load(QStringLiteral(":/vantrel_en.qm")));
        // The tables are built at their first use, with the translator in force then.
        QVERIFY(QCoreApplication::installTranslator(&m_english));
    }

    void theRecordsAreThoseOfTheDataInItsOrder()
    {
        QStringList found;
        for (const CatalogueRow* row = catalogueBegin(); row != catalogueEnd(); ++row) {
            found << QString::number(row->id) + ' ' + QString::fromUtf8(row->caption);
        }
        QStringList expected;
        for (const BlockData& data : blockData()) {
            expected << QString::number(data.id()) + ' ' + data.value("caption");
        }
        for (int i = 0; i < qMax(found.size(), expected.size()); ++i) {
            QVERIFY2(found.value(i) == expected.value(i),
                     qPrintable(QStringLiteral("place %1: \"%2\" in the catalogue, \"%3\" in "
                                               "tests/data/blocks.json")
                                    .arg(QString::number(i), found.value(i), expected.value(i))));
        }
    }

    void everyBlock_data()
    {
        QTest::addColumn<const BlockData*>("expected");
        for (const BlockData& data : blockData()) {
            QTest::newRow(qPrintable(QString::number(data.id()) + ' ' + data.value("english")))
                << &data;
        }
    }

    void everyBlockHasItsRecordWithPictureAndEnglishCaption_data() { everyBlock_data(); }

    void everyBlockHasItsRecordWithPictureAndEnglishCaption()
    {
        QFETCH(const BlockData*, expected);
        const BlockRecord* record = findBlockRecord(expected->id());
        QVERIFY(record);
        QCOMPARE(record->category, expected->category());
        QCOMPARE(record->image, expected->value("picture"));
        QCOMPARE(record->pressedImage, record->image);
        QCOMPARE(record->caption, expected->value("english"));
        QVERIFY(record->draggable);
        QVERIFY2(!QPixmap(record->image).isNull(), qPrintable(record->image));
    }

    void everyBlockIsBuiltByTheFactoryWithItsConnectors_data() { everyBlock_data(); }

    void everyBlockIsBuiltByTheFactoryWithItsConnectors()
    {
        QFETCH(const BlockData*, expected);
        const int id = expected->id();
        const std::unique_ptr<supermodule> block = newBlock(id);
        QVERIFY(block);
        QCOMPARE(className(block.get()), expected->value("class"));
        QCOMPARE(block->id, id);
        QCOMPARE(block->text(), expected->value("english"));
        QCOMPARE(block->toolTip(), expected->value("english"));
        QCOMPARE(block->imagePath(), expected->value("picture"));
        QCOMPARE(block->pressedPath(), expected->value("picture"));

        const QString shape = expected->value("shape");
        const bool loop = expected->isLoop();
        const collisionItem* next = block->connector(NextLink);
        const collisionItem* left = block->connector(LeftLink);
        QVERIFY(!block->connector(RightLink));
        QCOMPARE(next == nullptr, shape == QLatin1String("endless"));
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
            QCOMPARE(left->pos(), QPointF(shape == QLatin1String("conditional") ? 40 : 100, 30));
        }
        QCOMPARE(block->boundingRect(), loop      ? QRectF(0, -20, 280, 140)
                                        : id == 0 ? QRectF(0, 0, 140, 120)
                                                  : QRectF(0, 0, 120, 140));
    }

    void everyBlockHasItsCopyFrameAndGivesItToCopies_data() { everyBlock_data(); }

    void everyBlockHasItsCopyFrameAndGivesItToCopies()
    {
        QFETCH(const BlockData*, expected);
        const int id = expected->id();
        const QString path = expected->value("copyFrame");
        // Every block that can be copied has one.
        QCOMPARE(QPixmap(path).isNull(), id == 0);
        const QImage picture = QPixmap(path).toImage();
        const std::unique_ptr<supermodule> block = newBlock(id);
        // The buttons lie on the frame, although they are older.
        block->buttonCount();
        QGraphicsItem* frame = &block->selectItem();
        const QList<QGraphicsItem*> parts = block->childItems();
        for (int i = 0; i < parts.size(); ++i) {
            QVERIFY(parts.at(i)->type() != ButtonItemType || parts.indexOf(frame) < i);
        }
        const auto shows = [&](supermodule& p_block) {
            return p_block.selectItem().pixmap().toImage() == picture;
        };
        QVERIFY(shows(*block));
        QVERIFY(!block->selectItem().isVisible());
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(!copy, id == 0);
        if (copy) {
            copy->createCollisions();
            QVERIFY(shows(*copy));
        }
        const std::unique_ptr<supermodule> bare(createModule(id, QString(), QString(), QString()));
        bare->createCollisions();
        QVERIFY(shows(*bare));
    }

    void everyBlockStoresAndLoadsItsAttributes_data() { everyBlock_data(); }

    void everyBlockStoresAndLoadsItsAttributes()
    {
        QFETCH(const BlockData*, expected);
        const int id = expected->id();
        const std::unique_ptr<supermodule> block = newBlock(id);
        QCOMPARE(ownAttributes(block.get()), parsedAttributes(expected->value("new")));
        loadBlock(block.get(), expected->value("changed"));
        QCOMPARE(ownAttributes(block.get()), parsedAttributes(expected->value("changed")));
        // The same with a button's widget made, which shows some of the values.
        const std::unique_ptr<supermodule> seen = newBlock(id);
        seen->button(0);
        loadBlock(seen.get(), expected->value("changed"));
        QCOMPARE(ownAttributes(seen.get()), parsedAttributes(expected->value("changed")));
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
        QCOMPARE(element.attributes().size(),
                 5 + parsedAttributes(expected->value("changed")).size());
        const std::unique_ptr<supermodule> loaded = newBlock(id);
        loaded->loadXml(element);
        QCOMPARE(loaded->pos(), QPointF(12, -34));
        QCOMPARE(loaded->ownid, 404);
        QCOMPARE(loaded->moduleKey, 77);
        QCOMPARE(ownAttributes(loaded.get()), parsedAttributes(expected->value("changed")));
    }

    void everyBlockIsCopiedWithWhatItsCopyKeeps_data() { everyBlock_data(); }

    void everyBlockIsCopiedWithWhatItsCopyKeeps()
    {
        QFETCH(const BlockData*, expected);
        const int id = expected->id();
        const std::unique_ptr<supermodule> block = newBlock(id);
        loadBlock(block.get(), expected->value("changed"));
        const std::unique_ptr<supermodule> copy(block->clone());
        if (id == 0) {
            QVERIFY(!copy);
            return;
        }
        QVERIFY(copy);
        QCOMPARE(className(copy.get()), expected->value("class"));
        QCOMPARE(ownAttributes(copy.get()), parsedAttributes(expected->copied()));
        // The source keeps what it has.
        QCOMPARE(ownAttributes(block.get()), parsedAttributes(expected->value("changed")));
    }

    void everyBlockIsPastedWithWhatItsCopyKeeps_data() { everyBlock_data(); }

    void everyBlockIsPastedWithWhatItsCopyKeeps()
    {
        QFETCH(const BlockData*, expected);
        const int id = expected->id();
        if (id == 0) {
            return;
        }
        CanvasFixture canvas;
        supermodule* block = canvas.drop(id, QPointF(500, 350));
        loadBlock(block, expected->value("changed"));
        block->setPos(400, 350);
        const QList<supermodule*> before = canvas.blocks();
        canvas.rightClick(block->scenePos() + QPointF(30, 30));
        canvas.view.OnCopyAndPaste();
        for (const supermodule* pasted : canvas.blocks()) {
            if (!before.contains(const_cast<supermodule*>(pasted))) {
                QCOMPARE(className(pasted), expected->value("class"));
                QCOMPARE(ownAttributes(pasted), parsedAttributes(expected->copied()));
                QCOMPARE(pasted->scenePos(), QPointF(560, 510));
            }
        }
        QCOMPARE(canvas.blocks().size(), before.size() + 1);
        QCOMPARE(ownAttributes(block), parsedAttributes(expected->value("changed")));
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
        QFETCH(const BlockData*, expected);
        const std::unique_ptr<supermodule> block = newBlock(expected->id());
        loadBlock(block.get(), expected->value("changed"));
        const QDomElement params = block->paramsElement();
        const QString names = expected->value("modified");
        if (names.isEmpty()) {
            QVERIFY(params.isNull());
            return;
        }
        QMap<QString, QString> values;
        for (const QString& name : names.split(QLatin1Char(' '))) {
            values.insert(name, parsedAttributes(expected->value("changed")).value(name));
        }
        QCOMPARE(allAttributes(params), values);
    }

    void everyBlockDropsLinksSavesAndOpens_data() { everyBlock_data(); }

    void everyBlockDropsLinksSavesAndOpens()
    {
        QFETCH(const BlockData*, expected);
        const int id = expected->id();
        if (id == 0) {
            // There is one main block, which no tab of the palette offers.
            QCOMPARE(findBlockRecord(id)->category, -1);
            return;
        }
        CanvasFixture canvas;
        const int width = expected->isLoop() ? 280 : 120;
        supermodule* block = canvas.drop(id, QPointF(100 + 140 + 4 + width / 2, 190));
        QCOMPARE(canvas.main()->next(), block);
        QCOMPARE(block->pos(), QPointF(240, 200));
        QCOMPARE(block->opacity(), 1.0);
        QVERIFY(documentModified);
        QCOMPARE(block->flags() & (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable),
                 QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
        loadBlock(block, expected->value("changed"));
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
        QCOMPARE(className(opened), expected->value("class"));
        QCOMPARE(opened->pos(), QPointF(240, 200));
        QCOMPARE(ownAttributes(opened), parsedAttributes(expected->value("changed")));
        QCOMPARE(opened->cCode(), text);
        QCOMPARE(canvas.view.generateProjectCode(1), code);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void noBlockHasPythonText_data() { everyBlock_data(); }

    void noBlockHasPythonText()
    {
        QFETCH(const BlockData*, expected);
        QCOMPARE(newBlock(expected->id())->pythonCode(), QString());
    }

    void everyParameterGivesItsText_data()
    {
        columns<int, QStringList, QString, QString>("id", "values", "attributes", "text");
        for (const BlockData& data : blockData()) {
            const auto choices = data.choices();
            QCOMPARE(choices.isEmpty(), data.value("new").isEmpty());
            for (const BlockData::Choice& choice : choices) {
                QTest::newRow(
                    qPrintable(QStringLiteral("%1 %2").arg(data.id()).arg(choice.attributes)))
                    << data.id() << choice.give << choice.attributes
                    << data.text(choice.attributes);
            }
        }
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

    void aValueFromAFileGivesItsText_data()
    {
        columns<int, QString, QString>("id", "attributes", "text");
        for (const BlockData& data : blockData()) {
            const QMap<QString, QString> texts = data.oddTexts();
            for (auto it = texts.begin(); it != texts.end(); ++it) {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(data.id()).arg(it.key())))
                    << data.id() << it.key() << it.value();
            }
        }
    }

    void aValueFromAFileGivesItsText()
    {
        QFETCH(int, id);
        QFETCH(QString, attributes);
        QFETCH(QString, text);
        const std::unique_ptr<supermodule> block = newBlock(id);
        block->button(0);
        loadBlock(block.get(), attributes);
        QCOMPARE(block->cCode(), text);
        // To paint it does no harm.
        paintedBlock(block.get());
    }

    void aNewBlockGivesItsText_data() { everyBlock_data(); }
    void aNewBlockGivesItsText()
    {
        QFETCH(const BlockData*, expected);
        const QString text = expected->text(expected->value("new"));
        const std::unique_ptr<supermodule> block = newBlock(expected->id());
        QCOMPARE(block->cCode(), text);
        block->button(0);
        QCOMPARE(block->cCode(), text);
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
        columns<int, QString>("id", "text");
        // The body: a turn, and a counted loop with a wait in it, and a backward behind that.
        const QString body = QStringLiteral("set_motor(1, speed1);set_motor(2, speed2);"
                                            "for(int i = 0;i < 10; ++i)\n{\nwait(1);\n}"
                                            "\nset_motor(1, -speed1);\nset_motor(2, speed2);");
        for (const BlockData& data : blockData()) {
            if (data.isLoop()) {
                QTest::newRow(qPrintable(data.value("class")))
                    << data.id() << data.text(data.value("new"), body);
            }
        }
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
        if (loop->hasConnector(NextLink)) {
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
                    block->button(0);
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
            block->button(0);
            loadBlock(block.get(), QStringLiteral("port=99 bInfread=1"));
            QCOMPARE(block->button(1)->text(), QStringLiteral("99"));
            QCOMPARE(ownAttributes(block.get()).value(QStringLiteral("port")),
                     QStringLiteral("99"));
        }
    }

    void aCopiedStopStandsOnPortCAgain()
    {
        const std::unique_ptr<supermodule> block = newBlock(117);
        block->setParamIndex(0);
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->button(0)->text(), QStringLiteral("C"));
        QCOMPARE(copy->cCode(), QStringLiteral("set_motor(3, 0);\n"));
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

private:
    QTranslator m_english;
};

QTEST_MAIN(CatalogueTest)
#include "cataloguetest.moc"
