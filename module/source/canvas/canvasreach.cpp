#include "canvas/canvasreach.h"

#include "canvas/movedregion.h"
#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QGraphicsScene>
#include <QGraphicsView>

namespace
{
/** Behind and below the blocks, in scene units: a block, or a pop-up. */
const qreal s_room = 400;
} // namespace

void updateReach(QGraphicsView& p_view)
{
    QRectF blocks;
    for (const supermodule* module : qAsConst(liveModules)) {
        if (module->scene() == p_view.scene() && module->isVisible() && !module->isPreview()) {
            blocks |= module->sceneBoundingRect();
        }
    }
    const QMarginsF out = blockOverhang();
    // As far as it was in reach: otherwise the view would jump when the reach becomes smaller.
    const QRectF inSight =
        p_view.mapToScene(p_view.viewport()->rect()).boundingRect() & p_view.sceneRect();
    const QRectF reach = p_view.scene()->sceneRect() | inSight |
                         (blocks + QMarginsF(out.left(), out.top(), s_room, s_room));
    if (reach != p_view.sceneRect()) {
        p_view.setSceneRect(reach);
    }
}
