#include "AccessibleNames.h"
#include <QAbstractButton>
#include <QCalendarWidget>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>

namespace ql {

void NameCalendarParts(QCalendarWidget* calendar) {
    const struct {
        const char* object;
        const char* name;
    } parts[] = {{"qt_calendar_prevmonth", "Previous month"},
                 {"qt_calendar_nextmonth", "Next month"},
                 {"qt_calendar_monthbutton", "Month"},
                 {"qt_calendar_yearbutton", "Year"},
                 {"qt_calendar_yearedit", "Year"},
                 {"qt_calendar_calendarview", "Days of the month"}};
    for (const auto& p : parts)
        if (QWidget* w = calendar->findChild<QWidget*>(QString::fromLatin1(p.object)))
            w->setAccessibleName(QString::fromLatin1(p.name));
    // The corner above the week numbers.
    for (QAbstractButton* b : calendar->findChildren<QAbstractButton*>())
        if (b->accessibleName().isEmpty()) b->setAccessibleName(QStringLiteral("Week"));
}

void NameValueLabel(QLabel* label, const QString& caption) {
    const QString amount = label->text().trimmed();
    label->setAccessibleName(amount.isEmpty() ? caption : caption + u' ' + amount);
}

} // namespace ql
