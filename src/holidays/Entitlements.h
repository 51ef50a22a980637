#pragma once
// The statutory balances of an employee on a day, worked out from the hired date and what the leave
// ledger records as taken: annual holidays in weeks (4 at each anniversary, the anniversary moved by
// unpaid leave beyond a week), sick leave in days (10 at each year's entitlement, carried over to at
// most 20), family violence leave (10 a year, not carried over), bereavement leave for one death, and
// alternative holidays earned and not yet taken or paid out.
#include "data/Database.h"
#include <QDate>
#include <QList>
#include <QString>

namespace ql::holidays {

struct AnnualBalance {
    QDate lastAnniversary;   // the latest anniversary on or before the day; invalid before the first
    QDate nextAnniversary;
    int completedYears = 0;
    double entitledWeeks = 0;
    double takenDays = 0;     // annual leave taken or paid out as the ledger records it
    double takenWeeks = 0;
    double balanceWeeks = 0;  // may be below 0 when holidays were taken in advance
    int daysPerWeek = 5;
    int unpaidDaysMoved = 0;  // days the anniversary moved by unpaid leave beyond a week
};

struct SickBalance {
    QDate firstEntitled; // invalid while none is due
    QString basis;       // six months' continuous employment, or the hours test
    QString hoursTest;   // the working of the hours test behind the last entitlement
    double entitledDays = 0;
    double takenDays = 0;
    double balanceDays = 0;
};

// Family violence leave: 10 days for each year of entitlement, the unused days not carried over.
// Days taken are the days of the family violence leave lines on the employee's pays.
struct FamilyViolenceBalance {
    QDate yearFrom;      // the start of the current year of entitlement; invalid while none is due
    QString basis;
    double takenDays = 0; // in the current year
    double balanceDays = 0;
};

// Bereavement leave for one death: 3 days for a close relative (spouse or partner, parent, child,
// sibling, grandparent, grandchild, the spouse's or partner's parent), and for a miscarriage or
// stillbirth; 1 day for another person when the employer accepts the employee suffered a bereavement.
struct BereavementEntitlement {
    bool entitled = false;
    QString basis;
    int days = 0;
};

struct AlternativeHoliday {
    qint32 id = 0;
    QDate earnedOn;
    QDate takenOn;
    QDate paidOut;
    QString comments;
    bool open() const { return !takenOn.isValid() && !paidOut.isValid(); }
};

AnnualBalance AnnualBalanceOn(Database& wage, qint32 employeeID, const QDate& day);
SickBalance SickBalanceOn(Database& wage, qint32 employeeID, const QDate& day);
FamilyViolenceBalance FamilyViolenceBalanceOn(Database& wage, qint32 employeeID, const QDate& day);
// closeRelative: the death of a close relative (or a miscarriage or stillbirth).
BereavementEntitlement BereavementOn(Database& wage, qint32 employeeID, const QDate& day, bool closeRelative);
QList<AlternativeHoliday> AlternativeHolidays(Database& wage, qint32 employeeID);
int OpenAlternativeHolidays(Database& wage, qint32 employeeID, const QDate& day);
// Records one earned on a day; returns its id.
qint32 EarnAlternativeHoliday(Database& wage, qint32 employeeID, const QDate& day, const QString& comments);
// Marks the oldest open one as taken or paid out on a day; false when none is open.
bool CloseAlternativeHoliday(Database& wage, qint32 employeeID, const QDate& day, bool paidOut);

} // namespace ql::holidays
