#pragma once

#include <QString>

/** The source file that the toolchain compiles: "\\gcc\\example\\user_main.c" beside the program.
 */
QString userMainPath();

/**
 * The lock of the kit, a QLockFile. Whoever holds it may write the source file, compile it and take
 * the result; other windows of the same installation wait.
 */
QString kitLockPath();

/**
 * Writes the generated text, up to its first NUL, as UTF-8. False if not all of it is in the file,
 * which then must not be compiled: it holds an older program or a part of this one.
 */
bool writeUserMain(const QString& p_text);
