// The report control's preparation and the report screen: clearing, the report folder, free slots,
// customised headings, the output buttons and their timer, the memo box, and every failure.
#include "ReportsFixture.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "reports/PrintPaySlip.h"
#include "reports/ReportDriver.h"
#include "reports/ReportLayout.h"
#include "runtime/VbError.h"
#include <QFile>

using namespace ql;
using namespace qltest;

namespace {

class DriverTest : public ReportsTest {
protected:
    // A payslip ready on the screen, as PrintPaySlip leaves it.
    void preparePayslip(ReportScreen& screen) {
        farmDetails("Kea Flats", "1 Pretend Lane", "RD 2", "Demoville", "123-456-789");
        const qint64 e = employee("Mere", "Hale", "111-222-333");
        selectEmployee(e);
        rows->context.CurrentWageID = qint32(pay(e, QDate(2026, 3, 5), 1000, 150, 20, "W7"));
        slipLine("Gross");
        slipLine("    Ordinary Time (x1)", "40.00", "25.00", "1000.00");
        slipLine("", "", "", "", "1000.00");
        view.control("datPays").caption = "1 of 1";
        PreparePaySlip(screen, view, "Weekly up to 5/03/2026", "W7", QDate(2026, 3, 6), false);
    }
    void headingsTable() {
        modules.execute(
            "CREATE TABLE ReportHeadings (ReportID LONG, HeadingName TEXT(50), Heading TEXT(255))");
    }
    int errorDialogs() const {
        int n = 0;
        for (const DialogCall& c : rows->dialogs.calls)
            n += c.kind == DialogCall::Error;
        return n;
    }
    SlipView view;
};

} // namespace

TEST_F(DriverTest, ClearingStopsAtTheFirstFreeSlot) {
    ReportControl r;
    r.setFormulas(0, "a='1'");
    r.setFormulas(1, "b='2'");
    r.setFormulas(3, "d='4'"); // behind a free slot
    r.SelectionFormula = "{Wages.EmployeeID} = 1";
    r.setSortFields(0, "+{Wages.Date}");
    r.setSortFields(1, "-{Wages.WageID}");
    ClearReportControl(r);
    EXPECT_EQ(r.Formulas(0), "");
    EXPECT_EQ(r.Formulas(1), "");
    EXPECT_EQ(r.Formulas(3), "d='4'");
    EXPECT_EQ(r.SelectionFormula, "");
    EXPECT_EQ(r.SortFields(0), "");
    EXPECT_EQ(r.SortFields(1), "");
    EXPECT_EQ(NextFormula(r), 0);
    r.setFormulas(0, "a='1'");
    EXPECT_EQ(NextFormula(r), 1);
}

TEST_F(DriverTest, ReportFileJoinsTheFolderWithOrWithoutItsSlash) {
    ReportControl r;
    SetReportFile("ql_payslip.rpt", r);
    EXPECT_EQ(r.ReportFileName, QStringLiteral(QUILLARY_SOURCE_DIR "/reports/ql_payslip.rpt"));
    WriteSetting("FERNHOLD", "ReportDirectory", "/opt/reports/");
    SetReportFile("ql_payslip.rpt", r);
    EXPECT_EQ(r.ReportFileName, "/opt/reports/ql_payslip.rpt");
}

TEST_F(DriverTest, PageFormulasTakeTwoSlots) {
    ReportControl r;
    qint32 index = 3;
    SetPageFormulas(r, index);
    EXPECT_EQ(index, 5);
    EXPECT_EQ(r.Formulas(3), "page = 'Page '");
    EXPECT_EQ(r.Formulas(4), "of = ' of '");
}

TEST_F(DriverTest, WithoutReportHeadingsNothingIsAddedAndNothingReported) {
    ReportControl r;
    r.setFormulas(0, "a='1'");
    UseCustomizedHeadings(r);
    EXPECT_EQ(r.Formulas(1), "");
    EXPECT_EQ(errorDialogs(), 0);
}

