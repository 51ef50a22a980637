#pragma once
// The roster: who can be paid at this moment. A person is on it when the farm database's address
// carries WageFlag and the payroll database's employee row has been hired and has not finished.
#include <QString>

namespace ql {

class PayView;

// The filter of current employees, shared by the roster and the start-up check: hired (a date that is
// neither empty nor the zero date) and not finished (no date, or the zero date).
QString rosterWhereClause();

// Rebuilds EmployeeArray (element 0 empty, employees from 1) and returns the count.
qint32 FillEmployeeArray();

// Empty when the program can start, else a message for the user.
QString CheckEmployeeTable();

// Points the form's two data sources at the payroll database and loads the employee source.
void InitData(PayView& form);

} // namespace ql
