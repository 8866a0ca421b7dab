#pragma once

#include "canvas/tzprogramview.h"

#include <QList>
#include <QPoint>

class QWidget;

/**
 * A canvas of 1000 by 600 pixels at a scale of 1, with its main block at scene (100, 200), and
 * the hands that use it: real mouse, key and drag events on the real widget.
 */
class CanvasFixture
{
public:
    CanvasFixture();
    ~CanvasFixture();

    Document document;
    TzProgramView view{document};

    mainModule* main() const { return view.mainBlock(); }

    /** The viewport's point of a scene point. */
    QPoint at(const QPointF& p_scenePos) const;
    /** Drags a block of a type from the palette and drops it, its top middle at a scene point. */
    supermodule* drop(int p_id, const QPointF& p_scenePos);
    /** Puts a new block at the end of a chain by a drop; the main block's chain by default. */
    supermodule* dropBehind(supermodule* p_last, int p_id);
    /** The first half of a drop: the block is over the canvas, the button still held. */
    void dragOver(int p_id, const QPointF& p_scenePos);
    void dragOverOn(const QPointF& p_scenePos);
    void leave();
    /** Presses on a block, moves by a way in view pixels in some steps, and releases. */
    void drag(supermodule* p_module, const QPoint& p_way);
    void press(const QPointF& p_scenePos, Qt::MouseButton p_button = Qt::LeftButton);
    void move(const QPointF& p_scenePos);
    void release(const QPointF& p_scenePos);
    void click(const QPointF& p_scenePos);
    void key(int p_key, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier);

    /** The types of a chain's blocks, in order. */
    static QList<int> ids(const supermodule* p_first);
    /** All blocks of the scene but the preview. */
    QList<supermodule*> blocks() const;
    /** What breaks the rules of a document, as readable lines; empty when all is well. */
    QStringList brokenInvariants() const;

private:
    std::unique_ptr<QMimeData> m_drag;
};

/** MIME data as the palette makes it. */
QMimeData* blockDrag(int p_id);