TEST_F(DriverTest, HeadingsOfTheCurrentReportFillTheFreeSlotsUnescaped) {
    headingsTable();
    modules.execute("INSERT INTO ReportHeadings VALUES (0, 'EmployeeNumberCaption', 'Tax file number:'), "
                    "(0, 'Skipped', NULL), (0, 'Marked', 'Total |0|'), (126, 'TaxHeading', 'Tax'), "
                    "(0, 'Quoted', 'Owner''s copy')");
    ReportControl r;
    r.setFormulas(0, "a='1'");
    UseCustomizedHeadings(r);
    EXPECT_EQ(r.Formulas(1), "EmployeeNumberCaption='Tax file number:'");
    EXPECT_EQ(r.Formulas(2), "Marked='Total ?'") << "marks are replaced with an empty list";
    EXPECT_EQ(r.Formulas(3), "Quoted='Owner's copy'") << "not escaped";
    EXPECT_EQ(r.Formulas(4), "");
    rows->context.CurrentReportID = 126;
    ReportControl h;
    UseCustomizedHeadings(h);
    EXPECT_EQ(h.Formulas(0), "TaxHeading='Tax'");
}

TEST_F(DriverTest, AButtonStartsTheTimerAndTheTimerPrintsOnce) {
    ReportScreen screen;
    preparePayslip(screen);
    EXPECT_EQ(screen.caption, "Reports");
    QList<int> waits;
    screen.wait = [&](int ms) { waits << ms; };
    screen.cmdCry_Click(0);
    EXPECT_TRUE(screen.cry_timer.isActive());
    EXPECT_EQ(screen.cry_timer.interval(), 1000);
    EXPECT_TRUE(printed.isEmpty()) << "nothing prints from the click itself";
    screen.cry_timer_Timer();
    EXPECT_FALSE(screen.cry_timer.isActive());
    EXPECT_EQ(waits, QList<int>{1000});
    ASSERT_EQ(printed.size(), 1);
    EXPECT_EQ(destinations, QList<int>{crpt::ToWindow});
    EXPECT_EQ(screen.cry_report.WindowState, 2);
    EXPECT_TRUE(screen.cry_report.DiscardSavedData);
    screen.cmdCry_Click(1);
    screen.cry_timer_Timer();
    EXPECT_EQ(destinations, (QList<int>{crpt::ToWindow, crpt::ToPrinter}));
    EXPECT_EQ(printed.at(0).headings.size(), printed.at(1).headings.size());
    EXPECT_EQ(printed.at(0).rows, printed.at(1).rows);
}

TEST_F(DriverTest, PreviewThenPrinterWithTheMemoBoxPrintsTheSameFormulas) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.chkMemo.visible = true;
    screen.chkMemo.value = true;
    screen.wait = nullptr;
    screen.cmdCry_Click(0);
    screen.cry_timer_Timer();
    EXPECT_EQ(screen.cry_report.Formulas(16), "memo=1");
    screen.cmdCry_Click(1);
    screen.cry_timer_Timer();
    EXPECT_EQ(screen.cry_report.Formulas(17), "memo=1") << "a later free slot, the same value";
    EXPECT_EQ(screen.cry_report.Formulas(18), "");
    ASSERT_EQ(printed.size(), 2);
    EXPECT_EQ(printed.at(0).summaries.size(), printed.at(1).summaries.size());
    EXPECT_EQ(printed.at(0).rows, printed.at(1).rows);
}

TEST_F(DriverTest, WithoutTheMemoBoxNoSlotIsTaken) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.wait = nullptr;
    screen.cmdCry_Click(0);
    screen.cry_timer_Timer();
    screen.cmdCry_Click(1);
    screen.cry_timer_Timer();
    EXPECT_EQ(screen.cry_report.Formulas(16), "");
    EXPECT_EQ(printed.size(), 2);
}

