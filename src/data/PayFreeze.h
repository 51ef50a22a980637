#pragma once
// What is committed never changes. A pay with a reference is committed; a pay whose cashbook posting
// has begun is held. The payroll file itself refuses, inside the writer's own transaction, any change
// to a committed or held pay's figures or lines, and to a committed pay's reference and payment date,
// so that no other process and no stale screen can change a pay that was paid.
#include "data/Database.h"
#include <QString>

namespace ql {

// The table of held pays and the triggers that guard committed and held pays; made when missing.
void EnsurePayFreeze(Database& wage);

// True when the pay, as the file holds it now, is committed or held.
bool PayFrozen(Database& wage, qint32 wageID);
// The reference the file holds for the pay now; empty when it holds none (or no pay).
QString StoredReference(Database& wage, qint32 wageID);

// Holds the pay before its posting begins: from then on its figures can't change. Raises when the
// pay is no longer there or was committed meanwhile.
void HoldPay(Database& wage, qint32 wageID, const QString& reference);
// Lets the pay go again, after a posting that did not happen.
void ReleasePay(Database& wage, qint32 wageID);

// The record of deleted pays (their figures and reference), made with the guard: a committed pay's
// lines go with it only once its record is kept.
QString deletedPaysTableScript();

// The text the file's guard gives when a change is refused; it is found in the message of the error.
QString frozenPayText();

} // namespace ql
