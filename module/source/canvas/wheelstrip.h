#pragma once

#include <QTimer>

class QAbstractScrollArea;
class QWheelEvent;
class QWidget;

/**
 * The strip along the lower edge of the canvas where the wheel scrolls sideways. It is shown for a
 * second from each turn of the wheel.
 */
class WheelStrip
{
public:
    /** p_view owns the widget that shows the strip. */
    explicit WheelStrip(QAbstractScrollArea& p_view);

    /** Scrolls by an event over the strip, and accepts it. False, untouched, for any other. */
    bool scroll(QWheelEvent& p_event);
    void hide();

private:
    QAbstractScrollArea& m_view;
    QWidget* m_area;
    QTimer m_timer;
};
