#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/** What a program that was run left behind. */
struct RunResult {
    int exitCode; /**< -1 if it didn't end by itself */
    QString output;
    QString errors;
};

/** Runs a program to its end, two minutes at most. */
RunResult runProgram(const QString& p_program, const QStringList& p_arguments,
                     const QString& p_folder);

/**
 * A copy of the toolchain kit that TILER_KIT names, in a folder of its own: results must not lie
 * about in the kit of the program.
 */
class KitBench
{
public:
    /** False if there is no kit to copy. */
    bool layOut();
    QString kit() const { return m_folder.filePath(QStringLiteral("gcc")); }
    QString filePath(const QString& p_name) const { return m_folder.filePath(p_name); }
    /** Compiles a text to image() of a name. */
    RunResult compile(const QString& p_name, const QString& p_text) const;
    QString image(const QString& p_name) const;

private:
    QString buildFolder() const { return kit() + QStringLiteral("/example/build/gcc"); }

    QTemporaryDir m_folder;
};
