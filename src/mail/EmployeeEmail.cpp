#include "EmployeeEmail.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "staff/StaffTables.h"

namespace ql {

QString EmployeeEmail(Database& wage, Database& farm, qint32 employeeID) {
    const QVariant address = wage.scalar(
        QStringLiteral("SELECT AddressID FROM Employees WHERE EmployeeID = %1").arg(employeeID));
    if (address.isNull()) return QString();
    EnsureAddressColumns(farm);
    return farm.scalar(QStringLiteral("SELECT EmailAddress FROM Addresses WHERE AddressID = %1").arg(address.toLongLong()))
        .toString()
        .trimmed();
}

QString EmployeeEmail(Database& wage, qint32 employeeID) {
    Database farm = openOrCreate(DatabaseKind::Farm, DataFileName());
    const QString email = EmployeeEmail(wage, farm, employeeID);
    farm.close();
    return email;
}

void AddDemoEmails(Database& farm) {
    EnsureAddressColumns(farm);
    farm.execute(QStringLiteral("UPDATE Addresses SET EmailAddress = lower(ContactFirstName || '.' || ContactLastName) "
                                "|| '@example.com' WHERE WageFlag <> 0 AND ContactLastName IS NOT NULL "
                                "AND (EmailAddress IS NULL OR EmailAddress = '')"));
}

} // namespace ql
