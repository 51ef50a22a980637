#pragma once
// What a New Zealand pay reports to Inland Revenue beyond its lines: the payroll giving credit taken off
// its PAYE, and of an extra pay the part not liable for the ACC earners' levy and whether it was taxed
// at the lowest rate (the lump sum indicator). One row per pay in PayTaxFigures; a pay without a row
// has none of them. The row goes with its pay.
#include "runtime/Currency.h"

namespace ql {

class Database;

struct PayTaxFigures {
    Currency givingCredit; // the pay's PAYE is already less this
    Currency notLiable;    // earnings not liable for the ACC earners' levy
    bool lowestRate = false;
    bool empty() const { return givingCredit == Currency() && notLiable == Currency() && !lowestRate; }
};

void EnsurePayTaxFiguresTable(Database& wage);

// Reading writes nothing: a payroll without the table has no figures.
PayTaxFigures LoadPayTaxFigures(Database& wage, qint32 wageID);

// Stores the figures of a pay; empty figures remove its row.
void SavePayTaxFigures(Database& wage, qint32 wageID, const PayTaxFigures& figures);

} // namespace ql
