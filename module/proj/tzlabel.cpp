#include "tzlabel.h"

#include "picturecache.h"

#include <QPainter>

tzlabel::tzlabel(const QString& p_caption, QWidget* p_parent, Qt::WindowFlags)
    : QPushButton(p_caption, p_parent)
{
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
    painter.drawPixmap(rect(), picture(m_imagePath));
}
