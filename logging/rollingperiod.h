#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/** How long messages go into one file before the next one begins, by local time. */
enum class RollingPeriod : int { Minute, Hour, HalfDay, Day, Week, Month };

/**
 * The pattern of the text that the file of a period gets behind its name, such as
 * "'.'yyyy-MM-dd"; "ww" is the week of the year, and "yyyy" beside it the year of that week.
 */
QString datePattern(RollingPeriod p_period);
/** The period of a pattern, or nothing where it isn't one of the six. */
std::optional<RollingPeriod> periodOfPattern(const QString& p_pattern);

/** When the period that holds a time began. Weeks begin on Monday. */
QDateTime periodStart(RollingPeriod p_period, const QDateTime& p_time);
/** The text of the period that began at a time, such as ".2026-11-21". */
QString periodSuffix(RollingPeriod p_period, const QDateTime& p_start);
