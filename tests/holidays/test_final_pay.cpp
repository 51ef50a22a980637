// Balances, final pay, leave liability and holiday pay as you go.
#include "HolidayFixture.h"
#include "holidays/CashUp.h"
#include "holidays/Entitlements.h"
#include "holidays/FinalPay.h"
#include "holidays/LeaveLiability.h"
#include "holidays/PayAsYouGo.h"
#include "runtime/VbError.h"

using namespace qltest;
using namespace ql::holidays;
using ql::Currency;

namespace {

class FinalPayTest : public HolidayTest {
protected:
    void addLedger(int employee, int leaveType, int trans, double days, const QDate& from, const QDate& to) {
        wage.execute(QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                                    "DateFrom, DateTo) VALUES (?, ?, ?, ?, ?, ?)"),
                     {employee, leaveType, trans, days, from.toString(Qt::ISODate), to.toString(Qt::ISODate)});
    }
};

const FinalPayLine* line(const FinalPayResult& r, const char* component) {
    for (const FinalPayLine& l : r.lines)
        if (l.component == QLatin1String(component)) return &l;
    return nullptr;
}

} // namespace

TEST_F(FinalPayTest, FourWeeksAtEachAnniversaryLessWhatWasTaken) {
    addFarmHand();
    addLedger(1, 1, 2, 10, QDate(2026, 1, 12), QDate(2026, 1, 23));
    const AnnualBalance b = AnnualBalanceOn(wage, 1, QDate(2026, 12, 11));
    EXPECT_EQ(b.completedYears, 2);
    EXPECT_EQ(b.lastAnniversary, QDate(2026, 3, 4));
    EXPECT_EQ(b.nextAnniversary, QDate(2027, 3, 4));
    EXPECT_DOUBLE_EQ(b.entitledWeeks, 8.0);
    EXPECT_DOUBLE_EQ(b.takenWeeks, 2.0);
    EXPECT_DOUBLE_EQ(b.balanceWeeks, 6.0);
}

TEST_F(FinalPayTest, UnpaidLeaveBeyondAWeekMovesTheAnniversary) {
    addFarmHand();
    addLedger(1, 5, 2, 15, QDate(2025, 5, 1), QDate(2025, 5, 21)); // 21 calendar days
    const AnnualBalance b = AnnualBalanceOn(wage, 1, QDate(2026, 3, 10));
    EXPECT_EQ(b.unpaidDaysMoved, 14);
    EXPECT_EQ(b.completedYears, 1);
    EXPECT_EQ(b.nextAnniversary, QDate(2026, 3, 18));
}

TEST_F(FinalPayTest, TenSickDaysAYearCarriedOverToTwenty) {
    addFarmHand();
    addLedger(1, 2, 2, 3, QDate(2026, 5, 11), QDate(2026, 5, 13));
    const SickBalance june = SickBalanceOn(wage, 1, QDate(2026, 6, 1));
    EXPECT_EQ(june.firstEntitled, QDate(2024, 9, 4));
    EXPECT_DOUBLE_EQ(june.balanceDays, 17.0);
    // On 4 September 2026 ten more days come, but the balance stops at 20.
    EXPECT_DOUBLE_EQ(SickBalanceOn(wage, 1, QDate(2026, 12, 1)).balanceDays, 20.0);
    EXPECT_DOUBLE_EQ(SickBalanceOn(wage, 1, QDate(2024, 9, 3)).balanceDays, 0.0);
}

