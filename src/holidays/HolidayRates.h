#pragma once
// The four rates of the Holidays Act, each with the inputs it came from: ordinary weekly pay (s 8),
// average weekly earnings (s 5, s 21), relevant daily pay (s 9) and average daily pay (s 9A).
#include "PayHistory.h"
#include "WorkPattern.h"
#include <QDate>
#include <QString>

namespace ql::holidays {

struct WeeklyRate {
    Currency amount;
    QDate from; // the earnings window, first day (inclusive)
    QDate to;   // last day: the end of the last pay period before the holiday
    Currency grossEarnings;
    Currency leftOut; // gross earnings of the window that are not ordinary weekly pay
    double divisor = 0;
    QList<qint32> wageIDs;
    QString source; // how the figure was found
};

struct DailyRate {
    Currency amount;
    bool available = false;
    QDate from, to;
    Currency grossEarnings;
    float days = 0;
    int daysEstimated = 0; // pays whose days came from the work pattern, not from an entry
    float hours = 0;       // relevant daily pay: hours of that day
    Currency hourlyRate;
    QString source;
};

// Ordinary weekly pay at the start of a holiday.
WeeklyRate OrdinaryWeeklyPay(const Employee& e, const QList<PayRecord>& pays,
                             const std::optional<WorkPattern>& pattern, const QDate& day);
// Average weekly earnings for the 12 months before the end of the last pay period before the day.
WeeklyRate AverageWeeklyEarnings(const Employee& e, const QList<PayRecord>& pays, const QDate& day);
// What the employee would have been paid on the day, from the work pattern.
DailyRate RelevantDailyPay(const Employee& e, const std::optional<WorkPattern>& pattern, const QDate& day);
// Gross earnings of the 52 weeks before the end of the last pay period before the day, per day
// worked or on paid leave; a pay without entered days counts the pattern's working days of its period.
DailyRate AverageDailyPay(Database& wage, const Employee& e, const QList<PayRecord>& pays, const QDate& day);

} // namespace ql::holidays
