// What stopped or spoiled an upload of the payday and bank files, each as a script meets it on the
// command line: pay cycle codes, the new employee's KiwiSaver status, the payroll contact, hours paid,
// the banks' character sets and due dates, ANZ's two import formats, and counts in messages.
#include "PaydayFixture.h"
#include "PayGuard.h"
#include "runtime/DateFns.h"
#include <QFile>

namespace qltest {
namespace {

class PaydayDefectTest : public PaydayTest {
protected:
    void SetUp() override {
        PaydayTest::SetUp();
        if (HasFatalFailure()) return;
        giveBankDetails();
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    QString path(const QString& name) { return docs->path() + u'/' + name; }
    // The DEI lines of the payment date's file, by employee name.
    QHash<QString, QStringList> deiLines(const QDate& date = kPaymentDate) {
        QHash<QString, QStringList> lines;
        const CliResult r = cli({QStringLiteral("payday-file"), date.toString(Qt::ISODate), QStringLiteral("--out"),
                                 path(QStringLiteral("ei.csv"))});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        for (const QStringList& f : csvLines(readFile(path(QStringLiteral("ei.csv")))))
            if (f.at(0) == QStringLiteral("DEI")) lines.insert(f.at(2), f);
        return lines;
    }
    void setName(int employee, const QString& first, const QString& last) {
        ql::Database farm;
        farm.open(ql::DataFileName());
        farm.execute(QStringLiteral("UPDATE Addresses SET ContactFirstName = ?, ContactLastName = ? WHERE AddressID = "
                                    "(SELECT AddressID FROM Addresses WHERE AddressID = ?)"),
                     {first, last, wage.scalar(QStringLiteral("SELECT AddressID FROM Employees WHERE EmployeeID = %1")
                                                   .arg(employee))});
        farm.close();
    }
};

// 1: the four-weekly employee's cycle is 4W, and a one-off pay is ad hoc (AH).
TEST_F(PaydayDefectTest, PayCycleCodesOfEveryInterval) {
    const QHash<QString, QStringList> lines = deiLines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.value(QStringLiteral("Aroha Testington")).value(8), QStringLiteral("WK"));
    EXPECT_EQ(lines.value(QStringLiteral("Barry Sampleton")).value(8), QStringLiteral("MT"));
    EXPECT_EQ(lines.value(QStringLiteral("Casey Placeholder")).value(8), QStringLiteral("FT"));
    EXPECT_EQ(lines.value(QStringLiteral("Eli Madeup")).value(8), QStringLiteral("4W"));

