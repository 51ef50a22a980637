#pragma once
// The three choices the calendar's "Add or Edit" dialog leaves behind: add a regular pay on the picked
// date, add a one-off pay, or move the shown pay to that date. The dialog clears them and sets the one
// chosen; a cancel leaves them as they were. The wage screen reads them after the dialog has gone.
namespace ql {

struct CalendarChoice {
    bool AddPayChoice = false;
    bool EditDateChoice = false;
    bool OneOffChoice = false;
};

// The flags of this process.
CalendarChoice& calendarChoice();

} // namespace ql
