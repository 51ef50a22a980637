#include "LeaveLiability.h"
#include "Entitlements.h"
#include "FinalPay.h"
#include "LeavePay.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"

namespace ql::holidays {

namespace {

QString money2(Currency c) { return ToCents(c).toFixed4().chopped(2); }

QString csvField(const QString& s) {
    if (!s.contains(QLatin1Char(',')) && !s.contains(QLatin1Char('"'))) return s;
    return QLatin1Char('"') + QString(s).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

} // namespace

Liability LeaveLiabilityOn(Database& wage, const QDate& day) {
    Liability l;
    l.day = day;
    const QVariantList ids = wage.firstColumn(QStringLiteral("SELECT EmployeeID FROM Employees ORDER BY EmployeeID"));
    for (const QVariant& idValue : ids) {
        const qint32 id = CLng(idValue);
        const QVariantList dates =
            wage.firstRow(QStringLiteral("SELECT DateHired, DateFinished FROM Employees WHERE EmployeeID = %1").arg(id));
        const QDate hired = IsNull(dates.value(0)) ? QDate() : CDate(dates.value(0));
        const QDate finished = IsNull(dates.value(1)) ? QDate() : CDate(dates.value(1));
        if (!hired.isValid() || hired == ZeroDate || hired > day) continue;
        if (finished.isValid() && finished != ZeroDate && finished < day) continue;
        // The final pay on that day holds every figure a liability needs.
        const FinalPayResult f = ComputeFinalPay(wage, id, day);
        LiabilityRow r;
        r.employeeID = id;
        r.name = QStringLiteral("Employee %1").arg(id);
        r.annualWeeks = AnnualBalanceOn(wage, id, day).balanceWeeks;
        r.weeklyRateUsed = f.awe.amount > f.owp.amount ? QStringLiteral("AWE") : QStringLiteral("OWP");
        r.weeklyRate = std::max(f.awe.amount, f.owp.amount);
        r.sickDays = SickBalanceOn(wage, id, day).balanceDays;
        r.alternativeHolidays = f.alternativeHolidays;
        r.dailyRate = f.dailyRate;
        for (const FinalPayLine& line : f.lines) {
            if (line.component == QLatin1String("annual-holidays")) r.annualValue = line.amount;
            if (line.component == QLatin1String("eight-percent")) r.accrued = line.amount;
            if (line.component == QLatin1String("alternative-holidays")) r.alternativeValue = line.amount;
        }
        r.total = r.annualValue + r.accrued + r.alternativeValue;
        l.total += r.total;
        l.rows << r;
    }
    return l;
}

QString LiabilityCsv(const Liability& l) {
    QString out = QStringLiteral("EmployeeID,Name,AnnualWeeks,WeeklyRate,RateUsed,AnnualValue,Accrued8Percent,SickDays,"
                                 "AlternativeHolidays,DailyRate,AlternativeValue,Total\r\n");
    for (const LiabilityRow& r : l.rows)
        out += QStringLiteral("%1,%2,%3,%4,%5,%6,%7,%8,%9,%10,%11,%12\r\n")
                   .arg(r.employeeID)
                   .arg(csvField(r.name))
                   .arg(r.annualWeeks, 0, 'f', 4)
                   .arg(money2(r.weeklyRate), r.weeklyRateUsed, money2(r.annualValue), money2(r.accrued))
                   .arg(r.sickDays, 0, 'f', 1)
                   .arg(r.alternativeHolidays)
                   .arg(money2(r.dailyRate), money2(r.alternativeValue), money2(r.total));
    out += QStringLiteral(",Total,,,,,,,,,,%1\r\n").arg(money2(l.total));
    return out;
}

} // namespace ql::holidays
