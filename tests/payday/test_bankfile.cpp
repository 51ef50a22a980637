// The direct-credit files of the four banks against their layouts, field by field.
#include "PaydayFixture.h"
#include "payday/BankFile.h"
#include "payday/PaydayPays.h"
#include "payday/PaydayText.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace qltest {
namespace {

const QDate kCreated(2026, 11, 30);

class BankFileTest : public PaydayTest {
protected:
    void SetUp() override {
        PaydayTest::SetUp();
        if (HasFatalFailure()) return;
        giveBankDetails();
    }
    // The committed pays as the file lists them (by family name), with their take-home in cents.
    struct Pay {
        int employee;
        QString name;
        qint64 cents;
        QString reference;
    };
    QList<Pay> pays() {
        QList<Pay> list;
        const int order[] = {4, 5, 3, 2, 1};
        const char* names[] = {"Dana Fictional", "Eli Madeup", "Casey Placeholder", "Barry Sampleton",
                               "Aroha Testington"};
        for (int i = 0; i < 5; ++i) {
            const QString w =
                scalar(QStringLiteral("SELECT max(WageID) FROM Wages WHERE EmployeeID = %1").arg(order[i]))
                    .toString();
            list << Pay{
                order[i], QString::fromLatin1(names[i]),
                ql::Cents(ql::CCur(scalar(QStringLiteral("SELECT TakeHome FROM Wages WHERE WageID = ") + w)))
                    .toLongLong(),
                QStringLiteral("PAY") + w};
        }
        return list;
    }
    qint64 total() {
        qint64 t = 0;
        for (const Pay& p : pays())
            t += p.cents;
        return t;
    }
    QString sixteen(int employee) {
        ql::NzBankAccount a;
        EXPECT_TRUE(ql::ParseNzBankAccount(validAccount(employee), a));
        return a.sixteenDigits();
    }
    QString hash() {
        QStringList accounts;
        for (int id = 1; id <= 5; ++id)
            accounts << validAccount(id);
        return ql::BankHashTotal(accounts);
    }
    QList<QStringList> make(ql::BankFormat format) {
        const ql::BankFile file = ql::MakeBankFile(wage, kPaymentDate, format, kCreated);
        EXPECT_TRUE(file.ok()) << file.refusal.toStdString();
        EXPECT_EQ(file.payments, 5);
        EXPECT_EQ(file.totalCents, total());
        return csvLines(file.text);
    }
};

TEST(BankFileHelpers, HashTotalOfBranchAndAccount) {
    // 3001 x 10^7 + 1234567 and 902 x 10^7 + 68389: the branch and base, bank and suffix left out.
    EXPECT_EQ(ql::BankHashTotal({QStringLiteral("12-3001-1234567-00"), QStringLiteral("01-0902-0068389-00")}),
              QStringLiteral("39031302956"));
    // Above eleven digits the leftmost ones are dropped; below, zeros fill the left.
    EXPECT_EQ(ql::BankHashTotal({QStringLiteral("38-9499-9999999-00"), QStringLiteral("38-9499-9999999-01")}),
              QStringLiteral("89999999998"));
    EXPECT_EQ(ql::BankHashTotal({QStringLiteral("01-0001-0000001-00")}), QStringLiteral("00010000001"));
}

TEST(BankFileHelpers, FieldsKeepTheirLengthsAndNoCommas) {
    EXPECT_EQ(ql::BankText(QStringLiteral("Tussock Hollow Demo Dairy"), 12), QStringLiteral("Tussock Holl"));
    EXPECT_EQ(ql::BankText(QStringLiteral("Smith, \"Jo\""), 12), QStringLiteral("Smith Jo"));
    EXPECT_EQ(ql::BankText(QStringLiteral("Māori\tTe Ātiawa"), 20), QStringLiteral("Maori Te Atiawa"));
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("01-0902-0068389-00")), ql::BankFormat::Anz);
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("06-0001-0000001-00")), ql::BankFormat::Anz);
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("11-5000-0000001-00")), ql::BankFormat::Anz);
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("02-0001-0000001-00")), ql::BankFormat::Bnz);
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("03-0001-0000001-00")), ql::BankFormat::Westpac);
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("12-3001-0000001-00")), ql::BankFormat::Asb);
    EXPECT_EQ(ql::BankFormatForAccount(QStringLiteral("38-9000-0000001-00")), ql::BankFormat::None);
    EXPECT_EQ(ql::BankFormatByName(QStringLiteral("Westpac")), ql::BankFormat::Westpac);
    EXPECT_EQ(ql::BankFormatByName(QStringLiteral("kiwi")), ql::BankFormat::None);
    EXPECT_EQ(ql::BankFormatByName(QStringLiteral("ANZ-Transactive")), ql::BankFormat::AnzTransactive);
    for (ql::BankFormat f : ql::BankFormats())
        EXPECT_EQ(ql::BankFormatByName(ql::BankFormatCode(f)), f);
}

