// After a commit the wage screen refuses every edit of the pay, at once and after it shows the row
// again.
#include "CashbookFixture.h"
#include "cashbook/CommitModel.h"
#include "ledger/WageScreen.h"

using namespace ql;
using namespace qltest;

namespace {

class CommittedScreenTest : public CashbookTest {};

TEST_F(CommittedScreenTest, EveryEditOfTheCommittedPayIsRefused) {
    WageScreen wage;
    rows.context.WageForm = &wage;
    const qint32 id = addPay();
    wage.datPays.setDatabase(&rows.context.WageDatabase);
    wage.datPays.setRecordSource(QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.WageID = %1").arg(id));
    wage.datPays.Refresh();
    EXPECT_FALSE(wage.tgrdwages_BeforeRowChange());

    CommitModel commit(wage);
    commit.Form_Load();
    commit.setPrint(false);
    ASSERT_TRUE(commit.cmd_Commit_Click(0));
    const int before = int(rows.dialogs.calls.size());
    EXPECT_TRUE(wage.tgrdwages_BeforeColEdit(1));
    EXPECT_TRUE(wage.tgrdwages_BeforeRowChange());
    ASSERT_EQ(rows.dialogs.calls.size(), before + 2);
    EXPECT_EQ(rows.dialogs.calls.last().heading, QStringLiteral("Already Committed"));

    // Shown again, the row is locked: status, caption, PAYE box.
    wage.datPays_Reposition();
    EXPECT_FALSE(GetPayEditable());
    EXPECT_EQ(wage.caption(QStringLiteral("cmdPrintPay")), QStringLiteral("&Pay Slip"));
    EXPECT_TRUE(wage.control(QStringLiteral("txtPAYE")).locked);
    EXPECT_TRUE(wage.tgrdwages_BeforeRowChange());
    rows.context.WageForm = &screen;
}

} // namespace
