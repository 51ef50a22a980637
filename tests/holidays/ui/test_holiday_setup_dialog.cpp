// An employee's holiday set-up on the screen: a new work pattern from a date and the terms, saved and
// read back through the engine and quillary-cli; earlier patterns listed and one deleted; a week
// without a working day refused; hours typed but not kept asked about before saving.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/HolidaySetupDialog.h"
#include "holidays/WorkPatternHistory.h"
#include "staff/frmEmployee.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace qltest {
namespace {

using namespace ql::holidays;

class HolidaySetupDialogTest : public DemoScreenTest {
protected:
    void setHours(ql::HolidaySetupDialog& d, const std::array<double, 7>& hours) {
        for (int i = 0; i < 7; ++i)
            d.hoursBox(i)->setValue(hours.at(std::size_t(i)));
    }
};

TEST_F(HolidaySetupDialogTest, APatternFromADateAndTheTermsAreSavedAsTheCommandLineSavesThem) {
    ql::HolidaySetupDialog d(context.WageDatabase, 1);
    EXPECT_EQ(d.patternTable()->rowCount(), 0);
    d.fromBox()->setDate(QDate(2026, 11, 2));
    setHours(d, {10, 10, 10, 10, 0, 5, 0});
    ASSERT_TRUE(d.keepPattern());
    ASSERT_EQ(d.patternTable()->rowCount(), 1);
    EXPECT_EQ(d.patternTable()->item(0, 0)->text(), QStringLiteral("2/11/2026"));
    EXPECT_EQ(d.patternTable()->item(0, 8)->text(), QStringLiteral("5"));      // working days
    EXPECT_EQ(d.patternTable()->item(0, 9)->text(), QStringLiteral("45.00"));  // hours a week
    // Nothing is written before Save.
    EXPECT_TRUE(WorkPatternsOf(context.WageDatabase, 1).isEmpty());

    d.regionBox()->setCurrentIndex(d.regionBox()->findText(QStringLiteral("Canterbury")));
    d.payAsYouGoBox()->setChecked(true);
    d.continuousBox()->setChecked(false);
    d.penalRateBox()->setValue(2);
    d.minimumWageBox()->setCurrentIndex(d.minimumWageBox()->findData(QStringLiteral("training")));
    d.dailyPayBox()->setCurrentIndex(d.dailyPayBox()->findData(QStringLiteral("average")));
    ASSERT_TRUE(d.save());

    const auto p = PatternOn(context.WageDatabase, 1, QDate(2026, 11, 10));
    ASSERT_TRUE(p.has_value());
    EXPECT_EQ(p->from, QDate(2026, 11, 2));
    EXPECT_FLOAT_EQ(p->hours.at(0), 10.0f);
    EXPECT_FLOAT_EQ(p->hours.at(4), 0.0f);
    EXPECT_FLOAT_EQ(p->hours.at(5), 5.0f);
    const HolidayTerms t = TermsOf(context.WageDatabase, 1);
    EXPECT_EQ(t.region, QStringLiteral("Canterbury"));
    EXPECT_TRUE(t.payAsYouGo);
    EXPECT_FALSE(t.continuous);
    EXPECT_FLOAT_EQ(t.penalRate, 2.0f);
    EXPECT_EQ(t.minimumWage, MinimumWageRate::Training);
    EXPECT_EQ(t.dailyPay, DailyPayChoice::Average);

    const QJsonObject pattern = cli({"work-pattern", "1", "--on", "2026-11-10"});
    EXPECT_EQ(pattern.value("from").toString(), QStringLiteral("2026-11-02"));
    EXPECT_EQ(pattern.value("hours").toArray(), QJsonArray({10, 10, 10, 10, 0, 5, 0}));
    EXPECT_EQ(pattern.value("daysPerWeek").toInt(), 5);
    const QJsonObject terms = cli({"holiday-terms", "1"});
    EXPECT_EQ(terms.value("Region").toString(), QStringLiteral("Canterbury"));
    EXPECT_TRUE(terms.value("PayAsYouGo").toBool());
    EXPECT_FALSE(terms.value("Continuous").toBool());
    EXPECT_DOUBLE_EQ(terms.value("PenalRate").toDouble(), 2.0);
    EXPECT_EQ(terms.value("MinimumWage").toString(), QStringLiteral("training"));
    EXPECT_EQ(terms.value("DailyPay").toString(), QStringLiteral("average"));
    // The rules go by what the screen set: a day of sick leave from Friday 20 November, no longer a
    // working day, falls on Saturday, paid for its 5 hours at the $25.50 rate.
    ASSERT_EQ(runCli({"holiday-terms", "1", "--daily-pay", "automatic"}, docs->path()).exitCode, 0);
    const QJsonObject sick = cli({"leave-pay", "1", "sick", "--from", "2026-11-20", "--days", "1"});
    EXPECT_EQ(sick.value("RateUsed").toString(), QStringLiteral("RDP"));
    EXPECT_DOUBLE_EQ(sick.value("Amount").toDouble(), 127.5);
    ASSERT_EQ(sick.value("DayList").toArray().size(), 1);
    EXPECT_EQ(sick.value("DayList").toArray().at(0).toObject().value("date").toString(), QStringLiteral("2026-11-21"));

    // What the command line set, the screen shows.
    ASSERT_EQ(runCli({"holiday-terms", "1", "--region", "otago", "--penal-rate", "1.75"}, docs->path()).exitCode, 0);
    ql::HolidaySetupDialog again(context.WageDatabase, 1);
    EXPECT_EQ(again.regionBox()->currentText(), QStringLiteral("Otago"));
    EXPECT_DOUBLE_EQ(again.penalRateBox()->value(), 1.75);
    EXPECT_TRUE(again.payAsYouGoBox()->isChecked());
}

TEST_F(HolidaySetupDialogTest, EarlierPatternsAreListedAndOneIsDeleted) {
    ASSERT_EQ(runCli({"work-pattern", "2", "--from", "2024-07-01", "--hours", "8,8,8,8,8,0,0"}, docs->path()).exitCode, 0);
    ASSERT_EQ(runCli({"work-pattern", "2", "--from", "2025-09-01", "--hours", "9,9,9,9,0,4,0"}, docs->path()).exitCode, 0);
    ql::HolidaySetupDialog d(context.WageDatabase, 2);
    ASSERT_EQ(d.patternTable()->rowCount(), 2);
    EXPECT_EQ(d.patternTable()->item(0, 0)->text(), QStringLiteral("1/07/2024"));
    // The boxes start on the pattern that holds today, the later one.
    EXPECT_EQ(d.patternTable()->currentRow(), 1);
    EXPECT_EQ(d.fromBox()->date(), QDate(2025, 9, 1));
    EXPECT_DOUBLE_EQ(d.hoursBox(5)->value(), 4.0);
    EXPECT_TRUE(d.patternTable()->item(1, 0)->font().bold());
    EXPECT_FALSE(d.patternTable()->item(0, 0)->font().bold());

    d.patternTable()->setCurrentCell(0, 0);
    EXPECT_EQ(d.fromBox()->date(), QDate(2024, 7, 1));
    dialogs.queueAnswer(ql::msg::Yes);
    d.findChild<QPushButton*>(QStringLiteral("cmdDeletePattern"))->click();
    ASSERT_EQ(d.patternTable()->rowCount(), 1);
    EXPECT_EQ(WorkPatternsOf(context.WageDatabase, 2).size(), 2); // until Save
    ASSERT_TRUE(d.save());
    const QList<WorkPattern> left = WorkPatternsOf(context.WageDatabase, 2);
    ASSERT_EQ(left.size(), 1);
    EXPECT_EQ(left.first().from, QDate(2025, 9, 1));
    EXPECT_EQ(cli({"work-pattern", "2", "--on", "2025-01-01"}).value("from"), QJsonValue());
}

TEST_F(HolidaySetupDialogTest, AWeekWithoutAWorkingDayIsRefusedAndUnkeptHoursAreAskedAbout) {
    ql::HolidaySetupDialog d(context.WageDatabase, 1);
    d.fromBox()->setDate(QDate(2026, 11, 2));
    setHours(d, {0, 0, 0, 0, 0, 0, 0});
    EXPECT_FALSE(d.keepPattern());
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("at least one working day")));
    EXPECT_EQ(dialogs.calls.last().heading, QStringLiteral("Holiday Set-up"));
    EXPECT_EQ(d.patternTable()->rowCount(), 0);

    // Hours in the boxes, not kept: Cancel saves nothing; Yes keeps and saves them.
    setHours(d, {8, 8, 8, 8, 8, 0, 0});
    dialogs.queueAnswer(ql::msg::Cancel);
    EXPECT_FALSE(d.save());
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("has not been kept")));
    EXPECT_TRUE(WorkPatternsOf(context.WageDatabase, 1).isEmpty());
    EXPECT_EQ(context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM HolidayTerms WHERE EmployeeID = 1")).toInt(),
              0);
    dialogs.queueAnswer(ql::msg::Yes);
    ASSERT_TRUE(d.save());
    ASSERT_EQ(WorkPatternsOf(context.WageDatabase, 1).size(), 1);
    EXPECT_FLOAT_EQ(WorkPatternsOf(context.WageDatabase, 1).first().hoursPerWeek(), 40.0f);
}

