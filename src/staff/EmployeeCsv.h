#pragma once
// Employees to and from a CSV file (UTF-8, a header row of column names, fields quoted when they hold a
// comma, a quote or a line break). The columns are the options of `employee add` without their dashes;
// a deduction column holds its lines separated by ";". Dates are ISO or New Zealand day first.
#include "data/Database.h"
#include <QString>
#include <QStringList>

namespace ql {

// The file's rows as fields; the header row first. False with what is wrong when the quoting is broken.
bool ParseCsv(const QString& text, QList<QStringList>& rows, QString& problem);
QString CsvLine(const QStringList& fields);

// Adds every employee of the file, or none: a file with a bad row is refused (VbError 5) with every
// bad row and field named ("Row 3: IRD number: ..."). An empty field keeps the field's default. A
// row whose IRD number is already on the payroll, or twice in the file, is a bad row. Returns the
// new employees' ids.
QList<qint32> ImportEmployees(Database& wage, Database& farm, const QString& path);
// Writes every employee, finished ones too, with every column; returns how many.
int ExportEmployees(Database& wage, Database& farm, const QString& path);

} // namespace ql
