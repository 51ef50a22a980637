#include "EmployeeStore.h"
#include "StaffLookups.h"
#include "StaffTables.h"
#include "data/Recordset.h"
#include "payday/PaydayTables.h"
#include "payengine/EmployeeTaxItems.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"

namespace ql {

namespace {

const QString kZeroDate = QStringLiteral("1899-12-30");
// Leave type 1 is annual leave; transaction kinds 1 opening balance, 4 allocated.
constexpr int AnnualLeave = 1;
constexpr int OpeningBalance = 1;
constexpr int Allocated = 4;
const QString kBroughtForward = QStringLiteral("Brought forward");
const QString kEntitlement = QStringLiteral("Annual entitlement");

[[noreturn]] void refuse(const QString& message) {
    throw VbError(5, QStringLiteral("Employees"), message);
}

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}

QDate storedDate(const QVariant& v) {
    if (IsNull(v) || !IsDate(v)) return QDate();
    const QDate d = CDate(v);
    return d == QDate(1899, 12, 30) ? QDate() : d;
}

QVariant dateValue(const QDate& d) {
    return d.isValid() ? QVariant(d.toString(Qt::ISODate)) : QVariant();
}

float single(const QVariant& v) {
    return IsNull(v) ? 0.0f : CSng(v);
}

// Occupation of the details: the one named (made when new), else the first that fits the way of pay.
qint32 occupationFor(Database& wage, const EmployeeDetails& d) {
    const bool salaried = d.YearlyTotal > Currency();
    if (!d.Occupation.trimmed().isEmpty()) {
        const OccupationChoice found = FindOccupation(wage, d.Occupation);
        if (found.id) return found.id;
        wage.execute(QStringLiteral("INSERT INTO EmployeeAwardType (EmployeeTypeID, EmployeeType, UnitOfPay) VALUES "
                                    "((SELECT coalesce(max(EmployeeTypeID), 0) + 1 FROM EmployeeAwardType), ?, 'Hour')"),
                     {d.Occupation.trimmed()});
        const qint32 id = CLng(wage.scalar(QStringLiteral("SELECT max(EmployeeTypeID) FROM EmployeeAwardType")));
        // The default lines of a new occupation: a salary, or ordinary time and overtime at 40 hours a week.
        const QVariant salary = wage.scalar(
            QStringLiteral("SELECT PaymentNameID FROM PaymentNames WHERE Salary = 1 ORDER BY PaymentNameID LIMIT 1"));
        const QVariant ordinary = wage.scalar(QStringLiteral(
            "SELECT PaymentNameID FROM PaymentNames WHERE Salary = 0 AND Calculation = 1 ORDER BY PaymentNameID LIMIT 1"));
        const QVariant overtime = wage.scalar(QStringLiteral(
            "SELECT PaymentNameID FROM PaymentNames WHERE Salary = 0 AND Calculation > 1 ORDER BY Calculation, "
            "PaymentNameID LIMIT 1"));
        const QString insert = QStringLiteral(
            "INSERT INTO PaymentTypes (EmployeeTypeID, PaymentNameID, Standardhours, [Order]) VALUES (?, ?, ?, ?)");
        if (salaried && !IsNull(salary)) {
            wage.execute(insert, {id, salary, 40, 1});
        } else if (!IsNull(ordinary)) {
            wage.execute(insert, {id, ordinary, 40, 1});
            if (!IsNull(overtime)) wage.execute(insert, {id, overtime, 0, 2});
        }
        return id;
    }
    for (const OccupationChoice& o : OccupationChoices(wage))
        if (salaried ? o.salaried : o.hourly) return o.id;
    return 0;
}

qint32 mainBank(Database& farm) {
    const QVariant v = farm.scalar(QStringLiteral(
        "SELECT BanksID FROM Banks WHERE AccountType = 1 AND BanksID < 995 ORDER BY BanksID LIMIT 1"));
    return IsNull(v) ? 1 : CLng(v);
}

// A contribution by a name the table doesn't have yet gets a name of its own, bearing no ESCT.
qint32 contributionNameFor(Database& wage, const QString& name) {
    if (const qint32 found = ContributionIdByName(wage, name)) return found;
    wage.execute(QStringLiteral("INSERT INTO ContributionNames (ContributionNameID, ContributionName, CountryPhone) "
                                "VALUES ((SELECT coalesce(max(ContributionNameID), 0) + 1 FROM ContributionNames), ?, "
                                "64)"),
                 {name.trimmed()});
    return ContributionIdByName(wage, name);
}

// The employer's standing contributions other than KiwiSaver, as given.
void writeContributions(Database& wage, qint32 id, const EmployeeDetails& d, qint32 employerKiwiSaver) {
    wage.execute(QStringLiteral("DELETE FROM EmployerContributions WHERE EmployeeID = %1 AND ContributionID <> %2")
                     .arg(id)
                     .arg(employerKiwiSaver));
    for (const StandingDeduction& s : d.Contributions)
        wage.execute(QStringLiteral("INSERT INTO EmployerContributions (EmployeeID, ContributionID, FixedAmount, "
                                    "SpecialRate) VALUES (?, ?, ?, ?)"),
                     {id, contributionNameFor(wage, s.name), s.percent ? 0.0 : s.amount.toDouble(),
                      s.percent ? s.rate : 0.0f});
    // The employer's superannuation scheme bears ESCT as KiwiSaver does: marked when first used,
    // unless the payroll has marked the row otherwise.
    if (!d.Contributions.isEmpty())
        wage.execute(QStringLiteral("UPDATE ContributionNames SET TaxName = 'superannuation' WHERE CountryPhone = 64 "
                                    "AND lower(trim(ContributionName)) = 'employer superannuation' AND "
                                    "coalesce(TaxName, '') = ''"));
}

void writeStandingLines(Database& wage, qint32 id, const EmployeeDetails& d) {
    const qint32 kiwiSaver = DeductionIdByTaxName(wage, QStringLiteral("kiwisaver"));
    const qint32 studentLoan = DeductionIdByTaxName(wage, QStringLiteral("studentloan"));
    QList<qint32> owned{kiwiSaver, studentLoan};
    for (const QString& name : StandingDeductionNames(wage)) owned << DeductionIdByName(wage, name);
    for (const qint32 deduct : owned)
        wage.execute(QStringLiteral("DELETE FROM EmployeeDeductions WHERE EmployeeID = %1 AND DeductID = %2")
                         .arg(id)
                         .arg(deduct));
    const QString insert = QStringLiteral(
        "INSERT INTO EmployeeDeductions (EmployeeID, DeductID, FixedAmount, SpecialRate, TaxName) VALUES (?, ?, ?, ?, ?)");
    if (d.kiwiSaverEnrolled() && kiwiSaver)
        wage.execute(insert, {id, kiwiSaver, 0, d.KiwiSaverRate, QStringLiteral("KiwiSaver")});
    if (HasStudentLoan(d.TaxCode) && studentLoan) wage.execute(insert, {id, studentLoan, 0, 0, QVariant()});
    for (const StandingDeduction& s : d.Deductions)
        wage.execute(insert, {id, DeductionIdByName(wage, s.name), s.percent ? 0.0 : s.amount.toDouble(),
                              s.percent ? s.rate : 0.0f, QVariant()});

    const qint32 employerKiwiSaver = ContributionIdByTaxName(wage, QStringLiteral("kiwisaver"));
    if (employerKiwiSaver) {
        wage.execute(QStringLiteral("DELETE FROM EmployerContributions WHERE EmployeeID = %1 AND ContributionID = %2")
                         .arg(id)
                         .arg(employerKiwiSaver));
        if (d.kiwiSaverEnrolled())
            wage.execute(QStringLiteral("INSERT INTO EmployerContributions (EmployeeID, ContributionID, FixedAmount, "
                                        "SpecialRate) VALUES (?, ?, 0, ?)"),
                         {id, employerKiwiSaver, d.EmployerKiwiSaverRate});
    }
    writeContributions(wage, id, d, employerKiwiSaver);
}

// The special tax code's rate is kept with the employee's other tax items, which the pay reads.
void writeSpecialTaxRate(Database& wage, qint32 id, const EmployeeDetails& d) {
    EmployeeTaxItems items = LoadEmployeeTaxItems(wage, id);
    const qint32 rate = IsSpecialTaxCode(d.TaxCode) ? d.STCRate : 0;
    if (items.tailoredRate == rate) return;
    items.tailoredRate = rate;
    SaveEmployeeTaxItems(wage, items);
}

void writeLeave(Database& wage, qint32 id, const EmployeeDetails& d, bool added) {
    wage.execute(QStringLiteral("DELETE FROM LeaveDetails WHERE EmployeeID = ? AND LeaveTypeID = ? AND TransTypeID = ? "
                                "AND Comments = ?"),
                 {id, AnnualLeave, OpeningBalance, kBroughtForward});
    if (d.LeaveBroughtForward != 0)
        wage.execute(QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                                    "DateFrom, DateTo, Comments) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                     {id, AnnualLeave, OpeningBalance, d.LeaveBroughtForward, dateValue(d.DateHired),
                      dateValue(d.DateHired), kBroughtForward});
    // The first year's entitlement falls due on the first anniversary; later ones the leave ledger adds.
    if (added && d.AnnualLeaveDays > 0)
        wage.execute(QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                                    "DateFrom, DateTo, Comments) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                     {id, AnnualLeave, Allocated, d.AnnualLeaveDays, dateValue(d.DateHired.addYears(1)),
                      dateValue(d.DateHired.addYears(1)), kEntitlement});
}

