#include "base/commonhelper.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLatin1String>

namespace
{
const QLatin1String s_characters("0123456789abcdefghijklmnopqrstuvwxyz"
                                 "ABCDEFGHIJKLMNOPQRSTUVWXYZ");

/** A pipe in the place of a file would let the program wait for ever, a device may never end. */
bool isNoFile(const QString& p_path)
{
    const QFileInfo info(p_path);
    return info.exists() && !info.isFile();
}

void writeFile(const QByteArray& p_content, const QString& p_path)
{
    QFile file(p_path);
    if (!isNoFile(p_path) && file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(p_content);
    }
}
} // namespace

CommonHelper* CommonHelper::instance()
{
    static CommonHelper s_instance;
    return &s_instance;
}

int randomNumber(int p_low, int p_high)
{
    if (p_low >= p_high) {
        return p_low;
    }
    // A range may hold more numbers than an int can count.
    const qint64 count = static_cast<qint64>(p_high) - p_low + 1;
    return static_cast<int>(p_low + qrand() % count);
}

QString randomString(int p_length)
{
    QString text;
    for (int i = 0; i < p_length; ++i) {
        text.append(s_characters.at(qrand() % s_characters.size()));
    }
    return text;
}

QJsonObject readJson(const QString& p_path)
{
    QFile file(p_path);
    if (isNoFile(p_path) || !file.open(QIODevice::ReadOnly)) {
        return QJsonObject();
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

void writeJson(const QJsonObject& p_object, const QString& p_path)
{
    writeFile(QJsonDocument(p_object).toJson(), p_path);
}

void writeText(const QString& p_text, const QString& p_path)
{
    writeFile(p_text.toLatin1(), p_path);
}

QStringList toStringList(const QJsonArray& p_array)
{
    QStringList texts;
    for (const QJsonValue value : p_array) {
        texts.append(value.toString());
    }
    return texts;
}

int compareVersions(const QString& p_a, const QString& p_b)
{
    if (p_a == p_b) {
        return 0;
    }
    const QStringList partsA = p_a.split(QLatin1Char('.'));
    const QStringList partsB = p_b.split(QLatin1Char('.'));
    const int shared = qMin(partsA.size(), partsB.size());
    for (int i = 0; i < shared; ++i) {
        const int a = partsA.at(i).toInt();
        const int b = partsB.at(i).toInt();
        if (a != b) {
            return a > b ? 1 : -1;
        }
    }
    return partsA.size() >= partsB.size() ? 1 : -1;
}
