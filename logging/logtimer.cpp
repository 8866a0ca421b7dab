#include "logging/logtimer.h"

#include "logging/functionname.h"
#include "logging/logger.h"

LogTimer::LogTimer(const LogPlace& p_place, const QString& p_title)
    : m_place(p_place), m_title(p_title)
{
    m_clock.start();
}

LogTimer::~LogTimer()
{
    const QString elapsed = elapsedText(m_clock.elapsed());
    const QString begin =
        m_title.isEmpty()
            ? QStringLiteral("Function %1 finished in ").arg(shortFunctionName(m_place.function))
            : QStringLiteral("\"%1\" finished in ").arg(m_title);
    Logger::globalInstance().write(LogLevel::Debug, m_place, begin + elapsed);
}

QString elapsedText(qint64 p_milliseconds)
{
    constexpr qint64 second = 1000;
    return p_milliseconds < second
               ? QStringLiteral("%1 ms.").arg(p_milliseconds)
               : QStringLiteral("%1 s.").arg(static_cast<double>(p_milliseconds) / second);
}
