// A failure at any statement inside the posting's transaction leaves the farm database without any
// of the posting, and the commit leaves the pay without a reference.
#include "CashbookFixture.h"
#include "cashbook/CommitModel.h"
#include "cashbook/Posting.h"
#include "data/SqlSupport.h"
#include "frame/Settings.h"
#include "runtime/VbError.h"
#include <QFileInfo>
#include <iostream>

using namespace ql;
using namespace qltest;

namespace {

class PostingFaultTest : public CashbookTest {
protected:
    ~PostingFaultTest() override { setStatementHookForTesting(nullptr); }

    // Counts the statements run on the farm database while its transaction is open, and raises at
    // the failAt-th of them (0: never).
    void watch(int failAt) {
        counted = 0;
        const QString farmFile = QFileInfo(DataFileName()).canonicalFilePath();
        setStatementHookForTesting([this, failAt, farmFile](sqlite3* db, const QString&) {
            if (sqlite3_get_autocommit(db) != 0) return;
            if (QFileInfo(QString::fromUtf8(sqlite3_db_filename(db, "main"))).canonicalFilePath() != farmFile)
                return;
            if (++counted == failAt)
                raiseError(3051, QStringLiteral("DAO.Database"),
                           QStringLiteral("Injected failure %1").arg(counted));
        });
    }
    QString snapshot() {
        return farmValue(
                   QStringLiteral("SELECT count(*) || '/' || coalesce(sum(Amount), 0) FROM Transactions"))
                   .toString() +
               QLatin1Char(' ') +
               farmValue(
                   QStringLiteral(
                       "SELECT count(*) || '/' || coalesce(sum([Net Amount]), 0) FROM TransactionDetails"))
                   .toString();
    }
    int counted = 0;
};

TEST_F(PostingFaultTest, EveryStatementOfThePostingRollsBackWhenItFails) {
    setAccounts(true);
    lastBankRow(1, 5000, 17);
    // A first posting of another pay, so that the table of posted pays exists and is not empty.
    standOn(addPay());
    ASSERT_EQ(PostPayToCashbook(QStringLiteral("1"), QStringLiteral("first"), QDate(2026, 5, 6)), QString());
    const qint32 wageID = addPay();
    standOn(wageID);
    const QString before = snapshot();

    // A good run on a copy of the state tells how many statements the transaction has.
    int statements = 0;
    {
        const QString copy = docs.path() + QStringLiteral("/copy.db");
        rows.farm.execute(QStringLiteral("VACUUM INTO '%1'").arg(copy));
        const QString real = DataFileName();
        WriteSetting(QStringLiteral("FERNHOLD"), QStringLiteral("DataFileName"), copy);
        setStatementHookForTesting(nullptr);
        // Count on the copy.
        const QString copyFile = QFileInfo(copy).canonicalFilePath();
        setStatementHookForTesting([&](sqlite3* db, const QString&) {
            if (sqlite3_get_autocommit(db) == 0 &&
                QFileInfo(QString::fromUtf8(sqlite3_db_filename(db, "main"))).canonicalFilePath() == copyFile)
                ++statements;
        });
        ASSERT_EQ(PostPayToCashbook(QStringLiteral("2"), QStringLiteral("second"), QDate(2026, 5, 6)),
                  QString());
        setStatementHookForTesting(nullptr);
        WriteSetting(QStringLiteral("FERNHOLD"), QStringLiteral("DataFileName"), real);
    }
    // The two headers, five lines, the record, and the commit at least.
    ASSERT_GE(statements, 9);
    std::cout << "statements inside the posting's transaction: " << statements << std::endl;

    for (int k = 1; k <= statements; ++k) {
        watch(k);
        const QString failure =
            PostPayToCashbook(QStringLiteral("2"), QStringLiteral("second"), QDate(2026, 5, 6));
        EXPECT_EQ(failure, QStringLiteral("Injected failure %1").arg(k));
        setStatementHookForTesting(nullptr);
        EXPECT_EQ(snapshot(), before) << "failure at statement " << k;
        EXPECT_FALSE(findPostedPay(rows.farm, wageID).has_value()) << k;

        // The same failure through the commit: the dialog stays open and the pay stays open.
        CommitModel commit(screen);
        commit.Form_Load();
        commit.setCashbook(true);
        watch(k);
        EXPECT_FALSE(commit.cmd_Commit_Click(0)) << k;
        setStatementHookForTesting(nullptr);
        EXPECT_EQ(rows.dialogs.calls.last().message, QStringLiteral("Injected failure %1").arg(k));
        EXPECT_EQ(rows.dialogs.calls.last().heading, QStringLiteral("An Error has Occurred"));
        EXPECT_TRUE(
            IsNull(wageValue(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(wageID))))
            << k;
        EXPECT_EQ(snapshot(), before) << "commit, failure at statement " << k;
    }
    // And without a failure it posts once.
    watch(0);
    EXPECT_EQ(PostPayToCashbook(QStringLiteral("2"), QStringLiteral("second"), QDate(2026, 5, 6)), QString());
    EXPECT_EQ(counted, statements);
    EXPECT_TRUE(findPostedPay(rows.farm, wageID).has_value());
}

} // namespace
