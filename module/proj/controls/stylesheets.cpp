#include "proj/controls/stylesheets.h"

QString twoPictureStyle(const QString& p_normal, const QString& p_pressed, int p_gap,
                        const QString& p_extra, const QString& p_property)
{
    const QString rule = QStringLiteral("%1{%2:url(%3);background-color:transparent;%4}");
    return rule.arg(QStringLiteral("QPushButton"), p_property, p_normal, p_extra) +
           QString(p_gap, QLatin1Char(' ')) +
           rule.arg(QStringLiteral("QPushButton:pressed"), p_property, p_pressed, p_extra);
}

QString buttonStyleSheet(const QString& p_normal, const QString& p_hover, const QString& p_pressed,
                         const QString& p_textColour)
{
    return QStringLiteral("QPushButton {color:%2;border-image:url(%1);}")
               .arg(p_normal, p_textColour) +
           QStringLiteral("QPushButton:hover {border-image:url(%1);}").arg(p_hover) +
           QStringLiteral("QPushButton:pressed {border-image:url(%1);}").arg(p_pressed);
}

QString menuStyleSheet()
{
    return QStringLiteral("QMenu{background-color:white;border:none;}"
                          "QMenu::item{font-size:10pt;color:#333333;padding:1px 26px;height:24px;}"
                          "QMenu::item:selected{color:white;background-color:rgb(76,199,219);}"
                          "QMenu::item:pressed{color:white;background-color:rgb(76,199,219);}"
                          "QMenu::item:disabled{color:#999999;background-color:white;}");
}

QString toolTipStyleSheet()
{
    return QStringLiteral("QToolTip{background-color:#ffffff;color:#043c66;"
                          "border:1px solid #86c6d8;padding:0px 3px;}");
}
