// quillary-cli setting, country and translate, each in a fresh documents folder.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QDir>
#include <QFile>

using qltest::runCli;
using qltest::TempDocuments;

namespace {

void writeIni(const TempDocuments& docs, const QByteArray& text) {
    docs.writeFile("Fernhold/Common/Fernhold.ini", text);
}

} // namespace

TEST(CliSetting, DefaultsWithNoFamilyFile) {
    TempDocuments docs;
    auto r = runCli({"setting", "FERNHOLD", "WageFileName"}, docs.path());
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, docs.path() + "/data/Wage32.db\n");
    r = runCli({"setting", "TAX", "PAYEAccount"}, docs.path());
    EXPECT_EQ(r.out, QString("401002\n"));
    r = runCli({"setting", "START", "Firm"}, docs.path());
    EXPECT_EQ(r.out, QString("Fernhold\n"));
    r = runCli({"setting", "WAGE", "AllLeave"}, docs.path());
    EXPECT_EQ(r.out, QString("True\n"));
    r = runCli({"setting", "TAX", "PAYEStart"}, docs.path());
    EXPECT_EQ(r.out, QString("1/07/1995\n"));
}

TEST(CliSetting, GetterRulesApplyWithoutRegardToCase) {
    TempDocuments docs;
    writeIni(docs, "[WAGE]\nAllLeave=n\nPrintPaySlip=N\n[TAX]\nPAYEAccount=abc\nPAYEFreq=3\n"
                   "PAYENonCash=y\n[COLOURS]\nGridHeader=51,102,1\n");
    EXPECT_EQ(runCli({"setting", "wage", "allleave"}, docs.path()).out, QString("False\n"));
    EXPECT_EQ(runCli({"setting", "WAGE", "PrintPaySlip"}, docs.path()).out, QString("0\n"));
    EXPECT_EQ(runCli({"setting", "TAX", "PAYEAccount"}, docs.path()).out, QString("401002\n"));
    EXPECT_EQ(runCli({"setting", "tax", "payefreq"}, docs.path()).out, QString("3\n"));
    EXPECT_EQ(runCli({"setting", "TAX", "PAYENonCash"}, docs.path()).out, QString("True\n"));
    EXPECT_EQ(runCli({"setting", "COLOURS", "GridHeader"}, docs.path()).out, QString("51,102,1\n"));
}

TEST(CliSetting, KeyWithoutAGetterIsReadAsItStands) {
    TempDocuments docs;
    writeIni(docs, "[PAYMENTS]\nMemo=Y\n");
    auto r = runCli({"setting", "payments", "memo"}, docs.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QString("Y\n"));
    r = runCli({"setting", "PAYMENTS", "Nothing"}, docs.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QString("\n"));
}

TEST(CliSetting, MissingKeyLeavesOneLogLine) {
    TempDocuments docs;
    writeIni(docs, "[TAX]\nTaxName=GST\n");
    runCli({"setting", "TAX", "PAYEFreq"}, docs.path());
    runCli({"setting", "TAX", "PAYEAccount"}, docs.path());
    QFile log(docs.path() + "/Fernhold/Common/FHErrors.log");
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(log.readAll()).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2); // one per run
    EXPECT_TRUE(lines[0].endsWith("is missing.Section=TAX, Key=PAYEFreq"));
    EXPECT_TRUE(lines[1].endsWith("is missing.Section=TAX, Key=PAYEAccount"));
}

TEST(CliSetting, WrongUsage) {
    TempDocuments docs;
    auto r = runCli({"setting", "TAX"}, docs.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.err.contains("setting SECTION KEY"));
}

TEST(CliCountry, FromTheFamilyFileOrTheLocale) {
    TempDocuments docs;
    EXPECT_EQ(runCli({"country"}, docs.path()).out, QString("64\n"));
    EXPECT_EQ(runCli({"country"}, docs.path(), "en_AU.UTF-8").out, QString("61\n"));
    EXPECT_EQ(runCli({"country"}, docs.path(), "en_GB.UTF-8").out, QString("64\n"));
    writeIni(docs, "[WINDOWS]\nCountry=7\n");
    EXPECT_EQ(runCli({"country"}, docs.path()).out, QString("7\n"));
    writeIni(docs, "[WINDOWS]\nCountry=61\n");
    EXPECT_EQ(runCli({"country"}, docs.path()).out, QString("61\n"));
    EXPECT_EQ(runCli({"country", "x"}, docs.path()).exitCode, 2);
}

TEST(CliTranslate, MarksAndTrail) {
    TempDocuments docs;
    auto r = runCli({"translate", "|0| of |1|", "3", "12"}, docs.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QString("3 of 12\n"));
    EXPECT_EQ(runCli({"translate", "Total |0|"}, docs.path()).out, QString("Total ?\n"));
    EXPECT_EQ(runCli({"translate", "Value |0 end", "X"}, docs.path()).out, QString("Value X|0 end\n"));
    EXPECT_EQ(runCli({"translate"}, docs.path()).exitCode, 2);
}
