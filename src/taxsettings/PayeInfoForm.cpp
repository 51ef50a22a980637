#include "PayeInfoForm.h"
#include "PayeHelp.h"
#include "data/PayeInfo.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

// The item data of the selection; a list without one raises "Invalid property array index".
qint32 selectedData(const ComboModel& combo) {
    if (combo.selectedIndex() < 0)
        raiseError(381, QStringLiteral("Quillary"), QStringLiteral("Invalid property array index"));
    return combo.itemData(combo.selectedIndex());
}

QString accountsSql() {
    return QStringLiteral("SELECT DISTINCTROW [Secondary Codes ID], [Cached Name]"
                          "From [Secondary Codes] ") +
           (CodeOrder() ? QStringLiteral("Order by [Secondary Codes ID];")
                        : QStringLiteral("Order by [Cached Name];"));
}

qint32 loadLong(Database& db, const QString& column, qint32 fallback) {
    const QVariant v = LoadPayeInfo(db, column, fallback);
    return IsNumeric(v) ? CLng(v) : 0;
}

} // namespace

PayeInfoForm::PayeInfoForm() = default;

PayeInfoForm::~PayeInfoForm() {
    skipErrors([&] { farm.close(); });
}

ComboModel& PayeInfoForm::cmbFreq1(int index) {
    if (index != 0)
        raiseError(340, QStringLiteral("Quillary"),
                   TranslateText(QStringLiteral("Control array element '|0|' doesn't exist"),
                                 QStringList{QString::number(index)}));
    return m_freq0;
}

void PayeInfoForm::Form_Load() {
    trap(QStringLiteral("frmPayeInfo.Form_Load"), [&] { FillPayeDetails(); });
    loaded = true;
}

void PayeInfoForm::FillPayeDetails() {
    farm.open(DataFileName());
    FillDaoVBCombo(QStringLiteral("SELECT DISTINCTROW Months, Prompt From [Tax Periods] "
                                  "ORDER BY [Tax Periods].Months;"),
                   m_freq0, farm, loadLong(farm, QStringLiteral("PayeFreq"), PAYEFreq()), false, QString(),
                   false, true, false);
    const QString sql = accountsSql();
    FillDaoVBCombo(sql, cmbHolding1, farm, loadLong(farm, QStringLiteral("PayeAccount"), PAYEAccount()),
                   false, QString(), false, true, false);
    FillDaoVBCombo(sql, cmbPayment, farm, loadLong(farm, QStringLiteral("PaymentAccount"), PaymentAccount()),
                   false, QString(), false, true, false);
    FillDaoVBCombo(sql, cmbWage1, farm, loadLong(farm, QStringLiteral("WageAccount"), WageAccount()), false,
                   QString(), false, true, false);
    FillDaoVBCombo(sql, cmbAdjust, farm, loadLong(farm, QStringLiteral("AdjustAccount"), AdjustAccount()),
                   false, QString(), false, true, false);
    const QString paye = PayAsYouEarn();
    captions.insert(QStringLiteral("lblPAYE1"), paye);
    chkNonCash = CBool(LoadPayeInfo(farm, QStringLiteral("PayeNonCash"), PAYENonCash()));
    FillDaoVBCombo(QStringLiteral("SELECT DISTINCTROW AddressID, BusName From Addresses "
                                  "Where (((Addresses.BusinessFlag) = True)) "
                                  "ORDER BY Addresses.BusName;"),
                   cmbTaxOffice, farm, loadLong(farm, QStringLiteral("PayeAddressID"), PAYEAddressID()),
                   false, QString(), false, true, false);
    const QStringList marks{IncomeTaxName(), paye};
    const QList<std::pair<const char*, const char*>> texts{
        {"Label1", "Frequency"},
        {"lblHolding", "|1| Heading"},
        {"Label16", "Wage Heading"},
        {"lblTaxOffice", "Pay |1| to:"},
        {"lblNoncash", "|1| made electronically"},
        {"lblAdjust", "Wage Deductions Heading"},
        {"lblpayment", "|1| Payment Heading"},
        {"lblPAYEStart", "Start Date"},
        {"cmdPartners(0)", "&OK"},
        {"cmdPartners(2)", "Cancel"},
    };
    for (const auto& [name, text] : texts)
        captions.insert(QString::fromLatin1(name), TranslateText(QString::fromLatin1(text), marks));
    ShowPayeHelp();
    QVariant startDefault = PAYEStart();
    if (PAYEStart() == ZeroDate) startDefault = PAYEStartText();
    const QVariant start = LoadPayeInfo(farm, QStringLiteral("PayeStart"), startDefault);
    txt_GSTDate2 = start.userType() == QMetaType::QString ? start.toString() : dateText(start);
}

