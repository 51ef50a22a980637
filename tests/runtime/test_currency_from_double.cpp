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
    // Near the bound of whole products (2^40 ten-thousandths) the shortcut and the long way agree.
    for (const double d : {109951162.7775, 109951162.7776, 109951162.7777, -109951162.7776, 109951162.77765})
        EXPECT_EQ(ql::Currency::fromDouble(d).raw(), reference(d)) << d;
}

TEST(CurrencyFromDouble, AsTheFloatingPointUnitRoundsAtRandom) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    for (int i = 0; i < 200000; ++i) {
        double d = 0;
        // Whole ten-thousandths on both sides of 2^40 (the bound of the shortcut for them), and one
        // step of a double away from them.
        const double whole = double(qint64(random.generate64() % (qint64(1) << 42)) - (qint64(1) << 41)) / 10000.0;
        switch (i % 7) {
        case 0: d = (random.generateDouble() - 0.5) * 2e6; break;          // any amount
        // The 64-bit bounds: the span of two billion either side does not fit the int overload.
        case 1: d = double(random.bounded(qint64(-2000000000), qint64(2000000000))) / 100000.0; break; // five decimals
        case 2: d = (double(random.bounded(-1000000, 1000000)) + 0.5) / 10000.0; break; // near a tie
        case 3: d = (random.generateDouble() - 0.5) * 1e14; break;         // large
        case 4: d = double(random.bounded(-100000000, 100000000)) / 10000.0; break; // amounts as stored
        case 5: d = whole; break;
        default: d = std::nextafter(whole, random.bounded(2) ? 1e300 : -1e300); break;
        }
        ASSERT_EQ(ql::Currency::fromDouble(d).raw(), reference(d)) << d << " seed " << seed;
    }
}

} // namespace
