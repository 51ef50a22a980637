// The wage screen's events: summary labels and views, the detail grid, the PAYE box, the buttons, the
// calendar and the tabs.
#include "WageScreen.h"
#include "data/PayFreeze.h"
#include "data/RoundCurrency.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/Texts.h"
#include "leave/basLeave.h"
#include "ledger/AddressBook.h"
#include "payengine/AddPay.h"
#include "payengine/AppContext.h"
#include "payengine/Contributions.h"
#include "payengine/Deductions.h"
#include "payengine/EditChecks.h"
#include "payengine/PayTotals.h"
#include "payengine/Paye.h"
#include "payengine/WriteBatch.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {
QString cmdSelect(int index) {
    return QStringLiteral("cmdSelect(%1)").arg(index);
}
const QString kGrid = QStringLiteral("tgrdwages");
const QString kPaye = QStringLiteral("txtPAYE");

constexpr quint32 kLabelBack = 0xC0FFFF;
constexpr quint32 kSelectedBack = 0x808000;
constexpr quint32 kSelectedFore = 0xFFFFFF;
constexpr quint32 kLabelFore = 0x000000;
constexpr int kSilencedDataError = 16389;
} // namespace

// --- summary labels and views ----------------------------------------------------------------------

QString WageScreen::selectedLabel() const {
    return labelOfCaption(App().SelectedLabel);
}

void WageScreen::SelectLabel(const QString& label) {
    if (onGridUpdate) onGridUpdate();
    if (GetPayEditable()) SaveWageGrid(*this);
    const QString old = selectedLabel();
    if (!old.isEmpty()) {
        control(old).backColor = kLabelBack;
        control(old).transparent = true;
        // Back on the form's background: the selection's white text would not be readable there.
        control(old).foreColor = kLabelFore;
    }
    const int index = summaryLabels().indexOf(label);
    if (index >= 0) App().SelectedLabel = qint16(index);
    ControlState& now = control(label);
    now.backColor = kSelectedBack;
    now.foreColor = kSelectedFore;
    now.transparent = false;
}

void WageScreen::labelClick(const QString& label) {
    const int tab = tabOfLabel(label);
    if (tab < 0) return;
    const int button = tab == 0 ? 0 : tab;
    if (tab == 0) {
        // The calendar: failures are passed over.
        skipErrors([&] { SelectLabel(label); });
        skipErrors([&] {
            for (int i = 0; i < 8; ++i)
                control(cmdSelect(i)).down = i == 0;
            App().CurrentTab = 0;
            bringToFront(QStringLiteral("CalWage"));
        });
        changed();
        return;
    }
    SelectLabel(label);
    if (!control(cmdSelect(button)).down) {
        for (int i = 0; i < 8; ++i)
            control(cmdSelect(i)).down = i == button;
    }
    App().CurrentTab = qint16(tab);
    showView(tab);
    changed();
}

void WageScreen::showView(int tab) {
    if (tab == 3) {
        FillPAYEDisplay(*this);
        bringToFront(QStringLiteral("vsePAYE"));
        focusControl = kPaye;
        txtPAYE_GotFocus();
        SetPAYELock(control(kPaye), IsNull(datPays.value(QStringLiteral("Reference"))));
        return;
    }
    if (tab == 6) {
        EnterPaySlip(*this);
        bringToFront(kGrid);
        refreshGrid();
        return;
    }
    FillWageGrid(*this);
    if (tab == 7) ShowTaxCredit(*this);
    bringToFront(kGrid);
    refreshGrid();
    focusControl = kGrid;
}

void WageScreen::lblpayment_Click(int index) {
    labelClick(labelOfCaption(index));
}
void WageScreen::cmdSelect_Click(int index) {
    labelClick(labelOfButton(index));
}
void WageScreen::openView(int tab) {
    cmdSelect_Click(tab);
}

void WageScreen::refreshGrid() {
    if (onGridChanged) onGridChanged();
}

void WageScreen::bringToFront(const QString& name) {
    frontControl = name;
    changed();
}

// --- the detail grid -------------------------------------------------------------------------------

void WageScreen::committedMessage() {
    ShowMessage(QStringLiteral("This pay has already been committed (recorded as paid).\r\n\r\n"
                               "You therefore cannot alter any details relating to this pay."),
                0, Firm(), QStringLiteral("Already Committed"), QString(), 6, true);
}

bool WageScreen::tgrdwages_BeforeColEdit(int /*column*/) {
    return tgrdwages_BeforeRowChange();
}

