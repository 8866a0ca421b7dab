#pragma once

#include "samples.h"

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QWidget>

/** A window under measurement: has it painted, and sees to it that it was. */
class Stage : public QObject
{
    Q_OBJECT

public:
    /** p_watched is the widget in p_window that an operation must paint. Neither is owned. */
    Stage(QWidget* p_window, QWidget* p_watched) : m_window(p_window), m_watched(p_watched)
    {
        m_watched->installEventFilter(this);
    }
    ~Stage() override { m_watched->removeEventFilter(this); }
    Q_DISABLE_COPY(Stage)

    /** Paints what is due. */
    void paint()
    {
        // Changes are gathered first; the window system asks for the picture some time later, and
        // isn't waited for here.
        QApplication::processEvents();
        QEvent request(QEvent::UpdateRequest);
        QApplication::sendEvent(m_window, &request);
    }
    /** Times some work until it is painted; ends the program if there was nothing to paint. */
    template <class Work> void takePainted(Samples& p_samples, Work p_work)
    {
        const int before = m_paints;
        p_samples.take([&] {
            p_work();
            paint();
        });
        if (m_paints == before) {
            qFatal("Nothing was painted.");
        }
    }

protected:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::Paint) {
            ++m_paints;
        }
        return false;
    }

private:
    QWidget* m_window;
    QWidget* m_watched;
    int m_paints = 0;
};
