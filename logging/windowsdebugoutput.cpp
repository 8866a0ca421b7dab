#include "logging/debugoutput.h"

#include <windows.h>

void writeToDebugger(const wchar_t* p_text) { OutputDebugStringW(p_text); }
