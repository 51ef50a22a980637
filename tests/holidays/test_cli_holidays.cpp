// The holiday commands of quillary-cli on the demo farm, as a script would use them.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

using namespace qltest;

namespace {

class CliHolidaysTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
    }
    QJsonObject json(const QStringList& args, int expectedExit = 0) {
        last = runCli(args, docs->path());
        EXPECT_EQ(last.exitCode, expectedExit) << last.err.toStdString();
        return QJsonDocument::fromJson(last.out.toUtf8()).object();
    }
    // Five weekly pays of Aroha Testington (employee 1, $25.50 an hour, 40 standard hours), the
    // last WageID 5 on 27 November 2026.
    void addPays() {
        ASSERT_EQ(runCli({"add-pay", "1", "2026-10-30"}, docs->path()).exitCode, 0);
        for (int i = 0; i < 4; ++i)
            ASSERT_EQ(runCli({"add-pay", "1"}, docs->path()).exitCode, 0);
    }
    CliResult last;
};

} // namespace

TEST_F(CliHolidaysTest, PublicHolidaysOfAYearAndARegion) {
    const QJsonObject o = json({"public-holidays", "2026", "--region", "canterbury"});
    EXPECT_EQ(o.value("region").toString(), QStringLiteral("Canterbury"));
    const QJsonArray list = o.value("holidays").toArray();
    ASSERT_EQ(list.size(), 12);
    EXPECT_EQ(list.at(5).toObject().value("name").toString(), QStringLiteral("Anzac Day"));
    EXPECT_EQ(list.at(5).toObject().value("date").toString(), QStringLiteral("2026-04-25"));
    EXPECT_EQ(list.at(5).toObject().value("observed").toString(), QStringLiteral("2026-04-27"));
    EXPECT_EQ(list.at(7).toObject().value("name").toString(), QStringLiteral("Matariki"));
    EXPECT_EQ(list.at(7).toObject().value("date").toString(), QStringLiteral("2026-07-10"));
    EXPECT_EQ(list.at(9).toObject().value("name").toString(), QStringLiteral("Canterbury Anniversary Day"));
    EXPECT_EQ(list.at(9).toObject().value("date").toString(), QStringLiteral("2026-11-13"));
    EXPECT_EQ(json({"public-holidays", "2026"}).value("holidays").toArray().size(), 11);
}

TEST_F(CliHolidaysTest, WrongRegionsAndUsageAreRefused) {
    json({"public-holidays", "2026", "--region", "Atlantis"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("\"Atlantis\" is not a region")));
    json({"public-holidays"}, 2);
    json({"leave-pay", "1", "holiday", "--from", "2026-12-07", "--days", "5"}, 2);
    json({"leave-pay", "1", "annual", "--from", "7/12/2026", "--days", "5"}, 2);
    json({"leave-pay", "99", "annual", "--from", "2026-12-07", "--days", "5"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("Employee 99 is not on the payroll.")));
}

TEST_F(CliHolidaysTest, LeavePayShowsEveryRateAndItsInputs) {
    addPays();
    const QJsonObject o = json({"leave-pay", "1", "annual", "--from", "2026-12-07", "--days", "5"});
    for (const char* key : {"OWP", "AWE", "RDP", "ADP", "RateUsed", "Amount", "Inputs"})
        EXPECT_TRUE(o.contains(QLatin1String(key))) << key;
    // Four weekly pays of 1,022.75 in the four weeks to 27 November: OWP is their sum over 4.
    const QJsonObject owp = o.value("Inputs").toObject().value("OWP").toObject();
    EXPECT_EQ(owp.value("wageIDs").toArray().size(), 4);
    EXPECT_EQ(owp.value("to").toString(), QStringLiteral("2026-11-27"));
    EXPECT_EQ(o.value("RateUsed").toString(), QStringLiteral("OWP"));
    EXPECT_DOUBLE_EQ(o.value("Amount").toDouble(), 1022.75);
    // No pattern is kept: Monday to Friday of the occupation's 40 hours, 8 hours a day at $25.50.
    EXPECT_DOUBLE_EQ(o.value("RDP").toDouble(), 204.0);
}

