#include "logging/outputdebugappender.h"

#include "logging/debugoutput.h"

void OutputDebugAppender::append(const LogMessage& p_message)
{
    writeToDebugger(formattedString(p_message).toStdWString().c_str());
}
