#pragma once

#include "modules/buttonspec.h"
#include "modules/itemtype.h"

#include <QGraphicsItem>

class LiveButton;
class QGraphicsScene;
class QPushButton;
class supermodule;

/**
 * A button on a block, a part of which it is. At rest it paints what its widget would show; the
 * widget itself, in a QGraphicsProxyWidget of the block, comes when the pointer is over the button,
 * when it is pressed, or when wake() asks for it. It goes when nothing holds it any longer: the
 * pointer, a press, the focus, the mark of a number field, a call that it makes, or keep().
 */
class ModuleButton final : public QGraphicsItem
{
public:
    enum { Type = ButtonItemType };

    ModuleButton(supermodule& p_module, int p_index, ButtonSpec p_spec);

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

    /** What the button shows now. */
    QString text() const;
    void setText(const QString& p_text);
    /** The button in block coordinates. */
    QRectF rect() const { return boundingRect().translated(pos()); }
    void moveTo(int p_x);

    /** The widget; null while there is none. */
    QPushButton* widget() const;
    /** The widget, made if need be. It stays at least until control is back in the event loop. */
    QPushButton* wake();
    /** Lets the widget stay for as long as the block lives, once it is there. */
    void keep() { m_kept = true; }

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent* p_event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* p_event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* p_event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* p_event) override;

private:
    friend class LiveButton;

    /** Looks, once control is back in the event loop, whether the widget is still needed. */
    void reviewLater();
    void review();

    supermodule& m_module;
    const int m_index;
    ButtonSpec m_spec;
    LiveButton* m_live = nullptr;
    bool m_hovered = false;
    bool m_kept = false;
    bool m_reviewing = false;
};

/**
 * Takes back the press on a button of a block that is under way in a scene, if there is one: its
 * release counts as no click, and a number field that it marked is unmarked.
 */
void takeBackButtonPress(const QGraphicsScene& p_scene);
