#include "support/canvas/blockdata.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>

namespace
{
const QJsonObject& wholeFile()
{
    static const QJsonObject s_file = [] {
        QFile file(QStringLiteral(BLOCK_DATA));
        if (!file.open(QIODevice::ReadOnly)) {
            qFatal("no %s", BLOCK_DATA);
        }
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
        if (error.error != QJsonParseError::NoError) {
            qFatal("%s at %d: %s", BLOCK_DATA, error.offset, qPrintable(error.errorString()));
        }
        return document.object();
    }();
    return s_file;
}

QJsonObject named(const char* p_table)
{
    return wholeFile().value(QLatin1String(p_table)).toObject();
}

QStringList strings(const QJsonValue& p_array)
{
    QStringList list;
    const QJsonArray array = p_array.toArray();
    for (const QJsonValue each : array) {
        list << each.toString();
    }
    return list;
}

/** Replaces each name in braces, such as {n}, {n:g}, {i+1} or {6-j}, by what stands for it. */
template <typename Stand> QString replaced(const QString& p_text, Stand p_stand)
{
    static const QRegularExpression s_name(QStringLiteral("\\{([\\w+-]+)(:g)?\\}"));
    QString text;
    int end = 0;
    QRegularExpressionMatchIterator names = s_name.globalMatch(p_text);
    while (names.hasNext()) {
        const QRegularExpressionMatch name = names.next();
        text += p_text.midRef(end, name.capturedStart() - end);
        text += p_stand(name.captured(1), name.capturedLength(2) > 0);
        end = name.capturedEnd();
    }
    return text + p_text.midRef(end);
}

/** The sum or difference of whole numbers and names, such as "i+1" or "6-j". */
QString reckoned(const QString& p_sum, const QJsonObject& p_values)
{
    const int sign = p_sum.indexOf(QRegularExpression(QStringLiteral("[+-]")));
    if (sign < 0) {
        return p_values.value(p_sum).toVariant().toString();
    }
    const auto number = [&p_values](const QString& p_name) {
        return p_values.contains(p_name) ? p_values.value(p_name).toInt() : p_name.toInt();
    };
    const int first = number(p_sum.left(sign));
    const int second = number(p_sum.mid(sign + 1));
    return QString::number(p_sum.at(sign) == QLatin1Char('+') ? first + second : first - second);
}

/** The sets of values that a choice stands for: those of a list, or of the numbers i and j. */
QVector<QJsonObject> valuesOf(const QJsonObject& p_choice)
{
    QVector<QJsonObject> sets{QJsonObject()};
    for (const QString& name : {QStringLiteral("i"), QStringLiteral("j")}) {
        const QJsonArray range = p_choice.value(name).toArray();
        QVector<QJsonObject> more;
        for (int i = range.at(0).toInt(); !range.isEmpty() && i <= range.at(1).toInt(); ++i) {
            for (QJsonObject set : qAsConst(sets)) {
                set.insert(name, i);
                more.append(set);
            }
        }
        sets = range.isEmpty() ? sets : more;
    }
    const QJsonValue list = p_choice.value(QLatin1String("with"));
    if (list.isString()) {
        sets.clear();
        const QJsonArray entries = named("lists").value(list.toString()).toArray();
        for (const QJsonValue entry : entries) {
            sets.append(entry.toObject());
        }
    }
    return sets;
}
} // namespace

const QVector<BlockData>& blockData()
{
    static const QVector<BlockData> s_blocks = [] {
        QVector<BlockData> blocks;
        const QJsonArray records = wholeFile().value(QLatin1String("blocks")).toArray();
        for (const QJsonValue record : records) {
            blocks.append(BlockData(record.toObject()));
        }
        return blocks;
    }();
    return s_blocks;
}

const BlockData* blockDataOf(int p_id)
{
    static const QHash<int, const BlockData*> s_byId = [] {
        QHash<int, const BlockData*> blocks;
        for (const BlockData& block : blockData()) {
            blocks.insert(block.id(), &block);
        }
        return blocks;
    }();
    return s_byId.value(p_id);
}

