// FHDatePicker: its properties, the setter's rules, the calendar grid, keys, mouse, month list and
// the Today rule.
#include "UiSupport.h"
#include "runtime/DateFns.h"
#include "ui/FHDatePicker.h"
#include "ui/FHDatePickerDropDown.h"
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

using namespace ql;
using namespace qltest;

namespace {

struct Events {
    QList<std::pair<QDateTime, QDateTime>> changes;
    explicit Events(FHDatePicker& p) {
        QObject::connect(&p, &FHDatePicker::DateChanged, [this](const QDateTime& a, const QDateTime& b) {
            changes.append({a, b});
        });
    }
};

QDateTime at(int y, int m, int d, QTime t = QTime(0, 0)) {
    return QDateTime(QDate(y, m, d), t);
}

TEST(FHDatePicker, Defaults) {
    FHDatePicker p;
    EXPECT_EQ(p.date(), Today());
    EXPECT_EQ(p.FirstDayOfWeek(), 1);
    EXPECT_FALSE(p.ShortDayNames());
    EXPECT_EQ(p.DescriptionFormat(), QStringLiteral("d mmm yyyy"));
    EXPECT_FALSE(p.UseHandCursor());
    EXPECT_TRUE(p.ShowNonMonthDays());
    EXPECT_TRUE(p.isEnabled());
    EXPECT_FALSE(p.DropDownOpen());
    EXPECT_EQ(p.dropDown()->ticker()->interval(), 400);
    EXPECT_EQ(p.dropDown()->description()->toolTip(),
              QStringLiteral("The currently highlighted date. Press OK to select this date."));
    EXPECT_EQ(p.dropDown()->okButton()->toolTip(), QStringLiteral("Confirm your selection"));
    EXPECT_EQ(p.dropDown()->todayButton()->toolTip(), QStringLiteral("Show today"));
    EXPECT_FALSE(p.CurrentTheme().isEmpty());
}

TEST(FHDatePicker, SetterRules) {
    FHDatePicker p;
    Events events(p);
    QStringList properties;
    QObject::connect(&p, &FHDatePicker::PropertyChanged, [&](const QString& n) { properties << n; });
    p.setDateSelected(at(2026, 5, 4));
    ASSERT_EQ(events.changes.size(), 1);
    EXPECT_EQ(events.changes.at(0).second, at(2026, 5, 4));
    EXPECT_EQ(p.text(), QStringLiteral("4 May 2026"));
    EXPECT_EQ(properties, QStringList{QStringLiteral("DateSelected")});
    // The same date raises nothing.
    p.setDateSelected(at(2026, 5, 4));
    EXPECT_EQ(events.changes.size(), 1);
    // A change of the time alone is not stored, but moves the highlight.
    p.setHighlightedDate(QDate(2026, 5, 20));
    p.setDateSelected(at(2026, 5, 4, QTime(18, 0)));
    EXPECT_EQ(events.changes.size(), 1);
    EXPECT_EQ(p.DateSelected(), at(2026, 5, 4));
    EXPECT_EQ(p.HighlightedDate(), QDate(2026, 5, 4));
    // The zero date gives today.
    p.setDateSelected(QDateTime(ZeroDate, QTime(0, 0)));
    EXPECT_EQ(p.date(), Today());
    EXPECT_EQ(events.changes.size(), 2);
    // Other formats, and the general one.
    p.setDescriptionFormat(QStringLiteral("dd mmm yyyy"));
    p.setDate(QDate(2026, 3, 5));
    EXPECT_EQ(p.text(), QStringLiteral("05 Mar 2026"));
    p.setDescriptionFormat(QString());
    EXPECT_EQ(p.text(), QStringLiteral("5/03/2026"));
}

TEST(FHDatePicker, FirstDayOfWeekAndNames) {
    FHDatePicker p;
    p.setFirstDayOfWeek(8);
    EXPECT_EQ(p.FirstDayOfWeek(), 1);
    EXPECT_EQ(p.dayNames().first(), QStringLiteral("Sun"));
    p.setFirstDayOfWeek(2);
    EXPECT_EQ(p.dayNames().first(), QStringLiteral("Mon"));
    EXPECT_EQ(p.dayNames().last(), QStringLiteral("Sun"));
    p.setShortDayNames(true);
    EXPECT_EQ(p.dayNames(), QStringList({"M", "T", "W", "T", "F", "S", "S"}));
}

TEST(FHDatePicker, LeapFebruaryOnTheFirstColumn) {
    int year = 2000;
    while (!(QDate::isLeapYear(year) && QDate(year, 2, 1).dayOfWeek() == 7))
        ++year;
    FHDatePicker p;
    p.setDate(QDate(year, 2, 10));
    const auto& cells = p.cells();
    ASSERT_EQ(cells.size(), 42);
    int february = 0, march = 0;
    for (const auto& c : cells) {
        february += c.date.month() == 2;
        march += c.date.month() == 3;
    }
    EXPECT_EQ(cells.first().date, QDate(year, 2, 1));
    EXPECT_EQ(february, 29);
    EXPECT_EQ(march, 13);
    EXPECT_EQ(p.titleText(), QStringLiteral("February %1").arg(year));
    EXPECT_EQ(cells.at(p.selectedCell()).date, QDate(year, 2, 10));
}

TEST(FHDatePicker, BlankCellsWithoutTheNeighbouringMonths) {
    FHDatePicker p;
    p.setDate(QDate(2026, 5, 4)); // 1 May 2026 is a Friday: five blank cells lead
    p.setShowNonMonthDays(false);
    EXPECT_TRUE(p.cells().at(0).number.isEmpty());
    EXPECT_FALSE(p.cells().at(0).date.isValid());
    EXPECT_EQ(p.cells().at(5).date, QDate(2026, 5, 1));
    p.clickDay(0);
    EXPECT_EQ(p.HighlightedDate(), QDate(2026, 5, 4));
    p.setShowNonMonthDays(true);
    EXPECT_EQ(p.cells().at(0).date, QDate(2026, 4, 26));
}

TEST(FHDatePicker, WrongTextRevertsWithoutAWord) {
    FHDatePicker p;
    p.setDate(QDate(2026, 5, 4));
    p.textBox()->setText(QStringLiteral("abc"));
    key(p.textBox(), Qt::Key_Return);
    EXPECT_EQ(p.text(), QStringLiteral("4 May 2026"));
    EXPECT_EQ(p.date(), QDate(2026, 5, 4));
    p.textBox()->setText(QStringLiteral("9/05/2026"));
    key(p.textBox(), Qt::Key_Return);
    EXPECT_EQ(p.date(), QDate(2026, 5, 9));
    EXPECT_EQ(p.text(), QStringLiteral("9 May 2026"));
}

TEST(FHDatePicker, KeysOfTheTextBoxAndTheCalendar) {
    QWidget host;
    auto* p = new FHDatePicker(&host);
    host.show();
    p->setDate(QDate(2026, 5, 4));
    key(p->textBox(), Qt::Key_Up);
    EXPECT_FALSE(p->DropDownOpen());
    key(p->textBox(), Qt::Key_Down);
    ASSERT_TRUE(p->DropDownOpen());
    EXPECT_TRUE(p->dropDown()->isVisible());
    QWidget* calendar = p->dropDown();
    key(calendar, Qt::Key_Right);
    EXPECT_EQ(p->HighlightedDate(), QDate(2026, 5, 5));
    key(calendar, Qt::Key_Down);
    EXPECT_EQ(p->HighlightedDate(), QDate(2026, 5, 12));
    key(calendar, Qt::Key_Left);
    key(calendar, Qt::Key_Up);
    EXPECT_EQ(p->HighlightedDate(), QDate(2026, 5, 4));
    key(calendar, Qt::Key_PageDown);
    EXPECT_EQ(p->HighlightedDate(), QDate(2026, 6, 4));
    EXPECT_EQ(p->titleText(), QStringLiteral("June 2026"));
    key(calendar, Qt::Key_PageUp);
    key(calendar, Qt::Key_PageUp);
    EXPECT_EQ(p->HighlightedDate(), QDate(2026, 4, 4));
    key(calendar, Qt::Key_Escape);
    EXPECT_FALSE(p->DropDownOpen());
    EXPECT_EQ(p->date(), QDate(2026, 5, 4));
    // Any key opens a closed calendar; Enter takes the highlighted date.
    key(calendar, Qt::Key_A);
    ASSERT_TRUE(p->DropDownOpen());
    key(calendar, Qt::Key_Right);
    key(calendar, Qt::Key_Return);
    EXPECT_FALSE(p->DropDownOpen());
    EXPECT_EQ(p->date(), QDate(2026, 5, 5));
    // Enter in the text box with the calendar open: a new date is highlighted, the highlighted one taken.
    key(p->textBox(), Qt::Key_Down);
    p->textBox()->setText(QStringLiteral("20/05/2026"));
    key(p->textBox(), Qt::Key_Return);
    EXPECT_TRUE(p->DropDownOpen());
    EXPECT_EQ(p->HighlightedDate(), QDate(2026, 5, 20));
    key(p->textBox(), Qt::Key_Return);
    EXPECT_FALSE(p->DropDownOpen());
    EXPECT_EQ(p->date(), QDate(2026, 5, 20));
}

TEST(FHDatePicker, TodayRule) {
    FHDatePicker p;
    p.setDate(QDate(2026, 5, 4));
    p.openDropDown();
    p.pressToday(); // another date highlighted: today
    EXPECT_EQ(p.date(), Today());
    EXPECT_FALSE(p.DropDownOpen());
    p.openDropDown();
    p.pressToday(); // today highlighted: 29 December 1899
    EXPECT_EQ(p.date(), QDate(1899, 12, 29));
    p.setDate(QDate(2026, 5, 4));
    p.openDropDown();
    key(p.dropDown(), Qt::Key_Home); // Home always ends there
    EXPECT_EQ(p.date(), QDate(1899, 12, 29));
}

TEST(FHDatePicker, MouseOnTheDropDown) {
    QWidget host;
    auto* p = new FHDatePicker(&host);
    host.show();
    p->setDate(QDate(2026, 5, 4));
    p->dropButton()->click();
    ASSERT_TRUE(p->DropDownOpen());
    FHDatePickerDropDown* d = p->dropDown();
    mouse(d->dayLabel(10), QEvent::MouseButtonPress);
    EXPECT_EQ(p->HighlightedDate(), p->cells().at(10).date);
    d->rightButton()->click();
    EXPECT_EQ(p->titleText(), QStringLiteral("June 2026"));
    mouse(d->description(), QEvent::MouseButtonPress);
    EXPECT_EQ(p->titleText(), QStringLiteral("May 2026"));
    mouse(d->dayLabel(12), QEvent::MouseButtonDblClick);
    EXPECT_FALSE(p->DropDownOpen());
    EXPECT_EQ(p->date(), QDate(2026, 5, 8));
    p->dropButton()->click();
    d->leftButton()->click();
    EXPECT_EQ(p->titleText(), QStringLiteral("April 2026"));
    d->okButton()->click();
    EXPECT_EQ(p->date(), QDate(2026, 5, 8)); // the month on show is not the highlight
    p->dropButton()->click();
    p->dropButton()->click(); // the drop button closes an open calendar
    EXPECT_FALSE(p->DropDownOpen());
    // A mouse press on the host closes it.
    p->dropButton()->click();
    mouse(&host, QEvent::MouseButtonPress);
    EXPECT_FALSE(p->DropDownOpen());
}

TEST(FHDatePicker, MonthList) {
    QWidget host;
    auto* p = new FHDatePicker(&host);
    host.show();
    p->setDate(QDate(2026, 5, 4));
    p->openDropDown();
    FHDatePickerDropDown* d = p->dropDown();
    mouse(d->title(), QEvent::MouseButtonPress);
    ASSERT_TRUE(d->monthListOpen());
    EXPECT_EQ(p->monthListRows(), QStringList({"February 2026", "March 2026", "April 2026", "May 2026",
                                               "June 2026", "July 2026", "August 2026"}));
    // Held above the list: the ticker scrolls back; below: on.
    d->holdAt(d->monthList()->mapToGlobal(QPoint(d->monthList()->width() / 2, -20)));
    EXPECT_TRUE(d->ticker()->isActive());
    p->scrollMonthList(-1);
    EXPECT_EQ(p->monthListRows().at(3), QStringLiteral("April 2026"));
    // Left of it: the ticker stops.
    d->holdAt(d->monthList()->mapToGlobal(QPoint(-30, d->monthList()->height() / 2)));
    EXPECT_FALSE(d->ticker()->isActive());
    // Over the first row, then released: that month is shown.
    d->holdAt(d->monthList()->mapToGlobal(
        d->monthList()->findChild<QLabel*>(QStringLiteral("lblSelDate(0)"))->geometry().center()));
    EXPECT_EQ(d->markedRow(), 0);
    d->releaseAt();
    EXPECT_FALSE(d->monthListOpen());
    EXPECT_EQ(p->titleText(), QStringLiteral("January 2026"));
    screenshot(d, QStringLiteral("datepicker-dropdown"));
}

TEST(FHDatePicker, DisabledIgnoresKeysAndTheDropButton) {
    FHDatePicker p;
    p.setDate(QDate(2026, 5, 4));
    p.setEnabled(false);
    key(p.textBox(), Qt::Key_Down);
    EXPECT_FALSE(p.DropDownOpen());
    p.toggleDropDown();
    EXPECT_FALSE(p.DropDownOpen());
    p.textBox()->setText(QStringLiteral("9/05/2026"));
    key(p.textBox(), Qt::Key_Return);
    EXPECT_EQ(p.date(), QDate(2026, 5, 4));
}

TEST(FHDatePicker, ShotOfTheControlWithItsCalendar) {
    QWidget host;
    host.resize(260, 40);
    auto* p = new FHDatePicker(&host);
    p->setGeometry(10, 8, 200, 24);
    host.show();
    p->setDate(QDate(2026, 5, 4));
    p->openDropDown();
    screenshot(&host, QStringLiteral("datepicker"));
    screenshot(p->dropDown(), QStringLiteral("datepicker-calendar"));
    expectNamedControls(p);
    expectNamedControls(p->dropDown());
}

} // namespace
