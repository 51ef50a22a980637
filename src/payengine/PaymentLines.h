#pragma once
// Payment lines: the default lines of a new pay from the employee's type, the salary line, and how a
// line's units, rate and amount follow each other when one of them is edited.
#include "runtime/Currency.h"
#include <QString>

namespace ql {

class GridArray;
class PayView;
class Recordset;

// gross is out: the sum of the new lines.
void AddDefaultPayments(qint32 lastWageID, qint32 wageID, Currency& gross, Currency payRate,
                        qint32 employeeTypeID, float weeksPerPay, float paysPerYear, bool firstPay,
                        qint32 employeeID, const QString& unitOfPay);
// details is the open PaymentDetails recordset; gross is added to.
void updateSalary(Recordset& details, qint32 wageID, qint32 paymentNameID, Currency salary, Currency& gross);
// The salary of one pay, to four decimals.
Currency CalcSalary(Currency yearlyTotal, float paysPerYear);

// After an edit of column `column` of row `row` of the payment grid; the row's cells are rewritten.
void RecalcPaymentRow(GridArray& grid, int row, int column, const QString& newText);
void UpdatePayTotals(PayView& form);

} // namespace ql
