#include "PaydayTables.h"
#include "BankAccount.h"
#include "IrdNumber.h"
#include "PaydayText.h"
#include "data/FarmDetails.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include <algorithm>

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
                       " AccountNumber TEXT(30));"
                       "CREATE TABLE IF NOT EXISTS PaydayKiwiSaverStatus ("
                       " EmployeeID LONG PRIMARY KEY REFERENCES Employees(EmployeeID) ON DELETE CASCADE,"
                       " Status TEXT(2));"));
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

QString PayrollContactNameProblem(const QString& name) {
    const QString n = name.trimmed();
    if (n.isEmpty()) return QString();
    const QString plain = PlainAscii(n);
    for (const QChar c : n)
        if (!IsKeyboardCharacter(c)) {
            if (plain != n && !plain.isEmpty() && std::all_of(plain.begin(), plain.end(), IsKeyboardCharacter))
                return QStringLiteral("The payroll contact's name \"%1\" holds letters Inland Revenue's file "
                                      "does not take. Please type it as \"%2\".")
                    .arg(n, plain.left(kContactNameLength));
            return QStringLiteral("The payroll contact's name \"%1\" holds characters Inland Revenue's file "
                                  "does not take (commas, quotes, brackets or backslashes).")
                .arg(n);
        }
    if (n.size() > kContactNameLength)
        return QStringLiteral("The payroll contact's name is %1 long: Inland Revenue takes up to %2.")
            .arg(Counted(n.size(), QStringLiteral("character"), QStringLiteral("characters")))
            .arg(kContactNameLength);
    return QString();
}

QString PayrollContactPhoneProblem(const QString& phone) {
    const QString p = phone.trimmed();
    if (p.isEmpty()) return QString();
    bool ok = p.size() <= kContactPhoneLength;
    for (const QChar c : p)
        ok = ok && ((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
                    c == u' ' || c == u'-');
    if (ok) return QString();
    return QStringLiteral("The payroll contact's phone \"%1\" must be up to %2 digits, letters, blanks or "
                          "dashes, without \"+\" or brackets (e.g. 03 555 0100).")
        .arg(p)
        .arg(kContactPhoneLength);
}

QString PayrollContactEmailProblem(const QString& email) {
    const QString e = email.trimmed();
    if (e.isEmpty()) return QString();
    const QString wrong = QStringLiteral("\"%1\" is not an email address Inland Revenue takes: ").arg(e);
    if (e.size() > kContactEmailLength)
        return wrong + QStringLiteral("it is longer than %1 characters.").arg(kContactEmailLength);
    for (const QChar c : e)
        if (!((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'@' ||
              c == u'-' || c == u'_' || c == u'.'))
            return wrong + QStringLiteral("it may hold only letters, digits and @ - _ .");
    const qsizetype at = e.indexOf(u'@');
    const QString local = e.left(at), domain = e.mid(at + 1);
    if (at <= 0 || e.count(u'@') != 1 || domain.isEmpty())
        return wrong + QStringLiteral("it needs one @ between a name and a domain.");
    if (e.contains(QStringLiteral("..")) || local.startsWith(u'.') || local.endsWith(u'.') ||
        domain.startsWith(u'.') || domain.endsWith(u'.') || !domain.contains(u'.'))
        return wrong + QStringLiteral("its dots are misplaced.");
    return QString();
}

QString PayrollContactProblem(const QString& name, const QString& phone, const QString& email) {
    for (const QString& p : {PayrollContactNameProblem(name), PayrollContactPhoneProblem(phone),
                             PayrollContactEmailProblem(email)})
        if (!p.isEmpty()) return p;
    return QString();
}

QString PaydaySettingsProblem(const PaydaySettings& s) {
    if (!s.employerIrd.trimmed().isEmpty() && !IsValidIrdNumber(s.employerIrd))
        return QStringLiteral("The employer's IRD number %1 fails Inland Revenue's check. Please check it.")
            .arg(s.employerIrd.trimmed());
    if (!s.payingAccount.trimmed().isEmpty()) {
        const QString problem = BankAccountProblem(s.payingAccount);
        if (!problem.isEmpty()) return problem;
    }
    return PayrollContactProblem(s.contactName, s.contactPhone, s.contactEmail);
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

const QStringList& KiwiSaverStatuses() {
    static const QStringList codes{QStringLiteral("AE"), QStringLiteral("AK"), QStringLiteral("OK"),
                                   QStringLiteral("NK"), QStringLiteral("CT")};
    return codes;
}

QString EmployeeKiwiSaverStatus(Database& wage, qint32 employeeID) {
    EnsurePaydayTables(wage);
    return text(wage.scalar(
        QStringLiteral("SELECT Status FROM PaydayKiwiSaverStatus WHERE EmployeeID = %1").arg(employeeID)));
}

void SetEmployeeKiwiSaverStatus(Database& wage, qint32 employeeID, const QString& status) {
    EnsurePaydayTables(wage);
    const QString code = status.trimmed().toUpper();
    if (code.isEmpty()) {
        wage.execute(QStringLiteral("DELETE FROM PaydayKiwiSaverStatus WHERE EmployeeID = %1").arg(employeeID));
        return;
    }
    if (!KiwiSaverStatuses().contains(code))
        refuse(QStringLiteral("\"%1\" is not a KiwiSaver status: use AE (auto-enrolled), AK (already a "
                              "member), OK (opting in), NK (not eligible) or CT (casual or temporary).")
                   .arg(status.trimmed()));
    if (wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE EmployeeID = %1").arg(employeeID))
            .toInt() == 0)
        refuse(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO PaydayKiwiSaverStatus (EmployeeID, Status) VALUES (?, ?)"),
                 {employeeID, code});
}

} // namespace ql
