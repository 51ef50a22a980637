#include "PaydayTables.h"
#include "BankAccount.h"
#include "IrdNumber.h"
#include "data/FarmDetails.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"

namespace ql {

namespace {

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}

[[noreturn]] void refuse(const QString& message) {
    // 5 "Invalid procedure call or argument": the caller shows the description.
    throw VbError(5, QStringLiteral("Payday"), message);
}

} // namespace

void EnsurePaydayTables(Database& wage) {
    wage.executeScript(
        QStringLiteral("CREATE TABLE IF NOT EXISTS PaydaySettings ("
                       " PaydaySettingsID INTEGER PRIMARY KEY,"
                       " ContactName TEXT(255), ContactPhone TEXT(30), ContactEmail TEXT(255),"
                       " EmployerIRD TEXT(20), PayingAccount TEXT(30), LastDetailsFile DATETIME);"
                       "CREATE TABLE IF NOT EXISTS PaydayBankAccounts ("
                       " EmployeeID LONG PRIMARY KEY REFERENCES Employees(EmployeeID) ON DELETE CASCADE,"
                       " AccountNumber TEXT(30));"));
}

PaydaySettings LoadPaydaySettings(Database& wage) {
    EnsurePaydayTables(wage);
    PaydaySettings s;
    auto rs =
        wage.openRecordset(QStringLiteral("SELECT * FROM PaydaySettings ORDER BY PaydaySettingsID LIMIT 1"),
                           RecordsetType::Snapshot);
    if (!rs->EOF_()) {
        s.contactName = text(rs->value(QStringLiteral("ContactName")));
        s.contactPhone = text(rs->value(QStringLiteral("ContactPhone")));
        s.contactEmail = text(rs->value(QStringLiteral("ContactEmail")));
        s.employerIrd = text(rs->value(QStringLiteral("EmployerIRD")));
        s.payingAccount = text(rs->value(QStringLiteral("PayingAccount")));
        const QVariant last = rs->value(QStringLiteral("LastDetailsFile"));
        if (!IsNull(last) && IsDate(last)) s.lastDetailsFile = CDate(last);
    }
    rs->Close();
    return s;
}

QString PaydaySettingsProblem(const PaydaySettings& s) {
    if (!s.employerIrd.trimmed().isEmpty() && !IsValidIrdNumber(s.employerIrd))
        return QStringLiteral("The employer's IRD number %1 fails Inland Revenue's check. Please check it.")
            .arg(s.employerIrd.trimmed());
    if (!s.payingAccount.trimmed().isEmpty()) {
        const QString problem = BankAccountProblem(s.payingAccount);
        if (!problem.isEmpty()) return problem;
    }
    if (!s.contactEmail.trimmed().isEmpty() && !s.contactEmail.contains(u'@'))
        return QStringLiteral("\"%1\" is not an email address.").arg(s.contactEmail.trimmed());
    for (const QChar c : s.contactPhone)
        if (!c.isDigit() && c != u' ' && c != u'-' && c != u'+' && c != u'(' && c != u')')
            return QStringLiteral("A phone number holds digits only.");
    return QString();
}

void SavePaydaySettings(Database& wage, const PaydaySettings& s) {
    const QString problem = PaydaySettingsProblem(s);
    if (!problem.isEmpty()) refuse(problem);
    EnsurePaydayTables(wage);
    wage.execute(QStringLiteral("DELETE FROM PaydaySettings"));
    wage.execute(
        QStringLiteral(
            "INSERT INTO PaydaySettings (PaydaySettingsID, ContactName, ContactPhone, "
            "ContactEmail, EmployerIRD, PayingAccount, LastDetailsFile) VALUES (1, ?, ?, ?, ?, ?, ?)"),
        {s.contactName.trimmed(), s.contactPhone.trimmed(), s.contactEmail.trimmed(), s.employerIrd.trimmed(),
         s.payingAccount.trimmed(),
         s.lastDetailsFile.isValid() ? QVariant(s.lastDetailsFile.toString(Qt::ISODate)) : QVariant()});
}

QString EmployerIrdNumber(Database& wage) {
    const QString own = LoadPaydaySettings(wage).employerIrd;
    return own.isEmpty() ? GetIRDNumber() : own;
}

QString EmployeeBankAccount(Database& wage, qint32 employeeID) {
    EnsurePaydayTables(wage);
    return text(
        wage.scalar(QStringLiteral("SELECT AccountNumber FROM PaydayBankAccounts WHERE EmployeeID = %1")
                        .arg(employeeID)));
}

void SetEmployeeBankAccount(Database& wage, qint32 employeeID, const QString& account) {
    EnsurePaydayTables(wage);
    if (account.trimmed().isEmpty()) {
        wage.execute(QStringLiteral("DELETE FROM PaydayBankAccounts WHERE EmployeeID = %1").arg(employeeID));
        return;
    }
    const QString problem = BankAccountProblem(account);
    if (!problem.isEmpty()) refuse(problem);
    if (wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE EmployeeID = %1").arg(employeeID))
            .toInt() == 0)
        refuse(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
    wage.execute(
        QStringLiteral("INSERT OR REPLACE INTO PaydayBankAccounts (EmployeeID, AccountNumber) VALUES (?, ?)"),
        {employeeID, account.trimmed()});
}

} // namespace ql
