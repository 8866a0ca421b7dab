#include "proj/controls/hoverlight.h"

#include <QGraphicsEffect>
#include <QGraphicsProxyWidget>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

namespace
{
const QColor s_lighter(255, 255, 255, 255 * 8 / 100);
/** White can't be lighter: it gets as much of the frame's colour. */
const QColor s_onWhite(0, 175, 204, 255 * 8 / 100);
const int s_white = 230;
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

/** Whether most of what is opaque is white or nearly so. */
bool isWhite(const QPixmap& p_picture)
{
    const QImage image = p_picture.toImage().convertToFormat(QImage::Format_ARGB32);
    int opaque = 0;
    int white = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            opaque += qAlpha(line[x]) > 127;
            white += qAlpha(line[x]) > 127 && qGray(line[x]) >= s_white;
        }
    }
    return 2 * white > opaque;
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
        p_painter->drawPixmap(corner, tinted(plain, isWhite(plain) ? s_onWhite : s_lighter));
        p_painter->setWorldTransform(before);
    }
};
/** Made when it is needed: a start makes dozens of widgets. */
template <typename T> void light(T& p_shown, bool p_lit)
{
    if (p_lit != (p_shown.graphicsEffect() != nullptr)) {
        p_shown.setGraphicsEffect(p_lit ? new Light : nullptr);
    }
}
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
        // A press keeps the mouse until its release, wherever that is.
        lit = m_widget->underMouse() &&
              m_widget->rect().contains(static_cast<QMouseEvent*>(p_event)->pos());
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
    // The effect of a widget that a graphics item renders comes out empty: the item has its own.
    if (QGraphicsProxyWidget* proxy = m_widget->graphicsProxyWidget()) {
        light(*proxy, lit);
    } else {
        light(*m_widget, lit);
    }
    return QObject::eventFilter(p_watched, p_event);
}

QPixmap pressedPicture(const QPixmap& p_picture) { return tinted(p_picture, s_darker); }
