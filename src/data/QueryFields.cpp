#include "QueryFields.h"
#include "FieldValue.h"

namespace ql {

std::vector<QueryField> readQueryFields(sqlite3_stmt* s, int firstField) {
    std::vector<QueryField> fields;
    const int n = sqlite3_column_count(s);
    for (int i = firstField; i < n; ++i) {
        QueryField f;
        f.name = QString::fromUtf8(sqlite3_column_name(s, i));
        if (const char* t = sqlite3_column_table_name(s, i)) f.table = QString::fromUtf8(t);
        if (const char* o = sqlite3_column_origin_name(s, i)) f.origin = QString::fromUtf8(o);
        if (const char* decl = sqlite3_column_decltype(s, i)) {
            if (auto t = fieldTypeFromDeclared(QString::fromUtf8(decl))) {
                f.type = *t;
                f.typeKnown = true;
            }
        }
        fields.push_back(f);
    }
    return fields;
}

QString bareName(QString name) {
    name = name.trimmed();
    if (name.startsWith(u'[') && name.endsWith(u']')) name = name.mid(1, name.size() - 2);
    return name;
}

int lookUpField(const std::vector<QueryField>& fields, const QString& name) {
    const QString bare = bareName(name);
    for (int i = 0; i < int(fields.size()); ++i)
        if (fields[i].name.compare(bare, Qt::CaseInsensitive) == 0) return i;
    const auto dot = bare.indexOf(u'.');
    if (dot > 0) {
        const QString table = bareName(bare.left(dot));
        const QString column = bareName(bare.mid(dot + 1));
        for (int i = 0; i < int(fields.size()); ++i)
            if (fields[i].table.compare(table, Qt::CaseInsensitive) == 0 &&
                (fields[i].origin.compare(column, Qt::CaseInsensitive) == 0 ||
                 fields[i].name.compare(column, Qt::CaseInsensitive) == 0))
                return i;
    }
    return -1;
}

} // namespace ql
