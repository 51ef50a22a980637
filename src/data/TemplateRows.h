#pragma once
// Writing the rows of a template table in one call.
#include "Database.h"
#include <QList>
#include <QStringList>
#include <QVariantList>

namespace ql {

// Inserts each row (values in the order of columns) into table.
void insertRows(Database& db, const QString& table, const QStringList& columns,
                const QList<QVariantList>& rows);

} // namespace ql
