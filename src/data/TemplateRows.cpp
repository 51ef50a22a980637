#include "TemplateRows.h"
#include "SqlSupport.h"

namespace ql {

void insertRows(Database& db, const QString& table, const QStringList& columns,
                const QList<QVariantList>& rows) {
    QStringList names, marks;
    for (const QString& c : columns) {
        names << quoteName(c);
        marks << QStringLiteral("?");
    }
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(quoteName(table), names.join(u','), marks.join(u','));
    for (const QVariantList& row : rows)
        db.execute(sql, row);
}

} // namespace ql
