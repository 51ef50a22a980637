// Text to number and back, under English (New Zealand) and German.
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include "ErrorNumber.h"
#include "TestEnv.h"
#include <QDate>
#include <cfloat>
#include <gtest/gtest.h>

using namespace ql;
using qltest::errorNumber;
using qltest::germanLocale;
using qltest::LocaleGuard;
using qltest::nzLocale;

namespace {

struct NumericRow {
    const char* text;
    bool numeric;
    double value;
};

const NumericRow nzRows[] = {
    {"5", true, 5},           {"  5  ", true, 5},          {"-5", true, -5},
    {"5-", true, -5},         {"+5", true, 5},             {"5+", true, 5},
    {"(5)", true, -5},        {"$-11", true, -11},         {"-$11", true, -11},
    {"$ 11", true, 11},       {"11$", true, 11},           {"$11", true, 11},
    {"1,00,0", true, 1000},   {"1,234.5", true, 1234.5},   {".5", true, 0.5},
    {"5.", true, 5},          {"1E+03", true, 1000},       {"1e3", true, 1000},
    {"1.5E-2", true, 0.015},  {"&H1F", true, 31},          {"&O17", true, 15},
    {"&HFFFF", true, -1},     {"($1,234.56)", true, -1234.56},
    {"", false, 0},           {"$", false, 0},             {".", false, 0},
    {",1,000", false, 0},     {"-5-", false, 0},           {"(5", false, 0},
    {"1 e1", false, 0},       {"1e", false, 0},            {"1..1", false, 0},
    {"1.1.1", false, 0},      {"0x1F", false, 0},          {"abc", false, 0},
    {"  ", false, 0},         {"1,5", true, 15},           {"€5", false, 0},
    {"1.5.", false, 0},       {"5)", false, 0},            {"-(5)", false, 0},
    {"&H", false, 0},         {"&H1G", false, 0},          {"&H123456789", false, 0},
    {"&HFFFFFFFF", true, -1}, {"&H10000", true, 65536},    {"&O", false, 0},
};

const NumericRow germanRows[] = {
    {"1,5", true, 1.5},         {"1.234,5", true, 1234.5}, {"1.00.0", true, 1000},
    {",5", true, 0.5},          {"5,", true, 5},           {"€5", true, 5},
    {"5 €", true, 5},           {"-5 €", true, -5},        {"(5)", true, -5},
    {"1,5E+02", true, 150},     {".1.000", false, 0},      {"1,,1", false, 0},
    {"1,1,1", false, 0},        {"$5", false, 0},          {"1.5", true, 15},
};

} // namespace

TEST(ParseNumber, NewZealandRows) {
    LocaleGuard g(nzLocale());
    for (const auto& r : nzRows) {
        const QString t = QString::fromUtf8(r.text);
        EXPECT_EQ(IsNumeric(t), r.numeric) << r.text;
        auto v = parseNumber(t);
        EXPECT_EQ(v.has_value(), r.numeric) << r.text;
        if (r.numeric && v) {
            EXPECT_DOUBLE_EQ(*v, r.value) << r.text;
            EXPECT_DOUBLE_EQ(CDbl(QVariant(t)), r.value) << r.text;
        } else {
            EXPECT_EQ(errorNumber([&] { CDbl(QVariant(t)); }), err::TypeMismatch) << r.text;
        }
    }
}

TEST(ParseNumber, GermanRows) {
    LocaleGuard g(germanLocale());
    for (const auto& r : germanRows) {
        const QString t = QString::fromUtf8(r.text);
        EXPECT_EQ(IsNumeric(t), r.numeric) << r.text;
        if (r.numeric) {
            EXPECT_DOUBLE_EQ(CDbl(QVariant(t)), r.value) << r.text;
        }
    }
}

TEST(ParseNumber, ExplicitLocaleArgument) {
    EXPECT_DOUBLE_EQ(*parseNumber(QStringLiteral("1.234,5"), germanLocale()), 1234.5);
    EXPECT_DOUBLE_EQ(*parseNumber(QStringLiteral("1,234.5"), nzLocale()), 1234.5);
}

TEST(IsNumericVariant, Kinds) {
    EXPECT_TRUE(IsNumeric(QVariant::fromValue(Currency::fromRaw(15000))));
    EXPECT_TRUE(IsNumeric(QVariant(1.5f)));
    EXPECT_TRUE(IsNumeric(QVariant(1.5)));
    EXPECT_TRUE(IsNumeric(QVariant(qint32(3))));
    EXPECT_TRUE(IsNumeric(QVariant(true)));
    EXPECT_FALSE(IsNumeric(QVariant()));
    EXPECT_FALSE(IsNumeric(QVariant(QDate(2024, 3, 5))));
    EXPECT_FALSE(IsNumeric(QVariant(QStringLiteral("x"))));
}

