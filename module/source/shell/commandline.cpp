#include "commandline.h"

#include "programversion.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace
{
// The names of options are all that is looked for. The locale, and so its code page, is settled
// only with the application.
QStringList argumentsOf(int p_argc, char** p_argv)
{
    QStringList arguments;
    for (int i = 0; i < p_argc; ++i) {
        arguments << QString::fromUtf8(p_argv[i]);
    }
    return arguments;
}

/** Whether a window has a chance to open. Only where there surely is no display it has none. */
bool mayHaveDisplay(const QStringList& p_arguments)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET"}) {
        if (!qEnvironmentVariableIsEmpty(name)) {
            return true;
        }
    }
    // Such a session has a display of a name that everyone knows.
    if (qgetenv("XDG_SESSION_TYPE") == "wayland") {
        return true;
    }
    for (const char* option : {"-platform", "--platform", "-display", "--display"}) {
        if (p_arguments.contains(QLatin1String(option))) {
            return true;
        }
    }
    return false;
#else
    Q_UNUSED(p_arguments)
    return true;
#endif
}
} // namespace

QCommandLineOption logLevelOption()
{
    return QCommandLineOption(QStringLiteral("loglevel"),
                              QStringLiteral("log level [trace,debug,info,warning,error,fatal]"),
                              QStringLiteral("loglevel"), QString());
}

std::optional<int> answerWithoutWindow(int& p_argc, char** p_argv)
{
    QCommandLineParser parser;
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOption(logLevelOption());
    const QStringList arguments = argumentsOf(p_argc, p_argv);
    // Options of the graphics library are not known here, so that a start with one of them is not
    // understood. It goes the usual way.
    const bool asked = parser.parse(arguments) && (parser.isSet(help) || parser.isSet(version));
    if (!asked && mayHaveDisplay(arguments)) {
        return std::nullopt;
    }
    const QCoreApplication application(p_argc, p_argv);
    if (asked) {
        // They die with this process, and so never reach the place of the settings, which depends
        // on them.
        QCoreApplication::setApplicationName(QStringLiteral("Tiler"));
        QCoreApplication::setApplicationVersion(programVersion());
    }
    parser.process(application);
    std::fputs("vantrel: There is no display to open the window on.\n", stderr);
    return 1;
}
