// A pay run that commits and writes payslips, killed with SIGKILL at random moments, then run again:
// afterwards every committed pay of the run has its slip, every slip is a whole PDF, and every pay is
// posted once. QUILLARY_PAYRUN_KILLS sets the number of kills (100 by default: about half a second a
// kill with its rerun and checks on a busy two-core machine), QUILLARY_PAYRUN_SEED the seed.
#include "IntegritySupport.h"
#include "frame/Settings.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <iostream>

using namespace qltest;

namespace {

bool wholePdf(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QByteArray all = f.readAll();
    return all.startsWith("%PDF-") && all.trimmed().endsWith("%%EOF");
}

TEST(PayRunKills, EveryKillIsMadeGoodByARerun) {
    const int kills = qEnvironmentVariableIsSet("QUILLARY_PAYRUN_KILLS")
                          ? qEnvironmentVariableIntValue("QUILLARY_PAYRUN_KILLS")
                          : 100;
    const quint32 seed = qEnvironmentVariableIsSet("QUILLARY_PAYRUN_SEED")
                             ? qEnvironmentVariable("QUILLARY_PAYRUN_SEED").toUInt()
                             : QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << ", kills " << kills << std::endl;
    QRandomGenerator rng(seed);
    TempDocuments docs;
    ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs.path()).exitCode, 0);
    const QString folder = docs.path() + QStringLiteral("/slips");
    const QDate first(2026, 11, 6);
    auto runArgs = [&](int i) {
        return QStringList{QStringLiteral("pay-run"), first.addDays(7 * i).toString(Qt::ISODate),
                           QStringLiteral("--commit"), QStringLiteral("--pdf-folder"), folder};
    };
    // One whole run gives the span the kills fall in.
    QElapsedTimer timer;
    timer.start();
    const CliResult whole = runCli(runArgs(0), docs.path());
    ASSERT_EQ(whole.exitCode, 0) << whole.err.toStdString();
    const int span = int(qMax<qint64>(timer.elapsed(), 100));
    std::cout << "a whole run with its slips takes " << span << " ms" << std::endl;

    int killedMidway = 0;
    QElapsedTimer all;
    all.start();
    for (int i = 1; i <= kills; ++i) {
        auto p = startCli(docs.path(), runArgs(i));
        const int at = int(rng.bounded(span));
        if (!p->waitForFinished(at)) {
            p->kill();
            p->waitForFinished(10000);
            ++killedMidway;
        }
        const CliResult again = runCli(runArgs(i), docs.path());
        ASSERT_EQ(again.exitCode, 0) << "run " << i << " (killed at " << at << " ms): " << again.err.toStdString();
        ql::Database wage = openWage();
        ql::Database farm = openFarm();
        ASSERT_EQ(wage.scalar(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        ASSERT_EQ(farm.scalar(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        ASSERT_EQ(disagreements(wage, farm), QString()) << "run " << i;
        EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays")).toInt(),
                  wage.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE Reference IS NOT NULL")).toInt());
        // Every committed pay of every run so far has one whole slip under its own name.
        const QStringList slips = QDir(folder).entryList({QStringLiteral("*.pdf")}, QDir::Files);
        for (const QString& s : slips)
            EXPECT_TRUE(wholePdf(QDir(folder).filePath(s))) << s.toStdString();
        const int committedOfRuns =
            wage.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPayRunPays r INNER JOIN Wages w ON w.WageID = "
                                       "r.WageID WHERE w.Reference IS NOT NULL"))
                .toInt();
        EXPECT_EQ(int(slips.size()), committedOfRuns) << "run " << i;
    }
    std::cout << "killed before the end: " << killedMidway << " of " << kills << "; "
              << (kills > 0 ? all.elapsed() / kills : 0) << " ms per kill with its rerun and checks" << std::endl;
}

} // namespace
