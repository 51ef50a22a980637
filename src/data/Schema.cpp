#include "Schema.h"
#include "PayFreeze.h"
#include "SqlSupport.h"
#include "runtime/VbError.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

namespace ql {

namespace {

const QString kSource = QStringLiteral("Quillary");

// The table whose presence marks a file as a database of the kind.
QString markerTable(DatabaseKind kind) {
    switch (kind) {
    case DatabaseKind::Wage:
        return QStringLiteral("Wages");
    case DatabaseKind::Farm:
        return QStringLiteral("Farm Details");
    case DatabaseKind::Modules:
        return QStringLiteral("TaxEquations");
    }
    return QString();
}

[[noreturn]] void notOurs(DatabaseKind kind, const QString& path, const QString& why) {
    raiseError(err::NotADatabase, kSource,
               QStringLiteral("The file '%1' is not a %2 database of Quillary: %3. The file has been left as "
                              "it is.")
                   .arg(QDir::toNativeSeparators(path), databaseKindName(kind), why));
}

// Looks at an existing file without changing it.
void checkExisting(DatabaseKind kind, const QString& path) {
    sqlite3* db = nullptr;
    const QByteArray file = path.toUtf8();
    int rc = sqlite3_open_v2(file.constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_close_v2(db);
        db = nullptr;
        rc = sqlite3_open_v2(file.constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    }
    if (rc != SQLITE_OK) {
        sqlite3_close_v2(db);
        notOurs(kind, path, QStringLiteral("it cannot be opened"));
    }
    // Another program's lock is waited for, and named when it outlasts the wait.
    sqlite3_busy_timeout(db, 5000);
    sqlite3_stmt* st = nullptr;
    rc = sqlite3_prepare_v2(
        db, "SELECT count(*) FROM sqlite_master WHERE type='table' AND name = ? COLLATE NOCASE", -1, &st,
        nullptr);
    bool found = false;
    if (rc == SQLITE_OK) {
        const QByteArray table = markerTable(kind).toUtf8();
        sqlite3_bind_text(st, 1, table.constData(), int(table.size()), SQLITE_TRANSIENT);
        rc = sqlite3_step(st);
        if (rc == SQLITE_ROW) found = sqlite3_column_int(st, 0) > 0;
    }
    sqlite3_finalize(st);
    sqlite3_close_v2(db);
    const int primary = rc & 0xff;
    if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED || primary == SQLITE_IOERR || primary == SQLITE_FULL ||
        primary == SQLITE_READONLY || primary == SQLITE_PERM || primary == SQLITE_CANTOPEN || primary == SQLITE_NOMEM)
        raiseOpenFailure(path, rc);
    if (rc != SQLITE_ROW)
        notOurs(kind, path, QStringLiteral("it is not a database file, or the file is damaged"));
    if (!found) notOurs(kind, path, QStringLiteral("it has no table '%1'").arg(markerTable(kind)));
}

void removeDatabaseFiles(const QString& path) {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(suffix));
}

// The payroll and farm files are written all day: a write-ahead log. The modules file is mostly read,
// by a connection opened for each equation; a rollback journal makes that open cheap, as it creates no
// log and index files beside the database.
QString journalMode(DatabaseKind kind) {
    return kind == DatabaseKind::Modules ? QStringLiteral("delete") : QStringLiteral("wal");
}

QString journalModeSetting(DatabaseKind kind) {
    return QStringLiteral("PRAGMA journal_mode=") + journalMode(kind);
}

void createNew(DatabaseKind kind, const QString& path, Database& db) {
    const QFileInfo fi(path);
    if (!QDir().mkpath(fi.absolutePath()))
        raiseError(3051, kSource,
                   QStringLiteral("The folder '%1' cannot be created.").arg(fi.absolutePath()));
    sqlite3* raw = nullptr;
    const QByteArray file = path.toUtf8();
    const int rc =
        sqlite3_open_v2(file.constData(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    sqlite3_close_v2(raw);
    if (rc != SQLITE_OK)
        raiseError(3051, kSource, QStringLiteral("The database file '%1' cannot be created.").arg(path));
    try {
        db.open(path);
        db.executeScript(journalModeSetting(kind));
        db.beginTrans();
        switch (kind) {
        case DatabaseKind::Wage:
            createWageSchema(db);
            addWageTemplate(db);
            break;
        case DatabaseKind::Farm:
            createFarmSchema(db);
            addFarmTemplate(db);
            break;
        case DatabaseKind::Modules:
            createModulesSchema(db);
            addModulesTemplate(db);
            break;
        }
        db.setUserVersion(schemaVersion(kind));
        db.commitTrans();
    } catch (...) {
        db.close();
        removeDatabaseFiles(path);
        throw;
    }
}

// Brings a file of an older schema version up to date. Version 1 is the first.
void upgrade(DatabaseKind kind, Database& db) {
    const int version = db.userVersion();
    if (kind == DatabaseKind::Wage && version < 2) {
        // Version 2: the pays' index also holds the wage history's figures.
        db.beginTrans();
        db.executeScript(QStringLiteral("DROP INDEX IF EXISTS WagesEmployeeDate"));
        createWageHistoryIndex(db);
        db.setUserVersion(schemaVersion(kind));
        db.commitTrans();
    }
    if (db.userVersion() < schemaVersion(kind)) db.setUserVersion(schemaVersion(kind));
    // A file made before its kind had its journal mode; another open connection may keep the old mode,
    // which only costs speed.
    try {
        if (db.scalar(QStringLiteral("PRAGMA journal_mode"))
                .toString()
                .compare(journalMode(kind), Qt::CaseInsensitive))
            db.executeScript(journalModeSetting(kind));
    } catch (const VbError&) {
    }
}

} // namespace

int schemaVersion(DatabaseKind kind) {
    return kind == DatabaseKind::Wage ? 2 : 1;
}

QString databaseKindName(DatabaseKind kind) {
    switch (kind) {
    case DatabaseKind::Wage:
        return QStringLiteral("payroll");
    case DatabaseKind::Farm:
        return QStringLiteral("farm");
    case DatabaseKind::Modules:
        return QStringLiteral("modules");
    }
    return QString();
}

namespace {
bool& createsDataFiles() {
    static bool creates = true;
    return creates;
}
} // namespace

void setDataFilesCreated(bool created) {
    createsDataFiles() = created;
}

Database openOrCreate(DatabaseKind kind, const QString& path, bool* created) {
    Database db;
    if (created) *created = false;
    if (!QFileInfo::exists(path) && kind != DatabaseKind::Modules && !createsDataFiles())
        raiseError(3024, kSource,
                   QStringLiteral("The %1 file '%2' is missing. It is not made again empty here: restore it "
                                  "from a backup, or create new files with init.")
                       .arg(databaseKindName(kind), QDir::toNativeSeparators(path)));
    if (!QFileInfo::exists(path)) {
        createNew(kind, path, db);
        if (kind == DatabaseKind::Wage) EnsurePayFreeze(db);
        if (created) *created = true;
        return db;
    }
    checkExisting(kind, path);
    db.open(path);
    upgrade(kind, db);
    // A file that can't be written now needs no guard against writes; the next open adds it.
    if (kind == DatabaseKind::Wage) {
        try {
            EnsurePayFreeze(db);
        } catch (const VbError&) {
        }
    }
    return db;
}

} // namespace ql
