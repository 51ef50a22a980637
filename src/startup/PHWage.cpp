#include "PHWage.h"
#include "Menus.h"
#include "Startup.h"
#include "ledger/Roster.h"
#include "payengine/AppContext.h"
#include "runtime/Trap.h"
#include <QCoreApplication>

namespace ql {

namespace {
// The object server's procedures hand an error on with their name in front of the description.
[[noreturn]] void raiseAgain(const VbError& e, const QString& procedure) {
    throw VbError(e.number(), e.source(),
                  QStringLiteral("Quillary - ") + procedure + QStringLiteral("\r\n") + e.description());
}
} // namespace

PHWage::PHWage(QObject* parent) : QObject(parent) {}

void PHWage::ReadySetGo(const QString& title) {
    try {
        m_switching = false;
        App().ModuleTitle = title;
        QCoreApplication::setApplicationName(QStringLiteral("Quillary"));
        StartQuillary(title);
    } catch (const VbError& e) {
        raiseAgain(e, QStringLiteral("ReadySetGo"));
    } catch (const std::exception& e) {
        raiseAgain(toVbError(e), QStringLiteral("ReadySetGo"));
    }
}

QString PHWage::CheckEmployees() {
    try {
        return CheckEmployeeTable();
    } catch (const VbError& e) {
        raiseAgain(e, QStringLiteral("CheckEmployees"));
    }
}

void PHWage::Finish() {
    skipErrors([] { UnloadAllForms(); });
}

void PHWage::SwitchModules(const QString& name) {
    try {
        if (m_startMenu == 0) m_switching = true;
        hourglass(true);
        AppContext& app = App();
        QString n = name;
        qint32 help = app.HelpContextID;
        qint32 alt = app.HelpAltContextID;
        raiseMenuSelect(n, help, alt);
        hourglass(false);
    } catch (const VbError& e) {
        raiseAgain(e, QStringLiteral("SwitchModules")); // the pointer stays as it was set
    }
}

void PHWage::raiseMenuSelect(QString& name, qint32& helpContext, qint32& helpAltContext) {
    emit MenuSelect(name, helpContext, helpAltContext);
}

qlConnector::qlConnector() {
    AppContext& app = App();
    if (!app.TheWageObject) app.TheWageObject = new PHWage;
    ++app.ConnectorCount;
}

qlConnector::~qlConnector() {
    AppContext& app = App();
    if (--app.ConnectorCount <= 0) {
        app.ConnectorCount = 0;
        delete app.TheWageObject;
        app.TheWageObject = nullptr;
    }
}

PHWage* qlConnector::Quillary() const {
    return TheWageObject();
}

PHWage* TheWageObject() {
    return qobject_cast<PHWage*>(App().TheWageObject);
}

} // namespace ql
