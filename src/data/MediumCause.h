#pragma once
// Why a database file could not be opened or written, as the file system tells it: SQLite reports a
// read-only medium or a full disk as "unable to open" or "disk I/O error" when it can't make the
// log and index files beside the database, which would read like damage.
#include <QString>

namespace ql {

enum class MediumCause { None, ReadOnly, NotAllowed, Full };

// The cause of a failed open or write of the database file at path, looked for only after SQLite
// failed: a read-only file system, a file or folder this user may not write, or a disk with (almost)
// no room left. None when the file system shows none of these.
MediumCause mediumCause(const QString& path);

} // namespace ql
