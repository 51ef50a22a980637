#include "QtDialogs.h"
#include "frmErrorDialog.h"
#include "frmInputDialog.h"
#include "frmMessageDialog.h"

namespace ql {

qint16 QtDialogs::messageBox(const QString& message, qint32 buttons, const QString& caption,
                             const QString& heading, const QString& subHeading, qint32 kind, bool /*flag*/) {
    return runMessageDialog(message, buttons, caption, heading, subHeading, kind);
}

QString QtDialogs::inputBox(const QString& prompt, const QString& title, const QString& defaultText,
                            bool masked, bool numeric) {
    return runInputDialog(prompt, title, defaultText, masked, numeric);
}

void QtDialogs::errorDialog(const QString& description, long number, const QString& location,
                            const QString& title, const QString& programName, qint32 level, bool /*flag*/) {
    runErrorDialog(description, number, location, title, programName, level);
}

} // namespace ql
