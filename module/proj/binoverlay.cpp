#include "proj/binoverlay.h"

#include "proj/controls/picturecache.h"

#include <QPainter>

BinOverlay::BinOverlay(QWidget* p_parent) : QLabel(p_parent) {}

void BinOverlay::setImagePath(const QString& p_imagePath)
{
    m_imagePath = p_imagePath;
    update();
}

void BinOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(255, 255, 255, 125));
    // QLabel has a picture() of its own.
    const QPixmap image = ::picture(m_imagePath);
    const QPoint at((width() + 1 - image.width()) / 2, (height() + 1 - image.height()) / 2);
    drawPicture(&painter, QRect(at, image.size()), image);
}
