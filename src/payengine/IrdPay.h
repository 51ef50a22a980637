#pragma once
// Where a New Zealand pay meets Inland Revenue's method: the figures of the tax year in force on the
// pay's date, the employee's tax code and standing items. A pay of another country, of an interval that
// is not a whole number of pays in a year, of a date no stored tax year covers, or of a code the method
// does not know has no such context, and runs on the tax steps and equations of the payroll alone.
#include "EmployeeTaxItems.h"
#include "IrdMethod.h"
#include "runtime/Currency.h"
#include <optional>

namespace ql {

struct IrdPayContext {
    TaxYearFigures figures;
    ird::TaxCode code;
    int pays = 0;
    EmployeeTaxItems items;
};

std::optional<IrdPayContext> IrdContextForPay(qint32 employeeID, qint32 wageID, float paysPerYear);
// The same for a pay not yet made, by the employee and the date (pays 0: no interval asked for).
std::optional<IrdPayContext> IrdContextOn(qint32 employeeID, const QDate& date, int pays);

// Cents to Currency and back (amounts of Inland Revenue's method are whole cents).
Currency CentsToCurrency(qint64 cents);
qint64 CurrencyToCents(Currency c); // cut toward zero

// A Single per cent to thousandths (3.5 stored as a Single is 3500).
qint32 RateThousandths(float percent);

// The exact line of a percentage deduction or contribution of the current pay whose TaxName is
// kiwisaver or studentloan, a child support deduction (TaxName childsupport or the name "Child
// Support") of an employee with a child support amount, or a line of the employee's payroll giving or
// extra student loan deductions (TaxItemLines.h): sets the base, the percentage and the amount and
// returns true; false when the line is none of these or the pay has no context.
bool IrdPercentLine(const QString& nameTable, qint32 nameID, Currency base, float paysPerYear, float& percentage,
                    Currency& amountCalcOn, Currency& amount);

// The payroll giving credit of a pay of taxable cents: a third of the donations of its payroll giving
// lines as the recalculation leaves them (a fixed line's amount, else the employee's standing
// donation), at most the tax element of its PAYE.
qint64 PayrollGivingCreditForPay(const IrdPayContext& c, qint32 wageID, qint64 taxableCents);

} // namespace ql
