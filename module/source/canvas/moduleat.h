#pragma once

#include <QList>

class QGraphicsItem;
class QGraphicsView;
class QPointF;
class supermodule;

/**
 * The block that a press means, of the items under it in stacking order: the innermost of those
 * that begin less than 400 scene units to the left of the press. Null if there is none; the preview
 * of a link is none.
 */
supermodule* moduleAt(const QList<QGraphicsItem*>& p_items, qreal p_sceneX);

/** What lies under a press. */
struct PressTarget {
    /** The block that it means; null for none, and on the pop-up, which hides what lies under it.
     */
    supermodule* module;
    bool onPopUp;
    /** Neither an item nor the connector of a block. */
    bool empty;
};

/** What lies under a press at a scene point; the background's item counts as nothing. */
PressTarget pressTarget(const QGraphicsView& p_view, const QPointF& p_scenePos,
                        QGraphicsItem& p_background);
