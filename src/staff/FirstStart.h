#pragma once
// What a new installation needs before its first screen looks right: the settings file with the grid
// colours of a new installation, and the farm and modules databases beside the payroll database.
// Nothing that exists is changed; a key already set keeps its value.
#include <QString>

namespace ql {

// Writes the missing [COLOURS] keys and creates the missing databases; returns what it added, one
// item a line (empty when nothing was missing).
QString PrepareNewInstallation();

} // namespace ql
