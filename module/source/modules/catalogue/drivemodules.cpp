#include "modules/catalogue/drivemodules.h"

QString driveModule::cCode() const { return QString::fromLatin1(look().fragment); }

void driveModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawMotion(p_painter, look().overlay);
}
