// The country gate on rows written by the test: substitution, the cases without a formula, faults.
#include "EquationTest.h"
#include "frame/SettingGetters.h"
#include "payengine/CountryEquations.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <QFile>

using namespace eqtest;
using ql::CalcPercentOf;
using ql::CountrySpecificEquation;
using ql::Currency;

namespace {

class CountryEquation : public EquationTest {
protected:
    void SetUp() override {
        EquationTest::SetUp();
        createEmptyModules();
    }
};

} // namespace

TEST_F(CountryEquation, NoRowGivesTheAmountRounded) {
    EXPECT_EQ(CountrySpecificEquation(cur("1000"), 52, 1, Currency()), cur("1000"));
    EXPECT_EQ(CountrySpecificEquation(cur("12.3456"), 52, 2, Currency()), cur("12.35"));
    // exact halves to the even cent
    EXPECT_EQ(CountrySpecificEquation(cur("0.125"), 12, 3, Currency()), cur("0.12"));
    EXPECT_EQ(CountrySpecificEquation(cur("0.375"), 0, 3, Currency()), cur("0.38"));
    EXPECT_EQ(CountrySpecificEquation(cur("-0.125"), 26, 3, Currency()), cur("-0.12"));
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, NoRowForThisCountryIsNoRow) {
    setEquation(1, 61, QStringLiteral("d p *"));
    EXPECT_EQ(CountrySpecificEquation(cur("100"), 52, 1, Currency()), cur("100"));
}

TEST_F(CountryEquation, PaysPerYearZeroIsOne) {
    setEquation(1, 64, QStringLiteral("SALARY(x*p)"));
    EXPECT_EQ(
        ql::CountryEquationExpression(QStringLiteral("SALARY(x*p)"), 64, cur("123.45"), 1.0f, Currency()),
        QStringLiteral("SALARY(123.45*1)"));
    EXPECT_EQ(CountrySpecificEquation(cur("123.45"), 0, 1, Currency()), cur("123"));
    EXPECT_EQ(CountrySpecificEquation(cur("123.45"), 52, 1, Currency()), cur("6419"));
}

TEST_F(CountryEquation, NegativePaysPerYearIsUsedAsItStands) {
    setEquation(1, 64, QStringLiteral("SALARY(x*(p))"));
    EXPECT_EQ(CountrySpecificEquation(cur("10"), -2, 1, Currency()), cur("-20"));
}

TEST_F(CountryEquation, RowWithoutAnyNameGivesAmountTimesPays) {
    setEquation(1, 64, QStringLiteral("x*p/2+1000"));
    EXPECT_EQ(CountrySpecificEquation(cur("100.005"), 52, 1, Currency()), cur("5200.26"));
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("x*p/2"), 64, cur("1"), 52, Currency()),
              QString());
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, EmptyEquationGivesAmountTimesPays) {
    setEquation(2, 64, QString(""));
    EXPECT_EQ(CountrySpecificEquation(cur("10.50"), 26, 2, Currency()), cur("273"));
    setEquation(2, 61, QString(""));
    setCountry(61);
    EXPECT_EQ(CountrySpecificEquation(cur("10.50"), 26, 2, Currency()), cur("273"));
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, NullEquationGivesAmountTimesPays) {
    setEquation(2, 64, QVariant());
    ASSERT_TRUE(ql::IsNull(storedEquation(2, 64)));
    EXPECT_EQ(CountrySpecificEquation(cur("10.50"), 12, 2, Currency()), cur("126"));
    setCountry(598);
    setEquation(2, 598, QVariant());
    EXPECT_EQ(CountrySpecificEquation(cur("10.50"), 0, 2, Currency()), cur("10.5"));
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, NamesAreFoundInOrderAndRoundBeatsPaye) {
    // ROUND is looked for before PAYE: only x is filled in, t and p stay as letters.
    const QString text = QStringLiteral("ROUND(x)+PAYE(t*p)");
    EXPECT_EQ(ql::CountryEquationExpression(text, 64, cur("2.345"), 52, Currency()),
              QStringLiteral("ROUND(2.345)+PAYE(t*p)"));
    setEquation(3, 64, text);
    // The letters left over make the second term faulty; the first term stands. TaxEvaluator's
    // faults are not looked at, so nothing is reported.
    EXPECT_EQ(CountrySpecificEquation(cur("2.345"), 52, 3, Currency()), cur("2.35"));
    EXPECT_TRUE(reported.empty());
    // SALARY comes first of all.
    EXPECT_EQ(
        ql::CountryEquationExpression(QStringLiteral("PAYE(t)+SALARY(x*p)"), 64, cur("3"), 12, Currency()),
        QStringLiteral("PAYE(t)+SALARY(3*12)"));
}