void PayeInfoForm::ShowPayeHelp() {
    const PayeHelpTexts texts =
        BuildPayeHelp(PayAsYouEarn(), cmbWage1.selectedText(), cmbHolding1.selectedText(),
                      cmbPayment.selectedText(), chkNonCash);
    lbltaxationInfo = texts.taxationInfo;
    lblPayeNoncash = texts.payeNoncash;
}

void PayeInfoForm::cmbAdjust_GotFocus() {
    m_adjustIndex = cmbAdjust.selectedIndex();
}

void PayeInfoForm::cmbAdjust_Click() {
    if (cmbAdjust.selectedIndex() != cmbWage1.selectedIndex()) return;
    ShowMessage(
        QStringLiteral("Adjustments should not be put into the same account as the taxable Wage amount"),
        msg::OKOnly, Firm(), QStringLiteral("Invalid Entry"), QString(), msg::Warning, true);
    cmbAdjust.setSelectedIndex(m_adjustIndex);
}

bool PayeInfoForm::cmdPartners_Click(int index) {
    result.clear();
    if (index == 0) return true;
    if (index == 2) {
        result = QStringLiteral("Cancelled");
        ShowMessage(QStringLiteral("Turn 'Update Cashbook' off to continue"), msg::OKOnly, Firm(),
                    QStringLiteral("Cancel Selected"), QString(), msg::Information, true);
        return true;
    }
    return false;
}

void PayeInfoForm::Form_Unload() {
    skipErrors([&] { SavePayeDetails(); });
    skipErrors([&] { farm.close(); });
}

void PayeInfoForm::SavePayeDetails() {
    if (cmbHolding1.selectedIndex() <= -1) return;
    SavePayeInfo(farm, QStringLiteral("PAYEAccount"), selectedData(cmbHolding1));
    SavePayeInfo(farm, QStringLiteral("PAYEFreq"), selectedData(cmbFreq1(0)));
    SavePayeInfo(farm, QStringLiteral("WageAccount"), selectedData(cmbWage1));
    SavePayeInfo(farm, QStringLiteral("PaymentAccount"), selectedData(cmbPayment));
    if (IsDate(txt_GSTDate2)) SavePayeInfo(farm, QStringLiteral("PAYEStart"), CDate(txt_GSTDate2));
    if (cmbAdjust.selectedIndex() > -1 &&
        cmbAdjust.itemData(cmbAdjust.selectedIndex()) != selectedData(cmbWage1))
        SavePayeInfo(farm, QStringLiteral("AdjustAccount"), selectedData(cmbAdjust));
    // The income tax frequency has no list on this dialog: this step fails and ends the save, so
    // what follows is never stored. The order is kept as it stands.
    SavePayeInfo(farm, QStringLiteral("TaxFreq"), selectedData(cmbFreq1(1)));
    SavePayeInfo(farm, QStringLiteral("PAYENonCash"), chkNonCash);
    if (cmbTaxOffice.selectedIndex() > -1 && selectedData(cmbTaxOffice) > 0)
        SavePayeInfo(farm, QStringLiteral("PAYEAddressID"), selectedData(cmbTaxOffice));
}

} // namespace ql
