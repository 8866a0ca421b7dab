#pragma once

#include "canvas/palettedrag.h"

class QDragMoveEvent;
class QGraphicsView;

/**
 * A view as the target of drags from outside: a block from the palette, whose middle of the top
 * edge the cursor holds, or files.
 */
class CanvasDrop
{
public:
    /** Blocks come into the scene, which the view shows. All must outlive the target. */
    CanvasDrop(QGraphicsView& p_view, QGraphicsScene& p_scene, LinkPreview& p_preview);

    /** Handles a drag that enters, and accepts it or not. Its block; null for files. */
    supermodule* enter(QDragMoveEvent& p_event);
    /** Handles a move of the drag, and accepts it or not. */
    void move(QDragMoveEvent& p_event);
    /** The block goes, and the gap for it closes. */
    void leave();
    /** Puts the block down: linked where the gap is open, or loose. */
    void drop();

private:
    QGraphicsView& m_view;
    LinkPreview& m_preview;
    PaletteDrag m_drag;
};
