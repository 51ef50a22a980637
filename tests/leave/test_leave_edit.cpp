// Typing into the leave grid: the correction of each cell and the completion of each row.
#include "LeaveFixture.h"

using namespace qltest;

namespace {
class LeaveEditTest : public LeaveTest {
protected:
    qint64 hale = 0;
    void SetUp() override {
        ql::installErrorReporter();
        setToday(QDate(2025, 6, 15));
        hale = hire(QStringLiteral("2022-03-01")); // the year is 1/03/2025 to 28/02/2026
    }
    void load(int tab = 0, int option = 0) {
        open(hale);
        screen->optWhichYears = option;
        ql::FillLeaveData(*screen, tab);
    }
    int lastRow() const { return screen->LeaveArray.rowCount() - 1; }
    int addNew() const { return screen->LeaveArray.rowCount(); }
};
} // namespace

TEST_F(LeaveEditTest, DaysBetweenFromAndTo) {
    // The To date lies round(days + 0.4) - 1 days after the From date, never fewer than 0.
    leave(hale, 1, 2, 1, QStringLiteral("2025-05-01"), QStringLiteral("2025-05-01"));
    load();
    const QList<std::pair<QString, QString>> cases{{"1", "1/05/2025"},   {"1.5", "2/05/2025"},
                                                   {"2.5", "3/05/2025"}, {"0.5", "1/05/2025"},
                                                   {"3", "3/05/2025"},   {"0.1", "1/05/2025"}};
    for (const auto& [days, to] : cases) {
        ASSERT_TRUE(screen->storeCell(0, 4, days));
        ASSERT_TRUE(screen->storeCell(0, 6, QString())); // an empty To is derived again
        ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("1/05/2025")));
        EXPECT_EQ(screen->cellText(0, 6), to) << days.toStdString();
    }
}

TEST_F(LeaveEditTest, AnAmountThatIsNoNumberBecomesZero) {
    leave(hale, 1, 2, 3, QStringLiteral("2025-05-05"), QStringLiteral("2025-05-07"));
    load();
    EXPECT_TRUE(screen->storeCell(0, 4, QStringLiteral("abc")));
    EXPECT_EQ(screen->cellText(0, 4), QStringLiteral("0"));
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("0.0"));
    EXPECT_TRUE(screen->storeCell(0, 4, QStringLiteral("2.5")));
    EXPECT_EQ(screen->cellText(0, 4), QStringLiteral("2.50"));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("7/05/2025")); // a To date stands: left alone
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("2.5"));
    EXPECT_EQ(rows->dialogs.calls.size(), 0);
}

TEST_F(LeaveEditTest, ANewTakenRowTypedInColumnOrder) {
    load();
    ASSERT_TRUE(screen->storeCell(addNew(), 3, QStringLiteral("Leave Taken")));
    // The row is stored at once, completed: no days, today, to today.
    ASSERT_EQ(screen->LeaveArray.rowCount(), 2);
    EXPECT_EQ(row(lastRow()), (QStringList{"Leave Taken", "0", "15/06/2025", "15/06/2025", ""}));
    ASSERT_TRUE(screen->storeCell(lastRow(), 4, QStringLiteral("3")));
    EXPECT_EQ(row(lastRow()), (QStringList{"Leave Taken", "3.00", "15/06/2025", "15/06/2025", ""}));
    ASSERT_TRUE(screen->storeCell(lastRow(), 5, QStringLiteral("10/07/2025")));
    EXPECT_EQ(row(lastRow()), (QStringList{"Leave Taken", "3.00", "10/07/2025", "12/07/2025", ""}));
    ASSERT_TRUE(screen->storeCell(lastRow(), 7, QStringLiteral("Rarotonga")));
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("3.0"));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("-3.0"));
    EXPECT_EQ(messages(QStringLiteral("Invalid Data")), 0);
}

TEST_F(LeaveEditTest, AKindCanBeChosenByItsValue) {
    load();
    ASSERT_TRUE(screen->storeCell(addNew(), 3, QStringLiteral("4")));
    EXPECT_EQ(screen->cellText(lastRow(), 3), QStringLiteral("Leave Allocated"));
    // A text that is no entry of the list is the grid's own error: no message, nothing stored.
    EXPECT_FALSE(screen->storeCell(lastRow(), 3, QStringLiteral("Holiday")));
    EXPECT_EQ(screen->cellText(lastRow(), 3), QStringLiteral("Leave Allocated"));
    EXPECT_EQ(rows->dialogs.calls.size(), 0);
}

