#include "generator/codegenerator.h"

#include "generator/codemap.h"
#include "modules/documentstate.h"
#include "modules/fragments.h"
#include "modules/supermodule.h"
#include "text/bracestoindent.h"
#include "text/variables.h"

#include <utility>

namespace
{
/** The fragments of a chain, one behind the other. */
QString chainText(const supermodule* p_first, Fragment p_fragment)
{
    QString text;
    appendFragments(text, p_first, p_fragment);
    return text;
}

QString taskTexts()
{
    QString text = QStringLiteral("\n");
    for (int i = 1; i < taskModules.size(); ++i) {
        text += QStringLiteral("void user_task%1()\n{\n").arg(i);
        appendFragments(text, taskModules.at(i)->next(), &supermodule::cCode);
        text += QStringLiteral("\n}\n");
    }
    return text;
}

/**
 * Frames the bodies, whose fragments have registered the variables that they name, and leaves the
 * layout to be done. Places in p_body are moved along with it; those in the tasks come behind them.
 */
QString framedC(const QString& p_body, QVector<FragmentPlace>& p_places)
{
    const int inBody = p_places.size();
    const QString tasks = taskTexts();
    QString text = QStringLiteral("#include \"vantrel.h\"\n\n") + variableDeclarations();
    text.reserve(text.size() + p_body.size() + tasks.size() + 2);
    int moved = text.size();
    text += p_body;
    text += QLatin1String("\n}");
    for (int i = 0; i < p_places.size(); ++i) {
        if (i == inBody) {
            moved = text.size();
        }
        p_places[i].from += moved;
    }
    text += tasks;
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

QString generateVisibleCode(int p_language, CodeMap& p_map)
{
    resetVariableUse();
    p_map = CodeMap();
    switch (p_language) {
    case CCode: {
        QVector<FragmentPlace> places;
        const FragmentRecord record(places);
        const QString raw = framedC(chainText(firstVisibleRoot(), &supermodule::cCode), places);
        QString text = raw;
        bracesToIndent(text);
        p_map = CodeMap(raw, text, std::move(places));
        return text;
    }
    case PythonCode:
        return framedPython(chainText(firstVisibleRoot(), &supermodule::pythonCode));
    default:
        return QString();
    }
}

QString generateVisibleCode(int p_language)
{
    CodeMap map;
    return generateVisibleCode(p_language, map);
}

QString generateProjectCode(int p_language)
{
    resetVariableUse();
    switch (p_language) {
    case CCode: {
        QVector<FragmentPlace> unasked;
        QString text = framedC(subProgramTexts(&supermodule::cCode, QStringLiteral("}\n")) +
                                   chainText(mainRoot(), &supermodule::cCode),
                               unasked);
        bracesToIndent(text);
        return text;
    }
    case PythonCode:
        return framedPython(subProgramTexts(&supermodule::pythonCode, QString()) +
                            chainText(mainRoot(), &supermodule::pythonCode));
    default:
        return QString();
    }
}
