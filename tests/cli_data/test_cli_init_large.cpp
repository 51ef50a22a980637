// quillary-cli init --demo --employees N --years Y: a large demo payroll.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "payday/IrdNumber.h"

using namespace ql;

namespace {

class InitLargeTest : public qltest::DocumentsTest {
protected:
    QString wage() const { return docs->path() + "/data/Wage32.db"; }
    qltest::CliResult run(const QStringList& args) { return qltest::runCli(args, docs->path()); }
};

int count(Database& db, const QString& sql) {
    return db.scalar(sql).toInt();
}

} // namespace

TEST_F(InitLargeTest, InventedEmployeesWithYearsOfPays) {
    const auto r = run({"init", "--demo", "--employees", "12", "--years", "2"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.endsWith("demo: added 7 invented employees and 1038 pays\n")) << r.out.toStdString();
    Database db;
    db.open(wage());
    // Twelve on the roster: the demo's five and seven invented ones, with the demo's kinds of pay.
    EXPECT_EQ(
        count(db,
              "SELECT count(*) FROM Employees WHERE DateHired IS NOT NULL AND DateFinished = '1899-12-30'"),
        12);
    EXPECT_EQ(count(db, "SELECT count(DISTINCT PayIntervalID) FROM Employees"), 4);
    EXPECT_EQ(count(db, "SELECT count(DISTINCT TaxCode) FROM Employees"), 6);
    // Two years of pays each: 104 weekly, 52 fortnightly, 26 four-weekly, 24 monthly.
    EXPECT_EQ(count(db, "SELECT count(*) FROM Wages WHERE EmployeeID = 1"), 104);
    EXPECT_EQ(count(db, "SELECT count(*) FROM Wages WHERE EmployeeID = 2"), 24);
    EXPECT_EQ(count(db, "SELECT count(*) FROM Wages WHERE EmployeeID = 3"), 52);
    EXPECT_EQ(count(db, "SELECT count(*) FROM Wages WHERE EmployeeID = 5"), 26);
    // A repeated pay is the engine's second pay of the employee, line for line, a week later each time;
    // that pay is dated 13 April 2024 and so taxed on 2024/25's figures.
    EXPECT_EQ(count(db, "SELECT count(DISTINCT Date) FROM Wages WHERE EmployeeID = 1"), 104);
    EXPECT_EQ(
        count(db,
              "SELECT count(*) FROM Wages w WHERE EmployeeID = 1 AND WageID > (SELECT min(WageID) FROM Wages "
              "WHERE EmployeeID = 1) AND (PAYE <> 188.95 OR Gross <> 1022.75)"),
        0);
    EXPECT_EQ(count(db, "SELECT count(*) FROM PaymentDetails p JOIN Wages w ON p.WageID = w.WageID WHERE "
                        "w.EmployeeID = 1"),
              2 * 104);
    EXPECT_EQ(
        count(db,
              "SELECT count(*) FROM TaxDetails t JOIN Wages w ON t.WageID = w.WageID WHERE w.EmployeeID = 1"),
        103);
    // Every employee, invented or not, can go into the payday files: a number that passes the check,
    // none twice, and a bank account.
    auto ird = db.openRecordset("SELECT IRDNumber FROM Employees", RecordsetType::Snapshot);
    int employees = 0;
    for (; !ird->EOF_(); ird->MoveNext(), ++employees)
        EXPECT_TRUE(IsValidIrdNumber(ird->value(0).toString())) << ird->value(0).toString().toStdString();
    ird->Close();
    EXPECT_EQ(employees, 14);
    EXPECT_EQ(count(db, "SELECT count(DISTINCT IRDNumber) FROM Employees"), employees);
    EXPECT_EQ(count(db, "SELECT count(DISTINCT AccountNumber) FROM PaydayBankAccounts"), employees);
    db.close();
    // The pays are the program's own: the pay list of an invented employee reads.
    const auto pays = run({"pays", "8"});
    EXPECT_EQ(pays.exitCode, 0) << pays.err.toStdString();
}

TEST_F(InitLargeTest, SizesNeedTheDemo) {
    EXPECT_EQ(run({"init", "--employees", "12"}).exitCode, 2);
    EXPECT_EQ(run({"init", "--demo", "--employees", "x"}).exitCode, 2);
    EXPECT_EQ(run({"init", "--demo", "--years"}).exitCode, 2);
}
