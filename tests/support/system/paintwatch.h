#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QPaintEvent>
#include <QWidget>

/** Notes which part of a widget is painted from now on. */
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget& p_widget) : m_widget(p_widget)
    {
        // What is still to be painted from before doesn't count.
        QCoreApplication::processEvents();
        m_widget.installEventFilter(this);
    }

    /** Whether all of a part of the widget has been painted. */
    bool saw(const QRect& p_part) const
    {
        QCoreApplication::processEvents();
        return QRegion(p_part).subtracted(m_painted).isEmpty();
    }
    /** Whether all that there is of the widget has been painted. */
    bool sawAll() const { return saw(m_widget.rect()); }

protected:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::Paint) {
            m_painted += static_cast<QPaintEvent*>(p_event)->region();
        }
        return false;
    }

private:
    QWidget& m_widget;
    QRegion m_painted;
};
