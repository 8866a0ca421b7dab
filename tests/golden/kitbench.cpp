#include "kitbench.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>

namespace
{
bool copyTree(const QString& p_from, const QString& p_to)
{
    QDirIterator files(p_from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    const QDir from(p_from);
    while (files.hasNext()) {
        const QString source = files.next();
        const QFileInfo target(QDir(p_to).filePath(from.relativeFilePath(source)));
        if (!QDir().mkpath(target.path()) || !QFile::copy(source, target.filePath())) {
            return false;
        }
    }
    return QDir().mkpath(p_to + QStringLiteral("/example/build/gcc/objects"));
}
} // namespace

RunResult runProgram(const QString& p_program, const QStringList& p_arguments,
                     const QString& p_folder)
{
    QProcess process;
    process.setWorkingDirectory(p_folder);
    process.start(p_program, p_arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit) {
        return {-1, QString(), process.errorString()};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

bool KitBench::layOut()
{
    const QString source = qEnvironmentVariable("TILER_KIT");
    return QFile::exists(source + QStringLiteral("/example/vantrel.h")) && copyTree(source, kit());
}

RunResult KitBench::compile(const QString& p_name, const QString& p_text) const
{
    QFile source(kit() + QStringLiteral("/example/user_main.c"));
    if (!source.open(QIODevice::WriteOnly)) {
        return {-1, QString(), source.errorString()};
    }
    source.write(p_text.toUtf8());
    source.close();
    return runProgram(
        buildFolder() + QStringLiteral("/make.exe"),
        {QStringLiteral("TARGET_NAME=") + p_name, QStringLiteral("USER_TASK_NUMBER=0")},
        buildFolder());
}

QString KitBench::image(const QString& p_name) const
{
    return buildFolder() + "/objects/" + p_name + ".bin";
}
