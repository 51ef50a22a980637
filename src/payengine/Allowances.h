#pragma once
// Taxable and non-taxable allowances: default lines from the employee's type with the figures of the
// last pay, their sum, and the recalculation of an edited line.
#include "runtime/Currency.h"

namespace ql {

class GridArray;
class PayView;

void AddDefaulttaxable(qint32 lastWageID, qint32 wageID, qint32 employeeTypeID);
void AddDefaultNontax(qint32 lastWageID, qint32 wageID, qint32 employeeTypeID);
// Sum of the pay's taxable allowances; 0 when there are none.
Currency SumTaxAllow(qint32 wageID);
// Sum of the pay's taxable allowances whose name is kept out of the KiwiSaver base; 0 when none.
Currency ExcludeKiwiSaver(qint32 wageID);

// After an edit in either allowance grid (columns: 0 WageID, 1 name, 2 calculated on, 3 rate, 4 amount).
void RecalcAllowanceRow(GridArray& grid, int row, int column, const QString& newText);
// Taxable total; an uncommitted pay saves and recalculates at once.
void UpdateTaxable(PayView& form);
void UpdateNonTaxTotal(PayView& form);

} // namespace ql
