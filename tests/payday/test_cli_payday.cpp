// quillary-cli payday-file, employee-details-file, bank-file, payday-settings and bank-account as a
// script uses them.
#include "PaydayFixture.h"
#include <QFile>

namespace qltest {
namespace {

TEST(CliPayday, WrongUsage) {
    TempDocuments docs;
    const QStringList wrong[] = {
        {QStringLiteral("payday-file")},
        {QStringLiteral("payday-file"), QStringLiteral("2026-12-01")},
        {QStringLiteral("payday-file"), QStringLiteral("1/12/2026"), QStringLiteral("--out"),
         QStringLiteral("x")},
        {QStringLiteral("payday-file"), QStringLiteral("2026-12-01"), QStringLiteral("--to"),
         QStringLiteral("x")},
        {QStringLiteral("employee-details-file"), QStringLiteral("--out"), QStringLiteral("x")},
        {QStringLiteral("employee-details-file"), QStringLiteral("--since"), QStringLiteral("2026-13-01"),
         QStringLiteral("--out"), QStringLiteral("x")},
        {QStringLiteral("bank-file"), QStringLiteral("2026-12-01"), QStringLiteral("--out"),
         QStringLiteral("x")},
        {QStringLiteral("bank-file"), QStringLiteral("2026-12-01"), QStringLiteral("--format"),
         QStringLiteral("kiwi"), QStringLiteral("--out"), QStringLiteral("x")},
        {QStringLiteral("bank-account")},
        {QStringLiteral("bank-account"), QStringLiteral("one")},
        {QStringLiteral("payday-settings"), QStringLiteral("--colour"), QStringLiteral("red")},
    };
    for (const QStringList& args : wrong)
        EXPECT_EQ(runCli(args, docs.path()).exitCode, 2) << args.join(u' ').toStdString();
}

TEST_F(PaydayTest, FilesFromTheCommandLine) {
    const QString ei = docs->path() + QStringLiteral("/ei.csv");
    // The farm's number and one employee's fail: no file, and whom to fix on standard error.
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = '111-111-112' WHERE EmployeeID = 2"));
    CliResult r =
        runCli({QStringLiteral("payday-file"), QStringLiteral("2026-12-01"), QStringLiteral("--out"), ei},
               docs->path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Barry Sampleton: IRD number 111-111-112 fails")));
    EXPECT_TRUE(r.err.contains(QStringLiteral("The employer: IRD number 123-456-789 fails")));
    EXPECT_FALSE(QFile::exists(ei));

    // Typed settings are checked.
    r = runCli({QStringLiteral("payday-settings"), QStringLiteral("--ird"), QStringLiteral("136410133")},
               docs->path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("fails Inland Revenue's check")));
    r = runCli({QStringLiteral("payday-settings"), QStringLiteral("--name"), QStringLiteral("Pat Payroll"),
                QStringLiteral("--phone"), QStringLiteral("03 555 0101"), QStringLiteral("--email"),
                QStringLiteral("pay@example.nz"), QStringLiteral("--account"), QStringLiteral("01-0902-0068389-00"), QStringLiteral("--ird"),
                QStringLiteral("49-091-850")},
               docs->path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("\"ContactName\": \"Pat Payroll\"")));
    wage.close();
    for (int id = 1; id <= 7; ++id) {
        ql::Database w;
        w.open(ql::WageFileName());
        w.execute(QStringLiteral("UPDATE Employees SET IRDNumber = ? WHERE EmployeeID = ?"),
                  {validIrd(id), id});
        w.close();
    }
    r = runCli({QStringLiteral("payday-file"), QStringLiteral("2026-12-01"), QStringLiteral("--out"), ei},
               docs->path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.trimmed(), ei + QStringLiteral(": 5 employee lines"));
    EXPECT_TRUE(readFile(ei).startsWith(QStringLiteral("HEI2,049091850,20261201,N,N,,Pat Payroll,")));

    const QString ed = docs->path() + QStringLiteral("/ed.csv");
    r = runCli({QStringLiteral("employee-details-file"), QStringLiteral("--since"),
                QStringLiteral("2025-10-01"), QStringLiteral("--out"), ed},
               docs->path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(readFile(ed).startsWith(QStringLiteral("HED2,049091850,")));

    // Bank accounts are checked when typed.
    r = runCli({QStringLiteral("bank-account"), QStringLiteral("1"), QStringLiteral("01-0902-0068388-00")},
               docs->path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("fails its check digit")));
    const QString bank = docs->path() + QStringLiteral("/bank.csv");
    r = runCli({QStringLiteral("bank-file"), QStringLiteral("2026-12-01"), QStringLiteral("--format"),
                QStringLiteral("anz"), QStringLiteral("--out"), bank},
               docs->path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Aroha Testington: no bank account")));
    for (int id = 1; id <= 5; ++id)
        ASSERT_EQ(
            runCli({QStringLiteral("bank-account"), QString::number(id), validAccount(id)}, docs->path())
                .exitCode,
            0);
    r = runCli({QStringLiteral("bank-account"), QStringLiteral("1")}, docs->path());
    EXPECT_EQ(r.out.trimmed(), QLatin1Char('"') + validAccount(1) + QLatin1Char('"'));
    r = runCli({QStringLiteral("bank-file"), QStringLiteral("2026-12-01"), QStringLiteral("--format"),
                QStringLiteral("auto"), QStringLiteral("--out"), bank},
               docs->path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("5 payments")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("ANZ format")));
    EXPECT_TRUE(readFile(bank).startsWith(QStringLiteral("1,,,,,,20261201,")));
    for (const char* format : {"anz-transactive", "asb", "bnz", "westpac"}) {
        r = runCli({QStringLiteral("bank-file"), QStringLiteral("2026-12-01"), QStringLiteral("--format"),
                    QString::fromLatin1(format), QStringLiteral("--out"), bank},
                   docs->path());
        EXPECT_EQ(r.exitCode, 0) << format << r.err.toStdString();
    }
    // A folder that does not exist: the system's message, exit 1.
    r = runCli({QStringLiteral("payday-file"), QStringLiteral("2026-12-01"), QStringLiteral("--out"),
                docs->path() + QStringLiteral("/no/such/folder/ei.csv")},
               docs->path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("could not be written")));
}

} // namespace
} // namespace qltest
