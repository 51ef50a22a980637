// Each view of the wage screen rendered on the demo farm at the two window sizes. With QUILLARY_SHOTS
// set to a folder, the pictures are kept there for a person to look at.
#include "TestEnv.h"
#include "data/DemoFarm.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "ledger/frmWage.h"
#include "payengine/AppContext.h"
#include "startup/Startup.h"
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace qltest;

namespace {
class ScreenshotTest : public DocumentsTest {
protected:
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;

    void SetUp() override {
        docs->writeFile(
            QStringLiteral("Fernhold/Common/Fernhold.ini"),
            "[WINDOWS]\r\nCountry=64\r\n[COLOURS]\r\nGridHeader=51,102,1\r\nGridSelectedRow=255,226,128\r\n"
            "GridEvenRow=255,255,255\r\nGridOddRow=234,242,222\r\n");
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        QDir().mkpath(QFileInfo(ql::WageFileName()).absolutePath());
        QDir().mkpath(QFileInfo(ql::DataFileName()).absolutePath());
        ql::Database wage = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        ql::Database farm = ql::openOrCreate(ql::DatabaseKind::Farm, ql::DataFileName());
        ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName()).close();
        ql::addDemoFarm(wage, farm);
        wage.close();
        farm.close();
    }
    void TearDown() override {
        ql::UnloadAllForms();
        ql::setMainFormFactory(nullptr);
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
};
} // namespace

TEST_F(ScreenshotTest, EachViewAtBothSizes) {
    const QString folder = qEnvironmentVariable("QUILLARY_SHOTS");
    for (QSize size : {QSize(1280, 800), QSize(800, 600)}) {
        ql::setMainFormFactory([] { return std::make_unique<ql::WageMainForm>(); });
        ASSERT_TRUE(ql::Main(QStringLiteral("Quillary")));
        ql::frmWage* w = static_cast<ql::WageMainForm*>(ql::mainForm())->widget();
        w->resize(size);
        w->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(w));
        // An enrolled employee with a second pay, so that tax, deductions and contributions have lines.
        auto* cbo = w->findChild<QComboBox*>(QStringLiteral("cboEmployee"));
        for (int i = 0; i < cbo->count(); ++i) {
            const int id = cbo->itemData(i).toInt();
            for (const ql::EmployeeRecord& e : ql::App().EmployeeArray)
                if (e.EmployeeID == id && e.KiwiSaverEnrolled && w->screen().cboEmployeeIndex != i)
                    w->screen().selectEmployeeItem(i);
            if (w->screen().cboEmployeeIndex == i &&
                ql::App().EmployeeArray.value(ql::App().CurrentEmployee).KiwiSaverEnrolled)
                break;
        }
        w->commandButton(QStringLiteral("cmdAddPay"))->click();
        const char* const views[][2] = {{"1", "payments"},   {"2", "allowances"}, {"3", "paye"},
                                        {"5", "deductions"}, {"6", "payslip"},    {"7", "contributions"}};
        for (const auto& v : views) {
            w->commandButton(QStringLiteral("cmdSelect(%1)").arg(QString::fromLatin1(v[0])))->click();
            QApplication::processEvents();
            const QPixmap shot = w->grab();
            EXPECT_EQ(shot.size(), size * shot.devicePixelRatio());
            if (!folder.isEmpty())
                shot.save(
                    QStringLiteral("%1/%2-%3.png").arg(folder, QString::fromLatin1(v[1])).arg(size.width()));
        }
        ql::App().WageDatabase.execute(
            QStringLiteral("UPDATE Wages SET Reference = 'R1042' WHERE WageID = %1")
                .arg(ql::App().CurrentWageID));
        w->screen().SetEmployee();
        w->commandButton(QStringLiteral("cmdSelect(3)"))->click();
        QApplication::processEvents();
        EXPECT_EQ(w->labelControl(QStringLiteral("lblpayment(8)"))->text(),
                  QStringLiteral("Committed, reference: R1042"));
        if (!folder.isEmpty())
            w->grab().save(QStringLiteral("%1/committed-%2.png").arg(folder).arg(size.width()));
        ql::UnloadAllForms();
    }
}
