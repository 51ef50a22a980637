// The pay run's "Email each to its employee": every slip sent to its employee's address through the
// mail server of the settings, and a server that is not there leaves the pays committed.
#include "DemoPayrollUi.h"
#include "payday/frmPayRun.h"
#include "mail/MailProgressDialog.h"
#include "mail/frmEmailSettings.h"
#include <QApplication>
#include <QLineEdit>
#include <QTcpServer>
#include <QTcpSocket>
#include <QPushButton>
#include <QSpinBox>
#include <QComboBox>
#include <QDateEdit>

namespace qltest {
namespace {

// Passes SMTP traffic between the program and the sink on this (the screens') thread: a send that held
// this thread would never get its answer. Each time the program speaks, `seen` notes what the
// screen shows at that moment.
class Relay {
public:
    explicit Relay(int target) : m_target(target) {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            while (QTcpSocket* in = m_server.nextPendingConnection()) {
                auto* out = new QTcpSocket(in);
                out->connectToHost(QHostAddress::LocalHost, quint16(m_target));
                QObject::connect(in, &QTcpSocket::readyRead, in, [this, in, out] {
                    look();
                    if (out->state() != QAbstractSocket::ConnectedState) out->waitForConnected(5000);
                    out->write(in->readAll());
                });
                QObject::connect(out, &QTcpSocket::readyRead, in, [in, out] { in->write(out->readAll()); });
                QObject::connect(out, &QTcpSocket::disconnected, in, [in] { in->disconnectFromHost(); });
                QObject::connect(in, &QTcpSocket::disconnected, in, [in] { in->deleteLater(); });
            }
        });
    }
    int port() const { return m_server.serverPort(); }
    QStringList seen;

private:
    void look() {
        QString now = QStringLiteral("no progress window");
        if (auto* w = qobject_cast<ql::MailProgressDialog*>(QApplication::activeModalWidget()))
            if (w->isVisible()) {
                now = w->stepText();
                // QUILLARY_SCREENSHOT names a folder to keep a picture of the window in.
                const QString folder = qEnvironmentVariable("QUILLARY_SCREENSHOT");
                if (!folder.isEmpty()) w->grab().save(folder + QStringLiteral("/frmMailProgress.png"));
            }
        if (seen.isEmpty() || seen.last() != now) seen << now;
    }
    QTcpServer m_server;
    int m_target;
};

class PayRunEmailTest : public DemoPayrollUiTest {
protected:
    void SetUp() override {
        DemoPayrollUiTest::SetUp();
        startMailServer();
    }
};

TEST_F(PayRunEmailTest, EachSlipGoesToItsEmployee) {
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::Email));
    EXPECT_EQ(d.commitPays(), 5);
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("5 payslips were emailed.")))
        << dialogs.calls.last().message.toStdString();
    ASSERT_EQ(sink->received(5), 5);
    QStringList recipients;
    for (int n = 1; n <= 5; ++n) {
        recipients << sink->text(QStringLiteral("%1.rcpt").arg(n)).trimmed();
        ASSERT_EQ(sink->attachments(n).size(), 1);
        QProcess p;
        p.start(QStringLiteral("pdftotext"), {sink->attachments(n).first(), QStringLiteral("-")});
        ASSERT_TRUE(p.waitForFinished(30000));
        const QString text = QString::fromUtf8(p.readAllStandardOutput());
        // The slip is the addressee's: the first name in the address is on the slip.
        const QString first = recipients.last().section(u'.', 0, 0);
        EXPECT_TRUE(text.contains(first, Qt::CaseInsensitive)) << recipients.last().toStdString() << "\n"
                                                               << text.toStdString();
    }
    recipients.removeDuplicates();
    EXPECT_EQ(recipients.size(), 5);
}