// The payroll database's rows of one employee; returns its id.
qint32 writeEmployee(Database& wage, Database& farm, const EmployeeDetails& d, qint32 addressID) {
    const PayIntervalChoice interval = FindPayInterval(wage, d.Interval);
    const QString code = NormalTaxCode(d.TaxCode);
    if (IsSpecialTaxCode(code)) EnsureSpecialTaxType(wage);
    const QVariantList values{addressID,
                              dateValue(d.Birthdate),
                              occupationFor(wage, d),
                              dateValue(d.DateHired),
                              d.DateFinished.isValid() ? dateValue(d.DateFinished) : QVariant(kZeroDate),
                              d.PayRate.toDouble(),
                              d.YearlyTotal.toDouble(),
                              interval.id,
                              TaxTypeOfCode(wage, code),
                              d.IRDNumber.trimmed().isEmpty() ? QVariant() : QVariant(d.IRDNumber.trimmed()),
                              code,
                              d.kiwiSaverEnrolled() ? 1 : 0,
                              d.KiwiSaver == KiwiSaverStatus::Enrolled   ? 1
                              : d.KiwiSaver == KiwiSaverStatus::OptedOut ? 2
                                                                         : 0,
                              d.kiwiSaverEnrolled()
                                  ? dateValue(d.KiwiSaverStartDate.isValid() ? d.KiwiSaverStartDate : d.DateHired)
                                  : QVariant()};
    const QString columns = QStringLiteral("AddressID, Birthdate, EmployeeTypeID, DateHired, DateFinished, PayRate, "
                                           "YearlyTotal, PayIntervalID, TaxTypeID, IRDNumber, TaxCode, KiwiSaverEnrolled, "
                                           "KiwiSaverEnrolID, KiwiSaverStartDate");
    qint32 id = d.EmployeeID;
    const bool added = id == 0;
    if (added) {
        QVariantList all = values;
        all << mainBank(farm) << 1;
        wage.execute(QStringLiteral("INSERT INTO Employees (%1, BankID, EnterpriseID) VALUES (?, ?, ?, ?, ?, ?, ?, ?, "
                                    "?, ?, ?, ?, ?, ?, ?, ?)")
                         .arg(columns),
                     all);
        id = static_cast<qint32>(wage.lastInsertRowId());
    } else {
        QStringList sets;
        for (const QString& c : columns.split(QStringLiteral(", "))) sets << c + QStringLiteral(" = ?");
        QVariantList all = values;
        all << id;
        wage.execute(QStringLiteral("UPDATE Employees SET %1 WHERE EmployeeID = ?").arg(sets.join(QStringLiteral(", "))),
                     all);
    }
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO EmployeeTerms (EmployeeID, UsualHours, AnnualLeaveDays, "
                                "KiwiSaverOptedOut) VALUES (?, ?, ?, ?)"),
                 {id, d.UsualHours, d.AnnualLeaveDays, d.KiwiSaver == KiwiSaverStatus::OptedOut ? 1 : 0});
    writeStandingLines(wage, id, d);
    writeSpecialTaxRate(wage, id, d);
    writeLeave(wage, id, d, added);
    SetEmployeeBankAccount(wage, id, d.Account);
    SetEmployeeKiwiSaverStatus(wage, id,
                               !d.KiwiSaverStatusCode.isEmpty()               ? d.KiwiSaverStatusCode
                               : d.KiwiSaver == KiwiSaverStatus::NotEnrolled ? QStringLiteral("NK")
                                                                               : QStringLiteral("AE"));
    return id;
}

