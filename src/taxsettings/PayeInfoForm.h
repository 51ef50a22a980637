#pragma once
// The PAYE settings dialog ("Tax Information") without widgets: its lists, check box, date box,
// captions and help texts, and the events that fill it from the one row of PayeInfo and write it
// back. The dialog holds its own connection to the farm database from load to unload, and saves on
// every way out, Cancel included. frmPayeInfo shows this object; tests and the command line drive it.
#include "data/ComboModel.h"
#include "data/Database.h"
#include <QHash>
#include <QString>

namespace ql {

class PayeInfoForm {
public:
    PayeInfoForm();
    ~PayeInfoForm();

    static QString title() { return QStringLiteral("Tax Information"); }
    static QString adjustTip() { return QStringLiteral("Non taxable wage adjustments"); }

    // The load: FillPayeDetails; a failure is reported and the dialog opens with what it has.
    void Form_Load();
    void FillPayeDetails();
    // Rebuilds lbltaxationInfo and lblPayeNoncash from the current choices.
    void ShowPayeHelp();

    // Clicks of the lists that feed the help texts (after the selection changed).
    void cmbWage1_Click() { ShowPayeHelp(); }
    void cmbHolding1_Click() { ShowPayeHelp(); }
    void cmbPayment_Click() { ShowPayeHelp(); }
    void cmbTaxOffice_Click() { ShowPayeHelp(); }
    void chkNonCash_Click() { ShowPayeHelp(); }
    // cmbAdjust remembers its selection when it receives the focus, and refuses on a click the
    // account of the taxable wage, going back to what it remembered.
    void cmbAdjust_GotFocus();
    void cmbAdjust_Click();

    // Index 0 OK, 2 Cancel; true when the dialog is to unload.
    bool cmdPartners_Click(int index);
    // SavePayeDetails, then the database is closed; each step skips failures.
    void Form_Unload();
    // Writes the choices back to PayeInfo, in the dialog's order, up to the step that stops it.
    void SavePayeDetails();

    // The frequency lists are a control array of which only index 0 stands on this dialog; any other
    // index raises "Control array element 'n' doesn't exist" (340).
    ComboModel& cmbFreq1(int index);
    ComboModel cmbHolding1, cmbPayment, cmbWage1, cmbAdjust, cmbTaxOffice;
    bool chkNonCash = false;
    QString txt_GSTDate2;             // txt_GSTDate(2), the start of the tax periods
    QHash<QString, QString> captions; // the labels' captions, by control name
    QString lbltaxationInfo, lblPayeNoncash;
    QString result; // empty, or "Cancelled"
    Database farm;  // held from load to unload
    bool loaded = false;

private:
    ComboModel m_freq0;
    int m_adjustIndex = -1;
};

} // namespace ql
