#pragma once
// The reads and the one write that a cashbook posting is made of: the employee's bank, enterprise
// and address, the other party's name, a bank's running balance, the default tax entity and bank,
// and one account line of a transaction.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QString>

namespace ql {

class Recordset;

// On the payroll database, for CurrentEmployeeID: its BankID and EnterpriseID; with no Employees row
// the default ordinary bank and enterprise 1. Reports its own failures and keeps what it has.
void getcashbookIDs(Database& db, qint32& banksID, qint32& enterpriseID);
// The employee's AddressID, or 0. Reports its own failures.
qint32 getEmployeeAddressID(qint32 employeeID);
// BusName of the address on the farm database, or the empty text. Reports its own failures.
QString GetOtherParty(Database& db, qint32 addressID);
// Balance and Count of the bank's last transaction; with none they stay as they came in.
void GetBankBalance(Database& db, qint32 banksID, Currency& balance, qint32& count);
// The default tax entity, or 1 when there is none.
qint32 GetDefaultPartner(Database& db);
// The default entity's bank: with ordinary the fallback 1, else its main account (AccountType 1)
// with the fallback 999. Skips failing statements.
qint32 GetDefaultBank(Database& db, bool ordinary);

// Adds one row of TransactionDetails. Particulars longer than 30 characters are cut to 30; a tax line
// (isPaye) is marked for the tax return with PAYERtnID -1.
void AddTransactionDetail(Recordset& rst, Currency amount, qint32 transactionsID, qint32 account,
                          qint32 enterprise, const QString& particulars, const QString& memo, float quantity,
                          bool isPaye);

} // namespace ql
