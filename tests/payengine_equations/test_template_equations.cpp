// The template rows of every country through the country gate: a pay to a yearly figure and back,
// rounding, the special codes' forms, and the published cases of the tax year through the steps.
#include "EquationTest.h"
#include "TaxChain.h"
#include "payengine/CountryEquations.h"

using namespace eqtest;
using ql::CountrySpecificEquation;
using ql::Currency;

namespace {

class TemplateEquations : public EquationTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        EquationTest::SetUp();
        createTemplateModules();
        setCountry(GetParam());
    }
    void TearDown() override {
        EXPECT_TRUE(reported.empty()) << reported.front().description.toStdString();
        EquationTest::TearDown();
    }
    static Currency yearly(const char* pay, float pays) {
        return CountrySpecificEquation(cur(pay), pays, 1, Currency());
    }
    static Currency perPay(const char* tax, float pays) {
        return CountrySpecificEquation(cur(tax), pays, 2, Currency());
    }
    static Currency rounded(const char* amount, float pays = 0) {
        return CountrySpecificEquation(cur(amount), pays, 3, Currency());
    }

    void yearlyFigureAndBack() {
        EXPECT_EQ(yearly("1000", 52), cur("52000"));
        EXPECT_EQ(yearly("1500", 12), cur("18000"));
        EXPECT_EQ(yearly("300", 52), cur("15600"));
        // cents dropped, also where the double product lies a hair below the whole dollar
        EXPECT_EQ(yearly("1234.567", 52), cur("64197"));
        EXPECT_EQ(yearly("1.15", 20), cur("23"));
        EXPECT_EQ(yearly("0.01", 52), cur("0"));
        EXPECT_EQ(yearly("0.02", 52), cur("1"));
        EXPECT_EQ(yearly("865.38", 26), cur("22499"));
        EXPECT_EQ(yearly("0", 52), cur("0"));
        EXPECT_EQ(yearly("123.45", 0), cur("123"));

        // weekly cut to cents, then times 52 over the pays, cut again
        EXPECT_EQ(perPay("8918", 52), cur("171.5"));
        EXPECT_EQ(perPay("1911", 52), cur("36.75"));
        EXPECT_EQ(perPay("2373", 12), cur("197.73"));
        EXPECT_EQ(perPay("2373", 26), cur("91.26"));
        EXPECT_EQ(perPay("2373", 13), cur("182.52"));
        // a yearly tax of the steps a few ten-thousandths short comes back to its cent ...
        EXPECT_EQ(perPay("8917.9998", 52), cur("171.5"));
        EXPECT_EQ(perPay("8917.998", 52), cur("171.5"));
        // ... while a yearly tax that is truly short of it stays below
        EXPECT_EQ(perPay("8917.9975", 52), cur("171.49"));
        EXPECT_EQ(perPay("0", 52), cur("0"));
        EXPECT_EQ(perPay("0.52", 52), cur("0.01"));
        EXPECT_EQ(perPay("0.5199", 52), cur("0.01"));
        EXPECT_EQ(perPay("0.5175", 52), cur("0"));
        // p of 0 is 1: the weekly figure times 52
        EXPECT_EQ(perPay("520", 0), cur("520"));
    }

    void rounding() {
        EXPECT_EQ(rounded("16.275"), cur("16.27"));
        EXPECT_EQ(rounded("16.2799", 52), cur("16.27"));
        EXPECT_EQ(rounded("-16.275"), cur("-16.27"));
        EXPECT_EQ(rounded("16.27"), cur("16.27"));
        EXPECT_EQ(rounded("9.7"), cur("9.7"));
        EXPECT_EQ(rounded("0.29"), cur("0.29"));
        EXPECT_EQ(rounded("-0.29"), cur("-0.29"));
        EXPECT_EQ(rounded("0.0099"), cur("0"));
        EXPECT_EQ(rounded("-0.0099"), cur("0"));
        EXPECT_EQ(rounded("0"), cur("0"));
        EXPECT_EQ(rounded("1234567.8999"), cur("1234567.89"));
    }
};

} // namespace

TEST_P(TemplateEquations, YearlyFigureAndBack) {
    yearlyFigureAndBack();
}

TEST_P(TemplateEquations, YearlyFigureAndBackInACommaLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    yearlyFigureAndBack();
}

TEST_P(TemplateEquations, RoundingCutsToCents) {
    rounding();
}

TEST_P(TemplateEquations, RoundingCutsToCentsInACommaLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    rounding();
}

TEST_P(TemplateEquations, PercentOfIsCutToCents) {
    // KiwiSaver at 3.5% of 465.00
    EXPECT_EQ(ql::CalcPercentOf(cur("465"), 3.5f), cur("16.27"));
    // student loan at 12% of 136.00 (600.00 less the weekly threshold)
    EXPECT_EQ(ql::CalcPercentOf(cur("136"), 12.0f), cur("16.32"));
    EXPECT_EQ(ql::CalcPercentOf(cur("-465"), 3.5f), cur("-16.27"));
}

