#pragma once
// The employer's outgoing mail server, kept in the settings file (section EMAIL). The password is
// never kept there: it comes from QUILLARY_SMTP_PASSWORD, else from the desktop keyring.
#include <QString>

namespace ql {

struct MailSettings {
    QString host;
    int port = 0;             // 0: the usual port of the security (25, 587 or 465)
    QString security;         // "none", "starttls" or "tls"
    QString user;
    QString from;             // the sender's address
    int effectivePort() const;
};

MailSettings ReadMailSettings();
void SaveMailSettings(const MailSettings& settings);
// The password for the server: QUILLARY_SMTP_PASSWORD when set, else the one the keyring keeps
// for the server and user (MailKeyring), else empty.
QString MailPassword(const MailSettings& settings);
// Why the settings can't send ("The mail server is not set: ..."), empty when they can.
QString MailSettingsProblem(const MailSettings& settings);
bool IsMailSecurity(const QString& security);

} // namespace ql
