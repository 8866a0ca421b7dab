#pragma once

#include <QString>
#include <QVector>

class supermodule;

/** A category of the palette: one tab. */
struct CategoryRecord {
    QString selectedImage;
    QString normalImage;
    int categoryId;
    QString caption; /**< translated */
    QString barColour;
};

/** A block type as the palette, the drop and the project file know it. */
struct BlockRecord {
    int category;         /**< a categoryId, or -1 for a record that no tab shows */
    QString image;        /**< picture in the palette */
    QString pressedImage; /**< picture of the drag, and the block's own picture path */
    int id;
    bool draggable;
    QString caption; /**< translated, but for the main block's */
};

/**
 * The tables of the categories, in the order of the tabs, and of the blocks, in the order of the
 * strip. Both are built at first use, with the translator in force then, and never change.
 */
const QVector<CategoryRecord>& categoryRecords();
const QVector<BlockRecord>& blockRecords();

/** The record of a block type, or null: shown blocks are looked at before hidden roots. */
const BlockRecord* findBlockRecord(int p_id);