TEST(CDblVariant, Kinds) {
    EXPECT_DOUBLE_EQ(CDbl(QVariant::fromValue(Currency::fromRaw(12345))), 1.2345);
    EXPECT_EQ(CDbl(QVariant(0.1f)), static_cast<double>(0.1f));
    EXPECT_EQ(CDbl(QVariant(qint32(-7))), -7.0);
    EXPECT_EQ(CDbl(QVariant(int(7))), 7.0);
    EXPECT_EQ(CDbl(QVariant(true)), -1.0);
    EXPECT_EQ(CDbl(QVariant(false)), 0.0);
    EXPECT_EQ(CDbl(QVariant(QDate(1899, 12, 30))), 0.0);
    EXPECT_EQ(CDbl(QVariant(QDate(2024, 3, 5))), 45356.0);
    EXPECT_EQ(CDbl(QVariant(QDateTime(QDate(1900, 1, 1), QTime(12, 0)))), 2.5);
    EXPECT_EQ(errorNumber([] { CDbl(QVariant()); }), err::InvalidUseOfNull);
    EXPECT_EQ(errorNumber([] { CDbl(QVariant(QStringLiteral("1E400"))); }), err::Overflow);
    EXPECT_EQ(CDbl(QVariant(QStringLiteral("1E-400"))), 0.0);
}

TEST(CSngVariant, RangeAndKinds) {
    EXPECT_EQ(CSng(QVariant(QStringLiteral("0.1"))), 0.1f);
    EXPECT_EQ(CSng(QVariant(2.5)), 2.5f);
    EXPECT_EQ(CSng(QVariant::fromValue(Currency::fromRaw(15000))), 1.5f);
    EXPECT_EQ(errorNumber([] { CSng(QVariant(1e39)); }), err::Overflow);
    EXPECT_EQ(errorNumber([] { CSng(QVariant(QStringLiteral("x"))); }), err::TypeMismatch);
}

TEST(Currency, FromDoubleExamples) {
    EXPECT_EQ(Currency::fromDouble(1086.429176).raw(), 10864292);
    EXPECT_EQ(Currency::fromDouble(0.00005).raw(), 1);
    EXPECT_EQ(Currency::fromDouble(1.23445).raw(), 12345);
    EXPECT_EQ(Currency::fromDouble(0.03125).raw(), 312);
    EXPECT_EQ(Currency::fromDouble(0.09375).raw(), 938);
    EXPECT_EQ(Currency::fromDouble(-0.03125).raw(), -312);
    EXPECT_EQ(errorNumber([] { Currency::fromDouble(1e15); }), err::Overflow);
    EXPECT_EQ(errorNumber([] { Currency::fromDouble(-1e15); }), err::Overflow);
    EXPECT_EQ(errorNumber([] { Currency::fromRaw(INT64_MAX) + Currency::fromRaw(1); }), err::Overflow);
    EXPECT_EQ(errorNumber([] { Currency::fromLong(922337203685478LL); }), err::Overflow);
    EXPECT_EQ(errorNumber([] { (void)-Currency::fromRaw(INT64_MIN); }), err::Overflow);
    EXPECT_EQ(Currency::fromRaw(12000).toFixed4(), QStringLiteral("1.2000"));
    EXPECT_EQ(Currency::fromRaw(-1).toFixed4(), QStringLiteral("-0.0001"));
    EXPECT_EQ(Currency::fromRaw(-1).toString(), QStringLiteral("-0.0001"));
    EXPECT_EQ(Currency::fromRaw(15000).toString(), QStringLiteral("1.5"));
    EXPECT_EQ(Currency::fromRaw(20000).toString(), QStringLiteral("2"));
    EXPECT_EQ(Currency::fromRaw(INT64_MIN).toFixed4(), QStringLiteral("-922337203685477.5808"));
}

