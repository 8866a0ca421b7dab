#include "logging/abstractappender.h"

#include "logging/errorstream.h"

#include <shared_mutex>

namespace
{
thread_local bool t_writing = false;

// Marks the thread as writing while it lives.
class Writing
{
public:
    Writing() { t_writing = true; }
    ~Writing() { t_writing = false; }

private:
    Q_DISABLE_COPY(Writing)
};
} // namespace

AbstractAppender::~AbstractAppender() = default;

LogLevel AbstractAppender::detailsLevel() const
{
    const std::shared_lock lock(m_levelLock);
    return m_detailsLevel;
}

void AbstractAppender::setDetailsLevel(LogLevel p_level)
{
    const std::unique_lock lock(m_levelLock);
    m_detailsLevel = p_level;
}

void AbstractAppender::setDetailsLevel(const QString& p_level)
{
    setDetailsLevel(levelFromText(p_level));
}

bool AbstractAppender::isWriting() { return t_writing; }

void AbstractAppender::write(const LogMessage& p_message)
{
    if (p_message.level < detailsLevel()) {
        return;
    }
    if (isWriting()) {
        writeToErrorStream(p_message.text + QLatin1Char('\n'));
        return;
    }
    const Writing writing;
    const std::scoped_lock lock(m_writeMutex);
    append(p_message);
}
