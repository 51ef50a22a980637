// The Tax Information and Commit Pay dialogs offscreen: their controls, the user's changes through
// them, saving on every way out, and a look at each.
#include "CashbookFixture.h"
#include "UiSupport.h"
#include "cashbook/WageAccounts.h"
#include "cashbook/frmCommit.h"
#include "data/PayeInfo.h"
#include "frame/Settings.h"
#include "taxsettings/frmPayeInfo.h"
#include "ui/FHDatePicker.h"
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace ql;
using namespace qltest;

namespace {

template <class T> T* child(QWidget* w, const char* name) {
    T* found = w->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

class DialogTest : public CashbookTest {};

TEST_F(DialogTest, TaxInformation) {
    rows.farm.execute(QStringLiteral("UPDATE PayeInfo SET PAYEAddressID = 40"));
    frmPayeInfo dialog;
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Tax Information"));
    auto* wage = child<QComboBox>(&dialog, "cmbWage1");
    auto* adjust = child<QComboBox>(&dialog, "cmbAdjust");
    auto* holding = child<QComboBox>(&dialog, "cmbHolding1");
    EXPECT_EQ(wage->currentData().toInt(), 401001);
    EXPECT_EQ(holding->currentData().toInt(), 401002);
    EXPECT_EQ(adjust->toolTip(), QStringLiteral("Non taxable wage adjustments"));
    EXPECT_EQ(child<QComboBox>(&dialog, "cmbTaxOffice")->currentText(), QStringLiteral("Inland Revenue"));
    EXPECT_EQ(child<QLabel>(&dialog, "lblHolding")->text().remove(u'&'), QStringLiteral("PAYE Heading"));
    EXPECT_EQ(child<QLabel>(&dialog, "lblNoncash")->text().remove(u'&'),
              QStringLiteral("PAYE made electronically"));
    EXPECT_TRUE(child<QLabel>(&dialog, "lblPayeNoncash")
                    ->text()
                    .startsWith(QStringLiteral("Tick to pay PAYE electronically")));
    expectNamedControls(&dialog);
    screenshot(&dialog, QStringLiteral("frmPayeInfo"));

    // The adjustments refuse the wage account and go back.
    const int before = adjust->currentIndex();
    QFocusEvent focusIn(QEvent::FocusIn);
    QApplication::sendEvent(adjust, &focusIn);
    adjust->setCurrentIndex(wage->currentIndex());
    emit adjust->activated(wage->currentIndex());
    EXPECT_EQ(adjust->currentIndex(), before);
    ASSERT_FALSE(rows.dialogs.calls.isEmpty());
    EXPECT_EQ(rows.dialogs.calls.last().heading, QStringLiteral("Invalid Entry"));

    // Ticking the box changes the help at once.
    child<QCheckBox>(&dialog, "chkNonCash")->setChecked(true);
    EXPECT_TRUE(child<QLabel>(&dialog, "lblPayeNoncash")
                    ->text()
                    .startsWith(QStringLiteral("Untick to pay PAYE manually")));
    EXPECT_TRUE(child<QLabel>(&dialog, "lbltaxationInfo")
                    ->text()
                    .contains(QStringLiteral("Use ePayments to process PAYE.")));

    // A new payment account, then Cancel: saved all the same, and the result says Cancelled.
    auto* payment = child<QComboBox>(&dialog, "cmbPayment");
    const int other = payment->findData(201004);
    payment->setCurrentIndex(other);
    emit payment->activated(other);
    child<QPushButton>(&dialog, "cmdPartners(2)")->click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QStringLiteral("Cancelled"));
    EXPECT_EQ(rows.dialogs.calls.last().message, QStringLiteral("Turn 'Update Cashbook' off to continue"));
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("PaymentAccount"), 0).toInt(), 201004);
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("PAYENonCash"), true).toBool(),
              false); // shown, not stored
}

TEST_F(DialogTest, TaxInformationSavesOnEscapeAndOk) {
    {
        frmPayeInfo dialog;
        dialog.show();
        key(&dialog, Qt::Key_Escape);
        EXPECT_EQ(dialog.result(), QStringLiteral("Cancelled"));
    }
    EXPECT_TRUE(CheckWageAccounts(rows.farm)); // the defaults shown were stored
    frmPayeInfo dialog;
    dialog.show();
    child<QPushButton>(&dialog, "cmdPartners(0)")->click();
    EXPECT_EQ(dialog.result(), QString());
}

