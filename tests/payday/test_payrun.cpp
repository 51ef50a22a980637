// The pay run from the command line: the demo farm's next pays added once, however often it runs,
// also when a run is killed part-way.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "payday/PayRun.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
#include <iostream>

namespace qltest {
namespace {

QJsonObject parse(const QString& text) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text.toStdString();
    return doc.object();
}

int countFarm(const QString& sql) {
    ql::Database farm;
    farm.open(ql::DataFileName());
    const int n = farm.scalar(sql).toInt();
    farm.close();
    return n;
}

// Every current employee of the demo has exactly one pay, committed, and exactly one posting.
void expectOneCommittedPostedPayEach(const QString& seed = QString()) {
    ql::Database wage;
    wage.open(ql::WageFileName());
    for (int id = 1; id <= 5; ++id) {
        EXPECT_EQ(
            wage.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE EmployeeID = %1").arg(id)).toInt(),
            1)
            << "employee " << id << " " << seed.toStdString();
        EXPECT_EQ(wage.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE EmployeeID = %1 AND "
                                             "length(Reference) > 0")
                                  .arg(id))
                      .toInt(),
                  1)
            << "employee " << id << " " << seed.toStdString();
    }
    wage.close();
    EXPECT_EQ(countFarm(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays")), 5) << seed.toStdString();
    EXPECT_EQ(countFarm(QStringLiteral("SELECT count(DISTINCT WageID) FROM QuillaryPostedPays")), 5)
        << seed.toStdString();
    // The pay's withdrawal and, the tax being paid electronically in the demo, the tax's: two a pay.
    EXPECT_EQ(countFarm(QStringLiteral("SELECT count(*) FROM Transactions")), 10) << seed.toStdString();
}

// The demo farm with one pay of the farm hand, not committed, on the given day.
bool demoWithAFarmHandPay(const QString& folder, const QString& day) {
    return runCli({QStringLiteral("init"), QStringLiteral("--demo")}, folder).exitCode == 0 &&
           runCli({QStringLiteral("add-pay"), QStringLiteral("1"), day}, folder).exitCode == 0;
}

int count(const QString& sql) {
    ql::Database wage;
    wage.open(ql::WageFileName());
    const int n = wage.scalar(sql).toInt();
    wage.close();
    return n;
}

void execute(const QString& sql) {
    ql::Database wage;
    wage.open(ql::WageFileName());
    wage.execute(sql);
    wage.close();
}

TEST(PayRun, NextPayDateByInterval) {
    const QDate last(2026, 11, 6);
    EXPECT_EQ(ql::NextPayDate(last, 52, 7), QDate(2026, 11, 13));
    EXPECT_EQ(ql::NextPayDate(last, 26, 14), QDate(2026, 11, 20));
    EXPECT_EQ(ql::NextPayDate(last, 13, 28), QDate(2026, 12, 4));
    EXPECT_EQ(ql::NextPayDate(last, 12, 0), QDate(2026, 12, 6));
    EXPECT_EQ(ql::NextPayDate(QDate(2026, 1, 31), 12, 0), QDate(2026, 2, 28));
    EXPECT_FALSE(ql::NextPayDate(last, 0, 0).isValid());
}

TEST(PayRun, WholeDemoFarmOnceWhateverTheRuns) {
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    EXPECT_EQ(runCli({QStringLiteral("pay-run")}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("pay-run"), QStringLiteral("6/11/2026")}, docs.path()).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--post")},
                     docs.path())
                  .exitCode,
              2);

    CliResult r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06")}, docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    QJsonObject run = parse(r.out);
    QJsonArray pays = run.value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 5); // the five current employees; the leaver and the one not hired are left out
    double total = 0;
    for (const QJsonValue& v : pays) {
        const QJsonObject p = v.toObject();
        const int wageID = p.value(QStringLiteral("WageID")).toInt();
        EXPECT_GT(wageID, 0);
        EXPECT_EQ(p.value(QStringLiteral("Date")).toString(), QStringLiteral("2026-11-06"));
        EXPECT_TRUE(p.value(QStringLiteral("Reference")).isNull());
        // The figures are the stored pay's, its tax brought by the save.
        EXPECT_GT(p.value(QStringLiteral("PAYE")).toDouble(), 0)
            << p.value(QStringLiteral("Name")).toString().toStdString();
        ql::Database wage;
        wage.open(ql::WageFileName());
        EXPECT_DOUBLE_EQ(
            p.value(QStringLiteral("TakeHome")).toDouble(),
            wage.scalar(QStringLiteral("SELECT TakeHome FROM Wages WHERE WageID = %1").arg(wageID))
                .toDouble());
        EXPECT_DOUBLE_EQ(
            p.value(QStringLiteral("PAYE")).toDouble(),
            wage.scalar(QStringLiteral("SELECT PAYE FROM Wages WHERE WageID = %1").arg(wageID)).toDouble());
        wage.close();
        total += p.value(QStringLiteral("TakeHome")).toDouble();
    }
    EXPECT_NEAR(run.value(QStringLiteral("TakeHomeTotal")).toDouble(), total, 0.00005);

    // Again: nothing added, the same pays listed.
    r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06")}, docs.path());
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_EQ(parse(r.out).value(QStringLiteral("Pays")).toArray(), pays);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages")), 5);

    // Committed, then the next week: only the two weekly employees are due.
    execute(QStringLiteral("UPDATE Wages SET Reference = 'W' || WageID, PaymentDate = Date"));
    r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06")}, docs.path());
    pays = parse(r.out).value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 5);
    EXPECT_EQ(pays.at(0).toObject().value(QStringLiteral("Reference")).toString(), QStringLiteral("W1"));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages")), 5);
    r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-13")}, docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    pays = parse(r.out).value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 2);
    EXPECT_EQ(pays.at(0).toObject().value(QStringLiteral("Name")).toString(),
              QStringLiteral("Dana Fictional"));
    EXPECT_EQ(pays.at(1).toObject().value(QStringLiteral("Name")).toString(),
              QStringLiteral("Aroha Testington"));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages WHERE Date = '2026-11-13'")), 2);
}

