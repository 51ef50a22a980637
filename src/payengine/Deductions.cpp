#include "Deductions.h"
#include "AddPay.h"
#include "AppContext.h"
#include "PayTotals.h"
#include "PayView.h"
#include "PercentLines.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

float GetDeductLimit(qint32 deductNameID, int which) { return percentLineLimit(deductionKind(), deductNameID, which); }

void GetEmpDeduct(qint32 deductNameID, float& specialRate, Currency& fixedAmount) {
    percentLineEmployee(deductionKind(), deductNameID, specialRate, fixedAmount);
}

void GetKSEmpDeduct(qint32 deductNameID, QString& taxName) {
    trap(QStringLiteral("GetKSEmpDeduct"), [&] {
        auto rs = App().WageDatabase.openRecordset(
            QStringLiteral("SELECT TaxName FROM EmployeeDeductions WHERE EmployeeID=%1 and DeductID = %2;")
                .arg(App().CurrentEmployeeID)
                .arg(deductNameID),
            RecordsetType::Snapshot);
        if (!rs->EOF_())
            skipErrors([&] { taxName = CStr(rs->value(QStringLiteral("TaxName"))); });
        rs->Close();
    });
}

void CalcDeduction(float specialRate, Currency fixedAmount, Currency base, qint32 deductNameID,
                   float paysPerYear, float& percentage, Currency& amountCalcOn, Currency& deduction) {
    calcPercentLine(deductionKind(), specialRate, fixedAmount, base, deductNameID, paysPerYear, percentage,
                    amountCalcOn, deduction);
}

void AddDefaultDeduct(qint32 wageID, Currency taxable, bool /*firstPay*/, qint32 employeeID, float paysPerYear) {
    trap(QStringLiteral("AddDefaultDeduct"), [&] {
        FillpayInfoArray(QStringLiteral("SELECT DeductNameID, Percentage, LowerThreshold, UpperThreshold, "
                                        "MaxPercent from DeductNames"),
                         false);
        Database& db = App().WageDatabase;
        auto details = db.openRecordset(QStringLiteral("SELECT * FROM DeductionDetails WHERE WageID = %1").arg(wageID),
                                        RecordsetType::Dynaset);
        // No order: the lines come as the engine gives them.
        auto rows = db.openRecordset(
            QStringLiteral("SELECT DeductID, FixedAmount, SpecialRate FROM EmployeeDeductions WHERE EmployeeID=%1;")
                .arg(employeeID),
            RecordsetType::Snapshot);
        while (!rows->EOF_()) {
            const QVariant id = rows->value(QStringLiteral("DeductID"));
            if (!IsNull(id) && CLng(id) > 0) {
                details->AddNew();
                details->setValue(QStringLiteral("DeductNameID"), QVariant(CLng(id)));
                const QVariant fixed = rows->value(QStringLiteral("FixedAmount"));
                const QVariant special = rows->value(QStringLiteral("SpecialRate"));
                float percentage = 0;
                Currency amountCalcOn, deduction;
                CalcDeduction(IsNull(special) ? 0.0f : CSng(special), IsNull(fixed) ? Currency() : CCur(fixed),
                              taxable, CLng(id), paysPerYear, percentage, amountCalcOn, deduction);
                details->setValue(QStringLiteral("Percentage"), QVariant(percentage));
                details->setValue(QStringLiteral("AmountCalcOn"), QVariant::fromValue(amountCalcOn));
                details->setValue(QStringLiteral("Deductions"), QVariant::fromValue(deduction));
                details->setValue(QStringLiteral("WageID"), QVariant(wageID));
                details->Update();
            }
            rows->MoveNext();
        }
        rows->Close();
        details->Close();
    });
}

