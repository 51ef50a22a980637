#pragma once
// The payslip print that a commit starts when its print box is ticked. The reports part installs the
// real print; until then a message says that printing is not available yet.
#include <QDate>
#include <QObject>
#include <QString>
#include <functional>

namespace ql {

class PayView;

// What the print is given: the wage screen (owner and pay list, standing on the pay), the pay, the
// date line "|0| up to |1|", the reference, the payment date and whether the memo prints.
struct PaySlipRequest {
    QObject* owner = nullptr;
    PayView* screen = nullptr;
    qint32 WageID = 0;
    QString Description;
    QString Reference;
    QDate PaymentDate;
    bool ShowMemo = false;
};

using PaySlipPrinter = std::function<void(const PaySlipRequest&)>;
// An empty printer restores the message. Returns the printer it replaces.
PaySlipPrinter setPaySlipPrinter(PaySlipPrinter printer);
void PrintPaySlip(const PaySlipRequest& request);

// The setting PrintPaySlip of section WAGE: 0 for "N" in any case, else 1; written as "Y" or "N".
qint32 ReadPrintPaySlip();
void SavePrintPaySlip(qint32 value);

} // namespace ql
