#include "logging/logassert.h"

#include "logging/logger.h"

#include <cstdlib>

void assertFailed(const LogPlace& p_place, const char* p_condition)
{
    Logger::globalInstance().write(
        LogLevel::Fatal, p_place,
        QStringLiteral("ASSERT: \"%1\"").arg(QString::fromUtf8(p_condition)));
    std::abort();
}
