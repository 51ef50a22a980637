// One-off pays: the dialog's form without widgets, the pay its unload makes, and the pay list after it.
#include "OneOffFixture.h"
#include "payengine/AddPay.h"
#include "runtime/DateFns.h"

using namespace qltest;
using ql::Currency;

namespace {
const QDate kBonusDay(2026, 4, 10);
}

// 1,000.00 at one step of 33 per cent, the template's rounding equation keeping 330 as it is.
TEST_F(OneOffTest, FlatThirtyThreePerCentOnAThousand) {
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, Flat33, QStringLiteral("1,000.00"));
    EXPECT_EQ(form.PAYE, cur("330"));
    EXPECT_EQ(form.Text1[1], QStringLiteral("$1,000.00"));
    EXPECT_EQ(form.Text1[2], QStringLiteral("$330.00"));
    EXPECT_TRUE(form.cmdOKEnabled);
    form.cmdOK_Click();
    const qint32 w = form.madeWageID;
    ASSERT_GT(w, firstPay);
    EXPECT_EQ(wageColumn(w, "Gross"), cur("1000"));
    EXPECT_EQ(wageColumn(w, "TotalTaxable"), cur("1000"));
    EXPECT_EQ(wageColumn(w, "PAYE"), cur("330"));
    EXPECT_EQ(wageColumn(w, "TakeHome"), cur("670"));
    EXPECT_EQ(wageColumn(w, "Rate"), cur("1"));
    EXPECT_EQ(wageColumn(w, "TaxAllow"), cur("0"));
    EXPECT_EQ(wageColumn(w, "Deductions"), cur("0"));
    EXPECT_EQ(ql::CLng(db().scalar(QStringLiteral("SELECT OneOff FROM Wages WHERE WageID = %1").arg(w))), 1);
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(w)).toDate(),
              kBonusDay);
    EXPECT_EQ(
        db().scalar(QStringLiteral("SELECT PayInterval FROM Wages WHERE WageID = %1").arg(w)).toString(),
        QStringLiteral("Weekly"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT TaxCode FROM Wages WHERE WageID = %1").arg(w)).toString(),
              QStringLiteral("M"));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM PaymentDetails WHERE WageID = %1").arg(w)), 1);
    EXPECT_EQ(ql::CSng(db().scalar(
                  QStringLiteral("SELECT DetailHours FROM PaymentDetails WHERE WageID = %1").arg(w))),
              1.0f);
    EXPECT_EQ(money(QStringLiteral("SELECT EquivPayRate FROM PaymentDetails WHERE WageID = %1").arg(w)),
              cur("1000"));
    EXPECT_EQ(money(QStringLiteral("SELECT Payment FROM PaymentDetails WHERE WageID = %1").arg(w)),
              cur("1000"));
    EXPECT_EQ(ql::CLng(db().scalar(
                  QStringLiteral("SELECT PaymentNameID FROM PaymentDetails WHERE WageID = %1").arg(w))),
              HolidayPay);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(w)), 1);
    EXPECT_EQ(money(QStringLiteral("SELECT PAYE FROM TaxDetails WHERE WageID = %1").arg(w)), cur("330"));
    EXPECT_EQ(money(QStringLiteral("SELECT TaxableAmount FROM TaxDetails WHERE WageID = %1").arg(w)),
              cur("1000"));
    EXPECT_EQ(
        ql::CLng(db().scalar(QStringLiteral("SELECT TaxTypeID FROM TaxDetails WHERE WageID = %1").arg(w))),
        Flat33);
    // The one-off interval: no days and no pays a year.
    EXPECT_EQ(ql::CLng(db().scalar(
                  QStringLiteral("SELECT PayIntervalID FROM TaxDetails WHERE WageID = %1").arg(w))),
              ql::CLng(db().scalar(QStringLiteral(
                  "SELECT PayIntervalID FROM PayInterval WHERE NumberOfDays = 0 AND PaysPerYear = 0"))));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DeductionDetails WHERE WageID = %1").arg(w)), 0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM ContributionDetails WHERE WageID = %1").arg(w)), 0);
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join(QLatin1Char('\n')).toStdString();
}

