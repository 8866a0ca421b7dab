#include "canvas/canvaszoom.h"

#include <QtGlobal>

namespace
{
const double s_smallest = 0.5;
const double s_largest = 2.0;
} // namespace

double screenScale(int p_width)
{
    if (p_width >= 1920) {
        return 1.0;
    }
    if (p_width < 1280) {
        return 0.5;
    }
    return qBound(0.5, (p_width - 1280) * 0.5 / 640 + 0.5, 1.0);
}

bool CanvasZoom::step(int p_scale)
{
    // Held to exact tenths: sums of 0.1 in binary drift away from them.
    const double factor = qRound((m_factor + p_scale * 0.1) * 10) / 10.0;
    m_factor = qBound(s_smallest, factor, s_largest);
    return s_smallest < factor && factor < s_largest;
}
