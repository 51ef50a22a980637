#pragma once
// The mail server's password in the desktop keyring (the Secret Service on the session bus), kept under
// the server and user it belongs to. Never in the settings file.
#include "MailSettings.h"
#include <QString>

namespace ql {

// Empty when a keyring service can be reached; else one line saying that none is running.
QString KeyringProblem();

// The password kept for the server and user; empty when none is kept. why gets the keyring's reason
// when it could not be asked.
QString ReadKeyringPassword(const MailSettings& settings, QString* why = nullptr);

// Keeps the password for the server and user (an empty one removes what was kept). Empty when done,
// else why not.
QString StoreKeyringPassword(const MailSettings& settings, const QString& password);

// Where the password comes from, as one line: QUILLARY_SMTP_PASSWORD, the keyring, or nowhere.
QString MailPasswordSource(const MailSettings& settings);

} // namespace ql
