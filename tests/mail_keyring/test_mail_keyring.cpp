// The mail server's password: kept in the desktop keyring (a real Secret Service on a private bus),
// never in the settings file; QUILLARY_SMTP_PASSWORD wins for scripts; without a keyring the settings
// screen and the command line say where the password comes from instead.
#include "CliRunner.h"
#include "SmtpSink.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "mail/MailKeyring.h"
#include "mail/MailSettings.h"
#include "mail/frmEmailSettings.h"
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace qltest {
namespace {

const QString kNone =
    QStringLiteral("No keyring service is running: the password comes from QUILLARY_SMTP_PASSWORD.");

class KeyringTest : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setDialogs(&dialogs);
        qunsetenv("QUILLARY_SMTP_PASSWORD");
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
        server.host = QStringLiteral("smtp.example.com");
        server.port = 587;
        server.security = QStringLiteral("starttls");
        server.user = QStringLiteral("farm%1").arg(QCoreApplication::applicationPid());
        server.from = QStringLiteral("wages@example.com");
        ql::SaveMailSettings(server);
    }
    void TearDown() override {
        qunsetenv("QUILLARY_SMTP_PASSWORD");
        ql::setDialogs(nullptr);
    }
    QString settingsFile() {
        QFile ini(ql::FamilyFile());
        return ini.open(QIODevice::ReadOnly) ? QString::fromUtf8(ini.readAll()) : QString();
    }
    QString cliPasswordLine() {
        const CliResult r = runCli({QStringLiteral("email-settings")}, docs->path());
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return r.out.section(u'\n', 5, 5);
    }
    ql::ScriptedDialogs dialogs;
    ql::MailSettings server;
};

class SecretServiceTest : public KeyringTest {};
class NoKeyringTest : public KeyringTest {};

TEST_F(SecretServiceTest, ThePasswordIsKeptInTheKeyringAndReadBack) {
    ASSERT_EQ(ql::KeyringProblem(), QString()) << "the private session bus offers no Secret Service";
    EXPECT_EQ(ql::ReadKeyringPassword(server), QString());
    EXPECT_EQ(cliPasswordLine(), QStringLiteral("password: not kept in the desktop keyring"));

    ASSERT_EQ(ql::StoreKeyringPassword(server, QStringLiteral("kea-42-ruru")), QString());
    EXPECT_EQ(ql::ReadKeyringPassword(server), QStringLiteral("kea-42-ruru"));
    EXPECT_EQ(ql::MailPassword(server), QStringLiteral("kea-42-ruru"));
    EXPECT_FALSE(settingsFile().contains(QStringLiteral("kea-42-ruru")));
    // Another process (the command line) finds it too.
    EXPECT_EQ(cliPasswordLine(), QStringLiteral("password: kept in the desktop keyring"));

    // Kept per server and user.
    ql::MailSettings other = server;
    other.user = QStringLiteral("someone-else");
    EXPECT_EQ(ql::ReadKeyringPassword(other), QString());

    // Scripts' password wins.
    qputenv("QUILLARY_SMTP_PASSWORD", "from-the-script");
    EXPECT_EQ(ql::MailPassword(server), QStringLiteral("from-the-script"));
    EXPECT_EQ(cliPasswordLine(), QStringLiteral("password: from QUILLARY_SMTP_PASSWORD"));
    qunsetenv("QUILLARY_SMTP_PASSWORD");

    // An empty password removes the kept one.
    ASSERT_EQ(ql::StoreKeyringPassword(server, QString()), QString());
    EXPECT_EQ(ql::ReadKeyringPassword(server), QString());
}

