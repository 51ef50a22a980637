#pragma once
// A demo farm for trying the program: employer details, a tax office, and employees that together
// cover the roster's and the pay engine's cases. Names and addresses are invented.
#include "Database.h"

namespace ql {

// Adds the demo rows to a payroll and a farm database that hold the template rows and no employees
// or addresses yet.
void addDemoFarm(Database& wage, Database& farm);

// True when neither database holds an employee or an address, so the demo may be added.
bool readyForDemo(Database& wage, Database& farm);

} // namespace ql
