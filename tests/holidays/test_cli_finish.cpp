// Finishing an employee makes the final pay: the holiday lines on the pay that covers the last day,
// or on a pay added for them.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace qltest;

namespace {

class CliFinishTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
    }
    CliResult run(const QStringList& args) { return runCli(args, docs->path()); }
    QJsonObject json(const QStringList& args, int expectedExit = 0) {
        last = run(args);
        EXPECT_EQ(last.exitCode, expectedExit) << last.err.toStdString();
        return QJsonDocument::fromJson(last.out.toUtf8()).object();
    }
    // The employee's pays by WageID, as `pays` lists them.
    QHash<int, QJsonObject> pays(int employeeID) {
        const CliResult r = run({QStringLiteral("pays"), QString::number(employeeID)});
        QHash<int, QJsonObject> out;
        for (const QJsonValue& v : QJsonDocument::fromJson(r.out.toUtf8()).array())
            out.insert(v.toObject().value("WageID").toInt(), v.toObject());
        return out;
    }
    // Weekly pays of Aroha Testington (employee 1, hired 1 August 2023, $25.50 an hour) on 30 October
    // 2026 and the n-1 weeks after it: WageIDs 1 to n.
    void addPays(int n) {
        ASSERT_EQ(run({"add-pay", "1", "2026-10-30"}).exitCode, 0);
        for (int i = 1; i < n; ++i)
            ASSERT_EQ(run({"add-pay", "1"}).exitCode, 0);
    }
    static double sumOfLines(const QJsonObject& finalPay) {
        double sum = 0;
        for (const QJsonValue& l : finalPay.value("Lines").toArray())
            sum += l.toObject().value("amount").toDouble();
        return sum;
    }
    CliResult last;
};

} // namespace

TEST_F(CliFinishTest, TheUncommittedPayCoveringTheLastDayGetsTheHolidayLines) {
    addPays(5); // pay 5 covers 21 to 27 November
    const double grossBefore = pays(1).value(5).value("Gross").toDouble();
    const QJsonObject o = json({"employee", "finish", "1", "2026-11-25"});
    EXPECT_EQ(o.value("DateFinished").toString(), QStringLiteral("2026-11-25"));
    EXPECT_EQ(o.value("FinalPayWageID").toInt(), 5);
    EXPECT_FALSE(o.value("FinalPayAdded").toBool());
    const QJsonObject f = o.value("FinalPay").toObject();
    const QJsonArray lines = f.value("Lines").toArray();
    ASSERT_GE(lines.size(), 2);
    // Three years to 1 August 2026 at four weeks, 1.6 weeks taken (the demo ledger's 8 days).
    EXPECT_EQ(lines.at(0).toObject().value("component").toString(), QStringLiteral("annual-holidays"));
    EXPECT_DOUBLE_EQ(lines.at(0).toObject().value("units").toDouble(), 10.4);
    EXPECT_TRUE(lines.at(0).toObject().value("working").toString().contains(QStringLiteral("10.4000 weeks")));
    // 8% of the five pays since the anniversary (the pays' own lines, not the holiday lines).
    EXPECT_EQ(lines.at(1).toObject().value("component").toString(), QStringLiteral("eight-percent"));
    const double gross = f.value("GrossSinceAnniversary").toDouble();
    EXPECT_NEAR(gross, 5 * 1022.75, 0.05);
    EXPECT_NEAR(lines.at(1).toObject().value("amount").toDouble(), gross * 0.08, 0.006);
    EXPECT_NEAR(f.value("Total").toDouble(), sumOfLines(f), 0.001);
    // The pay was brought to its new gross, and its tax with it.
    const QJsonObject pay = pays(1).value(5);
    EXPECT_NEAR(pay.value("Gross").toDouble(), grossBefore + f.value("Total").toDouble(), 0.001);
    EXPECT_GT(pay.value("PAYE").toDouble(), 175.87);
    EXPECT_EQ(pays(1).size(), 5);
}

TEST_F(CliFinishTest, AfterACommittedPayAPayIsAddedForTheHolidayLinesAlone) {
    addPays(2);
    ASSERT_EQ(run({"commit", "2", "--cashbook", "off", "--print", "off"}).exitCode, 0) << last.err.toStdString();
    // Pay 2 (31 October to 6 November) is committed and covers the last day.
    const QJsonObject o = json({"employee", "finish", "1", "2026-11-04"});
    EXPECT_TRUE(o.value("FinalPayAdded").toBool());
    const int added = o.value("FinalPayWageID").toInt();
    EXPECT_EQ(added, 3);
    EXPECT_TRUE(o.value("FinalPay").toObject().value("Choice").toString().contains(QStringLiteral("Committed pay 2")));
    const QJsonObject pay = pays(1).value(added);
    EXPECT_EQ(pay.value("Date").toString(), QStringLiteral("2026-11-07"));
    // Only the holiday lines: the week worked was paid in pay 2.
    EXPECT_NEAR(pay.value("Gross").toDouble(), o.value("FinalPay").toObject().value("Total").toDouble(), 0.001);
    EXPECT_EQ(pays(1).value(2).value("Reference").toString(), QStringLiteral("1"));
}

TEST_F(CliFinishTest, WithoutACoveringPayOneIsAddedOnTheLastDayWithItsUsualLines) {
    addPays(1);
    const QJsonObject o = json({"employee", "finish", "1", "2026-11-06"});
    EXPECT_TRUE(o.value("FinalPayAdded").toBool());
    const QJsonObject pay = pays(1).value(o.value("FinalPayWageID").toInt());
    EXPECT_EQ(pay.value("Date").toString(), QStringLiteral("2026-11-06"));
    const QJsonObject f = o.value("FinalPay").toObject();
    // The week since the last pay is in the pay and in the 8%.
    EXPECT_NEAR(f.value("GrossSinceAnniversary").toDouble(), 2 * 1022.75, 0.05);
    EXPECT_NEAR(pay.value("Gross").toDouble(), 1022.75 + f.value("Total").toDouble(), 0.05);
}

TEST_F(CliFinishTest, ARefusedFinishMakesNoFinalPay) {
    addPays(1);
    json({"employee", "finish", "1", "2020-01-01"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("Finish date: 2020-01-01 is before the start date 2023-08-01")))
        << last.err.toStdString();
    EXPECT_EQ(pays(1).size(), 1);
    EXPECT_NEAR(pays(1).value(1).value("Gross").toDouble(), 1022.75, 0.001);
    EXPECT_FALSE(json({"employee", "show", "1"}).contains(QStringLiteral("FinalPay")));
    EXPECT_TRUE(json({"employee", "show", "1"}).value("DateFinished").isNull());
}

TEST_F(CliFinishTest, FinishingTwiceMakesTheFinalPayOnce) {
    addPays(5);
    const QJsonObject first = json({"employee", "finish", "1", "2026-11-25"});
    ASSERT_EQ(first.value("FinalPayWageID").toInt(), 5);
    const double gross = pays(1).value(5).value("Gross").toDouble();
    const QJsonObject again = json({"employee", "finish", "1", "2026-11-26"});
    EXPECT_EQ(again.value("DateFinished").toString(), QStringLiteral("2026-11-26"));
    EXPECT_FALSE(again.contains(QStringLiteral("FinalPay")));
    EXPECT_DOUBLE_EQ(pays(1).value(5).value("Gross").toDouble(), gross);
}
