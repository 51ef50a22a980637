// Pairs of quillary-cli processes doing the same work at the same moment: pay runs that add and commit
// the pays of one date, and commits of one pay. Whatever order they meet in, no pay is added or posted
// twice and the references agree. QUILLARY_PAIRS sets the number of pairs (20 by default),
// QUILLARY_PAIRS_SEED the seed of the starting gaps.
#include "IntegritySupport.h"
#include "frame/Settings.h"
#include <QRandomGenerator>
#include <iostream>

using namespace qltest;

namespace {

int pairCount() {
    return qEnvironmentVariableIsSet("QUILLARY_PAIRS") ? qEnvironmentVariableIntValue("QUILLARY_PAIRS") : 20;
}

quint32 seedFor(const char* what) {
    const quint32 seed = qEnvironmentVariableIsSet("QUILLARY_PAIRS_SEED")
                             ? qEnvironmentVariable("QUILLARY_PAIRS_SEED").toUInt()
                             : QRandomGenerator::global()->generate();
    std::cout << what << ": seed " << seed << ", pairs " << pairCount() << std::endl;
    return seed;
}

TEST(ConcurrentWork, TwoPayRunsOfOneDateAddAndPayEachPayOnce) {
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    QRandomGenerator rng(seedFor("pay runs"));
    const QDate first(2026, 11, 6);
    for (int i = 0; i < pairCount(); ++i) {
        const QString date = first.addDays(7 * i).toString(Qt::ISODate);
        const QStringList run{QStringLiteral("pay-run"), date, QStringLiteral("--commit")};
        const int gap = int(rng.bounded(40));
        const auto [a, b] = runPair(docs.path(), run, gap);
        // Either may give way to the other (exit 1 with its reason), but once more finishes the run.
        const CliResult again = runCli(run, docs.path());
        ASSERT_EQ(again.exitCode, 0) << date.toStdString() << ": " << again.err.toStdString();
        const QJsonArray pays = parseJson(again.out).object().value(QStringLiteral("Pays")).toArray();
        ASSERT_FALSE(pays.isEmpty()) << date.toStdString();
        for (const QJsonValue& p : pays)
            EXPECT_FALSE(p.toObject().value(QStringLiteral("Reference")).isNull()) << date.toStdString();
        ql::Database wage = openWage();
        ql::Database farm = openFarm();
        ASSERT_EQ(disagreements(wage, farm), QString()) << date.toStdString() << " (gap " << gap << " ms, exits " << a << ", " << b
                                                        << ")";
        // Each committed pay posted once, and nothing posted that is not committed.
        EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays")).toInt(),
                  wage.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE Reference IS NOT NULL")).toInt())
            << date.toStdString();
    }
}

TEST(ConcurrentWork, TwoCommitsOfOnePayPostItOnce) {
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("N"));
    QRandomGenerator rng(seedFor("commits"));
    const qint32 firstPay = addPayByCli(docs.path(), QStringLiteral("1"), QStringLiteral("2026-05-04"));
    ASSERT_GT(firstPay, 0);
    QList<qint32> pays{firstPay};
    {
        ql::Database wage = openWage();
        pays << clonePay(wage, firstPay, pairCount() - 1);
    }
    int bothDone = 0;
    for (const qint32 id : pays) {
        const QStringList commit{QStringLiteral("commit"), QString::number(id), QStringLiteral("--print"),
                                 QStringLiteral("off"), QStringLiteral("--cashbook"), QStringLiteral("on")};
        const int gap = int(rng.bounded(30));
        const auto [a, b] = runPair(docs.path(), commit, gap);
        EXPECT_TRUE(a == 0 || b == 0) << "pay " << id << ": neither commit went through";
        bothDone += a == 0 && b == 0;
        ql::Database wage = openWage();
        ql::Database farm = openFarm();
        ASSERT_EQ(disagreements(wage, farm), QString()) << "pay " << id << " (gap " << gap << " ms)";
        EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays WHERE WageID = %1").arg(id))
                      .toInt(),
                  1);
        EXPECT_FALSE(ql::IsNull(wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(id))));
    }
    ql::Database farm = openFarm();
    // The demo pays its tax electronically: two withdrawals a pay, none more.
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM Transactions")).toInt(), 2 * int(pays.size()));
    std::cout << "pairs where both commits ended well (the second adopting the first): " << bothDone << std::endl;
}

} // namespace
