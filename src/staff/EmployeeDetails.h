#pragma once
// One employee as the employee editor, the command line and the CSV files see it: the name and
// address of the farm database's Addresses row, the pay facts of Employees, the standing lines of
// EmployeeDeductions and EmployerContributions, the bank account and the leave brought forward.
#include "runtime/Currency.h"
#include <QDate>
#include <QList>
#include <QString>

namespace ql {

// A standing deduction: a fixed amount a pay, or a percentage of the taxable pay. The employer's
// standing contributions other than KiwiSaver take the same form.
struct StandingDeduction {
    QString name;
    Currency amount;
    float rate = 0;
    bool percent = false;
    // "Board=120" or "Union Fees=1.5%"
    QString text() const;
};

enum class KiwiSaverStatus { NotEnrolled, Enrolled, OptedOut };

struct EmployeeDetails {
    qint32 EmployeeID = 0; // 0 for an employee not yet saved
    qint32 AddressID = 0;
    QString FirstName, LastName, Address, City, Email;
    QString Occupation; // empty: the first occupation that fits the way of pay
    QDate Birthdate, DateHired, DateFinished;
    QString IRDNumber; // empty only with ND
    QString TaxCode;
    // The rate of a special tax code (STC) as its certificate gives it, in thousandths of a per cent
    // (24.5% is 24500); 0 with any other code.
    qint32 STCRate = 0;
    QString Interval; // "weekly", "fortnightly", "four-weekly", "monthly"
    Currency PayRate;     // an hourly rate, or
    Currency YearlyTotal; // a yearly salary
    float UsualHours = 0; // hours a pay; 0 for the occupation's standard hours
    KiwiSaverStatus KiwiSaver = KiwiSaverStatus::NotEnrolled;
    float KiwiSaverRate = 0;         // the employee's rate when enrolled
    QDate KiwiSaverStartDate;        // the start date when empty
    float EmployerKiwiSaverRate = 0; // 0: the default employer rate of the tax data
    // What the employee gave when hired, for the Employee Details file: AE, AK, OK, NK or CT. Empty
    // when saved: AE for a member or one who opted out, NK for one not enrolled.
    QString KiwiSaverStatusCode;
    QString Account;
    float AnnualLeaveDays = 20;
    float LeaveBroughtForward = 0;
    QList<StandingDeduction> Deductions;
    // The employer's contributions other than KiwiSaver: a superannuation scheme, medical cover ...
    QList<StandingDeduction> Contributions;

    bool kiwiSaverEnrolled() const { return KiwiSaver == KiwiSaverStatus::Enrolled; }
};

// The employee rates a member may choose.
const QList<float>& KiwiSaverEmployeeRates();

} // namespace ql
