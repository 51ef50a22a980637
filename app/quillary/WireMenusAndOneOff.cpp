#include "WireMenusAndOneOff.h"
#include "StandaloneMenus.h"
#include "taxsettings/frmPayeInfo.h"
#include "frame/Messages.h"
#include "ledger/frmWage.h"
#include "payday/frmBankAccounts.h"
#include "payday/frmPayRun.h"
#include "payday/frmPaydayFiles.h"
#include "payday/frmPaydaySettings.h"
#include "payengine/AppContext.h"
#include "payengine/frmOneOff.h"
#include "startup/TitleMenuBarWidget.h"
#include "taxsettings/frm_Rebates.h"
#include <QAction>
#include <QMenu>
#include <QToolButton>

namespace ql {

namespace {

// Shows a pay of the pay run in the ledger: its employee chosen in the list, the list on that pay.
void openInLedger(frmWage* window, qint32 employeeID, qint32 wageID) {
    WageScreen& s = window->screen();
    for (int i = 0; i < s.cboEmployeeItems.size(); ++i) {
        if (s.cboEmployeeItems.at(i).itemData != employeeID) continue;
        if (i != s.cboEmployeeIndex)
            s.selectEmployeeItem(i);
        else
            s.SetEmployee();
        break;
    }
    if (wageID > 0 && s.datPays.RecordCount() > 0) {
        s.datPays.MoveFirst();
        while (!s.datPays.EOF_() && s.datPays.value(QStringLiteral("WageID")).toInt() != wageID)
            s.datPays.MoveNext();
        if (s.datPays.EOF_()) s.datPays.MoveLast();
    }
    window->raise();
    window->activateWindow();
}

// An entry of the program's own at the end of a title menu; a failure is reported, the window stays.
void addOwnAction(QMenu* menu, QWidget* window, const QString& caption, const QString& name,
                  std::function<void()> run) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    QObject::connect(action, &QAction::triggered, window, [name, run = std::move(run)] {
        try {
            run();
        } catch (const VbError& e) {
            ReportError(e, name + QStringLiteral("_Click"));
        }
    });
}

} // namespace

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
    addOwnAction(tools, window, QStringLiteral("&Rebates..."), QStringLiteral("mnuRebates"),
                 [window] { OpenFarmRebates(window); });
    addOwnAction(tools, window, QStringLiteral("Ta&x Information..."), QStringLiteral("mnuTaxInformation"),
                 [window] { ShowPayeInfoDialog(window); });

    // Payday: the run of every due pay, the files for Inland Revenue and the bank, and what they need.
    tools->addSeparator();
    const auto payRun = [window] {
        OpenPayRun(
            App().WageDatabase, window,
            [window](qint32 employeeID, qint32 wageID) { openInLedger(window, employeeID, wageID); },
            // The run may have added and committed pays of the shown employee.
            [window] { window->screen().SetEmployee(); });
    };
    addOwnAction(tools, window, QStringLiteral("&Pay Run..."), QStringLiteral("mnuPayRun"), payRun);
    w.setPayRun([payRun] {
        try {
            payRun();
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("cmdPayRun_Click"));
        }
    });
    addOwnAction(tools, window, QStringLiteral("Payday &Files..."), QStringLiteral("mnuPaydayFiles"),
                 [window] { ShowPaydayFiles(App().WageDatabase, window); });
    addOwnAction(tools, window, QStringLiteral("Payday &Settings..."), QStringLiteral("mnuPaydaySettings"),
                 [window] { ShowPaydaySettings(App().WageDatabase, window); });
    addOwnAction(tools, window, QStringLiteral("Employee &Bank Accounts..."),
                 QStringLiteral("mnuBankAccounts"),
                 [window] { ShowEmployeeBankAccounts(App().WageDatabase, window); });
    // Without a suite menu on the bus, its entries are answered here.
    installStandaloneMenus(w);
    return bar;
}

} // namespace ql
