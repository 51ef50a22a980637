#include "payengine/EditChecks.h"
#include "PayrollRows.h"
#include "TestEnv.h"
#include "frame/Settings.h"
#include "ledger/Roster.h"
#include "ledger/WageScreen.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"

using namespace qltest;

namespace {
class WageScreenTest : public DocumentsTest {
protected:
    std::unique_ptr<PayrollRows> rows = std::make_unique<PayrollRows>();
    std::unique_ptr<ql::WageScreen> screen;
    qint64 hale = 0;

    void SetUp() override {
        hale = rows->employee(rows->address(QStringLiteral("Hale"), QStringLiteral("Mere")));
    }
    void TearDown() override {
        screen.reset();
        ql::App().WageDatabase.close();
    }
    void load() {
        ql::App().WageDatabase = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        ASSERT_GE(ql::FillEmployeeArray(), 1);
        screen = std::make_unique<ql::WageScreen>();
        ql::App().WageForm = screen.get();
        screen->Form_Load();
    }
    int messages(const QString& heading) const {
        int n = 0;
        for (const ql::DialogCall& c : rows->dialogs.calls)
            n += c.heading == heading;
        return n;
    }
    const ql::DialogCall* last(const QString& heading) const {
        for (int i = rows->dialogs.calls.size() - 1; i >= 0; --i)
            if (rows->dialogs.calls.at(i).heading == heading) return &rows->dialogs.calls.at(i);
        return nullptr;
    }
    int pays() { return rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM Wages")).toInt(); }
    void commitShownPay(const QString& reference) {
        rows->wage.execute(QStringLiteral("UPDATE Wages SET Reference = ? WHERE WageID = ?"),
                           {reference, ql::App().CurrentWageID});
        screen->SetEmployee();
    }
};
} // namespace

TEST_F(WageScreenTest, AnEmployeeWithoutPaysIsAskedForTheFirstDateAndCancelMeansToday) {
    rows->dialogs.queueInput(QString()); // cancelled
    load();
    bool asked = false;
    for (const ql::DialogCall& c : rows->dialogs.calls)
        asked = asked || (c.kind == ql::DialogCall::Input &&
                          c.message == QStringLiteral("Enter date of first pay for Hale, Mere"));
    EXPECT_TRUE(asked);
    ASSERT_EQ(pays(), 1);
    EXPECT_EQ(ql::CDate(rows->wage.scalar(QStringLiteral("SELECT Date FROM Wages"))), ql::Today());
    EXPECT_EQ(screen->caption(QStringLiteral("datPays")), QStringLiteral("1 of 1"));
    EXPECT_EQ(screen->caption(QStringLiteral("lblpayment(8)")), QStringLiteral("Uncommitted"));
    EXPECT_EQ(screen->caption(QStringLiteral("cmdPrintPay")), QStringLiteral("&Commit"));
    EXPECT_TRUE(ql::GetPayEditable());
    EXPECT_EQ(screen->caption(QStringLiteral("cboEmployee")), QStringLiteral("Hale, Mere"));
    EXPECT_EQ(screen->caption(QStringLiteral("lblAddress")), QStringLiteral("12 Ridge Road, Te Awamutu"));
    EXPECT_TRUE(screen->caption(QStringLiteral("lblGross")).startsWith(QLatin1Char('$')));
}

TEST_F(WageScreenTest, ACommittedPayIsFrozenAndOffersThePaySlip) {
    load();
    commitShownPay(QStringLiteral("R7"));
    EXPECT_EQ(screen->caption(QStringLiteral("lblpayment(8)")), QStringLiteral("Committed, reference: R7"));
    EXPECT_EQ(screen->caption(QStringLiteral("cmdPrintPay")), QStringLiteral("&Pay Slip"));
    EXPECT_FALSE(ql::GetPayEditable());
    EXPECT_TRUE(screen->control(QStringLiteral("txtPAYE")).locked);
    EXPECT_EQ(screen->control(QStringLiteral("txtPAYE")).backColor, 0xE0FFFFu);
}

TEST_F(WageScreenTest, ATypedValueOnACommittedPayIsUndone) {
    load();
    screen->cmdSelect_Click(1);
    ASSERT_GE(screen->WageGridArray.rowCount(), 1);
    commitShownPay(QStringLiteral("R8"));
    screen->cmdSelect_Click(1);
    const QVariant before = screen->WageGridArray.value(0, 2);
    EXPECT_TRUE(screen->tgrdwages_BeforeColEdit(2));
    EXPECT_FALSE(screen->storeCell(0, 2, QStringLiteral("12")));
    EXPECT_EQ(screen->WageGridArray.value(0, 2), before);
    const ql::DialogCall* m = last(QStringLiteral("Already Committed"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->kindOrLevel, 6);
    EXPECT_EQ(m->message, QStringLiteral("This pay has already been committed (recorded as paid).\r\n\r\n"
                                         "You therefore cannot alter any details relating to this pay."));
}

TEST_F(WageScreenTest, ADecimalCommaAsksWhetherThePointWasMeant) {
    EXPECT_EQ(ql::DecimalCommaMeant(QStringLiteral("12,50")), QStringLiteral("12.50"));
    EXPECT_EQ(ql::DecimalCommaMeant(QStringLiteral(" 7,5 ")), QStringLiteral("7.5"));
    EXPECT_EQ(ql::DecimalCommaMeant(QStringLiteral("1,250")), QString()); // a thousands separator
    EXPECT_EQ(ql::DecimalCommaMeant(QStringLiteral("12.50")), QString());
    load();
    screen->cmdSelect_Click(1);
    ASSERT_GE(screen->WageGridArray.rowCount(), 1);
    const QVariant before = screen->WageGridArray.value(0, 2);
    const QString heading = screen->WageGridArray.headings().value(2);
    ASSERT_FALSE(heading.isEmpty());
    // No: the cell keeps what it had.
    rows->dialogs.queueAnswer(ql::msg::No);
    EXPECT_FALSE(screen->storeCell(0, 2, QStringLiteral("12,50")));
    EXPECT_EQ(screen->WageGridArray.value(0, 2), before);
    const ql::DialogCall* m = last(QStringLiteral("Check Entry"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->message, QStringLiteral("12,50 was typed in %1. Did you mean 12.50?\r\n\r\nYes enters 12.50; "
                                         "No leaves the previous value.")
                              .arg(heading));
    // Yes: 12.50, not 1,250.
    rows->dialogs.queueAnswer(ql::msg::Yes);
    EXPECT_TRUE(screen->storeCell(0, 2, QStringLiteral("12,50")));
    EXPECT_DOUBLE_EQ(ql::CDbl(screen->WageGridArray.value(0, 2)), 12.5);
}

TEST_F(WageScreenTest, TextInANumberCellIsRefusedNamingTheColumnFromOne) {
    load();
    screen->cmdSelect_Click(1);
    ASSERT_GE(screen->WageGridArray.rowCount(), 1);
    const QVariant before = screen->WageGridArray.value(0, 2);
    EXPECT_FALSE(screen->storeCell(0, 2, QStringLiteral("abc")));
    EXPECT_EQ(screen->WageGridArray.value(0, 2), before);
    const ql::DialogCall* m = last(QStringLiteral("Invalid Entry"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->kindOrLevel, 3);
    EXPECT_EQ(m->message,
              QStringLiteral("Invalid entry in column 3\r\n\r\nThe previous value has been restored"));
}

TEST_F(WageScreenTest, AddPayShowsTheTakeHomeViewOfAnEditablePay) {
    load();
    commitShownPay(QStringLiteral("R1"));
    screen->cmdAddPay_Click();
    EXPECT_EQ(pays(), 2);
    EXPECT_EQ(ql::App().CurrentTab, 6);
    EXPECT_TRUE(ql::GetPayEditable());
    EXPECT_EQ(screen->caption(QStringLiteral("datPays")), QStringLiteral("2 of 2"));
    EXPECT_EQ(screen->selectedLabel(), QStringLiteral("lblTakehome"));
}

TEST_F(WageScreenTest, AnEmployeeWithoutATaxCodeIsRefused) {
    rows->wage.execute(QStringLiteral("UPDATE Employees SET TaxCode = ''"));
    load();
    const int before = pays();
    screen->cmdAddPay_Click();
    EXPECT_EQ(pays(), before);
    const ql::DialogCall* m = last(QStringLiteral("Missing Tax Code"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(
        m->message,
        QStringLiteral(
            "This employee doesn't have a valid Tax Code entered.\r\n\r\nPlease Enter a valid Tax Code"));
}

TEST_F(WageScreenTest, TabInThePayslipGoesToContributionsEvenWhenHidden) {
    load();
    EXPECT_FALSE(screen->control(QStringLiteral("cmdSelect(7)")).visible); // not enrolled
    screen->cmdSelect_Click(6);
    screen->tgrdwages_TabKey();
    EXPECT_EQ(ql::App().CurrentTab, 7);
    screen->tgrdwages_TabKey();
    EXPECT_EQ(ql::App().CurrentTab, 7);
}

TEST_F(WageScreenTest, LabelSelectionColours) {
    load();
    screen->labelClick(QStringLiteral("lblPayDate"));
    screen->labelClick(QStringLiteral("lblGross"));
    const ql::ControlState& now = screen->control(QStringLiteral("lblGross"));
    EXPECT_EQ(now.backColor, 0x808000u);
    EXPECT_EQ(now.foreColor, 0xFFFFFFu);
    const ql::ControlState& old = screen->control(QStringLiteral("lblPayDate"));
    EXPECT_EQ(old.backColor, 0xC0FFFFu);
    EXPECT_TRUE(old.transparent);
    EXPECT_EQ(ql::App().CurrentTab, 1);
    EXPECT_TRUE(screen->control(QStringLiteral("cmdSelect(1)")).down);
    EXPECT_EQ(screen->frontControl, QStringLiteral("tgrdwages"));
}

TEST_F(WageScreenTest, TheAddressTabNeverStaysSelected) {
    load();
    bool cancel = false;
    screen->tabMain_Switch(0, 2, cancel);
    EXPECT_TRUE(cancel);
    EXPECT_EQ(screen->tabMainIndex, 0);
    EXPECT_EQ(screen->GlobalOldTab, 0);
}

TEST_F(WageScreenTest, GridDataError16389IsDropped) {
    load();
    EXPECT_TRUE(screen->tgrdwages_Error(16389));
    EXPECT_FALSE(screen->tgrdwages_Error(7));
}

TEST_F(WageScreenTest, DeletingTheOnlyPayAndKeepingTheEmployeeAsksForANewFirstPay) {
    load();
    ASSERT_EQ(pays(), 1);
    rows->dialogs.queueAnswer(6); // delete the pay
    rows->dialogs.queueAnswer(7); // keep the employee
    rows->dialogs.queueInput(QStringLiteral("1/04/2025"));
    screen->cmdDelete_Click();
    const ql::DialogCall* q = last(QStringLiteral("Please Confirm"));
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(q->message,
              QStringLiteral("Are you sure you want to remove Hale, Mere completely from the Quillary?"));
    ASSERT_EQ(pays(), 1);
    EXPECT_EQ(ql::CDate(rows->wage.scalar(QStringLiteral("SELECT Date FROM Wages"))), QDate(2025, 4, 1));
    EXPECT_EQ(screen->caption(QStringLiteral("datPays")), QStringLiteral("1 of 1"));
}

TEST_F(WageScreenTest, DeletingAPayAsksWithTheOnlyPayWarning) {
    load();
    rows->dialogs.queueAnswer(7);
    screen->cmdDelete_Click();
    const ql::DialogCall* q = last(QStringLiteral("Please Confirm"));
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(q->subHeading, QStringLiteral("Delete from Quillary?"));
    EXPECT_EQ(q->message,
              QStringLiteral("Are you sure you want to delete this payment?\r\n\r\n"
                             "As this is the only pay it will remove Hale, Mere from the Quillary"));
    EXPECT_EQ(pays(), 1);
}

TEST_F(WageScreenTest, RemovingTheEmployeeTakesThemOffThePayrollOnly) {
    const qint64 other = rows->employee(rows->address(QStringLiteral("Ngata"), QStringLiteral("Rua")));
    load();
    ASSERT_EQ(ql::App().CurrentEmployeeID, hale);
    EXPECT_TRUE(screen->DeleteEmployee(QStringLiteral("Hale, Mere")));
    EXPECT_EQ(
        rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM Employees WHERE EmployeeID = %1").arg(hale))
            .toInt(),
        0);
    EXPECT_EQ(
        rows->farm.scalar(QStringLiteral("SELECT WageFlag FROM Addresses WHERE ContactLastName = 'Hale'"))
            .toInt(),
        0);
    screen->reloadEmployees();
    EXPECT_EQ(ql::App().CurrentEmployeeID, other);
}

TEST_F(WageScreenTest, TheAddressBooksReportShowsThatPerson) {
    const qint64 ngataAddress = rows->address(QStringLiteral("Ngata"), QStringLiteral("Rua"));
    const qint64 ngata = rows->employee(ngataAddress);
    load();
    screen->setAddressID(qint32(ngataAddress));
    EXPECT_EQ(ql::App().CurrentEmployeeID, ngata);
    EXPECT_EQ(screen->caption(QStringLiteral("cboEmployee")), QStringLiteral("Ngata, Rua"));
}

TEST_F(WageScreenTest, ALabelThatLosesTheSelectionIsWrittenInBlackAgain) {
    load();
    screen->labelClick(QStringLiteral("lblGross"));
    screen->labelClick(QStringLiteral("lblDeduct"));
    const ql::ControlState& old = screen->control(QStringLiteral("lblGross"));
    EXPECT_EQ(old.foreColor, 0x000000u);
    EXPECT_TRUE(old.transparent);
    EXPECT_EQ(screen->control(QStringLiteral("lblDeduct")).foreColor, 0xFFFFFFu);
}

TEST_F(WageScreenTest, TheLeaveTabIsFilledOnEnteringSavedOnLeavingAndItsOptionMirrored) {
    rows->wage.execute(
        QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                       "DateFrom, DateTo, Comments) VALUES (?, 1, 4, 20, ?, ?, 'allocation')"),
        {hale, ql::dateText(ql::Today().addDays(-30)), ql::dateText(ql::Today().addDays(-30))});
    load();
    // AllLeave is unset, so "All Years" stands from the load, mirrored for the shutdown.
    EXPECT_EQ(screen->leave.optWhichYears, 1);
    EXPECT_TRUE(screen->control(QStringLiteral("optWhichYears(1)")).down);
    EXPECT_FALSE(screen->control(QStringLiteral("optWhichYears(0)")).down);

    bool cancel = false;
    screen->tabMain_Switch(0, 1, cancel);
    EXPECT_EQ(screen->leave.LeaveLoadedEmployeeID, hale);
    EXPECT_EQ(screen->leave.CurrentLeaveTypeID, 1);
    ASSERT_EQ(screen->leave.LeaveArray.rowCount(), 1);
    EXPECT_FALSE(screen->control(QStringLiteral("cmdAddPay")).visible); // the pay side is hidden

    // A row typed on the add-new row is saved when the employee is chosen again, then loaded again.
    ASSERT_TRUE(screen->leave.storeCell(1, 3, QStringLiteral("Leave Taken")));
    ASSERT_TRUE(screen->leave.storeCell(1, 4, QStringLiteral("2")));
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM LeaveDetails")).toInt(), 1);
    screen->cboEmployee_Click();
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM LeaveDetails")).toInt(), 2);
    EXPECT_EQ(screen->leave.LeaveArray.rowCount(), 2);

    screen->leave.optWhichYears_Click(0);
    EXPECT_TRUE(screen->control(QStringLiteral("optWhichYears(0)")).down);
    EXPECT_FALSE(screen->control(QStringLiteral("optWhichYears(1)")).down);

    screen->tabMain_Switch(1, 2, cancel);
    EXPECT_TRUE(cancel);
    EXPECT_EQ(screen->tabMainIndex, 1);
    cancel = false;
    screen->tabMain_Switch(1, 0, cancel);
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()),
              QStringLiteral("N"));
    EXPECT_TRUE(screen->control(QStringLiteral("cmdAddPay")).visible);
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM LeaveDetails")).toInt(), 2);
}
