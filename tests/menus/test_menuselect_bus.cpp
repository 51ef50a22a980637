// A second process on the session bus sees MenuSelect, with the help numbers, when a module is chosen.
#include "MenusFixture.h"
#include "SessionBus.h"
#include "startup/ObjectServer.h"
#include <QProcess>
#include <QStandardPaths>

using namespace qltest;

class MenuSelectOnTheBus : public MenusTest {
protected:
    void SetUp() override {
        PrivateBus::own();
        if (QStandardPaths::findExecutable(QStringLiteral("gdbus")).isEmpty())
            GTEST_SKIP() << "gdbus is not installed: no second process can listen on the bus";
        QString reason;
        if (!ql::startObjectServer(&reason)) GTEST_SKIP() << "no session bus: " << reason.toStdString();
        MenusTest::SetUp();
    }
    void TearDown() override {
        if (monitor.state() != QProcess::NotRunning) {
            monitor.kill();
            monitor.waitForFinished(2000);
        }
        MenusTest::TearDown();
        ql::stopObjectServer();
    }
    // gdbus monitor as the suite's menu: it prints each signal of the object.
    bool listen() {
        monitor.start(QStringLiteral("gdbus"),
                      {QStringLiteral("monitor"), QStringLiteral("--session"), QStringLiteral("--dest"),
                       ql::ServiceName, QStringLiteral("--object-path"), ql::WageObjectPath});
        const bool ok =
            monitor.waitForStarted(5000) && waitForOutput(monitor, seen, QStringLiteral("owned by"), 10000);
        if (!ok) seen += QString::fromUtf8(monitor.readAllStandardError());
        return ok;
    }
    QProcess monitor;
    QString seen;
};

TEST_F(MenuSelectOnTheBus, AModuleChoiceReachesAnotherProcessWithTheHelpNumbers) {
    ASSERT_TRUE(listen()) << seen.toStdString();
    ql::BuildTitleMenus();
    ql::ScreenActivated(form, ql::MainScreenNumber);
    ql::mnu_modules_Click(QStringLiteral("Cashbook"));
    EXPECT_TRUE(waitForOutput(monitor, seen, QStringLiteral("MenuSelect ('Cashbook', 7000, 7001)"), 10000))
        << seen.toStdString();
    // Ctrl+R: the reports of this module, by the form's title.
    form.formTitle = QStringLiteral("Quillary");
    ql::FormKeyDown('R', true, form);
    EXPECT_TRUE(waitForOutput(monitor, seen, QStringLiteral("MenuSelect ('Quillary', 7000, 7001)"), 10000))
        << seen.toStdString();
}

TEST_F(MenuSelectOnTheBus, AChoiceWithNoClientHoldingTheObjectStillGoesOut) {
    connector.reset();
    ASSERT_TRUE(listen()) << seen.toStdString();
    ql::mnu_tools_Click(QStringLiteral("Backup Data"));
    EXPECT_TRUE(waitForOutput(monitor, seen, QStringLiteral("MenuSelect ('Backup Data', 0, 0)"), 10000))
        << seen.toStdString();
    EXPECT_EQ(app.ConnectorCount, 0);
}
