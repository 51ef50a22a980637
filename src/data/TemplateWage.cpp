// Template rows of a new payroll database: occupations, payment and allowance names with the default
// lines of each occupation, kinds of leave transaction, and the cashbook switch. The tax figures are
// in TemplateTax.cpp.
#include "Schema.h"
#include "TemplateRows.h"

namespace ql {

void addTemplateTaxRows(Database& db); // TemplateTax.cpp

namespace {

// Occupations
enum AwardType { FarmHand = 1, HerdManager, ReliefMilker, TractorDriver, FarmManager, PartTimeWorker };
// Payment names
enum Payment { OrdinaryTime = 1, Overtime, DoubleTime, PublicHolidayWorked, HolidayPay, SickPay, SalaryLine };
enum TaxAllowance { DogAllowance = 1, ToolAllowance, Accommodation };
enum NonTaxAllowance { MealAllowance = 1, VehicleReimbursement, ClothingAllowance };

void addOccupations(Database& db) {
    insertRows(
        db, QStringLiteral("EmployeeAwardType"),
        {QStringLiteral("EmployeeTypeID"), QStringLiteral("EmployeeType"), QStringLiteral("UnitOfPay")},
        {
            {FarmHand, QStringLiteral("Farm Hand"), QStringLiteral("Hour")},
            {HerdManager, QStringLiteral("Herd Manager"), QStringLiteral("Hour")},
            {ReliefMilker, QStringLiteral("Relief Milker"), QStringLiteral("Hour")},
            {TractorDriver, QStringLiteral("Tractor Driver"), QStringLiteral("Hour")},
            {FarmManager, QStringLiteral("Farm Manager"), QStringLiteral("Hour")},
            {PartTimeWorker, QStringLiteral("Part-time Worker"), QStringLiteral("Hour")},
        });
}

void addPayments(Database& db) {
    insertRows(db, QStringLiteral("PaymentNames"),
               {QStringLiteral("PaymentNameID"), QStringLiteral("PayUnitname"), QStringLiteral("Calculation"),
                QStringLiteral("Salary")},
               {
                   {OrdinaryTime, QStringLiteral("Ordinary Time"), 1, 0},
                   {Overtime, QStringLiteral("Overtime"), 1.5, 0},
                   {DoubleTime, QStringLiteral("Double Time"), 2, 0},
                   {PublicHolidayWorked, QStringLiteral("Public Holiday Worked"), 1.5, 0},
                   {HolidayPay, QStringLiteral("Holiday Pay"), 1, 0},
                   {SickPay, QStringLiteral("Sick Pay"), 1, 0},
                   {SalaryLine, QStringLiteral("Salary"), 0, 1},
               });
    // Default lines of each occupation with its standard hours a week, in list order.
    insertRows(db, QStringLiteral("PaymentTypes"),
               {QStringLiteral("EmployeeTypeID"), QStringLiteral("PaymentNameID"),
                QStringLiteral("Standardhours"), QStringLiteral("Order")},
               {
                   {FarmHand, OrdinaryTime, 40, 1},
                   {FarmHand, Overtime, 0, 2},
                   {HerdManager, OrdinaryTime, 45, 1},
                   {HerdManager, Overtime, 0, 2},
                   {ReliefMilker, OrdinaryTime, 20, 1},
                   {TractorDriver, OrdinaryTime, 35, 1},
                   {TractorDriver, Overtime, 0, 2},
                   {FarmManager, SalaryLine, 50, 1},
                   {PartTimeWorker, OrdinaryTime, 20, 1},
               });
}

void addAllowances(Database& db) {
    insertRows(db, QStringLiteral("TaxAllowName"),
               {QStringLiteral("TaxNameID"), QStringLiteral("taxAllowancename"),
                QStringLiteral("taxallowrate"), QStringLiteral("ExcludeKiwiSaver")},
               {
                   {DogAllowance, QStringLiteral("Dog Allowance"), 5, 0},
                   {ToolAllowance, QStringLiteral("Tool Allowance"), 10, 0},
                   {Accommodation, QStringLiteral("Accommodation"), 1, 1},
               });
    insertRows(db, QStringLiteral("TaxAllowTypes"),
               {QStringLiteral("TaxNameID"), QStringLiteral("EmployeetypeID"), QStringLiteral("Orderinlist")},
               {
                   {DogAllowance, FarmHand, 1},
                   {Accommodation, FarmHand, 2},
                   {DogAllowance, HerdManager, 1},
                   {ToolAllowance, TractorDriver, 1},
               });
    insertRows(
        db, QStringLiteral("NonTaxAllowName"),
        {QStringLiteral("NonTaxNameID"), QStringLiteral("NonTaxallowname"), QStringLiteral("NonTaxRate")},
        {
            {MealAllowance, QStringLiteral("Meal Allowance"), 15},
            {VehicleReimbursement, QStringLiteral("Vehicle Reimbursement"), 1},
            {ClothingAllowance, QStringLiteral("Clothing Allowance"), 1},
        });
    insertRows(db, QStringLiteral("NonTaxAllowTypes"),
               {QStringLiteral("NonTaxNameID"), QStringLiteral("EmployeeTypeID"), QStringLiteral("Order")},
               {
                   {MealAllowance, FarmHand, 1},
                   {ClothingAllowance, FarmHand, 2},
                   {MealAllowance, TractorDriver, 1},
                   {VehicleReimbursement, FarmManager, 1},
               });
}

void addLeaveKinds(Database& db) {
    // Ids 2, 3 and 4 have fixed meanings in the leave ledger; 1 is an opening balance that is listed
    // but never offered.
    insertRows(db, QStringLiteral("TransType"),
               {QStringLiteral("TransTypeID"), QStringLiteral("TransType"), QStringLiteral("Added")},
               {
                   {1, QStringLiteral("Opening Balance"), 1},
                   {2, QStringLiteral("Leave Taken"), 0},
                   {3, QStringLiteral("Allocation Reversed"), 0},
                   {4, QStringLiteral("Leave Allocated"), 1},
                   {5, QStringLiteral("Leave Paid Out"), 0},
               });
}

} // namespace

void addWageTemplate(Database& db) {
    addTemplateTaxRows(db);
    addOccupations(db);
    addPayments(db);
    addAllowances(db);
    addLeaveKinds(db);
    insertRows(db, QStringLiteral("WageInfo"), {QStringLiteral("Cashbook")}, {{0}});
}

} // namespace ql
