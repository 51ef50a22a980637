// A committing quillary-cli killed with SIGKILL at random moments: after every kill both databases
// pass their integrity check, the farm database holds each posting whole or not at all, and a
// second commit leaves exactly one posting per pay. QUILLARY_STRESS_KILLS sets the number of kills
// (40 by default), QUILLARY_STRESS_SEED the seed.
#include "CliCommitSupport.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <iostream>

using namespace qltest;

namespace {

QString integrity(ql::Database& db) {
    return db.scalar(QStringLiteral("PRAGMA integrity_check")).toString();
}

class KillStress : public ::testing::Test {
protected:
    TempDocuments docs;

    QString tracePath() const { return docs.path() + QStringLiteral("/trace.txt"); }
    // Where the last run stopped: true when its last statement ran inside the farm's transaction.
    bool stoppedInFarmTransaction() const {
        QFile f(tracePath());
        if (!f.open(QIODevice::ReadOnly)) return false;
        const QByteArray all = f.readAll().trimmed();
        return all.endsWith('F');
    }

    QProcessEnvironment environment(int delayMicros, int transactionMicros) const {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("FERNHOLD_DOCUMENTS"), docs.path());
        env.insert(QStringLiteral("LANG"), QStringLiteral("en_NZ.UTF-8"));
        env.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_NZ.UTF-8"));
        env.insert(QStringLiteral("TZ"), QStringLiteral("Pacific/Auckland"));
        env.insert(QStringLiteral("QUILLARY_TEST_STATEMENT_DELAY_US"), QString::number(delayMicros));
        env.insert(QStringLiteral("QUILLARY_TEST_TRANSACTION_DELAY_US"), QString::number(transactionMicros));
        env.insert(QStringLiteral("QUILLARY_TEST_TRACE"), tracePath());
        return env;
    }
    QStringList commitArgs(qint32 id) const {
        return {QStringLiteral("commit"), QString::number(id),       QStringLiteral("--cashbook"),
                QStringLiteral("on"),     QStringLiteral("--print"), QStringLiteral("off")};
    }
    // Starts a commit and kills it after killAfterMs; true when it was killed before it ended.
    bool killedCommit(qint32 id, int delayMicros, int transactionMicros, int killAfterMs) {
        QFile::remove(tracePath());
        QProcess p;
        p.setProcessEnvironment(environment(delayMicros, transactionMicros));
        p.start(QStringLiteral(QUILLARY_CLI_PATH), commitArgs(id));
        EXPECT_TRUE(p.waitForStarted());
        if (p.waitForFinished(killAfterMs)) return false;
        p.kill(); // SIGKILL
        p.waitForFinished(10000);
        return true;
    }
    int fullCommit(qint32 id, int delayMicros, int transactionMicros, qint64* elapsedMs = nullptr) {
        QProcess p;
        p.setProcessEnvironment(environment(delayMicros, transactionMicros));
        QElapsedTimer t;
        t.start();
        p.start(QStringLiteral(QUILLARY_CLI_PATH), commitArgs(id));
        p.waitForFinished(60000);
        if (elapsedMs) *elapsedMs = t.elapsed();
        EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
        return p.exitCode();
    }
};

