#pragma once

#include "document/moduleplace.h"

#include <QPointer>
#include <QPointF>

class Document;
class LinkPreview;
class supermodule;

/**
 * The drag of a block that stands on the canvas, with all that hangs under it: from the press,
 * which may be all there is, over the moves to the release. Places are in scene units.
 */
class BlockDrag
{
public:
    /** How a drag has ended. */
    enum class End {
        Nothing, /**< there was none, or the block is where and as it was */
        Settled, /**< the block has been put down: linked, or loose */
        Outside  /**< the block was let go outside, and waits to be deleted */
    };

    BlockDrag(Document& p_document, LinkPreview& p_preview);

    /** A press at a place, on a block or, for null, on none. */
    void press(supermodule* p_module, const QPointF& p_at);
    /** True while a block is held, moved or not. */
    bool isHeld() const { return m_module; }
    /** The mouse is at a place now. True if the block has come along. */
    bool move(const QPointF& p_at);
    /**
     * The button is let go. p_outside: where a block that was dragged is deleted. p_away: not where
     * the press was, so that the block is put down even if it hasn't come along.
     */
    End release(bool p_outside, bool p_away);
    /** Ends a drag that gets no release: a block in the air is put down where it is. */
    End cancel();
    /** Lets go of the block and leaves it as it is. */
    void forget() { m_module.clear(); }
    /** Where a block goes back to when its deletion is undone: from a drag, to the press's place.
     */
    ModulePlace placeForUndo(const supermodule* p_module) const;

private:
    void putDown(supermodule* p_module);

    Document& m_document;
    LinkPreview& m_preview;
    QPointer<supermodule> m_module;
    /** Where the mouse was, less what rounding has left over. */
    QPointF m_lastAt;
    ModulePlace m_pressPlace;
};
