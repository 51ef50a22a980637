#include "SqlSupport.h"
#include "MediumCause.h"
#include "runtime/VbError.h"
#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QRegularExpression>
#include <list>
#include <unordered_map>

namespace ql {

namespace {

// Calls edit on each stretch of sql outside quoted strings and bracketed names, in order, and puts the
// stretches back with what edit made of them; edit also sees the text put together so far.
template <class Edit> QString editOutsideQuotes(const QString& sql, Edit edit) {
    QString out;
    QString plain;
    QChar quote; // the open quote or bracket, if any
    for (const QChar c : sql) {
        if (!quote.isNull()) {
            out += c;
            if ((quote == u'[' && c == u']') || (quote != u'[' && c == quote)) quote = QChar();
        } else if (c == u'\'' || c == u'"' || c == u'[') {
            out += edit(plain, out);
            plain.clear();
            quote = c;
            out += c;
        } else {
            plain += c;
        }
    }
    return out + edit(plain, out);
}

QString isoLiteral(const QRegularExpressionMatch& m) {
    QString iso = QStringLiteral("%1-%2-%3")
                      .arg(m.captured(3).toInt(), 4, 10, QLatin1Char('0'))
                      .arg(m.captured(1).toInt(), 2, 10, QLatin1Char('0'))
                      .arg(m.captured(2).toInt(), 2, 10, QLatin1Char('0'));
    const int h = m.captured(4).toInt(), mi = m.captured(5).toInt(), sec = m.captured(6).toInt();
    if (h || mi || sec)
        iso += QStringLiteral(" %1:%2:%3")
                   .arg(h, 2, 10, QLatin1Char('0'))
                   .arg(mi, 2, 10, QLatin1Char('0'))
                   .arg(sec, 2, 10, QLatin1Char('0'));
    return u'\'' + iso + u'\'';
}

QString replaceDateLiterals(const QString& text) {
    static const QRegularExpression literal(
        QStringLiteral(R"(#\s*(\d{1,2})/(\d{1,2})/(\d{4})(?:\s+(\d{1,2}):(\d{2})(?::(\d{2}))?)?\s*#)"));
    QString out;
    qsizetype at = 0;
    for (auto it = literal.globalMatch(text); it.hasNext();) {
        const auto m = it.next();
        out += text.mid(at, m.capturedStart() - at) + isoLiteral(m);
        at = m.capturedEnd();
    }
    return out + text.mid(at);
}

} // namespace

QString rewriteDateLiterals(const QString& sql) {
    return editOutsideQuotes(sql,
                             [](const QString& plain, const QString&) { return replaceDateLiterals(plain); });
}

namespace {

QString rewriteJetSqlUncached(const QString& sql) {
    static const QRegularExpression nullComparison(QStringLiteral(R"((<>|<=|>=|!=|==|=|<|>)\s*NULL\b)"),
                                                   QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression distinctRow(QStringLiteral(R"(\bDISTINCTROW\s+)"),
                                                QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression deleteAll(QStringLiteral(R"(\bDELETE\s+(\w+\.)?\*\s+FROM\b)"),
                                              QRegularExpression::CaseInsensitiveOption);
    // Only conditions are touched: "SET x = NULL" before a WHERE stays an assignment. Each statement
    // of a script starts outside any condition.
    static const QRegularExpression boundary(QStringLiteral(R"(\b(WHERE|ON|HAVING)\b|;)"),
                                             QRegularExpression::CaseInsensitiveOption);
    bool inCondition = false;
    return editOutsideQuotes(sql, [&](const QString& stretch, const QString& before) {
        QString plain = replaceDateLiterals(stretch);
        plain.replace(distinctRow, QString());
        plain.replace(deleteAll, QStringLiteral("DELETE FROM"));
        if (plain == QLatin1String("!") && before.endsWith(u']')) return QStringLiteral(".");
        QString out;
        qsizetype at = 0;
        auto piece = [&](qsizetype end) {
            QString part = plain.mid(at, end - at);
            if (inCondition) part.replace(nullComparison, QStringLiteral("IN ()"));
            out += part;
            at = end;
        };
        for (auto it = boundary.globalMatch(plain); it.hasNext();) {
            const auto m = it.next();
            piece(m.capturedStart());
            inCondition = m.captured(0) != QLatin1String(";");
        }
        piece(plain.size());
        return out;
    });
}

} // namespace

// The rewrite is a pure function of the text, and the same few texts come again and again.
QString rewriteJetSql(const QString& sql) {
    static QMutex mutex;
    static QHash<QString, QString> memo;
    {
        QMutexLocker lock(&mutex);
        const auto it = memo.constFind(sql);
        if (it != memo.constEnd()) return it.value();
    }
    QString out = rewriteJetSqlUncached(sql);
    QMutexLocker lock(&mutex);
    if (memo.size() >= 4096) memo.clear(); // texts with literal keys would otherwise pile up
    memo.insert(sql, out);
    return out;
}

namespace {

QString afterColon(const QString& message) {
    const auto p = message.indexOf(QLatin1String(": "));
    return p < 0 ? QString() : message.mid(p + 2).trimmed();
}

bool isDelete(const QString& sql) {
    return sql.trimmed().startsWith(QLatin1String("delete"), Qt::CaseInsensitive);
}

} // namespace

void raiseSqliteError(sqlite3* db, int rc, const QString& sql, const QString& source) {
    const QString message =
        db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
    const int extended = db ? sqlite3_extended_errcode(db) : rc;
    const int primary = rc & 0xff;
    const QString tail = QStringLiteral(" (%1)").arg(message);

    if (primary == SQLITE_CONSTRAINT) {
        switch (extended) {
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_PRIMARYKEY:
            raiseError(err::DuplicateKey, source,
                       QStringLiteral("The changes you requested to the table were not successful because "
                                      "they would create duplicate values in the index or primary key: %1.")
                           .arg(afterColon(message)));
        case SQLITE_CONSTRAINT_FOREIGNKEY:
            if (isDelete(sql))
                raiseError(err::RowInUse, source,
                           QStringLiteral("The record cannot be deleted or changed because another table "
                                          "includes related records."));
            raiseError(3201, source,
                       QStringLiteral("You cannot add or change a record because a related record is "
                                      "required in another table."));
        case SQLITE_CONSTRAINT_NOTNULL:
            raiseError(err::RequiredField, source,
                       QStringLiteral("The field '%1' cannot contain a Null value because it is required. "
                                      "Enter a value in this field.")
                           .arg(afterColon(message)));
        default:
            raiseError(3317, source,
                       QStringLiteral("One or more values are prohibited by the validation rule") + tail);
        }
    }
    if (primary == SQLITE_NOTADB || primary == SQLITE_CORRUPT) {
        const QString file = db ? QString::fromUtf8(sqlite3_db_filename(db, "main")) : QString();
        raiseError(err::NotADatabase, source,
                   QStringLiteral("Cannot open database '%1'. It is not a database this program recognizes, "
                                  "or the file is corrupt.")
                       .arg(file));
    }
    if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED)
        raiseError(3260, source,
                   QStringLiteral("Couldn't update; currently locked by another program or process") +
                       tail + u'.');
    if (primary == SQLITE_FULL || primary == SQLITE_IOERR || primary == SQLITE_READONLY || primary == SQLITE_PERM ||
        primary == SQLITE_CANTOPEN) {
        const QString file = db ? QString::fromUtf8(sqlite3_db_filename(db, "main")) : QString();
        switch (primary == SQLITE_FULL ? MediumCause::Full : mediumCause(file)) {
        case MediumCause::Full:
            raiseError(3026, source, QStringLiteral("Not enough space on disk: the changes were not written."));
        case MediumCause::ReadOnly:
            raiseError(3051, source,
                       QStringLiteral("The database file '%1' is read-only, or on a medium that can't be written: "
                                      "the changes were not written.")
                           .arg(file));
        case MediumCause::NotAllowed:
            raiseError(3051, source,
                       QStringLiteral("You may not write to the database file '%1' or its folder: the changes "
                                      "were not written.")
                           .arg(file));
        case MediumCause::None:
            break;
        }
    }
    if (primary == SQLITE_READONLY || primary == SQLITE_PERM || primary == SQLITE_CANTOPEN)
        raiseError(3051, source,
                   QStringLiteral("The database file cannot be opened or written; check its permissions") +
                       tail + u'.');
    if (message.startsWith(QLatin1String("no such table"))) {
        raiseError(err::MissingObject, source,
                   QStringLiteral("Cannot find the input table or query '%1'. Make sure it exists and that "
                                  "its name is spelled correctly.")
                       .arg(afterColon(message)));
    }
    if (message.startsWith(QLatin1String("no such column"))) {
        raiseError(err::MissingObject, source,
                   QStringLiteral("Cannot find the field '%1'. Make sure it exists and that its name is "
                                  "spelled correctly.")
                       .arg(afterColon(message)));
    }
    if (message.contains(QLatin1String("syntax error")) ||
        message.startsWith(QLatin1String("unrecognized")) ||
        message.startsWith(QLatin1String("incomplete input"))) {
        raiseError(3075, source,
                   QStringLiteral("Syntax error in query expression '%1'").arg(sql) + tail + u'.');
    }
    raiseError(3000 + primary, source, message + QStringLiteral(" in '%1'.").arg(sql));
}

void raiseOpenFailure(const QString& path, int rc) {
    const QString source = QStringLiteral("DAO.Database");
    const int primary = rc & 0xff;
    if (primary == SQLITE_CANTOPEN || primary == SQLITE_IOERR || primary == SQLITE_READONLY ||
        primary == SQLITE_PERM || primary == SQLITE_FULL) {
        switch (mediumCause(path)) {
        case MediumCause::ReadOnly:
            rc = SQLITE_READONLY;
            break;
        case MediumCause::Full:
            rc = SQLITE_FULL;
            break;
        case MediumCause::NotAllowed:
            raiseError(3051, source,
                       QStringLiteral("You may not write to the database file '%1' or its folder; check their "
                                      "permissions.")
                           .arg(path));
        case MediumCause::None:
            break;
        }
    }
    switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        raiseError(3260, source,
                   QStringLiteral("The database file '%1' is locked by another program or process; try "
                                  "again when it has finished.")
                       .arg(path));
    case SQLITE_READONLY:
    case SQLITE_PERM:
        raiseError(3051, source,
                   QStringLiteral("The database file '%1' is read-only, or on a medium that can't be "
                                  "written.")
                       .arg(path));
    case SQLITE_FULL:
        raiseError(3026, source,
                   QStringLiteral("Not enough space on disk to open the database file '%1'.").arg(path));
    case SQLITE_CANTOPEN:
        raiseError(3051, source,
                   QStringLiteral("The database file '%1' cannot be opened; check that it exists and that "
                                  "you may write to it.")
                       .arg(path));
    default:
        raiseError(3000 + (rc & 0xff), source,
                   QStringLiteral("The database file '%1' cannot be read: %2.")
                       .arg(path, QString::fromUtf8(sqlite3_errstr(rc))));
    }
}

namespace {

struct IdleStatement {
    QString sql;
    sqlite3_stmt* stmt;
    QString tail;
};

// The idle statements of one connection, most recently used first.
class StatementCache {
public:
    sqlite3_stmt* take(const QString& sql, QString& tail) {
        const auto it = m_bySql.find(sql);
        if (it == m_bySql.end()) return nullptr;
        const auto entry = it.value();
        m_bySql.erase(it);
        sqlite3_stmt* stmt = entry->stmt;
        tail = entry->tail;
        m_lru.erase(entry);
        return stmt;
    }
    void put(const QString& sql, sqlite3_stmt* stmt, const QString& tail) {
        if (m_bySql.contains(sql)) { // a second copy made while the first was in use
            sqlite3_finalize(stmt);
            return;
        }
        m_lru.push_front({sql, stmt, tail});
        m_bySql.insert(sql, m_lru.begin());
        if (m_lru.size() > kCapacity) {
            m_bySql.remove(m_lru.back().sql);
            sqlite3_finalize(m_lru.back().stmt);
            m_lru.pop_back();
        }
    }
    void clear() {
        for (const IdleStatement& idle : m_lru)
            sqlite3_finalize(idle.stmt);
        m_lru.clear();
        m_bySql.clear();
    }

private:
    // Texts with literal keys come and go; the least recently used make room.
    static constexpr size_t kCapacity = 256;
    std::list<IdleStatement> m_lru;
    QHash<QString, std::list<IdleStatement>::iterator> m_bySql;
};

QMutex& cacheMutex() {
    static QMutex mutex;
    return mutex;
}

std::unordered_map<sqlite3*, StatementCache>& caches() {
    static std::unordered_map<sqlite3*, StatementCache> map;
    return map;
}

// The first word of the statement, upper case.
QByteArray firstWord(const QString& sql) {
    QByteArray word;
    for (const QChar c : sql) {
        if (c.isSpace() || c == u'(') {
            if (word.isEmpty()) continue;
            break;
        }
        if (!c.isLetter()) break;
        word += char(c.toUpper().toLatin1());
    }
    return word;
}

// Only these are kept: a PRAGMA may be evaluated when prepared, and changes of the schema are rare.
bool isReusable(const QByteArray& word) {
    return word == "SELECT" || word == "INSERT" || word == "UPDATE" || word == "DELETE" || word == "WITH" ||
           word == "REPLACE" || word == "VALUES";
}

bool changesSchema(const QByteArray& word) {
    return word == "CREATE" || word == "DROP" || word == "ALTER";
}

// The text with each whole number that stands right after a comparison (=, <>, !=, <, >, <=, >=), outside
// quotes and brackets, replaced by a parameter, and those numbers in order. False when the text has
// parameters of its own or no such number.
bool takeOutComparedNumbers(const QString& sql, QString& text, std::vector<long long>& numbers) {
    numbers.clear();
    const QChar* c = sql.constData();
    const qsizetype n = sql.size();
    qsizetype copied = 0; // sql up to here is in text
    for (qsizetype i = 0; i < n;) {
        const char16_t ch = c[i].unicode();
        if (ch == u'\'' || ch == u'"' || ch == u'[' || ch == u'`') {
            const char16_t close = ch == u'[' ? u']' : ch;
            ++i;
            while (i < n && c[i].unicode() != close)
                ++i;
            ++i;
            continue;
        }
        if (ch == u'?' || ch == u':' || ch == u'@' || ch == u'$') return false;
        if (ch != u'=' && ch != u'<' && ch != u'>' &&
            !(ch == u'!' && i + 1 < n && c[i + 1].unicode() == u'=')) {
            ++i;
            continue;
        }
        while (i < n && (c[i].unicode() == u'=' || c[i].unicode() == u'<' || c[i].unicode() == u'>' ||
                         c[i].unicode() == u'!'))
            ++i;
        while (i < n && c[i].unicode() == u' ')
            ++i;
        const qsizetype start = i;
        qsizetype k = i;
        if (k < n && c[k].unicode() == u'-') ++k;
        const qsizetype digits = k;
        while (k < n && c[k].unicode() >= u'0' && c[k].unicode() <= u'9' && k - digits < 18)
            ++k;
        const bool whole =
            k > digits &&
            (k == n || !(c[k].isLetterOrNumber() || c[k].unicode() == u'_' || c[k].unicode() == u'.'));
        if (!whole) continue;
        if (numbers.empty()) {
            text.clear();
            text.reserve(n);
        }
        text += QStringView(c + copied, start - copied);
        text += u'?';
        numbers.push_back(QStringView(c + start, k - start).toLongLong());
        copied = k;
        i = k;
    }
    if (numbers.empty()) return false;
    text += QStringView(c + copied, n - copied);
    return true;
}

} // namespace

void openStatementCache(sqlite3* db) {
    QMutexLocker lock(&cacheMutex());
    caches()[db];
}

void closeStatementCache(sqlite3* db) {
    QMutexLocker lock(&cacheMutex());
    const auto it = caches().find(db);
    if (it == caches().end()) return;
    it->second.clear();
    caches().erase(it);
}

void clearStatementCache(sqlite3* db) {
    QMutexLocker lock(&cacheMutex());
    const auto it = caches().find(db);
    if (it != caches().end()) it->second.clear();
}

// The text is kept as given (m_sql) and rewritten for the engine only by its shape: the compared
// numbers are taken out first, so that the rewrite is looked up once per shape, not per number.
Statement::Statement(sqlite3* db, const QString& sql, const QString& source)
    : m_db(db), m_sql(sql), m_source(source) {
    if (!db)
        raiseError(3420, source, QStringLiteral("Object invalid or no longer set: the database is closed."));
    const QByteArray word = firstWord(m_sql);
    m_schemaChange = changesSchema(word);
    QString shape;
    const bool reusable = isReusable(word);
    if (reusable && takeOutComparedNumbers(m_sql, shape, m_literals))
        m_key = rewriteJetSql(shape);
    else
        m_key = rewriteJetSql(m_sql);
    if (reusable) {
        QMutexLocker lock(&cacheMutex());
        const auto it = caches().find(db);
        if (it != caches().end()) {
            m_reusable = true;
            m_stmt = it->second.take(m_key, m_tail);
            if (m_stmt) {
                lock.unlock();
                bindLiterals();
                return;
            }
        }
    }
    auto prepare = [&](const QString& text) {
        const QByteArray utf8 = text.toUtf8();
        const char* tail = nullptr;
        const int rc = sqlite3_prepare_v2(db, utf8.constData(), int(utf8.size()), &m_stmt, &tail);
        m_tail.clear();
        if (tail && *tail) {
            m_tail = QString::fromUtf8(tail).trimmed();
            while (m_tail.startsWith(u';'))
                m_tail = m_tail.mid(1).trimmed();
        }
        return rc;
    };
    int rc = prepare(m_key);
    // A text of several statements, or one whose numbers don't all become parameters, is kept as written.
    if (!m_literals.empty() && (rc != SQLITE_OK || !m_tail.isEmpty() ||
                                sqlite3_bind_parameter_count(m_stmt) != int(m_literals.size()))) {
        sqlite3_finalize(m_stmt);
        m_stmt = nullptr;
        m_literals.clear();
        m_key = rewriteJetSql(m_sql);
        rc = prepare(m_key);
    }
    if (rc != SQLITE_OK) {
        sqlite3_finalize(m_stmt);
        m_stmt = nullptr;
        raiseSqliteError(db, rc, rewriteJetSql(m_sql), source);
    }
    bindLiterals();
}

void Statement::bindLiterals() {
    for (size_t i = 0; i < m_literals.size(); ++i)
        sqlite3_bind_int64(m_stmt, int(i + 1), m_literals[i]);
}

Statement::~Statement() {
    if (m_stmt && m_reusable) {
        sqlite3_reset(m_stmt);
        sqlite3_clear_bindings(m_stmt);
        QMutexLocker lock(&cacheMutex());
        const auto it = caches().find(m_db);
        if (it != caches().end()) { // else the connection was closed meanwhile
            it->second.put(m_key, m_stmt, m_tail);
            return;
        }
    }
    sqlite3_finalize(m_stmt);
    if (m_schemaChange) clearStatementCache(m_db);
}

namespace {
StatementHook& statementHook() {
    static StatementHook hook;
    return hook;
}
} // namespace

void setStatementHookForTesting(StatementHook hook) {
    statementHook() = std::move(hook);
}

void runStatementHook(sqlite3* db, const QString& sql) {
    if (statementHook()) statementHook()(db, sql);
}

bool Statement::step() {
    if (!m_stmt) return false;
    if (!m_started) {
        m_started = true;
        runStatementHook(m_db, m_sql);
    }
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    sqlite3_reset(m_stmt);
    raiseSqliteError(m_db, rc, rewriteJetSql(m_sql), m_source);
}

void Statement::reset() {
    m_started = false;
    if (m_stmt) {
        sqlite3_reset(m_stmt);
        sqlite3_clear_bindings(m_stmt);
        bindLiterals();
    }
}

void Statement::bind(int index, const QVariant& v) {
    if (!m_stmt) return;
    int rc = SQLITE_OK;
    if (!v.isValid() || v.isNull()) {
        rc = sqlite3_bind_null(m_stmt, index);
    } else {
        switch (v.typeId()) {
        case QMetaType::Bool:
            rc = sqlite3_bind_int(m_stmt, index, v.toBool() ? 1 : 0);
            break;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::UChar:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::Long:
            rc = sqlite3_bind_int64(m_stmt, index, v.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            rc = sqlite3_bind_double(m_stmt, index, v.toDouble());
            break;
        case QMetaType::QByteArray: {
            const QByteArray b = v.toByteArray();
            rc = sqlite3_bind_blob(m_stmt, index, b.constData(), int(b.size()), SQLITE_TRANSIENT);
            break;
        }
        default: {
            const QByteArray s = v.toString().toUtf8();
            rc = sqlite3_bind_text(m_stmt, index, s.constData(), int(s.size()), SQLITE_TRANSIENT);
        }
        }
    }
    if (rc != SQLITE_OK) raiseSqliteError(m_db, rc, rewriteJetSql(m_sql), m_source);
}

void Statement::bindAll(const QVariantList& values) {
    for (int i = 0; i < values.size(); ++i)
        bind(i + 1, values.at(i));
}

QVariant Statement::column(int i) const {
    switch (sqlite3_column_type(m_stmt, i)) {
    case SQLITE_INTEGER:
        return QVariant(qint64(sqlite3_column_int64(m_stmt, i)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(m_stmt, i));
    case SQLITE_TEXT:
        return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, i)),
                                          sqlite3_column_bytes(m_stmt, i)));
    case SQLITE_BLOB:
        return QVariant(QByteArray(static_cast<const char*>(sqlite3_column_blob(m_stmt, i)),
                                   sqlite3_column_bytes(m_stmt, i)));
    default:
        return QVariant();
    }
}

QString quoteName(const QString& name) {
    return u'[' + name + u']';
}

} // namespace ql
