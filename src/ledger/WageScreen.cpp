#include "WageScreen.h"
#include "cashbook/PayDeletion.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "ledger/Roster.h"
#include "payengine/AddPay.h"
#include "payengine/AppContext.h"
#include "payengine/Contributions.h"
#include "payengine/PayTotals.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {
const QString kCbo = QStringLiteral("cboEmployee");

QString lblpayment(int index) {
    return QStringLiteral("lblpayment(%1)").arg(index);
}
QString cmdSelect(int index) {
    return QStringLiteral("cmdSelect(%1)").arg(index);
}

// The pay's interval and tax code as lblpayment(10) shows them.
QString intervalCaption(const PayList& pays) {
    return pays.value(QStringLiteral("PayInterval")).toString() + QStringLiteral(" (") +
           pays.value(QStringLiteral("TaxCode")).toString() + QStringLiteral(")");
}
} // namespace

const QStringList& summaryLabels() {
    static const QStringList labels{
        QStringLiteral("lblPayDate"),      QStringLiteral("lblGross"),    QStringLiteral("lblTaxable"),
        QStringLiteral("lblTotalTaxable"), QStringLiteral("lblPaye"),     QStringLiteral("lblNonTax"),
        QStringLiteral("lblDeduct"),       QStringLiteral("lblTakehome"), QString(),
        QStringLiteral("lblKiwiSaver")};
    return labels;
}

QString labelOfCaption(int index) {
    return index >= 0 && index < summaryLabels().size() ? summaryLabels().at(index) : QString();
}

QString labelOfButton(int index) {
    static const QStringList buttons{QStringLiteral("lblPayDate"),  QStringLiteral("lblGross"),
                                     QStringLiteral("lblTaxable"),  QStringLiteral("lblPaye"),
                                     QStringLiteral("lblNonTax"),   QStringLiteral("lblDeduct"),
                                     QStringLiteral("lblTakehome"), QStringLiteral("lblKiwiSaver")};
    return index >= 0 && index < buttons.size() ? buttons.at(index) : QString();
}

int tabOfLabel(const QString& label) {
    static const QHash<QString, int> tabs{
        {QStringLiteral("lblPayDate"), 0},  {QStringLiteral("lblGross"), 1},
        {QStringLiteral("lblTaxable"), 2},  {QStringLiteral("lblTotalTaxable"), 3},
        {QStringLiteral("lblPaye"), 3},     {QStringLiteral("lblNonTax"), 4},
        {QStringLiteral("lblDeduct"), 5},   {QStringLiteral("lblTakehome"), 6},
        {QStringLiteral("lblKiwiSaver"), 7}};
    return tabs.value(label, -1);
}

WageScreen::WageScreen() {
    static const char* const captions[] = {"End of Period",
                                           "Gross",
                                           "Taxable Allowances",
                                           "Total Taxable",
                                           "PAYE",
                                           "Non Taxable Allowances",
                                           "Deductions",
                                           "Take Home Pay",
                                           "Uncommitted",
                                           "KiwiSaver Contributions"};
    for (int i = 0; i < 10; ++i)
        control(lblpayment(i)).caption = QString::fromLatin1(captions[i]);
    for (int i = 0; i < 8; ++i)
        control(cmdSelect(i)).caption = control(lblpayment(i == 7 ? 9 : i)).caption;
    for (const QString& label : summaryLabels()) {
        if (label.isEmpty()) continue;
        ControlState& c = control(label);
        c.backColor = 0xC0FFFF;
        c.transparent = false;
    }
    control(QStringLiteral("cmdPrintPay")).caption = QStringLiteral("&Commit");
    control(QStringLiteral("cmdAddPay")).caption = QStringLiteral("&Add Pay");
    control(QStringLiteral("cmdOneOff")).caption = QStringLiteral("&One-off Pay");
    control(QStringLiteral("cmdDelete")).caption = QStringLiteral("&Delete");
    control(QStringLiteral("cmdMemo")).caption = QStringLiteral("&Memo");
    control(QStringLiteral("cmdQuick")).caption = QStringLiteral("&Quick View");
    control(QStringLiteral("cmdClose")).caption = QStringLiteral("C&lose");
    control(QStringLiteral("txtPAYE")).backColor = WindowColor;
    for (const char* hidden : {"vseWageDisplay", "cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick", "datPays"})
        control(QString::fromLatin1(hidden)).visible = false;
    datPays.onReposition = [this] { datPays_Reposition(); };
    leave.onOptionChanged = [this](int option) {
        control(QStringLiteral("optWhichYears(0)")).down = option == 0;
        control(QStringLiteral("optWhichYears(1)")).down = option != 0;
    };
}

