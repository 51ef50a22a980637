#pragma once
// Inland Revenue's payday filing files, in the CSV layouts of its file upload service:
// the Employment Information file (a HEI2 header and one DEI line per pay) and the Employee Details
// file (a HED2 header, and for each new or departing employee a DED line followed by a TED line).
#include "data/Database.h"
#include <QDate>
#include <QString>
#include <QStringList>

namespace ql {

struct PaydayFile {
    QString text;      // the file's contents; empty when it must not be written
    QStringList toFix; // one line per employee (or the employer) whose IRD number fails the check
    QString refusal;   // why no file was made, in the system's words
    int lines = 0;     // employee lines in the file
    bool ok() const { return refusal.isEmpty(); }
};

// The payroll package and version the headers name.
QString PayrollPackageName();

// A tax code as the employee lines carry it: upper case without blanks ("M SL" gives "MSL").
QString EiTaxCode(const QString& taxCode);

// Pay cycle code of an interval by its pays per year (WK, FT, ...); empty when the layout has none.
QString PayCycleCode(float paysPerYear);

// The Employment Information file of every committed pay paid on paymentDate.
PaydayFile EmploymentInformationFile(Database& wage, const QDate& paymentDate);
// The Employee Details file of every employee hired or finished on or after since.
PaydayFile EmployeeDetailsFile(Database& wage, const QDate& since);

// Writes the text to path (replacing it); VbError with the system's message when it cannot.
void WritePaydayFile(const QString& path, const QString& text);

} // namespace ql
