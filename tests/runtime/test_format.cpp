// The named formats, under English (New Zealand) and German.
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "TestEnv.h"
#include <QDate>
#include <gtest/gtest.h>

using namespace ql;
using qltest::germanLocale;
using qltest::LocaleGuard;
using qltest::nzLocale;

namespace {

struct Row {
    QVariant value;
    const char* format;
    const char* expected;
};

QVariant cur(std::int64_t raw) { return QVariant::fromValue(Currency::fromRaw(raw)); }

void check(const std::vector<Row>& rows) {
    for (const auto& r : rows)
        EXPECT_EQ(Format(r.value, QString::fromUtf8(r.format)), QString::fromUtf8(r.expected))
            << r.format << " of " << r.value.toString().toStdString();
}

const QDate march5(2024, 3, 5);

} // namespace

TEST(FormatNumbers, NewZealand) {
    LocaleGuard g(nzLocale());
    check({
        {1234.5, "Currency", "$1,234.50"},
        {-1234.5, "currency", "-$1,234.50"},
        {cur(12345000), "CURRENCY", "$1,234.50"},
        {0.005, "currency", "$0.01"},
        {-0.001, "currency", "-$0.00"},
        {1234567.891, "currency", "$1,234,567.89"},
        {0.0, "currency", "$0.00"},
        {1234.5, "Fixed", "1234.50"},
        {0.5, "fixed", "0.50"},
        {-1234.567, "fixed", "-1234.57"},
        {1234.5, "Standard", "1,234.50"},
        {1234567.5, "standard", "1,234,567.50"},
        {123.0, "standard", "123.00"},
        {0.125, "0.00", "0.13"},
        {1.005, "0.00", "1.01"},
        {2.5, "0", "3"},
        {3.5, "0", "4"},
        {-2.5, "0", "-3"},
        {0.5, ".00", ".50"},
        {1.5, ".00", "1.50"},
        {0.05, "0.0", "0.1"},
        {-0.04, "0.0", "-0.0"},
        {-0.001, "0.00", "-0.00"},
        {1234.5, "0.00", "1234.50"},
        {0.0, "0.00", "0.00"},
        {0.0, ".00", ".00"},
        {9.995, "0.00", "10.00"},
        {99.5, "0", "100"},
        {cur(1250), "0.00", "0.13"},  // 0.125 exactly: away from zero
        {cur(-1250), "0.00", "-0.13"},
        {QVariant(0.125f), "0.00", "0.13"},
        {QVariant(1.005f), "0.00", "1.01"}, // the Single's seven digits are "1.005"
        {QVariant(qint32(7)), "0.00", "7.00"},
        {QVariant(1.0 / 3), "0.0", "0.3"},
        {1e20, "0", "100000000000000000000"},
        {QStringLiteral("$1,234.5"), "fixed", "1234.50"},
        {QStringLiteral("abc"), "fixed", "abc"},
        {1234.5, "#,##0.00", "1,234.50"},
        {0.256, "0%", "26%"},
    });
}

TEST(FormatNumbers, German) {
    LocaleGuard g(germanLocale());
    const QString euro = Format(1234.5, QStringLiteral("currency"));
    EXPECT_TRUE(euro.startsWith(QStringLiteral("1.234,50"))) << euro.toStdString();
    EXPECT_TRUE(euro.endsWith(QStringLiteral("€"))) << euro.toStdString();
    EXPECT_EQ(Format(-1234.5, QStringLiteral("currency")), QStringLiteral("-") + euro);
    check({
        {1234.5, "fixed", "1234,50"},
        {1234.5, "standard", "1.234,50"},
        {0.125, "0.00", "0,13"},
        {0.5, ".00", ",50"},
        {0.05, "0.0", "0,1"},
        {QStringLiteral("1.234,5"), "fixed", "1234,50"},
    });
}

TEST(FormatNumbers, EmptyFormatIsGeneral) {
    LocaleGuard g(nzLocale());
    EXPECT_EQ(Format(1.5), QStringLiteral("1.5"));
    EXPECT_EQ(Format(QVariant(0.1f)), QStringLiteral("0.1"));
    EXPECT_EQ(Format(cur(20000)), QStringLiteral("2"));
    EXPECT_EQ(Format(QVariant(march5)), QStringLiteral("5/03/2024"));
    EXPECT_EQ(Format(QVariant()), QString());
    EXPECT_EQ(Format(QVariant(), QStringLiteral("currency")), QString());
}

TEST(FormatDates, NewZealand) {
    LocaleGuard g(nzLocale());
    const QVariant d(march5);
    check({
        {d, "Short Date", "5/03/2024"},
        {d, "short date", "5/03/2024"},
        {d, "dd mmm yyyy", "05 Mar 2024"},
        {d, "d mmm yyyy", "5 Mar 2024"},
        {d, "mmmm yyyy", "March 2024"},
        {d, "MMMM YYYY", "March 2024"},
        {d, "mm", "03"},
        {d, "dd", "05"},
        {d, "yyyy", "2024"},
        {d, "General Date", "5/03/2024"},
        {d, "dd/mm/yyyy", "05/03/2024"},
        {d, "yyyy-mm-dd", "2024-03-05"},
        {QVariant(QDate(2024, 12, 25)), "d mmm yyyy", "25 Dec 2024"},
        {QVariant(45356.0), "short date", "5/03/2024"},
        {QVariant(QStringLiteral("5/03/2024")), "dd mmm yyyy", "05 Mar 2024"},
        {QVariant(QStringLiteral("2024-03-05")), "d mmm yyyy", "5 Mar 2024"},
        {QVariant(QStringLiteral("nonsense")), "short date", "nonsense"},
        {QVariant(QDateTime(march5, QTime(14, 7, 9))), "hh:nn:ss", "14:07:09"},
        {QVariant(QDateTime(march5, QTime(14, 7, 9))), "h:mm AM/PM", "2:07 PM"},
    });
}

TEST(FormatDates, German) {
    LocaleGuard g(germanLocale());
    check({
        {QVariant(march5), "short date", "05.03.2024"},
        {QVariant(march5), "dd/mm/yyyy", "05.03.2024"},
        {QVariant(march5), "mmmm yyyy", "März 2024"},
        {QVariant(march5), "yyyy", "2024"},
    });
}
