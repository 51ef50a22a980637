#pragma once
// "Email" on the preview of one payslip (the one the wage ledger's commit opens): the slip as shown,
// as a PDF file, to the employee's address through the same sender as the pay run. What happened is
// told in one message; a failed send changes nothing of the committed pay.
#include "reports/PreparedReport.h"
#include <QString>

namespace ql {

// Offers the action on the report screen's previews of a payslip.
void installPaySlipEmailAction();

// Sends the slip of the pay as the report shows it. Empty when sent, else "Name: why"; a pay that
// is not committed is refused.
QString EmailShownPaySlip(qint32 wageID, const PreparedReport& report);

} // namespace ql
