#pragma once

#include "actions/model/actionimage.h"

#include <QByteArray>
#include <QDomDocument>
#include <QString>

/** What opening a project can give. */
enum ProjectResult : int {
    ProjectOpened = 0,
    ProjectUnreadable = 1, /**< can't be opened, or is no XML that could be a project */
    ProjectWrongTag = 2,   /**< the check tag doesn't fit the text */
    ProjectMissing = 3     /**< there is no such file */
};

/** The action data at the end of a project file, in bytes. */
constexpr qint64 ProjectTailSize = ActionImage::Size;

/**
 * The largest project file in bytes, action data included. A hundred thousand blocks need some 10
 * MiB; a document of this size takes a good GiB of memory while it is read.
 */
constexpr qint64 MaximalProjectSize = qint64(32) * 1024 * 1024;

/** What a project file holds. */
struct ProjectContent {
    QDomDocument document;
    /**
     * The last ProjectTailSize bytes of the file, for ActionImage::setBytes(): of a file without
     * action data the end of its text, and fewer of a smaller file.
     */
    QByteArray actions;
};

/**
 * Reads a project in one opening of its file, with the check tag verified: one of ProjectResult.
 * The XML ends before the last ProjectTailSize bytes unless it is broken without them. Only a
 * regular file of at most MaximalProjectSize is read. p_content is of use after ProjectOpened
 * alone.
 */
int readProject(const QString& p_path, ProjectContent& p_content);

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
