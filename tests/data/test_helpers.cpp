// Data access helpers: SQL dates, combo fills, grid arrays and their sums, the range test.
#include "TestEnv.h"
#include "data/ComboModel.h"
#include "data/GridArray.h"
#include "data/GridHelpers.h"
#include "data/Schema.h"
#include "data/SqlDate.h"
#include "frame/ScriptedDialogs.h"
#include "runtime/Trap.h"
#include <QDate>

using namespace ql;

namespace {

class HelperTest : public qltest::DocumentsTest {
protected:
    void SetUp() override {
        setDialogs(&dialogs);
        wagePath = docs->path() + "/Wage32.db";
        db = openOrCreate(DatabaseKind::Wage, wagePath);
    }
    void TearDown() override { setDialogs(nullptr); }
    ScriptedDialogs dialogs;
    QString wagePath;
    Database db;
};

} // namespace

// ---- SQLDate ----

TEST(SqlDateTest, MonthFirstInEveryLocale) {
    EXPECT_EQ(SQLDate(QDate(2007, 4, 3)), "#04/03/2007#");
    qltest::LocaleGuard german(qltest::germanLocale());
    EXPECT_EQ(SQLDate(QDate(2007, 4, 3)), "#04/03/2007#");
    EXPECT_EQ(SQLDate(QDate(2026, 12, 31)), "#12/31/2026#");
}

TEST(SqlDateTest, ZeroIsTheZeroDate) {
    EXPECT_EQ(SQLDate(QVariant(0)), "#12/30/1899#");
    EXPECT_EQ(SQLDate(QDate(1899, 12, 30)), "#12/30/1899#");
}

TEST(SqlDateTest, DateTextInTheLocalesOrder) {
    EXPECT_EQ(SQLDate(QString("3/04/2007")), "#04/03/2007#");
}

// ---- FillDaoVBCombo ----

TEST_F(HelperTest, ComboWithNoneAndAnEmptyQueryHoldsOnlyNone) {
    ComboModel combo;
    combo.addItem("old entry");
    FillDaoVBCombo("SELECT PayIntervalID, IntervalName FROM PayInterval WHERE PayIntervalID = 99", combo, db,
                   0, true, QString(), false, true, false);
    ASSERT_EQ(combo.count(), 1);
    EXPECT_EQ(combo.text(0), "None");
    EXPECT_EQ(combo.itemData(0), 0);
    EXPECT_EQ(combo.selectedIndex(), -1);
}

TEST_F(HelperTest, ComboSelectsTheEntryOfTheGivenId) {
    ComboModel combo;
    FillDaoVBCombo("SELECT PayIntervalID, IntervalName FROM PayInterval ORDER BY PayIntervalID", combo, db, 3,
                   true, "(no interval)", false, true, false);
    ASSERT_EQ(combo.count(), 6);
    EXPECT_EQ(combo.text(0), "(no interval)");
    EXPECT_EQ(combo.text(1), "Weekly");
    EXPECT_EQ(combo.itemData(1), 1);
    EXPECT_EQ(combo.selectedIndex(), 3);
    EXPECT_EQ(combo.selectedText(), "Four-weekly");
}

TEST_F(HelperTest, ComboKeepSelectionAndMatchText) {
    ComboModel combo;
    FillDaoVBCombo("SELECT PayIntervalID, IntervalName FROM PayInterval", combo, db, 2, false, QString(),
                   false, true, true);
    EXPECT_EQ(combo.selectedIndex(), -1) << "keepSelection leaves the selection alone";
    db.execute("INSERT INTO TaxTypes (TaxTypeID, Taxname, [Order]) VALUES (0, 'None given', 0)");
    FillDaoVBCombo("SELECT TaxTypeID, Taxname FROM TaxTypes ORDER BY TaxTypeID", combo, db, 0, false,
                   QString(), true, true, false);
    EXPECT_EQ(combo.selectedText(), "None given") << "selected 0 with matchText marks the row whose id is 0";
}

