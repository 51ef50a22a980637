#pragma once
// Holiday pay as you go: 8% of a pay's gross earnings as a line of its own, for an employee whose
// terms say so (a fixed term of less than 12 months, or work so irregular that four weeks of annual
// holidays cannot be given).
#include "data/Database.h"
#include "runtime/Currency.h"

namespace ql::holidays {

struct PayAsYouGoResult {
    qint32 wageID = 0;
    bool allowed = false; // the employee's terms say pay as you go
    Currency grossEarnings; // of the pay, without the 8% itself
    Currency holidayPay;    // 8% to the cent
    Currency onPay;         // the 8% line already on the pay
};

PayAsYouGoResult PayAsYouGoOf(Database& wage, qint32 wageID);
// Puts the 8% on the pay as its "Holiday Pay 8%" line, replacing one there. Refuses (VbError) an
// employee whose terms do not say pay as you go, and a committed pay.
void ApplyPayAsYouGo(Database& wage, const PayAsYouGoResult& r);

} // namespace ql::holidays