bool WageScreen::committedNow() {
    followOtherWriters(false);
    if (!IsNull(datPays.value(QStringLiteral("Reference")))) return true;
    const QVariant id = datPays.value(QStringLiteral("WageID"));
    if (IsNull(id)) return false;
    bool frozen = false;
    skipErrors([&] { frozen = PayFrozen(App().WageDatabase, CLng(id)); });
    if (!frozen) return false;
    // Stale: stand on the same pay again, read as it is now.
    standOnAgain(CLng(id));
    return true;
}

bool WageScreen::tgrdwages_BeforeRowChange() {
    if (!committedNow()) return false;
    committedMessage();
    return true;
}

bool WageScreen::storeCell(int row, int column, const QString& typed) {
    if (row < 0 || row >= WageGridArray.rowCount() || column < 0 || column >= WageGridArray.columnCount())
        return false;
    const QVariant old = WageGridArray.value(row, column);
    if (committedNow()) {
        committedMessage();
        WageGridArray.setValue(row, column, old);
        refreshGrid();
        return false;
    }
    // A figure column given "12,50" asks whether 12.50 was meant; the locale would read 1,250.
    const QString text = column >= 2 ? ConfirmDecimalComma(*this, column, typed) : typed;
    if (text.isEmpty() && !typed.isEmpty()) {
        WageGridArray.setValue(row, column, old);
        refreshGrid();
        return false;
    }
    if (!IsNumeric(text)) {
        ShowMessage(
            TranslateText(
                QStringLiteral("Invalid entry in column |0|\r\n\r\nThe previous value has been restored"),
                QStringList{QString::number(column + 1)}),
            0, Firm(), QStringLiteral("Invalid Entry"), QString(), 3, true);
        WageGridArray.setValue(row, column, old);
        refreshGrid();
        return false;
    }
    // Negative or outsize figures would leave the pay's stored figures disagreeing with its lines.
    const QString refusal = GridEntryRefusal(*this, row, column, text);
    if (!refusal.isEmpty()) {
        ShowEntryRefusal(refusal);
        WageGridArray.setValue(row, column, old);
        refreshGrid();
        return false;
    }
    WageGridArray.setValue(row, column, text);
    gridRow = row;
    const int tab = App().CurrentTab;
    if (tab == 5 || tab == 7) {
        const QString totalTaxable = caption(QStringLiteral("lblTotalTaxable"));
        const Currency taxable = IsNumeric(totalTaxable) ? RoundCurrency(totalTaxable) : Currency();
        if (tab == 5)
            DefaultDeductionRow(column, taxable, WageGridArray, row);
        else
            DefaultContributionRow(column, taxable, WageGridArray, row);
    }
    // The cell is stored: its line and total, then the take-home figure from the captions.
    UpdateGridLine(*this, column, text, row);
    skipErrors([&] {
        const double takeHome =
            CDbl(caption(QStringLiteral("lblTotalTaxable"))) - CDbl(caption(QStringLiteral("lblPaye"))) +
            CDbl(caption(QStringLiteral("lblNonTax"))) - CDbl(caption(QStringLiteral("lblDeduct")));
        setCaption(QStringLiteral("lblTakehome"), Format(takeHome, QStringLiteral("Currency")));
    });
    // A payment line writes the pay's gross at once: its tax and take-home are written with it, never
    // left behind until the view is left.
    if (tab == 1) skipErrors([&] { datPays.UpdateRecord(); });
    refreshGrid();
    changed();
    return true;
}

void WageScreen::tgrdwages_AfterRowChange() {
    SaveWageGrid(*this);
    changed();
}

void WageScreen::tgrdwages_LostFocus() {
    // The grid was saved before the payroll closed; a focus lost while the window goes changes nothing.
    if (!App().WageDatabase.isOpen()) return;
    if (onGridUpdate) onGridUpdate();
    if (GetPayEditable()) SaveWageGrid(*this);
    changed();
}

bool WageScreen::tgrdwages_Error(int dataError) {
    return dataError == kSilencedDataError;
}

void WageScreen::tgrdwages_TabKey() {
    switch (App().CurrentTab) {
    case 1:
        openView(2);
        break;
    case 2:
        openView(3);
        break;
    case 4:
        openView(5);
        break;
    case 5:
        openView(6);
        break;
    case 6:
        openView(7);
        break;
    default:
        break;
    }
}

// --- the PAYE box ----------------------------------------------------------------------------------

void WageScreen::txtPAYE_GotFocus() {
    PAYEText = caption(kPaye);
}

void WageScreen::txtPAYE_Accept() {
    if (CheckPAYEBox(*this)) {
        RefreshPaySlip(*this);
        openView(4);
    }
    changed();
}

void WageScreen::txtPAYE_LostFocus() {
    if (CheckPAYEBox(*this)) RefreshPaySlip(*this);
    changed();
}

// --- buttons ---------------------------------------------------------------------------------------

