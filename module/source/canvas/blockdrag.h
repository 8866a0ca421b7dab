#pragma once

#include "document/moduleplace.h"

#include <QPointer>
#include <QPointF>

#include <functional>

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
        Nothing, /**< there was none, or the block has not been moved */
        Settled, /**< the block has been linked, or left loose */
        Outside  /**< released outside; the caller deletes the block */
    };

    /** p_abandoned is called when a drag has ended otherwise than by its release. */
    BlockDrag(Document& p_document, LinkPreview& p_preview, std::function<void()> p_abandoned);

    /** Handles a press at a place, on a block or, for null, on none. */
    void press(supermodule* p_module, const QPointF& p_at);
    /** True from a press on a block to its release, whether or not the block was moved. */
    bool isHeld() const { return m_module; }
    /** Handles a mouse move to a place. True if the block was moved. */
    bool move(const QPointF& p_at);
    /**
     * Handles the release. p_outside: where a block that was dragged is deleted. p_away: not where
     * the press was, so that the block is settled even if it wasn't moved.
     */
    End release(bool p_outside, bool p_away);
    /** Ends a drag that gets no release event: a block that was moved is settled where it is. */
    End cancel();
    /** Ends a drag without settling the block. */
    void forget();
    /** Where a block goes back to when its deletion is undone: from a drag, to the press's place.
     */
    ModulePlace placeForUndo(const supermodule* p_module) const;

    /**
     * Deletes a block through the undo stack, dragged or not; null and the main block are ignored.
     */
    void deleteModule(supermodule* p_module);

private:
    void putDown(supermodule* p_module);

    Document& m_document;
    LinkPreview& m_preview;
    std::function<void()> m_abandoned;
    QPointer<supermodule> m_module;
    /** The last place of the mouse, less the rounding remainder. */
    QPointF m_lastAt;
    ModulePlace m_pressPlace;
};
