// The wage history: its list, order, captions and totals, its print, and a long history on pages.
#include "ReportsFixture.h"
#include "PayGuard.h"
#include "frame/Settings.h"
#include "reports/PrintPaySlip.h"
#include "reports/QuickView.h"
#include "reports/paint/ReportPdf.h"
#include "data/Recordset.h"
#include "runtime/Format.h"
#include "runtime/VbError.h"
#include <QRandomGenerator>
#include <QRegularExpression>
#include <iostream>

using namespace ql;
using namespace qltest;

namespace {

class QuickViewTest : public ReportsTest {
protected:
    void SetUp() override {
        ReportsTest::SetUp();
        qputenv("USER", "mere");
        setQuickViewDateOrder(false);
        farmDetails("Kea Flats Station", "1 Pretend Lane", "RD 2", QVariant(), "123-456-789");
        e = employee("Wiremu", "Tāwhiri", "111-222-333");
        selectEmployee(e);
    }
    void TearDown() override {
        setQuickViewDateOrder(false);
        ReportsTest::TearDown();
    }
    void threePays() {
        // Entered out of date order: the second entry is the earliest pay.
        pay(e, QDate(2026, 3, 12), 1000.10, 150.05, 20.00, "W2");
        pay(e, QDate(2026, 3, 5), 999.99, 149.99, 19.99, "W1");
        pay(e, QDate(2026, 3, 19), 1000.01, 150.01, 20.01);
    }
    QString printPdf(QuickView& view) {
        const QString file = outFile("history.pdf");
        onShow = [file](ReportScreen& s) {
            s.cry_report.Destination = crpt::ToFile;
            s.cry_report.PrintFileName = file;
            s.PrintIt();
        };
        view.PrintQView();
        onShow = nullptr;
        return file;
    }
    qint64 e = 0;
};

} // namespace

TEST_F(QuickViewTest, TenColumnsWithTheirCaptions) {
    docs->writeFile("Fernhold/Common/Fernhold.ini",
                    QByteArray("[FERNHOLD]\nReportDirectory=" QUILLARY_SOURCE_DIR
                               "/reports\n[TAX]\nPayAsYouEarn=Withholding\n"));
    threePays();
    QuickView view;
    view.Form_Load("Tāwhiri, Wiremu");
    EXPECT_EQ(view.caption, "History");
    EXPECT_EQ(view.txtEmployee, "Tāwhiri, Wiremu");
    const QString unit = rows->context.EmployeeArray.at(rows->context.CurrentEmployee).UnitOfPay;
    EXPECT_EQ(view.QuickViewArray.headings(),
              (QStringList{"Date", "Total " + unit, "Gross", "Taxable Allowances", "Withholding", "NET",
                           "Non Taxable Allowances", "Deductions", "Take Home", "KiwiSaver Contributions"}));
    EXPECT_EQ(view.QuickViewArray.columnCount(), 10);
    EXPECT_FALSE(view.QuickViewArray.editable());
    EXPECT_EQ(view.cellText(0, 0), "12/03/2026");
    EXPECT_EQ(view.cellText(0, 2), "$1,000.10");
    EXPECT_EQ(view.cellText(0, 5), "$850.05") << "NET is taxable less PAYE";
}

TEST_F(QuickViewTest, EachPayTellsWhetherItIsCommittedWithItsDateAndReference) {
    threePays();
    QuickView view;
    view.Form_Load("x");
    // Entry order: the pay of 12 March (W2, paid the next day), of 5 March (W1), then one not committed.
    EXPECT_TRUE(view.Committed(0));
    EXPECT_EQ(view.CommitLine(0), "Committed on 13/03/2026, reference W2");
    EXPECT_EQ(view.CommitLine(1), "Committed on 6/03/2026, reference W1");
    EXPECT_FALSE(view.Committed(2));
    EXPECT_EQ(view.CommitLine(2), "Not committed");
    view.cmdDateOrder_Click();
    EXPECT_EQ(view.CommitLine(0), "Committed on 6/03/2026, reference W1") << "the state follows its row";
    EXPECT_EQ(view.CommitLine(2), "Not committed");
    // A row beyond the list has nothing to tell.
    EXPECT_FALSE(view.Committed(3));
    EXPECT_EQ(view.CommitLine(-1), "Not committed");
    // A reference kept without its date still counts as committed.
    rows->wage.execute(QStringLiteral("INSERT INTO Wages (EmployeeID, Date, PayInterval, Gross, Reference) "
                                      "VALUES (?, '2026-03-26', 'Weekly', 100, 'W4')"),
                       {e});
    view.AssignQVData();
    EXPECT_EQ(view.CommitLine(3), "Committed, reference W4");
    EXPECT_EQ(view.QuickViewArray.columnCount(), 10) << "the state is no column of the list";
}

