#include "proj/hop.h"

#include <QPropertyAnimation>
#include <QWidget>

namespace
{
const int s_milliseconds = 450;
const int s_high = 14;
const int s_low = 6;
} // namespace

void hop(QWidget& p_widget)
{
    endHop(p_widget);
    const QPoint place = p_widget.pos();
    auto* way = new QPropertyAnimation(&p_widget, "pos", &p_widget);
    way->setDuration(s_milliseconds);
    way->setStartValue(place);
    way->setKeyValueAt(0.3, place - QPoint(0, s_high));
    way->setKeyValueAt(0.6, place);
    way->setKeyValueAt(0.8, place - QPoint(0, s_low));
    way->setEndValue(place);
    way->start(QAbstractAnimation::DeleteWhenStopped);
}

void endHop(QWidget& p_widget)
{
    if (auto* way = p_widget.findChild<QPropertyAnimation*>()) {
        p_widget.move(way->endValue().toPoint());
        delete way;
    }
}
