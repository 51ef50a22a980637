#pragma once
// Cashing up annual holidays at the employee's request (ss 28A to 28F): at most one week in each
// entitlement year, paid at the greater of ordinary weekly pay and average weekly earnings at the
// request, and taken off the balance as annual holidays paid out.
#include "HolidayRates.h"
#include <QString>

namespace ql::holidays {

struct CashUpResult {
    qint32 employeeID = 0;
    QDate requested;
    double weeks = 0;
    double balanceWeeks = 0;     // entitled and not taken before the cash-up
    double cashedUpThisYear = 0; // weeks already cashed up since the last anniversary
    WeeklyRate owp, awe;
    QString rateUsed;
    Currency rate;
    Currency amount; // to the cent
    QString refusal; // why it may not be paid; empty when it may
};

CashUpResult ComputeCashUp(Database& wage, qint32 employeeID, const QDate& requested, double weeks);
// Puts the cash-up on an uncommitted pay of the employee as a "Holiday Cash-up" line and records it in
// the leave ledger as annual leave paid out. Refuses (VbError) a refused cash-up or pay.
void ApplyCashUp(Database& wage, qint32 wageID, const CashUpResult& r);

} // namespace ql::holidays
