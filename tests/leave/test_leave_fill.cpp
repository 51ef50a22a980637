// Loading a sub-tab: the filter, the period labels, the columns and the totals.
#include "LeaveFixture.h"
#include "frame/Settings.h"

using namespace qltest;

namespace {
class LeaveFillTest : public LeaveTest {
protected:
    qint64 hale = 0;
    void SetUp() override {
        setToday(QDate(2025, 6, 15));
        hale = hire(QStringLiteral("2022-03-01")); // the year is 1/03/2025 to 28/02/2026
    }
};
} // namespace

TEST_F(LeaveFillTest, CurrentYearListsTheYearByItsFromDate) {
    leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"),
          QStringLiteral("allocated"));
    leave(hale, 1, 2, 3, QStringLiteral("2025-05-05"), QStringLiteral("2025-05-07"));
    leave(hale, 1, 2, 1, QStringLiteral("2025-02-27"), QStringLiteral("2025-03-02")); // from the old year
    leave(hale, 2, 2, 2, QStringLiteral("2025-04-01"), QStringLiteral("2025-04-02")); // sick leave
    open(hale);
    screen->optWhichYears = 0;
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->CurrentLeaveTypeID, 1);
    EXPECT_EQ(screen->LeaveLoadedEmployeeID, hale);
    EXPECT_EQ(screen->lblfDate, QStringLiteral("1/03/2025"));
    EXPECT_EQ(screen->lbltDate, QStringLiteral("28/02/2026"));
    EXPECT_EQ(screen->lblHired, QStringLiteral("From"));
    EXPECT_EQ(screen->LeaveWhere,
              QStringLiteral(" WHERE LeaveDetails.EmployeeID = %1 AND LeaveDetails.LeaveTypeID = 1 AND "
                             "LeaveDetails.TransTypeID > 0 And (LeaveDetails.[DateFrom] >= #03/01/2025# AND "
                             "LeaveDetails.[DateFrom] <= #02/28/2026#)")
                  .arg(hale));
    ASSERT_EQ(screen->LeaveArray.rowCount(), 2);
    EXPECT_EQ(row(0), (QStringList{"Leave Allocated", "20.00", "1/03/2025", "1/03/2025", "allocated"}));
    EXPECT_EQ(row(1), (QStringList{"Leave Taken", "3.00", "5/05/2025", "7/05/2025", ""}));
    EXPECT_EQ(screen->LeaveArray.headings(),
              (QStringList{"LeaveID", "EmployeeID", "LeaveTypeID", "Description", "Days", "Date From",
                           "Date To", "Comments"}));
    for (int c = 0; c < 8; ++c)
        EXPECT_EQ(screen->LeaveArray.column(c).visible, c >= 3) << c;
    // The transaction that started in the old year and ends in this one counts nowhere.
    EXPECT_TRUE(screen->cForwardVisible);
    EXPECT_EQ(screen->txtLeaveCForward, QStringLiteral("0.0"));
    EXPECT_EQ(screen->txtLeaveAdded, QStringLiteral("20.0"));
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("3.0"));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("17.0"));
}

TEST_F(LeaveFillTest, TheDropDownOffersKindsAboveOneAndInLieuCountsInHours) {
    open(hale);
    ql::FillLeaveData(*screen, 3);
    EXPECT_EQ(screen->CurrentLeaveTypeID, 4);
    EXPECT_EQ(screen->LeaveArray.column(4).caption, QStringLiteral("Hours"));
    QStringList names;
    for (const ql::GridValueItem& item : screen->LeaveArray.column(3).valueItems)
        names << QString::number(item.value.toInt()) + QLatin1Char('=') + item.name;
    EXPECT_EQ(names, (QStringList{"2=Leave Taken", "3=Allocation Reversed", "4=Leave Allocated",
                                  "5=Leave Paid Out"}));
}

TEST_F(LeaveFillTest, AnEmptyPageHasOneEmptyRow) {
    open(hale);
    ql::FillLeaveData(*screen, 2);
    ASSERT_EQ(screen->LeaveArray.rowCount(), 1);
    EXPECT_EQ(row(0), (QStringList{"", "", "", "", ""}));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("0.0"));
}

TEST_F(LeaveFillTest, KindOneIsListedButCountsOnlyInTheCarriedForwardSum) {
    leave(hale, 1, 1, 5, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"));
    leave(hale, 1, 1, 7, QStringLiteral("2024-03-01"), QStringLiteral("2024-03-01"));
    leave(hale, 1, 0, 9, QStringLiteral("2025-03-02"), QStringLiteral("2025-03-02")); // never listed
    open(hale);
    ql::FillLeaveData(*screen, 0);
    ASSERT_EQ(screen->LeaveArray.rowCount(), 1);
    EXPECT_EQ(screen->cellText(0, 3), QStringLiteral("1")); // not in the drop-down: its value shows
    EXPECT_EQ(screen->txtLeaveAdded, QStringLiteral("0.0"));
    EXPECT_EQ(screen->txtLeaveCForward, QStringLiteral("7.0"));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("7.0"));
}

