/* Faces for the two displays. faces.c is made from leds.json. */
#ifndef FACES_H
#define FACES_H

#include <stdint.h>

#define FACE_COUNT 12

struct face {
	const char *name;
	uint8_t left[8];
	uint8_t right[8];
};

extern const struct face faces[FACE_COUNT];

#endif
