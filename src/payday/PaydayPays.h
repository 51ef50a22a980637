#pragma once
// The committed pays of a payment date, with what the payday filing and the bank file report of each:
// the employee's tax details from the payroll database, the name from the farm's address book, and
// the amounts of the pay's own lines.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QList>
#include <QString>

namespace ql {

struct PaydayPay {
    qint32 wageID = 0;
    qint32 employeeID = 0;
    QString irdNumber; // as stored on the employee
    QString firstName;
    QString lastName;
    QString taxCode; // the pay's own, kept when it was added
    QString reference;
    QDate payDate;     // Wages.Date: the end of the pay period
    QDate paymentDate; // Wages.PaymentDate
    QDate periodStart;
    QDate dateHired;
    QDate dateFinished; // invalid while employed
    QString intervalName;
    float paysPerYear = 0;
    float numberOfDays = 0;
    bool oneOff = false;        // Wages.OneOff
    bool paidByTheHour = false; // the employee's unit of pay is the hour
    double hours = 0;           // hours of the pay's lines paid by the hour, 0 when none are
    Currency gross; // total taxable: payments and taxable allowances
    Currency paye;              // the PAYE the pay took: less the payroll giving credit
    Currency childSupport;      // deduction lines named "Child Support"
    QString childSupportCode;   // "P" when the protected net earnings held the deduction below the amount asked
    Currency studentLoan;       // deduction lines marked "studentloan"
    Currency slcir;             // the commissioner's extra student loan deductions
    Currency slbor;             // the borrower's own extra student loan deductions
    Currency givingCredit;      // the payroll giving credit, already taken off paye
    Currency notLiable;         // earnings not liable for the ACC earners' levy
    bool lumpSumIndicator = false; // an extra pay taxed at the lowest rate
    Currency kiwiSaver;         // deduction lines marked "kiwisaver"
    Currency employerKiwiSaver; // contribution lines marked "kiwisaver", before ESCT
    Currency esct;
    Currency takeHome;

    QString name() const { return (firstName + u' ' + lastName).trimmed(); }
    Currency employerKiwiSaverNet() const { return employerKiwiSaver - esct; }
    // PAYE as the payday filing reports it: before the payroll giving credit.
    Currency payeBeforeCredit() const { return paye + givingCredit; }
};

// Every pay whose Reference holds text and whose PaymentDate falls on the day, by employee name.
QList<PaydayPay> LoadCommittedPays(Database& wage, const QDate& paymentDate);

// The start of a pay period ending on end: the interval's days back, a month back for a monthly
// interval of no days, the day itself for a one-off.
QDate PayPeriodStart(const QDate& end, float paysPerYear, float numberOfDays);

// Whole cents as text, half to even ("123456" for 1234.56, "-5" for -0.05).
QString Cents(Currency amount);

} // namespace ql
