#pragma once
// The statutory balances of an employee on a day, worked out from the hired date and what the leave
// ledger records as taken: annual holidays in weeks (4 at each anniversary, the anniversary moved by
// unpaid leave beyond a week), sick leave in days (10 after six months and at each 12 months after,
// carried over to at most 20), and alternative holidays earned and not yet taken or paid out.
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
    QDate firstEntitled; // six months after starting
    double entitledDays = 0;
    double takenDays = 0;
    double balanceDays = 0;
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
QList<AlternativeHoliday> AlternativeHolidays(Database& wage, qint32 employeeID);
int OpenAlternativeHolidays(Database& wage, qint32 employeeID, const QDate& day);
// Records one earned on a day; returns its id.
qint32 EarnAlternativeHoliday(Database& wage, qint32 employeeID, const QDate& day, const QString& comments);
// Marks the oldest open one as taken or paid out on a day; false when none is open.
bool CloseAlternativeHoliday(Database& wage, qint32 employeeID, const QDate& day, bool paidOut);

} // namespace ql::holidays
