// The minimum wage check and the 8% of a pay on the screen: a 60-hour week of Aroha Testington's
// ($1,022.75 for 40 hours at $25.50) falls short of 60 hours at $23.95, and "Add Top-up" puts the
// shortfall on the pay; her terms say pay as you go, and "Add 8%" puts the 8% on it. Read back through
// the engine and quillary-cli.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/MinimumWage.h"
#include "holidays/PayAsYouGo.h"
#include "holidays/PayChecksDialog.h"
#include "data/Database.h"
#include <QPushButton>
#include <gtest/gtest.h>

namespace qltest {
namespace {

using namespace ql::holidays;

class PayChecksDialogTest : public DemoScreenTest {
protected:
    QList<QStringList> preparation() const override {
        return {{"add-pay", "1", "2026-10-30"},
                {"pay-days", "1", "--hours", "60"},
                {"holiday-terms", "1", "--pay-as-you-go", "yes"}};
    }
    double line(const char* name) {
        return context.WageDatabase
            .scalar(QStringLiteral("SELECT sum(d.Payment) FROM PaymentDetails d JOIN PaymentNames n ON "
                                   "n.PaymentNameID = d.PaymentNameID WHERE d.WageID = 1 AND n.PayUnitname = '%1'")
                        .arg(QString::fromLatin1(name)))
            .toDouble();
    }
};

TEST_F(PayChecksDialogTest, TheTopUpAndTheEightPerCentArePutOnThePay) {
    ql::PayChecksDialog d(context.WageDatabase, 1);
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
    // 60 x 23.95 = 1,437.00 against 1,022.7462: 414.2538, rounded up to the cent.
    EXPECT_TRUE(d.minimumWageText().contains(QStringLiteral("60.00 hours (entered)"))) << d.minimumWageText().toStdString();
    EXPECT_TRUE(d.minimumWageText().contains(QStringLiteral("Top-up due: 414.26."))) << d.minimumWageText().toStdString();
    EXPECT_TRUE(d.payAsYouGoText().contains(QStringLiteral("terms say pay as you go"))) << d.payAsYouGoText().toStdString();
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    d.show();
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/pay_checks.png"));

    ASSERT_TRUE(d.addTopUp());
    EXPECT_DOUBLE_EQ(line("Minimum wage top-up"), 414.26);
    EXPECT_DOUBLE_EQ(cli({"minimum-wage", "1"}).value("TopUpOnPay").toDouble(), 414.26);
    EXPECT_TRUE(d.minimumWageText().contains(QStringLiteral("On the pay already: 414.26."))) << d.minimumWageText().toStdString();
    EXPECT_FALSE(d.findChild<QPushButton*>(QStringLiteral("cmdAddTopUp"))->isEnabled());

    const PayAsYouGoResult before = PayAsYouGoOf(context.WageDatabase, 1);
    ASSERT_TRUE(before.allowed);
    ASSERT_TRUE(d.addPayAsYouGo());
    const PayAsYouGoResult after = PayAsYouGoOf(context.WageDatabase, 1);
    EXPECT_EQ(after.onPay, before.holidayPay);
    EXPECT_DOUBLE_EQ(cli({"pay-as-you-go", "1"}).value("OnPay").toDouble(), before.holidayPay.toDouble());
}

TEST_F(PayChecksDialogTest, ACommittedPayIsRefusedAndNoPayIsRefused) {
    context.WageDatabase.execute(QStringLiteral("UPDATE Wages SET Reference = 'R1' WHERE WageID = 1"));
    ql::PayChecksDialog d(context.WageDatabase, 1);
    EXPECT_FALSE(d.findChild<QPushButton*>(QStringLiteral("cmdAddTopUp"))->isEnabled());
    EXPECT_FALSE(d.addPayAsYouGo());
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("committed"))) << dialogs.calls.last().message.toStdString();
    EXPECT_DOUBLE_EQ(line("Holiday Pay 8%"), 0.0);
    ql::ShowPayChecks(context.WageDatabase, 0, nullptr);
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("There is no pay to show")));
}

} // namespace
} // namespace qltest