TEST_F(FinalPayTest, TheFarmHandsFinalPay) {
    addFarmHand();
    addLedger(1, 1, 2, 10, QDate(2026, 1, 12), QDate(2026, 1, 23));
    EarnAlternativeHoliday(wage, 1, QDate(2026, 10, 26), QStringLiteral("Labour Day worked"));
    const FinalPayResult r = ComputeFinalPay(wage, 1, QDate(2026, 12, 11));
    // Six weeks at AWE 1,105.7692.
    const FinalPayLine* annual = line(r, "annual-holidays");
    ASSERT_NE(annual, nullptr);
    EXPECT_EQ(annual->rate, cur("1105.7692"));
    EXPECT_EQ(annual->amount, cur("6634.62"));
    // 8% of the 40 pays since 4 March 2026: 8 x 750 + 10 x 1,750 + 22 x 1,000 = 45,500.
    EXPECT_EQ(r.grossSinceAnniversary, cur("45500"));
    const FinalPayLine* eight = line(r, "eight-percent");
    ASSERT_NE(eight, nullptr);
    EXPECT_EQ(eight->amount, cur("3640"));
    const FinalPayLine* alternative = line(r, "alternative-holidays");
    ASSERT_NE(alternative, nullptr);
    EXPECT_EQ(alternative->amount, cur("200"));
    // 30 working days laid out from Monday 14 December take in Christmas, Boxing Day (Monday 28),
    // New Year's Day and the day after (Monday 4 January).
    ASSERT_EQ(r.publicHolidays.size(), 4);
    EXPECT_EQ(r.publicHolidays.at(3), QDate(2027, 1, 4));
    EXPECT_EQ(line(r, "public-holidays")->amount, cur("800"));
    EXPECT_EQ(r.total, cur("11274.62"));
}

TEST_F(FinalPayTest, BeforeTheFirstAnniversaryEightPercentSinceTheStart) {
    addEmployee(2, QDate(2026, 6, 1), 25.0);
    for (QDate end(2026, 6, 7); end <= QDate(2026, 11, 29); end = end.addDays(7))
        addPay(2, end, {{kOrdinary, 40, 25}});
    const FinalPayResult r = ComputeFinalPay(wage, 2, QDate(2026, 12, 4));
    EXPECT_EQ(line(r, "annual-holidays"), nullptr);
    EXPECT_EQ(r.lastAnniversary, QDate(2026, 6, 1));
    EXPECT_EQ(r.grossSinceAnniversary, cur("26000")); // 26 pays
    EXPECT_EQ(r.total, cur("2080"));
}

TEST_F(FinalPayTest, FinalPayLinesGoOnAnUncommittedPay) {
    addFarmHand();
    const int pay = addPay(1, QDate(2026, 12, 13), {{kOrdinary, 40, 25}});
    const FinalPayResult r = ComputeFinalPay(wage, 1, QDate(2026, 12, 11));
    AddFinalPayLines(wage, pay, r);
    const QVariant sum =
        wage.scalar(QStringLiteral("SELECT sum(Payment) FROM PaymentDetails WHERE WageID = %1").arg(pay));
    EXPECT_NEAR(sum.toDouble(), 1000.0 + r.total.toDouble(), 0.00001);
    // Added twice, the lines are replaced, not doubled.
    AddFinalPayLines(wage, pay, r);
    EXPECT_NEAR(wage.scalar(QStringLiteral("SELECT sum(Payment) FROM PaymentDetails WHERE WageID = %1").arg(pay)).toDouble(),
                1000.0 + r.total.toDouble(), 0.00001);
    wage.execute(QStringLiteral("UPDATE Wages SET Reference = 'X' WHERE WageID = %1").arg(pay));
    EXPECT_THROW(AddFinalPayLines(wage, pay, r), ql::VbError);
}

TEST_F(FinalPayTest, TheLeaveLiabilityOfADay) {
    addFarmHand();
    addLedger(1, 1, 2, 10, QDate(2026, 1, 12), QDate(2026, 1, 23));
    addEmployee(9, QDate(2027, 1, 4), 25.0); // not yet started
    const Liability l = LeaveLiabilityOn(wage, QDate(2026, 12, 11));
    ASSERT_EQ(l.rows.size(), 1);
    EXPECT_DOUBLE_EQ(l.rows.at(0).annualWeeks, 6.0);
    EXPECT_EQ(l.rows.at(0).annualValue, cur("6634.62"));
    EXPECT_EQ(l.rows.at(0).accrued, cur("3640"));
    EXPECT_DOUBLE_EQ(l.rows.at(0).sickDays, 20.0);
    EXPECT_EQ(l.total, cur("10274.62"));
    const QStringList lines = LiabilityCsv(l).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines.at(1).startsWith(QStringLiteral("1,Employee 1,6.0000,1105.77,AWE,6634.62,3640.00,20.0,0,")));
    EXPECT_TRUE(lines.at(2).endsWith(QStringLiteral(",10274.62")));
}

