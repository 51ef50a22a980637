#pragma once
// The PDF output of the report control (destination 2, the file PrintFileName). Needs a
// QGuiApplication, as every painter on text does.
#include "reports/PreparedReport.h"
#include <QString>

namespace ql {

// Writes the report to file; a file that cannot be written raises OutputFailure. Returns the pages.
int WriteReportPdf(const PreparedReport& report, const QString& file);
// The reports one after another in one file, each from a new page; the same failures.
int WriteReportsPdf(const QList<PreparedReport>& reports, const QString& file);

// Makes WriteReportPdf the output of destination 2.
void installPdfOutput();

} // namespace ql
