#include "OneOff.h"
#include "AddPay.h"
#include "AppContext.h"
#include "ExtraPay.h"
#include "PayView.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

QString shortDate(const QDate& d) {
    return Format(QVariant(d), QStringLiteral("short date"));
}
QString currencyText(const QVariant& v) {
    return Format(v, QStringLiteral("currency"));
}

// Only tax types of exactly one step are offered: flat rates.
const QString kTaxTypes =
    QStringLiteral("SELECT TaxSteps.taxtypeID, TaxTypes.Taxname "
                   "FROM TaxTypes INNER JOIN TaxSteps ON TaxTypes.TaxTypeID = TaxSteps.taxtypeID "
                   "GROUP BY TaxSteps.taxtypeID, TaxTypes.Taxname, TaxTypes.[Order] "
                   "HAVING ((Count(TaxSteps.TaxStepsID))=1) "
                   "ORDER BY TaxTypes.[Order];");

} // namespace

bool OneOffForm::selectByItemData(ComboModel& combo, qint32 id) {
    for (int i = 0; i < combo.count(); ++i)
        if (combo.itemData(i) == id) {
            combo.setSelectedIndex(i);
            return true;
        }
    return false;
}

void OneOffForm::Form_Load(const QVariant& date) {
    Database& db = App().WageDatabase;
    skipErrors([&] { EnsureExtraPayTaxType(db); });
    FillDaoVBCombo(QStringLiteral("SELECT PaymentNameID, PayUnitname FROM PaymentNames "), cmbPayName, db, 0,
                   false, QString(), false, true, false);
    FillDaoVBCombo(kTaxTypes, cmbTaxType, db, 0, false, QString(), false, true, false);
    openedFor = IsDate(date) ? CDate(date) : Today();
    Text1[0] = shortDate(openedFor);
    pickerDate = openedFor;
    cmdOKEnabled = false;
}

void OneOffForm::picker_Change(const QDate& date) {
    pickerDate = date;
    Text1[0] = shortDate(date);
}

void OneOffForm::Text1_GotFocus(int index) {
    if (index == 1 || index == 2) remembered = IsNumeric(Text1[index]) ? Text1[index] : currencyText(0);
}

void OneOffForm::Text1_Enter(int index) {
    if (index == 1) focusRequest = QStringLiteral("cmbTaxType");
}

void OneOffForm::Text1_LostFocus(int index) {
    if (index == 0) {
        Text1[0] = IsDate(Text1[0]) ? shortDate(CDate(Text1[0])) : shortDate(Today());
    } else if (index == 1 || index == 2) {
        Text1[index] = IsNumeric(Text1[index]) ? currencyText(CDbl(Text1[index])) : remembered;
    }
    if (index == 1) {
        CALCOneOffPAYE();
        Text1[2] = currencyText(QVariant::fromValue(PAYE));
    }
    // The two lists play no part in this test.
    cmdOKEnabled = false;
    if (IsDate(Text1[0]) && IsNumeric(Text1[1]) && IsNumeric(Text1[2])) {
        cmdOKEnabled = true;
        focusRequest = QStringLiteral("cmdOK");
    }
}

void OneOffForm::cmbTaxType_Click() {
    CALCOneOffPAYE();
    Text1[2] = currencyText(QVariant::fromValue(PAYE));
}

void OneOffForm::notLiable_LostFocus() {
    notLiableText = IsNumeric(notLiableText) ? currencyText(CDbl(notLiableText)) : QString();
    cmbTaxType_Click();
}

