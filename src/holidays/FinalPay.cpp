#include "FinalPay.h"
#include "LeavePay.h"
#include "Entitlements.h"
#include "payengine/FinalPayTax.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <cmath>

namespace ql::holidays {

namespace {

QString money2(Currency c) { return ToCents(c).toFixed4().chopped(2); }

// The payment names the tax of a final pay knows its holiday lines by.
const QString kAnnual = ql::FinalHolidayLineNames().at(0);
const QString kEight = ql::FinalHolidayLineNames().at(1);
const QString kAlternative = ql::FinalHolidayLineNames().at(2);
const QString kPublic = ql::FinalHolidayLineNames().at(3);

// What earlier final-pay lines on the pay add to its gross earnings.
Currency earlierFinalLines(Database& wage, qint32 wageID) {
    QStringList quoted;
    for (const QString& c : FinalPayCaptions())
        quoted << QStringLiteral("'%1'").arg(QString(c).replace(QLatin1Char('\''), QStringLiteral("''")));
    const QVariant v = wage.scalar(QStringLiteral("SELECT sum(d.Payment) FROM PaymentDetails d JOIN PaymentNames n ON "
                                                  "n.PaymentNameID = d.PaymentNameID WHERE d.WageID = %1 AND "
                                                  "n.PayUnitname IN (%2) AND n.EarningKind IN ('annual-leave', "
                                                  "'alternative-holiday', 'public-holiday')")
                                       .arg(wageID)
                                       .arg(quoted.join(QLatin1Char(','))));
    return IsNull(v) ? Currency() : CCur(v);
}

} // namespace

const QStringList& FinalPayCaptions() {
    return ql::FinalHolidayLineNames();
}

FinalPayResult ComputeFinalPay(Database& wage, qint32 employeeID, const QDate& lastDay, qint32 finalWageID) {
    const Employee e = LoadEmployee(wage, employeeID);
    if (lastDay < e.hired)
        throw VbError(5, QStringLiteral("FinalPay"),
                      QStringLiteral("The last day %1 is before the employee was hired.").arg(lastDay.toString(Qt::ISODate)));
    const QList<PayRecord> pays = LoadPays(wage, employeeID);
    const QDate after = lastDay.addDays(1);
    const auto pattern = EffectivePattern(wage, employeeID, lastDay);
    const HolidayTerms terms = TermsOf(wage, employeeID);

    FinalPayResult r;
    r.employeeID = employeeID;
    r.lastDay = lastDay;
    r.owp = OrdinaryWeeklyPay(e, pays, pattern, after);
    r.awe = AverageWeeklyEarnings(e, pays, after);
    const Currency weekly = std::max(r.owp.amount, r.awe.amount);
    const QString weeklyName = r.awe.amount > r.owp.amount ? QStringLiteral("AWE") : QStringLiteral("OWP");

    const AnnualBalance annual = AnnualBalanceOn(wage, employeeID, lastDay);
    r.lastAnniversary = annual.lastAnniversary.isValid() ? annual.lastAnniversary : e.hired;
    r.entitledWeeksUntaken = std::max(0.0, annual.balanceWeeks);
    if (r.entitledWeeksUntaken > 0) {
        FinalPayLine l;
        l.component = QStringLiteral("annual-holidays");
        l.caption = kAnnual;
        l.kind = EarningKind::AnnualLeavePay;
        l.units = r.entitledWeeksUntaken;
        l.rate = weekly;
        l.amount = ToCents(Currency::fromDouble(weekly.toDouble() * r.entitledWeeksUntaken));
        l.working = QStringLiteral("%1 weeks (4 a year for %2 years, %3 taken) at the %4 of %5")
                        .arg(r.entitledWeeksUntaken, 0, 'f', 4)
                        .arg(annual.completedYears)
                        .arg(annual.takenWeeks, 0, 'f', 4)
                        .arg(weeklyName, money2(weekly));
        r.lines << l;
    }

    // 8% of the gross earnings since the last anniversary, less what was paid as you go in that time.
    const QDate since = r.lastAnniversary;
    for (const PayRecord& p : pays)
        // A pay whose period holds the last day paid the last days worked, whether or not it is the final pay.
        if (p.wageID == finalWageID || (p.end >= since && p.start <= lastDay)) r.grossSinceAnniversary += p.gross;
    if (finalWageID > 0) r.grossSinceAnniversary -= earlierFinalLines(wage, finalWageID);
    const QVariant payg = wage.scalar(
        QStringLiteral("SELECT sum(d.Payment) FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = "
                       "d.PaymentNameID JOIN Wages w ON w.WageID = d.WageID WHERE w.EmployeeID = %1 AND "
                       "n.EarningKind = 'pay-as-you-go' AND w.Date >= '%2' AND w.Date <= '%3'")
            .arg(employeeID)
            .arg(since.toString(Qt::ISODate), lastDay.toString(Qt::ISODate)));
    r.paidAsYouGo = IsNull(payg) ? Currency() : CCur(payg);
    Currency eight = ToCents(Currency::fromDouble(r.grossSinceAnniversary.toDouble() * 0.08)) - r.paidAsYouGo;
    if (annual.balanceWeeks < 0) {
        // Holidays taken in advance of the entitlement come off the 8%.
        const Currency advance = ToCents(Currency::fromDouble(-annual.balanceWeeks * weekly.toDouble()));
        eight -= advance;
        r.notes << QStringLiteral("%1 weeks of annual holidays were taken in advance; %2 comes off the 8%.")
                       .arg(-annual.balanceWeeks, 0, 'f', 4)
                       .arg(money2(advance));
    }
    if (eight > Currency()) {
        FinalPayLine l;
        l.component = QStringLiteral("eight-percent");
        l.caption = kEight;
        l.kind = EarningKind::AnnualLeavePay;
        l.units = 1;
        l.rate = eight;
        l.amount = eight;
        l.working = QStringLiteral("8% of gross earnings %1 since %2, less %3 paid as you go")
                        .arg(money2(r.grossSinceAnniversary), since.toString(Qt::ISODate), money2(r.paidAsYouGo));
        r.lines << l;
    }

    // The daily rate at the end: relevant daily pay of the last working day, else average daily pay.
    QDate lastWorking = lastDay;
    for (int i = 0; i < 7 && pattern && !pattern->works(lastWorking); ++i)
        lastWorking = lastWorking.addDays(-1);
    const DailyRate rdp = RelevantDailyPay(e, pattern, lastWorking);
    const DailyRate adp = AverageDailyPay(wage, e, pays, after);
    const bool average = terms.dailyPay == DailyPayChoice::Average || !rdp.available;
    r.dailyRate = average && adp.available ? adp.amount : rdp.amount;
    r.dailyRateUsed = average && adp.available ? QStringLiteral("ADP") : QStringLiteral("RDP");

    r.alternativeHolidays = OpenAlternativeHolidays(wage, employeeID, lastDay);
    if (r.alternativeHolidays > 0) {
        FinalPayLine l;
        l.component = QStringLiteral("alternative-holidays");
        l.caption = kAlternative;
        l.kind = EarningKind::AlternativeHolidayPay;
        l.units = r.alternativeHolidays;
        l.rate = ToCents(r.dailyRate);
        l.amount = ToCents(Currency::fromDouble(l.rate.toDouble() * r.alternativeHolidays));
        l.working = QStringLiteral("%1 days at the %2 of %3").arg(r.alternativeHolidays).arg(r.dailyRateUsed, money2(l.rate));
        r.lines << l;
    }

    // The untaken holidays laid out after the last day: a public holiday on an otherwise working day
    // within them is paid, and lengthens them by a day.
    int toLay = int(std::lround(r.entitledWeeksUntaken * annual.daysPerWeek));
    const bool worksSat = pattern && pattern->hours.at(5) > 0, worksSun = pattern && pattern->hours.at(6) > 0;
    for (QDate d = after; toLay > 0; d = d.addDays(1)) {
        if (pattern && !pattern->works(d)) continue;
        if (!pattern && d.dayOfWeek() >= 6) continue;
        if (HolidayOn(PublicHolidaysOf(d.year(), terms.region), d, worksSat, worksSun))
            r.publicHolidays << d;
        else
            --toLay;
    }
    if (!r.publicHolidays.isEmpty()) {
        FinalPayLine l;
        l.component = QStringLiteral("public-holidays");
        l.caption = kPublic;
        l.kind = EarningKind::PublicHolidayPay;
        l.units = r.publicHolidays.size();
        l.rate = ToCents(r.dailyRate);
        l.amount = ToCents(Currency::fromDouble(l.rate.toDouble() * r.publicHolidays.size()));
        QStringList days;
        for (const QDate& d : r.publicHolidays)
            days << d.toString(Qt::ISODate);
        l.working = QStringLiteral("%1 at the %2 of %3").arg(days.join(QStringLiteral(", ")), r.dailyRateUsed, money2(l.rate));
        r.lines << l;
    }
    for (const FinalPayLine& l : r.lines)
        r.total += l.amount;
    if (terms.payAsYouGo) r.notes << QStringLiteral("The employee's holidays are paid as you go.");
    return r;
}

void AddFinalPayLines(Database& wage, qint32 wageID, const FinalPayResult& result) {
    const QVariantList row =
        wage.firstRow(QStringLiteral("SELECT EmployeeID, Reference FROM Wages WHERE WageID = %1").arg(wageID));
    if (row.isEmpty()) throw VbError(5, QStringLiteral("FinalPay"), QStringLiteral("There is no pay %1.").arg(wageID));
    if (CLng(row.at(0)) != result.employeeID)
        throw VbError(5, QStringLiteral("FinalPay"), QStringLiteral("Pay %1 is not a pay of employee %2.").arg(wageID).arg(result.employeeID));
    if (!IsNull(row.at(1)) && !CStr(row.at(1)).isEmpty())
        throw VbError(5, QStringLiteral("FinalPay"), QStringLiteral("Pay %1 is committed and cannot be changed.").arg(wageID));
    for (const FinalPayLine& l : result.lines) {
        // Each component has a payment name of its own, so that the payslip shows it.
        const QVariant id = wage.firstColumn(QStringLiteral("SELECT PaymentNameID FROM PaymentNames WHERE PayUnitname = '%1'")
                                                 .arg(QString(l.caption).replace(QLatin1Char('\''), QStringLiteral("''"))))
                                .value(0);
        qint32 name = 0;
        if (IsNull(id)) {
            name = CLng(wage.scalar(QStringLiteral("SELECT coalesce(max(PaymentNameID), 0) + 1 FROM PaymentNames")));
            wage.execute(QStringLiteral("INSERT INTO PaymentNames (PaymentNameID, PayUnitname, Calculation, Salary, "
                                        "EarningKind) VALUES (?, ?, 0, 0, ?)"),
                         {name, l.caption, KindCode(l.kind)});
        } else {
            name = CLng(id);
        }
        wage.execute(QStringLiteral("DELETE FROM PaymentDetails WHERE WageID = %1 AND PaymentNameID = %2").arg(wageID).arg(name));
        const double units = l.units > 0 ? l.units : 1.0;
        wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) "
                                    "VALUES (?, ?, ?, ?, ?)"),
                     {wageID, name, units, l.amount.toDouble() / units, l.amount.toDouble()});
    }
}

} // namespace ql::holidays
