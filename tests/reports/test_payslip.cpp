// Printing a payslip: the sixteen formulas, the memo and every escaped text, and the slip itself as a
// PDF file read back as text.
#include "ReportsFixture.h"
#include "data/FarmDetails.h"
#include "frame/Texts.h"
#include "reports/PrintPaySlip.h"
#include "reports/ReportDriver.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/VbError.h"
#include <QFile>

using namespace ql;
using namespace qltest;

namespace {

class PaySlipTest : public ReportsTest {
protected:
    void SetUp() override {
        ReportsTest::SetUp();
        qputenv("USER", "mere");
    }
    // A committed pay of employee e with the slip lines of a plain week.
    void standardPay(qint64 e, const QVariant& memo = QVariant()) {
        selectEmployee(e);
        rows->context.CurrentWageID =
            qint32(pay(e, QDate(2026, 3, 5), 1022.75, 180.37, 35.80, "W0001", memo));
        slipLine("Gross");
        slipLine("    Ordinary Time (x1)", "40.11", "25.50", "1022.75");
        slipLine("", "", "", "", "1022.75");
        slipLine("Taxable Allowances", "", "", "0.00");
        slipLine("");
        slipLine("Total Taxable", "", "", "", "1022.75");
        slipLine("PAYE", "", "", "", "-180.37");
        slipLine("Net", "", "", "", "842.38");
        slipLine("");
        slipLine("Deductions");
        slipLine("    KiwiSaver", "1022.75", "3.50", "35.80");
        slipLine("", "", "", "", "-35.80");
        slipLine("");
        slipLine("Take Home Pay", "", "", "", "806.58");
        view.control("datPays").caption = "3 of 12";
    }
    void print(bool showMemo) {
        PrintPaySlip(view, "Weekly up to 5/03/2026", "W0001", QDate(2026, 3, 6), showMemo);
    }
    // Prints to a PDF file as the report screen's output would, and returns the file.
    QString printPdf(bool showMemo) {
        const QString file = outFile("slip.pdf");
        onShow = [file](ReportScreen& s) {
            s.cry_report.Destination = crpt::ToFile;
            s.cry_report.PrintFileName = file;
            s.PrintIt();
        };
        print(showMemo);
        onShow = nullptr;
        return file;
    }
    SlipView view;
};

} // namespace

TEST_F(PaySlipTest, SixteenFormulasExactly) {
    farmDetails("Kea Flats Station", "1 Pretend Lane", "RD 2", "Demoville 9999", "123-456-789");
    standardPay(employee("Mere", "Hale", "111-222-333"));
    print(true);
    ASSERT_EQ(shown.size(), 1);
    const QStringList expected{
        "UserName = \"Kea Flats Station - mere\"",
        "DateLine = 'Weekly up to 5/03/2026'",
        "ReportName = 'Payslip For Mere Hale'",
        "Reference = 'W0001'",
        "PayDate='6/03/2026'",
        "Address1='1 Pretend Lane'",
        "PayNumber='3 of 12'",
        "IRDNumber='123-456-789'",
        "EIRDNum='111-222-333'",
        "Employee='Mere Hale'",
        "Employer='Kea Flats Station'",
        "Address2='RD 2'",
        "Address3='Demoville 9999'",
        "Memo=''",
        "page = 'Page '",
        "of = ' of '",
    };
    EXPECT_EQ(shown.at(0).formulas, expected);
    EXPECT_EQ(shown.at(0).reportFile, QStringLiteral(QUILLARY_SOURCE_DIR "/reports/ql_payslip.rpt"));
    EXPECT_EQ(shown.at(0).dataFiles.at(0), WageFileName());
    EXPECT_EQ(shown.at(0).selection, "");
    EXPECT_EQ(shown.at(0).info,
              "Payslip For Mere Hale\r\nWeekly up to 5/03/2026\r\nReference: W0001\r\nPaid on: 6/03/2026");
}

TEST_F(PaySlipTest, AMemoWithApostropheAmpersandQuoteAndLineBreakIsOneValidFormula) {
    standardPay(employee("Mere", "Hale"), QStringLiteral("Tom's & \"Co\" paid\r\nextra hours"));
    EXPECT_EQ(GetPayMemo(), "Tom's & \"Co\" paid\r\nextra hours");
    print(true);
    EXPECT_EQ(shown.at(0).formulas.at(13), "Memo='Tom''s  \"Co\" paid' + chr(13) + chr(10) + 'extra hours'");
    EXPECT_EQ(ParseFormula(shown.at(0).formulas.at(13)).value, "Tom's  \"Co\" paid\nextra hours");
    const QStringList lines = pdfLines(printPdf(true));
    const qsizetype memo = lines.indexOf("Memo");
    ASSERT_GE(memo, 0) << lines.join("\n").toStdString();
    EXPECT_EQ(lines.value(memo + 1), "Tom's \"Co\" paid");
    EXPECT_EQ(lines.value(memo + 2), "extra hours");
}

TEST_F(PaySlipTest, WithoutTheMemoBoxTheMemoIsTheFixedEmptyFormula) {
    standardPay(employee("Mere", "Hale"), QStringLiteral("private"));
    print(false);
    EXPECT_EQ(shown.at(0).formulas.at(13), "Memo=''");
    const QString text = pdfText(printPdf(false));
    EXPECT_FALSE(text.contains("Memo"));
    EXPECT_FALSE(text.contains("private"));
}

