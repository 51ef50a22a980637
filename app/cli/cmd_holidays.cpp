// Holiday pay: the public holidays of a year, what a leave is worth, and the settings the rules need
// (kinds of earnings, work patterns, days and hours of a pay, an employee's holiday terms).
#include "CliCommand.h"
#include "HolidaySession.h"
#include "holidays/EarningKinds.h"
#include "holidays/LeavePay.h"
#include "holidays/PublicHolidays.h"
#include "holidays/WorkPattern.h"
#include "runtime/VbError.h"
#include <QJsonArray>
#include <QJsonObject>

using namespace ql::holidays;

namespace {

int publicHolidays(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const int year = cli::wholeArgument(args.at(0));
    const auto o = cli::holidayOptions(args, 1, {QStringLiteral("region")});
    if (year < 1900 || year > 9999) throw cli::CliFailure(QStringLiteral("The year %1 is out of range.").arg(year));
    QString region;
    if (o.contains(QStringLiteral("region"))) {
        region = CanonicalRegion(o.value(QStringLiteral("region")));
        if (region.isEmpty())
            throw cli::CliFailure(QStringLiteral("\"%1\" is not a region with an anniversary day. The regions are: %2.")
                                      .arg(o.value(QStringLiteral("region")), HolidayRegions().join(QStringLiteral(", "))));
    }
    QJsonArray list;
    for (const PublicHoliday& h : PublicHolidaysOf(year, region)) {
        QJsonObject j;
        j.insert(QStringLiteral("name"), h.name);
        j.insert(QStringLiteral("date"), cli::isoDate(h.date));
        j.insert(QStringLiteral("weekday"), QLocale(QLocale::English).dayName(h.date.dayOfWeek()));
        j.insert(QStringLiteral("observed"), cli::isoDate(h.observed));
        j.insert(QStringLiteral("region"), h.region.isEmpty() ? QJsonValue() : QJsonValue(h.region));
        list << j;
    }
    QJsonObject o2;
    o2.insert(QStringLiteral("year"), year);
    o2.insert(QStringLiteral("region"), region.isEmpty() ? QJsonValue() : QJsonValue(region));
    o2.insert(QStringLiteral("holidays"), list);
    if (!MatarikiDate(year).isValid())
        o2.insert(QStringLiteral("note"), QStringLiteral("Matariki has no gazetted date in %1 (dates are kept for %2 to %3).")
                                              .arg(year)
                                              .arg(FirstMatarikiYear())
                                              .arg(LastMatarikiYear()));
    cli::printJson(out, o2);
    return 0;
}

QJsonObject weeklyJson(const WeeklyRate& r) {
    QJsonObject j;
    j.insert(QStringLiteral("amount"), cli::money(r.amount));
    j.insert(QStringLiteral("from"), cli::isoDate(r.from));
    j.insert(QStringLiteral("to"), cli::isoDate(r.to));
    j.insert(QStringLiteral("grossEarnings"), cli::money(r.grossEarnings));
    j.insert(QStringLiteral("leftOut"), cli::money(r.leftOut));
    j.insert(QStringLiteral("divisor"), r.divisor);
    QJsonArray ids;
    for (qint32 id : r.wageIDs)
        ids << id;
    j.insert(QStringLiteral("wageIDs"), ids);
    j.insert(QStringLiteral("source"), r.source);
    return j;
}

QJsonObject dailyJson(const DailyRate& r, bool relevant) {
    QJsonObject j;
    j.insert(QStringLiteral("amount"), r.available ? cli::money(r.amount) : QJsonValue());
    j.insert(QStringLiteral("from"), cli::isoDate(r.from));
    j.insert(QStringLiteral("to"), cli::isoDate(r.to));
    if (relevant) {
        j.insert(QStringLiteral("hours"), double(r.hours));
        j.insert(QStringLiteral("hourlyRate"), cli::money(r.hourlyRate));
    } else {
        j.insert(QStringLiteral("grossEarnings"), cli::money(r.grossEarnings));
        j.insert(QStringLiteral("days"), double(r.days));
        j.insert(QStringLiteral("paysWithDaysFromPattern"), r.daysEstimated);
    }
    j.insert(QStringLiteral("source"), r.source);
    return j;
}

int leavePay(const QStringList& args, QTextStream& out) {
    if (args.size() < 2) throw cli::CliUsageError();
    const int employeeID = cli::wholeArgument(args.at(0));
    bool ok = false;
    const LeaveKind kind = LeaveKindFromCode(args.at(1), &ok);
    if (!ok) throw cli::CliUsageError();
    const auto o = cli::holidayOptions(args, 2, {QStringLiteral("from"), QStringLiteral("days"),
                                                 QStringLiteral("worked-hours"), QStringLiteral("add-to"),
                                                 QStringLiteral("relation")});
    if (!o.contains(QStringLiteral("from")) || !o.contains(QStringLiteral("days"))) throw cli::CliUsageError();
    const QDate from = cli::isoDateArgument(o.value(QStringLiteral("from")));
    bool daysOk = false;
    const double days = o.value(QStringLiteral("days")).toDouble(&daysOk);
    if (!daysOk || days <= 0 || days > 366)
        throw cli::CliFailure(QStringLiteral("The number of days is a number above 0 and up to 366."));
    float worked = 0;
    if (o.contains(QStringLiteral("worked-hours"))) {
        bool wOk = false;
        worked = o.value(QStringLiteral("worked-hours")).toFloat(&wOk);
        if (!wOk || worked <= 0 || worked > 24 || kind != LeaveKind::Public)
            throw cli::CliFailure(QStringLiteral("Hours worked are given for a public holiday only, above 0 and up to 24."));
    }
    bool closeRelative = true;
    if (o.contains(QStringLiteral("relation"))) {
        const QString v = o.value(QStringLiteral("relation"));
        if (kind != LeaveKind::Bereavement || (v != QLatin1String("close") && v != QLatin1String("other")))
            throw cli::CliFailure(QStringLiteral("The relation is given for bereavement leave only: close or other."));
        closeRelative = v == QLatin1String("close");
    }
    const int addTo = o.contains(QStringLiteral("add-to")) ? cli::wholeArgument(o.value(QStringLiteral("add-to"))) : 0;
    LeavePayResult r;
    {
        cli::HolidaySession session;
        try {
            r = ComputeLeavePay(session.wage(), employeeID, kind, from, days, worked, closeRelative);
            if (addTo > 0) AddLeaveToPay(session.wage(), addTo, employeeID, r);
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    if (addTo > 0) cli::RecalculatePay(addTo);
    QJsonObject j;
    j.insert(QStringLiteral("EmployeeID"), employeeID);
    j.insert(QStringLiteral("Leave"), LeaveKindCode(kind));
    j.insert(QStringLiteral("From"), cli::isoDate(from));
    j.insert(QStringLiteral("Days"), days);
    j.insert(QStringLiteral("OWP"), cli::money(r.owp.amount));
    j.insert(QStringLiteral("AWE"), cli::money(r.awe.amount));
    j.insert(QStringLiteral("RDP"), r.rdp.available ? cli::money(r.rdp.amount) : QJsonValue());
    j.insert(QStringLiteral("ADP"), r.adp.available ? cli::money(r.adp.amount) : QJsonValue());
    j.insert(QStringLiteral("RateUsed"), r.rateUsed);
    j.insert(QStringLiteral("Rate"), cli::money(r.rate));
    j.insert(QStringLiteral("Amount"), cli::money(r.amount));
    QJsonObject inputs;
    inputs.insert(QStringLiteral("OWP"), weeklyJson(r.owp));
    inputs.insert(QStringLiteral("AWE"), weeklyJson(r.awe));
    inputs.insert(QStringLiteral("RDP"), dailyJson(r.rdp, true));
    inputs.insert(QStringLiteral("ADP"), dailyJson(r.adp, false));
    if (kind == LeaveKind::Annual) inputs.insert(QStringLiteral("DaysPerWeek"), r.daysPerWeek);
    j.insert(QStringLiteral("Inputs"), inputs);
    QJsonArray dayList;
    for (const LeaveDay& d : r.dayList) {
        QJsonObject dj;
        dj.insert(QStringLiteral("date"), cli::isoDate(d.date));
        dj.insert(QStringLiteral("amount"), cli::money(d.amount));
        dj.insert(QStringLiteral("note"), d.note);
        dayList << dj;
    }
    if (kind != LeaveKind::Annual) j.insert(QStringLiteral("DayList"), dayList);
    if (r.workedHours > 0) {
        j.insert(QStringLiteral("WorkedHours"), double(r.workedHours));
        j.insert(QStringLiteral("WorkedPay"), cli::money(r.workedPay));
        j.insert(QStringLiteral("TimeAndAHalf"), cli::money(r.timeAndAHalf));
        j.insert(QStringLiteral("PenalRate"), r.penalRate > 0 ? QJsonValue(double(r.penalRate)) : QJsonValue());
        j.insert(QStringLiteral("PenalPay"), r.penalRate > 0 ? cli::money(r.penalPay) : QJsonValue());
        j.insert(QStringLiteral("AlternativeHolidayEarned"), r.alternativeEarned);
    }
    if (r.checked) {
        QJsonObject e;
        e.insert(QStringLiteral("Entitled"), r.entitled);
        e.insert(QStringLiteral("Basis"), r.entitlementBasis);
        e.insert(QStringLiteral("AvailableDays"), r.availableDays);
        e.insert(QStringLiteral("BeyondEntitlement"), r.beyondEntitlement);
        e.insert(QStringLiteral("HoursTest"), r.hoursTest);
        if (kind == LeaveKind::Bereavement)
            e.insert(QStringLiteral("Relation"), closeRelative ? QStringLiteral("close") : QStringLiteral("other"));
        j.insert(QStringLiteral("Entitlement"), e);
    }
    j.insert(QStringLiteral("Notes"), QJsonArray::fromStringList(r.notes));
    if (addTo > 0) j.insert(QStringLiteral("AddedToPay"), addTo);
    cli::printJson(out, j);
    return 0;
}

const cli::CliCommand publicHolidaysCommand("public-holidays", "public-holidays YEAR [--region NAME]", publicHolidays);
const cli::CliCommand leavePayCommand(
    "leave-pay",
    "leave-pay EMPLOYEE_ID annual|public|sick|bereavement|family-violence|alternative --from YYYY-MM-DD --days N "
    "[--worked-hours H] [--relation close|other] [--add-to WAGE_ID]",
    leavePay);

} // namespace
