#include "proj/controls/selectablebutton.h"
#include "proj/controls/tzlineedit.h"
#include "proj/controls/varbutton.h"
#include "proj/controls/windowshape.h"
#include "support/system/datatable.h"

#include <QFile>
#include <QFontMetrics>
#include <QImage>
#include <QSignalSpy>
#include <QtTest>

namespace
{
const QColor s_markColour(0, 120, 215);

/** A key by its character; '<' stands for Backspace. */
int keyOf(QChar p_ch)
{
    return p_ch == QLatin1Char('<') ? static_cast<int>(Qt::Key_Backspace) : p_ch.unicode();
}

void applyKeys(SelectableButton& p_button, const QString& p_keys)
{
    for (const QChar ch : p_keys) {
        p_button.applyKey(keyOf(ch));
    }
}

/** Sees which keys a field hands on to the widget that it lies in. */
class KeySink : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent* p_event) override { keys.append(p_event->key()); }
};

int pixelsOf(const QImage& p_image, const QColor& p_colour)
{
    int count = 0;
    for (int y = 0; y < p_image.height(); ++y) {
        for (int x = 0; x < p_image.width(); ++x) {
            count += p_image.pixelColor(x, y) == p_colour ? 1 : 0;
        }
    }
    return count;
}
} // namespace

class ControlsTest : public QObject
{
    Q_OBJECT

private slots:
    void aNewFieldIsPlainAndTakesEveryKey()
    {
        const SelectableButton field;
        QVERIFY(!field.isSelected());
        QCOMPARE(SelectableButton::current(), nullptr);
        for (const QChar ch : QStringLiteral("0123456789.-<")) {
            QVERIFY2(field.acceptsKey(keyOf(ch)), qPrintable(QString(ch)));
        }
    }

    void keysEditTheTextAtItsEnd_data()
    {
        columns<QString, QString, QString>("text", "keys", "result");
        row("a digit behind a digit", "1", "2", "12");
        row("0: not even another 0", "0", "0", "0");
        row("12.3: one more digit is taken", "12.3", "4", "12.34");
        row("123456.: two more digits are taken", "123456.", "789", "123456.78");
        row("a second point is refused", "1.2", ".", "1.2");
        row("a second point at once, too", "1.", ".", "1.");
        row("a point can't begin a number", "", ".", "");
        row("delete takes the last character", "12.3", "<<", "12");
        row("delete on an empty text", "", "<", "");
        row("minus toggles the sign in front", "15", "-", "-15");
        row("minus toggles it back", "-15", "-", "15");
        row("the sign counts as a character", "-12345", "6", "-12345");
        row("minus itself isn't counted", "123456", "-", "-123456");
        row("another key does nothing", "12", "x", "12");
        row("a zero takes no further digit", "", "07", "0");
        row("a zero takes a point and digits behind it", "", "07.5", "0.5");
        row("two decimals take no further digit", "", "12.345", "12.34");
        row("six digits take no seventh", "", "1234567", "123456");
        row("six digits take a point", "", "1234567.", "123456.");
        row("minus comes into an empty text", "", "-", "-");
        row("minus goes from an empty text again", "", "--", "");
    }

    void keysEditTheTextAtItsEnd()
    {
        QFETCH(QString, text);
        QFETCH(QString, keys);
        QFETCH(QString, result);
        SelectableButton field;
        field.setText(text);
        applyKeys(field, keys);
        QCOMPARE(field.text(), result);
    }

    void aKeyThatMeansNothingLeavesAMarkedTextAlone()
    {
        for (const int key : {int(Qt::Key_A), int(Qt::Key_Space), int(Qt::Key_Left),
                              int(Qt::Key_Shift), int(Qt::Key_Delete), int(Qt::Key_Plus), 0}) {
            SelectableButton field;
            field.setText(QStringLiteral("12"));
            field.setSelected(true);
            field.applyKey(key);
            QCOMPARE(field.text(), QStringLiteral("12"));
            QVERIFY(!field.isSelected());
        }
    }

    void aKeyReplacesTheMarkedTextAndTakesTheMarkAway_data()
    {
        columns<QString, QString>("keys", "result");
        row("a digit", "3", "3");
        row("two digits", "34", "34");
        row("delete empties the text", "<", "");
        row("a point empties the text since it can't begin a number", ".", "");
        row("minus begins a new number", "-", "-");
    }

    void aKeyReplacesTheMarkedTextAndTakesTheMarkAway()
    {
        QFETCH(QString, keys);
        QFETCH(QString, result);
        SelectableButton field;
        field.setText(QStringLiteral("12"));
        field.setSelected(true);
        applyKeys(field, keys);
        QCOMPARE(field.text(), result);
        QVERIFY(!field.isSelected());
        QCOMPARE(SelectableButton::current(), nullptr);
    }

