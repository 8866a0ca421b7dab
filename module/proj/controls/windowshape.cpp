#include "proj/controls/windowshape.h"

#include <QBitmap>
#include <QPixmap>
#include <QWidget>

void shapeWindowLikePicture(QWidget& p_window, const QPixmap& p_picture)
{
    if (p_picture.size() != p_window.size()) {
        return;
    }
    // Translucent pixels stay: they smooth the edge where the desktop composites windows.
    p_window.setMask(p_picture.createMaskFromColor(Qt::transparent));
}
