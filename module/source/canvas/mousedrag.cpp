#include "canvas/mousedrag.h"

#include "canvas/movedregion.h"
#include "modules/modulebutton.h"
#include "modules/supermodule.h"

#include <QApplication>
#include <QGraphicsView>
#include <QMouseEvent>

namespace
{
const qreal s_sameCoordinate = 1e-12;
} // namespace

MouseDrag::MouseDrag(QGraphicsView& p_view, Document& p_document, LinkPreview& p_preview,
                     std::function<void()> p_abandoned)
    : m_view(p_view), m_drag(p_document, p_preview, std::move(p_abandoned)), m_cursor(p_view)
{
}

void MouseDrag::press(supermodule* p_module, const QMouseEvent& p_event)
{
    m_pressed = p_module;
    m_pressPos = p_event.localPos();
    m_drag.press(p_module, m_view.mapToScene(p_event.pos()));
    if (p_module) {
        m_cursor.press();
    }
}

bool MouseDrag::move(const QMouseEvent& p_event)
{
    bool moved = false;
    {
        const MovedRegion region(m_view);
        moved = m_drag.move(m_view.mapToScene(p_event.pos()));
    }
    if (moved) {
        m_cursor.drag();
        // A hand that trembles still clicks.
        if ((p_event.localPos() - m_pressPos).manhattanLength() >=
            QApplication::startDragDistance()) {
            takeBackButtonPress(*m_view.scene());
        }
    }
    return moved;
}

bool MouseDrag::isOut() const
{
    return m_pressed && m_view.mapFromScene(m_pressed->sceneBoundingRect().bottomLeft()).y() >
                            m_view.viewport()->height();
}

BlockDrag::End MouseDrag::release(const QMouseEvent& p_event)
{
    const QPointF way = p_event.localPos() - m_pressPos;
    const bool away = qAbs(way.x()) > s_sameCoordinate || qAbs(way.y()) > s_sameCoordinate;
    MovedRegion region(m_view);
    const BlockDrag::End end = m_drag.release(isOut(), away);
    region.coverLoopsAround(m_pressed);
    return end;
}

BlockDrag::End MouseDrag::cancel()
{
    m_cursor.rest();
    return m_drag.cancel();
}
