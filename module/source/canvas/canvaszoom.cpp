#include "canvas/canvaszoom.h"

#include <QtGlobal>

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

double zoomTenths(double p_factor) { return qRound(p_factor * 10) / 10.0; }
