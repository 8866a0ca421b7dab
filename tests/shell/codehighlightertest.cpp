#include "shell/codehighlighter.h"
#include "support/system/datatable.h"

#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

/** The colours of generated texts, read from the layout of real documents. */
class CodeHighlighterTest : public QObject
{
    Q_OBJECT

private:
    /** The colour of each letter of a line; a dot for none, b for one of a wrong weight. */
    static QString coloursOf(const QString& p_line)
    {
        QTextDocument document;
        document.documentLayout();
        CodeHighlighter highlighter(&document);
        document.setPlainText(p_line);
        QString colours(p_line.size(), QLatin1Char('.'));
        const QVector<QTextLayout::FormatRange> ranges = document.firstBlock().layout()->formats();
        for (const QTextLayout::FormatRange& range : ranges) {
            const QMap<QString, QChar> letters{{"#00718a", 'c'},
                                               {"#6743fa", 'w'},
                                               {"#b04a00", 'n'},
                                               {"#1c7a3e", 't'},
                                               {"#5d6a72", 'i'}};
            const QChar colour =
                letters.value(range.format.foreground().color().name(), QLatin1Char('?'));
            // The language's own words alone are bold.
            const bool bold = range.format.fontWeight() == QFont::Bold;
            const QChar letter = bold == (colour == QLatin1Char('w')) ? colour : QLatin1Char('b');
            for (int i = range.start; i < range.start + range.length; ++i) {
                colours[i] = letter;
            }
        }
        return colours;
    }

private slots:
    void eachKindOfWordHasItsColour_data()
    {
        columns<QString, QString>("line", "colours");
        row("a call", "set_motor(1, -speed2);", "ccccccccc.n...........");
        row("a loop", "for(int i = 0;i < 4; ++i)", "www.www.....n.....n......");
        row("a fraction", "wait(0.5);", "cccc.nnn..");
        row("a mask", "{{0x0,0x7f}}", "..nnn.nnnn..");
        row("a figure in a name", "speed1 = 50;", ".........nn.");
        row("a text with a call in it", "Printf(\"wait(1)\");", "cccccc.ttttttttt..");
        row("a text that is left open", "\"while", "tttttt");
        row("an inclusion", "#include \"vantrel.h\"", "iiiiiiiiiiiiiiiiiiii");
        row("a word within a word", "voided = iffy;", "..............");
        row("Python", "while True:", "wwwww.wwww.");
        row("nothing", "", "");
    }

    void eachKindOfWordHasItsColour()
    {
        QFETCH(QString, line);
        QFETCH(QString, colours);
        QCOMPARE(coloursOf(line), colours);
    }
};

QTEST_MAIN(CodeHighlighterTest)
#include "codehighlightertest.moc"
