#pragma once

#include "logging/abstractstringappender.h"

/** Writes to the error stream of the process, in the local code page. */
class ConsoleAppender : public AbstractStringAppender
{
public:
    /**
     * The default format is the environment's QT_MESSAGE_PATTERN, with a newline behind it as Qt
     * adds it, and where that isn't set the one of every appender.
     */
    ConsoleAppender();

protected:
    void append(const LogMessage& p_message) override;
};
