#include "PaySlipPrint.h"
#include "cashbook/PaySlipPrinter.h"
#include "payengine/AppContext.h"
#include "reports/PrintPaySlip.h"

namespace ql {

void installPaySlipPrint() {
    setPaySlipPrinter([](const PaySlipRequest& request) {
        PayView* form = request.screen ? request.screen : App().WageForm;
        if (!form) return;
        PrintPaySlip(*form, request.Description, request.Reference, QVariant(request.PaymentDate),
                     request.ShowMemo);
    });
}

} // namespace ql
