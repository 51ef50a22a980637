#include "PayHistory.h"
#include "WorkPattern.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include <QHash>

namespace ql::holidays {

namespace {

QDate dateOf(const QVariant& v) {
    if (IsNull(v) || !IsDate(v)) return QDate();
    const QDate d = CDate(v);
    return d == ZeroDate ? QDate() : d;
}

Currency money(const QVariant& v) { return IsNull(v) ? Currency() : CCur(v); }

void addLine(PayRecord& p, EarningKind kind, Currency amount, float units) {
    if (InGrossEarnings(kind)) p.gross += amount;
    if (InOrdinaryWeeklyPay(kind)) p.ordinary += amount;
    if (CountsForMinimumWage(kind)) {
        p.workPay += amount;
        p.lineHours += units;
    }
    if (kind == EarningKind::BoardLodging) p.lodging += amount;
}

} // namespace

Employee LoadEmployee(Database& wage, qint32 employeeID) {
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT e.DateHired, e.DateFinished, e.PayRate, e.YearlyTotal, p.PaysPerYear FROM Employees e "
                       "LEFT JOIN PayInterval p ON p.PayIntervalID = e.PayIntervalID WHERE e.EmployeeID = %1")
            .arg(employeeID));
    if (row.isEmpty())
        throw VbError(5, QStringLiteral("Holidays"), QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
    Employee e;
    e.employeeID = employeeID;
    e.hired = dateOf(row.at(0));
    e.finished = dateOf(row.at(1));
    e.payRate = money(row.at(2));
    e.yearlySalary = money(row.at(3));
    e.paysPerYear = IsNull(row.at(4)) ? 0 : int(CSng(row.at(4)));
    if (!e.hired.isValid())
        throw VbError(5, QStringLiteral("Holidays"),
                      QStringLiteral("Employee %1 has no hired date, so no holiday can be worked out.").arg(employeeID));
    return e;
}

QList<PayRecord> LoadPays(Database& wage, qint32 employeeID) {
    EnsureHolidayTables(wage);
    QList<PayRecord> pays;
    QHash<qint32, int> index;
    {
        auto rs = wage.openRecordset(
            QStringLiteral("SELECT w.WageID, w.Date, w.OneOff, p.NumberOfDays, p.PaysPerYear FROM Wages w LEFT JOIN PayInterval p "
                           "ON p.IntervalName = w.PayInterval WHERE w.EmployeeID = %1 ORDER BY w.Date, w.WageID")
                .arg(employeeID),
            RecordsetType::Snapshot);
        while (!rs->EOF_()) {
            PayRecord p;
            p.wageID = CLng(rs->value(0));
            p.end = dateOf(rs->value(1));
            p.oneOff = !IsNull(rs->value(2)) && CBool(rs->value(2));
            const int days = IsNull(rs->value(3)) ? 0 : int(CSng(rs->value(3)));
            const float perYear = IsNull(rs->value(4)) ? 0.0f : CSng(rs->value(4));
            if (p.oneOff || (days <= 0 && perYear <= 0))
                p.start = p.end;
            else if (days > 0)
                p.start = p.end.addDays(1 - days);
            else if (perYear >= 1 && 12 % int(perYear) == 0)
                // Monthly intervals have no number of days: whole months back.
                p.start = p.end.addMonths(-12 / int(perYear)).addDays(1);
            else
                p.start = p.end.addDays(1 - qRound(365.0 / perYear));
            if (p.end.isValid()) {
                index.insert(p.wageID, int(pays.size()));
                pays << p;
            }
            rs->MoveNext();
        }
        rs->Close();
    }
    const QString lines[] = {
        QStringLiteral("SELECT d.WageID, n.EarningKind, d.Payment, d.DetailHours FROM PaymentDetails d JOIN PaymentNames n "
                       "ON n.PaymentNameID = d.PaymentNameID JOIN Wages w ON w.WageID = d.WageID WHERE w.EmployeeID = %1"),
        QStringLiteral("SELECT d.WageID, n.EarningKind, d.TaxableAllow, 0 FROM TaxAllowDetails d JOIN TaxAllowName n "
                       "ON n.TaxNameID = d.TaxNameID JOIN Wages w ON w.WageID = d.WageID WHERE w.EmployeeID = %1"),
        QStringLiteral("SELECT d.WageID, n.EarningKind, d.NonTaxAllow, 0 FROM NonTaxAllowDetails d JOIN NonTaxAllowName n "
                       "ON n.NonTaxNameID = d.NonTaxNameID JOIN Wages w ON w.WageID = d.WageID WHERE w.EmployeeID = %1"),
    };
    for (const QString& sql : lines) {
        auto rs = wage.openRecordset(sql.arg(employeeID), RecordsetType::Snapshot);
        while (!rs->EOF_()) {
            const auto it = index.constFind(CLng(rs->value(0)));
            if (it != index.constEnd()) {
                const QVariant code = rs->value(1);
                const EarningKind kind = KindFromCode(IsNull(code) ? QString() : code.toString());
                addLine(pays[*it], kind, money(rs->value(2)), IsNull(rs->value(3)) ? 0.0f : CSng(rs->value(3)));
            }
            rs->MoveNext();
        }
        rs->Close();
    }
    for (PayRecord& p : pays) {
        const PayDays d = PayDaysOf(wage, p.wageID);
        p.daysEntered = d.days;
        p.hoursEntered = d.hours;
        p.dayHours = d.perDay;
    }
    return pays;
}

const PayRecord* LastPayBefore(const QList<PayRecord>& pays, const QDate& day) {
    const PayRecord* last = nullptr;
    for (const PayRecord& p : pays)
        if (!p.oneOff && p.end < day) last = &p;
    return last;
}

QList<const PayRecord*> PaysEndingIn(const QList<PayRecord>& pays, const QDate& fromExclusive, const QDate& to) {
    QList<const PayRecord*> out;
    for (const PayRecord& p : pays)
        if (p.end > fromExclusive && p.end <= to) out << &p;
    return out;
}

} // namespace ql::holidays
