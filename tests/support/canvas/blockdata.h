#pragma once

#include "support/canvas/singleblock.h"

#include <QJsonObject>
#include <QRect>
#include <QStringList>
#include <QVector>

/**
 * What is expected of a block type: its record of tests/data/blocks.json, which was written by hand
 * and is the one place where tests are told of a type.
 *
 * Texts have names in braces. {n} stands for the attribute n as a whole number, {n:g} as one with a
 * fraction, and {name} for what "numbers" makes of an attribute: the value beside the attribute's,
 * that of "else", or the attribute times "times" over "over", cut towards 0, plus "plus".
 */
class BlockData
{
public:
    /** A choice that the user has: how it comes to the block, see giveValue(), and what it stores.
     */
    struct Choice {
        QStringList give;
        QString attributes;
    };
    /** A button on the block, by its place in the block. */
    struct Button {
        QRect place;
        QString opens; /**< a signal of the view, or a mode of the pop-up */
        QString shows;
        bool arrow;
        QString style;
    };

    explicit BlockData(const QJsonObject& p_record) : m_record(p_record) {}

    int id() const { return m_record.value(QLatin1String("id")).toInt(); }
    int category() const { return m_record.value(QLatin1String("category")).toInt(); }
    /** A text of the record; empty if it has none of this name. */
    QString value(const char* p_name) const
    {
        return m_record.value(QLatin1String(p_name)).toString();
    }
    bool isLoop() const { return m_record.contains(QLatin1String("frame")); }
    /** Where a loop's body begins, from the loop; 0 for a block that is no loop. */
    int bodyOffset() const
    {
        return !isLoop() ? 0 : value("shape") == QLatin1String("conditional") ? 40 : 120;
    }
    /** Attributes of what a copy keeps of the changed block. */
    QString copied() const;
    /** The C text of a block of these attributes, with the text of its body. */
    QString text(const QString& p_attributes, const QString& p_body = QString()) const;
    QVector<Choice> choices() const;
    /** The text by attributes that no chooser gives, word for word. */
    QMap<QString, QString> oddTexts() const;
    /** What the block is painted from by its attributes: "path x y", without a place centred. */
    QMap<QString, QStringList> paints() const;
    QVector<Button> buttons() const;

private:
    QString said(const BlockAttributes& p_attributes, const QString& p_name, bool p_fraction) const;

    QJsonObject m_record;
};

/** The records in the order of the palette. */
const QVector<BlockData>& blockData();
/** The record of a type; null if there is none. */
const BlockData* blockDataOf(int p_id);
/** The types of all loops, in the order of their numbers. */
const QVector<int>& loopTypes();
