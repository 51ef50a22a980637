// Serial dates, text to date, DateAdd, the clock and the short date.
#include "runtime/DateFns.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include "ErrorNumber.h"
#include "TestEnv.h"
#include <gtest/gtest.h>

using namespace ql;
using qltest::errorNumber;
using qltest::germanLocale;
using qltest::LocaleGuard;
using qltest::nzLocale;

namespace {

// Pins the clock to a fixed moment for the life of the object.
struct PinnedClock {
    explicit PinnedClock(const QDateTime& at) {
        setClockForTesting([at] { return at; });
    }
    ~PinnedClock() { setClockForTesting({}); }
};

struct TextRow {
    const char* text;
    QDate date; // invalid: no date
};

} // namespace

TEST(Serials, ZeroAndBack) {
    EXPECT_EQ(ZeroDate, QDate(1899, 12, 30));
    EXPECT_EQ(DateToSerial(ZeroDate), 0.0);
    EXPECT_EQ(DateToSerial(QDate(1900, 1, 1)), 2.0);
    EXPECT_EQ(DateToSerial(QDate(2024, 3, 5)), 45356.0);
    EXPECT_EQ(SerialToDate(45356.0), QDate(2024, 3, 5));
    EXPECT_EQ(SerialToDate(45356.75), QDate(2024, 3, 5));
    EXPECT_EQ(SerialToDate(-1.0), QDate(1899, 12, 29));
    EXPECT_EQ(SerialToDate(-1.5), QDate(1899, 12, 29)); // the fraction is a time on the same day
    EXPECT_EQ(CDate(QVariant(true)), QDate(1899, 12, 29)); // True is -1
    EXPECT_EQ(CDate(QVariant(45356.0)), QDate(2024, 3, 5));
    EXPECT_EQ(CDateTime(QVariant(2.5)), QDateTime(QDate(1900, 1, 1), QTime(12, 0)));
    EXPECT_EQ(CDate(QVariant::fromValue(Currency::fromLong(2))), QDate(1900, 1, 1));
}

TEST(DateText, NewZealand) {
    LocaleGuard g(nzLocale());
    PinnedClock clock(QDateTime(QDate(2024, 6, 15), QTime(9, 30)));
    const TextRow rows[] = {
        {"5/03/2024", QDate(2024, 3, 5)},
        {"5/3/2024", QDate(2024, 3, 5)},
        {"05/03/24", QDate(2024, 3, 5)},
        {"2/13/2020", QDate(2020, 2, 13)}, // not day/month: month/day
        {"2024-03-05", QDate(2024, 3, 5)},
        {"2024/03/05", QDate(2024, 3, 5)},
        {"5 Mar 2024", QDate(2024, 3, 5)},
        {"05 Mar 2024", QDate(2024, 3, 5)},
        {"5 March 2024", QDate(2024, 3, 5)},
        {"March 5, 2024", QDate(2024, 3, 5)},
        {"5-Mar-24", QDate(2024, 3, 5)},
        {"March 2024", QDate(2024, 3, 1)},
        {"5/3", QDate(2024, 3, 5)},
        {"1/1/29", QDate(2029, 1, 1)},
        {"1/1/30", QDate(1930, 1, 1)},
        {"1/1/99", QDate(1999, 1, 1)},
        {"1/1/00", QDate(2000, 1, 1)},
        {"  5/03/2024  ", QDate(2024, 3, 5)},
        {"5/03/2024 13:45", QDate(2024, 3, 5)},
        {"Tuesday, 5 March 2024", QDate(2024, 3, 5)},
        {"", QDate()},
        {"abc", QDate()},
        {"12345", QDate()},
        {"31/02/2024", QDate()},
        {"32/13/2024", QDate()},
        {"5 Foo 2024", QDate()},
        {"5/03/2024 25:00", QDate()},
    };
    for (const auto& r : rows) {
        const QString t = QString::fromLatin1(r.text);
        EXPECT_EQ(IsDate(QVariant(t)), r.date.isValid()) << r.text;
        if (r.date.isValid())
            EXPECT_EQ(CDate(QVariant(t)), r.date) << r.text;
        else
            EXPECT_EQ(errorNumber([&] { CDate(QVariant(t)); }), err::TypeMismatch) << r.text;
    }
    EXPECT_EQ(CDateTime(QVariant(QStringLiteral("5/03/2024 1:45 pm"))), QDateTime(QDate(2024, 3, 5), QTime(13, 45)));
    EXPECT_EQ(CDateTime(QVariant(QStringLiteral("13:45"))), QDateTime(ZeroDate, QTime(13, 45)));
}

TEST(DateText, German) {
    LocaleGuard g(germanLocale());
    EXPECT_EQ(CDate(QVariant(QStringLiteral("05.03.2024"))), QDate(2024, 3, 5));
    EXPECT_EQ(CDate(QVariant(QStringLiteral("5.3.24"))), QDate(2024, 3, 5));
    EXPECT_EQ(CDate(QVariant(QStringLiteral("2024-03-05"))), QDate(2024, 3, 5));
    EXPECT_EQ(CDate(QVariant(QStringLiteral("5. März 2024"))), QDate(2024, 3, 5));
    EXPECT_EQ(CDate(QVariant(QStringLiteral("5 Mar 2024"))), QDate(2024, 3, 5));
    EXPECT_FALSE(IsDate(QVariant(QStringLiteral("31.02.2024"))));
}

