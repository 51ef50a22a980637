#pragma once
// Between the stored form of a value (SQLite's integer, real, text or null) and the typed value a
// field gives (Currency, float, QDate, bool, ...), by the field's type.
#include "Recordset.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QString>
#include <QVariant>
#include <optional>

struct sqlite3_value;

namespace ql {

// The field type a declared column type names (CURRENCY, SINGLE, DOUBLE, LONG, INTEGER, SMALLINT,
// BYTE, DATETIME, YESNO, TEXT(n), MEMO, LONGTEXT, ...); nullopt for none or an unknown name.
std::optional<FieldType> fieldTypeFromDeclared(const QString& declared);

// The stored value as the field's type gives it; Null stays Null.
QVariant typedValue(FieldType type, const QVariant& stored);

// A value converted to the field's type and then to its stored form: Currency and Single as REAL,
// dates as ISO text, Yes/No as 0 or 1. A value that does not convert raises 3421.
QVariant storedValue(FieldType type, const QVariant& value);

// The Currency that a cell of a field of type adds up to (CCur of the typed value); nothing for a Null or
// a value that is no number. Amounts stored as numbers go without a variant.
std::optional<Currency> storedCurrency(FieldType type, sqlite3_value* stored);

// The date of a stored text that is exactly "yyyy-mm-dd"; an invalid date for any other text.
QDate storedIsoDate(const char* utf8, qsizetype size);

// ISO text of a date, with the time when it has one.
QString isoDateText(const QDateTime& dt);

} // namespace ql
