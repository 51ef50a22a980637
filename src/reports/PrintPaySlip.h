#pragma once
// Printing the payslip of the shown pay: the report screen prepared with the slip's layout, the payroll
// database and the heading block as formulas, then shown for the user to start the output.
#include <QString>
#include <QVariant>

namespace ql {

class PayView;
class ReportControl;
class ReportScreen;

// The layout file of the payslip.
inline const QString kPaySlipReport = QStringLiteral("ql_payslip.rpt");

// Prepares the report for the pay CurrentWageID (its PaySlip lines must stand in the table) and shows
// the report screen. form gives the pay number (the caption of datPays); dateLine is the commit
// screen's "|0| up to |1|"; payDate is the date paid (a date, or its text).
void PrintPaySlip(PayView& form, const QString& dateLine, const QString& reference, const QVariant& payDate,
                  bool showMemo);

// The same preparation on a screen the caller shows (PrintPaySlip shows it at once).
void PreparePaySlip(ReportScreen& screen, PayView& form, const QString& dateLine, const QString& reference,
                    const QVariant& payDate, bool showMemo);

// The memo (Details) of the pay CurrentWageID; empty when null or when there is no such pay.
QString GetPayMemo();

} // namespace ql