TEST_F(HolidaySetupDialogTest, AnEmployeeNotOnThePayrollIsRefused) {
    EXPECT_FALSE(ql::ShowHolidaySetup(context.WageDatabase, 99, nullptr));
    ASSERT_FALSE(dialogs.calls.isEmpty());
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("Choose an employee first")));
}

TEST_F(HolidaySetupDialogTest, ByKeysAloneWithNamesAndSnapshot) {
    ql::HolidaySetupDialog d(context.WageDatabase, 1);
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
    showActive(&d);
    // From by its key, then the seven days by Tab, Keep with its key; the region by its key; Save by its
    // key.
    key(Qt::Key_F, Qt::AltModifier);
    QWidget* from = QApplication::focusWidget();
    ASSERT_TRUE(from == d.fromBox() || from->parentWidget() == d.fromBox());
    d.fromBox()->setDate(QDate(2026, 12, 7));
    // Tab steps through the date's day, month and year, then on to Monday.
    for (int i = 0; i < 3 && (QApplication::focusWidget() == d.fromBox() ||
                              QApplication::focusWidget()->parentWidget() == d.fromBox());
         ++i)
        key(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), d.hoursBox(0));
    for (const char* h : {"9", "9", "9", "9", "9", "0", "0"}) {
        key(Qt::Key_A, Qt::ControlModifier);
        type(QString::fromLatin1(h));
        key(Qt::Key_Tab);
    }
    EXPECT_EQ(d.fromBox()->date(), QDate(2026, 12, 7));
    EXPECT_DOUBLE_EQ(d.hoursBox(4)->value(), 9.0);
    EXPECT_DOUBLE_EQ(d.hoursBox(5)->value(), 0.0);
    key(Qt::Key_K, Qt::AltModifier);
    ASSERT_EQ(d.patternTable()->rowCount(), 1);
    key(Qt::Key_R, Qt::AltModifier);
    ASSERT_EQ(QApplication::focusWidget(), d.regionBox());
    type(QStringLiteral("Wel"));
    EXPECT_EQ(d.regionBox()->currentText(), QStringLiteral("Wellington"));
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/holiday_setup.png"));
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(d.result(), int(QDialog::Accepted));
    EXPECT_EQ(TermsOf(context.WageDatabase, 1).region, QStringLiteral("Wellington"));
    const auto p = PatternOn(context.WageDatabase, 1, QDate(2026, 12, 7));
    ASSERT_TRUE(p.has_value());
    EXPECT_FLOAT_EQ(p->hoursPerWeek(), 45.0f);
}

TEST_F(HolidaySetupDialogTest, TheEmployeeEditorOpensTheSetUp) {
    ql::frmEmployee editor(context.WageDatabase, 1);
    ExpectKeysUnique(&editor);
    auto* holidays = editor.findChild<QPushButton*>(QStringLiteral("cmdHolidays"));
    ASSERT_NE(holidays, nullptr);
    QString title;
    QTimer::singleShot(0, [&] {
        if (auto* d = qobject_cast<ql::HolidaySetupDialog*>(QApplication::activeModalWidget())) {
            title = d->windowTitle();
            d->regionBox()->setCurrentIndex(d->regionBox()->findText(QStringLiteral("Southland")));
            d->accept();
        }
    });
    holidays->click();
    EXPECT_EQ(title, QStringLiteral("Holiday Set-up"));
    EXPECT_EQ(TermsOf(context.WageDatabase, 1).region, QStringLiteral("Southland"));
    // A new employee has no set-up yet.
    ql::frmEmployee blank(context.WageDatabase, 0);
    EXPECT_EQ(blank.findChild<QPushButton*>(QStringLiteral("cmdHolidays")), nullptr);
}

} // namespace
} // namespace qltest