TEST_F(DriverTest, ClosingWithoutAButtonPrintsNothing) {
    {
        ReportScreen screen;
        preparePayslip(screen);
        screen.cmd_goback_Click();
        EXPECT_EQ(screen.cry_report.runs(), 0);
    }
    EXPECT_TRUE(printed.isEmpty());
}

TEST_F(DriverTest, TheMemoBoxIsKeptOnUnload) {
    docs->writeFile("Fernhold/Common/Fernhold.ini", "[PAYMENTS]\nShowMemos=Y\n");
    {
        ReportScreen screen;
        screen.showMemoChoice();
        EXPECT_TRUE(screen.chkMemo.visible);
        EXPECT_TRUE(screen.chkMemo.value);
        screen.chkMemo.value = false;
        screen.cmd_goback_Click();
    }
    EXPECT_EQ(ReadIni("PAYMENTS", "ShowMemos", FamilyFile()), "N");
    {
        ReportScreen hidden;
        hidden.chkMemo.value = true;
    }
    EXPECT_EQ(ReadIni("PAYMENTS", "ShowMemos", FamilyFile()), "N") << "a hidden box stores nothing";
}

TEST_F(DriverTest, AMissingLayoutFileIsReportedNotCrashed) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.cry_report.ReportFileName = docs->path() + "/nowhere/ql_payslip.rpt";
    screen.PrintIt();
    EXPECT_TRUE(printed.isEmpty());
    ASSERT_FALSE(rows->dialogs.calls.isEmpty());
    const DialogCall& c = rows->dialogs.calls.last();
    EXPECT_EQ(c.kind, DialogCall::Error);
    EXPECT_EQ(c.number, rpterr::FileNotFound);
    EXPECT_EQ(c.heading, "Crystal PrintIt");
    EXPECT_EQ(c.caption, "An Error has Occurred");
    EXPECT_TRUE(c.message.contains("cannot be found"));
}

TEST_F(DriverTest, ABrokenLayoutFileIsReportedNotCrashed) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.cry_report.ReportFileName =
        docs->writeFile("r/ql_payslip.rpt", "data source=0 table=PaySlip\ncolumn\n");
    screen.PrintIt();
    EXPECT_TRUE(printed.isEmpty());
    const DialogCall& c = rows->dialogs.calls.last();
    EXPECT_EQ(c.number, rpterr::BadLayout);
    EXPECT_EQ(c.heading, "Crystal PrintIt");
    EXPECT_EQ(c.message, "The report file ql_payslip.rpt cannot be read: line 2: column needs field=.");
}

TEST_F(DriverTest, AFieldTheLayoutCannotFillIsABrokenLayout) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.cry_report.ReportFileName = docs->writeFile(
        "r/x.rpt", "data source=0 table=PaySlip\ncolumn field=Description\nheading text={Nobody}\n");
    screen.PrintIt();
    EXPECT_EQ(rows->dialogs.calls.last().number, rpterr::BadLayout);
}

TEST_F(DriverTest, AHeadingWithAnApostropheBreaksThePrint) {
    headingsTable();
    modules.execute("INSERT INTO ReportHeadings VALUES (0, 'EmployeeNumberCaption', 'Owner''s number:')");
    ReportScreen screen;
    preparePayslip(screen);
    screen.PrintIt();
    EXPECT_TRUE(printed.isEmpty());
    EXPECT_EQ(rows->dialogs.calls.last().number, rpterr::BadFormula);
    EXPECT_EQ(rows->dialogs.calls.last().heading, "Crystal PrintIt");
}

TEST_F(DriverTest, ACustomisedHeadingChangesThePrintedWording) {
    headingsTable();
    modules.execute("INSERT INTO ReportHeadings VALUES (0, 'EmployeeNumberCaption', 'Tax file number:')");
    ReportScreen screen;
    preparePayslip(screen);
    screen.PrintIt();
    ASSERT_EQ(printed.size(), 1);
    QStringList texts;
    for (const PreparedText& t : printed.at(0).headings)
        texts << t.text;
    EXPECT_TRUE(texts.contains("Tax file number: 111-222-333")) << texts.join(" | ").toStdString();
}

