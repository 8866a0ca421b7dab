#include "modules/supermodule.h"

#include "base/tilerlog.h"
#include "modules/documentstate.h"
#include "modules/moduletree.h"

#include <QDebug>
#include <QLineF>

#include <algorithm>

namespace
{
/** Where a block stands when it comes loose behind a chain that nothing can follow. */
const QPointF s_looseOffset(20, 20);
} // namespace

int supermodule::s_bodies = 0;

void supermodule::createCollisions()
{
    const QRectF rect = boundingRect();
    makeConnector(NextLink, 0, QPointF(rect.width(), (rect.height() - 60) / 2 - 10));
}

void supermodule::makeConnector(LinkType p_type, int p_kind, const QPointF& p_pos)
{
    if (Socket* made = socket(p_type)) {
        *made = Socket{p_kind, p_pos, true, nullptr};
    }
}

supermodule::Socket* supermodule::socket(LinkType p_type) const
{
    switch (p_type) {
    case NextLink:
        return &m_nextCollision;
    case LeftLink:
        return &m_leftCollision;
    case RightLink:
        return &m_rightCollision;
    case NoLink:
        break;
    }
    return nullptr;
}

bool supermodule::hasConnector(LinkType p_type) const
{
    const Socket* found = socket(p_type);
    return found && found->isThere;
}

collisionItem* supermodule::connector(LinkType p_type) const
{
    Socket* found = socket(p_type);
    if (!found || !found->isThere) {
        return nullptr;
    }
    if (!found->item) {
        // The item is a view of what the block already says, so the block counts as unchanged.
        found->item =
            std::make_unique<collisionItem>(found->kind, p_type, const_cast<supermodule*>(this));
        found->item->setPos(found->pos);
    }
    return found->item.get();
}

QRectF supermodule::connectorRect(LinkType p_type) const
{
    const Socket* found = socket(p_type);
    return found && found->isThere ? collisionItem::area(found->kind).translated(found->pos)
                                   : QRectF();
}

bool supermodule::isOnConnector(const QPointF& p_at)
{
    return std::any_of(liveModules.cbegin(), liveModules.cend(),
                       [&p_at](const supermodule* p_each) {
                           const QPointF inside = p_at - p_each->pos();
                           return p_each->scene() && p_each->isVisible() &&
                                  (p_each->connectorRect(NextLink).contains(inside) ||
                                   p_each->connectorRect(LeftLink).contains(inside) ||
                                   p_each->connectorRect(RightLink).contains(inside));
                       });
}

void supermodule::moveConnector(LinkType p_type, qreal p_x)
{
    Socket* found = socket(p_type);
    if (found) {
        found->pos.setX(p_x);
        if (found->item) {
            found->item->setX(p_x);
        }
    }
}

supermodule* supermodule::*supermodule::linkMember(LinkType p_type)
{
    switch (p_type) {
    case NextLink:
        return &supermodule::m_next;
    case LeftLink:
        return &supermodule::m_left;
    case RightLink:
        return &supermodule::m_right;
    case NoLink:
        break;
    }
    return nullptr;
}

supermodule* supermodule::child(LinkType p_type) const
{
    supermodule* supermodule::*const link = linkMember(p_type);
    return link ? this->*link : nullptr;
}

LinkType supermodule::linkOf(const supermodule* p_child) const
{
    for (const LinkType type : {NextLink, LeftLink, RightLink}) {
        if (p_child && child(type) == p_child) {
            return type;
        }
    }
    return NoLink;
}

void supermodule::hangModule(LinkType p_type, supermodule* p_module)
{
    if (supermodule* supermodule::*const link = linkMember(p_type)) {
        s_bodies += p_type != NextLink && !child(p_type) ? 1 : 0;
        this->*link = p_module;
        p_module->m_parent = this;
    }
}

void supermodule::appendModule(supermodule* p_module)
{
    supermodule* last = lastOf();
    qCDebug(tilerLog) << " supermodule::appendModule "
                      << "p_module " << p_module << "last " << last;
    last->hangModule(NextLink, p_module);
}