TEST(CCurVariant, Kinds) {
    LocaleGuard g(nzLocale());
    EXPECT_EQ(CCur(QVariant(QStringLiteral("$1,234.56"))).raw(), 12345600);
    EXPECT_EQ(CCur(QVariant(QStringLiteral("1.23445"))).raw(), 12345);
    EXPECT_EQ(CCur(QVariant(0.1f)).raw(), 1000);
    EXPECT_EQ(CCur(QVariant(qint32(3))).raw(), 30000);
    EXPECT_EQ(CCur(QVariant(true)).raw(), -10000);
    EXPECT_EQ(CCur(QVariant::fromValue(Currency::fromRaw(7))).raw(), 7);
    EXPECT_EQ(errorNumber([] { CCur(QVariant(QStringLiteral("abc"))); }), err::TypeMismatch);
    EXPECT_EQ(errorNumber([] { CCur(QVariant()); }), err::InvalidUseOfNull);
    EXPECT_EQ(errorNumber([] { CCur(QVariant(QStringLiteral("1E20"))); }), err::Overflow);
    LocaleGuard de(germanLocale());
    EXPECT_EQ(CCur(QVariant(QStringLiteral("1.234,56 €"))).raw(), 12345600);
}

TEST(WholeNumbers, HalfToEven) {
    struct Row {
        double in;
        qint32 out;
    } rows[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {2.4999, 2}, {2.5001, 3}, {-7.6, -8}};
    for (const auto& r : rows) {
        EXPECT_EQ(CLng(QVariant(r.in)), r.out) << r.in;
        EXPECT_EQ(CInt(QVariant(r.in)), r.out) << r.in;
    }
    EXPECT_EQ(CLng(QVariant::fromValue(Currency::fromRaw(25000))), 2);
    EXPECT_EQ(CLng(QVariant::fromValue(Currency::fromRaw(35000))), 4);
    EXPECT_EQ(CLng(QVariant::fromValue(Currency::fromRaw(-25000))), -2);
    EXPECT_EQ(CLng(QVariant::fromValue(Currency::fromRaw(-25001))), -3);
    EXPECT_EQ(CLng(QVariant(QStringLiteral("2.5"))), 2);
    EXPECT_EQ(CLng(QVariant(2.5f)), 2);
    EXPECT_EQ(CLng(QVariant(2147483647.4)), 2147483647);
    EXPECT_EQ(errorNumber([] { CLng(QVariant(2147483647.5)); }), err::Overflow);
    EXPECT_EQ(CLng(QVariant(-2147483648.5)), INT32_MIN);
    EXPECT_EQ(CInt(QVariant(32767.0)), 32767);
    EXPECT_EQ(errorNumber([] { CInt(QVariant(32768.0)); }), err::Overflow);
    EXPECT_EQ(CInt(QVariant(-32768.0)), -32768);
    EXPECT_EQ(errorNumber([] { CInt(QVariant(qint32(40000))); }), err::Overflow);
    EXPECT_EQ(CLng(QVariant(true)), -1);
}

TEST(CBoolVariant, Kinds) {
    EXPECT_TRUE(CBool(QVariant(QStringLiteral("True"))));
    EXPECT_FALSE(CBool(QVariant(QStringLiteral("false"))));
    EXPECT_TRUE(CBool(QVariant(QStringLiteral("5"))));
    EXPECT_FALSE(CBool(QVariant(QStringLiteral("0"))));
    EXPECT_TRUE(CBool(QVariant(0.1)));
    EXPECT_FALSE(CBool(QVariant::fromValue(Currency())));
    EXPECT_TRUE(CBool(QVariant(qint32(-1))));
    EXPECT_EQ(errorNumber([] { CBool(QVariant(QStringLiteral("yes"))); }), err::TypeMismatch);
    EXPECT_EQ(errorNumber([] { CBool(QVariant()); }), err::InvalidUseOfNull);
}