// Employment New Zealand's pay-as-you-go example: 15 hours at $20 is $300; 8% of it is $24, and the
// week's gross with holiday pay $324.
// https://www.employment.govt.nz/leave-and-holidays/annual-holidays/fixed-term-changing-patterns/
TEST_F(FinalPayTest, EmploymentNewZealandsPayAsYouGoExample) {
    addEmployee(3, QDate(2026, 11, 2), 20.0);
    const int pay = addPay(3, QDate(2026, 11, 8), {{kOrdinary, 15, 20}});
    PayAsYouGoResult r = PayAsYouGoOf(wage, pay);
    EXPECT_FALSE(r.allowed);
    EXPECT_THROW(ApplyPayAsYouGo(wage, r), ql::VbError);
    HolidayTerms t;
    t.payAsYouGo = true;
    SetTerms(wage, 3, t);
    r = PayAsYouGoOf(wage, pay);
    EXPECT_EQ(r.grossEarnings, cur("300"));
    EXPECT_EQ(r.holidayPay, cur("24"));
    ApplyPayAsYouGo(wage, r);
    EXPECT_NEAR(wage.scalar(QStringLiteral("SELECT sum(Payment) FROM PaymentDetails WHERE WageID = %1").arg(pay)).toDouble(),
                324.0, 0.00001);
    // Worked out again, the 8% already on the pay does not count in the gross it is worked out on.
    EXPECT_EQ(PayAsYouGoOf(wage, pay).holidayPay, cur("24"));
    EXPECT_EQ(PayAsYouGoOf(wage, pay).onPay, cur("24"));
}

// Inland Revenue's example of a seasonal fruit packer: ten weeks at $25 an hour, a final week's gross of
// $1,000, and $800 of 8% holiday pay in the final pay (the tax on it, $96.80, is the tax engine's).
// Payroll Calculations and Business Rules Specification 2025 V1.3, 5.5, from
// https://github.com/InlandRevenue/File_Upload_Services-Returns-and-Information/tree/master/Service%20-%20Payday%20Filing
// The example does not give the weekly hours; 40 hours ($1,000 a week) are what its figures imply.
TEST_F(FinalPayTest, InlandRevenuesFruitPackerGetsEightPercentOfTenWeeks) {
    addEmployee(4, QDate(2026, 2, 2), 25.0);
    QDate end(2026, 2, 8);
    for (int week = 0; week < 10; ++week, end = end.addDays(7))
        addPay(4, end, {{kOrdinary, 40, 25}});
    const FinalPayResult r = ComputeFinalPay(wage, 4, QDate(2026, 4, 12));
    EXPECT_EQ(r.grossSinceAnniversary, cur("10000"));
    ASSERT_EQ(r.lines.size(), 1u);
    EXPECT_EQ(r.lines.at(0).component, QStringLiteral("eight-percent"));
    EXPECT_EQ(r.lines.at(0).amount, cur("800"));
    EXPECT_EQ(r.total, cur("800"));
}

TEST_F(FinalPayTest, AWeekMayBeCashedUpEachEntitlementYear) {
    addFarmHand();
    const int pay = addPay(1, QDate(2026, 12, 13), {{kOrdinary, 40, 25}});
    CashUpResult r = ComputeCashUp(wage, 1, QDate(2026, 12, 7), 1.5);
    EXPECT_FALSE(r.refusal.isEmpty()); // more than a week
    EXPECT_THROW(ApplyCashUp(wage, pay, r), ql::VbError);
    r = ComputeCashUp(wage, 1, QDate(2026, 12, 7), 1);
    EXPECT_TRUE(r.refusal.isEmpty()) << r.refusal.toStdString();
    EXPECT_EQ(r.rateUsed, QStringLiteral("AWE"));
    EXPECT_EQ(r.amount, cur("1105.77"));
    ApplyCashUp(wage, pay, r);
    // The week comes off the balance, and a second week in the same year is refused.
    EXPECT_DOUBLE_EQ(AnnualBalanceOn(wage, 1, QDate(2026, 12, 8)).balanceWeeks, 7.0);
    const CashUpResult again = ComputeCashUp(wage, 1, QDate(2026, 12, 8), 0.5);
    EXPECT_DOUBLE_EQ(again.cashedUpThisYear, 1.0);
    EXPECT_TRUE(again.refusal.startsWith(QStringLiteral("At most one week a year")));
    // The cash-up is not gross earnings.
    EXPECT_EQ(ComputeFinalPay(wage, 1, QDate(2026, 12, 13)).grossSinceAnniversary, cur("46500"));
}
