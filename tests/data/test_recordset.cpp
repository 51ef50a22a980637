// The SQLite wrapper: recordset moves and counts, finds, typed values, writes, errors, SQL rewriting.
#include "ErrorNumber.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "data/SqlSupport.h"
#include "runtime/Currency.h"
#include "runtime/VbError.h"
#include <QDate>
#include <QFile>

using namespace ql;
using qltest::errorNumber;

namespace {

class RecordsetTest : public qltest::DocumentsTest {
protected:
    void SetUp() override {
        db = openOrCreate(DatabaseKind::Wage, docs->path() + "/Wage32.db");
        db.executeScript(R"(
            INSERT INTO Employees (EmployeeID, AddressID, PayRate, TaxCode, DateHired, DateFinished)
                VALUES (1, 10, 25.5, 'M', '2024-01-15', '1899-12-30');
            INSERT INTO Employees (EmployeeID, AddressID, PayRate, TaxCode) VALUES (2, 11, 30, 'M SL');
            INSERT INTO Wages (WageID, EmployeeID, [Date], Gross, Hours, OneOff) VALUES (1, 1, '2026-04-07', 1000, 40, 0);
            INSERT INTO Wages (WageID, EmployeeID, [Date], Gross, Hours, OneOff) VALUES (2, 1, '2026-04-14', 1020.5, 40.5, 0);
            INSERT INTO Wages (WageID, EmployeeID, [Date], Gross, Hours, OneOff) VALUES (3, 2, '2026-04-14', 1500, 38, 1);
        )");
    }
    Database db;
};

} // namespace

TEST_F(RecordsetTest, RecordCountCountsVisitedRowsUntilMoveLast) {
    auto rs = db.openRecordset("SELECT * FROM Wages ORDER BY WageID", RecordsetType::Snapshot);
    EXPECT_FALSE(rs->EOF_());
    EXPECT_FALSE(rs->BOF());
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->MoveNext();
    EXPECT_EQ(rs->RecordCount(), 2);
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(rs->value("WageID").toInt(), 3);
    rs->MoveFirst();
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(rs->value("WageID").toInt(), 1);
}

TEST_F(RecordsetTest, EmptyQueryIsAtBothEnds) {
    auto rs = db.openRecordset("SELECT * FROM Wages WHERE WageID = 99", RecordsetType::Snapshot);
    EXPECT_TRUE(rs->EOF_());
    EXPECT_TRUE(rs->BOF());
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_EQ(errorNumber([&] { rs->MoveFirst(); }), err::NoCurrentRecord);
    EXPECT_EQ(errorNumber([&] { rs->value("WageID"); }), err::NoCurrentRecord);
}

TEST_F(RecordsetTest, MovingPastTheEndsSetsEofAndBofThenRaises) {
    auto rs = db.openRecordset("SELECT WageID FROM Wages ORDER BY WageID", RecordsetType::Snapshot);
    rs->MoveNext();
    rs->MoveNext();
    rs->MoveNext();
    EXPECT_TRUE(rs->EOF_());
    EXPECT_FALSE(rs->BOF());
    EXPECT_EQ(errorNumber([&] { rs->MoveNext(); }), err::NoCurrentRecord);
    rs->MoveFirst();
    rs->MovePrevious();
    EXPECT_TRUE(rs->BOF());
    EXPECT_EQ(errorNumber([&] { rs->MovePrevious(); }), err::NoCurrentRecord);
}

TEST_F(RecordsetTest, FindFirstAndFindNextWithCriteria) {
    auto rs = db.openRecordset("SELECT * FROM Wages ORDER BY WageID", RecordsetType::Dynaset);
    rs->FindFirst("[WageID]=2");
    EXPECT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->value("WageID").toInt(), 2);
    rs->FindFirst("EmployeeID = 1 AND Gross > 1000");
    EXPECT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->value("WageID").toInt(), 2);
    rs->FindFirst("EmployeeID = 1");
    EXPECT_EQ(rs->value("WageID").toInt(), 1);
    rs->FindNext("EmployeeID = 1");
    EXPECT_EQ(rs->value("WageID").toInt(), 2);
    rs->FindNext("EmployeeID = 1");
    EXPECT_TRUE(rs->NoMatch());
    EXPECT_EQ(rs->value("WageID").toInt(), 2) << "a miss leaves the current row";
    rs->FindFirst("[Date] = #04/14/2026# AND OneOff = True");
    EXPECT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->value("WageID").toInt(), 3);
    rs->FindFirst("TaxCode = 'x'");
    EXPECT_TRUE(rs->NoMatch());
}

