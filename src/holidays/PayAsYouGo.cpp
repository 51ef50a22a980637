#include "PayAsYouGo.h"
#include "EarningKinds.h"
#include "LeavePay.h"
#include "PayHistory.h"
#include "WorkPattern.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace ql::holidays {

PayAsYouGoResult PayAsYouGoOf(Database& wage, qint32 wageID) {
    EnsureHolidayTables(wage);
    const QVariant employee = wage.scalar(QStringLiteral("SELECT EmployeeID FROM Wages WHERE WageID = %1").arg(wageID));
    if (IsNull(employee)) throw VbError(5, QStringLiteral("PayAsYouGo"), QStringLiteral("There is no pay %1.").arg(wageID));
    PayAsYouGoResult r;
    r.wageID = wageID;
    r.allowed = TermsOf(wage, CLng(employee)).payAsYouGo;
    for (const PayRecord& p : LoadPays(wage, CLng(employee)))
        if (p.wageID == wageID) r.grossEarnings = p.gross;
    r.holidayPay = ToCents(Currency::fromDouble(r.grossEarnings.toDouble() * 0.08));
    const QVariant on = wage.scalar(
        QStringLiteral("SELECT sum(d.Payment) FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = "
                       "d.PaymentNameID WHERE d.WageID = %1 AND n.EarningKind = '%2'")
            .arg(wageID)
            .arg(KindCode(EarningKind::PayAsYouGo)));
    r.onPay = IsNull(on) ? Currency() : CCur(on);
    return r;
}

void ApplyPayAsYouGo(Database& wage, const PayAsYouGoResult& r) {
    if (!r.allowed)
        throw VbError(5, QStringLiteral("PayAsYouGo"),
                      QStringLiteral("The employee's terms do not say holiday pay as you go: annual holidays are "
                                     "given instead."));
    const QVariant ref = wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(r.wageID));
    if (!IsNull(ref) && !CStr(ref).isEmpty())
        throw VbError(5, QStringLiteral("PayAsYouGo"),
                      QStringLiteral("Pay %1 is committed and cannot be changed.").arg(r.wageID));
    const qint32 name = PaymentNameForKind(wage, EarningKind::PayAsYouGo, QStringLiteral("Holiday Pay 8%"));
    wage.execute(QStringLiteral("DELETE FROM PaymentDetails WHERE WageID = %1 AND PaymentNameID = %2").arg(r.wageID).arg(name));
    if (r.holidayPay <= Currency()) return;
    wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) "
                                "VALUES (?, ?, 1, ?, ?)"),
                 {r.wageID, name, r.holidayPay.toDouble(), r.holidayPay.toDouble()});
}

} // namespace ql::holidays
