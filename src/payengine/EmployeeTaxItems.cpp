#include "EmployeeTaxItems.h"
#include "IrdMethod.h"
#include "TaxItemLines.h"
#include "TaxYearStore.h"
#include "data/Database.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include <cmath>

namespace ql {

namespace {

const QString kTable = QStringLiteral("EmployeeTaxItems");
// No standing item of a pay comes near this; a larger figure is a typing slip.
const Currency kLargestItem = Currency::fromLong(1000000);

Currency money(const QVariant& v) {
    return IsNull(v) ? Currency() : Currency::fromRaw(v.toLongLong());
}

QString amountProblem(const Currency& c, const QString& what) {
    if (c < Currency() || c > kLargestItem)
        return QStringLiteral("The %1 must be an amount from 0 to 1,000,000.00.").arg(what);
    return QString();
}

QString rateProblem(qint32 rate, const QString& what) {
    if (rate < 0 || rate > 100000) return QStringLiteral("The %1 must be a per cent from 0 to 100.").arg(what);
    return QString();
}

} // namespace

static bool hasItemsTable(Database& wage) {
    const QVariant found = wage.scalar(
        QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '%1' COLLATE NOCASE").arg(kTable));
    return found.isValid() && !IsNull(found);
}

static bool hasSlcirColumn(Database& wage) {
    return wage.scalar(QStringLiteral("SELECT count(*) FROM pragma_table_info('%1') WHERE name = 'SlcirRate'").arg(kTable))
               .toInt() > 0;
}

void EnsureEmployeeTaxItemsTable(Database& wage) {
    if (!hasItemsTable(wage))
        // Amounts are stored in ten-thousandths, rates in thousandths of a per cent: exact, as entered.
        wage.executeScript(QStringLiteral("CREATE TABLE IF NOT EXISTS %1 ("
                                          " EmployeeID LONG PRIMARY KEY REFERENCES Employees(EmployeeID) ON DELETE CASCADE,"
                                          " EsctRate LONG DEFAULT 0, EsctRateYear TEXT(20), EsctEstimate LONG DEFAULT 0,"
                                          " ChildSupport LONG DEFAULT 0, PayrollGiving LONG DEFAULT 0,"
                                          " SlSpecialRate LONG DEFAULT 0, SlExtra LONG DEFAULT 0,"
                                          " TailoredRate LONG DEFAULT 0, SlcirRate LONG DEFAULT 0);")
                               .arg(kTable));
    // A table made before the commissioner's deductions were kept gets their column.
    if (!hasSlcirColumn(wage))
        wage.executeScript(QStringLiteral("ALTER TABLE %1 ADD COLUMN SlcirRate LONG DEFAULT 0;").arg(kTable));
}

EmployeeTaxItems LoadEmployeeTaxItems(Database& wage, qint32 employeeID) {
    EmployeeTaxItems items;
    items.employeeID = employeeID;
    // Reading writes nothing: a payroll without the table has no items.
    if (!hasItemsTable(wage)) return items;
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT EsctRate, EsctRateYear, EsctEstimate, ChildSupport, PayrollGiving, SlSpecialRate, "
                       "SlExtra, TailoredRate, %3 FROM %1 WHERE EmployeeID = %2")
            .arg(kTable)
            .arg(employeeID)
            .arg(hasSlcirColumn(wage) ? QStringLiteral("SlcirRate") : QStringLiteral("0")));
    if (row.size() < 9) return items;
    items.esctRate = row.at(0).toInt();
    items.esctRateYear = IsNull(row.at(1)) ? QString() : row.at(1).toString();
    items.esctEstimate = money(row.at(2));
    items.childSupport = money(row.at(3));
    items.payrollGiving = money(row.at(4));
    items.slSpecialRate = row.at(5).toInt();
    items.slExtra = money(row.at(6));
    items.tailoredRate = row.at(7).toInt();
    items.slCommissionerRate = row.at(8).toInt();
    return items;
}

QString EmployeeTaxItemsProblem(const EmployeeTaxItems& i) {
    for (const QString& p : {rateProblem(i.esctRate, QStringLiteral("ESCT rate")),
                             amountProblem(i.esctEstimate, QStringLiteral("ESCT estimate")),
                             amountProblem(i.childSupport, QStringLiteral("child support")),
                             amountProblem(i.payrollGiving, QStringLiteral("payroll giving")),
                             rateProblem(i.slSpecialRate, QStringLiteral("student loan special rate")),
                             amountProblem(i.slExtra, QStringLiteral("student loan extra deduction")),
                             rateProblem(i.slCommissionerRate, QStringLiteral("student loan commissioner's rate")),
                             rateProblem(i.tailoredRate, QStringLiteral("tailored tax code rate"))})
        if (!p.isEmpty()) return p;
    return QString();
}

