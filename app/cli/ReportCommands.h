#pragma once
// The printed reports of quillary-cli: a print runs as on the desktop up to the report screen, which
// here writes its PDF file instead of waiting for a button.
#include <QString>
#include <functional>

namespace ql {
class ScriptedDialogs;
}

namespace cli {

// Runs print (a procedure that shows the report screen) with the screen writing file. A report that
// does not come out throws CliFailure with the message the screen showed.
void printToPdf(const QString& file, ql::ScriptedDialogs& dialogs, const std::function<void()>& print);

// The payslip of a committed pay as PDF, laid out as the print path lays it out.
void writePaySlipPdf(qint32 wageID, const QString& file);

} // namespace cli
