#include "StaffTables.h"
#include "runtime/Convert.h"

namespace ql {

namespace {

bool hasColumn(Database& db, const QString& table, const QString& column) {
    const QVariantList names = db.firstColumn(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table));
    for (const QVariant& n : names)
        if (n.toString().compare(column, Qt::CaseInsensitive) == 0) return true;
    return false;
}

} // namespace

void EnsureStaffTables(Database& wage) {
    wage.executeScript(
        QStringLiteral("CREATE TABLE IF NOT EXISTS EmployeeTerms ("
                       " EmployeeID LONG PRIMARY KEY REFERENCES Employees(EmployeeID) ON DELETE CASCADE,"
                       " UsualHours SINGLE DEFAULT 0, AnnualLeaveDays SINGLE DEFAULT 0,"
                       " KiwiSaverOptedOut YESNO DEFAULT 0);"));
}

void EnsureSpecialTaxType(Database& wage) {
    const QVariant found =
        wage.scalar(QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE upper(trim(Taxname)) = 'STC' LIMIT 1"));
    if (found.isValid() && !IsNull(found)) return;
    wage.execute(QStringLiteral("INSERT INTO TaxTypes (TaxTypeID, Taxname, [Order]) VALUES ((SELECT coalesce(max("
                                "TaxTypeID), 0) + 1 FROM TaxTypes), 'STC', (SELECT coalesce(max([Order]), 0) + 1 FROM "
                                "TaxTypes))"));
}

void EnsureAddressColumns(Database& farm) {
    if (!hasColumn(farm, QStringLiteral("Addresses"), QStringLiteral("EmailAddress")))
        farm.execute(QStringLiteral("ALTER TABLE Addresses ADD COLUMN EmailAddress TEXT(100)"));
    if (!hasColumn(farm, QStringLiteral("Addresses"), QStringLiteral("PayrollPending")))
        farm.execute(QStringLiteral("ALTER TABLE Addresses ADD COLUMN PayrollPending YESNO DEFAULT 0"));
}

void CompletePendingAddresses(Database& wage, Database& farm) {
    EnsureAddressColumns(farm);
    const QVariantList pending =
        farm.firstColumn(QStringLiteral("SELECT AddressID FROM Addresses WHERE PayrollPending = 1"));
    for (const QVariant& id : pending) {
        const bool hasEmployee =
            wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE AddressID = %1").arg(CLng(id))).toInt() >
            0;
        if (hasEmployee)
            farm.execute(QStringLiteral("UPDATE Addresses SET WageFlag = 1, PayrollPending = 0 WHERE AddressID = %1")
                             .arg(CLng(id)));
        else
            farm.execute(QStringLiteral("DELETE FROM Addresses WHERE AddressID = %1").arg(CLng(id)));
    }
}

} // namespace ql
