#include "supermodule.h"

#include <QtMath>

void supermodule::updateLayout()
{
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
    growBounds(boundingRect().size(), p_left, p_top, p_right, p_bottom);
    return QRect(QPoint(p_left, p_top), QPoint(p_right, p_bottom));
}

void supermodule::growBounds(const QSizeF& p_size, int& p_left, int& p_top, int& p_right,
                             int& p_bottom) const
{
    const QPointF at = scenePos();
    if (at.x() <= p_left) {
        p_left = qRound(at.x());
    }
    if (at.y() <= p_top) {
        p_top = qRound(at.y());
    }
    if (p_right <= at.x() + p_size.width()) {
        p_right = qRound(at.x() + p_size.width());
    }
    if (p_bottom <= at.y() + p_size.height()) {
        p_bottom = qRound(at.y() + p_size.height());
    }
}