WageScreen::~WageScreen() {
    datPays.onReposition = nullptr;
    leave.onOptionChanged = nullptr;
}

void WageScreen::changed() {
    if (onScreenChanged) onScreenChanged();
}

void WageScreen::hourglass(bool on) {
    if (onHourglass) onHourglass(on);
}

// --- the form --------------------------------------------------------------------------------------

void WageScreen::Form_Load() {
    App().SelectedLabel = 0; // lblPayDate stands selected at first
    InitForm();
    control(lblpayment(4)).caption = PayAsYouEarn();
    control(QStringLiteral("tabLeave")).caption =
        QStringLiteral("Annual Leave|Sick Leave|Special Leave|In Lieu|Leave without Pay");
    control(QStringLiteral("tabLeave")).tag = 0;
    // The option stands as it was left, so a close that never showed the tab writes it back unchanged.
    leave.setOption(AllLeave() ? 1 : 0);
    changed();
}

void WageScreen::InitForm() {
    InitData(*this);
    FillEmployeeCombo();
    for (const char* shown : {"vseWageDisplay", "cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick", "datPays"})
        control(QString::fromLatin1(shown)).visible = true;
    bringToFront(QStringLiteral("CalWage"));
    App().CurrentTab = 0;
}

// --- the employee list -----------------------------------------------------------------------------

void WageScreen::selectEmployeeItem(int index) {
    if (index < -1 || index >= cboEmployeeItems.size() || index == cboEmployeeIndex) return;
    cboEmployeeIndex = index;
    control(kCbo).caption = index < 0 ? QString() : cboEmployeeItems.at(index).text;
    control(kCbo).tag = index < 0 ? QVariant() : QVariant(cboEmployeeItems.at(index).itemData);
    if (index >= 0) cboEmployee_Click();
    changed();
}

QString WageScreen::employeeName() const {
    return caption(kCbo);
}

void WageScreen::FillEmployeeCombo() {
    trap(QStringLiteral("FillEmployeeCombo"), [&] {
        cboEmployeeItems.clear();
        cboEmployeeIndex = -1;
        control(kCbo).caption.clear();
        control(kCbo).tag = QVariant();
        const QVector<EmployeeRecord>& roster = App().EmployeeArray;
        for (int i = 1; i < roster.size(); ++i)
            cboEmployeeItems.append({roster.at(i).NameLastFirst, roster.at(i).EmployeeID});
        if (!cboEmployeeItems.isEmpty()) selectEmployeeItem(0);
    });
    changed();
}

void WageScreen::SetEmployee() {
    AppContext& app = App();
    if (cboEmployeeIndex < 0) return;
    const qint32 id = cboEmployeeItems.at(cboEmployeeIndex).itemData;
    app.CurrentEmployeeID = id;
    for (int i = 1; i < app.EmployeeArray.size(); ++i) {
        if (app.EmployeeArray.at(i).EmployeeID == id) {
            app.CurrentEmployee = i;
            app.CurrentAddressID = app.EmployeeArray.at(i).AddressID;
            break;
        }
    }
    datPays.setRecordSource(QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.[EmployeeID] = ") +
                            QString::number(id) + QStringLiteral(" ORDER BY Wages.Date"));
    app.ReloadingPays = true;
    try {
        datPays.Refresh();
    } catch (...) {
        app.ReloadingPays = false;
        throw;
    }
    app.ReloadingPays = false;
    if (datPays.RecordCount() > 0) datPays.MoveLast();

    const EmployeeRecord& record = app.EmployeeArray.value(app.CurrentEmployee);
    control(QStringLiteral("lblAddress")).caption = record.Address;
    control(QStringLiteral("lblOccupation")).caption = record.EmployeeType;
    if (datPays.RecordCount() > 0) control(lblpayment(10)).caption = intervalCaption(datPays);
    control(lblpayment(9)).visible = record.KiwiSaverEnrolled;
    control(QStringLiteral("lblKiwiSaver")).visible = record.KiwiSaverEnrolled;
    control(cmdSelect(7)).visible = record.KiwiSaverEnrolled;
    changed();
}

