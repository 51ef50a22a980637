#pragma once
// Deleting a pay. The payroll and the cashbook never disagree: a committed pay that was posted has its
// cashbook withdrawals reversed (never twice: the reversal is recorded with them in one transaction of
// the farm file), and the deleted pay's figures and reference are kept in the payroll file, in the
// transaction that deletes it.
#include "data/Database.h"
#include <QDate>
#include <QString>

namespace ql {

struct PayDeletion {
    bool deleted = false;
    QString failure;      // why nothing was deleted
    qint32 reversalID = 0; // the reversing withdrawal, when the pay was posted
    QDate filingDate;     // the payment date whose payday filing held the pay; invalid when uncommitted
    // What the user is told after a committed pay went: the reversal and the filing to amend.
    QString notice() const;
};

// Deletes the pay wageID from wage (the farm file is the one the settings name).
PayDeletion DeletePay(Database& wage, qint32 wageID);

// The tables of the records, made when missing.
void ensureDeletedPaysTable(Database& wage);
void ensureReversedPaysTable(Database& farm);

} // namespace ql
