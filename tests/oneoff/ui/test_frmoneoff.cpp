// The one-off dialog on the screen, offscreen: its controls, the keyboard, how it closes, and a picture.
#include "../OneOffFixture.h"
#include "payengine/frmOneOff.h"
#include "ui/FHDatePicker.h"
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace qltest;

namespace {

void activate(QWidget& w) {
    w.show();
    QApplication::setActiveWindow(&w);
    w.activateWindow();
    QApplication::processEvents();
}

void key(QWidget* w, int k, Qt::KeyboardModifiers m = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, k, m);
    QApplication::sendEvent(w, &press);
    QKeyEvent release(QEvent::KeyRelease, k, m);
    QApplication::sendEvent(w, &release);
}

// Focuses a box, types over its text and lets the queued focus moves run.
void type(ql::frmOneOff& d, int index, const QString& text) {
    d.text1(index)->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    d.text1(index)->setText(text);
}

void settle() {
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
}

} // namespace

class OneOffDialogTest : public OneOffTest {};

TEST_F(OneOffDialogTest, ControlsHaveNamesAndAccessKeys) {
    ql::frmOneOff d(kBonus());
    EXPECT_EQ(d.windowTitle(), QStringLiteral("One-off Pay"));
    for (QWidget* w : {static_cast<QWidget*>(d.text1(0)), d.picker(), static_cast<QWidget*>(d.cmbPayName()),
                       static_cast<QWidget*>(d.text1(1)), static_cast<QWidget*>(d.cmbTaxType()),
                       static_cast<QWidget*>(d.text1(2)), static_cast<QWidget*>(d.cmdOK()),
                       static_cast<QWidget*>(d.cmdCancel())})
        EXPECT_FALSE(w->accessibleName().isEmpty()) << w->objectName().toStdString();
    QStringList captions;
    for (auto* l : d.findChildren<QLabel*>()) {
        captions << l->text();
        EXPECT_NE(l->buddy(), nullptr) << l->text().toStdString();
    }
    EXPECT_EQ(captions, QStringList({"&Date", "&Payment Type", "A&mount", "&Tax Type", "Not liable for ACC &levy", "PA&YE"}));
    EXPECT_EQ(d.text1(0)->text(), QStringLiteral("10/04/2026"));
    EXPECT_EQ(d.pickerDate(), QDate(2026, 4, 10));
    EXPECT_FALSE(d.cmdOK()->isEnabled());
    EXPECT_EQ(d.cmbPayName()->count(), 7);
    EXPECT_EQ(d.cmbPayName()->currentIndex(), -1);
    EXPECT_EQ(d.cmbTaxType()->count(), 8);
    // Tab goes down the form.
    EXPECT_EQ(d.text1(0)->nextInFocusChain(), d.picker());
}

TEST_F(OneOffDialogTest, ThePickerWritesTheDateBox) {
    ql::frmOneOff d(kBonus());
    auto* picker = qobject_cast<ql::FHDatePicker*>(d.picker());
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(picker->text(), QStringLiteral("10 Apr 2026"));
    d.setPickerDate(QDate(2026, 12, 24));
    EXPECT_EQ(d.text1(0)->text(), QStringLiteral("24/12/2026"));
    // Typed into the picker's own box and confirmed with Enter.
    activate(d);
    picker->textBox()->setFocus();
    picker->textBox()->setText(QStringLiteral("3/01/2027"));
    key(picker->textBox(), Qt::Key_Return);
    EXPECT_EQ(d.pickerDate(), QDate(2027, 1, 3));
    EXPECT_EQ(d.text1(0)->text(), QStringLiteral("3/01/2027"));
    // A day clicked on its calendar.
    picker->openDropDown();
    int cell = -1;
    for (int i = 0; i < picker->cells().size(); ++i)
        if (picker->cells().at(i).date == QDate(2027, 1, 20)) cell = i;
    ASSERT_GE(cell, 0);
    picker->clickDay(cell);
    if (picker->DropDownOpen()) picker->pressOK();
    EXPECT_EQ(d.text1(0)->text(), QStringLiteral("20/01/2027"));
}

TEST_F(OneOffDialogTest, ByKeyboardTheAmountLeadsToOKAndTheTitleBarCloseMakesThePay) {
    ql::frmOneOff d(kBonus(), nullptr);
    activate(d);
    d.cmbPayName()->setCurrentIndex(d.cmbPayName()->findText(QStringLiteral("Holiday Pay")));
    d.cmbTaxType()->setCurrentIndex(d.cmbTaxType()->findText(QStringLiteral("Flat 33")));
    type(d, 1, QStringLiteral("1000"));
    // Enter leaves the amount for the tax type; the amount's check then sends the focus to OK.
    key(d.text1(1), Qt::Key_Return);
    settle();
    EXPECT_EQ(d.text1(1)->text(), QStringLiteral("$1,000.00"));
    EXPECT_EQ(d.text1(2)->text(), QStringLiteral("$330.00"));
    EXPECT_TRUE(d.cmdOK()->isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), d.cmdOK());
    const qint32 before = wageCount();
    d.close();
    EXPECT_EQ(wageCount(), before + 1);
    EXPECT_EQ(wageColumn(d.form().madeWageID, "PAYE"), cur("330"));
}

