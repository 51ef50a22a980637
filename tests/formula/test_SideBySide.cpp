// The two evaluators on the same texts: where they differ on purpose.
#include "TestEnv.h"
#include "formula/TaxEvaluator.h"
#include "formula/fhCEval.h"
#include "formula/fhCStack.h"
#include "runtime/VbError.h"
#include <gtest/gtest.h>

namespace {

struct Tax {
    double value;
    qint32 error;
};
Tax tax(const char* text) {
    ql::TaxEvaluator t;
    t.setExpression(QString::fromUtf8(text));
    const double v = t.Result();
    return {v, t.Error()};
}
double infix(const char* text) {
    return ql::fhCEval().Evaluate(QString::fromUtf8(text));
}

TEST(SideBySide, SignAndPower) {
    EXPECT_EQ(infix("-2^2"), 4.0);
    EXPECT_EQ(tax("-2^2").value, -4.0);
    EXPECT_EQ(tax("-2^2").error, 0);
}

TEST(SideBySide, RepeatedPower) {
    EXPECT_EQ(infix("2^3^2"), 64.0);
    EXPECT_EQ(tax("2^3^2").error, 2);
}

TEST(SideBySide, SignBehindOperator) {
    EXPECT_EQ(infix("2*-3"), -6.0);
    EXPECT_EQ(tax("2*-3").error, 2);
}

TEST(SideBySide, DivisionByZero) {
    EXPECT_EQ(infix("5/0"), 0.0);
    EXPECT_EQ(ql::fhCEval().DoEvaluate(QStringLiteral("5 0 / ")), 0.0);
    const Tax t = tax("5/0");
    EXPECT_EQ(t.value, 0.0);
    EXPECT_EQ(t.error, 16);
    EXPECT_EQ(tax("7+5/0").value, 7.0);
}

TEST(SideBySide, FaultsRaisedAgainstStored) {
    bool raised = false;
    try {
        infix("(1+2");
    } catch (const ql::VbError& e) {
        raised = true;
        EXPECT_EQ(e.number(), ql::err::EvalFault);
    }
    EXPECT_TRUE(raised);
    EXPECT_EQ(tax("(1+2").error, 2); // stored, never raised
}

TEST(SideBySide, DecimalMark) {
    // fhCEval reads numbers with the locale's marks, TaxEvaluator takes "." or "," anywhere.
    EXPECT_EQ(ql::fhCEval().DoEvaluate(QStringLiteral("2.5 ")), 2.5);
    EXPECT_EQ(ql::fhCEval().DoEvaluate(QStringLiteral("2,5 ")), 25.0);
    EXPECT_EQ(tax("2,5").value, 2.5);
    EXPECT_EQ(tax("2.5").value, 2.5);
    qltest::LocaleGuard german(qltest::germanLocale());
    EXPECT_EQ(ql::fhCEval().DoEvaluate(QStringLiteral("2,5 ")), 2.5);
    EXPECT_EQ(ql::fhCEval().DoEvaluate(QStringLiteral("2.5 ")), 25.0);
    EXPECT_EQ(tax("2,5").value, 2.5);
    EXPECT_EQ(tax("2.5").value, 2.5);
}

TEST(SideBySide, Blanks) {
    // Blanks end a token for fhCEval, TaxEvaluator removes them first.
    bool raised = false;
    try {
        infix("1 2+1");
    } catch (const ql::VbError& e) {
        raised = true;
        EXPECT_EQ(e.description(), QStringLiteral("Operator expected : Column 3"));
    }
    EXPECT_TRUE(raised);
    EXPECT_EQ(tax("1 2+1").value, 13.0);
}

TEST(SideBySide, Functions) {
    EXPECT_EQ(tax("ABS(0-2)").value, 2.0);
    EXPECT_THROW(infix("ABS(0-2)"), ql::VbError);
    EXPECT_EQ(infix("7.5i2.5"), 2.0); // fhCEval's one function, the floor
}

} // namespace