// The template's flat secondary code ST: 33 per cent and the levy, on every dollar.
TEST_F(OneOffTest, TemplateSecondaryCodeOnABonus) {
    ql::OneOffForm form;
    const qint32 st =
        ql::CLng(db().scalar(QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE Taxname = 'ST'")));
    enter(form, kBonusDay, HolidayPay, st, QStringLiteral("1234.56"));
    // 1,234.56 x 34.75% = 429.0096, cut to cents as the secondary codes are.
    EXPECT_EQ(form.PAYE, cur("429.00"));
    form.cmdOK_Click();
    EXPECT_EQ(wageColumn(form.madeWageID, "TakeHome"), cur("805.56"));
}

TEST_F(OneOffTest, OnlyFlatTaxTypesAreOfferedInTheirOrder) {
    ql::OneOffForm form;
    form.Form_Load(kBonusDay);
    QStringList names;
    for (int i = 0; i < form.cmbTaxType.count(); ++i) {
        names << form.cmbTaxType.text(i);
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM TaxSteps WHERE taxtypeID = %1")
                            .arg(form.cmbTaxType.itemData(i))),
                  1);
    }
    EXPECT_EQ(names, QStringList({"SB", "S", "SH", "ST", "SA", "ND", "Extra pay", "Flat 33"}));
    // The main type has several steps; a second step makes a flat type no longer flat.
    EXPECT_FALSE(ql::OneOffForm::selectByItemData(form.cmbTaxType, 1));
    db().execute(QStringLiteral(
        "INSERT INTO TaxSteps (TaxStepsID, taxtypeID, upperlimit, taxrate) VALUES (101, 40, 1000, 10)"));
    ql::OneOffForm again;
    again.Form_Load(kBonusDay);
    EXPECT_FALSE(ql::OneOffForm::selectByItemData(again.cmbTaxType, Flat33));
    EXPECT_EQ(again.cmbTaxType.selectedIndex(), -1);
    EXPECT_EQ(again.cmbPayName.count(), 7);
    EXPECT_EQ(again.cmbPayName.selectedIndex(), -1);
}

TEST_F(OneOffTest, ComesUpWithTheDateGivenOrToday) {
    ql::setClockForTesting([] { return QDateTime(QDate(2026, 5, 20), QTime(9, 0)); });
    ql::OneOffForm given;
    given.Form_Load(QDate(2026, 4, 10));
    EXPECT_EQ(given.Text1[0], QStringLiteral("10/04/2026"));
    EXPECT_EQ(given.pickerDate, QDate(2026, 4, 10));
    EXPECT_FALSE(given.cmdOKEnabled);
    ql::OneOffForm none;
    none.Form_Load(QStringLiteral("not a date"));
    EXPECT_EQ(none.Text1[0], QStringLiteral("20/05/2026"));
    // The picker writes its date; a typed text that is no date becomes today, a date is rewritten.
    none.picker_Change(QDate(2026, 6, 1));
    EXPECT_EQ(none.Text1[0], QStringLiteral("1/06/2026"));
    none.Text1[0] = QStringLiteral("yesterday");
    none.Text1_LostFocus(0);
    EXPECT_EQ(none.Text1[0], QStringLiteral("20/05/2026"));
    none.Text1[0] = QStringLiteral("3 July 2026");
    none.Text1_LostFocus(0);
    EXPECT_EQ(none.Text1[0], QStringLiteral("3/07/2026"));
    ql::setClockForTesting({});
}

