#pragma once

#include <QList>

class QGraphicsItem;
class QGraphicsView;
class QPoint;
class supermodule;

/**
 * The block that a press means, of the items under it in stacking order: the innermost of those
 * that begin less than 400 scene units to the left of the press. Null if there is none; the preview
 * of a link is none.
 */
supermodule* moduleAt(const QList<QGraphicsItem*>& p_items, qreal p_sceneX);
/** The one that a press at a point of a view's viewport would mean; none below the pop-up. */
supermodule* moduleUnder(const QGraphicsView& p_view, const QPoint& p_at);
