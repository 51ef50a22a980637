#include "PayTotals.h"
#include "data/PayFreeze.h"
#include "WriteBatch.h"
#include "Allowances.h"
#include "AppContext.h"
#include "Contributions.h"
#include "Deductions.h"
#include "ExtraPay.h"
#include "PayView.h"
#include "Paye.h"
#include "PaymentLines.h"
#include "data/Database.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

// The detail table behind each tab that has lines; empty for the others.
QString detailTable(int tab) {
    switch (tab) {
    case 1: return QStringLiteral("PaymentDetails");
    case 2: return QStringLiteral("TaxAllowDetails");
    case 4: return QStringLiteral("NonTaxAllowDetails");
    case 5: return QStringLiteral("DeductionDetails");
    case 7: return QStringLiteral("ContributionDetails");
    default: return QString();
    }
}

Currency captionAmount(const PayView& form, const QString& label) {
    return RoundCurrency(form.caption(label));
}

} // namespace

float GetPaysPerYear() {
    const QVariant v = App().WageDatabase.scalar(
        QStringLiteral("SELECT PayInterval.PaysPerYear FROM PayInterval INNER JOIN Employees ON "
                       "PayInterval.PayIntervalID = Employees.PayIntervalID WHERE Employees.EmployeeID = %1")
            .arg(App().CurrentEmployeeID));
    return IsNull(v) ? 0.0f : CSng(v);
}

void ReCalcPAYE(PayView& form) {
    AppContext& app = App();
    const float paysPerYear = GetPaysPerYear();
    // The figures come from the labels as they stand, not from the detail rows.
    const Currency totalTaxable = captionAmount(form, QStringLiteral("lblTaxable")) +
                                  captionAmount(form, QStringLiteral("lblGross"));
    form.setCaption(QStringLiteral("lblTotalTaxable"), CStr(totalTaxable));
    const Currency excluded =
        ExcludeKiwiSaver(app.CurrentWageID) + ExtraPayKiwiSaverExcluded(app.WageDatabase, app.CurrentWageID);
    form.setCaption(QStringLiteral("lblPaye"),
                    CalcPAYE(app.CurrentEmployeeID, app.CurrentWageID, totalTaxable, paysPerYear));
    UpdateDeductions(totalTaxable, app.CurrentWageID, form, QStringLiteral("lblDeduct"), excluded);
    UpdateContributions(totalTaxable - excluded, app.CurrentWageID, form, QStringLiteral("lblKiwiSaver"),
                        QStringLiteral("lblPayDate"), QStringLiteral("lblTaxCredit"), QStringLiteral("lblESCT"));
}

void UpdateGridLine(PayView& form, int column, const QString& newText, int row) {
    const Currency totalTaxable = captionAmount(form, QStringLiteral("lblTotalTaxable"));
    if (!IsNumeric(newText))
        return;
    GridArray& grid = form.WageGridArray;
    switch (App().CurrentTab) {
    case 1:
        RecalcPaymentRow(grid, row, column, newText);
        UpdatePayTotals(form);
        break;
    case 2:
        RecalcAllowanceRow(grid, row, column, newText);
        UpdateTaxable(form);
        break;
    case 4:
        RecalcAllowanceRow(grid, row, column, newText);
        UpdateNonTaxTotal(form);
        break;
    case 5:
        RecalcDeductionRow(grid, row, column, newText);
        UpdateDeductTotal(form);
        break;
    case 7:
        RecalcContributionRow(grid, row, column, newText, totalTaxable);
        UpdateContributionTotals(form);
        break;
    default:
        break;
    }
}

// Each save is complete in itself: a save that runs inside another only repeats it.
void SaveWageGrid(PayView& form) {
    WriteBatch batch(App().WageDatabase);
    const QString table = detailTable(App().CurrentTab);
    // A committed or held pay's lines can't have changed (its grid refuses edits), and the file refuses
    // to have them written again: only its payslip view is made.
    if (!table.isEmpty() && !PayFrozen(App().WageDatabase, App().CurrentWageID)) {
        SaveWageXArray(form, table);
        ReCalcPAYE(form);
    }
    RefreshPaySlip(form);
}

void SaveWageXArray(PayView& form, const QString& table) {
    trap(QStringLiteral("SaveWageXArray"), [&] {
        AppContext& app = App();
        const GridArray& lines = form.WageGridArray;
        const int rows = lines.rowCount() - 1;
        const int columns = lines.columnCount() - 1;
        // The array is the truth: every line of the pay in this table is replaced by the grid's rows.
        app.WageDatabase.execute(
            QStringLiteral("DELETE From %1 where WageID = %2").arg(table).arg(app.CurrentWageID));
        // The pay has no rows left, so a filter on it opens the same insertable query without reading
        // the other pays' lines.
        auto rs = app.WageDatabase.openRecordset(
            app.WageGridQuery + QStringLiteral(" WHERE WageID = %1").arg(app.CurrentWageID), RecordsetType::Dynaset);
        for (int row = 0; row <= rows; ++row) {
            rs->AddNew();
            rs->setValue(QStringLiteral("WageID"), app.CurrentWageID);
            for (int column = 1; column <= columns; ++column)
                skipErrors([&] { rs->setValue(column, lines.value(row, column)); });
            rs->Update();
        }
        rs->Close();
    });
}

void SettlePayFigures(PayView& form) {
    AppContext& app = App();
    Database& wage = app.WageDatabase;
    const qint32 wageID = app.CurrentWageID;
    if (wageID <= 0 || PayFrozen(wage, wageID)) return;
    // A one-off pay's tax is worked by its own rules, and a pay without payment lines has no lines to
    // give its figures: both keep them.
    const QVariant regular = wage.scalar(
        QStringLiteral("SELECT 1 FROM Wages WHERE WageID = %1 AND coalesce(OneOff, 0) = 0 AND EXISTS (SELECT 1 FROM "
                       "PaymentDetails WHERE WageID = %1)")
            .arg(wageID));
    if (IsNull(regular)) return;
    // All or nothing: a stop half-way must not leave a tax line that looks current beside stale lines.
    wage.beginWriteTrans();
    try {
        RefreshPaySlip(form);
        const Currency taxable =
            captionAmount(form, QStringLiteral("lblTaxable")) + captionAmount(form, QStringLiteral("lblGross"));
        const QVariantList line =
            wage.firstRow(QStringLiteral("SELECT TaxableAmount FROM TaxDetails WHERE WageID = %1").arg(wageID));
        const bool stale =
            line.isEmpty() || IsNull(line.at(0)) ? taxable > Currency() : CCur(line.at(0)) != taxable;
        if (stale) {
            ReCalcPAYE(form);
            RefreshPaySlip(form);
        }
        form.datPays.UpdateRecord();
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
}

void SetTakeHome(PayView& form) {
    form.SelectLabel(QStringLiteral("lblTakehome"));
    ControlState& button = form.control(QStringLiteral("cmdSelect(6)"));
    if (!button.down)
        button.down = true;
    App().CurrentTab = 6;
    EnterPaySlip(form);
    form.bringToFront(QStringLiteral("tgrdwages"));
    form.refreshGrid();
}

} // namespace ql
