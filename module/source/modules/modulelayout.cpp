#include "modules/supermodule.h"

#include <QGraphicsScene>
#include <QtMath>

supermodule* supermodule::updateLayout()
{
    if (scene()) {
        // Mark the whole scene dirty once: setPos() then skips its own dirty-rect bookkeeping.
        scene()->update();
    }
    if (!m_parent) {
        fillJoint(nullptr, this);
    }
    // A loop, not a recursion: a chain may hold a hundred thousand blocks.
    supermodule* before = nullptr;
    for (supermodule* module = this; module; module = module->m_next) {
        const qreal advance = module->layoutOwn();
        if (before) {
            fillJoint(before, module);
        }
        if (module->m_next) {
            module->m_next->setPos(module->x() + advance, module->y());
        }
        before = module;
    }
    fillJoint(before, nullptr);
    return before;
}

void supermodule::fillCorners(BodyCorners p_corners, bool p_filled)
{
    m_filledCorners = p_filled ? m_filledCorners | p_corners : m_filledCorners & ~p_corners;
}

void supermodule::fillJoint(supermodule* p_before, supermodule* p_behind)
{
    // A preview lies beside round corners, as it may go again.
    const bool filled = p_before && p_behind && !p_before->isPreview() && !p_behind->isPreview();
    // Heads of loops tower above their neighbours: round where nothing stands beside them.
    const qreal higher =
        filled ? p_behind->boundingRect().top() - p_before->boundingRect().top() : 0;
    if (p_before) {
        p_before->fillCorners(BottomRightCorner, filled);
        p_before->fillCorners(TopRightCorner, filled && higher <= 0);
    }
    if (p_behind) {
        p_behind->fillCorners(BottomLeftCorner, filled);
        p_behind->fillCorners(TopLeftCorner, filled && higher >= 0);
    }
}

qreal supermodule::layoutOwn() { return boundingRect().width(); }

void supermodule::updateTree() { rootOf()->updateLayout(); }

QRect supermodule::extent(int& p_left, int& p_top, int& p_right, int& p_bottom)
{
    boundsRule(false).apply(p_left, p_top, p_right, p_bottom);
    return QRect(QPoint(p_left, p_top), QPoint(p_right, p_bottom));
}

BoundsRule supermodule::boundsRule(bool) const { return plainBoundsRule(boundingRect().size()); }

BoundsRule supermodule::plainBoundsRule(const QSizeF& p_size) const
{
    BoundsRule rule;
    rule.left = qRound(x());
    rule.top = qRound(y());
    rule.right = qRound(x() + p_size.width());
    rule.bottom = qRound(y() + p_size.height());
    return rule;
}
