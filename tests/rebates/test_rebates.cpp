// The rebates grid without widgets: loading, the cell checks, Quantity, adding and deleting rows, and
// what saving writes, keeps and says.
#include "RebatesFixture.h"

using namespace qltest;

TEST_F(RebatesTest, AnEmptyTableStillGivesItsColumnsAndTheAccounts) {
    ql::RebatesForm form;
    load(form);
    EXPECT_EQ(form.highestColumn, 5);
    EXPECT_EQ(form.rowCount, 0);
    EXPECT_EQ(form.countryCode, QStringLiteral("64"));
    EXPECT_EQ(form.tgrd_data.headings(),
              QStringList({"RebateID", "Rebate", "Heading", "Rate", "Quantity", "Country"}));
    const auto& accounts = form.tgrd_data.column(ql::HeadingColumn).valueItems;
    ASSERT_EQ(accounts.size(), 12);
    EXPECT_EQ(accounts.first().value.toInt(), 101001); // by number while CodeOrder holds
    EXPECT_EQ(form.tgrd_data.column(ql::HeadingColumn).displayText(401001), QStringLiteral("Wages:X"));
    const auto& quantity = form.tgrd_data.column(ql::QuantityColumn).valueItems;
    ASSERT_EQ(quantity.size(), 2);
    EXPECT_EQ(quantity.at(0).name, QStringLiteral("True"));
    EXPECT_EQ(quantity.at(1).name, QStringLiteral("False"));
    EXPECT_FALSE(quantity.at(0).extra.toString().isEmpty()); // each with its picture
    EXPECT_FALSE(form.tgrd_data.column(ql::RebateIDColumn).visible);
    EXPECT_FALSE(form.tgrd_data.column(ql::CountryColumn).visible);
}

TEST_F(RebatesTest, AccountsByNameWhenCodeOrderIsOff) {
    docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"),
                    "[WINDOWS]\r\nCountry=64\r\n[OPTIONS]\r\nCodeOrder=false\r\n");
    ql::RebatesForm form;
    load(form);
    EXPECT_EQ(form.tgrd_data.column(ql::HeadingColumn).valueItems.first().name,
              QStringLiteral("Animal Health:E"));
}

TEST_F(RebatesTest, RowsLoadWithQuantityAsText) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Fuel Excise"), 201005, 0.25, false);
    addRebate(QStringLiteral("Elsewhere"), 201005, 1, false, QStringLiteral("61"));
    ql::RebatesForm form;
    load(form);
    ASSERT_EQ(form.rowCount, 2);
    EXPECT_EQ(form.tgrd_data.value(0, ql::RebateColumn).toString(), QStringLiteral("Dog Tax"));
    EXPECT_EQ(form.tgrd_data.value(0, ql::QuantityColumn).toString(), QStringLiteral("true"));
    EXPECT_EQ(form.tgrd_data.value(1, ql::QuantityColumn).toString(), QStringLiteral("false"));
    EXPECT_EQ(ql::CLng(form.tgrd_data.value(1, ql::HeadingColumn)), 201005);
    EXPECT_GE(form.keyOf(0), 1);
}

TEST_F(RebatesTest, CellChecks) {
    ql::RebatesForm form;
    load(form);
    const int row = form.cmd_Add(-1);
    EXPECT_FALSE(form.storeCell(row, ql::RebateColumn, QString()));
    const QString longName = QStringLiteral("Rural Fire Levy Contribution 31");
    ASSERT_EQ(longName.size(), 31);
    EXPECT_TRUE(form.storeCell(row, ql::RebateColumn, longName));
    EXPECT_EQ(form.tgrd_data.value(row, ql::RebateColumn).toString(), longName.left(30));
    for (const char* bad : {"abc", "-1", "2147483648", ""})
        EXPECT_FALSE(form.storeCell(row, ql::HeadingColumn, QString::fromLatin1(bad))) << bad;
    EXPECT_TRUE(form.storeCell(row, ql::HeadingColumn, QStringLiteral("2147483647")));
    EXPECT_TRUE(form.storeCell(row, ql::HeadingColumn, QStringLiteral("201001")));
    for (const char* bad : {"x", "-0.5", "3.5e+38"})
        EXPECT_FALSE(form.storeCell(row, ql::RateColumn, QString::fromLatin1(bad))) << bad;
    EXPECT_TRUE(form.storeCell(row, ql::RateColumn, QStringLiteral("0")));
    EXPECT_TRUE(form.storeCell(row, ql::RateColumn, QStringLiteral("12.5")));
    EXPECT_EQ(form.tgrd_data.value(row, ql::RateColumn).toString(), QStringLiteral("12.5"));
}

