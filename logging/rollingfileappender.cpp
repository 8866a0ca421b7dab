#include "logging/rollingfileappender.h"

#include <QFileInfo>

RollingFileAppender::RollingFileAppender(const QString& p_fileName) : FileAppender(p_fileName) {}

bool RollingFileAppender::setDatePattern(const QString& p_pattern)
{
    const auto period = periodOfPattern(p_pattern);
    if (period) {
        setDatePattern(*period);
    }
    return period.has_value();
}

void RollingFileAppender::setDatePattern(RollingPeriod p_period)
{
    const std::scoped_lock lock(m_fileMutex);
    m_period = p_period;
    m_startOf.clear();
}

void RollingFileAppender::prepareFile(const QDateTime& p_now)
{
    const QDateTime start = periodStart(m_period, p_now.toLocalTime());
    if (m_startOf != lockedFileName()) {
        const QFileInfo file(lockedFileName());
        m_start = file.size() > 0 ? periodStart(m_period, file.lastModified()) : start;
        m_startOf = lockedFileName();
    }
    // A clock that is put back doesn't begin a new file.
    if (start > m_start) {
        rollOver();
        m_start = start;
    }
}

void RollingFileAppender::rollOver()
{
    closeFile();
    const QString old = lockedFileName() + periodSuffix(m_period, m_start);
    QString free = old;
    for (int number = 1; QFileInfo::exists(free); ++number) {
        free = old + QLatin1Char('.') + QString::number(number);
    }
    QFile::rename(lockedFileName(), free);
}
