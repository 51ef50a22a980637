#include "AddEditChoice.h"

namespace ql {

CalendarChoice& calendarChoice() {
    static CalendarChoice choice;
    return choice;
}

} // namespace ql