TEST(DateKinds, IsDateOfValues) {
    EXPECT_TRUE(IsDate(QVariant(QDate(2024, 3, 5))));
    EXPECT_TRUE(IsDate(QVariant(QDateTime(QDate(2024, 3, 5), QTime(1, 0)))));
    EXPECT_FALSE(IsDate(QVariant(45356.0)));
    EXPECT_FALSE(IsDate(QVariant()));
    EXPECT_EQ(errorNumber([] { CDate(QVariant()); }), err::InvalidUseOfNull);
    EXPECT_EQ(CDate(QVariant(QDateTime(QDate(2024, 3, 5), QTime(23, 59)))), QDate(2024, 3, 5));
}

TEST(DateAdd, Intervals) {
    const QDate d(2024, 1, 31);
    EXPECT_EQ(DateAdd(QStringLiteral("d"), 1, d), QDate(2024, 2, 1));
    EXPECT_EQ(DateAdd(QStringLiteral("D"), -31, d), QDate(2023, 12, 31));
    EXPECT_EQ(DateAdd(QStringLiteral("ww"), 2, d), QDate(2024, 2, 14));
    EXPECT_EQ(DateAdd(QStringLiteral("m"), 1, d), QDate(2024, 2, 29));
    EXPECT_EQ(DateAdd(QStringLiteral("m"), 1, QDate(2023, 1, 31)), QDate(2023, 2, 28));
    EXPECT_EQ(DateAdd(QStringLiteral("m"), -1, QDate(2024, 3, 31)), QDate(2024, 2, 29));
    EXPECT_EQ(DateAdd(QStringLiteral("q"), 1, QDate(2024, 11, 30)), QDate(2025, 2, 28));
    EXPECT_EQ(DateAdd(QStringLiteral("yyyy"), 1, QDate(2016, 2, 29)), QDate(2017, 2, 28));
    EXPECT_EQ(DateAdd(QStringLiteral("yyyy"), 4, QDate(2016, 2, 29)), QDate(2020, 2, 29));
    EXPECT_EQ(errorNumber([] { DateAdd(QStringLiteral("x"), 1, QDate(2024, 1, 1)); }), err::InvalidProcedureCall);
    EXPECT_EQ(errorNumber([] { DateAdd(QStringLiteral("yyyy"), 9000, QDate(2024, 1, 1)); }), err::InvalidProcedureCall);
}

// Pays per year over 12 as a Single, rounded half to even to whole months.
TEST(DateAdd, FractionalMonthsHalfToEven) {
    const QDate d(2024, 1, 15);
    struct Row {
        float paysPerYear;
        QDate expected;
    } rows[] = {
        {12, QDate(2024, 2, 15)}, {24, QDate(2024, 3, 15)}, {4, QDate(2024, 1, 15)},
        {26, QDate(2024, 3, 15)}, {52, QDate(2024, 5, 15)}, {6, QDate(2024, 1, 15)},  // 0.5 -> 0
        {18, QDate(2024, 3, 15)}, // 1.5 -> 2
        {30, QDate(2024, 3, 15)}, // 2.5 -> 2
        {1, QDate(2024, 1, 15)},
    };
    for (const auto& r : rows)
        EXPECT_EQ(DateAdd(QStringLiteral("m"), r.paysPerYear / 12.0f, d), r.expected) << r.paysPerYear;
    EXPECT_EQ(DateAdd(QStringLiteral("d"), 2.5, d), QDate(2024, 1, 17));
    EXPECT_EQ(DateAdd(QStringLiteral("d"), 3.5, d), QDate(2024, 1, 19));
    EXPECT_EQ(DateAdd(QStringLiteral("d"), -0.5, d), d);
}

TEST(Clock, PinnedAndRestored) {
    {
        PinnedClock clock(QDateTime(QDate(2030, 7, 1), QTime(8, 0)));
        EXPECT_EQ(Today(), QDate(2030, 7, 1));
        EXPECT_EQ(Now(), QDateTime(QDate(2030, 7, 1), QTime(8, 0)));
    }
    EXPECT_EQ(Today(), QDate::currentDate());
}

TEST(ShortDate, FourDigitYear) {
    {
        LocaleGuard g(nzLocale());
        EXPECT_EQ(shortDateFormat(), QStringLiteral("d/MM/yyyy"));
        EXPECT_EQ(CStr(QVariant(QDate(2024, 3, 5))), QStringLiteral("5/03/2024"));
        EXPECT_EQ(CStr(QVariant(QDateTime(QDate(2024, 3, 5), QTime(0, 0)))), QStringLiteral("5/03/2024"));
        EXPECT_TRUE(CStr(QVariant(QDateTime(QDate(2024, 3, 5), QTime(13, 2, 3)))).startsWith(QStringLiteral("5/03/2024 1:02:03")));
    }
    LocaleGuard g(germanLocale());
    EXPECT_EQ(shortDateFormat(), QStringLiteral("dd.MM.yyyy"));
}
