#include "drivemodules.h"

QString driveModule::cCode() const { return QString::fromLatin1(look().fragment); }

void driveModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawPicture(p_painter, ":/move_icon_160x120.png");
    drawPicture(p_painter, look().overlay);
}
