#include "PaydayEmployees.h"
#include "PaydayTables.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include <QHash>
#include <algorithm>

namespace ql {

namespace {
QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}
} // namespace

QList<Payee> CurrentPayees(Database& wage) {
    EnsurePaydayTables(wage);
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT Employees.EmployeeID, Employees.AddressID, PaydayBankAccounts.AccountNumber "
                       "FROM Employees LEFT JOIN PaydayBankAccounts ON Employees.EmployeeID = "
                       "PaydayBankAccounts.EmployeeID WHERE Employees.DateHired > '1899-12-30' AND "
                       "(Employees.DateFinished IS NULL OR Employees.DateFinished <= '1899-12-30') "
                       "ORDER BY Employees.EmployeeID"),
        RecordsetType::Snapshot);
    QList<Payee> payees;
    QList<qint32> addresses;
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant address = rs->value(QStringLiteral("AddressID"));
        addresses << (IsNull(address) ? 0 : CLng(address));
        payees << Payee{CLng(rs->value(QStringLiteral("EmployeeID"))), QString(),
                        text(rs->value(QStringLiteral("AccountNumber")))};
    }
    rs->Close();
    QHash<qint32, std::pair<QString, QString>> names;
    Database farm;
    farm.open(DataFileName());
    auto a = farm.openRecordset(
        QStringLiteral("SELECT AddressID, ContactFirstName, ContactLastName, BusName FROM Addresses"),
        RecordsetType::Snapshot);
    for (; !a->EOF_(); a->MoveNext()) {
        QString first = text(a->value(QStringLiteral("ContactFirstName")));
        QString last = text(a->value(QStringLiteral("ContactLastName")));
        if (first.isEmpty() && last.isEmpty()) last = text(a->value(QStringLiteral("BusName")));
        names.insert(CLng(a->value(QStringLiteral("AddressID"))), {first, last});
    }
    a->Close();
    farm.close();
    for (int i = 0; i < payees.size(); ++i) {
        const auto n = names.value(addresses.at(i));
        payees[i].name = (n.first + u' ' + n.second).trimmed();
        if (payees[i].name.isEmpty())
            payees[i].name = QStringLiteral("Employee %1").arg(payees[i].employeeID);
    }
    std::stable_sort(payees.begin(), payees.end(), [&](const Payee& x, const Payee& y) {
        return QString::compare(x.name.section(u' ', -1) + x.name, y.name.section(u' ', -1) + y.name,
                                Qt::CaseInsensitive) < 0;
    });
    return payees;
}

} // namespace ql
