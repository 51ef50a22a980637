#include "WireHolidays.h"
#include "frame/Messages.h"
#include "holidays/EarningKindsDialog.h"
#include "holidays/HolidaySetupDialog.h"
#include "holidays/LeaveLiabilityDialog.h"
#include "holidays/PayDaysDialog.h"
#include "ledger/frmWage.h"
#include "payengine/AppContext.h"
#include "runtime/VbError.h"
#include "startup/TitleMenuBarWidget.h"
#include <QAction>
#include <QMenu>
#include <functional>

namespace ql {

namespace {

void addEntry(QMenu* menu, QWidget* window, const QString& caption, const QString& name, const QKeySequence& key,
              std::function<void()> run) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WindowShortcut);
    window->addAction(action); // the key works while the menu is closed
    QObject::connect(action, &QAction::triggered, window, [name, run = std::move(run)] {
        try {
            run();
        } catch (const VbError& e) {
            ReportError(e, name + QStringLiteral("_Click"));
        }
    });
}

} // namespace

void wireHolidays(frmWage& w, TitleMenuBar* bar) {
    frmWage* window = &w;
    QMenu* reports = bar->menu(ReportsButton);
    reports->addSeparator();
    addEntry(reports, window, QStringLiteral("&Leave Liability..."), QStringLiteral("mnuLeaveLiability"),
             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L), [window] { ShowLeaveLiability(App().WageDatabase, window); });

    // What the holiday rules ask the user to decide: the kinds of earnings, each employee's usual week
    // and terms, and the days and hours of a pay.
    QMenu* tools = bar->menu(ToolsButton);
    tools->addSeparator();
    addEntry(tools, window, QStringLiteral("&Kinds of Earnings..."), QStringLiteral("mnuEarningKinds"),
             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K), [window] { ShowEarningKinds(App().WageDatabase, window); });
    addEntry(tools, window, QStringLiteral("&Holiday Set-up..."), QStringLiteral("mnuHolidaySetup"),
             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H),
             [window] { ShowHolidaySetup(App().WageDatabase, App().CurrentEmployeeID, window); });
    addEntry(tools, window, QStringLiteral("Da&ys and Hours of This Pay..."), QStringLiteral("mnuPayDays"),
             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Y),
             [window] { ShowPayDays(App().WageDatabase, App().CurrentWageID, window); });
}

} // namespace ql
