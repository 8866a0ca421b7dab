#include "proj/controls/widgetmover.h"

#include <QMouseEvent>
#include <QWidget>

WidgetMover::WidgetMover(QWidget* p_widget) : QObject(p_widget), m_widget(p_widget)
{
    m_widget->installEventFilter(this);
}

bool WidgetMover::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_watched != m_widget) {
        return false;
    }
    if (p_event->type() == QEvent::MouseButtonPress) {
        m_pressPos = static_cast<QMouseEvent*>(p_event)->globalPos();
        m_widgetPos = m_widget->pos();
    } else if (p_event->type() == QEvent::MouseMove) {
        m_widget->move(m_widgetPos + static_cast<QMouseEvent*>(p_event)->globalPos() - m_pressPos);
    }
    return false;
}