TEST_F(RecordsetTest, FindFirstOnTextAndMixedCriterion) {
    auto rs = db.openRecordset("Employees");
    rs->FindFirst("TaxCode = 'M SL' AND PayRate = 30");
    ASSERT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->value("EmployeeID").toInt(), 2);
    EXPECT_EQ(errorNumber([&] { rs->FindFirst("NoSuchColumn = 1"); }), err::MissingObject);
}

TEST_F(RecordsetTest, ValuesAreTypedByTheColumn) {
    db.execute("UPDATE Wages SET Rate = 0.1, Details = 'memo', PaymentDate = '2026-04-20 13:45:00' WHERE "
               "WageID = 2");
    auto rs = db.openRecordset("SELECT * FROM Wages WHERE WageID = 2", RecordsetType::Snapshot);
    const QVariant gross = rs->value("Gross");
    ASSERT_EQ(gross.typeId(), qMetaTypeId<Currency>());
    EXPECT_EQ(gross.value<Currency>().raw(), 10205000);
    EXPECT_EQ(rs->value("Rate").value<Currency>().raw(), 1000);
    EXPECT_EQ(rs->value("Hours").typeId(), QMetaType::Float);
    EXPECT_FLOAT_EQ(rs->value("Hours").toFloat(), 40.5f);
    EXPECT_EQ(rs->value("WageID").typeId(), QMetaType::Int);
    EXPECT_EQ(rs->value("Date").toDate(), QDate(2026, 4, 14));
    EXPECT_EQ(rs->value("Date").typeId(), QMetaType::QDate);
    EXPECT_EQ(rs->value("PaymentDate").typeId(), QMetaType::QDateTime);
    EXPECT_EQ(rs->value("PaymentDate").toDateTime(), QDateTime(QDate(2026, 4, 20), QTime(13, 45)));
    EXPECT_EQ(rs->value("OneOff").typeId(), QMetaType::Bool);
    EXPECT_FALSE(rs->value("OneOff").toBool());
    EXPECT_EQ(rs->value("Details").typeId(), QMetaType::QString);
    EXPECT_FALSE(rs->value("Reference").isValid()) << "Null is an invalid variant";
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("Gross")), FieldType::Currency);
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("Hours")), FieldType::Single);
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("WageID")), FieldType::Long);
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("Date")), FieldType::Date);
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("OneOff")), FieldType::Boolean);
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("TaxCode")), FieldType::Text);
    EXPECT_EQ(rs->fieldType(rs->fieldIndex("Details")), FieldType::Memo);
    EXPECT_EQ(rs->value(0), rs->value("WageID"));
    EXPECT_EQ(errorNumber([&] { rs->value("NoSuchField"); }), 3265);
}

TEST_F(RecordsetTest, ComputedColumnsTakeTheirTypeFromTheValue) {
    auto rs = db.openRecordset(
        "SELECT Sum(Gross) AS Total, Count(*) AS N, 'a' || 'b' AS T, Max(Rate) AS R FROM Wages",
        RecordsetType::Snapshot);
    EXPECT_EQ(rs->fieldType(0), FieldType::Double);
    EXPECT_DOUBLE_EQ(rs->value("Total").toDouble(), 3520.5);
    EXPECT_EQ(rs->fieldType(1), FieldType::Long);
    EXPECT_EQ(rs->value("N").toInt(), 3);
    EXPECT_EQ(rs->fieldType(2), FieldType::Text);
    EXPECT_EQ(rs->value("T").toString(), "ab");
}

