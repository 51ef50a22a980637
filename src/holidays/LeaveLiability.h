#pragma once
// What the employer owes in leave on a day: for every employee employed on it, the annual holidays
// entitled and not taken (in weeks) at the greater of ordinary weekly pay and average weekly
// earnings, the holiday pay accrued since the last anniversary (8% of gross earnings), sick leave in
// days, and alternative holidays at the daily rate, valued at the rates of that day.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QList>
#include <QString>

namespace ql::holidays {

struct LiabilityRow {
    qint32 employeeID = 0;
    QString name;
    double annualWeeks = 0;
    Currency weeklyRate;
    QString weeklyRateUsed;
    Currency annualValue;
    Currency accrued; // 8% of gross earnings since the last anniversary
    double sickDays = 0;
    int alternativeHolidays = 0;
    Currency dailyRate;
    Currency alternativeValue;
    Currency total;
};

struct Liability {
    QDate day;
    QList<LiabilityRow> rows;
    Currency total;
};

Liability LeaveLiabilityOn(Database& wage, const QDate& day);
// The rows as comma-separated text with a header line, lines ending in CR LF.
QString LiabilityCsv(const Liability& l);

} // namespace ql::holidays
