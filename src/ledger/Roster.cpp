#include "Roster.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "data/SqlDate.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Trap.h"

namespace ql {

namespace {
const QString kEmployeeColumns = QStringLiteral(
    "SELECT Employees.*, EmployeeAwardType.[EmployeeType], EmployeeAwardType.[UnitOfPay], "
    "TaxTypes.[Taxname] FROM TaxTypes INNER JOIN (EmployeeAwardType INNER JOIN Employees ON "
    "EmployeeAwardType.[EmployeeTypeID] = Employees.[EmployeeTypeID]) ON TaxTypes.[TaxTypeID] = "
    "Employees.[TaxTypeID] WHERE ");

QString zeroDate() {
    return SQLDate(QVariant(0));
}

// Each field is taken only when its column holds a value; a null leaves the field empty. The employee's
// own columns are named with their table, as the join may rename a column that two tables share.
template <class T, class F> void take(const Recordset& rs, const char* column, T& field, F convert) {
    const QVariant v = rs.value(QString::fromLatin1(column));
    if (!IsNull(v)) field = convert(v);
}

EmployeeRecord readEmployee(const Recordset& e, const Recordset& a) {
    const auto text = [](const QVariant& v) { return v.toString(); };
    const auto date = [](const QVariant& v) { return CDate(v); };
    const auto money = [](const QVariant& v) { return CCur(v); };
    const auto whole = [](const QVariant& v) { return CLng(v); };
    EmployeeRecord r;
    take(e, "Employees.EmployeeID", r.EmployeeID, whole);
    take(e, "Employees.AddressID", r.AddressID, whole);
    take(e, "Employees.Birthdate", r.Birthdate, date);
    take(e, "Employees.EmployeeTypeID", r.EmployeeTypeID, whole);
    take(e, "Employees.DateHired", r.DateHired, date);
    take(e, "Employees.DateFinished", r.DateFinished, date);
    take(e, "Employees.PayRate", r.PayRate, money);
    take(e, "Employees.YearlyTotal", r.YearlyTotal, money);
    take(e, "Employees.PayIntervalID", r.PayIntervalID, whole);
    take(e, "Employees.TaxTypeID", r.TaxTypeID, whole);
    take(e, "Employees.IRDNumber", r.IRDNumber, text);
    take(e, "EmployeeType", r.EmployeeType, text);
    take(e, "UnitOfPay", r.UnitOfPay, text);
    take(e, "Taxname", r.TaxName, text);
    // The same field again: the exclusion flag replaces the tax name when it is set at all.
    take(e, "Employees.ExcludeIR348", r.TaxName, [](const QVariant& v) { return CStr(v); });
    take(e, "Employees.TaxCode", r.TaxCode, text);
    const QVariant street = a.value(QStringLiteral("BusAddress1"));
    const QVariant city = a.value(QStringLiteral("BusCity"));
    if (!IsNull(street)) r.Address = street.toString() + QStringLiteral(", ");
    if (!IsNull(city)) r.Address += city.toString();
    const QVariant last = a.value(QStringLiteral("ContactLastName"));
    const QVariant first = a.value(QStringLiteral("ContactFirstName"));
    // The separator always stands; each name only when present.
    r.NameLastFirst = last.toString() + QStringLiteral(", ") + first.toString();
    r.NameFirstLast = first.toString() + QStringLiteral(" ") + last.toString();
    take(e, "Employees.KiwiSaverEnrolled", r.KiwiSaverEnrolled, [](const QVariant& v) { return CBool(v); });
    take(e, "Employees.KiwiSaverEnrolID", r.KiwiSaverEnrolID, whole);
    take(e, "Employees.KiwiSaverStartDate", r.KiwiSaverStartDate, date);
    take(e, "Employees.KiwiSaverEmployerRateID", r.KiwiSaverEmployerRateID, whole);
    return r;
}
} // namespace

// The "= NULL" tests stand as written: the data layer gives them the old engine's meaning (never true),
// so a current employee carries the zero date in DateFinished, as the address book writes it.
QString rosterWhereClause() {
    return QStringLiteral("(Employees.[DateFinished] = NULL OR Employees.[DateFinished] = ") + zeroDate() +
           QStringLiteral(") AND not (DateHired = NULL or DateHired = ") + zeroDate() + QStringLiteral(");");
}

qint32 FillEmployeeArray() {
    qint32 count = 0;
    Database farm;
    std::unique_ptr<Recordset> addresses;
    std::unique_ptr<Recordset> employees;
    trap(QStringLiteral("FillEmployeeArray"), [&] {
        AppContext& app = App();
        farm = openOrCreate(DatabaseKind::Farm, DataFileName());
        addresses =
            farm.openRecordset(QStringLiteral("SELECT Addresses.* FROM Addresses WHERE WageFlag = True"),
                               RecordsetType::Snapshot);
        employees =
            app.WageDatabase.openRecordset(kEmployeeColumns + rosterWhereClause(), RecordsetType::Snapshot);
        app.EmployeeArray = {EmployeeRecord{}};
        if (employees->EOF_()) return;
        // The roster follows the order of the addresses; each matching employee row is one record.
        while (!addresses->EOF_()) {
            const QVariant addressID = addresses->value(QStringLiteral("AddressID"));
            employees->MoveFirst();
            while (!employees->EOF_()) {
                const QVariant own = employees->value(QStringLiteral("Employees.AddressID"));
                if (!IsNull(addressID) && !IsNull(own) && CLng(own) == CLng(addressID)) {
                    ++count;
                    app.EmployeeArray.append(readEmployee(*employees, *addresses));
                }
                employees->MoveNext();
            }
            addresses->MoveNext();
        }
    });
    skipErrors([&] {
        if (employees) employees->Close();
    });
    skipErrors([&] {
        if (addresses) addresses->Close();
    });
    skipErrors([&] { farm.close(); });
    return count;
}

QString CheckEmployeeTable() {
    QString result;
    Database wage;
    Database farm;
    trap(QStringLiteral(" CheckEmployeeTable"), [&] {
        wage = openOrCreate(DatabaseKind::Wage, WageFileName());
        auto hired =
            wage.openRecordset(QStringLiteral("SELECT AddressID FROM Employees WHERE ") + rosterWhereClause(),
                               RecordsetType::Snapshot);
        if (hired->EOF_()) {
            result = QStringLiteral("No employees who have been hired and are still working");
        } else {
            QStringList ids;
            for (; !hired->EOF_(); hired->MoveNext())
                ids.append(CStr(hired->value(0)));
            farm = openOrCreate(DatabaseKind::Farm, DataFileName());
            auto flagged =
                farm.openRecordset(QStringLiteral("Select AddressID from Addresses where AddressID in (") +
                                       ids.join(QLatin1Char(',')) + QStringLiteral(") and WageFlag = True"),
                                   RecordsetType::Snapshot);
            if (flagged->EOF_())
                result = QStringLiteral("There are no current employees in the Address Book");
            flagged->Close();
        }
        hired->Close();
        if (!result.isEmpty())
            result += QStringLiteral("\r\nTick the 'Show in Quillary' box and enter at least the hired date");
    });
    skipErrors([&] { farm.close(); });
    skipErrors([&] { wage.close(); });
    return result;
}

void InitData(PayView& form) {
    trap(QStringLiteral("InitData"), [&] {
        Database* wage = &App().WageDatabase;
        form.datEmployee.setDatabase(wage);
        form.datPays.setDatabase(wage);
        form.datEmployee.setRecordSource(
            kEmployeeColumns +
            QStringLiteral("Employees.[DateFinished] = NULL OR Employees.[DateFinished] = ") + zeroDate());
        form.datEmployee.Refresh();
    });
}

} // namespace ql
