#pragma once
// Reading and writing date texts in a locale; the text form of DateFns.
#include <QDateTime>
#include <QLocale>
#include <QString>
#include <optional>

namespace ql {

// A date (and time) from text: the locale's order of day, month and year first, then month/day/year,
// then year/month/day; ISO "yyyy-MM-dd"; month names ("5 Mar 2024", "March 2024"); a time alone is
// on the zero date. Two-digit years 00-29 are 2000-2029, 30-99 are 1930-1999.
std::optional<QDateTime> parseDateText(const QString& text, const QLocale& locale);

// A date format with every year field widened to four digits ("d/MM/yy" -> "d/MM/yyyy").
QString fourDigitYear(const QString& format);

// The locale's long time format without a time zone ("h:mm:ss ap").
QString longTimeFormat(const QLocale& locale);

} // namespace ql
