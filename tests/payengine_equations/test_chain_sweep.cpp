// The template's steps and equations against an exact computation of Inland Revenue's method, over
// many earnings and every yearly figure of a wide range, for 52, 26, 13 and 12 pays.
#include "EquationTest.h"
#include "TaxChain.h"
#include "payengine/CountryEquations.h"
#include <QElapsedTimer>
#include <iostream>

using namespace eqtest;
using ql::Currency;

namespace {

constexpr int kPays[] = {52, 26, 13, 12};
// Every yearly figure up to here must agree to the cent. (A wider run, up to 3,000,000 at 52 pays,
// agreed throughout as well: above $180,000 the weekly figure of the exact tax moves by 0.75 of a cent
// for each dollar and so never comes near a cut that the Single shortfall of the 39% step could cross.)
constexpr qint64 kExactUpTo = 300000;

Currency cents(qint64 c) {
    return Currency::fromRaw(c * 100);
}

class ChainSweep : public ::testing::TestWithParam<int> {
protected:
    CountryRows rows = templateRows(GetParam());
    std::vector<TaxStep> main = templateSteps(1);
};

// Every yearly figure: the steps and the per-pay row against the exact weekly-then-per-pay tax.
TEST_P(ChainSweep, EveryYearlyFigure) {
    ASSERT_FALSE(rows.perPay.isEmpty());
    for (int pays : kPays) {
        qint64 checked = 0, agreeing = 0;
        for (qint64 annual = 0; annual <= kExactUpTo; ++annual) {
            const Currency tax = stepsTax(main, Currency::fromLong(annual));
            const Currency got = evaluateRow(rows.perPay, rows.country, tax, static_cast<float>(pays));
            const qint64 want = ird::yearlyTax(annual) / 5200 * 52 / pays;
            ++checked;
            if (got == cents(want))
                ++agreeing;
            else
                ADD_FAILURE() << "pays " << pays << " yearly " << annual << ": "
                              << got.toFixed4().toStdString() << " against " << want << " cents";
        }
        std::cout << "country " << rows.country << ", " << pays << " pays: " << agreeing << " of " << checked
                  << " yearly figures 0.." << kExactUpTo << " agree" << std::endl;
    }
}

// Earnings of a pay, whole chain: process 1, the steps, process 2.
TEST_P(ChainSweep, EarningsThroughTheWholeChain) {
    for (int pays : kPays) {
        qint64 checked = 0, agreeing = 0;
        // every cent up to 500.00, then a stride of 9.97, up to the exact range
        const qint64 limitCents = kExactUpTo * 100 / pays;
        for (qint64 c = 1; c <= limitCents; c += (c < 50000 ? 1 : 997)) {
            const Currency got = chainPaye(rows, main, cents(c), pays);
            const qint64 want = ird::payeCents(c, pays);
            ++checked;
            if (got == cents(want))
                ++agreeing;
            else
                ADD_FAILURE() << "pays " << pays << " earnings " << c
                              << " cents: " << got.toFixed4().toStdString() << " against " << want;
        }
        std::cout << "country " << rows.country << ", " << pays << " pays: " << agreeing << " of " << checked
                  << " earnings agree" << std::endl;
        EXPECT_EQ(agreeing, checked);
    }
}

// Flat codes: earnings times the rate with the levy, cut to cents. The step's tax is held to four
// decimals before the rounding row sees it, so where the exact product's fifth and sixth decimals carry
// it over a whole cent the pay is a cent above the exact cut; nothing else may differ.
TEST_P(ChainSweep, FlatCodes) {
    struct Flat {
        int taxType;
        qint64 rate; // hundredths of a per cent, levy included
    } flats[] = {{2, 1225}, {3, 1925}, {4, 3175}, {5, 3475}, {6, 4075}, {7, 4675}};
    for (const Flat& f : flats) {
        const auto steps = templateSteps(f.taxType);
        qint64 checked = 0, agreeing = 0, carried = 0;
        for (qint64 c = 1; c <= 500000; c += (c < 20000 ? 1 : 13)) {
            const Currency got = chainFlat(rows, steps, cents(c), 52);
            const qint64 exact = c * f.rate; // millionths of a dollar
            const qint64 want = ird::flatCents(c, f.rate);
            ++checked;
            if (got == cents(want)) {
                ++agreeing;
            } else if (got == cents(want + 1) && (want + 1) * 10000 - exact <= 50) {
                // within half a ten-thousandth below the next cent: the four-decimal step reaches it
                ++carried;
            } else {
                ADD_FAILURE() << "type " << f.taxType << " earnings " << c
                              << " cents: " << got.toFixed4().toStdString() << " against " << want;
            }
        }
        std::cout << "country " << rows.country << ", flat type " << f.taxType << ": " << agreeing << " of "
                  << checked << " agree, " << carried << " a cent above by the four-decimal step"
                  << std::endl;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCountry, ChainSweep, ::testing::Values(64, 61, 55, 598));

// The special codes are New Zealand's.
// The code ME within its ranges: the credit of the yearly figure comes off before the weekly cut.
TEST(ChainSweepNewZealand, MeCreditRange) {
    const CountryRows rows = templateRows(64);
    const auto main = templateSteps(1);
    for (int pays : kPays) {
        for (qint64 annual = 24000; annual <= 47999; ++annual) {
            const Currency credit =
                annual <= 44000 ? cents(52000) : Currency::fromDouble(520.0 - (annual - 44000) * 0.13);
            const Currency got = evaluateRow(rows.credit, 64, stepsTax(main, Currency::fromLong(annual)),
                                             static_cast<float>(pays), credit);
            const qint64 want = (ird::yearlyTax(annual) - ird::meCredit(annual)) / 5200 * 52 / pays;
            ASSERT_EQ(got, cents(want)) << "pays " << pays << " yearly " << annual;
        }
    }
}

// The sweep above evaluates rows in memory; the gate itself, with its database, gives the same.
class ChainThroughTheGate : public EquationTest {};

TEST_F(ChainThroughTheGate, SameAsInMemory) {
    createTemplateModules();
    const auto main = templateSteps(1);
    for (int country : {64, 598}) {
        setCountry(country);
        const CountryRows rows = templateRows(country);
        for (int pays : kPays) {
            for (qint64 c = 1; c < 600000; c += 7919) {
                const Currency annual = ql::CountrySpecificEquation(cents(c), pays, 1, Currency());
                ASSERT_EQ(annual, evaluateRow(rows.annual, country, cents(c), pays));
                const Currency tax = stepsTax(main, annual);
                ASSERT_EQ(ql::CountrySpecificEquation(tax, pays, 2, Currency()),
                          evaluateRow(rows.perPay, country, tax, pays));
            }
        }
    }
    EXPECT_TRUE(reported.empty());
}

} // namespace
