#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A start of the real program, whose widgets are read when its window shows; the program is then
 * ended. Its test needs TILER_PROGRAM and TILER_PROBE_PLUGINS in the environment.
 */
class ProbedProgram
{
public:
    explicit ProbedProgram(const QProcessEnvironment& p_environment);

    /** Whether the program ended by itself with the exit code 0 and its widgets were read. */
    bool run(const QStringList& p_arguments);

    /** What the program wrote, and how it ended. */
    QString story() const { return m_story; }

    /** The application's font: "family", "points", "weight" and "italic". */
    QJsonObject font() const { return m_found[QStringLiteral("font")].toObject(); }

    /**
     * The widgets of a class: "class", "parent" (its class), "window", "visible", "windowTitle",
     * "title", "text", "toolTip", "font", "actions" (their texts, without separators). All widgets
     * when no class is given.
     */
    QList<QJsonObject> widgets(const QString& p_class = QString()) const;

    /** The widgets that are visible windows of their own. */
    QList<QJsonObject> visibleWindows() const;

private:
    QProcessEnvironment m_environment;
    QTemporaryDir m_folder;
    QString m_story;
    QJsonObject m_found;
};
