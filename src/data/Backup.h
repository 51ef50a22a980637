#pragma once
// Backing up and restoring the program's data: one dated archive (a tar file) with the three
// databases, each copied with SQLite's online backup (safe while the program has them open), and the
// settings file. A restore checks every database of the archive first (PRAGMA integrity_check, the
// kind's tables, a schema version this program knows), keeps a safety archive of what it replaces,
// and copies the databases back through the same online backup, so an open connection sees them.
#include <QString>
#include <QStringList>

namespace ql {

// "Quillary backup yyyy-MM-dd.tar": the name a backup of today suggests.
QString BackupFileName();
// The folder backups go to by default: Backups in the documents folder.
QString BackupFolder();

struct BackupResult {
    QString file;        // the archive written
    QStringList entries; // its members, in order
};

// Writes the archive to file (replacing it). Raises a VbError in the system's words when a database
// cannot be read or the file cannot be written; a half-written archive is removed.
BackupResult BackupData(const QString& file);

struct RestoreResult {
    QString safetyCopy;  // the archive of the data as it stood before
    QStringList restored; // the members put back
};

// Checks the archive and, when every member passes, replaces the data with it. Raises a VbError in the
// system's words, with nothing changed, when the archive is not one of these or a database fails.
RestoreResult RestoreData(const QString& file);

} // namespace ql
