// RoundCurrency: text or a number to the cent, exact halves to the even cent.
#include "data/RoundCurrency.h"
#include "runtime/VbError.h"
#include "TestEnv.h"
#include <gtest/gtest.h>

using namespace ql;
using qltest::germanLocale;
using qltest::LocaleGuard;
using qltest::nzLocale;

namespace {

struct Row {
    QVariant in;
    const char* out; // four decimals
};

long errorOf(const QVariant& v) {
    try {
        RoundCurrency(v);
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

} // namespace

TEST(RoundCurrency, NewZealandTexts) {
    LocaleGuard g(nzLocale());
    const Row rows[] = {
        {QStringLiteral("0.125"), "0.1200"},
        {QStringLiteral("0.375"), "0.3800"},
        {QStringLiteral("-0.125"), "-0.1200"},
        {QStringLiteral("-0.375"), "-0.3800"},
        {QStringLiteral("1.015"), "1.0100"}, // the double is below the half
        {QStringLiteral("1.005"), "1.0000"},
        {QStringLiteral("$1,234.565"), "1234.5600"},
        {QStringLiteral("$1,234.575"), "1234.5800"},
        {QStringLiteral("-$1,234.565"), "-1234.5600"},
        {QStringLiteral("($1,234.565)"), "-1234.5600"},
        {QStringLiteral("  12.3456  "), "12.3500"},
        {QStringLiteral("2.675"), "2.6800"},
        {QStringLiteral("0.015"), "0.0200"},
        {QStringLiteral("0.025"), "0.0200"},
        {QStringLiteral("0.005"), "0.0000"},
        {QStringLiteral("-0.005"), "0.0000"},
        {QStringLiteral("0.285"), "0.2800"},
        {QStringLiteral("100.125"), "100.1200"},
        {QStringLiteral("0"), "0.0000"},
        {QStringLiteral("1,000"), "1000.0000"},
        {QStringLiteral("1E+03"), "1000.0000"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(RoundCurrency(r.in).toFixed4(), QString::fromLatin1(r.out)) << r.in.toString().toStdString();
}

TEST(RoundCurrency, Numbers) {
    LocaleGuard g(nzLocale());
    const Row rows[] = {
        {QVariant(0.125), "0.1200"},
        {QVariant(1086.429176), "1086.4300"},
        {QVariant(1.255), "1.2500"},
        {QVariant::fromValue(Currency::fromRaw(1250)), "0.1200"},
        {QVariant::fromValue(Currency::fromRaw(3750)), "0.3800"},
        {QVariant::fromValue(Currency::fromRaw(-12345650)), "-1234.5600"},
        {QVariant(0.125f), "0.1200"},
        {QVariant(qint32(42)), "42.0000"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(RoundCurrency(r.in).toFixed4(), QString::fromLatin1(r.out)) << r.in.toString().toStdString();
}

TEST(RoundCurrency, German) {
    LocaleGuard g(germanLocale());
    EXPECT_EQ(RoundCurrency(QStringLiteral("0,125")).toFixed4(), QStringLiteral("0.1200"));
    EXPECT_EQ(RoundCurrency(QStringLiteral("1.234,565 €")).toFixed4(), QStringLiteral("1234.5600"));
    EXPECT_EQ(RoundCurrency(QStringLiteral("-0,375")).toFixed4(), QStringLiteral("-0.3800"));
    EXPECT_EQ(RoundCurrency(QVariant(0.125)).toFixed4(), QStringLiteral("0.1200")); // through "0,125"
}

TEST(RoundCurrency, Refusals) {
    LocaleGuard g(nzLocale());
    EXPECT_EQ(errorOf(QStringLiteral("abc")), err::TypeMismatch);
    EXPECT_EQ(errorOf(QStringLiteral("")), err::TypeMismatch);
    EXPECT_EQ(errorOf(QStringLiteral("$")), err::TypeMismatch);
    EXPECT_EQ(errorOf(QVariant()), err::InvalidUseOfNull);
    EXPECT_EQ(errorOf(QStringLiteral("1E+20")), err::Overflow);
}
