#pragma once
// The payday details of the demo farm, so that a new user can try the pay run, the payday filing
// and the bank file on it at once: a payroll contact, an employer IRD number and paying account that
// pass their checks, a bank account for every employee who has none, and an IRD number that passes for
// every invented employee whose number fails.
#include "data/Database.h"

namespace ql {

void AddDemoPaydayDetails(Database& wage);

} // namespace ql
