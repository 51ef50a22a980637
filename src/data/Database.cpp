#include "Database.h"
#include "Recordset.h"
#include "SqlSupport.h"
#include "runtime/VbError.h"
#include <QFileInfo>
#include <atomic>

namespace ql {

namespace {
const QString kSource = QStringLiteral("DAO.Database");

// A statement of transaction control: it changes no schema, so the kept statements stay.
// Runs by itself so the kept statements stay prepared; a test's statement hook still sees it.
void transactionControl(sqlite3* db, const QString& sql) {
    runStatementHook(db, sql);
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_exec(db, utf8.constData(), nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) raiseSqliteError(db, rc, sql, kSource);
}

quint64 nextTransaction() {
    static std::atomic<quint64> last{0};
    return ++last;
}

// After a rollback (asked for, or forced by an error) the rows may be as they were before: a new number.
void renumberTransaction(Connection& conn) {
    if (conn.transaction != 0) conn.transaction = nextTransaction();
}

void onRollback(void* conn) {
    renumberTransaction(*static_cast<Connection*>(conn));
}
} // namespace

Database::Database() = default;
Database::~Database() {
    close();
}
Database::Database(Database&& o) noexcept
    : m_conn(std::move(o.m_conn)), m_path(std::move(o.m_path)), m_transDepth(o.m_transDepth) {
    o.m_transDepth = 0;
}
Database& Database::operator=(Database&& o) noexcept {
    if (this != &o) {
        close();
        m_conn = std::move(o.m_conn);
        m_path = std::move(o.m_path);
        m_transDepth = o.m_transDepth;
        o.m_transDepth = 0;
    }
    return *this;
}

void Database::open(const QString& path) {
    close();
    if (!QFileInfo(path).isFile())
        raiseError(3024, kSource, QStringLiteral("Could not find file '%1'.").arg(path));
    sqlite3* db = nullptr;
    const QByteArray file = path.toUtf8();
    // One thread uses a connection: the program has only the user-interface thread.
    int rc = sqlite3_open_v2(file.constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_close_v2(db);
        raiseOpenFailure(path, rc);
    }
    sqlite3_extended_result_codes(db, 1);
    // Before the first statement: another program's lock is waited for, not taken for damage.
    sqlite3_busy_timeout(db, 5000);
    // Connection settings only; the journal mode belongs to the file, chosen when it is created.
    // Setting synchronous reads the schema: the first moment SQLite looks at the file's contents.
    rc = sqlite3_exec(db, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        const int primary = rc & 0xff;
        sqlite3_close_v2(db);
        if (primary != SQLITE_NOTADB && primary != SQLITE_CORRUPT) raiseOpenFailure(path, rc);
        raiseError(err::NotADatabase, kSource,
                   QStringLiteral("Cannot open database '%1'. It is not a database this program "
                                  "recognizes, or the file is corrupt.")
                       .arg(path));
    }
    // Foreign keys through the C interface: the same switch as the PRAGMA, without compiling one.
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    registerSqlFunctions(db);
    openStatementCache(db);
    m_conn = std::make_shared<Connection>();
    m_conn->db = db;
    m_conn->path = path;
    sqlite3_rollback_hook(db, onRollback, m_conn.get());
    m_path = path;
    m_transDepth = 0;
}

void Database::close() {
    if (!m_conn) return;
    if (m_conn->db) {
        if (m_transDepth > 0) sqlite3_exec(m_conn->db, "ROLLBACK", nullptr, nullptr, nullptr);
        closeStatementCache(m_conn->db);
        sqlite3_close_v2(m_conn->db);
        m_conn->db = nullptr;
    }
    m_conn.reset();
    m_transDepth = 0;
}

bool Database::isOpen() const {
    return m_conn && m_conn->db;
}
QString Database::path() const {
    return m_path;
}
sqlite3* Database::handle() const {
    return m_conn ? m_conn->db : nullptr;
}

QStringList Database::tableNames() const {
    Statement st(handle(),
                 QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' AND name NOT "
                                "LIKE 'sqlite_%' ORDER BY name"),
                 kSource);
    QStringList names;
    while (st.step())
        names << st.column(0).toString();
    return names;
}

bool Database::hasTable(const QString& table) const {
    for (const QString& name : tableNames())
        if (name.compare(table, Qt::CaseInsensitive) == 0) return true;
    return false;
}

void Database::createTextTable(const QString& table, const QString& textColumn, int size) {
    if (hasTable(table)) raiseError(3010, kSource, QStringLiteral("Table '%1' already exists.").arg(table));
    execute(QStringLiteral("CREATE TABLE %1 (%2 TEXT(%3))")
                .arg(quoteName(table), quoteName(textColumn))
                .arg(size));
}

