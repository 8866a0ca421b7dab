#pragma once

class QPixmap;
class QWidget;

/**
 * Sets a mask on a frameless window in the shape of its background picture: fully transparent
 * pixels aren't part of the window. Without a compositor rounded corners would otherwise be drawn
 * black. A picture of another size than the window's sets no mask.
 */
void shapeWindowLikePicture(QWidget& p_window, const QPixmap& p_picture);
