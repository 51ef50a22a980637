#pragma once
// An employee's usual week, kept with the date from which it holds: the hours of each weekday, where
// a weekday with hours is an otherwise working day. And the employee's holiday terms.
#include "data/Database.h"
#include <QDate>
#include <QList>
#include <QMap>
#include <QString>
#include <array>
#include <optional>

namespace ql::holidays {

struct WorkPattern {
    QDate from;
    std::array<float, 7> hours{}; // Monday .. Sunday
    float hoursOn(const QDate& day) const { return hours.at(std::size_t(day.dayOfWeek() - 1)); }
    bool works(const QDate& day) const { return hoursOn(day) > 0; }
    int daysPerWeek() const;
    float hoursPerWeek() const;
};

// The pattern that holds on a day: the latest one from on or before it; none when none is kept.
std::optional<WorkPattern> PatternOn(Database& wage, qint32 employeeID, const QDate& day);
// The pattern kept for the day, or else Monday to Friday with the weekly hours of the employee's
// occupation (its standard hours) spread evenly; none when the occupation has no standard hours.
// assumed is set true for the second.
std::optional<WorkPattern> EffectivePattern(Database& wage, qint32 employeeID, const QDate& day, bool* assumed = nullptr);
// Keeps a pattern from its date (replacing one of the same date).
void SetWorkPattern(Database& wage, qint32 employeeID, const WorkPattern& pattern);

enum class MinimumWageRate { Adult, StartingOut, Training };
enum class DailyPayChoice { Automatic, Relevant, Average };

struct HolidayTerms {
    bool payAsYouGo = false; // 8% with each pay instead of annual holidays (fixed term or irregular work)
    MinimumWageRate minimumWage = MinimumWageRate::Adult;
    DailyPayChoice dailyPay = DailyPayChoice::Automatic;
    QString region; // anniversary day's region; empty: national holidays only
    // False for casual or intermittent work, where each engagement stands alone: sick, bereavement and
    // family violence leave then come only from the hours test.
    bool continuous = true;
    // A multiple of the hourly rate that the employment agreement pays for work on a public holiday
    // (for example 2 for double time); 0 when it gives none.
    float penalRate = 0;
};

HolidayTerms TermsOf(Database& wage, qint32 employeeID);
void SetTerms(Database& wage, qint32 employeeID, const HolidayTerms& terms);

QString MinimumWageRateCode(MinimumWageRate r);
QString DailyPayCode(DailyPayChoice c);

// The days and hours a pay says were worked, when the user entered them. Hours entered for single days
// of the pay's period give the pay's days (those with hours) and hours.
struct PayDays {
    std::optional<float> days;
    std::optional<float> hours;
    QMap<QDate, float> perDay;
};
PayDays PayDaysOf(Database& wage, qint32 wageID);
void SetPayDays(Database& wage, qint32 wageID, const PayDays& d);

} // namespace ql::holidays
