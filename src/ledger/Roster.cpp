#include "Roster.h"
#include <QHash>
#include <QStringBuilder>
#include <array>
#include <optional>
#include "data/Recordset.h"
#include "data/RowReader.h"
#include "data/Schema.h"
#include "data/SqlDate.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"

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

// The employee's own columns are named with their table, as the join may rename a column that two
// tables share. The order is the order in which the record takes its fields.
const char* const kEmployeeFields[] = {
    "Employees.EmployeeID",     "Employees.AddressID",         "Employees.Birthdate",
    "Employees.EmployeeTypeID", "Employees.DateHired",         "Employees.DateFinished",
    "Employees.PayRate",        "Employees.YearlyTotal",       "Employees.PayIntervalID",
    "Employees.TaxTypeID",      "Employees.IRDNumber",         "EmployeeType",
    "UnitOfPay",                "Taxname",                     "Employees.ExcludeIR348",
    "Employees.TaxCode",        "Employees.KiwiSaverEnrolled", "Employees.KiwiSaverEnrolID",
    "Employees.KiwiSaverStartDate", "Employees.KiwiSaverEmployerRateID"};
enum EmployeeField {
    EmployeeID, AddressID, Birthdate, EmployeeTypeID, DateHired, DateFinished, PayRate, YearlyTotal,
    PayIntervalID, TaxTypeID, IRDNumber, EmployeeType, UnitOfPay, TaxName, ExcludeIR348, TaxCode,
    KiwiSaverEnrolled, KiwiSaverEnrolID, KiwiSaverStartDate, KiwiSaverEmployerRateID, EmployeeFieldCount
};
const char* const kAddressFields[] = {"AddressID", "BusAddress1", "BusCity", "ContactLastName",
                                      "ContactFirstName"};
enum AddressField { AddrID, Street, City, LastName, FirstName, AddressFieldCount };

// The columns of names, found once for all the rows; a missing column raises as a read by name does.
template <size_t N> std::array<int, N> columnsOf(const RowReader& rows, const char* const (&names)[N]) {
    std::array<int, N> columns{};
    for (size_t i = 0; i < N; ++i)
        columns[i] = rows.requireField(QString::fromLatin1(names[i]));
    return columns;
}

// Each field is taken only when its column holds a value; a null leaves the field empty.
template <class T, class F> void take(const RowReader& rows, int column, T& field, F convert) {
    const QVariant v = rows.value(column);
    if (!IsNull(v)) field = convert(v);
}

// An employee row read into the fields a record takes from it; a row whose value would not convert
// keeps its failure, which is raised where its record is built.
struct EmployeeRow {
    EmployeeRecord record;
    std::optional<VbError> failure;
};

EmployeeRow readEmployee(const RowReader& e, const std::array<int, EmployeeFieldCount>& c) {
    const auto text = [](const QVariant& v) { return v.toString(); };
    const auto date = [](const QVariant& v) { return CDate(v); };
    const auto money = [](const QVariant& v) { return CCur(v); };
    const auto whole = [](const QVariant& v) { return CLng(v); };
    EmployeeRow row;
    EmployeeRecord& r = row.record;
    try {
        take(e, c[EmployeeID], r.EmployeeID, whole);
        take(e, c[AddressID], r.AddressID, whole);
        take(e, c[Birthdate], r.Birthdate, date);
        take(e, c[EmployeeTypeID], r.EmployeeTypeID, whole);
        take(e, c[DateHired], r.DateHired, date);
        take(e, c[DateFinished], r.DateFinished, date);
        take(e, c[PayRate], r.PayRate, money);
        take(e, c[YearlyTotal], r.YearlyTotal, money);
        take(e, c[PayIntervalID], r.PayIntervalID, whole);
        take(e, c[TaxTypeID], r.TaxTypeID, whole);
        take(e, c[IRDNumber], r.IRDNumber, text);
        take(e, c[EmployeeType], r.EmployeeType, text);
        take(e, c[UnitOfPay], r.UnitOfPay, text);
        take(e, c[TaxName], r.TaxName, text);
        // The same field again: the exclusion flag replaces the tax name when it is set at all.
        take(e, c[ExcludeIR348], r.TaxName, [](const QVariant& v) { return CStr(v); });
        take(e, c[TaxCode], r.TaxCode, text);
        take(e, c[KiwiSaverEnrolled], r.KiwiSaverEnrolled, [](const QVariant& v) { return CBool(v); });
        take(e, c[KiwiSaverEnrolID], r.KiwiSaverEnrolID, whole);
        take(e, c[KiwiSaverStartDate], r.KiwiSaverStartDate, date);
        take(e, c[KiwiSaverEmployerRateID], r.KiwiSaverEmployerRateID, whole);
    } catch (const VbError& failure) {
        row.failure = failure;
    }
    return row;
}

// The address's part of a record.
void takeAddress(EmployeeRecord& r, const RowReader& a, const std::array<int, AddressFieldCount>& c) {
    const QVariant street = a.value(c[Street]);
    const QVariant city = a.value(c[City]);
    if (!IsNull(street)) r.Address = street.toString() % QLatin1String(", ");
    if (!IsNull(city)) r.Address += city.toString();
    const QString last = a.value(c[LastName]).toString();
    const QString first = a.value(c[FirstName]).toString();
    // The separator always stands; each name only when present.
    r.NameLastFirst = last % QLatin1String(", ") % first;
    r.NameFirstLast = first % QLatin1Char(' ') % last;
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
    trap(QStringLiteral("FillEmployeeArray"), [&] {
        AppContext& app = App();
        farm = openOrCreate(DatabaseKind::Farm, DataFileName());
        RowReader addresses(farm, QStringLiteral("SELECT Addresses.* FROM Addresses WHERE WageFlag = True"));
        RowReader employees(app.WageDatabase, kEmployeeColumns + rosterWhereClause());
        app.EmployeeArray = {EmployeeRecord{}};
        if (!employees.next()) return;
        // The roster follows the order of the addresses; each matching employee row is one record, in
        // the employees' order. The rows are read once, each straight from its query, so that a long
        // roster costs little more than its names.
        const auto employeeColumns = columnsOf(employees, kEmployeeFields);
        QHash<qint32, QList<EmployeeRow>> rowsOfAddress;
        do {
            const QVariant own = employees.value(employeeColumns[AddressID]);
            if (!IsNull(own)) rowsOfAddress[CLng(own)].append(readEmployee(employees, employeeColumns));
        } while (employees.next());
        if (!addresses.next()) return;
        const auto addressColumns = columnsOf(addresses, kAddressFields);
        do {
            const QVariant addressID = addresses.value(addressColumns[AddrID]);
            if (IsNull(addressID)) continue;
            const auto found = rowsOfAddress.constFind(CLng(addressID));
            if (found == rowsOfAddress.constEnd()) continue;
            for (const EmployeeRow& row : *found) {
                if (row.failure) throw *row.failure;
                EmployeeRecord record = row.record;
                takeAddress(record, addresses, addressColumns);
                ++count;
                app.EmployeeArray.append(std::move(record));
            }
        } while (addresses.next());
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
