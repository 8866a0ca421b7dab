#pragma once

/** Shows a text in a debugger that watches the process, where the platform has such a thing. */
void writeToDebugger(const wchar_t* p_text);
