// The wage account checks, the loop through the PAYE settings dialog, and the cashbook switch.
#include "CashbookFixture.h"
#include "cashbook/WageAccounts.h"
#include "data/PayeInfo.h"

using namespace ql;
using namespace qltest;

namespace {

class AccountsTest : public CashbookTest {
protected:
    ~AccountsTest() override { setPayeInfoDialog(nullptr); }
    // A dialog that answers from a list: "" for OK, "Cancelled" for Cancel; each opening runs action.
    void scriptDialog(QStringList answers, std::function<void(int)> action = {}) {
        setPayeInfoDialog([this, answers, action](QObject*) mutable {
            const int n = opened++;
            if (action) action(n);
            return answers.value(n);
        });
    }
    int prompts() const {
        int n = 0;
        for (const DialogCall& c : rows.dialogs.calls)
            n += c.heading == QLatin1String("Information Required");
        return n;
    }
    int opened = 0;
};

TEST_F(AccountsTest, NoRowPassesAndTheDialogDoesNotOpen) {
    rows.farm.execute(QStringLiteral("DELETE FROM PayeInfo"));
    EXPECT_TRUE(CheckWageAccounts(rows.farm));
    scriptDialog({QStringLiteral("Cancelled")});
    EXPECT_EQ(EnsureWageAccounts(nullptr), QString());
    EXPECT_EQ(opened, 0);
}

TEST_F(AccountsTest, CompleteAccountsPass) {
    setAccounts();
    EXPECT_TRUE(CheckWageAccounts(rows.farm));
}

TEST_F(AccountsTest, TheTemplateRowHasNoAccountsYet) {
    EXPECT_FALSE(CheckWageAccounts(rows.farm));
}

TEST_F(AccountsTest, AnAdjustmentAccountThatNoLongerExistsOpensTheDialog) {
    setAccounts();
    rows.farm.execute(QStringLiteral("UPDATE PayeInfo SET AdjustAccount = 499999"));
    EXPECT_FALSE(CheckWageAccounts(rows.farm));
    scriptDialog({QStringLiteral("Cancelled")});
    EXPECT_EQ(EnsureWageAccounts(nullptr), QStringLiteral("Cancelled"));
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(prompts(), 0); // Cancel in the dialog ends the loop without the prompt
}

TEST_F(AccountsTest, OkWithAnAccountMissingPromptsAndOkReopens) {
    scriptDialog({QString(), QString()}, [this](int n) {
        if (n == 1) setAccounts();
    });
    EXPECT_EQ(EnsureWageAccounts(nullptr), QString());
    EXPECT_EQ(opened, 2);
    ASSERT_EQ(prompts(), 1);
    const DialogCall& c = rows.dialogs.calls.at(0);
    EXPECT_EQ(c.message, QStringLiteral("Need account information to update the Cashbook\r\n\r\n"
                                        "OR Cancel then turn 'Update Cashbook' off to continue"));
    EXPECT_EQ(c.buttons, 1);
    EXPECT_EQ(c.kindOrLevel, 6);
}

TEST_F(AccountsTest, CancelAtThePromptGivesCancelled) {
    scriptDialog({QString()});
    rows.dialogs.queueAnswer(msg::Cancel);
    EXPECT_EQ(EnsureWageAccounts(nullptr), QStringLiteral("Cancelled"));
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(prompts(), 1);
}

TEST_F(AccountsTest, AFailingCheckCountsAsIncomplete) {
    rows.farm.execute(QStringLiteral("DROP TABLE [Secondary Codes]"));
    EXPECT_FALSE(CheckWageAccounts(rows.farm));
    ASSERT_FALSE(rows.dialogs.calls.isEmpty());
    EXPECT_EQ(rows.dialogs.calls.last().kind, DialogCall::Error);
    EXPECT_TRUE(rows.dialogs.calls.last().heading.endsWith(QStringLiteral(" CheckWageAccounts")));
}

TEST_F(AccountsTest, TheCashbookSwitch) {
    EXPECT_EQ(getWageCash(), 0); // the template row is off
    SwitchWageCash(1);
    EXPECT_EQ(getWageCash(), 1);
    rows.wage.execute(QStringLiteral("DELETE FROM WageInfo"));
    EXPECT_EQ(getWageCash(), 0);
    SwitchWageCash(1);
    EXPECT_EQ(wageValue(QStringLiteral("SELECT count(*) FROM WageInfo")).toInt(), 1);
    EXPECT_EQ(getWageCash(), 1);
    rows.wage.execute(QStringLiteral("UPDATE WageInfo SET Cashbook = NULL"));
    EXPECT_EQ(getWageCash(), 0);
}

} // namespace
