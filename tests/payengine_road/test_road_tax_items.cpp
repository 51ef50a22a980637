// An employee's standing tax items on the road of a pay: child support up to the protected net
// earnings, the student loan special deduction rate, and an ESCT rate the employer set for the year.
#include "RoadFixture.h"
#include "payengine/EmployeeTaxItems.h"
#include "runtime/VbError.h"

namespace qltest {
namespace {

TEST_F(RoadTest, ChildSupportLeavesSixtyPerCentOfTheNetPay) {
    ql::EmployeeTaxItems items = ql::LoadEmployeeTaxItems(db(), FarmHand);
    items.childSupport = cur("400");
    ql::SaveEmployeeTaxItems(db(), items);
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    // Taxable 1,022.75; the tax without the levy: yearly 53,183, 1,638 + 37,583 x 17.5% = 8,215.025,
    // / 52 = 157.98. Net 864.77, of which 40% (345.908, cut 345.90) may go: less than the 400 asked.
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("35.79"), cur("345.9")}));
    EXPECT_EQ(amounts("DeductionDetails", "AmountCalcon", wage), (QList<ql::Currency>{cur("1022.75"), cur("864.77")}));
    // Take-home 1,022.75 - 175.87 - 35.79 - 345.90.
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$465.19"));

    // A smaller amount is taken whole.
    items.childSupport = cur("100");
    ql::SaveEmployeeTaxItems(db(), items);
    const qint32 next = addPay();
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", next), (QList<ql::Currency>{cur("35.79"), cur("100")}));
    // No amount: the line the amount brought goes from the standing lines.
    items.childSupport = ql::Currency();
    ql::SaveEmployeeTaxItems(db(), items);
    const qint32 last = addPay();
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", last), (QList<ql::Currency>{cur("35.79")}));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, SpecialStudentLoanRateAndTheEmployersEsctRate) {
    ql::EmployeeTaxItems items = ql::LoadEmployeeTaxItems(db(), Manager);
    items.slSpecialRate = 5000;
    ql::SetEsctRate(db(), items, 17500, QDate(2026, 5, 1));
    EXPECT_EQ(items.esctRateYear, QStringLiteral("2026/27"));
    ql::SaveEmployeeTaxItems(db(), items);
    pick(Manager, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    // Student loan at 5%: (7,083 - 2,010.66) x 5% = 253.617, cut 253.61.
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("283.33"), cur("253.61")}));
    // ESCT at the employer's 17.5% rather than the 30% of the pay over a year: 247 x 17.5% = 43.225.
    EXPECT_EQ(amounts("ContributionDetails", "ESCT", wage), (QList<ql::Currency>{cur("43.22")}));
    EXPECT_EQ(label("lblESCT"), QStringLiteral("$43.22"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, TaxItemsAreValidated) {
    ql::EmployeeTaxItems items;
    items.employeeID = FarmHand;
    items.childSupport = cur("-1");
    EXPECT_EQ(ql::EmployeeTaxItemsProblem(items), QStringLiteral("The child support must be an amount from 0 to 1,000,000.00."));
    EXPECT_THROW(ql::SaveEmployeeTaxItems(db(), items), ql::VbError);
    EXPECT_EQ(ql::LoadEmployeeTaxItems(db(), FarmHand).childSupport, ql::Currency());
    qint32 rate = 0;
    EXPECT_TRUE(ql::ParseRatePercent(QStringLiteral("17.5"), rate));
    EXPECT_EQ(rate, 17500);
    EXPECT_FALSE(ql::ParseRatePercent(QStringLiteral("101"), rate));
    EXPECT_FALSE(ql::ParseRatePercent(QStringLiteral("1.2345"), rate));
    EXPECT_FALSE(ql::ParseRatePercent(QStringLiteral("abc"), rate));
}

} // namespace
} // namespace qltest
