#include "canvas/canvasbackground.h"

#include "proj/controls/picturecache.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsView>

CanvasBackground::CanvasBackground(QGraphicsView& p_view, QGraphicsPixmapItem& p_logo)
    : m_view(p_view), m_logo(p_logo), m_picture(picture(QStringLiteral(":/bg 1186x674.png")))
{
    fill(Qt::KeepAspectRatioByExpanding);
}

void CanvasBackground::fill(Qt::AspectRatioMode p_mode)
{
    const QPalette::ColorRole role = m_view.backgroundRole();
    QPalette colours = m_view.palette();
    const qreal ratio = m_view.devicePixelRatioF();
    const QSize size = ratio * m_picture.size().scaled(m_view.viewport()->size(), p_mode);
    // Scaling takes a tenth of a start, and a window that opens asks twice for one size.
    if (size != colours.brush(role).texture().size()) {
        QPixmap scaled = pictureFor(m_picture, ratio)
                             .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        scaled.setDevicePixelRatio(ratio);
        colours.setBrush(role, scaled);
        m_view.setPalette(colours);
    }
}

void CanvasBackground::centreLogo()
{
    m_logo.setPos(m_view.mapToScene(m_view.viewport()->rect().center()) -
                  m_logo.boundingRect().center());
}
