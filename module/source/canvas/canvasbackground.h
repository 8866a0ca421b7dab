#pragma once

#include <QPixmap>
#include <Qt>

class QGraphicsPixmapItem;
class QGraphicsView;

/** What lies behind the blocks of a canvas: the picture that fills the view, and the pale logo. */
class CanvasBackground
{
public:
    /** Fills the view at once. View and logo must outlive the background's use. */
    CanvasBackground(QGraphicsView& p_view, QGraphicsPixmapItem& p_logo);

    /** Scales the picture to the view as it is now. */
    void fill(Qt::AspectRatioMode p_mode);
    /** Puts the logo into the middle of what the view shows. */
    void centreLogo();

private:
    QGraphicsView& m_view;
    QGraphicsPixmapItem& m_logo;
    QPixmap m_picture;
};
