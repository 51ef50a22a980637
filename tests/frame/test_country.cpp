// The country as a telephone code: the family file first, then the system's country.
#include "FrameTest.h"
#include "frame/ProfileFile.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"

using namespace ql;
using qltest::FrameTest;

class CountryTest : public FrameTest {
protected:
    void territory(QLocale::Territory t) {
        setTerritorySource([t] { return t; });
    }
};

TEST_F(CountryTest, DefaultIsTheSystemsCountry) {
    EXPECT_EQ(CountryPhone(), 64);
    territory(QLocale::Australia);
    EXPECT_EQ(CountryPhone(), 61);
    territory(QLocale::Brazil);
    EXPECT_EQ(CountryPhone(), 55);
    territory(QLocale::Uruguay);
    EXPECT_EQ(CountryPhone(), 598);
}

TEST_F(CountryTest, AnyOtherSystemCountryGives64) {
    territory(QLocale::UnitedKingdom);
    EXPECT_EQ(CountryPhone(), 64);
    territory(QLocale::Russia); // code 7
    EXPECT_EQ(CountryPhone(), 64);
    territory(QLocale::AnyTerritory); // no code at all
    EXPECT_EQ(CountryPhone(), 64);
}

TEST_F(CountryTest, FamilyFileWinsOverTheSystem) {
    writeIni("[WINDOWS]\nCountry=61\n");
    EXPECT_EQ(CountryPhone(), 61);
    EXPECT_EQ(Country(), 61);
    territory(QLocale::Brazil);
    EXPECT_EQ(CountryPhone(), 61);
}

TEST_F(CountryTest, FamilyFileNumberIsTakenAsItIs) {
    writeIni("[WINDOWS]\nCountry=7\n");
    EXPECT_EQ(CountryPhone(), 7);
    writeIni("[WINDOWS]\nCountry=44\n");
    EXPECT_EQ(CountryPhone(), 44);
}

TEST_F(CountryTest, NonNumericFamilyValueFallsToTheSystem) {
    writeIni("[WINDOWS]\nCountry=NZ\n");
    territory(QLocale::Australia);
    EXPECT_EQ(CountryPhone(), 61);
}

TEST_F(CountryTest, WinIniAnswersTheSystemsCode) {
    territory(QLocale::Russia);
    EXPECT_EQ(ReadIni("INTL", "iCountry", "WIN.INI"), QString("7"));
    territory(QLocale::UnitedStates);
    EXPECT_EQ(ReadIni("INTL", "iCountry", "WIN.INI"), QString("1"));
    EXPECT_EQ(ReadIni("INTL", "sCountry", "WIN.INI"), QString());
}

TEST(TerritoryCodes, KnownCallingCodes) {
    EXPECT_EQ(territoryPhoneCode(QLocale::NewZealand), 64);
    EXPECT_EQ(territoryPhoneCode(QLocale::Australia), 61);
    EXPECT_EQ(territoryPhoneCode(QLocale::Brazil), 55);
    EXPECT_EQ(territoryPhoneCode(QLocale::Uruguay), 598);
    EXPECT_EQ(territoryPhoneCode(QLocale::UnitedKingdom), 44);
    EXPECT_EQ(territoryPhoneCode(QLocale::UnitedStates), 1);
    EXPECT_EQ(territoryPhoneCode(QLocale::Germany), 49);
    EXPECT_EQ(territoryPhoneCode(QLocale::AnyTerritory), 0);
}

TEST(TerritoryCodes, SystemLocaleIsTheDefaultSource) {
    setTerritorySource({});
    EXPECT_EQ(systemTerritory(), QLocale::system().territory());
}
