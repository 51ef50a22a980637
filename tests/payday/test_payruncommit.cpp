// Committing a pay run: in order, stopping at the first failure with what was done and what was not,
// and finishing the rest when run again without committing any pay twice. The commit of one pay is
// the committer the main window installs; here a test one that writes the reference as a commit does.
#include "CliRunner.h"
#include "TestEnv.h"
#include "cashbook/WageAccounts.h"
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payday/PayRun.h"
#include "payday/PayRunCommitter.h"
#include "payengine/AppContext.h"
#include "payengine/PayList.h"
#include "payengine/PayView.h"
#include <QHash>

namespace qltest {
namespace {

class PayRunCommitTest : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
        context.WageDatabase.open(ql::WageFileName());
        QStringList failures;
        items = ql::AddPayRunPays(QDate(2026, 11, 6), failures);
        ASSERT_TRUE(failures.isEmpty()) << failures.join(u'\n').toStdString();
        ASSERT_EQ(items.size(), 5);
    }
    void TearDown() override {
        context.WageDatabase.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    // Commits the pay the screen stands on, unless its employee is in failFor.
    ql::PayCommitter committer() {
        return [this](ql::PayView& screen, const ql::PayRunItem& item) -> QString {
            const qint32 onScreen = screen.datPays.value(QStringLiteral("WageID")).toInt();
            EXPECT_EQ(onScreen, item.wageID) << "the screen stands on the pay";
            ++calls[item.wageID];
            if (failFor.contains(item.employeeID)) return QStringLiteral("The wage accounts are missing.");
            screen.datPays.setValueNow(QStringLiteral("Reference"), QStringLiteral("R%1").arg(item.wageID));
            screen.datPays.setValueNow(QStringLiteral("PaymentDate"), QDate(2026, 11, 9));
            return QString();
        };
    }
    int committed() {
        return context.WageDatabase
            .scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE length(Reference) > 0"))
            .toInt();
    }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    QList<ql::PayRunItem> items;
    QHash<qint32, int> calls;
    QSet<qint32> failFor;
};

TEST_F(PayRunCommitTest, StopsAtTheFailureAndFinishesTheRestWhenRunAgain) {
    failFor = {2}; // Barry Sampleton, fourth by family name
    ql::PayRunCommit first = ql::CommitPayRun(items, {}, committer());
    EXPECT_EQ(first.done,
              (QStringList{QStringLiteral("Dana Fictional (R1)"), QStringLiteral("Eli Madeup (R2)"),
                           QStringLiteral("Casey Placeholder (R3)")}));
    EXPECT_EQ(first.failure, QStringLiteral("Barry Sampleton: The wage accounts are missing."));
    EXPECT_EQ(first.notDone,
              (QStringList{QStringLiteral("Barry Sampleton"), QStringLiteral("Aroha Testington")}));
    EXPECT_EQ(committed(), 3);

    failFor.clear();
    // The same (stale) list of items: the pays committed already are not committed again.
    ql::PayRunCommit second = ql::CommitPayRun(items, {}, committer());
    EXPECT_TRUE(second.failure.isEmpty());
    EXPECT_EQ(second.done,
              (QStringList{QStringLiteral("Barry Sampleton (R4)"), QStringLiteral("Aroha Testington (R5)")}));
    EXPECT_EQ(committed(), 5);
    for (const ql::PayRunItem& i : items)
        EXPECT_EQ(calls.value(i.wageID), i.employeeID == 2 ? 2 : 1) << i.name.toStdString();
    // A third run has nothing to do.
    EXPECT_TRUE(ql::CommitPayRun(ql::ProposePayRun(context.WageDatabase, QDate(2026, 11, 6)), {}, committer())
                    .done.isEmpty());
    EXPECT_EQ(committed(), 5);
}

TEST_F(PayRunCommitTest, LeftOutAndCancelled) {
    ql::PayRunCommit r = ql::CommitPayRun(items, {5, 1}, committer(), [](int done, int, const QString&) {
        return done < 2; // the user cancels before the third
    });
    EXPECT_TRUE(r.cancelled);
    EXPECT_EQ(r.done.size(), 2);
    EXPECT_EQ(r.notDone, QStringList{QStringLiteral("Barry Sampleton")});
    EXPECT_EQ(committed(), 2);
    EXPECT_EQ(calls.value(items.at(1).wageID), 0); // Eli Madeup left out
}

// Another process commits a pay after the run looked at it and before its commit read it: the commit
// finds it committed and leaves it, and the user's "Update Cashbook" stays on (the dialog's reprint
// mode would switch it off), so the run's other pays are posted as well.
TEST_F(PayRunCommitTest, APayCommittedElsewhereMeanwhileLeavesTheCashbookChoiceAlone) {
    ASSERT_EQ(ql::getWageCash(), 1);
    const ql::PayRunItem taken = items.first();
    {
        ql::Database other;
        other.open(ql::WageFileName());
        other.execute(
            QStringLiteral("UPDATE Wages SET Reference = 'ELSEWHERE', PaymentDate = '2026-11-09' WHERE WageID = %1")
                .arg(taken.wageID));
        other.close();
    }
    {
        ql::PayRunAdder screen;
        ql::PayView* view = screen.standOn(taken);
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(ql::CommitAsTheDialogDoes(false)(*view, taken).toStdString(),
                  "The pay was committed meanwhile by another user or program.");
    }
    EXPECT_EQ(ql::getWageCash(), 1);
    const ql::PayRunCommit run = ql::CommitPayRun(items, {}, ql::CommitAsTheDialogDoes(false));
    EXPECT_TRUE(run.failure.isEmpty()) << run.failure.toStdString();
    EXPECT_EQ(run.done.size(), items.size() - 1);
    EXPECT_EQ(committed(), int(items.size()));
    ql::Database farm;
    farm.open(ql::DataFileName());
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays")).toInt(), int(items.size()) - 1);
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays WHERE WageID = %1").arg(taken.wageID))
                  .toInt(),
              0);
    farm.close();
}

} // namespace
} // namespace qltest