TEST_F(QuickViewTest, EntryOrderAtFirstThenDateOrderKeptForTheRun) {
    threePays();
    {
        QuickView view;
        view.Form_Load("x");
        EXPECT_EQ(view.cellText(0, 0), "12/03/2026");
        EXPECT_TRUE(view.cmdDateOrderEnabled);
        EXPECT_FALSE(view.cmdEntryOrderEnabled);
        view.cmdDateOrder_Click();
        EXPECT_EQ(view.cellText(0, 0), "5/03/2026");
        EXPECT_EQ(view.cellText(2, 0), "19/03/2026");
        EXPECT_FALSE(view.cmdDateOrderEnabled);
        EXPECT_TRUE(view.cmdEntryOrderEnabled);
        EXPECT_EQ(view.focusControl, "cmdOK");
        EXPECT_EQ(view.QuickViewArray.headings().value(2), "Gross") << "captions stay on a reload";
    }
    QuickView again;
    again.Form_Load("x");
    EXPECT_TRUE(QuickViewDateOrder());
    EXPECT_EQ(again.cellText(0, 0), "5/03/2026");
    again.cmdEntryOrder_Click();
    EXPECT_EQ(again.cellText(0, 0), "12/03/2026");
}

TEST_F(QuickViewTest, TotalsAreExactToTheCent) {
    threePays();
    QuickView view;
    view.Form_Load("x");
    view.Form_Activate();
    EXPECT_EQ(view.Text1.at(0), "120.00");
    EXPECT_EQ(view.Text1.at(1), "$3,000.10");
    EXPECT_EQ(view.Text1.at(3), "$450.05");
    EXPECT_EQ(view.Text1.at(4), "$2,550.05");
    EXPECT_EQ(view.Text1.at(6), "$60.00");
    EXPECT_EQ(view.Text1.at(7), "$2,490.05");
    EXPECT_EQ(view.focusControl, "cmdOK");
}

TEST_F(QuickViewTest, NoPayGivesAnEmptyGridZeroTotalsAndAPrintOfTheMessage) {
    QuickView view;
    view.Form_Load("Tāwhiri, Wiremu");
    view.Form_Activate();
    EXPECT_EQ(view.QuickViewArray.rowCount(), 0);
    EXPECT_EQ(view.Text1.at(0), "0.00");
    for (int i = 1; i < 9; ++i)
        EXPECT_EQ(view.Text1.at(i), "$0.00");
    view.PrintQView();
    ASSERT_EQ(rows->dialogs.calls.size(), 1);
    EXPECT_EQ(rows->dialogs.calls.at(0).message, "No entries for this employee!");
    EXPECT_EQ(rows->dialogs.calls.at(0).heading, "Information Required");
    ASSERT_EQ(shown.size(), 1) << "the report is offered after the message";
    EXPECT_EQ(shown.at(0).formulas.at(1), "Dateline ='No entries for this employee!'");
    const QStringList lines = pdfLines(printPdf(view));
    EXPECT_EQ(lines.value(1), "No entries for this employee!");
    EXPECT_TRUE(lines.contains("Totals $0.00 $0.00 $0.00 $0.00 $0.00 $0.00 $0.00 $0.00 $0.00") ||
                lines.contains("Totals 0.00 $0.00 $0.00 $0.00 $0.00 $0.00 $0.00 $0.00 $0.00"))
        << lines.join("\n").toStdString();
}

