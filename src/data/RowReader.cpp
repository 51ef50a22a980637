#include "RowReader.h"
#include "Database.h"
#include "FieldValue.h"
#include "QueryFields.h"
#include "SqlSupport.h"
#include "runtime/Currency.h"
#include "runtime/VbError.h"

namespace ql {

namespace {
const QString kSource = QStringLiteral("DAO.Recordset");
}

struct RowReader::Impl {
    Statement statement;
    std::vector<QueryField> fields;
    bool onRow = false;
    Impl(sqlite3* db, const QString& sql) : statement(db, sql, kSource) {}
};

RowReader::RowReader(Database& database, const QString& sql)
    : d(std::make_unique<Impl>(database.handle(), sql)) {
    d->fields = readQueryFields(d->statement.get(), 0);
}

RowReader::~RowReader() = default;

bool RowReader::next() {
    d->onRow = d->statement.step();
    return d->onRow;
}

int RowReader::fieldCount() const {
    return int(d->fields.size());
}

int RowReader::fieldIndex(const QString& name) const {
    return lookUpField(d->fields, name);
}

int RowReader::requireField(const QString& name) const {
    const int i = fieldIndex(name);
    if (i < 0)
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection: '%1'.").arg(name));
    return i;
}

QVariant RowReader::value(int index) const {
    if (index < 0 || index >= fieldCount())
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection."));
    if (!d->onRow) raiseError(err::NoCurrentRecord, kSource, QStringLiteral("No current record."));
    const QueryField& f = d->fields[size_t(index)];
    sqlite3_stmt* s = d->statement.get();
    // The common pairs of column type and stored value, typed without the general conversion.
    if (f.typeKnown) {
        switch (sqlite3_column_type(s, index)) {
        case SQLITE_NULL:
            return QVariant();
        case SQLITE_INTEGER:
            if (f.type == FieldType::Long) return QVariant(qint32(sqlite3_column_int64(s, index)));
            [[fallthrough]];
        case SQLITE_FLOAT:
            if (f.type == FieldType::Currency)
                return QVariant::fromValue(Currency::fromDouble(sqlite3_column_double(s, index)));
            break;
        case SQLITE_TEXT: {
            const char* text = reinterpret_cast<const char*>(sqlite3_column_text(s, index));
            const int size = sqlite3_column_bytes(s, index);
            if (f.type == FieldType::Text || f.type == FieldType::Memo) return QString::fromUtf8(text, size);
            if (f.type == FieldType::Date) {
                const QDate date = storedIsoDate(text, size);
                if (date.isValid()) return date;
            }
            break;
        }
        }
    }
    const QVariant stored = d->statement.column(index);
    if (f.typeKnown) return typedValue(f.type, stored);
    switch (stored.typeId()) {
    case QMetaType::Double:
        return typedValue(FieldType::Double, stored);
    case QMetaType::LongLong:
        return typedValue(FieldType::Long, stored);
    default:
        return typedValue(FieldType::Text, stored);
    }
}

std::optional<Currency> RowReader::currency(int index) const {
    if (index < 0 || index >= fieldCount())
        raiseError(3265, kSource, QStringLiteral("Item not found in this collection."));
    if (!d->onRow) raiseError(err::NoCurrentRecord, kSource, QStringLiteral("No current record."));
    sqlite3_value* v = sqlite3_column_value(d->statement.get(), index);
    const QueryField& f = d->fields[size_t(index)];
    const int stored = sqlite3_value_type(v);
    const FieldType type = f.typeKnown                ? f.type
                           : stored == SQLITE_FLOAT   ? FieldType::Double
                           : stored == SQLITE_INTEGER ? FieldType::Long
                                                      : FieldType::Text;
    return storedCurrency(type, v);
}

bool RowReader::isNull(int index) const {
    if (!d->onRow) raiseError(err::NoCurrentRecord, kSource, QStringLiteral("No current record."));
    return sqlite3_column_type(d->statement.get(), index) == SQLITE_NULL;
}

} // namespace ql
