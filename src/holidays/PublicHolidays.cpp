#include "PublicHolidays.h"
#include <algorithm>
#include <array>

namespace ql::holidays {

namespace {

// The gazetted Matariki holidays, 2022 to 2052, as month and day.
constexpr int kMatarikiFirst = 2022;
constexpr std::array<std::pair<int, int>, 31> kMatariki{{
    {6, 24}, {7, 14}, {6, 28}, {6, 20}, {7, 10}, {6, 25}, {7, 14}, {7, 6},  {6, 21}, {7, 11}, {7, 2},
    {6, 24}, {7, 7},  {6, 29}, {7, 18}, {7, 10}, {6, 25}, {7, 15}, {7, 6},  {7, 19}, {7, 11}, {7, 3},
    {6, 24}, {7, 7},  {6, 29}, {7, 19}, {7, 3},  {6, 25}, {7, 15}, {6, 30}, {6, 21},
}};

// The n-th (1-based) given weekday (1 Monday .. 7 Sunday) of a month.
QDate nthWeekday(int year, int month, int weekday, int n) {
    QDate d(year, month, 1);
    while (d.dayOfWeek() != weekday)
        d = d.addDays(1);
    return d.addDays(7 * (n - 1));
}

// The Monday nearest a day: Tuesday to Thursday go back, Friday to Sunday go forward.
QDate nearestMonday(const QDate& d) {
    const int dow = d.dayOfWeek();
    if (dow == 1) return d;
    return dow <= 4 ? d.addDays(1 - dow) : d.addDays(8 - dow);
}

// Waitangi Day and Anzac Day: a Saturday or Sunday one moves to the Monday after.
PublicHoliday mondayised(const QString& name, const QDate& d) {
    const int dow = d.dayOfWeek();
    return {name, d, dow == 6 ? d.addDays(2) : dow == 7 ? d.addDays(1) : d, QString()};
}

// The Christmas and New Year pairs: a day on a Saturday or Sunday moves two days on, which lands the
// first of the pair on the Monday or Tuesday and the second on the other.
PublicHoliday paired(const QString& name, const QDate& d) {
    return {name, d, d.dayOfWeek() >= 6 ? d.addDays(2) : d, QString()};
}

struct Region {
    const char* name;
    QDate (*day)(int year);
};

QDate wellington(int y) { return nearestMonday(QDate(y, 1, 22)); }
QDate auckland(int y) { return nearestMonday(QDate(y, 1, 29)); }
QDate nelson(int y) { return nearestMonday(QDate(y, 2, 1)); }
QDate taranaki(int y) { return nthWeekday(y, 3, 1, 2); }
QDate otago(int y) {
    // The Monday nearest 23 March, the Tuesday after when that is Easter Monday.
    const QDate d = nearestMonday(QDate(y, 3, 23));
    return d == EasterSunday(y).addDays(1) ? d.addDays(1) : d;
}
QDate southland(int y) { return EasterSunday(y).addDays(2); }
QDate southCanterbury(int y) { return nthWeekday(y, 9, 1, 4); }
QDate labourDay(int y) { return nthWeekday(y, 10, 1, 4); }
QDate hawkesBay(int y) { return labourDay(y).addDays(-3); }
QDate marlborough(int y) { return labourDay(y).addDays(7); }
QDate canterbury(int y) { return nthWeekday(y, 11, 2, 1).addDays(10); }
QDate chathams(int y) { return nearestMonday(QDate(y, 11, 30)); }
QDate westland(int y) { return nearestMonday(QDate(y, 12, 1)); }

const std::array<Region, 13> kRegions{{
    {"Wellington", wellington},
    {"Auckland", auckland},
    {"Northland", auckland},
    {"Nelson", nelson},
    {"Taranaki", taranaki},
    {"Otago", otago},
    {"Southland", southland},
    {"South Canterbury", southCanterbury},
    {"Hawke's Bay", hawkesBay},
    {"Marlborough", marlborough},
    {"Canterbury", canterbury},
    {"Chatham Islands", chathams},
    {"Westland", westland},
}};

} // namespace

QDate EasterSunday(int year) {
    // The Gregorian computus (anonymous algorithm).
    const int a = year % 19, b = year / 100, c = year % 100, d = b / 4, e = b % 4;
    const int f = (b + 8) / 25, g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int month = (h + l - 7 * m + 114) / 31, day = (h + l - 7 * m + 114) % 31 + 1;
    return QDate(year, month, day);
}

int FirstMatarikiYear() { return kMatarikiFirst; }
int LastMatarikiYear() { return kMatarikiFirst + int(kMatariki.size()) - 1; }

QDate MatarikiDate(int year) {
    if (year < FirstMatarikiYear() || year > LastMatarikiYear()) return QDate();
    const auto& [m, d] = kMatariki.at(std::size_t(year - kMatarikiFirst));
    return QDate(year, m, d);
}

QStringList HolidayRegions() {
    QStringList out;
    for (const Region& r : kRegions)
        out << QString::fromUtf8(r.name);
    return out;
}

QString CanonicalRegion(const QString& name) {
    const QString wanted = name.trimmed();
    for (const Region& r : kRegions)
        if (wanted.compare(QString::fromUtf8(r.name), Qt::CaseInsensitive) == 0) return QString::fromUtf8(r.name);
    return QString();
}

QList<PublicHoliday> PublicHolidaysOf(int year, const QString& region) {
    QList<PublicHoliday> out;
    out << paired(QStringLiteral("New Year's Day"), QDate(year, 1, 1));
    out << paired(QStringLiteral("Day after New Year's Day"), QDate(year, 1, 2));
    out << mondayised(QStringLiteral("Waitangi Day"), QDate(year, 2, 6));
    const QDate easter = EasterSunday(year);
    out << PublicHoliday{QStringLiteral("Good Friday"), easter.addDays(-2), easter.addDays(-2), QString()};
    out << PublicHoliday{QStringLiteral("Easter Monday"), easter.addDays(1), easter.addDays(1), QString()};
    out << mondayised(QStringLiteral("Anzac Day"), QDate(year, 4, 25));
    const QDate kings = nthWeekday(year, 6, 1, 1);
    out << PublicHoliday{QStringLiteral("King's Birthday"), kings, kings, QString()};
    const QDate matariki = MatarikiDate(year);
    if (matariki.isValid()) out << PublicHoliday{QStringLiteral("Matariki"), matariki, matariki, QString()};
    out << PublicHoliday{QStringLiteral("Labour Day"), labourDay(year), labourDay(year), QString()};
    out << paired(QStringLiteral("Christmas Day"), QDate(year, 12, 25));
    out << paired(QStringLiteral("Boxing Day"), QDate(year, 12, 26));
    const QString known = CanonicalRegion(region);
    for (const Region& r : kRegions)
        if (!known.isEmpty() && known == QString::fromUtf8(r.name)) {
            const QDate d = r.day(year);
            out << PublicHoliday{known + QStringLiteral(" Anniversary Day"), d, d, known};
        }
    std::stable_sort(out.begin(), out.end(),
                     [](const PublicHoliday& a, const PublicHoliday& b) { return a.date < b.date; });
    return out;
}

const PublicHoliday* HolidayOn(const QList<PublicHoliday>& list, const QDate& day, bool worksSaturday,
                               bool worksSunday) {
    for (const PublicHoliday& h : list) {
        if (!h.moves()) {
            if (h.date == day) return &h;
            continue;
        }
        const bool worksThatDay = h.date.dayOfWeek() == 6 ? worksSaturday : worksSunday;
        if ((worksThatDay ? h.date : h.observed) == day) return &h;
    }
    return nullptr;
}

} // namespace ql::holidays
