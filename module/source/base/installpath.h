#pragma once

#include <QString>

/**
 * Turns one of the installation's path literals, such as
 * "\\gcc\\example\\user_main.c", into a full path beside the program.
 *
 * The literal is put behind QCoreApplication::applicationDirPath(). On Windows
 * it stays as it is; elsewhere each backslash of the literal becomes a slash.
 * Needs an application object.
 */
QString installPath(const QString& p_literal);
