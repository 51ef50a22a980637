#include "Contributions.h"
#include "ExtraPay.h"
#include "FinalPayTax.h"
#include "IrdPay.h"
#include "AddPay.h"
#include "AppContext.h"
#include "PayTotals.h"
#include "PayView.h"
#include "PercentLines.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/MathFns.h"
#include "runtime/Trap.h"

namespace ql {

float GetContributionLimit(qint32 contributionNameID, int which) {
    return percentLineLimit(contributionKind(), contributionNameID, which);
}

void GetEmpContribution(qint32 contributionNameID, float& specialRate, Currency& fixedAmount) {
    percentLineEmployee(contributionKind(), contributionNameID, specialRate, fixedAmount);
}

void CalcContribution(float specialRate, Currency fixedAmount, Currency base, qint32 contributionNameID,
                      float paysPerYear, float& percentage, Currency& amountCalcOn, Currency& contribution) {
    calcPercentLine(contributionKind(), specialRate, fixedAmount, base, contributionNameID, paysPerYear, percentage,
                    amountCalcOn, contribution);
}

Currency CalcESCT(qint32 contributionNameID, Currency contribution, Currency base) {
    return CalcESCT(contributionNameID, contribution, base, App().CurrentWageID);
}

Currency CalcESCT(qint32 contributionNameID, Currency contribution, Currency base, qint32 wageID) {
    const float paysPerYear = GetPaysPerYear();
    // The rate goes by this pay's earnings over a year, not by what was earned so far.
    const Currency yearlySalary = Currency::fromDouble(base.toDouble() * static_cast<double>(paysPerYear));
    double rate = 0;
    Database& db = App().WageDatabase;
    auto name = db.openRecordset(
        QStringLiteral("SELECT TaxName FROM ContributionNames WHERE ContributionNameID = %1").arg(contributionNameID),
        RecordsetType::Snapshot);
    const QString taxName = name->EOF_() || IsNull(name->value(QStringLiteral("TaxName")))
                                ? QString()
                                : CStr(name->value(QStringLiteral("TaxName"))).toLower();
    name->Close();
    const bool bearsESCT = taxName == QLatin1String("kiwisaver");
    if (bearsESCT || taxName == QLatin1String("superannuation")) {
        AppContext& app = App();
        if (const auto c = IrdContextForPay(app.CurrentEmployeeID, wageID, paysPerYear)) {
            // Inland Revenue: the employee's ESCT rate on the contribution's whole dollars, cut to cents.
            // An extra pay times the pays in a year says nothing of the year: the four weeks' pays do.
            auto yearOfExtra = ExtraPayYearEstimate(app.CurrentEmployeeID, wageID, base);
            // Nor does a final pay's holiday pay: its other lines over the year, and the holiday pay once.
            const Currency holiday = qMin(FinalHolidayAmount(db, wageID), base);
            if (!yearOfExtra && holiday > Currency())
                yearOfExtra = Currency::fromDouble((base - holiday).toDouble() * double(paysPerYear)) + holiday;
            const qint32 esctRate =
                yearOfExtra ? EsctRateForPay(db, app.CurrentEmployeeID, c->figures, *yearOfExtra, 1.0f)
                            : EsctRateForPay(db, app.CurrentEmployeeID, c->figures, base, paysPerYear);
            return CentsToCurrency(ird::EsctCents(CurrencyToCents(contribution), esctRate));
        }
    }
    if (bearsESCT) {
        // Strictly below; the number goes into the text as the runtime prints it.
        auto rs = db.openRecordset(QStringLiteral("SELECT Max(Rate) AS RatePercent  FROM ESCT WHERE Salary < ") +
                                       CStr(yearlySalary),
                                   RecordsetType::Snapshot);
        if (!rs->EOF_())
            rs->MoveLast();
        const bool found = rs->RecordCount() > 0;
        // Max over no row is Null, and reading it fails: the error goes to the caller.
        const QVariant ratePercent = found ? rs->value(QStringLiteral("RatePercent")) : QVariant();
        rs->Close();
        if (found)
            rate = CDbl(ratePercent);
    }
    // The cents of the contribution bear no ESCT; Rate is a fraction used as it stands.
    return Currency::fromDouble(Int(contribution).toDouble() * rate);
}

void AddDefaultContribution(qint32 wageID, Currency taxable, bool /*firstPay*/, qint32 employeeID,
                            float paysPerYear) {
    trap(QStringLiteral("AddDefaultContribution"), [&] {
        FillpayInfoArray(QStringLiteral("SELECT ContributionNameID, Percentage, LowerThreshold, UpperThreshold, "
                                        "MaxPercent from ContributionNames"),
                         false);
        Database& db = App().WageDatabase;
        auto details = db.openRecordset(
            QStringLiteral("SELECT * FROM ContributionDetails WHERE WageID = %1").arg(wageID), RecordsetType::Dynaset);
        auto rows = db.openRecordset(QStringLiteral("SELECT ContributionID, FixedAmount, SpecialRate "
                                                    "FROM EmployerContributions WHERE EmployeeID=%1;")
                                         .arg(employeeID),
                                     RecordsetType::Snapshot);
        while (!rows->EOF_()) {
            const QVariant id = rows->value(QStringLiteral("ContributionID"));
            if (!IsNull(id) && CLng(id) > 0) {
                details->AddNew();
                details->setValue(QStringLiteral("ContributionNameID"), QVariant(CLng(id)));
                const QVariant fixed = rows->value(QStringLiteral("FixedAmount"));
                const QVariant special = rows->value(QStringLiteral("SpecialRate"));
                float percentage = 0;
                Currency amountCalcOn, contribution;
                CalcContribution(IsNull(special) ? 0.0f : CSng(special), IsNull(fixed) ? Currency() : CCur(fixed),
                                 taxable, CLng(id), paysPerYear, percentage, amountCalcOn, contribution);
                details->setValue(QStringLiteral("Percentage"), QVariant(percentage));
                details->setValue(QStringLiteral("AmountCalcOn"), QVariant::fromValue(amountCalcOn));
                details->setValue(QStringLiteral("Contributions"), QVariant::fromValue(contribution));
                details->setValue(QStringLiteral("WageID"), QVariant(wageID));
                details->setValue(QStringLiteral("ESCT"),
                                  QVariant::fromValue(CalcESCT(CLng(id), contribution, taxable, wageID)));
                details->Update();
            }
            rows->MoveNext();
        }
        rows->Close();
        details->Close();
    });
}

void UpdateContributions(Currency base, qint32 wageID, PayView& form, const QString& totalLabel,
                         const QString& payDateLabel, const QString& creditLabel, const QString& esctLabel) {
    const float paysPerYear = GetPaysPerYear();
    Currency total;
    float specialRate = 0;
    Currency fixedAmount;
    qint32 lastName = 0;
    // A New Zealand pay: the ESCT of each scheme's contribution, whatever line is last.
    const bool ird = IrdContextForPay(App().CurrentEmployeeID, wageID, paysPerYear).has_value();
    Currency rowsEsct;
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT ContributionNameID, AmountCalcon, Percentage, ESCT, Contributions, WageID "
                       "FROM ContributionDetails WHERE WageID = %1;")
            .arg(wageID),
        RecordsetType::Dynaset);
    while (!rs->EOF_()) {
        const QVariant nameID = rs->value(QStringLiteral("ContributionNameID"));
        if (!IsNull(nameID)) {
            const qint32 id = CLng(nameID);
            lastName = id;
            GetEmpContribution(id, specialRate, fixedAmount);
            float percentage = 0;
            Currency amountCalcOn, contribution;
            CalcContribution(specialRate, fixedAmount, base, id, paysPerYear, percentage, amountCalcOn, contribution);
            // On a New Zealand pay the row's ESCT follows its contribution, so the grid adds up to the
            // pay's ESCT; elsewhere the row keeps what it got when added or last edited.
            const QVariant stored = rs->value(QStringLiteral("Percentage"));
            if (!IsNull(stored) && CSng(stored) != 100.0f) {
                rs->Edit();
                rs->setValue(QStringLiteral("AmountCalcon"), QVariant::fromValue(amountCalcOn));
                rs->setValue(QStringLiteral("Percentage"), QVariant(percentage));
                if (ird) {
                    const Currency rowEsct = CalcESCT(id, contribution, base, wageID);
                    rs->setValue(QStringLiteral("ESCT"), QVariant::fromValue(rowEsct));
                    rowsEsct += rowEsct;
                }
                rs->setValue(QStringLiteral("Contributions"), QVariant::fromValue(contribution));
                rs->Update();
                total += contribution;
            }
        }
        rs->MoveNext();
    }
    rs->Close();
    form.setCaption(totalLabel, CStr(total));
    // Elsewhere one calculation on the total, under the last line's name.
    form.setLabelValue(esctLabel, QVariant::fromValue(ird ? rowsEsct : CalcESCT(lastName, total, base)));
    const Currency credit = GetKiwiSaverCredit(form.caption(payDateLabel));
    form.setLabelValue(creditLabel, QVariant::fromValue(credit <= total ? credit : total));
}

