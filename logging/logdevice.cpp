#include "logging/logdevice.h"

#include "logging/logger.h"

LogDevice::LogDevice(Logger& p_logger, LogLevel p_level, const LogPlace& p_place)
    : m_logger(p_logger), m_level(p_level), m_place(p_place)
{
    setOpenMode(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

LogDevice::~LogDevice() { writeRest(); }

void LogDevice::setLevel(LogLevel p_level) { m_level = p_level; }

void LogDevice::setPlace(const LogPlace& p_place) { m_place = p_place; }

bool LogDevice::isSequential() const { return true; }

void LogDevice::close()
{
    // Closing makes a text stream give what it still has.
    QIODevice::close();
    writeRest();
}

qint64 LogDevice::readData(char* /*p_data*/, qint64 /*p_size*/) { return -1; }

qint64 LogDevice::writeData(const char* p_data, qint64 p_size)
{
    m_pending.append(p_data, static_cast<int>(p_size));
    int start = 0;
    for (int end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n', start)) {
        writeLine(m_pending.mid(start, end - start));
        start = end + 1;
    }
    m_pending.remove(0, start);
    return p_size;
}

void LogDevice::writeLine(const QByteArray& p_line)
{
    m_logger.write(m_level, m_place, QString::fromLocal8Bit(p_line));
}

void LogDevice::writeRest()
{
    if (!m_pending.isEmpty()) {
        writeLine(m_pending);
        m_pending.clear();
    }
}