void UpdateDeductions(Currency taxable, qint32 wageID, PayView& form, const QString& totalLabel,
                      Currency excluded) {
    const float paysPerYear = GetPaysPerYear();
    Currency total;
    // Set once: an employee without a row for a line keeps the values of the line before.
    float specialRate = 0;
    Currency fixedAmount;
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT DeductNameID, AmountCalcon, Percentage, Deductions, WageID "
                       "FROM DeductionDetails WHERE WageID = %1;")
            .arg(wageID),
        RecordsetType::Dynaset);
    while (!rs->EOF_()) {
        const QVariant nameID = rs->value(QStringLiteral("DeductNameID"));
        if (!IsNull(nameID)) {
            const qint32 id = CLng(nameID);
            GetEmpDeduct(id, specialRate, fixedAmount);
            // Only a KiwiSaver line itself leaves out what is excluded from KiwiSaver: a line the
            // employee has no standing row for (a student loan) goes on the whole taxable pay.
            QString taxName;
            GetKSEmpDeduct(id, taxName);
            const Currency base = taxName == QLatin1String("KiwiSaver") ? taxable - excluded : taxable;
            float percentage = 0;
            Currency amountCalcOn, deduction;
            CalcDeduction(specialRate, fixedAmount, base, id, paysPerYear, percentage, amountCalcOn, deduction);
            // A stored percentage of exactly 100 marks a fixed or hand-set line: left alone, not counted.
            // A Null percentage is left alone too.
            const QVariant stored = rs->value(QStringLiteral("Percentage"));
            if (!IsNull(stored) && CSng(stored) != 100.0f) {
                rs->Edit();
                rs->setValue(QStringLiteral("AmountCalcon"), QVariant::fromValue(amountCalcOn));
                rs->setValue(QStringLiteral("Percentage"), QVariant(percentage));
                rs->setValue(QStringLiteral("Deductions"), QVariant::fromValue(deduction));
                rs->Update();
                total += deduction;
            }
        }
        rs->MoveNext();
    }
    rs->Close();
    form.setCaption(totalLabel, CStr(total));
}

void RecalcDeductionRow(GridArray& grid, int row, int column, const QString& newText) {
    Currency calcOn, amount;
    float percentage = 0;
    recalcPercentRow(grid, row, column, newText, 4, calcOn, percentage, amount);
    grid.setValue(row, 2, Format(QVariant::fromValue(calcOn), QStringLiteral("currency")));
    grid.setValue(row, 3, Format(QVariant(percentage), QStringLiteral("fixed")));
    grid.setValue(row, 4, Format(QVariant::fromValue(amount), QStringLiteral("Currency")));
}

void DefaultDeductionRow(int column, Currency taxable, GridArray& grid, int row) {
    if (column != 1)
        return;
    const QVariant nameCell = grid.value(row, 1);
    const qint32 nameID = IsNumeric(nameCell) ? CLng(nameCell) : 0;
    const float paysPerYear = GetPaysPerYear();
    float specialRate = 0;
    Currency fixedAmount;
    GetEmpDeduct(nameID, specialRate, fixedAmount);
    float percentage = 0;
    Currency amountCalcOn, deduction;
    CalcDeduction(specialRate, fixedAmount, taxable, nameID, paysPerYear, percentage, amountCalcOn, deduction);
    grid.setValue(row, 2, QVariant::fromValue(amountCalcOn));
    grid.setValue(row, 3, QVariant(percentage));
    grid.setValue(row, 4, QVariant::fromValue(deduction));
}

void UpdateDeductTotal(PayView& form) {
    form.setCaption(QStringLiteral("lblDeduct"),
                    Format(QVariant::fromValue(Currency::fromSingle(SumGridColumn(form.WageGridArray, 4))),
                           QStringLiteral("Currency")));
}

bool IsKiwiSaverEnrolled(qint32 employeeID) {
    // The one column, not the whole row: this is asked several times in every add and save.
    const QVariant v = App().WageDatabase.scalar(
        QStringLiteral("SELECT KiwiSaverEnrolled From Employees WHERE Employees.EmployeeID=%1").arg(employeeID));
    return !IsNull(v) && CBool(v);
}

} // namespace ql
