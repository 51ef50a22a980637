// The employer's mail server for the payslips, and the payslip sent by email.
#include "CliCommand.h"
#include "PaySlipEmail.h"
#include "ReportCommands.h"
#include "mail/MailKeyring.h"
#include "mail/MailSettings.h"
#include "mail/PaySlipEmail.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include <QFile>
#include <QTemporaryDir>

namespace cli {

QString emailPaySlip(qint32 wageID) {
    QTemporaryDir dir;
    if (!dir.isValid()) return QStringLiteral("Pay %1: no temporary folder for its PDF.").arg(wageID);
    const QString file = dir.filePath(QStringLiteral("payslip.pdf"));
    writePaySlipPdf(wageID, file);
    QFile pdf(file);
    if (!pdf.open(QIODevice::ReadOnly)) return QStringLiteral("Pay %1: its PDF was not written.").arg(wageID);
    const QByteArray bytes = pdf.readAll();
    ql::Database wage;
    wage.open(ql::WageFileName());
    const QString why = ql::EmailPaySlip(wage, wageID, bytes);
    wage.close();
    return why;
}

} // namespace cli

namespace {

QString settingsText(const ql::MailSettings& s) {
    return QStringLiteral("host: %1\nport: %2\nsecurity: %3\nuser: %4\nfrom: %5\npassword: %6\n")
        .arg(s.host, QString::number(s.effectivePort()), s.security, s.user, s.from,
             ql::MailPasswordSource(s));
}

int emailSettings(const QStringList& args, QTextStream& out) {
    ql::MailSettings s = ql::ReadMailSettings();
    if (args.size() % 2 != 0) throw cli::CliUsageError();
    for (int i = 0; i < args.size(); i += 2) {
        const QString& option = args.at(i);
        const QString value = args.at(i + 1).trimmed();
        if (option == QLatin1String("--host")) {
            s.host = value;
        } else if (option == QLatin1String("--port")) {
            bool ok = false;
            const int port = value.toInt(&ok);
            if (!ok || port < 1 || port > 65535)
                throw cli::CliFailure(QStringLiteral("The port must be a number from 1 to 65535."));
            s.port = port;
        } else if (option == QLatin1String("--security")) {
            if (!ql::IsMailSecurity(value.toLower()))
                throw cli::CliFailure(QStringLiteral("The security must be none, starttls or tls."));
            s.security = value.toLower();
        } else if (option == QLatin1String("--user")) {
            s.user = value;
        } else if (option == QLatin1String("--from")) {
            if (!value.isEmpty() && (!value.contains(u'@') || value.contains(u' ')))
                throw cli::CliFailure(QStringLiteral("%1 is not an email address.").arg(value));
            s.from = value;
        } else {
            throw cli::CliUsageError();
        }
    }
    if (!args.isEmpty()) ql::SaveMailSettings(s);
    out << settingsText(s);
    return 0;
}

const cli::CliCommand emailSettingsCommand(
    "email-settings", "email-settings [--host H] [--port N] [--security none|starttls|tls] [--user U] [--from ADDRESS]",
    emailSettings);

} // namespace
