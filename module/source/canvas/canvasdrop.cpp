#include "canvas/canvasdrop.h"

#include "canvas/linkpreview.h"
#include "canvas/movedregion.h"
#include "modules/catalogue/dragpayload.h"
#include "modules/supermodule.h"

#include <QDragMoveEvent>
#include <QGraphicsView>
#include <QMimeData>

CanvasDrop::CanvasDrop(QGraphicsView& p_view, QGraphicsScene& p_scene, LinkPreview& p_preview)
    : m_view(p_view), m_preview(p_preview), m_drag(p_scene, p_preview)
{
}

supermodule* CanvasDrop::enter(QDragMoveEvent& p_event)
{
    m_drag.leave();
    int id = 0;
    if (!readBlockDrag(p_event.mimeData(), id)) {
        p_event.setAccepted(p_event.mimeData()->hasUrls());
        return nullptr;
    }
    p_event.acceptProposedAction();
    return m_drag.enter(id);
}

void CanvasDrop::move(QDragMoveEvent& p_event)
{
    if (!isBlockDrag(*p_event.mimeData())) {
        p_event.setAccepted(p_event.mimeData()->hasUrls());
        return;
    }
    p_event.acceptProposedAction();
    if (const supermodule* incoming = m_drag.module()) {
        const int width = static_cast<int>(incoming->boundingRect().width());
        const MovedRegion region(m_view);
        m_drag.move(m_view.mapToScene(p_event.pos().x() - width / 2, p_event.pos().y()).toPoint());
    }
}

void CanvasDrop::leave()
{
    {
        const MovedRegion region(m_view);
        m_preview.hide();
    }
    m_drag.leave();
}

void CanvasDrop::drop()
{
    MovedRegion region(m_view);
    region.coverLoopsAround(m_drag.drop());
}
