// What a leave is worth, worked out from an employee's pays and work pattern.
#include "HolidayFixture.h"
#include "holidays/LeavePay.h"
#include "runtime/VbError.h"

using namespace qltest;
using namespace ql::holidays;
using ql::Currency;

namespace {

class LeavePayTest : public HolidayTest {
protected:
    // The fixture's farm hand, with the winter and calving weeks it wrote.
    void addFarmHand() {
        const FarmHandWeeks n = HolidayTest::addFarmHand();
        winter = n.winter;
        calving = n.calving;
    }
    int winter = 0, calving = 0;
};

} // namespace

TEST_F(LeavePayTest, AFarmHandsWeekOfAnnualLeaveIsPaidAtAverageWeeklyEarnings) {
    addFarmHand();
    ASSERT_EQ(winter, 8);
    ASSERT_EQ(calving, 10);
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Annual, QDate(2026, 12, 7), 5);
    // Gross earnings: 10 x 1,750 + 8 x 750 + 34 x 1,000 = 57,500; over 52 weeks 1,105.7692.
    EXPECT_EQ(r.awe.grossEarnings, cur("57500"));
    EXPECT_EQ(r.awe.divisor, 52.0);
    EXPECT_EQ(r.awe.amount, cur("1105.7692"));
    EXPECT_EQ(r.awe.to, QDate(2026, 12, 6));
    EXPECT_EQ(r.awe.from, QDate(2025, 12, 7));
    EXPECT_EQ(r.awe.wageIDs.size(), 52);
    // The last four weeks were plain 40-hour weeks.
    EXPECT_EQ(r.owp.amount, cur("1000"));
    EXPECT_EQ(r.owp.wageIDs.size(), 4);
    EXPECT_EQ(r.rateUsed, QStringLiteral("AWE"));
    EXPECT_EQ(r.daysPerWeek, 5);
    EXPECT_EQ(r.amount, cur("1105.77"));
}

TEST_F(LeavePayTest, OvertimeMarkedRegularCountsInOrdinaryWeeklyPay) {
    addFarmHand();
    // Leave at the end of calving: the last four weeks carry 20 hours of overtime each.
    const LeavePayResult irregular = ComputeLeavePay(wage, 1, LeaveKind::Annual, QDate(2026, 10, 5), 5);
    EXPECT_EQ(irregular.owp.amount, cur("1000"));
    EXPECT_EQ(irregular.owp.leftOut, cur("3000"));
    SetNameKind(wage, QStringLiteral("payment"), kOvertime, QStringLiteral("overtime-regular"));
    const LeavePayResult regular = ComputeLeavePay(wage, 1, LeaveKind::Annual, QDate(2026, 10, 5), 5);
    EXPECT_EQ(regular.owp.amount, cur("1750"));
    EXPECT_EQ(regular.rateUsed, QStringLiteral("OWP"));
    EXPECT_EQ(regular.amount, cur("1750"));
}

TEST_F(LeavePayTest, TwoDaysOfAnnualLeaveAreTwoFifthsOfTheWeek) {
    addFarmHand();
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Annual, QDate(2026, 12, 7), 2);
    EXPECT_EQ(r.amount, cur("442.31")); // 1,105.7692 x 2 / 5 = 442.30768
}

TEST_F(LeavePayTest, APublicHolidayOnARosteredDayIsPaidAtRelevantDailyPay) {
    addFarmHand();
    // Labour Day 2026 is Monday 26 October, a working day of the pattern.
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2026, 10, 26), 1);
    EXPECT_EQ(r.rateUsed, QStringLiteral("RDP"));
    EXPECT_EQ(r.rdp.amount, cur("200"));
    EXPECT_EQ(r.amount, cur("200"));
    ASSERT_EQ(r.dayList.size(), 1);
    EXPECT_TRUE(r.dayList.at(0).note.startsWith(QStringLiteral("Labour Day")));
}

TEST_F(LeavePayTest, APublicHolidayOnARosteredDayOffIsNotPaid) {
    addFarmHand();
    // From 1 October the farm hand works Tuesday to Saturday.
    setPattern(1, QDate(2026, 10, 1), {0, 8, 8, 8, 8, 8, 0});
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2026, 10, 26), 1);
    EXPECT_EQ(r.amount, Currency());
    ASSERT_EQ(r.dayList.size(), 1);
    EXPECT_TRUE(r.dayList.at(0).note.contains(QStringLiteral("not an otherwise working day")));
}

