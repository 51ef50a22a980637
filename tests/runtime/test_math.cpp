// Int, Fix, Round and Currency arithmetic.
#include "runtime/MathFns.h"
#include "runtime/VbError.h"
#include "ErrorNumber.h"
#include <QVariant>
#include <gtest/gtest.h>

using namespace ql;
using qltest::errorNumber;

TEST(IntFix, KeepTheirType) {
    EXPECT_EQ(Int(-8.4), -9.0);
    EXPECT_EQ(Fix(-8.4), -8.0);
    EXPECT_EQ(Int(8.7), 8.0);
    EXPECT_EQ(Fix(8.7), 8.0);
    EXPECT_EQ(Int(7), 7);
    EXPECT_EQ(Fix(qint64(-7)), -7);
    EXPECT_EQ(Int(-8.4f), -9.0f);
    EXPECT_EQ(Fix(-8.4f), -8.0f);
    static_assert(std::is_same_v<decltype(Int(1.0f)), float>);
    static_assert(std::is_same_v<decltype(Fix(Currency())), Currency>);
    EXPECT_EQ(Int(Currency::fromRaw(-84000)).raw(), -90000);
    EXPECT_EQ(Fix(Currency::fromRaw(-84000)).raw(), -80000);
    EXPECT_EQ(Int(Currency::fromRaw(-80000)).raw(), -80000);
    EXPECT_EQ(Int(Currency::fromRaw(87000)).raw(), 80000);
    EXPECT_EQ(Fix(Currency::fromRaw(87000)).raw(), 80000);
}

TEST(RoundFn, HalfToEvenOnTheDoubleProduct) {
    EXPECT_EQ(Round(0.12345, 4), 0.1234);
    EXPECT_EQ(Round(0.12355, 4), 0.1236);
    EXPECT_EQ(Round(2.675, 2), 2.68);
    EXPECT_EQ(Round(0.5), 0.0);
    EXPECT_EQ(Round(1.5), 2.0);
    EXPECT_EQ(Round(2.5), 2.0);
    EXPECT_EQ(Round(-2.5), -2.0);
    EXPECT_EQ(Round(-2.6), -3.0);
    EXPECT_EQ(Round(1.005, 2), 1.0);
    EXPECT_EQ(Round(123.456, 1), 123.5);
    EXPECT_EQ(errorNumber([] { Round(1.0, -1); }), err::InvalidProcedureCall);
    EXPECT_EQ(roundHalfEven(0.5), 0.0);
    EXPECT_EQ(roundHalfEven(1.5), 2.0);
    EXPECT_EQ(roundHalfEven(-1.5), -2.0);
}

TEST(CurrencyArithmetic, ExactAndChecked) {
    const Currency a = Currency::fromRaw(12345);  // 1.2345
    const Currency b = Currency::fromRaw(-20000); // -2
    EXPECT_EQ((a + b).raw(), -7655);
    EXPECT_EQ((a - b).raw(), 32345);
    EXPECT_EQ((a * b).raw(), -24690);
    EXPECT_EQ((a * 3).raw(), 37035);
    // 1.2345 x 1.2345 = 1.52399025: half to even at four decimals.
    EXPECT_EQ((a * a).raw(), 15240);
    EXPECT_EQ((Currency::fromRaw(1250) * Currency::fromRaw(2500)).raw(), 312); // 0.03125 -> 0.0312
    Currency c = a;
    c += a;
    EXPECT_EQ(c.raw(), 24690);
    c -= b;
    EXPECT_EQ(c.raw(), 44690);
    EXPECT_LT(b, a);
    EXPECT_EQ(errorNumber([] { Currency::fromRaw(INT64_MAX) * 2; }), err::Overflow);
    EXPECT_EQ(errorNumber([] { Currency::fromRaw(INT64_MIN) - Currency::fromRaw(1); }), err::Overflow);
    EXPECT_EQ((Currency::fromRaw(-1) - Currency::fromRaw(INT64_MIN)).raw(), INT64_MAX);
    EXPECT_EQ(errorNumber([] { Currency::fromLong(900000000000000LL) * Currency::fromLong(2); }), err::Overflow);
}

TEST(CurrencyVariant, PlainReadsOfTheAmount) {
    const QVariant v = QVariant::fromValue(Currency::fromRaw(12345));
    EXPECT_EQ(v.toDouble(), 1.2345);
    EXPECT_EQ(v.toString(), QStringLiteral("1.2345"));
    EXPECT_EQ(v.value<Currency>().raw(), 12345);
    EXPECT_EQ(v, QVariant::fromValue(Currency::fromRaw(12345)));
    EXPECT_NE(v, QVariant::fromValue(Currency::fromRaw(12346)));
}