TEST_F(CliHolidaysTest, APublicHolidayAddedToAPayRaisesItsGross) {
    addPays();
    const QJsonObject o = json({"leave-pay", "1", "public", "--from", "2026-12-25", "--days", "1", "--add-to", "5"});
    EXPECT_EQ(o.value("RateUsed").toString(), QStringLiteral("RDP"));
    EXPECT_DOUBLE_EQ(o.value("Amount").toDouble(), 204.0);
    const QJsonObject pay = json({"minimum-wage", "5"});
    EXPECT_DOUBLE_EQ(pay.value("TopUp").toDouble(), 0.0);
    // The pay of a worked public holiday earns an alternative holiday.
    json({"leave-pay", "1", "public", "--from", "2026-12-25", "--days", "1", "--worked-hours", "8", "--add-to", "5"});
    const QJsonObject alt = json({"alternative-holidays", "1"});
    EXPECT_EQ(alt.value("Open").toInt(), 1);
}

TEST_F(CliHolidaysTest, ASalariedManagersLongMonthGetsATopUpLine) {
    // Barry Sampleton (employee 2): $85,000 a year, monthly: 7,083.33 for 300 hours falls short of 7,185.00.
    ASSERT_EQ(runCli({"add-pay", "2", "2026-10-31"}, docs->path()).exitCode, 0);
    json({"pay-days", "1", "--hours", "300"});
    const QJsonObject o = json({"minimum-wage", "1", "--apply"});
    EXPECT_DOUBLE_EQ(o.value("Hours").toDouble(), 300.0);
    EXPECT_DOUBLE_EQ(o.value("Minimum").toDouble(), 7185.0);
    EXPECT_DOUBLE_EQ(o.value("TopUp").toDouble(), 101.67);
    EXPECT_DOUBLE_EQ(o.value("Gross").toDouble(), 7185.0);
    EXPECT_TRUE(o.value("Message").toString().contains(QStringLiteral("minimum wage top-up of 101.67")));
}

TEST_F(CliHolidaysTest, FinalPayAndTheLiabilityAsCsv) {
    const QJsonObject f = json({"final-pay", "1", "2026-11-20"});
    EXPECT_DOUBLE_EQ(f.value("AnnualWeeksUntaken").toDouble(), 10.4); // 3 years, 8 days taken
    EXPECT_EQ(f.value("Name").toString(), QStringLiteral("Testington, Aroha"));
    EXPECT_FALSE(f.value("Lines").toArray().isEmpty());
    const CliResult csv = runCli({"leave-liability", "2026-11-20", "--csv"}, docs->path());
    ASSERT_EQ(csv.exitCode, 0) << csv.err.toStdString();
    const QStringList lines = csv.out.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 7); // header, five current employees, total
    EXPECT_TRUE(lines.at(1).startsWith(QStringLiteral("1,\"Testington, Aroha\",10.4000,1020.00,OWP,10608.00,")));
    const QJsonObject j = json({"leave-liability", "2026-11-20"});
    EXPECT_EQ(j.value("Employees").toArray().size(), 5);
}

TEST_F(CliHolidaysTest, KindsOfEarningsCanBeChanged) {
    QJsonObject o = json({"earning-kinds"});
    const QJsonArray names = o.value("names").toArray();
    auto kindOf = [](const QJsonArray& a, const char* table, int id) {
        for (const QJsonValue& v : a)
            if (v.toObject().value("table").toString() == QLatin1String(table) && v.toObject().value("id").toInt() == id)
                return v.toObject().value("kind").toString();
        return QString();
    };
    EXPECT_EQ(kindOf(names, "payment", 1), QStringLiteral("ordinary-time"));
    EXPECT_EQ(kindOf(names, "payment", 2), QStringLiteral("overtime-irregular"));
    EXPECT_EQ(kindOf(names, "payment", 5), QStringLiteral("annual-leave"));
    EXPECT_EQ(kindOf(names, "taxable", 3), QStringLiteral("board-lodging"));
    EXPECT_EQ(kindOf(names, "nontaxable", 1), QStringLiteral("reimbursement"));
    o = json({"earning-kinds", "--set", "payment", "2", "overtime-regular"});
    EXPECT_EQ(kindOf(o.value("names").toArray(), "payment", 2), QStringLiteral("overtime-regular"));
    json({"earning-kinds", "--set", "payment", "2", "overtime-sometimes"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("is not a kind of earnings")));
}

