#include "proj/controls/hoverlight.h"

#include <QGraphicsEffect>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

namespace
{
const QColor s_lighter(255, 255, 255, 255 * 8 / 100);
const QColor s_darker(0, 0, 0, 255 * 10 / 100);

/** Only where the picture is opaque. */
QPixmap tinted(QPixmap p_picture, const QColor& p_colour)
{
    if (!p_picture.isNull()) {
        QPainter painter(&p_picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
        painter.fillRect(p_picture.rect(), p_colour);
    }
    return p_picture;
}

class Light final : public QGraphicsEffect
{
protected:
    void draw(QPainter* p_painter) override
    {
        QPoint corner;
        const QPixmap plain = sourcePixmap(Qt::DeviceCoordinates, &corner, NoPad);
        const QTransform before = p_painter->worldTransform();
        p_painter->setWorldTransform(QTransform());
        p_painter->drawPixmap(corner, tinted(plain, s_lighter));
        p_painter->setWorldTransform(before);
    }
};
} // namespace

HoverLight::HoverLight(QWidget* p_widget) : QObject(p_widget), m_widget(p_widget)
{
    p_widget->installEventFilter(this);
}

bool HoverLight::eventFilter(QObject* p_watched, QEvent* p_event)
{
    bool lit = false;
    switch (p_event->type()) {
    case QEvent::Enter:
        lit = true;
        break;
    case QEvent::MouseButtonRelease:
        lit = m_widget->rect().contains(static_cast<QMouseEvent*>(p_event)->pos());
        break;
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::EnabledChange:
        break;
    default:
        return QObject::eventFilter(p_watched, p_event);
    }
    lit = lit && m_widget->isEnabled();
    // Made when it is needed: a start makes dozens of widgets.
    if (lit != (m_widget->graphicsEffect() != nullptr)) {
        m_widget->setGraphicsEffect(lit ? new Light : nullptr);
    }
    return QObject::eventFilter(p_watched, p_event);
}

QPixmap pressedPicture(const QPixmap& p_picture) { return tinted(p_picture, s_darker); }
