#pragma once
// The deductions that carry an employee's standing tax items on a pay: child support, payroll giving and
// the two extra student loan deductions (the commissioner's, SLCIR, and the borrower's own, SLBOR). Each
// is a row of DeductNames known by its TaxName; child support also by its name, as older payrolls have it.
#include <QString>

namespace ql {

class Database;

namespace taxitem {
inline const QString ChildSupport = QStringLiteral("childsupport");
inline const QString PayrollGiving = QStringLiteral("payrollgiving");
inline const QString StudentLoan = QStringLiteral("studentloan");
inline const QString Commissioner = QStringLiteral("slcir");
inline const QString Borrower = QStringLiteral("slbor");
} // namespace taxitem

// Adds the deduction names of payroll giving and of the extra student loan deductions when the payroll
// lacks them. Idempotent.
void EnsureTaxItemDeductNames(Database& wage);

// The DeductNameID of a tax item's deduction (a taxitem name); 0 when the payroll has none.
qint32 TaxItemDeductID(Database& wage, const QString& taxName);

// The SQL condition on DeductNames (by that table name) that picks a tax item's lines.
QString TaxItemLineCondition(const QString& taxName);

} // namespace ql
