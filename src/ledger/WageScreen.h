#pragma once
// The wage screen without widgets: the employee list, the pay list and its summary labels, the detail
// grid's events, the PAYE box, the buttons and the calendar. The widget frmWage shows this object and
// forwards the user's events to it; the command line and the tests drive it directly.
#include "cashbook/AddEditChoice.h"
#include "leave/LeaveScreen.h"
#include "payengine/PayView.h"
#include <QDate>
#include <QString>
#include <QVector>
#include <functional>

namespace ql {

// One entry of the employee list: the text shown and the EmployeeID kept as item data.
struct ComboItem {
    QString text;
    qint32 itemData = 0;
};

// The summary label beside caption lblpayment(index): 0 lblPayDate ... 7 lblTakehome, 9 lblKiwiSaver;
// SelectedLabel holds that index.
const QStringList& summaryLabels(); // indexes 0 to 9, entry 8 (the status line) empty
// The summary label a caption (lblpayment index) or a cmdSelect button stands for; empty when none.
QString labelOfCaption(int lblpaymentIndex);
QString labelOfButton(int cmdSelectIndex);
// The CurrentTab a click on the label opens (0 for the date label).
int tabOfLabel(const QString& label);

class WageScreen : public PayView {
public:
    WageScreen();
    ~WageScreen() override;

    // --- the form ---------------------------------------------------------------------------------
    void Form_Load(); // the load: InitForm and the captions
    void InitForm();
    QString windowTitle;

    // --- the employee list (cboEmployee) ----------------------------------------------------------
    QVector<ComboItem> cboEmployeeItems;
    int cboEmployeeIndex = -1; // the selected entry; -1 none
    // Selects an entry as the user does; a change of selection runs the change event (SetEmployee).
    void selectEmployeeItem(int index);
    void FillEmployeeCombo();
    void SetEmployee();
    void SelectCurrentEmp();
    void cboEmployee_Click();
    QString employeeName() const override;

    // --- the pay list -----------------------------------------------------------------------------
    void datPays_Reposition();
    QString repositionTrace; // the last stage reached, for the error report

    // --- summary labels and views -----------------------------------------------------------------
    void SelectLabel(const QString& label) override;
    void openView(int tab) override;
    // A click on a summary label, on its caption or on its cmdSelect button.
    void labelClick(const QString& label);
    void lblpayment_Click(int index);
    void cmdSelect_Click(int index);
    QString selectedLabel() const; // the name of SelectedLabel

    // --- the detail grid (tgrdwages) --------------------------------------------------------------
    // Each returns true when the action is cancelled.
    bool tgrdwages_BeforeColEdit(int column);
    bool tgrdwages_BeforeRowChange(); // a row about to be deleted, inserted or updated
    // The full store of a typed cell: the checks before, the store, and what follows it. Returns
    // false when the cell was refused and keeps its old value.
    bool storeCell(int row, int column, const QString& text);
    void tgrdwages_AfterRowChange(); // a row has been deleted, inserted or updated
    void tgrdwages_LostFocus();
    // True when the error is silenced.
    bool tgrdwages_Error(int dataError);
    void tgrdwages_TabKey();
    int gridRow = 0; // the grid's current row

    // --- the PAYE box -----------------------------------------------------------------------------
    void txtPAYE_GotFocus();
    void txtPAYE_Accept(); // Enter or Tab
    void txtPAYE_LostFocus();

    // --- buttons ----------------------------------------------------------------------------------
    // In country 64 an employee without a tax code is refused with a message; true when the action
    // may go ahead.
    bool TaxCodeTest();
    void cmdAddPay_Click();
    void cmdOneOff_Click();
    void cmdPrintPay_Click();
    void cmdDelete_Click();
    void cmdMemo_Click();
    void cmdQuick_Click();
    void cmdClose_Click();

    // --- calendar ---------------------------------------------------------------------------------
    void CalWage_DateClick(const QDate& date);

    // --- deleting ---------------------------------------------------------------------------------
    void DeletePayment(bool committed, const QString& employeeName);
    bool DeleteEmployee(const QString& employeeName) override;
    void reloadEmployees() override;

    // --- tabs and properties ----------------------------------------------------------------------
    void tabMain_Switch(int oldTab, int newTab, bool& cancel);
    int tabMainIndex = 0;
    qint16 GlobalOldTab = 0;
    qint32 AddressID() const { return m_addressID; }
    void setAddressID(qint32 value);
    void GotMessage(qint32 wParam) { setAddressID(wParam); }

    // --- what widgets listen to ---------------------------------------------------------------------
    void refreshGrid() override;
    void bringToFront(const QString& control) override;
    QString frontControl;                  // tgrdwages, vsePAYE or CalWage
    QString focusControl;                  // the control that has the focus
    std::function<void()> onGridChanged;   // the grid's array or columns changed
    std::function<void()> onScreenChanged; // captions, colours or the list changed
    // Screens of other parts that the buttons open; unset means not there yet.
    std::function<void(WageScreen&)> showCommit, showMemo, showQuickView;
    std::function<void(WageScreen&, const QDate&)> showOneOff; // the one-off dialog for a date
    std::function<void(WageScreen&)> showAddEdit;              // the calendar's choice (sets the three flags)
    std::function<void()> unloadAll;                           // cmdClose: unload every open form
    std::function<void()> onGridUpdate;                        // the grid ends a cell edit and stores it
    std::function<void(bool)> onHourglass;                     // the mouse pointer as the hourglass, or back

    // The leave ledger on tab 1. Its option "Current Year"/"All Years" is mirrored in the controls
    // optWhichYears(0) and optWhichYears(1), which the shutdown reads.
    LeaveScreen leave;

    // Another process's commit to the payroll file shows in the file's data version; the list is then
    // read again on the same pay so that the screen shows the change. With wholeList false (at an
    // edit) only a change of the shown pay itself (its reference, payment date, hold, or the pay gone)
    // does that, so that the user's own unsaved lines stand unless their pay changed under them. True
    // when the list was read again.
    bool followOtherWriters(bool wholeList);

private:
    void changed();
    void showView(int tab);
    void standOnAgain(qint32 wageID);
    // True when another program holds the payroll file's write lock (after the connection's wait).
    bool payrollWriteLocked();
    qint64 m_dataVersion = -1;
    void hourglass(bool on);
    void notYet(const QString& what);
    void committedMessage();
    // True when the pay shown is committed or held, as the file holds it now: another process may
    // have committed it since it was shown, and then the list is read again to show it so.
    bool committedNow();
    qint32 m_addressID = 0;
};

} // namespace ql
