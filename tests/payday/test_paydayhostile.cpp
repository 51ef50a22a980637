// Hostile data through every payday and bank file: names with commas, quotes, line breaks, tabs,
// macrons and forty characters; a zero take-home; a nine-digit IRD number; every pay interval and a
// one-off pay. Each file is written through its check, and what it says of each employee is read back.
#include "PaydayFixture.h"
#include "PayGuard.h"
#include "payday/BankFile.h"
#include "payday/BankFileCheck.h"
#include "payday/PaydayFileCheck.h"
#include "payday/PaydayFiles.h"
#include "payday/PaydayText.h"
#include "runtime/VbError.h"

namespace qltest {
namespace {

class HostileTest : public PaydayTest {
protected:
    void SetUp() override {
        PaydayTest::SetUp();
        if (HasFatalFailure()) return;
        giveBankDetails();
    }
    void setName(int employee, const QString& first, const QString& last) {
        ql::Database farm;
        farm.open(ql::DataFileName());
        farm.execute(QStringLiteral("UPDATE Addresses SET ContactFirstName = ?, ContactLastName = ? WHERE AddressID = ?"),
                     {first, last,
                      wage.scalar(QStringLiteral("SELECT AddressID FROM Employees WHERE EmployeeID = %1").arg(employee))});
        farm.close();
    }
    QString wageOf(int employee) {
        return scalar(QStringLiteral("SELECT max(WageID) FROM Wages WHERE EmployeeID = %1").arg(employee)).toString();
    }
    // The file written through its check (a failure of the check fails the test).
    QString written(const QString& text, const QString& what, const ql::FileCheck& check) {
        const QString path = docs->path() + QStringLiteral("/file.csv");
        try {
            ql::WritePaydayFile(path, text, what, check);
        } catch (const ql::VbError& e) {
            ADD_FAILURE() << e.description().toStdString();
            return QString();
        }
        return readFile(path);
    }
    const QDate kMade = QDate(2026, 11, 30);
};

TEST(PaydayText, PlainLettersAndCounts) {
    EXPECT_EQ(ql::PlainAscii(QStringLiteral("Wh\u0101t\u0101 \u0100rohanui")), QStringLiteral("Whata Arohanui"));
    EXPECT_EQ(ql::PlainAscii(QStringLiteral("  Zo\u00eb\tM\u00fcller\r\nSt\u00e6rk \u00d8ye ")), QStringLiteral("Zoe Muller Staerk Oye"));
    EXPECT_EQ(ql::PlainAscii(QStringLiteral("O\u2019Brien \u2013 \u201cJo\u201d\u0007")), QStringLiteral("O'Brien - \"Jo\""));
    EXPECT_EQ(ql::BankText(QStringLiteral("Smith, \"Jo\" O'Brien"), 12), QStringLiteral("Smith Jo OBr"));
    EXPECT_EQ(ql::BankText(QStringLiteral("M\u0101ori"), 12), QStringLiteral("Maori"));
    EXPECT_EQ(ql::Counted(1, QStringLiteral("pay"), QStringLiteral("pays")), QStringLiteral("1 pay"));
    EXPECT_EQ(ql::Counted(0, QStringLiteral("pay"), QStringLiteral("pays")), QStringLiteral("0 pays"));
    EXPECT_EQ(ql::Counted(2, QStringLiteral("payment"), QStringLiteral("payments")), QStringLiteral("2 payments"));
}

TEST(PaydayText, PayCycleOfEveryInterval) {
    EXPECT_EQ(ql::PayCycleCode(52, 7), QStringLiteral("WK"));
    EXPECT_EQ(ql::PayCycleCode(26, 14), QStringLiteral("FT"));
    EXPECT_EQ(ql::PayCycleCode(13, 28), QStringLiteral("4W"));
    EXPECT_EQ(ql::PayCycleCode(12, 0), QStringLiteral("MT"));
    EXPECT_EQ(ql::PayCycleCode(24, 0), QStringLiteral("HM"));
    EXPECT_EQ(ql::PayCycleCode(260, 1), QStringLiteral("DA"));
    EXPECT_EQ(ql::PayCycleCode(0, 0), QStringLiteral("AH"));
    EXPECT_EQ(ql::PayCycleCode(52, 7, true), QStringLiteral("AH"));
    EXPECT_EQ(ql::PayCycleCode(4, 91), QString()); // quarterly: no code in the layout
    for (float perYear : {52.f, 26.f, 13.f, 12.f, 24.f, 260.f, 0.f})
        EXPECT_TRUE(ql::IrPayCycles().contains(ql::PayCycleCode(perYear))) << perYear;
}

TEST_F(HostileTest, HostileNamesEveryIntervalZeroTakeHomeNineDigitIrd) {
    const QString forty = QStringLiteral("Bartholomew-Ignatius Vandersloot-Pacheco"); // 40 characters
    ASSERT_EQ(forty.size(), 40);
    setName(1, QStringLiteral("\"Smithy\", Jo"), QStringLiteral("O'Br\u012bn\tTe\nWh\u0101iti"));
    setName(2, forty.section(u' ', 0, 0), forty.section(u' ', 1));
    setName(3, QStringLiteral("[Kiri] \\ Ng\u0101ti"), QStringLiteral("P\u014dtae,"));
    // Every interval: the four of the template, a daily and a half-monthly one added by the user.
    wage.execute(QStringLiteral("INSERT INTO PayInterval (PayIntervalID, IntervalName, PaysPerYear, NumberOfDays) "
                                "VALUES (6, 'Daily', 260, 1), (7, 'Half-monthly', 24, 0)"));
    qltest::withoutPayGuard(wage, [&] { wage.execute(QStringLiteral("UPDATE Wages SET PayInterval = 'Daily' WHERE WageID = ") + wageOf(4)); });
    // The zero take-home as a pay would store it: a deduction takes all of it.
    qltest::withoutPayGuard(wage, [&] {
        wage.execute(QStringLiteral("INSERT INTO DeductionDetails (WageID, DeductNameID, AmountCalcon, Percentage, "
                                    "Deductions) SELECT WageID, 6, TakeHome, 100, TakeHome FROM Wages WHERE WageID = ") +
                     wageOf(3));
        wage.execute(QStringLiteral("UPDATE Wages SET PayInterval = 'Half-monthly', Deductions = Deductions + TakeHome, "
                                    "TakeHome = 0 WHERE WageID = ") +
                     wageOf(3));
    });
    // A nine-digit IRD number from the extended range.
    QString nine;
    for (qint64 n = 100000000; nine.isEmpty(); ++n)
        if (ql::IsValidIrdNumber(QString::number(n))) nine = QString::number(n);
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = ? WHERE EmployeeID = 2"), {nine});
    // A one-off pay on the same payment date.
    ASSERT_EQ(runCli({QStringLiteral("one-off"), QStringLiteral("5"), QStringLiteral("2026-11-28"),
                      QStringLiteral("300"), QStringLiteral("1"), QStringLiteral("0")},
                     docs->path())
                  .exitCode,
              0);
    qltest::withoutPayGuard(wage, [&] { wage.execute(QStringLiteral("UPDATE Wages SET Reference = 'ONE', PaymentDate = '%1' WHERE WageID = %2")
                     .arg(kPaymentDate.toString(Qt::ISODate), wageOf(5))); });

    const ql::PaydayFile ei = ql::EmploymentInformationFile(wage, kPaymentDate);
    ASSERT_TRUE(ei.ok()) << ei.refusal.toStdString();
    EXPECT_EQ(ei.lines, 6);
    const QString eiText = written(ei.text, QStringLiteral("payday filing file"), ql::CheckEmploymentInformationFile);
    QHash<QString, QStringList> byIrd;
    QStringList cycles;
    for (const QStringList& f : csvLines(eiText)) {
        if (f.at(0) != QStringLiteral("DEI")) continue;
        byIrd.insert(f.at(1), f);
        cycles << f.at(8);
    }
    cycles.sort();
    EXPECT_EQ(cycles, (QStringList{"4W", "AH", "DA", "HM", "MT", "WK"}));
    EXPECT_EQ(byIrd.value(nine).value(2), forty);
    EXPECT_EQ(byIrd.value(ql::IrdNumberNineDigits(validIrd(1))).value(2), QStringLiteral("Smithy Jo O'Brin Te Whaiti"));
    EXPECT_EQ(byIrd.value(ql::IrdNumberNineDigits(validIrd(3))).value(2), QStringLiteral("Kiri Ngati Potae"));
    EXPECT_TRUE(ei.notes.contains(QStringLiteral("[Kiri] \\ Ng\u0101ti P\u014dtae, is written as Kiri Ngati Potae.")))
        << ei.notes.join(u'\n').toStdString();

    const ql::PaydayFile ed = ql::EmployeeDetailsFile(wage, QDate(2020, 1, 1));
    ASSERT_TRUE(ed.ok()) << ed.refusal.toStdString();
    written(ed.text, QStringLiteral("employee details file"), ql::CheckEmployeeDetailsFile);

    for (ql::BankFormat f : ql::BankFormats()) {
        const ql::BankFile b = ql::MakeBankFile(wage, kPaymentDate, f, kMade);
        ASSERT_TRUE(b.ok()) << ql::BankFormatCode(f).toStdString() << b.refusal.toStdString();
        EXPECT_EQ(b.payments, 5) << ql::BankFormatCode(f).toStdString(); // the zero take-home is not paid
        const QString text = written(b.text, QStringLiteral("bank file"),
                                     [f, this](const QString& t) { return ql::CheckBankFile(t, f, kMade); });
        EXPECT_FALSE(text.isEmpty());
        EXPECT_TRUE(text.contains(QStringLiteral("Smithy Jo OBrin Te")) ||
                    text.contains(QStringLiteral("Smithy Jo OBrin Te Whaiti")))
            << ql::BankFormatCode(f).toStdString() << text.toStdString();
        EXPECT_TRUE(text.contains(forty.left(20))) << ql::BankFormatCode(f).toStdString();
        EXPECT_FALSE(text.contains(QStringLiteral("Kiri Ngati"))) << "the zero take-home is paid";
    }
}

// 3: the contact's name with macrons is refused with the plain form offered; a name of 21 letters too.
TEST_F(HostileTest, ContactRulesSayWhatToType) {
    EXPECT_EQ(ql::PayrollContactNameProblem(QStringLiteral("H\u0113mi T\u0101ne")),
              QStringLiteral("The payroll contact's name \"H\u0113mi T\u0101ne\" holds letters Inland Revenue's file does "
                             "not take. Please type it as \"Hemi Tane\"."));
    EXPECT_EQ(ql::PayrollContactNameProblem(QStringLiteral("Abcdefghij Klmnopqrs")), QString()); // 20
    EXPECT_EQ(ql::PayrollContactNameProblem(QStringLiteral("Abcdefghij Klmnopqrst")),
              QStringLiteral("The payroll contact's name is 21 characters long: Inland Revenue takes up to 20."));
    EXPECT_FALSE(ql::PayrollContactNameProblem(QStringLiteral("Pat \"PP\" Payroll")).isEmpty());
    EXPECT_EQ(ql::PayrollContactPhoneProblem(QStringLiteral("021-555 0100")), QString());
    EXPECT_FALSE(ql::PayrollContactPhoneProblem(QStringLiteral("(03) 555 0100")).isEmpty());
    EXPECT_FALSE(ql::PayrollContactPhoneProblem(QStringLiteral("0800 PAYROLL 12")).isEmpty()); // 15
    EXPECT_EQ(ql::PayrollContactEmailProblem(QStringLiteral("pay-roll_1@farm.co.nz")), QString());
    for (const char* wrong : {"a..b@x.nz", "a b@x.nz", "@x.nz", "a@x", "a@@x.nz", "a@x.nz.", ".a@x.nz", "ana@x.nz+"})
        EXPECT_FALSE(ql::PayrollContactEmailProblem(QString::fromLatin1(wrong)).isEmpty()) << wrong;
    ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
    s.contactName = QStringLiteral("H\u0113mi T\u0101ne");
    EXPECT_THROW(ql::SavePaydaySettings(wage, s), ql::VbError);
    EXPECT_EQ(ql::LoadPaydaySettings(wage).contactName, QStringLiteral("Pat Payroll"));
}

// 2: a new employee without a KiwiSaver status stops the details file and is named.
TEST_F(HostileTest, NewEmployeeWithoutKiwiSaverStatusIsNamed) {
    ql::SetEmployeeKiwiSaverStatus(wage, 1, QString());
    EXPECT_THROW(ql::SetEmployeeKiwiSaverStatus(wage, 1, QStringLiteral("XX")), ql::VbError);
    wage.execute(QStringLiteral("UPDATE Employees SET DateHired = '2026-11-20' WHERE EmployeeID = 1"));
    const ql::PaydayFile ed = ql::EmployeeDetailsFile(wage, QDate(2026, 11, 1));
    EXPECT_FALSE(ed.ok());
    EXPECT_EQ(ed.toFix, QStringList{QStringLiteral("Aroha Testington: no KiwiSaver status")});
    ql::SetEmployeeKiwiSaverStatus(wage, 1, QStringLiteral("ae"));
    const ql::PaydayFile fixed = ql::EmployeeDetailsFile(wage, QDate(2026, 11, 1));
    ASSERT_TRUE(fixed.ok()) << fixed.refusal.toStdString();
    EXPECT_TRUE(fixed.text.contains(QStringLiteral(",20261120,,NE,AE,"))) << fixed.text.toStdString();
}

} // namespace
} // namespace qltest
