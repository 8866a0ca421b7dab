#include "document/tzprogramscene.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentpicture.h"
#include "support/canvas/singleblock.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
/** A value as a file holds it, and what a field of whole numbers and one of seconds make of it. */
struct Value {
    const char* text;
    const char* number;
    const char* seconds;
};

const QVector<Value>& values()
{
    static const QVector<Value> s_values = [] {
        QVector<Value> all{
            // The ends of what a number can be, and one more.
            {"2147483647", "2147483647", "2147483648"},
            {"-2147483648", "-2147483648", "-2147483648"},
            {"2147483648", "0", "2147483648"},
            {"-2147483649", "0", "-2147483648"},
            {"4294967297", "0", "4294967296"},
            {"1e400", "0", "inf"},
            {"-1e400", "0", "-inf"},
            {"inf", "0", "inf"},
            {"nan", "0", "nan"},
            // Points and signs.
            {"1.5", "0", "1.5"},
            {"-0.25", "0", "-0.25"},
            {"1e1", "0", "10"},
            {"+3", "3", "3"},
            {" 4 ", "4", "4"},
        };
        // Around the ends of the choosers and of the fields.
        for (const char* same :
             {"-1", "0",  "1",  "2",  "3",  "4",  "5",    "6",   "7",   "8",    "10",
              "12", "13", "18", "19", "26", "53", "-150", "150", "151", "-151", "1000000"}) {
            all.append({same, same, same});
        }
        for (const char* nought : {"1e-400", "1,5", "-0", "0x10", "", "A", "E", "port 3", "true",
                                   "%1 %2", "&lt;/module&gt;", "五"}) {
            all.append({nought, "0", "0"});
        }
        return all;
    }();
    return s_values;
}

bool isSeconds(int p_id, const QString& p_attribute)
{
    const bool timed = QVector<int>{101, 104, 118, 119, 120}.contains(p_id);
    return p_attribute == QLatin1String("time") || (timed && p_attribute == QLatin1String("n"));
}

/** What a value becomes in the attribute of a block, once it is saved again. */
QString taken(int p_id, const QString& p_attribute, const Value& p_value)
{
    if (p_attribute == QLatin1String("bInfread")) {
        return QString::fromLatin1(p_value.number) == QLatin1String("1") ? "1" : "0";
    }
    return QString::fromLatin1(isSeconds(p_id, p_attribute) ? p_value.seconds : p_value.number);
}

/** The attributes of a type after the first choice of all its choosers and the key 7. */
QString setRight(int p_id, const QString& p_attribute)
{
    const bool typed = isSeconds(p_id, p_attribute) || p_id == 301;
    if (typed || p_attribute == QLatin1String("angle")) {
        return QStringLiteral("7");
    }
    const bool fromOne = p_id == 800 || p_id == 801 || p_id == 802 || p_id == 803 || p_id == 804 ||
                         p_id == 903 || p_attribute == QLatin1String("servoId") ||
                         p_attribute == QLatin1String("bInfread");
    if (p_attribute == QLatin1String("port")) {
        return QString::number(p_id >= 900 ? 2 : 1);
    }
    return QString::number(fromOne ? 1 : 0);
}
} // namespace

/**
 * Opens projects whose blocks hold values that no chooser gives, each attribute of each type by
 * itself: they are read by the rules, drawn, generated, saved, deleted and brought back, copied,
 * and set right by the choosers.
 */
class BadValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_canvas = std::make_unique<CanvasFixture>();
        connect(&view(), &TzProgramView::showNumKeyboardSignal, this,
                [this] { m_asked = QStringLiteral("keys"); });
        connect(&view(), &TzProgramView::showVoiceSignal, this,
                [this] { m_asked = QStringLiteral("list"); });
        connect(&view(), &TzProgramView::showExpressionSignal, this,
                [this] { m_asked = QStringLiteral("list"); });
        connect(&view(), &TzProgramView::showPanelSignal, this, [this](int p_type) {
            m_asked = p_type == 2 ? QStringLiteral("parameter") : QStringLiteral("list");
        });
    }

    void cleanup()
    {
        m_blocks.clear();
        m_canvas.reset();
        QVERIFY(moduleMap.isEmpty());
    }

    void everyBadValueIsReadAndKept_data() { everyAttribute(); }

    void everyBadValueIsReadAndKept()
    {
        QFETCH(int, id);
        QFETCH(QString, attribute);
        QVERIFY(open(id, attribute));
        BlockAttributes expected =
            ownAttributes(std::unique_ptr<supermodule>(createModuleFromId(id)).get());
        for (int i = 0; i < values().size(); ++i) {
            expected[attribute] = taken(id, attribute, values().at(i));
            const BlockAttributes own = ownAttributes(m_blocks.at(i));
            QVERIFY2(own == expected,
                     qPrintable(QStringLiteral("%1, by taken() of this test %2")
                                    .arg(joinedAttributes(own), joinedAttributes(expected))));
        }
        draw();
        view().fitInView(view().scene()->itemsBoundingRect(), Qt::KeepAspectRatio);
        view().viewport()->grab();

        // In the program, one behind the other, each gives its text and no placeholder is left.
        supermodule* last = m_canvas->main();
        QString text = last->cCode();
        for (supermodule* block : qAsConst(m_blocks)) {
            last->insertModule(block);
            text += block->cCode();
            last = block;
        }
        QVERIFY(!text.contains(QLatin1Char('%')));
        const QString code = view().generateProjectCode(1);
        QCOMPARE(
            code.simplified().remove(QLatin1Char(' ')),
            QString("#include \"vantrel.h\"\n" + text + "}").simplified().remove(QLatin1Char(' ')));
        view().generateProjectCode(2);
        m_canvas->main()->updateTreeAndOpacity();
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        const QString path = m_dir->filePath(QStringLiteral("again.tlrx"));
        QVERIFY(view().saveFile(path));
        QCOMPARE(view().openFile(path), int(ProjectOpened));
        QCOMPARE(view().generateProjectCode(1), code);
    }

    void aBlockWithABadValueIsDeletedBroughtBackAndCopied_data() { everyAttribute(); }

    void aBlockWithABadValueIsDeletedBroughtBackAndCopied()
    {
        QFETCH(int, id);
        QFETCH(QString, attribute);
        QVERIFY(open(id, attribute));
        QStringList texts;
        QVector<BlockAttributes> before;
        for (const supermodule* block : qAsConst(m_blocks)) {
            texts << block->cCode();
            before << ownAttributes(block);
        }
        const QVector<QPointF> places = [this] {
            QVector<QPointF> all;
            for (const supermodule* block : qAsConst(m_blocks)) {
                all << block->pos();
            }
            return all;
        }();
        for (supermodule* block : qAsConst(m_blocks)) {
            view().deleteModule(block);
        }
        QCOMPARE(m_canvas->blocks().size(), 1);
        const auto bringBack = [this] {
            while (view().undoStack().canUndo()) {
                view().undoStack().undo();
            }
        };
        const auto asBefore = [&] {
            QStringList wrong;
            QList<supermodule*> blocks = m_canvas->blocks();
            for (int i = 0; i < places.size(); ++i) {
                const auto it =
                    std::find_if(blocks.cbegin(), blocks.cend(), [&](supermodule* p_block) {
                        return p_block->pos() == places.at(i) && p_block->id == id;
                    });
                if (it == blocks.cend() || (*it)->cCode() != texts.at(i) ||
                    ownAttributes(*it) != before.at(i)) {
                    wrong << QString::fromUtf8(values().at(i).text);
                }
            }
            return wrong;
        };
        bringBack();
        QCOMPARE(asBefore(), QStringList());
        draw();
        while (view().undoStack().canRedo()) {
            view().undoStack().redo();
        }
        QCOMPARE(m_canvas->blocks().size(), 1);
        bringBack();
        QCOMPARE(asBefore(), QStringList());
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());

        // Some of them copied, as the menu does.
        const QList<supermodule*> sources = m_canvas->blocks();
        QStringList copies;
        for (int i = 0; i < sources.size(); i += 6) {
            if (sources.at(i)->id == id) {
                copies << std::unique_ptr<supermodule>(sources.at(i)->clone())->cCode();
                view().centerOn(sources.at(i));
                m_canvas->press(sources.at(i)->scenePos() + QPointF(30, 30), Qt::RightButton);
                view().contextMenu().close();
                view().OnCopyAndPaste();
            }
        }
        QVERIFY(copies.size() > 5);
        QStringList pasted;
        for (supermodule* block : m_canvas->blocks()) {
            if (!sources.contains(block)) {
                pasted << block->cCode();
            }
        }
        pasted.sort();
        copies.sort();
        QCOMPARE(pasted, copies);
        bringBack();
        QCOMPARE(m_canvas->blocks().size(), sources.size());
    }

    void aBlockWithABadValueIsSetRightByItsChoosers_data() { everyAttribute(); }

    void aBlockWithABadValueIsSetRightByItsChoosers()
    {
        QFETCH(int, id);
        QFETCH(QString, attribute);
        QVERIFY(open(id, attribute));
        for (supermodule* block : qAsConst(m_blocks)) {
            QVERIFY(block->button(0));
            BlockAttributes expected;
            for (const QString& each : ownAttributes(block).keys()) {
                expected.insert(each, setRight(id, each));
            }
            for (int button = 0; block->button(button); ++button) {
                use(block, button);
            }
            QVERIFY2(ownAttributes(block) == expected,
                     qPrintable(QStringLiteral("%1, by setRight() of this test %2")
                                    .arg(joinedAttributes(ownAttributes(block)),
                                         joinedAttributes(expected))));
            // A choice is none of the steps that can be taken back.
            QCOMPARE(view().undoStack().count(), 0);
        }
        draw();
        // Each gives the very text of the first.
        for (const supermodule* block : qAsConst(m_blocks)) {
            QCOMPARE(block->cCode(), m_blocks.first()->cCode());
        }
    }

    void aFieldWithABadValueTakesEveryKey_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("attribute");
        for (const int id : {101, 104, 118, 119, 120, 301}) {
            QTest::newRow(qPrintable(QString::number(id))) << id << "n";
        }
        QTest::newRow("112") << 112 << "time";
        QTest::newRow("113") << 113 << "time";
        QTest::newRow("107") << 107 << "angle";
    }

    void aFieldWithABadValueTakesEveryKey()
    {
        QFETCH(int, id);
        QFETCH(QString, attribute);
        QVERIFY(open(id, attribute));
        const QVector<int> keys{Qt::Key_Backspace, Qt::Key_5,     Qt::Key_Minus,
                                Qt::Key_Period,    Qt::Key_Minus, Qt::Key_Backspace,
                                Qt::Key_Backspace, Qt::Key_A,     Qt::Key_0,
                                Qt::Key_Period,    Qt::Key_9};
        for (supermodule* block : qAsConst(m_blocks)) {
            // The block always has what its field shows.
            for (const int key : keys) {
                block->setNumberKey(key);
                QString shown = block->button(0)->text();
                shown.remove(QChar(0xb0));
                const QString value = ownAttributes(block).value(attribute);
                if (isSeconds(id, attribute)) {
                    QCOMPARE(value.toFloat(), shown.toFloat());
                } else {
                    QCOMPARE(value, QString::number(shown.toInt()));
                }
                QVERIFY(!block->cCode().isEmpty());
            }
            // An emptied field is one like any other, however it came to be so long.
            for (int i = 0; i < 40; ++i) {
                block->setNumberKey(Qt::Key_Backspace);
            }
            if (id != 107) {
                QCOMPARE(block->button(0)->text(), QString());
            }
        }
        draw();
    }

    void aChoiceThatIsNotThereIsDrawnAsNoPicture_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::newRow("speed") << 100 << 0 << 2;
        QTest::newRow("animal") << 801 << 1 << 6;
        QTest::newRow("mood") << 802 << 1 << 4;
        QTest::newRow("hello") << 803 << 1 << 5;
        QTest::newRow("traffic") << 804 << 1 << 2;
        QTest::newRow("symbol") << 900 << 0 << 12;
        QTest::newRow("number") << 902 << 0 << 9;
        QTest::newRow("arithmetic") << 905 << 0 << 4;
        QTest::newRow("letter") << 906 << 0 << 25;
        QTest::newRow("expression") << 903 << 1 << 12;
    }

    void aChoiceThatIsNotThereIsDrawnAsNoPicture()
    {
        QFETCH(int, id);
        QFETCH(int, first);
        QFETCH(int, last);
        const auto painted = [id](int p_choice) {
            const std::unique_ptr<supermodule> block(createModuleFromId(id));
            loadBlock(block.get(), QStringLiteral("n=%1").arg(p_choice));
            return paintedBlock(block.get());
        };
        // The body is there in any case.
        const QImage bare = painted(1000);
        QVERIFY(bare != emptyGround());
        for (int choice = first; choice <= last; ++choice) {
            QVERIFY2(painted(choice) != bare, qPrintable(QString::number(choice)));
        }
        for (const int choice : {first - 1, last + 1, -1000, std::numeric_limits<int>::max(),
                                 std::numeric_limits<int>::min()}) {
            QVERIFY2(painted(choice) == bare, qPrintable(QString::number(choice)));
        }
    }

    void aPortThatIsNotThereHasNoLetter()
    {
        for (const int id : {110, 111, 112, 113, 117}) {
            QVERIFY(open(id, QStringLiteral("n")));
            const int button = id == 112 || id == 113 ? 1 : 0;
            for (int i = 0; i < values().size(); ++i) {
                const int port = QByteArray(values().at(i).number).toInt();
                const QString letter =
                    0 <= port && port < 4 ? QStringLiteral("ABCD").mid(port, 1) : QString();
                QCOMPARE(m_blocks.at(i)->button(button)->text(), letter);
            }
        }
    }

