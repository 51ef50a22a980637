#include "LeavePay.h"
#include "Entitlements.h"
#include "HoursTest.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <algorithm>
#include <cmath>

namespace ql::holidays {

namespace {

struct KindName {
    LeaveKind kind;
    const char* code;
    EarningKind earning;
    const char* caption;
};

constexpr KindName kLeaveKinds[] = {
    {LeaveKind::Annual, "annual", EarningKind::AnnualLeavePay, "Holiday Pay"},
    {LeaveKind::Public, "public", EarningKind::PublicHolidayPay, "Public Holiday Pay"},
    {LeaveKind::Sick, "sick", EarningKind::SickLeavePay, "Sick Pay"},
    {LeaveKind::Bereavement, "bereavement", EarningKind::BereavementLeavePay, "Bereavement Leave Pay"},
    {LeaveKind::FamilyViolence, "family-violence", EarningKind::FamilyViolenceLeavePay, "Family Violence Leave Pay"},
    {LeaveKind::Alternative, "alternative", EarningKind::AlternativeHolidayPay, "Alternative Holiday Pay"},
};

const KindName& kindName(LeaveKind k) {
    for (const KindName& n : kLeaveKinds)
        if (n.kind == k) return n;
    return kLeaveKinds[0];
}

// The daily rate of a day: relevant daily pay unless it cannot be found or the terms ask for the average.
Currency dailyRate(const DailyRate& rdp, const DailyRate& adp, DailyPayChoice choice, QString* used) {
    const bool useAverage = choice == DailyPayChoice::Average || !rdp.available;
    if (useAverage && adp.available) {
        *used = QStringLiteral("ADP");
        return adp.amount;
    }
    if (rdp.available) {
        *used = QStringLiteral("RDP");
        return rdp.amount;
    }
    *used = QStringLiteral("none");
    return Currency();
}

// Sick, bereavement and family violence leave against what the Act gives on the first day: noted, not
// refused, since an employer may give more (sick leave in advance, a longer bereavement).
void checkEntitlement(Database& wage, qint32 employeeID, LeaveKind kind, const QDate& from, double days,
                      bool closeRelative, LeavePayResult& r) {
    r.checked = true;
    QString what;
    if (kind == LeaveKind::Sick) {
        const SickBalance b = SickBalanceOn(wage, employeeID, from);
        r.entitled = b.firstEntitled.isValid() && b.firstEntitled <= from;
        r.entitlementBasis = b.basis;
        r.hoursTest = b.hoursTest;
        r.availableDays = b.balanceDays;
        what = QStringLiteral("Sick leave balance on the first day: %1 days (%2 taken).")
                   .arg(b.balanceDays, 0, 'f', 1)
                   .arg(b.takenDays, 0, 'f', 1);
    } else if (kind == LeaveKind::FamilyViolence) {
        const FamilyViolenceBalance b = FamilyViolenceBalanceOn(wage, employeeID, from);
        r.entitled = b.yearFrom.isValid();
        r.entitlementBasis = b.basis;
        r.availableDays = b.balanceDays;
        what = r.entitled ? QStringLiteral("Family violence leave left in the year from %1: %2 days of 10 (not carried over).")
                                .arg(b.yearFrom.toString(Qt::ISODate))
                                .arg(b.balanceDays, 0, 'f', 1)
                          : QString();
    } else {
        const BereavementEntitlement b = BereavementOn(wage, employeeID, from, closeRelative);
        r.entitled = b.entitled;
        r.entitlementBasis = b.basis;
        r.availableDays = b.days;
        what = r.entitled ? QStringLiteral("Bereavement leave for this death: %1 (%2).")
                                .arg(b.days == 1 ? QStringLiteral("1 day") : QStringLiteral("%1 days").arg(b.days),
                                     closeRelative ? QStringLiteral("a close relative") : QStringLiteral("another person"))
                          : QString();
    }
    if (r.hoursTest.isEmpty()) r.hoursTest = EntitlementOn(wage, employeeID, from).lastTest.working();
    if (!r.entitled) {
        r.notes << QStringLiteral("No leave of this kind is due on %1 (%2).").arg(from.toString(Qt::ISODate), r.entitlementBasis);
        r.beyondEntitlement = true;
        return;
    }
    r.notes << what;
    if (days > r.availableDays + 1e-9) {
        r.beyondEntitlement = true;
        r.notes << QStringLiteral("The leave is longer than the %1 days the Act gives: the rest is the employer's to give.")
                       .arg(r.availableDays, 0, 'f', 1);
    }
}

} // namespace

Currency ToCents(Currency c) {
    const std::int64_t raw = c.raw();
    std::int64_t q = raw / 100, rem = raw % 100;
    if (rem < 0) {
        rem += 100;
        q -= 1;
    }
    if (rem > 50 || (rem == 50 && (q % 2 != 0))) q += 1;
    return Currency::fromRaw(q * 100);
}

LeaveKind LeaveKindFromCode(const QString& code, bool* ok) {
    for (const KindName& n : kLeaveKinds)
        if (code == QLatin1String(n.code)) {
            *ok = true;
            return n.kind;
        }
    *ok = false;
    return LeaveKind::Annual;
}

QString LeaveKindCode(LeaveKind kind) { return QString::fromLatin1(kindName(kind).code); }
EarningKind EarningKindOf(LeaveKind kind) { return kindName(kind).earning; }
QString LeaveLineCaption(LeaveKind kind) { return QString::fromLatin1(kindName(kind).caption); }

LeavePayResult ComputeLeavePay(Database& wage, qint32 employeeID, LeaveKind kind, const QDate& from, double days,
                               float workedHours, bool closeRelative) {
    const Employee e = LoadEmployee(wage, employeeID);
    const QList<PayRecord> pays = LoadPays(wage, employeeID);
    const HolidayTerms terms = TermsOf(wage, employeeID);
    bool assumed = false;
    const auto pattern = EffectivePattern(wage, employeeID, from, &assumed);

    LeavePayResult r;
    r.kind = kind;
    r.from = from;
    r.days = days;
    r.owp = OrdinaryWeeklyPay(e, pays, pattern, from);
    r.awe = AverageWeeklyEarnings(e, pays, from);
    r.rdp = RelevantDailyPay(e, pattern, from);
    r.adp = AverageDailyPay(wage, e, pays, from);
    if (assumed)
        r.notes << QStringLiteral("No work pattern is kept for the employee: Monday to Friday with the occupation's "
                                  "standard hours is assumed.");
    else if (!pattern)
        r.notes << QStringLiteral("No work pattern is kept for the employee and the occupation has no standard hours: "
                                  "every day counts as an otherwise working day and relevant daily pay cannot be found.");

    if (kind == LeaveKind::Annual) {
        const bool aweGreater = r.awe.amount > r.owp.amount;
        r.rateUsed = aweGreater ? QStringLiteral("AWE") : QStringLiteral("OWP");
        r.rate = aweGreater ? r.awe.amount : r.owp.amount;
        r.daysPerWeek = pattern && pattern->daysPerWeek() > 0 ? pattern->daysPerWeek() : 5;
        r.amount = ToCents(Currency::fromDouble(r.rate.toDouble() * days / r.daysPerWeek));
        if (!pattern) r.notes << QStringLiteral("A week of annual holidays is taken as 5 working days.");
        if (e.hired.addYears(1) > from)
            r.notes << QStringLiteral("The employee has not yet completed 12 months of employment on the first day "
                                      "of the holiday: these are holidays in advance.");
        return r;
    }

    if (kind == LeaveKind::Sick || kind == LeaveKind::Bereavement || kind == LeaveKind::FamilyViolence)
        checkEntitlement(wage, employeeID, kind, from, days, closeRelative, r);

    const QList<PublicHoliday> thisYear = PublicHolidaysOf(from.year(), terms.region);
    const QList<PublicHoliday> nextYear = PublicHolidaysOf(from.year() + 1, terms.region);
    const bool worksSat = pattern && pattern->hours.at(5) > 0, worksSun = pattern && pattern->hours.at(6) > 0;
    auto holidayOn = [&](const QDate& d) {
        const PublicHoliday* h = HolidayOn(d.year() == from.year() ? thisYear : nextYear, d, worksSat, worksSun);
        return h;
    };
    auto otherwiseWorking = [&](const QDate& d) {
        const auto p = EffectivePattern(wage, employeeID, d);
        return !p || p->works(d);
    };

    Currency total;
    const int wanted = int(std::ceil(days));
    if (kind == LeaveKind::Public) {
        // The calendar days from the first day: each public holiday on an otherwise working day is paid.
        for (int i = 0; i < wanted; ++i) {
            const QDate d = from.addDays(i);
            const PublicHoliday* h = holidayOn(d);
            if (!h) continue;
            if (!otherwiseWorking(d)) {
                r.dayList << LeaveDay{d, Currency(), h->name + QStringLiteral(": not an otherwise working day, not paid")};
                continue;
            }
            if (workedHours > 0) {
                // Worked: the greater of time and a half of the part of relevant daily pay the hours
                // earn and the agreement's penal rate for them, and an alternative holiday.
                r.workedHours = workedHours;
                const Currency hourly = r.rdp.available && r.rdp.hours > 0 ? r.rdp.hourlyRate : e.payRate;
                const double portion = hourly.toDouble() * double(workedHours);
                r.timeAndAHalf = ToCents(Currency::fromDouble(portion * 1.5));
                r.penalRate = terms.penalRate;
                r.penalPay = ToCents(Currency::fromDouble(portion * double(terms.penalRate)));
                const bool penal = r.penalPay > r.timeAndAHalf;
                r.workedPay = penal ? r.penalPay : r.timeAndAHalf;
                r.alternativeEarned = true;
                r.dayList << LeaveDay{d, r.workedPay,
                                      h->name + (penal ? QStringLiteral(": worked, the penal rate and an alternative holiday")
                                                       : QStringLiteral(": worked, time and a half and an alternative holiday"))};
                total += r.workedPay;
                r.rateUsed = penal ? QStringLiteral("penal rate") : QStringLiteral("time and a half");
                r.rate = Currency::fromDouble(hourly.toDouble() * (penal ? double(terms.penalRate) : 1.5));
                if (terms.penalRate > 0)
                    r.notes << QStringLiteral("Worked %1 hours at %2 an hour: time and a half %3, the penal rate (x%4) %5; "
                                              "the greater is paid.")
                                   .arg(double(workedHours), 0, 'f', 2)
                                   .arg(ToCents(hourly).toFixed4().chopped(2), r.timeAndAHalf.toFixed4().chopped(2))
                                   .arg(double(terms.penalRate), 0, 'f', 2)
                                   .arg(r.penalPay.toFixed4().chopped(2));
                continue;
            }
            const DailyRate rdp = RelevantDailyPay(e, EffectivePattern(wage, employeeID, d), d);
            const DailyRate adp = AverageDailyPay(wage, e, pays, d);
            QString used;
            const Currency rate = dailyRate(rdp, adp, terms.dailyPay, &used);
            if (r.rateUsed.isEmpty()) {
                r.rateUsed = used;
                r.rate = rate;
            }
            r.dayList << LeaveDay{d, ToCents(rate), h->name + QStringLiteral(": otherwise working day, paid at ") + used};
            total += ToCents(rate);
        }
        if (r.rateUsed.isEmpty()) r.rateUsed = QStringLiteral("none");
        r.amount = total;
        return r;
    }

    // Sick, bereavement, family violence and alternative holidays: the otherwise working days from the first day.
    QDate d = from;
    for (int paid = 0, guard = 0; paid < wanted && guard < 3660; d = d.addDays(1), ++guard) {
        if (!otherwiseWorking(d)) continue;
        if (holidayOn(d)) {
            r.dayList << LeaveDay{d, Currency(), holidayOn(d)->name + QStringLiteral(": a public holiday, paid as one")};
            continue;
        }
        const DailyRate rdp = RelevantDailyPay(e, EffectivePattern(wage, employeeID, d), d);
        const DailyRate adp = AverageDailyPay(wage, e, pays, d);
        QString used;
        const Currency rate = dailyRate(rdp, adp, terms.dailyPay, &used);
        const double share = std::min(1.0, days - paid);
        const Currency amount = ToCents(Currency::fromDouble(rate.toDouble() * share));
        if (r.rateUsed.isEmpty()) {
            r.rateUsed = used;
            r.rate = rate;
        }
        r.dayList << LeaveDay{d, amount, QStringLiteral("otherwise working day, paid at ") + used};
        total += amount;
        ++paid;
    }
    if (r.rateUsed.isEmpty()) r.rateUsed = QStringLiteral("none");
    r.amount = total;
    return r;
}

void AddLeaveToPay(Database& wage, qint32 wageID, qint32 employeeID, const LeavePayResult& r) {
    const QVariantList row =
        wage.firstRow(QStringLiteral("SELECT EmployeeID, Reference FROM Wages WHERE WageID = %1").arg(wageID));
    if (row.isEmpty()) throw VbError(5, QStringLiteral("LeavePay"), QStringLiteral("There is no pay %1.").arg(wageID));
    if (CLng(row.at(0)) != employeeID)
        throw VbError(5, QStringLiteral("LeavePay"),
                      QStringLiteral("Pay %1 is not a pay of employee %2.").arg(wageID).arg(employeeID));
    if (!IsNull(row.at(1)) && !CStr(row.at(1)).isEmpty())
        throw VbError(5, QStringLiteral("LeavePay"),
                      QStringLiteral("Pay %1 is committed and cannot be changed.").arg(wageID));
    if (r.amount <= Currency())
        throw VbError(5, QStringLiteral("LeavePay"), QStringLiteral("The leave is worth nothing: no line is added."));
    auto addLine = [&](qint32 name, double units, Currency amount) {
        wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, "
                                    "Payment) VALUES (?, ?, ?, ?, ?)"),
                     {wageID, name, units, ToCents(Currency::fromDouble(amount.toDouble() / units)).toDouble(),
                      amount.toDouble()});
    };
    if (r.workedHours > 0) {
        const qint32 name = PaymentNameForKind(wage, EarningKind::PublicHolidayWorked, QStringLiteral("Public Holiday Worked"));
        addLine(name, double(r.workedHours), r.workedPay);
        if (r.alternativeEarned)
            for (const LeaveDay& d : r.dayList)
                if (d.amount > Currency())
                    EarnAlternativeHoliday(wage, employeeID, d.date, QStringLiteral("Worked ") + d.note.section(u':', 0, 0));
        return;
    }
    int paidDays = 0;
    for (const LeaveDay& d : r.dayList)
        if (d.amount > Currency()) ++paidDays;
    const double units = r.kind == LeaveKind::Annual ? r.days : std::max(1, paidDays);
    addLine(PaymentNameForKind(wage, EarningKindOf(r.kind), LeaveLineCaption(r.kind)), units, r.amount);
    if (r.kind == LeaveKind::Alternative)
        for (const LeaveDay& d : r.dayList)
            if (d.amount > Currency()) CloseAlternativeHoliday(wage, employeeID, d.date, false);
}

} // namespace ql::holidays
