#pragma once

#include <QRectF>
#include <QVector>

class QGraphicsView;
class QRegion;
class supermodule;

/**
 * Paints what blocks leave and take while it lives, and nothing else of the view. For code that
 * calls QGraphicsScene::update() before it moves blocks, so that no item reports its own change:
 * the region is painted at once, which also calls off the update of the whole view.
 *
 * Blocks neither come nor go meanwhile, and only their places, sizes and visibility change.
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
    /** Where each of the live blocks was, in scene units; null for those out of sight. */
    QVector<QRectF> m_before;
};
