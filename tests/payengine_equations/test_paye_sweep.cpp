// PAYE on every tax code of the template against Inland Revenue's method, every cent of earnings from
// 0.01 to 10,000.00 for 52, 26, 13 and 12 pays with QUILLARY_FULL_SWEEP=1, else a stride of it. The main
// codes (M, M SL; ME, ME SL with the credit of the yearly figure) agree throughout. The flat codes keep
// the step's tax to four decimals before the cut to cents, which puts a pay a cent above the cut where
// the exact product's fifth and sixth decimals reach the next cent; the counts are printed. A second
// sweep looks for a design of the data (the flat rate a Single lower, or another rounding equation)
// that removes those differences without spoiling the rounding of every other amount: there is none.
#include "EquationTest.h"
#include "TaxChain.h"
#include <cmath>
#include <cstdlib>
#include <iostream>

using namespace eqtest;
using ql::Currency;

namespace {

constexpr int kPays[] = {52, 26, 13, 12};

bool fullSweep() {
    const char* v = std::getenv("QUILLARY_FULL_SWEEP");
    return v && *v && *v != '0';
}
qint64 stride() {
    return fullSweep() ? 1 : 397;
}
Currency cents(qint64 c) {
    return Currency::fromRaw(c * 100);
}

struct Flat {
    const char* code;
    int taxType;
    qint64 rate; // hundredths of a per cent, levy included
};
constexpr Flat kFlats[] = {{"SB", 2, 1225}, {"S", 3, 1925},  {"SH", 4, 3175},
                           {"ST", 5, 3475}, {"SA", 6, 4075}, {"ND", 7, 4675}};

// The exact product in millionths of a dollar lies within half a ten-thousandth below the next cent.
bool carriedByTheFourDecimalStep(qint64 earningsCents, qint64 rate, const Currency& got, qint64 want) {
    return got == cents(want + 1) && (want + 1) * 10000 - earningsCents * rate <= 50;
}

} // namespace

TEST(PayeSweep, MainCodesEveryInterval) {
    const CountryRows rows = templateRows(64);
    const auto main = templateSteps(1);
    for (int pays : kPays) {
        for (const bool me : {false, true}) {
            qint64 checked = 0, differ = 0;
            for (qint64 c = 1; c <= 1000000; c += stride()) {
                Currency got;
                if (me) {
                    const qint64 annual = ird::annualDollars(c, pays);
                    const bool inRange = annual >= 24000 && annual <= 47999;
                    const Currency credit = annual <= 44000
                                                ? cents(52000)
                                                : Currency::fromDouble(520.0 - (annual - 44000) * 0.13);
                    got = chainPaye(rows, main, cents(c), pays, credit, inRange);
                } else {
                    got = chainPaye(rows, main, cents(c), pays);
                }
                ++checked;
                if (got != cents(ird::payeCents(c, pays, me)) && ++differ <= 5)
                    ADD_FAILURE() << (me ? "ME" : "M") << ", " << pays << " pays, earnings " << c
                                  << " cents: " << got.toFixed4().toStdString() << " against "
                                  << ird::payeCents(c, pays, me);
            }
            std::cout << (me ? "ME, ME SL" : "M, M SL") << ", " << pays << " pays: " << checked
                      << " earnings, " << differ << " differ" << std::endl;
            EXPECT_EQ(differ, 0);
        }
    }
}

TEST(PayeSweep, FlatCodesEveryInterval) {
    const CountryRows rows = templateRows(64);
    for (const Flat& f : kFlats) {
        const auto steps = templateSteps(f.taxType);
        for (int pays : kPays) {
            qint64 checked = 0, carried = 0;
            for (qint64 c = 1; c <= 1000000; c += stride()) {
                const Currency got = chainFlat(rows, steps, cents(c), pays);
                const qint64 want = ird::flatCents(c, f.rate);
                ++checked;
                if (got == cents(want)) continue;
                if (carriedByTheFourDecimalStep(c, f.rate, got, want))
                    ++carried;
                else
                    ADD_FAILURE() << f.code << ", " << pays << " pays, earnings " << c
                                  << " cents: " << got.toFixed4().toStdString() << " against " << want;
            }
            std::cout << f.code << ", " << pays << " pays: " << checked << " earnings, " << carried
                      << " a cent above the cut (" << 100.0 * double(carried) / double(checked) << "%)"
                      << std::endl;
        }
    }
}

// Candidate designs: the flat step's rate a few Singles lower, and rounding equations that cut with a
// different allowance. A design counts only if its rounding still cuts every four-decimal amount to the
// cent exactly (deductions and the flat codes' last step depend on it).
TEST(PayeSweep, NoDataDesignRemovesTheFlatCodesCarry) {
    const CountryRows rows = templateRows(64);
    const QString roundForms[] = {QStringLiteral("ROUND(FIX(x*100+SGN(x)/1000)/100)"),
                                  QStringLiteral("ROUND(FIX(x*100)/100)"),
                                  QStringLiteral("ROUND(FIX(x*100-SGN(x)/1000)/100)"),
                                  QStringLiteral("ROUND(FIX(x*100-SGN(x)*0.49)/100)"),
                                  QStringLiteral("ROUND(FIX(x*100-SGN(x)/2)/100)")};
    int cleanDesigns = 0;
    for (const QString& form : roundForms) {
        // Exact cut of four-decimal amounts, around every cent and at a stride.
        bool exact = true;
        for (qint64 k = 0; k <= 2000000 && exact; k += (k % 100 == 0 || k % 100 == 99) ? 1 : 37) {
            if (k % 100 != 0 && k % 100 != 99 && k % 37 != 0) continue;
            exact = evaluateRow(form, 64, Currency::fromRaw(k), 0) == Currency::fromRaw(k / 100 * 100);
        }
        for (int lower = 0; lower <= 4; ++lower) {
            qint64 checked = 0, differ = 0;
            for (const Flat& f : kFlats) {
                auto steps = templateSteps(f.taxType);
                for (TaxStep& s : steps)
                    for (int i = 0; i < lower; ++i)
                        s.taxrate = std::nextafter(s.taxrate, 0.0f);
                CountryRows r = rows;
                r.round = form;
                for (qint64 c = 1; c <= 200000; c += 61) {
                    ++checked;
                    if (chainFlat(r, steps, cents(c), 52) != cents(ird::flatCents(c, f.rate))) ++differ;
                }
            }
            std::cout << "rounding " << form.toStdString() << (exact ? " (exact)" : " (miscuts amounts)")
                      << ", rate " << lower << " Singles lower: " << differ << " of " << checked << " differ"
                      << std::endl;
            if (exact && differ == 0) ++cleanDesigns;
        }
    }
    EXPECT_EQ(cleanDesigns, 0);
}