TEST_F(RebatesTest, AClickOnQuantityFlipsIt) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    ql::RebatesForm form;
    load(form);
    form.quantityClick(0);
    EXPECT_EQ(form.tgrd_data.value(0, ql::QuantityColumn).toString(), QStringLiteral("False"));
    form.quantityClick(0);
    EXPECT_EQ(form.tgrd_data.value(0, ql::QuantityColumn).toString(), QStringLiteral("True"));
    // A blank cell takes the opposite of the text it held before.
    form.tgrd_data.setValue(0, ql::QuantityColumn, QString());
    form.quantityClick(0);
    EXPECT_EQ(form.tgrd_data.value(0, ql::QuantityColumn).toString(), QStringLiteral("True"));
    form.rememberedText = QStringLiteral("True");
    form.tgrd_data.setValue(0, ql::QuantityColumn, QStringLiteral(" "));
    form.SetBoolean(0);
    EXPECT_EQ(form.tgrd_data.value(0, ql::QuantityColumn).toString(), QStringLiteral("False"));
    // Any other text stays.
    form.tgrd_data.setValue(0, ql::QuantityColumn, QStringLiteral("True"));
    form.SetBoolean(0);
    EXPECT_EQ(form.tgrd_data.value(0, ql::QuantityColumn).toString(), QStringLiteral("True"));
}

TEST_F(RebatesTest, AddingRows) {
    addRebate(QStringLiteral("A"), 201001, 1, true);
    addRebate(QStringLiteral("B"), 201001, 1, true);
    ql::RebatesForm form;
    load(form);
    // Behind a row that has its key.
    EXPECT_EQ(form.cmd_Add(0), 1);
    EXPECT_EQ(form.tgrd_data.value(1, ql::QuantityColumn).toString(), QStringLiteral("False"));
    EXPECT_EQ(form.keyOf(1), 0);
    EXPECT_EQ(form.tgrd_data.value(2, ql::RebateColumn).toString(), QStringLiteral("B"));
    // From a row without a key, at the end.
    EXPECT_EQ(form.cmd_Add(1), 3);
    EXPECT_EQ(form.tgrd_data.rowCount(), 4);
    EXPECT_EQ(form.rowCount, 4);
}

TEST_F(RebatesTest, SavingWritesNewAndChangedRowsForThisCountry) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Elsewhere"), 201005, 1, false, QStringLiteral("61"));
    ql::RebatesForm form;
    load(form);
    form.storeCell(0, ql::RateColumn, QStringLiteral("15"));
    const int row = form.cmd_Add(0);
    form.storeCell(row, ql::RebateColumn, QStringLiteral("Rural Fire Levy Contribution 31"));
    form.storeCell(row, ql::HeadingColumn, QStringLiteral("201002"));
    form.storeCell(row, ql::RateColumn, QStringLiteral("2.75"));
    form.quantityClick(row);
    EXPECT_TRUE(table().size() == 2); // nothing reaches the table before the dialog closes
    form.Form_Unload();
    EXPECT_EQ(table(), QStringList({"Dog Tax|201001|15|yes|64", "Elsewhere|201005|1|no|61",
                                    "Rural Fire Levy Contribution 3|201002|2.75|yes|64"}));
    EXPECT_GE(form.keyOf(row), 1); // the new row has its key now
    EXPECT_TRUE(messages().isEmpty()) << messages().join(QLatin1Char('\n')).toStdString();
}

TEST_F(RebatesTest, DeletingAsksAndTheTableFollowsOnClose) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Fuel Excise"), 201005, 0.25, false);
    ql::RebatesForm form;
    load(form);
    dialogs.queueAnswer(ql::msg::No);
    EXPECT_FALSE(form.cmd_Delete(1));
    const ql::DialogCall& asked = dialogs.calls.last();
    EXPECT_EQ(asked.message, QStringLiteral("Delete Fuel Excise?"));
    EXPECT_EQ(asked.caption, QStringLiteral("Delete Rebates"));
    EXPECT_EQ(asked.heading, QStringLiteral("Please Confirm"));
    EXPECT_EQ(asked.buttons, ql::msg::YesNo);
    EXPECT_EQ(asked.kindOrLevel, 4);
    EXPECT_EQ(form.rowCount, 2);
    // No current row: the first.
    dialogs.queueAnswer(ql::msg::Yes);
    EXPECT_TRUE(form.cmd_Delete(-1));
    EXPECT_EQ(dialogs.calls.last().message, QStringLiteral("Delete Dog Tax?"));
    EXPECT_EQ(table().size(), 2);
    form.Form_Unload();
    EXPECT_EQ(table(), QStringList({"Fuel Excise|201005|0.25|no|64"}));
}

