// The desktop program: the suite's menu starts it with a title on its command line, or through the
// session bus (bus activation), where ReadySetGo gives the title.
#include "frame/Messages.h"
#include "frame/QtDialogs.h"
#include "ledger/frmWage.h"
#include "payengine/AppContext.h"
#include "reports/frm_crystal.h"
#include "runtime/VbError.h"
#include "startup/ObjectServer.h"
#include "startup/PaySlipPrint.h"
#include "startup/Startup.h"
#include "taxsettings/frmPayeInfo.h"
#include <QApplication>
#include <QMessageBox>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ql::AppContext context;
    ql::setApp(&context);
    ql::QtDialogs dialogs;
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::installPayeInfoDialog(); // the tax settings dialog that the wage account checks open
    ql::installReportScreens();  // prints show the report screen, its preview and the print dialog
    ql::installPaySlipPrint();   // a commit's "Generate pay slip" prints the report's payslip
    ql::setMainFormFactory([] { return std::make_unique<ql::WageMainForm>(); });

    // A start by the bus carries no command line; the client calls ReadySetGo.
    const bool byBus = qEnvironmentVariableIsSet("DBUS_STARTER_BUS_TYPE");
    ql::startObjectServer();
    try {
        if (!byBus && !ql::Main(ql::commandLineText(app.arguments().mid(1)))) return 0;
    } catch (const ql::VbError& e) {
        // The runtime's own report, and the end of the process.
        QMessageBox::critical(
            nullptr, QStringLiteral("Quillary"),
            QStringLiteral("Run-time error '%1':\n\n%2").arg(e.number()).arg(e.description()));
        return 1;
    }
    // The process ends when no form is open and no client holds an object of it.
    QObject::connect(&app, &QApplication::lastWindowClosed, &app, [] {
        if (!ql::mainForm() && ql::busClientCount() == 0) QCoreApplication::quit();
    });
    if (!ql::mainForm() && !byBus) return 0; // sent to the address book: nothing more happens here
    const int rc = app.exec();
    ql::stopObjectServer();
    ql::setApp(nullptr);
    return rc;
}
