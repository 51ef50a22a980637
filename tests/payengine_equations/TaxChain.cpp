#include "TaxChain.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "data/Schema.h"
#include "formula/TaxEvaluator.h"
#include "formula/fhCEval.h"
#include "payengine/CountryEquations.h"
#include <QTemporaryDir>

namespace eqtest {

using ql::Currency;

std::vector<TaxStep> templateSteps(int taxTypeID) {
    QTemporaryDir dir;
    ql::Database db = ql::openOrCreate(ql::DatabaseKind::Wage, dir.path() + QStringLiteral("/Wage32.db"));
    auto rs = db.openRecordset(QStringLiteral("SELECT upperlimit, taxrate FROM TaxSteps WHERE taxtypeID = %1 "
                                              "ORDER BY upperlimit")
                                   .arg(taxTypeID),
                               ql::RecordsetType::Snapshot);
    std::vector<TaxStep> steps;
    while (!rs->EOF_()) {
        steps.push_back({rs->value(0).value<Currency>(), rs->value(1).value<float>()});
        rs->MoveNext();
    }
    rs->Close();
    db.close();
    return steps;
}

Currency stepsTax(const std::vector<TaxStep>& steps, Currency annual) {
    Currency total, lower, remaining = annual;
    float rate = 0.0f;
    for (const TaxStep& s : steps) {
        rate = s.taxrate / 100.0f;
        const Currency band = s.upperlimit - lower;
        Currency amount;
        if (s.upperlimit < annual) {
            amount = band;
            lower = s.upperlimit;
            remaining = remaining - band;
        } else if (remaining <= Currency()) {
            amount = Currency();
        } else {
            amount = remaining;
            remaining = Currency();
        }
        total += Currency::fromDouble(amount.toDouble() * static_cast<double>(rate));
    }
    if (remaining > Currency())
        total += Currency::fromDouble(remaining.toDouble() * static_cast<double>(rate));
    return total;
}

Currency evaluateRow(const QString& equation, int country, Currency amount, float paysPerYear, Currency x) {
    const float p = paysPerYear == 0.0f ? 1.0f : paysPerYear;
    double value = amount.toDouble() * static_cast<double>(p);
    const QString expression = ql::CountryEquationExpression(equation, country, amount, p, x);
    if (!expression.isEmpty()) {
        if (country == 64) {
            ql::TaxEvaluator e;
            e.setExpression(expression);
            value = e.Result();
        } else {
            ql::fhCEval e;
            value = e.DoEvaluate(expression + QLatin1Char(' '));
        }
    }
    return ql::RoundCurrency(QVariant(value));
}

CountryRows templateRows(int country) {
    QTemporaryDir dir;
    ql::Database db = ql::openOrCreate(ql::DatabaseKind::Modules, dir.path() + QStringLiteral("/Modules.db"));
    auto row = [&](int process) {
        return db
            .scalar(QStringLiteral(
                        "SELECT Equation FROM TaxEquations WHERE TaxProcessID = %1 AND CountryPhone = %2")
                        .arg(process)
                        .arg(country))
            .toString();
    };
    CountryRows r{country, row(1), row(2), row(3), row(4), row(5)};
    db.close();
    return r;
}

Currency chainPaye(const CountryRows& rows, const std::vector<TaxStep>& steps, Currency earnings, int pays,
                   Currency credit, bool useCredit) {
    const float p = static_cast<float>(pays);
    const Currency annual = evaluateRow(rows.annual, rows.country, earnings, p);
    const Currency total = stepsTax(steps, annual);
    if (useCredit) return evaluateRow(rows.credit, rows.country, total, p, credit);
    return evaluateRow(rows.perPay, rows.country, total, p);
}

Currency chainFlat(const CountryRows& rows, const std::vector<TaxStep>& steps, Currency earnings, int pays) {
    const float p = static_cast<float>(pays);
    const Currency annual = evaluateRow(rows.round, rows.country, earnings, p);
    return evaluateRow(rows.round, rows.country, stepsTax(steps, annual), p);
}

namespace ird {

// Tax year 2026/27, as published: band edges in dollars and rates in hundredths of a per cent.
struct Band {
    qint64 upTo;
    qint64 rate;
};
constexpr Band kBands[] = {{15600, 1050}, {53500, 1750}, {78100, 3000}, {180000, 3300}, {-1, 3900}};
constexpr qint64 kLevyRate = 175;
constexpr qint64 kLevyCap = 156641;

qint64 annualDollars(qint64 earningsCents, int pays) {
    const qint64 c = earningsCents * pays;
    return c >= 0 ? c / 100 : -((-c + 99) / 100);
}

qint64 yearlyTax(qint64 annual) {
    if (annual <= 0) return 0;
    qint64 tax = 0, lower = 0;
    for (const Band& b : kBands) {
        const qint64 top = b.upTo < 0 ? annual : std::min(annual, b.upTo);
        if (top > lower)
            tax += (top - lower) * b.rate; // dollars x hundredths of a per cent = ten-thousandths
        if (b.upTo < 0 || annual <= b.upTo) break;
        lower = b.upTo;
    }
    return tax + std::min(annual, kLevyCap) * kLevyRate;
}

qint64 meCredit(qint64 annual) {
    if (annual >= 24000 && annual <= 44000) return 520 * 10000;
    if (annual >= 44001 && annual <= 47999) return 520 * 10000 - (annual - 44000) * 1300;
    return 0;
}

qint64 payeCents(qint64 earningsCents, int pays, bool me) {
    const qint64 annual = annualDollars(earningsCents, pays);
    qint64 tax = yearlyTax(annual);
    if (me) tax -= meCredit(annual);
    const qint64 weekly = tax / (52 * 100); // ten-thousandths to cents, cut
    return weekly * 52 / pays;
}

qint64 flatCents(qint64 earningsCents, qint64 rate) {
    return earningsCents * rate / 10000;
}

} // namespace ird

} // namespace eqtest
