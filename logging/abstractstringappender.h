#pragma once

#include "logging/abstractappender.h"
#include "logging/messageformat.h"

#include <memory>

/** An appender of text, with a format for its lines. */
class AbstractStringAppender : public AbstractAppender
{
public:
    /** "%{time}{yyyy-MM-ddTHH:mm:ss.zzz} [%{type:-7}] <%{function}> %{message}\n" */
    static QString defaultFormat();

    QString format() const;
    /** For the messages to come; an empty format asks for the appender's default. */
    void setFormat(const QString& p_format);

protected:
    explicit AbstractStringAppender(const QString& p_default = defaultFormat());

    /** A message's text in the format. */
    QString formattedString(const LogMessage& p_message) const;

private:
    std::shared_ptr<const MessageFormat> currentFormat() const;

    const QString m_default;
    mutable ReadWriteLock m_formatLock;
    // Shared with those who are just expanding it, so that nobody holds the lock for that long.
    std::shared_ptr<const MessageFormat> m_format;
};
