#include "PayrollRows.h"
#include "SessionBus.h"
#include "TestEnv.h"
#include "startup/ObjectServer.h"
#include <QEventLoop>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

using namespace qltest;

namespace {
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
        qltest::PrivateBus::instance();
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
    const QStringList call{
        QStringLiteral("call"),          QStringLiteral("--session"),
        QStringLiteral("--dest"),        ql::ServiceName,
        QStringLiteral("--object-path"), ql::WageObjectPath,
        QStringLiteral("--method"),      QStringLiteral("nz.fernhold.Quillary.PHWage.CheckEmployees")};
    const QString answer = callFromAnotherProcess(call);
    EXPECT_TRUE(answer.contains(QStringLiteral("There are no current employees in the Address Book")))
        << answer.toStdString();
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
