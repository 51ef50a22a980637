#pragma once
// What Database and Recordset share below their interfaces: the connection, statement preparation with
// the date literal rewrite, binding and reading of storage values, and SQLite failures as run-time
// errors.
#include <QString>
#include <QVariant>
#include <functional>
#include <sqlite3.h>
#include <vector>

namespace ql {

struct Connection {
    sqlite3* db = nullptr;
    QString path;
    // The open transaction's number, unique in the process; 0 outside one. A rollback or a change of the
    // schema gives the transaction a new number (see Database::changeMark).
    quint64 transaction = 0;
};

// "#mm/dd/yyyy#" (also "#m/d/yyyy#" and with a time) outside quoted strings and bracketed names
// becomes the stored ISO text in quotes: #04/03/2007# -> '2007-04-03'.
QString rewriteDateLiterals(const QString& sql);

// The text SQLite is given: date literals rewritten, "DISTINCTROW" dropped, "Delete * From" and
// "DELETE T.* FROM" as plain deletes, "[A]![B]" as "[A].[B]", and a comparison with the
// literal NULL ("x = NULL", "x <> NULL") made false rather than unknown, as the queries of the system
// expect: "NOT (d = NULL OR d = #12/30/1899#)" holds for a set date. All outside quoted strings.
QString rewriteJetSql(const QString& sql);

// Raises the run-time error for the connection's last failure (code rc), naming the SQL text.
[[noreturn]] void raiseSqliteError(sqlite3* db, int rc, const QString& sql, const QString& source);
// The failure of opening the file at path, named by its cause (locked, read-only, disk full, ...).
[[noreturn]] void raiseOpenFailure(const QString& path, int rc);

// Prepared statements are kept per open connection for reuse, keyed by their final SQL text. A
// connection takes part from openStatementCache until closeStatementCache, which finalizes the kept
// statements; one still in use is finalized when its Statement ends.
void openStatementCache(sqlite3* db);
void closeStatementCache(sqlite3* db);
// Finalizes the kept statements of the connection (after a change of the schema).
void clearStatementCache(sqlite3* db);

// A prepared statement that finalizes itself, or goes back to its connection's cache reset and
// without bindings. A statement is out of the cache while in use, so no two share one.
class Statement {
public:
    Statement(sqlite3* db, const QString& sql, const QString& source);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* get() const { return m_stmt; }
    // true when a row is ready, false when done; failures raise.
    bool step();
    void reset();
    void bind(int index, const QVariant& storageValue); // index from 1
    void bindAll(const QVariantList& storageValues);
    QVariant column(int index) const; // the stored value: qint64, double, QString, QByteArray or Null
    const QString& sql() const { return m_sql; }
    bool isEmpty() const { return m_stmt == nullptr; }
    bool isSchemaChange() const { return m_schemaChange; }
    // The text after the first statement (empty when there is one statement).
    const QString& tail() const { return m_tail; }

private:
    sqlite3* m_db;
    sqlite3_stmt* m_stmt = nullptr;
    QString m_sql;
    QString m_source;
    QString m_tail;
    bool m_reusable = false;     // a plain query or change, kept for the next use of its text
    bool m_schemaChange = false; // CREATE, DROP or ALTER: the kept statements are dropped after it
    bool m_started = false;
    // The text the statement is kept under: the compared whole numbers of the text taken out as
    // parameters (m_literals, bound at each use), so that "WHERE WageID = 812" and "WHERE WageID = 813"
    // share one prepared statement.
    QString m_key;
    std::vector<long long> m_literals;
    void bindLiterals();
};

// A test may watch or fail statements: the hook sees each statement just before it first runs (and
// each script before it is executed) and may raise. Unset outside tests.
using StatementHook = std::function<void(sqlite3* db, const QString& sql)>;
void setStatementHookForTesting(StatementHook hook);
void runStatementHook(sqlite3* db, const QString& sql);

// Registers vbstr() and iif() on a connection.
void registerSqlFunctions(sqlite3* db);

// Quotes a name for SQL: [name].
QString quoteName(const QString& name);

} // namespace ql
