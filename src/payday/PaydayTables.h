#pragma once
// What the payday files need and the suite's shared tables do not hold, kept in two tables of this
// program's own in the payroll database: PaydaySettings (one row: the payroll contact, the employer's
// IRD number when it differs from the farm's, the paying bank account) and PaydayBankAccounts (each
// employee's bank account, removed with the employee). Both are created on first use.
#include "data/Database.h"
#include <QDate>
#include <QString>

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

// The employer IRD number the files carry: the one of the settings, else the farm's.
QString EmployerIrdNumber(Database& wage);

// The employee's account as it was typed, or the empty text.
QString EmployeeBankAccount(Database& wage, qint32 employeeID);
// Stores the account after checking it (VbError with the system's message when it fails);
// an empty text removes it.
void SetEmployeeBankAccount(Database& wage, qint32 employeeID, const QString& account);

} // namespace ql
