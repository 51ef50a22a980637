#include "Messages.h"
#include "ScriptedDialogs.h"
#include "SettingGetters.h"
#include "runtime/Trap.h"

namespace ql {
namespace {

Dialogs*& installed() {
    static Dialogs* d = nullptr;
    return d;
}

long& currentErrNumber() {
    static long n = 0;
    return n;
}

// Trapped errors reach the user even when no program start-up has run, as in a test.
[[maybe_unused]] const bool reporterInstalled = [] {
    installErrorReporter();
    return true;
}();

} // namespace

Dialogs& dialogs() {
    static ScriptedDialogs builtIn;
    return installed() ? *installed() : builtIn;
}

void setDialogs(Dialogs* d) {
    installed() = d;
}

qint16 ShowMessage(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                   const QString& subHeading, qint32 kind, bool flag) {
    QString sub = subHeading;
    sub.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return dialogs().messageBox(message, buttons, caption, heading, sub, kind, flag);
}

QString InputBx(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                bool numeric) {
    return dialogs().inputBox(prompt, title, defaultText, masked, numeric);
}

void ReportError(const QString& description, const QString& source, const QString& location,
                 const QString& title, qint32 /*reserved*/, bool flag) {
    dialogs().errorDialog(description, ErrNumber(), source + QLatin1Char(' ') + location, title,
                          ProgramName(), 3, flag);
}

void ReportError(const VbError& e, const QString& location, const QString& title, bool flag) {
    setErrNumber(e.number());
    ReportError(e.description(), e.source(), location, title, 0, flag);
}

long ErrNumber() {
    return currentErrNumber();
}
void setErrNumber(long number) {
    currentErrNumber() = number;
}

void ShowSettingsError(const VbError& e, const QString& place) {
    const QString number = QString::number(e.number());
    ShowMessage(QStringLiteral("Description - ") + e.description() + u'(' + number + QStringLiteral(") was generated in ") +
                    place,
                msg::OKOnly, Firm() + QStringLiteral(" Error"), QStringLiteral("An Error has Occurred"),
                QStringLiteral("Error ") + number, msg::Information, false);
}

QString ProgramName() {
    return QStringLiteral("Quillary");
}

void installErrorReporter() {
    setErrorReporter(
        [](const VbError& e, const QString& location) { ReportError(e, location, QString(), true); });
}

} // namespace ql
