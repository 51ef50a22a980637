#pragma once
namespace ql {
class frmWage;
class TitleMenuBar;
// Holiday pay's screens on the title menus: the leave liability in the Reports menu, with a key.
void wireHolidays(frmWage& window, TitleMenuBar* bar);
} // namespace ql
