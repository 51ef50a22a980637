#include "TestEnv.h"
#include "formula/fhCEval.h"
#include "formula/fhCStack.h"
#include "runtime/VbError.h"
#include <gtest/gtest.h>

using ql::fhCEval;

namespace {

struct Raised {
    bool any = false;
    long number = 0;
    QString description;
};

template <class F> Raised raisedBy(F body) {
    Raised r;
    try {
        body();
    } catch (const ql::VbError& e) {
        r.any = true;
        r.number = e.number();
        r.description = e.description();
    }
    return r;
}

double evaluate(const char* text) {
    return fhCEval().Evaluate(QString::fromUtf8(text));
}
double doEvaluate(const char* text) {
    return fhCEval().DoEvaluate(QString::fromUtf8(text));
}

// The description that Evaluate raises for a text, with its number checked.
QString syntaxError(const char* text) {
    const Raised r = raisedBy([&] { evaluate(text); });
    EXPECT_TRUE(r.any) << text;
    EXPECT_EQ(r.number, ql::err::EvalFault) << text;
    return r.description;
}

TEST(fhCEval, EmptyAndBlankTextsGiveZero) {
    EXPECT_EQ(evaluate(""), 0.0);
    EXPECT_EQ(evaluate("   "), 0.0);
    EXPECT_EQ(evaluate("\t \n"), 0.0);
}

TEST(fhCEval, ArithmeticAndPrecedence) {
    EXPECT_EQ(evaluate("1+2*3"), 7.0);
    EXPECT_EQ(evaluate("(1+2)*3"), 9.0);
    EXPECT_EQ(evaluate("10-4-3"), 3.0);
    EXPECT_EQ(evaluate("100/10/5"), 2.0);
    EXPECT_EQ(evaluate(" 2 * ( 3 + 4 ) "), 14.0);
    EXPECT_EQ(evaluate("((2))"), 2.0);
    EXPECT_EQ(evaluate("2^10"), 1024.0);
    EXPECT_EQ(evaluate("1.5*2"), 3.0);
}

TEST(fhCEval, SignBindsTighterThanPower) {
    EXPECT_EQ(evaluate("-2^2"), 4.0);
}

TEST(fhCEval, PowerIsLeftAssociative) {
    EXPECT_EQ(evaluate("2^3^2"), 64.0);
}

TEST(fhCEval, SignsBehindOperators) {
    EXPECT_EQ(evaluate("2*-3"), -6.0);
    EXPECT_EQ(evaluate("2--3"), 5.0);
    EXPECT_EQ(evaluate("+5"), 5.0);
    EXPECT_EQ(evaluate("-(2+3)"), -5.0);
    EXPECT_EQ(evaluate("2*(-3)"), -6.0);
    EXPECT_EQ(evaluate("2-+3"), -1.0);
    EXPECT_EQ(syntaxError("--3"), QStringLiteral("Operand expected : Column 2"));
    EXPECT_EQ(syntaxError("2*+-3"), QStringLiteral("Operand expected : Column 4"));
}

TEST(fhCEval, DivisionByZeroGivesZero) {
    EXPECT_EQ(evaluate("5/0"), 0.0);
    EXPECT_EQ(evaluate("5/(3-3)"), 0.0);
    EXPECT_EQ(evaluate("0/0"), 0.0);
    EXPECT_EQ(evaluate("1+5/0"), 1.0);
}

TEST(fhCEval, ParenthesisFaults) {
    EXPECT_EQ(syntaxError("()"), QStringLiteral("Operand expected : Column 2"));
    EXPECT_EQ(syntaxError("("), QStringLiteral("Closing parenthesis expected : Column 2"));
    EXPECT_EQ(syntaxError("2+"), QStringLiteral("Operand expected : Column 3"));
    EXPECT_EQ(syntaxError("1+2)"),
              QStringLiteral("Closing parenthesis without matching open parenthesis : Column 4"));
    EXPECT_EQ(syntaxError("(1+2"), QStringLiteral("Closing parenthesis expected : Column 5"));
    EXPECT_EQ(syntaxError(")"), QStringLiteral("Operand expected : Column 1"));
    EXPECT_EQ(syntaxError("(+)"), QStringLiteral("Operand expected : Column 3"));
}

TEST(fhCEval, OperatorAndOperandFaults) {
    EXPECT_EQ(syntaxError("1 2"), QStringLiteral("Operator expected : Column 3"));
    EXPECT_EQ(syntaxError("2(3)"), QStringLiteral("Operator expected : Column 2"));
    EXPECT_EQ(syntaxError("(1)2"), QStringLiteral("Operator expected : Column 4"));
    EXPECT_EQ(syntaxError("*2"), QStringLiteral("Operand expected : Column 1"));
    EXPECT_EQ(syntaxError("2*/3"), QStringLiteral("Operand expected : Column 3"));
    EXPECT_EQ(syntaxError("2-"), QStringLiteral("Operand expected : Column 3"));
    EXPECT_EQ(syntaxError("-"), QStringLiteral("Operand expected : Column 2"));
}

TEST(fhCEval, DecimalPointFaults) {
    EXPECT_EQ(syntaxError("1.5.2"), QStringLiteral("Operand contains multiple decimal points : Column 4"));
    EXPECT_EQ(syntaxError("1,5.2"), QStringLiteral("Operand contains multiple decimal points : Column 4"));
    EXPECT_EQ(syntaxError("."), QStringLiteral("Invalid operand : Column 1"));
    EXPECT_EQ(syntaxError("2+,"), QStringLiteral("Invalid operand : Column 3"));
    EXPECT_EQ(syntaxError("abc"), QStringLiteral("Unexpected character encountered : Column 1"));
    EXPECT_EQ(syntaxError("1+x"), QStringLiteral("Unexpected character encountered : Column 3"));
    EXPECT_EQ(syntaxError("1 + 2 $"), QStringLiteral("Unexpected character encountered : Column 7"));
}

TEST(fhCEval, LowerIIsABinaryOperatorThatTakesOneOperand) {
    EXPECT_EQ(evaluate("3i4"), 4.0);
    EXPECT_EQ(evaluate("3i4.7"), 4.0);
    EXPECT_EQ(evaluate("1+2i2.5"), 4.0); // "1 2 2.5 i + ": the floor of 2.5 is added to 2; 1 is left over
    EXPECT_EQ(syntaxError("i3"), QStringLiteral("Operand expected : Column 1"));
    EXPECT_EQ(syntaxError("3I4"), QStringLiteral("Unexpected character encountered : Column 2"));
}

TEST(fhCEval, DoEvaluateTokens) {
    EXPECT_EQ(doEvaluate("2 3 + "), 5.0);
    EXPECT_EQ(doEvaluate("7 2 - "), 5.0);
    EXPECT_EQ(doEvaluate("7 2 / "), 3.5);
    EXPECT_EQ(doEvaluate("2 10 ^ "), 1024.0);
    EXPECT_EQ(doEvaluate("4 (-) "), -4.0);
    EXPECT_EQ(doEvaluate("-2.5 i "), -3.0);
    EXPECT_EQ(doEvaluate("-2.5 I "), -3.0);
    EXPECT_EQ(doEvaluate("2.5 I "), 2.0);
    EXPECT_EQ(doEvaluate("5 0 / "), 0.0);
}

TEST(fhCEval, DoEvaluateSurplusAndMissing) {
    EXPECT_EQ(doEvaluate("2 3 "), 3.0);
    EXPECT_EQ(doEvaluate(""), 0.0);
    EXPECT_EQ(doEvaluate("5"), 0.0);       // text behind the last blank is ignored
    EXPECT_EQ(doEvaluate("2 3 + 4"), 5.0); // "4" has no blank behind it
    const Raised pop = raisedBy([] { doEvaluate("+ "); });
    EXPECT_TRUE(pop.any);
    EXPECT_EQ(pop.number, ql::err::EvalFault);
    EXPECT_EQ(pop.description, QStringLiteral("Pop method invoked on empty stack"));
    EXPECT_EQ(raisedBy([] { doEvaluate("2 * "); }).description,
              QStringLiteral("Pop method invoked on empty stack"));
    EXPECT_EQ(raisedBy([] { doEvaluate("(-) "); }).description,
              QStringLiteral("Pop method invoked on empty stack"));
}

TEST(fhCEval, DoEvaluateBadTokens) {
    const Raised twoBlanks = raisedBy([] { doEvaluate("2  3 "); });
    EXPECT_TRUE(twoBlanks.any);
    EXPECT_EQ(twoBlanks.number, ql::err::EvalBadToken);
    EXPECT_EQ(twoBlanks.description, QStringLiteral("Bad token in Evaluate: "));
    const Raised word = raisedBy([] { doEvaluate("2 x + "); });
    EXPECT_EQ(word.number, ql::err::EvalBadToken);
    EXPECT_EQ(word.description, QStringLiteral("Bad token in Evaluate: x"));
    EXPECT_EQ(raisedBy([] { doEvaluate(" "); }).description, QStringLiteral("Bad token in Evaluate: "));
    // Beyond a double: not a number, so not a number token either.
    EXPECT_EQ(raisedBy([] { doEvaluate("1E3999999999999999999999 "); }).number, ql::err::EvalBadToken);
    EXPECT_EQ(doEvaluate("1E-3999999999999999999999 "), 0.0);
}

TEST(fhCEval, NegativeNumberIsANumberToken) {
    EXPECT_EQ(doEvaluate("-12.5 2 * "), -25.0);
    EXPECT_EQ(doEvaluate("12.5- 2 * "), -25.0); // a trailing sign is numeric too
}

TEST(fhCEval, NumberTokensFollowTheLocale) {
    // English (New Zealand): "," groups digits, so "2,5" is twenty-five.
    EXPECT_EQ(doEvaluate("2.5 2 * "), 5.0);
    EXPECT_EQ(doEvaluate("2,5 2 * "), 50.0);
    EXPECT_EQ(evaluate("1,5*2"), 30.0); // the scanner keeps the comma as written
    EXPECT_EQ(doEvaluate("1,000.5 "), 1000.5);
    {
        qltest::LocaleGuard german(qltest::germanLocale());
        EXPECT_EQ(doEvaluate("2,5 2 * "), 5.0);
        EXPECT_EQ(doEvaluate("2.5 2 * "), 50.0);
        EXPECT_EQ(evaluate("1,5*2"), 3.0);
        EXPECT_EQ(doEvaluate("-12,5 2 * "), -25.0);
        EXPECT_EQ(raisedBy([] { doEvaluate("1,5,5 "); }).number, ql::err::EvalBadToken);
    }
    EXPECT_EQ(doEvaluate("2,5 "), 25.0);
}

TEST(fhCEval, DoubleFailuresAreRuntimeErrors) {
    EXPECT_EQ(raisedBy([] { doEvaluate("1E300 1E300 * "); }).number, ql::err::Overflow);
    EXPECT_EQ(raisedBy([] { evaluate("10^400"); }).number, ql::err::Overflow);
    EXPECT_EQ(raisedBy([] { doEvaluate("-8 0.5 ^ "); }).number, ql::err::InvalidProcedureCall);
    EXPECT_EQ(raisedBy([] { evaluate("0^-1"); }).number, ql::err::DivisionByZero);
}

TEST(fhCEval, SixteenBitPositionsOverflow) {
    // Blanks are skipped, but the column still counts past 32767.
    const QString blanks(40000, QLatin1Char(' '));
    EXPECT_EQ(raisedBy([&] { fhCEval().Evaluate(blanks); }).number, ql::err::Overflow);
    const QString nearLimit(32766, QLatin1Char(' '));
    EXPECT_EQ(fhCEval().Evaluate(nearLimit), 0.0);
    QString many;
    for (int i = 0; i < 20000; ++i)
        many += QStringLiteral("1 ");
    EXPECT_EQ(raisedBy([&] { fhCEval().DoEvaluate(many); }).number, ql::err::Overflow);
}

TEST(fhCEval, ErrorsLeaveTheObjectUsable) {
    fhCEval e;
    EXPECT_TRUE(raisedBy([&] { e.Evaluate(QStringLiteral("(")); }).any);
    EXPECT_EQ(e.Evaluate(QStringLiteral("1+1")), 2.0);
    EXPECT_EQ(raisedBy([&] { e.Evaluate(QStringLiteral("2+")); }).description,
              QStringLiteral("Operand expected : Column 3"));
}

} // namespace
