// The wage screen's commit button, the commit dialog and its payslip print, and the quick view, on
// the demo farm: a commit from the screen reaches both databases and the report's payslip, a
// committed pay opens the dialog for a reprint only, and the history opens beside the screen. With
// QUILLARY_SHOTS set, pictures of the dialog, the committed pay and the history are kept there.
#include "WageUi.h"
#include "cashbook/PaySlipPrinter.h"
#include "cashbook/frmCommit.h"
#include "data/DemoFarm.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "reports/ReportScreen.h"
#include "reports/frmQuickView.h"
#include "runtime/Convert.h"
#include "startup/PaySlipPrint.h"
#include <QCheckBox>

using namespace qltest;

namespace {
class WageCommitTest : public WageUiTest {
protected:
    QStringList printed; // the formulas of each payslip the report screen was given
    ql::ReportScreenShow oldShow;

    void SetUp() override {
        docs->writeFile(
            QStringLiteral("Fernhold/Common/Fernhold.ini"),
            "[WINDOWS]\r\nCountry=64\r\n[COLOURS]\r\nGridHeader=51,102,1\r\n"
            "GridSelectedRow=255,226,128\r\nGridEvenRow=255,255,255\r\nGridOddRow=234,242,222\r\n");
        ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName()).close();
        ql::installErrorReporter();
        ql::addDemoFarm(rows->wage, rows->farm);
        ql::installPaySlipPrint();
        oldShow = ql::setReportScreenShow([this](ql::ReportScreen& s) {
            QStringList formulas;
            for (int i = 0; i < 20; ++i)
                if (!s.cry_report.Formulas(i).isEmpty()) formulas << s.cry_report.Formulas(i);
            printed << formulas.join(QLatin1Char('\n'));
        });
    }
    void TearDown() override {
        WageUiTest::TearDown();
        ql::setReportScreenShow(oldShow);
        ql::setPaySlipPrinter(nullptr);
    }
    static void shoot(QWidget* widget, const QString& name) {
        if (const QString folder = qEnvironmentVariable("QUILLARY_SHOTS"); !folder.isEmpty())
            widget->grab().save(folder + u'/' + name);
    }
    QVariant wageValue(const QString& column) const {
        return rows->wage.scalar(QStringLiteral("SELECT %1 FROM Wages WHERE WageID = %2")
                                     .arg(column)
                                     .arg(ql::App().CurrentWageID));
    }
    int transactions(const QString& reference) const {
        return rows->farm
            .scalar(QStringLiteral("SELECT COUNT(*) FROM Transactions WHERE Reference = '%1'").arg(reference))
            .toInt();
    }
    // Commits the shown pay through the dialog with the reference typed and both boxes ticked.
    void commitByDialog(const QString& reference) {
        bool seen = false;
        onNextModal([&seen, reference](QWidget* modal) {
            auto* dialog = qobject_cast<ql::frmCommit*>(modal);
            ASSERT_NE(dialog, nullptr);
            seen = true;
            EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Commit Pay"));
            shoot(dialog, QStringLiteral("commit-dialog.png"));
            auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtReference"));
            box->selectAll();
            QTest::keyClicks(box, reference);
            for (const char* name : {"chkCashbook", "chk_Print"}) {
                auto* tick = dialog->findChild<QCheckBox*>(QString::fromLatin1(name));
                if (!tick->isChecked()) tick->click();
            }
            QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmd_Commit(0)")),
                              Qt::LeftButton);
        });
        QTest::mouseClick(button(QStringLiteral("cmdPrintPay")), Qt::LeftButton);
        EXPECT_TRUE(seen);
    }
};
} // namespace

TEST_F(WageCommitTest, ACommitFromTheScreenPostsThePayPrintsItsSlipAndLocksIt) {
    start(QSize(1280, 800));
    EXPECT_EQ(text(QStringLiteral("lblpayment(8)")), QStringLiteral("Uncommitted"));
    EXPECT_TRUE(ql::IsNull(wageValue(QStringLiteral("Reference"))));
    // A first pay carries its tax once a view has been left, as a user does before committing.
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    ASSERT_EQ(QApplication::focusWidget(), grid());
    child<QComboBox>(QStringLiteral("cboEmployee"))->setFocus(); // the grid is left
    settle();
    EXPECT_NE(text(QStringLiteral("lblPaye")), QStringLiteral("$0.00"));
    commitByDialog(QStringLiteral("T100"));
    EXPECT_GT(wageValue(QStringLiteral("PAYE")).toDouble(), 0.0);

    EXPECT_EQ(wageValue(QStringLiteral("Reference")).toString(), QStringLiteral("T100"));
    EXPECT_FALSE(ql::IsNull(wageValue(QStringLiteral("PaymentDate"))));
    ASSERT_GE(transactions(QStringLiteral("T100")), 1);
    // The pay's withdrawal is its take-home pay.
    const double takeHome = wageValue(QStringLiteral("TakeHome")).toDouble();
    EXPECT_GT(takeHome, 0.0);
    EXPECT_LT(takeHome, wageValue(QStringLiteral("Gross")).toDouble()); // tax and KiwiSaver are off it
    EXPECT_DOUBLE_EQ(rows->farm
                         .scalar(QStringLiteral("SELECT Amount FROM Transactions WHERE Reference = 'T100' "
                                                "ORDER BY TransactionsID LIMIT 1"))
                         .toDouble(),
                     -takeHome);

    ASSERT_EQ(printed.size(), 1);
    EXPECT_TRUE(printed.at(0).contains(QStringLiteral("Reference = 'T100'"))) << printed.at(0).toStdString();
    EXPECT_TRUE(printed.at(0).contains(QStringLiteral("Payslip For"))) << printed.at(0).toStdString();

    // The screen shows the pay as committed at once, and refuses its edits.
    EXPECT_EQ(text(QStringLiteral("lblpayment(8)")), QStringLiteral("Committed, reference: T100"));
    EXPECT_EQ(button(QStringLiteral("cmdPrintPay"))->text(), QStringLiteral("&Pay Slip"));
    EXPECT_TRUE(child<QLineEdit>(QStringLiteral("txtPAYE"))->isReadOnly());
    const int before = messages(QStringLiteral("Already Committed"));
    EXPECT_TRUE(screen().tgrdwages_BeforeColEdit(1));
    EXPECT_TRUE(screen().tgrdwages_BeforeRowChange());
    EXPECT_EQ(messages(QStringLiteral("Already Committed")), before + 2);
    QTest::mouseClick(button(QStringLiteral("cmdSelect(3)")), Qt::LeftButton);
    shoot(w, QStringLiteral("committed-wages-1280.png"));
}

