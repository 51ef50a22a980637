#pragma once
// Dates: serial 0 is 30 December 1899. Text to date tries the locale's order first.
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QVariant>
#include <functional>

namespace ql {

inline const QDate ZeroDate{1899, 12, 30};

bool IsDate(const QVariant& v);
// Raises Type mismatch (13) when the value is no date.
QDate CDate(const QVariant& v);
QDateTime CDateTime(const QVariant& v);
double DateToSerial(const QDate& d);
QDate SerialToDate(double serial);

// DateAdd with the intervals "d", "ww", "m", "q", "yyyy"; a fractional count is rounded to a whole
// number first; a month or year step clamps the day to the month's last day.
QDate DateAdd(const QString& interval, double number, const QDate& date);

// The clock; tests may pin it.
QDate Today();
QDateTime Now();
void setClockForTesting(std::function<QDateTime()> clock); // empty function restores the real clock

// A date as CStr shows it: the short date, with the long time when it carries a time of day.
QString dateText(const QVariant& v);

// The locale's short date with a four-digit year ("5/03/2024" in New Zealand).
QString shortDateFormat();

} // namespace ql
