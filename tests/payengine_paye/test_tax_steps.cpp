// The tax of the steps, the special codes and the step log. Figures are worked by hand in the comments;
// a rate goes through a Single (10 -> 0.100000001490116, 30 -> 0.300000011920929, 10.5 ->
// 0.104999996721745) before it meets the amount, and each step's tax is rounded half to even at four
// decimals.
#include "PayeFixture.h"
#include "payengine/Paye.h"

using namespace ql;

namespace qltest {
namespace {

class TaxStepsTest : public PayeTest {
protected:
    void SetUp() override {
        PayeTest::SetUp();
        withoutEquations();
        bands = addTaxType(QStringLiteral("Bands"), {{10000, 10.0f}, {20000, 20.0f}, {30000, 30.0f}});
    }
    QString query(qint32 taxType) const {
        return QStringLiteral("SELECT upperlimit, taxrate, taxtypeID FROM TaxSteps WHERE taxtypeID = %1 "
                              "ORDER BY upperlimit")
            .arg(taxType);
    }
    // The steps on annual, with the closing process left to say what the codes made of it.
    Currency steps(qint32 taxType, double annual, float paysPerYear, qint32* closing = nullptr) {
        TaxDetailRecord record;
        record.TaxableAmount = Currency::fromDouble(123.45);
        Currency paye;
        qint32 process = 2;
        CalcTaxSteps(query(taxType), Currency::fromDouble(annual), paysPerYear, record, paye, process);
        EXPECT_EQ(record.PAYE, paye);
        EXPECT_EQ(record.TaxableAmount, Currency::fromDouble(123.45)) << "the record keeps the amount of one pay";
        if (closing)
            *closing = process;
        return paye;
    }
    qint32 bands = 0;
};

Currency cur(const char* text) { return Currency::fromDouble(QString::fromLatin1(text).toDouble()); }

TEST_F(TaxStepsTest, WithinTheSecondStep) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M"));
    // 10000 x 0.1 = 1000.0000149 -> 1000; 5000 x 0.2 = 1000.0000149 -> 1000.
    EXPECT_EQ(steps(bands, 15000, 0), cur("2000"));
}

TEST_F(TaxStepsTest, AmountEqualToALimitFillsThatStepWithTheRemainder) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M"));
    // 10000 is not strictly below 10000: the step takes the remaining 10000, the next finds 0.
    EXPECT_EQ(steps(bands, 10000, 0), cur("1000"));
    EXPECT_EQ(steps(bands, 20000, 0), cur("3000"));
}

TEST_F(TaxStepsTest, TheLastRateGoesOnAboveTheLastLimit) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M"));
    // 1000 + 2000.0000298 -> 2000 + 3000.0001192 -> 3000.0001, and the 10000 above the last limit at the
    // last rate again 3000.0001: 9000.0002.
    EXPECT_EQ(steps(bands, 40000, 0), cur("9000.0002"));
}

TEST_F(TaxStepsTest, ARateThroughASingleComesOutATenThousandthShort) {
    const qint32 low = addTaxType(QStringLiteral("Low"), {{15600, 10.5f}, {1e9, 17.5f}});
    addEmployee(low, intervalWith(52), QStringLiteral("M"));
    // 15600 x 0.104999996721745 = 1637.99994886 -> 1637.9999, not 1638.
    EXPECT_EQ(steps(low, 15600, 0), cur("1637.9999"));
}

TEST_F(TaxStepsTest, NoStepsGivesNothing) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M"));
    EXPECT_EQ(steps(9999, 5000, 0), Currency());
    EXPECT_EQ(steps(9999, 5000, 52), Currency());
}

TEST_F(TaxStepsTest, NoPaysPerYearTakesTheTotalAsItStandsWithoutCodes) {
    addEmployee(bands, intervalWith(52), QStringLiteral("ML"));
    // 1000 x 0.1 = 100.0000015 -> 100; no equation and no rebate of the code.
    qint32 closing = 0;
    EXPECT_EQ(steps(bands, 1000, 0, &closing), cur("100"));
    EXPECT_EQ(closing, 2);
}

TEST_F(TaxStepsTest, WithoutAnEquationTheClosingProcessOnlyRounds) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M"));
    // 9000.0002 x 52 / 52 rounded to the cent.
    EXPECT_EQ(steps(bands, 40000, 52), cur("9000"));
}

TEST_F(TaxStepsTest, LowIncomeCodeInItsMiddleRange) {
    addEmployee(bands, intervalWith(52), QStringLiteral("ML"));
    qint32 closing = 0;
    // 6000 x 0.1 = 600; closing process 5 (no row: 600); less 611.52 / 52 = 11.76.
    EXPECT_EQ(steps(bands, 6000, 52, &closing), cur("588.24"));
    EXPECT_EQ(closing, 5);
}

TEST_F(TaxStepsTest, LowIncomeCodeBelowItsRangeHasNoRebate) {
    addEmployee(bands, intervalWith(52), QStringLiteral("ML"));
    qint32 closing = 0;
    // 0.50 x 0.1 = 0.05 -> 0.05 rounded to the cent, even: 0.05 stays.
    EXPECT_EQ(steps(bands, 0.50, 52, &closing), cur("0.05"));
    EXPECT_EQ(closing, 2);
}

TEST_F(TaxStepsTest, LowIncomeCodeInItsFirstRange) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M L"));
    // 1000 x 0.1 = 100, less 1000 x 0.105 / 52 = 2.01923 -> 2.0192.
    EXPECT_EQ(steps(bands, 1000, 52), cur("97.9808"));
}

