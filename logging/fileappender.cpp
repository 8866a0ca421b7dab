#include "logging/fileappender.h"

#include "logging/errorstream.h"

FileAppender::FileAppender(const QString& p_fileName) : m_file(p_fileName) {}

FileAppender::~FileAppender() { closeFile(); }

QString FileAppender::fileName() const
{
    const std::scoped_lock lock(m_fileMutex);
    return m_file.fileName();
}

void FileAppender::setFileName(const QString& p_fileName)
{
    const std::scoped_lock lock(m_fileMutex);
    closeFile();
    m_file.setFileName(p_fileName);
    m_failureTold = false;
}

void FileAppender::prepareFile(const QDateTime& /*p_now*/) {}

void FileAppender::append(const LogMessage& p_message)
{
    QString text = formattedString(p_message);
    // A file with a NUL in it is no text any more to many programs.
    text.replace(QChar::Null, QChar::ReplacementCharacter);
    const std::scoped_lock lock(m_fileMutex);
    prepareFile(p_message.time);
    if (!openFile()) {
        return;
    }
    // After a failure the stream would keep everything to itself for good.
    m_stream.resetStatus();
    m_stream << text;
    m_stream.flush();
    m_file.flush();
}

bool FileAppender::openFile()
{
    if (m_file.isOpen()) {
        return true;
    }
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        if (!m_failureTold) {
            writeToErrorStream(QStringLiteral("<FileAppender::append> Cannot open the log file ") +
                               m_file.fileName() + QLatin1Char('\n'));
        }
        m_failureTold = true;
        return false;
    }
    m_failureTold = false;
    m_stream.setDevice(&m_file);
    m_stream.setCodec("UTF-8");
    return true;
}

void FileAppender::closeFile()
{
    m_stream.setDevice(nullptr);
    m_file.close();
}
