#pragma once
// Where an employee's email address lives: the EmailAddress column of the farm's Addresses row the
// employee points at.
#include "data/Database.h"
#include <QString>

namespace ql {

// The address of the employee (trimmed; empty when none is kept). The farm file is DataFileName().
QString EmployeeEmail(Database& wage, qint32 employeeID);
// Same, from an open farm database.
QString EmployeeEmail(Database& wage, Database& farm, qint32 employeeID);
// The demo farm's employees get addresses at example.com (first.last@example.com).
void AddDemoEmails(Database& farm);

} // namespace ql