TEST_F(OneOffTest, AnAmountTypedAsTextRevertsToWhatTheBoxHeld) {
    ql::OneOffForm form;
    form.Form_Load(kBonusDay);
    typeAmount(form, QStringLiteral("lots"));
    EXPECT_EQ(form.Text1[1], QStringLiteral("$0.00")); // an empty box remembers 0
    typeAmount(form, QStringLiteral("500"));
    EXPECT_EQ(form.Text1[1], QStringLiteral("$500.00"));
    typeAmount(form, QStringLiteral("five hundred"));
    EXPECT_EQ(form.Text1[1], QStringLiteral("$500.00"));
    // The PAYE box follows the same rule.
    form.Text1_GotFocus(2);
    form.Text1[2] = QStringLiteral("?");
    form.Text1_LostFocus(2);
    EXPECT_EQ(form.Text1[2], QStringLiteral("$0.00"));
}

TEST_F(OneOffTest, NoPaymentTypeClosesWithNoPayAndNoMessage) {
    ql::OneOffForm form;
    enter(form, kBonusDay, 0, Flat33, QStringLiteral("250"));
    EXPECT_TRUE(form.cmdOKEnabled); // the lists play no part in enabling OK
    EXPECT_EQ(form.focusRequest, QStringLiteral("cmdOK"));
    const qint32 before = wageCount();
    const auto callsBefore = dialogs.calls.size();
    form.cmdOK_Click();
    EXPECT_EQ(form.madeWageID, 0);
    EXPECT_EQ(wageCount(), before);
    EXPECT_EQ(dialogs.calls.size(), callsBefore);
}

TEST_F(OneOffTest, NoTaxTypeMakesAPayWithoutTax) {
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, 0, QStringLiteral("250"));
    EXPECT_EQ(form.PAYE, cur("0"));
    EXPECT_EQ(form.Text1[2], QStringLiteral("$0.00"));
    form.cmdOK_Click();
    const qint32 w = form.madeWageID;
    ASSERT_GT(w, 0);
    EXPECT_EQ(wageColumn(w, "PAYE"), cur("0"));
    EXPECT_EQ(wageColumn(w, "TakeHome"), cur("250"));
    // The empty record has no taxable amount, so the tax line adds no row.
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(w)), 0);
}

TEST_F(OneOffTest, HoursAndRateAreOneWhateverTheAmount) {
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, Flat33, QStringLiteral("12345.678"));
    form.cmdOK_Click();
    const qint32 w = form.madeWageID;
    EXPECT_EQ(wageColumn(w, "Rate"), cur("1"));
    EXPECT_EQ(ql::CSng(db().scalar(
                  QStringLiteral("SELECT DetailHours FROM PaymentDetails WHERE WageID = %1").arg(w))),
              1.0f);
    // The box shows two decimals, the amount is rounded to the cent: 12,345.68.
    EXPECT_EQ(wageColumn(w, "Gross"), cur("12345.68"));
    EXPECT_EQ(money(QStringLiteral("SELECT EquivPayRate FROM PaymentDetails WHERE WageID = %1").arg(w)),
              cur("12345.68"));
}

TEST_F(OneOffTest, ChangingTheAmountAfterTheTaxTypeRecalculates) {
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, Flat33, QStringLiteral("100"));
    EXPECT_EQ(form.Text1[2], QStringLiteral("$33.00"));
    typeAmount(form, QStringLiteral("200"));
    EXPECT_EQ(form.Text1[2], QStringLiteral("$66.00"));
    // A change of tax type recalculates at once.
    const qint32 sb =
        ql::CLng(db().scalar(QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE Taxname = 'SB'")));
    ASSERT_TRUE(ql::OneOffForm::selectByItemData(form.cmbTaxType, sb));
    form.cmbTaxType_Click();
    EXPECT_EQ(form.Text1[2], QStringLiteral("$24.50")); // 200 x 12.25%
}

TEST_F(OneOffTest, ATypedPAYEIsShownButNotUsed) {
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, Flat33, QStringLiteral("1000"));
    form.Text1_GotFocus(2);
    form.Text1[2] = QStringLiteral("5");
    form.Text1_LostFocus(2);
    EXPECT_EQ(form.Text1[2], QStringLiteral("$5.00"));
    form.cmdOK_Click();
    EXPECT_EQ(wageColumn(form.madeWageID, "PAYE"), cur("330"));
    EXPECT_EQ(wageColumn(form.madeWageID, "TakeHome"), cur("670"));
}

