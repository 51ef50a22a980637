#pragma once
// What the leave tab shows for a chosen leave: the rate used and the working of each rate, as lines
// of text; the leave kind that a kind of the leave ledger is paid as; and the leave put on the pay the
// wage screen shows, recalculated as an edit of its payment lines is.
#include "LeavePay.h"
#include <QStringList>
#include <optional>

namespace ql::holidays {

QStringList LeaveWorkingLines(const LeavePayResult& r);

// Ledger kinds: 1 annual, 2 sick, 3 special (paid as bereavement leave), 4 in lieu (alternative
// holidays); 5, leave without pay, is not paid.
std::optional<LeaveKind> LeaveKindOfLedger(int leaveTypeID);

// Adds the leave to the shown pay (CurrentWageID of CurrentEmployeeID) and recalculates it through the
// shown wage screen when there is one. Raises VbError with the system's message when it cannot.
void AddLeaveToShownPay(const LeavePayResult& r);

} // namespace ql::holidays