void WageScreen::SelectCurrentEmp() {
    QVector<qint32> itemData;
    for (const ComboItem& item : cboEmployeeItems)
        itemData.append(item.itemData);
    int index = cboEmployeeIndex;
    ql::SelectCurrentEmp(itemData, index);
    selectEmployeeItem(index);
}

void WageScreen::cboEmployee_Click() {
    hourglass(true);
    leave.saveBeforeEmployeeChange();
    SetEmployee();
    leave.employeeChanged(tabMainIndex == 1);
    hourglass(false);
}

// --- the pay list ----------------------------------------------------------------------------------

void WageScreen::datPays_Reposition() {
    repositionTrace.clear();
    try {
        showBoundValues();
        const QString name = employeeName();
        RepositionPay(datPays, *this, name);
        repositionTrace = QStringLiteral("repositionedpay");
        if (datPays.EOF_()) {
            // A first pay that another program's lock kept out has been reported with that cause: the
            // employees are not the matter then.
            if (payrollWriteLocked()) {
                changed();
                return;
            }
            repositionTrace = QStringLiteral("stopmessage");
            ShowMessage(
                QStringLiteral("Please close the Quillary down until you have entered more employees"), 0,
                Firm(), QStringLiteral("An Error has occurred"), QString(), 2, true);
            changed();
            return;
        }
        control(QStringLiteral("cmdMemo")).down = !IsNull(datPays.value(QStringLiteral("Details")));
        repositionTrace = QStringLiteral("got memo");
        const QString position = TranslateText(QStringLiteral("|0| of |1|"),
                                               QStringList{QString::number(datPays.AbsolutePosition() + 1),
                                                           QString::number(datPays.RecordCount())});
        control(QStringLiteral("datPays")).caption = position;
        repositionTrace = QStringLiteral("datpays.caption=") + position;
        const QVariant reference = datPays.value(QStringLiteral("Reference"));
        QString status;
        if (!IsNull(reference)) {
            status =
                TranslateText(QStringLiteral("Committed, reference: |0|"), QStringList{reference.toString()});
            control(QStringLiteral("cmdPrintPay")).caption = QStringLiteral("&Pay Slip");
        } else {
            status = QStringLiteral("Uncommitted");
            control(QStringLiteral("cmdPrintPay")).caption = QStringLiteral("&Commit");
        }
        repositionTrace = QStringLiteral("cmdprintpay.caption=") + caption(QStringLiteral("cmdPrintPay"));
        control(lblpayment(8)).caption = status;
        skipErrors(
            [&] { control(QStringLiteral("CalWage")).tag = CDate(datPays.value(QStringLiteral("Date"))); });
        repositionTrace =
            QStringLiteral("calwage.value = ") + control(QStringLiteral("CalWage")).tag.toString();
        PAYEText = caption(QStringLiteral("txtPAYE"));
        const bool editable = IsNull(reference);
        SetPayEditable(editable);
        repositionTrace =
            QStringLiteral("editable = ") + (editable ? QStringLiteral("True") : QStringLiteral("False"));
        SetPAYELock(control(QStringLiteral("txtPAYE")), editable);
        repositionTrace = QStringLiteral("done editpayesettings");
    } catch (const VbError& e) {
        reportTrapped(e, QStringLiteral(" datpays_reposition ") + repositionTrace);
    } catch (const std::exception& e) {
        reportTrapped(toVbError(e), QStringLiteral(" datpays_reposition ") + repositionTrace);
    }
    changed();
}

