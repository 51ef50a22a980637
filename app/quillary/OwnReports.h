#pragma once
// The program's own reports, for the Reports button when no suite menu listens: the payslips of a pay
// date in one preview, the wage history of the shown employee, and a summary of the pays of a date.
#include "reports/PreparedReport.h"
#include <QDate>

namespace ql {

class Database;
class frmWage;

void ShowOwnReports(frmWage& window);

// The pays of a pay date (their Date) as a report: employee, reference, gross, PAYE, deductions,
// take-home, with totals.
PreparedReport PayRunSummary(Database& wage, const QDate& payDate);
// The committed pays of a pay date, each as its payslip.
QList<PreparedReport> PaySlipsOfDate(Database& wage, const QDate& payDate);

} // namespace ql
