#include "logging/debugoutput.h"

void writeToDebugger(const wchar_t* /*p_text*/) {}
