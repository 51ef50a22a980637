#pragma once
namespace ql {
class frmWage;
class TitleMenuBar;
// The employer details and employees: entries in the Tools menu with keys, and the employee list's
// name on the ledger opening the editor for the shown employee.
void wireStaff(frmWage& window, TitleMenuBar* bar);
// The first start: the settings a new installation needs, and the set-up assistant of an empty payroll.
void prepareFirstStart();
} // namespace ql
