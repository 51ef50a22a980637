#include "Allowances.h"
#include "AddPay.h"
#include "AppContext.h"
#include "PayTotals.h"
#include "PayView.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"

// Quantities (calculated on) are Single, rates go through RoundCurrency, amounts are Currency; a
// product or quotient that lands in a Currency is taken in double and converted once, half to even
// at four decimals, never rounded to cents.

namespace ql {

namespace {

// The two kinds of allowance differ only in their tables and columns.
struct AllowanceKind {
    QString detailTable;
    QString nameKey;
    QString rateColumn;
    QString amountColumn;
    QString typeQuery;     // ... WHERE type = %1
    QString lastPayQuery;  // ... WHERE WageID = %1
};

const AllowanceKind& taxableKind() {
    static const AllowanceKind k{
        QStringLiteral("TaxAllowDetails"), QStringLiteral("TaxNameID"), QStringLiteral("taxallowrate"),
        QStringLiteral("TaxableAllow"),
        QStringLiteral("SELECT TaxAllowName.taxAllowancename, TaxAllowName.taxallowrate, TaxAllowTypes.TaxNameID, "
                       "0 AS Amountcalcon, 0 AS TaxableAllow "
                       "FROM TaxAllowName INNER JOIN TaxAllowTypes ON TaxAllowName.TaxNameID = TaxAllowTypes.TaxNameID "
                       "Where (((TaxAllowTypes.EmployeetypeID) = %1)) "
                       "ORDER BY TaxAllowTypes.Orderinlist;"),
        QStringLiteral("SELECT TaxAllowDetails.TaxNameID, TaxAllowDetails.taxallowrate, TaxAllowDetails.TaxableAllow, "
                       "TaxAllowName.taxAllowancename, TaxAllowDetails.Amountcalcon "
                       "FROM TaxAllowDetails INNER JOIN TaxAllowName ON TaxAllowDetails.TaxNameID = TaxAllowName.TaxNameID "
                       "WHERE (((TaxAllowDetails.WageID)=%1));")};
    return k;
}

const AllowanceKind& nonTaxKind() {
    static const AllowanceKind k{
        QStringLiteral("NonTaxAllowDetails"), QStringLiteral("NonTaxNameID"), QStringLiteral("NonTaxRate"),
        QStringLiteral("NonTaxAllow"),
        QStringLiteral("SELECT NonTaxAllowName.NonTaxRate as NonTaxRate, NonTaxAllowName.NonTaxNameID, "
                       "0 as Amountcalcon, 0 as NonTaxAllow "
                       "FROM NonTaxAllowName INNER JOIN NonTaxAllowTypes "
                       "ON NonTaxAllowName.NonTaxNameID = NonTaxAllowTypes.NonTaxNameID "
                       "WHERE NonTaxAllowTypes.EmployeeTypeID= %1 ORDER BY NonTaxAllowTypes.[Order];"),
        QStringLiteral("SELECT NonTaxAllowName.NonTaxNameID, NonTaxAllowDetails.Amountcalcon, "
                       "NonTaxAllowDetails.NonTaxRate, NonTaxAllowDetails.NonTaxAllow, "
                       "NonTaxAllowName.NonTaxallowname "
                       "FROM NonTaxAllowName INNER JOIN NonTaxAllowDetails "
                       "ON NonTaxAllowName.NonTaxNameID = NonTaxAllowDetails.NonTaxNameID "
                       "WHERE (((NonTaxAllowDetails.WageID)=%1));")};
    return k;
}

void addDefaultAllowances(const AllowanceKind& k, qint32 lastWageID, qint32 wageID, qint32 employeeTypeID) {
    Database& db = App().WageDatabase;
    auto details = db.openRecordset(QStringLiteral("SELECT * FROM %1 WHERE WageID = %2").arg(k.detailTable).arg(wageID),
                                    RecordsetType::Dynaset);
    auto types = db.openRecordset(k.typeQuery.arg(employeeTypeID), RecordsetType::Snapshot);
    while (!types->EOF_()) {
        details->AddNew();
        details->setValue(k.nameKey, types->value(k.nameKey));
        details->setValue(QStringLiteral("WageID"), QVariant(wageID));
        details->setValue(k.rateColumn, types->value(k.rateColumn));
        details->setValue(QStringLiteral("Amountcalcon"), types->value(QStringLiteral("Amountcalcon")));
        details->setValue(k.amountColumn, types->value(k.amountColumn));
        details->Update();
        types->MoveNext();
    }
    types->Close();

    // The last pay's quantity, rate and amount are copied as they stand, not recalculated.
    auto last = db.openRecordset(k.lastPayQuery.arg(lastWageID), RecordsetType::Snapshot);
    while (!last->EOF_()) {
        const QVariant id = last->value(k.nameKey);
        if (!IsNull(id)) {
            details->FindFirst(QStringLiteral("[%1]= %2 AND [WageID] = %3").arg(k.nameKey).arg(CLng(id)).arg(wageID));
            if (!details->NoMatch()) {
                details->Edit();
                details->setValue(k.rateColumn, last->value(k.rateColumn));
                details->setValue(QStringLiteral("Amountcalcon"), last->value(QStringLiteral("Amountcalcon")));
                details->setValue(k.amountColumn, last->value(k.amountColumn));
                details->Update();
            }
        }
        last->MoveNext();
    }
    last->Close();
    details->Close();
}

Currency sumOf(const QString& sql) {
    const QVariant v = App().WageDatabase.scalar(sql);
    return IsNull(v) ? Currency() : CCur(v);
}

} // namespace

void AddDefaulttaxable(qint32 lastWageID, qint32 wageID, qint32 employeeTypeID) {
    addDefaultAllowances(taxableKind(), lastWageID, wageID, employeeTypeID);
}

void AddDefaultNontax(qint32 lastWageID, qint32 wageID, qint32 employeeTypeID) {
    addDefaultAllowances(nonTaxKind(), lastWageID, wageID, employeeTypeID);
}

Currency SumTaxAllow(qint32 wageID) {
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT TaxAllowDetails.WageID, Sum(TaxAllowDetails.TaxableAllow) AS SumOfTaxableAllow "
                       "From TaxAllowDetails GROUP BY TaxAllowDetails.WageID HAVING TaxAllowDetails.WageID=") +
            QString::number(wageID),
        RecordsetType::Snapshot);
    Currency sum;
    if (!rs->EOF_()) {
        const QVariant v = rs->value(QStringLiteral("SumOfTaxableAllow"));
        if (!IsNull(v))
            sum = CCur(v);
    }
    rs->Close();
    return sum;
}

