#pragma once
// The minimum wage check of one pay: the hours worked in the pay period, the pay for them that counts,
// the minimum those hours must earn, and the top-up that makes up a shortfall. Each pay stands alone:
// nothing is averaged across periods. A period across a change of the rate (1 April) is taken in parts,
// each at its own rate, the hours shared out by the employee's usual hours on each day (by calendar
// days when no usual week is known).
#include "PayHistory.h"
#include "WorkPattern.h"
#include <QDate>
#include <QList>

namespace ql::holidays {

struct MinimumWageRates {
    QDate from;
    Currency adult;
    Currency startingOut; // starting-out workers; the training rate is the same figure
};

// The rates by date, oldest first.
const QList<MinimumWageRates>& MinimumWageHistory();
// The hourly minimum in force on a day for the kind of rate; zero before the first kept rate.
Currency MinimumHourlyRate(const QDate& day, MinimumWageRate kind);

// One part of a pay period at one hourly minimum.
struct MinimumWagePart {
    QDate from, to;
    double hours = 0;
    Currency hourlyMinimum;
    Currency minimum; // hours x rate, unrounded
};

struct MinimumWageCheck {
    qint32 wageID = 0;
    qint32 employeeID = 0;
    QDate periodStart, periodEnd;
    float hours = 0;
    QString hoursSource; // "entered" or "payment lines"
    Currency payThatCounts;
    Currency existingTopUp; // a top-up line already on the pay, left out of the pay that counts
    QString rateKind;
    Currency hourlyMinimum; // the rate at the end of the period
    QList<MinimumWagePart> parts; // one, or one for each rate in force during the period
    QString hoursShared;          // how the hours were shared out between the parts (with more than one)
    Currency minimum;
    Currency topUp; // to the cent, rounded up so that the pay reaches the minimum
    bool committed = false;
    QString message; // the message a shortfall gives; empty when none
};

// Raises VbError with the system's message when there is no such pay.
MinimumWageCheck CheckMinimumWage(Database& wage, qint32 wageID);

// Puts the top-up on the pay as its "Minimum wage top-up" payment line (replacing one already there,
// removing it when no top-up is due). Refuses (VbError) a committed pay. The pay's totals are
// recalculated by the caller, as after any edit of its lines.
void ApplyMinimumWageTopUp(Database& wage, const MinimumWageCheck& check);

} // namespace ql::holidays
