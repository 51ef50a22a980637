#include "PrintPaySlip.h"
#include "ReportControl.h"
#include "ReportDriver.h"
#include "ReportScreen.h"
#include "data/FarmDetails.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"

namespace ql {

namespace {
QString asText(const QVariant& v) {
    if (IsNull(v)) return QString();
    return v.typeId() == QMetaType::QString ? v.toString() : CStr(v);
}
} // namespace

QString GetPayMemo() {
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("select Details from Wages where WageID = %1").arg(App().CurrentWageID),
        RecordsetType::Snapshot);
    QString memo;
    if (!rs->EOF_()) memo = asText(rs->value(0));
    rs->Close();
    return memo;
}

void PreparePaySlip(ReportScreen& screen, PayView& form, const QString& dateLine, const QString& reference,
                    const QVariant& payDate, bool showMemo) {
    AppContext& app = App();
    const QString reportName = kPaySlipReport;
    // Formed as the slip's caption of the employer's number; the layout carries its own.
    const QString taxNumberCaption =
        TranslateText(QStringLiteral("|0| Number:"), QStringList{TaxNumberName()});
    Q_UNUSED(taxNumberCaption);
    QString address1, address2, address3;
    GetEmployerAddress(address1, address2, address3);
    const QString employerNumber = GetIRDNumber();
    const QString payNumber = form.caption(QStringLiteral("datPays"));
    const EmployeeRecord employee = app.EmployeeArray.value(app.CurrentEmployee);
    const QString name = employee.NameFirstLast;
    const QString employeeNumber =
        employee.IRDNumber.isEmpty() ? QStringLiteral("Unknown") : employee.IRDNumber;

    const QString title = TranslateText(QStringLiteral("Payslip For |0|"), QStringList{name});
    const QString titleFormula =
        QStringLiteral("ReportName = '") + QStringLiteral("Payslip For ") + EscapeReportText(name) + u'\'';
    const QString paidText = asText(payDate);
    const QString referenceLines =
        TranslateText(QStringLiteral("Reference: |0|\r\nPaid on: |1|"), QStringList{reference, paidText});

    ReportControl& report = screen.cry_report;
    ClearReportControl(report);
    SetReportFile(reportName, report);
    report.setDataFiles(0, WageFileName());

    const QString memo = showMemo ? QStringLiteral("Memo='") + EscapeReportText(GetPayMemo()) + u'\''
                                  : QStringLiteral("Memo=''");
    const QStringList formulas{
        QStringLiteral("UserName = \"") + GetFarmName() + QStringLiteral(" - ") + UserLabel() + u'"',
        QStringLiteral("DateLine = '") + dateLine + u'\'',
        titleFormula,
        QStringLiteral("Reference = '") + reference + u'\'',
        QStringLiteral("PayDate='") + paidText + u'\'',
        QStringLiteral("Address1='") + EscapeReportText(address1) + u'\'',
        QStringLiteral("PayNumber='") + payNumber + u'\'',
        QStringLiteral("IRDNumber='") + employerNumber + u'\'',
        QStringLiteral("EIRDNum='") + employeeNumber + u'\'',
        QStringLiteral("Employee='") + EscapeReportText(name) + u'\'',
        QStringLiteral("Employer='") + EscapeReportText(GetFarmName()) + u'\'',
        QStringLiteral("Address2='") + EscapeReportText(address2) + u'\'',
        QStringLiteral("Address3='") + EscapeReportText(address3) + u'\'',
        memo,
    };
    qint32 index = 0;
    for (const QString& f : formulas)
        report.setFormulas(index++, f);
    SetPageFormulas(report, index);

    screen.lbl_ReportInfo =
        title + QStringLiteral("\r\n") + dateLine + QStringLiteral("\r\n") + referenceLines;
}

void PrintPaySlip(PayView& form, const QString& dateLine, const QString& reference, const QVariant& payDate,
                  bool showMemo) {
    ReportScreen screen;
    PreparePaySlip(screen, form, dateLine, reference, payDate, showMemo);
    ShowReportScreen(screen);
}

} // namespace ql
