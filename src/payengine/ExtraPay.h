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

// The PAYE of an extra pay of amount on date: none when no tax year covers the date or the employee's
// code is not one the method knows. The four weeks' earnings are the taxable amounts of the employee's
// regular pays dated in the 28 days ending on the date; a single monthly pay counts times 12, all else
// times 13. The whole amount is taken as liable for the ACC levy.
std::optional<Currency> ExtraPayPaye(qint32 employeeID, const QDate& date, Currency amount);

} // namespace ql