TEST_F(CliHolidaysTest, SickBereavementAndFamilyViolenceLeaveShowWhatIsDue) {
    addPays();
    QJsonObject o = json({"leave-pay", "1", "bereavement", "--from", "2026-12-07", "--days", "3", "--relation", "other"});
    QJsonObject e = o.value("Entitlement").toObject();
    EXPECT_TRUE(e.value("Entitled").toBool());
    EXPECT_EQ(e.value("Relation").toString(), QStringLiteral("other"));
    EXPECT_DOUBLE_EQ(e.value("AvailableDays").toDouble(), 1.0);
    EXPECT_TRUE(e.value("BeyondEntitlement").toBool());
    EXPECT_TRUE(e.value("Basis").toString().startsWith(QStringLiteral("six months' current continuous employment")));
    o = json({"leave-pay", "1", "family-violence", "--from", "2026-12-07", "--days", "2"});
    e = o.value("Entitlement").toObject();
    EXPECT_DOUBLE_EQ(e.value("AvailableDays").toDouble(), 10.0);
    EXPECT_FALSE(e.value("BeyondEntitlement").toBool());
    // Casual work: the hours test decides, from the pays' hours.
    json({"holiday-terms", "1", "--continuous", "no"});
    EXPECT_FALSE(last.out.contains(QStringLiteral("\"Continuous\": true")));
    o = json({"leave-pay", "1", "sick", "--from", "2026-12-07", "--days", "1"});
    e = o.value("Entitlement").toObject();
    EXPECT_FALSE(e.value("Entitled").toBool()); // five weeks of pays are not six months
    EXPECT_TRUE(e.value("HoursTest").toString().contains(QStringLiteral("not met"))) << e.value("HoursTest").toString().toStdString();
    json({"leave-pay", "1", "sick", "--from", "2026-12-07", "--days", "1", "--relation", "close"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("for bereavement leave only")));
}

TEST_F(CliHolidaysTest, TheLiabilityIsPrintedAsAPdfReport) {
    const QString file = docs->path() + QStringLiteral("/liability.pdf");
    const CliResult r = runCli({"leave-liability", "2026-11-20", "--pdf", file}, docs->path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.trimmed(), file + QStringLiteral(": 5 employees, 1 pages"));
    QProcess text;
    text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString printed = QString::fromUtf8(text.readAllStandardOutput());
    EXPECT_TRUE(printed.contains(QStringLiteral("Leave Liability at 20 Nov 2026"))) << printed.toStdString();
    EXPECT_TRUE(printed.contains(QStringLiteral("Testington, Aroha"))) << printed.toStdString();
    // The report's total is the CSV's.
    const CliResult csv = runCli({"leave-liability", "2026-11-20", "--csv"}, docs->path());
    const QString total = csv.out.trimmed().section(u',', -1);
    EXPECT_TRUE(printed.contains(total)) << total.toStdString();
    const CliResult bad = runCli({"leave-liability", "2026-11-20", "--pdf", "/no/such/folder/x.pdf"}, docs->path());
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(bad.err.contains(QStringLiteral("cannot be written")));
}

TEST_F(CliHolidaysTest, HoursAreEnteredForSingleDaysOfAPay) {
    addPays(); // pay 5: 21 to 27 November 2026
    QJsonObject o = json({"pay-days", "5", "--day", "2026-11-23=10", "--day", "2026-11-24=9.5", "--day", "2026-11-25=0"});
    EXPECT_DOUBLE_EQ(o.value("DaysWorked").toDouble(), 2.0);
    EXPECT_DOUBLE_EQ(o.value("HoursWorked").toDouble(), 19.5);
    ASSERT_EQ(o.value("PerDay").toArray().size(), 3);
    EXPECT_EQ(o.value("PerDay").toArray().at(1).toObject().value("date").toString(), QStringLiteral("2026-11-24"));
    // The minimum wage check reads them.
    EXPECT_DOUBLE_EQ(json({"minimum-wage", "5"}).value("Hours").toDouble(), 19.5);
    json({"pay-days", "5", "--day", "2026-11-30=8"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("2026-11-30 is not in the period of pay 5 (2026-11-21 to 2026-11-27)")))
        << last.err.toStdString();
    json({"pay-days", "5", "--day", "2026-11-23=25"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("is not a number of hours from 0 to 24")));
    json({"pay-days", "5", "--hours", "40"}, 1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("has hours for single days")));
    // Nothing of the refused commands was written.
    EXPECT_DOUBLE_EQ(json({"pay-days", "5"}).value("HoursWorked").toDouble(), 19.5);
    o = json({"pay-days", "5", "--clear-days", "--hours", "40"});
    EXPECT_TRUE(o.value("PerDay").toArray().isEmpty());
    EXPECT_DOUBLE_EQ(o.value("HoursWorked").toDouble(), 40.0);
}
