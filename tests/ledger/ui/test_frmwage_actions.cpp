// The buttons, the calendar, deleting, the employee list, the address book's report and the memo, as
// the desktop screen runs them.
#include "WageUi.h"
#include "cashbook/frmAddEdit.h"
#include "cashbook/frmMemo.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <QCalendarWidget>
#include <QPlainTextEdit>
#include <QRadioButton>

using namespace qltest;

namespace {
// Answers the "Add or Edit" dialog with one of its options, or cancels it (nullptr).
void chooseOnCalendar(const char* option) {
    WageUiTest::onNextModal([option](QWidget* modal) {
        auto* dialog = qobject_cast<ql::frmAddEdit*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Add or Edit"));
        if (!option) {
            QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel")), Qt::LeftButton);
            return;
        }
        dialog->findChild<QRadioButton*>(QString::fromLatin1(option))->setChecked(true);
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdOKAY")), Qt::LeftButton);
    });
}
} // namespace

TEST_F(WageUiTest, AddPayAddsTheNextPayAndShowsTheTakeHomeView) {
    start();
    ASSERT_EQ(pays(), 1);
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    EXPECT_EQ(pays(), 2);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("2 of 2"));
    EXPECT_EQ(ql::App().CurrentTab, 6);
    EXPECT_TRUE(button(QStringLiteral("cmdSelect(6)"))->isChecked());
    EXPECT_EQ(shownView(), grid());
    EXPECT_TRUE(ql::GetPayEditable());
    // A weekly pay seven days after the first.
    const QDate first = ql::CDate(rows->wage.scalar(QStringLiteral("SELECT MIN(Date) FROM Wages")));
    EXPECT_EQ(text(QStringLiteral("lblPayDate")),
              QLocale().toString(first.addDays(7), QStringLiteral("d/MM/yyyy")));
}

TEST_F(WageUiTest, AnEmployeeWithoutATaxCodeGetsTheMissingTaxCodeMessage) {
    rows->wage.execute(QStringLiteral("UPDATE Employees SET TaxCode = ''"));
    start();
    for (const char* name : {"cmdAddPay", "cmdOneOff", "cmdPrintPay"}) {
        rows->dialogs.calls.clear();
        QTest::mouseClick(button(QString::fromLatin1(name)), Qt::LeftButton);
        const ql::DialogCall* m = last(QStringLiteral("Missing Tax Code"));
        ASSERT_NE(m, nullptr) << name;
        EXPECT_EQ(m->kindOrLevel, 3);
        EXPECT_EQ(
            m->message,
            QStringLiteral(
                "This employee doesn't have a valid Tax Code entered.\r\n\r\nPlease Enter a valid Tax Code"));
    }
    EXPECT_EQ(pays(), 1);
}

TEST_F(WageUiTest, TheOneOffButtonSaysItIsNotThereYet) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdOneOff")), Qt::LeftButton);
    const ql::DialogCall* m = last(QStringLiteral("Information"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->message, QStringLiteral("The one-off pay is not available in this version yet."));
}

TEST_F(WageUiTest, TheCommitButtonCallsTheCommitScreenWhenItIsThere) {
    start();
    int shown = 0;
    screen().showCommit = [&](ql::WageScreen&) { ++shown; };
    QTest::mouseClick(button(QStringLiteral("cmdPrintPay")), Qt::LeftButton);
    EXPECT_EQ(shown, 1);
    commitShownPay(QStringLiteral("R2"));
    EXPECT_EQ(button(QStringLiteral("cmdPrintPay"))->text(), QStringLiteral("&Pay Slip"));
    QTest::mouseClick(button(QStringLiteral("cmdPrintPay")), Qt::LeftButton);
    EXPECT_EQ(shown, 2);
}

TEST_F(WageUiTest, ACalendarDateOffersAddAndAddsAPayOnThatDate) {
    start();
    const QDate day(2026, 3, 9);
    chooseOnCalendar("optAdd");
    emit child<QCalendarWidget>(QStringLiteral("CalWage"))->clicked(day);
    EXPECT_EQ(pays(), 2);
    EXPECT_EQ(
        rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM Wages WHERE Date LIKE '2026-03-09%'")).toInt(),
        1);
    EXPECT_TRUE(ql::calendarChoice().AddPayChoice);
}

TEST_F(WageUiTest, ACalendarDateCanMoveACommittedPay) {
    start();
    commitShownPay(QStringLiteral("R9"));
    const QDate day(2026, 2, 2);
    chooseOnCalendar("optEdit");
    emit child<QCalendarWidget>(QStringLiteral("CalWage"))->clicked(day);
    EXPECT_EQ(pays(), 1);
    EXPECT_EQ(ql::CDate(rows->wage.scalar(QStringLiteral("SELECT Date FROM Wages"))), day);
    EXPECT_EQ(text(QStringLiteral("lblPayDate")), QStringLiteral("2/02/2026"));
}

