#pragma once
// The main window's title menus, its one-off pay dialog and the rebates dialog, put onto a wage
// screen that the program has just made.

namespace ql {

class frmWage;
class TitleMenuBar;

// Title buttons (and Ctrl+M/T/R/H, which the window binds) open the menus read from the options; the
// Tools menu ends with the program's own Rebates entry; the one-off button and the calendar's one-off
// choice open the one-off dialog. Returns the menus, which the window owns.
TitleMenuBar* wireMenusAndOneOff(frmWage& w);

} // namespace ql
