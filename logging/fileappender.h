#pragma once

#include "logging/abstractstringappender.h"

#include <QFile>
#include <QTextStream>

/**
 * Appends to a file, in UTF-8 and so in whatever language: the code page of a computer knows but a
 * few, and whoever gets the log to read has another one. Each message is in the file as soon as
 * write() returns.
 *
 * The file is opened at the first message. While it can't be, messages are dropped and each one
 * tries again; the error stream is told once, and again only after the file was open in between.
 * On a full disk the first 16 KiB wait for room, what comes after them is dropped, and once there
 * is room lines go on where they broke off.
 */
class FileAppender : public AbstractStringAppender
{
public:
    explicit FileAppender(const QString& p_fileName = QString());
    ~FileAppender() override;

    QString fileName() const;
    /** Goes on in another file, which is opened at the next message. */
    void setFileName(const QString& p_fileName);

protected:
    void append(const LogMessage& p_message) override;

    /** Called in front of each message, with the file's mutex held. Does nothing here. */
    virtual void prepareFile(const QDateTime& p_now);
    /** Closes the file until the next message. The file's mutex must be held. */
    void closeFile();
    /** The name, for who holds the file's mutex. */
    QString lockedFileName() const { return m_file.fileName(); }

    /** Taken after the appender's write mutex. */
    mutable std::mutex m_fileMutex;

private:
    bool openFile();

    QFile m_file;
    QTextStream m_stream;
    bool m_failureTold = false;
};
