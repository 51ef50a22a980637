// When sick, bereavement and family violence leave are due: six months' continuous employment, or the
// hours test for work that is not continuous; family violence leave not carried over; bereavement per death.
#include "HolidayFixture.h"
#include "holidays/Entitlements.h"
#include "holidays/HoursTest.h"
#include "holidays/LeavePay.h"

using namespace qltest;
using namespace ql::holidays;

namespace {

// Weekly pays (Monday to Sunday) of the given hours from the week starting `monday`; zero hours leave the
// week without a pay.
QList<PayRecord> weeklyPays(const QDate& monday, const QList<double>& hours) {
    QList<PayRecord> pays;
    for (int i = 0; i < hours.size(); ++i) {
        if (hours.at(i) <= 0) continue;
        PayRecord p;
        p.wageID = i + 1;
        p.start = monday.addDays(7 * i);
        p.end = p.start.addDays(6);
        p.lineHours = float(hours.at(i));
        pays << p;
    }
    return pays;
}

Employee casual(const QDate& hired) {
    Employee e;
    e.employeeID = 1;
    e.hired = hired;
    return e;
}

class SickLeaveTest : public HolidayTest {
protected:
    void setContinuous(int employee, bool continuous) {
        HolidayTerms t = TermsOf(wage, employee);
        t.continuous = continuous;
        SetTerms(wage, employee, t);
    }
};

} // namespace

TEST(HoursTestTest, TwelveHoursEveryWeekMeetsTheTest) {
    const QDate hired(2026, 1, 5); // a Monday
    const QList<PayRecord> pays = weeklyPays(hired, QList<double>(90, 12.0));
    const HoursTest t = SixMonthHoursTest(pays, QDate(2026, 7, 4));
    EXPECT_EQ(t.from, hired);
    // 181 days at 12/7 hours a day: 310.29 hours, 12 a week; the shortest month (5 February to 4 March,
    // 28 days) holds 48.
    EXPECT_NEAR(t.totalHours, 12.0 * 181 / 7, 1e-9);
    EXPECT_NEAR(t.averageWeekly, 12.0, 1e-9);
    EXPECT_NEAR(t.leastWeek, 12.0, 1e-9);
    EXPECT_NEAR(t.leastMonth, 48.0, 1e-9);
    EXPECT_TRUE(t.passes);
    const LeaveEntitlement e = EntitlementDates(casual(hired), pays, false, QDate(2027, 12, 31));
    // Entitled the day after the first six months, and again at each 12 months while the test is met.
    ASSERT_EQ(e.grants.size(), 2);
    EXPECT_EQ(e.grants.at(0), QDate(2026, 7, 5));
    EXPECT_EQ(e.grants.at(1), QDate(2027, 7, 5));
    EXPECT_TRUE(e.basis.contains(QStringLiteral("hours test")));
}

TEST(HoursTestTest, EightHoursAWeekIsTooFew) {
    const QDate hired(2026, 1, 5);
    const QList<PayRecord> pays = weeklyPays(hired, QList<double>(60, 8.0));
    EXPECT_FALSE(SixMonthHoursTest(pays, QDate(2026, 7, 4)).passes);
    const LeaveEntitlement e = EntitlementDates(casual(hired), pays, false, QDate(2026, 12, 31));
    EXPECT_FALSE(e.entitled());
    EXPECT_NEAR(e.lastTest.averageWeekly, 8.0, 1e-9);
    // Continuous employment needs no hours test.
    EXPECT_EQ(EntitlementDates(casual(hired), pays, true, QDate(2026, 12, 31)).grants,
              QList<QDate>({QDate(2026, 7, 5)}));
}

TEST(HoursTestTest, AThreeWeekGapPutsTheEntitlementOffUntilEveryMonthHasFortyHours) {
    const QDate hired(2026, 1, 5);
    QList<double> hours(60, 20.0);
    hours[5] = hours[6] = hours[7] = 0; // 9 February to 1 March
    const QList<PayRecord> pays = weeklyPays(hired, hours);
    // Enough on average (about 17.7 a week) but no hour in three weeks, and 40 in no month around them.
    const HoursTest atSix = SixMonthHoursTest(pays, QDate(2026, 7, 4));
    EXPECT_GT(atSix.averageWeekly, 10.0);
    EXPECT_EQ(atSix.leastWeek, 0.0);
    EXPECT_LT(atSix.leastMonth, 40.0);
    EXPECT_FALSE(atSix.passes);
    const LeaveEntitlement e = EntitlementDates(casual(hired), pays, false, QDate(2026, 12, 31));
    ASSERT_TRUE(e.entitled());
    // The six months to 15 July: a week without an hour remains, but every month counted back from
    // 15 July holds 40 hours or more (16 February to 15 March: the 14 days after the gap, 40 hours).
    EXPECT_EQ(e.grants.first(), QDate(2026, 7, 16));
    EXPECT_EQ(e.lastTest.to, QDate(2026, 7, 15));
    EXPECT_EQ(e.lastTest.leastWeek, 0.0);
    EXPECT_NEAR(e.lastTest.leastMonth, 40.0, 1e-9);
    EXPECT_TRUE(e.lastTest.passes);
    EXPECT_FALSE(SixMonthHoursTest(pays, QDate(2026, 7, 14)).passes);
    EXPECT_TRUE(e.lastTest.working().endsWith(QStringLiteral("met"))) << e.lastTest.working().toStdString();
}

