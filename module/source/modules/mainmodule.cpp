#include "modules/mainmodule.h"

#include "proj/controls/picturecache.h"

#include <QPainter>

void mainModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawPicture(p_painter, 0, 0, jointPicture(QStringLiteral(":/main.png"), filledCorners()));
}

QString mainModule::cCode() const
{
    return QStringLiteral(
        "void user_main()\n{\nint speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;\n");
}
