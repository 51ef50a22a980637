// A bonus made as a one-off pay of the tax type "Extra pay": Inland Revenue's extra-pay method on the
// earnings of the four weeks up to its date, by the tax year in force on that date.
#include "OneOffFixture.h"

namespace qltest {
namespace {

TEST_F(OneOffTest, ExtraPayTakesTheRateOfTheGrossedUpYear) {
    addPay(); // 13 April
    addPay(); // 20 April
    addPay(); // 27 April
    const qint32 extraPay = ql::CLng(db().scalar(QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE Taxname = 'Extra pay'")));
    const QDate bonusDay(2026, 5, 1);
    // The four weekly pays of the 28 days to 1 May.
    EXPECT_EQ(money(QStringLiteral("SELECT Total(TotalTaxable) FROM Wages WHERE EmployeeID = 1 AND OneOff = 0 AND "
                                   "date([Date]) > '2026-04-03' AND date([Date]) <= '2026-05-01'")),
              cur("4091"));
    ql::OneOffForm form;
    enter(form, bonusDay, HolidayPay, extraPay, QStringLiteral("1000"));
    // 4,091.00 x 13 = 53,183, plus the bonus: 54,183, in the 30% band of 2026/27; the levy of 1.75% on
    // the whole bonus (below the maximum): 1,000 x 31.75% = 317.50.
    EXPECT_EQ(form.PAYE, cur("317.5"));
    form.cmdOK_Click();
    // A bonus is KiwiSaver salary: the employee's 3.5% of it, 35.00, comes off too.
    EXPECT_EQ(money(QStringLiteral("SELECT Total(Deductions) FROM DeductionDetails WHERE WageID = %1").arg(form.madeWageID)),
              cur("35"));
    EXPECT_EQ(wageColumn(form.madeWageID, "TakeHome"), cur("647.5"));

    // A smaller bonus stays in the 17.5% band: 53,183 + 200 = 53,383; 200 x 19.25% = 38.50.
    ql::OneOffForm small;
    enter(small, bonusDay, HolidayPay, extraPay, QStringLiteral("200"));
    EXPECT_EQ(small.PAYE, cur("38.5"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

} // namespace
} // namespace qltest
