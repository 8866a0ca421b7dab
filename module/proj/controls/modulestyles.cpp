#include "proj/controls/modulestyles.h"

QString twoPictureStyle(const QString& p_normal, const QString& p_pressed, int p_gap,
                        const QString& p_extra, const QString& p_property)
{
    const QString rule = QStringLiteral("%1{%2:url(%3);background-color:transparent;%4}");
    return rule.arg(QStringLiteral("QPushButton"), p_property, p_normal, p_extra) +
           QString(p_gap, QLatin1Char(' ')) +
           rule.arg(QStringLiteral("QPushButton:pressed"), p_property, p_pressed, p_extra);
}
