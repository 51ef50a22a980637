#pragma once
// New Zealand's public holidays of a year: the national ones by rule, Matariki by its gazetted date,
// and a region's anniversary day. A holiday that falls on a Saturday or Sunday keeps its date and is
// also given the weekday on which it is observed by those who do not otherwise work that weekend day.
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace ql::holidays {

struct PublicHoliday {
    QString name;
    QDate date;     // the day itself
    QDate observed; // the weekday it moves to for someone who does not work that weekend day; else date
    QString region; // empty for a national holiday
    bool moves() const { return observed != date; }
};

QDate EasterSunday(int year);

// The years whose Matariki date is gazetted.
int FirstMatarikiYear();
int LastMatarikiYear();
// Invalid when the year has no gazetted date.
QDate MatarikiDate(int year);

// The regions with an anniversary day, as a user names them.
QStringList HolidayRegions();
// The region's name as listed, matched without regard to case; empty when unknown.
QString CanonicalRegion(const QString& name);

// The national holidays of the year in date order, with the region's anniversary day when a region
// is given (a known one: see CanonicalRegion).
QList<PublicHoliday> PublicHolidaysOf(int year, const QString& region = QString());

// The holiday that a day is for someone, or nullptr. worksWeekend says whether the weekend day
// would otherwise be a working day: then the holiday stays on that day, else it is on the observed
// weekday.
const PublicHoliday* HolidayOn(const QList<PublicHoliday>& list, const QDate& day, bool worksSaturday,
                               bool worksSunday);

} // namespace ql::holidays
