#include "canvas/moduleat.h"

#include "modules/graphicsitem_param.h"
#include "modules/supermodule.h"

#include <QGraphicsView>

namespace
{
const qreal s_reach = 400;
} // namespace

supermodule* moduleAt(const QList<QGraphicsItem*>& p_items, qreal p_sceneX)
{
    // Of nested blocks the innermost starts furthest right.
    supermodule* found = nullptr;
    qreal nearest = s_reach;
    for (QGraphicsItem* item : p_items) {
        supermodule* module = supermodule::seenAs(item);
        if (module && !module->isPreview() && p_sceneX - module->scenePos().x() < nearest) {
            nearest = p_sceneX - module->scenePos().x();
            found = module;
        }
    }
    return found;
}

supermodule* moduleUnder(const QGraphicsView& p_view, const QPoint& p_at)
{
    const QPointF at = p_view.mapToScene(p_at);
    const QList<QGraphicsItem*> items = p_view.scene()->items(
        at, Qt::IntersectsItemShape, Qt::DescendingOrder, p_view.viewportTransform());
    return items.contains(graphicsItem_Param::existing()) ? nullptr : moduleAt(items, at.x());
}
