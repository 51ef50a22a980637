// init [--demo]: a new installation. Creates the settings file and the three databases where the
// settings put them, each with its schema and template rows; --demo adds the demo farm. Nothing that
// exists is overwritten: an existing file is named and left as it is.
#include "CliCommand.h"
#include "data/DemoFarm.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
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

int init(const QStringList& args, QTextStream& out) {
    bool demo = false;
    for (const QString& a : args) {
        if (a == QLatin1String("--demo"))
            demo = true;
        else
            throw cli::CliUsageError();
    }
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
            out << "demo: added the demo farm to " << QDir::toNativeSeparators(wage.path()) << " and "
                << QDir::toNativeSeparators(farm.path()) << '\n';
        } else {
            out << "demo: not added, the databases already hold employees or addresses\n";
        }
    }
    return 0;
}

const cli::CliCommand initCommand("init", "init [--demo]", init);

} // namespace
