#include "ExtraPay.h"
#include "AddPay.h"
#include "AppContext.h"
#include "Contributions.h"
#include "Deductions.h"
#include "IrdPay.h"
#include "PayTaxFigures.h"
#include "TaxItemLines.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"

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

namespace {

// The regular pays of the 28 days ending on date, over a year: a single monthly pay times 12, else 13.
qint64 annualisedFourWeeksCents(qint32 employeeID, const QDate& date) {
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
    return fourWeeks * (oneMonthly ? 12 : 13);
}

} // namespace

std::optional<ExtraPayTax> ExtraPayTaxOf(qint32 employeeID, const QDate& date, Currency amount, Currency notLiable) {
    const auto c = IrdContextOn(employeeID, date, 0);
    if (!c) return std::nullopt;
    const qint64 annualised = annualisedFourWeeksCents(employeeID, date);
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

bool IsExtraPayOfPay(Database& wage, qint32 wageID) {
    const QVariant type = wage.scalar(
        QStringLiteral("SELECT t.TaxTypeID FROM Wages w JOIN TaxDetails t ON t.WageID = w.WageID "
                       "WHERE w.WageID = %1 AND w.OneOff <> 0 LIMIT 1")
            .arg(wageID));
    return type.isValid() && !IsNull(type) && IsExtraPayTaxType(wage, CLng(type));
}

std::optional<ExtraPayTax> ExtraPayTaxOfPay(qint32 employeeID, qint32 wageID, Currency taxable) {
    Database& db = App().WageDatabase;
    if (CountryPhone() != 64 || !IsExtraPayOfPay(db, wageID)) return std::nullopt;
    const QVariant date = db.scalar(QStringLiteral("SELECT [Date] FROM Wages WHERE WageID = %1").arg(wageID));
    if (!date.isValid() || IsNull(date) || !IsDate(date)) return std::nullopt;
    return ExtraPayTaxOf(employeeID, CDate(date), taxable, LoadPayTaxFigures(db, wageID).notLiable);
}

std::optional<Currency> ExtraPayYearEstimate(qint32 employeeID, qint32 wageID, Currency amount) {
    Database& db = App().WageDatabase;
    if (CountryPhone() != 64 || !IsExtraPayOfPay(db, wageID)) return std::nullopt;
    const QVariant date = db.scalar(QStringLiteral("SELECT [Date] FROM Wages WHERE WageID = %1").arg(wageID));
    if (!date.isValid() || IsNull(date) || !IsDate(date)) return std::nullopt;
    return CentsToCurrency(annualisedFourWeeksCents(employeeID, CDate(date))) + amount;
}

Currency ExtraPayKiwiSaverExcluded(Database& wage, qint32 wageID) {
    if (CountryPhone() != 64 || !IsExtraPayOfPay(wage, wageID)) return Currency();
    return LoadPayTaxFigures(wage, wageID).notLiable;
}

void AddExtraPayKiwiSaver(qint32 wageID, qint32 employeeID, Currency base) {
    if (!IsKiwiSaverEnrolled(employeeID)) return;
    AppContext& app = App();
    Database& db = app.WageDatabase;
    float days = 0, paysPerYear = 0, weeks = 0;
    GetPayInterval(employeeID, days, paysPerYear, weeks);
    // The lines are worked out as lines of this pay (its date gives the tax year).
    const qint32 wasWage = app.CurrentWageID;
    app.CurrentWageID = wageID;
    const QString kiwiSaver = QStringLiteral("lower(Coalesce(n.TaxName, '')) = 'kiwisaver'");
    auto standing = [&db](const QString& sql) {
        QList<QVariantList> rows;
        auto rs = db.openRecordset(sql, RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext())
            rows << QVariantList{rs->value(0), rs->value(1), rs->value(2)};
        rs->Close();
        return rows;
    };
    const QList<QVariantList> deductions =
        standing(QStringLiteral("SELECT e.DeductID, e.FixedAmount, e.SpecialRate FROM EmployeeDeductions e "
                               "JOIN DeductNames n ON n.DeductNameID = e.DeductID WHERE e.EmployeeID = %1 AND %2")
                    .arg(employeeID)
                    .arg(kiwiSaver));
    for (const QVariantList& d : deductions) {
        float percentage = 0;
        Currency calcOn, amount;
        CalcDeduction(IsNull(d.at(2)) ? 0.0f : CSng(d.at(2)), IsNull(d.at(1)) ? Currency() : CCur(d.at(1)), base,
                      CLng(d.at(0)), paysPerYear, percentage, calcOn, amount);
        db.execute(QStringLiteral("INSERT INTO DeductionDetails (WageID, DeductNameID, AmountCalcon, Percentage, "
                                  "Deductions) VALUES (?, ?, ?, ?, ?)"),
                   {wageID, CLng(d.at(0)), calcOn.toDouble(), double(percentage), amount.toDouble()});
    }
    const QList<QVariantList> contributions = standing(
        QStringLiteral("SELECT e.ContributionID, e.FixedAmount, e.SpecialRate FROM EmployerContributions e "
                       "JOIN ContributionNames n ON n.ContributionNameID = e.ContributionID WHERE e.EmployeeID = %1 "
                       "AND %2")
            .arg(employeeID)
            .arg(kiwiSaver));
    Currency contributed, esct;
    for (const QVariantList& c : contributions) {
        float percentage = 0;
        Currency calcOn, amount;
        CalcContribution(IsNull(c.at(2)) ? 0.0f : CSng(c.at(2)), IsNull(c.at(1)) ? Currency() : CCur(c.at(1)), base,
                         CLng(c.at(0)), paysPerYear, percentage, calcOn, amount);
        const Currency tax = CalcESCT(CLng(c.at(0)), amount, base, wageID);
        db.execute(QStringLiteral("INSERT INTO ContributionDetails (WageID, ContributionNameID, AmountCalcOn, "
                                  "Percentage, Contributions, ESCT) VALUES (?, ?, ?, ?, ?, ?)"),
                   {wageID, CLng(c.at(0)), calcOn.toDouble(), double(percentage), amount.toDouble(), tax.toDouble()});
        contributed += amount;
        esct += tax;
    }
    app.CurrentWageID = wasWage;
    db.execute(QStringLiteral("UPDATE Wages SET Deductions = (SELECT Total(Deductions) FROM DeductionDetails "
                              "WHERE WageID = ?), KiwiSaverContribution = ?, ESCTDeductions = ? WHERE WageID = ?"),
               {wageID, contributed.toDouble(), esct.toDouble(), wageID});
    db.execute(QStringLiteral("UPDATE Wages SET TakeHome = TotalTaxable - PAYE + Coalesce(NonTaxAllow, 0) - "
                              "Deductions WHERE WageID = ?"),
               {wageID});
}

} // namespace ql
