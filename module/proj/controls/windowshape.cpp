#include "proj/controls/windowshape.h"

#include <QBitmap>
#include <QPixmap>
#include <QWidget>

void shapeWindowLikePicture(QWidget& p_window, const QPixmap& p_picture)
{
    if (p_picture.size() != p_window.size()) {
        return;
    }
    // Half-open pixels stay, which make the edge smooth where windows can be seen through.
    p_window.setMask(p_picture.createMaskFromColor(Qt::transparent));
}
