#pragma once

#include <QString>
#include <QStringList>

/** The recent projects, most recent first. One list for the whole process. */
extern QStringList recentFiles;

/** The file that keeps the list between two runs: "\\records.txt" beside the program. */
QString recentFilesPath();

/**
 * Appends the paths of a list file to recentFiles: one path a line, read as Latin-1, each
 * backslash turned into a slash, a path that is there already left out. A line loses its last
 * byte, whether or not that is a line feed. A line longer than any path is left out. A file that
 * can't be opened changes nothing.
 */
void readRecentFiles(const QString& p_path);

/**
 * Writes recentFiles to a list file, a line each, as UTF-8. Meant: the next read, as Latin-1,
 * garbles a path with other than ASCII characters; lists that are on disk are in this format.
 */
void writeRecentFiles(const QString& p_path);

/**
 * Puts a path first, as it is given. If it is in the list already, with whichever slashes, that
 * entry goes.
 */
void putRecentFileFirst(const QString& p_path);

/** Takes a path off the list, with whichever slashes it stands there. */
void removeRecentFile(const QString& p_path);
