#pragma once
// What the payday files need and the suite's shared tables do not hold, kept in three tables of this
// program's own in the payroll database: PaydaySettings (one row: the payroll contact, the employer's
// IRD number when it differs from the farm's, the paying bank account), PaydayBankAccounts (each
// employee's bank account) and PaydayKiwiSaverStatus (each new employee's KiwiSaver status), the last
// two removed with the employee. All are created on first use.
#include "data/Database.h"
#include <QDate>
#include <QString>
#include <QStringList>

namespace ql {

struct PaydaySettings {
    QString contactName;
    QString contactPhone;
    QString contactEmail;
    QString employerIrd;   // empty: the farm's "GST Reg Number"
    QString payingAccount; // the employer's account the take-home pays leave from
    QDate lastDetailsFile; // the day up to which the last Employee Details file reported
};

void EnsurePaydayTables(Database& wage);

PaydaySettings LoadPaydaySettings(Database& wage);
// Refuses (VbError with the system's message) a typed IRD number or paying account that fails its
// check; an empty one is allowed.
void SavePaydaySettings(Database& wage, const PaydaySettings& settings);
// What is wrong with the settings before they are stored; empty when nothing is.
QString PaydaySettingsProblem(const PaydaySettings& settings);

// The payroll contact as Inland Revenue's Employment Information header takes it: a name of up to 20
// keyboard characters without commas, quotes, brackets or backslashes; a phone of up to 12 digits,
// letters, blanks or dashes; an email of up to 60 letters, digits and @ - _ . with one @, a dotted
// domain and no double dots. Each gives what is wrong, or the empty text; an empty value passes here
// (the file refuses a missing one when it is made).
inline constexpr int kContactNameLength = 20;
inline constexpr int kContactPhoneLength = 12;
inline constexpr int kContactEmailLength = 60;
QString PayrollContactNameProblem(const QString& name);
QString PayrollContactPhoneProblem(const QString& phone);
QString PayrollContactEmailProblem(const QString& email);
// The first of the three above that is not empty.
QString PayrollContactProblem(const QString& name, const QString& phone, const QString& email);

// The employer IRD number the files carry: the one of the settings, else the farm's.
QString EmployerIrdNumber(Database& wage);

// The employee's account as it was typed, or the empty text.
QString EmployeeBankAccount(Database& wage, qint32 employeeID);
// Stores the account after checking it (VbError with the system's message when it fails);
// an empty text removes it.
void SetEmployeeBankAccount(Database& wage, qint32 employeeID, const QString& account);

// The KiwiSaver status a new employee gave the employer, as the Employee Details file reports it:
// AE auto-enrolled, AK already a member, OK opting in, NK not eligible, CT casual or temporary.
const QStringList& KiwiSaverStatuses();
// The stored code, or the empty text.
QString EmployeeKiwiSaverStatus(Database& wage, qint32 employeeID);
// Stores the code (any case); VbError with the system's message for another text; empty removes it.
void SetEmployeeKiwiSaverStatus(Database& wage, qint32 employeeID, const QString& status);

} // namespace ql