TEST_F(QuickViewTest, ThePrintInEntryOrderUsesTheSecondFile) {
    threePays();
    QuickView view;
    view.Form_Load("Tāwhiri, Wiremu");
    view.PrintQView();
    ASSERT_EQ(shown.size(), 1);
    const ShownScreen& s = shown.at(0);
    EXPECT_EQ(s.reportFile, QStringLiteral(QUILLARY_SOURCE_DIR "/reports/ql_QViewUnsort.rpt"));
    EXPECT_EQ(
        s.formulas,
        (QStringList{"UserName = \"Kea Flats Station - mere\"", "Dateline ='5/03/2026 to 19/03/2026'",
                     "ReportName = 'Wage History For Tāwhiri, Wiremu'", "page = 'Page '", "of = ' of '"}));
    EXPECT_EQ(s.selection, QStringLiteral("{Wages.EmployeeID} = %1").arg(e));
    EXPECT_EQ(s.dataFiles, (QStringList{DataFileName(), WageFileName(), WageFileName()}));
    EXPECT_EQ(s.info, "Wage History For Tāwhiri, Wiremu\r\n\r\n5/03/2026 to 19/03/2026");
    view.cmdDateOrder_Click();
    view.PrintQView();
    EXPECT_EQ(shown.at(1).reportFile, QStringLiteral(QUILLARY_SOURCE_DIR "/reports/ql_quickview.rpt"));
}

TEST_F(QuickViewTest, APayslipAfterAHistoryTakesTheHeadingsOfReport126) {
    modules.execute("CREATE TABLE ReportHeadings (ReportID LONG, HeadingName TEXT(50), Heading TEXT(255))");
    modules.execute("INSERT INTO ReportHeadings VALUES (0, 'EmployeeNumberCaption', 'Before:'), "
                    "(126, 'EmployeeNumberCaption', 'After:')");
    threePays();
    slipLine("Gross");
    rows->context.CurrentWageID = 1;
    SlipView slipView;
    auto slipCaption = [&] {
        QString caption;
        onShow = [&](ReportScreen& s) {
            s.PrintIt();
            for (const PreparedText& t : printed.last().headings)
                if (t.text.endsWith("111-222-333")) caption = t.text;
        };
        PrintPaySlip(slipView, "Weekly up to 5/03/2026", "W1", QDate(2026, 3, 6), false);
        onShow = nullptr;
        return caption;
    };
    EXPECT_EQ(rows->context.CurrentReportID, 0);
    EXPECT_EQ(slipCaption(), "Before: 111-222-333");
    QuickView view;
    view.Form_Load("x");
    view.PrintQView();
    EXPECT_EQ(rows->context.CurrentReportID, 126);
    EXPECT_EQ(slipCaption(), "After: 111-222-333") << "kept for the run";
}

TEST_F(QuickViewTest, ThePrintedHistoryMatchesTheScreen) {
    threePays();
    QuickView view;
    view.Form_Load("Tāwhiri, Wiremu");
    view.cmdDateOrder_Click();
    const QStringList lines = pdfLines(printPdf(view));
    const QStringList expected{
        "Wage History For Tāwhiri, Wiremu",
        "5/03/2026 to 19/03/2026",
        "Kea Flats Station",
        "1 Pretend Lane",
        "RD 2",
    };
    EXPECT_EQ(lines.mid(0, expected.size()), expected) << lines.join("\n").toStdString();
    const QStringList body{
        "5/03/2026 40.00 $999.99 $0.00 $149.99 $850.00 $0.00 $19.99 $830.01 $10.00",
        "12/03/2026 40.00 $1,000.10 $0.00 $150.05 $850.05 $0.00 $20.00 $830.05 $10.00",
        "19/03/2026 40.00 $1,000.01 $0.00 $150.01 $850.00 $0.00 $20.01 $829.99 $10.01",
        "Totals 120.00 $3,000.10 $0.00 $450.05 $2,550.05 $0.00 $60.00 $2,490.05 $30.00",
    };
    const qsizetype first = lines.indexOf(body.at(0));
    ASSERT_GE(first, 0) << lines.join("\n").toStdString();
    EXPECT_EQ(lines.mid(first, body.size()), body);
    EXPECT_TRUE(lines.last().endsWith("Page 1 of 1"));
    view.Form_Activate();
    EXPECT_EQ(view.Text1.at(1), "$3,000.10") << "the screen's totals are the printed ones";
}

