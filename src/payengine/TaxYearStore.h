#pragma once
// The tax years of a payroll: one row of TaxYearFigures per period (its effective date, its year and
// its full figures). A pay takes the period in force on its date; a date outside every stored year has
// none, and the pay then runs on the tax steps and equations of the payroll alone.
#include "TaxYear.h"
#include <optional>

namespace ql {

class Database;

// Creates the table when it is missing and fills it with the shipped years; safe to call often.
void EnsureTaxYearTables(Database& wage);

// Stores every period of a tax year file, replacing the periods of the same year, in one transaction.
// Refuses (VbError 5, nothing written) a file that does not parse or a year that overlaps another
// stored year. Returns the periods stored.
QList<TaxYearFigures> ImportTaxYear(Database& wage, const QByteArray& json);

// Every stored period, in date order.
QList<TaxYearFigures> StoredTaxYears(Database& wage);

// The period in force on a date, if a stored year covers it.
std::optional<TaxYearFigures> TaxYearInForce(Database& wage, const QDate& date);

} // namespace ql
