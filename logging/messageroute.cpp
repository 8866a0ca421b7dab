#include "logging/messageroute.h"

#include "logging/logger.h"

#include <array>

namespace
{
// In the order of Qt's types, which is not that of their weight.
constexpr std::array<LogLevel, 5> s_levels{LogLevel::Debug, LogLevel::Warning, LogLevel::Error,
                                           LogLevel::Fatal, LogLevel::Info};
static_assert(QtDebugMsg == 0 && QtWarningMsg == 1 && QtCriticalMsg == 2 && QtFatalMsg == 3 &&
              QtInfoMsg == 4);

void toLogger(QtMsgType p_type, const QMessageLogContext& p_context, const QString& p_text)
{
    Logger::globalInstance().write(s_levels.at(static_cast<std::size_t>(p_type)),
                                   {p_context.file, p_context.line, p_context.function}, p_text,
                                   p_context.category);
}
} // namespace

MessageRoute::MessageRoute() : m_before(qInstallMessageHandler(toLogger)) {}

MessageRoute::~MessageRoute()
{
    const QtMessageHandler latest = qInstallMessageHandler(m_before);
    if (latest != toLogger) {
        qInstallMessageHandler(latest);
    }
}
