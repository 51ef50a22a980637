#include "PayRunSlips.h"
#include "frame/Settings.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "reports/PrintPaySlip.h"
#include "reports/ReportDriver.h"
#include "reports/ReportScreen.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include <QDir>
#include <QRegularExpression>

namespace ql {

namespace {
const QString kSection = QStringLiteral("PAYRUN");
} // namespace

QString SlipDeliveryCaption(SlipDelivery delivery) {
    switch (delivery) {
    case SlipDelivery::None:
        return QStringLiteral("No payslips");
    case SlipDelivery::PdfFolder:
        return QStringLiteral("Save as PDF files in a folder");
    case SlipDelivery::Preview:
        return QStringLiteral("One preview of every payslip");
    case SlipDelivery::Printer:
        return QStringLiteral("Print them all");
    case SlipDelivery::Email:
        return QStringLiteral("Email each to its employee");
    }
    return QString();
}

QString SlipDeliveryPhrase(SlipDelivery delivery, const QString& folder) {
    switch (delivery) {
    case SlipDelivery::None:
        return QStringLiteral("No payslips are made.");
    case SlipDelivery::PdfFolder:
        return QStringLiteral("The payslips are saved as PDF files in %1.").arg(QDir::toNativeSeparators(folder));
    case SlipDelivery::Preview:
        return QStringLiteral("The payslips are shown in one preview.");
    case SlipDelivery::Printer:
        return QStringLiteral("The payslips are printed together.");
    case SlipDelivery::Email:
        return QStringLiteral("Each payslip is emailed to its employee.");
    }
    return QString();
}

SlipDelivery ReadSlipDelivery() {
    int n = 0;
    skipErrors([&] { n = ReadIni(kSection, QStringLiteral("Payslips"), FamilyFile()).toInt(); });
    return n >= 0 && n <= 4 ? SlipDelivery(n) : SlipDelivery::None;
}

void SaveSlipDelivery(SlipDelivery delivery) {
    skipErrors(
        [&] { WriteSetting(kSection, QStringLiteral("Payslips"), QString::number(static_cast<int>(delivery))); });
}

QString ReadSlipFolder() {
    QString folder;
    skipErrors([&] { folder = ReadIni(kSection, QStringLiteral("PayslipFolder"), FamilyFile()); });
    return folder.isEmpty() ? DocumentsFolder() + QStringLiteral("/Payslips") : folder;
}

void SaveSlipFolder(const QString& folder) {
    skipErrors([&] { WriteSetting(kSection, QStringLiteral("PayslipFolder"), folder); });
}

QString PaySlipFileName(const PayRunSlip& slip) {
    QString name = QStringLiteral("Payslip %1 %2").arg(slip.employee, slip.paid.toString(Qt::ISODate));
    if (!slip.reference.isEmpty()) name += u' ' + slip.reference;
    name.remove(QRegularExpression(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1f]")));
    return name.simplified() + QStringLiteral(".pdf");
}

PayRunSlips::PayRunSlips() {
    m_previous = setPaySlipPrinter([this](const PaySlipRequest& request) {
        PayView* form = request.screen ? request.screen : App().WageForm;
        if (!form) return;
        PayRunSlip slip;
        slip.wageID = request.WageID;
        slip.employee = App().EmployeeArray.value(App().CurrentEmployee).NameFirstLast;
        slip.paid = request.PaymentDate;
        slip.reference = request.Reference;
        // The pay stays committed whatever befalls its slip; the run tells what could not be made.
        try {
            // The slip's lines are made for the pay the screen stands on, as its payslip view makes them.
            form->openView(6);
            ReportScreen screen;
            PreparePaySlip(screen, *form, request.Description, request.Reference,
                           QVariant(request.PaymentDate), request.ShowMemo);
            // What the report screen's output button does before it runs the report.
            UseCustomizedHeadings(screen.cry_report);
            slip.report = screen.cry_report.prepare();
            slips.append(slip);
        } catch (const std::exception& e) {
            failures << slip.employee + QStringLiteral(": ") + toVbError(e).description();
        }
    });
}

PayRunSlips::~PayRunSlips() {
    setPaySlipPrinter(std::move(m_previous));
}

} // namespace ql