TEST_F(PaySlipTest, NoMemoAndNoPayGiveAnEmptyMemo) {
    standardPay(employee("Mere", "Hale"));
    EXPECT_EQ(GetPayMemo(), "");
    rows->context.CurrentWageID = 999;
    EXPECT_EQ(GetPayMemo(), "");
}

TEST_F(PaySlipTest, ANameWithAnAmpersandPrintsWithoutIt) {
    farmDetails("Smith & Sons", "1 A & B Road", QVariant(), QVariant(), "1");
    standardPay(employee("Jo & Sam", "O'Neil"));
    print(false);
    const QStringList& f = shown.at(0).formulas;
    EXPECT_EQ(f.at(2), "ReportName = 'Payslip For Jo  Sam O''Neil'");
    EXPECT_EQ(f.at(9), "Employee='Jo  Sam O''Neil'");
    EXPECT_EQ(f.at(10), "Employer='Smith  Sons'");
    EXPECT_EQ(f.at(5), "Address1='1 A  B Road'");
    EXPECT_EQ(f.at(0), "UserName = \"Smith & Sons - mere\"") << "the user name is not escaped";
    EXPECT_TRUE(shown.at(0).info.startsWith("Payslip For Jo & Sam O'Neil\r\n"))
        << "the screen's caption keeps it";
    const QStringList lines = pdfLines(printPdf(false));
    EXPECT_EQ(lines.value(0), "Payslip For Jo Sam O'Neil");
}

TEST_F(PaySlipTest, EmptyFarmDetailsGiveUnknownBlankLinesAndTheDefaultName) {
    farmDetails(QVariant(), QVariant(), QVariant(), QVariant(), QVariant());
    standardPay(employee("Mere", "Hale"));
    print(false);
    const QStringList& f = shown.at(0).formulas;
    EXPECT_EQ(f.at(7), "IRDNumber='Unknown'");
    EXPECT_EQ(f.at(5), "Address1=''");
    EXPECT_EQ(f.at(11), "Address2=''");
    EXPECT_EQ(f.at(12), "Address3=''");
    EXPECT_EQ(f.at(8), "EIRDNum='Unknown'") << "an employee without an IRD number";
    EXPECT_EQ(f.at(10), "Employer='Your Farm Name'");
    const QStringList lines = pdfLines(printPdf(false));
    EXPECT_EQ(lines.value(1), "Your Farm Name Mere Hale");
    EXPECT_EQ(lines.value(2), "GST Number: Unknown IRD Number: Unknown");
}

// The farm name has no default for a table without its row: the print stops with the data error and
// the user's action reports it.
TEST_F(PaySlipTest, NoFarmRowStopsThePrintWithTheDataError) {
    rows->farm.execute("DELETE FROM [Farm Details]");
    standardPay(employee("Mere", "Hale"));
    QString a1 = "kept", a2, a3;
    GetEmployerAddress(a1, a2, a3);
    EXPECT_EQ(a1, "kept");
    EXPECT_EQ(GetIRDNumber(), "Unknown");
    try {
        print(false);
        FAIL() << "no error";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), err::NoCurrentRecord);
    }
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(PaySlipTest, TheSlipReadsAsAPayslip) {
    farmDetails("Kea Flats Station", "1 Pretend Lane", "RD 2", "Demoville 9999", "123-456-789");
    standardPay(employee("Wiremu", "Tāwhiri", "111-222-333"));
    const QStringList lines = pdfLines(printPdf(true));
    const QStringList expected{
        "Payslip For Wiremu Tāwhiri",
        "Kea Flats Station Wiremu Tāwhiri",
        "1 Pretend Lane IRD Number: 111-222-333",
        "RD 2 Weekly up to 5/03/2026",
        "Demoville 9999 Pay 3 of 12",
        "GST Number: 123-456-789 Reference: W0001",
        "Paid on: 6/03/2026",
        "Description Number Rate Amount Total",
        "Gross",
        "Ordinary Time (x1) 40.11 25.50 1022.75",
        "1022.75",
        "Taxable Allowances 0.00",
        "Total Taxable 1022.75",
        "PAYE -180.37",
        "Net 842.38",
        "Deductions",
        "KiwiSaver 1022.75 3.50 35.80",
        "-35.80",
        "Take Home Pay 806.58",
    };
    ASSERT_GE(lines.size(), expected.size() + 1) << lines.join("\n").toStdString();
    EXPECT_EQ(lines.mid(0, expected.size()), expected) << lines.join("\n").toStdString();
    EXPECT_TRUE(lines.last().startsWith("Kea Flats Station - mere Printed ")) << lines.last().toStdString();
    EXPECT_TRUE(lines.last().endsWith(" Page 1 of 1")) << lines.last().toStdString();
    EXPECT_EQ(rows->dialogs.calls.size(), 0);
}

TEST_F(PaySlipTest, SectionLinesStandOutAndIndentedLinesDoNot) {
    standardPay(employee("Mere", "Hale"));
    onShow = [](ReportScreen& s) { s.PrintIt(); };
    print(false);
    ASSERT_EQ(printed.size(), 1);
    const PreparedReport& r = printed.at(0);
    ASSERT_EQ(r.rowStyles.size(), r.rows.size());
    for (int i = 0; i < r.rows.size(); ++i) {
        const QString d = r.rows.at(i).at(0);
        EXPECT_EQ(r.rowStyles.at(i), !d.isEmpty() && !d.startsWith(u' ') ? "bold" : "") << d.toStdString();
    }
}
