// A farm set up on the screens by key presses alone: the set-up assistant (left half way and resumed),
// the employee editor, and a pay run that commits with PAYE on every pay. Screenshots of each screen
// are written beside the test program for a person to look at.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "payday/BankAccount.h"
#include "payday/IrdNumber.h"
#include "payday/PaydayTables.h"
#include "payday/frmPayRun.h"
#include "payengine/AppContext.h"
#include "staff/FirstStart.h"
#include "staff/frmEmployee.h"
#include "staff/frmSetupAssistant.h"
#include "cashbook/PaySlipPrinter.h"
#include <QApplication>
#include <QDateEdit>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace qltest {
namespace {

QString ird(int k) {
    for (qint64 n = 120000000;; ++n)
        if (ql::IsValidIrdNumber(QString::number(n)) && k-- == 0) return QString::number(n);
}

QString account(int k) {
    for (qint64 base = 1234500;; ++base) {
        const QString s = QStringLiteral("01-0902-%1-00").arg(base, 7, 10, QChar(u'0'));
        if (ql::IsValidBankAccount(s) && k-- == 0) return s;
    }
}

QWidget* shownWindow = nullptr;

// Keys go where the focus is, as a user's do; with no focus (a progress window just closed) to the
// window the user works in.
QWidget* focus() {
    if (QWidget* w = QApplication::focusWidget(); w && w->isEnabled()) return w;
    if (QWidget* w = QApplication::activeWindow()) return w;
    // Without a window manager nobody gives the window back its activation when the progress window
    // closes: done here as a window manager would.
    shownWindow->activateWindow();
    QApplication::setActiveWindow(shownWindow);
    return shownWindow;
}
void type(const QString& text) {
    QTest::keyClicks(focus(), text);
}
void key(Qt::Key k, Qt::KeyboardModifiers m = Qt::NoModifier) {
    QTest::keyClick(focus(), k, m);
    // A button's access key clicks it the way a mouse would, after a moment.
    if (m & Qt::AltModifier) QTest::qWait(250);
}
void tab(int times = 1) {
    for (int i = 0; i < times; ++i) key(Qt::Key_Tab);
}
// Replaces what the focused box holds.
void retype(const QString& text) {
    key(Qt::Key_A, Qt::ControlModifier);
    type(text);
}

void shoot(QWidget& w, const char* name) {
    w.grab().save(QStringLiteral(QUILLARY_BINARY_DIR "/tests/staff_ui/%1.png").arg(QString::fromLatin1(name)));
}

// What the screen's problem lines say.
std::string problemsOf(QWidget& w) {
    QStringList all;
    for (QLabel* l : w.findChildren<QLabel*>(QStringLiteral("lblProblems")))
        if (!l->text().isEmpty()) all << l->text();
    QWidget* f = QApplication::focusWidget();
    return (all.join(u'|') + QStringLiteral(" [focus: %1]").arg(f ? f->objectName() : QStringLiteral("none")))
        .toStdString();
}

void showAndFocus(QWidget& w) {
    shownWindow = &w;
    w.show();
    w.activateWindow();
    QApplication::setActiveWindow(&w);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
}

class SetupByKeys : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ASSERT_EQ(runCli({QStringLiteral("init")}, docs->path()).exitCode, 0);
        context.WageDatabase.open(ql::WageFileName());
    }
    void TearDown() override {
        context.WageDatabase.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    int count(const QString& sql) { return context.WageDatabase.scalar(sql).toInt(); }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

TEST_F(SetupByKeys, FirstStartWritesTheColoursOnce) {
    QFile::remove(ql::FamilyFile() + QStringLiteral(".none"));
    EXPECT_FALSE(ql::IniHasSection(ql::FamilyFile(), QStringLiteral("COLOURS")));
    EXPECT_TRUE(ql::PrepareNewInstallation().contains(QStringLiteral("COLOURS/GridHeader")));
    EXPECT_EQ(ql::ReadIni(QStringLiteral("COLOURS"), QStringLiteral("GridOddRow"), ql::FamilyFile()),
              QStringLiteral("234,242,222"));
    ql::WriteIni(QStringLiteral("COLOURS"), QStringLiteral("GridHeader"), QStringLiteral("1,2,3"), ql::FamilyFile());
    EXPECT_TRUE(ql::PrepareNewInstallation().isEmpty());
    EXPECT_EQ(ql::ReadIni(QStringLiteral("COLOURS"), QStringLiteral("GridHeader"), ql::FamilyFile()),
              QStringLiteral("1,2,3"));
}

TEST_F(SetupByKeys, AssistantLeftAndResumedThenAPayRun) {
    ql::Database& wage = context.WageDatabase;
    EXPECT_EQ(ql::frmSetupAssistant::FirstPageToDo(wage), 0);
    {
        ql::frmSetupAssistant d(wage);
        d.resize(760, 560);
        showAndFocus(d);
        EXPECT_EQ(d.page(), 0);
        // The farm: name, address, town, postcode, IRD number, GST (none), contact, phone, email.
        type(QStringLiteral("Kowhai Flats Dairy"));
        tab();
        type(QStringLiteral("12 River Road"));
        tab();
        type(QStringLiteral("Te Awamutu"));
        tab();
        type(QStringLiteral("3800"));
        tab();
        type(QStringLiteral("49-091-850"));
        tab(2);
        type(QStringLiteral("Pat Payroll"));
        tab();
        type(QStringLiteral("07 871 0000"));
        tab();
        type(QStringLiteral("pat@kowhai.example.nz"));
        shoot(d, "assistant-farm");
        key(Qt::Key_N, Qt::AltModifier);
        ASSERT_EQ(d.page(), 1) << problemsOf(d);
        // Left half way: Later.
        key(Qt::Key_L, Qt::AltModifier);
        EXPECT_FALSE(d.isVisible());
    }
    EXPECT_EQ(ql::frmSetupAssistant::FirstPageToDo(wage), 1);
    {
        ql::frmSetupAssistant d(wage);
        d.resize(760, 560);
        showAndFocus(d);
        EXPECT_EQ(d.page(), 1); // resumed where it was left
        type(QStringLiteral("01-0902-0068389-00"));
        shoot(d, "assistant-bank");
        key(Qt::Key_N, Qt::AltModifier);
        ASSERT_EQ(d.page(), 2);
        // The first employee: first and last name, start date, tax code and interval as offered,
        // hourly rate, no salary, IRD number; then KiwiSaver and the bank account further down.
        type(QStringLiteral("Mere"));
        tab();
        type(QStringLiteral("Tane"));
        tab();
        type(QStringLiteral("1/04/2026"));
        tab(3);
        type(QStringLiteral("26.50"));
        tab(2);
        type(ird(1));
        tab(6); // date of birth, address, city, email, occupation, to the hours
        type(QStringLiteral("40"));
        tab(); // KiwiSaver: no, opted-out, 3, 3.5
        key(Qt::Key_Down);
        key(Qt::Key_Down);
        key(Qt::Key_Down);
        tab(4); // KiwiSaver status (auto-enrolled when left empty), start date, employer rate
        type(account(1));
        shoot(d, "assistant-employee");
        key(Qt::Key_F, Qt::AltModifier);
        EXPECT_FALSE(d.isVisible()) << problemsOf(d);
    }
    EXPECT_EQ(ql::frmSetupAssistant::FirstPageToDo(wage), 3);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Employees WHERE TaxCode = 'M' AND PayRate = 26.5 AND "
                                   "KiwiSaverEnrolled = 1")),
              1);
    EXPECT_EQ(ql::EmployeeBankAccount(wage, 1), account(1));

    // Two more in the employee editor: a salaried manager on M SL and a relief milker on S.
    {
        ql::frmEmployee e(wage, 0);
        showAndFocus(e);
        e.panel()->field(QStringLiteral("first"))->setFocus();
        type(QStringLiteral("Sam"));
        tab();
        type(QStringLiteral("Brown"));
        tab();
        type(QStringLiteral("2026-04-01"));
        tab();
        retype(QStringLiteral("M SL"));
        tab(); // weekly, fortnightly, four-weekly, monthly
        key(Qt::Key_End);
        tab(2);
        type(QStringLiteral("78000"));
        tab();
        type(QStringLiteral("123-456-788")); // a wrong check digit first
        key(Qt::Key_S, Qt::AltModifier);
        ASSERT_TRUE(e.isVisible());
        const QString problems = e.findChild<QLabel*>(QStringLiteral("lblProblems"))->text();
        EXPECT_TRUE(problems.contains(QStringLiteral("IRD number: 123-456-788 fails"))) << problems.toStdString();
        EXPECT_EQ(focus()->objectName(), QStringLiteral("txt_ird"));
        shoot(e, "editor-refusal");
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Employees")), 1);
        retype(ird(2));
        tab(5);
        retype(QStringLiteral("Farm Manager"));
        tab(2);
        key(Qt::Key_End); // KiwiSaver 10
        key(Qt::Key_Up);
        key(Qt::Key_Up);
        key(Qt::Key_Up); // 4
        key(Qt::Key_S, Qt::AltModifier);
        EXPECT_FALSE(e.isVisible()) << problemsOf(e);
    }
    {
        ql::frmEmployee e(wage, 0);
        showAndFocus(e);
        e.panel()->field(QStringLiteral("first"))->setFocus();
        type(QStringLiteral("Ana"));
        tab();
        type(QStringLiteral("Kerr"));
        tab();
        type(QStringLiteral("1/04/2026"));
        tab();
        retype(QStringLiteral("S"));
        tab();
        key(Qt::Key_Down); // fortnightly
        tab();
        type(QStringLiteral("28"));
        tab(2);
        type(ird(3));
        tab(5);
        retype(QStringLiteral("Relief Milker"));
        tab();
        type(QStringLiteral("30"));
        shoot(e, "editor-milker");
        key(Qt::Key_S, Qt::AltModifier);
        EXPECT_FALSE(e.isVisible()) << problemsOf(e);
    }
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Employees WHERE TaxCode = 'M SL' AND YearlyTotal = 78000 "
                                   "AND PayIntervalID = 4")),
              1);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Employees WHERE TaxCode = 'S' AND PayIntervalID = 2")), 1);

    // The pay run: the date typed, pays added, committed.
    ql::SavePrintPaySlip(0);
    ql::frmPayRun run(wage);
    showAndFocus(run);
    key(Qt::Key_D, Qt::AltModifier);
    key(Qt::Key_Home);
    type(QStringLiteral("30 Apr 2026"));
    // The day section takes a typed day only where the month then had it: the arrows bring it there.
    key(Qt::Key_Home);
    for (int i = 0; i < 31 && run.dtpRunDate->date().day() != 30; ++i)
        key(run.dtpRunDate->date().day() < 30 ? Qt::Key_Up : Qt::Key_Down);
    ASSERT_EQ(run.dtpRunDate->date(), QDate(2026, 4, 30));
    key(Qt::Key_P, Qt::AltModifier);
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_M, Qt::AltModifier);
    shoot(run, "payrun");
    QStringList said;
    for (const auto& c : dialogs.calls) said << c.message;
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages WHERE length(Reference) > 0")), 3)
        << said.join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages WHERE PAYE > 0 AND Gross > 0")), 3);
}

} // namespace
} // namespace qltest
