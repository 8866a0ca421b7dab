#pragma once

#include <QObject>
#include <QPoint>

class QWidget;

/**
 * Lets a frameless window be dragged by its body: it goes with the mouse from where it was
 * pressed. The window sees all of its events as before and owns the mover.
 */
class WidgetMover : public QObject
{
    Q_OBJECT

public:
    explicit WidgetMover(QWidget* p_widget);

protected:
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    Q_DISABLE_COPY(WidgetMover)

    QPoint m_pressPos;
    QPoint m_widgetPos;
    QWidget* m_widget;
};