TEST_F(RecordsetTest, CurrencyIsReadHalfToEvenAtFourDecimals) {
    db.execute("UPDATE Wages SET Gross = 0.03125, PAYE = 0.09375, TakeHome = 1.23445 WHERE WageID = 1");
    auto rs =
        db.openRecordset("SELECT Gross, PAYE, TakeHome FROM Wages WHERE WageID = 1", RecordsetType::Snapshot);
    EXPECT_EQ(rs->value("Gross").value<Currency>().raw(), 312);
    EXPECT_EQ(rs->value("PAYE").value<Currency>().raw(), 938);
    EXPECT_EQ(rs->value("TakeHome").value<Currency>().raw(), 12345);
}

TEST_F(RecordsetTest, AddNewUpdateAndLastModifiedGiveTheNewKey) {
    auto rs = db.openRecordset("Wages");
    rs->AddNew();
    rs->setValue("Date", "5/05/2026"); // the short date of the locale, converted on store
    rs->setValue("Rate", QVariant::fromValue(Currency::fromRaw(255000)));
    rs->setValue("EmployeeID", 1);
    rs->setValue("TaxCode", "M");
    rs->setValue("Gross", "$1,234.56");
    rs->setValue("Hours", 37.5);
    rs->Update();
    EXPECT_EQ(rs->value("WageID").toInt(), 1) << "the current row stays where it was";
    rs->setBookmark(rs->LastModified());
    const int id = rs->value("WageID").toInt();
    EXPECT_EQ(id, 4);
    EXPECT_EQ(rs->value("Date").toDate(), QDate(2026, 5, 5));
    EXPECT_EQ(rs->value("Gross").value<Currency>().raw(), 12345600);
    EXPECT_EQ(rs->value("PAYE").value<Currency>().raw(), 0) << "column default";
    EXPECT_FALSE(rs->value("OneOff").toBool());
    EXPECT_EQ(db.scalar("SELECT [Date] FROM Wages WHERE WageID = 4").toString(), "2026-05-05");
    EXPECT_EQ(db.scalar("SELECT typeof(Gross) FROM Wages WHERE WageID = 4").toString(), "real");
    rs->MoveLast();
    EXPECT_EQ(rs->value("WageID").toInt(), 4);
    EXPECT_EQ(rs->RecordCount(), 4);
}

TEST_F(RecordsetTest, AddedAndEditedRowsAreFoundByTheirStoredValues) {
    auto rs = db.openRecordset("Wages");
    rs->AddNew();
    rs->setValue("EmployeeID", 2);
    rs->Update();
    // The key comes from the table, so the find sees the row as stored.
    rs->FindFirst("WageID = 4");
    ASSERT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->value("EmployeeID").toInt(), 2);
    rs->Edit();
    rs->setValue("Gross", "$12.345");
    rs->Update();
    rs->MoveFirst();
    rs->FindFirst("Gross = 12.345");
    ASSERT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->value("WageID").toInt(), 4);
    EXPECT_EQ(rs->value("PAYE").value<Currency>().raw(), 0) << "column default";
}

TEST_F(RecordsetTest, KeysAreNeverReused) {
    db.execute("DELETE FROM Wages WHERE WageID = 3");
    auto rs = db.openRecordset("Wages");
    rs->AddNew();
    rs->setValue("EmployeeID", 2);
    rs->Update();
    rs->setBookmark(rs->LastModified());
    EXPECT_EQ(rs->value("WageID").toInt(), 4);
}

TEST_F(RecordsetTest, AddNewOnAQueryWithAJoinWritesTheFirstTable) {
    auto rs = db.openRecordset(
        "SELECT Wages.*, Employees.TaxCode AS EmpCode FROM Wages INNER JOIN Employees ON Wages.EmployeeID = "
        "Employees.EmployeeID WHERE Wages.EmployeeID = 1");
    EXPECT_EQ(rs->value("EmpCode").toString(), "M");
    rs->Edit();
    rs->setValue("Details", "edited");
    EXPECT_EQ(rs->value("Details").toString(), "edited") << "the edit buffer is read during Edit";
    rs->Update();
    EXPECT_EQ(db.scalar("SELECT Details FROM Wages WHERE WageID = 1").toString(), "edited");
    rs->Edit();
    EXPECT_EQ(errorNumber([&] { rs->setValue("EmpCode", "x"); }), 3164);
    rs->CancelUpdate();
}

