#pragma once
// The standing tax items of an employee for a New Zealand pay: the ESCT rate (or the employer's
// estimate it comes from), child support, payroll giving, the student loan special deduction rate and
// the borrower's extra deductions, and the rate of a tailored tax code. One row per employee in
// EmployeeTaxItems; an employee without a row has none of them.
#include "TaxYear.h"
#include "runtime/Currency.h"
#include <QString>

namespace ql {

class Database;

struct EmployeeTaxItems {
    qint32 employeeID = 0;
    // ESCT rate in thousandths of a per cent (17.5% is 17500) and the tax year it was set or worked out
    // for; 0: none yet. In a year other than esctRateYear the rate is worked out again (see EsctRateFor).
    qint32 esctRate = 0;
    QString esctRateYear;
    // The employer's estimate of this year's salary and wages plus employer contributions, for an
    // employee without a whole previous year in the payroll; 0: none (the pay times the pays in a year).
    Currency esctEstimate;
    Currency childSupport;     // asked of each pay
    Currency payrollGiving;    // donation of each pay
    qint32 slSpecialRate = 0;  // student loan special deduction rate; 0: the year's rate
    Currency slExtra;          // borrower's extra deductions of each pay (SLBOR)
    qint32 slCommissionerRate = 0; // Inland Revenue's compulsory extra deductions (SLCIR); 0: none
    qint32 tailoredRate = 0;   // the rate of a tailored tax code (STC) as on its certificate, levy included
};

void EnsureEmployeeTaxItemsTable(Database& wage);

// The items of an employee; an employee without a row gets an empty set with its id.
EmployeeTaxItems LoadEmployeeTaxItems(Database& wage, qint32 employeeID);

// The text of the first problem of a set of items, empty when it can be saved: a rate outside 0 to
// 100 per cent or with more than three decimals, a negative or too large amount.
QString EmployeeTaxItemsProblem(const EmployeeTaxItems& items);

// Validates (VbError 5 with the problem's text, nothing written) and stores the items. Child support,
// payroll giving, the commissioner's and the borrower's extra student loan deductions above 0 each put
// their deduction among the employee's standing lines (so each new pay has it); at 0 such a line that
// has no fixed amount or rate of its own is taken away again.
void SaveEmployeeTaxItems(Database& wage, const EmployeeTaxItems& items);
// Puts the standing deduction lines of the items above 0 back among the employee's, for a change of the
// standing deductions that left them out. Takes nothing away.
void SyncStandingTaxItemLines(Database& wage, const EmployeeTaxItems& items);

// A per cent as typed ("17.5") to thousandths; false when it is not a number from 0 to 100 with at most
// three decimals.
bool ParseRatePercent(const QString& text, qint32& thousandths);

// Sets an ESCT rate chosen by the employer for the tax year in force on a date (today, when it is
// entered): rate in thousandths of a per cent, 0 to go back to the rule. No tax year in force on the
// date leaves the rate without a year, and the rule works it out again at the next pay.
void SetEsctRate(Database& wage, EmployeeTaxItems& items, qint32 rate, const QDate& on);

// The ESCT rate of an employee's pay dated in the period f: the rate stored for f's tax year; else, when
// the payroll holds the employee's whole previous tax year, by its salary and wages plus employer
// contributions; else by the estimate; else by this pay's taxable amount times the pays in a year. A
// rate from the previous year or the estimate is stored with the year, so the employee details show it
// and it changes only when the next tax year starts.
qint32 EsctRateForPay(Database& wage, qint32 employeeID, const TaxYearFigures& f, Currency taxable,
                      float paysPerYear);

} // namespace ql
