#pragma once

#include "document/moduleplace.h"
#include "document/treerecord.h"

#include <QVector>

#include <functional>

class Document;
class supermodule;

/**
 * Blocks of one tree that a command has taken off the canvas, and all that is needed to put them
 * back: their values, their place, and what of others stood under them.
 */
class TakenTree
{
public:
    /** Tells by its registry key whether a block is taken along. */
    using Belongs = std::function<bool(int)>;

    /** Nothing taken; nothing comes back. */
    TakenTree() = default;
    /**
     * Takes a block off the canvas, with those under it that p_belongs names; without p_belongs,
     * with all under it. Of the others, what follows moves up into the gap, if the block had a
     * parent; all the rest stays where it stands, loose.
     */
    TakenTree(Document& p_document, supermodule* p_root, const Belongs& p_belongs = Belongs());

    /** Lets the blocks come back to another place than the one where they were taken from. */
    void setPlace(const ModulePlace& p_place) { m_place = p_place; }
    /**
     * Builds the blocks again and puts them where they were: on their old parent, wherever that
     * stands now, in front of what has moved up; on what they touch, if the parent has gone or
     * something else hangs there; loose if they were loose. What was left loose comes back under
     * them if it hasn't been touched since.
     */
    void putBack(Document& p_document) const;

private:
    /** A block of others that hung under a taken one. */
    struct Left {
        int key;
        int ownerKey;
        LinkType link;
        QPointF position;
    };

    bool hangAgain(supermodule* p_module, const Document& p_document) const;
    void takeUnder(supermodule* p_module) const;

    int m_key = 0;
    ModulePlace m_place;
    TreeRecord m_record;
    /** What has moved up; without key if nothing has. */
    Left m_follower{0, 0, NoLink, QPointF()};
    QVector<Left> m_loose;
};
