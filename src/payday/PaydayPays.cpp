#include "PaydayPays.h"
#include "payengine/EmployeeTaxItems.h"
#include "payengine/PayTaxFigures.h"
#include "payengine/TaxItemLines.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <QHash>
#include <algorithm>
#include <cmath>

namespace ql {

namespace {

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}
Currency money(const QVariant& v) {
    return IsNull(v) ? Currency() : CCur(v);
}
float single(const QVariant& v) {
    return IsNull(v) ? 0.0f : CSng(v);
}

QDate date(const QVariant& v) {
    if (IsNull(v) || !IsDate(v)) return QDate();
    const QDate d = CDate(v);
    // The stored zero date means "none".
    return d == QDate(1899, 12, 30) ? QDate() : d;
}

struct Names {
    QString first;
    QString last;
};

QHash<qint32, Names> addressNames(const QList<qint32>& addressIDs) {
    QHash<qint32, Names> names;
    if (addressIDs.isEmpty()) return names;
    QStringList ids;
    for (qint32 id : addressIDs)
        ids << QString::number(id);
    Database farm;
    farm.open(DataFileName());
    auto rs =
        farm.openRecordset(QStringLiteral("SELECT AddressID, ContactFirstName, ContactLastName, BusName "
                                          "FROM Addresses WHERE AddressID IN (%1)")
                               .arg(ids.join(u',')),
                           RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        Names n{text(rs->value(QStringLiteral("ContactFirstName"))),
                text(rs->value(QStringLiteral("ContactLastName")))};
        if (n.first.isEmpty() && n.last.isEmpty()) n.last = text(rs->value(QStringLiteral("BusName")));
        names.insert(CLng(rs->value(QStringLiteral("AddressID"))), n);
    }
    rs->Close();
    farm.close();
    return names;
}

// Sum of a pay's deduction or contribution lines whose name row matches the condition.
Currency lineSum(Database& wage, const QString& sql) {
    const QVariant v = wage.scalar(sql);
    return IsNull(v) ? Currency() : CCur(v);
}

} // namespace

QDate PayPeriodStart(const QDate& end, float paysPerYear, float numberOfDays) {
    if (!end.isValid()) return QDate();
    if (numberOfDays >= 1.0f) return end.addDays(1 - static_cast<qint64>(std::lround(numberOfDays)));
    if (paysPerYear <= 0.0f) return end;
    if (std::lround(paysPerYear) == 12) return end.addMonths(-1).addDays(1);
    return end.addDays(1 - std::lround(365.0 / paysPerYear));
}

QString Cents(Currency amount) {
    const std::int64_t raw = amount.raw(); // ten-thousandths
    std::int64_t cents = raw / 100;
    const std::int64_t rest = raw % 100;
    if (rest > 50 || (rest == 50 && (cents % 2 != 0)))
        ++cents;
    else if (rest < -50 || (rest == -50 && (cents % 2 != 0)))
        --cents;
    return QString::number(cents);
}

