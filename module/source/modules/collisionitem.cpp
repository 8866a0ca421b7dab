#include "modules/collisionitem.h"

#include "modules/documentstate.h"

collisionItem::collisionItem(int p_kind, LinkType p_link, QGraphicsItem* p_parent)
    : QGraphicsItem(p_parent), m_kind(p_kind)
{
    setData(ItemNameKey, p_link == NextLink   ? QStringLiteral("Next")
                         : p_link == LeftLink ? QStringLiteral("Left")
                                              : QStringLiteral("Right"));
    setZValue(10);
    // It only takes part in collision tests; without this every repaint would visit it.
    setFlag(ItemHasNoContents);
}

QRectF collisionItem::boundingRect() const { return area(m_kind); }

QRectF collisionItem::area(int p_kind)
{
    switch (p_kind) {
    case 0:
    case 2:
    case 3:
    case 4:
        return QRectF(0, 0, 60, 60);
    default:
        return QRectF();
    }
}

void collisionItem::setKind(int p_kind)
{
    prepareGeometryChange();
    m_kind = p_kind;
}

QString collisionItem::linkName() const { return data(ItemNameKey).toString(); }

LinkType collisionItem::linkType() const
{
    const QString name = linkName();
    if (name == QLatin1String("Left")) {
        return LeftLink;
    }
    if (name == QLatin1String("Right")) {
        return RightLink;
    }
    return name == QLatin1String("Next") ? NextLink : NoLink;
}
