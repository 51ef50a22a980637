#pragma once
// The report control: a report file, the database file of each of its data sources, formulas by index
// (an empty text is a free slot), a record selection, sort fields, a destination, and the action that
// runs the report. Running reads the layout, fills it from the data files and hands the result to the
// output installed for the destination (the preview window, the printer, a PDF file). Failures are
// raised as run-time errors with the numbers of rpterr (ReportLayout.h).
#include "PreparedReport.h"
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>

namespace ql {

class ReportControl;

namespace crpt {
constexpr int ToWindow = 0;
constexpr int ToPrinter = 1;
constexpr int ToFile = 2; // a PDF file, PrintFileName
} // namespace crpt

// What an output does with a prepared report; it raises on failure.
using ReportOutput = std::function<void(const PreparedReport&, const ReportControl&)>;
// Installs the output of a destination (nullptr removes it); returns the one it replaces.
ReportOutput setReportOutput(int destination, ReportOutput output);

class ReportControl {
public:
    QString ReportFileName;
    QString SelectionFormula;
    int Destination = crpt::ToWindow;
    int WindowState = 0;           // 2: the preview opens maximised
    bool DiscardSavedData = false; // the report reads fresh data
    QString PrintFileName;         // the file of destination ToFile
    QString WindowTitle;

    // DataFiles(i), counted from 0.
    QString DataFiles(int index) const { return m_dataFiles.value(index); }
    void setDataFiles(int index, const QString& file);
    // Formulas(i): "name='value'" texts; unset and empty slots give the empty text.
    QString Formulas(int index) const { return m_formulas.value(index); }
    void setFormulas(int index, const QString& text);
    // SortFields(i): "+{Table.Column}" ascending, "-{Table.Column}" descending.
    QString SortFields(int index) const { return m_sortFields.value(index); }
    void setSortFields(int index, const QString& text);

    // Action = 1 runs the report. Any other value does nothing.
    void setAction(int action);
    int runs() const { return m_runs; } // reports run so far

    // The report as the action would hand it to the output.
    PreparedReport prepare() const;

private:
    QHash<int, QString> m_dataFiles;
    QStringList m_formulas;
    QStringList m_sortFields;
    int m_runs = 0;
};

// A formula text read as its name and value: name = 'text', "text", a number, or such values joined
// by "+" (chr(n) gives one character). An empty text gives an empty name. Raises BadFormula.
struct FormulaValue {
    QString name;
    QString value;
};
FormulaValue ParseFormula(const QString& text);

// The record selection in SQL: {Table.Column}, numbers, quoted texts, comparisons, and, or, not and
// parentheses. Anything else raises BadFormula.
QString SelectionToSql(const QString& selection);

} // namespace ql
