#pragma once
// A query read once from its first row to its last, straight from SQLite: the cheap way through many
// rows that are only read. Values are typed as a Recordset's fields type them; a computed column takes
// its type from each value (Double for a real, Long for a whole number, else Text).
#include "Recordset.h"
#include "runtime/Currency.h"
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>

namespace ql {

class Database;

class RowReader {
public:
    // Prepares sql on database; failures raise as opening a Recordset does.
    RowReader(Database& database, const QString& sql);
    ~RowReader();
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    // Moves to the next row (the first at the first call); false when there is none.
    bool next();
    int fieldCount() const;
    // By name without regard to case, also "Table.Column"; -1 when absent.
    int fieldIndex(const QString& name) const;
    // The index of a name that must be there; a missing one raises 3265 as a Recordset does.
    int requireField(const QString& name) const;
    // The current row's value, typed by its column; raises 3021 when there is no current row.
    QVariant value(int index) const;
    bool isNull(int index) const;
    // The value as the Currency that a cell of its column adds up to (CCur of the typed value); nothing
    // for a Null or a text that is no number. Amounts stored as numbers are read without a variant.
    std::optional<Currency> currency(int index) const;

private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace ql
