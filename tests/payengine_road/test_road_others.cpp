// The road of one pay for the other demo employees: each is given a first pay (which carries no tax
// yet), then the pay under test comes from the add pay button; one line is edited and the view left.
#include "RoadFixture.h"
#include "runtime/DateFns.h"

namespace qltest {
namespace {

QDate payDate(ql::Database& db, qint32 wageID) {
    return ql::CDate(db.scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(wageID)));
}

TEST_F(RoadTest, ManagerOnSalaryWithOwnKiwiSaverRateAndStudentLoan) {
    pick(Manager, QDate(2026, 3, 31));
    const qint32 wage = addPay();
    // Monthly: one month on, the day clamped to April's last.
    EXPECT_EQ(payDate(db(), wage), QDate(2026, 4, 30));
    // Salary line: 85,000 / 12 = 7,083.3333; units 50 x (52.14 / 12) = 217.25 (Single), rate 7,083.3333
    // / 217.25 = 32.6045.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", wage), (QList<ql::Currency>{cur("7083.3333")}));
    EXPECT_EQ(amounts("PaymentDetails", "EquivPayRate", wage), (QList<ql::Currency>{cur("32.6045")}));
    // Taxable 7,083.33 (copied). PAYE: yearly 84,999.96, whole dollars 84,999; 1,911 + 37,900 x 19.25%
    // = 7,295.75 + 24,600 x 31.75% = 7,810.50 + 6,899 x 34.75% = 2,397.4025: 19,414.6525; / 52 =
    // 373.3587, cut 373.35; x 52 / 12 = 1,617.85.
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$1,617.85"));
    // KiwiSaver at the employee's 4%: 283.3332, cut 283.33. Student loan by Inland Revenue's method: the
    // pay's whole dollars 7,083 less the monthly threshold 2,010.66 = 5,072.34; 12% = 608.6808, cut
    // 608.68.
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("283.33"), cur("608.68")}));
    EXPECT_EQ(amounts("DeductionDetails", "AmountCalcon", wage), (QList<ql::Currency>{cur("7083.33"), cur("5072.34")}));
    // Employer 3.5%: 247.91655, cut 247.91; ESCT on 247 whole dollars at 30% (yearly 84,999.96) = 74.10.
    EXPECT_EQ(amounts("ContributionDetails", "Contributions", wage), (QList<ql::Currency>{cur("247.91")}));
    EXPECT_EQ(amounts("ContributionDetails", "ESCT", wage), (QList<ql::Currency>{cur("74.1")}));
    EXPECT_EQ(label("lblESCT"), QStringLiteral("$74.10"));
    // Take-home 7,083.33 - 1,617.85 - 283.33 - 608.68 = 4,573.47.
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$4,573.47"));
    const QStringList top{heading("Gross"), line("Salary", "217.25", "32.60", "7083.33"), total("", "7083.33"),
                          heading("Taxable Allowances", "0.00"), blank(), total("Total Taxable", "7083.33"),
                          total("PAYE", "-1617.85"), total("Net", "5465.48"), blank()};
    const QStringList bottom{blank(), heading("Deductions"), line("KiwiSaver", "7083.33", "4.00", "283.33"),
                             line("Student Loan", "5072.34", "12.00", "608.68"), total("", "-892.01"), blank()};
    EXPECT_EQ(paySlip(), slip(top + QStringList{heading("Non Taxable Allowances", "0.00")} + bottom +
                              QStringList{total("Take Home Pay", "4573.47"), blank(), heading("Employer Contributions"),
                                          line("Employer KiwiSaver", "7083.33", "3.50", "247.91")}));

    // Vehicle reimbursement on 120 km at 1.00: 120 on top after tax. The stored cell shows the
    // take-home from the captions at once; leaving the view saves and rebuilds the slip.
    screen->cmdSelect_Click(4);
    ASSERT_EQ(screen->WageGridArray.rowCount(), 1);
    ASSERT_TRUE(screen->storeCell(0, 2, QStringLiteral("120")));
    EXPECT_EQ(label("lblNonTax"), QStringLiteral("$120.00"));
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$4,693.47"));
    leaveView();
    EXPECT_EQ(wageColumn(wage, "NonTaxAllow"), cur("120"));
    EXPECT_EQ(wageColumn(wage, "PAYE"), cur("1617.85"));
    // The slip adds 283.33 and 608.68 in Single: 892.01001, which the label keeps to four decimals.
    EXPECT_EQ(wageColumn(wage, "Deductions"), cur("892.01"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"), cur("4693.47"));
    EXPECT_EQ(paySlip(), slip(top + QStringList{heading("Non Taxable Allowances"),
                                                line("Vehicle Reimbursement", "120.00", "1.00", "120.00"),
                                                total("", "120.00")} +
                              bottom +
                              QStringList{total("Take Home Pay", "4693.47"), blank(), heading("Employer Contributions"),
                                          line("Employer KiwiSaver", "7083.33", "3.50", "247.91")}));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, ReliefMilkerOnSecondaryCodeGetsAnOvertimeLine) {
    pick(ReliefMilker, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    EXPECT_EQ(payDate(db(), wage), QDate(2026, 4, 20)); // fortnightly: 14 days on
    // 20 standard hours x (52.14 / 26) = 40.107693 (Single) x 28.00 = 1,123.0154.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", wage), (QList<ql::Currency>{cur("1123.0154")}));
    // S by Inland Revenue's method: the pay's whole dollars, 1,123 x (17.5% + 1.75%) = 216.1775, cut
    // 216.17. Not in KiwiSaver: no contributions, no section for them. Take-home 1,123.02 - 216.17 =
    // 906.85.
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$216.17"));
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$906.85"));
    EXPECT_EQ(label("lblKiwiSaver"), QStringLiteral("$0.00"));
    EXPECT_EQ(paySlip(), slip({heading("Gross"), line("Ordinary Time (x1)", "40.11", "28.00", "1123.02"),
                               total("", "1123.02"), heading("Taxable Allowances", "0.00"), blank(),
                               total("Total Taxable", "1123.02"), total("PAYE", "-216.17"), total("Net", "906.85"),
                               blank(), heading("Non Taxable Allowances", "0.00"), blank(), heading("Deductions", "0.00"),
                               blank(), total("Take Home Pay", "906.85")}));

    // A new line: overtime picked by name takes the name's bare multiplier 1.5 as its rate; 4 hours
    // give 6.00, then the rate typed as 42 gives 168.00.
    screen->cmdSelect_Click(1);
    ASSERT_EQ(screen->WageGridArray.rowCount(), 1);
    ASSERT_FALSE(screen->tgrdwages_BeforeRowChange());
    screen->WageGridArray.insertRow(1);
    ASSERT_TRUE(screen->storeCell(1, 1, QStringLiteral("2")));
    EXPECT_EQ(ql::CCur(screen->WageGridArray.value(1, 3)), cur("1.5"));
    ASSERT_TRUE(screen->storeCell(1, 2, QStringLiteral("4")));
    EXPECT_EQ(ql::CCur(screen->WageGridArray.value(1, 4)), cur("6"));
    ASSERT_TRUE(screen->storeCell(1, 3, QStringLiteral("42")));
    EXPECT_EQ(ql::CCur(screen->WageGridArray.value(1, 4)), cur("168"));
    leaveView();
    // The grid holds its money in the "currency" format, so the save stores the first line at
    // 1,123.02. Gross 1,123.02 + 168.00 = 1,291.02; PAYE on its whole dollars 1,291 x 19.25% = 248.5175,
    // cut 248.51; take-home 1,042.51.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", wage), (QList<ql::Currency>{cur("1123.02"), cur("168")}));
    EXPECT_EQ(wageColumn(wage, "Gross"), cur("1291.02"));
    EXPECT_EQ(wageColumn(wage, "PAYE"), cur("248.51"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"), cur("1042.51"));
    EXPECT_EQ(paySlip(), slip({heading("Gross"), line("Ordinary Time (x1)", "40.11", "28.00", "1123.02"),
                               line("Overtime (x1.5)", "4.00", "42.00", "168.00"), total("", "1291.02"),
                               heading("Taxable Allowances", "0.00"), blank(), total("Total Taxable", "1291.02"),
                               total("PAYE", "-248.51"), total("Net", "1042.51"), blank(),
                               heading("Non Taxable Allowances", "0.00"), blank(), heading("Deductions", "0.00"), blank(),
                               total("Take Home Pay", "1042.51")}));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, TractorDriverOnMEGetsTheCreditAndAToolAllowance) {
    pick(TractorDriver, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    EXPECT_EQ(payDate(db(), wage), QDate(2026, 4, 13));
    // 35 x (52.14 / 52) = 35.094231 (Single) x 24.00 = 842.2615.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", wage), (QList<ql::Currency>{cur("842.2615"), cur("0")}));
    // Yearly 842.26 x 52 = 43,797.52, whole 43,797, within 24,000-44,000: credit 520. Tax 1,911 +
    // 28,197 x 19.25% = 5,427.9225: 7,338.9225 (7,338.9224 through the Single rate); less 520 =
    // 6,818.92; / 52 = 131.1331, cut 131.13. Take-home 842.26 - 131.13 = 711.13.
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$131.13"));
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$711.13"));

    // Tool allowance on 3 at 10.00 = 30.00, saved at once. Yearly 872.26 x 52 = 45,357.52, whole
    // 45,357: still the whole credit of 520 (it abates only above 66,000). Tax 1,911 + 29,757 x 19.25%
    // = 5,728.2225: 7,639.2225; less 520 = 7,119.2225; / 52 = 136.9081, cut 136.90. Take-home
    // 872.26 - 136.90.
    screen->cmdSelect_Click(2);
    ASSERT_EQ(screen->WageGridArray.rowCount(), 1);
    ASSERT_TRUE(screen->storeCell(0, 2, QStringLiteral("3")));
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$136.90"));
    leaveView();
    EXPECT_EQ(wageColumn(wage, "TaxAllow"), cur("30"));
    EXPECT_EQ(wageColumn(wage, "TotalTaxable"), cur("872.26"));
    EXPECT_EQ(wageColumn(wage, "PAYE"), cur("136.9"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"), cur("735.36"));
    EXPECT_EQ(paySlip(), slip({heading("Gross"), line("Ordinary Time (x1)", "35.09", "24.00", "842.26"),
                               total("", "842.26"), heading("Taxable Allowances"),
                               line("Tool Allowance", "3.00", "10.00", "30.00"), total("", "30.00"), blank(),
                               total("Total Taxable", "872.26"), total("PAYE", "-136.90"), total("Net", "735.36"),
                               blank(), heading("Non Taxable Allowances", "0.00"), blank(), heading("Deductions", "0.00"),
                               blank(), total("Take Home Pay", "735.36")}));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, PartTimerFixedDeductionsSurviveATypedAmount) {
    pick(PartTimer, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    EXPECT_EQ(payDate(db(), wage), QDate(2026, 5, 4)); // four-weekly: 28 days on
    // 20 x (52.14 / 13) = 80.215385 (Single) x 26.00 = 2,085.6000.
    EXPECT_EQ(amounts("PaymentDetails", "Payment", wage), (QList<ql::Currency>{cur("2085.6")}));
    // Yearly 2,085.60 x 13 = 27,112.80, whole 27,112; 1,911 + 11,512 x 19.25% = 2,216.06: 4,127.06;
    // / 52 = 79.3665, cut 79.36; x 52 / 13 = 317.44. Board 120 and union 18.50 are fixed (100%).
    // Take-home 2,085.60 - 317.44 - 138.50 = 1,629.66. The lines are stored in the order of the
    // employee's rows (board, then union fees); the slip and the grid read them in the engine's order of
    // distinct rows, union fees (3) before board (4), and a save of the grid stores that order.
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$317.44"));
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("120"), cur("18.5")}));
    EXPECT_EQ(amounts("DeductionDetails", "Percentage", wage), (QList<ql::Currency>{cur("100"), cur("100")}));
    EXPECT_EQ(label("lblDeduct"), QStringLiteral("$138.50"));
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$1,629.66"));
    const std::string expected =
        slip({heading("Gross"), line("Ordinary Time (x1)", "80.22", "26.00", "2085.60"), total("", "2085.60"),
              heading("Taxable Allowances", "0.00"), blank(), total("Total Taxable", "2085.60"), total("PAYE", "-317.44"),
              total("Net", "1768.16"), blank(), heading("Non Taxable Allowances", "0.00"), blank(), heading("Deductions"),
              line("Union Fees", "18.50", "100.00", "18.50"), line("Board", "120.00", "100.00", "120.00"),
              total("", "-138.50"), blank(), total("Take Home Pay", "1629.66")});
    EXPECT_EQ(paySlip(), expected);

    // 20.00 typed over the union fee: its percentage becomes 108.108 and the total shows 140 at once;
    // the save's recalculation takes the employee's fixed 18.50 again, and the slip sets 138.50.
    screen->cmdSelect_Click(5);
    ASSERT_EQ(screen->WageGridArray.rowCount(), 2);
    ASSERT_TRUE(screen->storeCell(0, 4, QStringLiteral("20")));
    EXPECT_EQ(label("lblDeduct"), QStringLiteral("$140.00"));
    leaveView();
    EXPECT_EQ(amounts("DeductionDetails", "Deductions", wage), (QList<ql::Currency>{cur("18.5"), cur("120")}));
    EXPECT_EQ(amounts("DeductionDetails", "Percentage", wage), (QList<ql::Currency>{cur("100"), cur("100")}));
    EXPECT_EQ(wageColumn(wage, "Deductions"), cur("138.5"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"), cur("1629.66"));
    EXPECT_EQ(paySlip(), expected);
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

} // namespace
} // namespace qltest