TEST_P(TemplateEquations, PublishedCasesThroughTheSteps) {
    const auto steps = templateSteps(1);
    ASSERT_FALSE(steps.empty());
    auto paye = [&](const char* earnings, float pays) {
        const Currency annual = CountrySpecificEquation(cur(earnings), pays, 1, Currency());
        return CountrySpecificEquation(stepsTax(steps, annual), pays, 2, Currency());
    };
    EXPECT_EQ(paye("1000", 52), cur("171.50"));
    EXPECT_EQ(paye("300", 52), cur("36.75"));
    EXPECT_EQ(paye("1500", 12), cur("197.73"));
}

TEST_P(TemplateEquations, SecondaryCodesThroughTheSteps) {
    // earnings x (rate + levy), cut to cents; the flat types run on the pay through the rounding row
    struct Flat {
        int taxType;
        const char* earnings;
        const char* paye;
    } cases[] = {
        {2, "400", "49"},        // SB 12.25%
        {3, "400", "77"},        // S 19.25%
        {4, "333.33", "105.83"}, // SH 31.75%: 105.832275
        {5, "1000", "347.5"},    // ST 34.75%
        {6, "123.45", "50.30"},  // SA 40.75%: 50.305875
        {7, "99.99", "46.74"},   // ND 46.75%: 46.745325
    };
    for (const Flat& f : cases) {
        const auto steps = templateSteps(f.taxType);
        ASSERT_EQ(steps.size(), 1u);
        const Currency annual = CountrySpecificEquation(cur(f.earnings), 52, 3, Currency());
        EXPECT_EQ(CountrySpecificEquation(stepsTax(steps, annual), 52, 3, Currency()), cur(f.paye))
            << f.taxType << " " << f.earnings;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCountry, TemplateEquations, ::testing::Values(64, 61, 55, 598));

namespace {

class TemplateSpecialCodes : public EquationTest {
protected:
    void SetUp() override {
        EquationTest::SetUp();
        createTemplateModules();
    }
};

} // namespace

TEST_F(TemplateSpecialCodes, CreditComesOffTheYearlyTax) {
    // 700.50 a week: yearly figure 36426, tax 5920.005, credit 520: 5400.005 / 52 = 103.846...
    const auto steps = templateSteps(1);
    const Currency annual = CountrySpecificEquation(cur("700.50"), 52, 1, Currency());
    ASSERT_EQ(annual, cur("36426"));
    const Currency tax = stepsTax(steps, annual);
    EXPECT_EQ(CountrySpecificEquation(tax, 52, 4, cur("520")), cur("103.84"));
    EXPECT_EQ(CountrySpecificEquation(tax, 26, 4, cur("520")), cur("207.68"));
    EXPECT_EQ(CountrySpecificEquation(tax, 12, 4, cur("520")), cur("449.97"));
    // a negative credit is read too
    EXPECT_EQ(CountrySpecificEquation(cur("5200"), 52, 4, cur("-52")), cur("101"));
    // without a credit the row is the plain per-pay row
    EXPECT_EQ(CountrySpecificEquation(tax, 52, 4, Currency()),
              CountrySpecificEquation(tax, 52, 2, Currency()));
    EXPECT_TRUE(reported.empty());
}

TEST_F(TemplateSpecialCodes, LowIncomeFormIsThePerPayForm) {
    for (const char* tax : {"0", "611.52", "735.0025", "1000.9999"})
        for (float pays : {52.0f, 26.0f, 13.0f, 12.0f})
            EXPECT_EQ(CountrySpecificEquation(cur(tax), pays, 5, Currency()),
                      CountrySpecificEquation(cur(tax), pays, 2, Currency()))
                << tax << " " << pays;
}

TEST_F(TemplateSpecialCodes, OtherCountriesHaveNoSpecialCodeRows) {
    for (int country : {61, 55, 598}) {
        setCountry(country);
        EXPECT_EQ(CountrySpecificEquation(cur("5000.125"), 52, 4, cur("520")), cur("5000.12"));
        EXPECT_EQ(CountrySpecificEquation(cur("5000.125"), 52, 5, Currency()), cur("5000.12"));
    }
}

TEST_F(TemplateSpecialCodes, EveryRowIsThere) {
    for (int process = 1; process <= 5; ++process)
        EXPECT_FALSE(storedEquation(process, 64).toString().isEmpty()) << process;
    for (int country : {61, 55, 598})
        for (int process = 1; process <= 3; ++process)
            EXPECT_FALSE(storedEquation(process, country).toString().isEmpty()) << country << " " << process;
}