TEST_F(QuickViewTest, SixtyPaysBreakIntoPagesWithTheHeadingOnEach) {
    QDate date(2025, 1, 6);
    for (int i = 0; i < 60; ++i, date = date.addDays(7))
        pay(e, date, 1000 + i, 150, 20, QStringLiteral("W%1").arg(i + 1));
    QuickView view;
    view.Form_Load("Tāwhiri, Wiremu");
    view.cmdDateOrder_Click();
    const QString text = pdfText(printPdf(view));
    const QStringList pages = text.split(u'\f', Qt::SkipEmptyParts);
    QStringList nonEmpty;
    for (const QString& p : pages)
        if (!p.trimmed().isEmpty()) nonEmpty << p;
    ASSERT_GE(nonEmpty.size(), 2) << text.toStdString();
    const int count = int(nonEmpty.size());
    int rowsSeen = 0;
    for (int i = 0; i < count; ++i) {
        const QString& page = nonEmpty.at(i);
        EXPECT_TRUE(page.contains("Wage History For Tāwhiri, Wiremu")) << "page " << i + 1;
        EXPECT_TRUE(page.contains("6/01/2025 to 23/02/2026")) << "page " << i + 1;
        EXPECT_TRUE(page.contains("Deductions")) << "captions on page " << i + 1;
        EXPECT_TRUE(page.contains(QStringLiteral("Page %1 of %2").arg(i + 1).arg(count)))
            << page.toStdString();
        rowsSeen += int(page.count(
            QRegularExpression("^\\s*\\d+/\\d\\d/20\\d\\d\\s+40\\.00", QRegularExpression::MultilineOption)));
    }
    EXPECT_EQ(rowsSeen, 60) << "every pay once";
    EXPECT_TRUE(nonEmpty.last().contains("Totals")) << "the totals close the last page";
    EXPECT_FALSE(nonEmpty.first().contains("Totals"));
}

// A history of several pages: every cell, in both orders, is the cell of the list's own query, pays of
// one date stand in the order of entry, and the totals add up every pay, also those not yet shown.
TEST_F(QuickViewTest, ALongHistoryReadsEveryPageAsItsQueryGivesIt) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    const int pays = 2 * QuickViewRows::PageSize + 22;
    Currency gross, paye, net, deductions;
    for (int i = 0; i < pays; ++i) {
        // Dates out of the order of entry, some of them twice.
        const QDate date = QDate(2020, 1, 6).addDays(7 * int(random.bounded(pays - 20)));
        const double g = double(random.bounded(50000, 300000)) / 100.0;
        const double p = double(random.bounded(0, 60000)) / 100.0;
        const double d = double(random.bounded(0, 10000)) / 100.0;
        pay(e, date, g, p, d);
        gross += Currency::fromDouble(g);
        paye += Currency::fromDouble(p);
        net += Currency::fromDouble(g - p);
        deductions += Currency::fromDouble(d);
    }
    for (const bool dateOrder : {false, true}) {
        setQuickViewDateOrder(dateOrder);
        QuickView view;
        view.Form_Load("x");
        view.Form_Activate();
        ASSERT_EQ(view.QuickViewArray.rowCount(), pays);
        auto rs = rows->wage.openRecordset(
            QStringLiteral("SELECT Date, Hours, Gross, TaxAllow, PAYE, [TotalTaxable]-[PAYE] AS Net, NonTaxAllow, "
                           "Deductions, takehome, KiwiSaverContribution FROM Wages WHERE EmployeeID = %1 ORDER BY ")
                    .arg(e) +
                (dateOrder ? QStringLiteral("Wages.Date, Wages.WageID") : QStringLiteral("Wages.WageID")),
            RecordsetType::Snapshot);
        // The last page is read first: pages are read in any order.
        const QVariant lastDate = view.QuickViewArray.value(pays - 1, 0);
        for (int r = 0; r < pays; ++r, rs->MoveNext())
            for (int c = 0; c < 10; ++c) {
                const QVariant expected = rs->value(c);
                const QVariant got = view.QuickViewArray.value(r, c);
                ASSERT_EQ(got.metaType(), expected.metaType()) << "row " << r << " column " << c << " seed " << seed;
                ASSERT_EQ(got, expected) << "row " << r << " column " << c << " seed " << seed;
            }
        EXPECT_EQ(lastDate, view.QuickViewArray.value(pays - 1, 0));
        EXPECT_EQ(view.Text1.at(0), Format(QVariant::fromValue(Currency::fromLong(40 * pays)), "fixed"));
        EXPECT_EQ(view.Text1.at(1), Format(QVariant::fromValue(gross), "Currency")) << "seed " << seed;
        EXPECT_EQ(view.Text1.at(3), Format(QVariant::fromValue(paye), "Currency")) << "seed " << seed;
        EXPECT_EQ(view.Text1.at(4), Format(QVariant::fromValue(net), "Currency")) << "seed " << seed;
        EXPECT_EQ(view.Text1.at(6), Format(QVariant::fromValue(deductions), "Currency")) << "seed " << seed;
        EXPECT_EQ(view.cellText(pays, 0), QString()) << "a row beyond the list shows nothing";
        try {
            view.QuickViewArray.value(pays, 0);
            ADD_FAILURE() << "a row beyond the list is out of range";
        } catch (const VbError& error) {
            EXPECT_EQ(error.number(), 9);
        }
    }
}

