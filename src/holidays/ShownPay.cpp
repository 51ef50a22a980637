#include "ShownPay.h"
#include "payengine/AppContext.h"
#include "payengine/PayTotals.h"
#include "payengine/PayView.h"

namespace ql::holidays {

void RecalculateShownPay() {
    AppContext& a = App();
    PayView* form = a.WageForm;
    if (!form) return;
    const qint16 tab = a.CurrentTab;
    a.CurrentTab = 1;
    FillPaymentGrid(*form);
    SaveWageGrid(*form);
    form->datPays.UpdateRecord();
    a.CurrentTab = tab;
    if (tab != 0 && tab != 1) FillWageGrid(*form);
}

} // namespace ql::holidays
