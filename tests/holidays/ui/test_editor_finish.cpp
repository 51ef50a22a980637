// The employee editor's finish date: saving it makes the final pay with the holiday lines, and the
// working is shown in a message.
#include "CliRunner.h"
#include "TestEnv.h"
#include "frame/ScriptedDialogs.h"
#include "payengine/AppContext.h"
#include "staff/frmEmployee.h"
#include "startup/Startup.h"
#include <QLineEdit>
#include <gtest/gtest.h>

namespace qltest {
namespace {

class EditorFinishTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(runCli({"init", "--demo"}, docs->path()).exitCode, 0);
        ASSERT_EQ(runCli({"add-pay", "1", "2026-10-30"}, docs->path()).exitCode, 0);
        for (int i = 0; i < 4; ++i)
            ASSERT_EQ(runCli({"add-pay", "1"}, docs->path()).exitCode, 0);
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ql::OpenWageDatabase();
    }
    void TearDown() override {
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    double gross5() {
        return context.WageDatabase.scalar(QStringLiteral("SELECT Gross FROM Wages WHERE WageID = 5")).toDouble();
    }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

TEST_F(EditorFinishTest, SavingAFinishDateMakesTheFinalPayAndShowsItsWorking) {
    const double before = gross5();
    ql::frmEmployee editor(context.WageDatabase, 1);
    auto* finish = qobject_cast<QLineEdit*>(editor.panel()->field(QStringLiteral("finish")));
    ASSERT_NE(finish, nullptr);
    EXPECT_FALSE(finish->accessibleName().isEmpty());
    finish->setText(QStringLiteral("25/11/2026"));
    context.CurrentEmployeeID = 2; // the ledger shows another employee meanwhile
    ASSERT_TRUE(editor.panel()->save());
    // The final pay's own screen leaves the ledger's employee as it was.
    EXPECT_EQ(context.CurrentEmployeeID, 2);
    ASSERT_FALSE(dialogs.calls.isEmpty());
    const QString shown = dialogs.calls.last().message;
    EXPECT_TRUE(shown.contains(QStringLiteral("Pay 5, not yet committed, covers the last day"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("Annual holidays not taken: "))) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("10.4000 weeks"))) << shown.toStdString();
    const QVariant annual = context.WageDatabase.scalar(
        QStringLiteral("SELECT d.Payment FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = d.PaymentNameID "
                       "WHERE d.WageID = 5 AND n.PayUnitname = 'Annual holidays not taken'"));
    EXPECT_GT(annual.toDouble(), 10000.0);
    EXPECT_GT(gross5(), before + annual.toDouble() - 0.001);
    // The tax: the pay's stored PAYE, its holiday lines taken as an extra pay.
    const double paye = context.WageDatabase.scalar(QStringLiteral("SELECT PAYE FROM Wages WHERE WageID = 5")).toDouble();
    EXPECT_TRUE(shown.contains(QStringLiteral("Tax: PAYE %1 = ").arg(paye, 0, 'f', 2))) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("as an extra pay: four weeks' earnings"))) << shown.toStdString();
    EXPECT_EQ(context.WageDatabase.scalar(QStringLiteral("SELECT DateFinished FROM Employees WHERE EmployeeID = 1"))
                  .toString()
                  .left(10),
              QStringLiteral("2026-11-25"));
}

TEST_F(EditorFinishTest, AnotherEditOfAFinishedEmployeeMakesNoSecondFinalPay) {
    ql::frmEmployee editor(context.WageDatabase, 1);
    qobject_cast<QLineEdit*>(editor.panel()->field(QStringLiteral("finish")))->setText(QStringLiteral("25/11/2026"));
    ASSERT_TRUE(editor.panel()->save());
    const double after = gross5();
    const int messages = int(dialogs.calls.size());
    ql::frmEmployee again(context.WageDatabase, 1);
    qobject_cast<QLineEdit*>(again.panel()->field(QStringLiteral("city")))->setText(QStringLiteral("Gore"));
    ASSERT_TRUE(again.panel()->save());
    EXPECT_EQ(dialogs.calls.size(), messages);
    EXPECT_DOUBLE_EQ(gross5(), after);
}

} // namespace
} // namespace qltest
