#pragma once
// The four accounts a posting needs, the loop that sends the user to the PAYE settings until they
// stand, and the switch that says whether a commit posts to the cashbook at all.
#include "data/Database.h"
#include <QObject>
#include <QString>

namespace ql {

// True when PayeInfo names four accounts that all exist in [Secondary Codes], or has no row at all
// (the posting then uses the settings' defaults). A failure counts as false.
bool CheckWageAccounts(Database& db);

// Empty when the commit may post; "Cancelled" when the user gave up; otherwise what the settings
// dialog gave back.
QString EnsureWageAccounts(QObject* owner);

// The PAYE settings dialog, modally: empty after OK, "Cancelled" after Cancel.
QString ShowPayeInfo(QObject* owner);

// WageInfo.Cashbook as the value of the Update Cashbook box: 1 or 0.
qint32 getWageCash();
void SwitchWageCash(qint32 value);

} // namespace ql
