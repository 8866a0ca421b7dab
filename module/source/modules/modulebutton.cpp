#include "modules/modulebutton.h"

#include "modules/buttonpicture.h"
#include "modules/supermodule.h"
#include "proj/controls/selectablebutton.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QPointer>
#include <QPushButton>

/** The proxy of a button's widget. Tracks whether focus or a running handler still needs it. */
class LiveButton final : public QGraphicsProxyWidget
{
public:
    LiveButton(ModuleButton& p_owner, QGraphicsItem* p_module)
        : QGraphicsProxyWidget(p_module), m_owner(p_owner)
    {
    }

    QPushButton* button() const { return static_cast<QPushButton*>(widget()); }

    bool isHeld() const
    {
        const auto* field = qobject_cast<const SelectableButton*>(widget());
        return m_calls > 0 || m_focused || (m_hovered && isVisible()) || button()->isDown() ||
               (field && field->isSelected()) || (scene() && scene()->mouseGrabberItem() == this);
    }

protected:
    bool event(QEvent* p_event) override
    {
        if (p_event->type() == QEvent::GraphicsSceneHelp) {
            // The base class takes the event, and the tip is lost, until the pointer has moved on
            // the widget, which may have come under a pointer at rest. The scene shows the item's.
            p_event->ignore();
            return false;
        }
        return QGraphicsProxyWidget::event(p_event);
    }

    QVariant itemChange(GraphicsItemChange p_change, const QVariant& p_value) override
    {
        if (p_change == ItemVisibleHasChanged) {
            m_owner.reviewLater();
        }
        return QGraphicsProxyWidget::itemChange(p_change, p_value);
    }

    bool sceneEvent(QEvent* p_event) override
    {
        switch (p_event->type()) {
        case QEvent::GraphicsSceneHoverEnter:
        case QEvent::GraphicsSceneHoverMove:
            m_hovered = true;
            break;
        case QEvent::GraphicsSceneHoverLeave:
            m_hovered = false;
            break;
        case QEvent::FocusIn:
            m_focused = true;
            break;
        case QEvent::FocusOut:
            // A scene that loses the focus itself gives it back to the same item later.
            m_focused = scene() && !scene()->hasFocus();
            break;
        default:
            break;
        }
        // Handlers of the button's signals run in here and may delete this.
        const QPointer<LiveButton> alive(this);
        ++m_calls;
        const bool taken = QGraphicsProxyWidget::sceneEvent(p_event);
        if (alive) {
            --m_calls;
            m_owner.reviewLater();
        }
        return taken;
    }

private:
    ModuleButton& m_owner;
    int m_calls = 0;
    bool m_hovered = false;
    bool m_focused = false;
};

ModuleButton::ModuleButton(supermodule& p_module, int p_index, ButtonSpec p_spec)
    : QGraphicsItem(&p_module), m_module(p_module), m_index(p_index), m_spec(std::move(p_spec))
{
    setPos(m_spec.geometry.topLeft());
    setAcceptHoverEvents(true);
    if (m_spec.toolTip) {
        setToolTip(QString::fromLatin1(m_spec.toolTip));
    }
}

QRectF ModuleButton::boundingRect() const
{
    return QRectF(QPointF(0, 0), QSizeF(m_spec.geometry.size()));
}

void ModuleButton::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (!m_live) {
        paintButton(p_painter, m_spec);
    }
}

QString ModuleButton::text() const { return m_live ? widget()->text() : m_spec.text; }

void ModuleButton::setText(const QString& p_text)
{
    m_spec.text = p_text;
    if (m_live) {
        widget()->setText(p_text);
    }
    update();
}

void ModuleButton::moveTo(int p_x)
{
    setX(p_x);
    if (m_live) {
        m_live->setX(p_x);
    }
}

QPushButton* ModuleButton::widget() const { return m_live ? m_live->button() : nullptr; }

QPushButton* ModuleButton::wake()
{
    if (m_live) {
        return widget();
    }
    QPushButton* button = makeButton(m_spec).release();
    m_live = new LiveButton(*this, &m_module);
    m_live->setWidget(button);
    m_live->setGeometry(rect());
    QObject::connect(button, &QPushButton::clicked, &m_module, [this] { m_spec.press(); });
    if (auto* field = qobject_cast<SelectableButton*>(button)) {
        QObject::connect(field, &SelectableButton::keyTypedSignal, &m_module,
                         [this] { m_spec.typed(text()); });
    }
    m_module.buttonMade(m_index, *button);
    reviewLater();
    return button;
}

void ModuleButton::hoverEnterEvent(QGraphicsSceneHoverEvent*)
{
    // Not from the start: a cursor of its own costs each button of a program that is opened.
    if (!hasCursor()) {
        setCursor(Qt::ArrowCursor);
    }
    // Queued: a hover event also comes ahead of a press. A widget made here would be too late for
    // that, and mousePressEvent() would take it for one that has ignored the event.
    m_hovered = true;
    reviewLater();
}

void ModuleButton::hoverLeaveEvent(QGraphicsSceneHoverEvent*)
{
    m_hovered = false;
    reviewLater();
}

void ModuleButton::mousePressEvent(QGraphicsSceneMouseEvent* p_event)
{
    if (m_live) {
        // The widget lies above this item and has ignored the event.
        p_event->ignore();
        return;
    }
    // The scene picked this item before the widget existed: send the event again, to be picked
    // anew.
    wake();
    ungrabMouse();
    QCoreApplication::sendEvent(scene(), p_event);
}

void ModuleButton::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* p_event)
{
    mousePressEvent(p_event);
}

void ModuleButton::reviewLater()
{
    if (!m_reviewing) {
        m_reviewing = true;
#ifndef __clang_analyzer__ // It takes the functor, which Qt owns from here on, for a leak.
        QMetaObject::invokeMethod(
            &m_module, [this] { review(); }, Qt::QueuedConnection);
#endif
    }
}

void ModuleButton::review()
{
    m_reviewing = false;
    if (m_hovered && isVisible()) {
        wake();
    } else if (m_live && !m_kept && !m_live->isHeld()) {
        m_spec.text = text();
        delete m_live;
        m_live = nullptr;
        update();
    }
}

void takeBackButtonPress(const QGraphicsScene& p_scene)
{
    const auto* pressed = dynamic_cast<const LiveButton*>(p_scene.mouseGrabberItem());
    if (!pressed) {
        return;
    }
    // A release over a button that isn't down is no click.
    pressed->button()->setDown(false);
    if (auto* field = qobject_cast<SelectableButton*>(pressed->button())) {
        field->setSelected(false);
    }
}