// An empty text is stored as Null: the roster leaves a Null part out of the address it shows.
QVariant orNull(const QString& text) {
    return text.trimmed().isEmpty() ? QVariant() : QVariant(text.trimmed());
}

void writeAddress(Database& farm, qint32 addressID, const EmployeeDetails& d) {
    farm.execute(QStringLiteral("UPDATE Addresses SET ContactFirstName = ?, ContactLastName = ?, BusAddress1 = ?, "
                                "BusCity = ?, EmailAddress = ?, WageFlag = 1, PayrollPending = 0 WHERE AddressID = ?"),
                 {d.FirstName.trimmed(), d.LastName.trimmed(), orNull(d.Address), orNull(d.City), orNull(d.Email),
                  addressID});
}

void rollbackBoth(Database& wage, Database& farm) {
    if (wage.inTransaction()) wage.rollback();
    if (farm.inTransaction()) farm.rollback();
}

void readContributions(Database& wage, EmployeeDetails& d) {
    auto lines = wage.openRecordset(
        QStringLiteral("SELECT ContributionNames.ContributionName, EmployerContributions.FixedAmount, "
                       "EmployerContributions.SpecialRate FROM EmployerContributions INNER JOIN ContributionNames ON "
                       "EmployerContributions.ContributionID = ContributionNames.ContributionNameID WHERE "
                       "EmployerContributions.EmployeeID = %1 AND lower(coalesce(ContributionNames.TaxName, '')) <> "
                       "'kiwisaver' ORDER BY ContributionNames.ContributionNameID")
            .arg(d.EmployeeID),
        RecordsetType::Snapshot);
    for (; !lines->EOF_(); lines->MoveNext()) {
        StandingDeduction s;
        s.name = text(lines->value(0));
        s.rate = single(lines->value(2));
        s.percent = s.rate > 0;
        s.amount = IsNull(lines->value(1)) ? Currency() : CCur(lines->value(1));
        d.Contributions << s;
    }
    lines->Close();
}

