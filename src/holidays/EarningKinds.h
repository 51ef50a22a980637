#pragma once
// The kind of each payment, allowance and one-off line, which says whether the line counts in gross
// earnings (and so in average weekly earnings and average daily pay) and in ordinary weekly pay.
// Kept as a column EarningKind of the three name tables, added on first use with a kind guessed from
// each name; the user may change any of them.
#include "data/Database.h"
#include <QString>
#include <QStringList>

namespace ql::holidays {

enum class EarningKind {
    OrdinaryTime,
    RegularOvertime,
    IrregularOvertime,
    PublicHolidayWorked,
    Productivity,
    DiscretionaryBonus,
    TaxableAllowance,
    BoardLodging,
    AnnualLeavePay,
    PublicHolidayPay,
    AlternativeHolidayPay,
    SickLeavePay,
    BereavementLeavePay,
    FamilyViolenceLeavePay,
    FirstWeekAcc,
    Reimbursement,
    EmployerSuperannuation,
    CashUp,
    PayAsYouGo,
    MinimumWageTopUp,
};

// The code stored in the column ("ordinary-time", ...), and back; ok false for an unknown code.
QString KindCode(EarningKind kind);
EarningKind KindFromCode(const QString& code, bool* ok = nullptr);
QStringList KindCodes();

// Counts in gross earnings.
bool InGrossEarnings(EarningKind kind);
// Counts in ordinary weekly pay: what is paid regularly for an ordinary working week.
bool InOrdinaryWeeklyPay(EarningKind kind);
// Pay for time worked, for the minimum wage check.
bool CountsForMinimumWage(EarningKind kind);

// Which name table: "payment" (PaymentNames), "taxable" (TaxAllowName), "nontaxable" (NonTaxAllowName).
QStringList NameTables();

// Adds the kind column to the name tables where it is missing and gives every name without a kind
// the kind its name suggests; adds the tables this capability keeps (work patterns, days and hours
// of a pay, employees' holiday terms, alternative holidays). Safe to call at every use.
void EnsureHolidayTables(Database& wage);

// A name's kind as stored (after EnsureHolidayTables).
EarningKind NameKind(Database& wage, const QString& table, qint32 id);
// Changes a name's kind; refuses (VbError) an unknown table, id or code.
void SetNameKind(Database& wage, const QString& table, qint32 id, const QString& code);

// The payment name that lines of a kind are put on: the first with that kind, or one created with
// the given caption.
qint32 PaymentNameForKind(Database& wage, EarningKind kind, const QString& caption);

} // namespace ql::holidays
