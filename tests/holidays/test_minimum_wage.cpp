// The minimum wage check of a pay: each pay period alone, each part of it at the rate then in force.
#include "HolidayFixture.h"
#include "holidays/MinimumWage.h"
#include "runtime/VbError.h"

using namespace qltest;
using namespace ql::holidays;
using ql::Currency;

namespace {

class MinimumWageTest : public HolidayTest {};

} // namespace

TEST_F(MinimumWageTest, RatesAreKeptByDate) {
    EXPECT_EQ(MinimumHourlyRate(QDate(2026, 4, 1), MinimumWageRate::Adult), cur("23.95"));
    EXPECT_EQ(MinimumHourlyRate(QDate(2026, 3, 31), MinimumWageRate::Adult), cur("23.50"));
    EXPECT_EQ(MinimumHourlyRate(QDate(2026, 4, 1), MinimumWageRate::StartingOut), cur("19.16"));
    EXPECT_EQ(MinimumHourlyRate(QDate(2026, 4, 1), MinimumWageRate::Training), cur("19.16"));
    EXPECT_EQ(MinimumHourlyRate(QDate(2024, 6, 1), MinimumWageRate::Adult), cur("23.15"));
    // Starting-out and training rates are 80% of the adult rate in every year kept.
    for (const MinimumWageRates& r : MinimumWageHistory())
        EXPECT_EQ(r.startingOut, cur(QString::number(r.adult.toDouble() * 0.8, 'f', 2).toLatin1().constData()));
}

TEST_F(MinimumWageTest, ASalariedManagersSeventyHourFortnightGetsATopUp) {
    // $42,000 a year over 26 fortnights is 1,615.3846; 70 hours at 23.95 must earn 1,676.50.
    addEmployee(2, QDate(2020, 6, 1), 0, 42000, 2);
    const int pay = addPay(2, QDate(2026, 9, 13), {{kSalary, 100, 16.153846}}, QStringLiteral("Fortnightly"));
    wage.execute(QStringLiteral("UPDATE PaymentDetails SET Payment = 1615.3846 WHERE WageID = %1").arg(pay));
    SetPayDays(wage, pay, PayDays{std::nullopt, 70.0f});
    const MinimumWageCheck c = CheckMinimumWage(wage, pay);
    EXPECT_EQ(c.periodStart, QDate(2026, 8, 31));
    EXPECT_EQ(c.hours, 70.0f);
    EXPECT_EQ(c.hoursSource, QStringLiteral("entered"));
    EXPECT_EQ(c.payThatCounts, cur("1615.3846"));
    EXPECT_EQ(c.minimum, cur("1676.50"));
    EXPECT_EQ(c.topUp, cur("61.12"));
    EXPECT_FALSE(c.message.isEmpty());
    ApplyMinimumWageTopUp(wage, c);
    const QVariantList line = wage.firstRow(
        QStringLiteral("SELECT n.PayUnitname, d.Payment FROM PaymentDetails d JOIN PaymentNames n ON "
                       "n.PaymentNameID = d.PaymentNameID WHERE d.WageID = %1 AND n.EarningKind = 'minimum-wage-top-up'")
            .arg(pay));
    ASSERT_EQ(line.size(), 2);
    EXPECT_EQ(line.at(0).toString(), QStringLiteral("Minimum wage top-up"));
    EXPECT_DOUBLE_EQ(line.at(1).toDouble(), 61.12);
    // Checked again, the top-up on the pay is not counted as pay for the hours, and stays due.
    const MinimumWageCheck again = CheckMinimumWage(wage, pay);
    EXPECT_EQ(again.existingTopUp, cur("61.12"));
    EXPECT_EQ(again.topUp, cur("61.12"));
}

TEST_F(MinimumWageTest, ACalvingFortnightOfLongHoursOnAFullSalary) {
    // $60,000 a year: 2,307.6923 a fortnight against 140 hours at 23.95 = 3,353.00.
    addEmployee(3, QDate(2020, 6, 1), 0, 60000, 2);
    const int pay = addPay(3, QDate(2026, 8, 30), {{kSalary, 1, 2307.6923}}, QStringLiteral("Fortnightly"));
    SetPayDays(wage, pay, PayDays{12.0f, 140.0f});
    const MinimumWageCheck c = CheckMinimumWage(wage, pay);
    EXPECT_EQ(c.topUp, cur("1045.31"));
    // The next fortnight, 90 hours: 2,155.50 due, nothing to top up; the long fortnight is not averaged in.
    const int next = addPay(3, QDate(2026, 9, 13), {{kSalary, 1, 2307.6923}}, QStringLiteral("Fortnightly"));
    SetPayDays(wage, next, PayDays{10.0f, 90.0f});
    EXPECT_EQ(CheckMinimumWage(wage, next).topUp, Currency());
    EXPECT_TRUE(CheckMinimumWage(wage, next).message.isEmpty());
}

