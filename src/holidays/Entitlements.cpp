#include "Entitlements.h"
#include "EarningKinds.h"
#include "HoursTest.h"
#include "PayHistory.h"
#include "WorkPattern.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <algorithm>

namespace ql::holidays {

namespace {

// The ledger's leave types and the transactions that take from a balance.
constexpr int kAnnualLeave = 1, kSickLeave = 2, kWithoutPay = 5;
constexpr int kTaken = 2, kPaidOut = 5;

struct LedgerRow {
    QDate from, to;
    double days = 0;
};

QList<LedgerRow> takenRows(Database& wage, qint32 employeeID, int leaveType, const QDate& upTo) {
    QList<LedgerRow> out;
    auto rs = wage.openRecordset(QStringLiteral("SELECT NumberofDays, DateFrom, DateTo FROM LeaveDetails WHERE "
                                                "EmployeeID = %1 AND LeaveTypeID = %2 AND TransTypeID IN (%3, %4) "
                                                "ORDER BY DateFrom")
                                     .arg(employeeID)
                                     .arg(leaveType)
                                     .arg(kTaken)
                                     .arg(kPaidOut),
                                 RecordsetType::Snapshot);
    while (!rs->EOF_()) {
        LedgerRow r;
        r.days = IsNull(rs->value(0)) ? 0 : CDbl(rs->value(0));
        r.from = IsNull(rs->value(1)) ? QDate() : CDate(rs->value(1));
        r.to = IsNull(rs->value(2)) ? r.from : CDate(rs->value(2));
        if (r.from.isValid() && r.from <= upTo) out << r;
        rs->MoveNext();
    }
    rs->Close();
    return out;
}

QDate dateOrNull(const QVariant& v) { return IsNull(v) ? QDate() : CDate(v); }

} // namespace

AnnualBalance AnnualBalanceOn(Database& wage, qint32 employeeID, const QDate& day) {
    const Employee e = LoadEmployee(wage, employeeID);
    AnnualBalance b;
    // Unpaid leave of more than a week in a year of service moves the anniversaries that follow.
    const QList<LedgerRow> unpaid = takenRows(wage, employeeID, kWithoutPay, day);
    QDate yearStart = e.hired;
    for (int guard = 0; guard < 100; ++guard) {
        QDate anniversary = yearStart.addYears(1);
        int unpaidDays = 0;
        for (const LedgerRow& r : unpaid)
            if (r.from >= yearStart && r.from < anniversary) unpaidDays += int(r.from.daysTo(r.to)) + 1;
        if (unpaidDays > 7) {
            anniversary = anniversary.addDays(unpaidDays - 7);
            b.unpaidDaysMoved += unpaidDays - 7;
        }
        if (anniversary > day) {
            b.nextAnniversary = anniversary;
            break;
        }
        b.lastAnniversary = anniversary;
        ++b.completedYears;
        yearStart = anniversary;
    }
    b.entitledWeeks = 4.0 * b.completedYears;
    const auto pattern = EffectivePattern(wage, employeeID, day);
    b.daysPerWeek = pattern && pattern->daysPerWeek() > 0 ? pattern->daysPerWeek() : 5;
    for (const LedgerRow& r : takenRows(wage, employeeID, kAnnualLeave, day)) {
        b.takenDays += r.days;
        const auto p = EffectivePattern(wage, employeeID, r.from);
        b.takenWeeks += r.days / (p && p->daysPerWeek() > 0 ? p->daysPerWeek() : 5);
    }
    b.balanceWeeks = b.entitledWeeks - b.takenWeeks;
    return b;
}

SickBalance SickBalanceOn(Database& wage, qint32 employeeID, const QDate& day) {
    const LeaveEntitlement ent = EntitlementOn(wage, employeeID, day);
    SickBalance b;
    b.firstEntitled = ent.grants.isEmpty() ? QDate() : ent.grants.first();
    b.basis = ent.basis;
    b.hoursTest = ent.lastTest.to.isValid() ? ent.lastTest.working() : QString();
    const QList<LedgerRow> taken = takenRows(wage, employeeID, kSickLeave, day);
    double balance = 0;
    int next = 0;
    for (const QDate& grant : ent.grants) {
        // Days taken before this grant come off the balance first.
        for (; next < taken.size() && taken.at(next).from < grant; ++next) {
            balance -= taken.at(next).days;
            b.takenDays += taken.at(next).days;
        }
        balance = std::min(balance + 10.0, 20.0);
        b.entitledDays += 10;
    }
    for (; next < taken.size(); ++next) {
        balance -= taken.at(next).days;
        b.takenDays += taken.at(next).days;
    }
    b.balanceDays = balance;
    return b;
}

FamilyViolenceBalance FamilyViolenceBalanceOn(Database& wage, qint32 employeeID, const QDate& day) {
    const LeaveEntitlement ent = EntitlementOn(wage, employeeID, day);
    FamilyViolenceBalance b;
    b.basis = ent.basis;
    if (!ent.entitled()) return b;
    b.yearFrom = ent.lastGrant();
    const QVariant taken = wage.scalar(
        QStringLiteral("SELECT sum(d.DetailHours) FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = "
                       "d.PaymentNameID JOIN Wages w ON w.WageID = d.WageID WHERE w.EmployeeID = %1 AND n.EarningKind "
                       "= '%2' AND w.Date >= '%3' AND w.Date <= '%4'")
            .arg(employeeID)
            .arg(KindCode(EarningKind::FamilyViolenceLeavePay), b.yearFrom.toString(Qt::ISODate),
                 day.addDays(-1).toString(Qt::ISODate)));
    b.takenDays = IsNull(taken) ? 0.0 : CDbl(taken);
    b.balanceDays = std::max(0.0, 10.0 - b.takenDays);
    return b;
}

BereavementEntitlement BereavementOn(Database& wage, qint32 employeeID, const QDate& day, bool closeRelative) {
    const LeaveEntitlement ent = EntitlementOn(wage, employeeID, day);
    BereavementEntitlement b;
    b.entitled = ent.entitled();
    b.basis = ent.basis;
    b.days = b.entitled ? (closeRelative ? 3 : 1) : 0;
    return b;
}

QList<AlternativeHoliday> AlternativeHolidays(Database& wage, qint32 employeeID) {
    EnsureHolidayTables(wage);
    QList<AlternativeHoliday> out;
    auto rs = wage.openRecordset(QStringLiteral("SELECT AlternativeID, EarnedOn, TakenOn, PaidOut, Comments FROM "
                                                "HolidayAlternative WHERE EmployeeID = %1 ORDER BY EarnedOn, AlternativeID")
                                     .arg(employeeID),
                                 RecordsetType::Snapshot);
    while (!rs->EOF_()) {
        AlternativeHoliday a;
        a.id = CLng(rs->value(0));
        a.earnedOn = dateOrNull(rs->value(1));
        a.takenOn = dateOrNull(rs->value(2));
        a.paidOut = dateOrNull(rs->value(3));
        a.comments = IsNull(rs->value(4)) ? QString() : CStr(rs->value(4));
        out << a;
        rs->MoveNext();
    }
    rs->Close();
    return out;
}

int OpenAlternativeHolidays(Database& wage, qint32 employeeID, const QDate& day) {
    int n = 0;
    for (const AlternativeHoliday& a : AlternativeHolidays(wage, employeeID))
        if (a.earnedOn <= day && (!a.takenOn.isValid() || a.takenOn > day) && (!a.paidOut.isValid() || a.paidOut > day))
            ++n;
    return n;
}

qint32 EarnAlternativeHoliday(Database& wage, qint32 employeeID, const QDate& day, const QString& comments) {
    EnsureHolidayTables(wage);
    wage.execute(QStringLiteral("INSERT INTO HolidayAlternative (EmployeeID, EarnedOn, Comments) VALUES (?, ?, ?)"),
                 {employeeID, day.toString(Qt::ISODate), comments});
    return qint32(wage.lastInsertRowId());
}

bool CloseAlternativeHoliday(Database& wage, qint32 employeeID, const QDate& day, bool paidOut) {
    for (const AlternativeHoliday& a : AlternativeHolidays(wage, employeeID))
        if (a.open() && a.earnedOn <= day) {
            wage.execute(QStringLiteral("UPDATE HolidayAlternative SET %1 = ? WHERE AlternativeID = ?")
                             .arg(paidOut ? QStringLiteral("PaidOut") : QStringLiteral("TakenOn")),
                         {day.toString(Qt::ISODate), a.id});
            return true;
        }
    return false;
}

} // namespace ql::holidays
