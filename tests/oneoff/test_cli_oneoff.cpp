// quillary-cli one-off as a script uses it.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using qltest::runCli;

TEST(CliOneOff, WrongUsage) {
    qltest::TempDocuments docs;
    EXPECT_EQ(runCli({"one-off", "1", "2026-04-10", "100", "5"}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({"one-off", "1", "10/04/2026", "100", "5", "5"}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({"one-off", "x", "2026-04-10", "100", "5", "5"}, docs.path()).exitCode, 2);
}

TEST(CliOneOff, ABonusAtTheFlatRateOfST) {
    qltest::TempDocuments docs;
    ASSERT_EQ(runCli({"init", "--demo"}, docs.path()).exitCode, 0);
    const auto made = runCli({"one-off", "1", "2026-04-10", "1,000.00", "5", "5"}, docs.path());
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    const QJsonObject pay = QJsonDocument::fromJson(made.out.toUtf8()).object();
    const QJsonObject wages = pay.value("Wages").toObject();
    EXPECT_EQ(wages.value("EmployeeID").toInt(), 1);
    EXPECT_EQ(wages.value("Date").toString(), QStringLiteral("2026-04-10"));
    EXPECT_TRUE(wages.value("OneOff").toBool());
    EXPECT_DOUBLE_EQ(wages.value("Gross").toDouble(), 1000.0);
    // ST: 33% and the levy, 34.75% of 1,000.00.
    EXPECT_DOUBLE_EQ(wages.value("PAYE").toDouble(), 347.5);
    EXPECT_DOUBLE_EQ(wages.value("TakeHome").toDouble(), 652.5);
    EXPECT_DOUBLE_EQ(wages.value("Rate").toDouble(), 1.0);
    const QJsonArray lines = pay.value("PaymentDetails").toArray();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines.at(0).toObject().value("PaymentName").toString(), QStringLiteral("Holiday Pay (x1)"));
    EXPECT_DOUBLE_EQ(lines.at(0).toObject().value("DetailHours").toDouble(), 1.0);
    EXPECT_EQ(pay.value("TaxDetails").toArray().size(), 1);
    // Printed as `pay` prints a pay: the screen's labels follow.
    EXPECT_TRUE(pay.contains("Labels"));
    const auto shown = runCli({"pay", QString::number(wages.value("WageID").toInt())}, docs.path());
    EXPECT_EQ(shown.out, made.out);
}

TEST(CliOneOff, RefusalsAndAPayWithoutTax) {
    qltest::TempDocuments docs;
    ASSERT_EQ(runCli({"init", "--demo"}, docs.path()).exitCode, 0);
    const auto twoSteps = runCli({"one-off", "1", "2026-04-10", "100", "5", "1"}, docs.path());
    EXPECT_EQ(twoSteps.exitCode, 1);
    EXPECT_TRUE(twoSteps.err.contains("only tax types of one step")) << twoSteps.err.toStdString();
    const auto nobody = runCli({"one-off", "424242", "2026-04-10", "100", "5", "5"}, docs.path());
    EXPECT_EQ(nobody.exitCode, 1);
    EXPECT_TRUE(nobody.err.contains("Employee 424242 is not on the payroll."));
    // No payment type: the dialog closes without a pay and without a word.
    const auto noName = runCli({"one-off", "1", "2026-04-10", "100", "0", "5"}, docs.path());
    EXPECT_EQ(noName.exitCode, 1);
    EXPECT_TRUE(noName.err.contains("No pay was made."));
    const auto noTax = runCli({"one-off", "1", "2026-04-10", "100", "1", "0"}, docs.path());
    ASSERT_EQ(noTax.exitCode, 0) << noTax.err.toStdString();
    const QJsonObject wages = QJsonDocument::fromJson(noTax.out.toUtf8()).object().value("Wages").toObject();
    EXPECT_DOUBLE_EQ(wages.value("PAYE").toDouble(), 0.0);
    EXPECT_DOUBLE_EQ(wages.value("TakeHome").toDouble(), 100.0);
}