    // A one-off pay, committed on a day of its own.
    const CliResult r = cli({QStringLiteral("one-off"), QStringLiteral("1"), QStringLiteral("2026-12-03"),
                             QStringLiteral("250"), QStringLiteral("1"), QStringLiteral("0")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    qltest::withoutPayGuard(wage, [&] { wage.execute(QStringLiteral("UPDATE Wages SET Reference = 'ONE' || WageID, PaymentDate = '2026-12-04' "
                                "WHERE WageID = (SELECT max(WageID) FROM Wages)")); });
    const QHash<QString, QStringList> oneOff = deiLines(QDate(2026, 12, 4));
    ASSERT_EQ(oneOff.size(), 1);
    EXPECT_EQ(oneOff.value(QStringLiteral("Aroha Testington")).value(8), QStringLiteral("AH"));
}

// 2: a new employee (NE) carries a KiwiSaver status.
TEST_F(PaydayDefectTest, NewEmployeesCarryAKiwiSaverStatus) {
    const CliResult r = cli({QStringLiteral("employee-details-file"), QStringLiteral("--since"),
                             QStringLiteral("2025-10-01"), QStringLiteral("--out"), path(QStringLiteral("ed.csv"))});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    int newEmployees = 0;
    for (const QStringList& f : csvLines(readFile(path(QStringLiteral("ed.csv")))))
        if (f.at(0) == QStringLiteral("DED") && f.value(10) == QStringLiteral("NE")) {
            ++newEmployees;
            EXPECT_TRUE(QStringList({"AE", "AK", "OK", "NK", "CT"}).contains(f.value(11)))
                << f.at(2).toStdString() << " has KiwiSaver status \"" << f.value(11).toStdString() << '"';
        }
    EXPECT_GT(newEmployees, 0);
}

// 3: the payroll contact is held to the header's rules when typed.
TEST_F(PaydayDefectTest, PayrollContactRefusedWhenTyped) {
    const QStringList wrong[] = {
        {QStringLiteral("--name"), QStringLiteral("Hōhepa Tāwhiri-Mātangi Pōtae")}, // 27, macrons
        {QStringLiteral("--name"), QStringLiteral("Pat, Payroll")},
        {QStringLiteral("--phone"), QStringLiteral("+64 3 555 0100 22")},
        {QStringLiteral("--email"), QStringLiteral("a..b@x.nz")},
        {QStringLiteral("--email"), QStringLiteral("pat payroll@x.nz")},
        {QStringLiteral("--email"), QStringLiteral("nobody.example.nz")},
    };
    for (const QStringList& args : wrong) {
        const CliResult r = cli(QStringList{QStringLiteral("payday-settings")} + args);
        EXPECT_EQ(r.exitCode, 1) << args.join(u' ').toStdString();
    }
    const CliResult ok = cli({QStringLiteral("payday-settings"), QStringLiteral("--name"),
                              QStringLiteral("Pat Payroll"), QStringLiteral("--phone"), QStringLiteral("03 555 0100"),
                              QStringLiteral("--email"), QStringLiteral("pat_payroll@farm.example.nz")});
    EXPECT_EQ(ok.exitCode, 0) << ok.err.toStdString();
}

// 3: a contact stored around the check is caught when the file is written.
TEST_F(PaydayDefectTest, PayrollContactCheckedWhenTheFileIsWritten) {
    wage.execute(QStringLiteral("UPDATE PaydaySettings SET ContactName = '', ContactPhone = '+64 3 555 0100 22'"));
    const CliResult r = cli({QStringLiteral("payday-file"), kPaymentDate.toString(Qt::ISODate), QStringLiteral("--out"),
                             path(QStringLiteral("ei.csv"))});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("ei.csv"))));
}

// 4: hours paid are the hours of the pay's lines paid by the hour, in hundredths.
TEST_F(PaydayDefectTest, HoursPaidFromThePaysLines) {
    const QHash<QString, QStringList> lines = deiLines();
    const QList<std::pair<int, QString>> hourly = {{1, QStringLiteral("Aroha Testington")},
                                                   {3, QStringLiteral("Casey Placeholder")},
                                                   {4, QStringLiteral("Dana Fictional")},
                                                   {5, QStringLiteral("Eli Madeup")}};
    for (const auto& [employee, name] : hourly) {
        const double hours =
            scalar(QStringLiteral("SELECT sum(DetailHours) FROM PaymentDetails INNER JOIN PaymentNames ON "
                                  "PaymentDetails.PaymentNameID = PaymentNames.PaymentNameID WHERE "
                                  "coalesce(PaymentNames.Salary, 0) = 0 AND WageID = (SELECT max(WageID) FROM Wages "
                                  "WHERE EmployeeID = %1)")
                       .arg(employee))
                .toDouble();
        EXPECT_GT(hours, 0.0) << name.toStdString();
        EXPECT_EQ(lines.value(name).value(9), QString::number(std::lround(hours * 100))) << name.toStdString();
    }
}

// 5: letters with macrons are written without them, tabs and line breaks do not reach the file.
TEST_F(PaydayDefectTest, BankFilesCarryPlainLetters) {
    setName(1, QStringLiteral("Ārohā\tMere"), QStringLiteral("Tāmati\nRiwai"));
    for (const char* format : {"anz", "asb", "bnz", "westpac"}) {
        const CliResult r = cli({QStringLiteral("bank-file"), kPaymentDate.toString(Qt::ISODate),
                                 QStringLiteral("--format"), QString::fromLatin1(format), QStringLiteral("--out"),
                                 path(QStringLiteral("bank.csv"))});
        ASSERT_EQ(r.exitCode, 0) << format << r.err.toStdString();
        const QString text = readFile(path(QStringLiteral("bank.csv")));
        EXPECT_TRUE(text.contains(QStringLiteral("Aroha Mere Tamati"))) << format << text.toStdString();
        EXPECT_FALSE(text.contains(u'?')) << format;
        EXPECT_FALSE(text.contains(u'\t')) << format;
        EXPECT_FALSE(text.contains(QStringLiteral("Riwai\r\n")) && text.contains(QStringLiteral("\nRiwai"))) << format;
    }
}

// 5: a pay date already past is said, and today offered; the bank file is not written until chosen.
TEST_F(PaydayDefectTest, PastPayDateSaidAndTodayOffered) {
    qltest::withoutPayGuard(wage, [&] { wage.execute(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-11-06' WHERE Reference IS NOT NULL")); });
    const QDate today = QDate::currentDate();
    ASSERT_LT(QDate(2026, 11, 6), today);
    const QString bank = path(QStringLiteral("bank.txt"));
    CliResult r = cli({QStringLiteral("bank-file"), QStringLiteral("2026-11-06"), QStringLiteral("--format"),
                       QStringLiteral("bnz"), QStringLiteral("--out"), bank});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("past"))) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("--date today"))) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(bank));
    r = cli({QStringLiteral("bank-file"), QStringLiteral("2026-11-06"), QStringLiteral("--format"),
             QStringLiteral("bnz"), QStringLiteral("--date"), QStringLiteral("today"), QStringLiteral("--out"), bank});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QList<QStringList> lines = csvLines(readFile(bank));
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.at(0).value(6), today.toString(QStringLiteral("yyMMdd")));
    EXPECT_GE(lines.at(0).value(6), lines.at(0).value(7));
}

