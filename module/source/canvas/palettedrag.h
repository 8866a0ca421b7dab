#pragma once

#include <QPointer>
#include <QPointF>

class LinkPreview;
class QGraphicsScene;
class supermodule;

/**
 * The drag of a new block from the palette over the canvas. The block is built, hidden, when the
 * drag enters, so that the preview can find its place, and deleted if the drag leaves again.
 */
class PaletteDrag
{
public:
    PaletteDrag(QGraphicsScene& p_scene, LinkPreview& p_preview);
    ~PaletteDrag();
    Q_DISABLE_COPY(PaletteDrag)

    /** Builds the block of a drag that enters. Null if the type can't be built. */
    supermodule* enter(int p_id);
    /** The block of the drag; null while there is none. */
    supermodule* module() const { return m_module; }
    /** Moves the block's upper left corner to a scene point. */
    void move(const QPointF& p_corner);
    /** Drops the block: linked where the gap is open, or loose. Null if there is none. */
    supermodule* drop();
    /** Deletes the block and closes the gap for it. */
    void leave();

private:
    QGraphicsScene& m_scene;
    LinkPreview& m_preview;
    QPointer<supermodule> m_module;
};