// The chart has a point for every pay of the list, by date.
TEST_F(QuickViewTest, TheChartHasEveryPayByDate) {
    threePays();
    QuickView view;
    view.Form_Load("x");
    const QList<HistoryPoint> points = view.ChartPoints();
    ASSERT_EQ(points.size(), 3);
    EXPECT_EQ(points.at(0).date, QDate(2026, 3, 5));
    EXPECT_DOUBLE_EQ(points.at(0).gross, 999.99);
    EXPECT_DOUBLE_EQ(points.at(0).paye, 149.99);
    EXPECT_DOUBLE_EQ(points.at(0).takeHome, 999.99 - 149.99 - 19.99);
    EXPECT_EQ(points.at(2).date, QDate(2026, 3, 19));
}

// The screen stays open beside the wage screen: a pay changed there, or by another program, is shown
// with its totals when the list is read again, and nothing is read again while nothing changed.
TEST_F(QuickViewTest, ChangedPaysAreReadAgainWithTheirTotals) {
    threePays();
    QuickView view;
    view.Form_Load("x");
    view.Form_Activate();
    EXPECT_EQ(view.Text1.at(1), "$3,000.10");
    EXPECT_FALSE(view.RefreshIfChanged());
    // This program's own connection.
    qltest::withoutPayGuard(App().WageDatabase, [&] {
        App().WageDatabase.execute(QStringLiteral("UPDATE Wages SET Gross = Gross + 1 WHERE EmployeeID = %1").arg(e));
    });
    EXPECT_TRUE(view.QuickViewArray.changedSinceLoad());
    EXPECT_EQ(view.cellText(0, 2), "$1,001.10") << "a page read after the change shows the pays as they are";
    EXPECT_TRUE(view.QuickViewArray.stale()) << "and marks the count and totals as out of date";
    EXPECT_TRUE(view.RefreshIfChanged());
    EXPECT_FALSE(view.QuickViewArray.stale());
    EXPECT_EQ(view.Text1.at(1), "$3,003.10");
    EXPECT_FALSE(view.RefreshIfChanged());
    // Another connection: a pay added.
    pay(e, QDate(2026, 3, 26), 500, 50, 5);
    EXPECT_TRUE(view.RefreshIfChanged());
    EXPECT_EQ(view.QuickViewArray.rowCount(), 4);
    EXPECT_EQ(view.Text1.at(1), "$3,503.10");
    EXPECT_EQ(view.cellText(3, 0), "26/03/2026");
}
