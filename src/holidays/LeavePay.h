#pragma once
// What a leave is worth: annual holidays at the greater of ordinary weekly pay and average weekly
// earnings, worked out at the start of the holiday; public holidays, alternative holidays, sick,
// bereavement and family violence leave at relevant daily pay, or average daily pay where relevant
// daily pay cannot be found or the employer's choice says so, for each otherwise working day.
#include "HolidayRates.h"
#include "PublicHolidays.h"
#include <QStringList>

namespace ql::holidays {

enum class LeaveKind { Annual, Public, Sick, Bereavement, FamilyViolence, Alternative };

// "annual", "public", "sick", "bereavement", "family-violence", "alternative"; ok false otherwise.
LeaveKind LeaveKindFromCode(const QString& code, bool* ok);
QString LeaveKindCode(LeaveKind kind);
EarningKind EarningKindOf(LeaveKind kind);
QString LeaveLineCaption(LeaveKind kind);

struct LeaveDay {
    QDate date;
    Currency amount;
    QString note; // why the day is paid or not
};

struct LeavePayResult {
    LeaveKind kind = LeaveKind::Annual;
    QDate from;
    double days = 0;
    WeeklyRate owp;
    WeeklyRate awe;
    DailyRate rdp; // for the first day
    DailyRate adp;
    QString rateUsed;   // "OWP", "AWE", "RDP" or "ADP"
    Currency rate;      // the weekly rate (annual) or the daily rate of the first day
    int daysPerWeek = 0; // annual: the days of the employee's working week
    Currency amount;     // to the cent
    QList<LeaveDay> dayList;
    // Worked on a public holiday: the hours at time and a half and whether an alternative holiday is earned.
    float workedHours = 0;
    Currency workedPay;     // the greater of the two below
    Currency timeAndAHalf;  // the hours' part of relevant daily pay, plus half again
    Currency penalPay;      // the hours at the agreement's penal rate; 0 when it gives none
    float penalRate = 0;
    bool alternativeEarned = false;
    // Sick, bereavement and family violence leave: what the Act gives on the first day.
    bool checked = false;      // false for the other kinds
    bool entitled = false;
    QString entitlementBasis;  // six months' continuous employment, or the hours test
    QString hoursTest;         // the hours test's working
    double availableDays = 0;  // the balance (sick, family violence) or the days for this death (bereavement)
    bool beyondEntitlement = false;
    QStringList notes;
};

// days: the leave's days (annual: working days of leave; the others: otherwise working days to pay,
// or calendar days to look through for public holidays). workedHours above 0 for public: hours worked
// on the holiday.
// closeRelative for bereavement: the death of a close relative (3 days) rather than of another (1 day).
LeavePayResult ComputeLeavePay(Database& wage, qint32 employeeID, LeaveKind kind, const QDate& from, double days,
                               float workedHours = 0, bool closeRelative = true);

// Puts the leave on an uncommitted pay of the employee as a payment line of the leave's kind (the
// hours worked on a public holiday as a line of their own), records an alternative holiday earned by
// working a public holiday, and marks alternative holidays taken. Refuses (VbError) a committed pay,
// a pay of another employee, or a leave worth nothing.
void AddLeaveToPay(Database& wage, qint32 wageID, qint32 employeeID, const LeavePayResult& result);

// Money to the cent, exact halves to the even cent.
Currency ToCents(Currency c);

} // namespace ql::holidays
