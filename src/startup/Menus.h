#pragma once
// The four title menus of the main screen (Modules, Tools, Reports, Help), built from the suite's menu
// options. Choosing an entry runs nothing here: the suite's menu is told through MenuSelect and does
// the work. Only help is handled here. Everything below is free of widgets; TitleMenuBarWidget.h puts it
// on the screen.
#include "MenuReader.h"
#include <QString>
#include <QStringList>
#include <functional>

namespace ql {

// The title buttons: 0 Modules, 1 Tools, 2 Reports, 3 Help.
enum TitleButton { ModulesButton = 0, ToolsButton = 1, ReportsButton = 2, HelpButton = 3 };

// What the menus need of the form that shows them.
class MenuHost {
public:
    virtual ~MenuHost() = default;
    virtual QString title() const = 0;
    // Pops up the menu of a title button just below the button.
    virtual void popupTitleMenu(int button) = 0;
    qint32 HelpContextID = 0; // the form's help number
};

// The entries of the four menus, captions without trailing blanks, in the order of the options.
struct TitleMenus {
    QStringList mnu_modules;
    QStringList mnu_tools;
    QStringList mnu_reports;
    QStringList mnu_help;
    const QStringList& entries(int button) const;
};

// A loaded reader; an error is raised again with "MapFormRs - ReadmenuOptions" in front.
MenuReader ReadMenuOptions();
// Builds the menus from the reader's options; sets AppHelpFile from the Help entries of kind 1 (the
// last wins). Errors are reported under "LoadMenus".
void LoadMenus(TitleMenus& menus, const MenuReader& reader);
// ReadMenuOptions and LoadMenus, as the main screen's load runs them.
TitleMenus BuildTitleMenus();

// A title button's action. Errors are reported under "elsTitleBarClick".
void elsTitleBarClick(int index, MenuHost& form);
// Ctrl+M, Ctrl+T, Ctrl+R, Ctrl+H run the title buttons 0 to 3; true when the key was one of them.
bool FormKeyDown(int keyCode, bool ctrl, MenuHost& form);

// Menu clicks, each reporting its errors under its own name.
void mnu_modules_Click(const QString& caption);
void mnu_reports_Click(const QString& caption);
void mnu_tools_Click(const QString& caption);
void mnu_help_Click(const QString& caption, MenuHost& form);
// The click of entry i of a title button's menu.
void titleMenuClick(int button, const QString& caption, MenuHost& form);

// Sets StartMenu and calls SwitchModules on the program's PHWage (one is held for the call when no
// client holds one). Errors come back with "Quillary - SwitchModules" in front.
void switchModules(const QString& name, qint32 startMenu);

// Shows the help of a Help entry. Errors are raised again with "MapFormRs - HelpMenu" in front.
void HelpMenu(const QString& name, MenuHost& form);
// Sets the help numbers of an activated screen and the form's help number.
void ScreenActivated(MenuHost& form, qint32 screen);
constexpr qint32 MainScreenNumber = 7;
// The program's own help page in the Help folder.
inline const QString kProgramHelpPage = QStringLiteral("quillary.html");
// F1: the application's help file at the form's help number; without one, the program's own page.
void ShowContextHelp(const MenuHost& form);

// What a choice of the Modules, Tools or Reports menu (startMenu 0, 3, 1) does when no client holds
// the program's object, so that no suite menu hears MenuSelect: true when the handler answered it.
using StandaloneMenus = std::function<bool(const QString& name, qint32 startMenu)>;
void setStandaloneMenus(StandaloneMenus handler);

// The application's help file: what F1 opens.
QString applicationHelpFile();
void setApplicationHelpFile(const QString& path);

// Shows a help file: the topic of that number, or the contents page for 0. The desktop installs a
// viewer; without one the request is only kept (lastHelpShown).
using HelpViewer = std::function<void(const QString& path, qint32 topic)>;
void setHelpViewer(HelpViewer viewer);
struct HelpRequest {
    QString path;
    qint32 topic = 0;
};
HelpRequest lastHelpShown();

// The mouse pointer as the hourglass (true) or back; the desktop installs it.
void setHourglass(std::function<void(bool)> hourglass);
void hourglass(bool on);

} // namespace ql