// --- deleting --------------------------------------------------------------------------------------

void WageScreen::cmdDelete_Click() {
    hourglass(true);
    if (datPays.RecordCount() > 0 && !datPays.EOF_()) {
        // As the file holds the pay now, not as the screen last read it.
        const bool committed = committedNow();
        if (datPays.RecordCount() > 0 && !datPays.EOF_()) DeletePayment(committed, employeeName());
    }
    if (datPays.RecordCount() > 0 && !datPays.EOF_())
        control(lblpayment(10)).caption = intervalCaption(datPays);
    else
        control(lblpayment(10)).caption.clear();
    hourglass(false);
    changed();
}

void WageScreen::DeletePayment(bool committed, const QString& name) {
    QString text =
        committed
            ? QStringLiteral("This payment has already been committed.  Are you sure you want to delete it?")
            : QStringLiteral("Are you sure you want to delete this payment?");
    QString subHeading = QStringLiteral("Delete Payment");
    if (datPays.RecordCount() == 1) {
        text += QStringLiteral("\r\n\r\n") +
                TranslateText(QStringLiteral("As this is the only pay it will remove |0| from the Quillary"),
                              QStringList{name});
        subHeading = QStringLiteral("Delete from Quillary?");
    }
    if (ShowMessage(text, 4, Firm(), QStringLiteral("Please Confirm"), subHeading, 9, true) != 6) return;
    const qint32 wageID = CLng(datPays.value(QStringLiteral("WageID")));
    // What the labels staged for the pay goes with it.
    datPays.discardStaged();
    const PayDeletion deletion = DeletePay(App().WageDatabase, wageID);
    if (!deletion.deleted) {
        ShowMessage(deletion.failure, 0, Firm(), QStringLiteral("An Error has Occurred"), QString(), 16, true);
    } else if (!deletion.notice().isEmpty()) {
        ShowMessage(deletion.notice(), 0, Firm(), QStringLiteral("Pay Deleted"), QString(), 64, true);
    }
    datPays.Refresh();
    if (datPays.RecordCount() > 0) datPays.MoveLast();
}

bool WageScreen::DeleteEmployee(const QString& name) {
    if (ShowMessage(
            TranslateText(QStringLiteral("Are you sure you want to remove |0| completely from the Quillary?"),
                          QStringList{name}),
            4, Firm(), QStringLiteral("Please Confirm"), QString(), 9, true) != 6)
        return false;
    bool removed = false;
    trap(QStringLiteral("DeleteEmployee"), [&] {
        AppContext& app = App();
        app.WageDatabase.execute(QStringLiteral("DELETE From Employees WHERE EmployeeID =") +
                                 QString::number(app.CurrentEmployeeID));
        Database farm = openOrCreate(DatabaseKind::Farm, DataFileName());
        auto flag = farm.openRecordset(
            QStringLiteral("SELECT Addresses.WageFlag From Addresses WHERE (((Addresses.AddressID)=") +
            QString::number(app.CurrentAddressID) + QStringLiteral("));"));
        if (!flag->EOF_()) {
            flag->Edit();
            flag->setValue(QStringLiteral("WageFlag"), false);
            flag->Update();
        }
        flag->Close();
        farm.close();
        removed = true;
    });
    return removed;
}

void WageScreen::reloadEmployees() {
    InitData(*this);
    if (FillEmployeeArray() > 0) FillEmployeeCombo();
}

// --- properties ------------------------------------------------------------------------------------

void WageScreen::setAddressID(qint32 value) {
    m_addressID = value;
    App().CurrentAddressID = value;
    InitData(*this);
    FillEmployeeArray();
    FillEmployeeCombo();
    SetEmpArray(value, QStringLiteral("address"));
    if (GlobalOldTab == 1) leave.initPage();
    SelectCurrentEmp();
}

} // namespace ql
