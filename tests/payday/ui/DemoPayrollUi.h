#pragma once
// The screens' tests of the pay run and its payslips: the demo payroll made by the command line, its
// wage database open in the context, the report layouts of the source tree, scripted dialogs; on
// request a local SMTP server that the mail settings point at.
#include "../PaydayFixture.h"
#include "SmtpSink.h"
#include "frame/Settings.h"
#include "ledger/Roster.h"
#include "mail/MailSettings.h"
#include <QProcess>
#include <memory>

namespace qltest {

// A PDF's text as `pdftotext -layout` gives it.
inline QString pdfText(const QString& file) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    if (!p.waitForFinished(30000) || p.exitCode() != 0) return QStringLiteral("<pdftotext failed>");
    return QString::fromUtf8(p.readAllStandardOutput());
}

class DemoPayrollUiTest : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
        ql::WriteSetting(QStringLiteral("FERNHOLD"), QStringLiteral("ReportDirectory"),
                         QStringLiteral(QUILLARY_SOURCE_DIR "/reports"));
        context.WageDatabase.open(ql::WageFileName());
        ql::FillEmployeeArray();
    }
    void TearDown() override {
        context.WageDatabase.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    // The local SMTP server, and the mail settings pointed at it (plain SMTP, no login).
    void startMailServer() {
        sink = std::make_unique<SmtpSink>(docs->path() + QStringLiteral("/inbox"));
        ASSERT_GT(sink->port, 0) << "the local SMTP server did not start";
        ql::MailSettings mail;
        mail.host = QStringLiteral("127.0.0.1");
        mail.port = sink->port;
        mail.security = QStringLiteral("none");
        mail.from = QStringLiteral("wages@tussock.example.com");
        ql::SaveMailSettings(mail);
    }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    std::unique_ptr<SmtpSink> sink;
};

} // namespace qltest