    void aCharacterMayBeAppended_data()
    {
        columns<QString, QString>("text", "accepted");
        row("empty", "", "05");
        row("0", "0", ".");
        row("5", "5", "05.");
        row("-", "-", "05.");
        row("-0", "-0", "05.");
        row("12345", "12345", "05.");
        row("123456", "123456", ".");
        row("1.", "1.", "05");
        row("1.2", "1.2", "05");
        row("1.23", "1.23", "");
    }

    void aCharacterMayBeAppended()
    {
        QFETCH(QString, text);
        QFETCH(QString, accepted);
        for (const QChar ch : QStringLiteral("05.")) {
            QVERIFY2(SelectableButton::canAppend(text, ch) == accepted.contains(ch),
                     qPrintable(text + ch));
        }
    }

    void theMaskDecidesWhichKeysAreAccepted_data()
    {
        columns<uint, QString>("mask", "accepted");
        QTest::newRow("none") << 0U << "";
        QTest::newRow("digits") << 1U << "0123456789";
        QTest::newRow("point") << 2U << ".";
        QTest::newRow("minus") << 4U << "-";
        QTest::newRow("delete") << 8U << "<";
        QTest::newRow("count") << 9U << "0123456789<";
        QTest::newRow("time") << 11U << "0123456789.<";
        QTest::newRow("angle") << 13U << "0123456789-<";
    }

    void theMaskDecidesWhichKeysAreAccepted()
    {
        QFETCH(uint, mask);
        QFETCH(QString, accepted);
        SelectableButton field;
        field.setKeyMask(mask);
        for (const QChar ch : QStringLiteral("0123456789.-<")) {
            QVERIFY2(field.acceptsKey(keyOf(ch)) == accepted.contains(ch), qPrintable(QString(ch)));
        }
        for (const int key : {int(Qt::Key_A), int(Qt::Key_Delete), int(Qt::Key_Slash),
                              int(Qt::Key_Colon), int(Qt::Key_Return), int(Qt::Key_Comma)}) {
            QVERIFY2(!field.acceptsKey(key), qPrintable(QString::number(key)));
        }
    }

    void aTypedKeyIsTakenAndReported()
    {
        SelectableButton field;
        field.setKeyMask(KeyboardDigits | KeyboardPoint | KeyboardDelete);
        field.setText(QStringLiteral("1"));
        QSignalSpy typed(&field, &SelectableButton::keyTypedSignal);
        QTest::keyClick(&field, Qt::Key_2);
        QTest::keyClick(&field, Qt::Key_Period);
        QTest::keyClick(&field, Qt::Key_5);
        QTest::keyClick(&field, Qt::Key_Backspace);
        QCOMPARE(field.text(), QStringLiteral("12."));
        QCOMPARE(typed.size(), 4);
        QCOMPARE(typed.at(3).at(0).toInt(), int(Qt::Key_Backspace));
    }

    void aKeyAgainstTheMaskDoesNothing()
    {
        SelectableButton field;
        field.setKeyMask(KeyboardDigits | KeyboardDelete);
        field.setText(QStringLiteral("12"));
        field.setSelected(true);
        QSignalSpy typed(&field, &SelectableButton::keyTypedSignal);
        QTest::keyClick(&field, Qt::Key_Minus);
        QTest::keyClick(&field, Qt::Key_Period);
        QTest::keyClick(&field, Qt::Key_A);
        QCOMPARE(field.text(), QStringLiteral("12"));
        QVERIFY(field.isSelected());
        QCOMPARE(typed.size(), 0);
    }

    void noKeyIsHandedOnToTheParent()
    {
        KeySink sink;
        auto* field = new SelectableButton(&sink);
        QTest::keyClick(field, Qt::Key_1);
        QTest::keyClick(field, Qt::Key_A);
        QCOMPARE(field->text(), QStringLiteral("1"));
        QCOMPARE(sink.keys, QList<int>());
        QTest::keyClick(&sink, Qt::Key_A);
        QCOMPARE(sink.keys, QList<int>{Qt::Key_A});
    }

    void aPressTogglesTheMark()
    {
        SelectableButton field;
        field.resize(80, 40);
        QTest::mousePress(&field, Qt::LeftButton);
        QVERIFY(field.isSelected());
        QCOMPARE(SelectableButton::current(), &field);
        QTest::mouseRelease(&field, Qt::LeftButton);
        QVERIFY(field.isSelected());
        QTest::mouseClick(&field, Qt::LeftButton);
        QVERIFY(!field.isSelected());
        QCOMPARE(SelectableButton::current(), nullptr);
    }

