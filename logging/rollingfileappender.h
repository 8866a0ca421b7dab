#pragma once

#include "logging/fileappender.h"
#include "logging/rollingperiod.h"

/**
 * A file for each period. The first message of a new period, by the message's own time, moves the
 * file away to its name with the old period behind it, such as "app-log.txt.2026-11-21", and begins
 * a new one. All are kept: where the name is taken, a number comes behind it. A file that an
 * earlier run left is of the period in which it was last written. Where the old file can't be
 * moved, messages go on into it.
 */
class RollingFileAppender : public FileAppender
{
public:
    /** Begins a new file each day. */
    explicit RollingFileAppender(const QString& p_fileName = QString());

    /** One of the six patterns of RollingPeriod; false, and no change, for any other. */
    bool setDatePattern(const QString& p_pattern);
    void setDatePattern(RollingPeriod p_period);

protected:
    void prepareFile(const QDateTime& p_now) override;

private:
    void rollOver();

    RollingPeriod m_period = RollingPeriod::Day;
    // The period of the file, once that is known.
    QDateTime m_start;
    QString m_startOf;
};
