// Every getter of the family file: its default and its type rule.
#include "FrameTest.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/SettingsCatalog.h"
#include "runtime/DateFns.h"
#include <QCoreApplication>

using namespace ql;
using qltest::FrameTest;

class GetterTest : public FrameTest {};

TEST_F(GetterTest, WithNoFamilyFileEveryPathStillResolves) {
    const QString docsPath = docs->path();
    EXPECT_EQ(DataRoot(), docsPath + "/data");
    EXPECT_EQ(WageFileName(), docsPath + "/data/Wage32.db");
    EXPECT_EQ(DataFileName(), docsPath + "/data/Farm32.db");
    EXPECT_EQ(ModuleFileName(), docsPath + "/Fernhold/Common/Modules.db");
    EXPECT_EQ(ProgramDirectory(), QCoreApplication::applicationDirPath());
    EXPECT_EQ(ReportDirectory(), QCoreApplication::applicationDirPath());
}

TEST_F(GetterTest, PathsFollowDataRootAndProgramDirectory) {
    writeIni("[FERNHOLD]\nDataRoot=/srv/farm\nProgramDirectory=/opt/fernhold\n");
    EXPECT_EQ(WageFileName(), QString("/srv/farm/Wage32.db"));
    EXPECT_EQ(DataFileName(), QString("/srv/farm/Farm32.db"));
    EXPECT_EQ(ReportDirectory(), QString("/opt/fernhold"));
    EXPECT_EQ(ProgramPath(), QString("/opt/fernhold/"));
    writeIni("[FERNHOLD]\nProgramDirectory=/opt/fernhold/\nWageFileName=/x/w.db\nDataFileName=/x/f.db\n"
             "ModuleFileName=/x/m.db\nReportDirectory=/x/reports\n");
    EXPECT_EQ(ProgramPath(), QString("/opt/fernhold/"));
    EXPECT_EQ(WageFileName(), QString("/x/w.db"));
    EXPECT_EQ(DataFileName(), QString("/x/f.db"));
    EXPECT_EQ(ModuleFileName(), QString("/x/m.db"));
    EXPECT_EQ(ReportDirectory(), QString("/x/reports"));
}

TEST_F(GetterTest, TextDefaults) {
    EXPECT_EQ(Firm(), QString("Fernhold"));
    EXPECT_EQ(TaxName(), QString("GST"));
    EXPECT_EQ(TaxNumberName(), QString("GST"));
    EXPECT_EQ(IncomeTaxName(), QString("Income Tax"));
    EXPECT_EQ(PayAsYouEarn(), QString("PAYE"));
    writeIni("[START]\nFirm=\n[TAX]\nTaxName=\nPayAsYouEarn=\n");
    EXPECT_EQ(Firm(), QString("Fernhold"));
    EXPECT_EQ(TaxName(), QString("GST"));
    EXPECT_EQ(PayAsYouEarn(), QString("PAYE"));
}

TEST_F(GetterTest, TextValues) {
    writeIni(
        "[START]\nFirm=Acme & Sons\n[TAX]\nTaxName=VAT\nPayAsYouEarn=PAYG\nIncomeTaxName=Tax on income\n");
    EXPECT_EQ(Firm(), QString("Acme & Sons"));
    EXPECT_EQ(TaxNumberName(), QString("VAT"));
    EXPECT_EQ(PayAsYouEarn(), QString("PAYG"));
    EXPECT_EQ(IncomeTaxName(), QString("Tax on income"));
    writeIni("[TAX]\nTaxName=VAT\nTaxNumberName=ABN\n");
    EXPECT_EQ(TaxNumberName(), QString("ABN"));
}

TEST_F(GetterTest, IncomeTaxNameDependsOnTheCountry) {
    writeIni("[WINDOWS]\nCountry=61\n");
    EXPECT_EQ(IncomeTaxName(), QString("PAYG Instalment"));
    writeIni("[WINDOWS]\nCountry=55\n");
    EXPECT_EQ(IncomeTaxName(), QString("Income Tax"));
}