TEST_F(TaxStepsTest, CreditCodeMatchesInAnyCaseButNotSpelledApart) {
    addEmployee(bands, intervalWith(52), QStringLiteral("me sl"));
    qint32 closing = 0;
    steps(bands, 30000, 52, &closing);
    EXPECT_EQ(closing, 4);

    app.EmployeeArray[app.CurrentEmployee].TaxCode = QStringLiteral("M E");
    steps(bands, 30000, 52, &closing);
    EXPECT_EQ(closing, 2);
}

TEST_F(TaxStepsTest, OtherCountriesHaveNoSpecialCodes) {
    writeSettings(61, false);
    addEmployee(bands, intervalWith(52), QStringLiteral("ME"));
    qint32 closing = 0;
    steps(bands, 30000, 52, &closing);
    EXPECT_EQ(closing, 2);
    app.EmployeeArray[app.CurrentEmployee].TaxCode = QStringLiteral("ML");
    // No rebate either: 600 stays 600.
    EXPECT_EQ(steps(bands, 6000, 52, &closing), cur("600"));
    EXPECT_EQ(closing, 2);
}

struct CodeCase {
    const char* code;
    double annual;
    float paysPerYear;
    qint32 closing;
    const char* x;
    const char* y;
};

class SpecialCodeTest : public ::testing::TestWithParam<CodeCase> {};

TEST_P(SpecialCodeTest, RangesAreInclusiveWithGaps) {
    const CodeCase& c = GetParam();
    qint32 closing = 2;
    Currency x;
    Currency y;
    ApplySpecialTaxCode(QString::fromLatin1(c.code), Currency::fromDouble(c.annual), c.paysPerYear, closing, x, y);
    EXPECT_EQ(closing, c.closing);
    EXPECT_EQ(x, cur(c.x)) << x.toString().toStdString();
    EXPECT_EQ(y, cur(c.y)) << y.toString().toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Codes, SpecialCodeTest,
    ::testing::Values(CodeCase{"ME", 23999, 52, 2, "0", "0"}, CodeCase{"ME", 23999.5, 52, 2, "0", "0"},
                      CodeCase{"ME", 24000, 52, 4, "520", "0"}, CodeCase{"ME", 44000, 52, 4, "520", "0"},
                      // In the gap between 44000 and 44001.
                      CodeCase{"ME", 44000.50, 52, 2, "0", "0"},
                      // 520 - 1 x 0.13; 520 - 1000 x 0.13; 520 - 3999 x 0.13 = 0.13.
                      CodeCase{"ME SL", 44001, 52, 4, "519.87", "0"}, CodeCase{"MESL", 45000, 52, 4, "390", "0"},
                      CodeCase{"ME", 47999, 52, 4, "0.13", "0"}, CodeCase{"ME", 48000, 52, 2, "0", "0"},
                      CodeCase{"M E", 30000, 52, 2, "0", "0"}, CodeCase{"me", 30000, 52, 2, "0", "0"},
                      CodeCase{"ML", 0.50, 52, 2, "0", "0"},
                      // 1 x 0.105 / 52 = 0.00201923 -> 0.0020.
                      CodeCase{"ML", 1, 52, 2, "0", "0.002"},
                      // 5824 x 0.105 = 611.52; / 52 = 11.76.
                      CodeCase{"ML", 5824, 52, 2, "0", "11.76"}, CodeCase{"ML", 5824.5, 52, 2, "0", "0"},
                      CodeCase{"ML", 5825, 52, 5, "0", "11.76"}, CodeCase{"M L", 6000, 26, 5, "0", "23.52"},
                      CodeCase{"ML", 6240, 52, 5, "0", "11.76"},
                      // (1659.84 - 6241 x 0.168) / 52 = 611.352 / 52 = 11.756769 -> 11.7568.
                      CodeCase{"ML", 6241, 52, 2, "0", "11.7568"}, CodeCase{"ML", 9880, 52, 2, "0", "0"},
                      CodeCase{"ML", 9881, 52, 2, "0", "0"}, CodeCase{"M", 30000, 52, 2, "0", "0"}));

TEST_F(TaxStepsTest, StepLogOnlyWithTheDebugSetting) {
    addEmployee(bands, intervalWith(52), QStringLiteral("M"));
    steps(bands, 15000, 52);
    EXPECT_TRUE(dialogs.calls.isEmpty());

    writeSettings(64, true);
    steps(bands, 15000, 52);
    ASSERT_EQ(dialogs.calls.size(), 1);
    const DialogCall& box = dialogs.calls.front();
    EXPECT_EQ(box.heading, QStringLiteral("An Error has Occurred"));
    // Weekly figures for every interval; the lower limit is the one after the step moved it.
    // 10000/52 = 192.307692307692; 1000/52 = 19.2307692307692; 5000/52 = 96.1538461538462.
    EXPECT_EQ(box.message,
              QStringLiteral("lowerlimit=192.307692307692 amount=192.307692307692 rate=0.1PAYE=19.2307692307692 "
                             "Payetotal=19.2307692307692\r\n"
                             "lowerlimit=192.307692307692 amount=96.1538461538462 rate=0.2PAYE=19.2307692307692 "
                             "Payetotal=38.4615384615385\r\n"
                             "lowerlimit=192.307692307692 amount=0 rate=0.3PAYE=0 Payetotal=38.4615384615385\r\n"));
}

} // namespace
} // namespace qltest
