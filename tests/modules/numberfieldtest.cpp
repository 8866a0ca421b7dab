#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "parameterbench.h"
#include "proj/controls/selectablebutton.h"
#include "support/canvas/singleblock.h"
#include "support/system/datatable.h"
#include "support/system/paintwatch.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
/** The blocks with a field for seconds, a count and an angle, and what a file calls their value. */
struct Field {
    int id;
    const char* attribute;
};

const Field s_fields[] = {{101, "n"},    {104, "n"},    {118, "n"}, {119, "n"},    {120, "n"},
                          {112, "time"}, {113, "time"}, {301, "n"}, {107, "angle"}};

QString with(const Field& p_field, const QString& p_value)
{
    return QString::fromLatin1(p_field.attribute) + QLatin1Char('=') + p_value;
}

/** What the canvas shows of an area. */
QImage picture(Bench& p_bench, const QRectF& p_area)
{
    QImage image(p_area.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QPainter painter(&image);
    p_bench.view.scene()->render(&painter, QRectF(QPointF(0, 0), p_area.size()), p_area);
    return image;
}

/** The stored form of a value in a file: it as a float, widened. */
QString widened(const QString& p_value)
{
    return QString::number(static_cast<double>(p_value.toFloat()), 'g', 17);
}

void allFields(const QStringList& p_values)
{
    columns<int, QString>("id", "values");
    for (const Field& field : s_fields) {
        for (const QString& value : p_values) {
            QTest::addRow("%d with %s", field.id, qPrintable(value))
                << field.id << with(field, value);
        }
    }
}
} // namespace

