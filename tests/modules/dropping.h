#pragma once

#include "modules/supermodule.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"

/**
 * Where a palette block of a type has to be dropped to stand some units right of a connector,
 * nearer to it than to any other: the middle of its top edge, in scene units.
 */
inline QPointF dropPoint(const supermodule* p_owner, LinkType p_type, int p_id)
{
    // As wide as the block is before its first layout.
    const bool loop = blockDataOf(p_id)->isLoop();
    const QPointF connector = p_owner->connector(p_type)->scenePos();
    return connector + QPointF(4 + (loop ? 280 : 120) / 2, -30);
}

/** Drops a palette block on a connector. */
inline supermodule* dropOn(CanvasFixture& p_canvas, supermodule* p_owner, LinkType p_type, int p_id)
{
    return p_canvas.drop(p_id, dropPoint(p_owner, p_type, p_id));
}

/** Drags a block by the mouse so that its grip comes to a connector. */
inline void dragTo(CanvasFixture& p_canvas, supermodule* p_module, const supermodule* p_owner,
                   LinkType p_type)
{
    const QPointF target = p_owner->connector(p_type)->scenePos() + QPointF(4, -30);
    p_canvas.drag(p_module, (target - p_module->scenePos()).toPoint());
}
