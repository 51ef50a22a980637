#include "HoursTest.h"
#include "WorkPattern.h"
#include <algorithm>
#include <limits>
#include <vector>

namespace ql::holidays {

namespace {

// The hours of each day from `from` to `to`, the pays' hours spread over their periods.
std::vector<double> dailyHours(const QList<PayRecord>& pays, const QDate& from, const QDate& to) {
    std::vector<double> h(std::size_t(from.daysTo(to) + 1), 0.0);
    for (const PayRecord& p : pays) {
        if (p.end < from || p.start > to) continue;
        if (!p.dayHours.isEmpty()) {
            // Hours entered day by day stand where they were worked.
            for (auto it = p.dayHours.constBegin(); it != p.dayHours.constEnd(); ++it)
                if (it.key() >= from && it.key() <= to) h[std::size_t(from.daysTo(it.key()))] += double(it.value());
            continue;
        }
        const double hours = p.hoursEntered ? double(*p.hoursEntered) : double(p.lineHours);
        const qint64 length = p.start.daysTo(p.end) + 1;
        if (hours <= 0 || length <= 0) continue;
        const double perDay = hours / double(length);
        for (QDate d = std::max(p.start, from); d <= std::min(p.end, to); d = d.addDays(1))
            h[std::size_t(from.daysTo(d))] += perDay;
    }
    return h;
}

double sumOver(const std::vector<double>& h, const QDate& base, const QDate& a, const QDate& b) {
    double s = 0;
    for (QDate d = a; d <= b; d = d.addDays(1))
        s += h[std::size_t(base.daysTo(d))];
    return s;
}

// Tests are on whole hours as the pays give them; a rounding of the spread must not fail a week.
constexpr double kSlack = 1e-6;

} // namespace

QString HoursTest::working() const {
    return QStringLiteral("%1 to %2: %3 hours, an average of %4 a week (at least 10), the fewest in a week %5 "
                          "(at least 1) and in a month %6 (at least 40): %7")
        .arg(from.toString(Qt::ISODate), to.toString(Qt::ISODate))
        .arg(totalHours, 0, 'f', 2)
        .arg(averageWeekly, 0, 'f', 2)
        .arg(leastWeek, 0, 'f', 2)
        .arg(leastMonth, 0, 'f', 2)
        .arg(passes ? QStringLiteral("met") : QStringLiteral("not met"));
}

HoursTest SixMonthHoursTest(const QList<PayRecord>& pays, const QDate& to) {
    HoursTest t;
    t.to = to;
    t.from = to.addMonths(-6).addDays(1);
    const std::vector<double> h = dailyHours(pays, t.from, t.to);
    t.totalHours = sumOver(h, t.from, t.from, t.to);
    t.averageWeekly = t.totalHours / (double(t.from.daysTo(t.to) + 1) / 7.0);
    t.leastWeek = std::numeric_limits<double>::max();
    for (QDate end = t.to; end.addDays(-6) >= t.from; end = end.addDays(-7))
        t.leastWeek = std::min(t.leastWeek, sumOver(h, t.from, end.addDays(-6), end));
    t.leastMonth = std::numeric_limits<double>::max();
    for (int k = 0; k < 6; ++k) {
        const QDate end = t.to.addMonths(-k), start = t.to.addMonths(-k - 1).addDays(1);
        t.leastMonth = std::min(t.leastMonth, sumOver(h, t.from, std::max(start, t.from), end));
    }
    t.passes = t.averageWeekly + kSlack >= 10.0 && (t.leastWeek + kSlack >= 1.0 || t.leastMonth + kSlack >= 40.0);
    return t;
}

LeaveEntitlement EntitlementDates(const Employee& e, const QList<PayRecord>& pays, bool continuous, const QDate& day) {
    LeaveEntitlement r;
    const QDate sixMonths = e.hired.addMonths(6);
    const QDate last = e.finished.isValid() ? std::min(day, e.finished) : day;
    // An entitlement arises on the day after six months that meet the test.
    auto testFor = [&](const QDate& grant) { return SixMonthHoursTest(pays, grant.addDays(-1)); };
    // The first day from `from` on whose six months before meet the test; invalid when none up to `last`.
    auto firstPassing = [&](const QDate& from) {
        for (QDate g = from; g <= last; g = g.addDays(1)) {
            const HoursTest t = testFor(g);
            if (t.passes) {
                r.lastTest = t;
                return g;
            }
        }
        return QDate();
    };
    if (continuous) {
        for (QDate g = sixMonths; g <= last; g = g.addYears(1))
            r.grants << g;
        r.basis = QStringLiteral("six months' current continuous employment on %1").arg(sixMonths.toString(Qt::ISODate));
        r.lastTest = testFor(r.grants.isEmpty() ? day.addDays(1) : r.grants.last());
        return r;
    }
    QDate g = firstPassing(sixMonths);
    if (!g.isValid()) {
        r.lastTest = testFor(day.addDays(1));
        r.basis = QStringLiteral("the work is not continuous and the hours test is not met");
        return r;
    }
    r.basis = QStringLiteral("the hours test, met for the six months to %1").arg(g.addDays(-1).toString(Qt::ISODate));
    while (g.isValid()) {
        r.grants << g;
        const QDate next = g.addYears(1);
        if (next > last) break;
        const HoursTest t = testFor(next);
        if (t.passes) {
            r.lastTest = t;
            g = next;
        } else {
            g = firstPassing(next.addDays(1));
        }
    }
    return r;
}

LeaveEntitlement EntitlementOn(Database& wage, qint32 employeeID, const QDate& day) {
    const Employee e = LoadEmployee(wage, employeeID);
    return EntitlementDates(e, LoadPays(wage, employeeID), TermsOf(wage, employeeID).continuous, day);
}

} // namespace ql::holidays
