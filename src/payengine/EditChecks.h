#pragma once
// The checks a typed cell of a detail view passes before it is stored, so that no edit leaves a pay
// whose figures disagree: no negative figure in a line, no figure beyond what a pay can hold, and no
// change that takes the pay's total taxable below zero.
#include <QString>

namespace ql {

class PayView;

// The largest figure a cell or a line's result may hold.
constexpr double LargestLineFigure = 1000000.0;

// The message that refuses text typed into column of row of the open view (CurrentTab), in the
// system's words; empty when the entry may be stored. The text is numeric; the grid is not changed.
QString GridEntryRefusal(const PayView& form, int row, int column, const QString& text);

// "12,50" (a comma followed by one or two digits) is far more often a decimal comma than a thousands
// separator: the figure with a point ("12.50"), or the empty text when the text isn't of that form.
QString DecimalCommaMeant(const QString& text);

// Asks whether the figure with a point was meant, naming the column by its heading. Returns the text
// to store: the figure with a point on Yes, the empty text on No (the cell keeps its value), and the
// text itself when it has no such comma.
QString ConfirmDecimalComma(const PayView& form, int column, const QString& text);

// Shows a refusal through the message box, with the suite's name as caption.
void ShowEntryRefusal(const QString& message);

} // namespace ql
