#pragma once
// This program's own check of Inland Revenue's payday filing files against the field rules of the file
// upload specification: record layouts and field counts, the attribute of each field (ALPHA, ANUM,
// ANAM, NUM, PDEC, DEC, DATE, IRD, RANGE, EMAIL) with its size, the code lists (tax codes, pay cycles,
// child support codes, KiwiSaver codes, titles, countries, late opt-out reasons), the rules between
// fields, and the header's count and totals against the lines. Each problem is one line naming the
// line of the file and the employee (or the header) it concerns; none means the file passes.
#include <QString>
#include <QStringList>

namespace ql {

// The Employment Information file: a HEI2 header and its DEI lines.
QStringList CheckEmploymentInformationFile(const QString& text);
// The Employee Details file: a HED2 header, and DED lines each followed by its TED lines.
QStringList CheckEmployeeDetailsFile(const QString& text);

// The tax codes of Inland Revenue's table, as written in the files ("M SL"; the DEI line also takes
// them without the blank, "MSL").
const QStringList& IrTaxCodes();
// The pay cycle codes of the DEI line: WK, FT, 4W, MT, DA, AH, HM.
const QStringList& IrPayCycles();

} // namespace ql
