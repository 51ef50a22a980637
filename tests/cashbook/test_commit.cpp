// Committing a pay: the proposed reference and date, reprint mode, the tick boxes and their settings,
// the posting, the reference counter, and the payslip print.
#include "CashbookFixture.h"
#include "cashbook/CommitModel.h"
#include "cashbook/PaySlipPrinter.h"
#include "cashbook/Posting.h"
#include "cashbook/WageAccounts.h"
#include "data/PayeInfo.h"
#include "frame/Settings.h"
#include "runtime/DateFns.h"

using namespace ql;
using namespace qltest;

namespace {

class CommitTest : public CashbookTest {
protected:
    ~CommitTest() override {
        setPayeInfoDialog(nullptr);
        setPaySlipPrinter(nullptr);
    }
    void setLastReference(const QString& last) {
        rows.context.WageDatabase.executeScript(
            QStringLiteral("CREATE TABLE IF NOT EXISTS Reference (LastReference TEXT(20))"));
        rows.context.WageDatabase.execute(QStringLiteral("DELETE FROM Reference"));
        rows.context.WageDatabase.execute(QStringLiteral("INSERT INTO Reference (LastReference) VALUES (?)"),
                                          {last});
    }
    QString lastReference() {
        return wageValue(QStringLiteral("SELECT LastReference FROM Reference")).toString();
    }
    QVariant payValue(qint32 wageID, const QString& column) {
        return wageValue(QStringLiteral("SELECT %1 FROM Wages WHERE WageID = %2").arg(column).arg(wageID));
    }
    QString printSetting() {
        return ReadIni(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), FamilyFile());
    }
    // Loads the dialog on a new pay and commits it with the proposed reference; returns the reference.
    QString commitNewPay(bool cashbook = false) {
        const qint32 id = addPay();
        standOn(id);
        CommitModel commit(screen);
        commit.Form_Load();
        commit.setCashbook(cashbook);
        commit.setPrint(false);
        EXPECT_TRUE(commit.cmd_Commit_Click(0));
        return payValue(id, QStringLiteral("Reference")).toString();
    }
};

TEST(NextReference, NumbersGrowTextsStay) {
    EXPECT_EQ(NextReference(QStringLiteral("100")), QStringLiteral("101"));
    EXPECT_EQ(NextReference(QStringLiteral("7.5")), QStringLiteral("8.5"));
    EXPECT_EQ(NextReference(QStringLiteral("999999999999999")), QStringLiteral("1E+15"));
    EXPECT_EQ(NextReference(QStringLiteral("INV7")), QStringLiteral("INV7"));
    EXPECT_EQ(NextReference(QString()), QStringLiteral("1"));
}

TEST_F(CommitTest, FirstCommitEverCreatesTheTableAndProposesOne) {
    ASSERT_FALSE(rows.context.WageDatabase.hasTable(QStringLiteral("Reference")));
    standOn(addPay());
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_TRUE(rows.context.WageDatabase.hasTable(QStringLiteral("Reference")));
    EXPECT_EQ(commit.txtReference, QStringLiteral("1"));
    EXPECT_EQ(commit.title, QStringLiteral("Commit Pay"));
    EXPECT_EQ(commit.commitCaption, QStringLiteral("Commit"));
    EXPECT_FALSE(commit.reprint);
    EXPECT_EQ(commit.payDate, QDate(2026, 5, 4));
    EXPECT_EQ(commit.TxtPayDate, QStringLiteral("4/05/2026"));
    EXPECT_EQ(commit.description(), QStringLiteral("Weekly up to 4/05/2026"));
    EXPECT_FALSE(commit.memoVisible);
}

TEST_F(CommitTest, TypedReferenceDoesNotMoveTheCounter) {
    setLastReference(QStringLiteral("100"));
    const qint32 id = addPay();
    standOn(id);
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_EQ(commit.txtReference, QStringLiteral("101"));
    commit.txtReference = QStringLiteral("500");
    commit.setCashbook(false);
    commit.setPrint(false);
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    EXPECT_EQ(payValue(id, QStringLiteral("Reference")).toString(), QStringLiteral("500"));
    EXPECT_EQ(payValue(id, QStringLiteral("PaymentDate")).toString(), QStringLiteral("2026-05-04"));
    EXPECT_EQ(lastReference(), QStringLiteral("101"));
    EXPECT_EQ(commitNewPay(), QStringLiteral("102"));
}