TEST_F(LeaveFillTest, TotalsOfTheYearAndTheBalanceCarriedForward) {
    // Earlier years: 20 allocated, 4 taken, 2 paid out (TransType.Added decides there).
    leave(hale, 1, 4, 20, QStringLiteral("2024-03-01"), QStringLiteral("2024-03-01"));
    leave(hale, 1, 2, 4, QStringLiteral("2024-07-01"), QStringLiteral("2024-07-04"));
    leave(hale, 1, 5, 2, QStringLiteral("2025-01-10"), QStringLiteral("2025-01-10"));
    // This year: 20 allocated, 1.5 reversed, 2.5 taken, 1 paid out (counts in no total of the year).
    leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"));
    leave(hale, 1, 3, 1.5, QStringLiteral("2025-03-02"), QStringLiteral("2025-03-02"));
    leave(hale, 1, 2, 2.5, QStringLiteral("2025-04-01"), QStringLiteral("2025-04-03"));
    leave(hale, 1, 5, 1, QStringLiteral("2025-04-10"), QStringLiteral("2025-04-10"));
    open(hale);
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->txtLeaveCForward, QStringLiteral("14.0"));
    EXPECT_EQ(screen->txtLeaveAdded, QStringLiteral("18.5"));
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("2.5"));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("30.0"));
    EXPECT_FLOAT_EQ(ql::GetLeaveCarriedForward(QStringLiteral("1/03/2025"), 1, ql::App().CurrentAddressID),
                    14.0f);
    EXPECT_FLOAT_EQ(ql::GetLeaveCarriedForward(QStringLiteral("1/03/2025"), 2, ql::App().CurrentAddressID),
                    0.0f);
}

TEST_F(LeaveFillTest, AllYearsHidesTheCarriedForwardAndAvailableIsAllocatedLessTaken) {
    leave(hale, 1, 4, 20, QStringLiteral("2024-03-01"), QStringLiteral("2024-03-01"));
    leave(hale, 1, 2, 4, QStringLiteral("2024-07-01"), QStringLiteral("2024-07-04"));
    leave(hale, 1, 2, 1, QStringLiteral("2025-05-01"), QStringLiteral("2025-05-01"));
    open(hale);
    screen->optWhichYears = 1;
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->lblHired, QStringLiteral("Hired"));
    EXPECT_EQ(screen->lblfDate, QStringLiteral("1/03/2022"));
    EXPECT_EQ(screen->lbltDate, QStringLiteral("15/06/2025"));
    EXPECT_FALSE(screen->cForwardVisible);
    EXPECT_EQ(screen->LeaveArray.rowCount(), 3);
    EXPECT_EQ(screen->txtLeaveAdded, QStringLiteral("20.0"));
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("5.0"));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("15.0"));
    EXPECT_FALSE(screen->LeaveWhere.contains(QStringLiteral("DateFrom")));
}

TEST_F(LeaveFillTest, OnTheAnniversaryARowOfTodayIsOnlyInAllYears) {
    setToday(QDate(2025, 3, 1));
    leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"));
    open(hale);
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->lbltDate, QStringLiteral("28/02/2025"));
    EXPECT_EQ(screen->cellText(0, 3), QString()); // the empty row: today's row is outside the year
    screen->optWhichYears = 1;
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->cellText(0, 3), QStringLiteral("Leave Allocated"));
}

TEST_F(LeaveFillTest, AnAddressWithTwoEmployeeRowsHasOneBalance) {
    const qint64 address = rows->address(QStringLiteral("Tane"), QStringLiteral("Rua"));
    const qint64 first = rows->employee(address, QStringLiteral("2020-01-01"), QStringLiteral("2023-01-01"));
    const qint64 again = rows->employee(address, QStringLiteral("2022-03-01"));
    const qint64 other = rows->employee(address, QStringLiteral("2021-04-01"));
    leave(first, 1, 4, 10, QStringLiteral("2021-01-01"), QStringLiteral("2021-01-01"));
    leave(again, 1, 4, 6, QStringLiteral("2024-03-01"), QStringLiteral("2024-03-01"));
    leave(again, 1, 2, 2, QStringLiteral("2024-05-01"), QStringLiteral("2024-05-02"));
    leave(hale, 1, 4, 99, QStringLiteral("2021-01-01"), QStringLiteral("2021-01-01")); // another address
    open(again);
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->txtLeaveCForward, QStringLiteral("14.0"));
    select(other); // a second current row of the same address, another anniversary
    ql::FillLeaveData(*screen, 0);
    EXPECT_EQ(screen->lblfDate, QStringLiteral("1/04/2025"));
    EXPECT_EQ(screen->txtLeaveCForward, QStringLiteral("14.0"));
}

TEST_F(LeaveFillTest, EnteringTheTabReadsAllLeave) {
    open(hale);
    screen->enterTab(); // no key: All Years
    EXPECT_EQ(screen->optWhichYears, 1);
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), QStringLiteral("n"));
    screen->enterTab();
    EXPECT_EQ(screen->optWhichYears, 0);
    EXPECT_EQ(screen->lblHired, QStringLiteral("From"));
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), QStringLiteral("no"));
    screen->enterTab();
    EXPECT_EQ(screen->optWhichYears, 1);
}

TEST_F(LeaveFillTest, InitLeaveStartsAfresh) {
    open(hale);
    screen->CurrentLeaveTypeID = 3;
    ql::InitLeave(*screen, 1);
    EXPECT_EQ(screen->CurrentLeaveTypeID, 2);
    EXPECT_EQ(screen->tabLeaveCaption,
              QStringLiteral("Annual Leave|Sick Leave|Special Leave|In Lieu|Leave without Pay"));
}
