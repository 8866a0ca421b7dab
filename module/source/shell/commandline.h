#pragma once

#include <QCommandLineOption>

#include <optional>

/** The one option of the program's own, "loglevel". Its value is empty when it isn't given. */
QCommandLineOption logLevelOption();

/**
 * Ends, or tells with an exit code to end, a start that needs no window or can't have one; to be
 * called before the application object is made, since that aborts without a display.
 *
 * A question for the help or the version is answered and ends the process with code 0. Where there
 * is no display, what the parser doesn't understand is told and ends the process with code 1, and
 * any other start gets a line on the error stream and the code 1. Nothing is returned, nothing
 * written and nothing set when the program may start as usual.
 */
std::optional<int> answerWithoutWindow(int& p_argc, char** p_argv);
