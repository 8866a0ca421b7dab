#include "base/recentfiles.h"

#include "base/installpath.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

QStringList recentFiles;

namespace
{
/**
 * The longest path of any system in UTF-8, and its line feed. A path that isn't ASCII gets longer
 * with each write and read, twice as long at worst, and would fill the memory one day.
 */
const qint64 s_longestLine = 3 * 32767 + 1;

/** The next line as it stands, with its line feed; empty at the end. Longer ones are passed over.
 */
QByteArray nextLine(QFile& p_file)
{
    // Of the size that is asked for one byte is for an ending zero.
    const auto piece = [&p_file] { return p_file.readLine(s_longestLine + 1); };
    const auto isCutOff = [](const QByteArray& p_piece) {
        return p_piece.size() == s_longestLine && !p_piece.endsWith('\n');
    };
    QByteArray line = piece();
    while (isCutOff(line)) {
        while (isCutOff(line)) {
            line = piece();
        }
        line = piece();
    }
    return line;
}

/** The form that paths are compared in: Windows takes either slash. */
QString withSlashes(QString p_path) { return p_path.replace(QLatin1Char('\\'), QLatin1Char('/')); }

/** Opening a pipe would wait for its other end. */
bool isPlainFile(const QString& p_path) { return QFileInfo(p_path).isFile(); }
} // namespace

QString recentFilesPath() { return installPath(QStringLiteral("\\records.txt")); }

void readRecentFiles(const QString& p_path)
{
    QFile file(p_path);
    if (!isPlainFile(p_path) || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    QSet<QString> known(recentFiles.cbegin(), recentFiles.cend());
    for (QByteArray line = nextLine(file); !line.isEmpty(); line = nextLine(file)) {
        line.chop(1);
        // Up to the first zero byte only, like every text that comes from this file.
        const QString path = withSlashes(QString::fromLatin1(line.constData()));
        if (!known.contains(path)) {
            known.insert(path);
            recentFiles.append(path);
        }
    }
}

void writeRecentFiles(const QString& p_path)
{
    QFile file(p_path);
    if ((file.exists() && !isPlainFile(p_path)) || !file.open(QIODevice::WriteOnly)) {
        return;
    }
    for (const QString& path : qAsConst(recentFiles)) {
        file.write(path.toUtf8() + '\n');
    }
}

void putRecentFileFirst(const QString& p_path)
{
    // Made before anything goes: the path may be an entry of the list itself.
    const QStringList first{p_path};
    removeRecentFile(p_path);
    recentFiles = first + recentFiles;
}

void removeRecentFile(const QString& p_path)
{
    const QString path = withSlashes(p_path);
    recentFiles.erase(
        std::remove_if(recentFiles.begin(), recentFiles.end(),
                       [&path](const QString& p_other) { return withSlashes(p_other) == path; }),
        recentFiles.end());
}
