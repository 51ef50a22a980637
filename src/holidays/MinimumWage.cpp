#include "MinimumWage.h"
#include "EarningKinds.h"
#include "LeavePay.h"
#include <QStringList>
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace ql::holidays {

namespace {

Currency dollars(const char* text) { return Currency::fromDouble(QString::fromLatin1(text).toDouble()); }

Currency upToCent(Currency c) {
    const std::int64_t raw = c.raw();
    const std::int64_t cents = raw / 100 + ((raw % 100) > 0 ? 1 : 0);
    return Currency::fromRaw(cents * 100);
}

// The parts of the period between changes of the rate, the hours shared out by the usual hours of
// each day (each calendar day alike when the usual week has none in the period).
void splitAtRateChanges(Database& wage, MinimumWageCheck& c, MinimumWageRate kind,
                        const QMap<QDate, float>& dayHours) {
    c.parts.clear();
    QList<QDate> starts{c.periodStart};
    for (const MinimumWageRates& r : MinimumWageHistory())
        if (r.from > c.periodStart && r.from <= c.periodEnd) starts << r.from;
    if (starts.size() == 1) {
        const Currency rate = MinimumHourlyRate(c.periodEnd, kind);
        c.parts << MinimumWagePart{c.periodStart, c.periodEnd, double(c.hours), rate,
                                   Currency::fromDouble(rate.toDouble() * double(c.hours))};
        return;
    }
    QList<double> weights;
    double total = 0;
    bool byPattern = true;
    if (!dayHours.isEmpty()) {
        // The hours entered for each day fall in their own part.
        for (int i = 0; i < starts.size(); ++i) {
            const QDate to = i + 1 < starts.size() ? starts.at(i + 1).addDays(-1) : c.periodEnd;
            double w = 0;
            for (auto it = dayHours.constBegin(); it != dayHours.constEnd(); ++it)
                if (it.key() >= starts.at(i) && it.key() <= to) w += double(it.value());
            weights << w;
            total += w;
        }
    }
    for (int pass = 0; pass < 2 && total <= 0; ++pass) {
        weights.clear();
        total = 0;
        for (int i = 0; i < starts.size(); ++i) {
            const QDate to = i + 1 < starts.size() ? starts.at(i + 1).addDays(-1) : c.periodEnd;
            double w = 0;
            for (QDate d = starts.at(i); d <= to; d = d.addDays(1)) {
                if (!byPattern) {
                    w += 1;
                    continue;
                }
                const auto pattern = EffectivePattern(wage, c.employeeID, d);
                w += pattern ? double(pattern->hoursOn(d)) : 0.0;
            }
            weights << w;
            total += w;
        }
        if (total > 0) break;
        byPattern = false;
    }
    c.hoursShared = !dayHours.isEmpty() && total > 0 ? QStringLiteral("by the hours entered for each day")
                    : byPattern                     ? QStringLiteral("by the usual hours of each day")
                                                    : QStringLiteral("by calendar days");
    for (int i = 0; i < starts.size(); ++i) {
        const QDate to = i + 1 < starts.size() ? starts.at(i + 1).addDays(-1) : c.periodEnd;
        const double hours = double(c.hours) * weights.at(i) / total;
        const Currency rate = MinimumHourlyRate(starts.at(i), kind);
        c.parts << MinimumWagePart{starts.at(i), to, hours, rate, Currency::fromDouble(rate.toDouble() * hours)};
    }
}

} // namespace

const QList<MinimumWageRates>& MinimumWageHistory() {
    // The adult rate and the starting-out and training rate, each from 1 April of its year.
    static const QList<MinimumWageRates> rates{
        {QDate(2018, 4, 1), dollars("16.50"), dollars("13.20")},
        {QDate(2019, 4, 1), dollars("17.70"), dollars("14.16")},
        {QDate(2020, 4, 1), dollars("18.90"), dollars("15.12")},
        {QDate(2021, 4, 1), dollars("20.00"), dollars("16.00")},
        {QDate(2022, 4, 1), dollars("21.20"), dollars("16.96")},
        {QDate(2023, 4, 1), dollars("22.70"), dollars("18.16")},
        {QDate(2024, 4, 1), dollars("23.15"), dollars("18.52")},
        {QDate(2025, 4, 1), dollars("23.50"), dollars("18.80")},
        {QDate(2026, 4, 1), dollars("23.95"), dollars("19.16")},
    };
    return rates;
}

Currency MinimumHourlyRate(const QDate& day, MinimumWageRate kind) {
    Currency rate;
    for (const MinimumWageRates& r : MinimumWageHistory())
        if (r.from <= day) rate = kind == MinimumWageRate::Adult ? r.adult : r.startingOut;
    return rate;
}

MinimumWageCheck CheckMinimumWage(Database& wage, qint32 wageID) {
    EnsureHolidayTables(wage);
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT EmployeeID, Reference FROM Wages WHERE WageID = %1").arg(wageID));
    if (row.isEmpty()) throw VbError(5, QStringLiteral("MinimumWage"), QStringLiteral("There is no pay %1.").arg(wageID));
    MinimumWageCheck c;
    c.wageID = wageID;
    c.employeeID = CLng(row.at(0));
    c.committed = !IsNull(row.at(1)) && !CStr(row.at(1)).isEmpty();
    const QList<PayRecord> pays = LoadPays(wage, c.employeeID);
    const PayRecord* pay = nullptr;
    for (const PayRecord& p : pays)
        if (p.wageID == wageID) pay = &p;
    if (!pay) throw VbError(5, QStringLiteral("MinimumWage"), QStringLiteral("Pay %1 has no date.").arg(wageID));
    c.periodStart = pay->start;
    c.periodEnd = pay->end;
    const QVariant existing = wage.scalar(
        QStringLiteral("SELECT sum(d.Payment) FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = "
                       "d.PaymentNameID WHERE d.WageID = %1 AND n.EarningKind = '%2'")
            .arg(wageID)
            .arg(KindCode(EarningKind::MinimumWageTopUp)));
    c.existingTopUp = IsNull(existing) ? Currency() : CCur(existing);
    const QVariant existingUnits = wage.scalar(
        QStringLiteral("SELECT sum(d.DetailHours) FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = "
                       "d.PaymentNameID WHERE d.WageID = %1 AND n.EarningKind = '%2'")
            .arg(wageID)
            .arg(KindCode(EarningKind::MinimumWageTopUp)));
    c.payThatCounts = pay->workPay - c.existingTopUp;
    if (pay->hoursEntered) {
        c.hours = *pay->hoursEntered;
        c.hoursSource = QStringLiteral("entered");
    } else {
        c.hours = pay->lineHours - (IsNull(existingUnits) ? 0.0f : CSng(existingUnits));
        c.hoursSource = QStringLiteral("payment lines");
    }
    const MinimumWageRate kind = TermsOf(wage, c.employeeID).minimumWage;
    c.rateKind = MinimumWageRateCode(kind);
    c.hourlyMinimum = MinimumHourlyRate(c.periodEnd, kind);
    splitAtRateChanges(wage, c, kind, pay->dayHours);
    double minimum = 0;
    for (const MinimumWagePart& part : c.parts)
        minimum += part.minimum.toDouble();
    c.minimum = ToCents(Currency::fromDouble(minimum));
    if (c.minimum > c.payThatCounts) {
        c.topUp = upToCent(c.minimum - c.payThatCounts);
        QStringList rates;
        for (const MinimumWagePart& part : c.parts)
            rates << part.hourlyMinimum.toFixed4().chopped(2);
        c.message = QStringLiteral("The pay for %1 hours is %2, below the minimum wage of %3 an hour (%4). A minimum "
                                   "wage top-up of %5 is due.")
                        .arg(QString::number(double(c.hours), 'f', 2), ToCents(c.payThatCounts).toFixed4().chopped(2),
                             rates.join(QStringLiteral(" and ")), c.minimum.toFixed4().chopped(2),
                             c.topUp.toFixed4().chopped(2));
    }
    return c;
}

void ApplyMinimumWageTopUp(Database& wage, const MinimumWageCheck& c) {
    if (c.committed)
        throw VbError(5, QStringLiteral("MinimumWage"),
                      QStringLiteral("Pay %1 is committed: a top-up goes on the next pay.").arg(c.wageID));
    const qint32 name = PaymentNameForKind(wage, EarningKind::MinimumWageTopUp, QStringLiteral("Minimum wage top-up"));
    wage.execute(QStringLiteral("DELETE FROM PaymentDetails WHERE WageID = %1 AND PaymentNameID = %2").arg(c.wageID).arg(name));
    if (c.topUp <= Currency()) return;
    wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) "
                                "VALUES (?, ?, 1, ?, ?)"),
                 {c.wageID, name, c.topUp.toDouble(), c.topUp.toDouble()});
}

} // namespace ql::holidays
