// The farm database: what the suite shares (addresses, employer details, tax entities, banks,
// accounts) and the cashbook the payroll posts into.
#include "Schema.h"

namespace ql {

void createFarmSchema(Database& db) {
    db.executeScript(QStringLiteral(R"SQL(
CREATE TABLE Addresses (
    AddressID INTEGER PRIMARY KEY AUTOINCREMENT,
    WageFlag YESNO DEFAULT 0,
    BusinessFlag YESNO DEFAULT 0,
    BusName TEXT(100),
    BusAddress1 TEXT(100),
    BusCity TEXT(50),
    ContactLastName TEXT(50),
    ContactFirstName TEXT(50)
);
CREATE TABLE [Farm Details] (
    [Farm Name] TEXT(100),
    [Financial Year] DATETIME,
    Address1 TEXT(100),
    Address2 TEXT(100),
    Address3 TEXT(100),
    [GST Reg Number] TEXT(20),
    [GST Start Date] DATETIME,
    [GST Rate] SINGLE DEFAULT 0,
    [GST Period] LONG DEFAULT 0,
    [Effective Area] DOUBLE DEFAULT 0,
    [Budget GST] YESNO DEFAULT 0,
    [BGT GST Account] LONG DEFAULT 0,
    [OD Interest Rate] SINGLE DEFAULT 0,
    [Budget Year] LONG DEFAULT 0,
    [Current Season] TEXT(20)
);
CREATE TABLE Partners (
    PartnerID LONG NOT NULL PRIMARY KEY,
    PartnerName TEXT(100),
    PartnerGSTNum TEXT(20),
    PartnerDefault YESNO DEFAULT 0,
    PartnerTaxRate SINGLE DEFAULT 0
);
CREATE TABLE Banks (
    BanksID LONG NOT NULL PRIMARY KEY,
    PartnerID LONG DEFAULT 0,
    AccountType LONG DEFAULT 0,
    BankName TEXT(100)
);
CREATE TABLE [Secondary Codes] (
    [Secondary Codes ID] LONG NOT NULL PRIMARY KEY,
    [Cached Name] TEXT(100)
);
CREATE TABLE [Tax Periods] (
    Months LONG NOT NULL PRIMARY KEY,
    Prompt TEXT(50)
);
CREATE TABLE PayeInfo (
    PAYEAccount LONG,
    WageAccount LONG,
    PaymentAccount LONG,
    AdjustAccount LONG,
    PAYEFreq LONG,
    TaxFreq LONG,
    PAYEStart DATETIME,
    ITaxStart DATETIME,
    PAYENonCash YESNO DEFAULT 0,
    PAYEAddressID LONG
);
CREATE TABLE Transactions (
    TransactionsID INTEGER PRIMARY KEY AUTOINCREMENT,
    [Date] DATETIME,
    AddressID LONG DEFAULT 0,
    Reference TEXT(50),
    Amount CURRENCY DEFAULT 0,
    BanksID LONG DEFAULT 0,
    [Other Party] TEXT(100),
    PayDate DATETIME,
    FrequencyID SMALLINT,
    Balance CURRENCY DEFAULT 0,
    [Count] LONG DEFAULT 0
);
CREATE INDEX TransactionsBanksID ON Transactions(BanksID);
CREATE TABLE TransactionDetails (
    TransactionsID LONG NOT NULL REFERENCES Transactions(TransactionsID) ON DELETE CASCADE,
    [Account Code] LONG,
    [Net Amount] CURRENCY DEFAULT 0,
    [Gross Amount] CURRENCY DEFAULT 0,
    [GST Amount] CURRENCY DEFAULT 0,
    [Enterprise Code] LONG DEFAULT 0,
    Quantity SINGLE DEFAULT 0,
    Particulars TEXT(255),
    [Transaction Memo] TEXT(255),
    TaxReturnID LONG DEFAULT 0,
    TaxNumber LONG DEFAULT 0,
    PAYERtnID LONG DEFAULT 0
);
CREATE INDEX TransactionDetailsTransactionsID ON TransactionDetails(TransactionsID);
)SQL"));
}

} // namespace ql