TEST_F(WageCommitTest, ACommittedPayOpensTheDialogToReprintOnly) {
    start();
    commitByDialog(QStringLiteral("T200"));
    const int posted = transactions(QStringLiteral("T200"));
    ASSERT_GE(posted, 1);
    bool seen = false;
    onNextModal([&seen](QWidget* modal) {
        auto* dialog = qobject_cast<ql::frmCommit*>(modal);
        ASSERT_NE(dialog, nullptr);
        seen = true;
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Pay Slip"));
        auto* reference = dialog->findChild<QLineEdit*>(QStringLiteral("txtReference"));
        EXPECT_EQ(reference->text(), QStringLiteral("T200"));
        EXPECT_FALSE(reference->isEnabled());
        EXPECT_FALSE(dialog->findChild<QCheckBox*>(QStringLiteral("chkCashbook"))->isEnabled());
        auto* ok = dialog->findChild<QPushButton*>(QStringLiteral("cmd_Commit(0)"));
        EXPECT_EQ(ok->text(), QStringLiteral("&OK"));
        QTest::mouseClick(ok, Qt::LeftButton);
    });
    QTest::mouseClick(button(QStringLiteral("cmdPrintPay")), Qt::LeftButton);
    EXPECT_TRUE(seen);
    EXPECT_EQ(printed.size(), 2); // the slip again, as the print box was left ticked
    EXPECT_EQ(transactions(QStringLiteral("T200")), posted); // nothing posted twice
    EXPECT_EQ(wageValue(QStringLiteral("Reference")).toString(), QStringLiteral("T200"));
    EXPECT_EQ(text(QStringLiteral("lblpayment(8)")), QStringLiteral("Committed, reference: T200"));
}

TEST_F(WageCommitTest, ACancelledCommitLeavesThePayOpen) {
    start();
    onNextModal([](QWidget* modal) {
        ASSERT_NE(qobject_cast<ql::frmCommit*>(modal), nullptr);
        QTest::keyClick(modal, Qt::Key_Escape);
    });
    QTest::mouseClick(button(QStringLiteral("cmdPrintPay")), Qt::LeftButton);
    EXPECT_TRUE(ql::IsNull(wageValue(QStringLiteral("Reference"))));
    EXPECT_EQ(text(QStringLiteral("lblpayment(8)")), QStringLiteral("Uncommitted"));
    EXPECT_EQ(button(QStringLiteral("cmdPrintPay"))->text(), QStringLiteral("&Commit"));
    EXPECT_TRUE(printed.isEmpty());
}

TEST_F(WageCommitTest, TheQuickViewOpensBesideTheScreenWithThePays) {
    start(QSize(1280, 800));
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    const int employeePays = rows->wage
                                 .scalar(QStringLiteral("SELECT COUNT(*) FROM Wages WHERE EmployeeID = %1")
                                             .arg(ql::App().CurrentEmployeeID))
                                 .toInt();
    ASSERT_EQ(employeePays, 2);
    QTest::mouseClick(button(QStringLiteral("cmdQuick")), Qt::LeftButton);
    QApplication::processEvents();
    auto histories = [] {
        QList<ql::frmQuickView*> open;
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* h = qobject_cast<ql::frmQuickView*>(top); h && h->isVisible()) open << h;
        return open;
    };
    ASSERT_EQ(histories().size(), 1);
    ql::frmQuickView* history = histories().first();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr); // the screen stays usable
    EXPECT_FALSE(history->isModal());
    EXPECT_EQ(history->view().QuickViewArray.rowCount(), employeePays);
    EXPECT_EQ(history->view().txtEmployee, child<QComboBox>(QStringLiteral("cboEmployee"))->currentText());
    shoot(history, QStringLiteral("history.png"));
    // A second press shows the history again, not a second window.
    QTest::mouseClick(button(QStringLiteral("cmdQuick")), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(histories().size(), 1);
}