Currency GetKiwiSaverCredit(const QVariant& /*payDate*/) {
    // The interval's credit is looked up but not applied: the credit of a pay is 0.
    App().WageDatabase.scalar(
        QStringLiteral("SELECT PayInterval.PayIntervalID, PayInterval.KiwiSaverCredit "
                       "FROM PayInterval INNER JOIN Employees ON PayInterval.PayIntervalID = Employees.PayIntervalID "
                       "WHERE Employees.EmployeeID = %1;")
            .arg(App().CurrentEmployeeID));
    return Currency();
}

void RecalcContributionRow(GridArray& grid, int row, int column, const QString& newText, Currency taxable) {
    Currency calcOn, amount;
    float percentage = 0;
    recalcPercentRow(grid, row, column, newText, 5, calcOn, percentage, amount);
    const QVariant nameCell = grid.value(row, 1);
    const qint32 nameID = IsNumeric(nameCell) ? CLng(nameCell) : 0;
    grid.setValue(row, 2, Format(QVariant::fromValue(calcOn), QStringLiteral("currency")));
    grid.setValue(row, 3, Format(QVariant(percentage), QStringLiteral("fixed")));
    grid.setValue(row, 4, Format(QVariant::fromValue(CalcESCT(nameID, amount, taxable)), QStringLiteral("Currency")));
    grid.setValue(row, 5, Format(QVariant::fromValue(amount), QStringLiteral("Currency")));
}

