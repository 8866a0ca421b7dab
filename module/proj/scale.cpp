#include "proj/scale.h"

#include <QtGlobal>

int scale(int p_value, int p_inLow, int p_inHigh, int p_outLow, int p_outHigh)
{
    const int value = qBound(p_inLow, p_value, p_inHigh);
    const int scaled = (p_outHigh - p_outLow) * (value - p_inLow) / (p_inHigh - p_inLow) + p_outLow;
    return qBound(p_outLow, scaled, p_outHigh);
}
