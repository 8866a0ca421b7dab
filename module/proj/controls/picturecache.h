#pragma once

#include <QPixmap>
#include <QString>

class QPainter;

/**
 * The picture behind a resource path, loaded once and shared by all who draw it. A path that
 * can't be loaded gives a null pixmap, which paints nothing. Interface thread only.
 */
QPixmap picture(const QString& p_path);

/**
 * Draws a picture at a place, as QPainter::drawPixmap() does. Where the painter scales, the picture
 * is scaled once, kept, and drawn in whole pixels of the device: scaling it in each paint takes
 * many times as long and looks coarser. Interface thread only.
 */
void drawPicture(QPainter* p_painter, int p_x, int p_y, const QPixmap& p_picture);
