#include "WireHolidays.h"
#include "KeyedMenuEntry.h"
#include "holidays/AlternativeHolidaysDialog.h"
#include "holidays/CashUpDialog.h"
#include "holidays/EarningKindsDialog.h"
#include "holidays/HolidaySetupDialog.h"
#include "holidays/LeaveLiabilityDialog.h"
#include "holidays/PayChecksDialog.h"
#include "holidays/PayDaysDialog.h"
#include "holidays/PublicHolidaysDialog.h"
#include "holidays/WorkPattern.h"
#include "ledger/frmWage.h"
#include "payengine/AppContext.h"
#include "startup/TitleMenuBarWidget.h"

namespace ql {

void wireHolidays(frmWage& w, TitleMenuBar* bar) {
    frmWage* window = &w;
    QMenu* reports = bar->menu(ReportsButton);
    reports->addSeparator();
    AddKeyedEntry(reports, window, QStringLiteral("&Leave Liability..."), QStringLiteral("mnuLeaveLiability"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L),
                  [window] { ShowLeaveLiability(App().WageDatabase, window); });
    AddKeyedEntry(reports, window, QStringLiteral("&Public Holidays..."), QStringLiteral("mnuPublicHolidays"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), [window] {
                      const qint32 id = App().CurrentEmployeeID;
                      ShowPublicHolidays(id > 0 ? holidays::TermsOf(App().WageDatabase, id).region : QString(), window);
                  });

    // What the holiday rules ask the user to decide: the kinds of earnings, each employee's usual week
    // and terms, and the days and hours of a pay; the shown pay's minimum wage check and 8%, a cash-up on it, and
    // the shown employee's alternative holidays.
    QMenu* tools = bar->menu(ToolsButton);
    tools->addSeparator();
    AddKeyedEntry(tools, window, QStringLiteral("&Kinds of Earnings..."), QStringLiteral("mnuEarningKinds"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K),
                  [window] { ShowEarningKinds(App().WageDatabase, window); });
    AddKeyedEntry(tools, window, QStringLiteral("&Holiday Set-up..."), QStringLiteral("mnuHolidaySetup"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H),
                  [window] { ShowHolidaySetup(App().WageDatabase, App().CurrentEmployeeID, window); });
    AddKeyedEntry(tools, window, QStringLiteral("Da&ys and Hours of This Pay..."),
                  QStringLiteral("mnuPayDays"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Y),
                  [window] { ShowPayDays(App().WageDatabase, App().CurrentWageID, window); });
    AddKeyedEntry(tools, window, QStringLiteral("&Minimum Wage and 8% of This Pay..."),
                  QStringLiteral("mnuPayChecks"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M),
                  [window] { ShowPayChecks(App().WageDatabase, App().CurrentWageID, window); });
    AddKeyedEntry(tools, window, QStringLiteral("&Cash Up Annual Holidays..."), QStringLiteral("mnuCashUp"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), [window] {
                      ShowCashUp(App().WageDatabase, App().CurrentEmployeeID, App().CurrentWageID, window);
                  });
    AddKeyedEntry(tools, window, QStringLiteral("&Alternative Holidays..."), QStringLiteral("mnuAlternativeHolidays"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A),
                  [window] { ShowAlternativeHolidays(App().WageDatabase, App().CurrentEmployeeID, window); });
}

} // namespace ql
