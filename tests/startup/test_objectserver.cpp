#include "PayrollRows.h"
#include "startup/ObjectServer.h"
#include "TestEnv.h"
#include <QEventLoop>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

using namespace qltest;

namespace {
// A private session bus for the test program when none is there.
class PrivateBus {
public:
    PrivateBus() {
        if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
            return;
        const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        if (daemon.isEmpty())
            return;
        m_daemon.start(daemon, {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        if (!m_daemon.waitForStarted(5000) || !m_daemon.waitForReadyRead(5000))
            return;
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_daemon.readLine().trimmed());
    }
    ~PrivateBus() {
        if (m_daemon.state() != QProcess::NotRunning) {
            m_daemon.kill();
            m_daemon.waitForFinished(2000);
        }
    }
    static PrivateBus& instance() {
        static PrivateBus bus;
        return bus;
    }

private:
    QProcess m_daemon;
};

// Runs a command-line bus client as a second process while this one answers on the bus.
QString callFromAnotherProcess(const QStringList& args) {
    QProcess client;
    QEventLoop loop;
    QObject::connect(&client, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
    client.start(QStringLiteral("gdbus"), args);
    loop.exec();
    return QString::fromUtf8(client.readAllStandardOutput() + client.readAllStandardError()).trimmed();
}
} // namespace

class ObjectServer : public DocumentsTest {
protected:
    void SetUp() override {
        PrivateBus::instance();
        if (QStandardPaths::findExecutable(QStringLiteral("gdbus")).isEmpty())
            GTEST_SKIP() << "gdbus is not installed: no second process can call the bus";
        QString reason;
        if (!ql::startObjectServer(&reason))
            GTEST_SKIP() << "no session bus and no dbus-daemon to start one: " << reason.toStdString();
    }
    void TearDown() override { ql::stopObjectServer(); }
};

TEST_F(ObjectServer, CheckEmployeesIsAnsweredToAnotherProcess) {
    PayrollRows rows;
    rows.employee(rows.address(QStringLiteral("Unticked"), QStringLiteral("Ula"), false));
    const QStringList call{QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), ql::ServiceName,
                           QStringLiteral("--object-path"), ql::WageObjectPath, QStringLiteral("--method"),
                           QStringLiteral("nz.fernhold.Quillary.PHWage.CheckEmployees")};
    const QString answer = callFromAnotherProcess(call);
    EXPECT_TRUE(answer.contains(QStringLiteral("There are no current employees in the Address Book"))) << answer.toStdString();
    rows.employee(rows.address(QStringLiteral("Ticked"), QStringLiteral("Tia")));
    EXPECT_EQ(callFromAnotherProcess(call), QStringLiteral("('',)"));
    // A call without a connector of its own leaves no object behind.
    EXPECT_EQ(ql::App().ConnectorCount, 0);
}

TEST_F(ObjectServer, ConnectorHandsOutTheObjectPath) {
    PayrollRows rows;
    const QString answer = callFromAnotherProcess(
        {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), ql::ServiceName,
         QStringLiteral("--object-path"), ql::ConnectorPath, QStringLiteral("--method"),
         QStringLiteral("nz.fernhold.Quillary.qlConnector.Connect")});
    EXPECT_EQ(answer, QStringLiteral("(objectpath '/PHWage',)"));
    // The client has left the bus, so its connector is released.
    QEventLoop loop;
    QTimer::singleShot(500, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_EQ(ql::busClientCount(), 0);
    EXPECT_EQ(ql::App().ConnectorCount, 0);
}