Currency ExcludeKiwiSaver(qint32 wageID) {
    return sumOf(QStringLiteral("SELECT Sum(TaxAllowDetails.TaxableAllow) AS SumOfTaxableAllow "
                                "FROM TaxAllowName INNER JOIN TaxAllowDetails "
                                "ON TaxAllowName.TaxNameID = TaxAllowDetails.TaxNameID "
                                "WHERE TaxAllowName.ExcludeKiwiSaver=1 AND TaxAllowDetails.WageID= ") +
                 QString::number(wageID));
}

void RecalcAllowanceRow(GridArray& grid, int row, int column, const QString& newText) {
    float calcOn = 0;
    Currency rate, amount;
    const QVariant calcOnCell = grid.value(row, 2);
    const QVariant rateCell = grid.value(row, 3);
    const QVariant amountCell = grid.value(row, 4);
    if (IsNumeric(calcOnCell))
        calcOn = CSng(calcOnCell);
    if (IsNumeric(rateCell))
        rate = RoundCurrency(rateCell);
    if (IsNumeric(amountCell))
        amount = RoundCurrency(amountCell);

    auto product = [&] { return Currency::fromDouble(rate.toDouble() * static_cast<double>(calcOn)); };
    switch (column) {
    case 2:
        calcOn = CSng(newText);
        amount = product();
        break;
    case 3:
        rate = RoundCurrency(newText);
        amount = product();
        break;
    case 1:
        rate = Currency::fromSingle(GetPayInfoRate(CLng(newText)));
        amount = product();
        break;
    case 4:
        amount = RoundCurrency(newText);
        if (calcOn > 0) {
            rate = Currency::fromDouble(amount.toDouble() / static_cast<double>(calcOn));
        } else if (rate <= Currency()) {
            // A bare amount stands as a quantity at rate 1, so that the line stays consistent.
            calcOn = amount.toSingle();
            rate = Currency::fromLong(1);
        } else {
            calcOn = static_cast<float>(amount.toDouble() / rate.toDouble());
        }
        break;
    default:
        break;
    }
    grid.setValue(row, 2, Format(QVariant(calcOn), QStringLiteral("fixed")));
    grid.setValue(row, 3, Format(QVariant::fromValue(rate), QStringLiteral("fixed")));
    grid.setValue(row, 4, Format(QVariant::fromValue(amount), QStringLiteral("Currency")));
}

void UpdateTaxable(PayView& form) {
    form.setCaption(QStringLiteral("lblTaxable"),
                    Format(QVariant(SumGridColumn(form.WageGridArray, 4)), QStringLiteral("Currency")));
    // An uncommitted pay stores the edit and recalculates at once.
    if (IsNull(form.datPays.value(QStringLiteral("Reference"))))
        SaveWageGrid(form);
}

void UpdateNonTaxTotal(PayView& form) {
    form.setCaption(QStringLiteral("lblNonTax"),
                    Format(QVariant(SumGridColumn(form.WageGridArray, 4)), QStringLiteral("Currency")));
}

} // namespace ql
