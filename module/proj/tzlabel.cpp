#include "proj/tzlabel.h"

#include "proj/controls/picturecache.h"

#include <QPainter>

tzlabel::tzlabel(const QString& p_caption, QWidget* p_parent, Qt::WindowFlags)
    : QPushButton(p_caption, p_parent)
{
    // No keyboard focus: keys stay with the canvas.
    setFocusPolicy(Qt::NoFocus);
}

void tzlabel::setImagePath(const QString& p_imagePath)
{
    m_imagePath = p_imagePath;
    update();
}

void tzlabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPicture(&painter, rect(), ::picture(m_imagePath));
}
