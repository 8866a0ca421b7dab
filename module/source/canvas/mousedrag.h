#pragma once

#include "canvas/blockdrag.h"
#include "canvas/canvascursor.h"

class QMouseEvent;

/**
 * The drag of a block by the mouse over a view: turns the mouse's events into a BlockDrag, shows
 * the hand that belongs to it, and repaints just what has moved.
 */
class MouseDrag
{
public:
    /** All must outlive the drag. p_abandoned is that of BlockDrag. */
    MouseDrag(QGraphicsView& p_view, Document& p_document, LinkPreview& p_preview,
              std::function<void()> p_abandoned);

    /** Handles a press on a block or, for null, on none. */
    void press(supermodule* p_module, const QMouseEvent& p_event);
    bool isHeld() const { return m_drag.isHeld(); }
    /** Handles a move. True if the block was moved. */
    bool move(const QMouseEvent& p_event);
    /** The lower edge of the block that was pressed is below the view, where a release deletes it.
     */
    bool isOut() const;
    BlockDrag::End release(const QMouseEvent& p_event);
    /** Ends a drag that gets no release. */
    BlockDrag::End cancel();
    /** Opens the hand again, once all is done that belongs to a release. */
    void rest() { m_cursor.rest(); }
    void forget() { m_drag.forget(); }
    void deleteModule(supermodule* p_module) { m_drag.deleteModule(p_module); }

private:
    QGraphicsView& m_view;
    BlockDrag m_drag;
    CanvasCursor m_cursor;
    QPointer<supermodule> m_pressed;
    /** Where the press was, in view coordinates. */
    QPointF m_pressPos;
};