TEST_F(LeaveEditTest, ATakenFromDateWithNoDaysLeavesTheToDateUnlessItFallsBefore) {
    leave(hale, 1, 2, 1, QStringLiteral("2025-05-05"), QStringLiteral("2025-05-05"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("1/05/2025")));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("5/05/2025"));
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("20/05/2025")));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("20/05/2025"));
}

TEST_F(LeaveEditTest, AnyOtherKindEndsOnItsFromDate) {
    leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-05"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("2/03/2025")));
    EXPECT_EQ(row(0), (QStringList{"Leave Allocated", "20.00", "2/03/2025", "2/03/2025", ""}));
}

TEST_F(LeaveEditTest, AFromDateOutsideTheYearIsPulledToItsEdge) {
    leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("1/01/2025")));
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("1/03/2025"));
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("1/04/2026")));
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("28/02/2026"));
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("abc")));
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("15/06/2025")); // today
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("2025-07-04")));
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("4/07/2025")); // reformatted to the short date
}

TEST_F(LeaveEditTest, AllYearsDoesNotClamp) {
    leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"));
    load(0, 1);
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("1/01/2020")));
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("1/01/2020"));
}

TEST_F(LeaveEditTest, InLieuLeavesTheToDateUnlessItWouldFallBeforeTheFromDate) {
    leave(hale, 4, 2, 8, QStringLiteral("2025-05-05"), QStringLiteral("2025-05-05"));
    load(3);
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("1/05/2025")));
    EXPECT_EQ(row(0), (QStringList{"Leave Taken", "8.00", "1/05/2025", "5/05/2025", ""}));
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("10/05/2025")));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("10/05/2025"));
    ASSERT_TRUE(screen->storeCell(0, 6, QString()));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("10/05/2025")); // no days added in hours
}

TEST_F(LeaveEditTest, AnEmptyToDateFollowsTheFromDate) {
    leave(hale, 1, 2, 3, QStringLiteral("2025-05-05"), QStringLiteral("2025-05-05"));
    leave(hale, 1, 4, 3, QStringLiteral("2025-05-06"), QStringLiteral("2025-05-09"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 6, QStringLiteral("xyz")));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("7/05/2025")); // taken: From plus 2 days
    ASSERT_TRUE(screen->storeCell(1, 6, QString()));
    EXPECT_EQ(screen->cellText(1, 6), QStringLiteral("6/05/2025"));
}

TEST_F(LeaveEditTest, TwoDateTextsCompareAsText) {
    leave(hale, 1, 4, 20, QStringLiteral("2025-01-20"), QStringLiteral("2025-01-20"));
    load(0, 1);
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("2/01/2025")));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("2/01/2025"));
    // "2/01/2025" ranks above "10/01/2025" as text, so the From date gives way to the later To date.
    ASSERT_TRUE(screen->storeCell(0, 6, QStringLiteral("10/01/2025")));
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("10/01/2025"));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("10/01/2025"));
}

TEST_F(LeaveEditTest, ALoadedFromDateIsNoTextAndTheRowCompletionPutsTheToDateRight) {
    leave(hale, 1, 4, 20, QStringLiteral("2025-01-20"), QStringLiteral("2025-01-20"));
    load(0, 1);
    ASSERT_TRUE(screen->storeCell(0, 6, QStringLiteral("10/01/2025")));
    // The From date as loaded is a date, which ranks below any text; the row's completion then finds
    // the To date before the From date and takes the From date.
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("20/01/2025"));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("20/01/2025"));
}

