#pragma once

#include <QTimer>
#include <QWidget>

class QGraphicsView;
class supermodule;

/**
 * Points at a block: a frame over the canvas that goes again by itself, or with the next press,
 * scroll or zoom. It is no part of the scene, and takes no events.
 */
class BlockMark : public QWidget
{
    Q_OBJECT

public:
    /** The view's viewport owns the mark. */
    explicit BlockMark(QGraphicsView& p_view);

    /** Brings a visible block, or where it begins, into sight and frames it. */
    void pointAt(const supermodule& p_module);

protected:
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;
    void paintEvent(QPaintEvent* p_event) override;

private:
    QGraphicsView& m_view;
    QTimer m_timer;
};
