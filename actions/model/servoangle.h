#pragma once

#include <QtGlobal>

// A servo's position in counts and its angle: 888 counts across 300 degrees, 512 in the middle,
// and positions fall as angles grow. Nothing is clamped to the 150 degrees on either side.

constexpr int ServoCentre = 512;

/** A position as an angle in hundredths of a degree, rounded toward the middle. */
int servoPositionToAngle(int p_position);

/** An angle in hundredths of a degree as a position, rounded toward the middle. */
int angleToServoPosition(qint64 p_angle);
