#include "proj/controls/widgethelper.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

void paintStyle(QWidget& p_widget)
{
    QStyleOption option;
    option.initFrom(&p_widget);
    QPainter painter(&p_widget);
    p_widget.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &p_widget);
}

void setApplicationStyle(const QString& p_path)
{
    QByteArray style;
    QFile file(p_path);
    if (file.open(QIODevice::ReadOnly)) {
        style = file.readAll();
    }
    qApp->setStyleSheet(QString::fromLatin1(style.constData()));
}

QFont applicationFont()
{
    const QFontDatabase fonts;
    for (const QString& family : {QStringLiteral("微软雅黑"), QStringLiteral("Microsoft YaHei")}) {
        if (fonts.hasFamily(family)) {
            return QFont(family);
        }
    }
    return QFont();
}
