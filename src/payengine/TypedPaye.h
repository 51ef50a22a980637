#pragma once
// A PAYE the user typed over the calculated one, as the PAYE box stores it in the pay's tax line.
// The record goes with the tax line: a recalculation, which replaces the line, forgets it.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <optional>

namespace ql {

// The record of typed PAYE and what removes it with its tax line; made when missing.
void EnsureTypedPaye(Database& wage);

// Notes that the pay's tax line now holds a PAYE typed by the user.
void RecordTypedPaye(Database& wage, qint32 wageID, Currency paye);

// The PAYE the user typed for the pay, while its tax line still holds it.
std::optional<Currency> TypedPaye(Database& wage, qint32 wageID);

} // namespace ql
