// The published cases of the tax year through the pay engine's own steps: the template's tax steps
// and equations, run by CalcTaxSteps with the employee's code.
#include "EquationTest.h"
#include "data/Schema.h"
#include "payengine/AppContext.h"
#include "payengine/CountryEquations.h"
#include "payengine/Paye.h"
#include <QTemporaryDir>

using namespace eqtest;
using ql::CountrySpecificEquation;
using ql::Currency;

namespace {

class PublishedCases : public EquationTest {
protected:
    void SetUp() override {
        EquationTest::SetUp();
        createTemplateModules();
        ql::setApp(&app);
        app.WageDatabase =
            ql::openOrCreate(ql::DatabaseKind::Wage, wageDir.path() + QStringLiteral("/Wage32.db"));
        app.EmployeeArray.append(ql::EmployeeRecord{});
        app.CurrentEmployee = 1;
    }
    void TearDown() override {
        app.WageDatabase.close();
        ql::setApp(nullptr);
        EXPECT_TRUE(reported.empty()) << reported.front().description.toStdString();
        EquationTest::TearDown();
    }

    // The PAYE of one pay of a tax type: opening process 1 and closing 2 for a type of several steps,
    // 3 both ways for a flat type, as the PAYE calculation chooses them.
    Currency paye(int taxType, const QString& code, const char* earnings, float pays) {
        app.EmployeeArray[1].TaxCode = code;
        const QString query =
            QStringLiteral("SELECT upperlimit, taxrate, taxtypeID FROM TaxSteps WHERE taxtypeID = %1 "
                           "ORDER BY upperlimit")
                .arg(taxType);
        const bool flat =
            app.WageDatabase
                .scalar(QStringLiteral("SELECT Count(*) FROM TaxSteps WHERE taxtypeID = %1").arg(taxType))
                .toInt() == 1;
        qint32 closing = flat ? ql::TaxProcessRound : ql::TaxProcessPerPay;
        const Currency annual = CountrySpecificEquation(
            cur(earnings), pays, flat ? ql::TaxProcessRound : ql::TaxProcessAnnualise, Currency());
        ql::TaxDetailRecord record;
        Currency result;
        ql::CalcTaxSteps(query, annual, pays, record, result, closing);
        return result;
    }

    QTemporaryDir wageDir;
    ql::AppContext app;
};

} // namespace

TEST_F(PublishedCases, MainCode) {
    EXPECT_EQ(paye(1, QStringLiteral("M"), "1000", 52), cur("171.50"));
    EXPECT_EQ(paye(1, QStringLiteral("M"), "300", 52), cur("36.75"));
    EXPECT_EQ(paye(1, QStringLiteral("M"), "1500", 12), cur("197.73"));
    // a fortnightly pay's tax is twice the weekly figure
    EXPECT_EQ(paye(1, QStringLiteral("M"), "2000", 26), cur("343.00"));
    EXPECT_EQ(paye(1, QStringLiteral("M SL"), "1000", 52), cur("171.50"));
}

TEST_F(PublishedCases, MainCodeInACommaLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    EXPECT_EQ(paye(1, QStringLiteral("M"), "1000", 52), cur("171.50"));
    EXPECT_EQ(paye(1, QStringLiteral("M"), "1500", 12), cur("197.73"));
    EXPECT_EQ(paye(1, QStringLiteral("ME"), "700.50", 52), cur("103.84"));
}

TEST_F(PublishedCases, IndependentEarnerCredit) {
    // 700.50 a week: tax 5920.005 a year less the credit of 520, over 52, cut: 103.84
    EXPECT_EQ(paye(1, QStringLiteral("ME"), "700.50", 52), cur("103.84"));
    EXPECT_EQ(paye(1, QStringLiteral("ME SL"), "1401", 26), cur("207.68"));
    // outside the credit's range ME is M
    EXPECT_EQ(paye(1, QStringLiteral("ME"), "1000", 52), cur("171.50"));
}

TEST_F(PublishedCases, LowIncomeCode) {
    // 115.39 a week: yearly figure 6000, tax 735.00, 14.13 a week, less 611.52 / 52 = 11.76
    EXPECT_EQ(paye(1, QStringLiteral("ML"), "115.39", 52), cur("2.37"));
    // fortnightly: 28.26 less 611.52 / 26 = 23.52
    EXPECT_EQ(paye(1, QStringLiteral("M L"), "230.78", 26), cur("4.74"));
}

TEST_F(PublishedCases, SecondaryCodes) {
    EXPECT_EQ(paye(2, QStringLiteral("SB"), "400", 52), cur("49.00"));
    EXPECT_EQ(paye(4, QStringLiteral("SH"), "333.33", 52), cur("105.83"));
    EXPECT_EQ(paye(7, QStringLiteral("ND"), "99.99", 26), cur("46.74"));
}

TEST_F(PublishedCases, OtherCountriesGiveTheSameForTheMainCode) {
    for (int country : {61, 55, 598}) {
        setCountry(country);
        EXPECT_EQ(paye(1, QStringLiteral("ME"), "1000", 52), cur("171.50")) << country;
        EXPECT_EQ(paye(1, QString(), "300", 52), cur("36.75")) << country;
        EXPECT_EQ(paye(1, QString(), "1500", 12), cur("197.73")) << country;
        EXPECT_EQ(paye(6, QString(), "123.45", 52), cur("50.30")) << country;
    }
}
