#pragma once
// The desktop's dialogs: the message box, input box and error dialog as Qt windows.
#include "Dialogs.h"

namespace ql {

class QtDialogs : public Dialogs {
public:
    qint16 messageBox(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                      const QString& subHeading, qint32 kind, bool flag) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                     bool numeric) override;
    void errorDialog(const QString& description, long number, const QString& location, const QString& title,
                     const QString& programName, qint32 level, bool flag) override;
};

} // namespace ql
