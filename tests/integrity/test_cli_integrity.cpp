// quillary-cli keeps what is committed as it was committed: a posted pay is frozen, a committed pay
// is not committed again, a deleted committed pay leaves its withdrawal reversed and a record of
// itself, and no command but init makes a data file.
#include "IntegritySupport.h"
#include "data/PayFreeze.h"
#include "frame/Settings.h"
#include <QFile>

using namespace qltest;

namespace {

class CliIntegrity : public ::testing::Test {
protected:
    TempDocuments docs;
    CliResult run(const QStringList& a) { return runCli(a, docs.path()); }
    void demo() {
        ASSERT_EQ(run({QStringLiteral("init"), QStringLiteral("--demo")}).exitCode, 0);
        ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("N"));
    }
    QVariant wageValue(const QString& sql) {
        ql::Database wage = openWage();
        return wage.scalar(sql);
    }
    QString agreement() {
        ql::Database wage = openWage();
        ql::Database farm = openFarm();
        return disagreements(wage, farm);
    }
};

TEST_F(CliIntegrity, APostedPayCannotBeEditedAndItsCommitAgreesWithTheCashbook) {
    demo();
    const qint32 id = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-06"));
    ASSERT_GT(id, 0);
    const QString w = QString::number(id);
    const CliResult posted =
        run({QStringLiteral("post"), w, QStringLiteral("P5"), QStringLiteral("2026-11-06"), QStringLiteral("Weekly")});
    ASSERT_EQ(posted.exitCode, 0) << posted.err.toStdString();
    // Posted with its tax: the take-home as posted is what the pay keeps.
    const QVariant takeHome = wageValue(QStringLiteral("SELECT TakeHome FROM Wages WHERE WageID = ") + w);
    EXPECT_GT(ql::CDbl(wageValue(QStringLiteral("SELECT PAYE FROM Wages WHERE WageID = ") + w)), 0.0);
    const CliResult edit = run({QStringLiteral("edit"), w, QStringLiteral("1"), QStringLiteral("0"),
                                QStringLiteral("2"), QStringLiteral("60")});
    EXPECT_EQ(edit.exitCode, 1);
    EXPECT_EQ(wageValue(QStringLiteral("SELECT TakeHome FROM Wages WHERE WageID = ") + w), takeHome);
    const CliResult commit = run({QStringLiteral("commit"), w, QStringLiteral("--print"), QStringLiteral("off")});
    ASSERT_EQ(commit.exitCode, 0) << commit.err.toStdString();
    EXPECT_EQ(wageValue(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = ") + w).toString(),
              QStringLiteral("P5"));
    EXPECT_EQ(agreement(), QString());
}

TEST_F(CliIntegrity, ACommittedPayIsNotCommittedAgain) {
    demo();
    const qint32 id = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-06"));
    const QString w = QString::number(id);
    ASSERT_EQ(run({QStringLiteral("commit"), w, QStringLiteral("--print"), QStringLiteral("off"),
                   QStringLiteral("--reference"), QStringLiteral("A1")})
                  .exitCode,
              0);
    const CliResult again = run({QStringLiteral("commit"), w, QStringLiteral("--reference"), QStringLiteral("B2"),
                                 QStringLiteral("--date"), QStringLiteral("2026-12-01"), QStringLiteral("--print"),
                                 QStringLiteral("off")});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_TRUE(again.err.contains(QStringLiteral("already been committed"))) << again.err.toStdString();
    EXPECT_EQ(wageValue(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = ") + w).toString(),
              QStringLiteral("A1"));
    EXPECT_EQ(wageValue(QStringLiteral("SELECT PaymentDate FROM Wages WHERE WageID = ") + w).toString(),
              QStringLiteral("2026-11-06"));
    EXPECT_EQ(agreement(), QString());
}

TEST_F(CliIntegrity, AReferenceLongerThanItsColumnIsRefused) {
    demo();
    const qint32 id = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-06"));
    const QString w = QString::number(id);
    const CliResult commit = run({QStringLiteral("commit"), w, QStringLiteral("--print"), QStringLiteral("off"),
                                  QStringLiteral("--reference"), QString(10000, u'R')});
    EXPECT_EQ(commit.exitCode, 1);
    EXPECT_TRUE(ql::IsNull(wageValue(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = ") + w)));
    ql::Database farm = openFarm();
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM Transactions")).toInt(), 0);
}

TEST_F(CliIntegrity, DeletingACommittedPayReversesItsWithdrawalAndKeepsARecord) {
    demo();
    const qint32 keep = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-06"));
    const qint32 id = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-13"));
    ASSERT_GT(keep, 0);
    const QString w = QString::number(id);
    ASSERT_EQ(run({QStringLiteral("commit"), w, QStringLiteral("--print"), QStringLiteral("off"),
                   QStringLiteral("--reference"), QStringLiteral("D1")})
                  .exitCode,
              0);
    const QVariant takeHome = wageValue(QStringLiteral("SELECT TakeHome FROM Wages WHERE WageID = ") + w);
    // Without --yes the question is answered No.
    const CliResult asked = run({QStringLiteral("delete-pay"), w});
    EXPECT_EQ(asked.exitCode, 1);
    EXPECT_TRUE(asked.err.contains(QStringLiteral("already been committed"))) << asked.err.toStdString();
    EXPECT_FALSE(ql::IsNull(wageValue(QStringLiteral("SELECT WageID FROM Wages WHERE WageID = ") + w)));

    const CliResult deleted = run({QStringLiteral("delete-pay"), w, QStringLiteral("--yes")});
    ASSERT_EQ(deleted.exitCode, 0) << deleted.err.toStdString();
    EXPECT_TRUE(deleted.err.contains(QStringLiteral("needs an amendment"))) << deleted.err.toStdString();
    const QJsonObject record = parseJson(deleted.out).object().value(QStringLiteral("Deleted")).toObject();
    EXPECT_EQ(record.value(QStringLiteral("Reference")).toString(), QStringLiteral("D1"));
    EXPECT_DOUBLE_EQ(record.value(QStringLiteral("TakeHome")).toDouble(), takeHome.toDouble());
    EXPECT_TRUE(ql::IsNull(wageValue(QStringLiteral("SELECT WageID FROM Wages WHERE WageID = ") + w)));
    ql::Database farm = openFarm();
    // The withdrawals and their reversals add up to nothing, line by line too.
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM Transactions")).toInt(), 4);
    EXPECT_NEAR(farm.scalar(QStringLiteral("SELECT total(Amount) FROM Transactions")).toDouble(), 0.0, 1e-9);
    EXPECT_NEAR(farm.scalar(QStringLiteral("SELECT total([Net Amount]) FROM TransactionDetails")).toDouble(), 0.0,
                1e-9);
    farm.close();
    EXPECT_EQ(agreement(), QString());
    // The pay is gone: a second delete finds nothing, and reverses nothing again.
    EXPECT_EQ(run({QStringLiteral("delete-pay"), w, QStringLiteral("--yes")}).exitCode, 1);
    ql::Database after = openFarm();
    EXPECT_EQ(after.scalar(QStringLiteral("SELECT count(*) FROM Transactions")).toInt(), 4);
}

TEST_F(CliIntegrity, DeletingAnOpenPayTouchesNoCashbook) {
    demo();
    addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-06"));
    const qint32 id = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-11-13"));
    const CliResult deleted = run({QStringLiteral("delete-pay"), QString::number(id), QStringLiteral("--yes")});
    ASSERT_EQ(deleted.exitCode, 0) << deleted.err.toStdString();
    EXPECT_FALSE(deleted.err.contains(QStringLiteral("amendment")));
    ql::Database farm = openFarm();
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM Transactions")).toInt(), 0);
}

TEST_F(CliIntegrity, OnlyInitMakesTheDataFiles) {
    for (const QStringList& command :
         {QStringList{QStringLiteral("roster")}, QStringList{QStringLiteral("pay-run"), QStringLiteral("2026-11-06")}}) {
        const CliResult r = run(command);
        EXPECT_EQ(r.exitCode, 1) << command.join(u' ').toStdString();
        EXPECT_TRUE(r.err.contains(QStringLiteral("missing"))) << r.err.toStdString();
        EXPECT_FALSE(QFile::exists(ql::WageFileName()));
        EXPECT_FALSE(QFile::exists(ql::DataFileName()));
    }
    ASSERT_EQ(run({QStringLiteral("init")}).exitCode, 0);
    EXPECT_TRUE(QFile::exists(ql::WageFileName()));
    // A farm file lost afterwards is named, not replaced.
    ASSERT_TRUE(QFile::remove(ql::DataFileName()));
    const CliResult r = run({QStringLiteral("roster")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("farm file"))) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(ql::DataFileName()));
}

TEST_F(CliIntegrity, ALockedFileIsCalledLockedNotDamaged) {
    demo();
    // Another program holds the payroll file exclusively for longer than the wait.
    ql::Database holder;
    holder.open(ql::WageFileName());
    holder.executeScript(QStringLiteral("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; "
                                        "UPDATE Employees SET EmployeeID = EmployeeID WHERE 0;"));
    const CliResult r = run({QStringLiteral("roster")});
    holder.executeScript(QStringLiteral("COMMIT"));
    holder.close();
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("locked"))) << r.err.toStdString();
    EXPECT_FALSE(r.err.contains(QStringLiteral("corrupt"))) << r.err.toStdString();
    EXPECT_FALSE(r.err.contains(QStringLiteral("damaged"))) << r.err.toStdString();
}

} // namespace
