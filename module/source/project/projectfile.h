#pragma once

#include <QByteArray>
#include <QString>

class QDomDocument;

/** What opening a project can give. */
enum ProjectResult : int {
    ProjectOpened = 0,
    ProjectUnreadable = 1, /**< can't be opened, or is no XML that could be a project */
    ProjectWrongTag = 2,   /**< the check tag doesn't fit the text */
    ProjectMissing = 3     /**< there is no such file */
};

/** The action data at the end of a project file, in bytes. */
constexpr qint64 ProjectTailSize = 57472;

/**
 * Reads a project's document, with the check tag verified: one of ProjectResult. The last
 * ProjectTailSize bytes are taken as action data unless the XML is broken without them. Only a
 * regular file of at most 256 MiB is read; a hundred thousand blocks need some 15.
 */
int readProject(const QString& p_path, QDomDocument& p_document);

/**
 * Writes a project, the text first and the tail behind it. False if that failed: the file that
 * stood there before is then whole and unchanged, wherever a new file can be made beside it.
 */
bool writeProject(const QString& p_path, const QByteArray& p_text, const QByteArray& p_tail);
