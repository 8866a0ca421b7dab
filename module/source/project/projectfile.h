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
 * The largest project file in bytes, action data included. A hundred thousand blocks need some 10
 * MiB; a document of this size takes a good GiB of memory while it is read.
 */
constexpr qint64 MaximalProjectSize = qint64(32) * 1024 * 1024;

/**
 * Reads a project's document, with the check tag verified: one of ProjectResult. The last
 * ProjectTailSize bytes are taken as action data unless the XML is broken without them. Only a
 * regular file of at most MaximalProjectSize is read.
 */
int readProject(const QString& p_path, QDomDocument& p_document);

/**
 * Writes a project, the text first and the tail behind it. False if that failed, and for what
 * readProject() would refuse: an empty text, as projectText() gives it, or more than
 * MaximalProjectSize. The file that stood there before is then whole and unchanged, unless it had
 * to be overwritten in place and that broke off.
 *
 * At any moment of a save the old or the new file is whole, wherever a new file can be made beside
 * it. Elsewhere, as in a folder that is closed but for that one file, it is overwritten in place.
 */
bool writeProject(const QString& p_path, const QByteArray& p_text, const QByteArray& p_tail);
