#pragma once
// One open SQLite file. SQL is written in SQLite's dialect by the callers; month-first date literals
// (#mm/dd/yyyy#) outside quoted strings are rewritten to the stored ISO form before SQLite sees them.
// SQLite failures are raised as ql::VbError with the numbers the system reacts to (see VbError.h).
// Every connection has the SQL functions vbstr(x) (number to text as the runtime prints it) and
// iif(condition, a, b).
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>

struct sqlite3;

namespace ql {

class Recordset;
struct Connection;

enum class RecordsetType { Dynaset, Snapshot };

class Database {
public:
    Database();
    ~Database();
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Opens an existing SQLite file (no creation); see Schema.h for opening with creation.
    // A missing file raises 3024, a file that is not a database 3049.
    void open(const QString& path);
    void close();
    bool isOpen() const;
    QString path() const;

    QStringList tableNames() const;
    bool hasTable(const QString& table) const; // without regard to case
    // Creates a table with one text column; an existing table raises 3010.
    void createTextTable(const QString& table, const QString& textColumn, int size = 255);

    // Runs a statement that changes rows; returns the number of rows changed.
    int execute(const QString& sql);
    // Runs a statement with positional parameters (?); returns the number of rows changed.
    int execute(const QString& sql, const QVariantList& params);
    // Runs several statements (a script) without results.
    void executeScript(const QString& sql);
    // A query opened on a table name or a SELECT.
    std::unique_ptr<Recordset> openRecordset(const QString& tableOrSql,
                                             RecordsetType type = RecordsetType::Dynaset);
    // First column of the first row, or Null.
    QVariant scalar(const QString& sql);
    // The columns of the first row as stored (as scalar gives them); empty when there is no row.
    QVariantList firstRow(const QString& sql);
    // The first column of every row as stored, in the query's order.
    QVariantList firstColumn(const QString& sql);
    qint64 lastInsertRowId() const;

    // What this connection has changed, as a mark to compare: equal marks, both taken inside one
    // transaction, mean that no row and no table changed in between, by this connection or, once the
    // transaction has written and so holds the file's write lock, by any other. Outside a transaction
    // the mark equals no other.
    struct ChangeMark {
        quint64 transaction = 0;
        qint64 changes = 0;
        bool operator==(const ChangeMark& o) const {
            return transaction != 0 && transaction == o.transaction && changes == o.changes;
        }
    };
    ChangeMark changeMark() const;

    void beginTrans();
    // A transaction that holds the file's write lock from its start, so that what it reads first
    // stays as read until it commits (inside another transaction: a savepoint of that one).
    void beginWriteTrans();
    void commitTrans();
    void rollback();
    bool inTransaction() const;

    int userVersion() const;
    void setUserVersion(int version);

    sqlite3* handle() const;

private:
    std::shared_ptr<Connection> m_conn;
    QString m_path;
    int m_transDepth = 0;
    friend class Recordset;
};

} // namespace ql