TEST_F(CountryEquation, NamesAreFoundWithoutRegardToCaseButLettersWithRegardToCase) {
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("salary(x*p)"), 64, cur("10"), 52, Currency()),
              QStringLiteral("salary(10*52)"));
    setEquation(1, 64, QStringLiteral("salary(x*p)"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.25"), 52, 1, Currency()), cur("533"));
    // A capital X is no x: it reaches the evaluator as a name without "(" and the call gives 0.
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("SALARY(X*p)"), 64, cur("10"), 52, Currency()),
              QStringLiteral("SALARY(X*52)"));
    setEquation(1, 64, QStringLiteral("SALARY(X*p)"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.25"), 52, 1, Currency()), Currency());
}

TEST_F(CountryEquation, EachNameFillsItsLetters) {
    const Currency a = cur("100.5"), x = cur("520");
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("PAYE(t/p+x)"), 64, a, 52, x),
              QStringLiteral("PAYE(100.5/52+x)"));
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("METAXCODE((t-x)/p)"), 64, a, 52, x),
              QStringLiteral("METAXCODE((100.5-520)/52)"));
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("MLTAXCODE(t/p+x)"), 64, a, 26, x),
              QStringLiteral("MLTAXCODE(100.5/26+x)"));
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("ROUND(x*p)"), 64, a, 26, x),
              QStringLiteral("ROUND(100.5*p)"));
    // Single and Currency as plain text: no exponent, no trailing zeros.
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("SALARY(x*p)"), 64, cur("-0.0001"), 52.5f, x),
              QStringLiteral("SALARY(-0.0001*52.5)"));
}

TEST_F(CountryEquation, CreditGoesIntoProcessFour) {
    setEquation(4, 64, QStringLiteral("METAXCODE((t-x)/p)"));
    EXPECT_EQ(CountrySpecificEquation(cur("5720"), 52, 4, cur("520")), cur("100"));
}

TEST_F(CountryEquation, OtherCountriesReplaceLettersCharacterByCharacter) {
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("d p * T P / D t"), 61, cur("12.5"), 26, cur("9")),
              QStringLiteral("12.5 26 * 12.5 26 / 12.5 12.5"));
    // Inside a word too; x is no letter of theirs, and "i" stays.
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("odd x i"), 55, cur("2"), 12, cur("9")),
              QStringLiteral("o22 x i"));
    EXPECT_EQ(ql::CountryEquationExpression(QString(""), 55, cur("2"), 12, Currency()), QString());
}

TEST_F(CountryEquation, OtherCountryPostfixRow) {
    setCountry(61);
    setEquation(1, 61, QStringLiteral("d p * i"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.017"), 52, 1, Currency()), cur("520"));
    // A negative amount is a number token of its own.
    EXPECT_EQ(CountrySpecificEquation(cur("-12.5"), 2, 1, Currency()), cur("-25"));
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, LetterInsideAWordIsReplacedAndTheFaultReported) {
    setCountry(55);
    setEquation(2, 55, QStringLiteral("d 2 * add"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.125"), 4, 2, Currency()), cur("40.5"));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].location, QStringLiteral("CountrySpecificEquation"));
    EXPECT_EQ(reported[0].description, QStringLiteral("Bad token in Evaluate: a10.12510.125"));
}

TEST_F(CountryEquation, PostfixFaultGoesOnWithAmountTimesPays) {
    setCountry(598);
    setEquation(1, 598, QStringLiteral("+"));
    EXPECT_EQ(CountrySpecificEquation(cur("3.333"), 3, 1, Currency()), cur("10"));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].description, QStringLiteral("Pop method invoked on empty stack"));
    // A blank at the end of the stored text makes an empty token behind the appended one.
    reported.clear();
    setEquation(1, 598, QStringLiteral("d p * "));
    EXPECT_EQ(CountrySpecificEquation(cur("2"), 3, 1, Currency()), cur("6"));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].description, QStringLiteral("Bad token in Evaluate: "));
}

