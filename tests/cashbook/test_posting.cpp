// Posting a pay to the farm's cashbook: the worked example to the cent, both payment methods, every
// column rule, and the record that refuses a second posting of the same pay.
#include "CashbookFixture.h"
#include "cashbook/CashbookLookups.h"
#include "cashbook/Posting.h"
#include "data/PayeInfo.h"
#include "frame/Settings.h"
#include "runtime/Currency.h"

using namespace ql;
using namespace qltest;

namespace {

class PostingTest : public CashbookTest {
protected:
    QString post(const QString& reference = QStringLiteral("101"),
                 const QString& description = QStringLiteral("Weekly up to 4/05/2026")) {
        return PostPayToCashbook(reference, description, QDate(2026, 5, 6));
    }
    // The lines of a transaction as "account amount particulars quantity memo payertn", in order.
    QStringList lines(qint64 transactionsID) {
        auto rs = rows.farm.openRecordset(
            QStringLiteral("SELECT * FROM TransactionDetails WHERE TransactionsID = %1 "
                           "ORDER BY rowid")
                .arg(transactionsID),
            RecordsetType::Snapshot);
        QStringList out;
        while (!rs->EOF_()) {
            out << QStringLiteral("%1 %2 %3 %4 %5 %6")
                       .arg(rs->value(QStringLiteral("Account Code")).toInt())
                       .arg(CCur(rs->value(QStringLiteral("Net Amount"))).toFixed4())
                       .arg(rs->value(QStringLiteral("Particulars")).toString())
                       .arg(rs->value(QStringLiteral("Quantity")).toFloat())
                       .arg(rs->value(QStringLiteral("Transaction Memo")).toString())
                       .arg(rs->value(QStringLiteral("PAYERtnID")).toInt());
            EXPECT_EQ(CCur(rs->value(QStringLiteral("Net Amount"))),
                      CCur(rs->value(QStringLiteral("Gross Amount"))));
            EXPECT_EQ(rs->value(QStringLiteral("GST Amount")).toInt(), 0);
            EXPECT_EQ(rs->value(QStringLiteral("TaxReturnID")).toInt(), 0);
            EXPECT_EQ(rs->value(QStringLiteral("TaxNumber")).toInt(), 0);
            EXPECT_EQ(rs->value(QStringLiteral("Enterprise Code")).toInt(), 3);
            rs->MoveNext();
        }
        return out;
    }
    std::unique_ptr<Recordset> header(const QString& where) {
        auto rs = rows.farm.openRecordset(QStringLiteral("SELECT * FROM Transactions WHERE ") + where +
                                              QStringLiteral(" ORDER BY TransactionsID"),
                                          RecordsetType::Snapshot);
        EXPECT_FALSE(rs->EOF_()) << where.toStdString();
        return rs;
    }
};

TEST_F(PostingTest, WorkedExampleToTheCent) {
    setAccounts(false);
    lastBankRow(1, 5000, 17);
    standOn(addPay());
    ASSERT_EQ(post(), QString());
    auto pay = header(QStringLiteral("Reference = '101'"));
    EXPECT_EQ(CCur(pay->value(QStringLiteral("Amount"))), Currency::fromLong(-850));
    EXPECT_EQ(CCur(pay->value(QStringLiteral("Balance"))), Currency::fromLong(4150));
    EXPECT_EQ(pay->value(QStringLiteral("Count")).toInt(), 18);
    EXPECT_EQ(pay->value(QStringLiteral("BanksID")).toInt(), 1);
    EXPECT_EQ(pay->value(QStringLiteral("Date")).toDate(), QDate(2026, 5, 6));
    EXPECT_EQ(pay->value(QStringLiteral("Other Party")).toString(), QStringLiteral("Mere Hale"));
    EXPECT_TRUE(IsNull(pay->value(QStringLiteral("PayDate"))));
    EXPECT_TRUE(IsNull(pay->value(QStringLiteral("FrequencyID"))));
    const qint64 id = pay->value(QStringLiteral("TransactionsID")).toLongLong();
    EXPECT_EQ(lines(id), QStringList({QStringLiteral("401001 -1000.0000 Weekly up to 4/05/2026 40  0"),
                                      QStringLiteral("401008 20.0000 Deductions 0  0"),
                                      QStringLiteral("401008 -50.0000 Non taxable Allowances 0  0"),
                                      QStringLiteral("401002 180.0000 PAYE 0  -1")}));
    EXPECT_EQ(CCur(farmValue(
                  QStringLiteral("SELECT sum([Net Amount]) FROM TransactionDetails WHERE TransactionsID = %1")
                      .arg(id))),
              Currency::fromLong(-850));
    // The tax stays on the pay's transaction: no second withdrawal.
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions WHERE Reference = '101'")), 1);
}

TEST_F(PostingTest, WorkedExamplePaidElectronically) {
    setAccounts(true);
    lastBankRow(1, 5000, 17);
    standOn(addPay());
    ASSERT_EQ(post(), QString());
    auto rs = header(QStringLiteral("Reference = '101'"));
    rs->MoveLast();
    ASSERT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(CCur(rs->value(QStringLiteral("Amount"))), Currency::fromLong(-180));
    EXPECT_EQ(rs->value(QStringLiteral("AddressID")).toInt(), 40);
    EXPECT_EQ(rs->value(QStringLiteral("Other Party")).toString(), QStringLiteral("Inland Revenue"));
    EXPECT_EQ(rs->value(QStringLiteral("BanksID")).toInt(), 1); // the entity's main account
    // Both balances were read before the first was written: the second does not include the first.
    EXPECT_EQ(CCur(rs->value(QStringLiteral("Balance"))), Currency::fromLong(4820));
    EXPECT_EQ(rs->value(QStringLiteral("Count")).toInt(), 18);
    EXPECT_EQ(lines(rs->value(QStringLiteral("TransactionsID")).toLongLong()),
              QStringList({QStringLiteral("401005 -180.0000 PAYE 0  0")}));
}

TEST_F(PostingTest, NoTaxStillGetsATaxTransactionOfZero) {
    setAccounts(true);
    PayFigures f;
    f.paye = 0;
    f.deductions = 0;
    f.nonTaxAllow = 0;
    f.takeHome = 1000;
    standOn(addPay(f));
    ASSERT_EQ(post(), QString());
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions")), 2);
    EXPECT_EQ(CCur(farmValue(
                  QStringLiteral("SELECT Amount FROM Transactions ORDER BY TransactionsID DESC LIMIT 1"))),
              Currency());
    // The pay's transaction has its one line.
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM TransactionDetails WHERE TransactionsID = (SELECT "
                                   "min(TransactionsID) FROM Transactions)")),
              1);
}

