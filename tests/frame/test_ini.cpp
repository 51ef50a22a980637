// The profile reader and writer, and the text tests on the family file.
#include "FrameTest.h"
#include "frame/ProfileFile.h"
#include "frame/Settings.h"
#include <QDir>
#include <QFileInfo>

using namespace ql;
using qltest::FrameTest;

class IniTest : public FrameTest {};

TEST_F(IniTest, FamilyFileIsTheCommonFileWhenItExists) {
    EXPECT_EQ(CommonFolder(), docs->path() + "/Fernhold/Common");
    EXPECT_EQ(FamilyFile(), QString("Fernhold.ini"));
    const QString path = writeIni("[START]\nFirm=Acme\n");
    EXPECT_EQ(FamilyFile(), path);
}

TEST_F(IniTest, CommonFolderFallsBackToXdgThenHome) {
    const QByteArray oldXdg = qgetenv("XDG_DATA_HOME");
    const QByteArray oldHome = qgetenv("HOME");
    qunsetenv("FERNHOLD_DOCUMENTS");
    qputenv("XDG_DATA_HOME", "/tmp/xdg-here");
    EXPECT_EQ(CommonFolder(), QString("/tmp/xdg-here/Fernhold/Common"));
    qunsetenv("XDG_DATA_HOME");
    qputenv("HOME", "/tmp/home-here");
    EXPECT_EQ(CommonFolder(), QString("/tmp/home-here/.local/share/Fernhold/Common"));
    qunsetenv("HOME");
    EXPECT_EQ(CommonFolder(), QString("/Fernhold/Common")); // no folder: the first part is empty
    qputenv("HOME", oldHome);
    if (!oldXdg.isEmpty()) qputenv("XDG_DATA_HOME", oldXdg);
    qputenv("FERNHOLD_DOCUMENTS", docs->path().toLocal8Bit());
}

TEST_F(IniTest, SectionAndKeyFoundWithoutRegardToCaseAndValueTrimmed) {
    const QString f = writeIni("; a note\n[Tax]\n  payeaccount  =   401099   \n");
    EXPECT_EQ(profileString(f, "TAX", "PAYEAccount"), QString("401099"));
    EXPECT_EQ(profileString(f, "tax", "PAYEACCOUNT"), QString("401099"));
    EXPECT_EQ(profileString(f, "TAX", "Missing"), QString());
    EXPECT_EQ(profileString(f, "OTHER", "PAYEAccount"), QString());
}

TEST_F(IniTest, KeyOfAnotherSectionIsNotFound) {
    const QString f = writeIni("[START]\nFirm=Acme\n[TAX]\nTaxName=VAT\n");
    EXPECT_EQ(profileString(f, "TAX", "Firm"), QString());
    EXPECT_EQ(profileString(f, "START", "TaxName"), QString());
    EXPECT_EQ(profileString(f, "TAX", "TaxName"), QString("VAT"));
}

TEST_F(IniTest, CrLfFileReadsTheSame) {
    const QString f = writeIni("[START]\r\nFirm=Acme Farms\r\n");
    EXPECT_EQ(ReadIni("START", "Firm", f), QString("Acme Farms"));
}

TEST_F(IniTest, ValueIsCutAt1023Characters) {
    const QByteArray longValue(1500, 'x');
    const QString f = writeIni("[START]\nFirm=" + longValue + "\n");
    const QString v = ReadIni("START", "Firm", f);
    EXPECT_EQ(v.size(), 1023);
    EXPECT_EQ(v, QString(1023, 'x'));
    const QByteArray exact(1023, 'y');
    writeIni("[START]\nFirm=" + exact + "\n");
    EXPECT_EQ(ReadIni("START", "Firm", f).size(), 1023);
}

TEST_F(IniTest, ReadIniLooksUpTheSectionInCapitals) {
    const QString f = writeIni("[TAX]\nTaxName=VAT\n");
    EXPECT_EQ(ReadIni("tax", "TaxName", f), QString("VAT"));
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(IniTest, LowerCaseSectionStillYieldsItsValueButIsLogged) {
    const QString f = writeIni("[tax]\nTaxName=VAT\n");
    EXPECT_EQ(ReadIni("TAX", "TaxName", f), QString("VAT"));
    const QStringList lines = logLines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].endsWith("\tA section from " + f + " is missing.Section=TAX, Key=TaxName"))
        << lines[0].toStdString();
}

