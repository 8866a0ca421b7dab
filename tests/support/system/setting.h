#pragma once

#include <QtGlobal>

/** A number from the environment, for a longer run of a test or for one seed alone. */
inline int setting(const char* p_name, int p_default)
{
    bool given = false;
    const int value = qEnvironmentVariableIntValue(p_name, &given);
    return given ? value : p_default;
}