// 6: "anz" is the business internet banking import (domestic extended), "anz-transactive" the corporate
// one; a bank 11 paying account is ANZ's.
TEST_F(PaydayDefectTest, AnzBothImportsAndBankElevenIsAnz) {
    const QString bank = path(QStringLiteral("anz.csv"));
    CliResult r = cli({QStringLiteral("bank-file"), kPaymentDate.toString(Qt::ISODate), QStringLiteral("--format"),
                       QStringLiteral("anz"), QStringLiteral("--out"), bank});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    QList<QStringList> lines = csvLines(readFile(bank));
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines.at(0).mid(0, 6), (QStringList{"1", "", "", "", "", ""}));
    EXPECT_EQ(lines.at(0).value(6), QStringLiteral("20261201"));
    EXPECT_EQ(lines.at(1).size(), 13);
    EXPECT_EQ(lines.at(6).size(), 4);
    r = cli({QStringLiteral("bank-file"), kPaymentDate.toString(Qt::ISODate), QStringLiteral("--format"),
             QStringLiteral("anz-transactive"), QStringLiteral("--out"), bank});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    lines = csvLines(readFile(bank));
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.at(0).mid(0, 2), (QStringList{"1", "C"}));

    ASSERT_EQ(cli({QStringLiteral("payday-settings"), QStringLiteral("--account"), validAccount(0, QStringLiteral("11-5000"))})
                  .exitCode,
              0);
    r = cli({QStringLiteral("bank-file"), kPaymentDate.toString(Qt::ISODate), QStringLiteral("--format"),
             QStringLiteral("auto"), QStringLiteral("--out"), bank});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("ANZ"))) << r.out.toStdString();
}

// 7: one of a thing is said in the singular.
TEST_F(PaydayDefectTest, OneIsSingular) {
    qltest::withoutPayGuard(wage, [&] { wage.execute(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-12-02' WHERE Reference IS NOT NULL AND "
                                "EmployeeID = 1")); });
    const QString date = QStringLiteral("2026-12-02");
    CliResult r = cli({QStringLiteral("payday-file"), date, QStringLiteral("--out"), path(QStringLiteral("ei.csv"))});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral(": 1 employee line\n"))) << r.out.toStdString();
    r = cli({QStringLiteral("bank-file"), date, QStringLiteral("--format"), QStringLiteral("bnz"),
             QStringLiteral("--out"), path(QStringLiteral("bank.txt"))});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral(": 1 payment, "))) << r.out.toStdString();
    wage.execute(QStringLiteral("UPDATE Employees SET DateHired = '2026-11-20' WHERE EmployeeID = 1"));
    r = cli({QStringLiteral("employee-details-file"), QStringLiteral("--since"), QStringLiteral("2026-11-15"),
             QStringLiteral("--out"), path(QStringLiteral("ed.csv"))});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral(": 1 employee\n"))) << r.out.toStdString();
}

} // namespace
} // namespace qltest