TEST_F(RecordsetTest, ADynasetReachesItsTableThroughAnAlias) {
    auto rs = db.openRecordset("SELECT w.WageID, w.PAYE FROM Wages AS w WHERE w.EmployeeID = 2");
    rs->Edit();
    rs->setValue("PAYE", 197.73);
    rs->Update();
    EXPECT_DOUBLE_EQ(db.scalar("SELECT PAYE FROM Wages WHERE WageID = 3").toDouble(), 197.73);
    auto grouped = db.openRecordset("SELECT EmployeeID, Sum(Gross) AS G FROM Wages GROUP BY EmployeeID");
    EXPECT_EQ(errorNumber([&] { grouped->Edit(); }), 3027) << "a grouped query is read-only";
}

TEST_F(RecordsetTest, EditDeleteAndCancel) {
    auto rs = db.openRecordset("SELECT * FROM Wages ORDER BY WageID");
    rs->Edit();
    rs->setValue("PAYE", 171.5);
    rs->CancelUpdate();
    EXPECT_EQ(db.scalar("SELECT PAYE FROM Wages WHERE WageID = 1").toDouble(), 0.0);
    rs->MoveNext();
    rs->Delete();
    EXPECT_EQ(db.scalar("SELECT count(*) FROM Wages").toInt(), 2);
    EXPECT_EQ(errorNumber([&] { rs->value("WageID"); }), err::NoCurrentRecord);
    rs->MoveNext();
    EXPECT_EQ(rs->value("WageID").toInt(), 3);
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(errorNumber([&] { rs->setValue("PAYE", 1); }), 3020);
    EXPECT_EQ(errorNumber([&] { rs->Update(); }), 3020);
}

TEST_F(RecordsetTest, SnapshotRefusesChanges) {
    auto rs = db.openRecordset("Wages", RecordsetType::Snapshot);
    EXPECT_EQ(errorNumber([&] { rs->AddNew(); }), 3027);
    EXPECT_EQ(errorNumber([&] { rs->Edit(); }), 3027);
    EXPECT_EQ(errorNumber([&] { rs->Delete(); }), 3027);
}

TEST_F(RecordsetTest, ConversionOnStore) {
    auto rs = db.openRecordset("Wages");
    rs->Edit();
    rs->setValue("OneOff", true);
    rs->setValue("Hours", "12.5");
    rs->setValue("Date", QDate(2026, 6, 1));
    rs->setValue("PaymentDate", "2026-06-02");
    rs->setValue("TaxCode", 5);
    rs->Update();
    EXPECT_EQ(db.scalar("SELECT OneOff FROM Wages WHERE WageID = 1").toInt(), 1);
    EXPECT_EQ(db.scalar("SELECT [Date] FROM Wages WHERE WageID = 1").toString(), "2026-06-01");
    EXPECT_EQ(db.scalar("SELECT PaymentDate FROM Wages WHERE WageID = 1").toString(), "2026-06-02");
    EXPECT_EQ(db.scalar("SELECT TaxCode FROM Wages WHERE WageID = 1").toString(), "5");
    rs->Edit();
    EXPECT_EQ(errorNumber([&] { rs->setValue("Gross", "abc"); }), 3421);
    EXPECT_EQ(errorNumber([&] { rs->setValue("Date", "not a date"); }), 3421);
    rs->setValue("Gross", QVariant());
    rs->Update();
    EXPECT_TRUE(db.scalar("SELECT Gross FROM Wages WHERE WageID = 1").isNull());
}

TEST_F(RecordsetTest, RequeryAndCloseAndBookmarks) {
    auto rs = db.openRecordset("SELECT * FROM Wages ORDER BY WageID");
    rs->MoveNext();
    const QByteArray mark = rs->Bookmark();
    rs->MoveFirst();
    rs->setBookmark(mark);
    EXPECT_EQ(rs->value("WageID").toInt(), 2);
    EXPECT_EQ(errorNumber([&] { rs->setBookmark("99"); }), 3159);
    db.execute("DELETE FROM Wages WHERE WageID = 1");
    rs->Requery();
    EXPECT_EQ(rs->value("WageID").toInt(), 2);
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->Close();
    EXPECT_EQ(errorNumber([&] { rs->MoveNext(); }), 3420);
}

