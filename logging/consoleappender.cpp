#include "logging/consoleappender.h"

#include "logging/errorstream.h"

namespace
{
QString formatOfEnvironment()
{
    const QString pattern = qEnvironmentVariable("QT_MESSAGE_PATTERN");
    return pattern.isEmpty() ? AbstractStringAppender::defaultFormat()
                             : pattern + QLatin1Char('\n');
}
} // namespace

ConsoleAppender::ConsoleAppender() : AbstractStringAppender(formatOfEnvironment()) {}

void ConsoleAppender::append(const LogMessage& p_message)
{
    writeToErrorStream(formattedString(p_message));
}
