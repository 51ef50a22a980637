#include "Roster.h"
#include <QHash>
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

// The index of a column, found once for all the rows; a missing column raises as a read by name does.
int columnOf(const Recordset& rs, const char* name) {
    const QString column = QString::fromLatin1(name);
    const int index = rs.fieldIndex(column);
    if (index < 0) rs.value(column);
    return index;
}

// The employee's own columns are named with their table, as the join may rename a column that two
// tables share.
struct EmployeeColumns {
    explicit EmployeeColumns(const Recordset& e)
        : employeeID(columnOf(e, "Employees.EmployeeID")), addressID(columnOf(e, "Employees.AddressID")),
          birthdate(columnOf(e, "Employees.Birthdate")), employeeTypeID(columnOf(e, "Employees.EmployeeTypeID")),
          dateHired(columnOf(e, "Employees.DateHired")), dateFinished(columnOf(e, "Employees.DateFinished")),
          payRate(columnOf(e, "Employees.PayRate")), yearlyTotal(columnOf(e, "Employees.YearlyTotal")),
          payIntervalID(columnOf(e, "Employees.PayIntervalID")), taxTypeID(columnOf(e, "Employees.TaxTypeID")),
          irdNumber(columnOf(e, "Employees.IRDNumber")), employeeType(columnOf(e, "EmployeeType")),
          unitOfPay(columnOf(e, "UnitOfPay")), taxName(columnOf(e, "Taxname")),
          excludeIR348(columnOf(e, "Employees.ExcludeIR348")), taxCode(columnOf(e, "Employees.TaxCode")),
          kiwiSaverEnrolled(columnOf(e, "Employees.KiwiSaverEnrolled")),
          kiwiSaverEnrolID(columnOf(e, "Employees.KiwiSaverEnrolID")),
          kiwiSaverStartDate(columnOf(e, "Employees.KiwiSaverStartDate")),
          kiwiSaverEmployerRateID(columnOf(e, "Employees.KiwiSaverEmployerRateID")) {}
    int employeeID, addressID, birthdate, employeeTypeID, dateHired, dateFinished, payRate, yearlyTotal,
        payIntervalID, taxTypeID, irdNumber, employeeType, unitOfPay, taxName, excludeIR348, taxCode,
        kiwiSaverEnrolled, kiwiSaverEnrolID, kiwiSaverStartDate, kiwiSaverEmployerRateID;
};

struct AddressColumns {
    explicit AddressColumns(const Recordset& a)
        : addressID(columnOf(a, "AddressID")), street(columnOf(a, "BusAddress1")), city(columnOf(a, "BusCity")),
          last(columnOf(a, "ContactLastName")), first(columnOf(a, "ContactFirstName")) {}
    int addressID, street, city, last, first;
};

// Each field is taken only when its column holds a value; a null leaves the field empty.
template <class T, class F> void take(const Recordset& rs, int column, T& field, F convert) {
    const QVariant v = rs.value(column);
    if (!IsNull(v)) field = convert(v);
}

EmployeeRecord readEmployee(const Recordset& e, const EmployeeColumns& c, const Recordset& a,
                            const AddressColumns& ac) {
    const auto text = [](const QVariant& v) { return v.toString(); };
    const auto date = [](const QVariant& v) { return CDate(v); };
    const auto money = [](const QVariant& v) { return CCur(v); };
    const auto whole = [](const QVariant& v) { return CLng(v); };
    EmployeeRecord r;
    take(e, c.employeeID, r.EmployeeID, whole);
    take(e, c.addressID, r.AddressID, whole);
    take(e, c.birthdate, r.Birthdate, date);
    take(e, c.employeeTypeID, r.EmployeeTypeID, whole);
    take(e, c.dateHired, r.DateHired, date);
    take(e, c.dateFinished, r.DateFinished, date);
    take(e, c.payRate, r.PayRate, money);
    take(e, c.yearlyTotal, r.YearlyTotal, money);
    take(e, c.payIntervalID, r.PayIntervalID, whole);
    take(e, c.taxTypeID, r.TaxTypeID, whole);
    take(e, c.irdNumber, r.IRDNumber, text);
    take(e, c.employeeType, r.EmployeeType, text);
    take(e, c.unitOfPay, r.UnitOfPay, text);
    take(e, c.taxName, r.TaxName, text);
    // The same field again: the exclusion flag replaces the tax name when it is set at all.
    take(e, c.excludeIR348, r.TaxName, [](const QVariant& v) { return CStr(v); });
    take(e, c.taxCode, r.TaxCode, text);
    const QVariant street = a.value(ac.street);
    const QVariant city = a.value(ac.city);
    if (!IsNull(street)) r.Address = street.toString() + QStringLiteral(", ");
    if (!IsNull(city)) r.Address += city.toString();
    const QVariant last = a.value(ac.last);
    const QVariant first = a.value(ac.first);
    // The separator always stands; each name only when present.
    r.NameLastFirst = last.toString() + QStringLiteral(", ") + first.toString();
    r.NameFirstLast = first.toString() + QStringLiteral(" ") + last.toString();
    take(e, c.kiwiSaverEnrolled, r.KiwiSaverEnrolled, [](const QVariant& v) { return CBool(v); });
    take(e, c.kiwiSaverEnrolID, r.KiwiSaverEnrolID, whole);
    take(e, c.kiwiSaverStartDate, r.KiwiSaverStartDate, date);
    take(e, c.kiwiSaverEmployerRateID, r.KiwiSaverEmployerRateID, whole);
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
        if (employees->EOF_())
            return;
        // The roster follows the order of the addresses; each matching employee row is one record, in
        // the employees' order. The rows of each address are found once, so that a long roster costs no
        // more than its length.
        const EmployeeColumns columns(*employees);
        QHash<qint32, QList<QByteArray>> rowsOfAddress;
        for (employees->MoveFirst(); !employees->EOF_(); employees->MoveNext()) {
            const QVariant own = employees->value(columns.addressID);
            if (!IsNull(own))
                rowsOfAddress[CLng(own)].append(employees->Bookmark());
        }
        if (addresses->EOF_())
            return;
        const AddressColumns addressColumns(*addresses);
        while (!addresses->EOF_()) {
            const QVariant addressID = addresses->value(addressColumns.addressID);
            if (!IsNull(addressID)) {
                for (const QByteArray& row : rowsOfAddress.value(CLng(addressID))) {
                    employees->setBookmark(row);
                    ++count;
                    app.EmployeeArray.append(readEmployee(*employees, columns, *addresses, addressColumns));
                }
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