TEST_F(CommitTest, TextReferencesDoNotGrow) {
    setLastReference(QStringLiteral("INV7"));
    EXPECT_EQ(commitNewPay(), QStringLiteral("INV7"));
    EXPECT_EQ(commitNewPay(), QStringLiteral("INV7"));
}

TEST_F(CommitTest, TheBoxesWriteTheirSettingsAtOnceEvenWhenCancelled) {
    standOn(addPay());
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_FALSE(commit.chkCashbook);
    EXPECT_TRUE(commit.chkPrint); // a missing setting counts as ticked
    commit.setCashbook(true);
    commit.setPrint(false);
    EXPECT_TRUE(commit.cmd_Commit_Click(1));
    EXPECT_EQ(getWageCash(), 1);
    EXPECT_EQ(printSetting(), QStringLiteral("N"));
    EXPECT_TRUE(IsNull(payValue(rows.context.CurrentWageID, QStringLiteral("Reference"))));
}

TEST_F(CommitTest, ReprintingSwitchesTheCashbookOff) {
    SwitchWageCash(1);
    PayFigures f;
    f.reference = QStringLiteral("55");
    const qint32 id = addPay(f);
    rows.wage.execute(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-05-07' WHERE WageID = ?"), {id});
    standOn(id);
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_TRUE(commit.reprint);
    EXPECT_EQ(commit.title, QStringLiteral("Pay Slip"));
    EXPECT_EQ(commit.commitCaption, QStringLiteral("&OK"));
    EXPECT_EQ(commit.txtReference, QStringLiteral("55"));
    EXPECT_EQ(commit.payDate, QDate(2026, 5, 7));
    EXPECT_FALSE(commit.chkCashbook);
    EXPECT_FALSE(commit.cashbookEnabled);
    EXPECT_FALSE(commit.dateEnabled);
    EXPECT_FALSE(commit.referenceEnabled);
    EXPECT_FALSE(commit.printEnabled);
    EXPECT_TRUE(commit.cmd_Commit_Click(1));
    EXPECT_EQ(getWageCash(), 0);
}

TEST_F(CommitTest, ReprintWithPrintingOffDoesNothingVisible) {
    WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("n"));
    setLastReference(QStringLiteral("300"));
    PayFigures f;
    f.reference = QStringLiteral("55");
    const qint32 id = addPay(f);
    standOn(id);
    bool printed = false;
    setPaySlipPrinter([&](const PaySlipRequest&) { printed = true; });
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_FALSE(commit.chkPrint);
    EXPECT_FALSE(commit.printEnabled);
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    EXPECT_FALSE(printed);
    EXPECT_TRUE(rows.dialogs.calls.isEmpty());
    EXPECT_EQ(payValue(id, QStringLiteral("Reference")).toString(), QStringLiteral("55"));
    EXPECT_EQ(payValue(id, QStringLiteral("PaymentDate")).toString(), QStringLiteral("2026-05-04"));
    // The counter goes back to the reprinted pay's reference.
    EXPECT_EQ(lastReference(), QStringLiteral("55"));
}

TEST_F(CommitTest, AnEmptyReferenceOpensInReprintModeAndIsProposedOne) {
    setLastReference(QStringLiteral("9"));
    PayFigures f;
    f.reference = QString(QLatin1String(""));
    const qint32 id = addPay(f);
    standOn(id);
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_TRUE(commit.reprint);
    EXPECT_EQ(commit.txtReference, QStringLiteral("10"));
    commit.setPrint(false);
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    EXPECT_EQ(payValue(id, QStringLiteral("Reference")).toString(), QStringLiteral("10"));
}

TEST_F(CommitTest, MemoBoxOnlyWithAMemo) {
    PayFigures f;
    f.details = QStringLiteral("Paid early for the holidays");
    standOn(addPay(f));
    CommitModel withMemo(screen);
    withMemo.Form_Load();
    EXPECT_TRUE(withMemo.memoVisible);
}

TEST_F(CommitTest, NeedReference) {
    standOn(addPay());
    CommitModel commit(screen);
    commit.Form_Load();
    commit.txtReference.clear();
    EXPECT_FALSE(commit.cmd_Commit_Click(0));
    ASSERT_FALSE(rows.dialogs.calls.isEmpty());
    EXPECT_EQ(rows.dialogs.calls.last().message, QStringLiteral("Need reference"));
    EXPECT_EQ(rows.dialogs.calls.last().heading, QStringLiteral("An Error has Occurred"));
    EXPECT_EQ(commit.focusControl, QStringLiteral("txtReference"));
}

