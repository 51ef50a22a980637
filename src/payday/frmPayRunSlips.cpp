// Where the pay run's payslips go once the run is committed.
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frmPayRun.h"
#include "mail/MailProgressDialog.h"
#include "reports/ReportPreviewDialog.h"
#include "reports/paint/ReportPages.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QTemporaryDir>

namespace ql {

namespace {

QList<PreparedReport> reportsOf(const QList<PayRunSlip>& slips) {
    QList<PreparedReport> reports;
    for (const PayRunSlip& s : slips)
        reports << s.report;
    return reports;
}

} // namespace

QString frmPayRun::deliverSlips(const QList<PayRunSlip>& slips, QStringList& failures) {
    m_slipFiles.clear();
    if (slips.isEmpty()) return QString();
    const QString title =
        QStringLiteral("Payslips of %1").arg(dtpRunDate->date().toString(QStringLiteral("d MMM yyyy")));
    switch (SlipDelivery(cboPayslips->currentIndex())) {
    case SlipDelivery::None:
        return QString();
    case SlipDelivery::PdfFolder: {
        const QString folder = txtSlipFolder->text().trimmed();
        if (folder.isEmpty() || !QDir().mkpath(folder)) {
            for (const PayRunSlip& s : slips)
                failures << s.employee + QStringLiteral(": the folder \"%1\" cannot be made.").arg(folder);
            return QString();
        }
        for (const PayRunSlip& s : slips) {
            const QString file = QDir(folder).filePath(PaySlipFileName(s));
            try {
                WriteReportPdf(s.report, file);
                m_slipFiles << file;
            } catch (const std::exception& e) {
                failures << s.employee + QStringLiteral(": ") + toVbError(e).description();
            }
        }
        return QStringLiteral("%1 payslips were saved as PDF files in %2.")
            .arg(m_slipFiles.size())
            .arg(QDir::toNativeSeparators(folder));
    }
    case SlipDelivery::Preview: {
        QList<PreviewAction> extra;
        if (emailSlips)
            extra << PreviewAction{QStringLiteral("&Email..."), QStringLiteral("Email the payslips"),
                                   QStringLiteral("Ctrl+E"), [this, &slips](QWidget*) {
                                       const QStringList failed = emailSlips(slips);
                                       ShowMessage(failed.isEmpty()
                                                       ? QStringLiteral("%1 payslips were sent.").arg(slips.size())
                                                       : QStringLiteral("These payslips were not sent:\n") +
                                                             failed.join(u'\n'),
                                                   msg::OKOnly, Firm(), QStringLiteral("Email"), QString(),
                                                   failed.isEmpty() ? msg::Information : msg::Warning, true);
                                   }};
        PreviewReports(reportsOf(slips), title, this, extra);
        return QStringLiteral("%1 payslips were shown in one preview.").arg(slips.size());
    }
    case SlipDelivery::Printer: {
        QPrinter printer(QPrinter::HighResolution);
        printer.setPageLayout(reportPageLayout(slips.first().report));
        printer.setDocName(title);
        QPrintDialog dialog(&printer, this);
        dialog.setObjectName(QStringLiteral("ReportPrintDialog"));
        if (dialog.exec() != QDialog::Accepted) {
            for (const PayRunSlip& s : slips)
                failures << s.employee + QStringLiteral(": the print was cancelled.");
            return QString();
        }
        paintReports(reportsOf(slips), printer);
        return QStringLiteral("%1 payslips were printed.").arg(slips.size());
    }
    case SlipDelivery::Email: {
        if (!emailSlips) {
            for (const PayRunSlip& s : slips)
                failures << s.employee + QStringLiteral(": email is not set up in this program.");
            return QString();
        }
        const QStringList failed = emailSlips(slips);
        failures << failed;
        return QStringLiteral("%1 payslips were emailed.").arg(slips.size() - failed.size());
    }
    }
    return QString();
}

QStringList EmailRunSlips(Database& wage, const QList<PayRunSlip>& slips) {
    // Each slip painted and its message made ready here; the sends then run aside, in turn.
    QList<PaySlipSending> ready;
    QTemporaryDir dir;
    for (const PayRunSlip& s : slips) {
        const QString file = dir.filePath(QStringLiteral("slip%1.pdf").arg(s.wageID));
        try {
            WriteReportPdf(s.report, file);
            QFile pdf(file);
            if (pdf.open(QIODevice::ReadOnly)) {
                ready << PreparePaySlipEmail(wage, s.wageID, pdf.readAll());
                continue;
            }
            ready << PaySlipSending{s.employee, QStringLiteral("its PDF was not written."), {}, {}, {}};
        } catch (const std::exception& e) {
            ready << PaySlipSending{s.employee, toVbError(e).description(), {}, {}, {}};
        }
    }
    return SendPaySlipsShowingProgress(ready);
}

} // namespace ql
