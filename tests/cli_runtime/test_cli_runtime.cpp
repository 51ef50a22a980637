// quillary-cli round and format, run as a user would, each in a fresh documents folder.
#include "CliRunner.h"
#include "TestEnv.h"
#include <gtest/gtest.h>

using qltest::runCli;
using qltest::TempDocuments;

namespace {

struct Row {
    QStringList args;
    const char* out;
};

void expectRows(const std::vector<Row>& rows, const QByteArray& locale = "en_NZ.UTF-8") {
    for (const auto& r : rows) {
        TempDocuments docs;
        const auto res = runCli(r.args, docs.path(), locale);
        EXPECT_EQ(res.exitCode, 0) << r.args.join(' ').toStdString() << ": " << res.err.toStdString();
        EXPECT_EQ(res.out, QString::fromUtf8(r.out) + QLatin1Char('\n')) << r.args.join(' ').toStdString();
    }
}

} // namespace

TEST(CliRound, EdgeCases) {
    expectRows({
        {{"round", "0.125"}, "0.1200"},
        {{"round", "0.375"}, "0.3800"},
        {{"round", "-0.125"}, "-0.1200"},
        {{"round", "1.015"}, "1.0100"},
        {{"round", "$1,234.565"}, "1234.5600"},
        {{"round", "$1,234.575"}, "1234.5800"},
        {{"round", " 12.3456 "}, "12.3500"},
        {{"round", "(5.555)"}, "-5.5600"},
    });
}

TEST(CliRound, GermanLocale) {
    expectRows({{{"round", "1.234,565 €"}, "1234.5600"}, {{"round", "0,125"}, "0.1200"}}, "de_DE.UTF-8");
}

TEST(CliRound, RefusesNonNumbers) {
    TempDocuments docs;
    const auto res = runCli({"round", "abc"}, docs.path());
    EXPECT_EQ(res.exitCode, 1);
    EXPECT_EQ(res.out, QString());
    EXPECT_TRUE(res.err.contains(QStringLiteral("Type mismatch"))) << res.err.toStdString();
}

TEST(CliRound, WrongUsage) {
    TempDocuments docs;
    const auto res = runCli({"round"}, docs.path());
    EXPECT_EQ(res.exitCode, 2);
    EXPECT_TRUE(res.err.contains(QStringLiteral("round TEXT"))) << res.err.toStdString();
}

TEST(CliFormat, NumbersAndDates) {
    expectRows({
        {{"format", "1234.5", "Currency"}, "$1,234.50"},
        {{"format", "-1234.5", "currency"}, "-$1,234.50"},
        {{"format", "1,234.5", "standard"}, "1,234.50"},
        {{"format", "1234.5", "fixed"}, "1234.50"},
        {{"format", "0.125", "0.00"}, "0.13"},
        {{"format", "1.005", "0.00"}, "1.01"},
        {{"format", "2.5", "0"}, "3"},
        {{"format", "0.5", ".00"}, ".50"},
        {{"format", "0.05", "0.0"}, "0.1"},
        {{"format", "-0.001", "0.00"}, "-0.00"},
        {{"format", "2024-03-05", "Short Date"}, "5/03/2024"},
        {{"format", "2024-03-05", "dd mmm yyyy"}, "05 Mar 2024"},
        {{"format", "2024-03-05", "d mmm yyyy"}, "5 Mar 2024"},
        {{"format", "2024-03-05", "mmmm yyyy"}, "March 2024"},
        {{"format", "2024-03-05", "mm"}, "03"},
        {{"format", "2024-03-05", "dd"}, "05"},
        {{"format", "2024-03-05", "yyyy"}, "2024"},
    });
}

TEST(CliFormat, GermanLocale) {
    expectRows({
        {{"format", "1234,5", "fixed"}, "1234,50"},
        {{"format", "1.234,5", "standard"}, "1.234,50"},
        {{"format", "2024-03-05", "short date"}, "05.03.2024"},
    }, "de_DE.UTF-8");
}

TEST(CliFormat, Refusals) {
    TempDocuments docs;
    auto res = runCli({"format", "abc", "fixed"}, docs.path());
    EXPECT_EQ(res.exitCode, 1);
    EXPECT_TRUE(res.err.contains(QStringLiteral("Type mismatch"))) << res.err.toStdString();
    res = runCli({"format", "2024-02-30", "short date"}, docs.path());
    EXPECT_EQ(res.exitCode, 1);
    EXPECT_TRUE(res.err.contains(QStringLiteral("no valid date"))) << res.err.toStdString();
    res = runCli({"format", "1"}, docs.path());
    EXPECT_EQ(res.exitCode, 2);
}
