#pragma once
// Reading, checking and saving an employee across the two databases. A save is all or nothing: every
// problem is found before anything is written, and the rows of each database are written in one
// transaction, in an order that a crash can't turn into an employee without an address or an
// address that waits for an employee (see CompletePendingAddresses).
#include "EmployeeDetails.h"
#include "EmployeeFields.h"
#include "data/Database.h"

namespace ql {

// Every problem of the details, each naming its field; empty when the details can be saved.
QList<FieldProblem> EmployeeProblems(Database& wage, const EmployeeDetails& details);
// The problems as one message, one a line.
QString ProblemText(const QList<FieldProblem>& problems);

// The employee as stored; raises VbError 5 "Employee N is not on the payroll." for an unknown id.
EmployeeDetails LoadEmployee(Database& wage, Database& farm, qint32 employeeID);
// Every employee, finished ones included, by last and first name.
QList<EmployeeDetails> LoadEmployees(Database& wage, Database& farm);

// Adds (EmployeeID 0) or changes the employee and returns its EmployeeID. Refuses details with
// problems (VbError 5 with ProblemText), writing nothing.
qint32 SaveEmployee(Database& wage, Database& farm, const EmployeeDetails& details);

// Saves several employees together: all of them, or none when any has a problem (each problem's
// message begins with what the caller names the employee by, from labels).
QList<qint32> SaveEmployees(Database& wage, Database& farm, const QList<EmployeeDetails>& list,
                            const QStringList& labels);

// Sets the finish date: the employee leaves the roster and the pay run. Refuses a date before the
// start date.
void FinishEmployee(Database& wage, Database& farm, qint32 employeeID, const QDate& finish);

} // namespace ql
