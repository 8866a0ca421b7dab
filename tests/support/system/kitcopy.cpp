#include "support/system/kitcopy.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
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
    return true;
}
} // namespace

ProcessResult runProcess(const QString& p_program, const QStringList& p_arguments,
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

KitCopy::KitCopy()
{
    const QString source = qEnvironmentVariable("TILER_KIT");
    m_valid = QFile::exists(source + QStringLiteral("/example/vantrel.h")) &&
              copyTree(source, kit()) && QDir().mkpath(folder() + QStringLiteral("/objects"));
}

QString KitCopy::binary(const QString& p_name) const
{
    return folder() + QStringLiteral("/objects/") + p_name + QStringLiteral(".bin");
}

ProcessResult KitCopy::compile(const QString& p_name, const QString& p_text) const
{
    QFile source(kit() + QStringLiteral("/example/user_main.c"));
    if (!source.open(QIODevice::WriteOnly)) {
        return {-1, QString(), source.errorString()};
    }
    source.write(p_text.toUtf8());
    source.close();
    return runProcess(
        folder() + QStringLiteral("/make.exe"),
        {QStringLiteral("TARGET_NAME=") + p_name, QStringLiteral("USER_TASK_NUMBER=0")}, folder());
}

ProcessResult KitCopy::run(const QString& p_name, const QStringList& p_options) const
{
    return runProcess(
        kit() + QStringLiteral("/run-on-emulator"),
        QStringList{QStringLiteral("--bare")} + p_options + QStringList{binary(p_name)}, kit());
}
