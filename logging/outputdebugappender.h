#pragma once

#include "logging/abstractstringappender.h"

/** Shows messages in the debugger. Only Windows has such an output; elsewhere they go nowhere. */
class OutputDebugAppender : public AbstractStringAppender
{
protected:
    void append(const LogMessage& p_message) override;
};
