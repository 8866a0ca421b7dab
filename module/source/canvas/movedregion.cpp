#include "canvas/movedregion.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QtMath>

QMarginsF blockOverhang() { return QMarginsF(14, 30, 36, 72); }

QRegion regionOfBlocksIn(const QGraphicsView& p_view, const QRegion& p_painted)
{
    const QMarginsF out = blockOverhang() * p_view.transform().m11();
    const QMargins reach(qCeil(out.right()), qCeil(out.bottom()), qCeil(out.left()),
                         qCeil(out.top()));
    QRegion region;
    for (const QRect& part : p_painted) {
        region += part + reach;
    }
    return region;
}

MovedRegion::MovedRegion(QGraphicsView& p_view) : m_view(p_view)
{
    const QMarginsF out = blockOverhang();
    m_sight = p_view.mapToScene(p_view.viewport()->rect()).boundingRect() +
              QMarginsF(out.right(), out.bottom(), out.left(), out.top());
    // Deliver the scene's queued updates first: they would be discarded with the full update.
    QCoreApplication::sendPostedEvents(p_view.scene(), QEvent::MetaCall);
    m_before.reserve(liveModules.size());
    for (const supermodule* module : qAsConst(liveModules)) {
        m_before.append(lookOf(module));
    }
}

MovedRegion::~MovedRegion()
{
    QRegion region;
    const auto add = [&](const QRectF& p_place) {
        if (!p_place.isNull()) {
            region += m_view.mapFromScene(p_place + blockOverhang()).boundingRect();
        }
    };
    if (m_before.size() != liveModules.size()) {
        m_view.viewport()->update();
        return;
    }
    for (int i = 0; i < m_before.size(); ++i) {
        const Look& before = m_before.at(i);
        if (liveModules.at(i) != before.module) {
            m_view.viewport()->update();
            return;
        }
        const Look now = lookOf(before.module);
        if (now.place != before.place || now.z != before.z || now.opacity != before.opacity) {
            add(before.place);
            add(now.place);
        }
    }
    for (const supermodule* loop : qAsConst(m_restacked)) {
        add(lookOf(loop).place);
    }
    m_view.viewport()->repaint(region);
}

void MovedRegion::coverLoopsAround(const supermodule* p_module)
{
    for (const supermodule* each = p_module; each && each->parentModule();
         each = each->parentModule()) {
        if (each->parentModule()->linkOf(each) != NextLink) {
            m_restacked.append(each->parentModule());
        }
    }
}

MovedRegion::Look MovedRegion::lookOf(const supermodule* p_module) const
{
    const QRectF place = p_module->boundingRect().translated(p_module->pos());
    const bool seen =
        place.intersects(m_sight) && p_module->isVisible() && p_module->scene() == m_view.scene();
    return {p_module, seen ? place : QRectF(), p_module->zValue(), p_module->opacity()};
}
