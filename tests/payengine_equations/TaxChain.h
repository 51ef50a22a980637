#pragma once
// The road of a pay's tax in the test's hands: the template's tax steps run as the PAYE calculation
// runs them (rate through a Single, each step's tax to Currency), the equation rows evaluated as the
// country gate evaluates them, and beside it an exact computation of Inland Revenue's method in whole
// numbers, for comparison.
#include "runtime/Currency.h"
#include <QString>
#include <vector>

namespace eqtest {

struct TaxStep {
    ql::Currency upperlimit;
    float taxrate = 0.0f; // per cent
};

// The steps of a tax type of the template payroll database, in ascending upper limit.
std::vector<TaxStep> templateSteps(int taxTypeID);

// The yearly tax of the steps on a yearly figure, step by step as the PAYE calculation does it.
ql::Currency stepsTax(const std::vector<TaxStep>& steps, ql::Currency annual);

// One equation text evaluated on an amount as the country gate does it, without the database.
ql::Currency evaluateRow(const QString& equation, int country, ql::Currency amount, float paysPerYear,
                         ql::Currency x = ql::Currency());

// The equation rows of one country, read once from a template modules database.
struct CountryRows {
    int country = 64;
    QString annual, perPay, round, credit, lowIncome;
};
CountryRows templateRows(int country);

// Main code through the chain: process 1, the steps, process 2 (or 4 with the credit).
ql::Currency chainPaye(const CountryRows& rows, const std::vector<TaxStep>& steps, ql::Currency earnings,
                       int pays, ql::Currency credit = ql::Currency(), bool useCredit = false);
// Flat code through the chain: process 3, the one step, process 3.
ql::Currency chainFlat(const CountryRows& rows, const std::vector<TaxStep>& steps, ql::Currency earnings,
                       int pays);

// Inland Revenue's method, exactly, in cents.
namespace ird {
qint64 annualDollars(qint64 earningsCents, int pays);
// In ten-thousandths of a dollar: the bands plus the ACC levy (capped).
qint64 yearlyTax(qint64 annualDollars);
// The independent earner credit of the special code ME for the yearly figure, in ten-thousandths.
qint64 meCredit(qint64 annualDollars);
qint64 payeCents(qint64 earningsCents, int pays, bool me = false);
// Earnings times (rate + levy), cut to cents; rate in hundredths of a per cent (1050 for 10.5%).
qint64 flatCents(qint64 earningsCents, qint64 ratePercentHundredths);
} // namespace ird

} // namespace eqtest
