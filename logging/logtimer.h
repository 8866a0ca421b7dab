#pragma once

#include "logging/logmessage.h"

#include <QElapsedTimer>
#include <QString>

/**
 * Logs at level Debug, when it goes, how long it lived: "Function Tree::insert finished in 12 ms."
 * or, with a title, "\"reading\" finished in 1.5 s.".
 */
class LogTimer
{
public:
    /** p_place is LOG_HERE. */
    explicit LogTimer(const LogPlace& p_place, const QString& p_title = QString());
    ~LogTimer();

private:
    Q_DISABLE_COPY(LogTimer)

    LogPlace m_place;
    QString m_title;
    QElapsedTimer m_clock;
};

/** A time for people: "999 ms." below a second, from there "1.5 s.". */
QString elapsedText(qint64 p_milliseconds);
