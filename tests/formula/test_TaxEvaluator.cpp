#include "TestEnv.h"
#include "formula/TaxEvaluator.h"
#include <gtest/gtest.h>

using ql::TaxEvaluator;

namespace {

struct Outcome {
    double value;
    qint32 error;
    bool assigned;
};

Outcome run(const QString& text) {
    TaxEvaluator t;
    t.setExpression(text);
    const double v = t.Result();
    return {v, t.Error(), t.Assigned()};
}
Outcome run(const char* text) {
    return run(QString::fromUtf8(text));
}

#define EXPECT_CLEAN(text, expected)                                                                         \
    do {                                                                                                     \
        const Outcome o_ = run(text);                                                                        \
        EXPECT_EQ(o_.value, (expected)) << qPrintable(QString(text));                                        \
        EXPECT_EQ(o_.error, 0) << qPrintable(QString(text));                                                 \
        EXPECT_TRUE(o_.assigned) << qPrintable(QString(text));                                               \
    } while (0)

#define EXPECT_FAULT(text, code)                                                                             \
    do {                                                                                                     \
        const Outcome o_ = run(text);                                                                        \
        EXPECT_EQ(o_.error, (code)) << qPrintable(QString(text));                                            \
        EXPECT_FALSE(o_.assigned) << qPrintable(QString(text));                                              \
    } while (0)

TEST(TaxEvaluator, SetterNormalisesTheText) {
    TaxEvaluator t;
    t.setExpression(QStringLiteral(" salary( x * 2.5 ) "));
    EXPECT_EQ(t.Expression(), QStringLiteral("SALARY(X*2,5)"));
    EXPECT_FALSE(t.Assigned());
    EXPECT_EQ(t.Error(), 0);
}

TEST(TaxEvaluator, ResultIsEvaluatedAtEachRead) {
    TaxEvaluator t;
    t.setExpression(QStringLiteral("5/0"));
    EXPECT_EQ(t.Result(), 0.0);
    EXPECT_EQ(t.Error(), 16);
    EXPECT_FALSE(t.Assigned());
    t.setExpression(QStringLiteral("2+3"));
    EXPECT_EQ(t.Result(), 5.0);
    EXPECT_EQ(t.Error(), 0);
    EXPECT_TRUE(t.Assigned());
    EXPECT_EQ(t.Result(), 5.0);
}

TEST(TaxEvaluator, BlanksInsideNumbersDisappear) {
    EXPECT_CLEAN("1 2+1", 13.0);
}

TEST(TaxEvaluator, PointAndCommaAreTheSameMark) {
    EXPECT_CLEAN("2.5", 2.5);
    EXPECT_CLEAN("2,5", 2.5);
    const Outcome twoMarks = run("2.5,1");
    EXPECT_EQ(twoMarks.error, 4);
    EXPECT_EQ(twoMarks.value, 0.0);
}

TEST(TaxEvaluator, TheMarkDoesNotDependOnTheLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    EXPECT_CLEAN("2.5", 2.5);
    EXPECT_CLEAN("2,5", 2.5);
    EXPECT_CLEAN("1234,5*2", 2469.0);
    EXPECT_FAULT("2.5,1", 4);
}

TEST(TaxEvaluator, SubtractionRidesOnTheFirstFactor) {
    EXPECT_CLEAN("5-3*2", -1.0);
    EXPECT_CLEAN("10-2-3", 5.0);
    EXPECT_CLEAN("2*3+4*5", 26.0);
    EXPECT_CLEAN("8/2/2", 2.0);
    EXPECT_CLEAN("(1+2)*(3+4)", 21.0);
}

TEST(TaxEvaluator, PowerAndSign) {
    EXPECT_CLEAN("-2^2", -4.0);
    EXPECT_CLEAN("(-2)^2", 4.0);
    EXPECT_FAULT("2^3^2", 2);
    EXPECT_FAULT("2^-3", 2);
    EXPECT_CLEAN("2^(0-3)", 0.125);
    EXPECT_CLEAN("2^0,5*2^0,5", 2.0000000000000004);
}

TEST(TaxEvaluator, SignBehindAnOperatorIsMalformed) {
    EXPECT_FAULT("2*-3", 2);
    EXPECT_CLEAN("2*(0-3)", -6.0);
    EXPECT_FAULT("2+-3", 2);
    EXPECT_FAULT("2--3", 2);
}

TEST(TaxEvaluator, LeadingOperatorsWorkOnTheAccumulator) {
    EXPECT_CLEAN("*3", 0.0);
    EXPECT_CLEAN("/3", 0.0);
    EXPECT_CLEAN("+3", 3.0);
}

TEST(TaxEvaluator, ALeadingMarkIsNotANumber) {
    EXPECT_FAULT(".5", 2);
    EXPECT_CLEAN("0.5", 0.5);
}

TEST(TaxEvaluator, DivisionByZero) {
    const Outcome o = run("5/0");
    EXPECT_EQ(o.value, 0.0);
    EXPECT_EQ(o.error, 16);
    EXPECT_FALSE(o.assigned);
    const Outcome sum = run("1+5/0+2");
    EXPECT_EQ(sum.value, 1.0);
    EXPECT_EQ(sum.error, 16);
    const Outcome zeroOverZero = run("0/0");
    EXPECT_EQ(zeroOverZero.value, 0.0);
    EXPECT_EQ(zeroOverZero.error, 16);
}

TEST(TaxEvaluator, OverflowIsAnArithmeticFailure) {
    const Outcome product = run("1+10^200*10^200");
    EXPECT_EQ(product.error, 16);
    EXPECT_EQ(product.value, 1.0);
    EXPECT_FAULT("10^400", 16);
    EXPECT_FAULT("(0-8)^0,5", 16);
    EXPECT_FAULT("0^(0-1)", 16);
    // A number with more digits than a double holds.
    EXPECT_FAULT(QString(400, QLatin1Char('9')), 16);
    // A very small one is just small.
    EXPECT_CLEAN(QStringLiteral("0,") + QString(400, QLatin1Char('0')) + QStringLiteral("1"), 0.0);
}

TEST(TaxEvaluator, ParenthesesAndTheLastFaultWins) {
    EXPECT_CLEAN("ABS(0-2)^2", 4.0);
    const Outcome closing = run("3)");
    EXPECT_EQ(closing.value, 0.0);
    EXPECT_EQ(closing.error, 8);
    const Outcome open = run("(1+2");
    EXPECT_EQ(open.value, 0.0);
    EXPECT_EQ(open.error, 2);
    const Outcome openCall = run("ABS(3");
    EXPECT_EQ(openCall.value, 0.0);
    EXPECT_EQ(openCall.error, 4);
    EXPECT_FAULT("1+(2*3))", 8);
}

TEST(TaxEvaluator, FunctionNames) {
    const Outcome unknown = run("FOO(1)");
    EXPECT_EQ(unknown.error, 2);
    EXPECT_EQ(unknown.value, 0.0);
    EXPECT_CLEAN("abs(2)", 2.0);
    EXPECT_CLEAN("Abs(0-2)", 2.0);
    EXPECT_FAULT("ABS", 2); // a name without "("
}

TEST(TaxEvaluator, EmptyAndBlankTexts) {
    EXPECT_FAULT("", 2);
    EXPECT_FAULT("   ", 2);
    EXPECT_EQ(run("").value, 0.0);
}

TEST(TaxEvaluator, NestingIsBounded) {
    auto nested = [](int levels) {
        return QString(levels, QLatin1Char('(')) + QStringLiteral("1") + QString(levels, QLatin1Char(')'));
    };
    EXPECT_CLEAN(nested(TaxEvaluator::MaxNesting - 1), 1.0);
    EXPECT_FAULT(nested(TaxEvaluator::MaxNesting), 2);
    EXPECT_FAULT(nested(100000), 2);
    QString calls;
    for (int i = 0; i < 5000; ++i)
        calls += QStringLiteral("ABS(");
    calls += QStringLiteral("1") + QString(5000, QLatin1Char(')'));
    EXPECT_FAULT(calls, 2);
    // An unclosed run of parentheses is cut short by the first failure, whatever its length.
    EXPECT_FAULT(QString(100000, QLatin1Char('(')), 2);
}

TEST(TaxEvaluator, LongFlatTextsFinish) {
    QString sum = QStringLiteral("1");
    for (int i = 0; i < 20000; ++i)
        sum += QStringLiteral("+1");
    EXPECT_CLEAN(sum, 20001.0);
    QString product = QStringLiteral("1");
    for (int i = 0; i < 20000; ++i)
        product += QStringLiteral("*1");
    EXPECT_CLEAN(product, 1.0);
}

TEST(TaxEvaluator, ReplaceText) {
    TaxEvaluator t;
    EXPECT_EQ(t.ReplaceText(QStringLiteral("abc"), QStringLiteral("a"), QStringLiteral("a")), QString());
    EXPECT_EQ(t.ReplaceText(QStringLiteral("abc"), QString(), QStringLiteral("x")), QString());
    EXPECT_EQ(t.ReplaceText(QStringLiteral("a b  c "), QStringLiteral(" "), QString()),
              QStringLiteral("abc"));
    EXPECT_EQ(t.ReplaceText(QStringLiteral("1.2.3"), QStringLiteral("."), QStringLiteral(",")),
              QStringLiteral("1,2,3"));
    EXPECT_EQ(t.ReplaceText(QStringLiteral("xyz"), QStringLiteral("q"), QStringLiteral("r")),
              QStringLiteral("xyz"));
    // The search starts again at the first character, so a replacement can make a new occurrence.
    EXPECT_EQ(t.ReplaceText(QStringLiteral("aabb"), QStringLiteral("ab"), QString()), QString());
    EXPECT_EQ(t.ReplaceText(QStringLiteral("aaabbbc"), QStringLiteral("ab"), QStringLiteral("x")),
              QStringLiteral("aaxbbc"));
    EXPECT_EQ(t.ReplaceText(QStringLiteral("xaab"), QStringLiteral("ab"), QStringLiteral("b")),
              QStringLiteral("xb"));
    // A replacement that holds the text searched for replaces each first occurrence once.
    EXPECT_EQ(t.ReplaceText(QStringLiteral("aa"), QStringLiteral("a"), QStringLiteral("ab")),
              QStringLiteral("abab"));
}

TEST(TaxEvaluator, Truncate) {
    TaxEvaluator t;
    EXPECT_EQ(t.Truncate(12.34, 2), 12.34);
    EXPECT_EQ(t.Truncate(1234.567, 2), 1234.56);
    EXPECT_EQ(t.Truncate(1234.567, 0), 1234.0);
    EXPECT_EQ(t.Truncate(-1.234, 2), -1.24);
    EXPECT_EQ(t.Truncate(-12.34, 2), -12.34);
    // Under 1 the two texts differ (".29" against "0.29"), so the product just below 29 is floored.
    EXPECT_EQ(t.Truncate(0.29, 2), 0.28);
    // 1.15 shows two decimals, so the product just below 115 does not matter.
    EXPECT_EQ(t.Truncate(1.15, 2), 1.15);
    EXPECT_EQ(t.Truncate(1.1, 2), 1.1);
    EXPECT_EQ(t.Truncate(5.0, 0), 5.0);
    EXPECT_EQ(t.Truncate(-0.5, 0), -1.0);
}

TEST(TaxEvaluator, TruncateUnderAGermanLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    TaxEvaluator t;
    EXPECT_EQ(t.Truncate(12.34, 2), 12.34);
    EXPECT_EQ(t.Truncate(1.15, 2), 1.15);
    EXPECT_EQ(t.Truncate(0.29, 2), 0.28);
    EXPECT_EQ(t.Truncate(1234.567, 2), 1234.56);
}

} // namespace
