#pragma once
// The totals of a pay and their recalculation: what the summary labels hold, the order in which an edit
// recalculates, how the lines of the open grid reach the detail tables, and what each grid shows.
#include <QString>

namespace ql {

class PayView;

// Total taxable from the captions, PAYE, then deductions and contributions recalculated.
void ReCalcPAYE(PayView& form);

// The dispatch of a stored cell of row of the open grid (CurrentTab): the line's recalculation and
// its total. Nothing happens unless newText is numeric.
void UpdateGridLine(PayView& form, int column, const QString& newText, int row);

// Writes the open grid's lines to their table (tabs 1, 2, 4, 5, 7) and recalculates the pay; every
// save ends with RefreshPaySlip. Running it again only repeats it.
void SaveWageGrid(PayView& form);
// Replaces every line of CurrentWageID in table by the rows of WageGridArray, through WageGridQuery.
// Errors are trapped and reported under "SaveWageXArray".
void SaveWageXArray(PayView& form, const QString& table);

// Before an open pay is committed or posted: its figures are brought to what its lines give, and its
// PAYE is calculated again when the tax line was worked on another taxable amount than the lines now
// give (a first pay, whose add could not see its gross yet). A PAYE typed for this taxable amount
// stays. The pay list's row is stored. A committed or held pay, a one-off pay and a pay without
// payment lines are left as they are.
void SettlePayFigures(PayView& form);

// Opens the take-home (payslip) view.
void SetTakeHome(PayView& form);

// Fills the view of CurrentTab and the pay's caption in lblpayment(10).
void FillWageGrid(PayView& form);
void FillPaymentGrid(PayView& form);
void FillTaxableGrid(PayView& form);
void FillNonTaxGrid(PayView& form);
void FillDeductionGrid(PayView& form);
void FillContributionGrid(PayView& form);
void FillPAYEDisplay(PayView& form);

// What the totals need of the payslip lines; defined with them in reports/ (PaySlipLines.cpp), so that
// the engine reaches them without including a higher layer.
// Empties PaySlip, writes every line of CurrentWageID and sets the summary labels. Again in the same
// transaction with nothing it is made of changed, it only sets the labels again. Errors are trapped
// and reported under "RefreshPaySlip".
void RefreshPaySlip(PayView& form);
// RefreshPaySlip, then loads the payslip rows into a new WageGridArray for the grid.
void EnterPaySlip(PayView& form);

// PayInterval.PaysPerYear of CurrentEmployeeID; 0 when there is no row.
float GetPaysPerYear();

} // namespace ql
