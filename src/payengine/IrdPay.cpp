#include "IrdPay.h"
#include "AppContext.h"
#include "TaxYearStore.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include <cmath>

namespace ql {

std::optional<IrdPayContext> IrdContextForPay(qint32 employeeID, qint32 wageID, float paysPerYear) {
    if (CountryPhone() != 64 || paysPerYear <= 0.0f || paysPerYear != std::floor(paysPerYear)) return std::nullopt;
    Database& db = App().WageDatabase;
    const QVariantList row = db.firstRow(
        QStringLiteral("SELECT w.[Date], e.TaxCode FROM Wages w JOIN Employees e ON e.EmployeeID = w.EmployeeID "
                       "WHERE w.WageID = %1 AND w.EmployeeID = %2")
            .arg(wageID)
            .arg(employeeID));
    if (row.size() < 2 || IsNull(row.at(0)) || !IsDate(row.at(0))) return std::nullopt;
    const ird::TaxCode code = ird::ParseTaxCode(IsNull(row.at(1)) ? QString() : CStr(row.at(1)));
    if (code.kind == ird::CodeKind::Unknown) return std::nullopt;
    std::optional<TaxYearFigures> figures = TaxYearInForce(db, CDate(row.at(0)).date());
    if (!figures) return std::nullopt;
    IrdPayContext c{*figures, code, int(paysPerYear), LoadEmployeeTaxItems(db, employeeID)};
    if (code.kind == ird::CodeKind::Tailored && c.items.tailoredRate <= 0) return std::nullopt;
    return c;
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