TEST_F(DriverTest, AMissingDataFileGivesTheDatabaseMessage) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.cry_report.setDataFiles(0, docs->path() + "/gone.db");
    screen.PrintIt();
    EXPECT_TRUE(printed.isEmpty());
    const DialogCall& c = rows->dialogs.calls.last();
    EXPECT_EQ(c.kind, DialogCall::Message);
    EXPECT_EQ(c.heading, "An Error has Occurred");
    EXPECT_TRUE(c.message.startsWith("Error 'Could not find file")) << c.message.toStdString();
    EXPECT_TRUE(c.message.endsWith("' while viewing ql_payslip.rpt.  Database may need to be verified."))
        << c.message.toStdString();
}

TEST_F(DriverTest, AMissingTableGivesTheDatabaseMessage) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.cry_report.setDataFiles(0, ModuleFileName()); // a database without PaySlip
    screen.PrintIt();
    EXPECT_TRUE(rows->dialogs.calls.last().message.contains("while viewing ql_payslip.rpt"));
}

TEST_F(DriverTest, ABusyDatabaseAsksAndYesTriesAgain) {
    int attempts = 0;
    setReportOutput(crpt::ToWindow, [&](const PreparedReport& r, const ReportControl&) {
        if (++attempts == 1)
            raiseError(rpterr::DatabaseBusy, "Crystal", "Couldn't update; currently locked.");
        printed.append(r);
    });
    ReportScreen screen;
    preparePayslip(screen);
    rows->dialogs.queueAnswer(6);
    screen.PrintIt();
    EXPECT_EQ(attempts, 2);
    EXPECT_EQ(printed.size(), 1);
    const DialogCall& c = rows->dialogs.calls.last();
    EXPECT_EQ(c.message, "Access Database problem.  Try report again");
    EXPECT_EQ(c.heading, "Database error");
    EXPECT_EQ(c.buttons, 4);
}

TEST_F(DriverTest, ABusyDatabaseAndNoEndsThePrint) {
    int attempts = 0;
    setReportOutput(crpt::ToWindow, [&](const PreparedReport&, const ReportControl&) {
        ++attempts;
        raiseError(rpterr::DatabaseBusy, "Crystal", "Couldn't update; currently locked.");
    });
    ReportScreen screen;
    preparePayslip(screen);
    rows->dialogs.queueAnswer(7);
    screen.PrintIt();
    EXPECT_EQ(attempts, 1);
    EXPECT_EQ(screen.cry_report.runs(), 0);
    EXPECT_EQ(errorDialogs(), 0);
}

TEST_F(DriverTest, RefreshSubReportRunsTheReportAndReportsUnderItsName) {
    ReportScreen screen;
    preparePayslip(screen);
    screen.refreshsubreport();
    EXPECT_EQ(printed.size(), 1);
    EXPECT_EQ(screen.cry_report.WindowState, 2);
    screen.cry_report.ReportFileName = "/nowhere.rpt";
    screen.refreshsubreport();
    EXPECT_EQ(rows->dialogs.calls.last().heading, "Crystal RefreshSubReport");
}

TEST_F(DriverTest, AFailingHeadingsReadIsReportedAndThePrintGoesOn) {
    ReportScreen screen;
    preparePayslip(screen);
    modules.close();
    QFile::remove(ModuleFileName());
    screen.PrintIt();
    EXPECT_EQ(printed.size(), 1) << "the report still runs";
    ASSERT_FALSE(rows->dialogs.calls.isEmpty());
    EXPECT_EQ(rows->dialogs.calls.last().kind, DialogCall::Error);
    EXPECT_TRUE(rows->dialogs.calls.last().heading.endsWith(" UseCustomizedHeadings"))
        << rows->dialogs.calls.last().heading.toStdString();
    EXPECT_EQ(screen.cry_report.Formulas(15), "of = ' of '") << "the formulas set so far stay";
    EXPECT_EQ(screen.cry_report.Formulas(16), "");
}
