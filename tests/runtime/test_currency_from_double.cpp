// A double becomes Currency by rounding its extended-precision product with 10,000 to the nearest,
// ties to even: the same answer as the floating-point unit's own rounding, on ties and at random.
#include "runtime/Currency.h"
#include <QRandomGenerator>
#include <cmath>
#include <gtest/gtest.h>
#include <iostream>

namespace {

std::int64_t reference(double d) {
    return static_cast<std::int64_t>(std::nearbyintl(static_cast<long double>(d) * 10000.0L));
}

TEST(CurrencyFromDouble, TiesGoToEven) {
    EXPECT_EQ(ql::Currency::fromDouble(0.00005).raw(), reference(0.00005));
    EXPECT_EQ(ql::Currency::fromDouble(0.00015).raw(), reference(0.00015));
    EXPECT_EQ(ql::Currency::fromDouble(1.23445).raw(), 12345); // the product in extended precision
    // Products that are exact ties in extended precision.
    for (const double d : {0.00005, 0.00015, 0.00025, 0.00035, -0.00025, -0.00035, 0.12345, 1.00005})
        EXPECT_EQ(ql::Currency::fromDouble(d).raw(), reference(d)) << d;
    // 1/32 and 3/32 are 312.5 and 937.5 ten-thousandths exactly: true ties.
    EXPECT_EQ(ql::Currency::fromDouble(0.03125).raw(), 312);
    EXPECT_EQ(ql::Currency::fromDouble(0.09375).raw(), 938);
    EXPECT_EQ(ql::Currency::fromDouble(-0.03125).raw(), -312);
    EXPECT_EQ(ql::Currency::fromDouble(-0.09375).raw(), -938);
    EXPECT_EQ(ql::Currency::fromDouble(-0.00004).raw(), 0);
    EXPECT_EQ(ql::Currency::fromDouble(922337203685477.0).raw(), 9223372036854770000LL);
}

TEST(CurrencyFromDouble, AsTheFloatingPointUnitRoundsAtRandom) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    for (int i = 0; i < 200000; ++i) {
        double d = 0;
        switch (i % 4) {
        case 0: d = (random.generateDouble() - 0.5) * 2e6; break;          // any amount
        case 1: d = double(random.bounded(-2000000000, 2000000000)) / 100000.0; break; // five decimals
        case 2: d = (double(random.bounded(-1000000, 1000000)) + 0.5) / 10000.0; break; // near a tie
        default: d = (random.generateDouble() - 0.5) * 1e14; break;        // large
        }
        ASSERT_EQ(ql::Currency::fromDouble(d).raw(), reference(d)) << d << " seed " << seed;
    }
}

} // namespace