void DefaultContributionRow(int column, Currency taxable, GridArray& grid, int row) {
    if (column != 1)
        return;
    const QVariant nameCell = grid.value(row, 1);
    const qint32 nameID = IsNumeric(nameCell) ? CLng(nameCell) : 0;
    const float paysPerYear = GetPaysPerYear();
    float specialRate = 0;
    Currency fixedAmount;
    GetEmpContribution(nameID, specialRate, fixedAmount);
    float percentage = 0;
    Currency amountCalcOn, contribution;
    CalcContribution(specialRate, fixedAmount, taxable, nameID, paysPerYear, percentage, amountCalcOn, contribution);
    grid.setValue(row, 2, QVariant::fromValue(amountCalcOn));
    grid.setValue(row, 3, QVariant(percentage));
    grid.setValue(row, 5, QVariant::fromValue(contribution));
}

void UpdateContributionTotals(PayView& form) {
    form.setCaption(QStringLiteral("lblKiwiSaver"),
                    Format(QVariant::fromValue(Currency::fromSingle(SumGridColumn(form.WageGridArray, 5))),
                           QStringLiteral("Currency")));
    form.setCaption(QStringLiteral("lblESCT"),
                    Format(QVariant::fromValue(Currency::fromSingle(SumGridColumn(form.WageGridArray, 4))),
                           QStringLiteral("Currency")));
}

void ShowTaxCredit(PayView& form) {
    const Currency credit = GetKiwiSaverCredit(form.caption(QStringLiteral("lblPayDate")));
    const Currency kiwiSaver = RoundCurrency(form.caption(QStringLiteral("lblKiwiSaver")));
    form.setLabelValue(QStringLiteral("lblTaxCredit"), QVariant::fromValue(credit < kiwiSaver ? credit : kiwiSaver));
    form.bringToFront(QStringLiteral("tgrdwages"));
}

} // namespace ql
