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
    // Flat codes take their own rate and never the lump sum indicator.
    EXPECT_FALSE(ird::ExtraPayAtLowestRate(f, ird::ParseTaxCode(QStringLiteral("SB")), 0, 1000000));
}
