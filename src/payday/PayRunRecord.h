#pragma once
// Which pays belong to a run date, kept in the payroll file as the run finds or adds them, so that a
// run cut short and run again still knows every pay of the first attempt (a committed pay drops out
// of a new proposal once its date is behind the run's).
#include "PayRun.h"

namespace ql {

void RecordPayRunPays(Database& wage, const QDate& runDate, const QList<PayRunItem>& items);

// The committed pays recorded for the run date, with reference and name, in the run's order.
QList<PayRunItem> RecordedCommittedPays(Database& wage, const QDate& runDate);

// A payslip's file name of the pay's reference and the employee's name: no character a folder
// refuses, no control character, no leading dot.
QString PaySlipFileName(const PayRunItem& item);

} // namespace ql
