// The leave year runs from anniversary to anniversary of the hired date.
#include "LeaveFixture.h"

using namespace qltest;

namespace {
class LeaveYearTest : public LeaveTest {
protected:
    std::pair<QDate, QDate> year(const QString& hired, const QDate& today) {
        setToday(today);
        open(hire(hired));
        QDate start, end;
        ql::GetCurrentYear(start, end);
        return {start, end};
    }
};
} // namespace

TEST_F(LeaveYearTest, HiredTodayRunsOneYearLessADay) {
    const auto [start, end] = year(QStringLiteral("2025-05-20"), QDate(2025, 5, 20));
    EXPECT_EQ(start, QDate(2025, 5, 20));
    EXPECT_EQ(end, QDate(2026, 5, 19));
}

TEST_F(LeaveYearTest, AnAnniversaryDayStillBelongsToTheOldYear) {
    const auto [start, end] = year(QStringLiteral("2020-03-10"), QDate(2025, 3, 10));
    EXPECT_EQ(start, QDate(2024, 3, 10));
    EXPECT_EQ(end, QDate(2025, 3, 9)); // yesterday
}

TEST_F(LeaveYearTest, TheDayAfterTheAnniversaryStartsTheNewYear) {
    const auto [start, end] = year(QStringLiteral("2020-03-10"), QDate(2025, 3, 11));
    EXPECT_EQ(start, QDate(2025, 3, 10));
    EXPECT_EQ(end, QDate(2026, 3, 9));
}

TEST_F(LeaveYearTest, TheFirstYear) {
    const auto [start, end] = year(QStringLiteral("2024-11-01"), QDate(2025, 2, 1));
    EXPECT_EQ(start, QDate(2024, 11, 1));
    EXPECT_EQ(end, QDate(2025, 10, 31));
}

TEST_F(LeaveYearTest, AHireInTheFutureStartsOnTheHiredDate) {
    const auto [start, end] = year(QStringLiteral("2025-09-01"), QDate(2025, 6, 1));
    EXPECT_EQ(start, QDate(2025, 9, 1));
    EXPECT_EQ(end, QDate(2026, 8, 31));
}

// Calendar addition takes 29 February to 28 February in other years.
TEST_F(LeaveYearTest, A29FebruaryHireOnItsFirstAnniversary) {
    const auto [start, end] = year(QStringLiteral("2024-02-29"), QDate(2025, 2, 28));
    EXPECT_EQ(start, QDate(2024, 2, 29));
    EXPECT_EQ(end, QDate(2025, 2, 27));
}

TEST_F(LeaveYearTest, A29FebruaryHireInItsSecondYear) {
    const auto [start, end] = year(QStringLiteral("2024-02-29"), QDate(2025, 3, 1));
    EXPECT_EQ(start, QDate(2025, 2, 28));
    EXPECT_EQ(end, QDate(2026, 2, 27));
}

TEST_F(LeaveYearTest, A29FebruaryHireInALeapYearAgain) {
    const auto [start, end] = year(QStringLiteral("2024-02-29"), QDate(2028, 2, 29));
    EXPECT_EQ(start, QDate(2027, 2, 28));
    EXPECT_EQ(end, QDate(2028, 2, 28));
}
