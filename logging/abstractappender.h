#pragma once

#include "logging/logmessage.h"
#include "logging/readwritelock.h"

#include <mutex>

/**
 * A place that messages go to. Every function may be called from any thread.
 *
 * A message that is raised while an appender writes, by the same thread, goes straight to the error
 * stream: a file's own trouble must not wait for the lock that its writer holds.
 */
class AbstractAppender
{
public:
    AbstractAppender() = default;
    virtual ~AbstractAppender();

    /** The least level that is written; Debug at first. */
    LogLevel detailsLevel() const;
    void setDetailsLevel(LogLevel p_level);
    /** By its text, as levelFromText() reads it. */
    void setDetailsLevel(const QString& p_level);

    /** Appends a message, unless its level is under the details level. */
    void write(const LogMessage& p_message);

    /** Whether the calling thread is within write() of any appender. */
    static bool isWriting();

protected:
    /** Puts a message where it belongs. Called by one thread at a time. */
    virtual void append(const LogMessage& p_message) = 0;

private:
    Q_DISABLE_COPY(AbstractAppender)

    mutable ReadWriteLock m_levelLock;
    LogLevel m_detailsLevel = LogLevel::Debug;
    std::mutex m_writeMutex;
};
