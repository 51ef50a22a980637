#include "PayrollRows.h"
#include "frame/Settings.h"
#include "ledger/AddressBook.h"
#include "startup/PHWage.h"
#include "startup/Startup.h"
#include "payengine/PayView.h"
#include "runtime/VbError.h"
#include "TestEnv.h"
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <csignal>

using namespace qltest;

namespace {
// A main screen without widgets: records what start-up does to it.
class RecordingView : public ql::PayView {
public:
    void SelectLabel(const QString&) override {}
    void openView(int) override {}
};
class RecordingForm : public ql::MainForm {
public:
    static int shown;
    RecordingView v;
    QString t;
    ql::PayView& view() override { return v; }
    void setTitle(const QString& title) override { t = title; }
    QString title() const override { return t; }
    void show() override { ++shown; }
    void close() override { ql::UnloadWageForm(); }
    void GotMessage(qint32) override {}
};
int RecordingForm::shown = 0;

class Startup : public DocumentsTest {
protected:
    void SetUp() override {
        RecordingForm::shown = 0;
        ql::setMainFormFactory([] { return std::make_unique<RecordingForm>(); });
    }
    void TearDown() override {
        if (ql::mainForm())
            ql::UnloadWageForm();
        ql::setMainFormFactory(nullptr);
    }
};
} // namespace

TEST(CommandLine, ArgumentsJoinWithSingleBlanks) {
    EXPECT_EQ(ql::commandLineText({}), QString());
    EXPECT_EQ(ql::commandLineText({QString()}), QString());
    EXPECT_EQ(ql::commandLineText({QStringLiteral(" ")}), QStringLiteral(" "));
    EXPECT_EQ(ql::commandLineText({QStringLiteral("Farm"), QStringLiteral("Wages")}), QStringLiteral("Farm Wages"));
}

TEST_F(Startup, EmptyCommandLineIsRefusedBeforeAnythingOpens) {
    ql::AppContext context;
    ql::setApp(&context);
    ql::ScriptedDialogs dialogs;
    ql::setDialogs(&dialogs);
    EXPECT_FALSE(ql::Main(QString()));
    ASSERT_EQ(dialogs.calls.size(), 1);
    const ql::DialogCall& c = dialogs.calls.at(0);
    EXPECT_EQ(c.heading, QStringLiteral("Invalid Execution"));
    EXPECT_EQ(c.subHeading, QStringLiteral("Unable to Start Quillary"));
    EXPECT_EQ(c.message, QStringLiteral("This Application is designed to run from inside Fernhold\r\n\r\n"
                                        "Please select the correct menu option from inside Fernhold to launch Quillary."));
    EXPECT_FALSE(c.flag);
    EXPECT_FALSE(QFileInfo::exists(ql::WageFileName()));
    EXPECT_FALSE(context.WageDatabase.isOpen());
    EXPECT_EQ(RecordingForm::shown, 0);
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
}

TEST_F(Startup, OneBlankIsACommandLineAndBecomesTheTitle) {
    PayrollRows rows;
    rows.employee(rows.address(QStringLiteral("Hale"), QStringLiteral("Mere")));
    EXPECT_TRUE(ql::Main(QStringLiteral(" ")));
    ASSERT_NE(ql::mainForm(), nullptr);
    EXPECT_EQ(ql::mainForm()->title(), QStringLiteral(" "));
    EXPECT_EQ(RecordingForm::shown, 1);
    EXPECT_TRUE(ql::App().WageDatabase.isOpen());
    EXPECT_EQ(ql::App().WageForm, &ql::mainForm()->view());
    EXPECT_TRUE(ql::App().ModuleTitle.isEmpty());
}

TEST_F(Startup, EmptyRosterLeavesNoDatabaseOpenAndNoForm) {
    PayrollRows rows;
    rows.address(QStringLiteral("Ticked"), QStringLiteral("Only"));
    ql::StartQuillary(QStringLiteral("Quillary"));
    EXPECT_EQ(ql::mainForm(), nullptr);
    EXPECT_FALSE(ql::App().WageDatabase.isOpen());
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    EXPECT_EQ(rows.dialogs.calls.at(0).heading, QStringLiteral("No Employees Found"));
    EXPECT_EQ(rows.dialogs.calls.at(0).message,
              QStringLiteral("There are no current Employees listed in the database.\r\n\r\nYou will now be taken to the "
                             "address book where you can enter your Employees' details."));
    EXPECT_EQ(ql::App().AddressBookProcess, 0); // no address book here: passed over without a word
}

TEST_F(Startup, ForeignPayrollFileIsNamedAndLeftUntouched) {
    PayrollRows rows;
    rows.wage.close();
    QFile::remove(ql::WageFileName());
    QFile f(ql::WageFileName());
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("not a payroll");
    f.close();
    try {
        ql::Main(QStringLiteral("Quillary"));
        FAIL() << "a foreign file must stop the start";
    } catch (const ql::VbError& e) {
        EXPECT_TRUE(e.description().contains(QFileInfo(ql::WageFileName()).fileName())) << e.description().toStdString();
    }
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("not a payroll"));
    EXPECT_EQ(ql::mainForm(), nullptr);
}

