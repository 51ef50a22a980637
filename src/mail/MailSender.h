#pragma once
// Sends one message with one attachment through the employer's mail server (libcurl's SMTP).
#include "MailSettings.h"
#include <QByteArray>
#include <QString>

namespace ql {

struct MailMessage {
    QString to;
    QString subject;
    QString body;
    QString attachmentName;
    QByteArray attachment; // a PDF
};

// Empty when the server took the message, else why not, in a user's words.
QString SendMail(const MailSettings& settings, const QString& password, const MailMessage& message);

// SendMail on a thread of its own, while this thread goes on handling its events (a window stays
// painted and answers), until the server has answered or curl's timeouts gave up.
QString SendMailAside(const MailSettings& settings, const QString& password, const MailMessage& message);

} // namespace ql
