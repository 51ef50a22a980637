// Reading a query forward row by row: the same typed values as a recordset, the amounts as Currency,
// names found as a recordset finds them; and the exact sums of the cursums function.
#include "ErrorNumber.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/RowReader.h"
#include "data/Schema.h"
#include "runtime/Convert.h"
#include "runtime/Currency.h"
#include "runtime/VbError.h"
#include <QRandomGenerator>
#include <cstring>
#include <iostream>

using namespace ql;
using qltest::errorNumber;

namespace {

class RowReaderTest : public qltest::DocumentsTest {
protected:
    void SetUp() override {
        db = openOrCreate(DatabaseKind::Wage, docs->path() + "/Wage32.db");
        db.executeScript(R"(
            INSERT INTO Employees (EmployeeID, AddressID, PayRate, TaxCode, DateHired, DateFinished, KiwiSaverEnrolled)
                VALUES (1, 10, 25.5, 'M', '2024-01-15', '1899-12-30', 1);
            INSERT INTO Employees (EmployeeID, AddressID, PayRate, TaxCode) VALUES (2, NULL, '31.25', 'M SL');
            INSERT INTO Wages (WageID, EmployeeID, [Date], Gross, Hours, PAYE, TotalTaxable, OneOff)
                VALUES (1, 1, '2026-04-07', 1000, 40, 150.25, 1000, 0);
            INSERT INTO Wages (WageID, EmployeeID, [Date], Gross, Hours, PAYE, TotalTaxable, OneOff)
                VALUES (2, 1, '2026-04-14 10:30:00', 1020.5, 40.1, 155.05, 1030.5, 0);
            INSERT INTO Wages (WageID, EmployeeID, [Date], Gross, Hours, PAYE, TotalTaxable, OneOff)
                VALUES (3, 1, '2026-04-21', 'about 900', NULL, NULL, 900, 1);
        )");
    }
    Database db;
};

bool sameValue(const QVariant& a, const QVariant& b) {
    if (a.isValid() != b.isValid()) return false;
    if (!a.isValid()) return true;
    return a.metaType() == b.metaType() && a == b;
}

QList<std::int64_t> sumsOf(Database& db, const QString& sql) {
    const QByteArray blob = db.scalar(sql).toByteArray();
    QList<std::int64_t> sums;
    for (qsizetype at = 0; at + qsizetype(sizeof(std::int64_t)) <= blob.size(); at += sizeof(std::int64_t)) {
        std::int64_t raw = 0;
        std::memcpy(&raw, blob.constData() + at, sizeof raw);
        sums << raw;
    }
    return sums;
}

} // namespace

TEST_F(RowReaderTest, GivesTheValuesARecordsetGives) {
    for (const char* sql : {"SELECT * FROM Wages ORDER BY WageID",
                            "SELECT Employees.*, Wages.*, [TotalTaxable]-[PAYE] AS Net, Gross * 2 AS Twice, "
                            "'x' || Employees.TaxCode AS Tagged FROM Employees LEFT JOIN Wages ON "
                            "Wages.EmployeeID = Employees.EmployeeID ORDER BY Employees.EmployeeID, WageID"}) {
        auto rs = db.openRecordset(sql, RecordsetType::Snapshot);
        RowReader rows(db, sql);
        ASSERT_EQ(rows.fieldCount(), rs->fieldCount());
        int count = 0;
        for (; !rs->EOF_(); rs->MoveNext(), ++count) {
            ASSERT_TRUE(rows.next());
            for (int c = 0; c < rs->fieldCount(); ++c) {
                const QVariant expected = rs->value(c);
                // A computed column of the recordset takes one type for all its rows; here each value
                // gives its own, which is the same wherever a column holds one kind of value.
                if (rs->fieldName(c) == "Twice") continue;
                EXPECT_TRUE(sameValue(rows.value(c), expected))
                    << sql << " row " << count << " column " << rs->fieldName(c).toStdString() << ": "
                    << rows.value(c).toString().toStdString() << " against " << expected.toString().toStdString();
                EXPECT_EQ(rows.isNull(c), IsNull(expected));
                const bool numeric = !IsNull(expected) && IsNumeric(expected);
                const auto amount = rows.currency(c);
                EXPECT_EQ(amount.has_value(), numeric) << rs->fieldName(c).toStdString();
                if (amount && numeric) EXPECT_EQ(*amount, CCur(expected)) << rs->fieldName(c).toStdString();
            }
        }
        EXPECT_FALSE(rows.next());
        EXPECT_GT(count, 0);
    }
}