TEST_F(GetterTest, CodeOrderIsFalseOnlyForFalse) {
    EXPECT_TRUE(CodeOrder());
    writeIni("[OPTIONS]\nCodeOrder=false\n");
    EXPECT_FALSE(CodeOrder());
    writeIni("[OPTIONS]\nCodeOrder=FALSE\n");
    EXPECT_FALSE(CodeOrder());
    writeIni("[OPTIONS]\nCodeOrder=0\n");
    EXPECT_TRUE(CodeOrder());
    writeIni("[OPTIONS]\nCodeOrder=N\n");
    EXPECT_TRUE(CodeOrder());
}

TEST_F(GetterTest, DebugLooksAtTheFirstCharacter) {
    EXPECT_FALSE(Debug());
    writeIni("[DEBUG]\nDebug=yes please\n");
    EXPECT_TRUE(Debug());
    writeIni("[DEBUG]\nDebug=Y\n");
    EXPECT_TRUE(Debug());
    writeIni("[DEBUG]\nDebug=True\n");
    EXPECT_FALSE(Debug());
}

TEST_F(GetterTest, AllLeaveIsFalseOnlyForN) {
    EXPECT_TRUE(AllLeave());
    writeIni("[WAGE]\nAllLeave=n\n");
    EXPECT_FALSE(AllLeave());
    writeIni("[WAGE]\nAllLeave=no\n");
    EXPECT_TRUE(AllLeave());
    writeIni("[WAGE]\nAllLeave=Y\n");
    EXPECT_TRUE(AllLeave());
}

TEST_F(GetterTest, PrintPaySlipIsZeroOnlyForN) {
    EXPECT_EQ(PrintPaySlip(), 1);
    writeIni("[WAGE]\nPrintPaySlip=n\n");
    EXPECT_EQ(PrintPaySlip(), 0);
    writeIni("[WAGE]\nPrintPaySlip=No\n");
    EXPECT_EQ(PrintPaySlip(), 1);
    writeIni("[WAGE]\nPrintPaySlip=0\n");
    EXPECT_EQ(PrintPaySlip(), 1);
}

TEST_F(GetterTest, PayeNonCashIsTrueOnlyForY) {
    EXPECT_FALSE(PAYENonCash());
    writeIni("[TAX]\nPAYENonCash=y\n");
    EXPECT_TRUE(PAYENonCash());
    writeIni("[TAX]\nPAYENonCash=Yes\n");
    EXPECT_FALSE(PAYENonCash());
}

TEST_F(GetterTest, NumberDefaults) {
    EXPECT_EQ(PAYEAccount(), 401002);
    EXPECT_EQ(PaymentAccount(), 401005);
    EXPECT_EQ(WageAccount(), 401001);
    EXPECT_EQ(AdjustAccount(), 401008);
    EXPECT_EQ(PAYEAddressID(), 0);
    EXPECT_EQ(PAYEFreq(), 1);
}

TEST_F(GetterTest, NumbersCountOnlyWhenNumeric) {
    writeIni("[TAX]\nPAYEAccount=abc\nPaymentAccount=\nWageAccount=12x\nAdjustAccount=400100\n"
             "PAYEAddressID=17\nPAYEFreq=2\n");
    EXPECT_EQ(PAYEAccount(), 401002);
    EXPECT_EQ(PaymentAccount(), 401005);
    EXPECT_EQ(WageAccount(), 401001);
    EXPECT_EQ(AdjustAccount(), 400100);
    EXPECT_EQ(PAYEAddressID(), 17);
    EXPECT_EQ(PAYEFreq(), 2);
}

TEST_F(GetterTest, EmptyPayeAccountYieldsTheDefault) {
    writeIni("[TAX]\nPAYEAccount=\n");
    EXPECT_EQ(PAYEAccount(), 401002);
}

