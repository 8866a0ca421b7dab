#pragma once

#include <QString>

/**
 * Writes a text in one piece to the error stream of the process, in the local code page, or
 * in UTF-8 once Qt has been taken down. Where there is no such stream, as in a Windows program
 * without a console, the text is lost.
 */
void writeToErrorStream(const QString& p_text);
