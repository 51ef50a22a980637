// Hours entered for single days of a pay: they give the pay's days and hours, stand where they were
// worked in the hours test, and fall in their own part of a period across a change of the minimum wage.
#include "HolidayFixture.h"
#include "holidays/HoursTest.h"
#include "holidays/MinimumWage.h"

using namespace qltest;
using namespace ql::holidays;
using ql::Currency;

namespace {

class DayHoursTest : public HolidayTest {};

} // namespace

TEST_F(DayHoursTest, HoursOfSingleDaysGiveThePaysDaysAndHours) {
    addEmployee(1, QDate(2025, 1, 6), 25.0);
    const int pay = addPay(1, QDate(2026, 5, 10), {{kOrdinary, 30, 25}});
    PayDays d;
    d.perDay = {{QDate(2026, 5, 4), 10.0f}, {QDate(2026, 5, 5), 12.5f}, {QDate(2026, 5, 6), 0.0f}, {QDate(2026, 5, 9), 7.5f}};
    SetPayDays(wage, pay, d);
    const PayDays back = PayDaysOf(wage, pay);
    EXPECT_EQ(back.perDay.size(), 4);
    EXPECT_EQ(back.days, 3.0f);  // the day with no hours is not a day worked
    EXPECT_EQ(back.hours, 30.0f);
    const QList<PayRecord> pays = LoadPays(wage, 1);
    ASSERT_EQ(pays.size(), 1);
    EXPECT_EQ(pays.first().dayHours.value(QDate(2026, 5, 5)), 12.5f);
    // Set again without single days, they are gone.
    SetPayDays(wage, pay, PayDays{2.0f, 16.0f, {}});
    EXPECT_TRUE(PayDaysOf(wage, pay).perDay.isEmpty());
    EXPECT_EQ(PayDaysOf(wage, pay).hours, 16.0f);
}

TEST(DayHoursHoursTest, HoursOfSingleDaysStandWhereTheyWereWorked) {
    // Fortnightly pays of 24 hours, all worked in the first week of each fortnight.
    QList<PayRecord> spread, entered;
    for (int i = 0; i < 14; ++i) {
        PayRecord p;
        p.wageID = i + 1;
        p.start = QDate(2026, 1, 5).addDays(14 * i);
        p.end = p.start.addDays(13);
        p.lineHours = 24;
        spread << p;
        p.dayHours = {{p.start, 8.0f}, {p.start.addDays(1), 8.0f}, {p.start.addDays(2), 8.0f}};
        entered << p;
    }
    // The six months to 4 July (5 January to 4 July, 181 days): twelve whole fortnights and 13 days of the
    // thirteenth, whose three working days are all in the window.
    const HoursTest s = SixMonthHoursTest(spread, QDate(2026, 7, 4));
    const HoursTest e = SixMonthHoursTest(entered, QDate(2026, 7, 4));
    EXPECT_NEAR(e.totalHours, 13 * 24.0, 1e-9);
    EXPECT_NEAR(s.totalHours, 12 * 24.0 + 24.0 * 13 / 14, 1e-9);
    EXPECT_NEAR(e.averageWeekly, 312.0 / (181.0 / 7), 1e-9);
    // Spread evenly, every week has 12 hours; as worked, every second week has none, but every month
    // still holds at least 40.
    EXPECT_NEAR(s.leastWeek, 12.0, 1e-9);
    EXPECT_EQ(e.leastWeek, 0.0);
    EXPECT_GE(e.leastMonth, 40.0);
    EXPECT_TRUE(e.passes);
}

TEST_F(DayHoursTest, TheMinimumWageTakesEachDaysHoursAtItsOwnRate) {
    // Monday 23 March to Sunday 5 April 2026: 70 hours before 1 April, 20 after, at $23.60.
    addEmployee(5, QDate(2025, 1, 6), 23.60, 0, 2);
    setPattern(5, QDate(2025, 1, 6), {8, 8, 8, 8, 8, 0, 0});
    const int pay = addPay(5, QDate(2026, 4, 5), {{kOrdinary, 80, 23.60}}, QStringLiteral("Fortnightly"));
    PayDays d;
    for (int i = 0; i < 5; ++i)
        d.perDay.insert(QDate(2026, 3, 23).addDays(i), 10.0f);
    d.perDay.insert(QDate(2026, 3, 30), 10.0f);
    d.perDay.insert(QDate(2026, 3, 31), 10.0f);
    d.perDay.insert(QDate(2026, 4, 1), 10.0f);
    d.perDay.insert(QDate(2026, 4, 2), 10.0f);
    SetPayDays(wage, pay, d);
    const MinimumWageCheck c = CheckMinimumWage(wage, pay);
    EXPECT_EQ(c.hours, 90.0f);
    EXPECT_EQ(c.hoursSource, QStringLiteral("entered"));
    ASSERT_EQ(c.parts.size(), 2);
    EXPECT_DOUBLE_EQ(c.parts.at(0).hours, 70.0);
    EXPECT_DOUBLE_EQ(c.parts.at(1).hours, 20.0);
    EXPECT_EQ(c.hoursShared, QStringLiteral("by the hours entered for each day"));
    // 70 x 23.50 + 20 x 23.95 = 1,645.00 + 479.00; the pay counts 1,888.00.
    EXPECT_EQ(c.minimum, cur("2124"));
    EXPECT_EQ(c.topUp, cur("236"));
}