TEST_F(IniTest, MissingKeyIsLoggedWithTheFileAndTrace) {
    const QString f = writeIni("[TAX]\nTaxName=VAT\n");
    EXPECT_EQ(ReadIni("TAX", "PAYEFreq", f), QString());
    const QStringList lines = logLines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].endsWith("\tA key from " + f + " is missing.Section=TAX, Key=PAYEFreq"));
}

TEST_F(IniTest, InvalidIndexKeyIsNotLogged) {
    const QString f = writeIni("[TAX]\nTaxName=VAT\n");
    EXPECT_EQ(ReadIni("TAX", "Invalid Index", f), QString());
    EXPECT_FALSE(QFile::exists(logPath()));
}

TEST_F(IniTest, MissingSectionOfWinIniIsNotLogged) {
    ReadIni("INTL", "iCountry", "WIN.INI");
    ReadIni("NOSUCH", "Key", "WIN.INI");
    EXPECT_FALSE(QFile::exists(logPath()));
}

TEST_F(IniTest, MissingFamilyFileLogsTheBareName) {
    EXPECT_EQ(ReadIni("TAX", "PAYEFreq", FamilyFile()), QString());
    const QStringList lines = logLines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].endsWith("\tA section from Fernhold.ini is missing.Section=TAX, Key=PAYEFreq"));
}

TEST_F(IniTest, EmptyValueOfAPresentKeyLogsNothing) {
    const QString f = writeIni("[TAX]\nPAYEFreq=\n");
    EXPECT_EQ(ReadIni("TAX", "PAYEFreq", f), QString());
    EXPECT_FALSE(QFile::exists(logPath()));
}

TEST_F(IniTest, IniHasSectionNeedsTheExactLine) {
    const QString f = writeIni("[tax]\n [START]\n[OPTIONS] \n[WAGE]\n");
    EXPECT_FALSE(IniHasSection(f, "TAX"));
    EXPECT_TRUE(IniHasSection(f, "tax"));
    EXPECT_FALSE(IniHasSection(f, "START"));
    EXPECT_FALSE(IniHasSection(f, "OPTIONS"));
    EXPECT_TRUE(IniHasSection(f, "WAGE"));
    EXPECT_FALSE(IniHasSection(docs->path() + "/none.ini", "WAGE"));
}

TEST_F(IniTest, IniHasKeyMatchesAPrefixOfALongerKeyOnly) {
    const QString f = writeIni("[TAX]\nPAYE=1\n");
    EXPECT_TRUE(IniHasKey(f, "TAX", "PAYE"));
    EXPECT_FALSE(IniHasKey(f, "TAX", "PAYEFreq"));
    writeIni("[TAX]\nPAYEFreq=1\n");
    EXPECT_TRUE(IniHasKey(f, "TAX", "PAYE"));
    EXPECT_TRUE(IniHasKey(f, "TAX", "PAYEFreq"));
}

TEST_F(IniTest, IniHasKeyIsExactInCaseAndStopsAtTheNextSection) {
    const QString f = writeIni("PAYEFreq=3\n[TAX]\nTaxName=GST\n[WAGE]\nPAYEFreq=2\n");
    EXPECT_FALSE(IniHasKey(f, "TAX", "PAYEFreq"));
    EXPECT_FALSE(IniHasKey(f, "TAX", "taxname"));
    EXPECT_TRUE(IniHasKey(f, "TAX", "TaxName"));
    EXPECT_TRUE(IniHasKey(f, "WAGE", "PAYEFreq"));
    EXPECT_FALSE(IniHasKey(f, "NONE", "TaxName"));
    EXPECT_FALSE(IniHasKey(docs->path() + "/none.ini", "TAX", "TaxName"));
}

TEST_F(IniTest, IniHasKeyGoesPastALineThatLooksLikeASectionWithEquals) {
    const QString f = writeIni("[TAX]\n[x]=y\nnote\nPAYEFreq=2\n");
    EXPECT_TRUE(IniHasKey(f, "TAX", "PAYEFreq"));
}

