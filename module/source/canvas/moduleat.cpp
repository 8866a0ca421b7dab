#include "canvas/moduleat.h"

#include "modules/supermodule.h"

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
