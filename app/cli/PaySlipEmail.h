#pragma once
// The payslip of a committed pay painted as PDF and sent to the employee's email address.
#include <QString>

namespace cli {

// Empty when the slip was sent, else "Name: why".
QString emailPaySlip(qint32 wageID);

} // namespace cli
