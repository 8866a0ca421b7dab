#pragma once

#include "logging/abstractstringappender.h"
#include "logging/logger.h"
#include "support/system/files.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

#include <memory>

/** Keeps what is written to it. The lines may be read when no other thread writes any more. */
class ListAppender : public AbstractStringAppender
{
public:
    explicit ListAppender(LogLevel p_level = LogLevel::Trace,
                          const QString& p_format = QStringLiteral("%{message}"))
    {
        setDetailsLevel(p_level);
        setFormat(p_format);
    }

    QStringList lines;

protected:
    void append(const LogMessage& p_message) override { lines += formattedString(p_message); }
};

/** Registers an appender, and leaves the logger without any when it goes. */
template <class Appender> class Registered
{
public:
    template <class... Arguments>
    explicit Registered(Arguments&&... p_arguments)
        : m_appender(std::make_shared<Appender>(std::forward<Arguments>(p_arguments)...))
    {
        Logger::globalInstance().registerAppender(m_appender);
    }
    ~Registered() { Logger::globalInstance().removeAppenders(); }
    Q_DISABLE_COPY(Registered)

    Appender* operator->() const { return m_appender.get(); }
    Appender& operator*() const { return *m_appender; }

private:
    std::shared_ptr<Appender> m_appender;
};

/** A message with a text, as of noon on a Saturday. */
inline LogMessage messageOf(const QString& p_text, LogLevel p_level = LogLevel::Info)
{
    LogMessage message;
    message.time = QDateTime(QDate(2026, 11, 21), QTime(12, 0));
    message.level = p_level;
    message.text = p_text;
    return message;
}

/** Runs this test program again with one argument, for what happens to a whole process. */
inline void runAgain(QProcess& p_process, const char* p_argument)
{
    p_process.start(QCoreApplication::applicationFilePath(), {QLatin1String(p_argument)});
    p_process.waitForFinished(30000);
}
