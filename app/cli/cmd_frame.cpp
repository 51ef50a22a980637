// Settings and texts from the command line: what the program would read and how it words things.
#include "CliCommand.h"
#include "frame/Settings.h"
#include "frame/SettingsCatalog.h"
#include "frame/Texts.h"

namespace {

// The value the program would use: through the key's getter when it has one (booleans as
// True/False, PAYEStart as its text), else the text of the family file.
int setting(const QStringList& args, QTextStream& out) {
    if (args.size() != 2) throw cli::CliUsageError();
    const auto value = ql::settingValueText(args[0], args[1]);
    out << (value ? *value : ql::ReadIni(args[0], args[1], ql::FamilyFile())) << "\n";
    return 0;
}

int country(const QStringList& args, QTextStream& out) {
    if (!args.isEmpty()) throw cli::CliUsageError();
    out << ql::CountryPhone() << "\n";
    return 0;
}

int translate(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    out << ql::TranslateText(args[0], args.mid(1)) << "\n";
    return 0;
}

const cli::CliCommand settingCommand("setting", "setting SECTION KEY", setting);
const cli::CliCommand countryCommand("country", "country", country);
const cli::CliCommand translateCommand("translate", "translate TEXT [VALUE...]", translate);

} // namespace