TEST_F(OneOffTest, EnterInTheAmountGoesToTheTaxTypeAndAValidFormToOK) {
    ql::OneOffForm form;
    form.Form_Load(kBonusDay);
    form.Text1_Enter(1);
    EXPECT_EQ(form.focusRequest, QStringLiteral("cmbTaxType"));
    form.focusRequest.clear();
    form.Text1_Enter(0);
    EXPECT_TRUE(form.focusRequest.isEmpty());
    // Leaving the date while the PAYE box is empty keeps OK disabled.
    form.Text1_LostFocus(0);
    EXPECT_FALSE(form.cmdOKEnabled);
    EXPECT_TRUE(form.focusRequest.isEmpty());
}

TEST_F(OneOffTest, CancelMakesNoPayButTheListStillMovesToItsLastRow) {
    const qint32 second = addPay();
    screen->datPays.MoveFirst();
    ASSERT_EQ(app.CurrentWageID, firstPay);
    const qint32 before = wageCount();
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, Flat33, QStringLiteral("1000"));
    form.cmdCancel_Click();
    EXPECT_EQ(form.madeWageID, 0);
    EXPECT_EQ(wageCount(), before);
    ql::AfterOneOffDialog(*screen);
    EXPECT_EQ(app.CurrentWageID, second);
    EXPECT_EQ(screen->datPays.AbsolutePosition(), screen->datPays.RecordCount() - 1);
}

// The unload makes the pay unless Cancel set the flag: closing by the title bar counts as OK.
TEST_F(OneOffTest, AnUnloadWithoutOKOrCancelMakesThePayOnce) {
    ql::OneOffForm form;
    enter(form, QDate(2026, 4, 30), HolidayPay, Flat33, QStringLiteral("300"));
    form.Form_Unload();
    const qint32 w = form.madeWageID;
    ASSERT_GT(w, 0);
    form.Form_Unload();
    form.cmdOK_Click();
    EXPECT_EQ(form.madeWageID, w);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages WHERE OneOff = 1")), 1);
    // The list, ordered by date, ends on the one-off pay.
    ql::AfterOneOffDialog(*screen);
    EXPECT_EQ(app.CurrentWageID, w);
}

TEST_F(OneOffTest, AOneOffPayNeverMovesTheNextRegularPayDate) {
    ql::OneOffForm form;
    enter(form, QDate(2026, 4, 20), HolidayPay, Flat33, QStringLiteral("300"));
    form.cmdOK_Click();
    ql::AfterOneOffDialog(*screen);
    EXPECT_EQ(ql::GetLastPayID(), firstPay);
    addPay();
    // The list ends on the one-off pay, the latest by date; the new regular pay follows the first.
    const qint32 next = ql::CLng(db().scalar(QStringLiteral("SELECT max(WageID) FROM Wages")));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(next)).toDate(),
              QDate(2026, 4, 13));
}

TEST_F(OneOffTest, AFailureInTheCalculationIsReportedAndLeavesPAYEAtZero) {
    ql::OneOffForm form;
    enter(form, kBonusDay, HolidayPay, Flat33, QStringLiteral("1000"));
    ASSERT_EQ(form.PAYE, cur("330"));
    db().execute(QStringLiteral("ALTER TABLE TaxSteps RENAME TO TaxStepsGone"));
    typeAmount(form, QStringLiteral("2000"));
    db().execute(QStringLiteral("ALTER TABLE TaxStepsGone RENAME TO TaxSteps"));
    EXPECT_EQ(form.PAYE, cur("0"));
    EXPECT_EQ(form.Text1[2], QStringLiteral("$0.00"));
    const QStringList errors = errorsReported();
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors.at(0).contains(QStringLiteral("CALCOneOffPAYE"))) << errors.at(0).toStdString();
}
