// The public holidays of a year: national ones by rule, Matariki by its gazetted date, the Saturday
// and Sunday ones moved for those who do not work the weekend, and the regions' anniversary days.
#include "holidays/PublicHolidays.h"
#include <gtest/gtest.h>

using namespace ql::holidays;

namespace {

const PublicHoliday* byName(const QList<PublicHoliday>& list, const QString& name) {
    for (const PublicHoliday& h : list)
        if (h.name == name) return &h;
    return nullptr;
}

QDate dateOf(int year, const QString& name, const QString& region = QString()) {
    const QList<PublicHoliday> list = PublicHolidaysOf(year, region);
    const PublicHoliday* h = byName(list, name);
    return h ? h->date : QDate();
}

QDate observedOf(int year, const QString& name) {
    const QList<PublicHoliday> list = PublicHolidaysOf(year);
    const PublicHoliday* h = byName(list, name);
    return h ? h->observed : QDate();
}

} // namespace

TEST(PublicHolidays, EasterByTheComputus) {
    EXPECT_EQ(EasterSunday(2024), QDate(2024, 3, 31));
    EXPECT_EQ(EasterSunday(2025), QDate(2025, 4, 20));
    EXPECT_EQ(EasterSunday(2026), QDate(2026, 4, 5));
    EXPECT_EQ(EasterSunday(2027), QDate(2027, 3, 28));
    EXPECT_EQ(EasterSunday(2038), QDate(2038, 4, 25));
    EXPECT_EQ(EasterSunday(2000), QDate(2000, 4, 23));
    EXPECT_EQ(EasterSunday(2019), QDate(2019, 4, 21));
}

TEST(PublicHolidays, TheElevenNationalHolidaysOf2026) {
    const QList<PublicHoliday> list = PublicHolidaysOf(2026);
    ASSERT_EQ(list.size(), 11);
    const QList<std::pair<QString, QDate>> expected{
        {"New Year's Day", QDate(2026, 1, 1)},  {"Day after New Year's Day", QDate(2026, 1, 2)},
        {"Waitangi Day", QDate(2026, 2, 6)},    {"Good Friday", QDate(2026, 4, 3)},
        {"Easter Monday", QDate(2026, 4, 6)},   {"Anzac Day", QDate(2026, 4, 25)},
        {"King's Birthday", QDate(2026, 6, 1)}, {"Matariki", QDate(2026, 7, 10)},
        {"Labour Day", QDate(2026, 10, 26)},    {"Christmas Day", QDate(2026, 12, 25)},
        {"Boxing Day", QDate(2026, 12, 26)},
    };
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(list.at(i).name, expected.at(i).first);
        EXPECT_EQ(list.at(i).date, expected.at(i).second) << expected.at(i).first.toStdString();
    }
    // Anzac Day on a Saturday and Boxing Day on a Saturday both move to the Monday after.
    EXPECT_EQ(observedOf(2026, "Anzac Day"), QDate(2026, 4, 27));
    EXPECT_EQ(observedOf(2026, "Boxing Day"), QDate(2026, 12, 28));
    EXPECT_EQ(observedOf(2026, "Christmas Day"), QDate(2026, 12, 25));
}

TEST(PublicHolidays, ChristmasAndNewYearPairsMoveToMondayAndTuesday) {
    // 2021: Christmas on a Saturday, Boxing Day on a Sunday.
    EXPECT_EQ(observedOf(2021, "Christmas Day"), QDate(2021, 12, 27));
    EXPECT_EQ(observedOf(2021, "Boxing Day"), QDate(2021, 12, 28));
    // 2022: Christmas on a Sunday moves to the Tuesday; Boxing Day is the Monday itself.
    EXPECT_EQ(observedOf(2022, "Christmas Day"), QDate(2022, 12, 27));
    EXPECT_EQ(observedOf(2022, "Boxing Day"), QDate(2022, 12, 26));
    // 2022: New Year's Day on a Saturday, the day after on a Sunday.
    EXPECT_EQ(observedOf(2022, "New Year's Day"), QDate(2022, 1, 3));
    EXPECT_EQ(observedOf(2022, "Day after New Year's Day"), QDate(2022, 1, 4));
    // 2023: New Year's Day on a Sunday moves to the Tuesday.
    EXPECT_EQ(observedOf(2023, "New Year's Day"), QDate(2023, 1, 3));
    EXPECT_EQ(observedOf(2023, "Day after New Year's Day"), QDate(2023, 1, 2));
}

TEST(PublicHolidays, WaitangiAndAnzacOnASundayMoveToTheMonday) {
    EXPECT_EQ(observedOf(2022, "Waitangi Day"), QDate(2022, 2, 7));
    EXPECT_EQ(observedOf(2021, "Anzac Day"), QDate(2021, 4, 26));
    EXPECT_EQ(observedOf(2027, "Waitangi Day"), QDate(2027, 2, 8)); // a Saturday
}

