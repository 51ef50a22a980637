#include "DemoFarmLarge.h"
#include "Recordset.h"
#include "TemplateRows.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <QStringList>

namespace ql {

namespace {

// Template and demo ids (TemplateWage.cpp, TemplateTax.cpp, DemoFarm.cpp).
enum Interval { Weekly = 1, Fortnightly = 2, FourWeekly = 3, Monthly = 4 };
enum TaxType { MainType = 1, SecondarySB = 2, SecondaryS = 3 };
enum Occupation {
    FarmHand = 1,
    HerdManager = 2,
    ReliefMilker = 3,
    TractorDriver = 4,
    FarmManager = 5,
    PartTimeWorker = 6
};
enum Deduction { KiwiSaver = 1, StudentLoan = 2, UnionFees = 3, Board = 4, ChildSupport = 5 };
enum Contribution { EmployerKiwiSaver = 1 };

const char* const kFirstNames[] = {"Ari", "Bea", "Cal", "Dee",  "Eru",  "Fay", "Gil",  "Hine", "Ira",
                                   "Jo",  "Kit", "Lou", "Mika", "Nell", "Oti", "Pip",  "Quin", "Rua",
                                   "Sol", "Tui", "Uma", "Vic",  "Wiki", "Xan", "Yves", "Zed"};
const char* const kLastNames[] = {"Pretendson", "Madeup",     "Fauxley",    "Inventor",
                                  "Notreal",    "Imagine",    "Storybook",  "Fablewood",
                                  "Mockridge",  "Dummyfield", "Samplewell", "Testbury"};

// One of the demo's kinds of employee: occupation, interval, tax type and code, rate or salary, and
// what is taken from the pay. Weekly hands are the most, as on a dairy farm.
struct Profile {
    int occupation, interval, taxType;
    const char* taxCode;
    double payRate, yearly;
    bool kiwiSaver;
    double ownKiwiSaverRate;
    bool studentLoan;
    double board, unionFee, childSupport;
};
const Profile kProfiles[] = {
    {FarmHand, Weekly, MainType, "M", 25.50, 0, true, 0, false, 0, 0, 0},
    {FarmHand, Weekly, MainType, "M SL", 26.25, 0, true, 6, true, 0, 0, 0},
    {TractorDriver, Weekly, MainType, "ME", 24.00, 0, false, 0, false, 0, 0, 0},
    {HerdManager, Weekly, MainType, "M", 29.00, 0, true, 4, false, 95, 0, 0},
    {FarmHand, Weekly, MainType, "M", 24.75, 0, false, 0, false, 0, 18.50, 40},
    {TractorDriver, Weekly, MainType, "ME SL", 25.00, 0, true, 0, true, 0, 0, 0},
    {FarmHand, Weekly, SecondarySB, "SB", 23.95, 0, false, 0, false, 0, 0, 0},
    {ReliefMilker, Fortnightly, SecondaryS, "S", 28.00, 0, false, 0, false, 0, 0, 0},
    {PartTimeWorker, FourWeekly, MainType, "M", 26.00, 0, false, 0, false, 120, 18.50, 0},
    {FarmManager, Monthly, MainType, "M SL", 0, 85000, true, 4, true, 0, 0, 0},
};

} // namespace

QList<qint32> addLargeDemoEmployees(Database& wage, Database& farm, int count) {
    const int onRoster =
        wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE DateHired IS NOT NULL "
                                   "AND DateFinished = '1899-12-30'"))
            .toInt();
    const qint32 firstEmployee =
        wage.scalar(QStringLiteral("SELECT coalesce(max(EmployeeID), 0) + 1 FROM Employees")).toInt();
    const qint32 firstAddress =
        farm.scalar(QStringLiteral("SELECT coalesce(max(AddressID), 0) + 1 FROM Addresses")).toInt();
    QList<QVariantList> addresses, employees, deductions, contributions;
    QList<qint32> ids;
    for (int i = 0; onRoster + i < count; ++i) {
        const Profile& p = kProfiles[i % std::size(kProfiles)];
        const qint32 id = firstEmployee + i;
        const qint32 address = firstAddress + i;
        const QString last =
            QString::fromLatin1(kLastNames[(i / std::size(kFirstNames)) % std::size(kLastNames)]);
        const QString first =
            QString::fromLatin1(kFirstNames[i % std::size(kFirstNames)]) +
            (i >= int(std::size(kFirstNames) * std::size(kLastNames))
                 ? QStringLiteral(" %1").arg(i / int(std::size(kFirstNames) * std::size(kLastNames)) + 1)
                 : QString());
        addresses.append({address, 1, 0, QString(), QStringLiteral("%1 Pretend Lane").arg(100 + i),
                          i % 2 ? QStringLiteral("Demoville") : QStringLiteral("Fauxton"), last, first});
        const QDate born = QDate(1960, 1, 1).addDays((i * 397) % 15000);
        employees.append({id, address, born.toString(Qt::ISODate), p.occupation, QStringLiteral("2014-01-06"),
                          QStringLiteral("1899-12-30"), p.payRate, p.yearly, p.interval, p.taxType,
                          QStringLiteral("2%1").arg(10000000 + id, 8, 10, QLatin1Char('0')),
                          QString::fromLatin1(p.taxCode), p.kiwiSaver ? 1 : 0,
                          p.kiwiSaver ? QVariant(QStringLiteral("2014-01-06")) : QVariant(), 1, 1});
        if (p.kiwiSaver) {
            deductions.append({id, KiwiSaver, 0, p.ownKiwiSaverRate, QStringLiteral("KiwiSaver")});
            contributions.append({id, EmployerKiwiSaver, 0, 0});
        }
        if (p.studentLoan) deductions.append({id, StudentLoan, 0, 0, QString()});
        if (p.board > 0) deductions.append({id, Board, p.board, 0, QString()});
        if (p.unionFee > 0) deductions.append({id, UnionFees, p.unionFee, 0, QString()});
        if (p.childSupport > 0) deductions.append({id, ChildSupport, p.childSupport, 0, QString()});
        ids.append(id);
    }
    farm.beginTrans();
    wage.beginTrans();
    try {
        insertRows(farm, QStringLiteral("Addresses"),
                   {QStringLiteral("AddressID"), QStringLiteral("WageFlag"), QStringLiteral("BusinessFlag"),
                    QStringLiteral("BusName"), QStringLiteral("BusAddress1"), QStringLiteral("BusCity"),
                    QStringLiteral("ContactLastName"), QStringLiteral("ContactFirstName")},
                   addresses);
        insertRows(wage, QStringLiteral("Employees"),
                   {QStringLiteral("EmployeeID"), QStringLiteral("AddressID"), QStringLiteral("Birthdate"),
                    QStringLiteral("EmployeeTypeID"), QStringLiteral("DateHired"),
                    QStringLiteral("DateFinished"), QStringLiteral("PayRate"), QStringLiteral("YearlyTotal"),
                    QStringLiteral("PayIntervalID"), QStringLiteral("TaxTypeID"), QStringLiteral("IRDNumber"),
                    QStringLiteral("TaxCode"), QStringLiteral("KiwiSaverEnrolled"),
                    QStringLiteral("KiwiSaverStartDate"), QStringLiteral("BankID"),
                    QStringLiteral("EnterpriseID")},
                   employees);
        insertRows(wage, QStringLiteral("EmployeeDeductions"),
                   {QStringLiteral("EmployeeID"), QStringLiteral("DeductID"), QStringLiteral("FixedAmount"),
                    QStringLiteral("SpecialRate"), QStringLiteral("TaxName")},
                   deductions);
        insertRows(wage, QStringLiteral("EmployerContributions"),
                   {QStringLiteral("EmployeeID"), QStringLiteral("ContributionID"),
                    QStringLiteral("FixedAmount"), QStringLiteral("SpecialRate")},
                   contributions);
        wage.commitTrans();
        farm.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        if (farm.inTransaction()) farm.rollback();
        throw;
    }
    return ids;
}

