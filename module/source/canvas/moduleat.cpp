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

PressTarget pressTarget(const QGraphicsView& p_view, const QPointF& p_scenePos,
                        QGraphicsItem& p_background)
{
    QList<QGraphicsItem*> items = p_view.scene()->items(
        p_scenePos, Qt::IntersectsItemShape, Qt::DescendingOrder, p_view.viewportTransform());
    items.removeOne(&p_background);
    const bool onPopUp = items.contains(graphicsItem_Param::existing());
    return {onPopUp ? nullptr : moduleAt(items, p_scenePos.x()), onPopUp,
            items.isEmpty() && !supermodule::isOnConnector(p_scenePos)};
}