TEST(PublicHolidays, TheHolidayFollowsWhetherTheWeekendDayIsWorked) {
    const QList<PublicHoliday> list = PublicHolidaysOf(2026);
    // Anzac Day 2026 is a Saturday.
    const PublicHoliday* worker = HolidayOn(list, QDate(2026, 4, 25), true, false);
    ASSERT_NE(worker, nullptr);
    EXPECT_EQ(worker->name, QStringLiteral("Anzac Day"));
    EXPECT_EQ(HolidayOn(list, QDate(2026, 4, 27), true, false), nullptr);
    EXPECT_EQ(HolidayOn(list, QDate(2026, 4, 25), false, false), nullptr);
    ASSERT_NE(HolidayOn(list, QDate(2026, 4, 27), false, false), nullptr);
}

TEST(PublicHolidays, MatarikiByItsGazettedDates) {
    EXPECT_EQ(MatarikiDate(2022), QDate(2022, 6, 24));
    EXPECT_EQ(MatarikiDate(2023), QDate(2023, 7, 14));
    EXPECT_EQ(MatarikiDate(2025), QDate(2025, 6, 20));
    EXPECT_EQ(MatarikiDate(2052), QDate(2052, 6, 21));
    EXPECT_FALSE(MatarikiDate(2021).isValid());
    EXPECT_FALSE(MatarikiDate(2053).isValid());
    for (int y = FirstMatarikiYear(); y <= LastMatarikiYear(); ++y)
        EXPECT_EQ(MatarikiDate(y).dayOfWeek(), 5) << y; // always a Friday
    EXPECT_EQ(PublicHolidaysOf(2021).size(), 10);
}

TEST(PublicHolidays, AnniversaryDaysOf2026) {
    EXPECT_EQ(dateOf(2026, "Wellington Anniversary Day", "Wellington"), QDate(2026, 1, 19));
    EXPECT_EQ(dateOf(2026, "Auckland Anniversary Day", "auckland"), QDate(2026, 1, 26));
    EXPECT_EQ(dateOf(2026, "Northland Anniversary Day", "Northland"), QDate(2026, 1, 26));
    EXPECT_EQ(dateOf(2026, "Nelson Anniversary Day", "Nelson"), QDate(2026, 2, 2));
    EXPECT_EQ(dateOf(2026, "Taranaki Anniversary Day", "Taranaki"), QDate(2026, 3, 9));
    EXPECT_EQ(dateOf(2026, "Otago Anniversary Day", "Otago"), QDate(2026, 3, 23));
    EXPECT_EQ(dateOf(2026, "Southland Anniversary Day", "Southland"), QDate(2026, 4, 7));
    EXPECT_EQ(dateOf(2026, "South Canterbury Anniversary Day", "South Canterbury"), QDate(2026, 9, 28));
    EXPECT_EQ(dateOf(2026, "Hawke's Bay Anniversary Day", "Hawke's Bay"), QDate(2026, 10, 23));
    EXPECT_EQ(dateOf(2026, "Marlborough Anniversary Day", "Marlborough"), QDate(2026, 11, 2));
    EXPECT_EQ(dateOf(2026, "Canterbury Anniversary Day", "Canterbury"), QDate(2026, 11, 13));
    EXPECT_EQ(dateOf(2026, "Chatham Islands Anniversary Day", "Chatham Islands"), QDate(2026, 11, 30));
    EXPECT_EQ(dateOf(2026, "Westland Anniversary Day", "Westland"), QDate(2026, 11, 30));
    EXPECT_EQ(PublicHolidaysOf(2026, QStringLiteral("Canterbury")).size(), 12);
    EXPECT_EQ(PublicHolidaysOf(2026, QStringLiteral("Atlantis")).size(), 11);
    EXPECT_TRUE(CanonicalRegion(QStringLiteral("Atlantis")).isEmpty());
}

TEST(PublicHolidays, OtagoMovesOffEasterMonday) {
    // 2008: the Monday nearest 23 March is Easter Monday, 24 March, so Otago keeps the Tuesday.
    EXPECT_EQ(dateOf(2008, "Otago Anniversary Day", "Otago"), QDate(2008, 3, 25));
}

TEST(PublicHolidays, EveryYearIsInDateOrderWithMondayToFridayObservedDays) {
    for (int y = 2000; y <= 2060; ++y) {
        const QList<PublicHoliday> list = PublicHolidaysOf(y, QStringLiteral("Canterbury"));
        for (int i = 1; i < list.size(); ++i)
            EXPECT_LE(list.at(i - 1).date, list.at(i).date) << y;
        for (const PublicHoliday& h : list)
            EXPECT_LE(h.observed.dayOfWeek(), 5) << y << " " << h.name.toStdString();
    }
}
