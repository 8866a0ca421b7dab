#pragma once

#include <QLoggingCategory>

/**
 * The log category of the program, Qt's "default". For qCDebug(): where the category is turned off,
 * as by QT_LOGGING_RULES, a message is not even put together.
 */
inline const QLoggingCategory& tilerLog() { return *QLoggingCategory::defaultCategory(); }
