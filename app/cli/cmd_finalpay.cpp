// The holiday part of a final pay, the leave liability of a day, and alternative holidays.
#include "CliCommand.h"
#include "HolidaySession.h"
#include "holidays/CashUp.h"
#include "holidays/Entitlements.h"
#include "holidays/FinalPay.h"
#include "holidays/LeaveLiability.h"
#include "holidays/LeaveLiabilityReport.h"
#include "frame/SettingGetters.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/VbError.h"
#include <QJsonArray>
#include <QJsonObject>

using namespace ql::holidays;

namespace {

// final-pay EMPLOYEE_ID YYYY-MM-DD [--add-to WAGE_ID]
int finalPay(const QStringList& args, QTextStream& out) {
    if (args.size() != 2 && args.size() != 4) throw cli::CliUsageError();
    const int employeeID = cli::wholeArgument(args.at(0));
    const QDate lastDay = cli::isoDateArgument(args.at(1));
    const auto o = cli::holidayOptions(args, 2, {QStringLiteral("add-to")});
    const int addTo = o.contains(QStringLiteral("add-to")) ? cli::wholeArgument(o.value(QStringLiteral("add-to"))) : 0;
    FinalPayResult r;
    QString name;
    std::optional<ql::FinalPayTax> tax;
    {
        cli::HolidaySession session;
        try {
            r = ComputeFinalPay(session.wage(), employeeID, lastDay);
            if (addTo > 0) AddFinalPayLines(session.wage(), addTo, r);
            else tax = ql::FinalHolidayTaxOn(employeeID, lastDay, r.total);
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
        name = session.employeeName(employeeID);
    }
    if (addTo > 0) {
        cli::RecalculatePay(addTo);
        cli::HolidaySession session;
        tax = ql::StoredFinalPayTax(addTo);
    }
    QJsonObject j = cli::finalPayJson(r);
    j.insert(QStringLiteral("EmployeeID"), employeeID);
    j.insert(QStringLiteral("Name"), name);
    if (addTo > 0) j.insert(QStringLiteral("AddedToPay"), addTo);
    // On a pay, the pay's tax; without one, the holiday pay as an extra pay paid on the last day apart from
    // a regular pay.
    if (tax) {
        j.insert(QStringLiteral("Tax"), cli::finalPayTaxJson(*tax));
        j.insert(QStringLiteral("TaxBasis"), addTo > 0 ? QStringLiteral("The pay's tax, its holiday lines an extra pay.")
                                                       : QStringLiteral("The holiday pay as an extra pay paid on the "
                                                                        "last day apart from a regular pay."));
    }
    cli::printJson(out, j);
    return 0;
}

// leave-liability YYYY-MM-DD [--csv | --pdf FILE]
int leaveLiability(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 3) throw cli::CliUsageError();
    const QDate day = cli::isoDateArgument(args.at(0));
    const bool csv = args.size() == 2;
    if (csv && args.at(1) != QLatin1String("--csv")) throw cli::CliUsageError();
    const bool pdf = args.size() == 3;
    if (pdf && args.at(1) != QLatin1String("--pdf")) throw cli::CliUsageError();
    cli::HolidaySession session;
    Liability l;
    try {
        l = LeaveLiabilityOn(session.wage(), day);
        ql::Database farm;
        farm.open(ql::DataFileName());
        NameLiabilityRows(session.wage(), farm, l);
    } catch (const ql::VbError& e) {
        throw cli::CliFailure(e.description());
    }
    if (csv) {
        out << LiabilityCsv(l);
        return 0;
    }
    if (pdf) {
        int pages = 0;
        try {
            pages = ql::WriteReportPdf(LeaveLiabilityReport(l, ql::Firm()), args.at(2));
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
        out << args.at(2) << QStringLiteral(": %1 employees, %2 pages\n").arg(l.rows.size()).arg(pages);
        return 0;
    }
    QJsonArray rows;
    for (const LiabilityRow& r : l.rows) {
        QJsonObject j;
        j.insert(QStringLiteral("EmployeeID"), r.employeeID);
        j.insert(QStringLiteral("Name"), r.name);
        j.insert(QStringLiteral("AnnualWeeks"), r.annualWeeks);
        j.insert(QStringLiteral("WeeklyRate"), cli::money(r.weeklyRate));
        j.insert(QStringLiteral("RateUsed"), r.weeklyRateUsed);
        j.insert(QStringLiteral("AnnualValue"), cli::money(r.annualValue));
        j.insert(QStringLiteral("Accrued8Percent"), cli::money(r.accrued));
        j.insert(QStringLiteral("SickDays"), r.sickDays);
        j.insert(QStringLiteral("AlternativeHolidays"), r.alternativeHolidays);
        j.insert(QStringLiteral("DailyRate"), cli::money(r.dailyRate));
        j.insert(QStringLiteral("AlternativeValue"), cli::money(r.alternativeValue));
        j.insert(QStringLiteral("Total"), cli::money(r.total));
        rows << j;
    }
    QJsonObject o;
    o.insert(QStringLiteral("Date"), cli::isoDate(day));
    o.insert(QStringLiteral("Employees"), rows);
    o.insert(QStringLiteral("Total"), cli::money(l.total));
    cli::printJson(out, o);
    return 0;
}

// alternative-holidays EMPLOYEE_ID [--earned YYYY-MM-DD | --taken YYYY-MM-DD | --paid-out YYYY-MM-DD]
int alternativeHolidays(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const int employeeID = cli::wholeArgument(args.at(0));
    const auto o = cli::holidayOptions(args, 1, {QStringLiteral("earned"), QStringLiteral("taken"), QStringLiteral("paid-out")});
    if (o.size() > 1) throw cli::CliUsageError();
    cli::HolidaySession session;
    ql::Database& wage = session.wage();
    if (wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE EmployeeID = %1").arg(employeeID)).toInt() == 0)
        throw cli::CliFailure(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
    if (o.contains(QStringLiteral("earned")))
        EarnAlternativeHoliday(wage, employeeID, cli::isoDateArgument(o.value(QStringLiteral("earned"))), QString());
    for (const QString& key : {QStringLiteral("taken"), QStringLiteral("paid-out")})
        if (o.contains(key) &&
            !CloseAlternativeHoliday(wage, employeeID, cli::isoDateArgument(o.value(key)), key == QLatin1String("paid-out")))
            throw cli::CliFailure(QStringLiteral("Employee %1 has no alternative holiday open on that day.").arg(employeeID));
    QJsonArray list;
    for (const AlternativeHoliday& a : AlternativeHolidays(wage, employeeID)) {
        QJsonObject j;
        j.insert(QStringLiteral("earnedOn"), cli::isoDate(a.earnedOn));
        j.insert(QStringLiteral("takenOn"), a.takenOn.isValid() ? QJsonValue(cli::isoDate(a.takenOn)) : QJsonValue());
        j.insert(QStringLiteral("paidOut"), a.paidOut.isValid() ? QJsonValue(cli::isoDate(a.paidOut)) : QJsonValue());
        j.insert(QStringLiteral("comments"), a.comments);
        list << j;
    }
    QJsonObject j;
    j.insert(QStringLiteral("EmployeeID"), employeeID);
    j.insert(QStringLiteral("AlternativeHolidays"), list);
    j.insert(QStringLiteral("Open"), OpenAlternativeHolidays(wage, employeeID, QDate(9999, 12, 31)));
    cli::printJson(out, j);
    return 0;
}

const cli::CliCommand finalPayCommand("final-pay", "final-pay EMPLOYEE_ID YYYY-MM-DD [--add-to WAGE_ID]", finalPay);
// The printed form needs a painter on text, so the command runs with a (screenless) GUI application.
const cli::CliCommand leaveLiabilityCommand("leave-liability", "leave-liability YYYY-MM-DD [--csv | --pdf FILE]",
                                            leaveLiability, true);
const cli::CliCommand alternativeHolidaysCommand(
    "alternative-holidays",
    "alternative-holidays EMPLOYEE_ID [--earned YYYY-MM-DD | --taken YYYY-MM-DD | --paid-out YYYY-MM-DD]",
    alternativeHolidays);

} // namespace

namespace {

// cash-up EMPLOYEE_ID YYYY-MM-DD --weeks W [--add-to WAGE_ID]
int cashUp(const QStringList& args, QTextStream& out) {
    if (args.size() < 2) throw cli::CliUsageError();
    const int employeeID = cli::wholeArgument(args.at(0));
    const QDate day = cli::isoDateArgument(args.at(1));
    const auto o = cli::holidayOptions(args, 2, {QStringLiteral("weeks"), QStringLiteral("add-to")});
    bool ok = false;
    const double weeks = o.value(QStringLiteral("weeks")).toDouble(&ok);
    if (!ok) throw cli::CliUsageError();
    const int addTo = o.contains(QStringLiteral("add-to")) ? cli::wholeArgument(o.value(QStringLiteral("add-to"))) : 0;
    ql::holidays::CashUpResult r;
    {
        cli::HolidaySession session;
        try {
            r = ql::holidays::ComputeCashUp(session.wage(), employeeID, day, weeks);
            if (addTo > 0) ql::holidays::ApplyCashUp(session.wage(), addTo, r);
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    if (addTo > 0) cli::RecalculatePay(addTo);
    QJsonObject j;
    j.insert(QStringLiteral("EmployeeID"), employeeID);
    j.insert(QStringLiteral("Requested"), cli::isoDate(day));
    j.insert(QStringLiteral("Weeks"), weeks);
    j.insert(QStringLiteral("BalanceWeeks"), r.balanceWeeks);
    j.insert(QStringLiteral("CashedUpThisYear"), r.cashedUpThisYear);
    j.insert(QStringLiteral("OWP"), cli::money(r.owp.amount));
    j.insert(QStringLiteral("AWE"), cli::money(r.awe.amount));
    j.insert(QStringLiteral("RateUsed"), r.rateUsed);
    j.insert(QStringLiteral("Amount"), cli::money(r.amount));
    j.insert(QStringLiteral("Refusal"), r.refusal.isEmpty() ? QJsonValue() : QJsonValue(r.refusal));
    if (addTo > 0) j.insert(QStringLiteral("AddedToPay"), addTo);
    cli::printJson(out, j);
    return 0;
}

const cli::CliCommand cashUpCommand("cash-up", "cash-up EMPLOYEE_ID YYYY-MM-DD --weeks W [--add-to WAGE_ID]", cashUp);

} // namespace
