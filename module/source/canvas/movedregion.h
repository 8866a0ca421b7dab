#pragma once

#include <QRectF>
#include <QVector>

class QGraphicsView;
class QRegion;
class supermodule;

/**
 * Repaints, when it is destroyed, the region that blocks covered before and cover after the moves
 * made in its lifetime, and nothing else of the view. For code that calls QGraphicsScene::update()
 * before it moves blocks, so that no item adds a dirty rect of its own: the repaint takes place at
 * once, which also discards the pending update of the whole view.
 *
 * Blocks must not be created or deleted meanwhile; only position, size and visibility may change.
 */
class MovedRegion
{
public:
    explicit MovedRegion(QGraphicsView& p_view);
    ~MovedRegion();
    Q_DISABLE_COPY(MovedRegion)

private:
    QRectF placeInSight(const supermodule* p_module) const;
    void addEdgesOfTabs(QRegion& p_region) const;

    QGraphicsView& m_view;
    QRectF m_sight;
    /** The scene rectangle of each live block before the move; null for those out of sight. */
    QVector<QRectF> m_before;
};
