#pragma once

#include "canvas/tzprogramview.h"

#include <QList>
#include <QPoint>

#include <memory>

/** The hands that use a shown canvas: real mouse, key and drag events on the real widget. */
class CanvasHands
{
public:
    /** The canvas has to live until the hands have gone, and need not be there before they act. */
    explicit CanvasHands(TzProgramView& p_view);
    ~CanvasHands();
    Q_DISABLE_COPY(CanvasHands)

    mainModule* main() const { return m_view.mainBlock(); }

    /** The viewport's point of a scene point. */
    QPoint at(const QPointF& p_scenePos) const;
    /** Drags a block of a type from the palette and drops it, its top middle at a scene point. */
    supermodule* drop(int p_id, const QPointF& p_scenePos);
    /** Puts a new block at the end of a chain by a drop; the scale of the canvas has to be 1. */
    supermodule* dropBehind(supermodule* p_last, int p_id);
    /** The first half of a drop: the block is over the canvas, the button still held. */
    void dragOver(int p_id, const QPointF& p_scenePos);
    void dragOverOn(const QPointF& p_scenePos);
    /** Goes off the canvas with the block that is over it, if there is one. */
    void leave();
    /** Presses on a block, moves by a way in view pixels in some steps, and releases. */
    void drag(supermodule* p_module, const QPoint& p_way);
    void press(const QPointF& p_scenePos, Qt::MouseButton p_button = Qt::LeftButton);
    void move(const QPointF& p_scenePos);
    void release(const QPointF& p_scenePos);
    void click(const QPointF& p_scenePos);
    /** Presses the right button and closes the menu that comes up. */
    void rightClick(const QPointF& p_scenePos);
    void key(int p_key, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier);

    /** The types of a chain's blocks, in order. */
    static QList<int> ids(const supermodule* p_first);

private:
    TzProgramView& m_view;
    std::unique_ptr<QMimeData> m_drag;
};

/** MIME data as the palette makes it. */
QMimeData* blockDrag(int p_id);
