// The four title menus as the main screen builds them from the suite's menu options.
#include "CliCommand.h"
#include "JsonRows.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "payengine/AppContext.h"
#include "startup/Menus.h"

namespace {

QString jsonList(const QStringList& items) {
    QStringList quoted;
    for (const QString& item : items)
        quoted << cli::jsonString(item);
    return QLatin1Char('[') + quoted.join(QStringLiteral(", ")) + QLatin1Char(']');
}

// One member a title button, in the buttons' order, and the help file of the program that they set.
int menu(const QStringList& args, QTextStream& out) {
    if (!args.isEmpty()) throw cli::CliUsageError();
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    ql::setApp(&context);
    dialogs.setEcho([](const QString& line) { cli::err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::TitleMenus menus;
    try {
        ql::LoadMenus(menus, ql::ReadMenuOptions());
    } catch (...) {
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
        throw;
    }
    out << "{\n  \"Modules\": " << jsonList(menus.mnu_modules)
        << ",\n  \"Tools\": " << jsonList(menus.mnu_tools)
        << ",\n  \"Reports\": " << jsonList(menus.mnu_reports)
        << ",\n  \"Help\": " << jsonList(menus.mnu_help)
        << ",\n  \"AppHelpFile\": " << cli::jsonString(context.AppHelpFile) << "\n}\n";
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
    return dialogs.calls.isEmpty() ? 0 : 1;
}

cli::CliCommand menuCommand("menu", "menu", menu);

} // namespace