TEST_F(Startup, ReadySetGoKeepsTheTitleAndNamesItselfInErrors) {
    PayrollRows rows;
    rows.employee(rows.address(QStringLiteral("Hale"), QStringLiteral("Mere")));
    {
        ql::qlConnector connector;
        connector.Quillary()->ReadySetGo(QStringLiteral("Wages"));
        EXPECT_EQ(ql::App().ModuleTitle, QStringLiteral("Wages"));
        ASSERT_NE(ql::mainForm(), nullptr);
        EXPECT_EQ(ql::mainForm()->title(), QStringLiteral("Wages"));
        connector.Quillary()->Finish();
        EXPECT_EQ(ql::mainForm(), nullptr);
        EXPECT_FALSE(ql::App().WageDatabase.isOpen());
    }
    ql::WriteSetting(QStringLiteral("FERNHOLD"), QStringLiteral("WageFileName"), docs->writeFile(QStringLiteral("odd.db"), "junk"));
    ql::qlConnector connector;
    try {
        connector.Quillary()->ReadySetGo(QStringLiteral("Wages"));
        FAIL();
    } catch (const ql::VbError& e) {
        EXPECT_TRUE(e.description().startsWith(QStringLiteral("Quillary - ReadySetGo\r\n"))) << e.description().toStdString();
    }
}

TEST_F(Startup, ShutdownWritesTheLeaveChoiceAndClosesTheDatabase) {
    PayrollRows rows;
    rows.employee(rows.address(QStringLiteral("Hale"), QStringLiteral("Mere")));
    ASSERT_TRUE(ql::Main(QStringLiteral("Quillary")));
    ql::mainForm()->view().control(QStringLiteral("optWhichYears(0)")).down = true;
    ql::UnloadAllForms();
    EXPECT_EQ(ql::mainForm(), nullptr);
    EXPECT_EQ(ql::App().WageForm, nullptr);
    EXPECT_FALSE(ql::App().WageDatabase.isOpen());
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()), QStringLiteral("N"));
}

TEST_F(Startup, ConnectorsShareOneObjectUntilTheLastIsGone) {
    ql::AppContext context;
    ql::setApp(&context);
    {
        auto first = std::make_unique<ql::qlConnector>();
        ql::PHWage* object = first->Quillary();
        ASSERT_NE(object, nullptr);
        ql::qlConnector second;
        EXPECT_EQ(second.Quillary(), object);
        EXPECT_EQ(context.ConnectorCount, 2);
        first.reset();
        EXPECT_EQ(second.Quillary(), object);
        EXPECT_EQ(context.ConnectorCount, 1);
    }
    EXPECT_EQ(context.ConnectorCount, 0);
    EXPECT_EQ(ql::TheWageObject(), nullptr);
    ql::setApp(nullptr);
}

TEST_F(Startup, AddressBookIsStartedOnceAndAgainAfterItEnded) {
    PayrollRows rows;
    const QString folder = docs->path() + QStringLiteral("/program");
    const QString log = docs->path() + QStringLiteral("/started.txt");
    const QString book = docs->writeFile(QStringLiteral("program/FHAddressBook"),
                                         QStringLiteral("#!/bin/sh\necho \"$#:$1\" >> '%1'\nexec sleep 30\n").arg(log).toUtf8());
    QFile::setPermissions(book, QFile::permissions(book) | QFileDevice::ExeOwner);
    ql::WriteSetting(QStringLiteral("FERNHOLD"), QStringLiteral("ProgramDirectory"), folder);
    ql::LaunchAddressBook(0, 0, false, true);
    const qint64 pid = ql::App().AddressBookProcess;
    ASSERT_NE(pid, 0);
    EXPECT_EQ(ql::App().AddressBookWindow, pid);
    ql::LaunchAddressBook(1, 7, true, true); // still running: not started twice
    EXPECT_EQ(ql::App().AddressBookProcess, pid);
    for (int i = 0; i < 50 && !QFileInfo::exists(log); ++i)
        QThread::msleep(50);
    QFile f(log);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("1:0,0,False,True\n"));
    f.close();
    // The user closed it: the lookup no longer finds it, and a new one starts.
    ::kill(pid_t(pid), SIGKILL);
    for (int i = 0; i < 50 && ql::addressBookRunning(); ++i)
        QThread::msleep(50);
    ql::LaunchAddressBook(1, 7, true, true);
    EXPECT_NE(ql::App().AddressBookProcess, pid);
    EXPECT_NE(ql::App().AddressBookProcess, 0);
    ql::CloseAddressBook();
    EXPECT_EQ(ql::App().AddressBookProcess, 0);
    EXPECT_EQ(ql::App().AddressBookWindow, 0);
}

// Another program holds the payroll file as the program starts: the start stops with a message that
// names the lock and the file, never one about entering more employees.
TEST_F(Startup, ALockedPayrollFileIsNamedLockedAtTheStart) {
    PayrollRows rows;
    rows.employee(rows.address(QStringLiteral("Hale"), QStringLiteral("Mere")));
    rows.wage.close();
    ql::Database holder;
    holder.open(ql::WageFileName());
    holder.executeScript(QStringLiteral("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; "
                                        "UPDATE Employees SET EmployeeID = EmployeeID WHERE 0;"));
    QString told;
    try {
        ql::Main(QStringLiteral("Quillary"));
    } catch (const ql::VbError& e) {
        told = e.description();
    }
    for (const auto& c : rows.dialogs.calls)
        told += u'\n' + c.message;
    holder.executeScript(QStringLiteral("COMMIT"));
    holder.close();
    EXPECT_TRUE(told.contains(QStringLiteral("locked"))) << told.toStdString();
    EXPECT_TRUE(told.contains(QFileInfo(ql::WageFileName()).fileName())) << told.toStdString();
    EXPECT_FALSE(told.contains(QStringLiteral("more employees"))) << told.toStdString();
    EXPECT_EQ(ql::mainForm(), nullptr);
}
