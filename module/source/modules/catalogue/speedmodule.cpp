#include "modules/catalogue/speedmodule.h"

#include "proj/controls/picturecache.h"

#include <QPainter>

namespace
{
struct SpeedRow {
    int speed;
    const char* picture;
};
const SpeedRow s_speeds[] = {
    {30, ":/speed_slow.png"}, {50, ":/speed_mid.png"}, {80, ":/speed_fast.png"}};

const SpeedRow* speedRow(int p_index)
{
    return 0 <= p_index && p_index < 3 ? &s_speeds[p_index] : nullptr;
}
} // namespace

QString speedmodule::cCode() const
{
    const SpeedRow* row = speedRow(n);
    return QStringLiteral("speed1 = %1;\nspeed2 = %1;\nspeed3 = %1;\nspeed4 = %1;\n")
        .arg(row ? row->speed : 0);
}

void speedmodule::createButtons()
{
    addChooser({":/item_pulldown_nol_40x80.png", ":/item_pulldown__pre_40x80.png", true, false},
               QRect(20, 100, 80, 40), [this] { OnSetParam(0); });
}

void speedmodule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawPicture(p_painter, ":/move_icon_160x120.png");
    const SpeedRow* row = speedRow(n);
    drawCentred(p_painter, row ? picture(QString::fromLatin1(row->picture)) : QPixmap());
}