EmployeeDetails readEmployee(Database& wage, Recordset& rs, Database& farm) {
    EmployeeDetails d;
    d.EmployeeID = CLng(rs.value(QStringLiteral("EmployeeID")));
    d.AddressID = IsNull(rs.value(QStringLiteral("AddressID"))) ? 0 : CLng(rs.value(QStringLiteral("AddressID")));
    d.Birthdate = storedDate(rs.value(QStringLiteral("Birthdate")));
    d.DateHired = storedDate(rs.value(QStringLiteral("DateHired")));
    d.DateFinished = storedDate(rs.value(QStringLiteral("DateFinished")));
    d.PayRate = IsNull(rs.value(QStringLiteral("PayRate"))) ? Currency() : CCur(rs.value(QStringLiteral("PayRate")));
    d.YearlyTotal =
        IsNull(rs.value(QStringLiteral("YearlyTotal"))) ? Currency() : CCur(rs.value(QStringLiteral("YearlyTotal")));
    d.Interval = PayIntervalOption(wage, IsNull(rs.value(QStringLiteral("PayIntervalID")))
                                             ? 0
                                             : CLng(rs.value(QStringLiteral("PayIntervalID"))));
    d.IRDNumber = text(rs.value(QStringLiteral("IRDNumber")));
    d.TaxCode = text(rs.value(QStringLiteral("TaxCode")));
    d.STCRate = LoadEmployeeTaxItems(wage, d.EmployeeID).tailoredRate;
    d.Occupation = text(rs.value(QStringLiteral("EmployeeType")));
    const bool enrolled = !IsNull(rs.value(QStringLiteral("KiwiSaverEnrolled"))) &&
                          CBool(rs.value(QStringLiteral("KiwiSaverEnrolled")));
    d.KiwiSaverStartDate = storedDate(rs.value(QStringLiteral("KiwiSaverStartDate")));
    d.UsualHours = single(rs.value(QStringLiteral("UsualHours")));
    d.AnnualLeaveDays = IsNull(rs.value(QStringLiteral("AnnualLeaveDays")))
                            ? 20.0f
                            : single(rs.value(QStringLiteral("AnnualLeaveDays")));
    const bool optedOut = single(rs.value(QStringLiteral("KiwiSaverOptedOut"))) != 0 ||
                          (!IsNull(rs.value(QStringLiteral("KiwiSaverEnrolID"))) &&
                           CLng(rs.value(QStringLiteral("KiwiSaverEnrolID"))) == 2);
    d.KiwiSaver = enrolled ? KiwiSaverStatus::Enrolled
                           : optedOut ? KiwiSaverStatus::OptedOut : KiwiSaverStatus::NotEnrolled;

    // Standing lines: the KiwiSaver rate (the table's default when the row has none), the others by name.
    auto lines = wage.openRecordset(
        QStringLiteral("SELECT DeductNames.DeductionName, lower(DeductNames.TaxName) AS Kind, DeductNames.Percentage, "
                       "EmployeeDeductions.FixedAmount, EmployeeDeductions.SpecialRate FROM EmployeeDeductions INNER "
                       "JOIN DeductNames ON EmployeeDeductions.DeductID = DeductNames.DeductNameID WHERE "
                       "EmployeeDeductions.EmployeeID = %1 ORDER BY DeductNames.DeductNameID")
            .arg(d.EmployeeID),
        RecordsetType::Snapshot);
    for (; !lines->EOF_(); lines->MoveNext()) {
        const QString kind = text(lines->value(1));
        const float special = single(lines->value(4));
        if (kind == QLatin1String("kiwisaver")) {
            d.KiwiSaverRate = special > 0 ? special : single(lines->value(2));
        } else if (kind != QLatin1String("studentloan")) {
            StandingDeduction s;
            s.name = text(lines->value(0));
            s.percent = special > 0;
            s.rate = special;
            s.amount = IsNull(lines->value(3)) ? Currency() : CCur(lines->value(3));
            d.Deductions << s;
        }
    }
    lines->Close();
    if (d.kiwiSaverEnrolled() && d.KiwiSaverRate == 0)
        d.KiwiSaverRate = single(wage.scalar(QStringLiteral(
            "SELECT Percentage FROM DeductNames WHERE lower(TaxName) = 'kiwisaver' ORDER BY DeductNameID LIMIT 1")));
    readContributions(wage, d);
    const qint32 employerKiwiSaver = ContributionIdByTaxName(wage, QStringLiteral("kiwisaver"));
    d.EmployerKiwiSaverRate = single(wage.scalar(
        QStringLiteral("SELECT SpecialRate FROM EmployerContributions WHERE EmployeeID = %1 AND ContributionID = %2")
            .arg(d.EmployeeID)
            .arg(employerKiwiSaver)));
    d.LeaveBroughtForward = single(wage.scalar(
        QStringLiteral("SELECT sum(NumberofDays) FROM LeaveDetails WHERE EmployeeID = %1 AND LeaveTypeID = %2 AND "
                       "TransTypeID = %3")
            .arg(d.EmployeeID)
            .arg(AnnualLeave)
            .arg(OpeningBalance)));
    d.Account = EmployeeBankAccount(wage, d.EmployeeID);
    d.KiwiSaverStatusCode = EmployeeKiwiSaverStatus(wage, d.EmployeeID);

    auto a = farm.openRecordset(QStringLiteral("SELECT * FROM Addresses WHERE AddressID = %1").arg(d.AddressID),
                                RecordsetType::Snapshot);
    if (!a->EOF_()) {
        d.FirstName = text(a->value(QStringLiteral("ContactFirstName")));
        d.LastName = text(a->value(QStringLiteral("ContactLastName")));
        d.Address = text(a->value(QStringLiteral("BusAddress1")));
        d.City = text(a->value(QStringLiteral("BusCity")));
        d.Email = text(a->value(QStringLiteral("EmailAddress")));
    }
    a->Close();
    return d;
}