TEST_F(HelperTest, ComboWithoutItemDataShowsTheFirstColumn) {
    ComboModel combo;
    db.execute("INSERT INTO EmployeeAwardType (EmployeeTypeID, EmployeeType) VALUES (99, NULL)");
    FillDaoVBCombo("SELECT EmployeeType FROM EmployeeAwardType ORDER BY EmployeeTypeID", combo, db, 0, false,
                   QString(), false, false, false);
    EXPECT_EQ(combo.text(0), "Farm Hand");
    EXPECT_EQ(combo.count(), 6) << "a null text adds no entry";
}

TEST_F(HelperTest, ComboErrorIsShownAsASettingsError) {
    ComboModel combo;
    FillDaoVBCombo("SELECT a, b FROM NoSuchTable", combo, db, 0, true, QString(), false, true, false);
    ASSERT_EQ(dialogs.calls.size(), 1);
    const DialogCall& c = dialogs.calls.front();
    EXPECT_TRUE(c.message.startsWith("Description - ")) << c.message.toStdString();
    EXPECT_TRUE(c.message.endsWith("(3078) was generated in CommonCode.DAOVBCombo FillDaoVBCombo"))
        << c.message.toStdString();
    EXPECT_EQ(c.caption, "Fernhold Error");
    EXPECT_EQ(c.heading, "An Error has Occurred");
    EXPECT_EQ(c.subHeading, "Error 3078");
    EXPECT_EQ(c.kindOrLevel, 6);
    EXPECT_FALSE(c.flag);
}

// ---- fillgridarray ----

TEST_F(HelperTest, GridFromAnEmptyQueryHasOneEmptyRow) {
    GridArray grid;
    fillgridarray(db,
                  "SELECT WageID, PaymentNameID, DetailHours, EquivPayRate, Payment FROM PaymentDetails "
                  "WHERE WageID = 1",
                  grid, true, 5, 1);
    EXPECT_EQ(grid.rowCount(), 1);
    EXPECT_EQ(grid.columnCount(), 5);
    for (int c = 0; c < 5; ++c)
        EXPECT_FALSE(grid.value(0, c).isValid());
}

TEST_F(HelperTest, GridCellsFormattedByColumnTypeAndKeyHidden) {
    db.execute("INSERT INTO Employees (EmployeeID) VALUES (1)");
    db.execute("INSERT INTO Wages (WageID, EmployeeID) VALUES (5, 1)");
    db.execute("INSERT INTO PaymentDetails VALUES (5, 1, 40, 25.5, 1020)");
    db.execute("INSERT INTO PaymentDetails VALUES (5, 2, 2.5, 38.25, 95.625)");
    GridArray grid;
    fillgridarray(db,
                  "SELECT WageID, PaymentNameID, DetailHours, EquivPayRate, Payment FROM PaymentDetails "
                  "WHERE WageID = 5 "
                  "ORDER BY PaymentNameID",
                  grid, false, 5, 1);
    ASSERT_EQ(grid.rowCount(), 2);
    EXPECT_EQ(grid.value(0, 0).toInt(), 5) << "Long as it is";
    EXPECT_EQ(grid.value(0, 2).toString(), "40.00") << "Single in fixed";
    EXPECT_EQ(grid.value(0, 3).toString(), "$25.50") << "Currency in currency";
    EXPECT_EQ(grid.value(1, 4).toString(), "$95.63");
    EXPECT_EQ(grid.value(1, 2).toString(), "2.50");
    EXPECT_FALSE(grid.column(0).visible);
    for (int c = 1; c < 5; ++c)
        EXPECT_TRUE(grid.column(c).visible) << c;
    EXPECT_TRUE(grid.column(3).rightAligned);
    EXPECT_FALSE(grid.editable());
}

TEST_F(HelperTest, GridOtherNumericValuesInFixedAndTextAsItIs) {
    GridArray grid;
    fillgridarray(db, "SELECT Salary, Rate, '12' AS Code, 'abc' AS Word FROM ESCT ORDER BY Salary LIMIT 1",
                  grid, true, 4, 0);
    EXPECT_EQ(grid.value(0, 0).toString(), "-$1.00");
    EXPECT_EQ(grid.value(0, 1).toString(), "0.11") << "a Double in fixed";
    EXPECT_EQ(grid.value(0, 2).toString(), "12.00") << "numeric text in fixed";
    EXPECT_EQ(grid.value(0, 3).toString(), "abc");
    EXPECT_TRUE(grid.editable());
}