TEST_F(LeavePayTest, APublicHolidayWorkedIsTimeAndAHalfAndAnAlternativeHoliday) {
    addFarmHand();
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2026, 10, 26), 1, 8);
    EXPECT_EQ(r.workedPay, cur("300")); // 8 hours x 25 x 1.5
    EXPECT_TRUE(r.alternativeEarned);
    EXPECT_EQ(r.amount, cur("300"));
}

TEST_F(LeavePayTest, APenalRateAboveTimeAndAHalfIsPaidWhenTheTermsGiveOne) {
    addFarmHand();
    HolidayTerms t = TermsOf(wage, 1);
    t.penalRate = 2.0f; // double time in the agreement
    SetTerms(wage, 1, t);
    EXPECT_EQ(TermsOf(wage, 1).penalRate, 2.0f);
    LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2026, 10, 26), 1, 8);
    EXPECT_EQ(r.timeAndAHalf, cur("300"));
    EXPECT_EQ(r.penalPay, cur("400")); // 8 hours x 25 x 2
    EXPECT_EQ(r.workedPay, cur("400"));
    EXPECT_EQ(r.rateUsed, QStringLiteral("penal rate"));
    EXPECT_TRUE(r.alternativeEarned);
    EXPECT_TRUE(r.notes.join(u' ').contains(QStringLiteral("time and a half 300.00, the penal rate (x2.00) 400.00")));
    // A penal rate below time and a half (time and a quarter) leaves time and a half.
    t.penalRate = 1.25f;
    SetTerms(wage, 1, t);
    r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2026, 10, 26), 1, 8);
    EXPECT_EQ(r.penalPay, cur("250"));
    EXPECT_EQ(r.workedPay, cur("300"));
    EXPECT_EQ(r.rateUsed, QStringLiteral("time and a half"));
}

TEST_F(LeavePayTest, PublicHolidaysInAFortnightAreFound) {
    addFarmHand();
    // Christmas 2026 is a Friday; Boxing Day, a Saturday, moves to Monday 28 December for a
    // Monday-to-Friday worker. New Year's Day 2027 is a Friday; the day after, a Saturday, moves to
    // Monday 4 January, after these 14 days.
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2026, 12, 21), 14);
    ASSERT_EQ(r.dayList.size(), 3);
    EXPECT_EQ(r.dayList.at(1).date, QDate(2026, 12, 28));
    EXPECT_EQ(r.dayList.at(2).date, QDate(2027, 1, 1));
    EXPECT_EQ(r.amount, cur("600"));
}

TEST_F(LeavePayTest, AverageDailyPayUsesTheDaysEntered) {
    addFarmHand();
    // Every pay says 5 days worked: 57,500 over 260 days = 221.1538.
    for (const QVariant& id : wage.firstColumn(QStringLiteral("SELECT WageID FROM Wages WHERE EmployeeID = 1")))
        SetPayDays(wage, id.toInt(), PayDays{5.0f, std::nullopt});
    HolidayTerms t;
    t.dailyPay = DailyPayChoice::Average;
    SetTerms(wage, 1, t);
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Sick, QDate(2026, 12, 7), 2);
    EXPECT_EQ(r.adp.days, 260.0f);
    EXPECT_EQ(r.adp.amount, cur("221.1538"));
    EXPECT_EQ(r.rateUsed, QStringLiteral("ADP"));
    EXPECT_EQ(r.amount, cur("442.30")); // 2 x 221.15
}

TEST_F(LeavePayTest, SickDaysSkipTheDaysNotWorked) {
    addFarmHand();
    // Friday 11 December and the following Monday: the weekend is not paid.
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Sick, QDate(2026, 12, 11), 2);
    ASSERT_EQ(r.dayList.size(), 2);
    EXPECT_EQ(r.dayList.at(1).date, QDate(2026, 12, 14));
    EXPECT_EQ(r.amount, cur("400"));
}

TEST_F(LeavePayTest, AnUnknownEmployeeIsRefusedWithAMessage) {
    try {
        ComputeLeavePay(wage, 99, LeaveKind::Annual, QDate(2026, 12, 7), 5);
        FAIL() << "no error";
    } catch (const ql::VbError& e) {
        EXPECT_EQ(e.description(), QStringLiteral("Employee 99 is not on the payroll."));
    }
}
