// Writing the leave array back, and the events that save it.
#include "LeaveFixture.h"
#include "frame/Settings.h"
#include "payengine/PayView.h"

using namespace qltest;

namespace {
class LeaveSaveTest : public LeaveTest {
protected:
    qint64 hale = 0;
    void SetUp() override {
        ql::installErrorReporter();
        setToday(QDate(2025, 6, 15));
        hale = hire(QStringLiteral("2022-03-01")); // the year is 1/03/2025 to 28/02/2026
        leave(hale, 1, 4, 20, QStringLiteral("2024-03-01"), QStringLiteral("2024-03-01"),
              QStringLiteral("last year"));
        leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"),
              QStringLiteral("this year"));
        leave(hale, 1, 2, 3, QStringLiteral("2025-05-05"), QStringLiteral("2025-05-07"));
        leave(hale, 2, 2, 1, QStringLiteral("2025-04-01"), QStringLiteral("2025-04-01"),
              QStringLiteral("sick"));
    }
    void load(int tab = 0, int option = 0) {
        open(hale);
        screen->optWhichYears = option;
        ql::FillLeaveData(*screen, tab);
    }
    QString allleave() {
        return ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile());
    }
};

class FakeWageScreen : public ql::PayView {
public:
    void SelectLabel(const QString&) override {}
    void openView(int) override {}
};
} // namespace

TEST_F(LeaveSaveTest, SavingCurrentYearLeavesOtherYearsAndOtherTypesAlone) {
    load();
    const int before = rows->wage.scalar(QStringLiteral("SELECT MAX(LeaveID) FROM LeaveDetails")).toInt();
    ASSERT_TRUE(screen->storeCell(1, 4, QStringLiteral("4")));
    ASSERT_TRUE(screen->storeCell(2, 3, QStringLiteral("Leave Taken")));
    ASSERT_TRUE(screen->storeCell(2, 4, QStringLiteral("1.5")));
    ASSERT_TRUE(screen->storeCell(2, 5, QStringLiteral("9/06/2025")));
    ql::SaveLeaveXArray(*screen);
    EXPECT_EQ(count(QStringLiteral("Comments = 'last year'")), 1);
    EXPECT_EQ(count(QStringLiteral("Comments = 'sick'")), 1);
    EXPECT_EQ(count(QStringLiteral("LeaveTypeID = 1")), 4);
    // Every saved row gets a new id.
    EXPECT_EQ(
        count(QStringLiteral("LeaveTypeID = 1 AND DateFrom >= '2025-03-01' AND LeaveID <= %1").arg(before)),
        0);
    EXPECT_EQ(
        count(QStringLiteral(
            "TransTypeID = 2 AND NumberofDays = 4 AND DateFrom = '2025-05-05' AND DateTo = '2025-05-07'")),
        1);
    EXPECT_EQ(count(QStringLiteral("TransTypeID = 2 AND NumberofDays = 1.5 AND DateFrom = '2025-06-09' AND "
                                   "DateTo = '2025-06-10' "
                                   "AND EmployeeID = %1 AND LeaveTypeID = 1 AND Comments IS NULL")
                        .arg(hale)),
              1);
    load();
    EXPECT_EQ(screen->LeaveArray.rowCount(), 3);
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("5.5"));
    EXPECT_EQ(screen->txtLeaveCForward, QStringLiteral("20.0"));
}

TEST_F(LeaveSaveTest, SwitchingSubTabAfterClearingTheKindRemovesTheRow) {
    load();
    ASSERT_TRUE(screen->storeCell(1, 3, QString()));
    EXPECT_EQ(messages(QStringLiteral("Invalid Data")), 1);
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("0.0"));
    screen->tabLeave_Click(1);
    EXPECT_EQ(screen->tabLeaveIndex, 1);
    EXPECT_EQ(screen->CurrentLeaveTypeID, 2);
    EXPECT_EQ(count(QStringLiteral("LeaveTypeID = 1 AND TransTypeID = 2")), 0);
    EXPECT_EQ(count(QStringLiteral("LeaveTypeID = 1")), 2);
    EXPECT_EQ(screen->cellText(0, 7), QStringLiteral("sick"));
}

TEST_F(LeaveSaveTest, NothingIsWrittenUnderAnotherEmployee) {
    const qint64 rua = hire(QStringLiteral("2023-01-01"), QStringLiteral("Rua"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 4, QStringLiteral("30")));
    open(rua); // the employee changed without a save
    ql::SaveLeaveXArray(*screen);
    EXPECT_EQ(count(QStringLiteral("EmployeeID = %1").arg(rua)), 0);
    EXPECT_EQ(count(QStringLiteral("NumberofDays = 30")), 0);
    screen->CurrentLeaveTypeID = 0;
    select(hale);
    ql::SaveLeaveXArray(*screen);
    EXPECT_EQ(count(QStringLiteral("NumberofDays = 30")), 0);
}

