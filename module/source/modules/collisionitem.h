#pragma once

#include "modules/itemtype.h"

#include <QGraphicsItem>

/** The three child links of a block, with the codes that link candidates carry. */
enum LinkType : int { NoLink = -1, NextLink = 0, LeftLink = 2, RightLink = 3 };

/**
 * A connector: an invisible square of 60 by 60 on a block that tells where another block may be
 * linked. It is a child of its block, and its data(256) holds the name of the link that it
 * stands for: "Next", "Left" or "Right".
 */
class collisionItem : public QGraphicsItem
{
public:
    enum { Type = ConnectorItemType };

    /** p_kind: 0 next, 2 left, 3 right, 4 the body of a loop. Any other kind has an empty area. */
    collisionItem(int p_kind, LinkType p_link, QGraphicsItem* p_parent);

    /** The area of a connector of a kind, in its own coordinates. */
    static QRectF area(int p_kind);

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    /** A connector has no picture. */
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}

    int kind() const { return m_kind; }
    void setKind(int p_kind);
    /** Meant: nothing sets or asks it; a flag of the design. */
    bool isActive() const { return m_active; }
    void setActive(bool p_active) { m_active = p_active; }
    QString linkName() const;
    /** The link that the name stands for; NoLink for any other name. */
    LinkType linkType() const;

private:
    int m_kind;
    bool m_active = false;
};
