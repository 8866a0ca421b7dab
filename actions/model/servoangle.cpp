#include "actions/model/servoangle.h"

namespace
{
const qint64 s_counts = 888;
/** What the counts cover, in hundredths of a degree. */
const qint64 s_range = 30000;
} // namespace

int servoPositionToAngle(int p_position)
{
    return static_cast<int>((qint64(ServoCentre) - p_position) * s_range / s_counts);
}

int angleToServoPosition(qint64 p_angle)
{
    return static_cast<int>(p_angle * -s_counts / s_range + ServoCentre);
}
