// The weekly farm hand on M, in KiwiSaver (3.5% each side), with a dog allowance, accommodation
// (taxable, outside KiwiSaver) and a meal allowance: the first pay, the next pay from the add pay
// button, then accommodation typed in and the view left.
#include "RoadFixture.h"
#include "runtime/DateFns.h"

namespace qltest {
namespace {

TEST_F(RoadTest, FarmHandFirstPayHasItsLinesAndNoTaxYet) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 first = app.CurrentWageID;
    ASSERT_GT(first, 0);
    EXPECT_EQ(ql::CDate(db().scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(first))),
              QDate(2026, 4, 6));
    // Ordinary time: 40 standard hours x (52.14 / 52) weeks, in Single: 40.107693. 40.107693 x 25.50
    // = 1022.746165, four decimals 1022.7462. Overtime: 0 hours at 25.50 x 1.5 = 38.25.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", first), (QList<ql::Currency>{cur("1022.7462"), cur("0")}));
    EXPECT_EQ(amounts("PaymentDetails", "EquivPayRate", first), (QList<ql::Currency>{cur("25.5"), cur("38.25")}));
    // A first pay's labels hold no gross when the recalculation runs: taxable 0, so no tax line and a
    // KiwiSaver deduction of 0; the slip then sets the gross from the rounded line, 1022.75.
    EXPECT_EQ(wageColumn(first, "Gross"), cur("1022.75"));
    EXPECT_EQ(wageColumn(first, "PAYE"), cur("0"));
    EXPECT_EQ(wageColumn(first, "TakeHome"), cur("1022.75"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(first)).toInt(), 0);
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", first), (QList<ql::Currency>{cur("0")}));
    // The employer's line is worked again on that taxable 0 too: its contribution and its ESCT are 0
    // together, until the next save.
    EXPECT_EQ(amounts("ContributionDetails", "Contributions", first), (QList<ql::Currency>{cur("0")}));
    EXPECT_EQ(amounts("ContributionDetails", "ESCT", first), (QList<ql::Currency>{cur("0")}));