TEST_F(HelperTest, GridErrorIsReportedUnderItsName) {
    QStringList reports;
    setErrorReporter([&](const VbError& e, const QString& location) {
        reports << location + ":" + QString::number(e.number());
    });
    GridArray grid;
    fillgridarray(db, "SELECT * FROM NoSuchTable", grid, true, 3, 1);
    setErrorReporter(nullptr);
    EXPECT_EQ(reports, QStringList({"fillgridarray:3078"}));
}

// ---- FillGridNames ----

TEST_F(HelperTest, GridNamesFillTheColumnsValueList) {
    GridArray grid(1, 5);
    grid.setHeadings({"WageID", "Payment", "Units", "Rate", "Amount"});
    FillGridNames(grid, "PaymentNames", "Payment", "PaymentNameID", "PayUnitname", wagePath,
                  "SELECT PaymentNameID, PayUnitname FROM PaymentNames ORDER BY PaymentNameID", false, 0,
                  true, QString(), false, false);
    const GridColumn& col = grid.column(1);
    ASSERT_EQ(col.valueItems.size(), 7);
    EXPECT_EQ(col.valueItems[0].value.toInt(), 1);
    EXPECT_EQ(col.valueItems[0].name, "Ordinary Time");
    EXPECT_EQ(col.presentation, 2);
    EXPECT_EQ(col.displayText(QVariant(2)), "Overtime");
    EXPECT_TRUE(dialogs.calls.isEmpty());
}

TEST_F(HelperTest, GridNamesBlankEntryAndExtraValue) {
    GridArray grid(1, 2);
    grid.setHeadings({"ID", "Name"});
    FillGridNames(grid, "TaxAllowName", "name", "TaxNameID", "taxAllowancename", wagePath,
                  "SELECT TaxNameID, taxAllowancename, taxallowrate FROM TaxAllowName", true, 8, false,
                  "taxallowrate", true, true);
    const GridColumn& col = grid.column(1);
    ASSERT_EQ(col.valueItems.size(), 4);
    EXPECT_EQ(col.valueItems[0].name, "");
    EXPECT_EQ(col.valueItems[0].value.toString(), "");
    EXPECT_FLOAT_EQ(col.valueItems[1].extra.toFloat(), 5.0f);
    EXPECT_EQ(col.presentation, 3);
    EXPECT_TRUE(col.translate);
    EXPECT_TRUE(col.validate);
    EXPECT_EQ(col.maxComboItems, 8);
    // An empty query gives the blank entry alone.
    FillGridNames(grid, "TaxAllowName", "Name", "TaxNameID", "taxAllowancename", wagePath,
                  "SELECT TaxNameID, taxAllowancename FROM TaxAllowName WHERE TaxNameID = 0", false, 0, true,
                  QString(), false, false);
    ASSERT_EQ(grid.column(1).valueItems.size(), 1);
    EXPECT_EQ(grid.column(1).valueItems[0].name, "");
}

TEST_F(HelperTest, GridNamesOnAMissingTableSaysTheDatabaseIsOutOfDate) {
    GridArray grid(1, 2);
    grid.setHeadings({"ID", "Name"});
    FillGridNames(grid, "OldNames", "Name", "OldID", "OldName", wagePath,
                  "SELECT OldID, OldName FROM OldNames", false, 0, true, QString(), false, false);
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(dialogs.calls[0].message, "Database out of date, problem reading OldNames, OldID, OldName");
    EXPECT_EQ(dialogs.calls[0].heading, "An Error has Occurred");
    EXPECT_EQ(dialogs.calls[0].kindOrLevel, 6);
}

TEST_F(HelperTest, GridNamesOtherErrorsNameTheColumn) {
    GridArray grid(1, 2);
    grid.setHeadings({"ID", "Name"});
    FillGridNames(grid, "PaymentNames", "Name", "PaymentNameID", "PayUnitname", wagePath,
                  "SELECT PaymentNameID FROM", false, 0, true, QString(), false, false);
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_TRUE(dialogs.calls[0].message.endsWith(" 3075 - Name, PaymentNameID, PayUnitname"))
        << dialogs.calls[0].message.toStdString();
}