TEST_F(GetterTest, AnOverflowingNumberLeavesTheDefault) {
    writeIni("[TAX]\nPAYEAccount=99999999999\n");
    EXPECT_EQ(PAYEAccount(), 401002);
}

TEST_F(GetterTest, EmptyPayeFreqOfAPresentKeyLogsNothingAndYieldsOne) {
    writeIni("[TAX]\nPAYEFreq=\n");
    EXPECT_EQ(PAYEFreq(), 1);
    EXPECT_FALSE(QFile::exists(logPath()));
}

TEST_F(GetterTest, PayeStartDateAndTextForms) {
    EXPECT_EQ(PAYEStart(), ZeroDate);
    EXPECT_EQ(PAYEStartText(), QString("1/07/1995"));
    setFinancialYearSource([] { return QString("1/04/2024"); });
    EXPECT_EQ(PAYEStartText(), QString("1/04/2024"));
    writeIni("[TAX]\nPAYEStart=not a date\n");
    EXPECT_EQ(PAYEStart(), ZeroDate);
    EXPECT_EQ(PAYEStartText(), QString("1/04/2024"));
    writeIni("[TAX]\nPAYEStart=1/04/2023\n");
    EXPECT_EQ(PAYEStart(), QDate(2023, 4, 1));
    EXPECT_EQ(PAYEStartText(), QString("1/04/2023"));
    setFinancialYearSource({});
}

TEST_F(GetterTest, ColoursAreThreeNumbersWithZeroForMissingParts) {
    writeIni("[COLOURS]\nGridHeader=51,102,1\nGridSelectedRow=200,10\nGridEvenRow=a,5,6\nGridOddRow=255,255,"
             "255\n");
    const ColourSetting h = GridHeader();
    EXPECT_EQ(h.red, 51);
    EXPECT_EQ(h.green, 102);
    EXPECT_EQ(h.blue, 1);
    const ColourSetting s = GridSelectedRow();
    EXPECT_EQ(s.red, 200);
    EXPECT_EQ(s.green, 10);
    EXPECT_EQ(s.blue, 0);
    const ColourSetting e = GridEvenRow();
    EXPECT_EQ(e.red, 0);
    EXPECT_EQ(e.green, 5);
    EXPECT_EQ(e.blue, 6);
    EXPECT_EQ(GridOddRow().blue, 255);
}

TEST_F(GetterTest, MissingColourKeyIsBlack) {
    const ColourSetting c = GridHeader();
    EXPECT_EQ(c.red + c.green + c.blue, 0);
}

TEST_F(GetterTest, EachReadSeesTheFileAsItIsNow) {
    writeIni("[START]\nFirm=One\n");
    EXPECT_EQ(Firm(), QString("One"));
    WriteSetting("START", "Firm", "Two");
    EXPECT_EQ(Firm(), QString("Two"));
}

TEST_F(GetterTest, CatalogCoversEveryGetterAndMatchesWithoutRegardToCase) {
    writeIni("[WAGE]\nAllLeave=n\n[TAX]\nPAYEAccount=abc\n[COLOURS]\nGridHeader=1,2,3\n");
    EXPECT_EQ(settingsCatalog().size(), 28);
    EXPECT_EQ(settingValueText("wage", "allleave"), std::optional<QString>("False"));
    EXPECT_EQ(settingValueText("TAX", "PAYEAccount"), std::optional<QString>("401002"));
    EXPECT_EQ(settingValueText("TAX", "PAYENonCash"), std::optional<QString>("False"));
    EXPECT_EQ(settingValueText("COLOURS", "GridHeader"), std::optional<QString>("1,2,3"));
    EXPECT_EQ(settingValueText("WINDOWS", "Country"), std::optional<QString>("64"));
    EXPECT_EQ(settingValueText("PAYMENTS", "Anything"), std::nullopt);
}
