// The leave tab's holiday pay panel offscreen: the working of a week's annual holidays, the leave put
// on the shown pay, and a committed pay refused with a message.
#include "DemoScreenFixture.h"
#include "holidays/HolidayPayWidget.h"
#include <QAbstractButton>
#include <gtest/gtest.h>

namespace qltest {
namespace {

class HolidayPayWidgetTest : public DemoScreenTest {
protected:
    QList<QStringList> preparation() const override { return fiveWeeklyPays(); }
    void SetUp() override {
        DemoScreenTest::SetUp();
        context.CurrentEmployeeID = 1;
        context.CurrentWageID = 5;
    }
    int lines() {
        return context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM PaymentDetails WHERE WageID = 5")).toInt();
    }
};

TEST_F(HolidayPayWidgetTest, AWeekOfAnnualHolidaysIsWorkedOutAndAddedToThePay) {
    ql::HolidayPayWidget w;
    w.chooseLeave(1, QDate(2026, 12, 7), 5);
    w.workOut();
    w.resize(900, 200);
    w.show();
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) w.grab().save(dir + QStringLiteral("/holiday_pay_panel.png"));
    const QString text = w.workingText();
    EXPECT_TRUE(text.startsWith(QStringLiteral("Rate used: OWP 1022.75; amount 1022.75"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("AWE "))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("5 days of a 5-day week"))) << text.toStdString();
    for (QWidget* child : w.findChildren<QWidget*>())
        if (child->focusPolicy() != Qt::NoFocus && qobject_cast<QAbstractButton*>(child))
            EXPECT_FALSE(child->accessibleName().isEmpty());
    const int before = lines();
    EXPECT_TRUE(w.addToPay());
    EXPECT_EQ(lines(), before + 1);
    const QVariant holiday = context.WageDatabase.scalar(
        QStringLiteral("SELECT d.Payment FROM PaymentDetails d JOIN PaymentNames n ON n.PaymentNameID = d.PaymentNameID "
                       "WHERE d.WageID = 5 AND n.PayUnitname = 'Holiday Pay'"));
    EXPECT_DOUBLE_EQ(holiday.toDouble(), 1022.75);
}

TEST_F(HolidayPayWidgetTest, ACommittedPayIsRefusedWithAMessage) {
    context.WageDatabase.execute(QStringLiteral("UPDATE Wages SET Reference = 'R5' WHERE WageID = 5"));
    ql::HolidayPayWidget w;
    w.chooseLeave(2, QDate(2026, 12, 7), 1);
    const int before = lines();
    EXPECT_FALSE(w.addToPay());
    EXPECT_EQ(lines(), before);
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("committed")));
}

} // namespace
} // namespace qltest
