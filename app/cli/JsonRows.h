#pragma once
// Rows of a query as JSON: money, units and rates as numbers with four decimals, dates as ISO text,
// Yes/No as true or false, Null as null. Names keep the query's column names.
#include <QString>
#include <QVariant>

namespace ql {
class Database;
class Recordset;
} // namespace ql

namespace cli {

QString jsonString(const QString& text);
// One value by its own type: numbers, Currency with four decimals, dates as ISO text, Null as null.
QString jsonVariant(const QVariant& value);
// The current row of rs as one object.
QString jsonRow(const ql::Recordset& rs);
// Every row of the query as an array of objects, one a line, indented by indent blanks.
QString jsonRows(ql::Database& db, const QString& sql, int indent = 0);

} // namespace cli
