#include "ExtraPay.h"
#include "AppContext.h"
#include "IrdPay.h"
#include "data/Database.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"

namespace ql {

const char* const ExtraPayTaxName = "Extra pay";

void EnsureExtraPayTaxType(Database& wage) {
    if (CountryPhone() != 64) return;
    const QVariant found = wage.scalar(
        QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE Taxname = '%1'").arg(QLatin1String(ExtraPayTaxName)));
    if (found.isValid() && !IsNull(found)) return;
    const qint64 id = wage.scalar(QStringLiteral("SELECT Coalesce(Max(TaxTypeID), 0) + 1 FROM TaxTypes")).toLongLong();
    const qint64 order = wage.scalar(QStringLiteral("SELECT Coalesce(Max([Order]), 0) + 1 FROM TaxTypes")).toLongLong();
    const qint64 step = wage.scalar(QStringLiteral("SELECT Coalesce(Max(TaxStepsID), 0) + 1 FROM TaxSteps")).toLongLong();
    wage.execute(QStringLiteral("INSERT INTO TaxTypes (TaxTypeID, Taxname, [Order]) VALUES (?, ?, ?)"),
                 {id, QString::fromLatin1(ExtraPayTaxName), order});
    // One step at no rate: the method of the tax year works out the tax; with no year in force there is
    // nothing to take.
    wage.execute(QStringLiteral("INSERT INTO TaxSteps (TaxStepsID, taxtypeID, upperlimit, taxrate) VALUES (?, ?, ?, 0)"),
                 {step, id, 999999999.0});
}

bool IsExtraPayTaxType(Database& wage, qint32 taxTypeID) {
    const QVariant name = wage.scalar(QStringLiteral("SELECT Taxname FROM TaxTypes WHERE TaxTypeID = %1").arg(taxTypeID));
    return name.isValid() && !IsNull(name) && CStr(name) == QLatin1String(ExtraPayTaxName);
}

std::optional<Currency> ExtraPayPaye(qint32 employeeID, const QDate& date, Currency amount) {
    const auto c = IrdContextOn(employeeID, date, 0);
    if (!c) return std::nullopt;
    Database& db = App().WageDatabase;
    const QVariantList four = db.firstRow(
        QStringLiteral("SELECT Total(TotalTaxable), Count(*) FROM Wages WHERE EmployeeID = %1 AND OneOff = 0 "
                       "AND date([Date]) > '%2' AND date([Date]) <= '%3'")
            .arg(employeeID)
            .arg(date.addDays(-28).toString(Qt::ISODate), date.toString(Qt::ISODate)));
    const qint64 fourWeeks = CurrencyToCents(CCur(four.value(0)));
    const QVariant pays = db.scalar(
        QStringLiteral("SELECT p.PaysPerYear FROM Employees e JOIN PayInterval p ON p.PayIntervalID = e.PayIntervalID "
                       "WHERE e.EmployeeID = %1")
            .arg(employeeID));
    const bool oneMonthly = four.value(1).toInt() == 1 && pays.isValid() && !IsNull(pays) && CDbl(pays) == 12.0;
    const qint64 extra = CurrencyToCents(amount);
    return CentsToCurrency(ird::ExtraPayPayeCents(c->figures, c->code, fourWeeks * (oneMonthly ? 12 : 13), extra,
                                                  extra, c->items.tailoredRate));
}

} // namespace ql