void repeatPay(Database& wage, qint32 wageID, int times) {
    if (times <= 0) return;
    const QVariant days =
        wage.scalar(QStringLiteral("SELECT PayInterval.NumberOfDays FROM (Wages INNER JOIN Employees ON "
                                   "Wages.EmployeeID = Employees.EmployeeID) INNER JOIN PayInterval ON "
                                   "Employees.PayIntervalID = PayInterval.PayIntervalID WHERE "
                                   "Wages.WageID = %1")
                        .arg(wageID));
    const int step = IsNull(days) ? 7 : CLng(days);
    const QDate start =
        CDate(wage.scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(wageID)));
    const QStringList details{QStringLiteral("PaymentDetails"),      QStringLiteral("TaxAllowDetails"),
                              QStringLiteral("NonTaxAllowDetails"),  QStringLiteral("DeductionDetails"),
                              QStringLiteral("ContributionDetails"), QStringLiteral("TaxDetails")};
    // The columns of each table but its own key: copied as they stand, with the new WageID.
    auto copyColumns = [&](const QString& table) {
        QStringList columns;
        auto rs = wage.openRecordset(QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(table),
                                     RecordsetType::Snapshot);
        for (int i = 0; i < rs->fieldCount(); ++i) {
            const QString name = rs->fieldName(i);
            if (name.compare(QStringLiteral("WageID"), Qt::CaseInsensitive) != 0 &&
                !name.endsWith(QStringLiteral("DetailsID"), Qt::CaseInsensitive) &&
                name.compare(QStringLiteral("TaxDetailID"), Qt::CaseInsensitive) != 0)
                columns << QLatin1Char('[') + name + QLatin1Char(']');
        }
        rs->Close();
        return columns.join(QStringLiteral(", "));
    };
    const QString wageColumns =
        copyColumns(QStringLiteral("Wages")).replace(QStringLiteral("[Date], "), QString());
    QList<std::pair<QString, QString>> detailColumns;
    for (const QString& t : details)
        detailColumns.append({t, copyColumns(t)});

    // The same texts at each repeat, with the ids as parameters, so that each is prepared once.
    const QString insertWage =
        QStringLiteral("INSERT INTO Wages ([Date], %1) SELECT ?, %1 FROM Wages WHERE WageID = ?")
            .arg(wageColumns);
    QStringList insertDetails;
    for (const auto& [table, columns] : detailColumns)
        insertDetails << QStringLiteral("INSERT INTO %1 (WageID, %2) SELECT ?, %2 FROM %1 WHERE WageID = ?")
                             .arg(table, columns);
    wage.beginTrans();
    try {
        for (int n = 1; n <= times; ++n) {
            const QDate date = step > 0 ? start.addDays(qint64(step) * n) : start.addMonths(n);
            wage.execute(insertWage, {date.toString(Qt::ISODate), wageID});
            const qint64 added = wage.lastInsertRowId();
            for (const QString& insert : insertDetails)
                wage.execute(insert, {added, wageID});
        }
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
}

} // namespace ql
