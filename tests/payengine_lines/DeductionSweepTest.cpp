// Student loan and KiwiSaver through CalcDeduction with the template rows, against an exact computation
// of Inland Revenue's method in whole cents, for every interval. The full sweep (every cent from 0 to
// 10,000.00) runs with QUILLARY_FULL_SWEEP=1; otherwise a stride of it, with every cent around the
// per-pay thresholds.
#include "LinesFixture.h"
#include "payengine/Deductions.h"
#include <cstdlib>
#include <iostream>

using namespace linestest;
using ql::Currency;

namespace {

constexpr qint32 KiwiSaverID = 1;   // template: 3.5% by default, no thresholds
constexpr qint32 StudentLoanID = 2; // template: 12% above the yearly threshold

struct Interval {
    int pays;
    qint64 thresholdCents; // published per-pay threshold
};
constexpr Interval kIntervals[] = {{52, 46400}, {26, 92800}, {13, 185600}, {12, 201066}};

// KiwiSaver rates in tenths of a per cent.
constexpr int kKiwiSaverRates[] = {30, 35, 40, 60, 80, 100};

constexpr qint64 kTopCents = 1000000; // 10,000.00

bool fullSweep() {
    const char* v = std::getenv("QUILLARY_FULL_SWEEP");
    return v && *v && *v != '0';
}

// The cents of the sweep: every cent with the full sweep; else a stride, with every cent near the
// thresholds and at the start.
std::vector<qint64> sweepCents() {
    std::vector<qint64> out;
    if (fullSweep()) {
        out.reserve(kTopCents + 1);
        for (qint64 c = 0; c <= kTopCents; ++c)
            out.push_back(c);
        return out;
    }
    auto near = [](qint64 c) {
        for (const Interval& i : kIntervals)
            if (c >= i.thresholdCents - 300 && c <= i.thresholdCents + 300) return true;
        return c <= 2000;
    };
    for (qint64 c = 0; c <= kTopCents; ++c)
        if (near(c) || c % 997 == 0) out.push_back(c);
    return out;
}

Currency cents(qint64 c) {
    return Currency::fromRaw(c * 100);
}

// Inland Revenue: 12% of the earnings above the per-pay threshold, cut to cents.
qint64 exactStudentLoan(qint64 earnings, qint64 threshold) {
    return earnings > threshold ? (earnings - threshold) * 12 / 100 : 0;
}
// The rate of the earnings, cut to cents.
qint64 exactKiwiSaver(qint64 earnings, int rateTenths) {
    return earnings * rateTenths / 1000;
}

Currency deduction(float specialRate, qint64 earnings, qint32 id, int pays) {
    float percentage = 0;
    Currency calcOn, amount;
    ql::CalcDeduction(specialRate, Currency(), cents(earnings), id, float(pays), percentage, calcOn, amount);
    return amount;
}

} // namespace

class DeductionSweep : public LinesTest {};

TEST_F(DeductionSweep, StudentLoanEveryInterval) {
    const auto sweep = sweepCents();
    for (const Interval& i : kIntervals) {
        qint64 differ = 0;
        for (qint64 c : sweep) {
            const Currency got = deduction(0, c, StudentLoanID, i.pays);
            const qint64 want = exactStudentLoan(c, i.thresholdCents);
            if (got != cents(want) && ++differ <= 5)
                ADD_FAILURE() << i.pays << " pays, earnings " << c
                              << " cents: " << got.toFixed4().toStdString() << " against " << want
                              << " cents";
        }
        std::cout << "student loan, " << i.pays << " pays: " << sweep.size() << " earnings, " << differ
                  << " differ" << std::endl;
        EXPECT_EQ(differ, 0);
    }
}

TEST_F(DeductionSweep, KiwiSaverEveryRateAndInterval) {
    const auto sweep = sweepCents();
    for (const Interval& i : kIntervals) {
        for (int rate : kKiwiSaverRates) {
            // 3.5% is the template's own rate: the line takes it from the name, as for most employees.
            const float specialRate = rate == 35 ? 0.0f : float(rate) / 10.0f;
            qint64 differ = 0;
            for (qint64 c : sweep) {
                const Currency got = deduction(specialRate, c, KiwiSaverID, i.pays);
                const qint64 want = exactKiwiSaver(c, rate);
                if (got != cents(want) && ++differ <= 5)
                    ADD_FAILURE() << "KiwiSaver " << rate / 10.0 << "%, " << i.pays << " pays, earnings " << c
                                  << " cents: " << got.toFixed4().toStdString() << " against " << want
                                  << " cents";
            }
            std::cout << "KiwiSaver " << rate / 10.0 << "%, " << i.pays << " pays: " << sweep.size()
                      << " earnings, " << differ << " differ" << std::endl;
            EXPECT_EQ(differ, 0);
        }
    }
}

// An employee's own rate of exactly 3.5 (a Single of 3.5, as the address book may store it) leaves the
// halves of the fifth decimal to the conversion to four decimals: a cent above the cut where that
// carries to a whole cent, and nowhere else.
TEST_F(DeductionSweep, AnOwnRateOfExactlyAHalfPerCent) {
    const auto sweep = sweepCents();
    qint64 differ = 0;
    for (qint64 c : sweep) {
        const Currency got = deduction(3.5f, c, KiwiSaverID, 52);
        const qint64 want = exactKiwiSaver(c, 35);
        if (got == cents(want)) continue;
        ++differ;
        // exact product in hundred-thousandths of a dollar: c x 35; a carried half sits 5 below a cent
        EXPECT_EQ(got, cents(want + 1)) << c;
        EXPECT_EQ((want + 1) * 1000 - c * 35, 5) << c;
    }
    std::cout << "KiwiSaver at an own rate of exactly 3.5%: " << sweep.size() << " earnings, " << differ
              << " a cent above the cut" << std::endl;
}

// The yearly threshold of the template lands on or a fraction of a cent below every published per-pay
// threshold, as a Single quotient taken to four decimals: no other figure near it does better at 12.
TEST_F(DeductionSweep, YearlyThresholdFitsEveryInterval) {
    const float yearly = ql::GetDeductLimit(StudentLoanID, 1);
    for (const Interval& i : kIntervals) {
        const Currency perPay = Currency::fromSingle(yearly / float(i.pays));
        EXPECT_LE(perPay, cents(i.thresholdCents)) << i.pays;
        EXPECT_GT(perPay, cents(i.thresholdCents) - Currency::fromRaw(100)) << i.pays;
    }
}
