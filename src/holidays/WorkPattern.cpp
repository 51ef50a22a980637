#include "WorkPattern.h"
#include "EarningKinds.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"

namespace ql::holidays {

namespace {

const std::array<const char*, 7> kDays{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

void ensureRegion(Database& wage) { EnsureHolidayTables(wage); }

} // namespace

int WorkPattern::daysPerWeek() const {
    int n = 0;
    for (float h : hours)
        if (h > 0) ++n;
    return n;
}

float WorkPattern::hoursPerWeek() const {
    float t = 0;
    for (float h : hours)
        t += h;
    return t;
}

std::optional<WorkPattern> PatternOn(Database& wage, qint32 employeeID, const QDate& day) {
    EnsureHolidayTables(wage);
    auto rs = wage.openRecordset(QStringLiteral("SELECT * FROM HolidayWorkPattern WHERE EmployeeID = %1 AND "
                                                "FromDate <= '%2' ORDER BY FromDate DESC LIMIT 1")
                                     .arg(employeeID)
                                     .arg(day.toString(Qt::ISODate)),
                                 RecordsetType::Snapshot);
    std::optional<WorkPattern> out;
    if (!rs->EOF_()) {
        WorkPattern p;
        p.from = CDate(rs->value(QStringLiteral("FromDate")));
        for (std::size_t i = 0; i < kDays.size(); ++i) {
            const QVariant v = rs->value(QString::fromLatin1(kDays.at(i)));
            p.hours.at(i) = IsNull(v) ? 0.0f : CSng(v);
        }
        out = p;
    }
    rs->Close();
    return out;
}

std::optional<WorkPattern> EffectivePattern(Database& wage, qint32 employeeID, const QDate& day, bool* assumed) {
    if (assumed) *assumed = false;
    auto kept = PatternOn(wage, employeeID, day);
    if (kept) return kept;
    const QVariant hours = wage.scalar(
        QStringLiteral("SELECT sum(t.Standardhours) FROM PaymentTypes t JOIN PaymentNames n ON n.PaymentNameID = "
                       "t.PaymentNameID JOIN Employees e ON e.EmployeeTypeID = t.EmployeeTypeID WHERE e.EmployeeID = %1 "
                       "AND (n.EarningKind = 'ordinary-time' OR n.EarningKind = 'overtime-regular')")
            .arg(employeeID));
    const float week = IsNull(hours) ? 0.0f : CSng(hours);
    if (week <= 0) return std::nullopt;
    WorkPattern p;
    for (std::size_t i = 0; i < 5; ++i)
        p.hours.at(i) = week / 5.0f;
    if (assumed) *assumed = true;
    return p;
}

void SetWorkPattern(Database& wage, qint32 employeeID, const WorkPattern& p) {
    EnsureHolidayTables(wage);
    QVariantList values{employeeID, p.from.toString(Qt::ISODate)};
    for (float h : p.hours)
        values << h;
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO HolidayWorkPattern (EmployeeID, FromDate, Mon, Tue, Wed, Thu, "
                                "Fri, Sat, Sun) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                 values);
}

QString MinimumWageRateCode(MinimumWageRate r) {
    switch (r) {
    case MinimumWageRate::StartingOut: return QStringLiteral("starting-out");
    case MinimumWageRate::Training: return QStringLiteral("training");
    case MinimumWageRate::Adult: break;
    }
    return QStringLiteral("adult");
}

QString DailyPayCode(DailyPayChoice c) {
    switch (c) {
    case DailyPayChoice::Relevant: return QStringLiteral("relevant");
    case DailyPayChoice::Average: return QStringLiteral("average");
    case DailyPayChoice::Automatic: break;
    }
    return QStringLiteral("automatic");
}

HolidayTerms TermsOf(Database& wage, qint32 employeeID) {
    ensureRegion(wage);
    HolidayTerms t;
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT PayAsYouGo, MinimumWageRate, DailyPay, Region, Continuous, PenalRate FROM HolidayTerms "
                       "WHERE EmployeeID = %1")
            .arg(employeeID));
    if (row.isEmpty()) return t;
    t.payAsYouGo = !IsNull(row.at(0)) && CBool(row.at(0));
    const QString mw = IsNull(row.at(1)) ? QString() : row.at(1).toString();
    for (MinimumWageRate r : {MinimumWageRate::Adult, MinimumWageRate::StartingOut, MinimumWageRate::Training})
        if (mw == MinimumWageRateCode(r)) t.minimumWage = r;
    const QString dp = IsNull(row.at(2)) ? QString() : row.at(2).toString();
    for (DailyPayChoice c : {DailyPayChoice::Automatic, DailyPayChoice::Relevant, DailyPayChoice::Average})
        if (dp == DailyPayCode(c)) t.dailyPay = c;
    t.region = IsNull(row.at(3)) ? QString() : row.at(3).toString();
    t.continuous = IsNull(row.at(4)) || CBool(row.at(4));
    t.penalRate = IsNull(row.at(5)) ? 0.0f : CSng(row.at(5));
    return t;
}

void SetTerms(Database& wage, qint32 employeeID, const HolidayTerms& t) {
    ensureRegion(wage);
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO HolidayTerms (EmployeeID, PayAsYouGo, MinimumWageRate, "
                                "DailyPay, Region, Continuous, PenalRate) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                 {employeeID, t.payAsYouGo ? 1 : 0, MinimumWageRateCode(t.minimumWage), DailyPayCode(t.dailyPay),
                  t.region, t.continuous ? 1 : 0, double(t.penalRate)});
}

PayDays PayDaysOf(Database& wage, qint32 wageID) {
    EnsureHolidayTables(wage);
    PayDays d;
    const QVariantList row =
        wage.firstRow(QStringLiteral("SELECT DaysWorked, HoursWorked FROM HolidayPayDays WHERE WageID = %1").arg(wageID));
    if (!row.isEmpty()) {
        if (!IsNull(row.at(0))) d.days = CSng(row.at(0));
        if (!IsNull(row.at(1))) d.hours = CSng(row.at(1));
    }
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT WorkDate, Hours FROM HolidayPayDayHours WHERE WageID = %1 ORDER BY WorkDate").arg(wageID),
        RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant v = rs->value(0);
        const QDate day = !IsNull(v) && IsDate(v) ? CDate(v) : QDate();
        if (day.isValid() && !IsNull(rs->value(1))) d.perDay.insert(day, CSng(rs->value(1)));
    }
    rs->Close();
    if (!d.perDay.isEmpty()) {
        float days = 0, hours = 0;
        for (float h : d.perDay) {
            if (h > 0) ++days;
            hours += h;
        }
        d.days = days;
        d.hours = hours;
    }
    return d;
}

void SetPayDays(Database& wage, qint32 wageID, const PayDays& d) {
    EnsureHolidayTables(wage);
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO HolidayPayDays (WageID, DaysWorked, HoursWorked) VALUES (?, ?, ?)"),
                 {wageID, d.days ? QVariant(*d.days) : QVariant(), d.hours ? QVariant(*d.hours) : QVariant()});
    wage.execute(QStringLiteral("DELETE FROM HolidayPayDayHours WHERE WageID = %1").arg(wageID));
    for (auto it = d.perDay.constBegin(); it != d.perDay.constEnd(); ++it)
        wage.execute(QStringLiteral("INSERT INTO HolidayPayDayHours (WageID, WorkDate, Hours) VALUES (?, ?, ?)"),
                     {wageID, it.key().toString(Qt::ISODate), double(it.value())});
}

} // namespace ql::holidays