void supermodule::insert(LinkType p_type, supermodule* p_module)
{
    if (p_type == NextLink) {
        qCDebug(tilerLog) << " supermodule::insertModule "
                          << "p_module " << p_module << "this " << this;
    }
    if (!linkMember(p_type)) {
        return;
    }
    supermodule* old = child(p_type);
    hangModule(p_type, p_module);
    if (old) {
        old->m_parent = nullptr;
        supermodule* tail = p_module->lastOf();
        if (tail->hasConnector(NextLink)) {
            tail->appendModule(old);
        } else {
            // Nothing can follow an endless loop: what was linked here stays as a loose chain
            // below.
            old->setPos(old->mapToScene(s_looseOffset + QPointF(0, old->boundingRect().height())));
            old->updateTreeAndOpacity();
        }
    }
    updateTree();
}

bool supermodule::unhangModule(supermodule* p_child)
{
    const LinkType type = linkOf(p_child);
    if (type == NoLink) {
        return false;
    }
    s_bodies -= type != NextLink ? 1 : 0;
    this->*linkMember(type) = nullptr;
    p_child->m_parent = nullptr;
    return true;
}

void supermodule::removeChild(supermodule* p_child)
{
    if (unhangModule(p_child)) {
        updateTree();
    }
}

void supermodule::detachFromParent()
{
    if (m_parent) {
        m_parent->removeChild(this);
    }
}

int supermodule::distanceTo(const collisionItem& p_connector) const
{
    const QPointF grip = mapToScene(0, boundingRect().height() / 2);
    const QPointF socket = p_connector.mapToScene(0, p_connector.boundingRect().height() / 2);
    return static_cast<int>(QLineF(grip, socket).length());
}

QList<collisionItem*> supermodule::touchedConnectors() const
{
    // Over the blocks: QGraphicsItem::collidingItems() would test every item of the scene.
    QList<collisionItem*> connectors;
    if (!scene()) {
        return connectors;
    }
    const QRectF reach = sceneBoundingRect().adjusted(-1, -1, 1, 1);
    for (const supermodule* owner : qAsConst(liveModules)) {
        // A connector begins inside its block's rectangle or at its right edge.
        const QRectF area = owner->boundingRect().translated(owner->pos()).adjusted(0, 0, 60, 60);
        if (!reach.intersects(area) || owner == this || owner->scene() != scene() ||
            !owner->isVisible()) {
            continue;
        }
        // As they are stacked, the uppermost first.
        for (const LinkType type : {RightLink, LeftLink, NextLink}) {
            if (reach.intersects(owner->connectorRect(type).translated(owner->pos())) &&
                collidesWithItem(owner->connector(type), Qt::IntersectsItemShape)) {
                connectors.append(owner->connector(type));
            }
        }
    }
    if (!connectors.isEmpty()) {
        const auto tooDeep = [this](const collisionItem* p_connector) {
            return fromItem(p_connector->parentItem())
                ->wouldNestTooDeep(p_connector->linkType(), this);
        };
        connectors.erase(std::remove_if(connectors.begin(), connectors.end(), tooDeep),
                         connectors.end());
    }
    std::stable_sort(connectors.begin(), connectors.end(),
                     [](const collisionItem* p_a, const collisionItem* p_b) {
                         return fromItem(p_a->parentItem())->registryKey() >
                                fromItem(p_b->parentItem())->registryKey();
                     });
    return connectors;
}

bool supermodule::wouldNestTooDeep(LinkType p_type, const supermodule* p_module) const
{
    // Few programs have bodies enough to stand so deep: only then it is worth a walk.
    return s_bodies >= MaximalNesting &&
           depth() + (p_type == NextLink ? 0 : 1) + nestingDepth(p_module) > MaximalNesting;
}

bool supermodule::CollisionDetection(supermodule*& p_target, int& p_type)
{
    const QList<collisionItem*> connectors = touchedConnectors();
    for (const collisionItem* connector : connectors) {
        supermodule* owner = fromItem(connector->parentItem());
        if (isAncestor(this, owner)) {
            continue;
        }
        const LinkType type = connector->linkType();
        const bool free = type != NoLink && !owner->child(type);
        const bool branch = type == LeftLink || type == RightLink;
        if (!(branch && free) && m_parent == owner) {
            return true;
        }
        if (!free) {
            continue;
        }
        if (type == NextLink) {
            qCDebug(tilerLog) << " supermodule::CollisionDetection "
                              << "spuer " << owner << "this " << this;
        }
        detachFromParent();
        owner->hangModule(type, this);
        p_target = owner;
        p_type = type;
        return true;
    }
    detachFromParent();
    return false;
}
