#include "PercentLines.h"
#include "AppContext.h"
#include "CountryEquations.h"
#include "IrdPay.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"

// Arithmetic types: percentages and limits are Single; a yearly threshold over the pays per year is a
// Single quotient taken to Currency; a percentage of an amount is taken in double and converted once to
// Currency, half to even at four decimals.

namespace ql {

const PercentLineKind& deductionKind() {
    static const PercentLineKind k{QStringLiteral("DeductNames"),        QStringLiteral("DeductNameID"),
                                   QStringLiteral("EmployeeDeductions"), QStringLiteral("DeductID"),
                                   QStringLiteral("DeductionDetails"),   QStringLiteral("Deductions"),
                                   QStringLiteral("GetEmpDeduct")};
    return k;
}

const PercentLineKind& contributionKind() {
    static const PercentLineKind k{QStringLiteral("ContributionNames"),     QStringLiteral("ContributionNameID"),
                                   QStringLiteral("EmployerContributions"), QStringLiteral("ContributionID"),
                                   QStringLiteral("ContributionDetails"),   QStringLiteral("Contributions"),
                                   QStringLiteral("GetEmpContribution")};
    return k;
}

namespace {

float limitValue(const QVariant& v) {
    return IsNull(v) ? 0.0f : CSng(v);
}

// The four limits of a name in one query (upper threshold, lower threshold, maximum percent, percentage);
// Null when the name is missing.
// Each is converted only where it is used.
QVariantList percentLineLimits(const PercentLineKind& k, qint32 nameID) {
    QVariantList values = App().WageDatabase.firstRow(
        QStringLiteral("SELECT UpperThreshold, LowerThreshold, MaxPercent, Percentage FROM %1 WHERE %2 = %3")
            .arg(k.nameTable, k.nameKey)
            .arg(nameID));
    while (values.size() < 4)
        values << QVariant();
    return values;
}

} // namespace

float percentLineLimit(const PercentLineKind& k, qint32 nameID, int which) {
    if (which < 0 || which > 3)
        return 0.0f;
    return limitValue(percentLineLimits(k, nameID).at(which));
}

void percentLineEmployee(const PercentLineKind& k, qint32 nameID, float& specialRate, Currency& fixedAmount) {
    trap(k.trapName, [&] {
        auto rs = App().WageDatabase.openRecordset(
            QStringLiteral("SELECT FixedAmount, SpecialRate FROM %1 WHERE EmployeeID=%2 and %3 = %4;")
                .arg(k.employeeTable)
                .arg(App().CurrentEmployeeID)
                .arg(k.employeeKey)
                .arg(nameID),
            RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            // A Null column leaves its output as it was.
            skipErrors([&] { fixedAmount = CCur(rs->value(QStringLiteral("FixedAmount"))); });
            skipErrors([&] { specialRate = CSng(rs->value(QStringLiteral("SpecialRate"))); });
        }
        rs->Close();
    });
}

void calcPercentLine(const PercentLineKind& k, float specialRate, Currency fixedAmount, Currency base,
                     qint32 nameID, float paysPerYear, float& percentage, Currency& amountCalcOn,
                     Currency& amount) {
    const QVariantList limits = percentLineLimits(k, nameID);
    if (fixedAmount <= Currency()) {
        amountCalcOn = base;
        const float upper = limitValue(limits[0]);
        if (upper > 0 && paysPerYear > 0) {
            const Currency cap = Currency::fromSingle(upper / paysPerYear);
            if (amountCalcOn > cap)
                amountCalcOn = cap;
        }
        // The lower threshold comes off the capped figure.
        const float lower = limitValue(limits[1]);
        if (lower > 0 && paysPerYear > 0) {
            amountCalcOn = amountCalcOn - Currency::fromSingle(lower / paysPerYear);
            if (amountCalcOn < Currency())
                amountCalcOn = Currency();
        }
        percentage = specialRate > 0 ? specialRate : limitValue(limits[3]);
        // A New Zealand pay's KiwiSaver and student loan lines follow Inland Revenue's method exactly.
        if (IrdPercentLine(k.nameTable, nameID, base, paysPerYear, percentage, amountCalcOn, amount)) return;
    }
    if (fixedAmount > Currency()) {
        amountCalcOn = fixedAmount;
        percentage = 100;
    }
    amount = CalcPercentOf(amountCalcOn, percentage);
    // The cap counts against the undiminished base and caps a fixed amount too.
    const Currency maxPercent = Currency::fromSingle(limitValue(limits[2]));
    if (maxPercent > Currency()) {
        const Currency limit = Currency::fromDouble((base * maxPercent).toDouble() / 100.0);
        if (amount > limit) {
            amount = limit;
            amountCalcOn = limit;
        }
    }
}

void recalcPercentRow(GridArray& grid, int row, int column, const QString& newText, int amountColumn,
                      Currency& calcOn, float& percentage, Currency& amount) {
    calcOn = Currency();
    percentage = 0;
    amount = Currency();
    const QVariant calcOnCell = grid.value(row, 2);
    const QVariant percentCell = grid.value(row, 3);
    const QVariant amountCell = grid.value(row, amountColumn);
    if (IsNumeric(calcOnCell))
        calcOn = RoundCurrency(calcOnCell);
    if (IsNumeric(percentCell))
        percentage = CSng(percentCell);
    if (IsNumeric(amountCell))
        amount = RoundCurrency(amountCell);

    auto percentOf = [&] {
        amount = Currency::fromDouble(calcOn.toDouble() * static_cast<double>(percentage) / 100.0);
    };
    if (column == 2) {
        calcOn = RoundCurrency(newText);
        percentOf();
    } else if (column == 3) {
        percentage = CSng(newText);
        percentOf();
    } else if (column == amountColumn) {
        amount = RoundCurrency(newText);
        if (calcOn > Currency()) {
            percentage = static_cast<float>(amount.toDouble() * 100.0 / calcOn.toDouble());
        } else if (percentage > 0) {
            calcOn = Currency::fromDouble(amount.toDouble() * 100.0 / static_cast<double>(percentage));
        } else {
            // A bare amount becomes a hand-set line, which recalculation leaves alone.
            calcOn = amount;
            percentage = 100;
        }
    }
}

} // namespace ql
