// The PAYE typed over the calculated one: the question, the store, and what a No leaves.
#include "PayeFixture.h"
#include "payengine/Paye.h"
#include "runtime/Convert.h"

using namespace ql;

namespace qltest {
namespace {

class EditPayeTest : public PayeTest {
protected:
    void SetUp() override {
        PayeTest::SetUp();
        withoutEquations();
        const qint32 flat = addTaxType(QStringLiteral("S"), {{1e9, 17.5f}});
        const qint32 emp = addEmployee(flat, intervalWith(52), QStringLiteral("S"));
        wage = addWage(emp);
        app.CurrentWageID = wage;
        // 1000 x 17.5% = 175.
        view.setCaption(QStringLiteral("txtPAYE"), CalcPAYE(emp, wage, Currency::fromLong(1000), 52));
        view.PAYEText = view.caption(QStringLiteral("txtPAYE"));
    }
    Currency storedPaye() {
        return CCur(db().scalar(QStringLiteral("SELECT PAYE FROM TaxDetails WHERE WageID = %1").arg(wage)));
    }
    BareView view;
    qint32 wage = 0;
};

TEST_F(EditPayeTest, ConfirmedOverwriteIsStoredAndShown) {
    ASSERT_EQ(view.PAYEText, QStringLiteral("$175.00"));
    view.setCaption(QStringLiteral("txtPAYE"), QStringLiteral("150"));
    dialogs.queueAnswer(6);
    EXPECT_TRUE(CheckPAYEBox(view));
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(dialogs.calls[0].message, QStringLiteral("Are you sure you want to overwrite the calculated PAYE?"));
    EXPECT_EQ(dialogs.calls[0].heading, QStringLiteral("Please Confirm"));
    EXPECT_EQ(dialogs.calls[0].buttons, 4);
    EXPECT_EQ(storedPaye(), Currency::fromLong(150));
    EXPECT_EQ(view.caption(QStringLiteral("lblPaye")), QStringLiteral("$150.00"));
    EXPECT_EQ(view.caption(QStringLiteral("txtPAYE")), QStringLiteral("$150.00"));
    EXPECT_EQ(view.PAYEText, QStringLiteral("$150.00"));
}

TEST_F(EditPayeTest, NoPutsTheAcceptedTextBack) {
    view.setCaption(QStringLiteral("txtPAYE"), QStringLiteral("150"));
    dialogs.queueAnswer(7);
    EXPECT_FALSE(CheckPAYEBox(view));
    EXPECT_EQ(view.caption(QStringLiteral("txtPAYE")), QStringLiteral("$175.00"));
    EXPECT_EQ(storedPaye(), Currency::fromLong(175));
}

TEST_F(EditPayeTest, SameAmountOrNoNumberAsksNothing) {
    view.setCaption(QStringLiteral("txtPAYE"), QStringLiteral("175.001"));
    EXPECT_FALSE(CheckPAYEBox(view));
    view.setCaption(QStringLiteral("txtPAYE"), QStringLiteral("abc"));
    EXPECT_FALSE(CheckPAYEBox(view));
    EXPECT_TRUE(dialogs.calls.isEmpty());
    EXPECT_EQ(view.caption(QStringLiteral("txtPAYE")), QStringLiteral("abc"));
}

TEST_F(EditPayeTest, ZeroIsShownButNotStored) {
    view.setCaption(QStringLiteral("txtPAYE"), QStringLiteral("0"));
    dialogs.queueAnswer(6);
    EXPECT_TRUE(CheckPAYEBox(view));
    EXPECT_EQ(view.caption(QStringLiteral("lblPaye")), QStringLiteral("$0.00"));
    EXPECT_EQ(storedPaye(), Currency::fromLong(175));
}

TEST_F(EditPayeTest, TheNextCalculationReplacesATypedPaye) {
    view.setCaption(QStringLiteral("txtPAYE"), QStringLiteral("150"));
    dialogs.queueAnswer(6);
    CheckPAYEBox(view);
    ASSERT_EQ(storedPaye(), Currency::fromLong(150));
    CalcPAYE(app.CurrentEmployeeID, wage, Currency::fromLong(1000), 52);
    EXPECT_EQ(storedPaye(), Currency::fromLong(175));
}

} // namespace
} // namespace qltest