int Database::execute(const QString& sql) {
    return execute(sql, {});
}

int Database::execute(const QString& sql, const QVariantList& params) {
    Statement st(handle(), sql, kSource);
    st.bindAll(params);
    while (st.step()) {
    }
    int changed = sqlite3_changes(handle());
    if (st.isSchemaChange()) renumberTransaction(*m_conn);
    if (!st.tail().isEmpty()) changed += execute(st.tail(), {}); // the statements behind the first
    return changed;
}

void Database::executeScript(const QString& sql) {
    runStatementHook(handle(), sql);
    if (m_conn) renumberTransaction(*m_conn); // a script may change the schema
    const QByteArray utf8 = rewriteJetSql(sql).toUtf8();
    char* message = nullptr;
    const int rc = sqlite3_exec(handle(), utf8.constData(), nullptr, nullptr, &message);
    sqlite3_free(message);
    // A script may change the schema, even when a later statement of it fails.
    if (rc != SQLITE_OK) {
        try {
            raiseSqliteError(handle(), rc, sql, kSource);
        } catch (...) {
            clearStatementCache(handle());
            throw;
        }
    }
    clearStatementCache(handle());
}

std::unique_ptr<Recordset> Database::openRecordset(const QString& tableOrSql, RecordsetType type) {
    if (!isOpen())
        raiseError(3420, kSource, QStringLiteral("Object invalid or no longer set: the database is closed."));
    return std::unique_ptr<Recordset>(new Recordset(m_conn, tableOrSql, type));
}

QVariant Database::scalar(const QString& sql) {
    Statement st(handle(), sql, kSource);
    return st.step() ? st.column(0) : QVariant();
}

QVariantList Database::firstRow(const QString& sql) {
    Statement st(handle(), sql, kSource);
    QVariantList values;
    if (st.step()) {
        const int n = sqlite3_column_count(st.get());
        for (int i = 0; i < n; ++i)
            values << st.column(i);
    }
    return values;
}

QVariantList Database::firstColumn(const QString& sql) {
    Statement st(handle(), sql, kSource);
    QVariantList values;
    while (st.step())
        values << st.column(0);
    return values;
}

qint64 Database::lastInsertRowId() const {
    return sqlite3_last_insert_rowid(handle());
}

Database::ChangeMark Database::changeMark() const {
    ChangeMark mark;
    if (!isOpen() || m_transDepth == 0 || sqlite3_get_autocommit(handle())) return mark;
    mark.transaction = m_conn->transaction;
    mark.changes = sqlite3_total_changes64(handle());
    return mark;
}

void Database::beginTrans() {
    if (m_transDepth == 0) {
        transactionControl(handle(), QStringLiteral("BEGIN"));
        m_conn->transaction = nextTransaction();
    } else {
        transactionControl(handle(), QStringLiteral("SAVEPOINT ql_%1").arg(m_transDepth));
    }
    ++m_transDepth;
}

void Database::beginWriteTrans() {
    if (m_transDepth > 0) {
        beginTrans();
        return;
    }
    transactionControl(handle(), QStringLiteral("BEGIN IMMEDIATE"));
    m_conn->transaction = nextTransaction();
    ++m_transDepth;
}

void Database::commitTrans() {
    if (m_transDepth == 0)
        raiseError(3034, kSource,
                   QStringLiteral("You tried to commit or rollback a transaction without first "
                                  "beginning a transaction."));
    --m_transDepth;
    if (m_transDepth == 0) {
        transactionControl(handle(), QStringLiteral("COMMIT"));
        m_conn->transaction = 0;
    } else {
        transactionControl(handle(), QStringLiteral("RELEASE ql_%1").arg(m_transDepth));
    }
}

void Database::rollback() {
    if (m_transDepth == 0)
        raiseError(3034, kSource,
                   QStringLiteral("You tried to commit or rollback a transaction without first "
                                  "beginning a transaction."));
    --m_transDepth;
    if (m_transDepth == 0) {
        transactionControl(handle(), QStringLiteral("ROLLBACK"));
        m_conn->transaction = 0;
    } else {
        // Back to a savepoint: no rollback hook runs, but rows may be as they were.
        transactionControl(handle(), QStringLiteral("ROLLBACK TO ql_%1; RELEASE ql_%1").arg(m_transDepth));
        renumberTransaction(*m_conn);
    }
}

bool Database::inTransaction() const {
    return m_transDepth > 0;
}

int Database::userVersion() const {
    Statement st(handle(), QStringLiteral("PRAGMA user_version"), kSource);
    return st.step() ? st.column(0).toInt() : 0;
}

void Database::setUserVersion(int version) {
    executeScript(QStringLiteral("PRAGMA user_version=%1").arg(version));
}

} // namespace ql