TEST_F(RebatesTest, ARowInUseStaysWithOneMessageAtTheEnd) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Fuel Excise"), 201005, 0.25, false);
    addRebate(QStringLiteral("Wool Levy"), 201005, 1, false);
    farm.execute(QStringLiteral(
        "CREATE TABLE Claims (ClaimID INTEGER PRIMARY KEY, RebateID LONG REFERENCES Rebates(RebateID))"));
    farm.execute(QStringLiteral(
        "INSERT INTO Claims (RebateID) SELECT RebateID FROM Rebates WHERE Rebate <> 'Wool Levy'"));
    ql::RebatesForm form;
    load(form);
    for (int i = 0; i < 3; ++i) {
        dialogs.queueAnswer(ql::msg::Yes);
        form.cmd_Delete(0);
    }
    form.Form_Unload();
    EXPECT_EQ(table(), QStringList({"Dog Tax|201001|12.5|yes|64", "Fuel Excise|201005|0.25|no|64"}));
    const QStringList said = messages().filter(QStringLiteral("An Error has Occurred"));
    EXPECT_EQ(said, QStringList({"An Error has Occurred: Database error, deletion cancelled!"}));
}

TEST_F(RebatesTest, DuplicatesAndMissingNamesAreNotStoredAndTheRestIs) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    ql::RebatesForm form;
    load(form);
    const int twin = form.cmd_Add(0);
    form.storeCell(twin, ql::RebateColumn, QStringLiteral("Dog Tax"));
    const int unnamed = form.cmd_Add(twin);
    const int good = form.cmd_Add(unnamed);
    form.storeCell(good, ql::RebateColumn, QStringLiteral("Wool Levy"));
    form.Form_Unload();
    EXPECT_EQ(messages(), QStringList({"An Error has Occurred: None unique entry discarded",
                                       "An Error has Occurred: Required field is missing"}));
    EXPECT_EQ(table(), QStringList({"Dog Tax|201001|12.5|yes|64", "Wool Levy|0|0|no|64"}));
}

TEST_F(RebatesTest, AColumnBeyondTheTableSaysSomethingWrongOncePerRow) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Fuel Excise"), 201005, 0.25, false);
    ql::RebatesForm form;
    load(form,
         QStringLiteral(
             "SELECT RebateID, Rebate, Heading, Rate, Quantity, Country, Rate * 2 AS Twice FROM Rebates"));
    EXPECT_EQ(form.highestColumn, 6);
    form.Form_Unload();
    EXPECT_EQ(messages(), QStringList({"An Error has Occurred: Something wrong!!",
                                       "An Error has Occurred: Something wrong!!"}));
    EXPECT_EQ(table().size(), 2);
}

TEST_F(RebatesTest, ARowGoneFromTheTableMeanwhileIsSaid) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    ql::RebatesForm form;
    load(form);
    farm.execute(QStringLiteral("DELETE FROM Rebates"));
    form.Form_Unload();
    EXPECT_EQ(
        messages(),
        QStringList(
            {"An Error has Occurred: Description - An unknow error was generated in frmRebates.Savedata"}));
}

TEST_F(RebatesTest, AnyOtherFailureOfARowIsReportedWithItsPlace) {
    farm.execute(
        QStringLiteral("CREATE TABLE Capped (RebateID INTEGER PRIMARY KEY AUTOINCREMENT, Rebate TEXT(30), "
                       "Heading LONG, Rate SINGLE CHECK (Rate < 100), Quantity YESNO, Country TEXT(10))"));
    ql::RebatesForm form;
    form.Form_Load(QStringLiteral("SELECT * FROM Capped"), ql::DataFileName(), QStringLiteral("RebateID"));
    const int row = form.cmd_Add(-1);
    form.storeCell(row, ql::RebateColumn, QStringLiteral("Too Much"));
    form.storeCell(row, ql::RateColumn, QStringLiteral("150"));
    form.Form_Unload();
    ASSERT_EQ(dialogs.calls.size(), 1);
    const ql::DialogCall& c = dialogs.calls.at(0);
    EXPECT_TRUE(c.message.startsWith(QStringLiteral("Description - "))) << c.message.toStdString();
    EXPECT_TRUE(c.message.endsWith(QStringLiteral(" was generated in frm_Rebates.SaveValues")))
        << c.message.toStdString();
    EXPECT_EQ(c.caption, ql::Firm() + QStringLiteral(" Error"));
    EXPECT_EQ(c.heading, QStringLiteral("An Error has Occurred"));
    EXPECT_TRUE(c.subHeading.startsWith(QStringLiteral("Error ")));
    EXPECT_EQ(ql::CLng(farm.scalar(QStringLiteral("SELECT count(*) FROM Capped"))), 0);
}
