#pragma once
// The final pay made when an employee finishes: the holiday lines of ComputeFinalPay put on the pay
// that covers the last day, or on a pay added for it, and that pay brought to its tax as the wage
// screen does after an edit of its lines.
#include "FinalPay.h"
#include "payengine/FinalPayTax.h"
#include <optional>

namespace ql::holidays {

struct FinishedPay {
    qint32 wageID = 0;  // the final pay; 0 when nothing is owed for holidays and no pay was touched
    bool added = false; // the pay was added for the final pay
    QString choice;     // which pay carries the lines, and why
    FinalPayResult result;
    std::optional<FinalPayTax> tax; // the final pay's PAYE, its holiday lines taxed as an extra pay
};

// Which pay is the final one:
//  - the employee's uncommitted regular pay whose period holds the last day;
//  - else a pay added on the last day, or on the day after the last regular pay when that is later
//    (no pay is added before a later one). When a committed pay already covers the last day, the added
//    pay keeps only the holiday lines (the time worked was paid); otherwise it keeps the lines the
//    wage screen gives a new pay, for the time since the last pay.
// Nothing is added when nothing is owed. The program's context must have the payroll open and the
// employee must still be on the roster, so this runs before the finish date is written. All of it is
// one write transaction: a refusal (VbError with the system's message) leaves the payroll as it was.
FinishedPay MakeFinalPay(qint32 employeeID, const QDate& lastDay);

// The lines and their working, and the tax, as text for a message.
QString FinalPayText(const FinishedPay& pay);

} // namespace ql::holidays
