#pragma once
// A one-off pay: a single payment outside the employee's pay cycle, one payment line and a flat tax.
// OneOffForm is the dialog without widgets: its three text boxes, the two lists, the OK button's state
// and what the dialog keeps in memory. The pay is made in the unload, unless the dialog was cancelled,
// so closing the window by its title bar counts as OK. frmOneOff shows this object; the command line
// and the tests drive it directly.
#include "ExtraPay.h"
#include "Paye.h"
#include "data/ComboModel.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QString>
#include <QVariant>

namespace ql {

class PayView;

class OneOffForm {
public:
    // Text1(0) the date, Text1(1) the amount, Text1(2) the PAYE.
    QString Text1[3];
    QDate pickerDate;      // the date picker beside Text1(0)
    // Of an extra pay: the part not liable for the ACC earners' levy (a redundancy or retiring payment);
    // empty or not a number counts as none.
    QString notLiableText;
    ComboModel cmbPayName; // item data PaymentNameID
    ComboModel cmbTaxType; // item data TaxTypeID; flat tax types (one step) only
    bool cmdOKEnabled = false;

    bool Cancelled = false;
    TaxDetailRecord record;
    Currency PAYE;      // the calculated tax; a figure typed into Text1(2) is shown, never used
    std::optional<ExtraPayTax> extraPay; // Inland Revenue's method, when the tax type is "Extra pay"
    QString remembered; // what the amount or PAYE box held when it got the focus
    QDate openedFor;

    // The control that the last event moved the focus to ("cmdOK", "cmbTaxType"); empty when none.
    QString focusRequest;
    // WageID of the pay the unload made; 0 when none.
    qint32 madeWageID = 0;

    // Fills the lists; Text1(0) and the picker take date when it is a valid date, else today.
    void Form_Load(const QVariant& date = QVariant());
    void picker_Change(const QDate& date);
    void Text1_GotFocus(int index);
    // Enter in the amount box.
    void Text1_Enter(int index);
    void Text1_LostFocus(int index);
    void cmbTaxType_Click();
    // Leaving the box of the part not liable for the levy: a number in currency format, else empty; the
    // PAYE is worked out again.
    void notLiable_LostFocus();
    void CALCOneOffPAYE();
    // Both unload the dialog; the unload makes the pay unless cancelled.
    void cmdOK_Click();
    void cmdCancel_Click();
    // The unload: makes the pay when not cancelled. Failing steps are skipped. Runs once.
    void Form_Unload();

    // Selects the entry whose item data is id; false when the list has none.
    static bool selectByItemData(ComboModel& combo, qint32 id);

private:
    bool m_unloaded = false;
};

// The one PaymentDetails row of a one-off pay: hours 1, rate and payment the amount.
void SavePaymentDetails(qint32 wageID, Currency amount, qint32 paymentNameID);

// What the wage screen does once the dialog has gone, whether or not a pay was made: refreshes the pay
// list, moves it to its last row and makes that row's WageID the CurrentWageID.
void AfterOneOffDialog(PayView& form);

} // namespace ql