TEST_F(RecordsetTest, FieldsByQualifiedName) {
    auto rs =
        db.openRecordset("SELECT Wages.EmployeeID, Employees.EmployeeID FROM Wages INNER JOIN Employees ON "
                         "Wages.EmployeeID = Employees.EmployeeID",
                         RecordsetType::Snapshot);
    EXPECT_EQ(rs->fieldIndex("Employees.EmployeeID"), 1);
    EXPECT_EQ(rs->fieldIndex("[EmployeeID]"), 0);
    EXPECT_EQ(rs->fieldIndex("nothing"), -1);
}

TEST_F(RecordsetTest, SqlErrorsBecomeTheSystemsErrorNumbers) {
    EXPECT_EQ(errorNumber([&] { db.openRecordset("SELECT * FROM NoSuchTable"); }), err::MissingObject);
    EXPECT_EQ(errorNumber([&] { db.openRecordset("NoSuchTable"); }), err::MissingObject);
    EXPECT_EQ(errorNumber([&] { db.execute("UPDATE Wages SET NoSuchColumn = 1"); }), err::MissingObject);
    EXPECT_EQ(errorNumber([&] { db.execute("INSERT INTO PayInterval (PayIntervalID) VALUES (1)"); }),
              err::DuplicateKey);
    EXPECT_EQ(errorNumber([&] { db.execute("INSERT INTO Wages (EmployeeID) VALUES (NULL)"); }),
              err::RequiredField);
    EXPECT_EQ(errorNumber([&] { db.execute("INSERT INTO Wages (EmployeeID) VALUES (99)"); }), 3201);
    try {
        db.openRecordset("SELECT * FROM Wagez");
    } catch (const VbError& e) {
        EXPECT_TRUE(e.description().contains("Wagez")) << e.description().toStdString();
    }
}

TEST_F(RecordsetTest, DateLiteralsAreRewrittenOutsideQuotes) {
    EXPECT_EQ(rewriteDateLiterals("WHERE [Date] = #04/03/2007#"), "WHERE [Date] = '2007-04-03'");
    EXPECT_EQ(rewriteDateLiterals("x = #12/30/1899# OR y = #1/2/2026#"),
              "x = '1899-12-30' OR y = '2026-01-02'");
    EXPECT_EQ(rewriteDateLiterals("x = '#04/03/2007#'"), "x = '#04/03/2007#'");
    EXPECT_EQ(rewriteDateLiterals("[a#04/03/2007#b] = 1"), "[a#04/03/2007#b] = 1");
    EXPECT_EQ(rewriteDateLiterals("x = #04/03/2007 10:30:00#"), "x = '2007-04-03 10:30:00'");
    EXPECT_EQ(rewriteDateLiterals("x = 'it''s' AND d < #4/3/2007#"), "x = 'it''s' AND d < '2007-04-03'");
    EXPECT_EQ(rewriteDateLiterals("a # b"), "a # b");
    auto rs = db.openRecordset("SELECT WageID FROM Wages WHERE [Date] = #04/14/2026# ORDER BY WageID",
                               RecordsetType::Snapshot);
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 2);
}

TEST_F(RecordsetTest, NullComparisonsStayAsWritten) {
    // "= NULL" is never true, so only the zero date marks a current employee.
    auto rs = db.openRecordset(
        "SELECT EmployeeID FROM Employees WHERE DateFinished = NULL OR DateFinished = #12/30/1899#",
        RecordsetType::Snapshot);
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(rs->value(0).toInt(), 1);
}

