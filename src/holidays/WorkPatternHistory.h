#pragma once
// Every usual week kept for an employee, earliest first, and taking one back: the set-up screen shows
// the earlier patterns beside the one that holds now.
#include "WorkPattern.h"

namespace ql::holidays {

QList<WorkPattern> WorkPatternsOf(Database& wage, qint32 employeeID);
// Removes the pattern kept from the day; nothing when none is kept from it.
void RemoveWorkPattern(Database& wage, qint32 employeeID, const QDate& from);

} // namespace ql::holidays