void OneOffForm::CALCOneOffPAYE() {
    PAYE = Currency();
    extraPay.reset();
    trap(QStringLiteral("CALCOneOffPAYE"), [&] {
        if (!IsNumeric(Text1[1]) || cmbTaxType.selectedIndex() < 0) return;
        const Currency amount = RoundCurrency(Text1[1]);
        const qint32 taxType = cmbTaxType.itemData(cmbTaxType.selectedIndex());
        const QString query = QStringLiteral("SELECT upperlimit, taxrate From TaxSteps WHERE taxtypeID=") +
                              QString::number(taxType) + QStringLiteral(" ORDER BY upperlimit;");
        // Neither spread over a year nor tied to a pay interval: one pay a year, rounding alone.
        qint32 closingProcess = 3;
        CalcTaxSteps(query, amount, 1.0f, record, PAYE, closingProcess);
        // An extra pay of a New Zealand employee: Inland Revenue's extra-pay method.
        if (IsExtraPayTaxType(App().WageDatabase, taxType) && IsDate(Text1[0])) {
            const Currency notLiable = IsNumeric(notLiableText) ? RoundCurrency(notLiableText) : Currency();
            extraPay = ExtraPayTaxOf(App().CurrentEmployeeID, CDate(Text1[0]), amount, notLiable);
            if (extraPay) {
                PAYE = extraPay->paye;
                record.PAYE = extraPay->paye;
            }
        }
        record.TaxableAmount = amount;
        record.TaxTypeID = taxType;
        const QVariant interval = App().WageDatabase.scalar(
            QStringLiteral("SELECT PayIntervalID From PayInterval WHERE Numberofdays=0 AND Paysperyear=0;"));
        record.PayIntervalID = IsNull(interval) ? 0 : CLng(interval);
    });
}

void OneOffForm::cmdOK_Click() {
    Cancelled = false;
    Form_Unload();
}

void OneOffForm::cmdCancel_Click() {
    Cancelled = true;
    Form_Unload();
}

void OneOffForm::Form_Unload() {
    if (m_unloaded) return;
    m_unloaded = true;
    if (Cancelled) return;
    Currency amount;
    skipErrors([&] { amount = RoundCurrency(Text1[1]); });
    // The tax is the calculated one, whatever the PAYE box shows; an extra pay's student loan comes off too.
    const Currency studentLoan = extraPay ? extraPay->studentLoan : Currency();
    const Currency takeHome = amount - PAYE - studentLoan;
    if (cmbPayName.selectedIndex() < 0 || !IsDate(Text1[0])) return;
    AppContext& app = App();
    qint32 wageID = 0;
    skipErrors([&] {
        const EmployeeRecord& employee = app.EmployeeArray.at(app.CurrentEmployee);
        AddBlankWage(employee.EmployeeID, Text1[0], Currency::fromDouble(1.0), wageID, GetIntervalName(),
                     employee.TaxCode, true, amount, PAYE, takeHome);
    });
    madeWageID = wageID;
    skipErrors([&] { SavePaymentDetails(wageID, amount, cmbPayName.itemData(cmbPayName.selectedIndex())); });
    skipErrors([&] { AddTaxDetail(wageID, record); });
    if (extraPay && wageID != 0) skipErrors([&] { SaveExtraPayFigures(wageID, *extraPay); });
}

void SavePaymentDetails(qint32 wageID, Currency amount, qint32 paymentNameID) {
    trap(QStringLiteral("SavePaymentDetails"), [&] {
        auto rs = App().WageDatabase.openRecordset(QStringLiteral("PaymentDetails"), RecordsetType::Dynaset);
        rs->AddNew();
        rs->setValue(QStringLiteral("WageID"), wageID);
        rs->setValue(QStringLiteral("PaymentNameID"), paymentNameID);
        rs->setValue(QStringLiteral("EquivPayRate"), QVariant::fromValue(amount));
        rs->setValue(QStringLiteral("DetailHours"), 1);
        rs->setValue(QStringLiteral("Payment"), QVariant::fromValue(amount));
        rs->Update();
        rs->Close();
    });
}

void AfterOneOffDialog(PayView& form) {
    skipErrors([&] { form.datPays.Refresh(); });
    skipErrors([&] { form.datPays.MoveLast(); });
    skipErrors([&] { App().CurrentWageID = CLng(form.datPays.value(QStringLiteral("WageID"))); });
}

} // namespace ql
