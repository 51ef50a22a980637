// A farm set up from an empty installation by the command line alone: the employer, three employees,
// a pay run that commits, and the payday, bank and employee details files.
#include "StaffFixture.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace qltest {
namespace {

QJsonObject object(const QString& json) {
    return QJsonDocument::fromJson(json.toUtf8()).object();
}

TEST_F(StaffTest, AFarmFromNothingPaysItsPeople) {
    CliResult r = cli(employerArgs());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(object(r.out).value(QStringLiteral("Name")).toString(), QStringLiteral("Kowhai Flats Dairy"));

    QList<int> ids;
    for (const QStringList& args : {handArgs(), managerArgs(), milkerArgs()}) {
        r = cli(args);
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
        const QJsonObject e = object(r.out);
        for (const char* key : {"EmployeeID", "AddressID", "FirstName", "LastName", "IRDNumber", "TaxCode",
                                "PayInterval", "PayRate", "YearlyTotal", "DateHired", "DateFinished",
                                "KiwiSaverEnrolled", "KiwiSaverRate", "Account"})
            EXPECT_TRUE(e.contains(QLatin1String(key))) << key;
        ids << e.value(QStringLiteral("EmployeeID")).toInt();
    }
    const QJsonObject manager = object(cli({QStringLiteral("employee"), QStringLiteral("show"),
                                            QString::number(ids.at(1))})
                                           .out);
    EXPECT_EQ(manager.value(QStringLiteral("TaxCode")).toString(), QStringLiteral("M SL"));
    EXPECT_EQ(manager.value(QStringLiteral("PayInterval")).toString(), QStringLiteral("Monthly"));
    EXPECT_DOUBLE_EQ(manager.value(QStringLiteral("YearlyTotal")).toDouble(), 78000.0);
    EXPECT_DOUBLE_EQ(manager.value(QStringLiteral("KiwiSaverRate")).toDouble(), 4.0);
    EXPECT_TRUE(manager.value(QStringLiteral("KiwiSaverEnrolled")).toBool());
    EXPECT_EQ(manager.value(QStringLiteral("Account")).toString(), bankAccount(2));

    // The roster sees all three at once.
    r = cli({QStringLiteral("roster")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    for (const char* name : {"Tane, Mere", "Brown, Sam", "Kerr, Ana"})
        EXPECT_TRUE(r.out.contains(QLatin1String(name))) << name << r.out.toStdString();

    r = cli({QStringLiteral("pay-run"), QStringLiteral("2026-04-30"), QStringLiteral("--commit")});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString() << r.err.toStdString();
    const QJsonArray pays = object(r.out).value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 3) << r.out.toStdString();
    for (const QJsonValue& v : pays) {
        const QJsonObject p = v.toObject();
        EXPECT_FALSE(p.value(QStringLiteral("Reference")).isNull()) << r.out.toStdString();
        EXPECT_GT(p.value(QStringLiteral("Gross")).toDouble(), 0.0) << r.out.toStdString();
        EXPECT_GT(p.value(QStringLiteral("PAYE")).toDouble(), 0.0) << r.out.toStdString();
    }

    const QString ei = docs->path() + QStringLiteral("/ei.csv");
    r = cli({QStringLiteral("payday-file"), QStringLiteral("2026-04-30"), QStringLiteral("--out"), ei});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(fileText(ei).startsWith(QStringLiteral("HEI2,049091850,20260430,")));
    EXPECT_EQ(r.out.trimmed(), ei + QStringLiteral(": 3 employee lines"));

    const QString bank = docs->path() + QStringLiteral("/bank.txt");
    r = cli({QStringLiteral("bank-file"), QStringLiteral("2026-04-30"), QStringLiteral("--format"),
             QStringLiteral("auto"), QStringLiteral("--out"), bank, QStringLiteral("--date"), QStringLiteral("today")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral(": 3 payments"))) << r.out.toStdString();

    const QString ed = docs->path() + QStringLiteral("/ed.csv");
    r = cli({QStringLiteral("employee-details-file"), QStringLiteral("--since"), QStringLiteral("2026-04-01"),
             QStringLiteral("--out"), ed});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.trimmed(), ed + QStringLiteral(": 3 employees"));
    EXPECT_TRUE(fileText(ed).contains(QStringLiteral("Mere Tane")));
}

TEST_F(StaffTest, AFinishedEmployeeLeavesTheRosterAndThePayRun) {
    ASSERT_EQ(cli(employerArgs()).exitCode, 0);
    const CliResult added = cli(handArgs());
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    const QString id = QString::number(object(added.out).value(QStringLiteral("EmployeeID")).toInt());
    CliResult r = cli({QStringLiteral("employee"), QStringLiteral("finish"), id, QStringLiteral("2026-03-01")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Finish date: 2026-03-01 is before the start date 2026-04-01")));
    r = cli({QStringLiteral("employee"), QStringLiteral("finish"), id, QStringLiteral("2026-04-20")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(object(r.out).value(QStringLiteral("DateFinished")).toString(), QStringLiteral("2026-04-20"));
    r = cli({QStringLiteral("roster")});
    EXPECT_FALSE(r.out.contains(QStringLiteral("Tane, Mere"))) << r.out.toStdString();
    r = cli({QStringLiteral("pay-run"), QStringLiteral("2026-04-30")});
    EXPECT_TRUE(object(r.out).value(QStringLiteral("Pays")).toArray().isEmpty()) << r.out.toStdString();
}

TEST_F(StaffTest, EditChangesOnlyWhatIsGiven) {
    ASSERT_EQ(cli(employerArgs()).exitCode, 0);
    const CliResult added = cli(milkerArgs());
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    const QString id = QString::number(object(added.out).value(QStringLiteral("EmployeeID")).toInt());
    CliResult r = cli({QStringLiteral("employee"), QStringLiteral("edit"), id, QStringLiteral("--tax-code"),
                       QStringLiteral("s sl"), QStringLiteral("--deduction"), QStringLiteral("Union Fees=1.5%"),
                       QStringLiteral("--deduction"), QStringLiteral("Board=120"), QStringLiteral("--salary"),
                       QStringLiteral("52000")});
    ASSERT_EQ(r.exitCode, 1) << r.out.toStdString();
    // Relief milkers are paid by the hour: a salary is refused with the reason.
    EXPECT_TRUE(r.err.contains(QStringLiteral("Occupation: Relief Milker is paid by the hour"))) << r.err.toStdString();
    r = cli({QStringLiteral("employee"), QStringLiteral("edit"), id, QStringLiteral("--tax-code"), QStringLiteral("s sl"),
             QStringLiteral("--deduction"), QStringLiteral("Union Fees=1.5%"), QStringLiteral("--deduction"),
             QStringLiteral("Board=120")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonObject e = object(r.out);
    EXPECT_EQ(e.value(QStringLiteral("TaxCode")).toString(), QStringLiteral("S SL"));
    EXPECT_TRUE(e.value(QStringLiteral("StudentLoan")).toBool());
    EXPECT_EQ(e.value(QStringLiteral("FirstName")).toString(), QStringLiteral("Ana"));
    EXPECT_DOUBLE_EQ(e.value(QStringLiteral("PayRate")).toDouble(), 28.0);
    const QJsonArray d = e.value(QStringLiteral("Deductions")).toArray();
    ASSERT_EQ(d.size(), 2);
    ql::Database wage;
    wage.open(ql::WageFileName());
    EXPECT_EQ(wage.scalar(QStringLiteral("SELECT count(*) FROM EmployeeDeductions WHERE EmployeeID = %1").arg(id)).toInt(),
              3); // union fees, board and the student loan of the code
}

} // namespace
} // namespace qltest
