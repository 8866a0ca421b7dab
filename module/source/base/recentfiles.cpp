#include "recentfiles.h"

#include "installpath.h"

#include <QFile>

QStringList recentFiles;

QString recentFilesPath() { return installPath(QStringLiteral("\\records.txt")); }

void readRecentFiles(const QString& p_path)
{
    QFile file(p_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        line.chop(1);
        // Up to the first zero byte only, like every text that comes from this file.
        QString path = QString::fromLatin1(line.constData());
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        if (!recentFiles.contains(path)) {
            recentFiles.append(path);
        }
    }
}

void writeRecentFiles(const QString& p_path)
{
    QFile file(p_path);
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    for (const QString& path : qAsConst(recentFiles)) {
        file.write(path.toUtf8() + '\n');
    }
}

void putRecentFileFirst(const QString& p_path)
{
    recentFiles.removeOne(p_path);
    recentFiles.prepend(p_path);
}