void WageScreen::notYet(const QString& what) {
    ShowMessage(TranslateText(QStringLiteral("|0| is not available in this version yet."), QStringList{what}),
                0, Firm(), QStringLiteral("Information"), QString(), 6, true);
}

bool WageScreen::TaxCodeTest() {
    if (CountryPhone() != 64) return true;
    const AppContext& app = App();
    if (!app.EmployeeArray.value(app.CurrentEmployee).TaxCode.isEmpty()) return true;
    ShowMessage(
        QStringLiteral(
            "This employee doesn't have a valid Tax Code entered.\r\n\r\nPlease Enter a valid Tax Code"),
        0, Firm(), QStringLiteral("Missing Tax Code"), QString(), 3, true);
    return false;
}

void WageScreen::cmdAddPay_Click() {
    SetPayEditable(true);
    if (!TaxCodeTest()) return;
    {
        // The new pay and the opening of its slip are one action: one commit.
        WriteBatch batch(App().WageDatabase);
        AddnextPay(*this);
        openView(6);
    }
    changed();
}

void WageScreen::cmdOneOff_Click() {
    SetPayEditable(true);
    if (!TaxCodeTest()) return;
    if (showOneOff)
        showOneOff(*this, Today());
    else
        notYet(QStringLiteral("The one-off pay"));
}

void WageScreen::cmdPrintPay_Click() {
    if (!TaxCodeTest()) return;
    openView(6);
    if (showCommit)
        showCommit(*this);
    else
        notYet(QStringLiteral("Committing a pay"));
}

void WageScreen::cmdMemo_Click() {
    if (showMemo)
        showMemo(*this);
    else
        notYet(QStringLiteral("The memo"));
}

void WageScreen::cmdQuick_Click() {
    datPays.UpdateRecord();
    if (showQuickView)
        showQuickView(*this);
    else
        notYet(QStringLiteral("The wage history"));
}

void WageScreen::cmdClose_Click() {
    if (unloadAll) unloadAll();
}

// --- calendar --------------------------------------------------------------------------------------

void WageScreen::CalWage_DateClick(const QDate& date) {
    AppContext& app = App();
    control(QStringLiteral("CalWage")).tag = date;
    CalendarChoice& choice = calendarChoice();
    const EmployeeRecord& record = app.EmployeeArray.value(app.CurrentEmployee);
    if (!record.DateFinished.isValid() || record.DateFinished == ZeroDate) {
        choice = CalendarChoice{};
        if (showAddEdit)
            showAddEdit(*this);
        else
            choice.EditDateChoice = true; // without the dialog a date click moves the shown pay
    } else {
        choice.AddPayChoice = false;
        choice.OneOffChoice = false;
        choice.EditDateChoice = true;
    }
    if (choice.AddPayChoice) {
        QString payDate = Format(date, QStringLiteral("SHORT DATE"));
        AddPayment(app.CurrentEmployeeID, payDate, false, *this);
    } else if (choice.EditDateChoice) {
        datPays.setValueNow(QStringLiteral("Date"), date);
        control(QStringLiteral("lblPayDate")).caption = Format(date, QStringLiteral("Short Date"));
    } else if (choice.OneOffChoice) {
        if (showOneOff)
            showOneOff(*this, date);
        else
            notYet(QStringLiteral("The one-off pay"));
    } else {
        control(QStringLiteral("CalWage")).tag = Today();
    }
    changed();
}

// --- tabs ------------------------------------------------------------------------------------------

void WageScreen::tabMain_Switch(int oldTab, int newTab, bool& cancel) {
    GlobalOldTab = qint16(oldTab);
    if (oldTab == 1) leave.leaveTab(); // the grid saved, then AllLeave stored
    if (oldTab == newTab) return;
    if (newTab == 0) {
        // The pay side that the leave tab hid comes back with the wages.
        for (const char* shown : {"cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick", "datPays"})
            control(QString::fromLatin1(shown)).visible = true;
        control(QStringLiteral("vseWage(1)")).visible = false;
        control(QStringLiteral("vseWage(0)")).visible = true;
        bringToFront(QStringLiteral("vseWage(0)"));
        control(QStringLiteral("vseWageDisplay")).visible = true;
    } else if (newTab == 1) {
        HideWageButtons(*this);
        control(QStringLiteral("vseWage(0)")).visible = false;
        control(QStringLiteral("vseWage(1)")).visible = true;
        bringToFront(QStringLiteral("vseWage(1)"));
        leave.enterTab(); // the option from AllLeave, the open page filled
    } else if (newTab == 2) {
        LaunchAddressBook(1, App().CurrentAddressID, true, true);
        cancel = true;
        if (oldTab == 1) leave.initPage();
    }
    tabMainIndex = cancel ? oldTab : newTab;
    changed();
}

} // namespace ql