private:
    void everyAttribute()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("attribute");
        for (const BlockRecord& record : blockRecords()) {
            const std::unique_ptr<supermodule> block(createModuleFromId(record.id));
            for (const QString& attribute : ownAttributes(block.get()).keys()) {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(record.id).arg(attribute)))
                    << record.id << attribute;
            }
        }
    }

    /** Opens a project of loose blocks of a type, one for each value of one attribute. */
    bool open(int p_id, const QString& p_attribute)
    {
        BlockAttributes attributes =
            ownAttributes(std::unique_ptr<supermodule>(createModuleFromId(p_id)).get());
        QByteArray content("<!DOCTYPE vantrel>\n<vantrel><basenode><module id=\"0\"/></basenode>");
        int place = 0;
        for (const Value& value : values()) {
            attributes[p_attribute] = QString::fromUtf8(value.text);
            content += "<basenode><module id=\"" + QByteArray::number(p_id) + "\" x=\"" +
                       QByteArray::number(300 * (place % 8)) + "\" y=\"" +
                       QByteArray::number(400 + 250 * (place / 8)) + '"';
            for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
                content += ' ' + it.key().toUtf8() + "=\"" + it.value().toUtf8() + '"';
            }
            content += "/></basenode>";
            ++place;
        }
        const QString path = m_dir->filePath(QStringLiteral("bad.tlrx"));
        if (!writeWhole(path, content + "</vantrel>") || view().openFile(path) != ProjectOpened) {
            return false;
        }
        m_blocks.fill(nullptr, values().size());
        for (supermodule* block : m_canvas->blocks()) {
            if (block->id == p_id) {
                const int column = static_cast<int>(block->x()) / 300;
                const int row = (static_cast<int>(block->y()) - 400) / 250;
                m_blocks[row * 8 + column] = block;
            }
        }
        return !m_blocks.contains(nullptr) && m_canvas->brokenInvariants().isEmpty();
    }

    TzProgramView& view() { return m_canvas->view; }
    /** Draws everything as large as it is, buttons and all. */
    void draw()
    {
        const QRectF all = view().scene()->itemsBoundingRect();
        QImage image(all.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        view().scene()->render(&painter, QRectF(), all);
    }

    /** Presses a block's button and takes the first of what opens, or types a 7. */
    void use(supermodule* p_module, int p_button)
    {
        m_asked.clear();
        p_module->button(p_button)->click();
        if (m_asked == QLatin1String("keys")) {
            view().OnSelectNumberSignal(Qt::Key_7);
        } else if (m_asked == QLatin1String("list")) {
            view().OnSelectNumberSignal(0);
        } else if (m_asked == QLatin1String("parameter")) {
            view().onEditParamSignal(1, 0);
        } else {
            QVERIFY(graphicsItem_Param::existing());
            QVERIFY(graphicsItem_Param::existing()->isVisible());
            graphicsItem_Param::existing()->buttons().first()->click();
        }
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<CanvasFixture> m_canvas;
    /** In the order of the values. */
    QVector<supermodule*> m_blocks;
    QString m_asked;
};

QTEST_MAIN(BadValuesTest)
#include "badvaluestest.moc"
