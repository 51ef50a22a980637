// The desktop program: the suite's menu starts it with a title on its command line, or through the
// session bus (bus activation), where ReadySetGo gives the title.
#include "WireMenusAndOneOff.h"
#include "WireHolidays.h"
#include "WireStaff.h"
#include "frame/Messages.h"
#include "frame/QtDialogs.h"
#include "ledger/frmWage.h"
#include "mail/PaySlipEmailDialog.h"
#include "payengine/AppContext.h"
#include "reports/frm_crystal.h"
#include "runtime/VbError.h"
#include "startup/ObjectServer.h"
#include "startup/PaySlipPrint.h"
#include "startup/Startup.h"
#include "taxsettings/frmPayeInfo.h"
#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>
#include <time.h>

namespace {

// QUILLARY_FIRST_PAINT set: at the first paint of a main window the program prints the clock's time
// ("first paint: SECONDS.NANOSECONDS", the system's real-time clock) and ends, so that a caller who
// noted the time before starting it knows how long the start took.
class FirstPaintProbe : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (m_done || event->type() != QEvent::Paint || !watched->isWidgetType()) return false;
        auto* widget = static_cast<QWidget*>(watched);
        QWidget* window = widget->window();
        if (!window || !window->isVisible() || qobject_cast<QDialog*>(window)) return false;
        m_done = true;
        // After this paint has been done.
        QTimer::singleShot(0, [] {
            timespec now;
            clock_gettime(CLOCK_REALTIME, &now);
            std::printf("first paint: %lld.%09ld\n", static_cast<long long>(now.tv_sec), now.tv_nsec);
            std::fflush(stdout);
            std::_Exit(0);
        });
        return false;
    }

private:
    bool m_done = false;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    FirstPaintProbe probe;
    if (qEnvironmentVariableIsSet("QUILLARY_FIRST_PAINT")) app.installEventFilter(&probe);
    ql::AppContext context;
    ql::setApp(&context);
    ql::QtDialogs dialogs;
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::installPayeInfoDialog(); // the tax settings dialog that the wage account checks open
    ql::installReportScreens();  // prints show the report screen, its preview and the print dialog
    ql::installPaySlipPrint();   // a commit's "Generate pay slip" prints the report's payslip
    ql::installPaySlipEmailAction(); // the payslip's preview offers Email
    ql::setMainFormFactory([] {
        auto f = std::make_unique<ql::WageMainForm>();
        ql::TitleMenuBar* bar = ql::wireMenusAndOneOff(*f->widget()); // title menus, one-off pay, rebates
        ql::wireStaff(*f->widget(), bar);                              // employer and employees
        ql::wireHolidays(*f->widget(), bar);                           // the leave liability
        return f;
    });

    // A start by the bus carries no command line; the client calls ReadySetGo.
    const bool byBus = qEnvironmentVariableIsSet("DBUS_STARTER_BUS_TYPE");
    ql::startObjectServer();
    // A new installation gets its settings and databases, and an empty payroll the set-up assistant;
    // an empty command line is refused before anything is touched.
    if (byBus || !ql::commandLineText(app.arguments().mid(1)).isEmpty()) ql::prepareFirstStart();
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
