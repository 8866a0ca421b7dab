#pragma once

#include <QLoggingCategory>

/**
 * The log category of the program, Qt's "default". For qCDebug(): a message that nobody wants is
 * then not even put together.
 */
inline const QLoggingCategory& tilerLog() { return *QLoggingCategory::defaultCategory(); }