TEST_F(SickLeaveTest, ACasualsSickBalanceComesFromTheHoursOfThePays) {
    addEmployee(1, QDate(2026, 1, 5), 25.0);
    setContinuous(1, false);
    for (int w = 0; w < 40; ++w)
        addPay(1, QDate(2026, 1, 11).addDays(7 * w), {{kOrdinary, 12, 25}});
    SickBalance b = SickBalanceOn(wage, 1, QDate(2026, 7, 4));
    EXPECT_FALSE(b.firstEntitled.isValid());
    EXPECT_EQ(b.balanceDays, 0.0);
    b = SickBalanceOn(wage, 1, QDate(2026, 7, 5));
    EXPECT_EQ(b.firstEntitled, QDate(2026, 7, 5));
    EXPECT_EQ(b.balanceDays, 10.0);
    EXPECT_TRUE(b.hoursTest.contains(QStringLiteral("an average of 12.00 a week"))) << b.hoursTest.toStdString();
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Sick, QDate(2026, 7, 1), 1);
    EXPECT_TRUE(r.checked);
    EXPECT_FALSE(r.entitled);
    EXPECT_TRUE(r.beyondEntitlement);
    EXPECT_TRUE(r.notes.join(u' ').contains(QStringLiteral("No leave of this kind is due on 2026-07-01")));
}

TEST_F(SickLeaveTest, FamilyViolenceLeaveIsTenDaysAYearNotCarriedOver) {
    addEmployee(1, QDate(2025, 1, 6), 25.0);
    EXPECT_FALSE(FamilyViolenceBalanceOn(wage, 1, QDate(2025, 7, 1)).yearFrom.isValid());
    const int pay = addPay(1, QDate(2026, 3, 1), {{kOrdinary, 40, 25}});
    const qint32 name = PaymentNameForKind(wage, EarningKind::FamilyViolenceLeavePay, QStringLiteral("Family Violence Leave Pay"));
    wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) "
                                "VALUES (?, ?, 3, 200, 600)"),
                 {pay, name});
    FamilyViolenceBalance b = FamilyViolenceBalanceOn(wage, 1, QDate(2026, 4, 1));
    EXPECT_EQ(b.yearFrom, QDate(2025, 7, 6));
    EXPECT_EQ(b.takenDays, 3.0);
    EXPECT_EQ(b.balanceDays, 7.0);
    // A new year of entitlement: 10 again, the 7 left not added.
    b = FamilyViolenceBalanceOn(wage, 1, QDate(2026, 8, 1));
    EXPECT_EQ(b.yearFrom, QDate(2026, 7, 6));
    EXPECT_EQ(b.balanceDays, 10.0);
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::FamilyViolence, QDate(2026, 4, 1), 8);
    EXPECT_TRUE(r.entitled);
    EXPECT_EQ(r.availableDays, 7.0);
    EXPECT_TRUE(r.beyondEntitlement);
}

TEST_F(SickLeaveTest, BereavementIsThreeDaysForACloseRelativeAndOneOtherwise) {
    addEmployee(1, QDate(2026, 1, 5), 25.0);
    EXPECT_FALSE(BereavementOn(wage, 1, QDate(2026, 6, 30), true).entitled);
    EXPECT_EQ(BereavementOn(wage, 1, QDate(2026, 6, 30), true).days, 0);
    EXPECT_EQ(BereavementOn(wage, 1, QDate(2026, 7, 6), true).days, 3);
    EXPECT_EQ(BereavementOn(wage, 1, QDate(2026, 7, 6), false).days, 1);
    setPattern(1, QDate(2026, 1, 5), {8, 8, 8, 8, 8, 0, 0});
    const LeavePayResult close = ComputeLeavePay(wage, 1, LeaveKind::Bereavement, QDate(2026, 8, 3), 3, 0, true);
    EXPECT_TRUE(close.entitled);
    EXPECT_FALSE(close.beyondEntitlement);
    EXPECT_EQ(close.amount, ql::Currency::fromDouble(3 * 8 * 25.0)); // three days at RDP of 200
    const LeavePayResult other = ComputeLeavePay(wage, 1, LeaveKind::Bereavement, QDate(2026, 8, 3), 3, 0, false);
    EXPECT_EQ(other.availableDays, 1.0);
    EXPECT_TRUE(other.beyondEntitlement);
}
