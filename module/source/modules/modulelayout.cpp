#include "modules/supermodule.h"

#include <QGraphicsScene>
#include <QtMath>

void supermodule::updateLayout()
{
    if (scene()) {
        // Mark the whole scene dirty once: setPos() then skips its own dirty-rect bookkeeping.
        scene()->update();
    }
    // A loop, not a recursion: a chain may hold a hundred thousand blocks.
    for (supermodule* module = this; module; module = module->m_next) {
        const qreal advance = module->layoutOwn();
        if (module->m_next) {
            module->m_next->setPos(module->x() + advance, module->y());
        }
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