// ---- grid array, sums, NullToZero, IsOutOfRange ----

TEST(GridArrayTest, BoundsInsertAndDelete) {
    GridArray a(2, 3);
    EXPECT_EQ(a.lowerBound(1), 0);
    EXPECT_EQ(a.upperBound(1), 1);
    EXPECT_EQ(a.upperBound(2), 2);
    a.setValue(0, 0, "a");
    a.setValue(1, 0, "b");
    a.insertRow(1);
    EXPECT_EQ(a.rowCount(), 3);
    EXPECT_EQ(a.value(2, 0).toString(), "b");
    EXPECT_FALSE(a.value(1, 0).isValid());
    a.deleteRow(0);
    EXPECT_EQ(a.value(1, 0).toString(), "b");
    a.resize(4, 2);
    EXPECT_EQ(a.value(1, 0).toString(), "b");
    try {
        a.value(4, 0);
        FAIL() << "no error";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), err::SubscriptOutOfRange);
    }
    a.setHeadings({"X", "Y"});
    EXPECT_EQ(a.columnByCaption("y"), 1);
    EXPECT_EQ(a.columnByCaption("z"), -1);
}

TEST(GridArrayTest, SumsCountNumericCellsOnly) {
    GridArray a(4, 3);
    a.setValue(0, 1, "$1,020.00");
    a.setValue(1, 1, "abc");
    a.setValue(2, 1, 2.5);
    a.setValue(0, 2, 1);
    a.setValue(1, 2, 1);
    a.setValue(2, 2, 2);
    a.setValue(3, 2, 1);
    EXPECT_FLOAT_EQ(SumGridColumn(a, 1), 1022.5f);
    EXPECT_FLOAT_EQ(SumGridColumnWhere(a, 1, 2, 1), 1020.0f);
    EXPECT_FLOAT_EQ(SumGridColumnWhere(a, 1, 2, "2"), 2.5f);
    EXPECT_FLOAT_EQ(SumGridColumn(GridArray(0, 2), 1), 0.0f);
}

TEST(GridArrayTest, SumIsASingle) {
    GridArray a(2, 1);
    a.setValue(0, 0, 0.1);
    a.setValue(1, 0, 0.2);
    EXPECT_EQ(SumGridColumn(a, 0), static_cast<float>(static_cast<double>(0.1f) + 0.2));
}

TEST(NullToZeroTest, OnlyNullBecomesZero) {
    EXPECT_EQ(NullToZero(QVariant()).toInt(), 0);
    EXPECT_TRUE(NullToZero(QVariant()).isValid());
    EXPECT_EQ(NullToZero(QVariant("x")).toString(), "x");
    EXPECT_EQ(NullToZero(QVariant(5)).toInt(), 5);
}

TEST(IsOutOfRangeTest, Bounds) {
    EXPECT_TRUE(IsOutOfRange("abc", 3, true));
    EXPECT_TRUE(IsOutOfRange("-1", 3, false));
    EXPECT_FALSE(IsOutOfRange("-1", 3, true));
    EXPECT_FALSE(IsOutOfRange("32767", 3, false));
    EXPECT_TRUE(IsOutOfRange("32768", 3, true));
    EXPECT_TRUE(IsOutOfRange("-32768", 3, true)) << "the lower bound is minus the upper one";
    EXPECT_FALSE(IsOutOfRange("2147483647", 4, true));
    EXPECT_TRUE(IsOutOfRange("2147483648", 4, true));
    EXPECT_FALSE(IsOutOfRange("922337203685471", 5, true));
    EXPECT_TRUE(IsOutOfRange("922337203685472", 5, true));
    EXPECT_FALSE(IsOutOfRange("3.4E+38", 6, true));
    EXPECT_TRUE(IsOutOfRange("3.5E+38", 6, true));
    EXPECT_FALSE(IsOutOfRange("1E+300", 7, false));
    EXPECT_FALSE(IsOutOfRange("0", 8, false));
    EXPECT_TRUE(IsOutOfRange("1", 8, true)) << "any other code allows only 0";
    EXPECT_TRUE(IsOutOfRange(QVariant(), 3, true));
    EXPECT_FALSE(IsOutOfRange(12, 3, false));
}
