#pragma once
// Inland Revenue's payday filing files, in the CSV layouts of its file upload service:
// the Employment Information file (a HEI2 header and one DEI line per pay) and the Employee Details
// file (a HED2 header, and for each new or departing employee a DED line followed by a TED line).
#include "data/Database.h"
#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

namespace ql {

struct PaydayFile {
    QString text;      // the file's contents; empty when it must not be written
    QStringList toFix; // one line per employee (or the employer) whose IRD number fails the check
    QString refusal;   // why no file was made, in the system's words
    QStringList notes; // names written otherwise than stored (letters without macrons, and the like)
    int lines = 0;     // employee lines in the file
    bool ok() const { return refusal.isEmpty(); }
};

// The payroll package and version the headers name.
QString PayrollPackageName();

// A tax code as the employee lines carry it: upper case without blanks ("M SL" gives "MSL").
QString EiTaxCode(const QString& taxCode);

// A tax code as the TED line carries it: the form of Inland Revenue's table ("MSL" gives "M SL").
QString TedTaxCode(const QString& taxCode);

// Pay cycle code of a pay: AH for a one-off (or an interval of no pays per year), DA for a daily
// interval, else WK, FT, HM, 4W, MT by the pays per year; empty when the layout has none.
QString PayCycleCode(float paysPerYear, float numberOfDays = 0, bool oneOff = false);

// The Employment Information file of every committed pay paid on paymentDate.
PaydayFile EmploymentInformationFile(Database& wage, const QDate& paymentDate);
// The Employee Details file of every employee hired or finished on or after since.
PaydayFile EmployeeDetailsFile(Database& wage, const QDate& since);

// A file's check: the problems of its text, none when it passes.
using FileCheck = std::function<QStringList(const QString& text)>;
// Writes the text to path (replacing it) when the text read back from the disk passes the check;
// VbError with the system's message, naming what (e.g. "payday filing file") and each problem, when it
// does not or cannot be written. A file that fails never takes the name.
void WritePaydayFile(const QString& path, const QString& text, const QString& what, const FileCheck& check);

} // namespace ql