TEST_F(PostingTest, OneLineWithoutDeductionsAllowancesOrTax) {
    setAccounts(false);
    PayFigures f;
    f.paye = 0;
    f.deductions = 0;
    f.nonTaxAllow = 0;
    f.takeHome = 1000;
    f.details = QStringLiteral("Calving bonus included");
    standOn(addPay(f));
    ASSERT_EQ(post(), QString());
    ASSERT_EQ(count(QStringLiteral("SELECT count(*) FROM TransactionDetails")), 1);
    EXPECT_EQ(farmValue(QStringLiteral("SELECT [Transaction Memo] FROM TransactionDetails")).toString(),
              QStringLiteral("Calving bonus included"));
}

TEST_F(PostingTest, FirstRowOfABankStartsItsBalanceAndCount) {
    setAccounts(false);
    standOn(addPay());
    ASSERT_EQ(post(), QString());
    EXPECT_EQ(CCur(farmValue(QStringLiteral("SELECT Balance FROM Transactions"))), Currency::fromLong(-850));
    EXPECT_EQ(farmValue(QStringLiteral("SELECT [Count] FROM Transactions")).toInt(), 1);
}

TEST_F(PostingTest, SpecialBanksGetPayDateAndFrequency) {
    setAccounts(false);
    rows.wage.execute(QStringLiteral("UPDATE Employees SET BankID = 995"));
    standOn(addPay());
    ASSERT_EQ(post(), QString());
    EXPECT_EQ(farmValue(QStringLiteral("SELECT PayDate FROM Transactions")).toString(),
              QStringLiteral("2026-05-06"));
    EXPECT_EQ(farmValue(QStringLiteral("SELECT FrequencyID FROM Transactions")).toInt(), 1);
    rows.farm.execute(QStringLiteral("DELETE FROM Transactions"));
    rows.farm.execute(QStringLiteral("DELETE FROM QuillaryPostedPays"));
    rows.wage.execute(QStringLiteral("UPDATE Employees SET BankID = 994"));
    ASSERT_EQ(post(), QString());
    EXPECT_TRUE(IsNull(farmValue(QStringLiteral("SELECT PayDate FROM Transactions"))));
    EXPECT_TRUE(IsNull(farmValue(QStringLiteral("SELECT FrequencyID FROM Transactions"))));
}

TEST_F(PostingTest, ParticularsAreCutAtThirtyCharacters) {
    setAccounts(false);
    standOn(addPay());
    const QString thirty = QStringLiteral("Fortnightly up to 12/03/2007.");
    ASSERT_EQ(thirty.size(), 29);
    ASSERT_EQ(post(QStringLiteral("A"), thirty + QStringLiteral("X")), QString());
    EXPECT_EQ(
        farmValue(QStringLiteral("SELECT Particulars FROM TransactionDetails WHERE [Account Code] = 401001"))
            .toString(),
        thirty + QStringLiteral("X"));
    rows.farm.execute(QStringLiteral("DELETE FROM QuillaryPostedPays"));
    rows.farm.execute(QStringLiteral("DELETE FROM Transactions"));
    ASSERT_EQ(post(QStringLiteral("B"), thirty + QStringLiteral("XY")), QString());
    EXPECT_EQ(
        farmValue(QStringLiteral("SELECT Particulars FROM TransactionDetails WHERE [Account Code] = 401001"))
            .toString(),
        thirty + QStringLiteral("X"));
}