TEST_F(RecordsetTest, ComparisonWithNullIsFalseInsideNot) {
    // Employee 1 is hired and current; employee 2 has neither date set.
    auto rs = db.openRecordset("SELECT EmployeeID FROM Employees WHERE (Employees.[DateFinished] = NULL OR "
                               "Employees.[DateFinished] = "
                               "#12/30/1899#) AND not (DateHired = NULL or DateHired = #12/30/1899#);",
                               RecordsetType::Snapshot);
    ASSERT_FALSE(rs->EOF_());
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(rs->value(0).toInt(), 1);
    auto none = db.openRecordset("SELECT EmployeeID FROM Employees WHERE NOT (DateHired <> NULL)",
                                 RecordsetType::Snapshot);
    none->MoveLast();
    EXPECT_EQ(none->RecordCount(), 2);
    // An assignment of NULL stays an assignment; a quoted '= NULL' is left alone.
    EXPECT_EQ(db.execute("UPDATE Employees SET TaxCode = NULL WHERE EmployeeID = 2"), 1);
    EXPECT_TRUE(db.scalar("SELECT TaxCode FROM Employees WHERE EmployeeID = 2").isNull());
    EXPECT_EQ(rewriteJetSql("SELECT a FROM t WHERE b = 'x = NULL' AND c = NULL"),
              "SELECT a FROM t WHERE b = 'x = NULL' AND c IN ()");
    EXPECT_EQ(rewriteJetSql("SELECT DISTINCTROW a FROM t"), "SELECT a FROM t");
    EXPECT_EQ(rewriteJetSql("UPDATE a SET x = NULL WHERE y = NULL; UPDATE b SET z = NULL"),
              "UPDATE a SET x = NULL WHERE y IN (); UPDATE b SET z = NULL");
    rs->FindFirst("DateHired = NULL");
    EXPECT_TRUE(rs->NoMatch());
}

TEST_F(RecordsetTest, JetDeletesAndBangReferences) {
    EXPECT_EQ(db.execute("Delete * From Wages WHERE WageID = 3"), 1);
    db.execute("INSERT INTO PaySlip (Description) VALUES ('x')");
    db.execute("DELETE PaySlip.* FROM PaySlip;");
    EXPECT_EQ(db.scalar("SELECT count(*) FROM PaySlip").toInt(), 0);
    EXPECT_EQ(db.scalar("SELECT Sum(IIf([TransType]![Added], 1, 0)) FROM TransType").toInt(), 2);
    EXPECT_EQ(rewriteJetSql("SELECT '[a]![b]', [a]![b]"), "SELECT '[a]![b]', [a].[b]");
}

TEST_F(RecordsetTest, ExecuteRunsEveryStatement) {
    EXPECT_EQ(db.execute("DELETE FROM Wages WHERE WageID = 1; DELETE FROM Wages WHERE WageID = 2;"), 2);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM Wages").toInt(), 1);
}

TEST_F(RecordsetTest, VbStrAndIif) {
    EXPECT_EQ(db.scalar("SELECT vbstr(2)").toString(), "2");
    EXPECT_EQ(db.scalar("SELECT vbstr(1.5)").toString(), "1.5");
    EXPECT_EQ(db.scalar("SELECT vbstr(2.0)").toString(), "2");
    EXPECT_EQ(db.scalar("SELECT vbstr(0.1)").toString(), "0.1");
    EXPECT_EQ(db.scalar("SELECT vbstr(NULL)").toString(), "");
    EXPECT_EQ(db.scalar("SELECT vbstr('x')").toString(), "x");
    // A Single column's 1.1 reads "1.1", not the double's digits.
    db.execute("UPDATE PaymentNames SET Calculation = ? WHERE PaymentNameID = 2", {double(1.1f)});
    EXPECT_EQ(
        db.scalar(
              "SELECT iif(Calculation > 0, PayUnitname || ' (x' || vbstr(Calculation) || ')', PayUnitname) "
              "FROM PaymentNames WHERE PaymentNameID = 2")
            .toString(),
        "Overtime (x1.1)");
    EXPECT_EQ(
        db.scalar(
              "SELECT iif(Calculation > 0, PayUnitname || ' (x' || vbstr(Calculation) || ')', PayUnitname) "
              "FROM PaymentNames WHERE PaymentNameID = 3")
            .toString(),
        "Double Time (x2)");
    EXPECT_EQ(db.scalar("SELECT iif(NULL, 1, 2)").toInt(), 2);
    EXPECT_EQ(db.scalar("SELECT iif(0, 1, 2)").toInt(), 2);
    EXPECT_EQ(db.scalar("SELECT iif(-1, 1, 2)").toInt(), 1);
}