/** What the number fields of blocks show, and that it stays in their place. */
class NumberFieldTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void aFieldKeepsItsPlaceForEveryText_data()
    {
        allFields({QStringLiteral("0.40000000596046448"), QStringLiteral("2000000000"),
                   QStringLiteral("-2147483648"), QStringLiteral("123456.78"),
                   QStringLiteral("a-text-that-is-no-number-and-has-no-end")});
    }

    void aFieldKeepsItsPlaceForEveryText()
    {
        QFETCH(int, id);
        QFETCH(QString, values);
        supermodule* block = m_bench->drop(id, {500, 330});
        const QPointF place = block->pos();
        loadBlock(block, values);
        block->setPos(place);
        const QRectF field = Bench::placeOf(block, 0);
        const QRectF around = block->sceneBoundingRect().adjusted(-100, 0, 100, 60);
        // What is painted while there is no widget.
        const QImage atRest = picture(*m_bench, around);
        QAbstractButton* button = block->button(0);
        const QGraphicsProxyWidget* proxy = Bench::proxies(block).first();
        QCOMPARE(button->size(), block->buttonRect(0).size().toSize());
        QCOMPARE(proxy->geometry(), block->buttonRect(0));
        QCOMPARE(proxy->sceneBoundingRect(), field);
        // The widget shows the same.
        QCOMPARE(picture(*m_bench, around), atRest);
        // Nor does it grow while it is there.
        for (const char* text : {"0.40000000596046448", "", "1", "-1234567890123456789"}) {
            button->setText(QLatin1String(text));
            QCoreApplication::processEvents();
            QCOMPARE(proxy->geometry(), block->buttonRect(0));
            QCOMPARE(button->size(), block->buttonRect(0).size().toSize());
        }
    }

    void allThatCanBeTypedCanBeRead_data()
    {
        columns<int, QString>("id", "typed");
        QTest::newRow("six digits and two decimals") << 101 << QStringLiteral("123456.78");
        QTest::newRow("the same on the small field") << 113 << QStringLiteral("123456.78");
        QTest::newRow("a count") << 301 << QStringLiteral("888888");
        QTest::newRow("an angle") << 107 << QStringLiteral("-150");
    }

    // Each key shows: no two of the texts on the way look alike.
    void allThatCanBeTypedCanBeRead()
    {
        QFETCH(int, id);
        QFETCH(QString, typed);
        supermodule* block = m_bench->drop(id, {500, 330});
        m_bench->clickButton(block, 0);
        QSet<QByteArray> seen;
        const auto look = [&] {
            const QImage image = picture(*m_bench, Bench::placeOf(block, 0));
            seen.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()),
                                   static_cast<int>(image.sizeInBytes())));
        };
        if (id == 107) {
            // Its minus sign may come at any time.
            m_bench->type(QStringLiteral("150-"));
            QCOMPARE(block->button(0)->text(), typed + s_degree);
        } else {
            for (const QChar key : typed) {
                m_bench->type(key);
                look();
            }
            QCOMPARE(block->button(0)->text(), typed);
            QCOMPARE(seen.size(), typed.size());
        }
        // And nothing is cut off.
        const auto* field = static_cast<SelectableButton*>(block->button(0));
        QCOMPARE(field->shownText(), field->text());
    }

    void theMarkStaysInsideTheField()
    {
        SelectableButton field;
        field.setFixedSize(60, 40);
        field.setText(QStringLiteral("1234567890123456789012345"));
        const QColor blue(0, 120, 215);
        field.setSelected(true);
        const QImage marked = field.grab().toImage();
        int inside = 0;
        for (int y = 0; y < marked.height(); ++y) {
            QVERIFY(marked.pixelColor(0, y) != blue);
            QVERIFY(marked.pixelColor(marked.width() - 1, y) != blue);
            inside += marked.pixelColor(3 + marked.width() / 2, y) == blue ? 1 : 0;
        }
        QVERIFY(inside > 0);
        field.setSelected(false);
    }

    void aFieldIsPaintedAnewWhenItGetsAndLosesTheMark()
    {
        SelectableButton field;
        SelectableButton other;
        field.setText(QStringLiteral("1"));
        field.resize(80, 40);
        field.show();
        QVERIFY(QTest::qWaitForWindowExposed(&field));
        for (const bool marked : {true, false}) {
            const PaintWatch watch(field);
            field.setSelected(marked);
            QTRY_VERIFY(watch.sawAll());
        }
        field.setSelected(true);
        const PaintWatch watch(field);
        other.setSelected(true);
        QTRY_VERIFY(watch.sawAll());
    }

    void aBlockIsPaintedAnewWhenAChoiceIsMade()
    {
        supermodule* speed = m_bench->drop(100, {500, 330});
        m_bench->clickButton(speed, 0);
        QVERIFY(Bench::popUpIsOpen());
        const PaintWatch watch(*m_bench->view.viewport());
        speed->setParamIndex(2);
        const QRect middle(m_bench->at(speed->scenePos() + QPointF(40, 30)), QSize(40, 40));
        QTRY_VERIFY(watch.saw(middle));
    }

    void aTextThatFitsIsShownInItsFullSize()
    {
        QPushButton plain;
        SelectableButton field;
        for (QPushButton* button : {&plain, static_cast<QPushButton*>(&field)}) {
            QFont font = button->font();
            font.setPixelSize(20);
            button->setFont(font);
            button->setFixedSize(80, 40);
            button->setText(QStringLiteral("12.5"));
        }
        QCOMPARE(field.grab().toImage(), plain.grab().toImage());
    }

    void aStoredNumberIsShownAsItWasTyped_data()
    {
        columns<QString, QString>("stored", "shown");
        for (const char* typed : {"0.4", "0.1", "123456.78", "99999.9", "1", "0", "0.25",
                                  "16777216", "2000000000", "1e+20", "1e-05", "-0.3"}) {
            const QString text = QString::fromLatin1(typed);
            QTest::newRow(typed) << widened(text) << text;
        }
        // What stands there in any other form stands as it is.
        for (const char* raw : {"0.4000", "0.400000006", "0.40000000596046449", "007", "+1", "1.50",
                                "text", "", "nan", "inf", " 0.40000000596046448", "1e5"}) {
            QTest::newRow(raw) << QString::fromLatin1(raw) << QString::fromLatin1(raw);
        }
    }

    void aStoredNumberIsShownAsItWasTyped()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        for (const int id : {101, 104}) {
            supermodule* block = m_bench->drop(id, {500, 330});
            QDomDocument document;
            QDomElement element = storedBlock(block, document);
            element.setAttribute(QStringLiteral("n"), stored);
            block->loadXml(element);
            QCOMPARE(block->button(0)->text(), shown);
            // The file gets the number again, not the shown text.
            QCOMPARE(ownAttributes(block).value(QStringLiteral("n")), widened(stored));
        }
    }

    void aTimedMotorShowsAllOfItsSeconds()
    {
        supermodule* block = m_bench->drop(113, {500, 330});
        loadBlock(block, QStringLiteral("n=1 time=") + widened(QStringLiteral("123456.78")));
        QCOMPARE(block->button(0)->text(), QStringLiteral("123456.78"));
        loadBlock(block, QStringLiteral("n=1 time=") + widened(QStringLiteral("0.4")));
        QCOMPARE(block->button(0)->text(), QStringLiteral("0.4"));
        // Its port leaves the seconds alone.
        block->setParamIndex(2);
        QCOMPARE(block->button(0)->text(), QStringLiteral("0.4"));
    }

    void aNumberComesBackAsTypedFromFileUndoAndClipboard()
    {
        QTemporaryDir dir;
        for (const int id : {101, 113}) {
            supermodule* block = m_bench->drop(id, {500, 330});
            m_bench->clickButton(block, 0);
            m_bench->type(QStringLiteral("0.4"));
            const QPointF onBlock = block->scenePos() + QPointF(30, 30);
            m_bench->click(onBlock);
            m_bench->key(Qt::Key_C, Qt::ControlModifier);
            m_bench->view.OnPaste();
            supermodule* pasted = moduleMap.last();
            QVERIFY(pasted != block && pasted->id == id);
            QCOMPARE(pasted->button(0)->text(), QStringLiteral("0.4"));
            m_bench->view.deleteModule(pasted);
            m_bench->view.deleteModule(block);
            QCOMPARE(m_bench->blocks().size(), 1);
            m_bench->view.undoStack().undo();
            m_bench->view.undoStack().undo();
            const QList<supermodule*> back = m_bench->blocks();
            QCOMPARE(back.size(), 3);
            for (supermodule* one : back) {
                if (one->id == id) {
                    QCOMPARE(one->button(0)->text(), QStringLiteral("0.4"));
                }
            }
            const QString path = dir.filePath(QStringLiteral("a.tlrx"));
            QVERIFY(m_bench->document.save(path));
            QCOMPARE(m_bench->document.open(path), 0);
            int seen = 0;
            for (supermodule* one : m_bench->blocks()) {
                if (one->id == id) {
                    QCOMPARE(one->button(0)->text(), QStringLiteral("0.4"));
                    ++seen;
                }
            }
            QCOMPARE(seen, 2);
            m_bench->document.startAnew();
        }
    }
};

QTEST_MAIN(NumberFieldTest)
#include "numberfieldtest.moc"
