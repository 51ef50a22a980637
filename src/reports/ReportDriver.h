#pragma once
// Preparing the report control for a print: clearing it, pointing it at a layout file of the report
// folder, the free formula slots, the customised headings and the page counter's labels.
#include <QString>

namespace ql {

class ReportControl;

// Empties the formulas from slot 0 up to the first empty one, the selection and the sort fields.
void ClearReportControl(ReportControl& report);
// The file name in the folder of the setting ReportDirectory.
void SetReportFile(const QString& name, ReportControl& report);
// The first empty formula slot, counted from 0.
qint32 NextFormula(ReportControl& report);
// The customised headings of CurrentReportID as formulas in the free slots. They are not escaped.
void UseCustomizedHeadings(ReportControl& report);
// "page = 'Page '" at index and "of = ' of '" after it; index grows by 2.
void SetPageFormulas(ReportControl& report, qint32& index);

// The text behind the farm name and " - " in the UserName formula: who is printing.
QString UserLabel();

} // namespace ql