QList<PaydayPay> LoadCommittedPays(Database& wage, const QDate& paymentDate) {
    QList<PaydayPay> pays;
    auto rs = wage.openRecordset(
        QStringLiteral(
            "SELECT Wages.WageID, Wages.EmployeeID, Wages.Date, Wages.PaymentDate, Wages.Reference, "
            "Wages.TaxCode, "
            "Wages.OneOff, Wages.TotalTaxable, Wages.PAYE, Wages.TakeHome, Wages.ESCTDeductions, "
            "Employees.AddressID, Employees.IRDNumber, Employees.DateHired, Employees.DateFinished, "
            "PayInterval.IntervalName, PayInterval.PaysPerYear, PayInterval.NumberOfDays, "
            "EmployeeAwardType.UnitOfPay "
            "FROM ((Wages INNER JOIN Employees ON Wages.EmployeeID = Employees.EmployeeID) "
            "LEFT JOIN PayInterval ON PayInterval.IntervalName = Wages.PayInterval) "
            "LEFT JOIN EmployeeAwardType ON EmployeeAwardType.EmployeeTypeID = Employees.EmployeeTypeID "
            "WHERE length(Wages.Reference) > 0 AND date(Wages.PaymentDate) = '%1' ORDER BY Wages.WageID")
            .arg(paymentDate.toString(Qt::ISODate)),
        RecordsetType::Snapshot);
    QList<qint32> addressIDs;
    QList<qint32> addressOf;
    for (; !rs->EOF_(); rs->MoveNext()) {
        PaydayPay p;
        p.wageID = CLng(rs->value(QStringLiteral("WageID")));
        p.employeeID = CLng(rs->value(QStringLiteral("EmployeeID")));
        p.irdNumber = text(rs->value(QStringLiteral("IRDNumber")));
        p.taxCode = text(rs->value(QStringLiteral("TaxCode")));
        p.reference = text(rs->value(QStringLiteral("Reference")));
        p.payDate = date(rs->value(QStringLiteral("Date")));
        p.paymentDate = date(rs->value(QStringLiteral("PaymentDate")));
        p.dateHired = date(rs->value(QStringLiteral("DateHired")));
        p.dateFinished = date(rs->value(QStringLiteral("DateFinished")));
        p.intervalName = text(rs->value(QStringLiteral("IntervalName")));
        p.paysPerYear = single(rs->value(QStringLiteral("PaysPerYear")));
        p.numberOfDays = single(rs->value(QStringLiteral("NumberOfDays")));
        const QVariant oneOff = rs->value(QStringLiteral("OneOff"));
        p.oneOff = !IsNull(oneOff) && CBool(oneOff);
        p.periodStart = p.oneOff ? p.payDate : PayPeriodStart(p.payDate, p.paysPerYear, p.numberOfDays);
        // An empty unit of pay is taken as hours, as a pay's lines take it.
        const QString unit = text(rs->value(QStringLiteral("UnitOfPay")));
        p.paidByTheHour = unit.isEmpty() || unit.startsWith(QStringLiteral("hour"), Qt::CaseInsensitive);
        p.gross = money(rs->value(QStringLiteral("TotalTaxable")));
        p.paye = money(rs->value(QStringLiteral("PAYE")));
        p.takeHome = money(rs->value(QStringLiteral("TakeHome")));
        p.esct = money(rs->value(QStringLiteral("ESCTDeductions")));
        const QVariant address = rs->value(QStringLiteral("AddressID"));
        const qint32 addressID = IsNull(address) ? 0 : CLng(address);
        addressIDs << addressID;
        addressOf << addressID;
        pays << p;
    }
    rs->Close();
    const QHash<qint32, Names> names = addressNames(addressIDs);
    for (int i = 0; i < pays.size(); ++i) {
        PaydayPay& p = pays[i];
        const Names n = names.value(addressOf.at(i));
        p.firstName = n.first;
        p.lastName = n.last;
        const QString w = QString::number(p.wageID);
        const QString deductions =
            QStringLiteral("SELECT sum(DeductionDetails.Deductions) FROM DeductionDetails "
                           "INNER JOIN DeductNames ON DeductionDetails.DeductNameID = "
                           "DeductNames.DeductNameID WHERE DeductionDetails.WageID = ") +
            w + QStringLiteral(" AND ");
        p.kiwiSaver = lineSum(wage, deductions + QStringLiteral("lower(DeductNames.TaxName) = 'kiwisaver'"));
        p.studentLoan = lineSum(wage, deductions + TaxItemLineCondition(taxitem::StudentLoan));
        p.slcir = lineSum(wage, deductions + TaxItemLineCondition(taxitem::Commissioner));
        p.slbor = lineSum(wage, deductions + TaxItemLineCondition(taxitem::Borrower));
        p.childSupport = lineSum(wage, deductions + TaxItemLineCondition(taxitem::ChildSupport));
        const PayTaxFigures figures = LoadPayTaxFigures(wage, p.wageID);
        p.givingCredit = figures.givingCredit;
        p.notLiable = figures.notLiable;
        p.lumpSumIndicator = figures.lowestRate;
        // Less than the employee's standing amount asked: held down by the protected net earnings.
        if (p.childSupport > Currency()) {
            const EmployeeTaxItems items = LoadEmployeeTaxItems(wage, p.employeeID);
            if (items.childSupport > p.childSupport) p.childSupportCode = QStringLiteral("P");
        }
        p.employerKiwiSaver = lineSum(
            wage, QStringLiteral(
                      "SELECT sum(ContributionDetails.Contributions) FROM ContributionDetails INNER JOIN "
                      "ContributionNames ON ContributionDetails.ContributionNameID = "
                      "ContributionNames.ContributionNameID WHERE ContributionDetails.WageID = ") +
                      w + QStringLiteral(" AND lower(ContributionNames.TaxName) = 'kiwisaver'"));
        if (p.employerKiwiSaver == Currency())
            p.esct = Currency(); // ESCT of other contributions is not KiwiSaver's
        // The hours of the lines paid by the hour; a salary line's units and a one-off amount's single
        // unit are no hours worked.
        if (p.paidByTheHour && !p.oneOff) {
            const QVariant h = wage.scalar(
                QStringLiteral("SELECT sum(PaymentDetails.DetailHours) FROM PaymentDetails INNER JOIN "
                               "PaymentNames ON PaymentDetails.PaymentNameID = PaymentNames.PaymentNameID "
                               "WHERE PaymentDetails.WageID = %1 AND coalesce(PaymentNames.Salary, 0) = 0")
                    .arg(p.wageID));
            p.hours = IsNull(h) ? 0.0 : std::max(0.0, CDbl(h));
        }
    }
    std::stable_sort(pays.begin(), pays.end(), [](const PaydayPay& a, const PaydayPay& b) {
        return QString::compare(a.lastName + u' ' + a.firstName, b.lastName + u' ' + b.firstName,
                                Qt::CaseInsensitive) < 0;
    });
    return pays;
}

} // namespace ql
