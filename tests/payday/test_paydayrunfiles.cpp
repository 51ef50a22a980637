// A pay run on the demo farm and on a farm of 200 employees, then its payday filing file, its employee
// details file and a file in every bank format, each written through its check and checked again here.
#include "PaydayFixture.h"
#include "payday/BankFile.h"
#include "payday/BankFileCheck.h"
#include "payday/PaydayFileCheck.h"
#include "runtime/DateFns.h"

namespace qltest {
namespace {

void runAndCheckEveryFile(const QStringList& init, int expectedPays) {
    TempDocuments docs;
    const auto cli = [&](const QStringList& args) { return runCli(args, docs.path()); };
    CliResult r = cli(init);
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    r = cli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();

    ql::Database wage;
    wage.open(ql::WageFileName());
    // The commit pays each on its own date: the files are made for the date most of the run was paid on.
    const QString date =
        wage.scalar(QStringLiteral("SELECT date(PaymentDate) FROM Wages WHERE length(Reference) > 0 GROUP BY "
                                   "date(PaymentDate) ORDER BY count(*) DESC, date(PaymentDate) DESC LIMIT 1"))
            .toString();
    const int pays = wage.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE date(PaymentDate) = '%1'").arg(date))
                         .toInt();
    wage.close();
    EXPECT_GE(pays, expectedPays);

    const QString ei = docs.path() + QStringLiteral("/ei.csv");
    r = cli({QStringLiteral("payday-file"), date, QStringLiteral("--out"), ei});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(ql::CheckEmploymentInformationFile(readFile(ei)), QStringList());
    EXPECT_EQ(readFile(ei).count(QStringLiteral("\r\nDEI,")), pays);

    const QString ed = docs.path() + QStringLiteral("/ed.csv");
    r = cli({QStringLiteral("employee-details-file"), QStringLiteral("--since"), QStringLiteral("2025-04-01"),
             QStringLiteral("--out"), ed});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(ql::CheckEmployeeDetailsFile(readFile(ed)), QStringList());

    // The run's date is past by now: the bank pays today.
    for (ql::BankFormat f : ql::BankFormats()) {
        const QString bank = docs.path() + QStringLiteral("/bank-") + ql::BankFormatCode(f) + QStringLiteral(".csv");
        r = cli({QStringLiteral("bank-file"), date, QStringLiteral("--format"), ql::BankFormatCode(f),
                 QStringLiteral("--date"), QStringLiteral("today"), QStringLiteral("--out"), bank});
        ASSERT_EQ(r.exitCode, 0) << ql::BankFormatCode(f).toStdString() << r.err.toStdString();
        EXPECT_EQ(ql::CheckBankFile(readFile(bank), f, QDate::currentDate()), QStringList())
            << ql::BankFormatCode(f).toStdString();
    }
}

TEST(PaydayRunFiles, DemoFarm) {
    runAndCheckEveryFile({QStringLiteral("init"), QStringLiteral("--demo")}, 5);
}

TEST(PaydayRunFiles, TwoHundredEmployees) {
    runAndCheckEveryFile({QStringLiteral("init"), QStringLiteral("--demo"), QStringLiteral("--employees"),
                          QStringLiteral("200")},
                         100);
}

} // namespace
} // namespace qltest
