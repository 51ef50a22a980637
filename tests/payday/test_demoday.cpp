// A new user's first payday on the demo farm: one pay run commits the whole week with its payslips,
// and the payday filing and the bank's direct-credit files follow without typing anything first.
#include "PaydayFixture.h"
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace qltest {
namespace {

TEST(DemoPayday, TheDemoFarmCarriesValidPaydayDetails) {
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    ql::Database wage;
    wage.open(ql::WageFileName());
    const ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
    EXPECT_TRUE(ql::PaydaySettingsProblem(s).isEmpty());
    EXPECT_TRUE(ql::IsValidIrdNumber(ql::EmployerIrdNumber(wage)));
    EXPECT_TRUE(ql::IsValidBankAccount(s.payingAccount));
    EXPECT_FALSE(s.contactName.isEmpty());
    QStringList accounts;
    for (int id = 1; id <= 7; ++id) {
        const QString account = ql::EmployeeBankAccount(wage, id);
        EXPECT_TRUE(ql::IsValidBankAccount(account)) << id << ' ' << account.toStdString();
        EXPECT_FALSE(accounts.contains(account)) << account.toStdString();
        accounts << account;
    }
    wage.close();
    // A second init keeps what is there: nothing is overwritten.
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    wage.open(ql::WageFileName());
    EXPECT_EQ(ql::EmployeeBankAccount(wage, 1), accounts.at(0));
    wage.close();
}

TEST(DemoPayday, AWeekPaidInOneActionThenBothFiles) {
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    // A folder for the slips that does not exist yet is made.
    const QString slips = docs.path() + QStringLiteral("/slips/2026-11-06");
    CliResult r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit"),
                          QStringLiteral("--pdf-folder"), slips},
                         docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonArray pays = QJsonDocument::fromJson(r.out.toUtf8()).object().value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 5);
    const QStringList pdfs = QDir(slips).entryList({QStringLiteral("*.pdf")}, QDir::Files);
    EXPECT_EQ(pdfs.size(), 5);
    for (const QString& pdf : pdfs) {
        QFile f(QDir(slips).filePath(pdf));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        EXPECT_TRUE(f.read(5) == "%PDF-") << pdf.toStdString();
    }

    // The files take the payment date the commit gave the pays: one day for the whole run.
    ql::Database wage;
    wage.open(ql::WageFileName());
    EXPECT_EQ(wage.scalar(QStringLiteral("SELECT count(DISTINCT date(PaymentDate)) FROM Wages")).toInt(), 1);
    const QString date =
        wage.scalar(QStringLiteral("SELECT date(min(PaymentDate)) FROM Wages")).toString();
    wage.close();
    const QString ei = docs.path() + QStringLiteral("/ei.csv");
    r = runCli({QStringLiteral("payday-file"), date, QStringLiteral("--out"), ei}, docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.trimmed(), ei + QStringLiteral(": 5 employee lines"));
    const QStringList eiLines = readFile(ei).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(eiLines.size(), 6);
    EXPECT_TRUE(eiLines.at(0).startsWith(QStringLiteral("HEI2,049091850,")));

    const QString bank = docs.path() + QStringLiteral("/bank.csv");
    // The pay date is past by the time the file is made: the bank is told to pay today.
    r = runCli({QStringLiteral("bank-file"), date, QStringLiteral("--format"), QStringLiteral("auto"),
                QStringLiteral("--out"), bank, QStringLiteral("--date"), QStringLiteral("today")},
               docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("5 payments"))) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("ANZ format"))) << r.out.toStdString();

    // Everyone hired before the day is reported once the details file is asked for since their start.
    const QString ed = docs.path() + QStringLiteral("/ed.csv");
    r = runCli({QStringLiteral("employee-details-file"), QStringLiteral("--since"), QStringLiteral("2025-10-01"),
                QStringLiteral("--out"), ed},
               docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(readFile(ed).startsWith(QStringLiteral("HED2,049091850,")));
}

} // namespace
} // namespace qltest