TEST_F(OneOffDialogTest, EscapeCancels) {
    ql::frmOneOff d(kBonus());
    activate(d);
    d.cmbPayName()->setCurrentIndex(0);
    type(d, 1, QStringLiteral("50"));
    d.text1(0)->setFocus();
    settle();
    const qint32 before = wageCount();
    key(&d, Qt::Key_Escape);
    EXPECT_FALSE(d.isVisible());
    EXPECT_EQ(wageCount(), before);
    EXPECT_TRUE(d.form().Cancelled);
}

TEST_F(OneOffDialogTest, TheEntryPointShowsTheDialogAndMovesTheListToItsLastRow) {
    const qint32 second = addPay();
    screen->datPays.MoveFirst();
    QTimer::singleShot(0, [] {
        auto* d = qobject_cast<ql::frmOneOff*>(QApplication::activeModalWidget());
        ASSERT_NE(d, nullptr);
        QTimer::singleShot(10000, d, [d] { d->done(QDialog::Rejected); }); // never hang the test
        activate(*d);
        d->cmbPayName()->setCurrentIndex(0);
        type(*d, 1, QStringLiteral("75"));
        key(d->text1(1), Qt::Key_Tab);
        settle();
        ASSERT_TRUE(d->cmdOK()->isEnabled());
        d->cmdOK()->click();
    });
    const qint32 made = ql::OpenOneOffDialog(nullptr, *screen, QDate(2026, 3, 1));
    ASSERT_GT(made, second);
    EXPECT_EQ(wageColumn(made, "Gross"), cur("75"));
    // Dated before the regular pays, the one-off pay is not the last row: the list ends on the second pay.
    EXPECT_EQ(app.CurrentWageID, second);
}

TEST_F(OneOffDialogTest, Screenshot) {
    ql::frmOneOff d(kBonus());
    activate(d);
    d.cmbPayName()->setCurrentIndex(d.cmbPayName()->findText(QStringLiteral("Holiday Pay")));
    d.cmbTaxType()->setCurrentIndex(d.cmbTaxType()->findText(QStringLiteral("ST")));
    type(d, 1, QStringLiteral("1234.56"));
    d.text1(0)->setFocus();
    settle();
    EXPECT_EQ(d.text1(2)->text(), QStringLiteral("$429.00"));
    const QString file = QDir::current().absoluteFilePath(QStringLiteral("frmOneOff.png"));
    EXPECT_TRUE(d.grab().save(file));
    std::cout << "screenshot: " << file.toStdString() << std::endl;
    d.form().Cancelled = true;
}

TEST_F(OneOffDialogTest, TheBoxOfAPartNotLiableForTheLevyTakesTheLevyOff) {
    ql::frmOneOff d(kBonus(), nullptr);
    activate(d);
    EXPECT_FALSE(d.notLiable()->accessibleName().isEmpty());
    d.cmbPayName()->setCurrentIndex(d.cmbPayName()->findText(QStringLiteral("Holiday Pay")));
    d.cmbTaxType()->setCurrentIndex(d.cmbTaxType()->findText(QStringLiteral("Extra pay")));
    ASSERT_GE(d.cmbTaxType()->currentIndex(), 0);
    type(d, 1, QStringLiteral("1000"));
    key(d.text1(1), Qt::Key_Tab);
    settle();
    const ql::Currency withLevy = d.form().PAYE;
    EXPECT_GT(withLevy, ql::Currency());
    // By keyboard: tab from the tax type into the box, type the whole amount, tab on.
    d.notLiable()->setFocus(Qt::TabFocusReason);
    settle();
    d.notLiable()->setText(QStringLiteral("1000"));
    key(d.notLiable(), Qt::Key_Tab);
    settle();
    EXPECT_EQ(d.notLiable()->text(), QStringLiteral("$1,000.00"));
    // No levy on the part not liable: 2026/27's 1.75% of 1,000.00 comes off.
    EXPECT_EQ(withLevy - d.form().PAYE, ql::Currency::fromDouble(17.5));
    EXPECT_EQ(d.text1(2)->text(), ql::Format(QVariant::fromValue(d.form().PAYE), QStringLiteral("currency")));
    d.cmdOK()->click();
    ASSERT_GT(d.form().madeWageID, 0);
}
