#pragma once

#include <QStringList>
#include <QTemporaryDir>

/** What a process said, and its exit code: -1 if it didn't start or end by itself. */
struct ProcessResult {
    int exitCode;
    QString output;
    QString errors;
};

/** Runs a program to its end, two minutes at most. */
ProcessResult runProcess(const QString& p_program, const QStringList& p_arguments,
                         const QString& p_folder);

/**
 * A copy of the toolchain kit that the environment variable TILER_KIT names, in a folder of its
 * own: results must not lie about in the kit of the program.
 */
class KitCopy
{
public:
    KitCopy();

    /** False if there is no kit or it can't be copied. */
    bool isValid() const { return m_valid; }
    /** Compiles a program's C text as the program does. */
    ProcessResult compile(const QString& p_name, const QString& p_text) const;
    /** The compiled program, without action data. */
    QString binary(const QString& p_name) const;
    /** Runs a compiled program on the emulated controller. */
    ProcessResult run(const QString& p_name, const QStringList& p_options) const;

    /** The copy's folder, and a place for a file beside it. */
    QString kit() const { return m_folder.filePath(QStringLiteral("gcc")); }
    QString filePath(const QString& p_name) const { return m_folder.filePath(p_name); }
    /** The makefile's folder. */
    QString folder() const { return kit() + QStringLiteral("/example/build/gcc"); }

private:
    QTemporaryDir m_folder;
    bool m_valid;
};
