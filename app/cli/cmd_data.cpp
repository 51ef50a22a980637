// init [--demo [--employees N] [--years Y]]: a new installation. Creates the settings file and the three
// databases where the settings put them, each with its schema and template rows; --demo adds the demo
// farm with the payday details its files need, and --employees or --years make it a large one:
// invented employees up to N on the roster, and Y years of pays for each (each employee's pays are
// added by the engine, then repeated). Nothing that exists is overwritten: an existing file is named
// and left as it is.
#include "CliCommand.h"
#include "data/DemoFarm.h"
#include "data/DemoFarmLarge.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "ledger/Roster.h"
#include "ledger/WageScreen.h"
#include "payday/PaydayDemo.h"
#include "payengine/AppContext.h"
#include "payengine/PayTotals.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "startup/Startup.h"
#include <QDir>
#include <QFileInfo>

namespace {

void report(QTextStream& out, bool created, const QString& path) {
    out << (created ? "created: " : "exists: ") << QDir::toNativeSeparators(path) << '\n';
}

// The settings file with the keys that name the databases.
void initSettings(QTextStream& out) {
    const QString file = ql::CommonFolder() + QStringLiteral("/Fernhold.ini");
    if (QFileInfo::exists(file)) {
        report(out, false, file);
        return;
    }
    if (ql::DocumentsFolder().isEmpty())
        throw cli::CliFailure(QStringLiteral("No documents folder: set FERNHOLD_DOCUMENTS or HOME."));
    if (!QDir().mkpath(ql::CommonFolder()))
        throw cli::CliFailure(QStringLiteral("The folder %1 cannot be created.").arg(ql::CommonFolder()));
    const QString dataRoot = ql::DocumentsFolder() + QStringLiteral("/data");
    ql::WriteIni(QStringLiteral("FERNHOLD"), QStringLiteral("DataRoot"), dataRoot, file);
    ql::WriteIni(QStringLiteral("FERNHOLD"), QStringLiteral("WageFileName"),
                 dataRoot + QStringLiteral("/Wage32.db"), file);
    ql::WriteIni(QStringLiteral("FERNHOLD"), QStringLiteral("DataFileName"),
                 dataRoot + QStringLiteral("/Farm32.db"), file);
    ql::WriteIni(QStringLiteral("FERNHOLD"), QStringLiteral("ModuleFileName"),
                 ql::CommonFolder() + QStringLiteral("/Modules.db"), file);
    ql::WriteIni(QStringLiteral("START"), QStringLiteral("Firm"), QStringLiteral("Fernhold"), file);
    if (!QFileInfo::exists(file))
        throw cli::CliFailure(QStringLiteral("The settings file %1 cannot be written.").arg(file));
    report(out, true, file);
}

// Pays for every employee on the roster: the first two through the wage screen (the first pay's date,
// then the add pay button), the rest repeats of the second, so that each employee has years of pays.
qint64 addYearsOfPays(int years) {
    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    ql::setApp(&app);
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    qint64 pays = 0;
    try {
        ql::OpenWageDatabase();
        ql::FillEmployeeArray();
        ql::WageScreen screen;
        app.WageForm = &screen;
        ql::InitData(screen);
        for (int i = 1; i < app.EmployeeArray.size(); ++i)
            screen.cboEmployeeItems.append(
                {app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});
        const QDate first = QDate(2026, 4, 6).addYears(-years);
        for (int i = 0; i < screen.cboEmployeeItems.size(); ++i) {
            const qint32 employee = screen.cboEmployeeItems.at(i).itemData;
            const QVariant perYear = app.WageDatabase.scalar(
                QStringLiteral("SELECT PayInterval.PaysPerYear FROM Employees INNER JOIN PayInterval ON "
                               "Employees.PayIntervalID = PayInterval.PayIntervalID WHERE EmployeeID = %1")
                    .arg(employee));
            const int count = int(years * (ql::IsNull(perYear) ? 52.0 : ql::CDbl(perYear)));
            if (count <= 0) continue;
            dialogs.queueInput(ql::Format(QVariant(first), QStringLiteral("Short date")));
            screen.selectEmployeeItem(i);
            if (count > 1) screen.cmdAddPay_Click();
            screen.datPays.UpdateRecord();
            ql::repeatPay(app.WageDatabase, app.CurrentWageID, count - 2);
            pays += count;
        }
        app.WageForm = nullptr;
    } catch (...) {
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
        throw;
    }
    ql::CloseWageDatabase();
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
    return pays;
}

int countArgument(const QString& text, int largest) {
    bool ok = false;
    const int n = text.toInt(&ok);
    if (!ok || n < 1 || n > largest) throw cli::CliUsageError();
    return n;
}

int init(const QStringList& args, QTextStream& out) {
    bool demo = false;
    int employees = 0, years = 0;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("--demo"))
            demo = true;
        else if (a == QLatin1String("--employees") && i + 1 < args.size())
            employees = countArgument(args.at(++i), 5000);
        else if (a == QLatin1String("--years") && i + 1 < args.size())
            years = countArgument(args.at(++i), 50);
        else
            throw cli::CliUsageError();
    }
    if ((employees || years) && !demo) throw cli::CliUsageError();
    initSettings(out);

    bool created = false;
    ql::Database wage = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName(), &created);
    report(out, created, wage.path());
    ql::Database farm = ql::openOrCreate(ql::DatabaseKind::Farm, ql::DataFileName(), &created);
    report(out, created, farm.path());
    ql::Database modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName(), &created);
    report(out, created, modules.path());
    modules.close();

    if (demo) {
        if (ql::readyForDemo(wage, farm)) {
            ql::addDemoFarm(wage, farm);
            ql::AddDemoPaydayDetails(wage);
            out << "demo: added the demo farm to " << QDir::toNativeSeparators(wage.path()) << " and "
                << QDir::toNativeSeparators(farm.path()) << '\n';
            if (employees || years) {
                const int added =
                    employees ? int(ql::addLargeDemoEmployees(wage, farm, employees).size()) : 0;
                ql::AddDemoPaydayDetails(wage);
                farm.close();
                wage.close();
                const qint64 pays = addYearsOfPays(years ? years : 1);
                out << "demo: added " << added << " invented employees and " << pays << " pays\n";
            }
        } else {
            out << "demo: not added, the databases already hold employees or addresses\n";
        }
    }
    return 0;
}

const cli::CliCommand initCommand("init", "init [--demo] [--employees N] [--years Y]", init);

} // namespace
