#pragma once
// Deductions and KiwiSaver: the employee's deduction lines, thresholds and cap, and the recalculation
// that leaves hand-set lines (percentage exactly 100) alone.
#include "runtime/Currency.h"
#include <QString>

namespace ql {

class GridArray;
class PayView;

// which: 0 UpperThreshold, 1 LowerThreshold, 2 MaxPercent, 3 Percentage; 0 for none or Null.
float GetDeductLimit(qint32 deductNameID, int which);
// Outputs keep their values when the employee has no such row or a column is Null.
void GetEmpDeduct(qint32 deductNameID, float& specialRate, Currency& fixedAmount);
void GetKSEmpDeduct(qint32 deductNameID, QString& taxName);
void CalcDeduction(float specialRate, Currency fixedAmount, Currency base, qint32 deductNameID,
                   float paysPerYear, float& percentage, Currency& amountCalcOn, Currency& deduction);
void AddDefaultDeduct(qint32 wageID, Currency taxable, bool firstPay, qint32 employeeID, float paysPerYear);
// Recalculates the pay's deduction lines; totalLabel (on form) shows the total of the lines it changed.
void UpdateDeductions(Currency taxable, qint32 wageID, PayView& form, const QString& totalLabel,
                      Currency excluded);

// Grid columns: 0 WageID, 1 name, 2 calculated on, 3 percentage, 4 amount.
void RecalcDeductionRow(GridArray& grid, int row, int column, const QString& newText);
// Before a change of the name (column 1) is taken; the row's column 1 holds the new name id.
void DefaultDeductionRow(int column, Currency taxable, GridArray& grid, int row);
void UpdateDeductTotal(PayView& form);

bool IsKiwiSaverEnrolled(qint32 employeeID);

} // namespace ql
