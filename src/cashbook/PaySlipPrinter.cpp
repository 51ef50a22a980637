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

void setPaySlipPrinter(PaySlipPrinter printer) {
    installed() = std::move(printer);
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
