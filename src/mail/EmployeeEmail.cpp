#include "EmployeeEmail.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"

namespace ql {

void EnsureAddressEmail(Database& farm) {
    const bool has =
        farm.scalar(QStringLiteral("SELECT count(*) FROM pragma_table_info('Addresses') WHERE name = 'Email'")).toInt() > 0;
    if (!has) farm.execute(QStringLiteral("ALTER TABLE Addresses ADD COLUMN Email TEXT(255)"));
}

QString EmployeeEmail(Database& wage, Database& farm, qint32 employeeID) {
    const QVariant address = wage.scalar(
        QStringLiteral("SELECT AddressID FROM Employees WHERE EmployeeID = %1").arg(employeeID));
    if (address.isNull()) return QString();
    EnsureAddressEmail(farm);
    return farm.scalar(QStringLiteral("SELECT Email FROM Addresses WHERE AddressID = %1").arg(address.toLongLong()))
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
    EnsureAddressEmail(farm);
    farm.execute(QStringLiteral("UPDATE Addresses SET Email = lower(ContactFirstName || '.' || ContactLastName) "
                                "|| '@example.com' WHERE WageFlag <> 0 AND ContactLastName IS NOT NULL "
                                "AND (Email IS NULL OR Email = '')"));
}

} // namespace ql
