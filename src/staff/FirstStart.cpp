#include "FirstStart.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include <QDir>
#include <QFileInfo>

namespace ql {

QString PrepareNewInstallation() {
    QStringList added;
    const QString file = FamilyFile();
    QDir().mkpath(QFileInfo(file).absolutePath());
    // The colours of a new installation of the suite: without them the grids paint black.
    static const char* const colours[][2] = {{"GridHeader", "51,102,1"},
                                             {"GridSelectedRow", "255,226,128"},
                                             {"GridEvenRow", "255,255,255"},
                                             {"GridOddRow", "234,242,222"}};
    for (const auto& c : colours) {
        const QString key = QString::fromLatin1(c[0]);
        if (IniHasKey(file, QStringLiteral("COLOURS"), key)) continue;
        WriteIni(QStringLiteral("COLOURS"), key, QString::fromLatin1(c[1]), file);
        added << QStringLiteral("COLOURS/") + key;
    }
    const struct {
        DatabaseKind kind;
        QString path;
    } databases[] = {{DatabaseKind::Wage, WageFileName()},
                     {DatabaseKind::Farm, DataFileName()},
                     {DatabaseKind::Modules, ModuleFileName()}};
    for (const auto& d : databases) {
        if (QFileInfo::exists(d.path)) continue;
        QDir().mkpath(QFileInfo(d.path).absolutePath());
        bool created = false;
        Database db = openOrCreate(d.kind, d.path, &created);
        db.close();
        if (created) added << d.path;
    }
    return added.join(u'\n');
}

} // namespace ql
