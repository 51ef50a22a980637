#pragma once
// Every payment, taxable and non-taxable allowance name with its kind of earnings, in the order the
// kinds are listed and changed (payment names also serve one-off pays); and what each kind is called
// on the screen.
#include "EarningKinds.h"
#include <QList>

namespace ql::holidays {

struct NamedKind {
    QString table; // "payment", "taxable" or "nontaxable" (see NameTables)
    qint32 id = 0;
    QString name;
    QString code; // as stored
    EarningKind kind = EarningKind::OrdinaryTime;
};

// After EnsureHolidayTables: payments, then taxable, then non-taxable allowances, each by id.
QList<NamedKind> NamedKinds(Database& wage);

// "Ordinary time", "Regular overtime", ...: a kind as a person reads it.
QString KindCaption(EarningKind kind);
// "Payment", "Taxable allowance", "Non-taxable allowance".
QString NameTableCaption(const QString& table);

} // namespace ql::holidays
