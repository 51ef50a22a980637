#include "IrdPay.h"
#include "AppContext.h"
#include "ExtraPay.h"
#include "FinalPayTax.h"
#include "TaxItemLines.h"
#include "TaxYearStore.h"
#include "data/Database.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <cmath>

namespace ql {

namespace {

std::optional<IrdPayContext> contextFor(qint32 employeeID, const QDate& date, int pays, const QVariant& taxCode) {
    if (!date.isValid()) return std::nullopt;
    const ird::TaxCode code = ird::ParseTaxCode(IsNull(taxCode) || !taxCode.isValid() ? QString() : CStr(taxCode));
    if (code.kind == ird::CodeKind::Unknown) return std::nullopt;
    Database& db = App().WageDatabase;
    std::optional<TaxYearFigures> figures = TaxYearInForce(db, date);
    if (!figures) return std::nullopt;
    IrdPayContext c{*figures, code, pays, LoadEmployeeTaxItems(db, employeeID)};
    if (code.kind == ird::CodeKind::Tailored && c.items.tailoredRate <= 0) return std::nullopt;
    return c;
}

} // namespace

std::optional<IrdPayContext> IrdContextOn(qint32 employeeID, const QDate& date, int pays) {
    if (CountryPhone() != 64) return std::nullopt;
    return contextFor(employeeID, date, pays,
                      App().WageDatabase.scalar(
                          QStringLiteral("SELECT TaxCode FROM Employees WHERE EmployeeID = %1").arg(employeeID)));
}

std::optional<IrdPayContext> IrdContextForPay(qint32 employeeID, qint32 wageID, float paysPerYear) {
    if (CountryPhone() != 64 || paysPerYear <= 0.0f || paysPerYear != std::floor(paysPerYear)) return std::nullopt;
    // The pay's date and the employee's code in one reading.
    const QVariantList row = App().WageDatabase.firstRow(
        QStringLiteral("SELECT w.[Date], e.TaxCode FROM Wages w JOIN Employees e ON e.EmployeeID = w.EmployeeID "
                       "WHERE w.WageID = %1 AND w.EmployeeID = %2")
            .arg(wageID)
            .arg(employeeID));
    if (row.size() < 2 || IsNull(row.at(0)) || !IsDate(row.at(0))) return std::nullopt;
    return contextFor(employeeID, CDate(row.at(0)), int(paysPerYear), row.at(1));
}

Currency CentsToCurrency(qint64 cents) {
    return Currency::fromRaw(cents * 100);
}

qint64 CurrencyToCents(Currency c) {
    return c.raw() / 100;
}

qint32 RateThousandths(float percent) {
    return qint32(std::llround(double(percent) * 1000.0));
}

bool IrdPercentLine(const QString& nameTable, qint32 nameID, Currency base, float paysPerYear, float& percentage,
                    Currency& amountCalcOn, Currency& amount) {
    AppContext& app = App();
    const bool deduction = nameTable == QLatin1String("DeductNames");
    const QVariantList names = app.WageDatabase.firstRow(
        deduction ? QStringLiteral("SELECT TaxName, DeductionName FROM DeductNames WHERE DeductNameID = %1").arg(nameID)
                  : QStringLiteral("SELECT TaxName, ContributionName FROM ContributionNames WHERE ContributionNameID = %1")
                        .arg(nameID));
    const QString taxName = names.isEmpty() || IsNull(names.at(0)) ? QString() : CStr(names.at(0)).toLower();
    const QString lineName = names.size() < 2 || IsNull(names.at(1)) ? QString() : CStr(names.at(1)).toLower();
    const bool kiwiSaver = taxName == QLatin1String("kiwisaver");
    const bool studentLoan = deduction && taxName == taxitem::StudentLoan;
    const bool childSupport =
        deduction && (taxName == taxitem::ChildSupport || lineName == QLatin1String("child support"));
    const bool giving = deduction && taxName == taxitem::PayrollGiving;
    const bool commissioner = deduction && taxName == taxitem::Commissioner;
    const bool borrower = deduction && taxName == taxitem::Borrower;
    if (!kiwiSaver && !studentLoan && !childSupport && !giving && !commissioner && !borrower) return false;
    const std::optional<IrdPayContext> c = IrdContextForPay(app.CurrentEmployeeID, app.CurrentWageID, paysPerYear);
    if (!c) return false;
    const qint64 cents = CurrencyToCents(base);
    if (kiwiSaver) {
        amountCalcOn = base;
        amount = CentsToCurrency(ird::PercentCutCents(cents, RateThousandths(percentage)));
        return true;
    }
    if (childSupport) {
        // The amount asked, at most 40% of the net pay (the taxable pay less the tax without the levy), so
        // that 60% stays protected. Shown as calculated on the net pay, at the share taken.
        if (c->items.childSupport <= Currency()) return false;
        const qint64 net = cents - ird::TaxElementCents(c->figures, c->code, cents, c->pays, c->items.tailoredRate);
        const qint64 taken = ird::ChildSupportCents(cents, cents - net, CurrencyToCents(c->items.childSupport));
        amountCalcOn = CentsToCurrency(qMax<qint64>(net, 0));
        percentage = net > 0 ? float(double(taken) * 100.0 / double(net)) : 0.0f;
        amount = CentsToCurrency(taken);
        return true;
    }
    if (giving || borrower) {
        // The employee's standing amount, as a fixed line (percentage 100): an amount typed over it is
        // worked out again at the next recalculation, as on any fixed line.
        const Currency standing = giving ? c->items.payrollGiving : c->items.slExtra;
        amountCalcOn = standing;
        percentage = 100;
        amount = standing;
        return true;
    }
    if (commissioner) {
        const qint64 threshold = c->code.secondary() ? 0 : ird::StudentLoanThresholdCents(c->figures, c->pays);
        amountCalcOn = CentsToCurrency(qMax<qint64>(0, (cents / 100) * 100 - threshold));
        percentage = float(c->items.slCommissionerRate / 1000.0);
        amount = CentsToCurrency(ird::StudentLoanCommissionerCents(c->figures, c->code, cents, c->pays,
                                                                   c->items.slCommissionerRate));
        return true;
    }
    // Student loan: the whole dollars of the pay less the per-pay threshold (none on secondary codes).
    const qint32 rate = c->items.slSpecialRate > 0 ? c->items.slSpecialRate : c->figures.studentLoanRate;
    if (IsExtraPayOfPay(app.WageDatabase, app.CurrentWageID)) {
        // An extra pay paid apart from a pay has no threshold.
        amountCalcOn = c->code.studentLoan ? CentsToCurrency(cents / 100 * 100) : Currency();
        percentage = float(rate / 1000.0);
        amount = CentsToCurrency(ird::ExtraPayStudentLoanCents(c->figures, c->code, cents, c->items.slSpecialRate));
        return true;
    }
    if (c->code.studentLoan && cents > 0 && FinalHolidayAmount(app.WageDatabase, app.CurrentWageID) >= base) {
        // A final pay of holiday lines alone is paid apart from the time worked: no threshold.
        amountCalcOn = CentsToCurrency(cents / 100 * 100);
        percentage = float(rate / 1000.0);
        amount = CentsToCurrency(ird::ExtraPayStudentLoanCents(c->figures, c->code, cents, c->items.slSpecialRate));
        return true;
    }
    const qint64 threshold = c->code.secondary() ? 0 : ird::StudentLoanThresholdCents(c->figures, c->pays);
    const qint64 over = qMax<qint64>(0, (cents / 100) * 100 - threshold);
    amountCalcOn = c->code.studentLoan ? CentsToCurrency(over) : Currency();
    percentage = float(rate / 1000.0);
    amount = CentsToCurrency(ird::StudentLoanCents(c->figures, c->code, cents, c->pays, c->items.slSpecialRate));
    return true;
}

qint64 PayrollGivingCreditForPay(const IrdPayContext& c, qint32 wageID, qint64 taxableCents) {
    const QVariant donations = App().WageDatabase.scalar(
        QStringLiteral("SELECT Total(CASE WHEN DeductionDetails.Percentage = 100 THEN DeductionDetails.Deductions "
                       "ELSE %1 END) FROM DeductionDetails INNER JOIN DeductNames ON DeductNames.DeductNameID = "
                       "DeductionDetails.DeductNameID WHERE DeductionDetails.WageID = %2 AND %3")
            .arg(c.items.payrollGiving.toDouble(), 0, 'f', 4)
            .arg(wageID)
            .arg(TaxItemLineCondition(taxitem::PayrollGiving)));
    const qint64 donated = CurrencyToCents(CCur(donations));
    if (donated <= 0) return 0;
    return ird::PayrollGivingCreditCents(donated,
                                         ird::TaxElementCents(c.figures, c.code, taxableCents, c.pays, c.items.tailoredRate));
}

} // namespace ql
