#include "PaySlipPrinter.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"

namespace ql {

namespace {
PaySlipPrinter& installed() {
    static PaySlipPrinter printer;
    return printer;
}
} // namespace

PaySlipPrinter setPaySlipPrinter(PaySlipPrinter printer) {
    PaySlipPrinter previous = std::move(installed());
    installed() = std::move(printer);
    return previous;
}

void PrintPaySlip(const PaySlipRequest& request) {
    if (installed()) {
        installed()(request);
        return;
    }
    ShowMessage(QStringLiteral("Printing the pay slip is not available in this version yet."), msg::OKOnly,
                Firm(), QStringLiteral("Information"), QString(), msg::Information, true);
}

qint32 ReadPrintPaySlip() {
    return PrintPaySlip();
}

void SavePrintPaySlip(qint32 value) {
    WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"),
                 value != 0 ? QStringLiteral("Y") : QStringLiteral("N"));
}

} // namespace ql
