#include "generator/codegenerator.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"
#include "text/bracestoindent.h"
#include "text/variables.h"

namespace
{
using Fragment = QString (supermodule::*)() const;

/** The fragments of a chain, one behind the other. */
QString chainText(const supermodule* p_first, Fragment p_fragment)
{
    QString text;
    for (const supermodule* module = p_first; module; module = module->next()) {
        text += (module->*p_fragment)();
    }
    return text;
}

QString taskTexts()
{
    QString text = QStringLiteral("\n");
    for (int i = 1; i < taskModules.size(); ++i) {
        text += QStringLiteral("void user_task%1()\n{\n").arg(i);
        text += chainText(taskModules.at(i)->next(), &supermodule::cCode);
        text += QStringLiteral("\n}\n");
    }
    return text;
}

/** Frames the bodies, whose fragments have registered the variables that they name. */
QString framedC(const QString& p_body)
{
    const QString tasks = taskTexts();
    QString text = QStringLiteral("#include \"vantrel.h\"\n\n") + variableDeclarations();
    text.reserve(text.size() + p_body.size() + tasks.size() + 2);
    text += p_body;
    text += QLatin1String("\n}");
    text += tasks;
    bracesToIndent(text);
    return text;
}

/** Closes a Python text: indents it by its braces and then drops them with all blank lines. */
QString framedPython(const QString& p_body)
{
    QString text = QStringLiteral("import Vantrel\n\n") + p_body + QStringLiteral("\n}\n");
    bracesToIndent(text);
    text.replace(QLatin1Char('{'), QLatin1Char('\n'));
    text.replace(QLatin1Char('}'), QLatin1Char('\n'));
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    text.clear();
    for (const QString& line : lines) {
        if (!line.simplified().isEmpty()) {
            text += line + QLatin1Char('\n');
        }
    }
    return text;
}

/** The chains of all sub-programs, each followed by p_end. */
QString subProgramTexts(Fragment p_fragment, const QString& p_end)
{
    QString text;
    for (int i = 1; i < rootModules.size(); ++i) {
        text += chainText(rootModules.at(i), p_fragment) + p_end;
    }
    return text;
}

const supermodule* mainRoot() { return rootModules.isEmpty() ? nullptr : rootModules.first(); }
} // namespace

QString generateVisibleCode(int p_language)
{
    resetVariableUse();
    switch (p_language) {
    case CCode:
        return framedC(chainText(firstVisibleRoot(), &supermodule::cCode));
    case PythonCode:
        return framedPython(chainText(firstVisibleRoot(), &supermodule::pythonCode));
    default:
        return QString();
    }
}

QString generateProjectCode(int p_language)
{
    resetVariableUse();
    switch (p_language) {
    case CCode:
        return framedC(subProgramTexts(&supermodule::cCode, QStringLiteral("}\n")) +
                       chainText(mainRoot(), &supermodule::cCode));
    case PythonCode:
        return framedPython(subProgramTexts(&supermodule::pythonCode, QString()) +
                            chainText(mainRoot(), &supermodule::pythonCode));
    default:
        return QString();
    }
}
