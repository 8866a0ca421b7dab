#include "shell/codehighlighter.h"

#include <QColor>
#include <QRegularExpression>
#include <QTextCharFormat>

#include <array>

namespace
{
/** What is coloured: the later a row, the more it has to say. Each is 4.5 to 1 on white at least.
 */
struct Rule {
    const char* pattern;
    QRgb colour;
    bool bold;
};
const std::array<Rule, 5> s_rules = {{
    {"\\b\\w+(?=\\s*\\()", 0xff00718a, false},
    {"\\b(?:void|int|float|double|char|while|for|if|else|break|continue|return|def|import|global|"
     "True|False|None)\\b",
     0xff6743fa, true},
    {"(?<![\\w.])\\d[\\w.]*", 0xffb04a00, false},
    {"\"(?:[^\"\\\\]|\\\\.)*\"?", 0xff1c7a3e, false},
    {"^\\s*#\\s*include.*", 0xff5d6a72, false},
}};

const std::array<QRegularExpression, s_rules.size()>& patterns()
{
    static const auto s_patterns = [] {
        std::array<QRegularExpression, s_rules.size()> made;
        for (std::size_t i = 0; i < s_rules.size(); ++i) {
            made[i].setPattern(QLatin1String(s_rules[i].pattern));
            made[i].optimize();
        }
        return made;
    }();
    return s_patterns;
}
} // namespace

CodeHighlighter::CodeHighlighter(QTextDocument* p_document) : QSyntaxHighlighter(p_document) {}

void CodeHighlighter::highlightBlock(const QString& p_line)
{
    for (std::size_t i = 0; i < s_rules.size(); ++i) {
        QTextCharFormat format;
        format.setForeground(QColor(s_rules[i].colour));
        format.setFontWeight(s_rules[i].bold ? QFont::Bold : QFont::Normal);
        QRegularExpressionMatchIterator found = patterns()[i].globalMatch(p_line);
        while (found.hasNext()) {
            const QRegularExpressionMatch match = found.next();
            setFormat(match.capturedStart(), match.capturedLength(), format);
        }
    }
}
