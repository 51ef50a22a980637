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

// Shows a refusal through the message box, with the suite's name as caption.
void ShowEntryRefusal(const QString& message);

} // namespace ql
