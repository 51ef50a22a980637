#pragma once
// The holiday part of a final pay (Holidays Act ss 23 to 27, 40, 60): the entitled annual holidays
// not taken at the greater of ordinary weekly pay and average weekly earnings; 8% of gross earnings
// since the last anniversary (or since the start when no entitlement has arisen), less holiday pay
// already paid as you go; the alternative holidays not taken; and the public holidays that would have
// fallen on otherwise working days had the untaken holidays been taken after the last day.
#include "HolidayRates.h"
#include "LeavePay.h"
#include <QList>
#include <QString>
#include <QStringList>

namespace ql::holidays {

struct FinalPayLine {
    QString component; // "annual-holidays", "eight-percent", "alternative-holidays", "public-holidays"
    QString caption;   // the payment line's text
    EarningKind kind = EarningKind::AnnualLeavePay;
    double units = 0;  // weeks, days or one
    Currency rate;
    Currency amount;   // to the cent
    QString working;   // how the figure was found
};

struct FinalPayResult {
    qint32 employeeID = 0;
    QDate lastDay;
    double entitledWeeksUntaken = 0;
    QDate lastAnniversary; // or the start of employment
    Currency grossSinceAnniversary;
    Currency paidAsYouGo;
    WeeklyRate owp, awe;
    Currency dailyRate;
    QString dailyRateUsed;
    int alternativeHolidays = 0;
    QList<QDate> publicHolidays;
    QList<FinalPayLine> lines;
    Currency total;
    QStringList notes;
};

// finalWageID: the pay that will carry the lines. Its own earnings count in the 8% whatever its date
// (it may end after the last day), and lines already put on it by an earlier run never do.
FinalPayResult ComputeFinalPay(Database& wage, qint32 employeeID, const QDate& lastDay, qint32 finalWageID = 0);

// The captions of the final pay's lines, one per component.
const QStringList& FinalPayCaptions();

// Puts each line on an uncommitted pay of the employee (replacing lines of the same payment names).
// Refuses (VbError) a committed pay or a pay of another employee.
void AddFinalPayLines(Database& wage, qint32 wageID, const FinalPayResult& result);

} // namespace ql::holidays
