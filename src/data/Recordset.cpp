#include "Recordset.h"
#include "Database.h"
#include "FieldValue.h"
#include "QueryFields.h"
#include "SqlSupport.h"
#include "runtime/VbError.h"
#include <QHash>
#include <QMutex>
#include <QRegularExpression>
#include <vector>

namespace ql {

namespace {

const QString kSource = QStringLiteral("DAO.Recordset");
const QString kRowidColumn = QStringLiteral("ql_rowid_");

struct Row {
    QVariantList values; // stored form
    qint64 rowid = 0;
    bool deleted = false;
    bool counted = false; // visited or added: part of RecordCount
    bool stale = false;   // written: read back from the table when its values are next asked for
};

enum class EditMode { None, Edit, AddNew };

// Whether the text starts (after white space) with the word SELECT, WITH or VALUES.
bool isSelect(const QString& text) {
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    qsizetype end = i;
    while (end < text.size() && (text.at(end).isLetterOrNumber() || text.at(end) == u'_'))
        ++end;
    const QStringView word = QStringView(text).mid(i, end - i);
    for (const char* keyword : {"SELECT", "WITH", "VALUES"})
        if (word.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0) return true;
    return false;
}

// The pattern of "Table alias" / "Table AS alias" for a table, compiled once per table name.
QRegularExpression aliasPattern(const QString& table) {
    static QMutex mutex;
    static QHash<QString, QRegularExpression> patterns;
    QMutexLocker lock(&mutex);
    auto it = patterns.find(table);
    if (it == patterns.end()) {
        if (patterns.size() >= 256) patterns.clear();
        it = patterns.insert(table, QRegularExpression(QStringLiteral(R"(\b%1\]?\s+(?:AS\s+)?([A-Za-z_]\w*))")
                                                           .arg(QRegularExpression::escape(table)),
                                                       QRegularExpression::CaseInsensitiveOption));
    }
    return it.value();
}

[[noreturn]] void noCurrentRecord() {
    raiseError(err::NoCurrentRecord, kSource, QStringLiteral("No current record."));
}

} // namespace

struct Recordset::Impl {
    std::shared_ptr<Connection> conn;
    QString source; // what the caller gave
    RecordsetType type;
    bool closed = false;

    QString table; // the table changes go to; empty when read-only
    std::vector<QueryField> fields;
    // Names asked for, with the index each found; cleared when the fields are read again.
    mutable QHash<QString, int> nameIndex;
    std::vector<Row> rows;
    int pos = -1;
    bool noMatch = false;
    int lastModified = -1;

    EditMode mode = EditMode::None;
    QVariantList buffer;
    std::vector<bool> dirty;

    sqlite3* db() const {
        if (closed || !conn || !conn->db)
            raiseError(3420, kSource, QStringLiteral("Object invalid or no longer set."));
        return conn->db;
    }

    int rowCount() const { return int(rows.size()); }
    bool empty() const {
        for (const Row& r : rows)
            if (!r.deleted) return false;
        return true;
    }
    int nextLive(int from) const {
        int i = from;
        while (i < rowCount() && rows[i].deleted)
            ++i;
        return i;
    }
    int prevLive(int from) const {
        int i = from;
        while (i >= 0 && rows[i].deleted)
            --i;
        return i;
    }
    void visit(int i) {
        pos = i;
        if (i >= 0 && i < rowCount()) rows[i].counted = true;
    }
    bool onRow() const { return pos >= 0 && pos < rowCount() && !rows[pos].deleted; }
    const Row& current() const {
        if (!onRow()) noCurrentRecord();
        return rows[pos];
    }
    // The row with its values as stored, read back first when it was written since.
    Row& fresh(int i) {
        Row& row = rows[i];
        if (row.stale) {
            refreshRow(row);
            row.stale = false;
        }
        return row;
    }
    void dropEdit() {
        mode = EditMode::None;
        buffer.clear();
        dirty.clear();
    }

    void requireDynaset() const {
        if (type != RecordsetType::Dynaset || table.isEmpty())
            raiseError(3027, kSource, QStringLiteral("Cannot update. Database or object is read-only."));
    }
    void load();
    void readAll(Statement& st, int firstField);
    QString updatableSql(const QString& sql, const QString& baseTable, const QString& name) const;
    void refreshRow(Row& row);
    QVariantList defaultsOfTable();