TEST_F(BankFileTest, Anz) {
    // Business internet banking's "domestic extended" import: due and creation dates in the header,
    // thirteen fields a transaction, total, count and hash in the control record.
    const QList<QStringList> lines = make(ql::BankFormat::Anz);
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines.at(0), (QStringList{"1", "", "", "", "", "", "20261201", "20261130", ""}));
    const QList<Pay> list = pays();
    for (int i = 0; i < 5; ++i) {
        const Pay& p = list.at(i);
        EXPECT_EQ(lines.at(i + 1),
                  (QStringList{"2", sixteen(p.employee), "50", QString::number(p.cents), p.name.left(20),
                               p.reference, "Wages", "", "Tussock Holl", "Tussock Hollow Demo", "", p.reference,
                               p.name.section(u' ', 1)}));
    }
    EXPECT_EQ(lines.at(6), (QStringList{"3", QString::number(total()), "5", hash()}));
}

TEST_F(BankFileTest, AnzTransactive) {
    const QList<QStringList> lines = make(ql::BankFormat::AnzTransactive);
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines.at(0), (QStringList{"1", "C", "20261201", "", "20261130", "0109020068389000", "", "M",
                                        "0109020068389000", "Wages", "", "", "", "", "", ""}));
    const QList<Pay> list = pays();
    for (int i = 0; i < 5; ++i) {
        const Pay& p = list.at(i);
        EXPECT_EQ(lines.at(i + 1), (QStringList{"2", sixteen(p.employee), "52", QString::number(p.cents),
                                                p.name, "Tussock Holl", "Wages", p.reference,
                                                p.name.section(u' ', 1), "", p.reference, "", "", ""}));
    }
    EXPECT_EQ(lines.at(6), (QStringList{"3", "", QString::number(total()), "5", hash(), "", "", ""}));
}

TEST_F(BankFileTest, Bnz) {
    const QList<QStringList> lines = make(ql::BankFormat::Bnz);
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines.at(0), (QStringList{"1", "", "", "", "0109020068389000", "7", "261201", "261130", ""}));
    const QList<Pay> list = pays();
    for (int i = 0; i < 5; ++i) {
        const Pay& p = list.at(i);
        EXPECT_EQ(lines.at(i + 1),
                  (QStringList{"2", sixteen(p.employee), "52", QString::number(p.cents), p.name.left(20),
                               p.reference, "Wages", "", "Tussock Holl", "Tussock Hollow Demo", "", p.reference,
                               p.name.section(u' ', 1)}));
    }
    EXPECT_EQ(lines.at(6), (QStringList{"3", QString::number(total()), "5", hash()}));
}

