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

// Whether the pay is an extra pay: a one-off pay whose tax line is of the tax type "Extra pay".
bool IsExtraPayOfPay(Database& wage, qint32 wageID);

// The tax of the extra pay wageID worked again on its taxable amount, its date and the part not liable
// for the levy it was made with (at most the amount): none when the pay is not an extra pay or the
// method has no year or code for it. A recalculated extra pay keeps the extra-pay method.
std::optional<ExtraPayTax> ExtraPayTaxOfPay(qint32 employeeID, qint32 wageID, Currency taxable);

// The year's earnings an extra pay points to, for the ESCT rate when nothing better is known: the
// regular pays of the four weeks over a year, and the extra pay. None when wageID is not an extra pay.
std::optional<Currency> ExtraPayYearEstimate(qint32 employeeID, qint32 wageID, Currency amount);

// What of an extra pay is left out of KiwiSaver's salary and wages: its part not liable for the levy
// (a redundancy payment); nothing for any other pay.
Currency ExtraPayKiwiSaverExcluded(Database& wage, qint32 wageID);

// KiwiSaver on an extra pay of an enrolled employee: the employee's standing KiwiSaver deduction and
// employer contribution (with its ESCT) as lines of the one-off pay wageID on base, and the pay's
// deductions, take-home, contribution and ESCT totals after them.
void AddExtraPayKiwiSaver(qint32 wageID, qint32 employeeID, Currency base);

} // namespace ql