namespace {

void storeItems(Database& wage, const EmployeeTaxItems& i) {
    EnsureEmployeeTaxItemsTable(wage);
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO %1 (EmployeeID, EsctRate, EsctRateYear, EsctEstimate, "
                                "ChildSupport, PayrollGiving, SlSpecialRate, SlExtra, TailoredRate, SlcirRate) "
                                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                     .arg(kTable),
                 {i.employeeID, i.esctRate, i.esctRateYear.isEmpty() ? QVariant() : QVariant(i.esctRateYear),
                  qint64(i.esctEstimate.raw()), qint64(i.childSupport.raw()), qint64(i.payrollGiving.raw()),
                  i.slSpecialRate, qint64(i.slExtra.raw()), i.tailoredRate, i.slCommissionerRate});
}

void syncStandingLine(Database& wage, qint32 employeeID, qint32 deductID, bool wanted, bool removeUnwanted) {
    if (deductID == 0) return;
    const bool has = wage.scalar(QStringLiteral("SELECT count(*) FROM EmployeeDeductions WHERE EmployeeID = %1 AND "
                                                "DeductID = %2")
                                     .arg(employeeID)
                                     .arg(deductID))
                         .toInt() > 0;
    if (wanted && !has)
        wage.execute(QStringLiteral("INSERT INTO EmployeeDeductions (EmployeeID, DeductID, FixedAmount, SpecialRate) "
                                    "VALUES (?, ?, 0, 0)"),
                     {employeeID, deductID});
    else if (!wanted && has && removeUnwanted)
        wage.execute(QStringLiteral("DELETE FROM EmployeeDeductions WHERE EmployeeID = ? AND DeductID = ? AND "
                                    "Coalesce(FixedAmount, 0) = 0 AND Coalesce(SpecialRate, 0) = 0"),
                     {employeeID, deductID});
}

// Each item above 0 puts its deduction among the employee's standing lines, so every new pay has it;
// taking the item away (removeUnwanted) removes a line the item had put there.
void syncStandingLines(Database& wage, const EmployeeTaxItems& i, bool removeUnwanted) {
    if (i.payrollGiving > Currency() || i.slExtra > Currency() || i.slCommissionerRate > 0)
        EnsureTaxItemDeductNames(wage);
    const struct {
        const QString& taxName;
        bool wanted;
    } lines[] = {{taxitem::ChildSupport, i.childSupport > Currency()},
                 {taxitem::PayrollGiving, i.payrollGiving > Currency()},
                 {taxitem::Commissioner, i.slCommissionerRate > 0},
                 {taxitem::Borrower, i.slExtra > Currency()}};
    for (const auto& l : lines)
        syncStandingLine(wage, i.employeeID, TaxItemDeductID(wage, l.taxName), l.wanted, removeUnwanted);
}

} // namespace

void SaveEmployeeTaxItems(Database& wage, const EmployeeTaxItems& i) {
    const QString problem = EmployeeTaxItemsProblem(i);
    if (!problem.isEmpty()) throw VbError(5, QStringLiteral("EmployeeTaxItems"), problem);
    storeItems(wage, i);
    syncStandingLines(wage, i, true);
}

void SyncStandingTaxItemLines(Database& wage, const EmployeeTaxItems& i) {
    syncStandingLines(wage, i, false);
}

bool ParseRatePercent(const QString& text, qint32& thousandths) {
    bool ok = false;
    const double percent = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(percent) || percent < 0 || percent > 100) return false;
    const double scaled = percent * 1000.0;
    if (std::abs(scaled - std::round(scaled)) > 1e-6) return false;
    thousandths = qint32(std::llround(scaled));
    return true;
}

void SetEsctRate(Database& wage, EmployeeTaxItems& items, qint32 rate, const QDate& on) {
    items.esctRate = rate;
    const auto year = rate > 0 ? TaxYearInForce(wage, on) : std::nullopt;
    items.esctRateYear = year ? year->taxYear : QString();
}

qint32 EsctRateForPay(Database& wage, qint32 employeeID, const TaxYearFigures& f, Currency taxable,
                      float paysPerYear) {
    EmployeeTaxItems items = LoadEmployeeTaxItems(wage, employeeID);
    if (items.esctRate > 0 && items.esctRateYear == f.taxYear) return items.esctRate;

    const QDate previousStart = f.starts.addYears(-1), previousEnd = f.starts.addDays(-1);
    const QString ps = previousStart.toString(Qt::ISODate), pe = previousEnd.toString(Qt::ISODate);
    // A whole previous year: hired by its start, and paid by this payroll from its first month on.
    const QVariantList held = wage.firstRow(
        QStringLiteral("SELECT (SELECT DateHired FROM Employees WHERE EmployeeID = %1), "
                       "(SELECT Min(date([Date])) FROM Wages WHERE EmployeeID = %1 AND date([Date]) <= '%2')")
            .arg(employeeID)
            .arg(pe));
    const QDate hired = held.isEmpty() || IsNull(held.at(0)) ? QDate() : CDate(held.at(0));
    const QDate firstPay = held.size() < 2 || IsNull(held.at(1)) ? QDate() : QDate::fromString(CStr(held.at(1)), Qt::ISODate);
    const bool wholeYear = hired.isValid() && hired <= previousStart && firstPay.isValid() &&
                           firstPay <= previousStart.addDays(31);
    qint64 dollars = 0;
    bool settled = true;
    if (wholeYear) {
        const QVariantList sums = wage.firstRow(
            QStringLiteral("SELECT (SELECT Total(TotalTaxable) FROM Wages WHERE EmployeeID = %1 AND date([Date]) "
                           "BETWEEN '%2' AND '%3'), (SELECT Total(c.Contributions) FROM ContributionDetails c "
                           "JOIN Wages w ON w.WageID = c.WageID WHERE w.EmployeeID = %1 AND date(w.[Date]) "
                           "BETWEEN '%2' AND '%3')")
                .arg(employeeID)
                .arg(ps, pe));
        dollars = qint64(std::floor(CCur(sums.value(0)).toDouble() + CCur(sums.value(1)).toDouble()));
    } else if (items.esctEstimate > Currency()) {
        dollars = items.esctEstimate.raw() / Currency::Scale;
    } else {
        // No settled figure: each pay's own, until the employer gives an estimate.
        dollars = qint64(std::floor(taxable.toDouble() * double(paysPerYear)));
        settled = false;
    }
    const qint32 rate = ird::EsctRateFor(f, dollars);
    if (settled) {
        items.esctRate = rate;
        items.esctRateYear = f.taxYear;
        storeItems(wage, items);
    }
    return rate;
}

} // namespace ql
