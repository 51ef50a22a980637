#pragma once
// The commit of one pay of a pay run, as the commit dialog commits it: the proposed reference, the
// pay's date, the cashbook posting as the "Update Cashbook" choice stands, and the payslip printed when
// print is true (the choice of the dialog's print box is left as the user set it).
#include "PayRun.h"

namespace ql {

PayCommitter CommitAsTheDialogDoes(bool print);

} // namespace ql
