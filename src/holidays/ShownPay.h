#pragma once
// The pay the wage screen shows, recalculated after lines were put on it from elsewhere: as leaving its
// payment view after an edit, its lines saved and the pay recalculated and stored. Nothing without a
// wage screen (the command line recalculates through a screen of its own).
namespace ql::holidays {

void RecalculateShownPay();

} // namespace ql::holidays
