// The employee editor offers the special tax code's rate only with that code, and takes the employer's
// contributions: typed with keys on the focused box, saved, and read back from the payroll.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/EmployeeTaxItems.h"
#include "staff/EmployeeStore.h"
#include "staff/frmEmployee.h"
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace qltest {
namespace {

class EditorSpecialCode : public DocumentsTest {
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
    // Keys go to the focused box, as a user's do.
    static void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static void key(Qt::Key k, Qt::KeyboardModifiers m = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), k, m);
    }
    static QString focusName() {
        QWidget* f = QApplication::focusWidget();
        return f ? f->objectName() : QString();
    }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

TEST_F(EditorSpecialCode, TheRateBoxFollowsTheCodeAndTheContributionsAreSaved) {
    ql::frmEmployee e(context.WageDatabase, 0);
    e.show();
    e.activateWindow();
    QApplication::setActiveWindow(&e);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&e));
    QWidget* rate = e.panel()->field(QStringLiteral("stc-rate"));
    ASSERT_NE(rate, nullptr);
    EXPECT_FALSE(rate->isEnabled()); // a new employee is on M

    e.panel()->field(QStringLiteral("first"))->setFocus();
    type(QStringLiteral("Hemi"));
    key(Qt::Key_Tab);
    type(QStringLiteral("Walker"));
    key(Qt::Key_Tab);
    type(QStringLiteral("1/04/2026"));
    key(Qt::Key_Tab);
    key(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("STC"));
    EXPECT_TRUE(rate->isEnabled());
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), QStringLiteral("txt_stcrate")); // the next box once the code is STC
    type(QStringLiteral("21.5"));
    key(Qt::Key_Tab); // the interval: weekly
    key(Qt::Key_Tab);
    type(QStringLiteral("27"));
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    type(QStringLiteral("120000039"));
    e.panel()->field(QStringLiteral("kiwisaver"))->setFocus();
    key(Qt::Key_Down);
    key(Qt::Key_Down); // 3
    e.panel()->field(QStringLiteral("contribution"))->setFocus();
    type(QStringLiteral("Employer Superannuation=2%; Medical Insurance=9.50"));
    key(Qt::Key_S, Qt::AltModifier);
    QTest::qWait(250);
    ASSERT_FALSE(e.isVisible()) << e.findChild<QLabel*>(QStringLiteral("lblProblems"))->text().toStdString();

    const qint32 id = e.panel()->employeeID();
    ASSERT_GT(id, 0);
    ql::Database farm;
    farm.open(ql::DataFileName());
    const ql::EmployeeDetails saved = ql::LoadEmployee(context.WageDatabase, farm, id);
    EXPECT_EQ(saved.TaxCode, QStringLiteral("STC"));
    EXPECT_EQ(saved.STCRate, 21500);
    EXPECT_EQ(ql::LoadEmployeeTaxItems(context.WageDatabase, id).tailoredRate, 21500);
    ASSERT_EQ(saved.Contributions.size(), 2);
    EXPECT_EQ(saved.Contributions.at(0).text(), QStringLiteral("Employer Superannuation=2%"));
    EXPECT_EQ(saved.Contributions.at(1).text(), QStringLiteral("Medical Insurance=9.5"));

    // Back on M the box is passed over, and the rate goes with the code.
    ql::frmEmployee again(context.WageDatabase, id);
    again.show();
    QApplication::setActiveWindow(&again);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&again));
    QWidget* rateAgain = again.panel()->field(QStringLiteral("stc-rate"));
    EXPECT_TRUE(rateAgain->isEnabled());
    EXPECT_EQ(qobject_cast<QLineEdit*>(rateAgain)->text(), QStringLiteral("21.5"));
    again.panel()->field(QStringLiteral("tax-code"))->setFocus();
    key(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("M"));
    EXPECT_FALSE(rateAgain->isEnabled());
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), QStringLiteral("txt_interval"));
    key(Qt::Key_S, Qt::AltModifier);
    QTest::qWait(250);
    ASSERT_FALSE(again.isVisible()) << again.findChild<QLabel*>(QStringLiteral("lblProblems"))->text().toStdString();
    const ql::EmployeeDetails onM = ql::LoadEmployee(context.WageDatabase, farm, id);
    EXPECT_EQ(onM.TaxCode, QStringLiteral("M"));
    EXPECT_EQ(onM.STCRate, 0);
    EXPECT_EQ(ql::LoadEmployeeTaxItems(context.WageDatabase, id).tailoredRate, 0);
}

} // namespace
} // namespace qltest
