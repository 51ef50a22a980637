// The printed reports from the command line, as a black box on the demo farm: a committed pay's payslip
// as PDF read back as text, the wage history as JSON and as PDF, and the refusals.
#include "CliRunner.h"
#include "PayGuard.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace qltest {
namespace {

class CliReportsTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(cli({"init", "--demo"}).exitCode, 0);
        // Employee 1 of the demo: the weekly farm hand, Aroha Testington, in KiwiSaver.
        ASSERT_EQ(cli({"add-pay", "1"}).exitCode, 0);
        ASSERT_EQ(cli({"edit", "1", "1", "0", "2", "45"}).exitCode, 0);
        sql("UPDATE Wages SET Date = '2026-03-05', Reference = 'W0001', PaymentDate = '2026-03-06', "
            "Details = 'Calving ''25: extra hours' || char(10) || 'Tom & \"Co\"' WHERE WageID = 1");
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    void sql(const QString& text) {
        ql::Database db;
        db.open(ql::WageFileName());
        // The set-up writes what no user could: a committed pay made open again.
        qltest::withoutPayGuard(db, [&] { db.execute(text); });
        db.close();
    }
    QString file(const QString& name) const { return docs->path() + u'/' + name; }
    static QStringList pdfLines(const QString& pdf) {
        QProcess p;
        p.start("pdftotext", {"-layout", pdf, "-"});
        p.waitForFinished(30000);
        QStringList lines;
        for (const QString& l : QString::fromUtf8(p.readAllStandardOutput()).split(u'\n'))
            if (!l.simplified().isEmpty()) lines << l.simplified();
        return lines;
    }
};