TEST_F(WageUiTest, ACalendarOneOffChoiceWaitsForTheOneOffScreen) {
    start();
    chooseOnCalendar("optAddOneOFf");
    emit child<QCalendarWidget>(QStringLiteral("CalWage"))->clicked(QDate(2026, 2, 2));
    EXPECT_EQ(last(QStringLiteral("Information"))->message,
              QStringLiteral("The one-off pay is not available in this version yet."));
    QDate asked;
    screen().showOneOff = [&](ql::WageScreen&, const QDate& d) { asked = d; };
    chooseOnCalendar("optAddOneOFf");
    emit child<QCalendarWidget>(QStringLiteral("CalWage"))->clicked(QDate(2026, 2, 3));
    EXPECT_EQ(asked, QDate(2026, 2, 3));
    EXPECT_EQ(pays(), 1);
}

TEST_F(WageUiTest, ACancelledCalendarChoiceChangesNothingAndShowsToday) {
    start();
    const QVariant before = rows->wage.scalar(QStringLiteral("SELECT Date FROM Wages"));
    chooseOnCalendar(nullptr);
    emit child<QCalendarWidget>(QStringLiteral("CalWage"))->clicked(QDate(2026, 1, 5));
    EXPECT_EQ(pays(), 1);
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT Date FROM Wages")), before);
    EXPECT_EQ(child<QCalendarWidget>(QStringLiteral("CalWage"))->selectedDate(), ql::Today());
}

TEST_F(WageUiTest, DeletingOneOfTwoPaysAsksAndShowsTheLastPay) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    ASSERT_EQ(pays(), 2);
    QTest::mouseClick(child<QPushButton>(QStringLiteral("datPaysMove0")), Qt::LeftButton);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 2"));
    rows->dialogs.queueAnswer(ql::msg::Yes);
    QTest::mouseClick(button(QStringLiteral("cmdDelete")), Qt::LeftButton);
    const ql::DialogCall* q = last(QStringLiteral("Please Confirm"));
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(q->subHeading, QStringLiteral("Delete Payment"));
    EXPECT_EQ(q->message, QStringLiteral("Are you sure you want to delete this payment?"));
    EXPECT_EQ(q->kindOrLevel, 9);
    EXPECT_EQ(pays(), 1);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 1"));
    EXPECT_EQ(text(QStringLiteral("lblpayment(10)")), QStringLiteral("Weekly (M)"));
}

TEST_F(WageUiTest, DeletingACommittedPayAsksWithItsOwnQuestion) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    commitShownPay(QStringLiteral("R3"));
    rows->dialogs.queueAnswer(ql::msg::No);
    QTest::mouseClick(button(QStringLiteral("cmdDelete")), Qt::LeftButton);
    EXPECT_EQ(
        last(QStringLiteral("Please Confirm"))->message,
        QStringLiteral("This payment has already been committed.  Are you sure you want to delete it?"));
    EXPECT_EQ(pays(), 2);
}

TEST_F(WageUiTest, DeletingTheOnlyPayAndKeepingTheEmployeeAsksForANewFirstPay) {
    start();
    rows->dialogs.queueAnswer(ql::msg::Yes); // delete the pay
    rows->dialogs.queueAnswer(ql::msg::No);  // keep the employee
    rows->dialogs.queueInput(QStringLiteral("6/04/2026"));
    QTest::mouseClick(button(QStringLiteral("cmdDelete")), Qt::LeftButton);
    QStringList asked;
    for (const ql::DialogCall& c : rows->dialogs.calls)
        asked << (c.subHeading.isEmpty() ? c.message : c.subHeading);
    EXPECT_TRUE(asked.contains(QStringLiteral("Delete from Quillary?")));
    EXPECT_TRUE(asked.contains(
        QStringLiteral("Are you sure you want to remove Hale, Mere completely from the Quillary?")));
    EXPECT_TRUE(asked.contains(QStringLiteral("Enter date of first pay for Hale, Mere")));
    ASSERT_EQ(pays(), 1);
    EXPECT_EQ(ql::CDate(rows->wage.scalar(QStringLiteral("SELECT Date FROM Wages"))), QDate(2026, 4, 6));
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 1"));
}

TEST_F(WageUiTest, RemovingTheEmployeeShowsTheNextOne) {
    rows->employee(rows->address(QStringLiteral("Ngata"), QStringLiteral("Rua")));
    start();
    ASSERT_EQ(child<QComboBox>(QStringLiteral("cboEmployee"))->count(), 2);
    rows->dialogs.queueAnswer(ql::msg::Yes);
    rows->dialogs.queueAnswer(ql::msg::Yes);
    QTest::mouseClick(button(QStringLiteral("cmdDelete")), Qt::LeftButton);
    QComboBox* cbo = child<QComboBox>(QStringLiteral("cboEmployee"));
    ASSERT_EQ(cbo->count(), 1);
    EXPECT_EQ(cbo->currentText(), QStringLiteral("Ngata, Rua"));
    EXPECT_EQ(
        rows->farm.scalar(QStringLiteral("SELECT WageFlag FROM Addresses WHERE ContactLastName = 'Hale'"))
            .toInt(),
        0);
}