TEST_F(MinimumWageTest, HourlyLinesGiveTheHoursWhenNoneAreEntered) {
    addEmployee(4, QDate(2025, 1, 6), 22.0);
    const int pay = addPay(4, QDate(2026, 5, 10), {{kOrdinary, 40, 22.0}});
    const MinimumWageCheck c = CheckMinimumWage(wage, pay);
    EXPECT_EQ(c.hoursSource, QStringLiteral("payment lines"));
    EXPECT_EQ(c.hours, 40.0f);
    EXPECT_EQ(c.minimum, cur("958"));
    EXPECT_EQ(c.topUp, cur("78")); // 40 x (23.95 - 22.00)
    HolidayTerms t;
    t.minimumWage = MinimumWageRate::StartingOut;
    SetTerms(wage, 4, t);
    EXPECT_EQ(CheckMinimumWage(wage, pay).topUp, Currency()); // 40 x 19.16 = 766.40 < 880
}

TEST_F(MinimumWageTest, ACommittedPayIsNotChanged) {
    addEmployee(4, QDate(2025, 1, 6), 20.0);
    const int pay = addPay(4, QDate(2026, 5, 10), {{kOrdinary, 40, 20.0}});
    wage.execute(QStringLiteral("UPDATE Wages SET Reference = 'R1' WHERE WageID = %1").arg(pay));
    const MinimumWageCheck c = CheckMinimumWage(wage, pay);
    EXPECT_TRUE(c.committed);
    EXPECT_THROW(ApplyMinimumWageTopUp(wage, c), ql::VbError);
    EXPECT_EQ(wage.scalar(QStringLiteral("SELECT count(*) FROM PaymentDetails WHERE WageID = %1").arg(pay)).toInt(), 1);
}

TEST_F(MinimumWageTest, NoSuchPayIsRefused) {
    EXPECT_THROW(CheckMinimumWage(wage, 999), ql::VbError);
}

TEST_F(MinimumWageTest, AFortnightAcrossFirstAprilIsTakenInPartsAtTheirOwnRates) {
    // Monday 23 March to Sunday 5 April 2026, Monday to Friday 8 hours, 80 hours at $23.60.
    addEmployee(5, QDate(2025, 1, 6), 23.60, 0, 2);
    setPattern(5, QDate(2025, 1, 6), {8, 8, 8, 8, 8, 0, 0});
    const int pay = addPay(5, QDate(2026, 4, 5), {{kOrdinary, 80, 23.60}}, QStringLiteral("Fortnightly"));
    const MinimumWageCheck c = CheckMinimumWage(wage, pay);
    EXPECT_EQ(c.periodStart, QDate(2026, 3, 23));
    ASSERT_EQ(c.parts.size(), 2);
    // Seven working days before 1 April (56 hours at 23.50 = 1,316.00), three after (24 at 23.95 = 574.80).
    EXPECT_EQ(c.parts.at(0).to, QDate(2026, 3, 31));
    EXPECT_DOUBLE_EQ(c.parts.at(0).hours, 56.0);
    EXPECT_EQ(c.parts.at(0).hourlyMinimum, cur("23.50"));
    EXPECT_EQ(c.parts.at(1).from, QDate(2026, 4, 1));
    EXPECT_DOUBLE_EQ(c.parts.at(1).hours, 24.0);
    EXPECT_EQ(c.parts.at(1).hourlyMinimum, cur("23.95"));
    EXPECT_EQ(c.minimum, cur("1890.80"));
    EXPECT_EQ(c.payThatCounts, cur("1888"));
    // At the new rate for the whole fortnight it would be 28.00; each part at its own rate, 2.80.
    EXPECT_EQ(c.topUp, cur("2.80"));
    EXPECT_EQ(c.hoursShared, QStringLiteral("by the usual hours of each day"));
    EXPECT_TRUE(c.message.contains(QStringLiteral("23.50 and 23.95 an hour"))) << c.message.toStdString();
    // A fortnight after 1 April is one part.
    const int next = addPay(5, QDate(2026, 4, 19), {{kOrdinary, 80, 23.60}}, QStringLiteral("Fortnightly"));
    const MinimumWageCheck after = CheckMinimumWage(wage, next);
    ASSERT_EQ(after.parts.size(), 1);
    EXPECT_EQ(after.topUp, cur("28"));
}
