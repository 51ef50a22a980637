// The employer's details and the customised report headings, read through the settings' paths.
#include "TestEnv.h"
#include "data/FarmDetails.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Trap.h"
#include <QFile>

using namespace ql;

namespace {

class FarmDetailsTest : public qltest::DocumentsTest {
protected:
    void SetUp() override {
        farm = openOrCreate(DatabaseKind::Farm, DataFileName());
        modules = openOrCreate(DatabaseKind::Modules, ModuleFileName());
        setErrorReporter([this](const VbError& e, const QString& location) {
            reports << location + ":" + QString::number(e.number());
        });
    }
    void TearDown() override { setErrorReporter(nullptr); }
    Database farm;
    Database modules;
    QStringList reports;
};

} // namespace

TEST_F(FarmDetailsTest, EmptyFarmNameGivesTheDefault) {
    EXPECT_EQ(GetFarmName(), "Your Farm Name");
    farm.execute("UPDATE [Farm Details] SET [Farm Name] = NULL");
    EXPECT_EQ(GetFarmName(), "Your Farm Name");
    farm.execute("UPDATE [Farm Details] SET [Farm Name] = 'Kea Flats Station'");
    EXPECT_EQ(GetFarmName(), "Kea Flats Station");
}

TEST_F(FarmDetailsTest, EmptyFinancialYearGivesFirstJuly1995) {
    EXPECT_EQ(GetFinancialYear(), "1/07/1995");
    farm.execute("UPDATE [Farm Details] SET [Financial Year] = '2026-04-01'");
    EXPECT_EQ(GetFinancialYear(), "1/04/2026");
    EXPECT_EQ(financialYearText(), "1/04/2026") << "the settings read it through the farm details";
}

TEST_F(FarmDetailsTest, AddressAndTaxNumber) {
    farm.execute(
        "UPDATE [Farm Details] SET Address1 = '1 Pretend Lane', Address2 = NULL, Address3 = 'Demoville', "
        "[GST Reg Number] = '123-456-789'");
    QString a1 = "x", a2 = "kept", a3 = "y";
    GetEmployerAddress(a1, a2, a3);
    EXPECT_EQ(a1, "1 Pretend Lane");
    EXPECT_EQ(a2, "kept") << "a null column leaves its parameter as it was";
    EXPECT_EQ(a3, "Demoville");
    EXPECT_EQ(GetIRDNumber(), "123-456-789");
    farm.execute("UPDATE [Farm Details] SET [GST Reg Number] = NULL");
    EXPECT_EQ(GetIRDNumber(), "Unknown");
    EXPECT_TRUE(reports.isEmpty());
}

TEST_F(FarmDetailsTest, NoRowGivesUnknownAndBlankAddressLines) {
    farm.execute("DELETE FROM [Farm Details]");
    EXPECT_EQ(GetIRDNumber(), "Unknown");
    QString a1, a2, a3;
    GetEmployerAddress(a1, a2, a3);
    EXPECT_TRUE(a1.isEmpty() && a2.isEmpty() && a3.isEmpty());
    EXPECT_TRUE(reports.isEmpty());
}

TEST_F(FarmDetailsTest, ErrorsAreReportedUnderTheirNames) {
    farm.close();
    farm = Database();
    QFile::remove(DataFileName());
    QString a1 = "x", a2, a3;
    GetEmployerAddress(a1, a2, a3);
    EXPECT_EQ(a1, "x");
    EXPECT_EQ(GetIRDNumber(), "Unknown");
    EXPECT_EQ(reports, QStringList({"GetEmployerAddress:3024", "GetIRDNumber:3024"}));
}

TEST_F(FarmDetailsTest, NoReportHeadingsTableGivesNoHeadingsAndNoError) {
    EXPECT_TRUE(ReadCustomizedHeadings(3).isEmpty());
}

TEST_F(FarmDetailsTest, CustomizedHeadingsOfTheReport) {
    modules.executeScript(R"(
        CREATE TABLE ReportHeadings (ReportID LONG, HeadingName TEXT(50), Heading TEXT(255));
        INSERT INTO ReportHeadings VALUES (3, 'Title', 'Wages Paid');
        INSERT INTO ReportHeadings VALUES (3, 'Sub', NULL);
        INSERT INTO ReportHeadings VALUES (3, 'Marked', 'Pay |0| list');
        INSERT INTO ReportHeadings VALUES (4, 'Other', 'Not this report');
        INSERT INTO ReportHeadings VALUES (3, 'Quote', 'Farmer''s copy');
    )");
    const QList<CustomizedHeading> h = ReadCustomizedHeadings(3);
    ASSERT_EQ(h.size(), 3);
    EXPECT_EQ(h[0].formula(), "Title='Wages Paid'");
    EXPECT_EQ(h[1].name, "Marked");
    EXPECT_EQ(h[1].heading, TranslateText("Pay |0| list", QStringList()));
    EXPECT_EQ(h[2].formula(), "Quote='Farmer's copy'") << "not escaped, as it stands";
}
