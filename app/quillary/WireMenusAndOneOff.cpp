#include "WireMenusAndOneOff.h"
#include "frame/Messages.h"
#include "ledger/frmWage.h"
#include "payengine/frmOneOff.h"
#include "startup/TitleMenuWidgets.h"
#include "taxsettings/frm_Rebates.h"
#include <QAction>
#include <QMenu>
#include <QToolButton>

namespace ql {

TitleMenuBar* wireMenusAndOneOff(frmWage& w) {
    frmWage* window = &w;
    w.screen().showOneOff = [window](WageScreen& s, const QDate& day) { OpenOneOffDialog(window, s, day); };

    // The window takes the buttons' clicks and keys: it saves the leave grid when the leave tab is open,
    // then runs the title action here, which pops the menu up below its button.
    const std::array<QAbstractButton*, 4> buttons{w.titleButton(ModulesButton), w.titleButton(ToolsButton),
                                                  w.titleButton(ReportsButton), w.titleButton(HelpButton)};
    TitleMenuBar* bar = attachTitleMenus(window, buttons, TitleInput::Form);
    w.titleBarClick = [bar](int index) { bar->titleClick(index); };

    // The suite's menu knows nothing of the rebates: the program offers them itself, after the suite's
    // tools.
    QMenu* tools = bar->menu(ToolsButton);
    tools->addSeparator();
    QAction* rebates = tools->addAction(QStringLiteral("&Rebates..."));
    rebates->setObjectName(QStringLiteral("mnuRebates"));
    QObject::connect(rebates, &QAction::triggered, window, [window] {
        try {
            OpenFarmRebates(window);
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("mnuRebates_Click"));
        }
    });
    return bar;
}

} // namespace ql
