#include "LeaveLiabilityReport.h"
#include "LeavePay.h"
#include "runtime/VbError.h"
#include "staff/EmployeeStore.h"

namespace ql::holidays {

namespace {

QString money2(Currency c) { return ToCents(c).toFixed4().chopped(2); }

} // namespace

void NameLiabilityRows(Database& wage, Database& farm, Liability& l) {
    for (LiabilityRow& r : l.rows) {
        try {
            const EmployeeDetails d = ql::LoadEmployee(wage, farm, r.employeeID);
            const QString name = d.LastName.isEmpty() ? d.FirstName : d.LastName + QStringLiteral(", ") + d.FirstName;
            if (!name.trimmed().isEmpty()) r.name = name;
        } catch (const VbError&) {
            // no address: the row keeps its number as its name
        }
    }
}

QStringList LiabilityCaptions() {
    return {QStringLiteral("Employee"),      QStringLiteral("Annual weeks"), QStringLiteral("Weekly rate"),
            QStringLiteral("Annual value"),  QStringLiteral("8% accrued"),   QStringLiteral("Sick days"),
            QStringLiteral("Alt. holidays"), QStringLiteral("Daily rate"),   QStringLiteral("Alt. value"),
            QStringLiteral("Total")};
}

QStringList LiabilityCells(const LiabilityRow& r) {
    return {r.name,
            QString::number(r.annualWeeks, 'f', 4),
            QStringLiteral("%1 %2").arg(money2(r.weeklyRate), r.weeklyRateUsed),
            money2(r.annualValue),
            money2(r.accrued),
            QString::number(r.sickDays, 'f', 1),
            QString::number(r.alternativeHolidays),
            money2(r.dailyRate),
            money2(r.alternativeValue),
            money2(r.total)};
}

QStringList LiabilityTotalCells(const Liability& l) {
    Currency annual, accrued, alternative;
    double weeks = 0, sick = 0;
    int alt = 0;
    for (const LiabilityRow& r : l.rows) {
        annual += r.annualValue;
        accrued += r.accrued;
        alternative += r.alternativeValue;
        weeks += r.annualWeeks;
        sick += r.sickDays;
        alt += r.alternativeHolidays;
    }
    return {QStringLiteral("%1 employees").arg(l.rows.size()),
            QString::number(weeks, 'f', 4),
            QString(),
            money2(annual),
            money2(accrued),
            QString::number(sick, 'f', 1),
            QString::number(alt),
            QString(),
            money2(alternative),
            money2(l.total)};
}

PreparedReport LeaveLiabilityReport(const Liability& l, const QString& firm) {
    PreparedReport report;
    report.name = QStringLiteral("Leave Liability at %1").arg(l.day.toString(QStringLiteral("d MMM yyyy")));
    report.landscape = true;
    report.fontFamily = QStringLiteral("DejaVu Sans");
    report.printDate = QDate::currentDate().toString(QStringLiteral("d/MM/yyyy"));
    report.headings << PreparedText{QStringLiteral("center"), QStringLiteral("title"), firm, QString()}
                    << PreparedText{QStringLiteral("center"), QStringLiteral("bold"), report.name, QString()};
    const QStringList captions = LiabilityCaptions();
    for (int c = 0; c < captions.size(); ++c)
        report.columns << PreparedColumn{captions.at(c), c == 0 ? 2.2 : c == 2 ? 1.5 : 1.0,
                                         c == 0 ? Qt::AlignLeft : Qt::AlignRight};
    for (const LiabilityRow& r : l.rows) {
        report.rows << LiabilityCells(r);
        report.rowStyles << QString();
    }
    report.totals = LiabilityTotalCells(l);
    report.summaries << PreparedText{QStringLiteral("left"), QStringLiteral("small"),
                                     QStringLiteral("Annual holidays at the greater of ordinary weekly pay (OWP) and "
                                                    "average weekly earnings (AWE) on the day; 8% of gross earnings "
                                                    "since the last anniversary; alternative holidays at the daily "
                                                    "rate. Sick days are shown, not valued."),
                                     QString()};
    report.footers << PreparedText{QStringLiteral("right"), QStringLiteral("small"),
                                   QStringLiteral("Page {PageNumber} of {TotalPages}"), QString()};
    return report;
}

} // namespace ql::holidays
