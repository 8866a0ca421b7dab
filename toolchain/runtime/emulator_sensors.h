/* Values of the sensors, as a script that was laid into memory tells them. */
#ifndef EMULATOR_SENSORS_H
#define EMULATOR_SENSORS_H

#include <stdint.h>

enum sensor_kind { SENSOR_TOUCH = 1, SENSOR_ANALOGUE = 2 };

void sensors_open(void);

/* Value of a sensor at this moment. */
int sensors_read(enum sensor_kind kind, int port);

/* Time in milliseconds at which the run is to be stopped, 0 for never. */
uint32_t sensors_limit(void);

#endif
