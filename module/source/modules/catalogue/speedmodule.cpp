#include "modules/catalogue/speedmodule.h"

#include "modules/catalogue/choosers.h"
#include "proj/controls/picturecache.h"

#include <QPainter>

#include <iterator>

namespace
{
const int s_speeds[] = {30, 50, 80};
} // namespace

QString speedmodule::cCode() const
{
    const bool known = 0 <= n && n < static_cast<int>(std::size(s_speeds));
    return QStringLiteral("speed1 = %1;\nspeed2 = %1;\nspeed3 = %1;\nspeed4 = %1;\n")
        .arg(known ? s_speeds[n] : 0);
}

void speedmodule::createButtons()
{
    addChooser({":/item_pulldown_nol_40x80.png", ":/item_pulldown__pre_40x80.png", true, false},
               QRect(20, 100, 80, 40), [this] { OnSetParam(SpeedMode); });
}

void speedmodule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawBody(p_painter, ":/move_icon_160x120.png");
    drawCentred(p_painter, picture(chooserOf(SpeedMode).entry(n)));
}
