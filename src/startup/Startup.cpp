#include "Startup.h"
#include "ledger/AddressBook.h"
#include "ledger/Roster.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/Texts.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Trap.h"
#include <QCoreApplication>

namespace ql {

namespace {
MainFormFactory& factory() {
    static MainFormFactory f;
    return f;
}
std::unique_ptr<MainForm>& shownForm() {
    static std::unique_ptr<MainForm> form;
    return form;
}
bool& unloading() {
    static bool flag = false;
    return flag;
}
SetupAssistant& assistant() {
    static SetupAssistant a;
    return a;
}
} // namespace

void setSetupAssistant(SetupAssistant a) { assistant() = std::move(a); }

void setMainFormFactory(MainFormFactory f) {
    factory() = std::move(f);
    setMainFormUnload([] { UnloadWageForm(); });
    setMainFormCloser([] {
        if (MainForm* form = mainForm())
            form->close();
    });
}
MainForm* mainForm() { return shownForm().get(); }

QString commandLineText(const QStringList& arguments) { return arguments.join(QLatin1Char(' ')); }

bool Main(const QString& commandLine) {
    if (commandLine.isEmpty()) {
        const QString firm = Firm();
        ShowMessage(TranslateText(QStringLiteral("This Application is designed to run from inside |0|\r\n\r\n"
                                                 "Please select the correct menu option from inside |0| to launch "
                                                 "Quillary."),
                                  QStringList{firm}),
                    0, firm, QStringLiteral("Invalid Execution"), QStringLiteral("Unable to Start Quillary"), 6, false);
        return false;
    }
    QCoreApplication::setApplicationName(QStringLiteral("Quillary"));
    StartQuillary(commandLine); // an error travels on unchanged and ends the process
    return true;
}

void StartQuillary(const QString& title) {
    OpenWageDatabase();
    // A payroll without employees is set up in the program itself where the desktop offers it; left
    // half done, it comes back at the next start.
    if (FillEmployeeArray() < 1 && assistant() && !(assistant()() && FillEmployeeArray() >= 1)) {
        CloseWageDatabase();
        return;
    }
    if (App().EmployeeArray.size() <= 1) {
        CloseWageDatabase();
        ShowMessage(QStringLiteral("There are no current Employees listed in the database.\r\n\r\n"
                                   "You will now be taken to the address book where you can enter your "
                                   "Employees' details."),
                    0, Firm(), QStringLiteral("No Employees Found"), QString(), 6, true);
        LaunchAddressBook(0, 0, false, true);
        return;
    }
    if (!factory())
        raiseError(91, QStringLiteral("Quillary"), QStringLiteral("The main screen is not available."));
    shownForm() = factory()();
    App().WageForm = &shownForm()->view();
    shownForm()->setTitle(title);
    shownForm()->show();
}

void OpenWageDatabase() { App().WageDatabase = openOrCreate(DatabaseKind::Wage, WageFileName()); }

void CloseWageDatabase() { App().WageDatabase.close(); }

void UnloadWageForm() {
    if (unloading())
        return;
    unloading() = true;
    MainForm* form = mainForm();
    skipErrors([&] {
        if (form)
            WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"),
                         form->view().control(QStringLiteral("optWhichYears(0)")).down ? QStringLiteral("N")
                                                                                      : QStringLiteral("Y"));
    });
    skipErrors([] {
        if (App().AddressBookWindow != 0)
            CloseAddressBook();
    });
    // The leave grid is saved here once the leave ledger is on the screen.
    skipErrors([] {
        if (QCoreApplication::instance())
            QCoreApplication::processEvents();
    });
    // The pay list stores what its bound labels hold before the database goes, as a data source does
    // when its form unloads.
    skipErrors([&] {
        if (form)
            form->view().datPays.UpdateRecord();
    });
    skipErrors([] { CloseWageDatabase(); });
    UnloadOpenForms();
    skipErrors([] { App().WageForm = nullptr; });
    skipErrors([] { shownForm().reset(); });
    unloading() = false;
}

} // namespace ql