const QVector<int>& loopTypes()
{
    static const QVector<int> s_types = [] {
        QVector<int> types;
        for (const BlockData& block : blockData()) {
            if (block.isLoop()) {
                types.append(block.id());
            }
        }
        std::sort(types.begin(), types.end());
        return types;
    }();
    return s_types;
}

QString BlockData::copied() const
{
    return value(m_record.contains(QLatin1String("copied")) ? "copied" : "changed");
}

QString BlockData::said(const BlockAttributes& p_attributes, const QString& p_name,
                        bool p_fraction) const
{
    if (p_fraction) {
        return QString::asprintf("%g", p_attributes.value(p_name).toDouble());
    }
    const QJsonObject rule =
        m_record.value(QLatin1String("numbers")).toObject().value(p_name).toObject();
    if (rule.isEmpty()) {
        return QString::number(p_attributes.value(p_name).toInt());
    }
    const int number = p_attributes.value(rule.value(QLatin1String("by")).toString()).toInt();
    const QJsonValue other = rule.value(QLatin1String("else"));
    const QJsonValue own = rule.value(QString::number(number));
    if (!own.isUndefined() || !other.isUndefined()) {
        return (own.isUndefined() ? other : own).toVariant().toString();
    }
    const qint64 product = qint64(number) * rule.value(QLatin1String("times")).toInt(1);
    return QString::number(product / rule.value(QLatin1String("over")).toInt(1) +
                           rule.value(QLatin1String("plus")).toInt());
}

QString BlockData::text(const QString& p_attributes, const QString& p_body) const
{
    const BlockAttributes attributes = parsedAttributes(p_attributes);
    return replaced(value("text"), [&](const QString& p_name, bool p_fraction) {
        return p_name == QLatin1String("body") ? p_body : said(attributes, p_name, p_fraction);
    });
}

QVector<BlockData::Choice> BlockData::choices() const
{
    QVector<Choice> list;
    const QJsonArray choices = m_record.value(QLatin1String("choices")).toArray();
    for (const QJsonValue each : choices) {
        const QJsonObject choice = each.toObject();
        for (const QJsonObject& values : valuesOf(choice)) {
            const auto filledIn = [&values](const QString& p_text) {
                return replaced(p_text, [&values](const QString& p_name, bool) {
                    return reckoned(p_name, values);
                });
            };
            QStringList give = strings(choice.value(QLatin1String("give")));
            std::transform(give.begin(), give.end(), give.begin(), filledIn);
            list.append({give, filledIn(choice.value(QLatin1String("attributes")).toString())});
        }
    }
    return list;
}

QMap<QString, QString> BlockData::oddTexts() const
{
    QMap<QString, QString> texts;
    const QJsonObject odd = m_record.value(QLatin1String("odd")).toObject();
    for (auto it = odd.begin(); it != odd.end(); ++it) {
        texts.insert(it.key(), it.value().toString());
    }
    return texts;
}

QMap<QString, QStringList> BlockData::paints() const
{
    QMap<QString, QStringList> pictures;
    const QJsonObject paints = m_record.value(QLatin1String("paints")).toObject();
    for (auto it = paints.begin(); it != paints.end(); ++it) {
        pictures.insert(it.key(), strings(it.value()));
    }
    return pictures;
}

QVector<BlockData::Button> BlockData::buttons() const
{
    QVector<Button> list;
    const QJsonArray buttons = m_record.value(QLatin1String("buttons")).toArray();
    for (const QJsonValue each : buttons) {
        const QJsonObject button = each.toObject();
        const QJsonArray at = button.value(QLatin1String("at")).toArray();
        list.append(
            {QRect(at.at(0).toInt(), at.at(1).toInt(), at.at(2).toInt(), at.at(3).toInt()),
             button.value(QLatin1String("opens")).toString(),
             button.value(QLatin1String("shows")).toString(),
             button.value(QLatin1String("arrow")).toBool(),
             named("styles").value(button.value(QLatin1String("style")).toString()).toString()});
    }
    return list;
}
