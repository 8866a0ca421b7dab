#include "logging/abstractstringappender.h"

#include <shared_mutex>
#include <utility>

AbstractStringAppender::AbstractStringAppender(const QString& p_default)
    : m_default(p_default), m_format(std::make_shared<const MessageFormat>(p_default))
{
}

QString AbstractStringAppender::defaultFormat()
{
    return QStringLiteral(
        "%{time}{yyyy-MM-ddTHH:mm:ss.zzz} [%{type:-7}] <%{function}> %{message}\n");
}

QString AbstractStringAppender::format() const { return currentFormat()->text(); }

void AbstractStringAppender::setFormat(const QString& p_format)
{
    auto format = std::make_shared<const MessageFormat>(p_format.isEmpty() ? m_default : p_format);
    const std::unique_lock lock(m_formatLock);
    m_format.swap(format);
}

QString AbstractStringAppender::formattedString(const LogMessage& p_message) const
{
    return currentFormat()->expanded(p_message);
}

std::shared_ptr<const MessageFormat> AbstractStringAppender::currentFormat() const
{
    const std::shared_lock lock(m_formatLock);
    return m_format;
}
