#include "logging/rollingperiod.h"

#include <QLocale>

#include <array>

namespace
{
QDateTime hoursDown(const QDateTime& p_time, int p_hours)
{
    const int hour = p_time.time().hour();
    return QDateTime(p_time.date(), QTime(hour - hour % p_hours, 0));
}

struct Row {
    const char* pattern;
    QDateTime (*start)(const QDateTime& p_time);
};
const std::array<Row, 6> s_rows{{
    {"'.'yyyy-MM-dd-hh-mm",
     [](const QDateTime& t) {
         return QDateTime(t.date(), QTime(t.time().hour(), t.time().minute()));
     }},
    {"'.'yyyy-MM-dd-hh", [](const QDateTime& t) { return hoursDown(t, 1); }},
    {"'.'yyyy-MM-dd-a", [](const QDateTime& t) { return hoursDown(t, 12); }},
    {"'.'yyyy-MM-dd", [](const QDateTime& t) { return hoursDown(t, 24); }},
    {"'.'yyyy-ww",
     [](const QDateTime& t) {
         return QDateTime(t.date().addDays(1 - t.date().dayOfWeek()), QTime(0, 0));
     }},
    {"'.'yyyy-MM",
     [](const QDateTime& t) {
         return QDateTime(QDate(t.date().year(), t.date().month(), 1), QTime(0, 0));
     }},
}};

const Row& rowOf(RollingPeriod p_period) { return s_rows.at(static_cast<std::size_t>(p_period)); }
} // namespace

QString datePattern(RollingPeriod p_period) { return QString::fromLatin1(rowOf(p_period).pattern); }

std::optional<RollingPeriod> periodOfPattern(const QString& p_pattern)
{
    for (std::size_t row = 0; row < s_rows.size(); ++row) {
        if (p_pattern == QLatin1String(s_rows.at(row).pattern)) {
            return static_cast<RollingPeriod>(row);
        }
    }
    return std::nullopt;
}

QDateTime periodStart(RollingPeriod p_period, const QDateTime& p_time)
{
    return rowOf(p_period).start(p_time);
}

QString periodSuffix(RollingPeriod p_period, const QDateTime& p_start)
{
    if (p_period == RollingPeriod::Week) {
        // No date pattern of Qt's knows weeks.
        int year = 0;
        const int week = p_start.date().weekNumber(&year);
        return QStringLiteral(".%1-%2").arg(year).arg(week, 2, 10, QLatin1Char('0'));
    }
    // "am" and "pm" in every language, so that the names are in order.
    return QLocale::c().toString(p_start, datePattern(p_period)).toLower();
}