    void marksOneFieldAtATime()
    {
        SelectableButton first;
        SelectableButton second;
        QTest::mouseClick(&first, Qt::LeftButton);
        QTest::mouseClick(&second, Qt::LeftButton);
        QVERIFY(!first.isSelected());
        QVERIFY(second.isSelected());
        QCOMPARE(SelectableButton::current(), &second);
    }

    void unmarkingAnotherFieldKeepsTheCurrentOne()
    {
        SelectableButton first;
        SelectableButton second;
        first.setSelected(true);
        second.setSelected(false);
        QVERIFY(first.isSelected());
        QCOMPARE(SelectableButton::current(), &first);
        first.setSelected(true);
        QVERIFY(first.isSelected());
    }

    void aDyingFieldIsNoLongerTheCurrentOne()
    {
        {
            SelectableButton field;
            field.setSelected(true);
            QCOMPARE(SelectableButton::current(), &field);
        }
        QCOMPARE(SelectableButton::current(), nullptr);
    }

    void theMarkIsPaintedBehindTheText()
    {
        SelectableButton field;
        field.resize(80, 40);
        field.setText(QStringLiteral("12"));
        const QImage plain = field.grab().toImage();
        QCOMPARE(pixelsOf(plain, s_markColour), 0);
        field.setSelected(true);
        const QImage marked = field.grab().toImage();
        const QFontMetrics metrics(field.font());
        const int width = metrics.boundingRect(QStringLiteral("12")).width() + 2;
        const int height = metrics.height();
        const int x = static_cast<int>(80 / 2.0 - width / 2.0);
        const int y = static_cast<int>(40 / 2.0 - height / 2.0);
        // The outline belongs to it, so it reaches one pixel past the rectangle.
        QCOMPARE(marked.pixelColor(x, y), s_markColour);
        QCOMPARE(marked.pixelColor(x + width, y + height), s_markColour);
        QCOMPARE(marked.pixelColor(x - 1, y), plain.pixelColor(x - 1, y));
        QCOMPARE(marked.pixelColor(x, y - 1), plain.pixelColor(x, y - 1));
        QCOMPARE(marked.pixelColor(x + width + 1, y), plain.pixelColor(x + width + 1, y));
        QCOMPARE(marked.pixelColor(x, y + height + 1), plain.pixelColor(x, y + height + 1));
        QVERIFY2(pixelsOf(marked, Qt::white) > pixelsOf(plain, Qt::white), "the text isn't white");
    }

    void nothingIsMarkedInAnEmptyField()
    {
        SelectableButton field;
        field.resize(80, 40);
        field.setSelected(true);
        QCOMPARE(pixelsOf(field.grab().toImage(), s_markColour), 0);
    }

    void aVariableButtonShowsItsPictureByItsMark()
    {
        varButton button(QStringLiteral(":/a.png"), QStringLiteral(":/b.png"));
        const QString rule =
            QStringLiteral("QPushButton{background-image:url(%1);background-color:transparent;}");
        QCOMPARE(button.styleSheet(), rule.arg(":/a.png"));
        button.setMarked(true);
        QCOMPARE(button.styleSheet(), rule.arg(":/b.png"));
        button.setMarked(false);
        QCOMPARE(button.styleSheet(), rule.arg(":/a.png"));
        QCOMPARE(varButton::unusedPicture(), QStringLiteral(":/weiyongbianliang-nol.png"));
        QVERIFY(QFile::exists(varButton::unusedPicture()));
    }

    void theVariableFieldHasItsPicture()
    {
        const tzLineedit field;
        QCOMPARE(field.styleSheet(),
                 QStringLiteral("border-image: url(:/xunhuancishu-dikuangpng.png);"));
        QVERIFY(QFile::exists(QStringLiteral(":/xunhuancishu-dikuangpng.png")));
    }

    void aWindowHasTheShapeOfItsPicture_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("download") << QStringLiteral(":/xiazaitankuang-400x210.png");
        QTest::newRow("about") << QStringLiteral(":/guanyutankuang-400x210.png");
    }

    void aWindowHasTheShapeOfItsPicture()
    {
        QFETCH(QString, path);
        const QPixmap picture(path);
        const QImage image = picture.toImage();
        QWidget window;
        window.resize(picture.size());
        shapeWindowLikePicture(window, picture);
        const QRegion shape = window.mask();
        int open = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const bool isOpen = qAlpha(image.pixel(x, y)) == 0;
                QVERIFY(shape.contains(QPoint(x, y)) != isOpen);
                open += isOpen ? 1 : 0;
            }
        }
        QVERIFY(open >= 4);
        QVERIFY(!shape.contains(QPoint(0, 0)));

        QWidget larger;
        larger.resize(picture.size() + QSize(1, 1));
        shapeWindowLikePicture(larger, picture);
        QVERIFY(larger.mask().isEmpty());
    }
};

QTEST_MAIN(ControlsTest)
#include "controlstest.moc"
