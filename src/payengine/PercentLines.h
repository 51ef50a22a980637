#pragma once
// What deductions and employer contributions share: a line that is a fixed amount or a percentage of a
// base, narrowed by yearly thresholds and capped by a maximum percentage of the base. The two kinds
// differ only in their tables and columns.
#include "runtime/Currency.h"
#include <QString>

namespace ql {

class GridArray;

struct PercentLineKind {
    QString nameTable;      // DeductNames
    QString nameKey;        // DeductNameID
    QString employeeTable;  // EmployeeDeductions
    QString employeeKey;    // DeductID
    QString detailTable;    // DeductionDetails
    QString amountColumn;   // Deductions
    QString trapName;       // the procedure name for errors of the employee lookup
};

const PercentLineKind& deductionKind();
const PercentLineKind& contributionKind();

float percentLineLimit(const PercentLineKind& k, qint32 nameID, int which);
void percentLineEmployee(const PercentLineKind& k, qint32 nameID, float& specialRate, Currency& fixedAmount);
void calcPercentLine(const PercentLineKind& k, float specialRate, Currency fixedAmount, Currency base,
                     qint32 nameID, float paysPerYear, float& percentage, Currency& amountCalcOn,
                     Currency& amount);
// The grid row after an edit of column; amountColumn is 4 for deductions, 5 for contributions.
// Leaves the cells unformatted for the caller to write back.
void recalcPercentRow(GridArray& grid, int row, int column, const QString& newText, int amountColumn,
                      Currency& calcOn, float& percentage, Currency& amount);

} // namespace ql