TEST_F(CliReportsTest, PayslipAsPdfReadsAsThePrintedSlip) {
    const CliResult r = cli({"payslip", "1", "--pdf", file("slip.pdf")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.trimmed(), file("slip.pdf"));
    const QStringList lines = pdfLines(file("slip.pdf"));
    const QStringList expected{
        "Payslip For Aroha Testington",
        "Tussock Hollow Demo Dairy Aroha Testington",
        "100 Imaginary Road IRD Number: 111-111-111",
        "RD 9 Weekly up to 5/03/2026",
        "Demoville 9999 Pay 1 of 1",
        "GST Number: 123-456-789 Reference: W0001",
        "Paid on: 6/03/2026",
        "Description Number Rate Amount Total",
        "Gross",
        "Ordinary Time (x1) 45.00 25.50 1147.50",
        "1147.50",
        "Taxable Allowances 0.00",
        "Total Taxable 1147.50",
        "PAYE -214.72",
        "Net 932.78",
        "Non Taxable Allowances 0.00",
        "Deductions",
        "KiwiSaver 1147.50 3.50 40.16",
        "-40.16",
        "Take Home Pay 892.62",
    };
    ASSERT_GE(lines.size(), expected.size()) << lines.join("\n").toStdString();
    EXPECT_EQ(lines.mid(0, expected.size()), expected) << lines.join("\n").toStdString();
    const qsizetype memo = lines.indexOf("Memo");
    ASSERT_GT(memo, 0) << lines.join("\n").toStdString();
    EXPECT_EQ(lines.value(memo + 1), "Calving '25: extra hours");
    EXPECT_EQ(lines.value(memo + 2), "Tom \"Co\"");
    EXPECT_TRUE(lines.last().endsWith("Page 1 of 1")) << lines.last().toStdString();

    // Without --pdf the command still gives the lines.
    const CliResult plain = cli({"payslip", "1"});
    ASSERT_EQ(plain.exitCode, 0);
    EXPECT_TRUE(plain.out.contains("[\"Take Home Pay\", \"\", \"\", \"\", \"892.62\"]"));
}

TEST_F(CliReportsTest, AnUncommittedPayHasNoPrintedSlip) {
    sql("UPDATE Wages SET Reference = NULL WHERE WageID = 1");
    const CliResult r = cli({"payslip", "1", "--pdf", file("slip.pdf")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("Pay 1 has not been committed")) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(file("slip.pdf")));
}

TEST_F(CliReportsTest, AMissingLayoutOrAnUnwritableFileIsAFailureNotACrash) {
    const CliResult unwritable = cli({"payslip", "1", "--pdf", file("no/such/folder/slip.pdf")});
    EXPECT_EQ(unwritable.exitCode, 1);
    EXPECT_TRUE(unwritable.err.contains("cannot be written")) << unwritable.err.toStdString();
    docs->writeFile("Fernhold/Common/Fernhold.ini",
                    QByteArray("[FERNHOLD]\nReportDirectory=") + docs->path().toUtf8() + "/empty\n");
    const CliResult missing = cli({"payslip", "1", "--pdf", file("slip.pdf")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains("/empty/ql_payslip.rpt cannot be found.")) << missing.err.toStdString();
}

TEST_F(CliReportsTest, WrongUsage) {
    EXPECT_EQ(cli({"payslip", "1", "--pdf"}).exitCode, 2);
    EXPECT_EQ(cli({"payslip", "1", "--png", "x"}).exitCode, 2);
    EXPECT_EQ(cli({"history"}).exitCode, 2);
    EXPECT_EQ(cli({"history", "x"}).exitCode, 2);
    EXPECT_EQ(cli({"history", "1", "--from", "5/03/2026"}).exitCode, 2);
    EXPECT_EQ(cli({"history", "1", "--to"}).exitCode, 2);
    EXPECT_EQ(cli({"history", "1", "--sideways"}).exitCode, 2);
    const CliResult nobody = cli({"history", "6"}); // finished: off the payroll
    EXPECT_EQ(nobody.exitCode, 1);
    EXPECT_TRUE(nobody.err.contains("There is no employee 6 on the payroll."));
}

TEST_F(CliReportsTest, HistoryRowsAndTotalsAsJson) {
    ASSERT_EQ(cli({"add-pay", "1"}).exitCode, 0);
    ASSERT_EQ(cli({"add-pay", "1"}).exitCode, 0);
    sql("UPDATE Wages SET Date = '2026-02-26' WHERE WageID = 3"); // entered last, earliest by date
    const CliResult r = cli({"history", "1"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("\"Employee\": \"Testington, Aroha\""));
    EXPECT_TRUE(r.out.contains("\"Order\": \"date\""));
    EXPECT_TRUE(r.out.contains(
        "\"Captions\": [\"Date\", \"Total Hour\", \"Gross\", \"Taxable Allowances\", \"PAYE\", "
        "\"NET\", \"Non Taxable Allowances\", \"Deductions\", \"Take Home\", "
        "\"KiwiSaver Contributions\"]"))
        << r.out.toStdString();
    const QRegularExpression dates("\\{\"Date\": \"([0-9-]+)\"");
    QStringList order;
    for (auto it = dates.globalMatch(r.out); it.hasNext();)
        order << it.next().captured(1);
    ASSERT_EQ(order.size(), 3) << r.out.toStdString();
    EXPECT_EQ(order.first(), "2026-02-26");
    EXPECT_EQ(order.at(1), "2026-03-05");
    EXPECT_TRUE(r.out.contains("{\"Date\": \"2026-03-05\", \"Hours\": ")) << r.out.toStdString();
    EXPECT_TRUE(
        r.out.contains("\"Gross\": 1147.5000, \"TaxAllow\": 0.0000, \"PAYE\": 214.7200, \"Net\": 932.7800"))
        << r.out.toStdString();
    EXPECT_TRUE(r.out.contains("\"Totals\": {\"Date\": null, "));
    EXPECT_TRUE(r.out.contains("\"TotalsShown\": {\"Date\": \"\", "));

    const CliResult entered = cli({"history", "1", "--entry-order"});
    ASSERT_EQ(entered.exitCode, 0);
    EXPECT_TRUE(entered.out.contains("\"Order\": \"entry\""));
    order.clear();
    for (auto it = dates.globalMatch(entered.out); it.hasNext();)
        order << it.next().captured(1);
    EXPECT_EQ(order.first(), "2026-03-05");
    EXPECT_EQ(order.last(), "2026-02-26");

    const CliResult ranged = cli({"history", "1", "--from", "2026-03-01", "--to", "2026-03-05"});
    ASSERT_EQ(ranged.exitCode, 0);
    order.clear();
    for (auto it = dates.globalMatch(ranged.out); it.hasNext();)
        order << it.next().captured(1);
    EXPECT_EQ(order, QStringList{"2026-03-05"});
    EXPECT_TRUE(ranged.out.contains(
        "\"TotalsShown\": {\"Date\": \"\", \"Hours\": \"45.00\", \"Gross\": \"$1,147.50\""))
        << ranged.out.toStdString();
}

TEST_F(CliReportsTest, HistoryAsPdfWithItsTotals) {
    const CliResult r = cli({"history", "1", "--pdf", file("history.pdf")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QStringList lines = pdfLines(file("history.pdf"));
    ASSERT_GE(lines.size(), 4) << lines.join("\n").toStdString();
    EXPECT_EQ(lines.at(0), "Wage History For Testington, Aroha");
    EXPECT_EQ(lines.at(1), "5/03/2026 to 5/03/2026");
    EXPECT_EQ(lines.at(2), "Tussock Hollow Demo Dairy");
    EXPECT_TRUE(
        lines.contains("5/03/2026 45.00 $1,147.50 $0.00 $214.72 $932.78 $0.00 $40.16 $892.62 $0.00") ||
        lines.join("\n").contains("5/03/2026 45.00 $1,147.50"))
        << lines.join("\n").toStdString();
    EXPECT_TRUE(lines.join("\n").contains("Totals 45.00 $1,147.50 $0.00 $214.72 $932.78"))
        << lines.join("\n").toStdString();
    EXPECT_TRUE(lines.last().endsWith("Page 1 of 1"));
}

} // namespace
} // namespace qltest
