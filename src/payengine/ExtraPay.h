#pragma once
// An extra pay (a bonus, a lump sum) of a New Zealand employee, made as a one-off pay of the tax type
// "Extra pay" and taxed by Inland Revenue's extra-pay method from the earnings of the four weeks up to
// its date.
#include "runtime/Currency.h"
#include <QDate>
#include <optional>

namespace ql {

class Database;

// The name of the tax type, as the one-off pay's list shows it.
extern const char* const ExtraPayTaxName;

// In a payroll of country 64, adds the tax type "Extra pay" (one step, so the one-off list offers it)
// when it is missing.
void EnsureExtraPayTaxType(Database& wage);

bool IsExtraPayTaxType(Database& wage, qint32 taxTypeID);

// What Inland Revenue's method takes of an extra pay.
struct ExtraPayTax {
    Currency paye;
    Currency notLiable;       // the part not liable for the ACC earners' levy, at most the amount
    bool lowestRate = false;  // taxed at the lowest band's rate: the payday filing's lump sum indicator
    // Student loan for a code with SL: paid apart from a regular pay, the extra pay has no threshold, so
    // the rate (the special rate, when the employee has one) goes on its whole dollars.
    Currency studentLoan;
    Currency studentLoanBase;
    float studentLoanRate = 0;
};

// The tax of an extra pay of amount on date, of which notLiable is not liable for the ACC earners' levy
// (a redundancy or retiring payment): none when no tax year covers the date or the employee's code is
// not one the method knows. The four weeks' earnings are the taxable amounts of the employee's regular
// pays dated in the 28 days ending on the date; a single monthly pay counts times 12, all else times 13.
std::optional<ExtraPayTax> ExtraPayTaxOf(qint32 employeeID, const QDate& date, Currency amount,
                                         Currency notLiable = Currency());

// Writes what an extra pay made as the one-off pay wageID reports besides its payment line: its student
// loan as the pay's deduction line (the pay's deductions follow it), the part not liable for the levy
// and the lump sum indicator.
void SaveExtraPayFigures(qint32 wageID, const ExtraPayTax& tax);

} // namespace ql
