#pragma once

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QString>

class QPainter;

/**
 * The picture behind a resource path, loaded once and shared by all who draw it. A path that
 * can't be loaded gives a null pixmap, which paints nothing. Interface thread only.
 */
QPixmap picture(const QString& p_path);

/** Changes a picture in place. It gets the fine one, of p_fine pixels to a unit, as well. */
using ChangePicture = void (*)(QImage& p_image, int p_fine, int p_variant);

/**
 * A variant of the picture behind a resource path, which all draw alike: made by p_change once, and
 * drawn like any other. Variant 0 is the picture itself. A path has one function for all variants.
 */
QPixmap pictureVariant(const QString& p_path, int p_variant, ChangePicture p_change);

/** How many pixels of its device a unit takes that a painter draws, a redirected one as well. */
qreal scaleOf(const QPainter& p_painter);

/**
 * A picture that picture() has given, for where a unit takes p_scale pixels: above 1 the fine one
 * of twice as many pixels, with that as its device pixel ratio, which is loaded only then and kept
 * while there is room; else, or where there is no fine one, the picture itself.
 */
QPixmap pictureFor(const QPixmap& p_picture, qreal p_scale);

/**
 * An icon of a picture, for buttons with an icon size: as large on each screen, and as fine as that
 * can show.
 */
QIcon pictureIcon(const QString& p_path, const QSize& p_size);

/** Where an icon lies in the middle of an area: fitted into an icon size, but never enlarged. */
QRect iconRect(const QRect& p_area, const QSize& p_size, const QPixmap& p_picture);

/**
 * Draws a piece of a picture, told in the picture's own pixels, into a rectangle, as
 * QPainter::drawPixmap() does, but from the fine picture where the painter scales up.
 */
void drawPicturePart(QPainter* p_painter, const QRect& p_target, const QPixmap& p_picture,
                     const QRect& p_source);

/** Draws a whole picture into a rectangle, like drawPicturePart(). */
void drawPicture(QPainter* p_painter, const QRect& p_target, const QPixmap& p_picture);

/**
 * Draws a picture at a place, as QPainter::drawPixmap() does. Where the painter scales, the picture
 * is scaled once, kept, and drawn in whole pixels of the device: scaling it in each paint takes
 * many times as long and looks coarser. Where it scales up, that is the fine picture. Interface
 * thread only.
 */
void drawPicture(QPainter* p_painter, int p_x, int p_y, const QPixmap& p_picture);

/** Draws a pixmap pixel by pixel, at a pixel of what the painter really paints on. */
void drawInPixels(QPainter* p_painter, const QPoint& p_at, const QPixmap& p_pixmap);
