#include "canvas/movedregion.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsScene>
#include <QGraphicsView>

namespace
{
/** How far what belongs to a block is painted beyond its rectangle: tabs, feet, frames. */
const qreal s_margin = 45;
} // namespace

MovedRegion::MovedRegion(QGraphicsView& p_view)
    : m_view(p_view),
      m_sight(p_view.mapToScene(p_view.viewport()->rect())
                  .boundingRect()
                  .adjusted(-s_margin, -s_margin, s_margin, s_margin))
{
    // Deliver the scene's queued updates first: they would be discarded with the full update.
    QCoreApplication::sendPostedEvents(p_view.scene(), QEvent::MetaCall);
    m_before.reserve(liveModules.size());
    for (const supermodule* module : qAsConst(liveModules)) {
        m_before.append(placeInSight(module));
    }
}

MovedRegion::~MovedRegion()
{
    QRegion region;
    const auto add = [&](const QRectF& p_place) {
        if (!p_place.isNull()) {
            region +=
                m_view.mapFromScene(p_place.adjusted(-s_margin, -s_margin, s_margin, s_margin))
                    .boundingRect();
        }
    };
    const int count = qMin(m_before.size(), liveModules.size());
    for (int i = 0; i < count; ++i) {
        const QRectF place = placeInSight(liveModules.at(i));
        if (place != m_before.at(i)) {
            add(m_before.at(i));
            add(place);
        }
    }
    m_view.viewport()->repaint(region);
}

QRectF MovedRegion::placeInSight(const supermodule* p_module) const
{
    const QRectF place = p_module->boundingRect().translated(p_module->pos());
    const bool seen =
        place.intersects(m_sight) && p_module->isVisible() && p_module->scene() == m_view.scene();
    return seen ? place : QRectF();
}
