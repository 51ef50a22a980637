// A screen that shows a pay as it was before another process committed or posted it: it refuses
// the edit, says why and shows the pay as it now is; the file refuses any write that would change a
// committed or held pay, whoever makes it.
#include "CashbookFixture.h"
#include "cashbook/CommitModel.h"
#include "data/PayFreeze.h"
#include "ledger/WageScreen.h"
#include "runtime/VbError.h"

using namespace ql;
using namespace qltest;

namespace {

class StaleScreenTest : public CashbookTest {
protected:
    // The screen stands on the pay, read while it was still open.
    void show(WageScreen& wage, qint32 id) {
        rows.context.WageForm = &wage;
        wage.datPays.setDatabase(&rows.context.WageDatabase);
        wage.datPays.setRecordSource(QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.WageID = %1").arg(id));
        wage.datPays.Refresh();
        rows.context.CurrentWageID = id;
    }
    // What another process's commit leaves: the reference and date, written by another connection.
    void commitElsewhere(qint32 id, const QString& reference) {
        Database other;
        other.open(WageFileName());
        other.execute(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-05-05', Reference = ? WHERE WageID = ?"),
                      {reference, id});
    }
    QString failureOf(const QString& sql) {
        Database other;
        other.open(WageFileName());
        try {
            other.execute(sql);
        } catch (const VbError& e) {
            return e.description();
        }
        return QString();
    }
};

TEST_F(StaleScreenTest, AnEditOfAPayCommittedElsewhereIsRefusedAndTheScreenShowsIt) {
    WageScreen wage;
    const qint32 id = addPay();
    show(wage, id);
    EXPECT_FALSE(wage.tgrdwages_BeforeRowChange()); // open: editable
    commitElsewhere(id, QStringLiteral("R77"));
    EXPECT_TRUE(IsNull(wage.datPays.value(QStringLiteral("Reference")))) << "the screen read it before";
    const int before = int(rows.dialogs.calls.size());
    EXPECT_TRUE(wage.tgrdwages_BeforeRowChange());
    ASSERT_EQ(rows.dialogs.calls.size(), before + 1);
    EXPECT_EQ(rows.dialogs.calls.last().heading, QStringLiteral("Already Committed"));
    EXPECT_EQ(wage.datPays.value(QStringLiteral("Reference")).toString(), QStringLiteral("R77"));
    rows.context.WageForm = &screen;
}

TEST_F(StaleScreenTest, DeleteOnAStaleScreenAsksAsForACommittedPay) {
    WageScreen wage;
    addPay(); // another pay of the employee, so the delete is not the last one
    const qint32 id = addPay();
    show(wage, id);
    commitElsewhere(id, QStringLiteral("R78"));
    rows.dialogs.queueAnswer(7); // No
    const int before = int(rows.dialogs.calls.size());
    wage.cmdDelete_Click();
    ASSERT_GT(rows.dialogs.calls.size(), before);
    EXPECT_TRUE(rows.dialogs.calls.at(before).message.contains(QStringLiteral("already been committed")))
        << rows.dialogs.calls.at(before).message.toStdString();
    EXPECT_EQ(wageValue(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(id)).toString(),
              QStringLiteral("R78"));
    rows.context.WageForm = &screen;
}

TEST_F(StaleScreenTest, TheFileRefusesChangesToACommittedPay) {
    const qint32 id = addPay();
    // Open, anything may change.
    EXPECT_EQ(failureOf(QStringLiteral("UPDATE Wages SET Hours = 41 WHERE WageID = %1").arg(id)), QString());
    commitElsewhere(id, QStringLiteral("R79"));
    for (const QString& sql :
         {QStringLiteral("UPDATE Wages SET Hours = 60 WHERE WageID = %1"),
          QStringLiteral("UPDATE Wages SET TakeHome = 1 WHERE WageID = %1"),
          QStringLiteral("UPDATE Wages SET Reference = 'R80' WHERE WageID = %1"),
          QStringLiteral("UPDATE Wages SET PaymentDate = '2026-06-01' WHERE WageID = %1"),
          QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, Payment) VALUES (%1, 1, 2, 50)"),
          QStringLiteral("INSERT INTO TaxDetails (WageID, PAYE) VALUES (%1, 0)")})
        EXPECT_TRUE(failureOf(sql.arg(id)).contains(frozenPayText())) << sql.toStdString();
    EXPECT_EQ(wageValue(QStringLiteral("SELECT Hours FROM Wages WHERE WageID = %1").arg(id)).toDouble(), 41.0);
    // The memo is no figure: it may still be written.
    EXPECT_EQ(failureOf(QStringLiteral("UPDATE Wages SET Details = 'note' WHERE WageID = %1").arg(id)), QString());
}

TEST_F(StaleScreenTest, AHeldPayKeepsItsFiguresUntilReleased) {
    const qint32 id = addPay();
    HoldPay(rows.wage, id, QStringLiteral("H1"));
    EXPECT_TRUE(PayFrozen(rows.wage, id));
    EXPECT_TRUE(failureOf(QStringLiteral("UPDATE Wages SET Hours = 60 WHERE WageID = %1").arg(id))
                    .contains(frozenPayText()));
    // Its commit may still store the reference and date.
    EXPECT_EQ(failureOf(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-05-05', Reference = 'H1' WHERE "
                                       "WageID = %1")
                            .arg(id)),
              QString());
    const qint32 open = addPay();
    HoldPay(rows.wage, open, QStringLiteral("H2"));
    ReleasePay(rows.wage, open);
    EXPECT_FALSE(PayFrozen(rows.wage, open));
    EXPECT_EQ(failureOf(QStringLiteral("UPDATE Wages SET Hours = 60 WHERE WageID = %1").arg(open)), QString());
}

} // namespace

namespace {

class OtherWritersTest : public CashbookTest {};

// The file's data version tells the screen that another process wrote: a commit of the shown pay is
// shown at once (the status and the reference), while a change elsewhere in the payroll leaves the
// screen and its unsaved lines alone.
TEST_F(OtherWritersTest, TheScreenShowsAPayCommittedByAnotherProcess) {
    WageScreen wage;
    addPay();
    const qint32 id = addPay();
    rows.context.WageForm = &wage;
    wage.datPays.setDatabase(&rows.context.WageDatabase);
    wage.datPays.setRecordSource(QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.WageID = %1").arg(id));
    wage.datPays.Refresh();
    rows.context.CurrentWageID = id;
    EXPECT_FALSE(wage.followOtherWriters(true)) << "nothing written by anyone else yet";

    // Another process writes, but not this pay: nothing to show.
    {
        Database other;
        other.open(WageFileName());
        other.execute(QStringLiteral("UPDATE Wages SET Details = 'note' WHERE WageID <> %1").arg(id));
    }
    EXPECT_FALSE(wage.followOtherWriters(false));

    {
        Database other;
        other.open(WageFileName());
        other.execute(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-05-05', Reference = 'R90' WHERE WageID = %1")
                          .arg(id));
    }
    EXPECT_TRUE(IsNull(wage.datPays.value(QStringLiteral("Reference"))));
    EXPECT_TRUE(wage.followOtherWriters(false));
    EXPECT_EQ(wage.datPays.value(QStringLiteral("Reference")).toString(), QStringLiteral("R90"));
    EXPECT_EQ(wage.caption(QStringLiteral("lblpayment(8)")), QStringLiteral("Committed, reference: R90"));
    // Read once, the change is not read again.
    EXPECT_FALSE(wage.followOtherWriters(true));
    rows.context.WageForm = &screen;
}

} // namespace
