#include "canvas/wheelstrip.h"

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <QWheelEvent>

namespace
{
/** Height of the strip, and width of the viewport's end that is not part of it. */
const int s_size = 100;
const int s_milliseconds = 1000;
} // namespace

WheelStrip::WheelStrip(QAbstractScrollArea& p_view)
    : m_view(p_view), m_area(new QWidget(&p_view)), m_timer(&p_view)
{
    m_area->setStyleSheet(QStringLiteral(
        "QWidget {border: none; background: rgba(0,0,0, 10%); border-radius: 10px;}"));
    m_area->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_area->hide();
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, m_area, &QWidget::hide);
}

bool WheelStrip::scroll(QWheelEvent& p_event)
{
    const QPoint at = p_event.position().toPoint();
    const QSize size = m_view.viewport()->size();
    const QRect strip(0, size.height() - s_size, size.width() - s_size, s_size);
    if (at.y() < strip.top() || at.x() >= strip.width()) {
        return false;
    }
    QScrollBar* bar = m_view.horizontalScrollBar();
    const double delta = p_event.delta();
    bar->setValue(bar->value() + static_cast<int>(delta * 0.4));
    m_area->setGeometry(strip);
    m_area->show();
    m_timer.start(s_milliseconds);
    p_event.accept();
    return true;
}

void WheelStrip::hide() { m_area->hide(); }
