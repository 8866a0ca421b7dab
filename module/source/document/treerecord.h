#pragma once

#include <QByteArray>

class QGraphicsScene;
class supermodule;

/**
 * A record of a block and all under it, from which they can be built again: their values, their
 * links to one another and their keys. Some 150 bytes a block.
 */
class TreeRecord
{
public:
    TreeRecord() = default;
    /** Records a block and all under it, as they are now. */
    explicit TreeRecord(const supermodule* p_root);

    /**
     * Builds the blocks again, as on loading, and gives each its old key, unless another block has
     * that by now. Nothing is laid out. Null for an empty record.
     */
    supermodule* rebuild(QGraphicsScene* p_scene) const;

private:
    QByteArray m_data;
};
