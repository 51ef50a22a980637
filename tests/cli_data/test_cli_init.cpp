// quillary-cli init [--demo], run as a user would in a fresh documents folder.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include <QCryptographicHash>
#include <QFile>

using namespace ql;

namespace {

class InitTest : public qltest::DocumentsTest {
protected:
    QString common() const { return docs->path() + "/Fernhold/Common"; }
    QString ini() const { return common() + "/Fernhold.ini"; }
    QString wage() const { return docs->path() + "/data/Wage32.db"; }
    QString farm() const { return docs->path() + "/data/Farm32.db"; }
    QString modules() const { return common() + "/Modules.db"; }
    qltest::CliResult run(const QStringList& args) { return qltest::runCli(args, docs->path()); }
};

QByteArray hashOf(const QString& path) {
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

int count(Database& db, const QString& sql) {
    return db.scalar(sql).toInt();
}

} // namespace

TEST_F(InitTest, CreatesTheSettingsFileAndTheThreeDatabases) {
    const auto r = run({"init"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "created: " + ini() + "\ncreated: " + wage() + "\ncreated: " + farm() +
                         "\ncreated: " + modules() + "\n");
    QFile f(ini());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(f.readAll());
    EXPECT_TRUE(text.contains("[FERNHOLD]"));
    EXPECT_TRUE(text.contains("WageFileName=" + wage()));
    EXPECT_TRUE(text.contains("DataFileName=" + farm()));
    EXPECT_TRUE(text.contains("ModuleFileName=" + modules()));
    EXPECT_TRUE(text.contains("DataRoot=" + docs->path() + "/data"));
    Database w;
    w.open(wage());
    EXPECT_EQ(count(w, "SELECT count(*) FROM PayInterval"), 5);
    EXPECT_EQ(count(w, "SELECT count(*) FROM Employees"), 0);
    Database fm;
    fm.open(farm());
    EXPECT_EQ(count(fm, "SELECT count(*) FROM Addresses"), 0);
    EXPECT_EQ(count(fm, "SELECT count(*) FROM [Farm Details]"), 1);
}

TEST_F(InitTest, NothingIsOverwritten) {
    ASSERT_EQ(run({"init"}).exitCode, 0);
    {
        Database w;
        w.open(wage());
        w.execute("INSERT INTO Employees (EmployeeID, TaxCode) VALUES (42, 'M')");
    }
    const QByteArray iniBefore = hashOf(ini());
    const auto r = run({"init"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "exists: " + ini() + "\nexists: " + wage() + "\nexists: " + farm() +
                         "\nexists: " + modules() + "\n");
    EXPECT_EQ(hashOf(ini()), iniBefore);
    Database w;
    w.open(wage());
    EXPECT_EQ(w.scalar("SELECT TaxCode FROM Employees WHERE EmployeeID = 42").toString(), "M");
}

TEST_F(InitTest, SettingsThatPointElsewhereAreFollowed) {
    docs->writeFile("Fernhold/Common/Fernhold.ini",
                    "[FERNHOLD]\nWageFileName=" + (docs->path() + "/other/Pay.db").toUtf8() + "\n");
    const auto r = run({"init"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.startsWith("exists: " + ini() + "\n"));
    EXPECT_TRUE(r.out.contains("created: " + docs->path() + "/other/Pay.db\n")) << r.out.toStdString();
    EXPECT_TRUE(QFile::exists(docs->path() + "/other/Pay.db"));
}

TEST_F(InitTest, AForeignFileIsRefusedAndLeftAsItIs) {
    const QString file = docs->writeFile("data/Wage32.db", "not a database at all");
    const auto r = run({"init"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(file)) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains("not a payroll database")) << r.err.toStdString();
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("not a database at all"));
}

TEST_F(InitTest, WrongUsage) {
    const auto r = run({"init", "--demos"});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.err.contains("init [--demo]"));
    EXPECT_FALSE(QFile::exists(ini()));
}

TEST_F(InitTest, DemoFarmCoversTheRosterCases) {
    const auto r = run({"init", "--demo"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("demo: added")) << r.out.toStdString();
    Database w, fm;
    w.open(wage());
    fm.open(farm());
    EXPECT_EQ(fm.scalar("SELECT [Farm Name] FROM [Farm Details]").toString(), "Tussock Hollow Demo Dairy");
    EXPECT_EQ(count(fm, "SELECT count(*) FROM Addresses WHERE BusinessFlag = True"), 1);

    // The roster: addresses ticked for the payroll, joined in memory with current employees.
    QList<int> ticked;
    auto a =
        fm.openRecordset("SELECT Addresses.* FROM Addresses WHERE WageFlag = True", RecordsetType::Snapshot);
    while (!a->EOF_()) {
        ticked << a->value("AddressID").toInt();
        a->MoveNext();
    }
    auto e = w.openRecordset(
        "SELECT Employees.*, EmployeeAwardType.[EmployeeType], EmployeeAwardType.[UnitOfPay], "
        "TaxTypes.[Taxname] FROM "
        "TaxTypes INNER JOIN (EmployeeAwardType INNER JOIN Employees ON EmployeeAwardType.[EmployeeTypeID] = "
        "Employees.[EmployeeTypeID]) ON TaxTypes.[TaxTypeID] = Employees.[TaxTypeID] WHERE "
        "(Employees.[DateFinished] "
        "= NULL OR Employees.[DateFinished] = #12/30/1899#) AND not (DateHired = NULL or DateHired = "
        "#12/30/1899#);",
        RecordsetType::Snapshot);
    QStringList roster;
    int addressOnly = 0;
    for (int id : ticked) {
        bool found = false;
        for (e->MoveFirst(); !e->EOF_(); e->MoveNext()) {
            if (e->value("AddressID").toInt() == id) {
                roster << e->value("TaxCode").toString() + "/" + e->value("PayIntervalID").toString();
                found = true;
            }
        }
        addressOnly += found ? 0 : 1;
    }
    EXPECT_EQ(roster, QStringList({"M/1", "M SL/4", "S/2", "ME/1", "M/3"}));
    EXPECT_EQ(addressOnly, 3) << "the finished, the not yet hired, and the address without an employee row";

    // KiwiSaver, student loan, the manager's own rate, board and union fee.
    EXPECT_EQ(count(w, "SELECT count(*) FROM Employees WHERE KiwiSaverEnrolled = True"), 2);
    EXPECT_FLOAT_EQ(
        w.scalar("SELECT SpecialRate FROM EmployeeDeductions WHERE EmployeeID = 2 AND DeductID = 1")
            .toFloat(),
        4.0f);
    EXPECT_EQ(
        count(w,
              "SELECT count(*) FROM EmployeeDeductions d JOIN DeductNames n ON n.DeductNameID = d.DeductID "
              "WHERE d.EmployeeID = 2 AND n.DeductionName = 'Student Loan'"),
        1);
    EXPECT_EQ(count(w, "SELECT count(*) FROM EmployeeDeductions WHERE EmployeeID = 5 AND FixedAmount > 0"),
              2);
    EXPECT_EQ(count(w, "SELECT count(*) FROM EmployerContributions"), 2);
    // The farm hand's occupation brings a taxable allowance, accommodation and a non-taxable allowance.
    EXPECT_EQ(
        count(w,
              "SELECT count(*) FROM TaxAllowTypes t JOIN Employees e ON e.EmployeeTypeID = t.EmployeetypeID "
              "WHERE e.EmployeeID = 1"),
        2);
    EXPECT_EQ(
        count(
            w,
            "SELECT count(*) FROM NonTaxAllowTypes t JOIN Employees e ON e.EmployeeTypeID = t.EmployeeTypeID "
            "WHERE e.EmployeeID = 1"),
        2);
    // The manager is salaried.
    EXPECT_EQ(
        count(w,
              "SELECT count(*) FROM PaymentTypes t JOIN PaymentNames n ON n.PaymentNameID = t.PaymentNameID "
              "JOIN Employees e ON e.EmployeeTypeID = t.EmployeeTypeID WHERE e.EmployeeID = 2 AND n.Salary = "
              "True"),
        1);
    // The tractor driver's year lies within the earner credit's range: 35 hours at 24.00 for 52 weeks.
    const double yearly =
        w.scalar("SELECT PayRate * Standardhours * 52 FROM Employees e JOIN PaymentTypes t ON "
                 "t.EmployeeTypeID = e.EmployeeTypeID WHERE e.EmployeeID = 4")
            .toDouble();
    EXPECT_GE(yearly, 24000);
    EXPECT_LE(yearly, 44000);
}

TEST_F(InitTest, DemoIsNotAddedTwice) {
    ASSERT_EQ(run({"init", "--demo"}).exitCode, 0);
    const auto r = run({"init", "--demo"});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.out.contains("demo: not added")) << r.out.toStdString();
    Database w;
    w.open(wage());
    EXPECT_EQ(count(w, "SELECT count(*) FROM Employees"), 7);
}
