#pragma once
// Employer contributions and ESCT, the counterpart of the deductions for an enrolled employee.
#include "runtime/Currency.h"
#include <QString>
#include <QVariant>

namespace ql {

class GridArray;
class PayView;

float GetContributionLimit(qint32 contributionNameID, int which);
void GetEmpContribution(qint32 contributionNameID, float& specialRate, Currency& fixedAmount);
void CalcContribution(float specialRate, Currency fixedAmount, Currency base, qint32 contributionNameID,
                      float paysPerYear, float& percentage, Currency& amountCalcOn, Currency& contribution);
// No trap: a yearly salary with no ESCT row below it fails, and the error goes to the caller.
Currency CalcESCT(qint32 contributionNameID, Currency contribution, Currency base);
// The same for the pay wageID, which need not be the current one yet (a pay being added).
Currency CalcESCT(qint32 contributionNameID, Currency contribution, Currency base, qint32 wageID);
void AddDefaultContribution(qint32 wageID, Currency taxable, bool firstPay, qint32 employeeID,
                            float paysPerYear);
void UpdateContributions(Currency base, qint32 wageID, PayView& form, const QString& totalLabel,
                         const QString& payDateLabel, const QString& creditLabel, const QString& esctLabel);
Currency GetKiwiSaverCredit(const QVariant& payDate);

// Grid columns: 0 WageID, 1 name, 2 calculated on, 3 percentage, 4 ESCT, 5 amount.
void RecalcContributionRow(GridArray& grid, int row, int column, const QString& newText, Currency taxable);
// Before a change of the name (column 1) is taken; the row's column 1 holds the new name id.
void DefaultContributionRow(int column, Currency taxable, GridArray& grid, int row);
void UpdateContributionTotals(PayView& form);
void ShowTaxCredit(PayView& form);

} // namespace ql
