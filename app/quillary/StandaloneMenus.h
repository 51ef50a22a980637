#pragma once
// The suite's menu entries when no suite menu listens: Backup Data and Restore Data done by the
// program itself, the program's own reports for the Reports button, Exit closing the window, and one
// line for what only the suite can do (another module, its options).
#include <QString>
#include <functional>

namespace ql {

class frmWage;

void installStandaloneMenus(frmWage& window);

// Backup Data and Restore Data on the desktop; also the program's own Tools entries.
void BackupDataNow(frmWage& window);
void RestoreDataNow(frmWage& window);

// Asks for the archive to write (save) or to read; the empty text cancels. Tests replace it.
using ArchiveChooser = std::function<QString(bool save, const QString& suggested)>;
void setArchiveChooser(ArchiveChooser chooser);

} // namespace ql
