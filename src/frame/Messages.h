#pragma once
// The message box, the input box and the uniform error report, over the installed dialogs.
#include "Dialogs.h"
#include "runtime/VbError.h"
#include <QString>

namespace ql {

// The one message box. Only subHeading is altered: each "&" is doubled so that it shows as typed.
qint16 ShowMessage(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                   const QString& subHeading, qint32 kind, bool flag);

// Asks for one line of text; the empty text on cancel. The plain mode is the default.
QString InputBx(const QString& prompt, const QString& title, const QString& defaultText = QString(),
                bool masked = false, bool numeric = false);

// The uniform error report: the error dialog with the runtime's current error number,
// source + " " + location, level 3 and the program's name.
void ReportError(const QString& description, const QString& source, const QString& location,
                 const QString& title, qint32 reserved, bool flag);
// Reports a caught error: takes its number as the current one, then as above.
void ReportError(const VbError& e, const QString& location, const QString& title = QString(),
                 bool flag = true);

// The report form of the tax-settings procedures: a message box rather than the error dialog, with
// "Description - ", the description, the number in brackets and " was generated in " + place.
void ShowSettingsError(const VbError& e, const QString& place);

// The runtime's current error number, as a handler sees it.
long ErrNumber();
void setErrNumber(long number);

// The program's name in error reports.
QString ProgramName();

// Sends every error that a trap catches to ReportError(description, source, location, "", 0, true).
void installErrorReporter();

} // namespace ql
