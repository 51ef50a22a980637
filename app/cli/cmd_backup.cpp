// Backing up and restoring the data from the command line.
#include "CliCommand.h"
#include "data/Backup.h"
#include <QDir>
#include <QFileInfo>

namespace {

// backup FILE: the archive written and its members, one a line.
int backup(const QStringList& args, QTextStream& out) {
    if (args.size() != 1 || args[0].isEmpty()) throw cli::CliUsageError();
    QString file = args[0];
    if (QFileInfo(file).isDir()) file = QDir(file).filePath(ql::BackupFileName());
    const ql::BackupResult r = ql::BackupData(file);
    out << "backup: " << QDir::toNativeSeparators(r.file) << "\n";
    for (const QString& e : r.entries)
        out << "  " << e << "\n";
    return 0;
}

// restore FILE: what was put back and where the safety copy of the replaced data stands.
int restore(const QStringList& args, QTextStream& out) {
    if (args.size() != 1 || args[0].isEmpty()) throw cli::CliUsageError();
    const ql::RestoreResult r = ql::RestoreData(args[0]);
    out << "restored: " << QDir::toNativeSeparators(QFileInfo(args[0]).absoluteFilePath()) << "\n";
    for (const QString& e : r.restored)
        out << "  " << e << "\n";
    out << "safety copy: " << QDir::toNativeSeparators(r.safetyCopy) << "\n";
    return 0;
}

const cli::CliCommand backupCommand("backup", "backup FILE", backup);
const cli::CliCommand restoreCommand("restore", "restore FILE", restore);

} // namespace