TEST_F(LeaveSaveTest, TheEmployeeChangeSavesFirstAndFillsAfter) {
    const qint64 rua = hire(QStringLiteral("2023-01-01"), QStringLiteral("Rua"));
    leave(rua, 1, 4, 15, QStringLiteral("2025-01-01"), QStringLiteral("2025-01-01"));
    load();
    ASSERT_TRUE(screen->storeCell(0, 4, QStringLiteral("30")));
    screen->saveBeforeEmployeeChange();
    select(rua);
    screen->employeeChanged(true);
    EXPECT_EQ(count(QStringLiteral("NumberofDays = 30 AND EmployeeID = %1").arg(hale)), 1);
    EXPECT_EQ(screen->LeaveLoadedEmployeeID, rua);
    EXPECT_EQ(screen->lblfDate, QStringLiteral("1/01/2025"));
    EXPECT_EQ(screen->txtLeaveAdded, QStringLiteral("15.0"));
}

TEST_F(LeaveSaveTest, TheOptionSavesByTheOldFilterThenShowsAllYears) {
    load();
    ASSERT_TRUE(screen->storeCell(1, 7, QStringLiteral("edited")));
    screen->optWhichYears_Click(1);
    EXPECT_EQ(count(QStringLiteral("Comments = 'edited'")), 1);
    EXPECT_EQ(count(QStringLiteral("Comments = 'last year'")), 1);
    EXPECT_EQ(screen->LeaveArray.rowCount(), 3);
    EXPECT_FALSE(screen->cForwardVisible);
    screen->leaveTab();
    EXPECT_EQ(allleave(), QStringLiteral("Y"));
    screen->enterTab();
    screen->optWhichYears_Click(0);
    screen->leaveTab();
    EXPECT_EQ(allleave(), QStringLiteral("N"));
    EXPECT_EQ(count(QStringLiteral("LeaveTypeID = 1")), 3);
}

TEST_F(LeaveSaveTest, CtrlTabGoesRoundTheFivePagesSavingEach) {
    load();
    ASSERT_TRUE(screen->storeCell(0, 7, QStringLiteral("page one")));
    for (int i = 1; i <= 5; ++i) {
        screen->nextPage();
        EXPECT_EQ(screen->tabLeaveIndex, i % 5);
        EXPECT_EQ(screen->CurrentLeaveTypeID, i % 5 + 1);
    }
    EXPECT_EQ(count(QStringLiteral("Comments = 'page one'")), 1);
    EXPECT_EQ(screen->cellText(0, 7), QStringLiteral("page one"));
}

TEST_F(LeaveSaveTest, DeletingAsksFirst) {
    load();
    rows->dialogs.queueAnswer(ql::msg::No);
    EXPECT_FALSE(screen->deleteRow(1));
    const ql::DialogCall* box = last(QStringLiteral("Delete Entry?"));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->message, QStringLiteral("Are you sure you want to delete this entry?"));
    EXPECT_EQ(box->subHeading, QStringLiteral("Please Confirm"));
    EXPECT_EQ(box->buttons, ql::msg::YesNo);
    EXPECT_EQ(box->kindOrLevel, ql::msg::Question);
    EXPECT_EQ(screen->LeaveArray.rowCount(), 2);
    rows->dialogs.queueAnswer(ql::msg::Yes);
    EXPECT_TRUE(screen->deleteRow(1));
    EXPECT_EQ(screen->LeaveArray.rowCount(), 1);
    EXPECT_EQ(screen->txtLeaveTaken, QStringLiteral("0.0"));
    EXPECT_EQ(screen->txtLeaveAvailable, QStringLiteral("40.0"));
    EXPECT_EQ(count(QStringLiteral("TransTypeID = 2 AND LeaveTypeID = 1")), 1); // not yet saved
    screen->saveLeave();
    EXPECT_EQ(count(QStringLiteral("TransTypeID = 2 AND LeaveTypeID = 1")), 0);
}

TEST_F(LeaveSaveTest, TheUnloadStoresTheOptionAndSavesWhenTheTabIsUp) {
    load();
    ASSERT_TRUE(screen->storeCell(1, 7, QStringLiteral("at close")));
    screen->unload(false);
    EXPECT_EQ(allleave(), QStringLiteral("N"));
    EXPECT_EQ(count(QStringLiteral("Comments = 'at close'")), 0);
    screen->unload(true);
    EXPECT_EQ(count(QStringLiteral("Comments = 'at close'")), 1);
}

TEST_F(LeaveSaveTest, ASaveThatFailsIsReportedUnderItsName) {
    load();
    rows->wage.execute(QStringLiteral("DROP TABLE LeaveDetails"));
    ql::SaveLeaveXArray(*screen);
    bool reported = false;
    for (const ql::DialogCall& c : rows->dialogs.calls)
        reported = reported || (c.kind == ql::DialogCall::Error &&
                                c.heading.endsWith(QStringLiteral(" SaveLeaveXArray")));
    EXPECT_TRUE(reported);
}

TEST_F(LeaveSaveTest, TheLeaveTabHidesThePaySide) {
    FakeWageScreen form;
    ql::HideWageButtons(form);
    for (const char* name : {"cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick", "datPays"})
        EXPECT_FALSE(form.control(QString::fromLatin1(name)).visible) << name;
    EXPECT_TRUE(form.control(QStringLiteral("cmdPrintPay")).visible);
}
