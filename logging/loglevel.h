#pragma once

#include <QString>

/** How much a message matters, in ascending order. */
enum class LogLevel : int { Trace, Debug, Info, Warning, Error, Fatal };

/** The level's name, such as "Info". */
QString levelName(LogLevel p_level);

/**
 * The level of a text, in whatever case and with blanks around it: "trace", "debug", "info",
 * "warning", "error" or "fatal". Any other text means Debug.
 */
LogLevel levelFromText(const QString& p_text);