TEST_F(PostingTest, EmployeeWithoutARowGoesToBankOneEnterpriseOne) {
    setAccounts(false);
    standOn(addPay());
    rows.context.CurrentEmployeeID = 9999;
    ASSERT_EQ(post(), QString());
    EXPECT_EQ(farmValue(QStringLiteral("SELECT BanksID FROM Transactions")).toInt(), 1);
    EXPECT_EQ(farmValue(QStringLiteral("SELECT DISTINCT [Enterprise Code] FROM TransactionDetails")).toInt(),
              1);
}

TEST_F(PostingTest, DefaultBankFallbacks) {
    // The ordinary query never reads: always 1.
    rows.farm.execute(QStringLiteral("INSERT INTO Banks (BanksID, PartnerID, AccountType) VALUES (7, 1, 0)"));
    EXPECT_EQ(GetDefaultBank(rows.farm, true), 1);
    EXPECT_EQ(GetDefaultBank(rows.farm, false), 1);
    rows.farm.execute(QStringLiteral("UPDATE Banks SET AccountType = 2 WHERE BanksID = 1"));
    EXPECT_EQ(GetDefaultBank(rows.farm, false), 999);
    // No default entity: partner 1.
    rows.farm.execute(QStringLiteral("UPDATE Partners SET PartnerDefault = 0"));
    EXPECT_EQ(GetDefaultPartner(rows.farm), 1);
    rows.farm.execute(QStringLiteral("INSERT INTO Partners (PartnerID, PartnerDefault) VALUES (5, 1)"));
    rows.farm.execute(
        QStringLiteral("INSERT INTO Banks (BanksID, PartnerID, AccountType) VALUES (50, 5, 1)"));
    EXPECT_EQ(GetDefaultPartner(rows.farm), 5);
    EXPECT_EQ(GetDefaultBank(rows.farm, false), 50);
}

TEST_F(PostingTest, TaxWithoutAMainAccountGoesToBank999) {
    setAccounts(true);
    rows.farm.execute(QStringLiteral("UPDATE Banks SET AccountType = 2"));
    standOn(addPay());
    ASSERT_EQ(post(), QString());
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM Transactions WHERE BanksID = 999 AND FrequencyID = 1")),
        1);
}

TEST_F(PostingTest, AccountsFallBackOnTheSettings) {
    rows.farm.execute(QStringLiteral("DELETE FROM PayeInfo"));
    standOn(addPay());
    ASSERT_EQ(post(), QString());
    EXPECT_EQ(
        count(QStringLiteral(
            "SELECT count(*) FROM TransactionDetails WHERE [Account Code] IN (401001, 401002, 401008)")),
        4);
}

TEST_F(PostingTest, APostedPayStaysWhenItIsDeleted) {
    setAccounts(true);
    const qint32 wageID = addPay();
    standOn(wageID);
    ASSERT_EQ(post(), QString());
    rows.wage.execute(QStringLiteral("DELETE FROM Wages WHERE WageID = ?"), {wageID});
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions")), 2);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM TransactionDetails")), 5);
}

TEST_F(PostingTest, ASecondPostingOfThePayIsRefused) {
    setAccounts(true);
    const qint32 wageID = addPay();
    standOn(wageID);
    ASSERT_EQ(post(QStringLiteral("77")), QString());
    auto posted = findPostedPay(rows.farm, wageID);
    ASSERT_TRUE(posted.has_value());
    EXPECT_EQ(posted->Reference, QStringLiteral("77"));
    EXPECT_GT(posted->TaxTransactionsID, posted->TransactionsID);
    const QString refusal = post(QStringLiteral("78"));
    EXPECT_EQ(refusal, alreadyPostedMessage(*posted));
    EXPECT_TRUE(refusal.contains(QStringLiteral("already been posted")));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions")), 2);
}

TEST_F(PostingTest, AFailureBeforeTheTransactionIsReturned) {
    setAccounts(false);
    standOn(addPay());
    WriteSetting(QStringLiteral("FERNHOLD"), QStringLiteral("DataFileName"),
                 docs.path() + QStringLiteral("/none.db"));
    const QString failure = post();
    EXPECT_TRUE(failure.contains(QStringLiteral("none.db"))) << failure.toStdString();
}

} // namespace