TEST_F(WageUiTest, ChangingEmployeeShowsThatPerson) {
    const qint64 ngataAddress =
        rows->address(QStringLiteral("Ngata"), QStringLiteral("Rua"), true,
                      QStringLiteral("3 Kahikatea Lane"), QStringLiteral("Otorohanga"));
    const qint64 ngata = rows->employee(ngataAddress);
    start();
    QComboBox* cbo = child<QComboBox>(QStringLiteral("cboEmployee"));
    cbo->setFocus();
    QTest::keyClick(cbo, Qt::Key_Down); // the keyboard's choice of the next entry
    EXPECT_EQ(ql::App().CurrentEmployeeID, ngata);
    EXPECT_EQ(cbo->currentText(), QStringLiteral("Ngata, Rua"));
    EXPECT_EQ(text(QStringLiteral("lblAddress")), QStringLiteral("3 Kahikatea Lane, Otorohanga"));
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 1"));
}

TEST_F(WageUiTest, TheAddressBooksReportShowsThePersonLastEdited) {
    const qint64 ngataAddress = rows->address(QStringLiteral("Ngata"), QStringLiteral("Rua"));
    const qint64 ngata = rows->employee(ngataAddress);
    start();
    ql::mainForm()->GotMessage(qint32(ngataAddress));
    EXPECT_EQ(screen().AddressID(), ngataAddress);
    EXPECT_EQ(ql::App().CurrentAddressID, ngataAddress);
    EXPECT_EQ(ql::App().CurrentEmployeeID, ngata);
    EXPECT_EQ(child<QComboBox>(QStringLiteral("cboEmployee"))->currentText(), QStringLiteral("Ngata, Rua"));
}

TEST_F(WageUiTest, TheMemoIsKeptWithThePayAndMarksTheButton) {
    start();
    QPushButton* memo = button(QStringLiteral("cmdMemo"));
    EXPECT_EQ(memo->text(), QStringLiteral("&Memo"));
    onNextModal([](QWidget* modal) {
        auto* dialog = qobject_cast<ql::frmMemo*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Memo"));
        EXPECT_TRUE(dialog->txtMemo->toPlainText().isEmpty());
        dialog->txtMemo->setPlainText(QStringLiteral("Paid in cash at the shed"));
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdSave")), Qt::LeftButton);
    });
    QTest::mouseClick(memo, Qt::LeftButton);
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT Details FROM Wages")).toString(),
              QStringLiteral("Paid in cash at the shed"));
    EXPECT_EQ(memo->text(), QStringLiteral("&Memo *"));
    EXPECT_TRUE(memo->font().bold());
    // Cancel writes nothing; an emptied memo is no memo.
    onNextModal([](QWidget* modal) {
        auto* dialog = qobject_cast<ql::frmMemo*>(modal);
        EXPECT_EQ(dialog->txtMemo->toPlainText(), QStringLiteral("Paid in cash at the shed"));
        dialog->txtMemo->clear();
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel")), Qt::LeftButton);
    });
    QTest::mouseClick(memo, Qt::LeftButton);
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT Details FROM Wages")).toString(),
              QStringLiteral("Paid in cash at the shed"));
    onNextModal([](QWidget* modal) {
        auto* dialog = qobject_cast<ql::frmMemo*>(modal);
        dialog->txtMemo->clear();
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdSave")), Qt::LeftButton);
    });
    QTest::mouseClick(memo, Qt::LeftButton);
    EXPECT_TRUE(ql::IsNull(rows->wage.scalar(QStringLiteral("SELECT Details FROM Wages"))));
    EXPECT_EQ(memo->text(), QStringLiteral("&Memo"));
}

TEST_F(WageUiTest, TheNavigatorMovesThroughThePays) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("3 of 3"));
    const char* const steps[][2] = {{"datPaysMove1", "2 of 3"}, {"datPaysMove0", "1 of 3"},
                                    {"datPaysMove1", "1 of 3"}, {"datPaysMove2", "2 of 3"},
                                    {"datPaysMove3", "3 of 3"}, {"datPaysMove2", "3 of 3"}};
    for (const auto& s : steps) {
        QTest::mouseClick(child<QPushButton>(QString::fromLatin1(s[0])), Qt::LeftButton);
        EXPECT_EQ(text(QStringLiteral("datPays")), QString::fromLatin1(s[1])) << s[0];
    }
}

TEST_F(WageUiTest, TheAddressTabNeverStaysSelected) {
    start();
    QTabWidget* tabs = w->tabMain();
    tabs->setCurrentIndex(2);
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(screen().tabMainIndex, 0);
    tabs->setCurrentIndex(1);
    tabs->setCurrentIndex(2);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(screen().tabMainIndex, 1);
    // The leave page was prepared again for the employee shown.
    EXPECT_EQ(screen().leave.LeaveLoadedEmployeeID, ql::App().CurrentEmployeeID);
    EXPECT_EQ(screen().leave.CurrentLeaveTypeID, 1);
}
