#include "canvas/movedregion.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMarginsF>

namespace
{
/**
 * How far what belongs to a block is painted beyond its rectangle: tabs and frames to the right,
 * the feet and drawers of an empty loop below, and everywhere the pixel that scaling adds.
 */
const QMarginsF s_overhang(12, 30, 36, 72);
/** How far a block paints its tab to the right of its rectangle. */
const qreal s_tab = 25;
/** What of a block's rectangle is painted along with its tab. */
const qreal s_edge = 4;
} // namespace

MovedRegion::MovedRegion(QGraphicsView& p_view)
    : m_view(p_view),
      m_sight(
          p_view.mapToScene(p_view.viewport()->rect()).boundingRect() +
          QMarginsF(s_overhang.right(), s_overhang.bottom(), s_overhang.left(), s_overhang.top()))
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
            region += m_view.mapFromScene(p_place + s_overhang).boundingRect();
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
    addEdgesOfTabs(region);
    m_view.viewport()->repaint(region);
}

void MovedRegion::addEdgesOfTabs(QRegion& p_region) const
{
    // The view leaves out an item whose rectangle lies outside the region, also if its tab doesn't.
    const auto mapped = [this](const QRectF& p_rect) {
        return m_view.mapFromScene(p_rect).boundingRect();
    };
    QVector<QRectF> places;
    for (const supermodule* module : qAsConst(liveModules)) {
        const QRectF place = placeInSight(module);
        // Well inside: at the very edge the view rounds another way.
        const QRectF inside = place.adjusted(s_edge, s_edge, -s_edge, -s_edge);
        if (!place.isNull() && !p_region.intersects(mapped(inside))) {
            places.append(place);
        }
    }
    for (bool grown = true; grown;) {
        grown = false;
        for (QRectF& place : places) {
            const QRectF tab(place.right(), place.top(), s_tab, place.height());
            if (!place.isNull() && p_region.intersects(mapped(tab))) {
                p_region += mapped(
                    QRectF(place.right() - 2 * s_edge, place.top(), 2 * s_edge, place.height()));
                place = QRectF();
                grown = true;
            }
        }
    }
}

QRectF MovedRegion::placeInSight(const supermodule* p_module) const
{
    const QRectF place = p_module->boundingRect().translated(p_module->pos());
    const bool seen =
        place.intersects(m_sight) && p_module->isVisible() && p_module->scene() == m_view.scene();
    return seen ? place : QRectF();
}
