#pragma once
// The one table of an employee's fields by their option names ("first", "tax-code", ...): what the
// command line takes as --name VALUE, what a CSV file has as a column (the name without dashes), and
// how each is read into and written from EmployeeDetails. A field added here is a new option of
// `employee add/edit`, a new CSV column and a new column of the export at once.
#include "EmployeeDetails.h"
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <functional>

namespace ql {

struct EmployeeField {
    QString option;   // "tax-code"
    QString label;    // "Tax code", as messages name the field
    bool repeatable;  // given more than once (--deduction)
    // Reads typed text into the details; returns what is wrong (empty when nothing is). A repeatable
    // field is called once for each value, after the first call with an empty text clears it.
    std::function<QString(EmployeeDetails&, const QString&)> read;
    // The field as text, as it would be typed; a repeatable field's values joined by "; ".
    std::function<QString(const EmployeeDetails&)> write;
};

const QList<EmployeeField>& EmployeeFields();
const EmployeeField* FindEmployeeField(const QString& option);
// The option's CSV column: the option without dashes ("taxcode").
QString EmployeeColumnName(const QString& option);
const EmployeeField* FindEmployeeColumn(const QString& column);

// A problem with one field, in the system's words: "Tax code: ..." names the field.
struct FieldProblem {
    QString option;
    QString message;
};

// Applies typed values, in order, to details. Both --rate and --salary among them is refused; one of
// them clears the other. Returns every problem found.
QList<FieldProblem> ApplyEmployeeValues(EmployeeDetails& details, const QList<QPair<QString, QString>>& values);

// Dates as typed: ISO (2026-04-01) or New Zealand day first (1/04/2026). Invalid when neither.
QDate ParseTypedDate(const QString& text);
// A money amount or a number as typed: "1,234.50" or "$25.50". False when the text is no number.
bool ParseTypedNumber(const QString& text, double& value);

} // namespace ql
