// The days and hours of a pay on the screen: each day of the period typed in and saved as `pay-days
// --day` saves it, read back through the engine and quillary-cli; a wrong number refused with nothing
// written; the whole pay's days and hours where no single day is given; no pay refused.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/PayDaysDialog.h"
#include "holidays/PayHistory.h"
#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace qltest {
namespace {

using namespace ql::holidays;

class PayDaysDialogTest : public DemoScreenTest {
protected:
    QList<QStringList> preparation() const override { return {{"add-pay", "1", "2026-10-30"}, {"add-pay", "1"}}; }
    // The row of a day in the table.
    static int rowOf(const ql::PayDaysDialog& d, const QDate& day) { return int(d.periodStart().daysTo(day)); }
};

TEST_F(PayDaysDialogTest, EachDayTypedInIsSavedAsTheCommandLineSavesIt) {
    ql::PayDaysDialog d(context.WageDatabase, 1);
    const auto pays = LoadPays(context.WageDatabase, 1);
    ASSERT_FALSE(pays.isEmpty());
    EXPECT_EQ(d.periodStart(), pays.first().start);
    EXPECT_EQ(d.periodEnd(), QDate(2026, 10, 30));
    const int days = int(d.periodStart().daysTo(d.periodEnd())) + 1;
    ASSERT_EQ(d.table()->rowCount(), days);
    // Each day shows its usual hours from the pattern that holds (here the one assumed).
    for (int r = 0; r < days; ++r) {
        const QDate day = d.periodStart().addDays(r);
        const auto p = EffectivePattern(context.WageDatabase, 1, day);
        ASSERT_TRUE(p.has_value());
        EXPECT_EQ(d.table()->item(r, 1)->text(),
                  p->hoursOn(day) > 0 ? QString::number(double(p->hoursOn(day))) : QStringLiteral("day off"))
            << day.toString(Qt::ISODate).toStdString();
    }

    showActive(&d);
    // By keys from the first day's hours: down to Monday 26 October, 10.5 hours, then Tuesday 9 and
    // Wednesday 0 (not worked).
    ASSERT_EQ(QApplication::focusWidget(), d.table());
    ASSERT_EQ(d.table()->currentColumn(), 2);
    for (int r = 0; r < rowOf(d, QDate(2026, 10, 26)); ++r)
        key(Qt::Key_Down);
    for (const char* hours : {"10.5", "9", "0"}) {
        type(QString::fromLatin1(hours));
        key(Qt::Key_Return); // the cell is stored, the dialog stays
        ASSERT_TRUE(d.isVisible());
        key(Qt::Key_Down);
    }
    EXPECT_EQ(d.table()->item(rowOf(d, QDate(2026, 10, 26)), 3)->text(), QStringLiteral("worked"));
    EXPECT_EQ(d.table()->item(rowOf(d, QDate(2026, 10, 28)), 3)->text(), QStringLiteral("not worked"));
    EXPECT_FALSE(d.daysBox()->isEnabled()); // single days give the pay's days and hours
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/pay_days.png"));
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(d.result(), int(QDialog::Accepted));

    const PayDays saved = PayDaysOf(context.WageDatabase, 1);
    ASSERT_EQ(saved.perDay.size(), 3);
    EXPECT_FLOAT_EQ(saved.perDay.value(QDate(2026, 10, 26)), 10.5f);
    EXPECT_FLOAT_EQ(saved.perDay.value(QDate(2026, 10, 28)), 0.0f);
    ASSERT_TRUE(saved.days && saved.hours);
    EXPECT_FLOAT_EQ(*saved.days, 2.0f);
    EXPECT_FLOAT_EQ(*saved.hours, 19.5f);
    const QJsonObject o = cli({"pay-days", "1"});
    EXPECT_DOUBLE_EQ(o.value("DaysWorked").toDouble(), 2.0);
    EXPECT_DOUBLE_EQ(o.value("HoursWorked").toDouble(), 19.5);
    const QJsonArray perDay = o.value("PerDay").toArray();
    ASSERT_EQ(perDay.size(), 3);
    EXPECT_EQ(perDay.at(0).toObject().value("date").toString(), QStringLiteral("2026-10-26"));
    EXPECT_DOUBLE_EQ(perDay.at(0).toObject().value("hours").toDouble(), 10.5);
    // The minimum wage check of the pay reads the hours the screen entered.
    const QJsonObject minimum = cli({"minimum-wage", "1"});
    EXPECT_EQ(minimum.value("HoursFrom").toString(), QStringLiteral("entered"));
    EXPECT_DOUBLE_EQ(minimum.value("Hours").toDouble(), 19.5);

    // What the command line entered, the screen shows; the usual hours fill every day, Clear empties them.
    ASSERT_EQ(runCli({"pay-days", "2", "--day", "2026-11-02=7.25"}, docs->path()).exitCode, 0);
    ql::PayDaysDialog second(context.WageDatabase, 2);
    EXPECT_EQ(second.table()->item(rowOf(second, QDate(2026, 11, 2)), 2)->text(), QStringLiteral("7.25"));
    second.fillUsualHours();
    ASSERT_TRUE(second.save());
    EXPECT_EQ(PayDaysOf(context.WageDatabase, 2).perDay.size(), second.table()->rowCount());
    second.clearDays();
    ASSERT_TRUE(second.save());
    EXPECT_TRUE(PayDaysOf(context.WageDatabase, 2).perDay.isEmpty());
    EXPECT_TRUE(cli({"pay-days", "2"}).value("PerDay").toArray().isEmpty());
}

TEST_F(PayDaysDialogTest, AWrongNumberIsRefusedAndNothingIsWritten) {
    ql::PayDaysDialog d(context.WageDatabase, 1);
    d.table()->item(rowOf(d, QDate(2026, 10, 26)), 2)->setText(QStringLiteral("8"));
    d.table()->item(rowOf(d, QDate(2026, 10, 27)), 2)->setText(QStringLiteral("abc"));
    EXPECT_EQ(d.table()->item(rowOf(d, QDate(2026, 10, 27)), 3)->text(), QStringLiteral("not a number of hours"));
    EXPECT_FALSE(d.save());
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_EQ(dialogs.calls.last().message,
              QStringLiteral("Tue 27/10/2026: \"abc\" is not a number of hours from 0 to 24."));
    EXPECT_EQ(d.table()->currentRow(), rowOf(d, QDate(2026, 10, 27)));
    d.table()->item(rowOf(d, QDate(2026, 10, 27)), 2)->setText(QStringLiteral("25"));
    EXPECT_FALSE(d.save());
    EXPECT_TRUE(PayDaysOf(context.WageDatabase, 1).perDay.isEmpty());
    EXPECT_FALSE(PayDaysOf(context.WageDatabase, 1).hours.has_value());
}

TEST_F(PayDaysDialogTest, TheWholePaysDaysAndHoursWithoutSingleDays) {
    ql::PayDaysDialog d(context.WageDatabase, 1);
    ASSERT_TRUE(d.daysBox()->isEnabled());
    d.daysBox()->setText(QStringLiteral("x"));
    EXPECT_FALSE(d.save());
    EXPECT_EQ(dialogs.calls.last().message, QStringLiteral("Days worked in the pay: \"x\" is not a number from 0 to 366."));
    d.daysBox()->setText(QStringLiteral("4"));
    d.hoursBox()->setText(QStringLiteral("38.5"));
    ASSERT_TRUE(d.save());
    const QJsonObject o = cli({"pay-days", "1"});
    EXPECT_DOUBLE_EQ(o.value("DaysWorked").toDouble(), 4.0);
    EXPECT_DOUBLE_EQ(o.value("HoursWorked").toDouble(), 38.5);
    ql::PayDaysDialog again(context.WageDatabase, 1);
    EXPECT_EQ(again.daysBox()->text(), QStringLiteral("4"));
    EXPECT_EQ(again.hoursBox()->text(), QStringLiteral("38.5"));
}

TEST_F(PayDaysDialogTest, NoPayIsRefusedAndTheScreenIsNamedAndKeyed) {
    EXPECT_FALSE(ql::ShowPayDays(context.WageDatabase, 0, nullptr));
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("There is no pay to show")));
    EXPECT_FALSE(ql::ShowPayDays(context.WageDatabase, 77, nullptr));
    ql::PayDaysDialog d(context.WageDatabase, 1);
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
}

} // namespace
} // namespace qltest