QString employeeQuery(const QString& where) {
    return QStringLiteral("SELECT Employees.*, EmployeeAwardType.EmployeeType, EmployeeTerms.UsualHours, "
                          "EmployeeTerms.AnnualLeaveDays, EmployeeTerms.KiwiSaverOptedOut FROM (Employees LEFT JOIN "
                          "EmployeeAwardType ON Employees.EmployeeTypeID = EmployeeAwardType.EmployeeTypeID) LEFT JOIN "
                          "EmployeeTerms ON Employees.EmployeeID = EmployeeTerms.EmployeeID ") +
           where;
}

void prepare(Database& wage, Database& farm) {
    EnsureStaffTables(wage);
    EnsurePaydayTables(wage);
    EnsureAddressColumns(farm);
    CompletePendingAddresses(wage, farm);
}

} // namespace

EmployeeDetails LoadEmployee(Database& wage, Database& farm, qint32 employeeID) {
    prepare(wage, farm);
    auto rs = wage.openRecordset(employeeQuery(QStringLiteral("WHERE Employees.EmployeeID = %1").arg(employeeID)),
                                 RecordsetType::Snapshot);
    if (rs->EOF_()) {
        rs->Close();
        refuse(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
    }
    EmployeeDetails d = readEmployee(wage, *rs, farm);
    rs->Close();
    return d;
}

QList<EmployeeDetails> LoadEmployees(Database& wage, Database& farm) {
    prepare(wage, farm);
    QList<EmployeeDetails> list;
    auto rs = wage.openRecordset(employeeQuery(QStringLiteral("ORDER BY Employees.EmployeeID")), RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) list << readEmployee(wage, *rs, farm);
    rs->Close();
    std::stable_sort(list.begin(), list.end(), [](const EmployeeDetails& a, const EmployeeDetails& b) {
        const int last = a.LastName.compare(b.LastName, Qt::CaseInsensitive);
        return last != 0 ? last < 0 : a.FirstName.compare(b.FirstName, Qt::CaseInsensitive) < 0;
    });
    return list;
}

qint32 SaveEmployee(Database& wage, Database& farm, const EmployeeDetails& details) {
    return SaveEmployees(wage, farm, {details}, {QString()}).value(0);
}

QList<qint32> SaveEmployees(Database& wage, Database& farm, const QList<EmployeeDetails>& list,
                            const QStringList& labels) {
    prepare(wage, farm);
    QStringList problems;
    for (int i = 0; i < list.size(); ++i) {
        const EmployeeDetails& d = list.at(i);
        QList<FieldProblem> p = EmployeeProblems(wage, d);
        if (d.EmployeeID != 0 &&
            wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE EmployeeID = %1").arg(d.EmployeeID))
                    .toInt() == 0)
            p.prepend({QStringLiteral("employee"), QStringLiteral("Employee %1 is not on the payroll.").arg(d.EmployeeID)});
        for (const FieldProblem& f : p) problems << labels.value(i) + f.message;
    }
    if (!problems.isEmpty()) refuse(problems.join(u'\n'));

    // 1. The addresses of new employees, marked pending: not yet in the payroll.
    QList<qint32> addressIDs;
    farm.beginTrans();
    try {
        for (const EmployeeDetails& d : list) {
            if (d.EmployeeID != 0) {
                addressIDs << d.AddressID;
                continue;
            }
            farm.execute(QStringLiteral("INSERT INTO Addresses (WageFlag, BusinessFlag, ContactFirstName, "
                                        "ContactLastName, PayrollPending) VALUES (0, 0, ?, ?, 1)"),
                         {d.FirstName.trimmed(), d.LastName.trimmed()});
            addressIDs << static_cast<qint32>(farm.lastInsertRowId());
        }
        farm.commitTrans();
    } catch (...) {
        rollbackBoth(wage, farm);
        throw;
    }
    // 2. Every employee row and its lines in one transaction.
    QList<qint32> ids;
    wage.beginTrans();
    try {
        for (int i = 0; i < list.size(); ++i) ids << writeEmployee(wage, farm, list.at(i), addressIDs.at(i));
        wage.commitTrans();
    } catch (...) {
        rollbackBoth(wage, farm);
        CompletePendingAddresses(wage, farm); // removes the addresses of step 1 again
        throw;
    }
    // 3. The names and addresses, and the pending marks cleared: now the employees are on the roster.
    farm.beginTrans();
    try {
        for (int i = 0; i < list.size(); ++i) writeAddress(farm, addressIDs.at(i), list.at(i));
        farm.commitTrans();
    } catch (...) {
        rollbackBoth(wage, farm);
        throw;
    }
    return ids;
}

void FinishEmployee(Database& wage, Database& farm, qint32 employeeID, const QDate& finish) {
    EmployeeDetails d = LoadEmployee(wage, farm, employeeID);
    if (!finish.isValid()) refuse(QStringLiteral("Finish date: required."));
    if (finish < d.DateHired)
        refuse(QStringLiteral("Finish date: %1 is before the start date %2.")
                   .arg(finish.toString(Qt::ISODate), d.DateHired.toString(Qt::ISODate)));
    wage.execute(QStringLiteral("UPDATE Employees SET DateFinished = ? WHERE EmployeeID = ?"),
                 {finish.toString(Qt::ISODate), employeeID});
}

} // namespace ql
