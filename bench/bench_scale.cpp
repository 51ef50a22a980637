// The same work on the small demo farm and on a large one, through the wage screen without widgets:
// adding a pay, loading an employee's pay list, the roster and opening the wage history; and the start
// of the desktop program to its first painted main window, with its memory.
//
// The payrolls are made once with quillary-cli and kept in build/bench-data (delete the folder to make
// them again): "small" is `init --demo --years 1` (the demo's five employees with a year of pays each),
// "large" is `init --demo --employees 200 --years 10`.
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "ledger/Roster.h"
#include "ledger/WageScreen.h"
#include "payengine/AppContext.h"
#include "reports/QuickView.h"
#include "startup/Startup.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <benchmark/benchmark.h>
#include <time.h>

namespace {

const char* const kSizes[][2] = {{"small", "--years 1"}, {"large", "--employees 200 --years 10"}};

// The documents folder of a payroll, made on first use.
QString payrollFolder(const QString& size, const QString& options) {
    const QString folder = QStringLiteral(QUILLARY_BENCH_DATA) + QLatin1Char('/') + size;
    if (QFile::exists(folder + QStringLiteral("/data/Wage32.db"))) return folder;
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    QProcess cli;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("FERNHOLD_DOCUMENTS"), folder);
    cli.setProcessEnvironment(env);
    cli.start(QStringLiteral(QUILLARY_CLI), QStringList{QStringLiteral("init"), QStringLiteral("--demo")} +
                                                options.split(QLatin1Char(' ')));
    cli.waitForFinished(-1);
    if (cli.exitCode() != 0) qFatal("quillary-cli init failed: %s", cli.readAllStandardError().constData());
    return folder;
}

// The program's state on a payroll, the wage screen loaded with the roster, no employee picked.
class Payroll {
public:
    explicit Payroll(const QString& folder) {
        qputenv("FERNHOLD_DOCUMENTS", folder.toLocal8Bit());
        ql::setApp(&app);
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        ql::OpenWageDatabase();
        ql::FillEmployeeArray();
        app.WageForm = &screen;
        ql::InitData(screen);
        for (int i = 1; i < app.EmployeeArray.size(); ++i)
            screen.cboEmployeeItems.append(
                {app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});
    }
    ~Payroll() {
        app.WageForm = nullptr;
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    void pick(qint32 employeeID) {
        for (int i = 0; i < screen.cboEmployeeItems.size(); ++i)
            if (screen.cboEmployeeItems.at(i).itemData == employeeID) screen.selectEmployeeItem(i);
    }
    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    ql::WageScreen screen;
};

bool failed(benchmark::State& state, const Payroll& p) {
    if (!p.dialogs.calls.isEmpty() && p.dialogs.calls.last().kind == ql::DialogCall::Error) {
        state.SkipWithError(p.dialogs.calls.last().message.toStdString().c_str());
        return true;
    }
    return false;
}

// The farm hand's next pay, deleted again outside the timing.
void addPay(benchmark::State& state, QString folder) {
    Payroll p(folder);
    p.pick(1);
    const qint32 last = p.app.CurrentWageID;
    for (auto _ : state) {
        p.screen.cmdAddPay_Click();
        state.PauseTiming();
        const qint32 added = p.app.CurrentWageID;
        if (added == last) {
            state.SkipWithError("no pay was added");
            break;
        }
        p.app.WageDatabase.execute(QStringLiteral("DELETE FROM Wages WHERE WageID = %1").arg(added));
        p.app.ReloadingPays = true;
        p.screen.datPays.Refresh();
        p.app.ReloadingPays = false;
        p.screen.datPays.MoveLast();
        state.ResumeTiming();
    }
    failed(state, p);
}

// Picking an employee: the pay list loaded and its last pay shown (the farm hand and the tractor
// driver, both weekly, in turn).
void payList(benchmark::State& state, QString folder) {
    Payroll p(folder);
    bool hand = false;
    for (auto _ : state) {
        hand = !hand;
        p.pick(hand ? 1 : 4);
    }
    state.counters["pays"] = p.screen.datPays.RecordCount();
    failed(state, p);
}

// The roster: the current employees read into the employee array and the list filled.
void roster(benchmark::State& state, QString folder) {
    Payroll p(folder);
    for (auto _ : state) {
        ql::FillEmployeeArray();
        p.screen.FillEmployeeCombo();
    }
    state.counters["employees"] = p.app.EmployeeArray.size() - 1;
    failed(state, p);
}

// Opening the wage history of one employee as the screen does: the list loaded, the totals shown and
// the first screenful of rows (25 of them) formatted for painting.
void history(benchmark::State& state, QString folder) {
    Payroll p(folder);
    p.pick(1);
    int rows = 0;
    for (auto _ : state) {
        ql::QuickView view;
        view.Form_Load(p.screen.employeeName());
        view.Form_Activate();
        rows = view.QuickViewArray.rowCount();
        for (int r = 0; r < std::min(rows, 25); ++r)
            for (int c = 0; c < 10; ++c)
                benchmark::DoNotOptimize(view.cellText(r, c));
    }
    state.counters["pays"] = rows;
    failed(state, p);
}

double realNow() {
    timespec t;
    clock_gettime(CLOCK_REALTIME, &t);
    return double(t.tv_sec) + double(t.tv_nsec) / 1e9;
}

// The desktop program from its start to its first painted main window; and its peak memory.
void firstPaint(benchmark::State& state, QString folder) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("FERNHOLD_DOCUMENTS"), folder);
    env.insert(QStringLiteral("QUILLARY_FIRST_PAINT"), QStringLiteral("1"));
    if (!env.contains(QStringLiteral("QT_QPA_PLATFORM")))
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    double peakKb = 0;
    for (auto _ : state) {
        QProcess program;
        program.setProcessEnvironment(env);
        const double start = realNow();
        program.start(QStringLiteral("/usr/bin/time"),
                      {QStringLiteral("-f"), QStringLiteral("peak %M"), QStringLiteral(QUILLARY_DESKTOP),
                       QStringLiteral("Quillary")});
        program.waitForFinished(-1);
        const QString out = QString::fromLocal8Bit(program.readAllStandardOutput());
        const QString err = QString::fromLocal8Bit(program.readAllStandardError());
        const qsizetype at = out.indexOf(QStringLiteral("first paint: "));
        if (at < 0) {
            state.SkipWithError("no first paint");
            break;
        }
        const double painted = out.mid(at + 13).trimmed().toDouble();
        state.SetIterationTime(painted - start);
        const qsizetype peak = err.lastIndexOf(QStringLiteral("peak "));
        if (peak >= 0) peakKb = std::max(peakKb, err.mid(peak + 5).trimmed().toDouble());
    }
    state.counters["peak_MB"] = peakKb / 1024.0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (const auto& size : kSizes) {
        const QString name = QString::fromLatin1(size[0]);
        const QString folder = payrollFolder(name, QString::fromLatin1(size[1]));
        const std::string n = size[0];
        benchmark::RegisterBenchmark(("BM_AddPay/" + n).c_str(), addPay, folder)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("BM_PayList/" + n).c_str(), payList, folder)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("BM_Roster/" + n).c_str(), roster, folder)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("BM_History/" + n).c_str(), history, folder)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("BM_FirstPaint/" + n).c_str(), firstPaint, folder)
            ->UseManualTime()
            ->Iterations(10)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