TEST(PayRun, AnEmployeeWithoutTaxCodeIsListedAndTheOthersGoOn) {
    TempDocuments docs;
    // An employee with pays already is asked for no first date, so the tax code test runs.
    ASSERT_TRUE(demoWithAFarmHandPay(docs.path(), QStringLiteral("2026-10-30")));
    execute(QStringLiteral("UPDATE Wages SET Reference = 'X1', PaymentDate = Date WHERE EmployeeID = 1"));
    execute(QStringLiteral("UPDATE Employees SET TaxCode = '' WHERE EmployeeID = 1"));
    const CliResult r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06")}, docs.path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Aroha Testington:"))) << r.err.toStdString();
    const QJsonObject run = parse(r.out);
    EXPECT_EQ(run.value(QStringLiteral("Failures")).toArray().size(), 1);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages WHERE Date = '2026-11-06'")), 4);
    // She stays in the run, her pay not added yet.
    const QJsonArray pays = run.value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 5);
    EXPECT_EQ(pays.at(4).toObject().value(QStringLiteral("Name")).toString(),
              QStringLiteral("Aroha Testington"));
    EXPECT_TRUE(pays.at(4).toObject().value(QStringLiteral("WageID")).isNull());
}

TEST(PayRun, CommittedAndPostedOnceFromTheCommandLine) {
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    CliResult r = runCli(
        {QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")}, docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonArray pays = parse(r.out).value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 5);
    for (const QJsonValue& v : pays)
        EXPECT_FALSE(v.toObject().value(QStringLiteral("Reference")).toString().isEmpty());
    expectOneCommittedPostedPayEach();
    r = runCli({QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")},
               docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    expectOneCommittedPostedPayEach();
}

TEST(PayRun, KilledPartWayAndRunAgain) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    for (int round = 0; round < 3; ++round) {
        TempDocuments docs;
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
        QProcess run;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("FERNHOLD_DOCUMENTS"), docs.path());
        run.setProcessEnvironment(env);
        const QStringList args{QStringLiteral("pay-run"), QStringLiteral("2026-11-06"),
                               QStringLiteral("--commit")};
        run.start(QStringLiteral(QUILLARY_CLI_PATH), args);
        ASSERT_TRUE(run.waitForStarted());
        QThread::msleep(random.bounded(0, 400));
        run.kill(); // SIGKILL
        run.waitForFinished();
        const CliResult again = runCli(args, docs.path());
        ASSERT_EQ(again.exitCode, 0) << again.err.toStdString() << " seed " << seed;
        EXPECT_EQ(parse(again.out).value(QStringLiteral("Pays")).toArray().size(), 5);
        expectOneCommittedPostedPayEach(QStringLiteral("seed %1").arg(seed));
    }
}

// A pay left uncommitted from an earlier week is the one the run pays; once committed it stays in the
// run's list with its reference, though its date lies before the run's.
TEST(PayRun, AnOlderPayCommittedByTheRunStaysInItsList) {
    TempDocuments docs;
    ASSERT_TRUE(demoWithAFarmHandPay(docs.path(), QStringLiteral("2026-10-30")));
    const CliResult r = runCli(
        {QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")}, docs.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonArray pays = parse(r.out).value(QStringLiteral("Pays")).toArray();
    ASSERT_EQ(pays.size(), 5);
    bool older = false;
    for (const QJsonValue& v : pays) {
        const QJsonObject p = v.toObject();
        EXPECT_FALSE(p.value(QStringLiteral("Reference")).toString().isEmpty())
            << p.value(QStringLiteral("Name")).toString().toStdString();
        if (p.value(QStringLiteral("EmployeeID")).toInt() == 1) {
            EXPECT_EQ(p.value(QStringLiteral("Date")).toString(), QStringLiteral("2026-10-30"));
            older = true;
        }
    }
    EXPECT_TRUE(older);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Wages WHERE length(Reference) > 0")), 5);
}

} // namespace
} // namespace qltest
