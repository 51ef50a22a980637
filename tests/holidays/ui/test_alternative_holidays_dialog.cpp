// An employee's alternative holidays on the screen: one earned, taken and paid out by the buttons' keys,
// read back through the engine and quillary-cli; taking one when none is open refused.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/AlternativeHolidaysDialog.h"
#include "holidays/Entitlements.h"
#include <QDateEdit>
#include <QJsonArray>
#include <QLineEdit>
#include <QTableWidget>
#include <gtest/gtest.h>

namespace qltest {
namespace {

using namespace ql::holidays;

class AlternativeHolidaysDialogTest : public DemoScreenTest {};

TEST_F(AlternativeHolidaysDialogTest, EarnedTakenAndPaidOutByKeys) {
    ql::AlternativeHolidaysDialog d(context.WageDatabase, 1);
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
    EXPECT_EQ(d.table()->rowCount(), 0);
    showActive(&d);
    // Two earned (Labour Day and Christmas Day worked), one taken, one paid out.
    d.dayBox()->setDate(QDate(2026, 10, 26));
    key(Qt::Key_M, Qt::AltModifier);
    type(QStringLiteral("Labour Day worked"));
    key(Qt::Key_E, Qt::AltModifier);
    d.dayBox()->setDate(QDate(2026, 12, 25));
    key(Qt::Key_E, Qt::AltModifier);
    ASSERT_EQ(d.table()->rowCount(), 2);
    EXPECT_EQ(d.table()->item(0, 0)->text(), QStringLiteral("26/10/2026"));
    EXPECT_EQ(d.table()->item(0, 3)->text(), QStringLiteral("Labour Day worked"));
    EXPECT_EQ(OpenAlternativeHolidays(context.WageDatabase, 1, QDate(9999, 12, 31)), 2);
    d.dayBox()->setDate(QDate(2027, 1, 11));
    key(Qt::Key_T, Qt::AltModifier);
    d.dayBox()->setDate(QDate(2027, 2, 1));
    key(Qt::Key_P, Qt::AltModifier);
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/alternative_holidays.png"));
    EXPECT_EQ(d.table()->item(0, 1)->text(), QStringLiteral("11/01/2027"));
    EXPECT_EQ(d.table()->item(1, 2)->text(), QStringLiteral("1/02/2027"));
    EXPECT_EQ(OpenAlternativeHolidays(context.WageDatabase, 1, QDate(9999, 12, 31)), 0);

    const QJsonObject o = cli({"alternative-holidays", "1"});
    EXPECT_EQ(o.value("Open").toInt(), 0);
    const QJsonArray list = o.value("AlternativeHolidays").toArray();
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0).toObject().value("earnedOn").toString(), QStringLiteral("2026-10-26"));
    EXPECT_EQ(list.at(0).toObject().value("takenOn").toString(), QStringLiteral("2027-01-11"));
    EXPECT_EQ(list.at(0).toObject().value("comments").toString(), QStringLiteral("Labour Day worked"));
    EXPECT_EQ(list.at(1).toObject().value("paidOut").toString(), QStringLiteral("2027-02-01"));

    // None open: taking one is refused and nothing changes.
    const int messages = int(dialogs.calls.size());
    EXPECT_FALSE(d.closeOne(false));
    ASSERT_EQ(int(dialogs.calls.size()), messages + 1);
    EXPECT_EQ(dialogs.calls.last().message,
              QStringLiteral("Testington, Aroha has no alternative holiday open on 1/02/2027."));
    EXPECT_EQ(AlternativeHolidays(context.WageDatabase, 1).size(), 2);
}

TEST_F(AlternativeHolidaysDialogTest, AnEmployeeNotOnThePayrollIsRefused) {
    ql::ShowAlternativeHolidays(context.WageDatabase, 0, nullptr);
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("Choose an employee first")));
}

} // namespace
} // namespace qltest
