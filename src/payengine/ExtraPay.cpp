#include "ExtraPay.h"
#include "AppContext.h"
#include "IrdPay.h"
#include "PayTaxFigures.h"
#include "TaxItemLines.h"
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

std::optional<ExtraPayTax> ExtraPayTaxOf(qint32 employeeID, const QDate& date, Currency amount, Currency notLiable) {
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
    const qint64 annualised = fourWeeks * (oneMonthly ? 12 : 13);
    const qint64 extra = qMax<qint64>(0, CurrencyToCents(amount));
    const qint64 notLiableCents = qBound<qint64>(0, CurrencyToCents(notLiable), extra);
    ExtraPayTax t;
    t.paye = CentsToCurrency(ird::ExtraPayPayeCents(c->figures, c->code, annualised, extra, extra - notLiableCents,
                                                    c->items.tailoredRate));
    t.notLiable = CentsToCurrency(notLiableCents);
    t.lowestRate = ird::ExtraPayAtLowestRate(c->figures, c->code, annualised, extra);
    if (c->code.studentLoan) {
        const qint32 rate = c->items.slSpecialRate > 0 ? c->items.slSpecialRate : c->figures.studentLoanRate;
        t.studentLoan = CentsToCurrency(ird::ExtraPayStudentLoanCents(c->figures, c->code, extra, c->items.slSpecialRate));
        t.studentLoanBase = CentsToCurrency(extra / 100 * 100);
        t.studentLoanRate = float(rate / 1000.0);
    }
    return t;
}

void SaveExtraPayFigures(qint32 wageID, const ExtraPayTax& tax) {
    Database& db = App().WageDatabase;
    PayTaxFigures figures = LoadPayTaxFigures(db, wageID);
    figures.notLiable = tax.notLiable;
    figures.lowestRate = tax.lowestRate;
    SavePayTaxFigures(db, wageID, figures);
    if (tax.studentLoan <= Currency()) return;
    const qint32 loan = TaxItemDeductID(db, taxitem::StudentLoan);
    if (loan == 0) return;
    db.execute(QStringLiteral("INSERT INTO DeductionDetails (WageID, DeductNameID, AmountCalcon, Percentage, Deductions) "
                              "VALUES (?, ?, ?, ?, ?)"),
               {wageID, loan, tax.studentLoanBase.toDouble(), double(tax.studentLoanRate), tax.studentLoan.toDouble()});
    db.execute(QStringLiteral("UPDATE Wages SET Deductions = ? WHERE WageID = ?"), {tax.studentLoan.toDouble(), wageID});
}

} // namespace ql
