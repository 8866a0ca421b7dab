#include "canvas/canvascursor.h"

#include <QGraphicsView>

void CanvasCursor::press()
{
    if (m_view.viewport()->cursor().shape() == Qt::OpenHandCursor) {
        drag();
    }
}

void CanvasCursor::drag()
{
    // The window system is told of each cursor that is set, even of the same one.
    if (m_view.viewport()->cursor().shape() != Qt::ClosedHandCursor) {
        m_view.viewport()->setCursor(Qt::ClosedHandCursor);
    }
}

void CanvasCursor::rest()
{
    if (m_view.viewport()->cursor().shape() == Qt::ClosedHandCursor) {
        // The view opens its hand, forgets the cursor of the item that the drag began on, and
        // scrolls no longer.
        m_view.setDragMode(QGraphicsView::NoDrag);
        m_view.setDragMode(QGraphicsView::ScrollHandDrag);
    }
}
