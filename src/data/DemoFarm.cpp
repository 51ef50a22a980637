#include "DemoFarm.h"
#include "TemplateRows.h"
#include "mail/EmployeeEmail.h"
#include <QDate>

namespace ql {

namespace {

// Ids of the template rows the demo refers to (TemplateWage.cpp, TemplateTax.cpp).
enum Interval { Weekly = 1, Fortnightly = 2, FourWeekly = 3, Monthly = 4 };
enum TaxType { MainType = 1, SecondaryS = 3 };
enum Occupation { FarmHand = 1, ReliefMilker = 3, TractorDriver = 4, FarmManager = 5, PartTimeWorker = 6 };
enum Deduction { KiwiSaver = 1, StudentLoan = 2, UnionFees = 3, Board = 4 };
enum Contribution { EmployerKiwiSaver = 1 };

const QString kZeroDate = QStringLiteral("1899-12-30");

void addAddresses(Database& farm) {
    // AddressID, WageFlag, BusinessFlag, BusName, BusAddress1, BusCity, ContactLastName, ContactFirstName
    insertRows(farm, QStringLiteral("Addresses"),
               {QStringLiteral("AddressID"), QStringLiteral("WageFlag"), QStringLiteral("BusinessFlag"),
                QStringLiteral("BusName"), QStringLiteral("BusAddress1"), QStringLiteral("BusCity"),
                QStringLiteral("ContactLastName"), QStringLiteral("ContactFirstName")},
               {
                   {1, 0, 1, QStringLiteral("Tax Office (Demo)"), QStringLiteral("PO Box 0001"),
                    QStringLiteral("Demoville"), QString(), QString()},
                   {2, 1, 0, QString(), QStringLiteral("1 Pretend Lane"), QStringLiteral("Demoville"),
                    QStringLiteral("Testington"), QStringLiteral("Aroha")},
                   {3, 1, 0, QString(), QStringLiteral("2 Makebelieve Road"), QStringLiteral("Demoville"),
                    QStringLiteral("Sampleton"), QStringLiteral("Barry")},
                   {4, 1, 0, QString(), QStringLiteral("3 Example Street"), QStringLiteral("Fauxton"),
                    QStringLiteral("Placeholder"), QStringLiteral("Casey")},
                   {5, 1, 0, QString(), QStringLiteral("4 Fiction Crescent"), QStringLiteral("Fauxton"),
                    QStringLiteral("Fictional"), QStringLiteral("Dana")},
                   {6, 1, 0, QString(), QStringLiteral("5 Madeup Drive"), QStringLiteral("Demoville"),
                    QStringLiteral("Madeup"), QStringLiteral("Eli")},
                   {7, 1, 0, QString(), QStringLiteral("6 Bygone Track"), QStringLiteral("Demoville"),
                    QStringLiteral("Finished"), QStringLiteral("Fran")},
                   {8, 1, 0, QString(), QStringLiteral("7 Someday Place"), QStringLiteral("Fauxton"),
                    QStringLiteral("Notyet"), QStringLiteral("Gus")},
                   // Ticked for the payroll, but no employee row: adds nothing to the roster.
                   {9, 1, 0, QString(), QStringLiteral("8 Nobody Street"), QStringLiteral("Demoville"),
                    QStringLiteral("Addressonly"), QStringLiteral("Hana")},
                   // An ordinary contact, not on the payroll.
                   {10, 0, 0, QStringLiteral("Imaginary Vet Services"), QStringLiteral("9 Pretend Lane"),
                    QStringLiteral("Demoville"), QStringLiteral("Vet"), QStringLiteral("Ima")},
               });
}

void addEmployerDetails(Database& farm) {
    farm.execute(
        QStringLiteral("UPDATE [Farm Details] SET [Farm Name] = ?, [Financial Year] = ?, Address1 = ?, "
                       "Address2 = ?, Address3 = ?, [GST Reg Number] = ?, [Current Season] = ?"),
        {QStringLiteral("Tussock Hollow Demo Dairy"), QStringLiteral("2026-06-01"),
         QStringLiteral("100 Imaginary Road"), QStringLiteral("RD 9"), QStringLiteral("Demoville 9999"),
         QStringLiteral("123-456-789"), QStringLiteral("2026/27")});
    farm.execute(QStringLiteral("UPDATE Partners SET PartnerName = ? WHERE PartnerID = 1"),
                 {QStringLiteral("Tussock Hollow Demo Dairy")});
}

void addEmployees(Database& wage) {
    const QStringList columns{QStringLiteral("EmployeeID"),
                              QStringLiteral("AddressID"),
                              QStringLiteral("Birthdate"),
                              QStringLiteral("EmployeeTypeID"),
                              QStringLiteral("DateHired"),
                              QStringLiteral("DateFinished"),
                              QStringLiteral("PayRate"),
                              QStringLiteral("YearlyTotal"),
                              QStringLiteral("PayIntervalID"),
                              QStringLiteral("TaxTypeID"),
                              QStringLiteral("IRDNumber"),
                              QStringLiteral("TaxCode"),
                              QStringLiteral("KiwiSaverEnrolled"),
                              QStringLiteral("KiwiSaverStartDate"),
                              QStringLiteral("BankID"),
                              QStringLiteral("EnterpriseID")};
    const QVariant none;
    insertRows(wage, QStringLiteral("Employees"), columns,
               {
                   // Weekly hourly farm hand on M, in KiwiSaver; the occupation brings a dog allowance,
                   // accommodation (taxable, outside KiwiSaver) and a meal allowance.
                   {1, 2, "1995-03-14", FarmHand, "2023-08-01", kZeroDate, 25.50, 0, Weekly, MainType,
                    "111-111-111", "M", 1, "2023-08-01", 1, 1},
                   // Monthly salaried manager on M SL, own KiwiSaver rate and student loan.
                   {2, 3, "1984-11-02", FarmManager, "2021-06-01", kZeroDate, 0, 85000, Monthly, MainType,
                    "111-111-122", "M SL", 1, "2021-06-01", 1, 1},
                   // Fortnightly relief milker on a secondary code.
                   {3, 4, "1990-07-21", ReliefMilker, "2024-09-15", kZeroDate, 28.00, 0, Fortnightly,
                    SecondaryS, "111-111-138", "S", 0, none, 1, 1},
                   // Weekly tractor driver on ME, within the credit's range (35 hours at 24.00).
                   {4, 5, "2001-01-30", TractorDriver, "2025-10-06", kZeroDate, 24.00, 0, Weekly, MainType,
                    "111-111-146", "ME", 0, none, 1, 1},
                   // Four-weekly part-timer with a fixed board deduction and a union fee.
                   {5, 6, "1978-05-09", PartTimeWorker, "2022-02-14", kZeroDate, 26.00, 0, FourWeekly,
                    MainType, "111-111-154", "M", 0, none, 1, 1},
                   // Finished: off the roster.
                   {6, 7, "1988-12-24", FarmHand, "2020-01-06", "2025-12-19", 24.00, 0, Weekly, MainType,
                    "111-111-162", "M", 0, none, 1, 1},
                   // Not hired yet: off the roster.
                   {7, 8, "2005-04-01", FarmHand, none, kZeroDate, 23.95, 0, Weekly, MainType, "111-111-170",
                    "M", 0, none, 1, 1},
               });
    insertRows(wage, QStringLiteral("EmployeeDeductions"),
               {QStringLiteral("EmployeeID"), QStringLiteral("DeductID"), QStringLiteral("FixedAmount"),
                QStringLiteral("SpecialRate"), QStringLiteral("TaxName")},
               {
                   {1, KiwiSaver, 0, 0, QStringLiteral("KiwiSaver")},
                   {2, KiwiSaver, 0, 4, QStringLiteral("KiwiSaver")},
                   {2, StudentLoan, 0, 0, QString()},
                   {5, Board, 120, 0, QString()},
                   {5, UnionFees, 18.50, 0, QString()},
               });
    insertRows(wage, QStringLiteral("EmployerContributions"),
               {QStringLiteral("EmployeeID"), QStringLiteral("ContributionID"), QStringLiteral("FixedAmount"),
                QStringLiteral("SpecialRate")},
               {
                   {1, EmployerKiwiSaver, 0, 0},
                   {2, EmployerKiwiSaver, 0, 0},
               });
}

// The accounts, tax office and payment method of the demo's postings, and commits that post: a pay
// of the demo can be committed to the cashbook at once.
void addCashbookSettings(Database& wage, Database& farm) {
    if (farm.scalar(QStringLiteral("SELECT count(*) FROM PayeInfo")).toInt() == 0)
        farm.execute(QStringLiteral("INSERT INTO PayeInfo (PAYEAccount) VALUES (NULL)"));
    farm.execute(QStringLiteral("UPDATE PayeInfo SET PAYEAccount = 401002, WageAccount = 401001, PaymentAccount = "
                                "401005, AdjustAccount = 401008, PAYEFreq = 1, PAYEStart = '2026-04-01', "
                                "PAYENonCash = 1, PAYEAddressID = 1"));
    wage.execute(QStringLiteral("UPDATE WageInfo SET Cashbook = 1"));
}

void addLeave(Database& wage) {
    // Leave types 1 annual, 2 sick, 4 in lieu (hours); kinds 2 taken, 4 allocated.
    insertRows(wage, QStringLiteral("LeaveDetails"),
               {QStringLiteral("EmployeeID"), QStringLiteral("LeaveTypeID"), QStringLiteral("TransTypeID"),
                QStringLiteral("NumberofDays"), QStringLiteral("DateFrom"), QStringLiteral("DateTo"),
                QStringLiteral("Comments")},
               {
                   {1, 1, 4, 20, "2024-08-01", "2024-08-01", QStringLiteral("Annual entitlement")},
                   {1, 1, 2, 5, "2024-12-23", "2024-12-27", QStringLiteral("Christmas")},
                   {1, 1, 4, 20, "2025-08-01", "2025-08-01", QStringLiteral("Annual entitlement")},
                   {1, 1, 2, 3, "2025-10-20", "2025-10-22", QStringLiteral("Labour weekend")},
                   {1, 2, 4, 10, "2025-08-01", "2025-08-01", QStringLiteral("Sick leave entitlement")},
                   {1, 2, 2, 1, "2025-09-08", "2025-09-08", QStringLiteral("Flu")},
                   {1, 4, 4, 16, "2025-09-27", "2025-09-27", QStringLiteral("Calving weekend worked")},
                   {3, 1, 4, 20, "2025-09-15", "2025-09-15", QStringLiteral("Annual entitlement")},
               });
}

} // namespace

bool readyForDemo(Database& wage, Database& farm) {
    return wage.scalar(QStringLiteral("SELECT count(*) FROM Employees")).toInt() == 0 &&
           farm.scalar(QStringLiteral("SELECT count(*) FROM Addresses")).toInt() == 0;
}

void addDemoFarm(Database& wage, Database& farm) {
    farm.beginTrans();
    wage.beginTrans();
    try {
        addAddresses(farm);
        AddDemoEmails(farm);
        addEmployerDetails(farm);
        addEmployees(wage);
        addCashbookSettings(wage, farm);
        addLeave(wage);
        wage.commitTrans();
        farm.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        if (farm.inTransaction()) farm.rollback();
        throw;
    }
}

} // namespace ql
