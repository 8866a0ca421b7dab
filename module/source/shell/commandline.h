#pragma once

#include <QCommandLineOption>

/** The one option of the program's own, "loglevel". Its value is empty when it isn't given. */
QCommandLineOption logLevelOption();

/**
 * Ends a start that needs no window; to be called before the application object is made, since
 * that aborts without a display.
 *
 * A question for the help or the version is answered and ends the process with code 0; what is
 * neither understood here nor one of Qt's own options is told and ends it with code 1. In all other
 * cases this returns, with nothing written and nothing set.
 */
void answerWithoutWindow(int& p_argc, char** p_argv);

/**
 * For as long as the application object is being made: where it finds no display, the process ends
 * with a line on the error stream and the code 1, and not by an abort. What Qt tells of the cause
 * stands before that line.
 */
class WindowSystemGuard
{
public:
    WindowSystemGuard();
    ~WindowSystemGuard();
    Q_DISABLE_COPY(WindowSystemGuard)
};
