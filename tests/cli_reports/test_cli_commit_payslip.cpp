// A pay of the demo farm committed by the command line and its payslip printed, end to end: the
// reference and payment date in the payroll, the withdrawal in the cashbook, and the printed slip.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include <QProcess>

namespace qltest {
namespace {

class CliCommitPayslipTest : public DocumentsTest {
protected:
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    static QVariant scalar(const QString& file, const QString& sql) {
        ql::Database db;
        db.open(file);
        const QVariant v = db.scalar(sql);
        db.close();
        return v;
    }
    QString file(const QString& name) const { return docs->path() + u'/' + name; }
};

TEST_F(CliCommitPayslipTest, ACommittedPayIsInBothDatabasesAndOnItsSlip) {
    ASSERT_EQ(cli({"init", "--demo"}).exitCode, 0);
    ASSERT_EQ(cli({"add-pay", "1", "2026-03-05"}).exitCode, 0);
    ASSERT_EQ(cli({"edit", "1", "1", "0", "2", "40"}).exitCode, 0);
    // Not committed yet: no slip.
    EXPECT_EQ(cli({"payslip", "1", "--pdf", file("early.pdf")}).exitCode, 1);

    const CliResult commit = cli(
        {"commit", "1", "--reference", "T100", "--date", "2026-03-06", "--cashbook", "on", "--print", "off"});
    ASSERT_EQ(commit.exitCode, 0) << commit.err.toStdString();
    EXPECT_EQ(scalar(ql::WageFileName(), "SELECT Reference FROM Wages WHERE WageID = 1").toString(),
              QStringLiteral("T100"));
    EXPECT_TRUE(scalar(ql::WageFileName(), "SELECT PaymentDate FROM Wages WHERE WageID = 1")
                    .toString()
                    .startsWith(QStringLiteral("2026-03-06")));
    const double takeHome =
        scalar(ql::WageFileName(), "SELECT TakeHome FROM Wages WHERE WageID = 1").toDouble();
    EXPECT_GT(takeHome, 0.0);
    EXPECT_DOUBLE_EQ(scalar(ql::DataFileName(), "SELECT Amount FROM Transactions WHERE Reference = 'T100' "
                                                "ORDER BY TransactionsID LIMIT 1")
                         .toDouble(),
                     -takeHome);

    // Committing again is a reprint: nothing is posted twice.
    const int posted = scalar(ql::DataFileName(), "SELECT COUNT(*) FROM Transactions").toInt();
    ASSERT_EQ(cli({"commit", "1", "--print", "off"}).exitCode, 0);
    EXPECT_EQ(scalar(ql::DataFileName(), "SELECT COUNT(*) FROM Transactions").toInt(), posted);

    const CliResult slip = cli({"payslip", "1", "--pdf", file("slip.pdf")});
    ASSERT_EQ(slip.exitCode, 0) << slip.err.toStdString();
    QProcess text;
    text.start("pdftotext", {"-layout", file("slip.pdf"), "-"});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString printed = QString::fromUtf8(text.readAllStandardOutput()).simplified();
    EXPECT_TRUE(printed.contains(QStringLiteral("Reference: T100"))) << printed.toStdString();
    EXPECT_TRUE(printed.contains(QStringLiteral("Paid on: 6/03/2026"))) << printed.toStdString();
    EXPECT_TRUE(printed.contains(QStringLiteral("Ordinary Time (x1) 40.00 25.50 1020.00")))
        << printed.toStdString();
}

} // namespace
} // namespace qltest
