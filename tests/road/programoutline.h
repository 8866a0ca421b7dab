#pragma once

#include "modules/collisionitem.h"
#include "support/canvas/singleblock.h"

#include <QHash>
#include <QList>
#include <QStringList>

class supermodule;
class TzProgramView;

/** What an outline tells of each block beside its type. */
enum class Telling {
    Keys,       /**< the key that the registry knows it by */
    Parameters, /**< the attributes of its own */
    Everything, /**< both, the place and how it is seen */
};

/** What a copy keeps of a block's own attributes; some types forget one. */
BlockAttributes copiedParameters(int p_type, BlockAttributes p_parameters);

/** A chain in one line: the blocks in order, each with its body in brackets. */
QString chainOutline(const supermodule* p_first, Telling p_telling);
/** The same with the parameters that a copy of the chain has. */
QString copyOutline(const supermodule* p_first);
/** All chains of a canvas, a line each, in an order that hangs on nothing but these lines. */
QStringList documentOutline(const TzProgramView& p_view, Telling p_telling);

/**
 * What a document should be that grows by drops: knows by itself where a block goes that is put on
 * a connector, and what becomes of what stood there.
 */
class ProgramModel
{
public:
    /** Adds a loose block under its key. */
    void add(int p_type, int p_key);
    /** Puts a loose block on a connector of another one. */
    void link(int p_key, int p_target, LinkType p_link);
    /** How many bodies, one in the other, a block stands in. */
    int depth(int p_key) const;
    /** The outline that the document must have, with keys. */
    QStringList outline() const;

    static bool isLoop(int p_type);

private:
    struct Block {
        int type = 0;
        int parent = 0;
        int next = 0;
        int body = 0;
    };
    QString chain(int p_first) const;

    QHash<int, Block> m_blocks;
};
