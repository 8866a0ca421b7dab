#pragma once

#include "logging/logmessage.h"

/** Logs the fatal message ASSERT: "condition", and ends the program. */
[[noreturn]] void assertFailed(const LogPlace& p_place, const char* p_condition);

/** Ends the program, with its last line in the log, unless a condition holds. */
#define LOG_ASSERT(p_condition)                                                                    \
    (static_cast<bool>(p_condition) ? void() : assertFailed(LOG_HERE, #p_condition))
