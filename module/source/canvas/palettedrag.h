#pragma once

#include <QPointer>
#include <QPointF>

class LinkPreview;
class QGraphicsScene;
class supermodule;

/**
 * The drag of a new block from the palette over the canvas. The block exists from the moment it
 * comes in, hidden, so that the preview can tell where it would go; it dies if it leaves again.
 */
class PaletteDrag
{
public:
    PaletteDrag(QGraphicsScene& p_scene, LinkPreview& p_preview);
    ~PaletteDrag();
    Q_DISABLE_COPY(PaletteDrag)

    /** A block of a type comes in. Null if the type can't be built. */
    supermodule* enter(int p_id);
    /** The block on its way; null while there is none. */
    supermodule* module() const { return m_module; }
    /** The block's upper left corner is at a scene point. */
    void move(const QPointF& p_corner);
    /** The block stays: linked where the gap is open, or loose. Null if there is none. */
    supermodule* drop();
    /** The block goes out again, and the gap for it closes. */
    void leave();

private:
    QGraphicsScene& m_scene;
    LinkPreview& m_preview;
    QPointer<supermodule> m_module;
};
