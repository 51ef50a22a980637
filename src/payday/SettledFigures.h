#pragma once
// Whether a committed pay stores the figures its lines give. A commit settles an open pay's figures to
// its lines first (and works its PAYE again when the tax line was worked on another taxable amount),
// but a pay committed by an older version may have left with stale ones: a first pay with no PAYE, a
// gross that an edit changed after the tax was worked. The bank file and the payday filing file take
// the stored figures, so they look here before they use them.
#include "PaydayPays.h"
#include "data/Database.h"
#include <QString>
#include <QStringList>

namespace ql {

// Each way the pay's stored figures differ, to the cent, from what its lines give by the commit's own
// rules ("PAYE 0.00 stored, 131.13 by its tax line"); empty when they agree. A PAYE typed over the
// calculated one lives in the tax line, so it agrees. A one-off pay and a pay without payment lines
// keep their own figures at a commit and are not looked at.
QStringList UnsettledFigures(Database& wage, qint32 wageID);

// The refusal of a file of pays that store figures their lines do not give: each pay named with its
// reference and differences, and the way out. Empty when every pay agrees. what names the file
// ("bank file", "payday filing file").
QString RefusalForUnsettledPays(Database& wage, const QList<PaydayPay>& pays, const QString& what);

} // namespace ql
