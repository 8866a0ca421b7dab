#pragma once

#include "samples.h"
#include "shape.h"
#include "shell/mainwindow.h"

#include <QEvent>
#include <QMimeData>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

class supermodule;

/**
 * The program's own window, filled with a program of a shape and a size, and the hands that use it.
 * On an X display it fills the screen, as the program does; without one it is 1920 by 1080. What a
 * hand does is painted before it returns, unless it says otherwise. A mistake ends the process.
 */
class Bench : public QObject
{
    Q_OBJECT

public:
    Bench();
    ~Bench() override;
    Q_DISABLE_COPY(Bench)

    MainWindow& window() { return m_window; }
    TzProgramView& view() { return *m_window.view(); }

    /** Writes a program to a file and returns its path; empty if the shape is broken. */
    QString write(const Shape& p_shape, int p_blocks);
    /** Opens a file as the program's start does. */
    void open(const QString& p_path);
    /** An empty document. */
    void clear();
    /** Sets the user's zoom factor, in tenths within (0.5, 2.0). */
    void zoomTo(double p_factor);

    /** The block behind the main block, in sight. */
    supermodule* showHead();
    /** A block in the middle of a chain, in sight, with the chain moved there if need be. */
    supermodule* showMiddle();
    /** How many blocks hang behind a block, itself included. */
    static int chainLength(const supermodule* p_first);

    /** Where a point of a block is on the viewport. */
    QPoint at(const supermodule* p_module, const QPointF& p_point = QPointF(40, 60));
    void press(const QPoint& p_at);
    void move(const QPoint& p_at, Qt::MouseButtons p_buttons = Qt::LeftButton);
    void release(const QPoint& p_at);
    void key(int p_key, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier);
    void wheel(const QPoint& p_at, int p_turn);
    /** A new block comes from the palette, moves, and is dropped or taken away. */
    void dragIn(const QPoint& p_at);
    void dragOn(const QPoint& p_at);
    void dragOut();
    void drop(const QPoint& p_at);
    /** Where the hand holds a new block that touches the end of another. */
    QPoint holdBehind(const supermodule* p_module);

    /** Paints what is due. */
    void paint();
    /** Times some work until it is painted. */
    template <class Work> void take(Samples& p_samples, Work p_work)
    {
        p_samples.take([&] {
            p_work();
            paint();
        });
    }
    /** The same; ends the process if the canvas has nothing to paint. */
    template <class Work> void takePainted(Samples& p_samples, Work p_work)
    {
        const int before = m_paints;
        take(p_samples, p_work);
        if (m_paints == before) {
            qFatal("Nothing was painted.");
        }
    }

protected:
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    void sendMouse(QEvent::Type p_type, const QPoint& p_at, Qt::MouseButton p_button,
                   Qt::MouseButtons p_buttons);

    QTemporaryDir m_folder;
    MainWindow m_window;
    std::unique_ptr<QMimeData> m_payload;
    int m_paints = 0;
};
