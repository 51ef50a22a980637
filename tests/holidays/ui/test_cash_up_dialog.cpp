// Cashing up annual holidays on the screen: a week requested on 27 November 2026 by Aroha Testington
// (10.4 weeks untaken) is worked out and put on her pay 5 with the leave paid out recorded; a second
// request in the same year is refused. Read back through the engine and quillary-cli.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/CashUp.h"
#include "holidays/CashUpDialog.h"
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <gtest/gtest.h>

namespace qltest {
namespace {

using namespace ql::holidays;

class CashUpDialogTest : public DemoScreenTest {
protected:
    QList<QStringList> preparation() const override { return fiveWeeklyPays(); }
    int ledgerRows() {
        return context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM LeaveDetails WHERE EmployeeID = 1"))
            .toInt();
    }
};

TEST_F(CashUpDialogTest, AWeekIsCashedUpOnThePayAndASecondIsRefused) {
    ql::CashUpDialog d(context.WageDatabase, 1, 5);
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
    d.dayBox()->setDate(QDate(2026, 11, 27));
    d.weeksBox()->setValue(1);
    const CashUpResult r = ComputeCashUp(context.WageDatabase, 1, QDate(2026, 11, 27), 1);
    ASSERT_TRUE(r.refusal.isEmpty()) << r.refusal.toStdString();
    EXPECT_DOUBLE_EQ(r.balanceWeeks, 10.4);
    EXPECT_TRUE(d.workingText().contains(QStringLiteral("Untaken annual holidays: 10.4000 weeks")))
        << d.workingText().toStdString();
    EXPECT_TRUE(d.workingText().contains(QStringLiteral("1.00 weeks at "))) << d.workingText().toStdString();
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    d.show();
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/cash_up.png"));

    const int rows = ledgerRows();
    ASSERT_TRUE(d.cashUp());
    const QVariant line = context.WageDatabase.scalar(
        QStringLiteral("SELECT d.Payment FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = d.PaymentNameID "
                       "WHERE d.WageID = 5 AND n.PayUnitname = 'Holiday Cash-up'"));
    EXPECT_DOUBLE_EQ(line.toDouble(), r.amount.toDouble());
    EXPECT_GT(line.toDouble(), 0.0);
    EXPECT_EQ(ledgerRows(), rows + 1);
    const QJsonObject o = cli({"cash-up", "1", "2026-11-28", "--weeks", "0.5"});
    EXPECT_DOUBLE_EQ(o.value("CashedUpThisYear").toDouble(), 1.0);
    EXPECT_FALSE(o.value("Refusal").toString().isEmpty());

    // The same year again: refused in the system's words, nothing added.
    d.weeksBox()->setValue(0.5);
    EXPECT_FALSE(d.cashUp());
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("At most one week a year may be cashed up")))
        << dialogs.calls.last().message.toStdString();
    EXPECT_EQ(ledgerRows(), rows + 1);
    EXPECT_EQ(context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM PaymentDetails d JOIN PaymentNames n ON "
                                                         "n.PaymentNameID = d.PaymentNameID WHERE d.WageID = 5 AND "
                                                         "n.PayUnitname = 'Holiday Cash-up'"))
                  .toInt(),
              1);
}

TEST_F(CashUpDialogTest, NoPayIsRefused) {
    ql::ShowCashUp(context.WageDatabase, 1, 0, nullptr);
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("There is no pay to show")));
}

} // namespace
} // namespace qltest
