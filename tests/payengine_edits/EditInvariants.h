#pragma once
// What must hold of a stored pay after any edit: the figures of its Wages row against its detail rows,
// with the rounding the payslip prescribes, and the summary labels against the row.
#include "data/Database.h"
#include "payengine/PayView.h"
#include <QStringList>

namespace edittest {

// Each broken rule as one line of text; empty when the pay is consistent.
QStringList payInconsistencies(ql::Database& db, const ql::PayView& view, qint32 wageID, bool enrolled);

} // namespace edittest