TEST_F(PayRunEmailTest, TheScreensAnswerWhileTheSlipsGoOutOneByOne) {
    Relay relay(sink->port);
    ASSERT_GT(relay.port(), 0);
    ql::MailSettings mail = ql::ReadMailSettings();
    mail.port = relay.port();
    ql::SaveMailSettings(mail);
    ql::frmPayRun d(context.WageDatabase);
    d.show();
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::Email));
    EXPECT_EQ(d.commitPays(), 5);
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("5 payslips were emailed.")))
        << dialogs.calls.last().message.toStdString();
    EXPECT_EQ(sink->received(5), 5);
    // While each slip went out, its step stood in the progress window.
    ASSERT_EQ(relay.seen.size(), 5) << relay.seen.join(u'\n').toStdString();
    for (int n = 1; n <= 5; ++n) {
        EXPECT_TRUE(relay.seen.at(n - 1).startsWith(QStringLiteral("Sending the payslip of ")))
            << relay.seen.at(n - 1).toStdString();
        EXPECT_TRUE(relay.seen.at(n - 1).endsWith(QStringLiteral("(%1 of 5)...").arg(n)))
            << relay.seen.at(n - 1).toStdString();
        EXPECT_TRUE(relay.seen.at(n - 1).contains(sink->text(QStringLiteral("%1.rcpt").arg(n)).trimmed()))
            << relay.seen.at(n - 1).toStdString();
    }
    for (QWidget* w : QApplication::topLevelWidgets())
        EXPECT_FALSE(qobject_cast<ql::MailProgressDialog*>(w) && w->isVisible()) << "the progress window has gone";
}

TEST_F(PayRunEmailTest, AFailedSendSaysWhyAndThePaysStayCommitted) {
    ql::MailSettings mail = ql::ReadMailSettings();
    mail.port = 1; // nothing listens there
    ql::SaveMailSettings(mail);
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::Email));
    EXPECT_EQ(d.commitPays(), 5);
    const QString account = dialogs.calls.last().message;
    EXPECT_TRUE(account.startsWith(QStringLiteral("5 pays were committed."))) << account.toStdString();
    EXPECT_TRUE(account.contains(QStringLiteral("did not take it"))) << account.toStdString();
    EXPECT_EQ(context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE Reference IS NULL")).toInt(),
              0);
    EXPECT_EQ(sink->received(0), 0);
}

TEST_F(PayRunEmailTest, TheSettingsScreenKeepsTheServer) {
    ql::frmPayRun run(context.WageDatabase);
    run.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::Email));
    EXPECT_FALSE(run.cmdMailServer->isHidden());
    run.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::None));
    EXPECT_TRUE(run.cmdMailServer->isHidden());

    ql::frmEmailSettings d;
    EXPECT_EQ(d.txtHost->text(), QStringLiteral("127.0.0.1"));
    EXPECT_EQ(d.spnPort->value(), sink->port);
    d.txtHost->setText(QStringLiteral("smtp.example.com"));
    d.cboSecurity->setCurrentIndex(2); // TLS brings its usual port
    EXPECT_EQ(d.spnPort->value(), 465);
    d.txtUser->setText(QStringLiteral("farm"));
    d.txtFrom->setText(QStringLiteral("not an address"));
    const int before = dialogs.calls.size();
    d.accept();
    ASSERT_EQ(dialogs.calls.size(), before + 1);
    EXPECT_EQ(dialogs.calls.last().message, QStringLiteral("not an address is not an email address."));
    EXPECT_EQ(ql::ReadMailSettings().host, QStringLiteral("127.0.0.1")); // nothing kept
    d.txtFrom->setText(QStringLiteral("wages@example.com"));
    d.accept();
    const ql::MailSettings kept = ql::ReadMailSettings();
    EXPECT_EQ(kept.host, QStringLiteral("smtp.example.com"));
    EXPECT_EQ(kept.port, 465);
    EXPECT_EQ(kept.security, QStringLiteral("tls"));
    EXPECT_EQ(kept.user, QStringLiteral("farm"));
    EXPECT_EQ(kept.from, QStringLiteral("wages@example.com"));
}

} // namespace
} // namespace qltest
