// quillary-cli pays, pay and add-pay as a script uses them.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using qltest::runCli;

namespace {

QJsonDocument parse(const QString& text) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text.toStdString();
    return doc;
}

} // namespace

TEST(CliPay, WrongUsage) {
    qltest::TempDocuments docs;
    EXPECT_EQ(runCli({QStringLiteral("pays")}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("pays"), QStringLiteral("abc")}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("pay"), QStringLiteral("1"), QStringLiteral("2")}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("add-pay"), QStringLiteral("1"), QStringLiteral("31/12/2026")}, docs.path()).exitCode,
              2);
}

TEST(CliPay, UnknownPayAndEmployee) {
    qltest::TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init")}, docs.path()).exitCode, 0);
    const auto none = runCli({QStringLiteral("pay"), QStringLiteral("424242")}, docs.path());
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.contains(QStringLiteral("There is no pay 424242.")));
    const auto nobody = runCli({QStringLiteral("add-pay"), QStringLiteral("424242")}, docs.path());
    EXPECT_EQ(nobody.exitCode, 1);
    EXPECT_TRUE(nobody.err.contains(QStringLiteral("Employee 424242 is not on the payroll.")));
    const auto empty = runCli({QStringLiteral("pays"), QStringLiteral("424242")}, docs.path());
    EXPECT_EQ(empty.exitCode, 0);
    EXPECT_EQ(empty.out.trimmed(), QStringLiteral("[]"));
}

TEST(CliPay, AddPaysToTheFirstEmployeeOfTheDemoFarm) {
    qltest::TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    const auto roster = runCli({QStringLiteral("roster")}, docs.path());
    ASSERT_EQ(roster.exitCode, 0);
    const QJsonArray employees = parse(roster.out).array();
    ASSERT_FALSE(employees.isEmpty());
    const QString id = QString::number(employees.at(0).toObject().value(QStringLiteral("EmployeeID")).toInt());

    const auto first = runCli({QStringLiteral("add-pay"), id, QStringLiteral("2026-11-06")}, docs.path());
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    const QJsonObject pay = parse(first.out).object();
    const QJsonObject wages = pay.value(QStringLiteral("Wages")).toObject();
    EXPECT_EQ(wages.value(QStringLiteral("EmployeeID")).toInt(), id.toInt());
    EXPECT_TRUE(wages.value(QStringLiteral("Reference")).isNull());
    EXPECT_TRUE(pay.value(QStringLiteral("PaymentDetails")).isArray());
    // Every payment line carries the name the grid shows; numbers have four decimals in the text.
    for (const QJsonValue& line : pay.value(QStringLiteral("PaymentDetails")).toArray())
        EXPECT_FALSE(line.toObject().value(QStringLiteral("PaymentName")).toString().isEmpty());
    EXPECT_TRUE(first.out.contains(QRegularExpression(QStringLiteral("\"Gross\": -?[0-9]+\\.[0-9]{4}"))));

    const auto second = runCli({QStringLiteral("add-pay"), id}, docs.path());
    ASSERT_EQ(second.exitCode, 0) << second.err.toStdString();
    const auto list = runCli({QStringLiteral("pays"), id}, docs.path());
    ASSERT_EQ(list.exitCode, 0);
    const QJsonArray rows = parse(list.out).array();
    ASSERT_GE(rows.size(), 2);
    // By date: the added pay follows the one before.
    EXPECT_LE(rows.at(0).toObject().value(QStringLiteral("Date")).toString(),
              rows.at(rows.size() - 1).toObject().value(QStringLiteral("Date")).toString());

    const QString wageID = QString::number(rows.at(0).toObject().value(QStringLiteral("WageID")).toInt());
    const auto shown = runCli({QStringLiteral("pay"), wageID}, docs.path());
    ASSERT_EQ(shown.exitCode, 0);
    EXPECT_EQ(parse(shown.out).object().value(QStringLiteral("Wages")).toObject().value(QStringLiteral("WageID")).toInt(),
              wageID.toInt());
}

// The second pay's figures are stored with the pay when the command ends, as the screen stores its
// record when it closes: PAYE by the weekly M method on 1,022.75, KiwiSaver 3.5% cut to cents.
TEST(CliPay, SecondPayKeepsItsTotalsAfterTheCommandEnds) {
    qltest::TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    ASSERT_EQ(runCli({QStringLiteral("add-pay"), QStringLiteral("1"), QStringLiteral("2026-04-06")}, docs.path()).exitCode, 0);
    ASSERT_EQ(runCli({QStringLiteral("add-pay"), QStringLiteral("1")}, docs.path()).exitCode, 0);
    const auto listed = runCli({QStringLiteral("pays"), QStringLiteral("1")}, docs.path());
    ASSERT_EQ(listed.exitCode, 0);
    const QJsonArray pays = parse(listed.out).array();
    ASSERT_EQ(pays.size(), 2);
    const QJsonObject second = pays.at(1).toObject();
    EXPECT_EQ(second.value(QStringLiteral("Date")).toString(), QStringLiteral("2026-04-13"));
    EXPECT_DOUBLE_EQ(second.value(QStringLiteral("Gross")).toDouble(), 1022.75);
    // Yearly 53,183 (cents dropped), taxed by the bands with the levy:
    // 15,600 x 12.25% = 1,911.00; 37,583 x 19.25% = 7,234.7275; total 9,145.7275 a year;
    // weekly 175.8793 cut to 175.87.
    EXPECT_DOUBLE_EQ(second.value(QStringLiteral("PAYE")).toDouble(), 175.87);
    EXPECT_DOUBLE_EQ(second.value(QStringLiteral("Deductions")).toDouble(), 35.79);
    EXPECT_DOUBLE_EQ(second.value(QStringLiteral("TakeHome")).toDouble(), 811.09);
}
