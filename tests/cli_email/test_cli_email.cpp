// Payslips by email: the mail server settings, and slips sent to a real local SMTP server whose
// received messages are read back (recipient, subject, the attached PDF's text).
#include "CliRunner.h"
#include "SmtpSink.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QThread>
#include <memory>

namespace qltest {
namespace {

QString pdfText(const QString& file) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    if (!p.waitForFinished(30000)) return QString();
    return QString::fromUtf8(p.readAllStandardOutput()).simplified();
}

class CliEmailTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(cli({"init", "--demo"}).exitCode, 0);
        sink = std::make_unique<SmtpSink>(docs->path() + QStringLiteral("/inbox"));
        ASSERT_GT(sink->port, 0) << "the local SMTP server did not start";
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    void pointAtSink() {
        const CliResult r = cli({"email-settings", "--host", "127.0.0.1", "--port", QString::number(sink->port),
                                 "--security", "none", "--from", "wages@tussock.example.com"});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    QString scalar(const QString& file, const QString& sql) {
        ql::Database db;
        db.open(file);
        const QString v = db.scalar(sql).toString();
        db.close();
        return v;
    }
    std::unique_ptr<SmtpSink> sink;
};

TEST_F(CliEmailTest, SettingsAreKeptAndShownWithoutThePassword) {
    CliResult r = cli({"email-settings", "--host", "smtp.example.com", "--port", "2525", "--security", "tls",
                       "--user", "farm", "--from", "wages@example.com"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    r = cli({"email-settings"});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.out.startsWith("host: smtp.example.com\nport: 2525\nsecurity: tls\nuser: farm\n"
                                 "from: wages@example.com\npassword: "))
        << r.out.toStdString();
    QFile ini(docs->path() + "/Fernhold/Common/Fernhold.ini");
    ASSERT_TRUE(ini.open(QIODevice::ReadOnly));
    const QString kept = QString::fromUtf8(ini.readAll());
    EXPECT_TRUE(kept.contains("smtp.example.com"));
    EXPECT_FALSE(kept.contains("assword", Qt::CaseInsensitive));

    EXPECT_EQ(cli({"email-settings", "--security", "ssl3"}).exitCode, 1);
    EXPECT_EQ(cli({"email-settings", "--port", "0"}).exitCode, 1);
    EXPECT_EQ(cli({"email-settings", "--from", "nobody"}).exitCode, 1);
    EXPECT_EQ(cli({"email-settings", "--colour", "red"}).exitCode, 2);
    // A refused option changes nothing.
    EXPECT_TRUE(cli({"email-settings"}).out.contains("security: tls\n"));
}

TEST_F(CliEmailTest, APayRunEmailsEachSlipToItsEmployee) {
    pointAtSink();
    const CliResult r = cli({"pay-run", "2026-11-06", "--commit", "--email"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString() << r.out.toStdString();
    const QJsonArray pays = QJsonDocument::fromJson(r.out.toUtf8()).object().value("Pays").toArray();
    ASSERT_EQ(pays.size(), 5);
    ASSERT_EQ(sink->received(5), 5);

    // Each employee's address receives one message, with that employee's slip attached.
    QStringList recipients;
    for (int n = 1; n <= 5; ++n) {
        const QString to = sink->text(QStringLiteral("%1.rcpt").arg(n)).trimmed();
        recipients << to;
        EXPECT_TRUE(to.endsWith("@example.com")) << to.toStdString();
        EXPECT_TRUE(sink->text(QStringLiteral("%1.subject").arg(n)).startsWith("Payslip 6 November 2026 from "))
            << sink->text(QStringLiteral("%1.subject").arg(n)).toStdString();
        const QStringList files = sink->attachments(n);
        ASSERT_EQ(files.size(), 1);
        EXPECT_TRUE(files.first().endsWith(".pdf"));
        const QString printed = pdfText(files.first());
        bool matched = false;
        for (const QJsonValue& v : pays) {
            const QJsonObject p = v.toObject();
            const QString first = p.value("Name").toString().section(u' ', 0, 0).toLower();
            if (!to.startsWith(first + u'.')) continue;
            matched = true;
            EXPECT_TRUE(printed.contains(p.value("Name").toString())) << printed.toStdString();
            EXPECT_TRUE(printed.contains("Reference: " + p.value("Reference").toString())) << printed.toStdString();
            // The address is the one kept for this employee in the farm file.
            const QString kept = scalar(
                ql::DataFileName(),
                QStringLiteral("SELECT EmailAddress FROM Addresses WHERE AddressID = %1")
                    .arg(scalar(ql::WageFileName(), QStringLiteral("SELECT AddressID FROM Employees WHERE EmployeeID = %1")
                                                        .arg(p.value("EmployeeID").toInt()))));
            EXPECT_EQ(kept, to);
        }
        EXPECT_TRUE(matched) << to.toStdString();
    }
    recipients.removeDuplicates();
    EXPECT_EQ(recipients.size(), 5);
}

TEST_F(CliEmailTest, OneSlipByItselfAndAFailedSendLeavesThePayCommitted) {
    pointAtSink();
    ASSERT_EQ(cli({"pay-run", "2026-11-06", "--commit"}).exitCode, 0);
    const QString wageID = scalar(ql::WageFileName(), "SELECT min(WageID) FROM Wages");
    CliResult r = cli({"payslip", wageID, "--email"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "sent: " + wageID + "\n");
    ASSERT_EQ(sink->received(1), 1);
    ASSERT_EQ(sink->attachments(1).size(), 1);
    EXPECT_TRUE(pdfText(sink->attachments(1).first()).contains("Paid on:"));

    // The employee without an address: said, nothing sent.
    ql::Database farm;
    farm.open(ql::DataFileName());
    farm.execute(QStringLiteral("UPDATE Addresses SET EmailAddress = NULL"));
    farm.close();
    r = cli({"payslip", wageID, "--email"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("no email address is kept")) << r.err.toStdString();

    // A server that is not there: the run says why, and its pays stay committed.
    ASSERT_EQ(cli({"email-settings", "--port", "1"}).exitCode, 0);
    farm.open(ql::DataFileName());
    farm.execute(QStringLiteral("UPDATE Addresses SET EmailAddress = 'someone@example.com'"));
    farm.close();
    r = cli({"pay-run", "2026-11-13", "--commit", "--email"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("did not take it")) << r.err.toStdString();
    EXPECT_EQ(scalar(ql::WageFileName(), "SELECT count(*) FROM Wages WHERE Date = '2026-11-13' AND Reference IS NULL"),
              "0");
    EXPECT_NE(scalar(ql::WageFileName(), "SELECT count(*) FROM Wages WHERE Reference IS NOT NULL"), "0");
    EXPECT_EQ(sink->received(1), 1);
}

} // namespace
} // namespace qltest
