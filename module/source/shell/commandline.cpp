#include "shell/commandline.h"

#include "base/programversion.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace
{
/** What may follow the name of an option. */
enum class OptionValue { None, Next, NextOrJoined };

struct QtOption {
    const char* name;
    OptionValue value;
};

// What Qt takes for itself: the last seven on an X display alone. Elsewhere it leaves them to the
// parser behind it, which complains.
const QtOption s_qtOptions[] = {
    {"platform", OptionValue::Next},
    {"platformpluginpath", OptionValue::Next},
    {"platformtheme", OptionValue::Next},
    {"plugin", OptionValue::Next},
    {"qmljsdebugger", OptionValue::NextOrJoined},
    {"qwindowgeometry", OptionValue::Next},
    {"qwindowicon", OptionValue::Next},
    {"qwindowtitle", OptionValue::Next},
    {"reverse", OptionValue::None},
    {"session", OptionValue::Next},
    {"style", OptionValue::NextOrJoined},
    {"stylesheet", OptionValue::NextOrJoined},
    {"testability", OptionValue::None},
    {"widgetcount", OptionValue::None},
    {"display", OptionValue::Next},
    {"geometry", OptionValue::Next},
    {"icon", OptionValue::Next},
    {"title", OptionValue::Next},
    {"name", OptionValue::Next},
    {"dograb", OptionValue::None},
    {"nograb", OptionValue::None},
};

/** Which of Qt's options an argument is, if any. */
const QtOption* qtOption(const QString& p_argument)
{
    const int hyphens = p_argument.startsWith(QLatin1String("--")) ? 2 : 1;
    const int end = p_argument.indexOf(QLatin1Char('='));
    const QString name = p_argument.mid(hyphens, end < 0 ? -1 : end - hyphens);
    const auto* found =
        std::find_if(std::begin(s_qtOptions), std::end(s_qtOptions),
                     [&name](const QtOption& p_option) { return name == p_option.name; });
    if (!p_argument.startsWith(QLatin1Char('-')) || found == std::end(s_qtOptions) ||
        (end >= 0 && found->value != OptionValue::NextOrJoined)) {
        return nullptr;
    }
    return found;
}

/** Adds Qt's own options, but for those that the parser adds itself without a window. */
void addQtOptions(QCommandLineParser& p_parser)
{
    for (const QtOption& option : s_qtOptions) {
        const QString name = QLatin1String(option.name);
        if (name != QLatin1String("qmljsdebugger")) {
            p_parser.addOption(QCommandLineOption(
                name, QString(), option.value == OptionValue::None ? QString() : name));
        }
    }
}

/** The arguments without Qt's options and their values. */
QStringList withoutQtOptions(const QStringList& p_arguments)
{
    QStringList rest = p_arguments.mid(0, 1);
    for (int i = 1; i < p_arguments.size(); ++i) {
        const QString& argument = p_arguments.at(i);
        const QtOption* option = qtOption(argument);
        if (option == nullptr) {
            rest << argument;
        } else if (option->value != OptionValue::None && !argument.contains(QLatin1Char('='))) {
            ++i;
        }
    }
    return rest;
}

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

QtMessageHandler s_usualHandler = nullptr;

void endOnFatal(QtMsgType p_type, const QMessageLogContext& p_context, const QString& p_text)
{
    if (p_type != QtFatalMsg) {
        s_usualHandler(p_type, p_context, p_text);
        return;
    }
    // In place of Qt's own message, which advises to reinstall the program.
    std::fputs("vantrel: No window can be opened. Is there a display?\n", stderr);
    // The application object is half constructed: no destructors, no exit handlers.
    std::_Exit(1);
}
} // namespace

QCommandLineOption logLevelOption()
{
    return QCommandLineOption(QStringLiteral("loglevel"),
                              QStringLiteral("log level [trace,debug,info,warning,error,fatal]"),
                              QStringLiteral("loglevel"), QString());
}

void answerWithoutWindow(int& p_argc, char** p_argv)
{
    QCommandLineParser parser;
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOption(logLevelOption());
    const bool understood = parser.parse(withoutQtOptions(argumentsOf(p_argc, p_argv)));
    const bool askedAll = understood && parser.optionNames().contains(QStringLiteral("help-all"));
    const bool asked = askedAll || (understood && (parser.isSet(help) || parser.isSet(version)));
    if (understood && !asked) {
        return;
    }
    const QCoreApplication application(p_argc, p_argv);
    if (asked) {
        // They die with this process, and so never reach the place of the settings, which depends
        // on them.
        QCoreApplication::setApplicationName(QStringLiteral("Tiler"));
        QCoreApplication::setApplicationVersion(programVersion());
    }
    if (askedAll) {
        addQtOptions(parser);
    }
    parser.process(withoutQtOptions(QCoreApplication::arguments()));
}

WindowSystemGuard::WindowSystemGuard() { s_usualHandler = qInstallMessageHandler(endOnFatal); }

WindowSystemGuard::~WindowSystemGuard() { qInstallMessageHandler(s_usualHandler); }