    // Worked out once per load from the fields and the table: the statement that reads a row back
    // (with the field of each column), and the statement that evaluates the defaults.
    bool refreshKnown = false;
    QString refreshSql;
    std::vector<int> refreshFields;
    bool defaultsKnown = false;
    QString defaultsSql;
    std::vector<int> defaultFields;
    // The last INSERT and UPDATE texts with the changed fields they were made for.
    std::vector<bool> insertDirty, updateDirty;
    QString insertSql, updateSql;
};

void Recordset::Impl::readAll(Statement& st, int firstField) {
    const int n = sqlite3_column_count(st.get());
    fields = readQueryFields(st.get(), firstField);
    nameIndex.clear();
    rows.clear();
    while (st.step()) {
        Row r;
        if (firstField > 0) r.rowid = st.column(0).toLongLong();
        r.values.reserve(n - firstField);
        for (int i = firstField; i < n; ++i)
            r.values << st.column(i);
        rows.push_back(std::move(r));
    }
    // A computed column takes its type from its values.
    for (size_t c = 0; c < fields.size(); ++c) {
        QueryField& f = fields[c];
        if (f.typeKnown) continue;
        bool anyReal = false, anyInt = false;
        for (const Row& r : rows) {
            const int t = r.values[int(c)].typeId();
            anyReal |= t == QMetaType::Double;
            anyInt |= t == QMetaType::LongLong;
        }
        f.type = anyReal ? FieldType::Double : anyInt ? FieldType::Long : FieldType::Text;
    }
}

// The query with the rowid of its base table in front, or empty when the rows cannot be traced back to
// single rows of that table.
QString Recordset::Impl::updatableSql(const QString& sql, const QString& baseTable,
                                      const QString& name) const {
    static const QRegularExpression head(QStringLiteral(R"(^\s*SELECT\s+(DISTINCTROW\s+|ALL\s+)?)"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression aggregate(QStringLiteral(R"(\b(GROUP\s+BY|DISTINCT|UNION)\b)"),
                                              QRegularExpression::CaseInsensitiveOption);
    const auto m = head.match(sql);
    if (!m.hasMatch() || aggregate.match(sql.mid(m.capturedEnd())).hasMatch()) return QString();
    return sql.left(m.capturedEnd()) + name + QStringLiteral(".rowid AS ") + kRowidColumn +
           QStringLiteral(", ") + sql.mid(m.capturedEnd());
}

void Recordset::Impl::load() {
    sqlite3* handle = db();
    nameIndex.clear();
    rows.clear();
    table.clear();
    pos = -1;
    noMatch = false;
    lastModified = -1;
    dropEdit();
    refreshKnown = false;
    defaultsKnown = false;
    insertDirty.clear();
    updateDirty.clear();

    QString sql = source.trimmed();
    if (sql.endsWith(u';')) sql.chop(1);
    if (!isSelect(sql)) {
        const QString name = bareName(sql);
        const QString text =
            QStringLiteral("SELECT rowid AS %1, * FROM %2").arg(kRowidColumn, quoteName(name));
        Statement st(handle, text, kSource);
        readAll(st, 1);
        if (type == RecordsetType::Dynaset) table = fields.empty() ? name : fields.front().table;
        if (table.isEmpty() && type == RecordsetType::Dynaset) table = name;
    } else {
        QString baseTable;
        {
            Statement probe(handle, sql, kSource);
            if (type == RecordsetType::Dynaset) {
                const int n = sqlite3_column_count(probe.get());
                for (int i = 0; i < n && baseTable.isEmpty(); ++i)
                    if (const char* t = sqlite3_column_table_name(probe.get(), i))
                        baseTable = QString::fromUtf8(t);
            }
            if (baseTable.isEmpty()) {
                readAll(probe, 0);
            }
        }
        if (!baseTable.isEmpty()) {
            // The table by its name, else by the alias the query gives it.
            QStringList names{quoteName(baseTable)};
            static const QRegularExpression keyword(
                QStringLiteral("^(WHERE|INNER|LEFT|RIGHT|CROSS|JOIN|ON|ORDER|GROUP|LIMIT|UNION|AS)$"),
                QRegularExpression::CaseInsensitiveOption);
            for (auto it = aliasPattern(baseTable).globalMatch(sql); it.hasNext();) {
                const QString a = it.next().captured(1);
                if (!keyword.match(a).hasMatch()) names << a;
            }
            bool done = false;
            for (const QString& name : names) {
                const QString withRowid = updatableSql(sql, baseTable, name);
                if (withRowid.isEmpty() || done) continue;
                try {
                    Statement st(handle, withRowid, kSource);
                    readAll(st, 1);
                    table = baseTable;
                    done = true;
                } catch (const VbError&) {
                    // Not the name the query reaches the table by; without one the rows stay read-only.
                }
            }
            if (!done) {
                Statement st(handle, sql, kSource);
                readAll(st, 0);
            }
        }
    }
    if (!rows.empty()) visit(0);
}

void Recordset::Impl::refreshRow(Row& row) {
    if (!refreshKnown) {
        QStringList cols;
        refreshFields.clear();
        for (size_t i = 0; i < fields.size(); ++i) {
            if (!fields[i].origin.isEmpty() && fields[i].table.compare(table, Qt::CaseInsensitive) == 0) {
                cols << quoteName(fields[i].origin);
                refreshFields.push_back(int(i));
            }
        }
        refreshSql =
            cols.isEmpty()
                ? QString()
                : QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?").arg(cols.join(u','), quoteName(table));
        refreshKnown = true;
    }
    if (refreshSql.isEmpty()) return;
    Statement st(db(), refreshSql, kSource);
    st.bind(1, row.rowid);
    if (st.step()) {
        for (size_t k = 0; k < refreshFields.size(); ++k)
            row.values[refreshFields[k]] = st.column(int(k));
    }
}

QVariantList Recordset::Impl::defaultsOfTable() {
    sqlite3* handle = db();
    if (!defaultsKnown) {
        // The table-valued form is read when run, so its prepared statement can be kept.
        QString name = table;
        name.replace(u'\'', QLatin1String("''"));
        Statement info(handle,
                       QStringLiteral("SELECT name, dflt_value FROM pragma_table_info('%1')").arg(name),
                       kSource);
        QStringList expressions;
        defaultFields.clear();
        while (info.step()) {
            const QString column = info.column(0).toString();
            const QVariant dflt = info.column(1);
            if (dflt.isNull()) continue;
            for (int i = 0; i < int(fields.size()); ++i) {
                if (fields[i].table.compare(table, Qt::CaseInsensitive) == 0 &&
                    fields[i].origin.compare(column, Qt::CaseInsensitive) == 0) {
                    expressions << u'(' + dflt.toString() + u')';
                    defaultFields.push_back(i);
                }
            }
        }
        // The expressions are evaluated at each new row, all in one statement.
        defaultsSql = expressions.isEmpty() ? QString() : QStringLiteral("SELECT ") + expressions.join(u',');
        defaultsKnown = true;
    }
    QVariantList values;
    for (int i = 0; i < int(fields.size()); ++i)
        values << QVariant();
    if (defaultsSql.isEmpty()) return values;
    Statement value(handle, defaultsSql, kSource);
    if (value.step()) {
        for (size_t k = 0; k < defaultFields.size(); ++k)
            values[defaultFields[k]] = value.column(int(k));
    }
    return values;
}

Recordset::Recordset(std::shared_ptr<Connection> conn, const QString& tableOrSql, RecordsetType type)
    : d(std::make_unique<Impl>()) {
    d->conn = std::move(conn);
    d->source = tableOrSql;
    d->type = type;
    d->load();
}

Recordset::~Recordset() = default;

bool Recordset::EOF_() const {
    return d->empty() || d->pos >= d->rowCount();
}
bool Recordset::BOF() const {
    return d->empty() || d->pos < 0;
}

int Recordset::RecordCount() const {
    int n = 0;
    for (const Row& r : d->rows)
        n += (r.counted && !r.deleted) ? 1 : 0;
    return n;
}

void Recordset::MoveFirst() {
    d->db();
    d->dropEdit();
    if (d->empty()) noCurrentRecord();
    d->visit(d->nextLive(0));
}

void Recordset::MoveNext() {
    d->db();
    d->dropEdit();
    if (EOF_()) noCurrentRecord();
    d->visit(d->nextLive(d->pos + 1));
}

void Recordset::MovePrevious() {
    d->db();
    d->dropEdit();
    if (BOF()) noCurrentRecord();
    d->visit(d->prevLive(d->pos - 1));
}

void Recordset::MoveLast() {
    d->db();
    d->dropEdit();
    if (d->empty()) noCurrentRecord();
    for (Row& r : d->rows)
        r.counted = true;
    d->visit(d->prevLive(d->rowCount() - 1));
}

namespace {

// Evaluates a criterion on one row at a time: the row's values are bound as a one-row table whose
// columns bear the query's field names.
class CriterionTest {
public:
    CriterionTest(sqlite3* db, const std::vector<QueryField>& fields, const QString& table,
                  const QString& criterion) {
        QStringList cols;
        QStringList seen;
        for (size_t i = 0; i < fields.size(); ++i) {
            QString name = fields[i].name;
            if (seen.contains(name, Qt::CaseInsensitive))
                name = fields[i].table + u'.' + name; // the later of two equal names
            seen << name;
            cols << QStringLiteral("?%1 AS %2").arg(i + 1).arg(quoteName(name));
        }
        if (cols.isEmpty()) cols << QStringLiteral("NULL AS ql_none_");
        const QString alias = table.isEmpty() ? QStringLiteral("ql_row_") : quoteName(table);
        m_st = std::make_unique<Statement>(db,
                                           QStringLiteral("SELECT 1 FROM (SELECT %2) AS %3 WHERE (%1)")
                                               .arg(criterion, cols.join(u','), alias),
                                           kSource);
    }
    bool matches(const QVariantList& values) {
        m_st->reset();
        m_st->bindAll(values);
        return m_st->step();
    }

private:
    std::unique_ptr<Statement> m_st;
};

} // namespace

void Recordset::FindFirst(const QString& criterion) {
    CriterionTest test(d->db(), d->fields, d->table, criterion);
    d->dropEdit();
    for (int i = 0; i < d->rowCount(); ++i) {
        if (!d->rows[i].deleted && test.matches(d->fresh(i).values)) {
            d->noMatch = false;
            d->visit(i);
            return;
        }
    }
    d->noMatch = true;
}

void Recordset::FindNext(const QString& criterion) {
    CriterionTest test(d->db(), d->fields, d->table, criterion);
    d->dropEdit();
    for (int i = std::max(d->pos + 1, 0); i < d->rowCount(); ++i) {
        if (!d->rows[i].deleted && test.matches(d->fresh(i).values)) {
            d->noMatch = false;
            d->visit(i);
            return;
        }
    }
    d->noMatch = true;
}

bool Recordset::NoMatch() const {
    return d->noMatch;
}

int Recordset::fieldCount() const {
    return int(d->fields.size());
}

QString Recordset::fieldName(int index) const {
    if (index < 0 || index >= fieldCount())
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection."));
    return d->fields[index].name;
}

FieldType Recordset::fieldType(int index) const {
    if (index < 0 || index >= fieldCount())
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection."));
    return d->fields[index].type;
}

int Recordset::fieldIndex(const QString& name) const {
    if (auto known = d->nameIndex.constFind(name); known != d->nameIndex.constEnd()) return *known;
    const int i = lookUpField(d->fields, name);
    if (i >= 0) d->nameIndex.insert(name, i);
    return i;
}

QVariant Recordset::value(const QString& name) const {
    const int i = fieldIndex(name);
    if (i < 0)
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection: '%1'.").arg(name));
    return value(i);
}

QVariant Recordset::value(int index) const {
    d->db();
    const FieldType t = fieldType(index);
    if (d->mode != EditMode::None) return typedValue(t, d->buffer[index]);
    d->current();
    return typedValue(t, d->fresh(d->pos).values[index]);
}

void Recordset::setValue(const QString& name, const QVariant& v) {
    const int i = fieldIndex(name);
    if (i < 0)
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection: '%1'.").arg(name));
    setValue(i, v);
}

void Recordset::setValue(int index, const QVariant& v) {
    const FieldType t = fieldType(index);
    if (d->mode == EditMode::None)
        raiseError(3020, kSource, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    const QueryField& f = d->fields[index];
    if (f.origin.isEmpty() || f.table.compare(d->table, Qt::CaseInsensitive) != 0)
        raiseError(3164, kSource, QStringLiteral("Field '%1' cannot be updated.").arg(f.name));
    d->buffer[index] = storedValue(t, v);
    d->dirty[index] = true;
}

void Recordset::AddNew() {
    d->db();
    d->requireDynaset();
    d->dropEdit();
    d->buffer = d->defaultsOfTable();
    d->dirty.assign(d->fields.size(), false);
    d->mode = EditMode::AddNew;
}

void Recordset::Edit() {
    d->db();
    d->requireDynaset();
    d->current();
    const Row& row = d->fresh(d->pos);
    d->dropEdit();
    d->buffer = row.values;
    d->dirty.assign(d->fields.size(), false);
    d->mode = EditMode::Edit;
}

void Recordset::Update() {
    sqlite3* db = d->db();
    if (d->mode == EditMode::None)
        raiseError(3020, kSource, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    QVariantList params;
    for (int i = 0; i < fieldCount(); ++i)
        if (d->dirty[i]) params << d->buffer[i];
    // The columns of the statement, by name, in field order.
    auto columns = [&] {
        QStringList cols;
        for (int i = 0; i < fieldCount(); ++i)
            if (d->dirty[i]) cols << quoteName(d->fields[i].origin);
        return cols;
    };
    if (d->mode == EditMode::AddNew) {
        if (d->insertDirty.empty() || d->insertDirty != d->dirty) {
            const QStringList cols = columns();
            if (cols.isEmpty()) {
                d->insertSql = QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoteName(d->table));
            } else {
                QStringList marks;
                for (int i = 0; i < cols.size(); ++i)
                    marks << QStringLiteral("?");
                d->insertSql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                   .arg(quoteName(d->table), cols.join(u','), marks.join(u','));
            }
            d->insertDirty = d->dirty;
        }
        Statement st(db, d->insertSql, kSource);
        st.bindAll(params);
        st.step();
        Row row;
        row.rowid = sqlite3_last_insert_rowid(db);
        row.values = d->buffer;
        row.counted = true;
        row.stale = true; // most rows added are never read again
        d->rows.push_back(std::move(row));
        d->lastModified = d->rowCount() - 1;
    } else {
        Row& row = d->rows[d->pos];
        if (!params.isEmpty()) {
            if (d->updateDirty.empty() || d->updateDirty != d->dirty) {
                QStringList sets;
                for (const QString& c : columns())
                    sets << c + QStringLiteral(" = ?");
                d->updateSql = QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                                   .arg(quoteName(d->table), sets.join(u','));
                d->updateDirty = d->dirty;
            }
            Statement st(db, d->updateSql, kSource);
            params << row.rowid;
            st.bindAll(params);
            st.step();
            row.values = d->buffer;
            row.stale = true;
        }
        d->lastModified = d->pos;
    }
    d->dropEdit();
}

void Recordset::CancelUpdate() {
    if (d->mode == EditMode::None)
        raiseError(3020, kSource, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    d->dropEdit();
}

bool Recordset::isEditing() const {
    return d->mode != EditMode::None;
}

void Recordset::Delete() {
    sqlite3* db = d->db();
    d->requireDynaset();
    Row& row = const_cast<Row&>(d->current());
    d->dropEdit();
    Statement st(db, QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(quoteName(d->table)), kSource);
    st.bind(1, row.rowid);
    st.step();
    row.deleted = true;
}

QByteArray Recordset::Bookmark() const {
    d->current();
    return QByteArray::number(d->pos);
}

void Recordset::setBookmark(const QByteArray& bookmark) {
    bool ok = false;
    const int i = bookmark.toInt(&ok);
    if (!ok || i < 0 || i >= d->rowCount() || d->rows[i].deleted)
        raiseError(3159, kSource, QStringLiteral("Not a valid bookmark."));
    d->dropEdit();
    d->visit(i);
}

QByteArray Recordset::LastModified() const {
    return d->lastModified < 0 ? QByteArray() : QByteArray::number(d->lastModified);
}

void Recordset::Requery() {
    d->load();
}

void Recordset::Close() {
    d->dropEdit();
    d->rows.clear();
    d->closed = true;
}

} // namespace ql
