#include "CliRunner.h"
#include "TestEnv.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace qltest;

TEST_F(DocumentsTest, RosterOfTheDemoFarmFollowsTheRosterRules) {
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
    const CliResult r = runCli({QStringLiteral("roster")}, docs->path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonArray roster = QJsonDocument::fromJson(r.out.toUtf8()).array();
    ASSERT_FALSE(roster.isEmpty()) << r.out.toStdString();
    for (const QJsonValue& v : roster) {
        const QJsonObject e = v.toObject();
        EXPECT_TRUE(e.contains(QStringLiteral("NameLastFirst")));
        // Hired, and not finished: the finished date is empty or the zero date.
        EXPECT_FALSE(e.value(QStringLiteral("DateHired")).isNull());
        const QJsonValue finished = e.value(QStringLiteral("DateFinished"));
        EXPECT_TRUE(finished.isNull() || finished.toString() == QStringLiteral("1899-12-30"));
    }
    // Money with four decimals.
    EXPECT_TRUE(r.out.contains(QRegularExpression(QStringLiteral("\"PayRate\": -?\\d+\\.\\d{4}[,}]"))));
}

TEST_F(DocumentsTest, CheckEmployeesIsEmptyWhenTheProgramCanStart) {
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
    const CliResult r = runCli({QStringLiteral("check-employees")}, docs->path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QString());
}

TEST_F(DocumentsTest, CheckEmployeesOnAnEmptyPayrollSaysWhy) {
    ASSERT_EQ(runCli({QStringLiteral("init")}, docs->path()).exitCode, 0);
    const CliResult r = runCli({QStringLiteral("check-employees")}, docs->path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("No employees who have been hired and are still working\n"
                                    "Tick the 'Show in Quillary' box and enter at least the hired date\n"));
    const CliResult roster = runCli({QStringLiteral("roster")}, docs->path());
    EXPECT_EQ(roster.exitCode, 0);
    EXPECT_EQ(roster.out.trimmed(), QStringLiteral("[]"));
}

TEST_F(DocumentsTest, LedgerCommandsTakeNoArguments) {
    EXPECT_EQ(runCli({QStringLiteral("roster"), QStringLiteral("x")}, docs->path()).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("check-employees"), QStringLiteral("x")}, docs->path()).exitCode, 2);
}
