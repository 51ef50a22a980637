// What the holiday rules ask the user to decide: the kind of each payment and allowance name, an
// employee's work pattern (otherwise working days and their hours), the days and hours of a pay, and
// the employee's holiday terms (pay as you go, minimum wage rate, daily pay, region).
#include "CliCommand.h"
#include "HolidaySession.h"
#include "holidays/EarningKinds.h"
#include "holidays/NamedKinds.h"
#include "holidays/PayHistory.h"
#include "holidays/PublicHolidays.h"
#include "holidays/WorkPattern.h"
#include "runtime/VbError.h"
#include <QJsonArray>
#include <QJsonObject>

using namespace ql::holidays;

namespace {

// earning-kinds [--set TABLE ID KIND]
int earningKinds(const QStringList& args, QTextStream& out) {
    if (!args.isEmpty() && (args.size() != 4 || args.at(0) != QLatin1String("--set"))) throw cli::CliUsageError();
    cli::HolidaySession session;
    ql::Database& wage = session.wage();
    EnsureHolidayTables(wage);
    if (!args.isEmpty()) {
        try {
            SetNameKind(wage, args.at(1), cli::wholeArgument(args.at(2)), args.at(3));
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    QJsonArray all;
    for (const NamedKind& n : NamedKinds(wage)) {
        QJsonObject j;
        j.insert(QStringLiteral("table"), n.table);
        j.insert(QStringLiteral("id"), n.id);
        j.insert(QStringLiteral("name"), n.name);
        j.insert(QStringLiteral("kind"), n.code);
        const EarningKind k = KindFromCode(n.code);
        j.insert(QStringLiteral("grossEarnings"), InGrossEarnings(k));
        j.insert(QStringLiteral("ordinaryWeeklyPay"), InOrdinaryWeeklyPay(k));
        all << j;
    }
    QJsonObject j;
    j.insert(QStringLiteral("names"), all);
    j.insert(QStringLiteral("kinds"), QJsonArray::fromStringList(KindCodes()));
    cli::printJson(out, j);
    return 0;
}

void requireEmployee(ql::Database& wage, int employeeID) {
    if (wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE EmployeeID = %1").arg(employeeID)).toInt() == 0)
        throw cli::CliFailure(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
}

// work-pattern EMPLOYEE_ID [--from YYYY-MM-DD --hours MON,TUE,WED,THU,FRI,SAT,SUN] [--on YYYY-MM-DD]
int workPattern(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const int employeeID = cli::wholeArgument(args.at(0));
    const auto o = cli::holidayOptions(args, 1, {QStringLiteral("from"), QStringLiteral("hours"), QStringLiteral("on")});
    if (o.contains(QStringLiteral("from")) != o.contains(QStringLiteral("hours"))) throw cli::CliUsageError();
    cli::HolidaySession session;
    requireEmployee(session.wage(), employeeID);
    QDate on = o.contains(QStringLiteral("on")) ? cli::isoDateArgument(o.value(QStringLiteral("on"))) : QDate::currentDate();
    if (o.contains(QStringLiteral("from"))) {
        WorkPattern p;
        p.from = cli::isoDateArgument(o.value(QStringLiteral("from")));
        const QStringList parts = o.value(QStringLiteral("hours")).split(QLatin1Char(','));
        if (parts.size() != 7)
            throw cli::CliFailure(QStringLiteral("A work pattern gives the hours of seven days, Monday to Sunday."));
        for (int i = 0; i < 7; ++i) {
            bool ok = false;
            const float h = parts.at(i).trimmed().toFloat(&ok);
            if (!ok || h < 0 || h > 24)
                throw cli::CliFailure(QStringLiteral("\"%1\" is not a number of hours from 0 to 24.").arg(parts.at(i)));
            p.hours.at(std::size_t(i)) = h;
        }
        SetWorkPattern(session.wage(), employeeID, p);
        if (!o.contains(QStringLiteral("on"))) on = std::max(on, p.from);
    }
    const auto p = PatternOn(session.wage(), employeeID, on);
    QJsonObject j;
    j.insert(QStringLiteral("EmployeeID"), employeeID);
    j.insert(QStringLiteral("on"), cli::isoDate(on));
    if (p) {
        j.insert(QStringLiteral("from"), cli::isoDate(p->from));
        QJsonArray hours;
        for (float h : p->hours)
            hours << double(h);
        j.insert(QStringLiteral("hours"), hours);
        j.insert(QStringLiteral("daysPerWeek"), p->daysPerWeek());
        j.insert(QStringLiteral("hoursPerWeek"), double(p->hoursPerWeek()));
    } else {
        j.insert(QStringLiteral("from"), QJsonValue());
    }
    cli::printJson(out, j);
    return 0;
}

std::optional<float> optionalNumber(const QHash<QString, QString>& o, const QString& key, float max) {
    if (!o.contains(key)) return std::nullopt;
    bool ok = false;
    const float v = o.value(key).toFloat(&ok);
    if (!ok || v < 0 || v > max)
        throw cli::CliFailure(QStringLiteral("\"%1\" is not a number from 0 to %2.").arg(o.value(key)).arg(max));
    return v;
}

// pay-days WAGE_ID [--days N] [--hours H] [--day YYYY-MM-DD=H]... [--clear-days]
int payDays(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const int wageID = cli::wholeArgument(args.at(0));
    // --day may come again and again; the other options once each.
    QStringList rest{args.at(0)};
    QList<QPair<QDate, QString>> dayHours;
    bool clear = false;
    for (int i = 1; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--clear-days")) {
            clear = true;
        } else if (args.at(i) == QLatin1String("--day")) {
            if (i + 1 >= args.size()) throw cli::CliUsageError();
            const QString v = args.at(++i);
            const int eq = int(v.indexOf(u'='));
            if (eq < 0) throw cli::CliUsageError();
            dayHours << qMakePair(cli::isoDateArgument(v.left(eq)), v.mid(eq + 1));
        } else {
            rest << args.at(i);
        }
    }
    const auto o = cli::holidayOptions(rest, 1, {QStringLiteral("days"), QStringLiteral("hours")});
    cli::HolidaySession session;
    ql::Database& wage = session.wage();
    const QVariantList pay = wage.firstRow(QStringLiteral("SELECT EmployeeID FROM Wages WHERE WageID = %1").arg(wageID));
    if (pay.isEmpty()) throw cli::CliFailure(QStringLiteral("There is no pay %1.").arg(wageID));
    PayDays d = PayDaysOf(wage, wageID);
    if (clear) {
        d.perDay.clear();
        d.days.reset();
        d.hours.reset();
    }
    if (!dayHours.isEmpty()) {
        QDate start, end;
        for (const PayRecord& p : LoadPays(wage, ql::CLng(pay.at(0))))
            if (p.wageID == wageID) {
                start = p.start;
                end = p.end;
            }
        for (const auto& [day, text] : dayHours) {
            bool ok = false;
            const float h = text.toFloat(&ok);
            if (!ok || h < 0 || h > 24)
                throw cli::CliFailure(QStringLiteral("\"%1\" is not a number of hours from 0 to 24.").arg(text));
            if (day < start || day > end)
                throw cli::CliFailure(QStringLiteral("%1 is not in the period of pay %2 (%3 to %4).")
                                          .arg(day.toString(Qt::ISODate))
                                          .arg(wageID)
                                          .arg(start.toString(Qt::ISODate), end.toString(Qt::ISODate)));
            d.perDay.insert(day, h);
        }
    }
    if (!d.perDay.isEmpty() && !o.isEmpty())
        throw cli::CliFailure(
            QStringLiteral("Pay %1 has hours for single days: its days and hours come from them.").arg(wageID));
    if (const auto v = optionalNumber(o, QStringLiteral("days"), 366)) d.days = v;
    if (const auto v = optionalNumber(o, QStringLiteral("hours"), 24 * 366)) d.hours = v;
    if (!o.isEmpty() || !dayHours.isEmpty() || clear) {
        SetPayDays(wage, wageID, d);
        d = PayDaysOf(wage, wageID);
    }
    QJsonObject j;
    j.insert(QStringLiteral("WageID"), wageID);
    j.insert(QStringLiteral("DaysWorked"), d.days ? QJsonValue(double(*d.days)) : QJsonValue());
    j.insert(QStringLiteral("HoursWorked"), d.hours ? QJsonValue(double(*d.hours)) : QJsonValue());
    QJsonArray perDay;
    for (auto it = d.perDay.constBegin(); it != d.perDay.constEnd(); ++it) {
        QJsonObject dj;
        dj.insert(QStringLiteral("date"), cli::isoDate(it.key()));
        dj.insert(QStringLiteral("hours"), double(it.value()));
        perDay << dj;
    }
    j.insert(QStringLiteral("PerDay"), perDay);
    cli::printJson(out, j);
    return 0;
}

// holiday-terms EMPLOYEE_ID [--pay-as-you-go yes|no] [--minimum-wage adult|starting-out|training]
//               [--daily-pay automatic|relevant|average] [--region NAME] [--continuous yes|no]
//               [--penal-rate R]
int holidayTerms(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const int employeeID = cli::wholeArgument(args.at(0));
    const auto o = cli::holidayOptions(args, 1, {QStringLiteral("pay-as-you-go"), QStringLiteral("minimum-wage"),
                                                 QStringLiteral("daily-pay"), QStringLiteral("region"),
                                                 QStringLiteral("continuous"), QStringLiteral("penal-rate")});
    cli::HolidaySession session;
    ql::Database& wage = session.wage();
    requireEmployee(wage, employeeID);
    HolidayTerms t = TermsOf(wage, employeeID);
    if (o.contains(QStringLiteral("pay-as-you-go"))) {
        const QString v = o.value(QStringLiteral("pay-as-you-go"));
        if (v != QLatin1String("yes") && v != QLatin1String("no")) throw cli::CliUsageError();
        t.payAsYouGo = v == QLatin1String("yes");
    }
    if (o.contains(QStringLiteral("minimum-wage"))) {
        const QString v = o.value(QStringLiteral("minimum-wage"));
        bool found = false;
        for (MinimumWageRate r : {MinimumWageRate::Adult, MinimumWageRate::StartingOut, MinimumWageRate::Training})
            if (v == MinimumWageRateCode(r)) {
                t.minimumWage = r;
                found = true;
            }
        if (!found) throw cli::CliUsageError();
    }
    if (o.contains(QStringLiteral("daily-pay"))) {
        const QString v = o.value(QStringLiteral("daily-pay"));
        bool found = false;
        for (DailyPayChoice c : {DailyPayChoice::Automatic, DailyPayChoice::Relevant, DailyPayChoice::Average})
            if (v == DailyPayCode(c)) {
                t.dailyPay = c;
                found = true;
            }
        if (!found) throw cli::CliUsageError();
    }
    if (o.contains(QStringLiteral("region"))) {
        const QString v = o.value(QStringLiteral("region"));
        t.region = v.isEmpty() ? QString() : CanonicalRegion(v);
        if (!v.isEmpty() && t.region.isEmpty())
            throw cli::CliFailure(QStringLiteral("\"%1\" is not a region with an anniversary day. The regions are: %2.")
                                      .arg(v, HolidayRegions().join(QStringLiteral(", "))));
    }
    if (o.contains(QStringLiteral("continuous"))) {
        const QString v = o.value(QStringLiteral("continuous"));
        if (v != QLatin1String("yes") && v != QLatin1String("no")) throw cli::CliUsageError();
        t.continuous = v == QLatin1String("yes");
    }
    if (o.contains(QStringLiteral("penal-rate"))) {
        bool ok = false;
        const float v = o.value(QStringLiteral("penal-rate")).toFloat(&ok);
        if (!ok || v < 0 || v > 5)
            throw cli::CliFailure(QStringLiteral("The penal rate is a multiple of the hourly rate from 0 (none) to 5."));
        t.penalRate = v;
    }
    if (!o.isEmpty()) SetTerms(wage, employeeID, t);
    QJsonObject j;
    j.insert(QStringLiteral("EmployeeID"), employeeID);
    j.insert(QStringLiteral("PayAsYouGo"), t.payAsYouGo);
    j.insert(QStringLiteral("MinimumWage"), MinimumWageRateCode(t.minimumWage));
    j.insert(QStringLiteral("DailyPay"), DailyPayCode(t.dailyPay));
    j.insert(QStringLiteral("Region"), t.region.isEmpty() ? QJsonValue() : QJsonValue(t.region));
    j.insert(QStringLiteral("Continuous"), t.continuous);
    j.insert(QStringLiteral("PenalRate"), t.penalRate > 0 ? QJsonValue(double(t.penalRate)) : QJsonValue());
    cli::printJson(out, j);
    return 0;
}

const cli::CliCommand earningKindsCommand("earning-kinds", "earning-kinds [--set payment|taxable|nontaxable ID KIND]",
                                          earningKinds);
const cli::CliCommand workPatternCommand(
    "work-pattern", "work-pattern EMPLOYEE_ID [--from YYYY-MM-DD --hours MON,TUE,WED,THU,FRI,SAT,SUN] [--on YYYY-MM-DD]",
    workPattern);
const cli::CliCommand payDaysCommand("pay-days",
                                     "pay-days WAGE_ID [--days N] [--hours H] [--day YYYY-MM-DD=H]... [--clear-days]",
                                     payDays);
const cli::CliCommand holidayTermsCommand(
    "holiday-terms",
    "holiday-terms EMPLOYEE_ID [--pay-as-you-go yes|no] [--minimum-wage adult|starting-out|training] "
    "[--daily-pay automatic|relevant|average] [--region NAME] [--continuous yes|no] [--penal-rate R]",
    holidayTerms);

} // namespace
