#pragma once

#include <QString>

#include <cstdint>

/** The pictures of a kind of variable, as resource paths; empty for a key that no kind has. */
struct VariablePictures {
    QString normal;
    QString pressed;
};

/** The pictures of a kind by its key, a bit mask with one bit set. */
VariablePictures variablePictures(uint32_t p_key);
