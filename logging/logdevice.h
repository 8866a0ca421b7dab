#pragma once

#include "logging/logmessage.h"

#include <QByteArray>
#include <QIODevice>

class Logger;

/**
 * Writes into the log what a text stream, in its default code page, writes to it: a message for
 * each line. A line that hasn't ended waits for its end or for close(). For one thread at a time;
 * others make devices of their own.
 */
class LogDevice : public QIODevice
{
public:
    explicit LogDevice(Logger& p_logger, LogLevel p_level = LogLevel::Debug,
                       const LogPlace& p_place = LogPlace());
    ~LogDevice() override;

    /** For the lines that end from now on. */
    void setLevel(LogLevel p_level);
    /** What it points to must live as long as the device, or until the next call. */
    void setPlace(const LogPlace& p_place);

    bool isSequential() const override;
    void close() override;

protected:
    qint64 readData(char* p_data, qint64 p_size) override;
    qint64 writeData(const char* p_data, qint64 p_size) override;

private:
    Q_DISABLE_COPY(LogDevice)

    void writeLine(const QByteArray& p_line);
    void writeRest();

    Logger& m_logger;
    LogLevel m_level;
    LogPlace m_place;
    QByteArray m_pending;
};
