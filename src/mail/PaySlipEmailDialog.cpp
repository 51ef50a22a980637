#include "PaySlipEmailDialog.h"
#include "MailProgressDialog.h"
#include "PaySlipEmail.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "reports/PrintPaySlip.h"
#include "reports/ReportPreviewDialog.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace ql {

QString EmailShownPaySlip(qint32 wageID, const PreparedReport& report) {
    Database& wage = App().WageDatabase;
    const PaySlipMail mail = PaySlipMailOf(wage, wageID);
    const QString who = mail.employee.isEmpty() ? QStringLiteral("Pay %1").arg(wageID) : mail.employee;
    const QString reference =
        wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(wageID)).toString();
    if (reference.trimmed().isEmpty())
        return who + QStringLiteral(": the pay is not committed, so its payslip is not sent yet.");
    QTemporaryDir dir;
    if (!dir.isValid()) return who + QStringLiteral(": no temporary folder for its PDF.");
    const QString file = dir.filePath(QStringLiteral("payslip.pdf"));
    try {
        WriteReportPdf(report, file);
    } catch (const std::exception& e) {
        return who + QStringLiteral(": ") + toVbError(e).description();
    }
    QFile pdf(file);
    if (!pdf.open(QIODevice::ReadOnly)) return who + QStringLiteral(": its PDF was not written.");
    return SendPaySlipsShowingProgress({PreparePaySlipEmail(wage, wageID, pdf.readAll())}).value(0);
}

void installPaySlipEmailAction() {
    setReportScreenActions([](const PreparedReport& report) {
        QList<PreviewAction> actions;
        if (QFileInfo(report.reportFile).fileName().compare(kPaySlipReport, Qt::CaseInsensitive) != 0)
            return actions;
        const qint32 wageID = App().CurrentWageID;
        actions << PreviewAction{
            QStringLiteral("&Email..."), QStringLiteral("Email the payslip"), QStringLiteral("Ctrl+E"),
            [wageID, report](QWidget*) {
                const QString why = EmailShownPaySlip(wageID, report);
                const QString to = why.isEmpty() ? PaySlipMailOf(App().WageDatabase, wageID).to : QString();
                ShowMessage(why.isEmpty() ? QStringLiteral("The payslip was sent to %1.").arg(to)
                                          : QStringLiteral("The payslip was not sent: ") + why,
                            msg::OKOnly, Firm(), QStringLiteral("Email"), QString(),
                            why.isEmpty() ? msg::Information : msg::Warning, true);
            }};
        return actions;
    });
}

} // namespace ql
