#include "PayrollRows.h"
#include "TestEnv.h"
#include "ledger/Roster.h"
#include "ledger/frmWage.h"
#include "startup/Startup.h"
#include <QApplication>
#include <QComboBox>
#include <QLabel>

using namespace qltest;

TEST(FrmWage, ShowsTheModelOffscreen) {
    TempDocuments docs;
    PayrollRows rows;
    rows.employee(rows.address(QStringLiteral("Hale"), QStringLiteral("Mere")));
    ql::setMainFormFactory([] { return std::make_unique<ql::WageMainForm>(); });
    ASSERT_TRUE(ql::Main(QStringLiteral("Quillary")));
    auto* form = static_cast<ql::WageMainForm*>(ql::mainForm());
    ql::frmWage* w = form->widget();
    EXPECT_EQ(w->windowTitle(), QStringLiteral("Quillary"));
    EXPECT_FALSE(w->windowIcon().isNull()); // the program's own icon from Resources
    EXPECT_EQ(w->findChild<QComboBox*>(QStringLiteral("cboEmployee"))->currentText(),
              QStringLiteral("Hale, Mere"));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("datPays"))->text(), QStringLiteral("1 of 1"));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("lblpayment(8)"))->text(), QStringLiteral("Uncommitted"));
    const QByteArray shot = qgetenv("QUILLARY_SCREENSHOT");
    if (!shot.isEmpty()) w->grab().save(QString::fromLocal8Bit(shot));
    ql::UnloadAllForms();
    EXPECT_EQ(ql::mainForm(), nullptr);
    ql::setMainFormFactory(nullptr);
}