TEST_F(BankFileTest, Asb) {
    const QList<QStringList> lines = make(ql::BankFormat::Asb);
    ASSERT_EQ(lines.size(), 5);
    const QList<Pay> list = pays();
    for (int i = 0; i < 5; ++i) {
        const Pay& p = list.at(i);
        const QString amount =
            QStringLiteral("%1.%2").arg(p.cents / 100).arg(p.cents % 100, 2, 10, QChar(u'0'));
        EXPECT_EQ(lines.at(i), (QStringList{"Wages 20261201", "2026/12/01", "0109020068389000", amount,
                                            "Tussock Holl", "Wages", p.reference, sixteen(p.employee),
                                            p.name.section(u' ', 1), "", p.reference, p.name}));
    }
}

TEST_F(BankFileTest, Westpac) {
    const QList<QStringList> lines = make(ql::BankFormat::Westpac);
    ASSERT_EQ(lines.size(), 6);
    EXPECT_EQ(lines.at(0),
              (QStringList{"A", "1", "01", "0902", "Tussock Hollow Demo Dairy", "", "Wages", "011226", ""}));
    const QList<Pay> list = pays();
    for (int i = 0; i < 5; ++i) {
        const Pay& p = list.at(i);
        const QString a = sixteen(p.employee);
        EXPECT_EQ(lines.at(i + 1),
                  (QStringList{"D", QString::number(i + 2), a.left(2), a.mid(2, 4), a.mid(6, 7), a.mid(13),
                               "52", "DC", QString::number(p.cents), p.name.left(20), "Tussock Holl", "Wages",
                               p.reference, "01", "0902", "0068389", "000", "Tussock Hollow Demo", ""}));
    }
}

TEST_F(BankFileTest, RefusedWithoutTheAccountsItNeeds) {
    ql::SetEmployeeBankAccount(wage, 3, QString());
    ql::BankFile file = ql::MakeBankFile(wage, kPaymentDate, ql::BankFormat::Anz, kCreated);
    EXPECT_FALSE(file.ok());
    EXPECT_TRUE(file.text.isEmpty());
    EXPECT_EQ(file.toFix, QStringList{QStringLiteral("Casey Placeholder: no bank account")});
    // A failing account typed around the check (straight into the table) is caught when the file is made.
    wage.execute(QStringLiteral("INSERT INTO PaydayBankAccounts (EmployeeID, AccountNumber) VALUES (3, "
                                "'01-0902-0068388-00')"));
    file = ql::MakeBankFile(wage, kPaymentDate, ql::BankFormat::Anz, kCreated);
    EXPECT_EQ(file.toFix, QStringList{QStringLiteral(
                              "Casey Placeholder: bank account 01-0902-0068388-00 fails its check")});
    EXPECT_THROW(ql::SetEmployeeBankAccount(wage, 3, QStringLiteral("01-0902-0068388-00")), ql::VbError);
    EXPECT_EQ(ql::EmployeeBankAccount(wage, 3), QStringLiteral("01-0902-0068388-00"));

    wage.execute(QStringLiteral("DELETE FROM PaydaySettings"));
    file = ql::MakeBankFile(wage, kPaymentDate, ql::BankFormat::Anz, kCreated);
    EXPECT_TRUE(file.refusal.startsWith(QStringLiteral("The employer's paying bank account is missing")));
    EXPECT_EQ(ql::MakeBankFile(wage, kPaymentDate, ql::BankFormat::None, kCreated).refusal,
              QStringLiteral("Choose a bank file format: ANZ, ANZ Transactive, ASB, BNZ or Westpac."));
}

TEST_F(BankFileTest, AccountsGoWithTheEmployee) {
    EXPECT_EQ(scalar(QStringLiteral("SELECT count(*) FROM PaydayBankAccounts")).toInt(), 5);
    wage.execute(QStringLiteral("PRAGMA foreign_keys = ON"));
    wage.execute(QStringLiteral("DELETE FROM Employees WHERE EmployeeID = 2"));
    EXPECT_EQ(scalar(QStringLiteral("SELECT count(*) FROM PaydayBankAccounts")).toInt(), 4);
    EXPECT_THROW(ql::SetEmployeeBankAccount(wage, 2, validAccount(2)), ql::VbError);
}

} // namespace
} // namespace qltest