TEST_F(LeaveEditTest, ARowWithoutAKindIsInvalidButStays) {
    load();
    ASSERT_TRUE(screen->storeCell(addNew(), 4, QStringLiteral("2")));
    const ql::DialogCall* box = last(QStringLiteral("Invalid Data"));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->message,
              QStringLiteral("This record entry is invalid. The From Date, Leave Type and Days fields "
                             "must all contain data."));
    EXPECT_EQ(box->caption, QStringLiteral("Fernhold"));
    EXPECT_EQ(box->buttons, ql::msg::OKOnly);
    ASSERT_EQ(screen->LeaveArray.rowCount(), 2);
    EXPECT_EQ(row(lastRow()), (QStringList{"", "2.00", "", "", ""}));
    ql::SaveLeaveXArray(*screen);
    EXPECT_EQ(count(QStringLiteral("1")), 0);
}

TEST_F(LeaveEditTest, ANewToDateWithoutFromIsToday) {
    load();
    ASSERT_TRUE(screen->storeCell(addNew(), 6, QStringLiteral("abc")));
    EXPECT_EQ(screen->cellText(lastRow(), 6), QStringLiteral("15/06/2025"));
    EXPECT_EQ(messages(QStringLiteral("Invalid Data")), 1);
}

TEST_F(LeaveEditTest, TheDefaultDateOfANewRowIsTodayWithinTheYear) {
    setToday(QDate(2025, 3, 1)); // the anniversary: the year shown ended yesterday
    load();
    ASSERT_TRUE(screen->storeCell(addNew(), 3, QStringLiteral("Leave Allocated")));
    EXPECT_EQ(screen->cellText(lastRow(), 5), QStringLiteral("28/02/2025"));
    load(0, 1);
    ASSERT_TRUE(screen->storeCell(addNew(), 3, QStringLiteral("Leave Allocated")));
    EXPECT_EQ(screen->cellText(lastRow(), 5), QStringLiteral("1/03/2025"));
}

TEST_F(LeaveEditTest, AFailedCorrectionShowsInvalidEntryAndKeepsTheOldValue) {
    leave(hale, 1, 2, 1, QStringLiteral("2025-05-01"), QStringLiteral("2025-05-01"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 4, QStringLiteral("50000000")));
    // From plus fifty million days is no date: the correction traps the error and fails.
    EXPECT_FALSE(screen->storeCell(0, 5, QStringLiteral("2/05/2025")));
    const ql::DialogCall* box = last(QStringLiteral("Invalid Entry"));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->message, QString());
    EXPECT_EQ(box->kindOrLevel, ql::msg::Warning);
    EXPECT_EQ(screen->cellText(0, 5), QStringLiteral("1/05/2025"));
    bool reported = false;
    for (const ql::DialogCall& c : rows->dialogs.calls)
        reported = reported || (c.kind == ql::DialogCall::Error &&
                                c.heading.endsWith(QStringLiteral("ValidateLeaveField")));
    EXPECT_TRUE(reported);
}

TEST_F(LeaveEditTest, HiddenColumnsTakeNoTyping) {
    leave(hale, 1, 2, 1, QStringLiteral("2025-05-01"), QStringLiteral("2025-05-01"));
    load();
    EXPECT_FALSE(screen->storeCell(0, 0, QStringLiteral("99")));
    EXPECT_EQ(screen->cellText(0, 0).toInt(), screen->LeaveArray.value(0, 0).toInt());
}

TEST_F(LeaveEditTest, AmountsAndDatesFollowTheLocale) {
    LocaleGuard german(germanLocale());
    leave(hale, 1, 2, 1, QStringLiteral("2025-05-01"), QStringLiteral("2025-05-01"));
    load();
    EXPECT_EQ(screen->lblfDate, QStringLiteral("01.03.2025"));
    EXPECT_EQ(screen->cellText(0, 4), QStringLiteral("1,00"));
    ASSERT_TRUE(screen->storeCell(0, 4, QStringLiteral("2,5")));
    EXPECT_EQ(screen->cellText(0, 4), QStringLiteral("2,50"));
    ASSERT_TRUE(screen->storeCell(0, 5, QStringLiteral("10.05.2025")));
    EXPECT_EQ(screen->cellText(0, 6), QStringLiteral("12.05.2025"));
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("2,5"));
    ql::SaveLeaveXArray(*screen);
    EXPECT_EQ(
        count(QStringLiteral("NumberofDays = 2.5 AND DateFrom = '2025-05-10' AND DateTo = '2025-05-12'")), 1);
}
