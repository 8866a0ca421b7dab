#pragma once

#include <QString>

/** The source file that the toolchain compiles: "\\gcc\\example\\user_main.c" beside the program.
 */
QString userMainPath();

/**
 * Writes the generated text, up to its first NUL, as UTF-8. A file that can't be written is
 * passed over: the compiler then meets whatever the file holds.
 */
void writeUserMain(const QString& p_text);