TEST_F(RecordsetTest, TransactionsCommitAndRollBack) {
    db.beginTrans();
    EXPECT_TRUE(db.inTransaction());
    db.execute("DELETE FROM Wages WHERE WageID = 1");
    db.rollback();
    EXPECT_FALSE(db.inTransaction());
    EXPECT_EQ(db.scalar("SELECT count(*) FROM Wages").toInt(), 3);
    db.beginTrans();
    db.execute("DELETE FROM Wages WHERE WageID = 1");
    db.commitTrans();
    EXPECT_EQ(db.scalar("SELECT count(*) FROM Wages").toInt(), 2);
    EXPECT_EQ(errorNumber([&] { db.commitTrans(); }), 3034);
}

TEST_F(RecordsetTest, ChangeMarksMatchOnlyWithoutChangesInOneTransaction) {
    EXPECT_FALSE(db.changeMark() == db.changeMark()); // outside a transaction nothing matches
    db.beginTrans();
    db.execute("UPDATE Wages SET Hours = 41 WHERE WageID = 1");
    const Database::ChangeMark written = db.changeMark();
    db.scalar("SELECT count(*) FROM Wages");
    EXPECT_TRUE(db.changeMark() == written); // a read changes nothing
    db.execute("UPDATE Wages SET Hours = 42 WHERE WageID = 1");
    EXPECT_FALSE(db.changeMark() == written);
    const Database::ChangeMark second = db.changeMark();
    // A savepoint rolled back undoes rows without counting a change.
    db.beginTrans();
    EXPECT_TRUE(db.changeMark() == second);
    db.execute("UPDATE Wages SET Hours = 43 WHERE WageID = 1");
    const Database::ChangeMark inner = db.changeMark();
    db.rollback();
    EXPECT_FALSE(db.changeMark() == inner);
    const Database::ChangeMark third = db.changeMark();
    db.execute("CREATE TABLE Scratch (x LONG)");
    EXPECT_FALSE(db.changeMark() == third);
    const Database::ChangeMark fourth = db.changeMark();
    db.commitTrans();
    db.beginTrans();
    EXPECT_FALSE(db.changeMark() == fourth); // another transaction
    db.rollback();
}

TEST_F(RecordsetTest, ConversionOnStoreFollowsTheLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    auto rs = db.openRecordset("Wages");
    rs->Edit();
    rs->setValue("Gross", "1.234,56");
    rs->setValue("Hours", "37,5");
    rs->setValue("Date", "05.06.2026");
    rs->Update();
    EXPECT_DOUBLE_EQ(db.scalar("SELECT Gross FROM Wages WHERE WageID = 1").toDouble(), 1234.56);
    EXPECT_DOUBLE_EQ(db.scalar("SELECT Hours FROM Wages WHERE WageID = 1").toDouble(), 37.5);
    EXPECT_EQ(db.scalar("SELECT [Date] FROM Wages WHERE WageID = 1").toString(), "2026-06-05");
    EXPECT_EQ(db.scalar("SELECT vbstr(1.5)").toString(), "1,5")
        << "the locale's decimal mark, as the runtime prints";
    EXPECT_EQ(db.scalar("SELECT [Date] FROM Wages WHERE [Date] = #06/05/2026#").toString(), "2026-06-05")
        << "the literal stays month first";
}

TEST_F(RecordsetTest, ConnectionSettings) {
    EXPECT_EQ(db.scalar("PRAGMA foreign_keys").toInt(), 1);
    EXPECT_EQ(db.scalar("PRAGMA journal_mode").toString(), "wal");
    EXPECT_EQ(db.scalar("PRAGMA synchronous").toInt(), 1);
}

TEST_F(RecordsetTest, FirstColumnGivesEveryRowInTheQueryOrder) {
    const QVariantList keys =
        db.firstColumn("SELECT Wages.WageID FROM Wages WHERE Wages.[EmployeeID] = 1 ORDER BY Wages.Date DESC");
    ASSERT_EQ(keys.size(), 2);
    EXPECT_EQ(keys.at(0).toLongLong(), 2);
    EXPECT_EQ(keys.at(1).toLongLong(), 1);
    EXPECT_TRUE(db.firstColumn("SELECT WageID FROM Wages WHERE EmployeeID = 99").isEmpty());
    EXPECT_NE(errorNumber([&] { db.firstColumn("SELECT NoSuchColumn FROM Wages"); }), 0);
}