TEST_F(CountryEquation, InfixFaultsAreNotReported) {
    setEquation(2, 64, QStringLiteral("PAYE(t/0)"));
    EXPECT_EQ(CountrySpecificEquation(cur("100"), 52, 2, Currency()), Currency());
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, MissingModulesDatabaseIsReportedAndTheAmountTimesPaysReturned) {
    QFile::remove(ql::ModuleFileName());
    EXPECT_EQ(CountrySpecificEquation(cur("100.125"), 2, 1, Currency()), cur("200.25"));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].location, QStringLiteral("CountrySpecificEquation"));
    EXPECT_FALSE(QFile::exists(ql::ModuleFileName()));
}

TEST_F(CountryEquation, EditedRowCountsAtTheNextCall) {
    setEquation(1, 64, QStringLiteral("SALARY(x*p)"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.5"), 52, 1, Currency()), cur("546"));
    setEquation(1, 64, QStringLiteral("SALARY(x*p*2)"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.5"), 52, 1, Currency()), cur("1092"));
    removeEquation(1, 64);
    EXPECT_EQ(CountrySpecificEquation(cur("10.5"), 52, 1, Currency()), cur("10.5"));
    // The country too is read at every call.
    setEquation(1, 61, QStringLiteral("d 3 *"));
    setCountry(61);
    EXPECT_EQ(CountrySpecificEquation(cur("10.5"), 52, 1, Currency()), cur("31.5"));
}

TEST_F(CountryEquation, CommaLocaleWritesTheAmountWithAComma) {
    qltest::LocaleGuard german(qltest::germanLocale());
    EXPECT_EQ(
        ql::CountryEquationExpression(QStringLiteral("SALARY(x*p)"), 64, cur("1000.5"), 52.5f, Currency()),
        QStringLiteral("SALARY(1000,5*52,5)"));
    setEquation(1, 64, QStringLiteral("SALARY(x*p)"));
    EXPECT_EQ(CountrySpecificEquation(cur("1000.5"), 52, 1, Currency()), cur("52026"));
    setEquation(3, 64, QStringLiteral("ROUND(x)"));
    EXPECT_EQ(CountrySpecificEquation(cur("2.3451"), 0, 3, Currency()), cur("2.35"));
    // The formula's own marks are read alike: a point and a comma.
    setEquation(2, 64, QStringLiteral("PAYE(t*0.5+t*0,5)"));
    EXPECT_EQ(CountrySpecificEquation(cur("7.125"), 52, 2, Currency()), cur("7.12"));
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, CommaLocalePostfixReadsTheAmountWithTheLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    setCountry(55);
    EXPECT_EQ(ql::CountryEquationExpression(QStringLiteral("d p *"), 55, cur("10.25"), 2, Currency()),
              QStringLiteral("10,25 2 *"));
    setEquation(1, 55, QStringLiteral("d p *"));
    EXPECT_EQ(CountrySpecificEquation(cur("10.25"), 2, 1, Currency()), cur("20.5"));
    EXPECT_TRUE(reported.empty());
}

TEST_F(CountryEquation, CalcPercentOfRoundsBothSides) {
    // No rounding row: RoundCurrency alone.
    EXPECT_EQ(CalcPercentOf(cur("1000"), 3.5f), cur("35"));
    // The amount is rounded before the percentage is taken: 10.01 x 2, not 10.006 x 2.
    EXPECT_EQ(CalcPercentOf(cur("10.006"), 200.0f), cur("20.02"));
    EXPECT_EQ(CalcPercentOf(cur("-200"), 10.0f), cur("-20"));
    EXPECT_EQ(CalcPercentOf(cur("200"), 0.0f), Currency());
    // The rounding row is asked twice, with 1 for the pays.
    // (ROUND fills in x alone, so a "p" would stay a letter.)
    setEquation(3, 64, QStringLiteral("ROUND(x*2)"));
    EXPECT_EQ(CalcPercentOf(cur("100"), 10.0f), cur("40"));
}

TEST_F(CountryEquation, ResultBeyondMoneyIsRaisedToTheCaller) {
    // The rounding of the result stands behind the trap: a value that money can't hold is the caller's.
    setCountry(61);
    setEquation(1, 61, QStringLiteral("10 17 ^"));
    try {
        CountrySpecificEquation(cur("1"), 52, 1, Currency());
        ADD_FAILURE() << "no error";
    } catch (const ql::VbError& e) {
        EXPECT_EQ(e.number(), ql::err::Overflow);
    }
    EXPECT_TRUE(reported.empty());
    // A fault inside the evaluation is the gate's own: reported, and the amount times the pays.
    setEquation(1, 61, QStringLiteral("10 400 ^"));
    EXPECT_EQ(CountrySpecificEquation(cur("1"), 52, 1, Currency()), cur("52"));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].description, QStringLiteral("Overflow"));
}