TEST(CStrNumbers, Double) {
    LocaleGuard g(nzLocale());
    struct Row {
        double in;
        const char* out;
    } rows[] = {
        {1.0 / 3, "0.333333333333333"},
        {197.72999999999999, "197.73"},
        {static_cast<double>(0.1f), "0.100000001490116"},
        {-0.0, "0"},
        {0.0, "0"},
        {5.6789e-5, "0.000056789"},
        {5.6789e-12, "5.6789E-12"},
        {1e15, "1E+15"},
        {1.2e15, "1.2E+15"},
        {999999999999999.0, "999999999999999"},
        {1.0 / 300, "3.33333333333333E-03"},
        {0.001, "0.001"},
        {-1234.5, "-1234.5"},
        {100, "100"},
        {1e-100, "1E-100"},
        {123456789012345678.0, "1.23456789012346E+17"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(CStr(r.in), QString::fromLatin1(r.out)) << r.out;
}

TEST(CStrNumbers, Single) {
    EXPECT_EQ(CStr(12345678.0f), QStringLiteral("1.234568E+07"));
    EXPECT_EQ(CStr(0.1f), QStringLiteral("0.1"));
    EXPECT_EQ(CStr(1.0f / 3), QStringLiteral("0.3333333"));
    EXPECT_EQ(CStr(1234567.0f), QStringLiteral("1234567"));
    EXPECT_EQ(CStr(1e7f), QStringLiteral("1E+07"));
    EXPECT_EQ(CStr(2.5f), QStringLiteral("2.5"));
}

TEST(CStrNumbers, CurrencyAndVariants) {
    LocaleGuard g(nzLocale());
    EXPECT_EQ(CStr(Currency::fromRaw(15000)), QStringLiteral("1.5"));
    EXPECT_EQ(CStr(Currency::fromRaw(20000)), QStringLiteral("2"));
    EXPECT_EQ(CStr(Currency::fromRaw(-12345)), QStringLiteral("-1.2345"));
    EXPECT_EQ(CStr(QVariant::fromValue(Currency::fromRaw(12345))), QStringLiteral("1.2345"));
    EXPECT_EQ(CStr(QVariant(2.0)), QStringLiteral("2"));
    EXPECT_EQ(CStr(QVariant(1.5)), QStringLiteral("1.5"));
    EXPECT_EQ(CStr(QVariant(0.1f)), QStringLiteral("0.1"));
    EXPECT_EQ(CStr(QVariant(qint32(42))), QStringLiteral("42"));
    EXPECT_EQ(CStr(42), QStringLiteral("42"));
    EXPECT_EQ(CStr(qint64(-9000000000)), QStringLiteral("-9000000000"));
    EXPECT_EQ(CStr(true), QStringLiteral("True"));
    EXPECT_EQ(CStr(QVariant(true)), QStringLiteral("True"));
    EXPECT_EQ(CStr(QVariant(QStringLiteral("abc"))), QStringLiteral("abc"));
    EXPECT_EQ(CStr(QVariant(QDate(2024, 3, 5))), QStringLiteral("5/03/2024"));
    EXPECT_EQ(errorNumber([] { CStr(QVariant()); }), err::InvalidUseOfNull);
    LocaleGuard de(germanLocale());
    EXPECT_EQ(CStr(1.5), QStringLiteral("1,5"));
    EXPECT_EQ(CStr(1234567.25), QStringLiteral("1234567,25"));
    EXPECT_EQ(CStr(Currency::fromRaw(15000)), QStringLiteral("1,5"));
    EXPECT_EQ(CStr(0.5f), QStringLiteral("0,5"));
    EXPECT_EQ(CStr(1e15), QStringLiteral("1E+15"));
    EXPECT_EQ(CStr(QVariant(QDate(2024, 3, 5))), QStringLiteral("05.03.2024"));
}

TEST(StrAndVal, Examples) {
    LocaleGuard de(germanLocale());
    EXPECT_EQ(Str(1.5), QStringLiteral(" 1.5"));
    EXPECT_EQ(Str(-1.5), QStringLiteral("-1.5"));
    EXPECT_EQ(Str(0), QStringLiteral(" 0"));
    EXPECT_EQ(Val(QStringLiteral(" 2 45 7")), 2457.0);
    EXPECT_EQ(Val(QStringLiteral("12.5abc")), 12.5);
    EXPECT_EQ(Val(QStringLiteral("$12")), 0.0);
    EXPECT_EQ(Val(QStringLiteral("1,234")), 1.0);
    EXPECT_EQ(Val(QStringLiteral("1,5")), 1.0);
    EXPECT_EQ(Val(QStringLiteral("-3.5e2x")), -350.0);
    EXPECT_EQ(Val(QStringLiteral("1e")), 1.0);
    EXPECT_EQ(Val(QStringLiteral("&H1F")), 31.0);
    EXPECT_EQ(Val(QStringLiteral("&HFFFF")), -1.0);
    EXPECT_EQ(Val(QStringLiteral("")), 0.0);
    EXPECT_EQ(Val(QStringLiteral(".5")), 0.5);
    EXPECT_EQ(Val(QStringLiteral("1.2.3")), 1.2);
    EXPECT_EQ(Val(QStringLiteral("1e-400")), 0.0);
    EXPECT_EQ(errorNumber([] { Val(QStringLiteral("1e400")); }), err::Overflow);
}
