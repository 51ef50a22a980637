#pragma once
// The demo farm with the farm hand picked on the wage screen (first pay on 6 April 2026), a flat tax
// type of 33 per cent beside the template's, and a one-off form loaded for a date.
#include "../payengine_road/RoadFixture.h"
#include "payengine/OneOff.h"

namespace qltest {

class OneOffTest : public RoadTest {
protected:
    void SetUp() override {
        RoadTest::SetUp();
        db().execute(
            QStringLiteral("INSERT INTO TaxTypes (TaxTypeID, Taxname, [Order]) VALUES (40, 'Flat 33', 40)"));
        db().execute(QStringLiteral("INSERT INTO TaxSteps (TaxStepsID, taxtypeID, upperlimit, taxrate) "
                                    "VALUES (100, 40, 999999999, 33)"));
        pick(FarmHand, QDate(2026, 4, 6));
        firstPay = app.CurrentWageID;
    }

    // Loads the form for the date and enters what a user enters, each box left as a user leaves it.
    void enter(ql::OneOffForm& form, const QDate& date, qint32 paymentNameID, qint32 taxTypeID,
               const QString& amount) {
        form.Form_Load(date);
        if (paymentNameID) ASSERT_TRUE(ql::OneOffForm::selectByItemData(form.cmbPayName, paymentNameID));
        if (taxTypeID) {
            ASSERT_TRUE(ql::OneOffForm::selectByItemData(form.cmbTaxType, taxTypeID));
            form.cmbTaxType_Click();
        }
        typeAmount(form, amount);
    }
    static void typeAmount(ql::OneOffForm& form, const QString& amount) {
        form.Text1_GotFocus(1);
        form.Text1[1] = amount;
        form.Text1_LostFocus(1);
    }
    qint32 wageCount() { return ql::CLng(db().scalar(QStringLiteral("SELECT count(*) FROM Wages"))); }
    int count(const QString& sql) { return ql::CLng(db().scalar(sql)); }

    static QDate kBonus() { return QDate(2026, 4, 10); }
    qint32 firstPay = 0;
    static constexpr qint32 Flat33 = 40;
    static constexpr qint32 HolidayPay = 5;
};

} // namespace qltest
