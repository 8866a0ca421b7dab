#include "outputdebugappender.h"

#include "debugoutput.h"

void OutputDebugAppender::append(const LogMessage& p_message)
{
    writeToDebugger(formattedString(p_message).toStdWString().c_str());
}
