// Employees from a CSV file and back: all or nothing, every bad row named, and export then import
// giving the same employees.
#include "StaffFixture.h"
#include "staff/EmployeeCsv.h"
#include <QJsonDocument>
#include <QJsonObject>

namespace qltest {
namespace {

QString sampleCsv() {
    return fileText(QStringLiteral(QUILLARY_SOURCE_DIR "/resources/samples/employees.csv"));
}

TEST(Csv, QuotedFieldsAndLineEnds) {
    QList<QStringList> rows;
    QString problem;
    ASSERT_TRUE(ql::ParseCsv(QStringLiteral("\xFEFF" "a,b,c\r\n\"x, y\",\"say \"\"hi\"\"\",\"two\nlines\"\n,,\n"),
                             rows, problem))
        << problem.toStdString();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows.at(1), (QStringList{QStringLiteral("x, y"), QStringLiteral("say \"hi\""), QStringLiteral("two\nlines")}));
    EXPECT_EQ(rows.at(2), (QStringList{QString(), QString(), QString()}));
    EXPECT_FALSE(ql::ParseCsv(QStringLiteral("a\n\"open"), rows, problem));
    EXPECT_EQ(problem, QStringLiteral("Row 2: a quoted field is not closed."));
    EXPECT_EQ(ql::CsvLine({QStringLiteral("a,b"), QStringLiteral("c\"d"), QStringLiteral("e")}),
              QStringLiteral("\"a,b\",\"c\"\"d\",e\r\n"));
}

TEST_F(StaffTest, TheSampleFileImports) {
    const QString csv = sampleCsv();
    ASSERT_FALSE(csv.isEmpty());
    const QString path = docs->writeFile(QStringLiteral("employees.csv"), csv.toUtf8());
    const CliResult r = cli({QStringLiteral("employee"), QStringLiteral("import"), path});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonObject o = QJsonDocument::fromJson(r.out.toUtf8()).object();
    EXPECT_EQ(o.value(QStringLiteral("Imported")).toInt(), csv.count(u'\n') - 1);
    const CliResult roster = cli({QStringLiteral("roster")});
    EXPECT_TRUE(roster.out.contains(QStringLiteral("O'Brien, Liam"))) << roster.out.toStdString();
}

TEST_F(StaffTest, ABadRowImportsNothingAndEveryBadRowIsNamed) {
    ASSERT_EQ(cli(employerArgs()).exitCode, 0);
    ASSERT_EQ(cli(handArgs()).exitCode, 0);
    const QString header = QStringLiteral("first,last,start,taxcode,interval,rate,salary,ird\n");
    const QString good = QStringLiteral("Ana,Kerr,1/04/2026,S,fortnightly,28,,%1\n").arg(irdNumber(7));
    const QString badIrd = QStringLiteral("Bo,Hill,2026-04-01,M,weekly,25,,123-456-788\n");
    const QString both = QStringLiteral("Cy,Lee,2026-04-01,M,weekly,25,50000,%1\n").arg(irdNumber(8));
    const QString again = QStringLiteral("Di,Moa,2026-04-01,M,weekly,25,,%1\n").arg(irdNumber(1)); // already on
    const QString path =
        docs->writeFile(QStringLiteral("bad.csv"), (header + good + badIrd + both + again).toUtf8());
    const QString before = snapshot();
    const CliResult r = cli({QStringLiteral("employee"), QStringLiteral("import"), path});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Row 3: IRD number: 123-456-788 fails Inland Revenue's check.")))
        << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("Row 4: Hourly rate and yearly salary: give one of them, not both.")))
        << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("Row 5: IRD number: %1 is already on the payroll").arg(irdNumber(1))))
        << r.err.toStdString();
    EXPECT_FALSE(r.err.contains(QStringLiteral("Row 2"))) << r.err.toStdString();
    EXPECT_EQ(snapshot().toStdString(), before.toStdString());

    const QString unknown = docs->writeFile(QStringLiteral("unknown.csv"), "first,last,shoe size\nA,B,9\n");
    const CliResult u = cli({QStringLiteral("employee"), QStringLiteral("import"), unknown});
    EXPECT_EQ(u.exitCode, 1);
    EXPECT_TRUE(u.err.contains(QStringLiteral("Row 1: \"shoe size\" is not a column of an employee.")));
    EXPECT_EQ(snapshot().toStdString(), before.toStdString());
}

TEST_F(StaffTest, ExportThenImportRoundTrips) {
    const QString path = docs->writeFile(QStringLiteral("employees.csv"), sampleCsv().toUtf8());
    ASSERT_EQ(cli({QStringLiteral("employee"), QStringLiteral("import"), path}).exitCode, 0);
    ASSERT_EQ(cli(handArgs()).exitCode, 0);
    const QString exported = docs->path() + QStringLiteral("/out.csv");
    CliResult r = cli({QStringLiteral("employee"), QStringLiteral("export"), exported});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QString first = fileText(exported);

    // A second installation takes the file and gives the same file back.
    TempDocuments other;
    ASSERT_EQ(runCli({QStringLiteral("init")}, other.path()).exitCode, 0);
    r = runCli({QStringLiteral("employee"), QStringLiteral("import"), exported}, other.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QString again = other.path() + QStringLiteral("/again.csv");
    r = runCli({QStringLiteral("employee"), QStringLiteral("export"), again}, other.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(fileText(again), first);
    EXPECT_GT(first.count(u'\n'), 2);
}

} // namespace
} // namespace qltest
