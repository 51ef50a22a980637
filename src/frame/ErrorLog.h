#pragma once
// FHErrors.log in the common folder: one line per run, the first thing that was missing.
#include <QString>

namespace ql {

// Appends "date time<TAB>text<CR><LF>" at the first call of a run; every later call of the same
// run writes nothing. A folder or disk that can't take the line means no line, and nothing else.
void LogError(const QString& text);

// The full path of the log file.
QString ErrorLogPath();

// Starts a new run of the log, as a new process would.
void resetErrorLogForTesting();

} // namespace ql
