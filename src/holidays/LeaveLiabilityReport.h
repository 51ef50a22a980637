#pragma once
// The leave liability as people read it: each employee named as the address book has them, and the
// rows as a printed report (A4 across) with its totals.
#include "LeaveLiability.h"
#include "reports/PreparedReport.h"

namespace ql::holidays {

// Puts each employee's name, family name first, in the rows; a row whose employee has no address
// keeps the name it had.
void NameLiabilityRows(Database& wage, Database& farm, Liability& l);

// The captions of the liability's columns, as the screen and the report show them.
QStringList LiabilityCaptions();
// One row's cells (and the totals' cells) in the order of the captions.
QStringList LiabilityCells(const LiabilityRow& r);
QStringList LiabilityTotalCells(const Liability& l);

PreparedReport LeaveLiabilityReport(const Liability& l, const QString& firm);

} // namespace ql::holidays
