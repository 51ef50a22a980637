// A module chosen in the main window's menu reaches another process on the session bus as MenuSelect,
// with the window's help numbers.
#include "MainWindowFixture.h"
#include "SessionBus.h"
#include "startup/ObjectServer.h"
#include <QProcess>
#include <QStandardPaths>

using namespace qltest;

class MainWindowOnTheBus : public MainWindowTest {
protected:
    void SetUp() override {
        PrivateBus::own();
        if (QStandardPaths::findExecutable(QStringLiteral("gdbus")).isEmpty())
            GTEST_SKIP() << "gdbus is not installed: no second process can listen on the bus";
        QString reason;
        if (!ql::startObjectServer(&reason)) GTEST_SKIP() << "no session bus: " << reason.toStdString();
        MainWindowTest::SetUp();
    }
    void TearDown() override {
        if (monitor.state() != QProcess::NotRunning) {
            monitor.kill();
            monitor.waitForFinished(2000);
        }
        MainWindowTest::TearDown();
        ql::stopObjectServer();
    }
    QProcess monitor;
    QString seen;
};

TEST_F(MainWindowOnTheBus, AModuleChosenByKeyboardReachesTheSuite) {
    // gdbus monitor as the suite's menu: it prints each signal of the object.
    monitor.start(QStringLiteral("gdbus"),
                  {QStringLiteral("monitor"), QStringLiteral("--session"), QStringLiteral("--dest"),
                   ql::ServiceName, QStringLiteral("--object-path"), ql::WageObjectPath});
    ASSERT_TRUE(monitor.waitForStarted(5000) &&
                waitForOutput(monitor, seen, QStringLiteral("owned by"), 10000))
        << seen.toStdString() << QString::fromUtf8(monitor.readAllStandardError()).toStdString();
    startWired();
    button(QStringLiteral("cmdAddPay"))->setFocus();
    key(Qt::Key_M, Qt::ControlModifier);
    ASSERT_EQ(openMenu(), bar->menu(0));
    QTest::keyClick(bar->menu(0), Qt::Key_Down);
    QTest::keyClick(bar->menu(0), Qt::Key_Return);
    EXPECT_TRUE(
        waitForOutput(monitor, seen, QStringLiteral("MenuSelect ('Address Book', 7000, 7001)"), 10000))
        << seen.toStdString();
    EXPECT_EQ(selections, QStringList({"Address Book/0"}));
}
