#pragma once
// The employees a pay can go to (hired, not finished), with their names from the farm's address book
// and their bank accounts from this program's own table.
#include "data/Database.h"
#include <QList>
#include <QString>

namespace ql {

struct Payee {
    qint32 employeeID = 0;
    QString name; // first name and family name
    QString account;
};

// In family-name order.
QList<Payee> CurrentPayees(Database& wage);

} // namespace ql
