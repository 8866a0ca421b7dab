#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A start of the real program, whose widgets are read when its window shows; the program is then
 * ended. Its test needs TILER_PROBE_PLUGINS in the environment, and TILER_PROGRAM unless it names
 * another copy of the program.
 */
class ProbedProgram
{
public:
    explicit ProbedProgram(const QProcessEnvironment& p_environment,
                           const QString& p_program = qEnvironmentVariable("TILER_PROGRAM"));

    /**
     * Where a file appears with each step of the start: "widgets.json.translation" when texts are
     * translated from now on, "widgets.json.window" when there is a window, "widgets.json.shown"
     * when it shows.
     */
    QString stepsFolder() const { return m_folder.path(); }

    /** Whether the program ended by itself with the exit code 0 and its widgets were read. */
    bool run(const QStringList& p_arguments);

    /** What the program wrote, and how it ended. */
    QString story() const { return m_story; }

    /** The application's font: "family", "points", "weight" and "italic". */
    QJsonObject font() const { return m_found[QStringLiteral("font")].toObject(); }

    /** What it was when the translation came. */
    QJsonObject fontBeforeTranslation() const
    {
        return m_found[QStringLiteral("fontBeforeTranslation")].toObject();
    }

    /** The program's own view of QT_XCB_GL_INTEGRATION; empty when it isn't set. */
    QString glIntegration() const { return m_found[QStringLiteral("glIntegration")].toString(); }

    /** The names of the files that the program has mapped; empty where the system doesn't tell. */
    QStringList libraries() const;

    /**
     * The widgets of a class: "class", "parent" (its class), "window", "visible", "maximized",
     * "windowTitle", "title", "text", "toolTip", "font", "actions" (their texts, without
     * separators). All widgets when no class is given.
     */
    QList<QJsonObject> widgets(const QString& p_class = QString()) const;

    /** The widgets that are visible windows of their own. */
    QList<QJsonObject> visibleWindows() const;

private:
    QProcessEnvironment m_environment;
    QString m_program;
    QTemporaryDir m_folder;
    QString m_story;
    QJsonObject m_found;
};
