#pragma once
// An employee's pays as the holiday rules read them: each pay's period, its gross earnings, the part
// that is ordinary weekly pay, the pay for time worked, and its days and hours worked.
#include "EarningKinds.h"
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QList>
#include <QMap>
#include <optional>

namespace ql::holidays {

struct PayRecord {
    qint32 wageID = 0;
    QDate end;   // the pay date, taken as the last day of the pay's period
    QDate start; // first day of the period (end for a one-off pay)
    bool oneOff = false;
    Currency gross;        // counts in gross earnings
    Currency ordinary;     // counts in ordinary weekly pay
    Currency workPay;      // pay for time worked (the minimum wage check)
    Currency lodging;      // board or lodging provided, at its cash value
    float lineHours = 0;   // units of the payment lines for time worked
    std::optional<float> daysEntered;
    std::optional<float> hoursEntered;
    QMap<QDate, float> dayHours; // hours entered for single days of the period
};

struct Employee {
    qint32 employeeID = 0;
    QDate hired;
    QDate finished; // invalid while employed
    Currency payRate;
    Currency yearlySalary;
    int paysPerYear = 0;
};

// Raises a VbError with the system's message when the employee is not on the payroll.
Employee LoadEmployee(Database& wage, qint32 employeeID);
// Every pay of the employee by date.
QList<PayRecord> LoadPays(Database& wage, qint32 employeeID);

// The last pay whose period ends before the day; nullptr when none.
const PayRecord* LastPayBefore(const QList<PayRecord>& pays, const QDate& day);
// The pays whose period ends in (from, to].
QList<const PayRecord*> PaysEndingIn(const QList<PayRecord>& pays, const QDate& fromExclusive, const QDate& to);

} // namespace ql::holidays
