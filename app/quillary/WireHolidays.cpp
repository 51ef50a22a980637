#include "WireHolidays.h"
#include "frame/Messages.h"
#include "holidays/LeaveLiabilityDialog.h"
#include "ledger/frmWage.h"
#include "payengine/AppContext.h"
#include "runtime/VbError.h"
#include "startup/TitleMenuBarWidget.h"
#include <QAction>
#include <QMenu>

namespace ql {

void wireHolidays(frmWage& w, TitleMenuBar* bar) {
    frmWage* window = &w;
    QMenu* reports = bar->menu(ReportsButton);
    reports->addSeparator();
    QAction* action = reports->addAction(QStringLiteral("&Leave Liability..."));
    action->setObjectName(QStringLiteral("mnuLeaveLiability"));
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L));
    action->setShortcutContext(Qt::WindowShortcut);
    window->addAction(action); // the key works while the menu is closed
    QObject::connect(action, &QAction::triggered, window, [window] {
        try {
            ShowLeaveLiability(App().WageDatabase, window);
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("mnuLeaveLiability_Click"));
        }
    });
}

} // namespace ql
