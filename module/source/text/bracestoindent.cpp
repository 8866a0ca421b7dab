#include "bracestoindent.h"

#include <QString>
#include <QStringList>

void bracesToIndent(QString& p_text)
{
    const QVector<QStringRef> lines = p_text.splitRef(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QString laidOut;
    laidOut.reserve(p_text.size() + 6 * lines.size());
    int depth = 0;
    for (const QStringRef& line : lines) {
        if (line.contains(QLatin1Char('}'))) {
            --depth;
        }
        for (int i = 0; i < depth; ++i) {
            laidOut += QLatin1String("      ");
        }
        laidOut += line;
        laidOut += QLatin1Char('\n');
        if (line.contains(QLatin1Char('{'))) {
            ++depth;
        }
    }
    p_text = laidOut;
}
