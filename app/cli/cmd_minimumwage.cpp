// The minimum wage check of a pay, and with --apply the "Minimum wage top-up" line put on the pay and
// the pay recalculated as after an edit of its payment lines.
#include "CliCommand.h"
#include "HolidaySession.h"
#include "holidays/LeavePay.h"
#include "holidays/MinimumWage.h"
#include "holidays/PayAsYouGo.h"
#include "runtime/VbError.h"
#include <QJsonArray>
#include <QJsonObject>
#include <cmath>

using namespace ql::holidays;

namespace {

QJsonObject checkJson(const MinimumWageCheck& c) {
    QJsonObject j;
    j.insert(QStringLiteral("WageID"), c.wageID);
    j.insert(QStringLiteral("EmployeeID"), c.employeeID);
    j.insert(QStringLiteral("PeriodFrom"), cli::isoDate(c.periodStart));
    j.insert(QStringLiteral("PeriodTo"), cli::isoDate(c.periodEnd));
    j.insert(QStringLiteral("Hours"), std::round(double(c.hours) * 100.0) / 100.0);
    j.insert(QStringLiteral("HoursFrom"), c.hoursSource);
    j.insert(QStringLiteral("PayThatCounts"), cli::money(c.payThatCounts));
    j.insert(QStringLiteral("Rate"), c.rateKind);
    j.insert(QStringLiteral("HourlyMinimum"), cli::money(c.hourlyMinimum));
    j.insert(QStringLiteral("Minimum"), cli::money(c.minimum));
    QJsonArray parts;
    for (const MinimumWagePart& p : c.parts) {
        QJsonObject pj;
        pj.insert(QStringLiteral("from"), cli::isoDate(p.from));
        pj.insert(QStringLiteral("to"), cli::isoDate(p.to));
        pj.insert(QStringLiteral("hours"), std::round(p.hours * 10000.0) / 10000.0);
        pj.insert(QStringLiteral("hourlyMinimum"), cli::money(p.hourlyMinimum));
        pj.insert(QStringLiteral("minimum"), cli::money(ToCents(p.minimum)));
        parts << pj;
    }
    j.insert(QStringLiteral("Parts"), parts);
    if (!c.hoursShared.isEmpty()) j.insert(QStringLiteral("HoursShared"), c.hoursShared);
    j.insert(QStringLiteral("TopUp"), cli::money(c.topUp));
    j.insert(QStringLiteral("TopUpOnPay"), cli::money(c.existingTopUp));
    j.insert(QStringLiteral("Committed"), c.committed);
    j.insert(QStringLiteral("Message"), c.message.isEmpty() ? QJsonValue() : QJsonValue(c.message));
    return j;
}

int minimumWage(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 2) throw cli::CliUsageError();
    const qint32 wageID = cli::wholeArgument(args.at(0));
    const bool apply = args.size() == 2;
    if (apply && args.at(1) != QLatin1String("--apply")) throw cli::CliUsageError();
    MinimumWageCheck c;
    {
        cli::HolidaySession session;
        try {
            c = CheckMinimumWage(session.wage(), wageID);
            if (apply) ApplyMinimumWageTopUp(session.wage(), c);
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    if (apply) cli::RecalculatePay(wageID);
    QJsonObject j = checkJson(c);
    if (apply) {
        cli::HolidaySession session;
        const MinimumWageCheck after = CheckMinimumWage(session.wage(), wageID);
        j.insert(QStringLiteral("Applied"), true);
        j.insert(QStringLiteral("TopUpOnPay"), cli::money(after.existingTopUp));
        j.insert(QStringLiteral("Gross"), cli::money(ql::CCur(session.wage().scalar(
                                              QStringLiteral("SELECT Gross FROM Wages WHERE WageID = %1").arg(wageID)))));
    }
    cli::printJson(out, j);
    return 0;
}

const cli::CliCommand minimumWageCommand("minimum-wage", "minimum-wage WAGE_ID [--apply]", minimumWage);

} // namespace

namespace {

// pay-as-you-go WAGE_ID [--apply]
int payAsYouGo(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 2) throw cli::CliUsageError();
    const qint32 wageID = cli::wholeArgument(args.at(0));
    const bool apply = args.size() == 2;
    if (apply && args.at(1) != QLatin1String("--apply")) throw cli::CliUsageError();
    ql::holidays::PayAsYouGoResult r;
    {
        cli::HolidaySession session;
        try {
            r = ql::holidays::PayAsYouGoOf(session.wage(), wageID);
            if (apply) ql::holidays::ApplyPayAsYouGo(session.wage(), r);
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    if (apply) cli::RecalculatePay(wageID);
    QJsonObject j;
    j.insert(QStringLiteral("WageID"), wageID);
    j.insert(QStringLiteral("PayAsYouGo"), r.allowed);
    j.insert(QStringLiteral("GrossEarnings"), cli::money(r.grossEarnings));
    j.insert(QStringLiteral("HolidayPay"), cli::money(r.holidayPay));
    j.insert(QStringLiteral("OnPay"), cli::money(apply ? r.holidayPay : r.onPay));
    cli::printJson(out, j);
    return 0;
}

const cli::CliCommand payAsYouGoCommand("pay-as-you-go", "pay-as-you-go WAGE_ID [--apply]", payAsYouGo);

} // namespace
