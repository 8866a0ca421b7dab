#include "projectfile.h"

#include "checktag.h"
#include "projectdocument.h"
#include "projectreader.h"

#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{
const qint64 s_maximalSize = qint64(256) * 1024 * 1024;

/** The XML is a text file of the platform; the bytes behind it are not. */
QByteArray platformText(const QByteArray& p_text)
{
#ifdef Q_OS_WIN
    return QByteArray(p_text).replace('\n', "\r\n");
#else
    return p_text;
#endif
}

bool tagFits(QDomDocument& p_document)
{
    const QDomNodeList tags = p_document.elementsByTagName(QStringLiteral("tagCheck"));
    if (tags.isEmpty()) {
        // A file without a tag is accepted unchecked.
        return true;
    }
    QDomElement tag = tags.at(0).toElement();
    const quint32 stored = tag.attribute(QStringLiteral("value")).toUInt(nullptr, 16);
    tag.setAttribute(QStringLiteral("value"), QStringLiteral("0"));
    return checkTag(documentText(p_document)) == stored;
}
} // namespace

int readProject(const QString& p_path, QDomDocument& p_document)
{
    const QFileInfo info(p_path);
    if (!info.exists()) {
        return ProjectMissing;
    }
    QFile file(p_path);
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || info.size() > s_maximalSize || !file.open(QIODevice::ReadOnly)) {
        return ProjectUnreadable;
    }
    const QByteArray content = file.readAll();
    const bool hasTail = content.size() > ProjectTailSize;
    const bool parsed =
        (hasTail && parseProject(content.left(content.size() - ProjectTailSize), p_document)) ||
        parseProject(content, p_document);
    if (!parsed) {
        return ProjectUnreadable;
    }
    p_document = canonicalDocument(p_document);
    return tagFits(p_document) ? ProjectOpened : ProjectWrongTag;
}

bool writeProject(const QString& p_path, const QByteArray& p_text, const QByteArray& p_tail)
{
    QSaveFile file(p_path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    const QByteArray text = platformText(p_text);
    // Flushed here: without a temporary file the commit doesn't tell of a full disk.
    const bool written =
        file.write(text) == text.size() && file.write(p_tail) == p_tail.size() && file.flush();
    if (!written) {
        file.cancelWriting();
    }
    return file.commit() && written;
}
