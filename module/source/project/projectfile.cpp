#include "project/projectfile.h"

#include "project/projectdocument.h"
#include "project/projectreader.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{
/** The XML is a text file of the platform; the bytes behind it are not. */
QByteArray platformText(const QByteArray& p_text)
{
#ifdef Q_OS_WIN
    return QByteArray(p_text).replace('\n', "\r\n");
#else
    return p_text;
#endif
}

/**
 * Writes a file where no other can be made beside it. What is there is not emptied first: the part
 * that needs new space is written before anything old is touched, so that a full disk leaves the
 * old file whole.
 */
bool overwrite(const QString& p_path, const QByteArray& p_content)
{
    const QFileInfo info(p_path);
    const bool isNew = !info.exists();
    QFile file(p_path);
    // Some systems refuse to open someone else's file for him who would create it, too.
    const QIODevice::OpenMode mode = isNew ? QIODevice::NewOnly : QIODevice::ExistingOnly;
    if ((!isNew && !info.isFile()) || !file.open(QIODevice::ReadWrite | mode)) {
        return false;
    }
    const qint64 oldSize = file.size();
    const auto writeAt = [&file](qint64 p_from, const QByteArray& p_part) {
        return file.seek(p_from) && file.write(p_part) == p_part.size() && file.flush();
    };
    const int kept = static_cast<int>(qMin(oldSize, qint64(p_content.size())));
    if (!writeAt(oldSize, p_content.mid(kept))) {
        if (isNew) {
            file.remove();
        } else {
            file.resize(oldSize);
        }
        return false;
    }
    return writeAt(0, p_content.left(kept)) && file.resize(p_content.size());
}
} // namespace

int readProject(const QString& p_path, ProjectContent& p_content)
{
    const QFileInfo info(p_path);
    if (!info.exists()) {
        return ProjectMissing;
    }
    QFile file(p_path);
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || info.size() > MaximalProjectSize || !file.open(QIODevice::ReadOnly)) {
        return ProjectUnreadable;
    }
    // Not to its end: what the system makes up as it is read may have none.
    const QByteArray content = file.read(info.size());
    QDomDocument parsed;
    const bool hasTail = content.size() > ProjectTailSize;
    if (!(hasTail && parseProject(content.left(content.size() - ProjectTailSize), parsed)) &&
        !parseProject(content, parsed)) {
        return ProjectUnreadable;
    }
    p_content.document = canonicalDocument(parsed);
    // Also where all of it is text: the image's own format marks tell.
    p_content.actions = content.right(ProjectTailSize);
    return tagFits(p_content.document) ? ProjectOpened : ProjectWrongTag;
}

bool writeProject(const QString& p_path, const QByteArray& p_text, const QByteArray& p_tail)
{
    const QByteArray content = platformText(p_text) + p_tail;
    if (p_text.isEmpty() || content.size() > MaximalProjectSize) {
        return false;
    }
    QSaveFile file(p_path);
    if (!file.open(QIODevice::WriteOnly)) {
        return overwrite(p_path, content);
    }
    if (file.write(content) != content.size() || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    // The new file can't take the old one's place where that is someone else's in a shared folder,
    // or where its name has no room for the ending of another.
    return file.commit() || overwrite(p_path, content);
}
