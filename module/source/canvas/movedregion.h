#pragma once

#include <QMarginsF>
#include <QRectF>
#include <QVector>

class QGraphicsView;
class QRegion;
class supermodule;

/**
 * How far what belongs to a block is painted beyond its rectangle, in scene units: to the left the
 * corners of the block before, which are filled while this one is linked to it, to the right tabs
 * and frames, below the feet and drawers of an empty loop, and everywhere the pixel that scaling
 * adds.
 */
QMarginsF blockOverhang();

/** The region of a view in which a block may stand that paints into the given one. */
QRegion regionOfBlocksIn(const QGraphicsView& p_view, const QRegion& p_painted);

/**
 * Repaints, when it is destroyed, the region that blocks covered before and cover after the changes
 * made in its lifetime, and nothing else of the view. For code that calls QGraphicsScene::update()
 * before it changes blocks, so that no item adds a dirty rect of its own: the repaint takes place
 * at once, which also discards the pending update of the whole view.
 *
 * It sees place, size, visibility, stacking by z value, and opacity. Where blocks were created or
 * deleted meanwhile the whole view is painted.
 */
class MovedRegion
{
public:
    explicit MovedRegion(QGraphicsView& p_view);
    ~MovedRegion();
    Q_DISABLE_COPY(MovedRegion)

    /** Also repaints the loops around a block, which linking it has restacked; null for none. */
    void coverLoopsAround(const supermodule* p_module);

private:
    /** How a block is seen; without a place if it is out of sight. */
    struct Look {
        const supermodule* module;
        QRectF place;
        qreal z;
        qreal opacity;
    };

    Look lookOf(const supermodule* p_module) const;

    QGraphicsView& m_view;
    QRectF m_sight;
    /** The live blocks, as they were seen. */
    QVector<Look> m_before;
    QVector<const supermodule*> m_restacked;
};