TEST_F(SecretServiceTest, TheSettingsScreenKeepsATypedPasswordInTheKeyring) {
    ASSERT_EQ(ql::KeyringProblem(), QString());
    {
        ql::frmEmailSettings d;
        EXPECT_TRUE(d.txtPassword->isEnabled());
        EXPECT_EQ(d.txtPassword->echoMode(), QLineEdit::Password);
        EXPECT_EQ(d.lblKeyring->text(), QStringLiteral("A password typed here is kept in the desktop keyring."));
        d.txtPassword->setText(QStringLiteral("tui-7-tieke"));
        d.txtPassword->setModified(true); // as typing leaves it
        d.accept();
        EXPECT_EQ(d.result(), QDialog::Accepted);
    }
    EXPECT_EQ(ql::ReadKeyringPassword(server), QStringLiteral("tui-7-tieke"));
    EXPECT_FALSE(settingsFile().contains(QStringLiteral("tui-7-tieke")));
    {
        // Shown again: said to be kept, never shown; left alone it stays as it is.
        ql::frmEmailSettings d;
        EXPECT_EQ(d.txtPassword->text(), QString());
        EXPECT_EQ(d.lblKeyring->text(), QStringLiteral("The password is kept in the desktop keyring."));
        d.accept();
    }
    EXPECT_EQ(ql::ReadKeyringPassword(server), QStringLiteral("tui-7-tieke"));
    ASSERT_EQ(ql::StoreKeyringPassword(server, QString()), QString());
}

TEST_F(SecretServiceTest, TheKeptPasswordLogsInToTheMailServer) {
    ASSERT_EQ(ql::KeyringProblem(), QString());
    SmtpSink sink(docs->path() + QStringLiteral("/inbox"), server.user + QStringLiteral(":hoiho-9-kaka"));
    ASSERT_GT(sink.port, 0) << "the local SMTP server did not start";
    server.host = QStringLiteral("127.0.0.1");
    server.port = sink.port;
    server.security = QStringLiteral("none");
    ql::SaveMailSettings(server);
    ASSERT_EQ(runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")},
                     docs->path())
                  .exitCode,
              0);
    ql::Database wage;
    wage.open(ql::WageFileName());
    const QString wageID = wage.scalar(QStringLiteral("SELECT min(WageID) FROM Wages")).toString();
    wage.close();

    // A wrong password kept: the server refuses it, and the command says so.
    ASSERT_EQ(ql::StoreKeyringPassword(server, QStringLiteral("wrong")), QString());
    CliResult r = runCli({QStringLiteral("payslip"), wageID, QStringLiteral("--email")}, docs->path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("did not take it"))) << r.err.toStdString();
    EXPECT_EQ(sink.received(0), 0);

    // The right one: the slip goes through, logged in as the user.
    ASSERT_EQ(ql::StoreKeyringPassword(server, QStringLiteral("hoiho-9-kaka")), QString());
    r = runCli({QStringLiteral("payslip"), wageID, QStringLiteral("--email")}, docs->path());
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    ASSERT_EQ(sink.received(1), 1);
    EXPECT_EQ(sink.text(QStringLiteral("logins")).trimmed(), server.user);
    ASSERT_EQ(ql::StoreKeyringPassword(server, QString()), QString());
}

TEST_F(NoKeyringTest, TheScreenAndTheCommandLineSayWhereThePasswordComesFrom) {
    ASSERT_TRUE(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").isEmpty());
    EXPECT_EQ(ql::KeyringProblem(), kNone);
    EXPECT_EQ(ql::StoreKeyringPassword(server, QStringLiteral("x")), kNone);
    QString why;
    EXPECT_EQ(ql::ReadKeyringPassword(server, &why), QString());
    EXPECT_EQ(why, kNone);
    EXPECT_EQ(cliPasswordLine(), QStringLiteral("password: not set (%1)").arg(kNone));
    qputenv("QUILLARY_SMTP_PASSWORD", "from-the-script");
    EXPECT_EQ(ql::MailPassword(server), QStringLiteral("from-the-script"));
    EXPECT_EQ(cliPasswordLine(), QStringLiteral("password: from QUILLARY_SMTP_PASSWORD"));
    qunsetenv("QUILLARY_SMTP_PASSWORD");

    ql::frmEmailSettings d;
    EXPECT_FALSE(d.txtPassword->isEnabled());
    EXPECT_EQ(d.lblKeyring->text(), kNone);
    EXPECT_FALSE(d.txtPassword->accessibleName().isEmpty());
}

} // namespace
} // namespace qltest
