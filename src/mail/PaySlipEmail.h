#pragma once
// A committed pay's payslip (its PDF already painted) sent to the employee's email address.
#include "MailSender.h"
#include "data/Database.h"
#include <QByteArray>
#include <QString>

namespace ql {

struct PaySlipMail {
    QString employee; // first and last name
    QString to;       // the employee's address
    QString subject;
    QString attachmentName;
};

// Who and what the slip of the pay goes to; to is empty when the employee has no address.
PaySlipMail PaySlipMailOf(Database& wage, qint32 wageID);

// A slip ready to go: all that needs the databases, the settings and the keyring is read, so that the
// send itself can run on another thread. problem says why it cannot go, if so.
struct PaySlipSending {
    QString who; // the employee's name, or "Pay N"
    QString problem;
    MailSettings settings;
    QString password;
    MailMessage message;
};
PaySlipSending PreparePaySlipEmail(Database& wage, qint32 wageID, const QByteArray& pdf);
// Sends the slip through the server of the settings. Empty when sent, else "Name: why".
QString EmailPaySlip(Database& wage, qint32 wageID, const QByteArray& pdf);

} // namespace ql
