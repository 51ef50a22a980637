#include "LeaveWorking.h"
#include "ShownPay.h"
#include "payengine/AppContext.h"
#include "payengine/PayTotals.h"
#include "payengine/PayView.h"
#include "runtime/VbError.h"

namespace ql::holidays {

namespace {

QString money(Currency c) { return ToCents(c).toFixed4().chopped(2); }
QString day(const QDate& d) { return d.isValid() ? d.toString(QStringLiteral("d/MM/yyyy")) : QStringLiteral("-"); }

} // namespace

QStringList LeaveWorkingLines(const LeavePayResult& r) {
    QStringList out;
    out << QStringLiteral("Rate used: %1 %2; amount %3").arg(r.rateUsed, money(r.rate), money(r.amount));
    out << QStringLiteral("OWP %1: %2 (%3 to %4, gross %5, left out %6)")
               .arg(money(r.owp.amount), r.owp.source, day(r.owp.from), day(r.owp.to), money(r.owp.grossEarnings),
                    money(r.owp.leftOut));
    out << QStringLiteral("AWE %1: %2 (%3 to %4, gross %5 / %6)")
               .arg(money(r.awe.amount), r.awe.source, day(r.awe.from), day(r.awe.to), money(r.awe.grossEarnings))
               .arg(r.awe.divisor, 0, 'f', 2);
    out << (r.rdp.available ? QStringLiteral("RDP %1: %2 (%3 hours at %4)")
                                  .arg(money(r.rdp.amount), r.rdp.source)
                                  .arg(double(r.rdp.hours), 0, 'f', 2)
                                  .arg(money(r.rdp.hourlyRate))
                            : QStringLiteral("RDP: ") + r.rdp.source);
    out << (r.adp.available ? QStringLiteral("ADP %1: %2 (%3 to %4, gross %5 / %6 days)")
                                  .arg(money(r.adp.amount), r.adp.source, day(r.adp.from), day(r.adp.to),
                                       money(r.adp.grossEarnings))
                                  .arg(double(r.adp.days), 0, 'f', 1)
                            : QStringLiteral("ADP: ") + r.adp.source);
    if (r.kind == LeaveKind::Annual)
        out << QStringLiteral("%1 days of a %2-day week").arg(r.days).arg(r.daysPerWeek);
    for (const LeaveDay& d : r.dayList)
        out << QStringLiteral("%1: %2 %3").arg(day(d.date), money(d.amount), d.note);
    out << r.notes;
    return out;
}

std::optional<LeaveKind> LeaveKindOfLedger(int leaveTypeID) {
    switch (leaveTypeID) {
    case 1: return LeaveKind::Annual;
    case 2: return LeaveKind::Sick;
    case 3: return LeaveKind::Bereavement;
    case 4: return LeaveKind::Alternative;
    default: return std::nullopt;
    }
}

void AddLeaveToShownPay(const LeavePayResult& r) {
    AppContext& a = App();
    if (a.CurrentWageID <= 0)
        throw VbError(5, QStringLiteral("AddLeaveToShownPay"), QStringLiteral("There is no pay to add the leave to."));
    AddLeaveToPay(a.WageDatabase, a.CurrentWageID, a.CurrentEmployeeID, r);
    RecalculateShownPay();
}

} // namespace ql::holidays
