// The student loan deductions beyond the standard one, and the extra pay's rate and student loan, on the
// examples of Inland Revenue's specification (2024/25 figures).
#include "payengine/IrdMethod.h"
#include "payengine/TaxYear.h"
#include <gtest/gtest.h>

using namespace ql;

namespace {

TaxYearFigures july2024() {
    return ParseTaxYear(ShippedTaxYearFiles().at(0)).last();
}

} // namespace

TEST(IrdExtraDeductions, CommissionerDeductionsOfTheSpecification) {
    const TaxYearFigures f = july2024();
    const ird::TaxCode mSl = ird::ParseTaxCode(QStringLiteral("M SL"));
    // Weekly on M SL at 5%: whole dollars less the $464 threshold.
    EXPECT_EQ(ird::StudentLoanThresholdCents(f, 52), 46400);
    EXPECT_EQ(ird::StudentLoanCommissionerCents(f, mSl, 87590, 52, 5000), 2055); // ($875 - $464) x 5%
    EXPECT_EQ(ird::StudentLoanCommissionerCents(f, mSl, 96000, 52, 5000), 2480);
    EXPECT_EQ(ird::StudentLoanCommissionerCents(f, mSl, 42535, 52, 5000), 0); // below the threshold
    EXPECT_EQ(ird::StudentLoanCommissionerCents(f, mSl, 95680, 52, 5000), 2460);
    // Secondary income: 5% of the whole dollars.
    EXPECT_EQ(ird::StudentLoanCommissionerCents(f, ird::ParseTaxCode(QStringLiteral("S SL")), 45789, 52, 5000), 2285);
    EXPECT_EQ(ird::StudentLoanCommissionerCents(f, mSl, 96000, 52, 0), 0);
}

TEST(IrdExtraDeductions, ExtraPayStudentLoanAndRate) {
    const TaxYearFigures f = july2024();
    const ird::TaxCode mSl = ird::ParseTaxCode(QStringLiteral("M SL"));
    // A $7,500 redundancy paid apart from a pay: 12% of it, no threshold.
    EXPECT_EQ(ird::ExtraPayStudentLoanCents(f, mSl, 750000), 90000);
    EXPECT_EQ(ird::ExtraPayStudentLoanCents(f, mSl, 750099, 8000), 60000); // whole dollars, special rate 8%
    EXPECT_EQ(ird::ExtraPayStudentLoanCents(f, ird::ParseTaxCode(QStringLiteral("M")), 750000), 0);
    // Fortnightly $1,128: four weeks $2,256 x 13 = $29,328, plus $7,500: 17.5%, not the lowest rate.
    EXPECT_EQ(ird::ExtraPayRate(f, mSl, 225600 * 13, 750000), 17500);
    EXPECT_FALSE(ird::ExtraPayAtLowestRate(f, mSl, 225600 * 13, 750000));
    // Not liable for the levy: the rate alone.
    EXPECT_EQ(ird::ExtraPayPayeCents(f, mSl, 225600 * 13, 750000, 0), 131250);
    // A signing bonus of $10,000 before any pay: the lowest rate, with the levy.
    EXPECT_TRUE(ird::ExtraPayAtLowestRate(f, mSl, 0, 1000000));
    EXPECT_EQ(ird::ExtraPayPayeCents(f, mSl, 0, 1000000, 1000000), 121000);
    // SB's low threshold amount is nothing: $10,000 before any pay grosses up to $10,000, the lowest
    // rate (5.12, 3.10-3.11), so the lump sum indicator is set as for M.
    EXPECT_TRUE(ird::ExtraPayAtLowestRate(f, ird::ParseTaxCode(QStringLiteral("SB")), 0, 1000000));
    // ND takes its flat rate and never the indicator.
    EXPECT_FALSE(ird::ExtraPayAtLowestRate(f, ird::ParseTaxCode(QStringLiteral("ND")), 0, 1000000));
    EXPECT_EQ(ird::ExtraPayPayeCents(f, ird::ParseTaxCode(QStringLiteral("ND")), 0, 1000000, 1000000), 466000);
}

// Inland Revenue's two examples of an extra pay on secondary income (Payroll Calculations and Business
// Rules Specification 2025 V1.3, 5.12; github.com/InlandRevenue/File_Upload_Services-Returns-and-Information,
// folder "Service - Payday Filing"). The extra pay bands of 2024/25 stay 14,000 / 48,000 / 70,000 /
// 180,000 all year, so the low threshold amounts are 0 / 14,001 / 48,001 / 70,001 / 180,001.
TEST(IrdExtraDeductions, ExtraPayOnSecondaryIncomeGrossesUpFromTheLowThreshold) {
    const TaxYearFigures f = july2024();
    const ird::TaxCode sh = ird::ParseTaxCode(QStringLiteral("SH"));
    const ird::TaxCode st = ird::ParseTaxCode(QStringLiteral("ST"));
    EXPECT_EQ(ird::LowThresholdDollars(f, ird::ParseTaxCode(QStringLiteral("SB"))), 0);
    EXPECT_EQ(ird::LowThresholdDollars(f, ird::ParseTaxCode(QStringLiteral("S SL"))), 14001);
    EXPECT_EQ(ird::LowThresholdDollars(f, sh), 48001);
    EXPECT_EQ(ird::LowThresholdDollars(f, st), 70001);
    EXPECT_EQ(ird::LowThresholdDollars(f, ird::ParseTaxCode(QStringLiteral("SA"))), 180001);
    EXPECT_EQ(ird::LowThresholdDollars(f, ird::ParseTaxCode(QStringLiteral("ND"))), -1);
    EXPECT_EQ(ird::LowThresholdDollars(f, ird::ParseTaxCode(QStringLiteral("M"))), -1);
    // Example 1: SH, a $1,000 bonus, four weeks' $500 x 13 = $6,500. The example adds up to "$55,001";
    // 1,000 + 6,500 + 48,001 is 55,501. Either way the 30% band, and the levy on all of it:
    // 1,000 x (30% + 1.6%) = 316.00.
    EXPECT_EQ(ird::ExtraPayRate(f, sh, 650000, 100000), 30000);
    EXPECT_EQ(ird::ExtraPayPayeCents(f, sh, 650000, 100000, 100000), 31600);
    // Example 2: ST, a $40,000 bonus, two fortnights of $1,300 and $1,395: $2,695 x 13 = $35,035 (the
    // example shows "2613" and a struck-out "$153,136"). Grossed up 40,000 + 35,035 + 70,001 = 145,036: 33%,
    // 13,200.00. The annualised amount plus the low threshold, 105,036 (the example misprints it as
    // 145,036), is under the levy's 142,283, the grossed amount over it: the levy goes on 142,283 - 105,036
    // = 37,247 of the bonus, 595.952: 13,795.95 deducted, as the example's $26,204.05 paid out shows.
    EXPECT_EQ(ird::ExtraPayRate(f, st, 3503500, 4000000), 33000);
    EXPECT_EQ(ird::ExtraPayPayeCents(f, st, 3503500, 4000000, 4000000), 1379595);
    EXPECT_EQ(4000000 - ird::ExtraPayPayeCents(f, st, 3503500, 4000000, 4000000), 2620405);
}
