#include "logging/loglevel.h"

#include <array>

namespace
{
constexpr std::array<const char*, 6> s_names{"Trace", "Debug", "Info", "Warning", "Error", "Fatal"};
} // namespace

QString levelName(LogLevel p_level)
{
    return QString::fromLatin1(s_names.at(static_cast<std::size_t>(p_level)));
}

LogLevel levelFromText(const QString& p_text)
{
    const QString wanted = p_text.trimmed();
    for (std::size_t level = 0; level < s_names.size(); ++level) {
        if (wanted.compare(QLatin1String(s_names.at(level)), Qt::CaseInsensitive) == 0) {
            return static_cast<LogLevel>(level);
        }
    }
    return LogLevel::Debug;
}
