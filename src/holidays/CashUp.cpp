#include "CashUp.h"
#include "Entitlements.h"
#include "LeavePay.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace ql::holidays {

CashUpResult ComputeCashUp(Database& wage, qint32 employeeID, const QDate& requested, double weeks) {
    const Employee e = LoadEmployee(wage, employeeID);
    const QList<PayRecord> pays = LoadPays(wage, employeeID);
    CashUpResult r;
    r.employeeID = employeeID;
    r.requested = requested;
    r.weeks = weeks;
    r.owp = OrdinaryWeeklyPay(e, pays, EffectivePattern(wage, employeeID, requested), requested);
    r.awe = AverageWeeklyEarnings(e, pays, requested);
    r.rateUsed = r.awe.amount > r.owp.amount ? QStringLiteral("AWE") : QStringLiteral("OWP");
    r.rate = std::max(r.awe.amount, r.owp.amount);
    r.amount = ToCents(Currency::fromDouble(r.rate.toDouble() * weeks));
    const AnnualBalance b = AnnualBalanceOn(wage, employeeID, requested);
    r.balanceWeeks = b.balanceWeeks;
    if (b.lastAnniversary.isValid()) {
        // Paid-out rows of the ledger in this entitlement year, in weeks of the employee's working days.
        const QVariant days = wage.scalar(QStringLiteral("SELECT sum(NumberofDays) FROM LeaveDetails WHERE EmployeeID = %1 "
                                                         "AND LeaveTypeID = 1 AND TransTypeID = 5 AND DateFrom >= '%2' "
                                                         "AND DateFrom <= '%3'")
                                              .arg(employeeID)
                                              .arg(b.lastAnniversary.toString(Qt::ISODate), requested.toString(Qt::ISODate)));
        r.cashedUpThisYear = (IsNull(days) ? 0.0 : CDbl(days)) / b.daysPerWeek;
    }
    if (weeks <= 0)
        r.refusal = QStringLiteral("A cash-up is of more than no weeks.");
    else if (!b.lastAnniversary.isValid())
        r.refusal = QStringLiteral("The employee has no annual holidays yet: a cash-up comes from an entitlement.");
    else if (r.cashedUpThisYear + weeks > 1.0 + 1e-9)
        r.refusal = QStringLiteral("At most one week a year may be cashed up: %1 weeks already were since %2.")
                        .arg(r.cashedUpThisYear, 0, 'f', 2)
                        .arg(b.lastAnniversary.toString(Qt::ISODate));
    else if (weeks > r.balanceWeeks + 1e-9)
        r.refusal = QStringLiteral("Only %1 weeks of annual holidays are entitled and not taken.").arg(r.balanceWeeks, 0, 'f', 2);
    return r;
}

void ApplyCashUp(Database& wage, qint32 wageID, const CashUpResult& r) {
    if (!r.refusal.isEmpty()) throw VbError(5, QStringLiteral("CashUp"), r.refusal);
    const QVariantList row = wage.firstRow(QStringLiteral("SELECT EmployeeID, Reference FROM Wages WHERE WageID = %1").arg(wageID));
    if (row.isEmpty()) throw VbError(5, QStringLiteral("CashUp"), QStringLiteral("There is no pay %1.").arg(wageID));
    if (CLng(row.at(0)) != r.employeeID)
        throw VbError(5, QStringLiteral("CashUp"), QStringLiteral("Pay %1 is not a pay of employee %2.").arg(wageID).arg(r.employeeID));
    if (!IsNull(row.at(1)) && !CStr(row.at(1)).isEmpty())
        throw VbError(5, QStringLiteral("CashUp"), QStringLiteral("Pay %1 is committed and cannot be changed.").arg(wageID));
    const qint32 name = PaymentNameForKind(wage, EarningKind::CashUp, QStringLiteral("Holiday Cash-up"));
    wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) "
                                "VALUES (?, ?, ?, ?, ?)"),
                 {wageID, name, r.weeks, r.rate.toDouble(), r.amount.toDouble()});
    const AnnualBalance b = AnnualBalanceOn(wage, r.employeeID, r.requested);
    const QString day = r.requested.toString(Qt::ISODate);
    wage.execute(QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, DateFrom, "
                                "DateTo, Comments) VALUES (?, 1, 5, ?, ?, ?, 'Cash-up')"),
                 {r.employeeID, r.weeks * b.daysPerWeek, day, day});
}

} // namespace ql::holidays
