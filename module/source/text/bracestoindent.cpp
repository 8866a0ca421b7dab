#include "text/bracestoindent.h"

#include <QString>

namespace
{
const int s_indent = 6;
}

void bracesToIndent(QString& p_text)
{
    QString laidOut;
    // Room for the blanks of a line at a depth of one or two; deeper ones make it grow.
    laidOut.reserve(p_text.size() * 2);
    QString blanks;
    int depth = 0;
    for (int from = 0; from < p_text.size();) {
        int end = p_text.indexOf(QLatin1Char('\n'), from);
        if (end < 0) {
            end = p_text.size();
        }
        const QStringRef line = p_text.midRef(from, end - from);
        from = end + 1;
        if (line.isEmpty()) {
            continue;
        }
        if (line.contains(QLatin1Char('}'))) {
            --depth;
        }
        while (blanks.size() < depth * s_indent) {
            blanks += QString(s_indent, QLatin1Char(' '));
        }
        laidOut += blanks.leftRef(qMax(0, depth * s_indent));
        laidOut += line;
        laidOut += QLatin1Char('\n');
        if (line.contains(QLatin1Char('{'))) {
            ++depth;
        }
    }
    p_text = laidOut;
}
