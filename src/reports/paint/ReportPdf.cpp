#include "ReportPdf.h"
#include "ReportPages.h"
#include "reports/ReportControl.h"
#include "reports/ReportLayout.h"
#include "runtime/VbError.h"
#include <QFile>
#include <QFileInfo>
#include <QPdfWriter>

namespace ql {

int WriteReportPdf(const PreparedReport& report, const QString& file) {
    return WriteReportsPdf(QList<PreparedReport>{report}, file);
}

int WriteReportsPdf(const QList<PreparedReport>& reports, const QString& file) {
    const auto cannot = [&] {
        raiseError(rpterr::OutputFailure, QStringLiteral("Crystal"),
                   QStringLiteral("The file %1 cannot be written.").arg(file));
    };
    if (file.isEmpty()) cannot();
    {
        // QPdfWriter says nothing of a file it cannot open; try it first.
        QFile probe(file);
        if (!probe.open(QIODevice::WriteOnly | QIODevice::Truncate)) cannot();
    }
    int pages = 0;
    {
        QPdfWriter writer(file);
        writer.setResolution(300);
        writer.setCreator(QStringLiteral("Quillary"));
        if (!reports.isEmpty()) writer.setTitle(reports.first().name);
        pages = paintReports(reports, writer);
    }
    if (pages == 0 || QFileInfo(file).size() == 0) cannot();
    return pages;
}

void installPdfOutput() {
    setReportOutput(crpt::ToFile, [](const PreparedReport& report, const ReportControl& control) {
        WriteReportPdf(report, control.PrintFileName);
    });
}

} // namespace ql