    // The next save (leaving a view, even unchanged) brings the tax: the labels now hold the gross.
    screen->cmdSelect_Click(1);
    leaveView();
    EXPECT_EQ(wageColumn(first, "PAYE"), cur("175.87"));
    // 3.5% of 1022.75 = 35.79; ESCT on 35 whole dollars at 17.5% (yearly 53,183) = 6.125, cut to cents
    // as Inland Revenue does: the grid and the pay's figure agree.
    EXPECT_EQ(amounts("ContributionDetails", "Contributions", first), (QList<ql::Currency>{cur("35.79")}));
    EXPECT_EQ(amounts("ContributionDetails", "ESCT", first), (QList<ql::Currency>{cur("6.12")}));
    EXPECT_EQ(wageColumn(first, "ESCTDeductions"), cur("6.12"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, FarmHandNextPayAndAnAccommodationEdit) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 first = app.CurrentWageID;
    const qint32 wage = addPay();
    ASSERT_NE(wage, first);
    EXPECT_EQ(ql::CDate(db().scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(wage))),
              QDate(2026, 4, 13)); // weekly: 7 days on
    // The hours of the last pay are carried: 40.107693 x 25.50 = 1022.7462 again.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", wage), (QList<ql::Currency>{cur("1022.7462"), cur("0")}));
    // The copied totals stand: taxable 1022.75 from the labels. PAYE by the weekly method: yearly
    // 1022.75 x 52 = 53,183; 15,600 x 12.25% = 1,911 + 37,583 x 19.25% = 7,234.7275 (the rate through a
    // Single gives 7,234.7273) = 9,145.7273; / 52 = 175.8793, cut 175.87.
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$175.87"));
    EXPECT_EQ(money(QStringLiteral("SELECT PAYE FROM TaxDetails WHERE WageID = %1").arg(wage)), cur("175.87"));
    EXPECT_EQ(money(QStringLiteral("SELECT TaxableAmount FROM TaxDetails WHERE WageID = %1").arg(wage)), cur("1022.75"));
    // KiwiSaver 3.5% of 1022.75 = 35.79625, cut 35.79; the employer's the same; ESCT label on 35 x 17.5%.
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("35.79")}));
    EXPECT_EQ(amounts("ContributionDetails", "Contributions", wage), (QList<ql::Currency>{cur("35.79")}));
    // Take-home 1022.75 - 175.87 - 35.79 = 811.09.
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$811.09"));
    EXPECT_EQ(label("lblDeduct"), QStringLiteral("$35.79"));
    EXPECT_EQ(label("lblKiwiSaver"), QStringLiteral("$35.79"));
    EXPECT_EQ(label("lblTaxCredit"), QStringLiteral("$0.00"));
    EXPECT_EQ(app.CurrentTab, 6);
    EXPECT_EQ(paySlip(), slip({heading("Gross"), line("Ordinary Time (x1)", "40.11", "25.50", "1022.75"),
                               total("", "1022.75"), heading("Taxable Allowances", "0.00"), blank(),
                               total("Total Taxable", "1022.75"), total("PAYE", "-175.87"), total("Net", "846.88"),
                               blank(), heading("Non Taxable Allowances", "0.00"), blank(), heading("Deductions"),
                               line("KiwiSaver", "1022.75", "3.50", "35.79"), total("", "-35.79"), blank(),
                               total("Take Home Pay", "811.09"), blank(), heading("Employer Contributions"),
                               line("Employer KiwiSaver", "1022.75", "3.50", "35.79")}));

    // Accommodation (row 1 of the taxable view, rate 1) on 50: amount 50; a taxable allowance saves
    // itself at once. Taxable 1072.75: yearly 55,783; 1,911 + 37,900 x 19.25% = 7,295.75 + 2,283 x
    // 31.75% = 724.8525, total 9,931.6025; / 52 = 190.9923, cut 190.99. Accommodation stays outside
    // KiwiSaver: both KiwiSaver lines stay on 1022.75, 35.79. Take-home 1072.75 - 190.99 - 35.79 = 845.97.
    screen->cmdSelect_Click(2);
    ASSERT_EQ(screen->WageGridArray.rowCount(), 2);
    ASSERT_TRUE(screen->storeCell(1, 2, QStringLiteral("50")));
    EXPECT_EQ(label("lblTaxable"), QStringLiteral("$50.00"));
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$190.99"));
    EXPECT_EQ(money(QStringLiteral("SELECT TaxableAmount FROM TaxDetails WHERE WageID = %1").arg(wage)), cur("1072.75"));
    leaveView();
    EXPECT_EQ(amounts("TaxAllowDetails", "TaxableAllow", wage), (QList<ql::Currency>{cur("0"), cur("50")}));
    EXPECT_EQ(amounts("DeductionDetails", "AmountCalcon", wage), (QList<ql::Currency>{cur("1022.75")}));
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("35.79")}));
    EXPECT_EQ(amounts("ContributionDetails", "Contributions", wage), (QList<ql::Currency>{cur("35.79")}));
    EXPECT_EQ(wageColumn(wage, "Gross"), cur("1022.75"));
    EXPECT_EQ(wageColumn(wage, "TaxAllow"), cur("50"));
    EXPECT_EQ(wageColumn(wage, "TotalTaxable"), cur("1072.75"));
    EXPECT_EQ(wageColumn(wage, "PAYE"), cur("190.99"));
    EXPECT_EQ(wageColumn(wage, "Deductions"), cur("35.79"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"), cur("845.97"));
    EXPECT_EQ(wageColumn(wage, "KiwiSaverContribution"), cur("35.79"));
    EXPECT_EQ(wageColumn(wage, "ESCTDeductions"), cur("6.12"));
    EXPECT_EQ(paySlip(), slip({heading("Gross"), line("Ordinary Time (x1)", "40.11", "25.50", "1022.75"),
                               total("", "1022.75"), heading("Taxable Allowances"),
                               line("Accommodation", "50.00", "1.00", "50.00"), total("", "50.00"), blank(),
                               total("Total Taxable", "1072.75"), total("PAYE", "-190.99"), total("Net", "881.76"),
                               blank(), heading("Non Taxable Allowances", "0.00"), blank(), heading("Deductions"),
                               line("KiwiSaver", "1022.75", "3.50", "35.79"), total("", "-35.79"), blank(),
                               total("Take Home Pay", "845.97"), blank(), heading("Employer Contributions"),
                               line("Employer KiwiSaver", "1022.75", "3.50", "35.79")}));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

} // namespace
} // namespace qltest
