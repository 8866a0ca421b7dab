#include "commonhelper.h"

#include <QFile>
#include <QJsonDocument>

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

QJsonObject readJson(const QString& p_path)
{
    QFile file(p_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QJsonObject();
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

void writeJson(const QJsonObject& p_object, const QString& p_path)
{
    QFile file(p_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(QJsonDocument(p_object).toJson());
    }
}

QStringList toStringList(const QJsonArray& p_array)
{
    QStringList texts;
    for (const QJsonValue value : p_array) {
        texts.append(value.toString());
    }
    return texts;
}
