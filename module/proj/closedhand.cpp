#include "proj/closedhand.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

namespace
{
const int s_side = 24;

QPainterPath outline()
{
    struct Part {
        QRectF rect;
        qreal radius;
    };
    // Four knuckles, the thumb, the back of the hand, the wrist.
    const Part parts[] = {
        {QRectF(5.5, 7, 4, 8), 2},   {QRectF(9, 6, 4, 8), 2},      {QRectF(12.5, 6.5, 4, 8), 2},
        {QRectF(16, 8, 4, 8), 2},    {QRectF(3, 11.5, 6, 5), 2.5}, {QRectF(5.5, 10, 14.5, 9), 4},
        {QRectF(8, 15, 10, 6.5), 2},
    };
    QPainterPath hand;
    for (const Part& part : parts) {
        QPainterPath each;
        each.addRoundedRect(part.rect, part.radius, part.radius);
        hand = hand.united(each);
    }
    return hand.simplified();
}
} // namespace

QPixmap closedHand()
{
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap hand((QSizeF(s_side, s_side) * ratio).toSize());
    hand.setDevicePixelRatio(ratio);
    hand.fill(Qt::transparent);
    QPainter painter(&hand);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x04, 0x3c, 0x66), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::white);
    painter.drawPath(outline());
    for (const qreal x : {9.25, 12.75, 16.25}) {
        painter.drawLine(QPointF(x, 9.5), QPointF(x, 12));
    }
    return hand;
}
