#include "TestEnv.h"
#include "formula/TaxEvaluator.h"
#include "runtime/DateFns.h"
#include <cmath>
#include <gtest/gtest.h>

using ql::TaxEvaluator;

namespace {

struct Outcome {
    double value;
    qint32 error;
};

Outcome run(const char* text) {
    TaxEvaluator t;
    t.setExpression(QString::fromUtf8(text));
    const double v = t.Result();
    return {v, t.Error()};
}

double clean(const char* text) {
    const Outcome o = run(text);
    EXPECT_EQ(o.error, 0) << text;
    return o.value;
}

void expectFault16(const char* text) {
    const Outcome o = run(text);
    EXPECT_EQ(o.error, 16) << text;
    EXPECT_EQ(o.value, 0.0) << text;
}

const double q = 2.0 * std::atan(1.0);

TEST(TaxFunctions, PlainFunctions) {
    EXPECT_EQ(clean("ABS(0-3)"), 3.0);
    EXPECT_EQ(clean("ATN(1)"), std::atan(1.0));
    EXPECT_EQ(clean("COS(0)"), 1.0);
    EXPECT_EQ(clean("SIN(0)"), 0.0);
    EXPECT_EQ(clean("TAN(1)"), std::tan(1.0));
    EXPECT_EQ(clean("EXP(1)"), std::exp(1.0));
    EXPECT_EQ(clean("FIX(0-2.5)"), -2.0);
    EXPECT_EQ(clean("INT(0-2.5)"), -3.0);
    EXPECT_EQ(clean("INT(2.5)"), 2.0);
    EXPECT_EQ(clean("LOG(1)"), 0.0);
    EXPECT_EQ(clean("SGN(0-5)"), -1.0);
    EXPECT_EQ(clean("SGN(0)"), 0.0);
    EXPECT_EQ(clean("SGN(7)"), 1.0);
    EXPECT_EQ(clean("SQR(16)"), 4.0);
    EXPECT_EQ(clean("ZERO(5)"), 0.0);
    EXPECT_EQ(clean("2*ABS(0-3)+1"), 7.0);
    EXPECT_EQ(clean("-SQR(4)"), -2.0);
}

TEST(TaxFunctions, TruncatingFunctions) {
    EXPECT_EQ(clean("PAYE(1234.567)"), 1234.56);
    EXPECT_EQ(clean("METAXCODE(1234.567)"), 1234.56);
    EXPECT_EQ(clean("MLTAXCODE(1234.567)"), 1234.56);
    EXPECT_EQ(clean("PAYE(12.34)"), 12.34);
    EXPECT_EQ(clean("PAYE(0-1.234)"), -1.24);
    EXPECT_EQ(clean("SALARY(1234.567)"), 1234.0);
    EXPECT_EQ(clean("SALARY(52000/52)"), 1000.0);
}

TEST(TaxFunctions, RoundUsesTheFixedFormat) {
    EXPECT_EQ(clean("ROUND(2.675)"), 2.68);
    EXPECT_EQ(clean("ROUND(1.005)"), 1.01);
    EXPECT_EQ(clean("ROUND(0.125)"), 0.13);
    EXPECT_EQ(clean("ROUND(0-0.125)"), -0.13);
    EXPECT_EQ(clean("ROUND(1234.5)"), 1234.5);
    qltest::LocaleGuard german(qltest::germanLocale());
    EXPECT_EQ(clean("ROUND(2.675)"), 2.68);
    EXPECT_EQ(clean("ROUND(1234,567)"), 1234.57);
}

TEST(TaxFunctions, ReciprocalAndInverseTrigonometry) {
    EXPECT_EQ(clean("SEC(0)"), 1.0);
    EXPECT_EQ(clean("COSEC(1)"), 1.0 / std::sin(1.0));
    EXPECT_EQ(clean("COTAN(1)"), 1.0 / std::tan(1.0));
    EXPECT_NEAR(clean("ARCSIN(0.5)"), std::asin(0.5), 1e-15);
    EXPECT_NEAR(clean("ARCCOS(0.5)"), std::acos(0.5), 1e-15);
    EXPECT_EQ(clean("ARCCOS(0)"), q);
    // These two are the stated formulas, not the textbook inverses.
    EXPECT_EQ(clean("ARCSEC(2)"), std::atan(2.0 / std::sqrt(3.0)) + q);
    EXPECT_EQ(clean("ARCSEC(0-2)"), std::atan(-2.0 / std::sqrt(3.0)) - q);
    EXPECT_EQ(clean("ARCCOSEC(2)"), std::atan(2.0 / std::sqrt(3.0)));
    EXPECT_EQ(clean("ARCCOSEC(0-2)"), std::atan(-2.0 / std::sqrt(3.0)) - 2 * q);
    EXPECT_EQ(clean("ARCCOTAN(1)"), std::atan(1.0) + q);
}

TEST(TaxFunctions, Hyperbolic) {
    EXPECT_NEAR(clean("HSIN(1)"), std::sinh(1.0), 1e-15);
    EXPECT_NEAR(clean("HCOS(1)"), std::cosh(1.0), 1e-15);
    EXPECT_NEAR(clean("HTAN(1)"), std::tanh(1.0), 1e-15);
    EXPECT_NEAR(clean("HSEC(1)"), 1.0 / std::cosh(1.0), 1e-15);
    EXPECT_NEAR(clean("HCOSEC(1)"), 1.0 / std::sinh(1.0), 1e-15);
    EXPECT_NEAR(clean("HCOTAN(1)"), 1.0 / std::tanh(1.0), 1e-15);
    EXPECT_NEAR(clean("HARCSIN(1)"), std::asinh(1.0), 1e-15);
    EXPECT_NEAR(clean("HARCCOS(2)"), std::acosh(2.0), 1e-15);
    EXPECT_NEAR(clean("HARCTAN(0.5)"), std::atanh(0.5), 1e-15);
    EXPECT_NEAR(clean("HARCSEC(0.5)"), std::acosh(2.0), 1e-15);
    EXPECT_NEAR(clean("HARCCOSEC(2)"), std::asinh(0.5), 1e-15);
    EXPECT_NEAR(clean("HARCCOTAN(2)"), std::atanh(0.5), 1e-15);
}

TEST(TaxFunctions, ArithmeticFailuresAreFault16) {
    expectFault16("ARCSIN(1)");
    expectFault16("ARCCOS(1)");
    expectFault16("ARCSEC(0.5)");
    expectFault16("LOG(0)");
    expectFault16("LOG(0-1)");
    expectFault16("SQR(0-1)");
    expectFault16("COSEC(0)");
    expectFault16("COTAN(0)");
    expectFault16("EXP(1000)");
    expectFault16("HSEC(1000)"); // exp overflows on the way, though the quotient would be tiny
    expectFault16("HARCTAN(1)");
    expectFault16("HARCCOS(0.5)");
    expectFault16("HARCSEC(0)");
    expectFault16("HCOSEC(0)");
    expectFault16("PAYE(10^307)");
    // A fault inside the argument stays, the function still runs on the 0 it got.
    expectFault16("ABS(1/0)");
}

TEST(TaxFunctions, ConstantsAreTheStoredFigures) {
    EXPECT_EQ(clean("PI(0)"), 3.14159265358979);
    EXPECT_NE(clean("PI(0)"), M_PI);
    EXPECT_EQ(clean("E(1)"), 2.71828182845905);
    EXPECT_NE(clean("E(1)"), M_E);
    EXPECT_EQ(clean("2*PI(0)"), 2 * 3.14159265358979);
    // The constants need an argument: the value is right but the text counts as malformed.
    const Outcome empty = run("PI()");
    EXPECT_EQ(empty.value, 3.14159265358979);
    EXPECT_EQ(empty.error, 2);
}

TEST(TaxFunctions, AFunctionFollowedByTextIsABadOperator) {
    EXPECT_EQ(run("ABS(2)3").error, 4);
    EXPECT_EQ(run("ABS(2)ABS(3)").error, 4);
    EXPECT_EQ(clean("ABS(2)^ABS(3)"), 8.0);
}

TEST(TaxFunctions, RandomSequence) {
    const double restarted = clean("RND(-1)");
    EXPECT_EQ(restarted, 0.2240070104598999);
    EXPECT_EQ(clean("RND(0)"), restarted); // repeats the last
    EXPECT_EQ(clean("RND(1)"), 0.035845816135406494);
    EXPECT_EQ(clean("RND(0-1)"), restarted); // the same seed restarts the same sequence
    for (int i = 0; i < 200; ++i) {
        const double r = clean("RND(1)");
        EXPECT_GE(r, 0.0);
        EXPECT_LT(r, 1.0);
    }
    expectFault16("RND(10^300)"); // beyond a Single
}

class TaxClockTest : public ::testing::Test {
protected:
    void SetUp() override {
        // Tuesday 5 March 2024, 13:45:30.250
        ql::setClockForTesting([] { return QDateTime(QDate(2024, 3, 5), QTime(13, 45, 30, 250)); });
    }
    void TearDown() override { ql::setClockForTesting({}); }
};

TEST_F(TaxClockTest, DateAndTimeFunctionsIgnoreTheirArgument) {
    EXPECT_EQ(clean("YEAR(0)"), 2024.0);
    EXPECT_EQ(clean("MONTH(99)"), 3.0);
    EXPECT_EQ(clean("DAY(0)"), 5.0);
    EXPECT_EQ(clean("WEEKDAY(0)"), 3.0);
    EXPECT_EQ(clean("HOUR(0)"), 13.0);
    EXPECT_EQ(clean("MINUTE(0)"), 45.0);
    EXPECT_EQ(clean("SECOND(0)"), 30.0);
    EXPECT_EQ(clean("TIMER(0)"), 49530.25);
}

TEST_F(TaxClockTest, WeekdayCountsFromSunday) {
    ql::setClockForTesting([] { return QDateTime(QDate(2024, 3, 3), QTime(0, 0)); });
    EXPECT_EQ(clean("WEEKDAY(0)"), 1.0);
    ql::setClockForTesting([] { return QDateTime(QDate(2024, 3, 9), QTime(0, 0)); });
    EXPECT_EQ(clean("WEEKDAY(0)"), 7.0);
}

} // namespace
