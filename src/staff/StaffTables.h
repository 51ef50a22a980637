#pragma once
// What an employee has beyond the suite's columns, in tables and columns of this program's own:
// EmployeeTerms in the payroll database (usual hours a pay, annual leave days, KiwiSaver opt-out),
// and on Addresses of the farm database an email column and the mark of an address whose employee
// row is still being written. All are added on first use and leave existing rows as they are.
#include "data/Database.h"

namespace ql {

void EnsureStaffTables(Database& wage);
void EnsureAddressColumns(Database& farm);

// An employee is written address first (marked pending, not yet shown in the payroll), then the
// employee row, then the mark is cleared. A crash in between leaves a pending address: one whose
// employee row exists is completed, one without an employee row is removed.
void CompletePendingAddresses(Database& wage, Database& farm);

// The tax type of the special tax code STC: a row without steps, so that an employee on it is on the
// roster; Inland Revenue's method works the PAYE out from the employee's own rate.
void EnsureSpecialTaxType(Database& wage);

} // namespace ql
