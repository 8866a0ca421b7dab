#pragma once

#include <QString>

#include <cstdint>

/** The pictures of a kind of variable, as resource paths; empty for a key that no kind has. */
struct VariablePictures {
    QString normal;
    QString pressed;
};

/**
 * The pictures of a kind by its key, a bit mask with one bit set. For who shows variables; nothing
 * does at present.
 */
VariablePictures variablePictures(uint32_t p_key);