TEST_F(DialogTest, ShowPayeInfoThroughTheHook) {
    installPayeInfoDialog();
    QTimer::singleShot(0, [] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<frmPayeInfo*>(w); d && d->isVisible())
                d->findChild<QPushButton*>(QStringLiteral("cmdPartners(0)"))->click();
    });
    EXPECT_EQ(ShowPayeInfo(nullptr), QString());
    setPayeInfoDialog(nullptr);
}

TEST_F(DialogTest, CommitPay) {
    setAccounts(true);
    PayFigures f;
    f.details = QStringLiteral("Calving week");
    const qint32 id = addPay(f);
    standOn(id);
    frmCommit dialog(screen);
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Commit Pay"));
    auto* reference = child<QLineEdit>(&dialog, "txtReference");
    EXPECT_EQ(reference->text(), QStringLiteral("1"));
    EXPECT_EQ(child<QLineEdit>(&dialog, "TxtPayDate")->text(), QStringLiteral("4/05/2026"));
    FHDatePicker* picker = dialog.datePicker();
    EXPECT_EQ(picker->date(), QDate(2026, 5, 4));
    EXPECT_EQ(picker->text(), QStringLiteral("04 May 2026"));
    EXPECT_TRUE(child<QCheckBox>(&dialog, "chkMemo")->isVisibleTo(&dialog));
    EXPECT_EQ(child<QPushButton>(&dialog, "cmd_Commit(0)")->text(), QStringLiteral("&Commit"));
    expectNamedControls(&dialog);
    screenshot(&dialog, QStringLiteral("frmCommit"));

    // The picker moves the text date; the boxes write their settings at once.
    picker->setDate(QDate(2026, 5, 6));
    EXPECT_EQ(child<QLineEdit>(&dialog, "TxtPayDate")->text(), QStringLiteral("6/05/2026"));
    child<QCheckBox>(&dialog, "chkCashbook")->setChecked(true);
    EXPECT_EQ(getWageCash(), 1);
    child<QCheckBox>(&dialog, "chk_Print")->setChecked(false);
    EXPECT_EQ(ReadIni(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), FamilyFile()),
              QStringLiteral("N"));

    // An empty reference keeps the dialog open.
    reference->clear();
    child<QPushButton>(&dialog, "cmd_Commit(0)")->click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(rows.dialogs.calls.last().message, QStringLiteral("Need reference"));
    reference->setText(QStringLiteral("77"));
    emit reference->textEdited(QStringLiteral("77"));
    child<QPushButton>(&dialog, "cmd_Commit(0)")->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(wageValue(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(id)).toString(),
              QStringLiteral("77"));
    EXPECT_EQ(wageValue(QStringLiteral("SELECT PaymentDate FROM Wages WHERE WageID = %1").arg(id)).toString(),
              QStringLiteral("2026-05-06"));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Transactions WHERE Reference = '77'")), 2);
}

TEST_F(DialogTest, PaySlipOfACommittedPay) {
    SwitchWageCash(1);
    PayFigures f;
    f.reference = QStringLiteral("55");
    standOn(addPay(f));
    frmCommit dialog(screen);
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Pay Slip"));
    EXPECT_EQ(child<QPushButton>(&dialog, "cmd_Commit(0)")->text(), QStringLiteral("&OK"));
    EXPECT_FALSE(child<QLineEdit>(&dialog, "txtReference")->isEnabled());
    EXPECT_FALSE(dialog.datePicker()->isEnabled());
    EXPECT_FALSE(child<QCheckBox>(&dialog, "chkCashbook")->isEnabled());
    EXPECT_FALSE(child<QCheckBox>(&dialog, "chkCashbook")->isChecked());
    EXPECT_FALSE(child<QCheckBox>(&dialog, "chk_Print")->isEnabled());
    EXPECT_FALSE(child<QCheckBox>(&dialog, "chkMemo")->isVisibleTo(&dialog));
    screenshot(&dialog, QStringLiteral("frmCommit-payslip"));
    key(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(getWageCash(), 0);
}

} // namespace
