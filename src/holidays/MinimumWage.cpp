#include "MinimumWage.h"
#include "EarningKinds.h"
#include "LeavePay.h"
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
    c.minimum = ToCents(Currency::fromDouble(c.hourlyMinimum.toDouble() * double(c.hours)));
    if (c.minimum > c.payThatCounts) {
        c.topUp = upToCent(c.minimum - c.payThatCounts);
        c.message = QStringLiteral("The pay for %1 hours is %2, below the minimum wage of %3 an hour (%4). A minimum "
                                   "wage top-up of %5 is due.")
                        .arg(QString::number(double(c.hours), 'f', 2), ToCents(c.payThatCounts).toFixed4().chopped(2),
                             c.hourlyMinimum.toFixed4().chopped(2), c.minimum.toFixed4().chopped(2),
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
