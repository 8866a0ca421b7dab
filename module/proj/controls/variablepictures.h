#pragma once

#include <QString>

#include <cstdint>

/** The pictures of a kind of variable, as resource paths; empty for a key that no kind has. */
struct VariablePictures {
    QString normal;
    QString pressed;
};

/**
 * The pictures of a kind by its key, a bit mask with one bit set. Meant: without a caller; for
 * controls of variables, which the present catalogue has no blocks for.
 */
VariablePictures variablePictures(uint32_t p_key);
