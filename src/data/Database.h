#pragma once
// One open SQLite file. SQL is written in SQLite's dialect by the callers; month-first date literals
// (#mm/dd/yyyy#) outside quoted strings are rewritten to the stored ISO form before SQLite sees them.
// SQLite failures are raised as ql::VbError with the numbers the system reacts to (see VbError.h).
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>

struct sqlite3;

namespace ql {

class Recordset;

enum class RecordsetType { Dynaset, Snapshot };

class Database {
public:
    Database();
    ~Database();
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Opens an existing file of this system (no creation); see Schema.h for opening with creation.
    void open(const QString& path);
    void close();
    bool isOpen() const;
    QString path() const;

    QStringList tableNames() const;
    void createTextTable(const QString& table, const QString& textColumn);

    // Runs a statement that changes rows; returns the number of rows changed.
    int execute(const QString& sql);
    // A query opened on a table name or a SELECT.
    std::unique_ptr<Recordset> openRecordset(const QString& tableOrSql,
                                             RecordsetType type = RecordsetType::Dynaset);
    // First column of the first row, or Null.
    QVariant scalar(const QString& sql);

    void beginTrans();
    void commitTrans();
    void rollback();
    bool inTransaction() const;

    sqlite3* handle() const;

private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace ql
