#include "IrdPay.h"
#include "AppContext.h"
#include "TaxYearStore.h"
#include "data/Database.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <cmath>

namespace ql {

std::optional<IrdPayContext> IrdContextOn(qint32 employeeID, const QDate& date, int pays) {
    if (CountryPhone() != 64 || !date.isValid()) return std::nullopt;
    Database& db = App().WageDatabase;
    const QVariant taxCode =
        db.scalar(QStringLiteral("SELECT TaxCode FROM Employees WHERE EmployeeID = %1").arg(employeeID));
    const ird::TaxCode code = ird::ParseTaxCode(IsNull(taxCode) || !taxCode.isValid() ? QString() : CStr(taxCode));
    if (code.kind == ird::CodeKind::Unknown) return std::nullopt;
    std::optional<TaxYearFigures> figures = TaxYearInForce(db, date);
    if (!figures) return std::nullopt;
    IrdPayContext c{*figures, code, pays, LoadEmployeeTaxItems(db, employeeID)};
    if (code.kind == ird::CodeKind::Tailored && c.items.tailoredRate <= 0) return std::nullopt;
    return c;
}

std::optional<IrdPayContext> IrdContextForPay(qint32 employeeID, qint32 wageID, float paysPerYear) {
    if (CountryPhone() != 64 || paysPerYear <= 0.0f || paysPerYear != std::floor(paysPerYear)) return std::nullopt;
    const QVariant date = App().WageDatabase.scalar(
        QStringLiteral("SELECT [Date] FROM Wages WHERE WageID = %1 AND EmployeeID = %2").arg(wageID).arg(employeeID));
    if (!date.isValid() || IsNull(date) || !IsDate(date)) return std::nullopt;
    return IrdContextOn(employeeID, CDate(date), int(paysPerYear));
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
    const QString keyColumn = nameTable == QLatin1String("DeductNames") ? QStringLiteral("DeductNameID")
                                                                          : QStringLiteral("ContributionNameID");
    const QString taxName =
        CStr(app.WageDatabase.scalar(
                 QStringLiteral("SELECT TaxName FROM %1 WHERE %2 = %3").arg(nameTable, keyColumn).arg(nameID)))
            .toLower();
    const bool kiwiSaver = taxName == QLatin1String("kiwisaver");
    const bool studentLoan = taxName == QLatin1String("studentloan") && nameTable == QLatin1String("DeductNames");
    if (!kiwiSaver && !studentLoan) return false;
    const std::optional<IrdPayContext> c =
        IrdContextForPay(app.CurrentEmployeeID, app.CurrentWageID, paysPerYear);
    if (!c) return false;
    const qint64 cents = CurrencyToCents(base);
    if (kiwiSaver) {
        amountCalcOn = base;
        amount = CentsToCurrency(ird::PercentCutCents(cents, RateThousandths(percentage)));
        return true;
    }
    // Student loan: the whole dollars of the pay less the per-pay threshold (none on secondary codes).
    const qint32 rate = c->items.slSpecialRate > 0 ? c->items.slSpecialRate : c->figures.studentLoanRate;
    const qint64 threshold = c->code.secondary() ? 0 : ird::StudentLoanThresholdCents(c->figures, c->pays);
    const qint64 over = qMax<qint64>(0, (cents / 100) * 100 - threshold);
    amountCalcOn = c->code.studentLoan ? CentsToCurrency(over) : Currency();
    percentage = float(rate / 1000.0);
    amount = CentsToCurrency(ird::StudentLoanCents(c->figures, c->code, cents, c->pays, c->items.slSpecialRate));
    return true;
}

} // namespace ql
