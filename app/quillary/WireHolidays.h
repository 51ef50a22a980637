#pragma once
namespace ql {
class frmWage;
class TitleMenuBar;
// Holiday pay's screens on the title menus: the leave liability in Reports; the kinds of earnings, the
// shown employee's holiday set-up and the days and hours of the shown pay in Tools; each with a key.
void wireHolidays(frmWage& window, TitleMenuBar* bar);
} // namespace ql
