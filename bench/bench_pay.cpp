// Adding a pay and editing one of its lines on the demo farm, through the wage screen without widgets,
// as a user does: the add pay button, then a typed number of hours and leaving the view (the save).
// Settings and equations come from memory while their files are unchanged, as in the program.
#include "data/Database.h"
#include "data/DemoFarm.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include "ledger/WageScreen.h"
#include "payengine/AppContext.h"
#include "runtime/Format.h"
#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

// The demo farm in a temporary documents folder, opened as the program opens it, with the farm hand
// (weekly, hourly, in KiwiSaver) given a student loan and a union fee besides KiwiSaver, and one pay.
class DemoPayroll {
public:
    DemoPayroll() {
        qputenv("FERNHOLD_DOCUMENTS", m_dir.path().toLocal8Bit());
        QDir().mkpath(m_dir.path() + QStringLiteral("/Fernhold/Common"));
        QFile ini(m_dir.path() + QStringLiteral("/Fernhold/Common/Fernhold.ini"));
        ini.open(QIODevice::WriteOnly);
        ini.write("[WINDOWS]\r\nCountry=64\r\n");
        ini.close();
        ql::setApp(&app);
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        for (const QString& file : {ql::WageFileName(), ql::DataFileName(), ql::ModuleFileName()})
            QDir().mkpath(QFileInfo(file).absolutePath());
        {
            ql::Database wage = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
            ql::Database farm = ql::openOrCreate(ql::DatabaseKind::Farm, ql::DataFileName());
            ql::Database modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName());
            ql::addDemoFarm(wage, farm);
            // Student loan (2, a percentage above a threshold) and union fees (3, fixed) for the farm hand.
            wage.execute(QStringLiteral("INSERT INTO EmployeeDeductions (EmployeeID, DeductID, FixedAmount, SpecialRate) "
                                        "VALUES (1, 2, 0, 0), (1, 3, 18.5, 0)"));
            modules.close();
            farm.close();
            wage.close();
        }
        ql::OpenWageDatabase();
        ql::FillEmployeeArray();
        app.WageForm = &screen;
        ql::InitData(screen);
        for (int i = 1; i < app.EmployeeArray.size(); ++i)
            screen.cboEmployeeItems.append({app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});
        // The farm hand has no pay yet: picking him asks for the first pay's date.
        dialogs.queueInput(ql::Format(QVariant(QDate(2026, 4, 6)), QStringLiteral("Short date")));
        for (int i = 0; i < screen.cboEmployeeItems.size(); ++i)
            if (screen.cboEmployeeItems.at(i).itemData == 1)
                screen.selectEmployeeItem(i);
    }
    ~DemoPayroll() {
        app.WageForm = nullptr;
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    int count(const QString& table) { return app.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM ") + table).toInt(); }

    QTemporaryDir m_dir;
    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    ql::WageScreen screen;
};

// Each added pay is deleted again outside the timing, so every iteration adds the second pay of an
// employee with one pay: the same work each time, and the pay list does not grow with the count.
void BM_AddPay(benchmark::State& state) {
    DemoPayroll payroll;
    const qint32 first = payroll.app.CurrentWageID;
    const int detailRows = payroll.count(QStringLiteral("PaymentDetails"));
    for (auto _ : state) {
        payroll.screen.cmdAddPay_Click();
        state.PauseTiming();
        const qint32 added = payroll.app.CurrentWageID;
        if (added == first) {
            state.SkipWithError("no pay was added");
            break;
        }
        payroll.app.WageDatabase.execute(QStringLiteral("DELETE FROM Wages WHERE WageID = %1").arg(added));
        payroll.app.ReloadingPays = true;
        payroll.screen.datPays.Refresh();
        payroll.app.ReloadingPays = false;
        payroll.screen.datPays.MoveLast();
        state.ResumeTiming();
    }
    if (payroll.count(QStringLiteral("PaymentDetails")) != detailRows)
        state.SkipWithError("the deleted pays left lines behind");
    if (!payroll.dialogs.calls.isEmpty() && payroll.dialogs.calls.last().kind == ql::DialogCall::Error)
        state.SkipWithError(payroll.dialogs.calls.last().message.toStdString().c_str());
}
BENCHMARK(BM_AddPay)->Unit(benchmark::kMillisecond);

// One typed cell of the payment view (hours of ordinary time, 40 and 45 in turn) with what the grid's
// events do at once, then leaving the view: the save of the lines, the recalculation and the slip.
void BM_EditAndSave(benchmark::State& state) {
    DemoPayroll payroll;
    payroll.screen.cmdAddPay_Click();
    payroll.screen.cmdSelect_Click(1);
    bool longer = false;
    for (auto _ : state) {
        longer = !longer;
        if (!payroll.screen.storeCell(0, 2, longer ? QStringLiteral("45") : QStringLiteral("40"))) {
            state.SkipWithError("the cell was refused");
            break;
        }
        payroll.screen.tgrdwages_LostFocus();
        payroll.screen.datPays.UpdateRecord();
    }
    if (!payroll.dialogs.calls.isEmpty() && payroll.dialogs.calls.last().kind == ql::DialogCall::Error)
        state.SkipWithError(payroll.dialogs.calls.last().message.toStdString().c_str());
}
BENCHMARK(BM_EditAndSave)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::NewZealand));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
