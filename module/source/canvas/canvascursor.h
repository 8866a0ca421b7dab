#pragma once

class QGraphicsView;

/**
 * The hand over a canvas: open over all that can be dragged, which is the canvas, too; closed in a
 * drag. Items that can't be dragged have cursors of their own.
 */
class CanvasCursor
{
public:
    /** The view must outlive the cursor's use. */
    explicit CanvasCursor(QGraphicsView& p_view) : m_view(p_view) {}

    /** Closes the hand for the press on a block; where another cursor is seen, it stays. */
    void press();
    /** Closes the hand, whatever cursor is seen. */
    void drag();
    /**
     * Opens the hand, if it is closed, at the end of a drag. Also ends a drag of the canvas itself,
     * which may have got no release.
     */
    void rest();

private:
    QGraphicsView& m_view;
};
