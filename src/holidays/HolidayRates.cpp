#include "HolidayRates.h"
#include <algorithm>

namespace ql::holidays {

namespace {

Currency divide(Currency amount, double by) {
    return by > 0 ? Currency::fromDouble(amount.toDouble() / by) : Currency();
}

// The pattern's weekly pay: its hours at the pay rate, or the salary over 52 weeks.
Currency patternWeek(const Employee& e, const std::optional<WorkPattern>& pattern) {
    if (e.yearlySalary > Currency()) return divide(e.yearlySalary, 52.0);
    if (!pattern) return Currency();
    return Currency::fromDouble(e.payRate.toDouble() * double(pattern->hoursPerWeek()));
}

} // namespace

WeeklyRate OrdinaryWeeklyPay(const Employee& e, const QList<PayRecord>& pays,
                             const std::optional<WorkPattern>& pattern, const QDate& day) {
    WeeklyRate r;
    if (e.yearlySalary > Currency()) {
        // A salary says what an ordinary week is worth.
        r.amount = divide(e.yearlySalary, 52.0);
        r.source = QStringLiteral("yearly salary divided by 52");
        return r;
    }
    const PayRecord* last = LastPayBefore(pays, day);
    if (last) {
        // Four calendar weeks back from the end of the last pay period, or that period when longer.
        r.to = last->end;
        const int periodDays = int(last->start.daysTo(last->end)) + 1;
        r.from = r.to.addDays(1 - std::max(28, periodDays));
        for (const PayRecord* p : PaysEndingIn(pays, r.from.addDays(-1), r.to)) {
            r.grossEarnings += p->gross;
            r.leftOut += p->gross - p->ordinary;
            r.wageIDs << p->wageID;
        }
        r.divisor = 4;
        r.amount = divide(r.grossEarnings - r.leftOut, 4.0);
        r.source = QStringLiteral("gross earnings of the 4 weeks to the end of the last pay period, less irregular "
                                  "and discretionary payments, divided by 4");
    }
    const Currency agreed = patternWeek(e, pattern);
    if (!last || r.wageIDs.isEmpty()) {
        r.amount = agreed;
        r.source = pattern ? QStringLiteral("hours of the work pattern at the pay rate")
                           : QStringLiteral("no pay in the 4 weeks and no work pattern");
    }
    return r;
}

WeeklyRate AverageWeeklyEarnings(const Employee& e, const QList<PayRecord>& pays, const QDate& day) {
    WeeklyRate r;
    const PayRecord* last = LastPayBefore(pays, day);
    if (!last) {
        r.source = QStringLiteral("no pay before the holiday");
        return r;
    }
    r.to = last->end;
    r.from = r.to.addYears(-1).addDays(1);
    for (const PayRecord* p : PaysEndingIn(pays, r.from.addDays(-1), r.to)) {
        r.grossEarnings += p->gross;
        r.wageIDs << p->wageID;
    }
    // Employed for less than the 12 months: the weeks employed.
    if (e.hired > r.from) {
        r.from = e.hired;
        r.divisor = double(e.hired.daysTo(r.to) + 1) / 7.0;
        r.source = QStringLiteral("gross earnings since the start of employment divided by the weeks employed");
    } else {
        r.divisor = 52;
        r.source = QStringLiteral("gross earnings of the 12 months to the end of the last pay period divided by 52");
    }
    r.amount = divide(r.grossEarnings, r.divisor);
    return r;
}

DailyRate RelevantDailyPay(const Employee& e, const std::optional<WorkPattern>& pattern, const QDate& day) {
    DailyRate r;
    if (!pattern || !pattern->works(day)) {
        r.source = QStringLiteral("no hours in the work pattern on that day");
        return r;
    }
    r.hours = pattern->hoursOn(day);
    r.from = r.to = day;
    if (e.yearlySalary > Currency()) {
        r.amount = divide(e.yearlySalary, 52.0 * pattern->daysPerWeek());
        r.hourlyRate = divide(r.amount, double(r.hours));
        r.source = QStringLiteral("yearly salary over 52 weeks of the pattern's working days");
    } else {
        r.hourlyRate = e.payRate;
        r.amount = Currency::fromDouble(e.payRate.toDouble() * double(r.hours));
        r.source = QStringLiteral("hours of the work pattern on that day at the pay rate");
    }
    r.available = r.amount > Currency();
    return r;
}

DailyRate AverageDailyPay(Database& wage, const Employee& e, const QList<PayRecord>& pays, const QDate& day) {
    DailyRate r;
    const PayRecord* last = LastPayBefore(pays, day);
    if (!last) {
        r.source = QStringLiteral("no pay before the day");
        return r;
    }
    r.to = last->end;
    r.from = std::max(r.to.addDays(1 - 52 * 7), e.hired);
    for (const PayRecord* p : PaysEndingIn(pays, r.from.addDays(-1), r.to)) {
        r.grossEarnings += p->gross;
        if (p->daysEntered) {
            r.days += *p->daysEntered;
            continue;
        }
        const auto pattern = EffectivePattern(wage, e.employeeID, p->end);
        if (!pattern) continue;
        ++r.daysEstimated;
        for (QDate d = std::max(p->start, r.from); d <= p->end; d = d.addDays(1))
            if (pattern->works(d)) r.days += 1;
    }
    r.source = QStringLiteral("gross earnings of the 52 weeks to the end of the last pay period divided by the days "
                              "worked or on paid leave");
    r.amount = divide(r.grossEarnings, double(r.days));
    r.available = r.days > 0;
    return r;
}

} // namespace ql::holidays
