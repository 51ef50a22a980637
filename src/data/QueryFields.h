#pragma once
// The columns of a prepared query as the data layer describes them (name, table and column of origin,
// declared type), and finding one by name; shared by Recordset and RowReader.
#include "Recordset.h"
#include <QString>
#include <sqlite3.h>
#include <vector>

namespace ql {

struct QueryField {
    QString name;
    QString table;  // table the column comes from, empty for an expression
    QString origin; // the column's name in that table
    FieldType type = FieldType::Text;
    bool typeKnown = false; // false for an expression: its values give its type
};

// The query's columns from firstField on.
std::vector<QueryField> readQueryFields(sqlite3_stmt* statement, int firstField);

// "[name]" -> "name", blanks trimmed.
QString bareName(QString name);

// The field of a name: its own name first, then "table.column" by table and origin; -1 when absent.
int lookUpField(const std::vector<QueryField>& fields, const QString& name);

} // namespace ql