TEST_F(RowReaderTest, FindsNamesAsARecordsetDoesAndRefusesWhatIsNotThere) {
    RowReader rows(db, "SELECT Employees.*, Wages.[Date] FROM Employees INNER JOIN Wages ON "
                       "Wages.EmployeeID = Employees.EmployeeID ORDER BY WageID");
    EXPECT_EQ(rows.fieldIndex("Employees.EmployeeID"), 0);
    EXPECT_EQ(rows.fieldIndex("[TaxCode]"), rows.fieldIndex("taxcode"));
    EXPECT_EQ(rows.fieldIndex("Wages.Date"), rows.fieldCount() - 1);
    EXPECT_EQ(rows.fieldIndex("NoSuchColumn"), -1);
    EXPECT_EQ(errorNumber([&] { rows.requireField("NoSuchColumn"); }), 3265);
    EXPECT_EQ(errorNumber([&] { rows.value(0); }), 3021) << "no row before the first move";
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.value(rows.fieldIndex("Wages.Date")).toDate(), QDate(2026, 4, 7));
    EXPECT_EQ(errorNumber([&] { rows.value(rows.fieldCount()); }), 3265);
    while (rows.next()) {
    }
    EXPECT_EQ(errorNumber([&] { rows.value(0); }), 3021) << "no row after the last";
}

TEST_F(RowReaderTest, AQueryThatCannotBePreparedRaisesAsARecordsetWould) {
    EXPECT_EQ(errorNumber([&] { RowReader rows(db, "SELECT * FROM NoSuchTable"); }),
              errorNumber([&] { db.openRecordset("SELECT * FROM NoSuchTable", RecordsetType::Snapshot); }));
}

TEST_F(RowReaderTest, CursumsAddsEachColumnExactlyAsItsCellsRead) {
    // Hours as a Single (40.1 reads 40.0999985), Gross a Currency with a text that is no number, Net a
    // Double; nulls count nothing.
    const QList<std::int64_t> sums =
        sumsOf(db, "SELECT cursums('SCC', Hours, Gross, [TotalTaxable]-[PAYE]) FROM Wages");
    ASSERT_EQ(sums.size(), 3);
    EXPECT_EQ(sums.at(0), Currency::fromSingle(40.0f).raw() + Currency::fromSingle(40.1f).raw());
    EXPECT_EQ(sums.at(1), Currency::fromDouble(1000).raw() + Currency::fromDouble(1020.5).raw());
    EXPECT_EQ(sums.at(2), (Currency::fromDouble(849.75) + Currency::fromDouble(875.45)).raw());
    EXPECT_EQ(sumsOf(db, "SELECT cursums('S', CASE WHEN WageID = 3 THEN '12.5' ELSE Gross END) FROM Wages")
                  .value(0),
              Currency::fromDouble(2033).raw())
        << "a number given as text counts";
    EXPECT_TRUE(sumsOf(db, "SELECT cursums('C', Gross) FROM Wages WHERE WageID = 99").isEmpty());
}

TEST_F(RowReaderTest, CursumsRefusesATotalBeyondCurrency) {
    db.execute("UPDATE Wages SET Gross = 900000000000000");
    EXPECT_NE(errorNumber([&] { db.scalar("SELECT cursums('C', Gross) FROM Wages"); }), 0);
}

// Random amounts of four decimals, as the program stores them, add up to what a loop of Currency
// additions over the same cells gives.
TEST_F(RowReaderTest, CursumsAgreesWithALoopOverTheCellsAtRandom) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    db.beginTrans();
    for (int i = 0; i < 2000; ++i)
        db.execute("INSERT INTO Wages (EmployeeID, [Date], Gross, Hours, PAYE, TotalTaxable) VALUES (2, "
                   "'2026-01-01', ?, ?, ?, ?)",
                   {Currency::fromRaw(random.bounded(-10000000, 100000000)).toDouble(),
                    double(float(random.bounded(0, 8000)) / 100.0f),
                    Currency::fromRaw(random.bounded(0, 30000000)).toDouble(),
                    Currency::fromRaw(random.bounded(0, 100000000)).toDouble()});
    db.commitTrans();
    Currency gross, hours, net;
    RowReader rows(db, "SELECT Gross, Hours, [TotalTaxable]-[PAYE] FROM Wages WHERE EmployeeID = 2");
    while (rows.next()) {
        gross += *rows.currency(0);
        hours += *rows.currency(1);
        net += *rows.currency(2);
    }
    const QList<std::int64_t> sums = sumsOf(
        db, "SELECT cursums('CSC', Gross, Hours, [TotalTaxable]-[PAYE]) FROM Wages WHERE EmployeeID = 2");
    ASSERT_EQ(sums.size(), 3) << "seed " << seed;
    EXPECT_EQ(sums.at(0), gross.raw()) << "seed " << seed;
    EXPECT_EQ(sums.at(1), hours.raw()) << "seed " << seed;
    EXPECT_EQ(sums.at(2), net.raw()) << "seed " << seed;
}
