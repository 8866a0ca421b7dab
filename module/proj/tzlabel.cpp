#include "proj/tzlabel.h"

#include "proj/controls/hoverlight.h"
#include "proj/controls/picturecache.h"

#include <QPainter>

tzlabel::tzlabel(const QString& p_caption, QWidget* p_parent, Qt::WindowFlags)
    : QPushButton(p_caption, p_parent)
{
    // No keyboard focus: keys stay with the canvas.
    setFocusPolicy(Qt::NoFocus);
    new HoverLight(this);
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
    const QPixmap image = picture(m_imagePath);
    if (isDown()) {
        painter.drawPixmap(rect().translated(0, 1),
                           pressedPicture(pictureFor(image, scaleOf(painter))));
    } else {
        drawPicture(&painter, rect(), image);
    }
}
