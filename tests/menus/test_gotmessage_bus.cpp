// The address book's report comes back by GotMessage on the bus and reaches the main screen, from a
// second process, while the program runs.
#include "PayrollRows.h"
#include "SessionBus.h"
#include "TestEnv.h"
#include "payengine/PayView.h"
#include "startup/ObjectServer.h"
#include "startup/Startup.h"
#include <QEventLoop>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

namespace {

class StandInView : public ql::PayView {
public:
    void SelectLabel(const QString&) override {}
    void openView(int) override {}
};
// The main screen as start-up sees it; records the address book's reports.
class StandInForm : public ql::MainForm {
public:
    static QList<qint32> reports;
    StandInView v;
    QString t;
    ql::PayView& view() override { return v; }
    void setTitle(const QString& title) override { t = title; }
    QString title() const override { return t; }
    void show() override {}
    void close() override { ql::UnloadWageForm(); }
    void GotMessage(qint32 addressID) override { reports << addressID; }
};
QList<qint32> StandInForm::reports;

QString gdbus(const QStringList& args) {
    QProcess client;
    QEventLoop loop;
    QObject::connect(&client, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
    client.start(QStringLiteral("gdbus"), args);
    loop.exec();
    return QString::fromUtf8(client.readAllStandardOutput() + client.readAllStandardError()).trimmed();
}

} // namespace

TEST(AddressBookReport, GotMessageFromAnotherProcessReachesTheMainScreen) {
    qltest::PrivateBus::own();
    if (QStandardPaths::findExecutable(QStringLiteral("gdbus")).isEmpty())
        GTEST_SKIP() << "gdbus is not installed";
    QString reason;
    if (!ql::startObjectServer(&reason)) GTEST_SKIP() << "no session bus: " << reason.toStdString();
    qltest::TempDocuments docs;
    {
        qltest::PayrollRows rows;
        rows.employee(rows.address(QStringLiteral("Ngata"), QStringLiteral("Aroha")));
        ql::setMainFormFactory([] { return std::make_unique<StandInForm>(); });
        StandInForm::reports.clear();
        ql::StartQuillary(QStringLiteral("Quillary"));
        ASSERT_NE(ql::mainForm(), nullptr);
        const QString answer = gdbus(
            {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), ql::ServiceName,
             QStringLiteral("--object-path"), ql::WageObjectPath, QStringLiteral("--method"),
             QStringLiteral("nz.fernhold.Quillary.PHWage.GotMessage"), QStringLiteral("17")});
        EXPECT_EQ(answer, QStringLiteral("()"));
        EXPECT_EQ(StandInForm::reports, QList<qint32>({17}));
        // Another call leaves the screen alone.
        gdbus({QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), ql::ServiceName,
               QStringLiteral("--object-path"), ql::WageObjectPath, QStringLiteral("--method"),
               QStringLiteral("nz.fernhold.Quillary.PHWage.CheckEmployees")});
        EXPECT_EQ(StandInForm::reports.size(), 1);
        ql::UnloadWageForm();
        ql::setMainFormFactory(nullptr);
    }
    ql::stopObjectServer();
}
