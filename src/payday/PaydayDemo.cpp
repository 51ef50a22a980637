#include "PaydayDemo.h"
#include "BankAccount.h"
#include "IrdNumber.h"
#include "PaydayTables.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"

namespace ql {

namespace {

// The first account at the demo bank branch, from a base drawn from the employee's number, whose
// check digits pass: every employee gets a distinct valid account.
QString demoAccount(qint32 employeeID) {
    for (qint64 base = 1234500 + qint64(employeeID) * 1000;; ++base)
        for (int suffix = 0; suffix < 100; ++suffix) {
            const QString account = QStringLiteral("01-0902-%1-%2")
                                        .arg(base, 7, 10, QLatin1Char('0'))
                                        .arg(suffix, 2, 10, QLatin1Char('0'));
            if (IsValidBankAccount(account)) return account;
        }
}

} // namespace

void AddDemoPaydayDetails(Database& wage) {
    PaydaySettings s = LoadPaydaySettings(wage);
    if (s.contactName.isEmpty()) s.contactName = QStringLiteral("Demo Payroll");
    if (s.contactPhone.isEmpty()) s.contactPhone = QStringLiteral("03 555 0100");
    if (s.contactEmail.isEmpty()) s.contactEmail = QStringLiteral("payroll@example.invalid");
    if (s.employerIrd.isEmpty()) s.employerIrd = QStringLiteral("49-091-850");
    if (s.payingAccount.isEmpty()) s.payingAccount = QStringLiteral("01-0902-0068389-00");
    SavePaydaySettings(wage, s);

    QList<qint32> ids;
    auto rs = wage.openRecordset(QStringLiteral("SELECT EmployeeID FROM Employees WHERE EmployeeID NOT IN "
                                                "(SELECT EmployeeID FROM PaydayBankAccounts) ORDER BY EmployeeID"),
                                 RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) ids.append(CLng(rs->value(QStringLiteral("EmployeeID"))));
    rs->Close();
    // Invented employees whose numbers fail the check get the next numbers that pass, one each.
    QList<qint32> failing;
    rs = wage.openRecordset(QStringLiteral("SELECT EmployeeID, IRDNumber FROM Employees ORDER BY EmployeeID"),
                            RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext())
        if (IsNull(rs->value(1)) || !IsValidIrdNumber(CStr(rs->value(1)))) failing.append(CLng(rs->value(0)));
    rs->Close();
    wage.beginTrans();
    try {
        qint64 next = 120000000;
        for (const qint32 id : failing) {
            while (!IsValidIrdNumber(QString::number(next))) ++next;
            wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = ? WHERE EmployeeID = ?"),
                         {QString::number(next++), id});
        }
        for (const qint32 id : ids) SetEmployeeBankAccount(wage, id, demoAccount(id));
        // Each invented employee gave a KiwiSaver status when hired: a member if enrolled here.
        wage.execute(QStringLiteral("INSERT INTO PaydayKiwiSaverStatus (EmployeeID, Status) SELECT EmployeeID, "
                                    "CASE WHEN coalesce(KiwiSaverEnrolled, 0) <> 0 THEN 'AK' ELSE 'NK' END "
                                    "FROM Employees WHERE EmployeeID NOT IN (SELECT EmployeeID FROM "
                                    "PaydayKiwiSaverStatus)"));
        wage.commitTrans();
    } catch (...) {
        wage.rollback();
        throw;
    }
}

} // namespace ql
