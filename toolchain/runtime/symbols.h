/* Pictures of the symbols by their numbers, rows from the top. symbols.c is made from leds.json. */
#ifndef SYMBOLS_H
#define SYMBOLS_H

#include <stdint.h>

#define SYMBOL_COUNT 53

extern const uint8_t symbols[SYMBOL_COUNT][8];

#endif
