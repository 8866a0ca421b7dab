#pragma once

class QPixmap;
class QWidget;

/**
 * Gives a frameless window the shape of its background picture: what the picture leaves wholly
 * open isn't part of the window. Where a desktop can't show through windows, rounded corners would
 * otherwise stand in black ones. A picture of another size than the window's shapes nothing.
 */
void shapeWindowLikePicture(QWidget& p_window, const QPixmap& p_picture);
