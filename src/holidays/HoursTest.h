#pragma once
// When sick, bereavement and family violence leave are due: after six months' current continuous
// employment, or, for work that is not continuous, when over six months the employee worked an average
// of at least 10 hours a week and at least 1 hour in every week or 40 hours in every month. A new year's
// entitlement arises 12 months after the last one while the employee still meets the test; one that
// does not meet it then qualifies again on the first day the six months before meet it.
#include "PayHistory.h"
#include <QDate>
#include <QList>
#include <QString>

namespace ql::holidays {

// The hours test over the six months that end on a day, from the hours of the pays (the hours entered
// for a pay, else the units of its lines for time worked), each pay's hours spread evenly over its period.
struct HoursTest {
    QDate from, to;           // the six months tested, both included
    double totalHours = 0;
    double averageWeekly = 0; // total over the weeks of the six months
    double leastWeek = 0;     // the fewest hours in a week (whole weeks counted back from `to`)
    double leastMonth = 0;    // the fewest hours in a month (months counted back from `to`)
    bool passes = false;
    QString working() const;
};

HoursTest SixMonthHoursTest(const QList<PayRecord>& pays, const QDate& to);

struct LeaveEntitlement {
    QList<QDate> grants; // each day a year's entitlement arose, up to the day asked about
    QString basis;       // how the first arose
    HoursTest lastTest;  // the test behind the last grant (or the test on the day, when none arose)
    bool entitled() const { return !grants.isEmpty(); }
    QDate lastGrant() const { return grants.isEmpty() ? QDate() : grants.last(); }
};

// continuous: the employee's terms say the employment is continuous.
LeaveEntitlement EntitlementDates(const Employee& e, const QList<PayRecord>& pays, bool continuous, const QDate& day);
// The same for an employee of the payroll, from the terms and pays kept.
LeaveEntitlement EntitlementOn(Database& wage, qint32 employeeID, const QDate& day);

} // namespace ql::holidays
