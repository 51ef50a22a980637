// The holiday set-up screens from the main window: three entries at the end of the Tools menu, each
// with a key that opens its screen while the menu is closed, on the shown employee and pay; and the
// leave tab's panel opens the same screens.
#include "MainWindowFixture.h"
#include "holidays/AlternativeHolidaysDialog.h"
#include "holidays/CashUpDialog.h"
#include "holidays/EarningKindsDialog.h"
#include "holidays/HolidaySetupDialog.h"
#include "holidays/PayChecksDialog.h"
#include "holidays/PublicHolidaysDialog.h"
#include "holidays/PayDaysDialog.h"
#include "payengine/AppContext.h"
#include "runtime/DateFns.h"
#include <QTableWidget>
#include <QTimer>

using namespace qltest;

namespace {

// Presses the key on the window and tells which dialog opened (its title), closing it.
template <class Dialog> QString openedByKey(QWidget* window, Qt::Key key, const std::function<void(Dialog*)>& look) {
    QString seen;
    QTimer::singleShot(0, [&] {
        if (auto* d = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
            seen = d->windowTitle();
            look(d);
            d->reject();
        }
    });
    QTest::keyClick(window, key, Qt::ControlModifier | Qt::ShiftModifier);
    // The screen gave the window its activation back: the next key works without a window manager.
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return seen;
}

} // namespace

TEST_F(MainWindowTest, TheHolidaySetUpScreensOpenFromTheToolsMenuAndTheirKeys) {
    startWired(true, QSize(800, 600));

    const struct {
        const char* name;
        const char* caption;
        Qt::Key key;
    } entries[] = {{"mnuEarningKinds", "&Kinds of Earnings...", Qt::Key_K},
                   {"mnuHolidaySetup", "&Holiday Set-up...", Qt::Key_H},
                   {"mnuPayDays", "Da&ys and Hours of This Pay...", Qt::Key_Y},
                   {"mnuPayChecks", "&Minimum Wage and 8% of This Pay...", Qt::Key_M},
                   {"mnuCashUp", "&Cash Up Annual Holidays...", Qt::Key_C},
                   {"mnuAlternativeHolidays", "&Alternative Holidays...", Qt::Key_A}};
    QAction* publicHolidays = nullptr;
    for (QAction* a : bar->menu(ql::ReportsButton)->actions())
        if (a->objectName() == QLatin1String("mnuPublicHolidays")) publicHolidays = a;
    ASSERT_NE(publicHolidays, nullptr);
    EXPECT_EQ(publicHolidays->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    for (const auto& e : entries) {
        QAction* entry = nullptr;
        for (QAction* a : bar->menu(ql::ToolsButton)->actions())
            if (a->objectName() == QLatin1String(e.name)) entry = a;
        ASSERT_NE(entry, nullptr) << e.name;
        EXPECT_EQ(entry->text(), QString::fromLatin1(e.caption));
        EXPECT_EQ(entry->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | e.key));
    }
    // No two entries of the Tools menu share an access key.
    QList<QChar> keys;
    for (QAction* a : bar->menu(ql::ToolsButton)->actions()) {
        const qsizetype amp = a->text().indexOf(u'&');
        if (amp < 0 || amp + 1 >= a->text().size()) continue;
        const QChar k = a->text().at(amp + 1).toUpper();
        EXPECT_FALSE(keys.contains(k)) << a->text().toStdString();
        keys << k;
    }

    int listed = -1;
    EXPECT_EQ(openedByKey<ql::EarningKindsDialog>(w, Qt::Key_K,
                                                   [&](ql::EarningKindsDialog* d) { listed = d->table()->rowCount(); }),
              QStringLiteral("Kinds of Earnings"));
    EXPECT_GT(listed, 0);
    qint32 employee = 0;
    EXPECT_EQ(openedByKey<ql::HolidaySetupDialog>(w, Qt::Key_H,
                                                   [&](ql::HolidaySetupDialog* d) { employee = d->employeeID(); }),
              QStringLiteral("Holiday Set-up"));
    EXPECT_EQ(employee, ql::App().CurrentEmployeeID);
    EXPECT_EQ(employee, hale);
    QDate end;
    EXPECT_EQ(openedByKey<ql::PayDaysDialog>(w, Qt::Key_Y, [&](ql::PayDaysDialog* d) { end = d->periodEnd(); }),
              QStringLiteral("Days and Hours of a Pay"));
    EXPECT_EQ(openedByKey<ql::PayChecksDialog>(w, Qt::Key_M, [](ql::PayChecksDialog*) {}),
              QStringLiteral("Minimum Wage and 8% of This Pay"));
    EXPECT_EQ(openedByKey<ql::CashUpDialog>(w, Qt::Key_C, [](ql::CashUpDialog*) {}),
              QStringLiteral("Cash Up Annual Holidays"));
    EXPECT_EQ(openedByKey<ql::PublicHolidaysDialog>(w, Qt::Key_P, [](ql::PublicHolidaysDialog*) {}),
              QStringLiteral("Public Holidays"));
    employee = 0;
    EXPECT_EQ(openedByKey<ql::AlternativeHolidaysDialog>(w, Qt::Key_A, [&](ql::AlternativeHolidaysDialog*) {
                  employee = ql::App().CurrentEmployeeID;
              }),
              QStringLiteral("Alternative Holidays"));
    EXPECT_EQ(employee, hale);
    ASSERT_GT(ql::App().CurrentWageID, 0);
    EXPECT_EQ(end, ql::CDate(rows->wage.scalar(
                       QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(ql::App().CurrentWageID))));

    // The leave tab's panel opens the set-up and the days of the pay too.
    key(Qt::Key_V, Qt::AltModifier);
    ASSERT_EQ(w->tabMain()->currentIndex(), 1);
    auto* setup = w->findChild<QPushButton*>(QStringLiteral("cmdHolidaySetup"));
    auto* days = w->findChild<QPushButton*>(QStringLiteral("cmdPayDays"));
    ASSERT_TRUE(setup && days);
    EXPECT_TRUE(setup->isVisible());
    EXPECT_TRUE(days->isVisible());
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) w->grab().save(dir + QStringLiteral("/leave_tab_800x600.png"));
    employee = 0;
    QTimer::singleShot(0, [&] {
        if (auto* d = qobject_cast<ql::HolidaySetupDialog*>(QApplication::activeModalWidget())) {
            employee = d->employeeID();
            d->reject();
        }
    });
    setup->click();
    EXPECT_EQ(employee, hale);
    end = QDate();
    QTimer::singleShot(0, [&] {
        if (auto* d = qobject_cast<ql::PayDaysDialog*>(QApplication::activeModalWidget())) {
            end = d->periodEnd();
            d->reject();
        }
    });
    days->click();
    EXPECT_TRUE(end.isValid());
    if (!dir.isEmpty()) {
        bar->titleClick(ql::ToolsButton);
        QMenu* tools = bar->menu(ql::ToolsButton);
        if (tools->isVisible()) tools->grab().save(dir + QStringLiteral("/tools_menu.png"));
        tools->hide();
    }
}
