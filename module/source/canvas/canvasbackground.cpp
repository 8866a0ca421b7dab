#include "canvas/canvasbackground.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsView>

CanvasBackground::CanvasBackground(QGraphicsView& p_view, QGraphicsPixmapItem& p_logo)
    : m_view(p_view), m_logo(p_logo), m_picture(QStringLiteral(":/bg 1186x674.png"))
{
    fill(Qt::KeepAspectRatioByExpanding);
}

void CanvasBackground::fill(Qt::AspectRatioMode p_mode)
{
    QPalette colours = m_view.palette();
    colours.setBrush(
        m_view.backgroundRole(),
        QBrush(m_picture.scaled(m_view.viewport()->size(), p_mode, Qt::SmoothTransformation)));
    m_view.setPalette(colours);
}

void CanvasBackground::centreLogo()
{
    m_logo.setPos(m_view.mapToScene(m_view.viewport()->rect().center()) -
                  m_logo.boundingRect().center());
}
