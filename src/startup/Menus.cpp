#include "Menus.h"
#include "ObjectServer.h"
#include "PHWage.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/Texts.h"
#include "payengine/AppContext.h"
#include "runtime/Trap.h"
#include <memory>

namespace ql {

namespace {

// Reports a caught error under the procedure's name, as the menu procedures trap.
template <class F> void reported(const char* location, F&& body) {
    try {
        body();
    } catch (const VbError& e) {
        ReportError(e, QString::fromLatin1(location));
    } catch (const std::exception& e) {
        ReportError(toVbError(e), QString::fromLatin1(location));
    }
}

// Raises the error again with the procedure's name and a line break in front of the description.
[[noreturn]] void raiseAgain(const VbError& e, const QString& name) {
    throw VbError(e.number(), e.source(), name + QStringLiteral("\r\n") + e.description());
}

struct HelpState {
    QString applicationHelpFile;
    HelpViewer viewer;
    HelpRequest last;
    std::function<void(bool)> hourglass;
};
HelpState& help() {
    static HelpState state;
    return state;
}

void showHelp(const QString& path, qint32 topic) {
    help().last = HelpRequest{path, topic};
    if (help().viewer) help().viewer(path, topic);
}

QStringList* groupOf(TitleMenus& menus, const QString& group) {
    const QString g = RTrim(group);
    if (g.compare(QLatin1String("Modules"), Qt::CaseInsensitive) == 0) return &menus.mnu_modules;
    if (g.compare(QLatin1String("Tools"), Qt::CaseInsensitive) == 0) return &menus.mnu_tools;
    if (g.compare(QLatin1String("Reports"), Qt::CaseInsensitive) == 0) return &menus.mnu_reports;
    if (g.compare(QLatin1String("Help"), Qt::CaseInsensitive) == 0) return &menus.mnu_help;
    return nullptr;
}

} // namespace

const QStringList& TitleMenus::entries(int button) const {
    switch (button) {
    case ModulesButton:
        return mnu_modules;
    case ToolsButton:
        return mnu_tools;
    case ReportsButton:
        return mnu_reports;
    default:
        return mnu_help;
    }
}

MenuReader ReadMenuOptions() {
    MenuReader reader;
    try {
        reader.Load();
    } catch (const VbError& e) {
        raiseAgain(e, QStringLiteral("MapFormRs - ReadmenuOptions"));
    }
    return reader;
}

void LoadMenus(TitleMenus& menus, const MenuReader& reader) {
    reported("LoadMenus", [&] {
        for (const MenuOption& option : reader.options()) {
            QStringList* group = groupOf(menus, option.group);
            if (!group) continue; // any other group is left out
            group->append(RTrim(option.caption));
            if (RTrim(option.group).compare(QLatin1String("Help"), Qt::CaseInsensitive) == 0 &&
                option.helpKind == 1)
                App().AppHelpFile = ProgramPath() + RTrim(option.helpFile); // beside the program, not in Help
        }
        if (!menus.mnu_modules.isEmpty()) menus.mnu_modules.last() = reader.closingCaption();
    });
}

TitleMenus BuildTitleMenus() {
    TitleMenus menus;
    reported("InitForm", [&] { LoadMenus(menus, ReadMenuOptions()); });
    return menus;
}

void elsTitleBarClick(int index, MenuHost& form) {
    reported("elsTitleBarClick", [&] {
        switch (index) {
        case ModulesButton:
        case ToolsButton:
        case HelpButton:
            form.popupTitleMenu(index);
            break;
        case ReportsButton:
            switchModules(form.title(), 1);
            break;
        default:
            break;
        }
    });
}

bool FormKeyDown(int keyCode, bool ctrl, MenuHost& form) {
    if (!ctrl) return false;
    int index = -1;
    switch (keyCode) {
    case 'M':
        index = ModulesButton;
        break;
    case 'T':
        index = ToolsButton;
        break;
    case 'R':
        index = ReportsButton;
        break;
    case 'H':
        index = HelpButton;
        break;
    default:
        return false;
    }
    reported("FormKeyDown", [&] { elsTitleBarClick(index, form); });
    return true;
}

void mnu_modules_Click(const QString& caption) {
    reported("mnu_modules_Click", [&] {
        // An entry that names this module does nothing.
        if (caption != App().ModuleTitle) switchModules(caption, 0);
    });
}

void mnu_reports_Click(const QString& caption) {
    reported("mnu_reports_Click", [&] { switchModules(caption, 1); });
}

void mnu_tools_Click(const QString& caption) {
    reported("mnu_tools_Click", [&] {
        MenuOption option;
        ReadMenuOptions().Lookup(caption, option);
        switchModules(caption, 3);
    });
}

void mnu_help_Click(const QString& caption, MenuHost& form) {
    reported("mnu_Help_Click", [&] { HelpMenu(caption, form); });
}

void titleMenuClick(int button, const QString& caption, MenuHost& form) {
    switch (button) {
    case ModulesButton:
        mnu_modules_Click(caption);
        break;
    case ToolsButton:
        mnu_tools_Click(caption);
        break;
    case ReportsButton:
        mnu_reports_Click(caption);
        break;
    case HelpButton:
        mnu_help_Click(caption, form);
        break;
    default:
        break;
    }
}

namespace {
StandaloneMenus& standalone() {
    static StandaloneMenus handler;
    return handler;
}
} // namespace

void setStandaloneMenus(StandaloneMenus handler) {
    standalone() = std::move(handler);
}

void switchModules(const QString& name, qint32 startMenu) {
    // No client holds the object: no suite menu listens for the choice, and the program answers it
    // itself where it can.
    if (App().ConnectorCount <= 0 && standalone() && standalone()(name, startMenu)) return;
    // Started from a command line no client holds the object; one is held for the call, so that the
    // choice still goes out on the bus.
    std::unique_ptr<qlConnector> hold;
    if (!TheWageObject()) hold = std::make_unique<qlConnector>();
    PHWage* object = TheWageObject();
    relayMenuSelect(object);
    object->setStartMenu(startMenu);
    object->SwitchModules(name);
}

void HelpMenu(const QString& name, MenuHost& form) {
    try {
        MenuReader reader;
        reader.Load();
        MenuOption option;
        const bool found = reader.Lookup(name, option);
        if (!found || RTrim(option.helpFile).isEmpty()) {
            ShowMessage(
                TranslateText(QStringLiteral("Didn't find the helpfile name for |0|"), QStringList{name}),
                msg::OKOnly, Firm(), QStringLiteral("Help File Missing"), QString(), msg::Information, true);
            return;
        }
        const QString path = ProgramDirectory() + QStringLiteral("/Help/") + RTrim(option.helpFile);
        AppContext& app = App();
        if (option.helpKind == 1) {
            setApplicationHelpFile(path);
            form.HelpContextID = app.HelpContextID;
            showHelp(path, app.HelpContextID);
        } else if (option.helpKind == 2) {
            setApplicationHelpFile(path);
            form.HelpContextID = app.HelpAltContextID;
            showHelp(path, 0);
        } else {
            showHelp(path, 0);
        }
    } catch (const VbError& e) {
        raiseAgain(e, QStringLiteral("MapFormRs - HelpMenu"));
    }
}

void ScreenActivated(MenuHost& form, qint32 screen) {
    AppContext& app = App();
    MenuReader reader;
    app.HelpContextID = reader.HelpContextID(screen);
    app.HelpAltContextID = reader.HelpAltContextID(screen);
    setApplicationHelpFile(app.AppHelpFile);
    form.HelpContextID = app.HelpContextID;
}

void ShowContextHelp(const MenuHost& form) {
    const QString file = applicationHelpFile();
    if (!file.isEmpty()) {
        showHelp(file, form.HelpContextID);
        return;
    }
    // With no help entry in the menu options, F1 still shows the program's own pages.
    showHelp(ProgramDirectory() + QStringLiteral("/Help/") + kProgramHelpPage, form.HelpContextID);
}

QString applicationHelpFile() {
    return help().applicationHelpFile;
}
void setApplicationHelpFile(const QString& path) {
    help().applicationHelpFile = path;
}
void setHelpViewer(HelpViewer viewer) {
    help().viewer = std::move(viewer);
}
HelpRequest lastHelpShown() {
    return help().last;
}
void setHourglass(std::function<void(bool)> on) {
    help().hourglass = std::move(on);
}
void hourglass(bool on) {
    if (help().hourglass) help().hourglass(on);
}

} // namespace ql
