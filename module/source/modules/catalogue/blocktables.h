#pragma once

#include <QString>
#include <QVector>

struct CatalogueRow;

/** The palette's categories. */
enum CategoryId : int {
    HiddenCategory = -1, /**< of what no tab shows */
    ActionCategory = 0,
    ControlCategory = 2,
    SoundCategory = 7,
    ExpressionCategory = 8
};

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
    int category;         /**< a CategoryId */
    QString image;        /**< picture in the palette */
    QString pressedImage; /**< picture of the drag, and the block's own picture path */
    int id;
    bool draggable;
    QString caption;         /**< translated, but for the main block's */
    const CatalogueRow* row; /**< where all this stands */
};

/**
 * The tables of the categories, in the order of the tabs, and of the blocks, in the order of the
 * strip. Both are built at first use, with the translator in force then, and never change.
 */
const QVector<CategoryRecord>& categoryRecords();
const QVector<BlockRecord>& blockRecords();

/** The record of a block type, or null. */
const BlockRecord* findBlockRecord(int p_id);
