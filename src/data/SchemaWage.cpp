// The payroll database: pays and their lines, employees, rate and name tables, leave.
#include "Schema.h"

namespace ql {

void createWageSchema(Database& db) {
    db.executeScript(QStringLiteral(R"SQL(
CREATE TABLE Employees (
    EmployeeID INTEGER PRIMARY KEY AUTOINCREMENT,
    AddressID LONG DEFAULT 0,
    Birthdate DATETIME,
    EmployeeTypeID LONG DEFAULT 0,
    DateHired DATETIME,
    DateFinished DATETIME,
    PayRate CURRENCY DEFAULT 0,
    YearlyTotal CURRENCY DEFAULT 0,
    PayIntervalID LONG DEFAULT 0,
    TaxTypeID LONG DEFAULT 0,
    IRDNumber TEXT(20),
    TaxCode TEXT(20),
    KiwiSaverEnrolled YESNO DEFAULT 0,
    KiwiSaverEnrolID LONG DEFAULT 0,
    KiwiSaverStartDate DATETIME,
    KiwiSaverEmployerRateID LONG DEFAULT 0,
    ExcludeIR348 TEXT(10),
    BankID LONG DEFAULT 0,
    EnterpriseID LONG DEFAULT 0
);
CREATE INDEX EmployeesAddressID ON Employees(AddressID);

CREATE TABLE Wages (
    WageID INTEGER PRIMARY KEY AUTOINCREMENT,
    EmployeeID LONG NOT NULL REFERENCES Employees(EmployeeID) ON DELETE CASCADE,
    [Date] DATETIME,
    Rate CURRENCY DEFAULT 0,
    TaxCode TEXT(20),
    PayInterval TEXT(50),
    OneOff YESNO DEFAULT 0,
    Hours SINGLE DEFAULT 0,
    Gross CURRENCY DEFAULT 0,
    TaxAllow CURRENCY DEFAULT 0,
    TotalTaxable CURRENCY DEFAULT 0,
    PAYE CURRENCY DEFAULT 0,
    NonTaxAllow CURRENCY DEFAULT 0,
    Deductions CURRENCY DEFAULT 0,
    TakeHome CURRENCY DEFAULT 0,
    KiwiSaverContribution CURRENCY DEFAULT 0,
    ESCTDeductions CURRENCY DEFAULT 0,
    TaxCreditKiwiSaver CURRENCY DEFAULT 0,
    Details LONGTEXT,
    Reference TEXT(50),
    PaymentDate DATETIME
);

CREATE TABLE PaymentDetails (
    WageID LONG NOT NULL REFERENCES Wages(WageID) ON DELETE CASCADE,
    PaymentNameID LONG,
    DetailHours SINGLE DEFAULT 0,
    EquivPayRate CURRENCY DEFAULT 0,
    Payment CURRENCY DEFAULT 0,
    UNIQUE (WageID, PaymentNameID)
);
CREATE TABLE TaxAllowDetails (
    WageID LONG NOT NULL REFERENCES Wages(WageID) ON DELETE CASCADE,
    TaxNameID LONG,
    Amountcalcon CURRENCY DEFAULT 0,
    taxallowrate SINGLE DEFAULT 0,
    TaxableAllow CURRENCY DEFAULT 0,
    UNIQUE (WageID, TaxNameID)
);
CREATE TABLE NonTaxAllowDetails (
    WageID LONG NOT NULL REFERENCES Wages(WageID) ON DELETE CASCADE,
    NonTaxNameID LONG,
    Amountcalcon CURRENCY DEFAULT 0,
    NonTaxRate SINGLE DEFAULT 0,
    NonTaxAllow CURRENCY DEFAULT 0,
    UNIQUE (WageID, NonTaxNameID)
);
CREATE TABLE DeductionDetails (
    WageID LONG NOT NULL REFERENCES Wages(WageID) ON DELETE CASCADE,
    DeductNameID LONG,
    AmountCalcon CURRENCY DEFAULT 0,
    Percentage SINGLE DEFAULT 0,
    Deductions CURRENCY DEFAULT 0,
    UNIQUE (WageID, DeductNameID)
);
CREATE TABLE ContributionDetails (
    WageID LONG NOT NULL REFERENCES Wages(WageID) ON DELETE CASCADE,
    ContributionNameID LONG,
    AmountCalcon CURRENCY DEFAULT 0,
    Percentage SINGLE DEFAULT 0,
    ESCT CURRENCY DEFAULT 0,
    Contributions CURRENCY DEFAULT 0,
    UNIQUE (WageID, ContributionNameID)
);
CREATE TABLE TaxDetails (
    WageID LONG NOT NULL REFERENCES Wages(WageID) ON DELETE CASCADE,
    PayIntervalID LONG DEFAULT 0,
    TaxableAmount CURRENCY DEFAULT 0,
    TaxTypeID LONG DEFAULT 0,
    PAYE CURRENCY DEFAULT 0
);
CREATE INDEX TaxDetailsWageID ON TaxDetails(WageID);

CREATE TABLE PaySlip (
    Description TEXT(255),
    Number TEXT(50),
    Rate TEXT(50),
    Amount TEXT(50),
    Total TEXT(50)
);

CREATE TABLE EmployeeAwardType (
    EmployeeTypeID LONG NOT NULL PRIMARY KEY,
    EmployeeType TEXT(50),
    UnitOfPay TEXT(50)
);
CREATE TABLE EmployeeDeductions (
    EmployeeID LONG NOT NULL REFERENCES Employees(EmployeeID) ON DELETE CASCADE,
    DeductID LONG,
    FixedAmount CURRENCY DEFAULT 0,
    SpecialRate SINGLE DEFAULT 0,
    TaxName TEXT(50)
);
CREATE INDEX EmployeeDeductionsEmployeeID ON EmployeeDeductions(EmployeeID);
CREATE TABLE EmployerContributions (
    EmployeeID LONG NOT NULL REFERENCES Employees(EmployeeID) ON DELETE CASCADE,
    ContributionID LONG,
    FixedAmount CURRENCY DEFAULT 0,
    SpecialRate SINGLE DEFAULT 0
);
CREATE INDEX EmployerContributionsEmployeeID ON EmployerContributions(EmployeeID);

CREATE TABLE PayInterval (
    PayIntervalID LONG NOT NULL PRIMARY KEY,
    IntervalName TEXT(50),
    PaysPerYear SINGLE DEFAULT 0,
    NumberOfDays SINGLE DEFAULT 0,
    KiwiSaverCredit CURRENCY DEFAULT 0
);
CREATE TABLE TaxTypes (
    TaxTypeID LONG NOT NULL PRIMARY KEY,
    Taxname TEXT(50),
    [Order] LONG DEFAULT 0
);
CREATE TABLE TaxSteps (
    TaxStepsID LONG NOT NULL PRIMARY KEY,
    taxtypeID LONG,
    upperlimit CURRENCY DEFAULT 0,
    taxrate SINGLE DEFAULT 0
);
CREATE INDEX TaxStepsType ON TaxSteps(taxtypeID, upperlimit);
CREATE TABLE PaymentNames (
    PaymentNameID LONG NOT NULL PRIMARY KEY,
    PayUnitname TEXT(50),
    Calculation SINGLE DEFAULT 0,
    Salary YESNO DEFAULT 0
);
CREATE TABLE PaymentTypes (
    EmployeeTypeID LONG,
    PaymentNameID LONG,
    Standardhours SINGLE DEFAULT 0,
    [Order] LONG DEFAULT 0
);
CREATE TABLE TaxAllowName (
    TaxNameID LONG NOT NULL PRIMARY KEY,
    taxAllowancename TEXT(50),
    taxallowrate SINGLE DEFAULT 0,
    ExcludeKiwiSaver YESNO DEFAULT 0
);
CREATE TABLE TaxAllowTypes (
    TaxNameID LONG,
    EmployeetypeID LONG,
    Orderinlist LONG DEFAULT 0
);
CREATE TABLE NonTaxAllowName (
    NonTaxNameID LONG NOT NULL PRIMARY KEY,
    NonTaxallowname TEXT(50),
    NonTaxRate SINGLE DEFAULT 0
);
CREATE TABLE NonTaxAllowTypes (
    NonTaxNameID LONG,
    EmployeeTypeID LONG,
    [Order] LONG DEFAULT 0
);
CREATE TABLE DeductNames (
    DeductNameID LONG NOT NULL PRIMARY KEY,
    DeductionName TEXT(50),
    CountryPhone LONG DEFAULT 0,
    TaxName TEXT(50),
    Percentage SINGLE DEFAULT 0,
    LowerThreshold CURRENCY DEFAULT 0,
    UpperThreshold CURRENCY DEFAULT 0,
    MaxPercent SINGLE DEFAULT 0
);
CREATE TABLE ContributionNames (
    ContributionNameID LONG NOT NULL PRIMARY KEY,
    ContributionName TEXT(50),
    CountryPhone LONG DEFAULT 0,
    TaxName TEXT(50),
    Percentage SINGLE DEFAULT 0,
    LowerThreshold CURRENCY DEFAULT 0,
    UpperThreshold CURRENCY DEFAULT 0,
    MaxPercent SINGLE DEFAULT 0
);
CREATE TABLE ESCT (
    Salary CURRENCY DEFAULT 0,
    Rate DOUBLE DEFAULT 0
);

CREATE TABLE LeaveDetails (
    LeaveID INTEGER PRIMARY KEY AUTOINCREMENT,
    EmployeeID LONG NOT NULL REFERENCES Employees(EmployeeID) ON DELETE CASCADE,
    LeaveTypeID LONG DEFAULT 0,
    TransTypeID LONG DEFAULT 0,
    NumberofDays SINGLE DEFAULT 0,
    DateFrom DATETIME,
    DateTo DATETIME,
    Comments TEXT(255)
);
CREATE INDEX LeaveDetailsEmployeeID ON LeaveDetails(EmployeeID);
CREATE TABLE TransType (
    TransTypeID LONG NOT NULL PRIMARY KEY,
    TransType TEXT(50),
    Added YESNO DEFAULT 0
);
CREATE TABLE WageInfo (
    Cashbook YESNO DEFAULT 0
);
)SQL"));
    createWageHistoryIndex(db);
}

// An employee's pays in date order (pays of one date in the order of entry), with the figures of the
// wage history, so that the pay list's keys and the history's totals are read from the index alone;
// and the same pays in the order of entry, so that a page of the history in that order is found
// without sorting them all.
void createWageHistoryIndex(Database& db) {
    db.executeScript(QStringLiteral(
        "CREATE INDEX IF NOT EXISTS WagesEmployeeHistory ON Wages(EmployeeID, [Date], WageID, Hours, "
        "Gross, TaxAllow, TotalTaxable, PAYE, NonTaxAllow, Deductions, TakeHome, KiwiSaverContribution);\n"
        "CREATE INDEX IF NOT EXISTS WagesEmployeeEntry ON Wages(EmployeeID, WageID)"));
}

} // namespace ql