TEST_F(KillStress, EveryKillLeavesAWholePostingOrNone) {
    const int kills = qEnvironmentVariableIsSet("QUILLARY_STRESS_KILLS")
                          ? qEnvironmentVariableIntValue("QUILLARY_STRESS_KILLS")
                          : 40;
    const quint32 seed = qEnvironmentVariableIsSet("QUILLARY_STRESS_SEED")
                             ? qEnvironmentVariable("QUILLARY_STRESS_SEED").toUInt()
                             : QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << ", kills " << kills << std::endl;
    QRandomGenerator rng(seed);

    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("N"));
    const qint32 first = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-05-04"));
    ASSERT_GT(first, 0);
    QList<qint32> pays;
    {
        ql::Database wage = openWage();
        pays = clonePay(wage, first, kills);
    }
    // Each statement is slowed a little, and those inside a transaction (the posting, the writes of
    // the reference) much more, so that many kills land inside the posting. One whole commit,
    // slowed so, gives the span the kills fall in.
    const int delay = 100, transactionDelay = 4000;
    qint64 span = 0;
    ASSERT_EQ(fullCommit(first, delay, transactionDelay, &span), 0);
    const int window = int(qMax<qint64>(span, 50));
    std::cout << "a slowed commit takes " << span << " ms; kills fall in 0.." << window << " ms" << std::endl;
    // Lines of the pay's transaction: the wage line and one for each figure that is not 0, as the
    // commit left the figures (the copies are committed with the same).
    int payLines = 1;
    {
        ql::Database wage = openWage();
        auto figure = [&](const char* column) {
            return ql::CDbl(wage.scalar(QStringLiteral("SELECT %1 FROM Wages WHERE WageID = %2")
                                            .arg(QLatin1String(column))
                                            .arg(first)));
        };
        payLines += (figure("Deductions") != 0) + (figure("NonTaxAllow") != 0) + (figure("PAYE") != 0);
    }

    int completed = 0, nothing = 0, postedOnly = 0, committedByKilled = 0, insidePosting = 0;
    for (int i = 0; i < pays.size(); ++i) {
        const qint32 id = pays.at(i);
        const int killAt = int(rng.bounded(window + 1));
        const bool killed = killedCommit(id, delay, transactionDelay, killAt);
        completed += !killed;
        const bool inside = killed && stoppedInFarmTransaction();

        ql::Database wage = openWage();
        ql::Database farm = openFarm();
        ASSERT_EQ(integrity(wage), QStringLiteral("ok")) << "pay " << id;
        ASSERT_EQ(integrity(farm), QStringLiteral("ok")) << "pay " << id;
        // Every transaction belongs to a recorded posting, and every posting is whole.
        const bool table = farm.hasTable(QStringLiteral("QuillaryPostedPays"));
        const int stray =
            farm.scalar(table
                            ? QStringLiteral("SELECT count(*) FROM Transactions WHERE TransactionsID NOT IN "
                                             "(SELECT TransactionsID FROM QuillaryPostedPays UNION SELECT "
                                             "TaxTransactionsID FROM QuillaryPostedPays)")
                            : QStringLiteral("SELECT count(*) FROM Transactions"))
                .toInt();
        ASSERT_EQ(stray, 0) << "pay " << id;
        const int broken =
            farm.scalar(QStringLiteral(
                            "SELECT count(*) FROM QuillaryPostedPays p WHERE (SELECT count(*) FROM "
                            "TransactionDetails "
                            "d WHERE d.TransactionsID = p.TransactionsID) <> %1 OR (SELECT count(*) FROM "
                            "TransactionDetails d WHERE d.TransactionsID = p.TaxTransactionsID) <> 1")
                            .arg(payLines))
                .toInt();
        ASSERT_EQ(broken, 0) << "pay " << id;
        const int posted =
            farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays WHERE WageID = %1").arg(id))
                .toInt();
        const bool hasReference =
            !ql::IsNull(wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(id)));
        ASSERT_LE(posted, 1);
        ASSERT_TRUE(!hasReference || posted == 1) << "a committed pay that posts is posted";
        if (inside) {
            // Stopped with the posting's transaction open: none of it may stand.
            ++insidePosting;
            EXPECT_EQ(posted, 0) << "pay " << id;
        }
        if (killed) {
            if (posted == 0)
                ++nothing;
            else if (!hasReference)
                ++postedOnly;
            else
                ++committedByKilled;
        }
        wage.close();
        farm.close();

        if (!hasReference) ASSERT_EQ(fullCommit(id, 0, 0), 0) << "pay " << id;
        ql::Database wageAfter = openWage();
        ql::Database farmAfter = openFarm();
        EXPECT_EQ(
            farmAfter
                .scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays WHERE WageID = %1").arg(id))
                .toInt(),
            1);
        EXPECT_FALSE(ql::IsNull(
            wageAfter.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(id))));
    }
    ql::Database farm = openFarm();
    const int payCount = int(pays.size()) + 1;
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays")).toInt(), payCount);
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM Transactions")).toInt(), 2 * payCount);
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(DISTINCT WageID) FROM QuillaryPostedPays")).toInt(),
              payCount);
    std::cout << "kills: " << kills << "; ended before the kill " << completed
              << "; killed with nothing posted " << nothing << " (of which " << insidePosting
              << " inside the posting's transaction), posted but not yet "
              << "committed " << postedOnly << ", committed " << committedByKilled << std::endl;
}

} // namespace