TEST_F(CommitTest, CommitPostsAndPrints) {
    setAccounts(true);
    setLastReference(QStringLiteral("100"));
    PayFigures f;
    f.details = QStringLiteral("Memo");
    const qint32 id = addPay(f);
    standOn(id);
    QList<PaySlipRequest> printed;
    setPaySlipPrinter([&](const PaySlipRequest& r) { printed << r; });
    CommitModel commit(screen);
    bool hidden = false;
    commit.onHide = [&] { hidden = true; };
    commit.Form_Load();
    commit.setCashbook(true);
    commit.setMemo(true);
    commit.setPayDate(QDate(2026, 5, 8));
    EXPECT_EQ(commit.TxtPayDate, QStringLiteral("8/05/2026"));
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    EXPECT_EQ(payValue(id, QStringLiteral("Reference")).toString(), QStringLiteral("101"));
    EXPECT_EQ(payValue(id, QStringLiteral("PaymentDate")).toString(), QStringLiteral("2026-05-08"));
    EXPECT_EQ(count(QStringLiteral(
                  "SELECT count(*) FROM Transactions WHERE Reference = '101' AND Date = '2026-05-08'")),
              2);
    EXPECT_EQ(
        farmValue(QStringLiteral("SELECT Particulars FROM TransactionDetails WHERE [Account Code] = 401001"))
            .toString(),
        QStringLiteral("Weekly up to 4/05/2026"));
    EXPECT_TRUE(hidden);
    ASSERT_EQ(printed.size(), 1);
    EXPECT_EQ(printed.at(0).WageID, id);
    EXPECT_EQ(printed.at(0).Description, QStringLiteral("Weekly up to 4/05/2026"));
    EXPECT_EQ(printed.at(0).Reference, QStringLiteral("101"));
    EXPECT_EQ(printed.at(0).PaymentDate, QDate(2026, 5, 8));
    EXPECT_TRUE(printed.at(0).ShowMemo);
    EXPECT_EQ(printed.at(0).screen, &screen);
}

TEST_F(CommitTest, PrintingWithoutAPrinterSaysItIsNotAvailable) {
    standOn(addPay());
    CommitModel commit(screen);
    commit.Form_Load();
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    EXPECT_EQ(rows.dialogs.calls.at(0).message,
              QStringLiteral("Printing the pay slip is not available in this version yet."));
}

TEST_F(CommitTest, IncompleteAccountsCancelledLeaveThePayOpen) {
    const qint32 id = addPay();
    standOn(id);
    int opened = 0;
    setPayeInfoDialog([&](QObject*) {
        ++opened;
        return QStringLiteral("Cancelled");
    });
    CommitModel commit(screen);
    commit.Form_Load();
    commit.setCashbook(true);
    EXPECT_FALSE(commit.cmd_Commit_Click(0));
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(rows.dialogs.calls.isEmpty()); // "Cancelled" is not shown again
    EXPECT_TRUE(IsNull(payValue(id, QStringLiteral("Reference"))));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions")), 0);
}

TEST_F(CommitTest, APostedPayWithoutItsReferenceIsNotPostedAgain) {
    setAccounts(true);
    const qint32 id = addPay();
    standOn(id);
    // A commit cut off after its posting: the pay is in the cashbook, and still open.
    ASSERT_EQ(PostPayToCashbook(screen.datPays, QStringLiteral("41"),
                                QStringLiteral("Weekly up to 4/05/2026"), QDate(2026, 5, 4)),
              QString());
    CommitModel commit(screen);
    commit.Form_Load();
    commit.setCashbook(true);
    commit.setPrint(false);
    EXPECT_EQ(commit.txtReference, QStringLiteral("1"));
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions")), 2);
    EXPECT_EQ(payValue(id, QStringLiteral("Reference")).toString(), QStringLiteral("41"));
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    EXPECT_TRUE(rows.dialogs.calls.at(0).message.contains(QStringLiteral("not posted again")));
}

TEST_F(CommitTest, ACommittedPayIsNeverPosted) {
    setAccounts(true);
    SwitchWageCash(1);
    PayFigures f;
    f.reference = QStringLiteral("8");
    standOn(addPay(f));
    CommitModel commit(screen);
    commit.Form_Load();
    commit.chkCashbook = true; // even with the box forced on
    commit.setPrint(false);
    EXPECT_TRUE(commit.cmd_Commit_Click(0));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions")), 0);
}

} // namespace
