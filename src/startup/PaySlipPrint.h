#pragma once
// The commit dialog's "Generate pay slip" box prints through the payslip of the reports.

namespace ql {

// Sets the commit's payslip print to the report's PrintPaySlip for the pay the wage screen shows.
void installPaySlipPrint();

} // namespace ql