TEST_F(IniTest, WriteReplacesOnlyTheKeyLine) {
    const QString f = writeIni("; kept\n[START]\nFirm = Old\n\n[TAX]\n  taxname=GST  \nOther=1\n");
    WriteIni("TAX", "TaxName", "VAT", f);
    EXPECT_EQ(readAll(f), QByteArray("; kept\n[START]\nFirm = Old\n\n[TAX]\nTaxName=VAT\nOther=1\n"));
}

TEST_F(IniTest, WriteAddsAKeyAtTheEndOfItsSection) {
    const QString f = writeIni("[START]\r\nFirm=Acme\r\n\r\n[TAX]\r\nTaxName=GST\r\n");
    WriteIni("START", "Extra", "x y", f);
    EXPECT_EQ(readAll(f), QByteArray("[START]\r\nFirm=Acme\r\nExtra=x y\r\n\r\n[TAX]\r\nTaxName=GST\r\n"));
}

TEST_F(IniTest, WriteAddsASectionAtTheEnd) {
    const QString f = writeIni("[START]\nFirm=Acme");
    WriteIni("WAGE", "AllLeave", "N", f);
    EXPECT_EQ(readAll(f), QByteArray("[START]\nFirm=Acme\n\n[WAGE]\nAllLeave=N\n"));
    EXPECT_EQ(ReadIni("WAGE", "AllLeave", f), QString("N"));
}

TEST_F(IniTest, WriteCreatesFileAndFolder) {
    const QString f = docs->path() + "/new/folder/x.ini";
    WriteIni("TAX", "PAYEFreq", "2", f);
    EXPECT_EQ(readAll(f), QByteArray("[TAX]\nPAYEFreq=2\n"));
}

TEST_F(IniTest, WriteToAReadOnlyFileFailsWithoutAWord) {
    const QString f = writeIni("[TAX]\nPAYEFreq=2\n");
    QFile::setPermissions(f, QFileDevice::ReadOwner | QFileDevice::ReadUser);
    WriteIni("TAX", "PAYEFreq", "3", f);
    QFile::setPermissions(f, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_EQ(readAll(f), QByteArray("[TAX]\nPAYEFreq=2\n"));
}

TEST_F(IniTest, WriteSettingWithoutAFamilyFileCreatesItInTheCommonFolder) {
    WriteSetting("WAGE", "AllLeave", "N");
    EXPECT_TRUE(QFile::exists(iniPath()));
    EXPECT_EQ(FamilyFile(), iniPath());
    EXPECT_EQ(ReadIni("WAGE", "AllLeave", FamilyFile()), QString("N"));
}

TEST_F(IniTest, WriteFindsTheSectionWithoutRegardToCase) {
    writeIni("[WAGE]\nAllLeave=Y\n");
    WriteSetting("wage", "AllLeave", "N"); // the section is found without regard to case
    EXPECT_EQ(readAll(iniPath()), QByteArray("[WAGE]\nAllLeave=N\n"));
}

TEST(GetToken, FieldsByPosition) {
    EXPECT_EQ(GetToken("51,102,1", ",", 1), QString("51"));
    EXPECT_EQ(GetToken("51,102,1", ",", 2), QString("102"));
    EXPECT_EQ(GetToken("51,102,1", ",", 3), QString("1"));
    EXPECT_EQ(GetToken("51,102,1", ",", 4), QString());
    EXPECT_EQ(GetToken("51,102,1", ",", 0), QString());
    EXPECT_EQ(GetToken("51,102,1", ",", -1), QString());
}

TEST(GetToken, TwoDelimitersHoldAnEmptyField) {
    EXPECT_EQ(GetToken("a,,c", ",", 2), QString());
    EXPECT_EQ(GetToken("a,,c", ",", 3), QString("c"));
    EXPECT_EQ(GetToken("a,", ",", 2), QString());
    EXPECT_EQ(GetToken(QString(), ",", 1), QString());
}

TEST(GetToken, DelimiterIsComparedAsAWhole) {
    EXPECT_EQ(GetToken("a::b:c", "::", 2), QString("b:c"));
    EXPECT_EQ(GetToken("one<>two<>three", "<>", 3), QString("three"));
}

TEST(GetToken, EmptyDelimiterIsBlankCrLfTabAsOneText) {
    EXPECT_EQ(GetToken("a b", "", 1), QString("a b"));
    EXPECT_EQ(GetToken("a \r\n\tb", "", 2), QString("b"));
}
